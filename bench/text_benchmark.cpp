#include <benchmark/benchmark.h>
#include <unicode/ucol.h>
#include <unicode/usearch.h>
#include <unicode/ustring.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/word_lists.hpp"

using namespace bench;

namespace {

char const* Bytes(char16_t const* text) {
  return static_cast<char const*>(static_cast<void const*>(text));
}

void SortOurs8(benchmark::State& state, WordList& list) {
  unsigned char const language = list.language;
  SortViews(state, Block<char>(list.Words(), &Word::latin1),
            [language](View<char> const& a, View<char> const& b) {
              return XoStrCmp(kLatin1, language, a.text, kLatin1, language, b.text, 0x0010) < 0;
            });
}

void SortOurs16(benchmark::State& state, WordList& list) {
  unsigned char const language = list.language;
  SortViews(state, Block<char16_t>(list.Words(), &Word::utf16),
            [language](View<char16_t> const& a, View<char16_t> const& b) {
              return XoStrCmp(kUnicode, language, Bytes(a.text), kUnicode, language, Bytes(b.text),
                              0x0010) < 0;
            });
}

void SortIcu16(benchmark::State& state, WordList& list) {
  Collator const collator = OpenCollator(list.locale);
  SortViews(state, Block<char16_t>(list.Words(), &Word::utf16),
            [&collator](View<char16_t> const& a, View<char16_t> const& b) {
              return ucol_strcoll(collator.get(), a.text, a.length, b.text, b.length) < 0;
            });
}

void HashOurs(benchmark::State& state, WordList& list) {
  std::vector<Word> const& words = list.Words();
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(HashString(kLatin1, list.language, words[next].latin1.c_str()));
    next = (next + 1) % words.size();
  }
}

/// Running text of `length` characters.
std::string RunningText(std::size_t length) {
  std::string text;
  char const* const kWords[] = {"the",  "quick", "brown", "fox", "jumps",
                                "over", "a",     "lazy",  "dog"};
  for (std::size_t word = 0; text.size() < length; ++word) {
    text += kWords[word * 7 % std::size(kWords)];
    text += ' ';
  }
  text.resize(length);
  return text;
}

struct LongPair {
  std::string first;
  std::string second;
};

LongPair EqualPair() { return {RunningText(1000), RunningText(1000)}; }
LongPair LastDiffers() {
  LongPair pair = EqualPair();
  pair.first.back() = 'x';
  pair.second.back() = 'y';
  return pair;
}

void LongOurs(benchmark::State& state, LongPair const& pair) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        XoStrCmp(kLatin1, 1, pair.first.c_str(), kLatin1, 1, pair.second.c_str(), 0x0010));
  }
}

void LongMemcmp(benchmark::State& state, LongPair const& pair) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        std::memcmp(pair.first.data(), pair.second.data(), pair.first.size() + 1));
    benchmark::ClobberMemory();
  }
}

void LongIcu(benchmark::State& state, LongPair const& pair) {
  Collator const collator = OpenCollator("en_US");
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    benchmark::DoNotOptimize(
        ucol_strcollUTF8(collator.get(), pair.first.data(), static_cast<int32_t>(pair.first.size()),
                         pair.second.data(), static_cast<int32_t>(pair.second.size()), &status));
  }
}

/// A text that a pattern matches but for its end, against that pattern, or against itself.
void Match(benchmark::State& state, std::string const& text, std::string const& pattern) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        XoStrCmp(kLatin1, 1, text.c_str(), kLatin1, 1, pattern.c_str(), 0x0000));
  }
}

std::string AlmostMatching() { return "a" + std::string(9998, 'b') + "d"; }

constexpr std::size_t kSearchedLength = 30000;
std::string SearchedText() { return RunningText(kSearchedLength - 6) + "zephyr"; }

void FindOurs(benchmark::State& state) {
  XoString const text(SearchedText().c_str());
  XoString const word("zephyr");
  for (auto _ : state) benchmark::DoNotOptimize(text.Find(word));
}

struct CloseSearch {
  void operator()(UStringSearch* search) const { usearch_close(search); }
};

void FindIcu(benchmark::State& state) {
  std::string const narrow = SearchedText();
  std::u16string const text(narrow.begin(), narrow.end());
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<UStringSearch, CloseSearch> const search(usearch_open(
      u"zephyr", 6, text.data(), static_cast<int32_t>(text.size()), "en_US", nullptr, &status));
  Require(status);
  for (auto _ : state) {
    usearch_reset(search.get());
    benchmark::DoNotOptimize(usearch_first(search.get(), &status));
  }
  Require(status);
}

/// French prose, in UTF-8: about one character in twelve takes two bytes.
std::string Prose() {
  std::string text;
  while (text.size() < 8000) {
    text +=
        "Tous les êtres humains naissent libres et égaux en dignité et en droits. Ils sont doués "
        "de raison et de conscience et doivent agir les uns envers les autres. ";
  }
  return text;
}

void DecodeOurs(benchmark::State& state) {
  std::string const bytes = Prose();
  XoString text;
  for (auto _ : state) {
    benchmark::DoNotOptimize(XoMBS2XoString(bytes.data(), text, static_cast<int>(bytes.size())));
  }
}

void DecodeIcu(benchmark::State& state) {
  std::string const bytes = Prose();
  // A buffer of its own each time, as a string has.
  for (auto _ : state) {
    std::unique_ptr<UChar[]> const buffer(new UChar[bytes.size() + 1]);
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(buffer.get(), static_cast<int32_t>(bytes.size() + 1), &length, bytes.data(),
                  static_cast<int32_t>(bytes.size()), &status);
    benchmark::DoNotOptimize(length);
    benchmark::DoNotOptimize(buffer.get());
  }
}

void EncodeOurs(benchmark::State& state) {
  std::string bytes = Prose();
  XoString text;
  XoMBS2XoString(bytes.data(), text, static_cast<int>(bytes.size()));
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        XoString2XoMBS(text, bytes.data(), static_cast<int>(bytes.size() + 1)));
  }
}

void EncodeIcu(benchmark::State& state) {
  std::string bytes = Prose();
  XoString text;
  XoMBS2XoString(bytes.data(), text, static_cast<int>(bytes.size()));
  std::u16string units;
  for (int place = 0; place < text.Len(); ++place) {
    units += static_cast<char16_t>(text[place].Code());
  }
  for (auto _ : state) {
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(bytes.data(), static_cast<int32_t>(bytes.size() + 1), &length, units.data(),
                static_cast<int32_t>(units.size()), &status);
    benchmark::DoNotOptimize(length);
  }
}

bool const registered = [] {
  for (std::size_t index = 0; index < kLists; ++index) {
    WordList& list = Lists(index);
    std::string const name = list.name;
    Register("sort 8-bit, " + name + "/ours", SortOurs8, std::ref(list));
    Register("sort 8-bit, " + name + "/ucol_strcollUTF8", SortCollated, std::ref(list));
    Register("sort 16-bit, " + name + "/ours", SortOurs16, std::ref(list));
    Register("sort 16-bit, " + name + "/ucol_strcoll", SortIcu16, std::ref(list));
    Register("hash a word, " + name + "/ours", HashOurs, std::ref(list));
    Register("hash a word, " + name + "/ucol_getSortKey", BuildSortKeys, std::ref(list));
  }
  struct LongCase {
    char const* name;
    LongPair pair;
  };
  for (LongCase const& each : {LongCase{"1,000 equal characters", EqualPair()},
                               LongCase{"the last of 1,000", LastDiffers()}}) {
    std::string const name = each.name;
    Register(name + " against memcmp/ours", LongOurs, each.pair);
    Register(name + " against memcmp/memcmp", LongMemcmp, each.pair);
    Register(name + " against ICU/ours", LongOurs, each.pair);
    Register(name + " against ICU/ucol_strcollUTF8", LongIcu, each.pair);
  }
  Register("pattern a*b*c, 10,000 characters/ours", Match, AlmostMatching(), "a*b*c");
  Register("pattern a*b*c, 10,000 characters/plain match", Match, AlmostMatching(),
           AlmostMatching());
  Register("find in 30,000 characters/ours", FindOurs);
  Register("find in 30,000 characters/usearch", FindIcu);
  Register("UTF-8 in/ours", DecodeOurs);
  Register("UTF-8 in/u_strFromUTF8", DecodeIcu);
  Register("UTF-8 out/ours", EncodeOurs);
  Register("UTF-8 out/u_strToUTF8", EncodeIcu);
  return true;
}();

}  // namespace
