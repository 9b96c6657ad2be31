// The fast lane of comparison gives what the general comparison gives.
#include "src/xostring/plain_lane.hpp"

#include <algorithm>

#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

/// The general comparison, from the start of the texts.
int GeneralCompare(unsigned char codeSet, unsigned char language, char const* text1,
                   char const* text2, unsigned short cmpOp, short count) {
  XoStringIterator first(text1, codeSet, language, 1);
  XoStringIterator second(text2, codeSet, language, 1);
  if ((cmpOp & kCmpPlainOrders) != 0) {
    return CompareOrdersOnly(first, second, static_cast<unsigned short>(count));
  }
  return LevelComparison(first, second, cmpOp, count).Run(nullptr);
}

/// The comparison with the fast lane in it.
int LaneCompare(unsigned char codeSet, unsigned char language, char const* text1, char const* text2,
                unsigned short cmpOp, short count) {
  return XoStrCmp(codeSet, language, text1, codeSet, language, text2, cmpOp, count);
}

class PlainLane : public NearPairs {
 protected:
  unsigned short Operator() {
    unsigned short const bits = static_cast<unsigned short>(Below(64) << 4);
    return static_cast<unsigned short>(bits | (OneIn(8) ? kCmpPlainOrders : kCmpNoWildcards));
  }

  /// Languages with contractions more often than others.
  unsigned char Language() {
    static constexpr unsigned char kSome[] = {8, 14, 20, 22, 23, 24, 26, 30};
    if (OneIn(2)) return kSome[Below(std::size(kSome))];
    return static_cast<unsigned char>(Below(50));
  }

  void CompareBothWays(unsigned char codeSet, unsigned longest, unsigned rounds) {
    for (unsigned round = 0; round < rounds; ++round) {
      std::u16string const base = Text(codeSet, longest);
      auto const text1 = TextBytes(base, codeSet);
      for (unsigned other = 0; other < 4; ++other) {
        auto const text2 = TextBytes(Changed(base, codeSet), codeSet);
        for (unsigned way = 0; way < 2; ++way) {
          unsigned short const cmpOp = Operator();
          unsigned char const language = Language();
          short const count = OneIn(3) ? static_cast<short>(1 + Below(longest + 2)) : short{-1};
          ASSERT_TRUE(LaneAgrees(codeSet, language, text1.data(), text2.data(), cmpOp, count));
        }
      }
    }
  }

  /// Whether the comparison with the fast lane in it gives the order that the general one gives.
  static testing::AssertionResult LaneAgrees(unsigned char codeSet, unsigned char language,
                                             char const* text1, char const* text2,
                                             unsigned short cmpOp, short count = -1) {
    int const lane = Sign(LaneCompare(codeSet, language, text1, text2, cmpOp, count));
    int const general = Sign(GeneralCompare(codeSet, language, text1, text2, cmpOp, count));
    if (lane == general) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "fast lane " << lane << ", general comparison " << general << " of"
           << Shown(codeSet, text1) << " /" << Shown(codeSet, text2) << " code set " << int{codeSet}
           << " language " << int{language} << " operator " << cmpOp << " count " << count;
  }

  /// The units of a text as numbers.
  static std::string Shown(unsigned char codeSet, char const* text) {
    std::string shown;
    for (; !IsTextEmpty(codeSet, text); text += UnitSize(codeSet)) {
      shown += " " + std::to_string(unsigned{LoadUnit(text, codeSet)});
    }
    return shown;
  }
};

TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesOnUnicode) {
  CompareBothWays(kUnicode, 8, 120000);
  CompareBothWays(kUnicode, 24, 40000);
}

TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesInEveryCodeSetWithATable) {
  auto const sets = CodeSetsWithTables();
  ASSERT_FALSE(sets.empty());
  for (unsigned char const set : sets) {
    if (set != kUnicode) CompareBothWays(set, 10, 60000 / static_cast<unsigned>(sets.size()));
  }
}

TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesOnLongTexts) {
  for (unsigned char const set : {kUnicode, static_cast<unsigned char>(1)}) {
    for (unsigned round = 0; round < 1500; ++round) {
      // A common run of every length up to some blocks, then texts that differ in little.
      std::u16string const front(Below(700), OneIn(2) ? u'a' : u'c');
      std::u16string const middle = Text(set, 4), back = Text(set, 60);
      std::u16string const one = front + middle + back;
      std::u16string const two = front + Changed(middle, set) + Changed(back, set);
      auto const text1 = TextBytes(one, set), text2 = TextBytes(two, set);
      unsigned short const cmpOp = Operator();
      unsigned char const language = Language();
      ASSERT_TRUE(LaneAgrees(set, language, text1.data(), text2.data(), cmpOp));
    }
  }
}

/// Few characters, so that contractions meet the first difference in every way.
TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesAroundContractions) {
  static constexpr char16_t kFew[] = u"dzsDZŽžcChnlygLL\u0301\u0307";
  for (unsigned round = 0; round < 300000; ++round) {
    std::u16string texts[2];
    std::u16string front;
    for (unsigned more = Below(6); more != 0; --more) front += kFew[Below(std::size(kFew) - 1)];
    for (auto& text : texts) {
      text = front;
      for (unsigned more = Below(4); more != 0; --more) text += kFew[Below(std::size(kFew) - 1)];
    }
    auto const text1 = TextBytes(texts[0], kUnicode), text2 = TextBytes(texts[1], kUnicode);
    unsigned short const cmpOp = Operator();
    unsigned char const language = Language();
    ASSERT_TRUE(LaneAgrees(kUnicode, language, text1.data(), text2.data(), cmpOp));
  }
}

TEST_F(PlainLane, HashesWhatTheIteratorReads) {
  auto const sets = CodeSetsWithTables();
  for (unsigned round = 0; round < 100000; ++round) {
    unsigned char const set = OneIn(2) ? kUnicode : sets[Below(static_cast<unsigned>(sets.size()))];
    std::u16string const text = Text(set, 12);
    auto const bytes = TextBytes(text, set);
    unsigned char const language = Language();
    XoStringIterator iterator(bytes.data(), set, language, 1);
    unsigned hash = 0;
    while (unsigned short const order = iterator.GetNextOrder(1)) {
      hash = hash * 9 + OrderKey(order, iterator.orderGroup);
    }
    ASSERT_EQ(HashString(set, language, bytes.data()), hash)
        << Shown(set, bytes.data()) << " code set " << int{set} << " language " << int{language};
  }
}

/// Words as they are written, in their language and others: letters, with their digraphs, ligatures
/// and accents, capitals in front, and hyphens and apostrophes between.
TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesOnWords) {
  struct Alphabet {
    unsigned char language;
    unsigned char narrow;
    std::u16string_view letters;
  };
  static constexpr Alphabet kAlphabets[] = {
      {1, 1, u"abcdefghijklmnopqrstuvwxyzée'-. "},
      {2, 1, u"abcdefghiklmnoprstuwzäöüß-"},
      {3, 15, u"aäeoöuüsßbch-"},
      {6, 11, u"abcdelmnoprstuvéèêëàâçîïôùûœæ'-"},
      {7, 1, u"abcdelnñorstuyáéíóúüch"},
      {8, 1, u"cchllñlrrabo·"},
      {9, 15, u"l·laecçx"},
      {14, 1, u"aabekrsøæåüä-"},
      {20, 15, u"cchddffngllphrhrthwyaŵŷ"},
      {21, 2, u"aąbcćdeęlłnńoósśzźż"},
      {22, 13, u"aácčdďeéěchnňrřsštťuůzž"},
      {24, 2, u"acscdzdzsgylynytyszszsoóöőuúüű"},
      {26, 13, u"dždžljnjčćšđab"},
      {30, 1, u"çdhëgjllnjrrshthxhzhqx"},
      {31, 9, u"cçgğıiosşuüIİ"},
      {33, 10, u"aācčeēgģiīkķlļnņsšuūzž"},
      {37, 7, u"αάβγεέζηήιίϊΐσςωώ"},
      {38, 5, u"абвгдеёжийклмн-"},
      {39, 14, u"абвгґеєіїй'ь"},
      {46, 21, u"aăâbdđeêoôơuưy\u0301\u0300\u0323\u0309"},
  };
  for (unsigned round = 0; round < 300000; ++round) {
    Alphabet const& alphabet = kAlphabets[Below(std::size(kAlphabets))];
    XoCodeSet const& narrow = *XoLanguageContext::QueryCodeSet(alphabet.narrow);
    unsigned char const set = OneIn(2) ? kUnicode : alphabet.narrow;
    auto const letter = [&] {
      char16_t each = alphabet.letters[Below(static_cast<unsigned>(alphabet.letters.size()))];
      if (OneIn(5)) {
        XoUnicodeProps const* const forms =
            XoLanguageContext::QueryCodeSet(kUnicode)->GetUnicodeProps(each, alphabet.language);
        if (forms != nullptr && forms->upperCase != 0) each = forms->upperCase;
      }
      return set == kUnicode ? each : static_cast<char16_t>(narrow.MapCharacter(each, kUnicode));
    };
    std::u16string words[2];
    for (unsigned more = Below(9); more != 0; --more) words[0] += letter();
    words[1] = words[0];
    for (auto& word : words) {
      for (unsigned changes = Below(3); changes != 0; --changes) {
        std::size_t const place = Below(static_cast<unsigned>(word.size()) + 1);
        if (OneIn(2) || place == word.size()) {
          word.insert(place, 1, letter());
        } else {
          word[place] = letter();
        }
      }
    }
    auto const text1 = TextBytes(words[0], set), text2 = TextBytes(words[1], set);
    unsigned char const language = OneIn(4) ? Language() : alphabet.language;
    unsigned short const cmpOp =
        OneIn(2) ? static_cast<unsigned short>(kCmpNoWildcards) : Operator();
    ASSERT_TRUE(LaneAgrees(set, language, text1.data(), text2.data(), cmpOp));
  }
}

/// Every pair of characters, alone and between letters and symbols, in some language.
TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesOfEveryTwoCharacters) {
  auto const sets = CodeSetsWithTables();
  for (unsigned pair = 0; pair < 0x10000; ++pair) {
    std::string const one(1, static_cast<char>(pair)), two(1, static_cast<char>(pair >> 8));
    std::pair<std::string, std::string> const texts[] = {
        {one, two}, {"x" + one + "'y", "x" + two + "y'"}, {one + "-" + two, two + one}};
    for (auto const& [text1, text2] : texts) {
      unsigned char const set = OneIn(2) ? static_cast<unsigned char>(1)
                                         : sets[Below(static_cast<unsigned>(sets.size() - 1))];
      unsigned char const language = Language();
      unsigned short const cmpOp =
          OneIn(2) ? static_cast<unsigned short>(kCmpNoWildcards) : Operator();
      ASSERT_TRUE(LaneAgrees(set, language, text1.c_str(), text2.c_str(), cmpOp));
    }
  }
}

/// Words of the same letters, which differ in case, accents, spaces and symbols alone, and some
/// that end before the others.
TEST_F(PlainLane, GivesWhatTheGeneralComparisonGivesOfTheSameLetters) {
  static constexpr std::string_view kForms[] = {
      "aA\xE0\xC1\xE4\xC5", "cC\xE7\xC7", "dD", "eE\xE9\xC8\xEB", "lL",
      "oO\xF6\xD8\xF4",     "sS",         "zZ"};
  static constexpr std::string_view kBetween = "''--. _\xB7\xAD";
  for (unsigned round = 0; round < 300000; ++round) {
    std::string texts[2];
    for (unsigned more = Below(round % 8 == 0 ? 40 : 9); more != 0; --more) {
      std::string_view const forms = kForms[Below(std::size(kForms))];
      char const common = forms[Below(static_cast<unsigned>(forms.size()))];
      for (std::string& text : texts) {
        if (OneIn(6)) text += kBetween[Below(static_cast<unsigned>(kBetween.size()))];
        if (OneIn(60)) continue;
        text += OneIn(3) ? forms[Below(static_cast<unsigned>(forms.size()))] : common;
      }
    }
    bool const isNarrow = OneIn(2);
    unsigned char const set = isNarrow ? static_cast<unsigned char>(1) : kUnicode;
    std::u16string wide[2];
    for (unsigned side = 0; side < 2; ++side) {
      for (char const each : texts[side]) wide[side] += static_cast<unsigned char>(each);
    }
    auto const text1 = TextBytes(wide[0], set), text2 = TextBytes(wide[1], set);
    unsigned char const language = Language();
    unsigned short const cmpOp =
        OneIn(2) ? static_cast<unsigned short>(kCmpNoWildcards) : Operator();
    ASSERT_TRUE(LaneAgrees(set, language, text1.data(), text2.data(), cmpOp));
  }
}

TEST(LetterHeads, OfANarrowCodeSetAreThoseOfItsTable) {
  for (unsigned set = 0; set <= 224; ++set) {
    auto const number = static_cast<unsigned char>(set);
    OrderTable const* const table = intl::FindOrderTable(number);
    EXPECT_EQ(intl::FindNarrowHeads(number), table != nullptr ? table->Heads() : nullptr) << set;
  }
}

/// Texts of every length about those at which the way to the first difference changes, with the
/// difference at every place.
TEST_F(PlainLane, FindsTheFirstDifferenceWhereverItStands) {
  static constexpr std::size_t kLengths[] = {1,  7,   15,  16,   17,   63,   80,
                                             81, 272, 600, 1001, 4096, 4112, 5000};
  for (std::size_t const length : kLengths) {
    for (unsigned round = 0; round < 60; ++round) {
      std::string one;
      while (one.size() < length) one += static_cast<char>('a' + Below(26));
      std::string two = one;
      std::size_t const place = OneIn(3) ? length - 1 : Below(static_cast<unsigned>(length));
      // Behind the first difference all others are for nothing.
      for (std::size_t more = place; more < length; ++more) two[more] = 'm';
      one[place] = 'k';
      ASSERT_LT(XoStrCmp(1, 2, one.c_str(), 1, 2, two.c_str(), 0x10), 0) << length << ' ' << place;
      ASSERT_GT(XoStrCmp(1, 2, two.c_str(), 1, 2, one.c_str(), 0x10), 0) << length << ' ' << place;
      std::string const cut = two.substr(0, place);
      ASSERT_LT(XoStrCmp(1, 2, cut.c_str(), 1, 2, two.c_str(), 0x10), 0) << length << ' ' << place;
      ASSERT_EQ(XoStrCmp(1, 2, std::string(two).c_str(), 1, 2, two.c_str(), 0x10), 0) << length;
      std::u16string const wide1(one.begin(), one.end()), wide2(two.begin(), two.end());
      auto const text1 = TextBytes(wide1, kUnicode), text2 = TextBytes(wide2, kUnicode);
      ASSERT_LT(LaneCompare(kUnicode, 2, text1.data(), text2.data(), 0x10, -1), 0)
          << length << ' ' << place;
      ASSERT_EQ(LaneCompare(kUnicode, 2, text2.data(), TextBytes(wide2, kUnicode).data(), 0x10, -1),
                0)
          << length;
    }
  }
}

TEST_F(PlainLane, TakesTheGroupThatStandsBeforeASpecialCode) {
  // U+FFFE has no group of its own: behind a Cyrillic letter it is of that group, behind an
  // ideograph of the last one, and in front of all of the language's.
  std::u16string const fronts[] = {u"", u"ж", u"a", u"一", u"ж+", u"一+"};
  std::u16string const ends[] = {u"\uFFFE", u"\uFFFD", u"α", u"a", u"א", u"一", u"+", u""};
  constexpr unsigned short kOperators[] = {0x10, 0x70, 0x90, 0x210, 0x290, 0x100};
  for (auto const& front1 : fronts) {
    for (auto const& front2 : fronts) {
      for (auto const& end1 : ends) {
        for (auto const& end2 : ends) {
          auto const text1 = TextBytes(front1 + end1, kUnicode);
          auto const text2 = TextBytes(front2 + end2, kUnicode);
          for (unsigned short const cmpOp : kOperators) {
            EXPECT_TRUE(LaneAgrees(kUnicode, 1, text1.data(), text2.data(), cmpOp));
          }
        }
      }
    }
  }
}

/// Most characters that an entry and what it contracts with make.
std::size_t LongestFrom(CharOrderEntry const& entry) {
  std::size_t longest = 1;
  for (unsigned index = 0; index < entry.ContractionCount(); ++index) {
    longest = std::max(longest, 1 + LongestFrom(*entry.ContractionEntry(index)));
  }
  for (unsigned index = 0; index < entry.VariantCount(); ++index) {
    longest = std::max(longest, LongestFrom(*entry.VariantEntry(index)));
  }
  return longest;
}

std::size_t LongestOf(unsigned char codeSet) {
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(codeSet)->orderTable;
  std::size_t longest = 0;
  for (unsigned code = 0; code < (codeSet > 224 ? 0x10000u : 0x100u); ++code) {
    CharOrderEntry const* const entry = table.GetEntry(static_cast<unsigned short>(code));
    if (entry != nullptr) longest = std::max(longest, LongestFrom(*entry));
  }
  return longest;
}

TEST(LongestContraction, CoversTheTables) {
  EXPECT_LE(LongestOf(kUnicode), WideUnits::kLongestContraction);
  for (unsigned char const set : CodeSetsWithTables()) {
    if (set < 225) {
      EXPECT_LE(LongestOf(set), NarrowUnits::kLongestContraction) << int{set};
    }
  }
}

}  // namespace
}  // namespace xo::test
