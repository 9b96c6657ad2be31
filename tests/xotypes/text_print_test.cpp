#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

constexpr int kStringRow = 11, kWeightedRow = 20, kCaselessRow = 21;
constexpr unsigned char kGroup = 2;

XoString Printed(XoString value, char const* format = nullptr, XoString out = XoString("old")) {
  XoTypeMgr const manager;
  EXPECT_EQ(&manager.PrintToXoString(kStringRow, out, &value, format, 1), &out);
  return out;
}

template <class Weighted>
XoString PrintedWeighted(int row, Weighted value, char const* format = nullptr) {
  XoTypeMgr const manager;
  XoString out("old");
  manager.PrintToXoString(static_cast<char>(row), out, &value, format, 1);
  return out;
}

/// Resets what the tests change for the process.
class TextPrint : public RandomTest {
 protected:
  ~TextPrint() override {
    XoString::SetDefaultCodeSet(kLatin1);
    XoTypeMgr::SetNullPrintString(XoString("{NULL}"));
  }
};

// Ordinary strings.

TEST_F(TextPrint, NullPrintsAsTheNullPrintString) {
  EXPECT_EQ(Text(Printed(NullString(), "[%s]")), "{NULL}");
  EXPECT_EQ(Text(Printed(Wide(u"", kOrders, 0), "[%s]")), "{NULL}");
  EXPECT_EQ(Text(Printed(Wide(u"ab", kUnicode, kNullLanguage), "[%s]")), "{NULL}");
  XoTypeMgr::SetNullPrintString(XoString("none"));
  EXPECT_EQ(Text(Printed(NullString())), "none");
}

TEST_F(TextPrint, EmptyTextStaysEmptyUnderEveryFormat) {
  XoString const out = Printed(Narrow("", kCyrillic, 7), "[%s]");
  EXPECT_EQ(out.Len(), 0);
  EXPECT_EQ(out.codeSet, kCyrillic);
  EXPECT_EQ(out.language, 7);
}

TEST_F(TextPrint, NarrowTextKeepsItsCodeSet) {
  XoString const out = Printed(Narrow("\xD0\xE2", kCyrillic, 7), "[%s]", Narrow("x", kKoi8, 3));
  EXPECT_EQ(TextOf(out), "[\xD0\xE2]");
  EXPECT_EQ(out.codeSet, kCyrillic);
  EXPECT_EQ(out.language, XoString::GetDefaultLanguage());
  EXPECT_EQ(Printed(Narrow("a", kNative)).codeSet, kNative);
}

TEST_F(TextPrint, NoFormatMeansTheRowsOwn) { EXPECT_EQ(Text(Printed(Narrow("a%sb"))), "a%sb"); }

TEST_F(TextPrint, FormatsTakeTheTextOnce) {
  XoString const value = Narrow("abc");
  struct {
    char const* format;
    char const* text;
  } const formats[] = {
      {"[%s]", "[abc]"},
      {"%5s|", "  abc|"},
      {"%-5s|", "abc  |"},
      {"%.2s|", "ab|"},
      {"%5.1s|", "    a|"},
      {"%.0s|", "|"},
      {"%.s|", "|"},
      {"%2s|", "abc|"},
      {"%hs %ls", "abc %ls"},
      {"%ls", "abc"},
      {"%05s", "00abc"},
      {"%-05s|", "abc  |"},
      {"100%% %s", "100% abc"},
      {"%s %s", "abc %s"},
      {"%d %s %n", "%d abc %n"},
      {"%s%", "abc%"},
      {"%", "%"},
      {"", ""},
      {"%*s", "%*s"},
      {"%c", "%c"},
      {"%5", "%5"},
      {"%1", "%1"},
      {"plain", "plain"},
      {"%5%s", "%5abc"},
      {"%1M", "%1M"},
      {"%.-1s%s", "%.-1sabc"},
  };
  for (auto const& each : formats) EXPECT_EQ(Text(Printed(value, each.format)), each.text);
}

TEST_F(TextPrint, PaddingAgreesWithTheRuntime) {
  for (int round = 0; round < 2000; ++round) {
    std::string value, format = "<%";
    for (unsigned left = 1 + Below(12); left != 0; --left) {
      value += static_cast<char>(32 + Below(95));
    }
    if (OneIn(2)) format += '-';
    if (OneIn(2)) format += std::to_string(1 + Below(20));
    if (OneIn(2)) format += '.' + std::to_string(Below(15));
    format += "s>";
    char expected[64];
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
    std::snprintf(expected, sizeof expected, format.c_str(), value.c_str());
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    ASSERT_EQ(Text(Printed(Narrow(value), format.c_str())), expected) << format;
  }
}

TEST_F(TextPrint, LongResultsAreCutAtTheLimitOfStrings) {
  std::string const longest(65531, 'a');
  XoString const value = Narrow(longest);
  EXPECT_EQ(TextOf(Printed(value)), longest);
  EXPECT_EQ(TextOf(Printed(value, "b%s")), 'b' + longest.substr(1));
  EXPECT_EQ(Printed(Narrow("a"), "%99999999999999999999s|").Len(), 65531);
  EXPECT_EQ(TextOf(Printed(Narrow("a"), "%-99999s").Left(3)), "a  ");
  EXPECT_EQ(TextOf(Printed(Narrow("a"), "%.99999999999999999999s|")), "a|");
  std::string const format(10000, 'x');
  EXPECT_EQ(TextOf(Printed(Narrow("a"), (format + "%s").c_str())), format + 'a');
}

TEST_F(TextPrint, TheValueMayBeTheTarget) {
  XoString value = Narrow("ab", kCyrillic);
  XoTypeMgr().PrintToXoString(kStringRow, value, &value, "[%s]", 1);
  EXPECT_EQ(TextOf(value), "[ab]");
  EXPECT_EQ(value.codeSet, kCyrillic);
}

TEST_F(TextPrint, UnicodePrintsInTheCodeSetOfTheTarget) {
  // A Cyrillic small a: 0xD0 in ISO 8859-5, and no character of ISO 8859-1.
  XoString const value = Wide(u"a\u0430");
  EXPECT_EQ(TextOf(Printed(value, "[%s]", Narrow("x", kCyrillic))), "[a\xD0]");
  EXPECT_EQ(TextOf(Printed(value, "[%s]", Narrow("x", kLatin1))), "[a?]");
  EXPECT_EQ(TextOf(Printed(value, "[%s]", Narrow("x", kNative))), "[a?]");
  XoString::SetDefaultCodeSet(kCyrillic);
  EXPECT_EQ(TextOf(Printed(value, "[%s]", Narrow("x", kNative))), "[a\xD0]");
  // The text is assigned as narrow text.
  EXPECT_EQ(Printed(value, "%s", Narrow("x", kCyrillic)).codeSet, XoString::GetDefault8CodeSet());
}

TEST_F(TextPrint, UnicodeIntoAWideTargetPrintsNarrow) {
  EXPECT_EQ(TextOf(Printed(Wide(u"ab\u00E9"), "[%s]", Wide(u"x"))), "[ab\xE9]");
}

TEST_F(TextPrint, ArraysAreSeparatedByCommas) {
  XoTypeMgr const manager;
  XoString values[3] = {Narrow("a"), NullString(), Narrow("c")};
  XoString out("x");
  manager.PrintToXoString(kStringRow, out, values, "[%s]", 3);
  EXPECT_EQ(Text(out), "x[a],{NULL},[c]");
}

// Sort orders.

/// The order of a letter: its place in the alphabet, an accent, and the case.
unsigned Letter(char letter, unsigned accent = 0) {
  bool const isLower = letter >= 'a';
  unsigned const place = static_cast<unsigned>(letter - (isLower ? 'a' : 'A')) + 3;
  return 0x4000u | (isLower ? 0x1000u : 0u) | accent << 7 | place << 2;
}
constexpr unsigned kBreve = 11;

/// The order that a letter with an accent has in code set 1.
unsigned OrderOf(char letter) { return XoChar(letter, kLatin1, 1).CharOrder(); }

XoString Key(std::vector<unsigned> const& orders, unsigned char group = kGroup) {
  std::u16string units;
  for (unsigned const order : orders) units += static_cast<char16_t>(order);
  return Wide(units, kOrders, group);
}

/// "Aé 1." as orders.
XoString SampleKey(unsigned char group = kGroup) {
  return Key({Letter('A'), OrderOf('\xE9'), 20, 16128 + 10, 126}, group);
}

TEST_F(TextPrint, OrdersPrintAsCharactersWithAccents) {
  EXPECT_EQ(TextOf(Printed(SampleKey(), "[%s]")), "[A\xE9 1.]");
  EXPECT_EQ(TextOf(Printed(SampleKey(), "[%2M]")), "[A\xE9 1.]");
  EXPECT_EQ(TextOf(Printed(SampleKey(), "[%5.2s]")), "[   A\xE9]");
  EXPECT_EQ(TextOf(Printed(SampleKey(), "%d")), "%d");
}

TEST_F(TextPrint, OrdersPrintInTheCodeSetOfTheTarget) {
  for (char const* const format : {"%s", "%2M"}) {
    XoString const wide = Printed(SampleKey(), format, Wide(u"x"));
    EXPECT_EQ(wide.codeSet, kUnicode);
    EXPECT_EQ(WideTextOf(wide), u"A\u00E9 1.");
    XoString const latin2 = Printed(SampleKey(), format, Narrow("x", kLatin2));
    EXPECT_EQ(latin2.codeSet, kLatin2);
    EXPECT_EQ(TextOf(latin2), "A\xE9 1.");
    XoString const cyrillic = Printed(SampleKey(), format, Narrow("x", kCyrillic));
    EXPECT_EQ(cyrillic.codeSet, kCyrillic);
    EXPECT_EQ(TextOf(cyrillic), "A? 1.");
    XoString::SetDefaultCodeSet(kUnicode);
    EXPECT_EQ(Printed(SampleKey(), format, Narrow("x", kNative)).codeSet, kUnicode);
    XoString::SetDefaultCodeSet(kLatin1);
  }
}

TEST_F(TextPrint, FirstModePrintsWithoutAccents) {
  XoString const out = Printed(SampleKey(), "[%1M]", Wide(u"x"));
  EXPECT_EQ(TextOf(out), "[Ae 1.]");
  EXPECT_EQ(out.codeSet, XoString::GetDefault8CodeSet());
}

TEST_F(TextPrint, ThirdModeNamesEveryOrder) {
  XoString const out = Printed(SampleKey(), "<%3M>", Narrow("x", kCyrillic));
  EXPECT_EQ(TextOf(out),
            "<upper letter A><lower letter e with accent acute><space><digit 1>"
            "<symbol full stop>");
  EXPECT_EQ(out.codeSet, XoString::GetDefault8CodeSet());
}

TEST_F(TextPrint, ThirdModeEndsACutKeyWithMix) {
  XoString const key = Key({Letter('b')}, kGroup | 0x80);
  EXPECT_EQ(TextOf(Printed(key, "(%3M)")), "(lower letter b)([MIX])");
  EXPECT_EQ(TextOf(Printed(key, "(%4M)")), "(b)");
  EXPECT_EQ(TextOf(Printed(key, "(%2M)")), "(b)");
}

TEST_F(TextPrint, FourthModeSpellsAccentedLetters) {
  XoString const out = Printed(SampleKey(), "%4M,");
  EXPECT_EQ(TextOf(out), "A,\\'e, ,1,.,");
  EXPECT_EQ(out.codeSet, XoString::GetDefault8CodeSet());
  // No character of code set 1 has it, so there is no spelling.
  EXPECT_EQ(TextOf(Printed(Key({Letter('g', kBreve), Letter('g')}), "(%4M)")), "()(g)");
}

TEST_F(TextPrint, IdeographsPrintByTheirGroupAsWell) {
  EXPECT_EQ(TextOf(Printed(Key({0x9000}), "%1M")), "\x7F");
  EXPECT_EQ(TextOf(Printed(Key({0x9000}), "%3M")), "HAN character 0x9000\n");
}

TEST_F(TextPrint, LowestModeOfAFormatCountsAndOthersAreText) {
  EXPECT_EQ(TextOf(Printed(SampleKey(), "%2M %1M")), "%2M Ae 1.");
  EXPECT_EQ(TextOf(Printed(Key({Letter('b')}), "%4M%3M")), "%4Mlower letter b");
  EXPECT_EQ(TextOf(Printed(Key({Letter('b')}), "%1M%1M")), "b%1M");
  EXPECT_EQ(TextOf(Printed(Key({Letter('b')}), "%1M %s")), "b %s");
  EXPECT_EQ(TextOf(Printed(Key({Letter('b')}), "%5M")), "%5M");
}

TEST_F(TextPrint, LongKeysAreCutAtTheLimitOfStrings) {
  XoString const key = Key(std::vector<unsigned>(32765, Letter('b')));
  EXPECT_EQ(Printed(key).Len(), 32765);
  EXPECT_EQ(Printed(key, "%3M").Len(), 65531);
  EXPECT_EQ(Printed(key, "%4M%%%%%%").Len(), 65531);
}

// Scan.

TEST_F(TextPrint, ScanTakesTheTextAsItIs) {
  XoTypeMgr const manager;
  XoString target = Narrow("old", kCyrillic, 9);
  XoString text = Wide(u"a\u0430", kUnicode, 4);
  EXPECT_EQ(manager.ScanFromXoString(kStringRow, &target, text, "%d", 7), &target);
  EXPECT_EQ(WideTextOf(target), u"a\u0430");
  EXPECT_EQ(target.codeSet, kUnicode);
  EXPECT_EQ(target.language, 4);
  EXPECT_EQ(manager.ScanFromXoString(kStringRow, nullptr, text, nullptr, 1), nullptr);
}

TEST_F(TextPrint, ScanOfTheNullPrintStringGivesNull) {
  XoTypeMgr const manager;
  auto const isNull = [&](XoString text) {
    XoString target("old");
    manager.ScanFromXoString(kStringRow, &target, text, nullptr, 1);
    return target.IsNullValue() != 0;
  };
  EXPECT_TRUE(isNull(Narrow("{NULL}")));
  EXPECT_TRUE(isNull(Narrow("{NULL} and more")));
  EXPECT_TRUE(isNull(Wide(u"{NULL}")));
  EXPECT_FALSE(isNull(Narrow("{NULL")));
  EXPECT_FALSE(isNull(Narrow(" {NULL}")));
  EXPECT_FALSE(isNull(Narrow("")));
  XoTypeMgr::SetNullPrintString(XoString("-"));
  EXPECT_TRUE(isNull(Narrow("-5")));
  EXPECT_FALSE(isNull(Narrow("{NULL}")));
}

TEST_F(TextPrint, PrintAndScanGiveTheTextBack) {
  XoTypeMgr const manager;
  for (int round = 0; round < 500; ++round) {
    std::string text;
    for (unsigned left = Below(20); left != 0; --left) text += static_cast<char>(1 + Below(255));
    if (text.rfind("{NULL}", 0) == 0) continue;
    XoString printed = Printed(Narrow(text));
    XoString back("old");
    manager.ScanFromXoString(kStringRow, &back, printed, nullptr, 1);
    ASSERT_EQ(TextOf(back), text);
  }
}

// Weighted texts.

template <class Weighted>
void ExpectWeightedPrintAndScan(int row) {
  XoTypeMgr const manager;
  char const id = static_cast<char>(row);
  EXPECT_EQ(TextOf(PrintedWeighted(row, Weighted("a\xE9"), "[%4s]")), "[  a\xE9]");
  EXPECT_EQ(TextOf(PrintedWeighted(row, Weighted("a%s"))), "a%s");
  EXPECT_EQ(TextOf(PrintedWeighted(row, Weighted(), "[%s]")), "");
  EXPECT_EQ(TextOf(PrintedWeighted(row, Weighted("a"), "%3M%s")), "%3Ma");
  EXPECT_EQ(PrintedWeighted(row, Weighted("a")).codeSet, XoString::GetDefault8CodeSet());
  EXPECT_EQ(PrintedWeighted(row, Weighted(std::string(70000, 'a').c_str()), "%s").Len(), 65531);

  Weighted target("old");
  target.weighted = 0x80;
  XoString text = Narrow("{NULL}");
  EXPECT_EQ(manager.ScanFromXoString(id, &target, text, "%d", 1), &target);
  EXPECT_STREQ(target.StrGet(), "{NULL}");
  EXPECT_EQ(target.weighted, 0);
  text = Wide(u"a\u00E9\u0430");
  manager.ScanFromXoString(id, &target, text, nullptr, 1);
  EXPECT_STREQ(target.StrGet(), "a\xE9?");
  text = Narrow("\xD0", kCyrillic);
  manager.ScanFromXoString(id, &target, text, nullptr, 1);
  EXPECT_STREQ(target.StrGet(), "\xD0");
  text = XoString();
  manager.ScanFromXoString(id, &target, text, nullptr, 1);
  EXPECT_EQ(target.text, nullptr);
  EXPECT_EQ(manager.ScanFromXoString(id, nullptr, text, nullptr, 1), nullptr);
}

TEST_F(TextPrint, WeightedTextsPrintAndScanTheirBytes) {
  ExpectWeightedPrintAndScan<XoIString>(kWeightedRow);
  ExpectWeightedPrintAndScan<XoCaseIString>(kCaselessRow);
}

}  // namespace
}  // namespace xo::test
