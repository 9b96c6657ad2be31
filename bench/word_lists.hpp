#pragma once

#include <benchmark/benchmark.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>
#include <xotypemgr.hpp>

/// What the benchmarks of text share: real words, and ICU's collation as their peer.
namespace bench {

inline constexpr unsigned char kLatin1 = 1;
inline constexpr unsigned char kUnicode = 253;

struct CloseCollator {
  void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CloseCollator>;

inline void Require(UErrorCode status) {
  if (U_SUCCESS(status)) return;
  std::cerr << "benchmark: ICU: " << u_errorName(status) << '\n';
  std::exit(2);
}

inline Collator OpenCollator(char const* locale) {
  UErrorCode status = U_ZERO_ERROR;
  Collator collator(ucol_open(locale, &status));
  Require(status);
  return collator;
}

/// A word in the encodings that are compared.
struct Word {
  std::string utf8;
  std::string latin1;
  std::u16string utf16;
};

/// 100,000 words of one of Debian's lists, of those that code set 1 holds, shuffled.
struct WordList {
  char const* name;
  char const* path;
  char const* locale;
  unsigned char language;
  std::vector<Word> words{};

  std::vector<Word> const& Words() {
    if (words.empty()) Read();
    return words;
  }

 private:
  void Read() {
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    std::shuffle(lines.begin(), lines.end(), std::mt19937(20240607));
    // Words that are made and then dropped would leave holes in the heap, over which what a
    // benchmark makes of the others would scatter.
    constexpr std::size_t kWords = 100000;
    words.reserve(kWords);
    for (std::string const& line : lines) {
      if (words.size() == kWords) return;
      Append(line);
    }
    std::cerr << "benchmark: " << path << ": too few words, is its package installed?\n";
    std::exit(2);
  }

  void Append(std::string const& line) {
    XoString text;
    if (XoMBS2XoString(line.data(), text, static_cast<int>(line.size())) <= 0) return;
    Word word{line, {}, {}};
    for (int place = 0; place < text.Len(); ++place) {
      unsigned short const code = text[place].Code();
      if (code >= 256) return;
      word.utf16 += static_cast<char16_t>(code);
      word.latin1 += static_cast<char>(code);
    }
    words.push_back(std::move(word));
  }
};

inline constexpr std::size_t kLists = 3;
inline WordList& Lists(std::size_t index) {
  static WordList lists[kLists] = {
      {"English words", "/usr/share/dict/american-english", "en_US", 1},
      {"German words", "/usr/share/dict/ngerman", "de_DE", 2},
      {"French words", "/usr/share/dict/french", "fr_FR", 6}};
  return lists[index];
}

/// A word in one of the encodings, in a block of memory that holds all of them one behind another.
template <class Unit>
struct View {
  Unit const* text;
  int32_t length;
};

template <class Unit>
struct Block {
  std::vector<Unit> units;
  std::vector<View<Unit>> views;

  template <class Encoding>
  Block(std::vector<Word> const& words, Encoding Word::*encoding)
      : Block(words, [encoding](Word const& word, std::vector<Unit>& all) {
          Encoding const& text = word.*encoding;
          all.insert(all.end(), text.c_str(), text.c_str() + text.size() + 1);
          return text.size();
        }) {}

  /// `append` puts a word behind the others, and tells its length.
  template <class Append>
  requires std::invocable < Append, Word const&, std::vector<Unit>
  & > Block(std::vector<Word> const& words, Append append) {
    std::vector<std::size_t> starts;
    for (Word const& word : words) {
      starts.push_back(units.size());
      views.push_back({nullptr, static_cast<int32_t>(append(word, units))});
    }
    for (std::size_t index = 0; index < views.size(); ++index) {
      views[index].text = units.data() + starts[index];
    }
  }
};

template <class Unit, class Less>
void SortViews(benchmark::State& state, Block<Unit> const& block, Less less) {
  std::vector<View<Unit>> order;
  for (auto _ : state) {
    order = block.views;
    std::sort(order.begin(), order.end(), less);
    benchmark::DoNotOptimize(order.data());
  }
}

/// The peer of sorting narrow text.
inline void SortCollated(benchmark::State& state, WordList& list) {
  Collator const collator = OpenCollator(list.locale);
  SortViews(state, Block<char>(list.Words(), &Word::utf8),
            [&collator](View<char> const& a, View<char> const& b) {
              UErrorCode status = U_ZERO_ERROR;
              return ucol_strcollUTF8(collator.get(), a.text, a.length, b.text, b.length, &status) <
                     0;
            });
}

/// The peer of building a key or a hash for each word.
inline void BuildSortKeys(benchmark::State& state, WordList& list) {
  Collator const collator = OpenCollator(list.locale);
  std::vector<Word> const& words = list.Words();
  std::uint8_t key[1024];
  std::size_t next = 0;
  for (auto _ : state) {
    std::u16string const& word = words[next].utf16;
    benchmark::DoNotOptimize(ucol_getSortKey(collator.get(), word.data(),
                                             static_cast<int32_t>(word.size()), key, sizeof key));
    benchmark::ClobberMemory();
    next = next + 1 < words.size() ? next + 1 : 0;
  }
}

template <class Function, class... Arguments>
void Register(std::string const& name, Function function, Arguments&&... arguments) {
  benchmark::RegisterBenchmark(name.c_str(), function, std::forward<Arguments>(arguments)...);
}

}  // namespace bench
