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
        std::u16string const near = Changed(base, codeSet);
        auto const text2 = TextBytes(near, codeSet);
        for (unsigned way = 0; way < 2; ++way) {
          unsigned short const cmpOp = Operator();
          unsigned char const language = Language();
          short const count = OneIn(3) ? static_cast<short>(1 + Below(longest + 2)) : short{-1};
          int const general =
              GeneralCompare(codeSet, language, text1.data(), text2.data(), cmpOp, count);
          int const lane = LaneCompare(codeSet, language, text1.data(), text2.data(), cmpOp, count);
          ASSERT_EQ(Sign(lane), Sign(general))
              << Shown(base) << " / " << Shown(near) << " code set " << int{codeSet} << " language "
              << int{language} << " operator " << cmpOp << " count " << count;
        }
      }
    }
  }

  static std::string Shown(std::u16string const& text) {
    std::string shown;
    for (char16_t const unit : text) shown += " " + std::to_string(unsigned{unit});
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
      ASSERT_EQ(Sign(LaneCompare(set, language, text1.data(), text2.data(), cmpOp, -1)),
                Sign(GeneralCompare(set, language, text1.data(), text2.data(), cmpOp, -1)))
          << Shown(one) << " / " << Shown(two) << " language " << int{language} << " operator "
          << cmpOp;
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
    ASSERT_EQ(Sign(LaneCompare(kUnicode, language, text1.data(), text2.data(), cmpOp, -1)),
              Sign(GeneralCompare(kUnicode, language, text1.data(), text2.data(), cmpOp, -1)))
        << Shown(texts[0]) << " / " << Shown(texts[1]) << " language " << int{language}
        << " operator " << cmpOp;
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
            EXPECT_EQ(Sign(LaneCompare(kUnicode, 1, text1.data(), text2.data(), cmpOp, -1)),
                      Sign(GeneralCompare(kUnicode, 1, text1.data(), text2.data(), cmpOp, -1)))
                << Shown(front1 + end1) << " / " << Shown(front2 + end2) << " operator " << cmpOp;
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
