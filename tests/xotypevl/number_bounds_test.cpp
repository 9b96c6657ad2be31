#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/number_rows.hpp"

namespace xo::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr float kLeastShare = 1.1920928955078125e-07F;

NumberRow const& Word() { return RowOf(XoU2B_T); }
NumberRow const& Double() { return RowOf(XoDOUBLE_T); }

/// Whether an end of the bounds holds `key`, or nothing where it should not.
bool IsBound(void const* bound, unsigned length, bool isSet, StoredKey const& key) {
  if (!isSet) return bound == nullptr && length == 0;
  return bound != nullptr && length == key.size() &&
         std::memcmp(bound, key.data(), key.size()) == 0;
}

TEST(NumberBounds, ShareIsTheMeasureOfTheKeysByThatOfTheRange) {
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 2), 0.5F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 4), 0.4F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 1), 0.1F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 3), 0.6F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 6), 0.9F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 7), 1.0F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 15, 0), 0.0F);
}

TEST(NumberBounds, AValueOutsideSelectsAllOrNothing) {
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 5, 2), 0.0F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 5, 4), 1.0F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 25, 2), 1.0F);
  EXPECT_EQ(ShareOfNumbers(Word(), 10, 19, 25, 4), 0.0F);
}

TEST(NumberBounds, TheWholeRangeOfATypeIsMeasuredWithoutOverflow) {
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo1B_T), -128, 127, 0, 2), 0.5F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoU1B_T), 0, 255, 64, 2), 0.25F);
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo2B_T), -32768, 32767, 0, 2), 0.5F);
  EXPECT_EQ(ShareOfNumbers(Word(), 0, 65535, 16384, 2), 0.25F);
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo4B_T), INT32_MIN, INT32_MAX, 0, 2), 0.5F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoU4B_T), 0, UINT32_MAX, 1 << 30, 2), 0.25F);
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo8B_T), INT64_MIN, INT64_MAX, 0, 2), 0.5F);
  // All bits set are the highest number here.
  EXPECT_EQ(ShareOfNumbers(RowOf(XoU8B_T), 0, -1, std::int64_t{1} << 62, 2), 0.25F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoINT64_T), INT64_MIN, INT64_MAX, 0, 2), 0.5F);
}

TEST(NumberBounds, SignDecidesWhereAByteOfAllBitsStands) {
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo1B_T), 0, 9, -1, 4), 1.0F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoU1B_T), 0, 9, -1, 4), 0.0F);
}

class NumberRows : public RandomTest, public testing::WithParamInterface<NumberRow> {
 protected:
  NumberRow const& row = GetParam();
};

INSTANTIATE_TEST_SUITE_P(Plain, NumberRows, testing::ValuesIn(kPlainRows),
                         [](auto const& instance) { return instance.param.Name(); });

TEST_P(NumberRows, CountTheKeysOfASmallRange) {
  constexpr int kKeys = 16;
  for (int round = 0; round < 12; ++round) {
    // Within the numbers that a double, or for the floats a float, holds exactly.
    std::int64_t const limit = row.IsReal() ? 1 << 22 : std::int64_t{1} << 51;
    std::int64_t const least = std::max(row.Lowest(), -limit);
    std::int64_t const most = std::min(row.Highest(), limit) - kKeys;
    std::int64_t const low =
        round == 0 ? least
        : round == 1
            ? most
            : least +
                  static_cast<std::int64_t>(Bits() % static_cast<std::uint64_t>(most - least + 1));
    std::int64_t const high = low + Below(kKeys);
    for (std::int64_t value = std::max(low - 3, least); value <= high + 3; ++value) {
      if (value > row.Highest()) break;
      for (unsigned short op = 0; op < 8; ++op) {
        int count = 0;
        for (std::int64_t key = low; key <= high; ++key) {
          int const relation = key < value ? 2 : key > value ? 4 : 1;
          if ((op & relation) != 0) ++count;
        }
        // A selection of wide numbers that ends at an end of the range counts as one key, since a
        // double might have lost it.
        bool const reachesLow = (op & 4) != 0 || low <= value;
        bool const reachesHigh = (op & 2) != 0 || value <= high;
        if (row.IsWide() && count == 0 && reachesLow && reachesHigh) count = 1;
        float const expected = static_cast<float>(count / static_cast<double>(high - low + 1));
        for (unsigned char format : Formats{1, 2, 8}) {
          ASSERT_EQ(ShareOfNumbers(row, low, high, value, op, format), expected)
              << value << " under " << op << " in " << low << ".." << high << ", form " << +format;
        }
      }
    }
  }
}

TEST_P(NumberRows, UpperBitsOfTheFormatDoNotMatter) {
  for (unsigned char format : kNumberForms) {
    for (unsigned char upper : Formats{0x00, 0x10, 0x20, 0x40, 0x80, 0xF0}) {
      auto const form = static_cast<unsigned char>(format | upper);
      EXPECT_EQ(ShareOfNumbers(row, 10, 19, 15, 2, form), 0.5F) << +form;
    }
  }
}

TEST_P(NumberRows, BytesAreSwappedUnderBigAlone) {
  for (unsigned nibble = 0; nibble < 16; ++nibble) {
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 15, 4, static_cast<unsigned char>(nibble)), 0.4F)
        << nibble;
  }
}

TEST_P(NumberRows, OnlyTheRelationIsReadAndNothingOfItWritten) {
  Predicate predicate(StoredNumber(row, 10, 1), StoredNumber(row, 19, 1), StoredNumber(row, 15, 1),
                      1);
  for (unsigned op = 0; op < 0x10000; op += 8) {
    auto word = static_cast<unsigned short>(op | 3);
    ASSERT_EQ(predicate.Evaluate(row, word), 0.6F);
    ASSERT_EQ(word, op | 3);
  }
}

TEST_P(NumberRows, AnUnknownRangeHasNoShareAndItsBoundsAreFilled) {
  StoredKey const key = StoredNumber(row, 15, 1);
  for (unsigned short relation = 0; relation < 8; ++relation) {
    for (int known = 0; known < 4; ++known) {
      Predicate predicate(StoredNumber(row, 10, 1), StoredNumber(row, 19, 1), key, 1);
      if ((known & 1) == 0) predicate.range.low = nullptr;
      if ((known & 2) == 0) predicate.range.high = nullptr;
      OwnedBounds bounds;
      unsigned short op = relation;
      float const share = predicate.Evaluate(row, op, &bounds);
      EXPECT_TRUE(known == 3 || share == 0.0F) << relation;
      EXPECT_TRUE(IsBound(bounds.low, bounds.lowLen, (relation & 2) == 0, key));
      EXPECT_TRUE(IsBound(bounds.high, bounds.highLen, (relation & 4) == 0, key));
    }
    StoredKey value = key;
    OwnedBounds bounds;
    unsigned short op = relation;
    EXPECT_EQ(XoTypeMgr().EvalAndBound(row.id, nullptr, op, value.data(), 1, 1, &bounds, nullptr),
              0.0F);
    EXPECT_EQ(bounds.low != nullptr, (relation & 2) == 0);
    EXPECT_EQ(bounds.high != nullptr, (relation & 4) == 0);
  }
}

TEST_P(NumberRows, BoundsHoldTheValueAsItIsStored) {
  for (unsigned char format : kNumberForms) {
    StoredKey values;
    for (int number : {15, 7, 100}) {
      StoredKey const key = StoredNumber(row, number, format);
      values.insert(values.end(), key.begin(), key.end());
    }
    for (unsigned count = 0; count <= 3; ++count) {
      Predicate predicate(StoredNumber(row, 10, format), StoredNumber(row, 19, format), values,
                          format);
      OwnedBounds bounds;
      unsigned short op = 1;
      EXPECT_EQ(predicate.Evaluate(row, op, &bounds, count), 0.1F);
      ASSERT_EQ(bounds.lowLen, count * row.width);
      ASSERT_EQ(bounds.highLen, count * row.width);
      EXPECT_EQ(std::memcmp(bounds.low, values.data(), bounds.lowLen), 0);
      EXPECT_EQ(std::memcmp(bounds.high, values.data(), bounds.highLen), 0);
    }
  }
}

TEST_P(NumberRows, LongBoundsKeepAllBytesAndALengthOfEightBits) {
  unsigned const count = 300;
  StoredKey const values = Bytes(count * row.width);
  Predicate predicate(StoredNumber(row, 10, 1), StoredNumber(row, 19, 1), values, 1);
  OwnedBounds bounds;
  unsigned short op = 1;
  predicate.Evaluate(row, op, &bounds, count);
  EXPECT_EQ(bounds.lowLen, count * row.width % 256);
  EXPECT_EQ(bounds.highLen, count * row.width % 256);
  EXPECT_EQ(std::memcmp(bounds.low, values.data(), values.size()), 0);
  EXPECT_EQ(std::memcmp(bounds.high, values.data(), values.size()), 0);
}

TEST_P(NumberRows, TheFirstOfSeveralPredicatesSetsABound) {
  OwnedBounds bounds;
  Predicate above(StoredNumber(row, 10, 1), StoredNumber(row, 19, 1), StoredNumber(row, 12, 1), 1);
  Predicate equal(StoredNumber(row, 10, 1), StoredNumber(row, 19, 1), StoredNumber(row, 15, 1), 1);
  unsigned short op = 4;
  above.Evaluate(row, op, &bounds);
  void* const low = bounds.low;
  EXPECT_EQ(bounds.high, nullptr);
  op = 1;
  equal.Evaluate(row, op, &bounds);
  EXPECT_EQ(bounds.low, low);
  StoredKey const twelve = StoredNumber(row, 12, 1), fifteen = StoredNumber(row, 15, 1);
  EXPECT_EQ(std::memcmp(bounds.low, twelve.data(), row.width), 0);
  EXPECT_EQ(std::memcmp(bounds.high, fifteen.data(), row.width), 0);
}

TEST_P(NumberRows, TheRangeIsOnlyRead) {
  StoredKey const low = StoredNumber(row, 10, 1), high = StoredNumber(row, 19, 1);
  Predicate predicate(low, high, StoredNumber(row, 15, 1), 1);
  predicate.range.lowFlags = predicate.range.highFlags = 0xFFFF;
  predicate.range.keyLimit = 3;
  XoIdxBounds const before = predicate.range;
  for (unsigned short relation = 0; relation < 8; ++relation) {
    OwnedBounds bounds;
    bounds.lowFlags = bounds.highFlags = 0xFFFF;
    unsigned short op = relation;
    predicate.Evaluate(row, op, &bounds);
    EXPECT_EQ(bounds.lowFlags, 0xFFFF);
    EXPECT_EQ(bounds.highFlags, 0xFFFF);
    EXPECT_EQ(bounds.keyLimit, 0);
  }
  EXPECT_EQ(predicate.range.low, before.low);
  EXPECT_EQ(predicate.range.high, before.high);
  EXPECT_EQ(predicate.range.lowLen, before.lowLen);
  EXPECT_EQ(predicate.range.highLen, before.highLen);
  EXPECT_EQ(predicate.range.lowFlags, 0xFFFF);
  EXPECT_EQ(predicate.range.highFlags, 0xFFFF);
  EXPECT_EQ(predicate.range.keyLimit, 3);
  EXPECT_EQ(std::memcmp(predicate.range.low, low.data(), row.width), 0);
  EXPECT_EQ(std::memcmp(predicate.range.high, high.data(), row.width), 0);
}

TEST_P(NumberRows, AnEmptyRecordMayBeRangeAndBoundsAtOnce) {
  StoredKey value = StoredNumber(row, 15, 1);
  OwnedBounds both;
  unsigned short op = 1;
  EXPECT_EQ(XoTypeMgr().EvalAndBound(row.id, &both, op, value.data(), 1, 1, &both, nullptr), 0.0F);
  EXPECT_NE(both.low, nullptr);
  EXPECT_NE(both.high, nullptr);
  // The record knows a range now: the value alone.
  EXPECT_EQ(XoTypeMgr().EvalAndBound(row.id, &both, op, value.data(), 1, 1, &both, nullptr), 1.0F);
}

TEST_P(NumberRows, ARangeInTheWrongOrderHasNoShare) {
  for (unsigned short op = 0; op < 8; ++op) {
    for (int value = 8; value < 22; ++value) {
      EXPECT_EQ(ShareOfNumbers(row, 19, 10, value, op), 0.0F) << value << " under " << op;
      // One key short of a range: the difference that a quotient cannot take.
      EXPECT_EQ(ShareOfNumbers(row, 11, 10, value, op), 0.0F) << value << " under " << op;
    }
  }
}

TEST_P(NumberRows, AnyBytesGiveAShareThatIsANumberAndNotBelowNothing) {
  for (int round = 0; round < 1000; ++round) {
    unsigned char const format = kNumberForms[Below(std::size(kNumberForms))];
    auto const any = [this, format] {
      return OneIn(3) ? StoredNumber(row, Below(8), format)
                      : StoredBits(row, OneIn(4) ? Bits() | 0xFFF00000FF800000 : Bits(), format);
    };
    Predicate predicate(any(), any(), any(), format);
    for (unsigned short op = 0; op < 8; ++op) ASSERT_GE(predicate.Share(row, op), 0.0F) << op;
  }
}

// Floating point.

TEST(RealBounds, FractionsAreMeasuredByStepsOfOne) {
  for (char id : {char{XoDOUBLE_T}, char{XoFLOAT_T}, char{D_INTERVAL_T}}) {
    EXPECT_EQ(ShareOfReals(RowOf(id), 0, 1, 0.5, 2), 0.25F);
    EXPECT_EQ(ShareOfReals(RowOf(id), 0, 1, 0.5, 1), 0.5F);
    EXPECT_EQ(ShareOfReals(RowOf(id), 0, 1, 0.5, 7), 1.0F);
    // Half a step outside is half equal.
    EXPECT_EQ(ShareOfReals(RowOf(id), 0, 1, 1.5, 1), 0.25F);
  }
}

TEST(RealBounds, FloatsAreWidenedBeforeTheyAreMeasured) {
  // 2^24 + 2 is a float, and one step more is none.
  EXPECT_EQ(ShareOfReals(RowOf(XoFLOAT_T), 16777216, 16777218, 16777216, 1), 1.0F / 3);
}

TEST(RealBounds, NoSelectionRoundsToNothing) {
  for (char id : {char{XoDOUBLE_T}, char{XoFLOAT_T}, char{D_INTERVAL_T}}) {
    NumberRow const& row = RowOf(id);
    // Of 2^24 steps: one and two are lifted to 2^-23, four are 2^-22.
    double const top = 16777215;
    EXPECT_EQ(ShareOfReals(row, 0, top, 5, 1), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, 0, top, 2, 2), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, 0, top, 4, 2), 2 * kLeastShare);
    EXPECT_EQ(ShareOfReals(row, 0, top, 3, 2), 1.5F * kLeastShare);
    // An empty selection stays one.
    EXPECT_EQ(ShareOfReals(row, 0, top, 0, 2), 0.0F);
    EXPECT_EQ(ShareOfReals(row, 0, top, -5, 1), 0.0F);
  }
  EXPECT_EQ(ShareOfReals(Double(), 0, 1e300, 1, 2), kLeastShare);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(ShareOfReals(Double(), 0, 1e300, 1, 2)), 0x34000000U);
  EXPECT_EQ(ShareOfReals(RowOf(XoFLOAT_T), 0, 1e38, 1, 2), kLeastShare);
}

TEST(RealBounds, IntegersKnowNoLeastShare) {
  for (char id : {char{Xo4B_T}, char{XoU4B_T}, char{XoINT_T}, char{Xo8B_T}, char{XoINT64_T}}) {
    EXPECT_EQ(ShareOfNumbers(RowOf(id), 0, (1 << 30) - 1, 5, 1), 0x1p-30F) << int{id};
  }
}

TEST(RealBounds, AnInfiniteRangeOfDoublesIsTheLargestDouble) {
  EXPECT_EQ(ShareOfReals(Double(), -kInfinity, 5, 0, 2), 1.0F);
  EXPECT_EQ(ShareOfReals(Double(), -kInfinity, 5, 0, 4), kLeastShare);
  EXPECT_EQ(ShareOfReals(Double(), -kInfinity, 5, 0, 1), kLeastShare);
  EXPECT_EQ(ShareOfReals(Double(), -kInfinity, 5, -kInfinity, 1), 1.0F);
  EXPECT_EQ(ShareOfReals(Double(), -kInfinity, kInfinity, 0, 6), 1.0F);
  EXPECT_EQ(ShareOfReals(Double(), -0x1.8p1023, 0x1.8p1023, 0, 4), 0.75F);
}

TEST(RealBounds, AnInfiniteRangeOfFloatsLeavesTheLeastShare) {
  for (char id : {char{XoFLOAT_T}, char{D_INTERVAL_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(ShareOfReals(row, -kInfinity, 5, 0, 2), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, -kInfinity, 5, 0, 4), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, 0, kInfinity, 5, 4), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, 0, kInfinity, -5, 2), 0.0F);
  }
}

TEST(RealBounds, FloatsAnswerAsDoublesWhereTheirOwnStepsMakeNoNumber) {
  for (char id : {char{XoFLOAT_T}, char{D_INTERVAL_T}, char{XoDOUBLE_T}}) {
    NumberRow const& row = RowOf(id);
    // Infinite by infinite.
    EXPECT_EQ(ShareOfReals(row, -kInfinity, kInfinity, 0, 6), 1.0F);
    EXPECT_EQ(ShareOfReals(row, -kInfinity, kInfinity, 0, 7), 1.0F);
    // No difference at all.
    EXPECT_EQ(ShareOfReals(row, kInfinity, kInfinity, kInfinity, 1), 1.0F);
    EXPECT_EQ(ShareOfReals(row, kNan, 10, 5, 4), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, kNan, 10, 5, 2), 1.0F);
    EXPECT_EQ(ShareOfReals(row, 0, kNan, 5, 4), 1.0F);
    EXPECT_EQ(ShareOfReals(row, 0, kNan, 5, 2), kLeastShare);
    EXPECT_EQ(ShareOfReals(row, kNan, kNan, kNan, 1), 1.0F);
    EXPECT_EQ(ShareOfReals(row, kNan, kNan, kNan, 0), 0.0F);
  }
}

TEST(RealBounds, AValueThatIsNoNumberIsTheLargestDoubleAway) {
  for (char id : {char{XoFLOAT_T}, char{D_INTERVAL_T}, char{XoDOUBLE_T}}) {
    for (unsigned short op = 1; op < 8; ++op) {
      // More than any float.
      EXPECT_EQ(ShareOfReals(RowOf(id), 0, 10, kNan, op), std::numeric_limits<float>::infinity());
    }
    EXPECT_EQ(ShareOfReals(RowOf(id), 0, 10, kNan, 0), 0.0F);
  }
}

TEST(RealBounds, ARangeThatRoundsToNoWidthIsNoNumberTooFew) {
  // The ends are a step apart the wrong way, so that the width is 0, and yet something lies between
  // the step and the upper end.
  double const low = 0x1p-54, high = -1 + 0x1p-53;
  EXPECT_EQ(ShareOfReals(Double(), low, high, -5, 4), std::numeric_limits<float>::infinity());
  EXPECT_EQ(ShareOfReals(Double(), low, high, 5, 1), 0.0F);
}

// Numbers with more bits than a double.

TEST(WideBounds, AKeyThatADoubleLosesCounts) {
  std::int64_t const low = std::int64_t{1} << 62;
  for (char id : {char{Xo8B_T}, char{XoU8B_T}, char{XoINT64_T}}) {
    NumberRow const& row = RowOf(id);
    // Both ends are one double, of the width of one step.
    EXPECT_EQ(ShareOfNumbers(row, low, low + 1, low + 1, 1), 1.0F);
    EXPECT_EQ(ShareOfNumbers(row, low, low + 1, low, 4), 1.0F);
    EXPECT_EQ(ShareOfNumbers(row, low, low + 1, low + 1, 2), 1.0F);
  }
}

TEST(WideBounds, AKeyOutsideDoesNotCountHoweverNear) {
  std::int64_t const low = (std::int64_t{1} << 62) + 1;
  for (char id : {char{Xo8B_T}, char{XoU8B_T}, char{XoINT64_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(ShareOfNumbers(row, low, low + 1, low + 2, 4), 0.0F);
    EXPECT_EQ(ShareOfNumbers(row, low, low + 1, low - 1, 2), 0.0F);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 9, 1), 0.0F);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 20, 1), 0.0F);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 20, 0), 0.0F);
  }
}

TEST(WideBounds, TheOnlyKeyCountsFromAValueThatADoubleCannotTellFromIt) {
  std::int64_t const key = std::int64_t{1} << 62;
  for (char id : {char{Xo8B_T}, char{XoU8B_T}, char{XoINT64_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(ShareOfNumbers(row, key, key, key - 5, 4), 1.0F);
    EXPECT_EQ(ShareOfNumbers(row, key, key, key + 5, 2), 1.0F);
    EXPECT_EQ(ShareOfNumbers(row, key, key, key, 6), 1.0F);
    EXPECT_EQ(ShareOfNumbers(row, key, key, key + 5, 6), 1.0F);
  }
}

TEST(WideBounds, AnAreaOfNoneIsAStepWhereverTheValueLiesInTheRange) {
  for (char id : {char{Xo8B_T}, char{XoU8B_T}, char{XoINT64_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 10, 2), 0.1F);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 19, 4), 0.1F);
    EXPECT_EQ(ShareOfNumbers(row, 10, 19, 15, 0), 0.1F);
  }
  // Narrower integers lose nothing.
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo4B_T), 10, 19, 10, 2), 0.0F);
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo4B_T), 10, 19, 15, 0), 0.0F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoDOUBLE_T), 10, 19, 10, 2), 0.0F);
}

TEST(WideBounds, SignDecidesTheExactOrder) {
  // All bits set: the highest number without a sign, -1 with one.
  EXPECT_EQ(ShareOfNumbers(RowOf(XoU8B_T), 1, -1, -1, 4), 0x1p-64F);
  EXPECT_EQ(ShareOfNumbers(RowOf(Xo8B_T), -2, -1, -1, 4), 0.5F);
  EXPECT_EQ(ShareOfNumbers(RowOf(XoINT64_T), -2, -1, -1, 4), 0.5F);
}

TEST(WideBounds, HalvesKeepTheirOrderUnderBig) {
  // 2^32 in a range of 2^33 steps.
  std::int64_t const value = std::int64_t{1} << 32;
  for (unsigned char format : kNumberForms) {
    EXPECT_EQ(ShareOfNumbers(RowOf(XoINT64_T), 0, 2 * value - 1, value, 2, format), 0.5F);
  }
}

// XoBoolean.

TEST(BooleanBounds, AThirdOfAnyRangeWhateverTheValueAndRelation) {
  unsigned char low = 0, high = 1;
  for (int byte = 0; byte < 256; ++byte) {
    auto value = static_cast<unsigned char>(byte);
    for (unsigned short relation = 0; relation < 8; ++relation) {
      for (int known = 0; known < 4; ++known) {
        XoIdxBounds range;
        if ((known & 1) != 0) range.low = &low;
        if ((known & 2) != 0) range.high = &high;
        OwnedBounds bounds;
        auto op = static_cast<unsigned short>(relation | 0xFFF8);
        EXPECT_EQ(XoTypeMgr().EvalAndBound(XoBOOLEAN_T, &range, op, &value, 1, 1, &bounds, nullptr),
                  1.0F / 3);
        EXPECT_EQ(op, relation | 0xFFF8);
        EXPECT_TRUE(IsBound(bounds.low, bounds.lowLen, (relation & 2) == 0, {value}));
        EXPECT_TRUE(IsBound(bounds.high, bounds.highLen, (relation & 4) == 0, {value}));
      }
    }
  }
}

TEST(BooleanBounds, NothingOfNoRange) {
  unsigned char values[] = {1, 0, 255};
  unsigned short op = 1;
  OwnedBounds bounds;
  EXPECT_EQ(XoTypeMgr().EvalAndBound(XoBOOLEAN_T, nullptr, op, values, 2, 3, &bounds, nullptr),
            0.0F);
  ASSERT_EQ(bounds.lowLen, 3);
  ASSERT_EQ(bounds.highLen, 3);
  EXPECT_EQ(std::memcmp(bounds.low, values, 3), 0);
  EXPECT_EQ(std::memcmp(bounds.high, values, 3), 0);
}

TEST(BooleanBounds, TheValueIsNotLookedAtWithoutBounds) {
  XoIdxBounds range;
  unsigned short op = 1;
  EXPECT_EQ(XoTypeMgr().EvalAndBound(XoBOOLEAN_T, &range, op, nullptr, 1, 1, nullptr, nullptr),
            1.0F / 3);
}

}  // namespace
}  // namespace xo::test
