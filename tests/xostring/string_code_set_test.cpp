#include <gtest/gtest.h>

#include <climits>

#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kUnknown = 200, kUnknownWide = 240;

unsigned short ToUnicode(unsigned char codeSet, unsigned short code) {
  return XoLanguageContext::QueryCodeSet(codeSet)->ToUnicode(code);
}

TEST(MapToCodeSet, ConvertsTheText) {
  XoString string = Narrow("\xB0 1", kCyrillic, 9);
  EXPECT_EQ(string.MapToCodeSet(kKoi8), 0);
  EXPECT_EQ(TextOf(string), "\xE1 1");
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 9);
  EXPECT_EQ(string.MapToCodeSet(kUnicode), 0);
  EXPECT_EQ(WideTextOf(string), u"\u0410 1");
  EXPECT_EQ(string.size, 8);
  EXPECT_EQ(string.MapToCodeSet(kCyrillic), 0);
  EXPECT_EQ(TextOf(string), "\xB0 1");
  EXPECT_EQ(string.size, 4);
}

TEST(MapToCodeSet, RefusesNoCodeSet) {
  XoString string = Narrow("abc", kKoi8);
  EXPECT_EQ(string.MapToCodeSet(0), kBadArgument);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(TextOf(string), "abc");
  XoString none = Narrow("abc", kNative);
  EXPECT_EQ(none.MapToCodeSet(0), kBadArgument);
}

TEST(MapToCodeSet, ToTheSameDoesNothing) {
  XoString string = Narrow("abc", kKoi8);
  char const* const text = string.text;
  EXPECT_EQ(string.MapToCodeSet(kKoi8), 0);
  EXPECT_EQ(string.text, text);
}

TEST(MapToCodeSet, WithoutTextOnlyRelabels) {
  XoString string(kLatin1, 9);
  EXPECT_EQ(string.MapToCodeSet(kUnicode), 0);
  EXPECT_EQ(string.codeSet, kUnicode);
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
}

TEST(MapToCodeSet, ReadsTextWithoutCodeSetAsNative) {
  XoString string = Narrow("\xE9", kNative);
  EXPECT_EQ(string.MapToCodeSet(kUnicode), 0);
  EXPECT_EQ(WideTextOf(string), u"\u00E9");
}

TEST(MapToCodeSet, GivesTheSubstituteForWhatTheSetLacks) {
  XoString string = Wide(u"a\u4E00");
  EXPECT_EQ(string.MapToCodeSet(kLatin1), 0);
  EXPECT_EQ(TextOf(string), "a?");
  // The letter a and the question mark in EBCDIC.
  string = Wide(u"a\u4E00");
  string.MapToCodeSet(kEbcdic);
  EXPECT_EQ(TextOf(string), "\x81\x6F");
}

TEST(MapToCodeSet, TwoHundredFiftyFiveStandsForTheDefault) {
  XoString string = Wide(u"a\u00E9");
  EXPECT_EQ(string.MapToCodeSet(kByDefault), 0);
  EXPECT_EQ(string.codeSet, XoString::GetDefaultCodeSet());
  EXPECT_EQ(TextOf(string), "a\xE9");
}

TEST(MapToCodeSet, AgreesWithTheTablesForEveryCodeOfEveryNarrowSet) {
  for (unsigned char set = 1; set <= 35; ++set) {
    std::string bytes;
    for (int code = 1; code < 256; ++code) bytes += static_cast<char>(code);
    XoString string = Narrow(bytes, set);
    string.MapToCodeSet(kUnicode);
    std::u16string const wide = WideTextOf(string);
    ASSERT_EQ(wide.size(), 255u);
    string.MapToCodeSet(set);
    std::string const back = TextOf(string);
    ASSERT_EQ(back.size(), 255u);
    for (unsigned code = 1; code < 256; ++code) {
      char16_t const unicode = wide[code - 1];
      EXPECT_EQ(unicode, ToUnicode(set, static_cast<unsigned short>(code)));
      if (unicode == 0xFFFD) continue;
      EXPECT_EQ(ToUnicode(set, static_cast<unsigned char>(back[code - 1])), unicode);
    }
  }
}

TEST(UnknownCodeSet, TakesCodesAsTheyAre) {
  XoString string = Narrow("a\xE9", kCyrillic);
  EXPECT_EQ(string.MapToCodeSet(kUnknown), 0);
  EXPECT_EQ(string.codeSet, kUnknown);
  EXPECT_EQ(TextOf(string), "a\xE9");
  XoString wide = Wide(u"a\u4E00");
  EXPECT_EQ(wide.MapToCodeSet(kUnknownWide), 0);
  EXPECT_EQ(WideTextOf(wide), u"a\u4E00");
}

TEST(UnknownCodeSet, GivesSubstitutesToOthers) {
  XoString string = Narrow("ab", kUnknown);
  EXPECT_EQ(string.MapToCodeSet(kLatin1), 0);
  EXPECT_EQ(TextOf(string), "??");
}

TEST(UnknownCodeSet, EveryConversionKeepsTheStringSound) {
  for (int from = 0; from < 255; ++from) {
    for (int to = 1; to < 256; to += 3) {
      XoString string = from > 224 ? Wide(u"a\u0100\u4E00z") : Narrow("a\xE9\x80z");
      string.codeSet = static_cast<unsigned char>(from);
      ASSERT_EQ(string.MapToCodeSet(static_cast<unsigned char>(to)), 0);
      ASSERT_TRUE(IsSound(string)) << from << ' ' << to;
      string += XoString("tail");
      string.SetCodeSet(static_cast<unsigned char>(from));
      ASSERT_TRUE(IsSound(string)) << from << ' ' << to;
    }
  }
}

TEST(SetCodeSet, RelabelsWithinTheWidth) {
  XoString string = Narrow("\xB0", kCyrillic);
  char const* const text = string.text;
  string.SetCodeSet(kKoi8);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.text, text);
  EXPECT_EQ(TextOf(string), "\xB0");
  string.SetCodeSet(kNative);
  EXPECT_EQ(string.codeSet, kNative);
  EXPECT_EQ(string.text, text);
  XoString wide = Wide(u"\u4E00");
  wide.SetCodeSet(226);
  EXPECT_EQ(WideTextOf(wide), u"\u4E00");
  EXPECT_EQ(wide.codeSet, 226);
}

TEST(SetCodeSet, ConvertsWhereTheWidthChanges) {
  XoString string = Narrow("a\xB0", kCyrillic);
  string.SetCodeSet(kUnicode);
  EXPECT_EQ(WideTextOf(string), u"a\u0410");
  EXPECT_EQ(string.codeSet, kUnicode);
  string.SetCodeSet(kKoi8);
  EXPECT_EQ(TextOf(string), "a\xE1");
}

TEST(SetCodeSet, ConvertsWideTextToTheNativeSetForNone) {
  XoString string = Wide(u"a\u00E9\u011B");
  string.SetCodeSet(0);
  EXPECT_EQ(string.codeSet, 0);
  EXPECT_EQ(TextOf(string), "a\xE9?");
}

TEST(SetCodeSet, WithoutTextOnlyRelabels) {
  XoString string(kLatin1, 0);
  string.SetCodeSet(kUnicode);
  EXPECT_EQ(string.codeSet, kUnicode);
  EXPECT_EQ(string.text, nullptr);
  string.SetCodeSet(0);
  EXPECT_EQ(string.codeSet, 0);
}

TEST(SetCodeSet, TwoHundredFiftyFiveStandsForTheDefault) {
  XoString string = Wide(u"a\u00E9");
  string.SetCodeSet(kByDefault);
  EXPECT_EQ(string.codeSet, XoString::GetDefaultCodeSet());
  EXPECT_EQ(TextOf(string), "a\xE9");
}

TEST(SetCodeSetCode, RelabelsAndNeverConverts) {
  XoString string = Narrow("\xB0", kCyrillic);
  EXPECT_EQ(string.SetCodeSetCode(kKoi8), 0);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(TextOf(string), "\xB0");
  EXPECT_EQ(string.SetCodeSetCode(kNative), 0);
  EXPECT_EQ(string.codeSet, kNative);
}

TEST(SetCodeSetCode, RefusesAChangeOfWidth) {
  XoString string = Narrow("\xB0", kCyrillic);
  EXPECT_EQ(string.SetCodeSetCode(kUnicode), kBadArgument);
  EXPECT_EQ(string.codeSet, kCyrillic);
  EXPECT_EQ(TextOf(string), "\xB0");
  XoString wide = Wide(u"a");
  EXPECT_EQ(wide.SetCodeSetCode(kLatin1), kBadArgument);
  EXPECT_EQ(wide.SetCodeSetCode(0), kBadArgument);
  EXPECT_EQ(wide.codeSet, kUnicode);
  // Without text as well.
  XoString empty(kLatin1, 0);
  EXPECT_EQ(empty.SetCodeSetCode(kUnicode), kBadArgument);
  EXPECT_EQ(empty.SetCodeSetCode(225), kBadArgument);
  EXPECT_EQ(empty.SetCodeSetCode(224), 0);
}

TEST(CopyMapped, ConvertsTheSourceAndTakesItsLanguage) {
  XoString target("old");
  XoString const source = Narrow("a\xB0", kCyrillic, 9);
  EXPECT_EQ(target.CopyMapped(source, kUnicode), 2);
  EXPECT_EQ(WideTextOf(target), u"a\u0410");
  EXPECT_EQ(target.codeSet, kUnicode);
  EXPECT_EQ(target.language, 9);
  EXPECT_EQ(TextOf(source), "a\xB0");
  XoString koi;
  EXPECT_EQ(koi.CopyMapped(source, kKoi8, -1), 2);
  EXPECT_EQ(TextOf(koi), "a\xE1");
  EXPECT_EQ(koi.size, 3);
}

TEST(CopyMapped, RefusesTheStringItself) {
  XoString string = Narrow("abc", kKoi8, 9);
  EXPECT_EQ(string.CopyMapped(string, kUnicode), kBadArgument);
  EXPECT_EQ(TextOf(string), "abc");
  EXPECT_EQ(string.codeSet, kKoi8);
}

TEST(CopyMapped, TakesAtMostTheLengthGiven) {
  XoString target;
  EXPECT_EQ(target.CopyMapped(XoString("abcdef"), kLatin1, 2), 2);
  EXPECT_EQ(TextOf(target), "ab");
  EXPECT_EQ(target.CopyMapped(XoString("abcdef"), kLatin1, 100), 6);
  EXPECT_EQ(TextOf(target), "abcdef");
  EXPECT_EQ(target.CopyMapped(XoString("abcdef"), kLatin1, 0), 0);
  EXPECT_EQ(TextOf(target), "");
  EXPECT_EQ(target.CopyMapped(XoString("abcdef"), kLatin1, SHRT_MIN), 6);
  EXPECT_EQ(TextOf(target), "abcdef");
}

TEST(CopyMapped, KeepsABufferThatIsLargeEnough) {
  XoString target("0123456789");
  char const* const text = target.text;
  EXPECT_EQ(target.CopyMapped(XoString("abc"), kUnicode), 3);
  EXPECT_EQ(target.text, text);
  EXPECT_EQ(target.size, 11);
  EXPECT_EQ(WideTextOf(target), u"abc");
  // Ten bytes for four characters with their terminator fit, twelve do not.
  EXPECT_EQ(target.CopyMapped(XoString("abcd"), kUnicode), 4);
  EXPECT_EQ(target.text, text);
  EXPECT_EQ(target.CopyMapped(XoString("abcde"), kUnicode), 5);
  EXPECT_EQ(target.size, 12);
  EXPECT_EQ(WideTextOf(target), u"abcde");
}

TEST(CopyMapped, MakesRoomForTheLengthThatIsAsked) {
  XoString target;
  EXPECT_EQ(target.CopyMapped(XoString("abc"), kUnicode, 10), 3);
  EXPECT_EQ(target.size, 22);
  EXPECT_EQ(WideTextOf(target), u"abc");
  // That has room for 21 characters of one byte, and a terminator; not for 22.
  EXPECT_EQ(target.CopyMapped(XoString("de"), kLatin1, 21), 2);
  EXPECT_EQ(target.size, 22);
  EXPECT_EQ(target.CopyMapped(XoString("fg"), kLatin1, 22), 2);
  EXPECT_EQ(target.size, 23);
  EXPECT_EQ(TextOf(target), "fg");
}

TEST(CopyMapped, OfNoTextLeavesNone) {
  XoString target("abc");
  EXPECT_EQ(target.CopyMapped(XoString(), kUnicode), 0);
  EXPECT_TRUE(target.IsEmpty());
  EXPECT_EQ(target.codeSet, kUnicode);
  EXPECT_TRUE(IsSound(target));
  XoString null;
  null.SetNullValue();
  EXPECT_EQ(target.CopyMapped(null, kLatin1), 0);
  EXPECT_TRUE(target.IsNullValue());
  EXPECT_TRUE(target.IsEmpty());
}

TEST(CopyMapped, ToNoCodeSetGivesNativeText) {
  XoString target;
  EXPECT_EQ(target.CopyMapped(Wide(u"\u00E9\u011B"), 0), 2);
  EXPECT_EQ(target.codeSet, 0);
  EXPECT_EQ(TextOf(target), "\xE9?");
}

/// A string whose buffer is longer than its text.
XoString Roomy(std::string const& text, unsigned char codeSet) {
  XoString string("a buffer that is much longer than any of the texts in here are");
  string.CopyMapped(Narrow(text), codeSet);
  return string;
}

TEST(LongerBuffer, EditsWorkOnTheText) {
  for (unsigned char const set : {kLatin1, kUnicode}) {
    auto const edited = [set](auto edit) {
      XoString string("a buffer that is much longer than any of the texts in here are");
      string.CopyMapped(XoString("abc  "), set);
      EXPECT_GT(string.size, 12);
      edit(string);
      EXPECT_TRUE(IsSound(string));
      string.MapToCodeSet(kUnicode);
      return WideTextOf(string);
    };
    EXPECT_EQ(edited([](XoString& s) { s += XoString("x"); }), u"abc  x");
    EXPECT_EQ(edited([](XoString& s) { s.Insert(XoString("x"), 1); }), u"axbc  ");
    EXPECT_EQ(edited([](XoString& s) { s.Insert(XoString("x"), 5); }), u"abc  x");
    EXPECT_EQ(edited([](XoString& s) { s.Insert(XoString("x"), 6); }), u"abc  ");
    EXPECT_EQ(edited([](XoString& s) { s.Replace(XoString("xyz"), 3); }), u"abcxy");
    EXPECT_EQ(edited([](XoString& s) { s.Cut(1, 2); }), u"a  ");
    EXPECT_EQ(edited([](XoString& s) { s.RightTrim(); }), u"abc");
    EXPECT_EQ(edited([](XoString& s) { s.Trim(); }), u"abc");
    EXPECT_EQ(edited([](XoString& s) { s.ToUpper(); }), u"ABC  ");
    EXPECT_EQ(edited([](XoString& s) { s.Expand(7, '.'); }), u"abc  ..");
    EXPECT_EQ(edited([](XoString& s) { s = s.Copy(1, -1); }), u"bc  ");
  }
}

TEST(LongerBuffer, ACopyHasTheBufferOfItsText) {
  XoString const roomy = Roomy("abc", kUnicode);
  XoString const copy(roomy);
  EXPECT_EQ(copy.size, 8);
  EXPECT_EQ(WideTextOf(copy), u"abc");
}

TEST(TextDefaults, AreThoseOfTheLanguageContext) {
  unsigned char const codeSet = XoLanguageContext::GetDefaultCodeSet();
  unsigned char const language = XoLanguageContext::GetDefaultLanguage();
  unsigned short const cmpOp = XoLanguageContext::GetDefaultCmpOp();
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(9);
  XoString::SetDefaultCmpOp(0x0030);
  EXPECT_EQ(XoLanguageContext::GetDefaultCodeSet(), kKoi8);
  EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 9);
  EXPECT_EQ(XoLanguageContext::GetDefaultCmpOp(), 0x0030);
  XoLanguageContext::SetDefaultCodeSet(codeSet);
  XoLanguageContext::SetDefaultLanguage(language);
  XoLanguageContext::SetDefaultCmpOp(cmpOp);
  EXPECT_EQ(XoString::GetDefaultCodeSet(), codeSet);
  EXPECT_EQ(XoString::GetDefaultLanguage(), language);
  EXPECT_EQ(XoString::GetDefaultCmpOp(), cmpOp);
  EXPECT_EQ(XoString::GetDefault8CodeSet(), XoLanguageContext::GetDefault8CodeSet());
  EXPECT_EQ(XoString::GetDefault16CodeSet(), XoLanguageContext::GetDefault16CodeSet());
}

}  // namespace
}  // namespace xo::test
