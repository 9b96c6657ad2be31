#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/word_lists.hpp"

/// What it costs to ask an index of texts for the worth of a predicate and for its bounds, against
/// the building of one key of the same text.

using namespace bench;

namespace {

constexpr unsigned char kKey = FormatIndexKey | FormLittle;
constexpr unsigned kMostBytes = 256;

/// Values that are asked for in turn: few enough to be at hand, as that of a query is.
constexpr std::size_t kValues = 1000;

using Bytes = std::vector<unsigned char>;

Bytes Stored(Word const& word, unsigned char language, unsigned char format) {
  XoString text(word.latin1.c_str());
  text.codeSet = kLatin1;
  text.language = language;
  Bytes record(kMostBytes);
  record.resize(XoTypeMgr().Translate(XoSTRING_T, record.data(), format, kMostBytes, &text,
                                      FormMemory, sizeof text, 1));
  record.resize(record[0] + record[1] * 256u + 2);
  return record;
}

std::vector<Bytes> StoredWords(WordList& list, unsigned char format) {
  std::vector<Bytes> words;
  for (Word const& word : list.Words()) words.push_back(Stored(word, list.language, format));
  return words;
}

/// The share, and both bounds of a value, which are given back.
void EstimateAndBound(benchmark::State& state, WordList& list, unsigned char format) {
  XoTypeMgr const manager;
  std::vector<Bytes> values = StoredWords(list, format);
  std::vector<Bytes> keys = StoredWords(list, kKey);
  auto const comesBefore = [&manager](Bytes const& a, Bytes const& b) {
    int status = 0;
    return manager.Cmp(XoSTRING_T, static_cast<unsigned>(a.size()),
                       const_cast<unsigned char*>(a.data()), static_cast<unsigned>(b.size()),
                       const_cast<unsigned char*>(b.data()), CmpOpNoWildcards, 1, kKey, status) < 0;
  };
  auto const [low, high] = std::minmax_element(keys.begin(), keys.end(), comesBefore);
  XoIdxBounds range;
  range.low = low->data();
  range.high = high->data();
  range.lowLen = static_cast<std::uint8_t>(low->size());
  range.highLen = static_cast<std::uint8_t>(high->size());
  std::size_t next = 0;
  for (auto _ : state) {
    unsigned short op = kXoBoundEqual;
    XoIdxBounds bounds;
    benchmark::DoNotOptimize(manager.EvalAndBound(XoSTRING_T, &range, op, values[next].data(),
                                                  FormLittle, 1, &bounds, nullptr));
    benchmark::DoNotOptimize(bounds);
    ReleaseBounds(bounds);
    next = next + 1 < kValues ? next + 1 : 0;
  }
}

/// One key of a stored text.
void BuildKey(benchmark::State& state, WordList& list) {
  XoTypeMgr const manager;
  std::vector<Bytes> values = StoredWords(list, FormLittle);
  unsigned char key[kMostBytes];
  std::size_t next = 0;
  for (auto _ : state) {
    Bytes& value = values[next];
    benchmark::DoNotOptimize(manager.Translate(XoSTRING_T, key, kKey, sizeof key, value.data(),
                                               FormLittle, static_cast<unsigned>(value.size()), 1));
    benchmark::ClobberMemory();
    next = next + 1 < kValues ? next + 1 : 0;
  }
}

[[maybe_unused]] bool const registered = [] {
  for (std::size_t index = 0; index < kLists; ++index) {
    WordList& list = Lists(index);
    auto const add = [&](char const* what, unsigned char format) {
      std::string const name = std::string("EvalAndBound, ") + what + " of " + list.name;
      benchmark::RegisterBenchmark((name + "/ours").c_str(), [&list, format](auto& state) {
        EstimateAndBound(state, list, format);
      });
      benchmark::RegisterBenchmark((name + "/building of a key").c_str(),
                                   [&list](auto& state) { BuildKey(state, list); });
    };
    add("records", FormLittle);
    add("keys", kKey);
  }
  return true;
}();

}  // namespace
