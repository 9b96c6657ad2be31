#include <benchmark/benchmark.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <cstring>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/word_lists.hpp"

using namespace bench;

namespace {

constexpr unsigned char kKey = FormatIndexKey | FormLittle;
constexpr unsigned kMostBytes = 1024;

using Bytes = Block<unsigned char>;

XoString Text(Word const& word, unsigned char language) {
  XoString text(word.latin1.c_str());
  text.codeSet = kLatin1;
  text.language = language;
  return text;
}

/// The words as records, or as index keys.
Bytes Stored(WordList& list, unsigned char format) {
  XoTypeMgr const manager;
  return Bytes(list.Words(), [&](Word const& word, std::vector<unsigned char>& all) {
    XoString text = Text(word, list.language);
    unsigned char record[kMostBytes];
    unsigned const size = manager.Translate(XoSTRING_T, record, format, kMostBytes, &text,
                                            FormMemory, sizeof text, 1);
    // What a record is given room for, and what it takes of that.
    unsigned const length = record[0] + record[1] * 256u + 2;
    all.insert(all.end(), record, record + std::min(size, length));
    return std::min(size, length);
  });
}

Bytes SortKeys(WordList& list) {
  Collator const collator = OpenCollator(list.locale);
  return Bytes(list.Words(), [&](Word const& word, std::vector<unsigned char>& all) {
    unsigned char key[kMostBytes];
    int32_t const size =
        ucol_getSortKey(collator.get(), word.utf16.data(), static_cast<int32_t>(word.utf16.size()),
                        key, static_cast<int32_t>(kMostBytes));
    all.insert(all.end(), key, key + size);
    return size;
  });
}

void SortStored(benchmark::State& state, WordList& list, unsigned char format) {
  XoTypeMgr const manager;
  Bytes const records = Stored(list, format);
  SortViews(state, records, [&](View<unsigned char> const& a, View<unsigned char> const& b) {
    int status = 0;
    return manager.Cmp(XoSTRING_T, static_cast<unsigned>(a.length),
                       const_cast<unsigned char*>(a.text), static_cast<unsigned>(b.length),
                       const_cast<unsigned char*>(b.text), CmpOpNoWildcards, 1, format, status) < 0;
  });
}

void SortSortKeys(benchmark::State& state, WordList& list) {
  SortViews(state, SortKeys(list), [](View<unsigned char> const& a, View<unsigned char> const& b) {
    // A key ends in a zero byte, so none is the start of another.
    return std::memcmp(a.text, b.text, static_cast<std::size_t>(std::min(a.length, b.length))) < 0;
  });
}

void BuildKeys(benchmark::State& state, WordList& list) {
  XoTypeMgr const manager;
  std::vector<XoString> texts;
  for (Word const& word : list.Words()) texts.push_back(Text(word, list.language));
  unsigned char key[kMostBytes];
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(manager.Translate(XoSTRING_T, key, kKey, sizeof key, &texts[next],
                                               FormMemory, sizeof(XoString), 1));
    benchmark::ClobberMemory();
    next = next + 1 < texts.size() ? next + 1 : 0;
  }
}

bool const registered = [] {
  for (std::size_t index = 0; index < kLists; ++index) {
    WordList& list = Lists(index);
    std::string const name = list.name;
    Register("sort stored keys, " + name + "/ours", SortStored, std::ref(list), kKey);
    Register("sort stored keys, " + name + "/memcmp of ICU sort keys", SortSortKeys,
             std::ref(list));
    Register("sort stored text, " + name + "/ours", SortStored, std::ref(list), FormLittle);
    Register("sort stored text, " + name + "/ucol_strcollUTF8", SortCollated, std::ref(list));
    Register("build a key, " + name + "/ours", BuildKeys, std::ref(list));
    Register("build a key, " + name + "/ucol_getSortKey", BuildSortKeys, std::ref(list));
  }
  return true;
}();

}  // namespace
