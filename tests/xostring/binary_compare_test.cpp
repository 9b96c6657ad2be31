// Comparison and matching by bytes.
#include <gtest/gtest.h>

#include "tests/base/random_test.hpp"
#include "tests/xostring/near_pairs.hpp"
#include "xostrcmp.hpp"

namespace xo::test {
namespace {

TEST(BinaryCompareTest, ReadsANullPointerAsAnEmptyText) {
  EXPECT_EQ(BinaryCompare(nullptr, nullptr, 0), 0);
  EXPECT_EQ(BinaryCompare(nullptr, "", 0), 0);
  EXPECT_EQ(BinaryCompare("", nullptr, 0), 0);
  EXPECT_EQ(BinaryCompare(nullptr, "a", 0), -1);
  EXPECT_EQ(BinaryCompare("a", nullptr, 0), 1);
}

TEST(BinaryCompareTest, ComparesBytesAsUnsignedValues) {
  EXPECT_GT(BinaryCompare("\x80", "\x7F", 0), 0);
  EXPECT_LT(BinaryCompare("\x01", "\xFF", 0), 0);
  EXPECT_GT(BinaryCompare("\xFF", "", 0), 0);
}

TEST(BinaryCompareTest, GivesTheDifferenceOfTheFirstBytesThatDiffer) {
  EXPECT_EQ(BinaryCompare("abc", "abe", 0), 'c' - 'e');
  EXPECT_EQ(BinaryCompare("abcz", "abea", 0), 'c' - 'e');
  EXPECT_EQ(BinaryCompare("ab", "abc", 0), -'c');
  EXPECT_EQ(BinaryCompare("\xFF", "\x01", 0), 254);
}

TEST(BinaryCompareTest, StopsBehindCountBytes) {
  EXPECT_EQ(BinaryCompare("abc", "abd", 2), 0);
  EXPECT_LT(BinaryCompare("abc", "abd", 3), 0);
  EXPECT_EQ(BinaryCompare("ab", "ab", 100), 0);
}

TEST(BinaryCompareTest, LooksAtNothingBehindCountBytes) {
  // No terminator: a sanitizer tells of a byte too many.
  std::vector<char> const a = {'a', 'b'}, b = {'a', 'b'};
  EXPECT_EQ(BinaryCompare(a.data(), b.data(), 2), 0);
}

TEST(BinaryCompareTest, RunsToTheEndOfALongText) {
  std::string const a(70000, 'a');
  EXPECT_EQ(BinaryCompare(a.c_str(), a.c_str(), 0), 0);
  EXPECT_GT(BinaryCompare((a + "b").c_str(), (a + "a").c_str(), 0), 0);
  EXPECT_EQ(BinaryCompare((a + "b").c_str(), (a + "a").c_str(), 65535), 0);
}

TEST(BinaryWildcardMatchTest, MatchesWildcards) {
  for (char const* pattern : {"a*", "*c", "a?c", "*", "**", "abc", "a*c", "***abc***", "*b*"}) {
    EXPECT_EQ(BinaryWildcardMatch(pattern, "abc", -1), 0) << pattern;
  }
  for (char const* pattern : {"a?c", "", "?", "???", "b*", "*c", "ab?", "A*"}) {
    EXPECT_NE(BinaryWildcardMatch(pattern, "ab", -1), 0) << pattern;
  }
  EXPECT_EQ(BinaryWildcardMatch("*", "", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("?", "", -1), -1);
}

TEST(BinaryWildcardMatchTest, TriesAStarAgainWhereItTurnsOutToBeTooEarly) {
  EXPECT_EQ(BinaryWildcardMatch("*ab", "aab", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("*abc", "ababc", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("*a?b", "aaaxb", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("x*aab*y", "xaaaabzy", -1), 0);
  EXPECT_NE(BinaryWildcardMatch("*ab", "aba", -1), 0);
}

TEST(BinaryWildcardMatchTest, LooksForAQuestionMarkBehindAStarAsAByte) {
  EXPECT_EQ(BinaryWildcardMatch("*?", "ab?", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("*?", "abc", -1), -'?');
}

TEST(BinaryWildcardMatchTest, ReadsNullPointers) {
  EXPECT_EQ(BinaryWildcardMatch(nullptr, nullptr, -1), 0);
  EXPECT_EQ(BinaryWildcardMatch(nullptr, "", -1), 0);
  EXPECT_EQ(BinaryWildcardMatch(nullptr, "a", -1), 1);
  EXPECT_EQ(BinaryWildcardMatch("", nullptr, -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("*", nullptr, -1), -1);
}

TEST(BinaryWildcardMatchTest, GivesTheByteDifferenceOfWhatIsNoPattern) {
  EXPECT_EQ(BinaryWildcardMatch("abc", "abd", -1), 'd' - 'c');
  EXPECT_EQ(BinaryWildcardMatch("ab", "abd", -1), 'd');
  EXPECT_EQ(BinaryWildcardMatch("\x01", "\xFF", -1), 254);
}

TEST(BinaryWildcardMatchTest, GivesTheByteThatIsNotFoundBehindAStar) {
  EXPECT_EQ(BinaryWildcardMatch("*x", "abc", -1), -'x');
  EXPECT_EQ(BinaryWildcardMatch("*\xFF", "abc", -1), -255);
  EXPECT_EQ(BinaryWildcardMatch("*x", "", -1), -1);
}

TEST(BinaryWildcardMatchTest, MatchesWhateverStandsBehindCountBytes) {
  EXPECT_EQ(BinaryWildcardMatch("abc", "abd", 2), 0);
  EXPECT_EQ(BinaryWildcardMatch("abc", "xyz", 0), 0);
  EXPECT_EQ(BinaryWildcardMatch("a?c", "abd", 2), 0);
  EXPECT_NE(BinaryWildcardMatch("a?c", "abd", 3), 0);
  EXPECT_EQ(BinaryWildcardMatch("*x", "abc", 3), 0);
  EXPECT_EQ(BinaryWildcardMatch("ab", "ab", 2), 0);
}

TEST(BinaryWildcardMatchTest, LooksAtNothingBehindCountBytes) {
  std::vector<char> const text = {'a', 'a', 'b'};
  for (char const* pattern : {"*", "a*", "*c", "aab", "aabc", "???", "????", "*ac", "*a*b*"}) {
    BinaryWildcardMatch(pattern, text.data(), 3);
  }
}

TEST(BinaryWildcardMatchTest, MatchesALongTextToItsEnd) {
  std::string const text = std::string(70000, 'a') + "b";
  EXPECT_EQ(BinaryWildcardMatch("*b", text.c_str(), -1), 0);
  EXPECT_EQ(BinaryWildcardMatch("a*aab", text.c_str(), -1), 0);
  EXPECT_NE(BinaryWildcardMatch("a*c", text.c_str(), -1), 0);
}

TEST(BinaryWildcardMatchTest, BytesThatAreReadAgainCountAgain) {
  // Four bytes to the first 'a', that, and three on the way back to it: eight.
  EXPECT_EQ(BinaryWildcardMatch("*ac", "xxxxab", 8), 0);
  EXPECT_EQ(BinaryWildcardMatch("*ac", "xxxxab", -1), -97);
}

/// The walk as its rules are told, on the whole text or for `count` bytes consumed, those that are
/// consumed again included; a star is tried again from one byte behind the place where it was
/// reached.
int MatchByTheRules(std::string const& pattern, std::string const& text, int count) {
  auto const byteOf = [](std::string const& from, std::size_t place) {
    return place < from.size() ? int{static_cast<unsigned char>(from[place])} : 0;
  };
  int consumed = 0;
  auto const usedUp = [count, &consumed] { return count >= 0 && consumed >= count; };
  std::size_t atPattern = 0, atText = 0, restart = 0, matched = 0;
  bool starOpen = false, isStar = false;
  for (;;) {
    if (!isStar) {
      if (atPattern == pattern.size() && !starOpen) {
        return usedUp() ? 0 : byteOf(text, atText) - byteOf(pattern, atPattern);
      }
      if (usedUp()) return 0;
      if (byteOf(pattern, atPattern) == '?') {
        if (atText == text.size()) return -1;
        ++atPattern, ++atText, ++matched, ++consumed;
        continue;
      }
      if (byteOf(pattern, atPattern) != '*') {
        if (byteOf(pattern, atPattern) == byteOf(text, atText)) {
          if (atText == text.size()) return 0;
          ++atPattern, ++atText, ++matched, ++consumed;
          continue;
        }
        if (!starOpen || matched == 0) return byteOf(text, atText) - byteOf(pattern, atPattern);
        atPattern -= matched;
        atText = restart;
      }
    }
    starOpen = true;
    matched = 0;
    while (byteOf(pattern, atPattern) == '*') ++atPattern;
    if (atPattern == pattern.size() || usedUp()) return 0;
    if (atText == text.size()) return -1;
    restart = atText + 1;
    while (byteOf(text, atText) != byteOf(pattern, atPattern)) {
      if (atText == text.size()) return -byteOf(pattern, atPattern);
      ++atText, ++consumed;
      if (usedUp()) return 0;
    }
  }
}

class BinaryMatch : public RandomTest {
 protected:
  std::string Some(char const* characters, unsigned kinds, unsigned longest) {
    std::string text;
    for (unsigned more = Below(longest + 1); more != 0; --more) text += characters[Below(kinds)];
    return text;
  }
};

TEST_F(BinaryMatch, FollowsTheRulesOnRandomTexts) {
  unsigned matching = 0;
  for (unsigned round = 0; round < 1000000; ++round) {
    std::string const pattern = Some("ab*?\xFF", 5, 6), text = Some("ab?\xFF", OneIn(4) ? 4 : 2, 9);
    int const count = OneIn(2) ? -1 : static_cast<int>(Below(11));
    int const outcome =
        BinaryWildcardMatch(pattern.c_str(), text.c_str(), static_cast<short>(count));
    ASSERT_EQ(outcome, MatchByTheRules(pattern, text, count))
        << '"' << pattern << "\" \"" << text << "\" " << count;
    matching += outcome == 0;
  }
  EXPECT_GT(matching, 1000u);
}

/// Where no question mark stands behind a star, a text matches as anybody would match it.
bool Matches(char const* pattern, char const* text) {
  if (*pattern == 0) return *text == 0;
  if (*pattern == '*')
    return Matches(pattern + 1, text) || (*text != 0 && Matches(pattern, text + 1));
  return *text != 0 && (*pattern == '?' || *pattern == *text) && Matches(pattern + 1, text + 1);
}

TEST_F(BinaryMatch, FindsEveryMatchOfWholeTexts) {
  for (unsigned round = 0; round < 500000; ++round) {
    std::string const pattern = Some("ab*?", 4, 7), text = Some("ab", 2, 9);
    if (pattern.find("*?") != std::string::npos) continue;
    ASSERT_EQ(BinaryWildcardMatch(pattern.c_str(), text.c_str(), -1) == 0,
              Matches(pattern.c_str(), text.c_str()))
        << '"' << pattern << "\" \"" << text << '"';
  }
}

TEST_F(BinaryMatch, ComparesTextsAsStringsOfUnsignedBytesCompare) {
  for (unsigned round = 0; round < 200000; ++round) {
    std::string const a = Some("a\x01\x7F\x80\xFF", 5, 5), b = Some("a\x01\x7F\x80\xFF", 5, 5);
    unsigned const count = Below(7);
    std::string const cutA = count == 0 ? a : a.substr(0, count);
    std::string const cutB = count == 0 ? b : b.substr(0, count);
    // `std::string` compares its characters as unsigned.
    ASSERT_EQ(Sign(BinaryCompare(a.c_str(), b.c_str(), static_cast<unsigned short>(count))),
              Sign(cutA.compare(cutB)));
  }
}

}  // namespace
}  // namespace xo::test
