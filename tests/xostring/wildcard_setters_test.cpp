// The characters that stand for wildcards, and where a text holds the first one.
#include <gtest/gtest.h>

#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

/// Puts the wildcards back to what they are at first.
class WildcardSetters : public ::testing::Test {
 protected:
  ~WildcardSetters() override {
    XoString::SetAsterisk(XoChar('*', 1, 0));
    XoString::SetQuestion(XoChar('?', 1, 0));
    XoString::SetEscape(XoChar('\\', 1, 0));
  }

  static bool Matches(char const* text, char const* pattern, unsigned char codeSet = 1) {
    return XoStrCmp(codeSet, 1, text, codeSet, 1, pattern, 0) == 0;
  }

  static int Find(char const* text, int asteriskOnly = 0, unsigned short maxCount = 65535,
                  unsigned char codeSet = 1) {
    return FindWildcard(codeSet, 1, text, asteriskOnly, maxCount, nullptr, 255);
  }
};

TEST_F(WildcardSetters, AtFirstTheOrdersAreThoseOfTheAsciiCharacters) {
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(kUnicode)->orderTable;
  EXPECT_EQ(AsteriskOrder(), table.GetEntry('*')->order);
  EXPECT_EQ(QuestionOrder(), table.GetEntry('?')->order);
  EXPECT_EQ(EscapeOrder(), table.GetEntry('\\')->order);
  EXPECT_EQ(AsteriskOrder(), 159);
  EXPECT_EQ(QuestionOrder(), 122);
  EXPECT_EQ(EscapeOrder(), 160);
}

TEST_F(WildcardSetters, AnotherAsteriskTakesThePlaceOfTheFirst) {
  EXPECT_EQ(XoString::SetAsterisk(XoChar('%', 1, 1)), 0);
  EXPECT_TRUE(Matches("abc", "a%"));
  EXPECT_FALSE(Matches("abc", "a*"));
  EXPECT_TRUE(Matches("a*", "a*"));
  EXPECT_TRUE(Matches("abc", "a??"));
}

TEST_F(WildcardSetters, AnotherQuestionMarkTakesThePlaceOfTheFirst) {
  EXPECT_EQ(XoString::SetQuestion(XoChar('_', 1, 1)), 0);
  EXPECT_TRUE(Matches("abc", "a_c"));
  EXPECT_FALSE(Matches("abc", "a?c"));
  EXPECT_TRUE(Matches("a?c", "a?c"));
  EXPECT_TRUE(Matches("abc", "*__"));
}

TEST_F(WildcardSetters, AnEscapeChangesNoComparison) {
  EXPECT_EQ(XoString::SetEscape(XoChar('b', 1, 1)), 0);
  EXPECT_NE(EscapeOrder(), 160);
  EXPECT_TRUE(Matches("abc", "ab?"));
  EXPECT_TRUE(Matches("abc", "ab*"));
  EXPECT_FALSE(Matches("a*", "ab*"));
  EXPECT_TRUE(Matches("a\\bc", "a\\*"));
}

TEST_F(WildcardSetters, ALetterMayBeAWildcard) {
  XoString::SetAsterisk(XoChar('x', 1, 1));
  EXPECT_TRUE(Matches("abc", "ax"));
  EXPECT_TRUE(Matches("abc", "xc"));
  EXPECT_FALSE(Matches("abc", "aX"));
}

TEST_F(WildcardSetters, AWideCharacterSetsTheSameOrder) {
  XoString::SetAsterisk(XoChar(static_cast<unsigned short>('%'), kUnicode, 1));
  EXPECT_TRUE(Matches("abc", "a%"));
  // Bound to a text whose high byte comes first.
  char const place[] = {0, '#', 0, 0};
  XoString::SetAsterisk(XoChar(place, kUnicode, 1, 2));
  EXPECT_TRUE(Matches("abc", "a#"));
  EXPECT_FALSE(Matches("abc", "a%"));
}

TEST_F(WildcardSetters, ACharacterBeyondTheTablesMayBeAWildcard) {
  XoString::SetAsterisk(XoChar(static_cast<unsigned short>(0x4E00), kUnicode, 1));
  auto const text = TextBytes(u"abc", kUnicode), pattern = TextBytes(u"a一", kUnicode);
  EXPECT_EQ(XoStrCmp(kUnicode, 1, text.data(), kUnicode, 1, pattern.data(), 0), 0);
}

TEST_F(WildcardSetters, OrderZeroIsAskedForAnew) {
  XoString::SetAsterisk(XoChar('\0', 1, 1));
  EXPECT_EQ(AsteriskOrder(), 159);
}

TEST_F(WildcardSetters, TextsWithoutACodeSetKeepTheirWildcards) {
  XoString::SetAsterisk(XoChar('%', 1, 1));
  XoString::SetQuestion(XoChar('_', 1, 1));
  EXPECT_TRUE(Matches("abc", "a*", 0));
  EXPECT_TRUE(Matches("abc", "a?c", 0));
  EXPECT_FALSE(Matches("abc", "a%", 0));
  EXPECT_EQ(Find("a%_*", 0, 65535, 0), 3);
  EXPECT_EQ(Find("a%_*"), 1);
}

TEST_F(WildcardSetters, FindWildcardGivesThePositionOfTheFirst) {
  EXPECT_EQ(Find("abc"), -1);
  EXPECT_EQ(Find(""), -1);
  EXPECT_EQ(Find("*"), 0);
  EXPECT_EQ(Find("ab?c*"), 2);
  EXPECT_EQ(Find("ab?c*", 1), 4);
  EXPECT_EQ(Find("ab?c", 1), -1);
  EXPECT_EQ(Find("ab?c*", 0, 65535, 0), 2);
  EXPECT_EQ(Find("ab?c*", 1, 65535, 0), 4);
}

TEST_F(WildcardSetters, FindWildcardLooksAtMaxCountCharacters) {
  for (unsigned char const codeSet :
       {static_cast<unsigned char>(0), static_cast<unsigned char>(1)}) {
    EXPECT_EQ(Find("abc*", 0, 3, codeSet), -1);
    EXPECT_EQ(Find("abc*", 0, 4, codeSet), 3);
    EXPECT_EQ(Find("*", 0, 0, codeSet), -1);
  }
  // Characters, not orders: an expansion is one, and a contraction two.
  EXPECT_EQ(Find("\xDF\xDF*", 0, 3), 2);
  EXPECT_EQ(Find("\xDF\xDF*", 0, 2), -1);
  EXPECT_EQ(FindWildcard(1, 22, "chch*", 0, 5, nullptr, 1), 4);
  EXPECT_EQ(FindWildcard(1, 22, "chch*", 0, 4, nullptr, 1), -1);
}

TEST_F(WildcardSetters, FindWildcardTellsThePlaceInBytes) {
  unsigned short offset = 7;
  EXPECT_EQ(FindWildcard(1, 1, "ab*", 0, 65535, &offset, 1), 2);
  EXPECT_EQ(offset, 2);
  EXPECT_EQ(FindWildcard(0, 1, "ab*", 0, 65535, &offset, 1), 2);
  EXPECT_EQ(offset, 2);
  EXPECT_EQ(FindWildcard(1, 1, "ab", 0, 65535, &offset, 1), -1);
  EXPECT_EQ(offset, 65535);
  offset = 7;
  EXPECT_EQ(FindWildcard(0, 1, "ab", 0, 65535, &offset, 1), -1);
  EXPECT_EQ(offset, 65535);
  offset = 7;
  EXPECT_EQ(FindWildcard(1, 1, nullptr, 0, 65535, &offset, 1), -1);
  EXPECT_EQ(offset, 65535);
  auto const wide = TextBytes(u"ab?", kUnicode);
  EXPECT_EQ(FindWildcard(kUnicode, 1, wide.data(), 0, 65535, &offset, 255), 2);
  EXPECT_EQ(offset, 4);
  char const bigEndian[] = {0, 'a', 0, '*', 0, 0};
  EXPECT_EQ(FindWildcard(kUnicode, 1, bigEndian, 0, 65535, &offset, 2), 1);
  EXPECT_EQ(offset, 2);
}

TEST_F(WildcardSetters, FindWildcardTakesACodeSetThatDoesNotExist) {
  // Its characters read as the substitute, the question mark.
  EXPECT_EQ(FindWildcard(200, 250, "ab", 0, 65535, nullptr, 1), 0);
  EXPECT_EQ(FindWildcard(200, 250, "ab", 1, 65535, nullptr, 1), -1);
}

TEST_F(WildcardSetters, FindWildcardReadsLongTexts) {
  std::string const text = std::string(65000, 'a') + "*";
  EXPECT_EQ(Find(text.c_str()), 65000);
  EXPECT_EQ(Find((std::string(70000, 'a') + "*").c_str()), -1);
}

}  // namespace
}  // namespace xo::test
