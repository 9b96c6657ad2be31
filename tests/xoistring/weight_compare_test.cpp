#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "base/allocation.hpp"
#include "src/xoistring/weights.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xoistring/weight_oracle.hpp"

namespace xo::test {
namespace {

template <class Text>
class WeightCompare : public RandomTest {
 protected:
  /// A short text in which much is alike: letters of both cases, accents, expansions, signs.
  std::string AnyText(unsigned longest) {
    static std::string const alphabet = "aAbBsSoOeE \x8C\x9C\x9F\xDF\xE4\xC4\xE9\xFF\xA5\xB0!\x01";
    std::string text;
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text += OneIn(8) ? static_cast<char>(1 + Below(255)) : alphabet[Below(23)];
    }
    return text;
  }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(WeightCompare, BothClasses);

template <class Text>
int Order(char const* a, char const* b, unsigned short count = 0, unsigned char flagA = 0,
          unsigned char flagB = 0) {
  return SignOf(Text::WeightCompare(a, b, count, flagA, flagB));
}

TYPED_TEST(WeightCompare, TablesHoldTheCollationOfEveryByte) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    Weights const expected = WeightsOfBytes(kIgnoresCase<TypeParam>)[byte];
    EXPECT_EQ(WeightRules<TypeParam>::kWeights[byte].first, expected.first) << byte;
    EXPECT_EQ(WeightRules<TypeParam>::kWeights[byte].second, expected.second) << byte;
  }
}

TEST(WeightCompareStated, LowerCaseComesRightBeforeUpperCase) {
  EXPECT_EQ(Order<XoIString>("a", "A"), -1);
  EXPECT_EQ(Order<XoIString>("A", "b"), -1);
  EXPECT_EQ(Order<XoIString>("z", "Z"), -1);
  EXPECT_EQ(Order<XoCaseIString>("a", "A"), 0);
  EXPECT_EQ(Order<XoCaseIString>("\xE0\xFE", "\xC0\xDE"), 0);
  EXPECT_EQ(Order<XoCaseIString>("\xFF", "Y"), 0);
  EXPECT_EQ(Order<XoIString>("\xFF", "y"), 0);
}

TYPED_TEST(WeightCompare, AccentsDoNotCount) {
  for (char const* const pair : {"\xC0"
                                 "A",
                                 "\xC5"
                                 "A",
                                 "\xE9"
                                 "e",
                                 "\xF1"
                                 "n",
                                 "\xE7"
                                 "c",
                                 "\x9F"
                                 "Y"}) {
    char const one[2] = {pair[0], 0};
    bool const isLetterOfItsOwn = pair[0] == '\xC5' || pair[0] == '\xF1';
    EXPECT_EQ(Order<TypeParam>(one, pair + 1) == 0, !isLetterOfItsOwn) << Ordinal(pair[0]);
  }
}

TYPED_TEST(WeightCompare, ExpansionsEqualTheirTwoLetters) {
  bool const caseless = kIgnoresCase<TypeParam>;
  EXPECT_EQ(Order<TypeParam>("Stra\xDF"
                             "e",
                             "Strasse"),
            0);
  EXPECT_EQ(Order<TypeParam>("\xDF", "SS"), caseless ? 0 : -1);
  EXPECT_EQ(Order<TypeParam>("\x8C", "OE"), 0);
  EXPECT_EQ(Order<TypeParam>("\x9C", "oe"), 0);
  EXPECT_EQ(Order<TypeParam>("\x9C", "\x8C"), caseless ? 0 : -1);
  EXPECT_EQ(Order<TypeParam>("s", "\xDF"), -1);
  EXPECT_EQ(Order<TypeParam>("st", "\xDF"), 1);
}

TYPED_TEST(WeightCompare, NullComesBeforeEveryText) {
  EXPECT_EQ(TypeParam::WeightCompare(nullptr, nullptr, 0, 0, 0), 0);
  EXPECT_EQ(TypeParam::WeightCompare(nullptr, "", 0, 0, 0), -1);
  EXPECT_EQ(TypeParam::WeightCompare(nullptr, "a", 3, 0x80, 0), -1);
  EXPECT_EQ(TypeParam::WeightCompare("", nullptr, 0, 0, 0), 1);
}

TYPED_TEST(WeightCompare, AnEmptyTextComparesByItsFirstByte) {
  EXPECT_EQ(TypeParam::WeightCompare("", "", 0, 0, 0), 0);
  EXPECT_EQ(TypeParam::WeightCompare("", "a", 0, 0, 0), -97);
  EXPECT_EQ(TypeParam::WeightCompare("\xDF", "", 1, 0, 0), 223);
}

TYPED_TEST(WeightCompare, ResultIsTheDifferenceOfWeights) {
  EXPECT_EQ(TypeParam::WeightCompare("1", "3", 0, 0, 0), -2);
  EXPECT_EQ(TypeParam::WeightCompare("x\xFE", "x\x01", 0, 0, 0),
            (kIgnoresCase<TypeParam> ? 0xBF : 0xBE) - 1);
  EXPECT_EQ(TypeParam::WeightCompare("ab", "a", 0, 0, 0), kIgnoresCase<TypeParam> ? 0x5B : 0x5A);
}

TYPED_TEST(WeightCompare, CountLimitsTheWeightsNotTheBytes) {
  EXPECT_EQ(Order<TypeParam>("abc", "abd", 2), 0);
  EXPECT_EQ(Order<TypeParam>("abc", "abd", 3), -1);
  EXPECT_EQ(Order<TypeParam>("\xDF"
                             "a",
                             "ssb", 2),
            0);
  EXPECT_EQ(Order<TypeParam>("\xDF"
                             "a",
                             "ssb", 3),
            -1);
  EXPECT_EQ(Order<TypeParam>("ab", "a", 1), 0);
}

TYPED_TEST(WeightCompare, NoCountStopsAtTheLargestCount) {
  std::string const same(65535, 'a');
  EXPECT_EQ(Order<TypeParam>((same + 'b').c_str(), (same + 'c').c_str()), 0);
  EXPECT_EQ(Order<TypeParam>((same.substr(1) + 'b').c_str(), (same.substr(1) + 'c').c_str()), -1);
}

TYPED_TEST(WeightCompare, WeightedSidesAreTakenAsTheyStand) {
  EXPECT_EQ(Order<TypeParam>("A", "A", 0, 0x80, 0x80), 0);
  // The letter A has the weight 0x54.
  EXPECT_EQ(Order<TypeParam>("\x54", "A", 0, 0x80, 0), 0);
  EXPECT_EQ(Order<TypeParam>("A", "\x54", 0, 0, 0x80), 0);
  EXPECT_EQ(Order<TypeParam>("\x54", "A", 0, 0x7F & ~0x20, 0), 1);
  EXPECT_EQ(Order<TypeParam>("\xDF", "\xDF", 0, 0x80, 0x80), 0);
}

TYPED_TEST(WeightCompare, FlagOfFirstWeightsDropsTheSecond) {
  EXPECT_EQ(Order<TypeParam>("\xDF", "s", 0, 0x20, 0), 0);
  EXPECT_EQ(Order<TypeParam>("\xDF", "\xDF", 0, 0x20, 0x20), 0);
  EXPECT_EQ(Order<TypeParam>("\xDF", "\xDF", 0, 0x20, 0), -1);
  EXPECT_EQ(Order<TypeParam>("\xDF", "\xDF", 0, 0, 0x20), 1);
}

TYPED_TEST(WeightCompare, AgreesWithASlowLoopOnAllPairsOfBytes) {
  for (unsigned a = 1; a < 256; ++a) {
    for (unsigned b = 1; b < 256; ++b) {
      char const one[2] = {static_cast<char>(a), 0};
      char const two[2] = {static_cast<char>(b), 0};
      ASSERT_EQ(Order<TypeParam>(one, two), (SlowOrder<TypeParam>(one, two, 65535)))
          << a << ' ' << b;
    }
  }
}

TYPED_TEST(WeightCompare, AgreesWithASlowLoopOnTexts) {
  for (int round = 0; round < 20000; ++round) {
    std::string const a = this->AnyText(6) + "x";
    std::string const b = this->OneIn(4) ? a + this->AnyText(2) : this->AnyText(6) + "x";
    auto const count = static_cast<unsigned short>(this->OneIn(2) ? 0 : this->Below(9));
    auto const flagA = static_cast<unsigned char>(this->OneIn(2) ? 0 : this->Byte());
    auto const flagB = static_cast<unsigned char>(this->OneIn(2) ? 0 : this->Byte());
    ASSERT_EQ(Order<TypeParam>(a.c_str(), b.c_str(), count, flagA, flagB),
              (SlowOrder<TypeParam>(a, b, count == 0 ? 65535u : unsigned{count}, flagA, flagB)))
        << ::testing::PrintToString(a) << ' ' << ::testing::PrintToString(b) << ' ' << count << ' '
        << int{flagA} << ' ' << int{flagB};
  }
}

TYPED_TEST(WeightCompare, NoCountGivesTheResultOfTheLargestCount) {
  for (int round = 0; round < 200000; ++round) {
    std::string const shared = this->AnyText(12);
    std::string const a = shared + this->AnyText(6), b = shared + this->AnyText(6);
    unsigned char const flag = this->OneIn(4) ? kFirstWeightsOnly : 0;
    unsigned char const other = this->OneIn(4) ? kFirstWeightsOnly : 0;
    ASSERT_EQ(TypeParam::WeightCompare(a.c_str(), b.c_str(), 0, flag, other),
              TypeParam::WeightCompare(a.c_str(), b.c_str(), 65535, flag, other))
        << ::testing::PrintToString(a) << ' ' << ::testing::PrintToString(b);
  }
}

TYPED_TEST(WeightCompare, OperatorsGiveTheOrderOfTheBytesWhereverTheyCameFrom) {
  for (int round = 0; round < 100000; ++round) {
    // Long enough for several words, and alike at first.
    std::string const shared = this->AnyText(20);
    auto const make = [&](TypeParam& value) {
      value = TypeParam((shared + this->AnyText(6)).c_str());
      auto const place = static_cast<unsigned short>(this->Below(value.Len() + 1));
      auto const count = static_cast<unsigned short>(this->Below(9));
      switch (this->Below(10)) {
        case 0:
          value.Cut(place, count);
          break;
        case 1:
          value.Insert(TypeParam(this->AnyText(9).c_str()), place);
          break;
        case 2:
          value += TypeParam(this->AnyText(9).c_str());
          break;
        case 3:
          value.Fill(count, 's');
          break;
        case 4:
          value.ToUpper();
          break;
        case 5:
          // A text that ends before its block does.
          if (!!value) value[place] = 0;
          break;
        case 6:
          value.weighted = this->OneIn(2) ? 0x80 : kFirstWeightsOnly;
          break;
        default:
          break;
      }
    };
    TypeParam a, b;
    make(a);
    make(b);
    int const order =
        SignOf(TypeParam::WeightCompare(a.text, b.text, 65535, a.weighted, b.weighted));
    ASSERT_EQ((a > b) - (a < b), order) << ::testing::PrintToString(std::string(a.StrGet())) << ' '
                                        << ::testing::PrintToString(std::string(b.StrGet()));
    ASSERT_EQ(a == b, order == 0);
    if (*a.StrGet() != 0 && *b.StrGet() != 0) {
      ASSERT_EQ(order, SlowOrder<TypeParam>(a.StrGet(), b.StrGet(), 65535, a.weighted, b.weighted));
    }
  }
}

TYPED_TEST(WeightCompare, OperatorsReadNoMoreOfABlockFromElsewhereThanItsText) {
  TypeParam const other("ab!");
  for (char const* const bytes : {"ab", "b", "abc"}) {
    // Just room for the text, where the value had made more of it.
    TypeParam value("abcdefgh");
    ReleaseArray(value.text);
    value.text = static_cast<char*>(AllocateArray(std::strlen(bytes) + 1));
    std::strcpy(value.text, bytes);
    TypeParam const made(bytes);
    EXPECT_TRUE(value == made);
    EXPECT_EQ(value < other, made < other);
    EXPECT_EQ(other < value, other < made);
  }
}

TYPED_TEST(WeightCompare, OperatorsStopAtTheLargestCount) {
  TypeParam a, b;
  a.Fill(65534, 'a');
  b = a;
  EXPECT_TRUE(a + TypeParam("b") < b + TypeParam("c"));
  EXPECT_TRUE(a + TypeParam("ab") == b + TypeParam("ac"));
}

TYPED_TEST(WeightCompare, OrdersTextsTotally) {
  for (int round = 0; round < 5000; ++round) {
    TypeParam const a(this->AnyText(5).c_str()), b(this->AnyText(5).c_str()),
        c(this->AnyText(5).c_str());
    EXPECT_TRUE(a == a);
    ASSERT_EQ(a<b, b> a);
    ASSERT_EQ(a == b, b == a);
    ASSERT_EQ(a <= b, !(a > b));
    ASSERT_EQ(a >= b, !(a < b));
    ASSERT_EQ(a != b, !(a == b));
    if (a <= b && b <= c) {
      ASSERT_TRUE(a <= c) << a.StrGet() << '|' << b.StrGet() << '|' << c.StrGet();
    }
  }
}

TYPED_TEST(WeightCompare, InverseOfAMappedTextHasItsWeights) {
  std::vector<std::string> texts;
  for (int a = 1; a < 256; ++a) {
    texts.push_back(std::string(1, static_cast<char>(a)));
    for (int b = 1; b < 256; ++b) {
      texts.push_back({static_cast<char>(a), static_cast<char>(b)});
    }
  }
  for (int round = 0; round < 2000; ++round) texts.push_back(this->AnyText(20));
  for (std::string const& text : texts) {
    std::string weights(2 * text.size(), '\0');
    weights.resize(
        MapToWeights<TypeParam>(text.data(), text.size(), weights.data(), weights.size()));
    auto const sequence = SequenceOf<TypeParam>(text);
    ASSERT_EQ(weights.size(), sequence.size());
    for (std::size_t place = 0; place < weights.size(); ++place) {
      ASSERT_EQ(Ordinal(weights[place]), sequence[place]);
    }
    std::string back(weights.size(), '\0');
    back.resize(MapFromWeights<TypeParam>(weights.data(), weights.size(), back.data()));
    ASSERT_EQ(SequenceOf<TypeParam>(back), sequence) << ::testing::PrintToString(text);
  }
}

TYPED_TEST(WeightCompare, TextsAreMappedAsFarAsThereIsRoom) {
  for (int round = 0; round < 20000; ++round) {
    std::string text = this->AnyText(24);
    // Long runs without a pair of weights are mapped by words.
    if (this->OneIn(2)) text.insert(this->Below(static_cast<unsigned>(text.size()) + 1), 17, 'm');
    auto const sequence = SequenceOf<TypeParam>(text);
    std::size_t const room = this->Below(60);
    constexpr char kUntouched = 0x7E;
    std::string target(room + 8, kUntouched);
    ASSERT_EQ(MapToWeights<TypeParam>(text.data(), text.size(), target.data(), room),
              sequence.size());
    for (std::size_t place = 0; place < target.size(); ++place) {
      bool const isWritten = place < std::min(room, sequence.size());
      ASSERT_EQ(Ordinal(target[place]), isWritten ? sequence[place] : kUntouched)
          << ::testing::PrintToString(text) << ' ' << room << ' ' << place;
    }
  }
}

TEST(WeightInverse, GivesTheBytesOfTheFirstTableThatMatches) {
  auto const back = [](std::string const& weights) {
    std::string text(weights.size(), '\0');
    text.resize(MapFromWeights<XoCaseIString>(weights.data(), weights.size(), text.data()));
    return text;
  };
  EXPECT_EQ(back("\x54\x5B"), "AB");
  EXPECT_EQ(back("\x9D\x9D"), "\xDF");
  EXPECT_EQ(back("\x9D"), "S");
  EXPECT_EQ(back("\x90\x69"), "\x8C");
  EXPECT_EQ(back("\xBD"), "\xC5");
  EXPECT_EQ(back("\x31\xE0\xC0"), "\x31\x80\xB0");
  // Weights of 160 to 175 are those of letters.
  EXPECT_EQ(back("\xB3"), "Y");
  EXPECT_EQ(back("\xB1"), "\xA1");
  // A weight that no byte has.
  EXPECT_EQ(back("\x4E"), "\x4E");
}

}  // namespace
}  // namespace xo::test
