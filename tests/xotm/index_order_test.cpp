#include "tools/index_order.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

/// The order of text keys in the tree of an index, of all lengths to which they can be cut.

namespace {

using Key = std::vector<unsigned char>;

constexpr unsigned kShortestKey = 6;

std::vector<std::u16string> NastyWords() {
  std::vector<std::u16string> words{u"",        u" ",         u"  ",     u"-",       u"--",
                                    u"' ",      u"co-op",     u"coop",   u"co op",   u"CO-OP",
                                    u"Coop",    u"co\u00f6p", u"\u03b1", u"a\u03b1", u" \u03b1",
                                    u"-\u03b1", u"\u0431a",   u"\u6f22", u"a\u6f22", u"\u6f22a",
                                    u"1\u03b1", u"10",        u"1"};
  constexpr std::u16string_view kLetters = u"aA\u00e1\u00c1bB\u00df1 -'\u03b1\u6f22";
  std::mt19937 random(20240517);
  while (words.size() < 260) {
    // Two or three characters of the list, so that many words begin alike.
    std::array<char16_t, 3> chosen{};
    for (char16_t& each : chosen) each = kLetters[random() % kLetters.size()];
    std::u16string word;
    for (std::size_t length = 1 + random() % 9; length != 0; --length) word += chosen[random() % 3];
    words.push_back(word);
  }
  return words;
}

std::vector<Key> KeysOf(std::vector<std::u16string> const& words, unsigned room,
                        unsigned char format) {
  XoTypeMgr const manager;
  std::vector<Key> keys;
  for (std::u16string const& word : words) {
    std::vector<unsigned short> characters(word.begin(), word.end());
    characters.push_back(0);
    XoString text(characters.data());
    Key key(room);
    key.resize(manager.Translate(XoSTRING_T, key.data(),
                                 static_cast<unsigned char>(format | FormatIndexKey), room, &text,
                                 FormMemory, 0, 1));
    keys.push_back(key);
  }
  return keys;
}

int Compare(Key const& a, Key const& b) {
  MDB_val const first{a.size(), const_cast<unsigned char*>(a.data())};
  MDB_val const second{b.size(), const_cast<unsigned char*>(b.data())};
  int const order = xo::tool::CompareTextKeys(&first, &second);
  return (order > 0) - (order < 0);
}

/// In a list sorted by a strict weak order every key is above those before it but for a run of its
/// equals, and comparing it with any of them says so, whichever stands first. All pairs tell.
void ExpectStrictWeakOrder(std::vector<Key> keys, std::string const& what) {
  std::vector<Key> sorted = std::move(keys);
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](Key const& a, Key const& b) { return Compare(a, b) < 0; });
  std::vector<int> rank(sorted.size(), 0);
  for (std::size_t place = 1; place < sorted.size(); ++place) {
    rank[place] = rank[place - 1] + (Compare(sorted[place - 1], sorted[place]) != 0);
  }
  for (std::size_t a = 0; a < sorted.size(); ++a) {
    for (std::size_t b = 0; b < sorted.size(); ++b) {
      int const expected = (rank[a] > rank[b]) - (rank[a] < rank[b]);
      ASSERT_EQ(Compare(sorted[a], sorted[b]), expected) << what << ", places " << a << ", " << b;
    }
  }
}

TEST(TextKeyOrder, IsAStrictWeakOrderAtEveryLengthOfKeys) {
  auto const words = NastyWords();
  for (unsigned char const format : {FormLittle, FormBig}) {
    xo::tool::SetIndexOrder(XoSTRING_T, format);
    for (unsigned room : {6u, 7u, 8u, 9u, 10u, 11u, 12u, 14u, 16u, 18u, 20u, 24u, 28u, 32u, 256u}) {
      ExpectStrictWeakOrder(KeysOf(words, room, format), "key length " + std::to_string(room) +
                                                             ", format " + std::to_string(format));
    }
  }
}

TEST(TextKeyOrder, AKeyThatEndsAtAChangeOfGroupStandsBehindTheSameKeyWhole) {
  xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
  auto const keys = KeysOf({u"a", u"a\u03b1", u"b"}, 64, FormLittle);
  EXPECT_EQ(Compare(keys[0], keys[1]), -1);
  EXPECT_EQ(Compare(keys[1], keys[0]), 1);
  EXPECT_EQ(Compare(keys[1], keys[2]), -1);
  EXPECT_EQ(Compare(keys[1], keys[1]), 0);
}

TEST(TextKeyOrder, DoesNotDependOnTheByteOrder) {
  auto const words = NastyWords();
  auto const little = KeysOf(words, 256, FormLittle);
  auto const big = KeysOf(words, 256, FormBig);
  for (std::size_t a = 0; a < words.size(); ++a) {
    for (std::size_t b = 0; b < words.size(); ++b) {
      xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
      int const order = Compare(little[a], little[b]);
      xo::tool::SetIndexOrder(XoSTRING_T, FormBig);
      ASSERT_EQ(order, Compare(big[a], big[b])) << a << ", " << b;
    }
  }
}

TEST(TextKeyOrder, KeysCutAtTheSamePlaceShareOne) {
  xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
  auto const keys = KeysOf({u"abcd", u"abce", u"ab"}, 8, FormLittle);
  EXPECT_EQ(Compare(keys[0], keys[1]), 0);
  // Two orders fill the key, so that it cannot say whether its text ends there.
  EXPECT_EQ(Compare(keys[0], keys[2]), 0);
}

TEST(TextKeyOrder, WhatIsTooShortOrLongForAKeyIsNotRead) {
  xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
  auto const keys = KeysOf({u"a"}, 64, FormLittle);
  for (unsigned size = 0; size < kShortestKey; ++size) {
    EXPECT_EQ(Compare(Key(size), keys[0]), -1) << size;
    EXPECT_EQ(Compare(keys[0], Key(size)), 1) << size;
  }
  EXPECT_EQ(Compare(Key(512, 0xFF), keys[0]), 1);
}

}  // namespace
