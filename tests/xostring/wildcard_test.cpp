// Patterns: texts with a star and a question mark, matched by sort orders.
#include <algorithm>

#include "tests/intl/order_walk.hpp"
#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kIgnoreBoth = kCmpIgnoreCase | kCmpIgnoreAccents;

/// Outcome for two texts of Unicode in English.
int Match(std::u16string const& text, std::u16string const& pattern, unsigned short cmpOp = 0,
          short count = -1, unsigned char language = 1) {
  auto const one = TextBytes(text, kUnicode), two = TextBytes(pattern, kUnicode);
  return Sign(
      XoStrCmp(kUnicode, language, one.data(), kUnicode, language, two.data(), cmpOp, count));
}

bool Matches(std::u16string const& text, std::u16string const& pattern, unsigned short cmpOp = 0,
             unsigned char language = 1) {
  return Match(text, pattern, cmpOp, -1, language) == 0;
}

TEST(WildcardTest, StarStandsForAnyRunOfCharacters) {
  for (auto const* pattern :
       {u"a*", u"*c", u"*", u"**", u"a*c", u"*b*", u"abc*", u"*abc", u"***"}) {
    EXPECT_TRUE(Matches(u"abc", pattern));
  }
  for (auto const* pattern : {u"b*", u"*b", u"a*b", u"*d*", u"abc*c", u"A*"}) {
    EXPECT_FALSE(Matches(u"abc", pattern));
  }
}

TEST(WildcardTest, QuestionMarkStandsForOneCharacter) {
  EXPECT_TRUE(Matches(u"abc", u"a?c"));
  EXPECT_TRUE(Matches(u"abc", u"???"));
  EXPECT_FALSE(Matches(u"ab", u"a?c"));
  EXPECT_FALSE(Matches(u"abc", u"??"));
  EXPECT_FALSE(Matches(u"abc", u"????"));
  EXPECT_TRUE(Matches(u"abc", u"?*"));
  EXPECT_TRUE(Matches(u"abc", u"*?"));
  EXPECT_TRUE(Matches(u"abc", u"*???"));
  EXPECT_FALSE(Matches(u"abc", u"*????"));
}

TEST(WildcardTest, EmptyTextMatchesAStarAndNoQuestionMark) {
  EXPECT_TRUE(Matches(u"", u"*"));
  EXPECT_TRUE(Matches(u"", u"**"));
  EXPECT_TRUE(Matches(u"", u""));
  EXPECT_EQ(Match(u"", u"?"), -1);
  EXPECT_EQ(Match(u"", u"*?"), -1);
  EXPECT_EQ(Match(u"", u"a"), -1);
  EXPECT_EQ(Match(u"a", u""), 1);
}

TEST(WildcardTest, StarTakesUpTheTextAgainInsideOfWhatItHasFollowed) {
  EXPECT_TRUE(Matches(u"aab", u"*ab"));
  EXPECT_TRUE(Matches(u"ababac", u"*abac"));
  EXPECT_TRUE(Matches(u"aaaaaaab", u"*aaab"));
  EXPECT_TRUE(Matches(u"xaabaabac", u"x*aabac"));
  EXPECT_TRUE(Matches(u"aaxab", u"*a?ab"));
  EXPECT_TRUE(Matches(u"abcabcabd", u"*?bcabd"));
  EXPECT_TRUE(Matches(u"mississippi", u"m*iss*ip*i"));
  EXPECT_FALSE(Matches(u"mississippi", u"m*iss*ipx*i"));
}

TEST(WildcardTest, CaseCountsUnlessItIsIgnored) {
  EXPECT_FALSE(Matches(u"ABC", u"a*"));
  EXPECT_FALSE(Matches(u"abC", u"*c"));
  EXPECT_TRUE(Matches(u"ABC", u"a*", kCmpIgnoreCase));
  EXPECT_TRUE(Matches(u"xABCx", u"*aB?*", kCmpIgnoreCase));
  EXPECT_TRUE(Matches(u"aAab", u"*ab"));
  EXPECT_FALSE(Matches(u"aAb", u"*ab"));
}

TEST(WildcardTest, AccentsCountUnlessTheyAreIgnored) {
  EXPECT_FALSE(Matches(u"été", u"e*"));
  EXPECT_TRUE(Matches(u"été", u"e*e", kCmpIgnoreAccents));
  EXPECT_TRUE(Matches(u"xétéx", u"*ete*", kCmpIgnoreAccents));
  EXPECT_FALSE(Matches(u"xÉtéx", u"*ete*", kCmpIgnoreAccents));
  EXPECT_TRUE(Matches(u"xÉtéx", u"*ete*", kIgnoreBoth));
  EXPECT_FALSE(Matches(u"xétéx", u"*ete*", kCmpIgnoreCase));
  EXPECT_TRUE(Matches(u"eé", u"*é"));
}

TEST(WildcardTest, StarTakesSpacesAndSymbolsAndAQuestionMarkTakesOneOfThem) {
  EXPECT_TRUE(Matches(u"a - b", u"a*b"));
  EXPECT_TRUE(Matches(u"a b", u"a?b"));
  EXPECT_FALSE(Matches(u"a  b", u"a?b"));
  EXPECT_TRUE(Matches(u"-+", u"??"));
  EXPECT_TRUE(Matches(u"a + b", u"*+ b"));
  EXPECT_FALSE(Matches(u"a + b", u"*- b"));
  EXPECT_TRUE(Matches(u" a", u"*a"));
  EXPECT_FALSE(Matches(u"ab", u"a -*"));
}

TEST(WildcardTest, SkippedSpacesAndSymbolsAreInNobodysWay) {
  EXPECT_FALSE(Matches(u"a b", u"ab*"));
  EXPECT_TRUE(Matches(u"a b", u"ab*", kCmpSkipSpaces));
  EXPECT_TRUE(Matches(u"x a-b x", u"*ab*", kCmpSkipSpaces | kCmpSkipSymbols));
  EXPECT_FALSE(Matches(u"x a-b x", u"*ab*", kCmpSkipSpaces));
  EXPECT_TRUE(Matches(u"a  b", u"a?", kCmpSkipSpaces));
  // The wildcards are symbols, and stay wildcards.
  EXPECT_TRUE(Matches(u"abc", u"a?*", kCmpSkipSymbols));
}

TEST(WildcardTest, WildcardsOfTheFirstTextAreSymbols) {
  EXPECT_FALSE(Matches(u"a*", u"ab"));
  EXPECT_FALSE(Matches(u"*", u"a"));
  EXPECT_TRUE(Matches(u"a*", u"a*"));
  EXPECT_TRUE(Matches(u"a?b", u"a?b"));
  EXPECT_TRUE(Matches(u"a*", u"a?"));
}

TEST(WildcardTest, WithoutWildcardsTheyAreSymbolsInBothTexts) {
  EXPECT_FALSE(Matches(u"abc", u"a*", kCmpNoWildcards));
  EXPECT_FALSE(Matches(u"abc", u"*", kCmpPlainOrders));
  EXPECT_TRUE(Matches(u"a*?", u"a*?", kCmpNoWildcards));
  EXPECT_TRUE(Matches(u"a*", u"a", kCmpNoWildcards | kCmpSkipSymbols));
}

TEST(WildcardTest, ACountEndsTextAndPatternAlike) {
  EXPECT_EQ(Match(u"abcd", u"abce", 0, 3), 0);
  EXPECT_NE(Match(u"abcd", u"abce", 0, 4), 0);
  EXPECT_EQ(Match(u"abc", u"a?x", 0, 2), 0);
  EXPECT_EQ(Match(u"abc", u"x", 0, 0), 0);
  EXPECT_EQ(Match(u"abcdef", u"a*x", 0, 2), 0);
  EXPECT_NE(Match(u"abcdef", u"a*x", 0, 3), 0);
}

TEST(WildcardTest, AnExpansionIsAsManyCharactersAsItHasOrders) {
  EXPECT_TRUE(Matches(u"æ", u"*", 0));
  EXPECT_FALSE(Matches(u"ß", u"?", 0, 2));
  EXPECT_TRUE(Matches(u"ß", u"??", 0, 2));
  EXPECT_TRUE(Matches(u"Straße", u"Str*e", 0, 2));
  EXPECT_TRUE(Matches(u"Straße", u"*strasse", kIgnoreBoth, 2));
}

TEST(WildcardTest, AContractionIsOneCharacter) {
  // In Czech, ch is a letter of its own.
  EXPECT_TRUE(Matches(u"chata", u"?ata", 0, 22));
  EXPECT_TRUE(Matches(u"mucha", u"mu?a", 0, 22));
  EXPECT_FALSE(Matches(u"chata", u"c*", 0, 22));
  EXPECT_TRUE(Matches(u"chata", u"ch*", 0, 22));
  EXPECT_TRUE(Matches(u"chata", u"c*", 0, 1));
  EXPECT_TRUE(Matches(u"cech", u"c*ch", 0, 22));
}

TEST(WildcardTest, ANullTextMatchesAsAnEmptyOne) {
  auto const matchNull = [](char const* pattern, unsigned char codeSet) {
    return Sign(XoStrCmp(codeSet, 254, nullptr, codeSet, 1, pattern, 0));
  };
  for (unsigned char const codeSet :
       {static_cast<unsigned char>(0), static_cast<unsigned char>(1)}) {
    EXPECT_EQ(matchNull("*", codeSet), 0);
    EXPECT_EQ(matchNull("**", codeSet), 0);
    EXPECT_EQ(matchNull("", codeSet), 0);
    EXPECT_EQ(matchNull("?", codeSet), -1);
    EXPECT_EQ(matchNull("a", codeSet), -1);
  }
  // Text that was appended to a null string leaves it null.
  EXPECT_LT(XoStrCmp(1, 254, "abc", 1, 1, "*b*", 0), 0);
  EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 1, "*", kCmpNoWildcards), -1);
  EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 1, "*", kCmpPlainOrders), -1);
  EXPECT_EQ(XoStrCmp(1, 1, "*", 1, 254, nullptr, 0), 1);
}

TEST(WildcardTest, MatchesAcrossCodeSets) {
  auto const pattern = TextBytes(u"*É?é", kUnicode);
  EXPECT_EQ(XoStrCmp(1, 6, "x\xC9t\xE9", kUnicode, 6, pattern.data(), 0), 0);
  EXPECT_NE(XoStrCmp(1, 6, "x\xC9t\xE8", kUnicode, 6, pattern.data(), 0), 0);
}

TEST(WildcardTest, MatchesPatternsOfBothByteOrders) {
  std::vector<char> text, pattern;
  for (char const unit : {'a', 'b', 'c', '\0'}) text.insert(text.end(), {'\0', unit});
  for (char const unit : {'*', 'b', '?', '\0'}) pattern.insert(pattern.end(), {'\0', unit});
  EXPECT_EQ(XoStrCmp(kUnicode, 1, text.data(), kUnicode, 1, pattern.data(), 0, -1, 2), 0);
}

TEST(WildcardTest, MatchesAsOftenAsStarsHaveSomethingToFind) {
  std::u16string text;
  for (int more = 0; more < 5000; ++more) text += u"ab";
  EXPECT_TRUE(Matches(text + u"c", u"a*b*c"));
  EXPECT_FALSE(Matches(text, u"a*b*c"));
  EXPECT_TRUE(Matches(std::u16string(70000, u'a') + u"b", u"*aaaaaab"));
  EXPECT_FALSE(Matches(std::u16string(70000, u'a') + u"b", u"*aaaaaac"));
}

// An obvious matcher: every way of sharing the orders of the text out to the pattern is tried.

struct Element {
  enum Kind { kStar, kQuestion, kOrder } kind;
  unsigned key;
};

class SlowMatcher {
 public:
  SlowMatcher(unsigned short cmpOp_, unsigned char language_)
      : cmpOp(cmpOp_), language(language_) {}

  bool Run(std::u16string const& text, std::u16string const& pattern) const {
    std::vector<unsigned> keys;
    for (WalkedOrder const each : WalkOrders(text, language)) {
      if (!IsSkipped(each)) keys.push_back(MaskedKey(each));
    }
    std::vector<Element> elements;
    for (WalkedOrder const each : WalkOrders(pattern, language)) {
      if (each.order == OrderOf(u'*')) {
        elements.push_back({Element::kStar, 0});
      } else if (each.order == OrderOf(u'?')) {
        elements.push_back({Element::kQuestion, 0});
      } else if (!IsSkipped(each)) {
        elements.push_back({Element::kOrder, MaskedKey(each)});
      }
    }
    return MatchFrom(keys, 0, elements, 0);
  }

 private:
  static unsigned short OrderOf(char16_t character) {
    return XoLanguageContext::QueryCodeSet(kUnicode)->orderTable->GetEntry(character)->order;
  }

  bool IsSkipped(WalkedOrder each) const {
    if (IsSignificant(each)) return false;
    return (cmpOp & (each.order < 80 ? kCmpSkipSpaces : kCmpSkipSymbols)) != 0;
  }

  unsigned MaskedKey(WalkedOrder each) const {
    unsigned mask = 0xFFFFFFFF;
    if ((cmpOp & kCmpIgnoreAccents) != 0) mask &= 0xFFFFFFE0;
    if ((cmpOp & kCmpIgnoreCase) != 0) mask &= 0xFFFFFF9F;
    return OrderKeyOf(each) & mask;
  }

  static bool MatchFrom(std::vector<unsigned> const& keys, std::size_t key,
                        std::vector<Element> const& elements, std::size_t element) {
    if (element == elements.size()) return key == keys.size();
    switch (elements[element].kind) {
      case Element::kStar:
        return MatchFrom(keys, key, elements, element + 1) ||
               (key < keys.size() && MatchFrom(keys, key + 1, elements, element));
      case Element::kQuestion:
        return key < keys.size() && MatchFrom(keys, key + 1, elements, element + 1);
      default:
        return key < keys.size() && keys[key] == elements[element].key &&
               MatchFrom(keys, key + 1, elements, element + 1);
    }
  }

  unsigned short cmpOp;
  unsigned char language;
};

class RandomPatterns : public RandomTest {
 protected:
  std::u16string Some(std::u16string const& characters, unsigned longest) {
    std::u16string text;
    for (unsigned more = Below(longest + 1); more != 0; --more) {
      text += characters[Below(static_cast<unsigned>(characters.size()))];
    }
    return text;
  }

  /// A pattern that is more likely to match than another: the text with parts of it replaced.
  std::u16string PatternOf(std::u16string text, std::u16string const& characters) {
    for (unsigned changes = Below(4); changes != 0; --changes) {
      std::size_t const place = Below(static_cast<unsigned>(text.size()) + 1);
      switch (Below(4)) {
        case 0:
          text =
              text.substr(0, place) + u'*' + text.substr(std::min(place + Below(4), text.size()));
          break;
        case 1:
          if (place < text.size()) text[place] = u'?';
          break;
        case 2:
          text = text.substr(0, place) + u'*' + text.substr(place);
          break;
        default:
          text.insert(place, Some(characters, 2));
          break;
      }
    }
    return text;
  }

  void MatchBothWays(std::u16string const& characters, unsigned rounds, unsigned char language) {
    unsigned matching = 0;
    for (unsigned round = 0; round < rounds; ++round) {
      std::u16string const text = Some(characters, 9);
      std::u16string const pattern =
          OneIn(4) ? Some(characters + u"*?", 6) : PatternOf(text, characters);
      auto const cmpOp =
          static_cast<unsigned short>((Below(4) << 5) | (Below(2) << 7) | (Below(2) << 9));
      bool const expected = SlowMatcher(cmpOp, language).Run(text, pattern);
      std::string shown;
      for (char16_t const unit : text + u"/" + pattern) {
        shown += std::to_string(unsigned{unit});
        shown += ' ';
      }
      ASSERT_EQ(Matches(text, pattern, cmpOp, language), expected)
          << shown << " operator " << cmpOp << " language " << int{language};
      matching += expected;
    }
    EXPECT_GT(matching, rounds / 20);
    EXPECT_LT(matching, rounds - rounds / 20);
  }
};

TEST_F(RandomPatterns, OfFewLettersMatchAsTheObviousMatcherSays) {
  MatchBothWays(u"ab", 150000, 1);
  MatchBothWays(u"aAá", 100000, 1);
  MatchBothWays(u"aAáÁb1", 100000, 1);
}

TEST_F(RandomPatterns, WithSpacesAndSymbolsMatchAsTheObviousMatcherSays) {
  MatchBothWays(u"a -", 100000, 1);
  MatchBothWays(u"aá -+", 100000, 1);
}

TEST_F(RandomPatterns, WithExpansionsAndContractionsMatchAsTheObviousMatcherSays) {
  MatchBothWays(u"cChHß", 60000, 22);
  MatchBothWays(u"dzsŽæ", 60000, 24);
  MatchBothWays(u"aæeß½一", 60000, 2);
}

}  // namespace
}  // namespace xo::test
