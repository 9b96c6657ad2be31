// Keys of one group, which are compared where they lie: where they end, and what is none of theirs.
#include "src/xotypcmp/key_compare.hpp"

#include <string>

#include "tests/xotypcmp/stored_records.hpp"
#include "xostrcmp.hpp"

namespace xo::test {
namespace {

/// A key behind whose orders half a one stands.
StoredBytes KeyWithHalf(std::string_view text, unsigned char half) {
  StoredBytes key = Key(Orders(text));
  key.insert(key.end() - 2, half);
  ++key[0];
  return key;
}

/// The result of `Cmp` as it stands, for two keys, of which it looks at the first letters itself.
int ResultOf(StoredBytes one, StoredBytes two, unsigned short cmpOp = kLiteral) {
  int status = 1;
  int const result =
      XoTypeMgr().Cmp(XoSTRING_T, static_cast<unsigned>(one.size()), one.data(),
                      static_cast<unsigned>(two.size()), two.data(), cmpOp, 1, kKeyLittle, status);
  EXPECT_EQ(status, 0);
  return result;
}

/// Of a letter's key, as `OrderKey` tells it: letters count by 4, from bit 8 on, and case stands in
/// bit 5. Upper case is the greater.
constexpr int kStep = 4 << 8, kCase = 1 << 5;

TEST(KeyCompare, TheFirstLettersThatDifferDecideAgainstAllOthers) {
  constexpr std::size_t kLetters = 20;
  for (std::size_t place = 0; place < kLetters; ++place) {
    // Before them there is a difference of case, and behind them one of letters, in the other
    // direction.
    std::vector<unsigned> one(place, Upper('M'));
    std::vector<unsigned> two(place, Lower('m'));
    one.push_back(Lower('b'));
    two.push_back(Lower('c'));
    one.resize(kLetters, Lower('z'));
    two.resize(kLetters, Lower('a'));
    EXPECT_EQ(ResultOf(Key(one), Key(two)), -kStep) << place;
    EXPECT_EQ(ResultOf(Key(two), Key(one)), kStep) << place;
  }
}

TEST(KeyCompare, HalfAnOrderAtTheEndOfAKeyIsOneOf8Bits) {
  // A space or symbol, therefore, which counts behind letters and case. There is none of 0.
  for (std::string_view const text : {"", "abc", "abcd", "abcde", "abcdefgh", "abcdefghijk"}) {
    std::string const letters(text);
    StoredBytes const space = KeyWithHalf(text, kSpace);
    StoredBytes const hyphen = KeyWithHalf(text, kHyphen);
    EXPECT_EQ(Compare(space, hyphen, {kKeyLittle}), (Answer{-1, 0})) << text;
    EXPECT_EQ(Compare(hyphen, hyphen, {kKeyLittle}), (Answer{0, 0})) << text;
    EXPECT_EQ(Compare(hyphen, Key(Orders(letters + '-')), {kKeyLittle}), (Answer{0, 0})) << text;
    EXPECT_EQ(Compare(hyphen, Key(Orders(text)), {kKeyLittle}), (Answer{1, 0})) << text;
    EXPECT_EQ(Compare(Key(Orders(text)), hyphen, {kKeyLittle}), (Answer{-1, 0})) << text;
    EXPECT_EQ(Compare(hyphen, Key(Orders(text)), {kKeyLittle, 0x210}), (Answer{0, 0})) << text;
    EXPECT_EQ(Compare(KeyWithHalf(text, 0), Key(Orders(text)), {kKeyLittle}), (Answer{0, 0}))
        << text;
    // Not a letter, though it is the lower half of one.
    EXPECT_EQ(
        Compare(KeyWithHalf(text, Lower('x') & 0xFF), Key(Orders(letters + 'x')), {kKeyLittle}),
        (Answer{-1, 0}))
        << text;
  }
  EXPECT_EQ(
      Compare(KeyWithHalf("abcdefgB", kHyphen), KeyWithHalf("abcdefga", kHyphen), {kKeyLittle}),
      (Answer{1, 0}));
  EXPECT_EQ(
      Compare(KeyWithHalf("abcdefgA", kSpace), KeyWithHalf("abcdefga", kHyphen), {kKeyLittle}),
      (Answer{1, 0}))
      << "case comes before symbols";
}

TEST(KeyCompare, OneSymbolMoreIsTheGreaterAtTheLastLevel) {
  // Keys that are the same but for one symbol, and such as only look it: what decides of these is
  // another symbol, a letter or case.
  struct Pair {
    std::string_view one;
    std::string_view two;
    int result;
    unsigned short cmpOp = kLiteral;
  };
  constexpr int kSymbol = static_cast<int>(kHyphen), kBlank = static_cast<int>(kSpace);
  constexpr unsigned short kWithoutSpaces = 0x90, kWithoutSymbols = 0x210;
  for (Pair const& pair : {
           Pair{"abbot-s", "abbots", kSymbol},
           Pair{"abbots-", "abbots", kSymbol},
           Pair{"-abbots", "abbots", kSymbol},
           Pair{"abb-ot-s", "abb-ots", kSymbol},
           Pair{"abbot s", "abbots", kBlank},
           Pair{"abbot s", "abbots", 0, kWithoutSpaces},
           Pair{"abbot-s", "abbots", kSymbol, kWithoutSpaces},
           Pair{"abbot-s", "abbots", 0, kWithoutSymbols},
           Pair{"abbot s", "abbots", kBlank, kWithoutSymbols},
           Pair{"a-b", "ab", kSymbol},
           Pair{"abbot- s", "abbot s", kBlank},  // the last difference of symbols stands
           Pair{"abbot-s e", "abbots-e", kBlank - kSymbol},
           Pair{"abbot-s ", "abbots", kBlank},
           Pair{"abbot-t", "abbots", kStep},
           Pair{"abbot-r", "abbots", -kStep},
           Pair{"Abbot-s", "abbots", kCase},
           Pair{"abbot-S", "abbots", kCase},
           Pair{"abbot-s", "Abbots", -kCase},
       }) {
    EXPECT_EQ(ResultOf(Key(Orders(pair.one)), Key(Orders(pair.two)), pair.cmpOp), pair.result)
        << pair.one << " against " << pair.two;
    EXPECT_EQ(ResultOf(Key(Orders(pair.two)), Key(Orders(pair.one)), pair.cmpOp), -pair.result)
        << pair.two << " against " << pair.one;
  }
}

TEST(KeyCompare, OneSymbolMoreMayStandBeforeHalfAnOrder) {
  auto const compare = [](std::string_view one, unsigned char half1, std::string_view two,
                          unsigned char half2) {
    return Compare(KeyWithHalf(one, half1), KeyWithHalf(two, half2), {kKeyLittle});
  };
  EXPECT_EQ(compare("abc-d", kHyphen, "abcd", kHyphen), (Answer{1, 0}));
  EXPECT_EQ(compare("abcd", kHyphen, "abc-d", kHyphen), (Answer{-1, 0}));
  EXPECT_EQ(compare("abc-d", kSpace, "abcd", kHyphen), (Answer{-1, 0})) << "the last one stands";
  EXPECT_EQ(compare("abcd-", 0, "abcd", 0), (Answer{1, 0}));
  EXPECT_EQ(compare("abcd-", 0, "abcd", kSpace), (Answer{1, 0}));
}

TEST(KeyCompare, AKeyEndsByItsLengthWhateverClosesIt) {
  for (std::string_view const text : {"", "abc", "abcd", "abcde", "abcdefgh", "abcdefghij"}) {
    // Closed by what looks like one more letter.
    StoredBytes key = Key(Orders(text));
    key[key.size() - 2] = Lower('a') & 0xFF;
    key[key.size() - 1] = Lower('a') >> 8;
    EXPECT_EQ(Compare(key, Key(Orders(text)), {kKeyLittle}), (Answer{0, 0})) << text;
    EXPECT_EQ(Compare(key, Key(Orders(std::string(text) + "aaaaaaaa")), {kKeyLittle}),
              (Answer{-1, 0}))
        << text;
    EXPECT_EQ(Compare(Key(Orders(std::string(text) + "aaaaaaaa")), key, {kKeyLittle}),
              (Answer{1, 0}))
        << text;
    // Half an order is not filled up from there: 0x8C is a symbol and 0x10 a space; filled up they
    // would be letters, the other way round.
    StoredBytes one = KeyWithHalf(text, 0x8C);
    StoredBytes two = KeyWithHalf(text, 0x10);
    one[one.size() - 2] = two[two.size() - 2] = 0x50;
    EXPECT_EQ(Compare(one, two, {kKeyLittle}), (Answer{1, 0})) << text;
  }
}

TEST(KeyCompare, BehindAKeyNothingCounts) {
  // The declared length has room for more, and there are letters, or a key that has some.
  StoredBytes const letters = Key(Orders("zyxwvutsrq"));
  for (std::string_view const text :
       {"", "a", "abc", "abcd", "abcdefg", "abcdefgh", "abcdefghij"}) {
    for (StoredBytes const& more : {letters, StoredBytes(letters.begin() + 4, letters.end())}) {
      StoredBytes key = Key(Orders(text));
      // Closed by what looks like a letter.
      key[key.size() - 2] = Lower('z') & 0xFF;
      key[key.size() - 1] = Lower('z') >> 8;
      key = key + more;
      std::string const later = std::string(text) + "a";
      EXPECT_EQ(Compare(key, Key(Orders(text)), {kKeyLittle}), (Answer{0, 0})) << text;
      EXPECT_EQ(Compare(Key(Orders(text)), key, {kKeyLittle}), (Answer{0, 0})) << text;
      EXPECT_EQ(Compare(key, Key(Orders(later)), {kKeyLittle}), (Answer{-1, 0})) << text;
      EXPECT_EQ(Compare(Key(Orders(later)) + letters, key, {kKeyLittle}), (Answer{1, 0})) << text;
    }
  }
}

TEST(KeyCompare, AKeyOfHardlyMoreThanItsHeaderIsEmpty) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    for (unsigned const length : {2u, 3u, 4u}) {
      StoredBytes const key = UnitBytes(length, format) + StoredBytes{254, 2} +
                              UnitBytes(Lower('a'), format) + UnitBytes(Lower('b'), format);
      EXPECT_EQ(Compare(key, Key({}, format), {format}), (Answer{0, 0})) << length;
      EXPECT_EQ(Compare(Key({}, format), key, {format}), (Answer{0, 0})) << length;
      EXPECT_EQ(Compare(key, Key(Orders("a"), format), {format}), (Answer{-1, 0})) << length;
      EXPECT_EQ(Compare(Key(Orders("abcdefgh"), format), key, {format}), (Answer{1, 0})) << length;
    }
  }
}

TEST(KeyCompare, WhatIsDeclaredBeyondALengthFieldIsNoPartOfTheHeader) {
  // Less the bits that a length field lacks, these headers would be those of keys of group 1 or 19.
  struct Header {
    unsigned char codeSet;
    unsigned char language;
    int beyond;
  };
  // By the bytes, by the letters and by whole orders these stand in three different ways.
  std::vector<StoredBytes> const keys = {Key({Upper('A', 1), Upper('B'), Upper('C'), Upper('D')}),
                                         Key({Lower('a'), Upper('B'), Upper('C'), Upper('D')}),
                                         Key({Upper('B'), Upper('B'), Upper('C'), Upper('D')})};
  for (auto const [codeSet, language, beyond] :
       {Header{255, 1, 0x10000}, Header{0, 2, 0x20000}, Header{254, 20, 0x1000000}}) {
    for (StoredBytes one : keys) {
      for (StoredBytes two : keys) {
        one[2] = two[2] = codeSet;
        one[3] = two[3] = language;
        int const declared = static_cast<int>(one.size()) + beyond;
        EXPECT_EQ(Compare(one, two, {kKeyLittle}, declared, declared),
                  Compare(one, two, {kKeyLittle}))
            << testing::PrintToString(one) << " against " << testing::PrintToString(two);
      }
    }
  }
}

TEST(KeyCompare, ALengthFieldOf0EndsTheRecordHoweverMuchIsDeclared) {
  StoredBytes one = Key(Orders("abcdefgh"));
  StoredBytes two = Key(Orders("zbcdefgh"));
  for (StoredBytes* const record : {&one, &two}) {
    (*record)[0] = (*record)[1] = 0;
    (*record)[2] = 255;
    (*record)[3] = 1;
  }
  // One more than the greatest length field can tell.
  EXPECT_EQ(Compare(one, two, {kKeyLittle}, 0x10002, 0x10002), (Answer{0, 0}));
}

TEST(KeyCompare, OnlyTheFormatOfKeysMakesAKeyOfARecord) {
  auto const closedByZero = [](unsigned first) {
    std::vector<unsigned> orders(8, Upper('D'));
    orders[0] = first;
    StoredBytes key = Key(orders);
    // In the format of records this makes a text without a header, and so without a code set.
    key.back() = 0;
    return key;
  };
  // A comes before B, and the lower byte of its order, 0x8C, behind that of B, 0x10.
  StoredBytes const one = closedByZero(Upper('A', 1));
  StoredBytes const two = closedByZero(Upper('B'));
  EXPECT_EQ(Compare(one, two, {kKeyLittle}), (Answer{-1, 0})) << "by the letters";
  EXPECT_EQ(Compare(one, two, {kLittle}), (Answer{1, 0})) << "by the bytes";
}

TEST(KeyCompare, TheLongestKeysCompareToTheirEnds) {
  constexpr std::size_t kMostOrders = (0xFFFF - 4) / 2;
  StoredBytes const one = Key(std::vector<unsigned>(kMostOrders, Lower('a')));
  StoredBytes two = one;
  // The last order, before the bytes that close the record.
  two[two.size() - 4] = Lower('b') & 0xFF;
  EXPECT_EQ(one.size(), 0x10000u);
  EXPECT_EQ(Compare(one, one, {kKeyLittle}), (Answer{0, 0}));
  EXPECT_EQ(Compare(one, two, {kKeyLittle}), (Answer{-1, 0}));
  EXPECT_EQ(Compare(two, one, {kKeyLittle}), (Answer{1, 0}));
  // One more byte, and the length field is full.
  StoredBytes half = one;
  half.insert(half.end() - 2, kHyphen);
  half[0] = half[1] = 0xFF;
  EXPECT_EQ(Compare(half, one, {kKeyLittle}), (Answer{1, 0}));
  EXPECT_EQ(Compare(half, two, {kKeyLittle}), (Answer{-1, 0}));
}

TEST(KeyCompare, TheKeyOfALetterIsTheFirstLevelOfItsWholeKey) {
  for (unsigned group = 1; group < kUntabledGroup; ++group) {
    for (unsigned order = 0; order <= 0xFFFF; ++order) {
      unsigned const key =
          KeyOf(static_cast<unsigned short>(order), static_cast<unsigned char>(group));
      ASSERT_EQ(LetterKey(order, group), LetterLevel(key)) << order << " of group " << group;
    }
  }
}

TEST(KeyCompare, AsManyKeysCompareAsAreAskedFor) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    StoredBytes const one = Key(Orders("abcdefgh"), format) + Key(Orders("ijklmnop"), format);
    StoredBytes const two = Key(Orders("abcdefgh"), format) + Key(Orders("ijklmnoq"), format);
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 1}), (Answer{0, 0}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 2}), (Answer{-1, 0}));
    EXPECT_EQ(Compare(two, one, {format, kLiteral, 2}), (Answer{1, 0}));
    EXPECT_EQ(Compare(Key(Orders("a"), format), two, {format, kLiteral, 0}), (Answer{0, 0}));
    EXPECT_EQ(Compare(Key(Orders("bbbbbbbb"), format), two, {format, kLiteral, 0}), (Answer{0, 0}));
    EXPECT_EQ(Compare(Key(Orders("bbbbbbbb"), format), Key(Orders("aaaaaaaa"), format),
                      {format, kLiteral, 0}),
              (Answer{0, 0}));
  }
}

TEST(KeyCompare, MoreKeysThanThereAreExceedTheLength) {
  StoredBytes const one = Key(Orders("abcdefgh"));
  StoredBytes const two = Key(Orders("abcdefgi"));
  EXPECT_EQ(Compare(one, two, {kKeyLittle, kLiteral, 2}), (Answer{-1, kExceeded}));
  EXPECT_EQ(Compare(two, one, {kKeyLittle, kLiteral, 2}), (Answer{1, kExceeded}));
  EXPECT_EQ(Compare(one, one, {kKeyLittle, kLiteral, 2}), (Answer{0, kExceeded}));
}

TEST(KeyCompare, KeysOfNoGroupAreNullWhateverTheirOrders) {
  StoredBytes one = Key(Orders("abcdefgh"));
  StoredBytes two = Key(Orders("abcdefgi"));
  StoredBytes const letters = two;
  one[3] = two[3] = 0;
  EXPECT_EQ(Compare(one, two, {kKeyLittle}), (Answer{0, 0}));
  EXPECT_EQ(Compare(two, one, {kKeyLittle}), (Answer{0, 0}));
  EXPECT_EQ(Compare(one, letters, {kKeyLittle}), (Answer{-1, 0}));
  EXPECT_EQ(Compare(letters, one, {kKeyLittle}), (Answer{1, 0}));
}

TEST(KeyCompare, AKeyInAnotherByteOrderIsLongerThanItsBytes) {
  // Read as a big-endian one the length field says 5120, so that the record is cut.
  StoredBytes const one = Key(Orders("abcdefgh"));
  StoredBytes const two = Key(Orders("abcdefgi"));
  for (unsigned char const format : Formats{kBig, kKeyBig}) {
    EXPECT_EQ(Compare(one, two, {format}).status, kExceeded) << int{format};
    EXPECT_EQ(Compare(two, one, {format}).status, kExceeded) << int{format};
  }
}

TEST(KeyCompare, AKeyMayBeAPattern) {
  std::vector<unsigned> pattern = Orders("abcdefgh");
  pattern.push_back(AsteriskOrder());
  pattern.push_back(Lower('z'));
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    StoredBytes const key = Key(Orders("abcdefghijklmnz"), format);
    EXPECT_EQ(Compare(key, Key(pattern, format), {format, 0}), (Answer{0, 0}));
    EXPECT_EQ(Compare(key, Key(pattern, format), {format, kLiteral}), (Answer{-1, 0}));
  }
}

}  // namespace
}  // namespace xo::test
