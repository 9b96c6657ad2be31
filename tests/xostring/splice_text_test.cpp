#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

#include "src/xostring/string_splice.hpp"
#include "tests/xostring/string_text.hpp"

/// What the editing operations leave out of the one writer of text. Needs the static library.
namespace xo::test {
namespace {

TEST(SpliceText, OverwritesAndInsertsNothingForAnEmptySource) {
  XoString string("abc");
  char const* const text = string.text;
  for (SpliceMode const mode : {SpliceMode::kOverwrite, SpliceMode::kInsert}) {
    SpliceText(string, "", kLatin1, 1, 0, 0, 1, mode);
    SpliceText(string, nullptr, kLatin1, 1, 0, 1, 1, mode);
  }
  EXPECT_EQ(string.text, text);
  EXPECT_EQ(TextOf(string), "abc");
}

TEST(SpliceText, TruncatesForAnEmptySource) {
  XoString string("abc");
  SpliceText(string, nullptr, kLatin1, 2, 0, 0, 1, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "ab");
  EXPECT_EQ(string.size, 3);
  SpliceText(string, "", kLatin1, 1, 0, 0, 1, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "a");
}

TEST(SpliceText, TakesAPartOfTheSource) {
  XoString string("abcd");
  SpliceText(string, "uvwxyz", kLatin1, 1, 2, 2, 1, SpliceMode::kOverwrite);
  EXPECT_EQ(TextOf(string), "awxd");
  SpliceText(string, "uvwxyz", kLatin1, 1, 4, 2, 1, SpliceMode::kInsert);
  EXPECT_EQ(TextOf(string), "ayzwxd");
  SpliceText(string, "uvwxyz", kLatin1, 1, 4, 2, 1, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "ayz");
  std::vector<unsigned short> const wide = Units(u"uv\u011Bx");
  XoString latin = Narrow("ab", kLatin2);
  SpliceText(latin, static_cast<char const*>(static_cast<void const*>(wide.data())), kUnicode, 1, 1,
             2, 1, SpliceMode::kInsert);
  EXPECT_EQ(TextOf(latin),
            "av\xEC"
            "b");
}

TEST(SpliceText, ReadsAWideSourceInItsByteOrder) {
  char const highFirst[] = {0x01, 0x1B, 0x00, 'a', 0x00, 0x00};
  XoString string(kUnicode, 0);
  SpliceText(string, highFirst, kUnicode, 0, 0, 2, 1, SpliceMode::kTruncate, 2);
  EXPECT_EQ(WideTextOf(string), u"\u011Ba");
  SpliceText(string, highFirst, kUnicode, 0, 0, 1, 3, SpliceMode::kTruncate, 2);
  EXPECT_EQ(WideTextOf(string), u"\u011B\u011B\u011B");
  XoString assigned(kUnicode, 0);
  AssignText(assigned, highFirst, kUnicode, 65535, 2);
  EXPECT_EQ(WideTextOf(assigned), u"\u011Ba");
}

TEST(SpliceText, ConvertsAWideSourceFromItsByteOrder) {
  // An e with caron, and the first ideograph of JIS X 0208, in row 16 and cell 1.
  char const unicode[] = {0x01, 0x1B, 0x4E, static_cast<char>(0x9C), 0, 0};
  char const jis[] = {static_cast<char>(0xB0), static_cast<char>(0xA1), 0, 'a', 0, 0};
  constexpr unsigned char kJis = 225;
  for (SpliceMode const mode :
       {SpliceMode::kOverwrite, SpliceMode::kInsert, SpliceMode::kTruncate}) {
    XoString narrow = Narrow("", kLatin2);
    SpliceText(narrow, unicode, kUnicode, 0, 0, 2, 1, mode, 2);
    EXPECT_EQ(TextOf(narrow), "\xEC?");
    XoString wide(kUnicode, 0);
    SpliceText(wide, jis, kJis, 0, 0, 2, 1, mode, 2);
    EXPECT_EQ(WideTextOf(wide), u"\u4E9Ca");
    SpliceText(wide, jis, kJis, 0, 0, 1, 3, SpliceMode::kTruncate, 2);
    EXPECT_EQ(WideTextOf(wide), u"\u4E9C\u4E9C\u4E9C");
  }
  XoString other = Wide(u"", kJis);
  SpliceText(other, unicode, kUnicode, 0, 1, 1, 1, SpliceMode::kTruncate, 2);
  EXPECT_EQ(WideTextOf(other), u"\uB0A1");
  XoString assigned(kJis, 0);
  AssignText(assigned, unicode + 2, kUnicode, 65535, 2);
  EXPECT_EQ(WideTextOf(assigned), u"\uB0A1");
}

TEST(SpliceText, ReadsNoMoreOfASourceThanIsAskedFor) {
  // No terminator: a sanitizer tells of a byte too many.
  std::unique_ptr<char[]> const source(new char[3]{'x', 'y', 'z'});
  for (unsigned char const set : {kLatin1, kEbcdic, kUnicode}) {
    XoString string(set, 0);
    SpliceText(string, source.get(), kLatin1, 0, 1, 2, 1, SpliceMode::kTruncate);
    SpliceText(string, source.get() + 2, kLatin1, 2, 0, 1, 3, SpliceMode::kTruncate);
    string.MapToCodeSet(kLatin1);
    EXPECT_EQ(TextOf(string), "yzzzz");
  }
}

TEST(SpliceText, RepeatsTheFirstCharacter) {
  XoString string("abc");
  SpliceText(string, "xyz", kLatin1, 1, 0, 1, 4, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "axxxx");
  SpliceText(string, "xyz", kLatin1, 2, 0, 1, 0, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "ax");
}

TEST(SpliceText, OverwritesByARepeatedCharacter) {
  XoString string("abcdef");
  SpliceText(string, "xyz", kLatin1, 1, 0, 1, 3, SpliceMode::kOverwrite);
  EXPECT_EQ(TextOf(string), "axxxcdef");
  EXPECT_EQ(string.size, 9);
  // Without any, what it would have covered goes.
  SpliceText(string, "xyz", kLatin1, 1, 0, 3, 0, SpliceMode::kOverwrite);
  EXPECT_EQ(TextOf(string), "acdef");
  EXPECT_EQ(string.size, 6);
  // Room is made for so many copies of the source; one character of each is written.
  SpliceText(string, "xyz", kLatin1, 1, 0, 2, 2, SpliceMode::kOverwrite);
  EXPECT_EQ(std::string(string.text, string.size), std::string("axx\0\0ef\0", 8));
  XoString wide = Wide(u"abcd");
  SpliceText(wide, "xyz", kLatin1, 2, 0, 1, 2, SpliceMode::kOverwrite);
  EXPECT_EQ(WideTextOf(wide), u"abxxd");
  EXPECT_EQ(wide.size, 12);
}

TEST(SpliceText, InsertsARepeatedCharacterBeforeWhatIsMovedByOneCopy) {
  XoString string("abcdef");
  SpliceText(string, "xyz", kLatin1, 1, 0, 1, 3, SpliceMode::kInsert);
  EXPECT_EQ(TextOf(string), "axxxdef");
  EXPECT_EQ(string.size, 10);
  XoString atEnd("abc");
  SpliceText(atEnd, "xyz", kLatin1, 3, 0, 1, 3, SpliceMode::kInsert);
  EXPECT_EQ(TextOf(atEnd), "abcxxx");
  EXPECT_EQ(atEnd.size, 7);
  XoString wide = Wide(u"abcd");
  SpliceText(wide, "xyz", kLatin1, 1, 0, 2, 2, SpliceMode::kInsert);
  EXPECT_EQ(WideTextOf(wide), u"axxbcd");
  EXPECT_EQ(wide.size, 18);
}

TEST(SpliceText, ARepeatedCharacterLeavesTheTerminator) {
  for (SpliceMode const mode :
       {SpliceMode::kOverwrite, SpliceMode::kInsert, SpliceMode::kTruncate}) {
    for (unsigned char const set : {kLatin1, kUnicode}) {
      for (unsigned short const count : std::initializer_list<unsigned short>{0, 1, 2, 9}) {
        for (unsigned short const repeat : std::initializer_list<unsigned short>{0, 2, 3, 9}) {
          for (unsigned short const position : std::initializer_list<unsigned short>{0, 1, 3, 5}) {
            XoString string("abc");
            string.MapToCodeSet(set);
            SpliceText(string, "xyz", kLatin1, position, 0, count, repeat, mode);
            ASSERT_TRUE(IsSound(string)) << count << ' ' << repeat << ' ' << position;
          }
        }
      }
    }
  }
}

TEST(SpliceText, OfMoreThanAStringHoldsStopsAtTheEndOfTheBuffer) {
  for (SpliceMode const mode :
       {SpliceMode::kOverwrite, SpliceMode::kInsert, SpliceMode::kTruncate}) {
    for (unsigned char const set : {kLatin1, kUnicode}) {
      for (int const repeat : {1, 2, 65535}) {
        XoString string("abc");
        string.MapToCodeSet(set);
        SpliceText(string, "xyz", kLatin1, 1, 0, 65535, static_cast<unsigned short>(repeat), mode);
        EXPECT_TRUE(IsSound(string));
        EXPECT_EQ(string[0].Code(), 'a');
        EXPECT_EQ(string[1].Code(), 'x');
      }
    }
  }
}

TEST(SpliceText, BehindTheEndBeginsAtTheEnd) {
  for (SpliceMode const mode :
       {SpliceMode::kOverwrite, SpliceMode::kInsert, SpliceMode::kTruncate}) {
    XoString string("abc");
    SpliceText(string, "x", kLatin1, 65535, 0, 1, 1, mode);
    EXPECT_TRUE(IsSound(string));
    EXPECT_EQ(TextOf(string), "abcx");
  }
}

TEST(AssignText, OfNothingLeavesNoText) {
  XoString string;
  AssignText(string, nullptr, kLatin1);
  EXPECT_EQ(string.text, nullptr);
  AssignText(string, "abc", kLatin1, 0);
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
}

}  // namespace
}  // namespace xo::test
