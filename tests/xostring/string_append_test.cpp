#include <gtest/gtest.h>

#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

XoString Null() {
  XoString null;
  null.SetNullValue();
  return null;
}

TEST(Append, KeepsCodeSetAndLanguageOfTheLeftSide) {
  XoString string = Narrow("ab", kKoi8, 9);
  EXPECT_EQ(&(string += Narrow("cd", kLatin1, 3)), &string);
  EXPECT_EQ(TextOf(string), "abcd");
  EXPECT_EQ(string.size, 5);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 9);
}

TEST(Append, ConvertsWhatIsAppended) {
  // e with caron: EC in ISO 8859-2, U+011B.
  XoString wide = Wide(u"a");
  wide += Narrow("\xEC", kLatin2);
  EXPECT_EQ(WideTextOf(wide), u"a\u011B");
  XoString narrow = Narrow("a", kLatin2);
  narrow += Wide(u"\u011B");
  EXPECT_EQ(TextOf(narrow), "a\xEC");
  // A capital Cyrillic A: B0 in ISO 8859-5, E1 in KOI8-R.
  XoString koi = Narrow("", kKoi8);
  koi += Narrow("\xB0", kCyrillic);
  EXPECT_EQ(TextOf(koi), "\xE1");
  // A capital A in EBCDIC: C1.
  XoString ebcdic = Narrow("", kEbcdic);
  ebcdic += Narrow("A");
  EXPECT_EQ(TextOf(ebcdic), "\xC1");
}

TEST(Append, GivesAQuestionMarkForWhatTheCodeSetLacks) {
  XoString string("a");
  string += Wide(u"\u011B\u4E00");
  EXPECT_EQ(TextOf(string), "a??");
}

TEST(Append, TakesTextWithoutCodeSetAsItStandsWhereTheWidthIsRight) {
  XoString koi = Narrow("a", kKoi8);
  koi += Narrow("\xE9\x95", kNative);
  EXPECT_EQ(TextOf(koi), "a\xE9\x95");
}

TEST(Append, ReadsTextWithoutCodeSetAsNativeWhereTheWidthDiffers) {
  // E9 is an e with acute in either native code set.
  XoString wide = Wide(u"a");
  wide += Narrow("\xE9", kNative);
  EXPECT_EQ(WideTextOf(wide), u"a\u00E9");
}

TEST(Append, ConvertsToTheNativeCodeSetForAStringWithoutOne) {
  XoString string = Narrow("a", kNative);
  string += Narrow("\xE9\xEC", kLatin2);
  EXPECT_EQ(TextOf(string), "a\xE9?");
  EXPECT_EQ(string.codeSet, kNative);
  string += Wide(u"\u00E9");
  EXPECT_EQ(TextOf(string), "a\xE9?\xE9");
}

TEST(Append, OfItselfDoubles) {
  XoString narrow("abc");
  narrow += narrow;
  EXPECT_EQ(TextOf(narrow), "abcabc");
  narrow << narrow;
  EXPECT_EQ(TextOf(narrow), "abcabcabcabc");
  XoString wide = Wide(u"\u0100b");
  wide += wide;
  EXPECT_EQ(WideTextOf(wide), u"\u0100b\u0100b");
}

TEST(Append, OfNoTextLeavesTheCharacters) {
  XoString string("abc");
  string += XoString();
  string += XoString("");
  string += Null();
  EXPECT_EQ(TextOf(string), "abc");
  EXPECT_FALSE(string.IsNullValue());
}

TEST(Append, OfNoTextToNoTextGivesATerminator) {
  XoString narrow;
  narrow += XoString();
  EXPECT_EQ(narrow.size, 1);
  XoString wide(kUnicode, 0);
  wide += XoString();
  EXPECT_EQ(wide.size, 2);
  EXPECT_EQ(wide.Len(), 0);
}

TEST(Append, TakesANewBufferEveryTime) {
  XoString string("abc");
  XoString const before(std::move(string));
  string = before;
  char const* const text = string.text;
  // The old one still exists while the new one is filled, so they differ.
  string += XoString("d");
  EXPECT_NE(string.text, text);
}

TEST(Append, ToANullStringLeavesItNull) {
  XoString string = Null();
  string += XoString("abc");
  EXPECT_TRUE(string.IsNullValue());
  EXPECT_EQ(TextOf(string), "abc");
  string << 5;
  EXPECT_TRUE(string.IsNullValue());
  EXPECT_EQ(TextOf(string), "abc5");
}

TEST(Sum, IsInCodeSetAndLanguageOfTheLeftSide) {
  XoString const left = Narrow("ab", kLatin2, 9);
  XoString const right = Wide(u"\u011B", kUnicode, 3);
  XoString const sum = left + right;
  EXPECT_EQ(TextOf(sum), "ab\xEC");
  EXPECT_EQ(sum.codeSet, kLatin2);
  EXPECT_EQ(sum.language, 9);
  EXPECT_EQ(TextOf(left), "ab");
  EXPECT_EQ(WideTextOf(right), u"\u011B");
  EXPECT_EQ(WideTextOf(right + left), u"\u011Bab");
  EXPECT_EQ(TextOf(left + left), "abab");
}

TEST(Sum, WithANullLeftSideIsNull) {
  EXPECT_TRUE((Null() + XoString("abc")).IsNullValue());
  EXPECT_FALSE((XoString("abc") + Null()).IsNullValue());
}

TEST(Shift, ReturnsTheStringItself) {
  XoString string;
  unsigned short const wide[] = {'w', 0};
  EXPECT_EQ(&(string << XoString("a")), &string);
  EXPECT_EQ(&(string << 'b'), &string);
  EXPECT_EQ(&(string << char{0}), &string);
  EXPECT_EQ(&(string << static_cast<unsigned short>(1)), &string);
  EXPECT_EQ(&(string << short{2}), &string);
  EXPECT_EQ(&(string << 3), &string);
  EXPECT_EQ(&(string << 4u), &string);
  EXPECT_EQ(&(string << 5LL), &string);
  EXPECT_EQ(&(string << 6ULL), &string);
  EXPECT_EQ(&(string << 0.5f), &string);
  EXPECT_EQ(&(string << 0.25), &string);
  EXPECT_EQ(&(string << "c"), &string);
  EXPECT_EQ(&(string << wide), &string);
  EXPECT_EQ(TextOf(string), "ab1234560.50.25cw");
}

TEST(Shift, TheZeroCharacterAppendsNothing) {
  XoString string;
  string << char{0};
  EXPECT_EQ(string.text, nullptr);
  string << "a" << char{0};
  EXPECT_EQ(TextOf(string), "a");
}

TEST(Shift, AnUnsignedShortIsANumberToNarrowAndACharacterToWideText) {
  XoString narrow("a");
  narrow << static_cast<unsigned short>(65) << static_cast<unsigned short>(65535);
  EXPECT_EQ(TextOf(narrow), "a6565535");
  XoString wide = Wide(u"a");
  wide << static_cast<unsigned short>(65) << static_cast<unsigned short>(0x4E00);
  EXPECT_EQ(WideTextOf(wide), u"aA\u4E00");
  XoString none(kNative, 0);
  none << static_cast<unsigned short>(7);
  EXPECT_EQ(TextOf(none), "7");
}

TEST(Shift, AnUnsignedShortOfZeroIsADigitToNarrowAndNothingToWideText) {
  XoString narrow("a");
  narrow << static_cast<unsigned short>(0);
  EXPECT_EQ(TextOf(narrow), "a0");
  XoString wide = Wide(u"a");
  wide << static_cast<unsigned short>(0);
  EXPECT_EQ(WideTextOf(wide), u"a");
  XoString none(kUnicode, 0);
  none << static_cast<unsigned short>(0);
  EXPECT_EQ(none.text, nullptr);
}

TEST(Shift, ACharacterIsOfTheDefault8BitCodeSet) {
  // An A is C1 in EBCDIC; ISO 8859-5 has no e with acute.
  XoString ebcdic = Narrow("", kEbcdic);
  ebcdic << 'A';
  EXPECT_EQ(TextOf(ebcdic), "\xC1");
  XoString cyrillic = Narrow("", kCyrillic);
  cyrillic << static_cast<char>(0xE9) << 'a';
  EXPECT_EQ(TextOf(cyrillic), "?a");
}

TEST(Shift, NumbersAreTheTextOfTheirConstructors) {
  XoString string;
  string << short{-1} << ' ' << std::numeric_limits<int>::min() << ' ' << 4294967295u << ' '
         << std::numeric_limits<long long>::min() << ' '
         << std::numeric_limits<unsigned long long>::max();
  EXPECT_EQ(TextOf(string), "-1 -2147483648 -1 -9223372036854775808 18446744073709551615");
  XoString wide = Wide(u"n=");
  wide << -12 << ',' << 0.5;
  EXPECT_EQ(WideTextOf(wide), u"n=-12,0.5");
}

TEST(Shift, AFloatShowsTheDigitsOfItsDouble) {
  // The nearest float to 0.1 is 0.100000001490116119384765625.
  XoString string;
  string << 0.1f;
  EXPECT_EQ(TextOf(string), "0.10000000149011612");
  string = "";
  string << 0.1;
  EXPECT_EQ(TextOf(string), "0.10000000000000001");
  string = "";
  string << std::numeric_limits<float>::infinity();
  EXPECT_EQ(TextOf(string), "Infinity");
}

TEST(Shift, NullPointersAppendNothing) {
  XoString string("a");
  string << static_cast<char const*>(nullptr) << static_cast<unsigned short const*>(nullptr);
  EXPECT_EQ(TextOf(string), "a");
}

TEST(Shift, TextOfTheOtherWidthIsConverted) {
  XoString narrow("a");
  narrow << Units(u"b\u00E9").data();
  EXPECT_EQ(TextOf(narrow), "ab\xE9");
  XoString wide = Wide(u"a");
  wide << "b\xE9" << 'c';
  EXPECT_EQ(WideTextOf(wide), u"ab\u00E9c");
}

using RandomAppend = RandomTest;

TEST_F(RandomAppend, IsConcatenation) {
  for (int round = 0; round < 300; ++round) {
    bool const isWide = OneIn(2);
    XoString string(isWide ? kUnicode : kLatin1, 0);
    std::u16string expected;
    for (int piece = 0; piece < 12; ++piece) {
      std::u16string text(Below(9), u'a');
      // ISO 8859-1 is the start of Unicode, so that the model needs no tables.
      for (char16_t& unit : text) unit = static_cast<char16_t>(1 + Below(255));
      std::string const bytes(text.begin(), text.end());
      string += OneIn(2) ? Wide(text) : Narrow(bytes);
      expected += text;
      ASSERT_TRUE(IsSound(string));
      ASSERT_EQ(string.size, (expected.size() + 1) * (isWide ? 2 : 1));
    }
    if (isWide) {
      ASSERT_EQ(WideTextOf(string), expected);
    } else {
      ASSERT_EQ(TextOf(string), std::string(expected.begin(), expected.end()));
    }
  }
}

}  // namespace
}  // namespace xo::test
