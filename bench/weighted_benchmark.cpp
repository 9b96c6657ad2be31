#include <benchmark/benchmark.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <cstring>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/hand_written.hpp"
#include "bench/word_lists.hpp"

using namespace bench;

namespace {

constexpr unsigned char kKey = FormatIndexKey | FormLittle;
/// The longest key of an index.
constexpr unsigned kMostBytes = 254;

using Bytes = Block<unsigned char>;

template <class Text>
std::vector<Text> TextsOf(WordList& list) {
  std::vector<Text> texts;
  texts.reserve(list.Words().size());
  for (Word const& word : list.Words()) texts.emplace_back(word.latin1.c_str());
  return texts;
}

template <class Text>
void SortTexts(benchmark::State& state, WordList& list) {
  std::vector<Text> const texts = TextsOf<Text>(list);
  std::vector<Text const*> order;
  for (auto _ : state) {
    order.clear();
    for (Text const& text : texts) order.push_back(&text);
    std::sort(order.begin(), order.end(), [](Text const* a, Text const* b) { return *a < *b; });
    benchmark::DoNotOptimize(order.data());
  }
}

/// The peer: pointers as well, to what knows where a text is.
void SortCollatedTexts(benchmark::State& state, WordList& list) {
  Collator const collator = OpenCollator(list.locale);
  Block<char> const block(list.Words(), &Word::utf8);
  std::vector<View<char> const*> order;
  for (auto _ : state) {
    order.clear();
    for (View<char> const& text : block.views) order.push_back(&text);
    std::sort(order.begin(), order.end(), [&](View<char> const* a, View<char> const* b) {
      UErrorCode status = U_ZERO_ERROR;
      return ucol_strcollUTF8(collator.get(), a->text, a->length, b->text, b->length, &status) < 0;
    });
    benchmark::DoNotOptimize(order.data());
  }
}

template <class Text>
unsigned BuildKey(XoTypeMgr const& manager, char type, Text& text, unsigned char* key) {
  return manager.Translate(type, key, kKey, kMostBytes, &text, FormMemory, sizeof text, 1);
}

template <class Text>
void SortKeys(benchmark::State& state, WordList& list, char type, XCompare* compare) {
  benchmark::DoNotOptimize(compare);
  XoTypeMgr const manager;
  Bytes const keys(list.Words(), [&](Word const& word, std::vector<unsigned char>& all) {
    Text text(word.latin1.c_str());
    unsigned char key[kMostBytes];
    unsigned const size = BuildKey(manager, type, text, key);
    all.insert(all.end(), key, key + size);
    return size;
  });
  SortViews(state, keys, [compare](View<unsigned char> const& a, View<unsigned char> const& b) {
    int status;
    return compare(kKey, static_cast<unsigned>(a.length), const_cast<unsigned char*>(a.text),
                   static_cast<unsigned>(b.length), const_cast<unsigned char*>(b.text),
                   CmpOpNoWildcards, 1, status) < 0;
  });
}

template <class Text>
void BuildKeys(benchmark::State& state, WordList& list, char type) {
  XoTypeMgr const manager;
  std::vector<Text> texts = TextsOf<Text>(list);
  unsigned char key[kMostBytes];
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(BuildKey(manager, type, texts[next], key));
    benchmark::ClobberMemory();
    next = next + 1 < texts.size() ? next + 1 : 0;
  }
}

template <class Text>
void RegisterType(std::string const& type, WordList& list, char id, XCompare* compare) {
  std::string const name = type + ", " + list.name;
  Register("sort " + name + "/ours", SortTexts<Text>, std::ref(list));
  Register("sort " + name + "/ucol_strcollUTF8", SortCollatedTexts, std::ref(list));
  Register("sort keys of " + name + "/ours", SortKeys<Text>, std::ref(list), id, compare);
  Register("sort keys of " + name + "/memcmp", SortKeys<Text>, std::ref(list), id,
           CompareShorterBytes);
  Register("build a key of " + name + "/ours", BuildKeys<Text>, std::ref(list), id);
  Register("build a key of " + name + "/ucol_getSortKey", BuildSortKeys, std::ref(list));
}

[[maybe_unused]] bool const registered = [] {
  for (std::size_t index = 0; index < kLists; ++index) {
    WordList& list = Lists(index);
    RegisterType<XoIString>("XoIString", list, XoISTRING_T, XoIStringCompare);
    RegisterType<XoCaseIString>("XoCaseIString", list, XoCASEISTRING_T, XoCaseIStringCompare);
  }
  return true;
}();

}  // namespace
