#include <gtest/gtest.h>

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

TEST(SpliceText, RepeatsTheFirstCharacter) {
  XoString string("abc");
  SpliceText(string, "xyz", kLatin1, 1, 0, 1, 4, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "axxxx");
  SpliceText(string, "xyz", kLatin1, 2, 0, 1, 0, SpliceMode::kTruncate);
  EXPECT_EQ(TextOf(string), "ax");
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
