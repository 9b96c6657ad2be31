#include <gtest/gtest.h>

#include <xotypemgr.hpp>

namespace xo::test {
namespace {

XoCodeSet const& Set(unsigned char number) { return *XoLanguageContext::QueryCodeSet(number); }

TEST(CodeSets, KnownNumbersHaveTheirRecords) {
  for (unsigned number = 1; number < 256; ++number) {
    auto const byte = static_cast<unsigned char>(number);
    bool const known =
        number <= 35 || (number >= 225 && number <= 228) || number == 253 || number == 254;
    XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(byte);
    ASSERT_EQ(set != nullptr, known) << number;
    if (known) {
      EXPECT_EQ(set->number, number);
    }
  }
}

TEST(CodeSets, NumbersUpTo26AreTheMostUsedSets) {
  char const* const names[] = {"ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
                               "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",
                               "ISO-8859-9",   "ISO-8859-13",  "ISO-8859-15",  "IBM866",
                               "windows-1250", "windows-1251", "windows-1252", "windows-1253",
                               "windows-1254", "windows-1255", "windows-1256", "windows-1257",
                               "windows-1258", "KOI8-R",       "KOI8-U",       "IBM437",
                               "IBM850",       "IBM852"};
  unsigned char number = 1;
  for (char const* const name : names) EXPECT_STREQ(Set(number++).name, name);
}

TEST(CodeSets, NumberZeroIsTheNativeSet) {
  EXPECT_EQ(XoLanguageContext::QueryCodeSet(0),
            XoLanguageContext::QueryCodeSet(XoLanguageContext::GetNativeCodeSet()));
}

TEST(CodeSets, OnlyAsciiCompatibleSetsAndUnicodeHaveOrderTables) {
  for (unsigned number = 1; number < 256; ++number) {
    XoCodeSet const* const set =
        XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(number));
    if (set == nullptr) continue;
    EXPECT_EQ(set->orderTable != nullptr, number <= 31 || number == 253) << number;
  }
}

TEST(CodeSets, MappingGoesThroughUnicode) {
  EXPECT_EQ(Set(253).MapCharacter(0xE9, 1), 0xE9);
  EXPECT_EQ(Set(24).MapCharacter(0xE9, 1), 0x82);  // é in IBM437
  EXPECT_EQ(Set(32).MapCharacter('A', 1), 0xC1);   // A in EBCDIC
  EXPECT_EQ(Set(1).MapCharacter(0x81, 32), 'a');
  EXPECT_EQ(Set(253).MapCharacter(0x80, 15), 0x20AC);  // the euro sign
  EXPECT_EQ(Set(35).MapCharacter(0x20AC, 253), 0x9F);
  EXPECT_EQ(Set(253).MapCharacter(0xB0A1, 226), 0x554A);
  EXPECT_EQ(Set(225).MapCharacter(0x3042, 253), 0xA4A2);
  EXPECT_EQ(Set(22).MapCharacter(0xE0, 14), 0xC1);  // а
}

TEST(CodeSets, SetsOfTwoBytesHoldAscii) {
  for (unsigned char set = 225; set <= 228; ++set) {
    for (unsigned short code = 0; code < 127; ++code) {
      EXPECT_EQ(Set(set).MapCharacter(code, 1), code);
      EXPECT_EQ(Set(1).MapCharacter(code, set), code);
    }
  }
}

TEST(CodeSets, MissingCharactersBecomeTheQuestionMark) {
  EXPECT_EQ(Set(1).MapCharacter(0x20AC, 253), '?');
  EXPECT_EQ(Set(32).MapCharacter(0x4E00, 253), 0x6F);
  EXPECT_EQ(Set(225).MapCharacter(0x00E9, 253), '?');
  EXPECT_EQ(Set(1).MapCharacter(0xD800, 253), '?');
  EXPECT_EQ(Set(1).MapCharacter(0xFFFE, 253), '?');
  EXPECT_EQ(Set(1).MapCharacter(0xFFFF, 253), '?');
}

TEST(CodeSets, UndefinedCodesAreTheReplacementCharacter) {
  EXPECT_EQ(Set(253).MapCharacter(0x81, 15), 0xFFFD);
  EXPECT_EQ(Set(1).MapCharacter(0x81, 15), '?');
  EXPECT_EQ(Set(253).MapCharacter(0x8080, 225), 0xFFFD);
  EXPECT_EQ(Set(253).MapCharacter(0xFFFF, 228), 0xFFFD);
}

TEST(CodeSets, UnknownSourcesGiveTheSubstitute) {
  EXPECT_EQ(Set(1).MapCharacter('a', 100), '?');
  EXPECT_EQ(Set(253).MapCharacter('a', 255), '?');
  EXPECT_EQ(Set(33).MapCharacter('a', 200), 0x6F);
}

TEST(CodeSets, SourceZeroIsTheNativeSet) {
  EXPECT_EQ(Set(253).MapCharacter(0xE9, 0), 0xE9);
  EXPECT_EQ(Set(XoLanguageContext::GetNativeCodeSet()).MapCharacter(0x81, 0), 0x81);
}

TEST(CodeSets, SortOrdersStandForThemselves) {
  EXPECT_EQ(Set(254).MapCharacter(0x400C, 1), 0x400C);
  EXPECT_EQ(Set(253).MapCharacter(0x400C, 254), 0x400C);
  EXPECT_EQ(Set(1).MapCharacter(0x400C, 254), 0x400C);
  EXPECT_EQ(Set(254).GetUnicodeProps('a', 0), nullptr);
}

TEST(CodeSets, LowByteCountsInNarrowSources) {
  EXPECT_EQ(Set(253).MapCharacter(0x4142, 2), 0x42);
  EXPECT_EQ(Set(2).MapCharacter(0x4142, 2), 0x42);
  EXPECT_EQ(Set(226).MapCharacter(0xB0A1, 226), 0xB0A1);
}

TEST(CodeSets, EveryCodeStandsForItselfInItsOwnSet) {
  EXPECT_EQ(Set(15).MapCharacter(0x81, 15), 0x81);  // not defined in windows-1252
  EXPECT_EQ(Set(253).MapCharacter(0xFFFF, 253), 0xFFFF);
}

TEST(CodeSets, EveryDefinedCodeComesBack) {
  for (unsigned number = 1; number < 253; ++number) {
    XoCodeSet const* const set =
        XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(number));
    if (set == nullptr) continue;
    unsigned const end = number < 225 ? 0x100 : 0x10000;
    for (unsigned code = 0; code < end; ++code) {
      unsigned short const unicode = set->ToUnicode(static_cast<unsigned short>(code));
      if (unicode == 0xFFFD) continue;
      unsigned short const back = set->MapCharacter(unicode, 253);
      // Four codes of Big5 stand for characters that have another code as well.
      EXPECT_EQ(set->ToUnicode(back), unicode) << set->name << ' ' << code;
      EXPECT_NE(set->HasCharacter(unicode), 0);
    }
  }
}

TEST(CodeSets, AsciiCompatibleSetsHoldAscii) {
  for (unsigned char number = 1; number <= 31; ++number) {
    for (unsigned short code = 0; code < 128; ++code) {
      EXPECT_EQ(Set(number).ToUnicode(code), code) << Set(number).name;
    }
  }
}

}  // namespace
}  // namespace xo::test
