#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/number_rows.hpp"

namespace xo::test {
namespace {

NumberRow const& Int() { return RowOf(XoNULL_INT_T); }

/// A key of an index: a number, or null.
struct Key {
  std::int64_t number = 0;
  bool isNull = false;
};
constexpr Key kNull{0, true};

StoredKey Stored(NumberRow const& row, Key key, unsigned char format) {
  return key.isNull ? StoredNull(row, format) : StoredNumber(row, key.number, format);
}

float Share(NumberRow const& row, Key low, Key high, Key value, unsigned short op,
            unsigned char format = 1) {
  Predicate predicate(Stored(row, low, format), Stored(row, high, format),
                      Stored(row, value, format), format);
  return predicate.Share(row, op);
}

TEST(NullBounds, WithoutNullsTheShareIsThatOfThePlainNumber) {
  for (NumberRow const& row : kNullRows) {
    EXPECT_EQ(Share(row, {10}, {19}, {15}, 2), 0.5F) << row.Name();
    EXPECT_EQ(Share(row, {10}, {19}, {15}, 4), 0.4F) << row.Name();
    EXPECT_EQ(Share(row, {10}, {19}, {15}, 1), 0.1F) << row.Name();
    EXPECT_EQ(Share(row, {10}, {19}, {5}, 4), 1.0F) << row.Name();
    EXPECT_EQ(Share(row, {10}, {19}, {25}, 2), 1.0F) << row.Name();
  }
}

TEST(NullBounds, ANullThatIsLookedForTakesAThousandthOfAStep) {
  EXPECT_EQ(Share(Int(), kNull, {9}, kNull, 1), static_cast<float>(0.001 / 10));
  EXPECT_EQ(Share(Int(), kNull, kNull, kNull, 1), static_cast<float>(0.001));
  EXPECT_EQ(Share(Int(), {0}, {9}, kNull, 1), 0.0F);
}

TEST(NullBounds, AValueBesideNullsTakesATenthOfAStep) {
  EXPECT_EQ(Share(Int(), kNull, {9}, {5}, 1), static_cast<float>(0.1 / 10));
  EXPECT_EQ(Share(Int(), kNull, kNull, {5}, 1), 0.0F);
}

TEST(NullBounds, AnOpenIntervalBesideNullsTakesHalfAStep) {
  EXPECT_EQ(Share(Int(), kNull, {9}, {5}, 4), static_cast<float>(0.5 / 10));
  EXPECT_EQ(Share(Int(), {0}, {9}, kNull, 4), static_cast<float>(0.5 / 10));
  EXPECT_EQ(Share(Int(), kNull, {9}, kNull, 4), static_cast<float>(0.5 / 10));
  EXPECT_EQ(Share(Int(), kNull, {9}, {5}, 2), static_cast<float>(0.5 / 10));
  EXPECT_EQ(Share(Int(), kNull, {9}, {5}, 7), static_cast<float>(1.1 / 10));
}

TEST(NullBounds, NothingIsBelowNull) {
  EXPECT_EQ(Share(Int(), kNull, {9}, kNull, 2), 0.0F);
  EXPECT_EQ(Share(Int(), {0}, {9}, kNull, 2), 0.0F);
}

TEST(NullBounds, AnIndexOfNullsAloneHoldsNoNumber) {
  for (NumberRow const& row : kNullRows) {
    for (unsigned short op = 0; op < 8; ++op) {
      EXPECT_EQ(Share(row, kNull, kNull, {5}, op), 0.0F) << row.Name() << " under " << op;
      // Not even the number that a null has.
      EXPECT_EQ(Share(row, kNull, kNull, {0}, op), 0.0F) << row.Name() << " under " << op;
    }
  }
}

/// What the rules make of each relation, one case a line.
double AreaByTheBook(unsigned op, Key low, Key high, Key value) {
  double area = 0;
  auto const span = [](double d) { return d > 0 ? d : 0; };
  auto const v = static_cast<double>(value.number), l = static_cast<double>(low.number),
             h = static_cast<double>(high.number);
  switch (value.isNull << 2 | low.isNull << 1 | high.isNull << 0) {
    case 0b000:
      if ((op & 4) != 0) area += span(l > v ? h - (l - 1) : h - v);
      if ((op & 2) != 0) area += span(v > h ? h + 1 - l : v - l);
      if ((op & 1) != 0) area += span((v < h ? v : h) - (v > l ? v : l) + 1);
      break;
    case 0b010:
      if ((op & 4) != 0) area += 0.5;
      if ((op & 2) != 0) area += 0.5;
      if ((op & 1) != 0) area += 0.1;
      break;
    case 0b100:
      if ((op & 4) != 0) area += 0.5;
      break;
    case 0b110:
      if ((op & 4) != 0) area += 0.5;
      if ((op & 1) != 0) area += 0.001;
      break;
    case 0b111:
      if ((op & 1) != 0) area += 0.001;
      break;
    default:  // the highest key is null, and the value is not or the lowest is not
      break;
  }
  return area;
}

TEST(NullBounds, FollowTheRulesUnderEveryChoiceOfNulls) {
  for (NumberRow const& row : kNullRows) {
    for (int nulls = 0; nulls < 8; ++nulls) {
      for (int number : {5, 9, 10, 11, 15, 18, 19, 20, 21, 25}) {
        Key const value = (nulls & 4) != 0 ? kNull : Key{number};
        Key const low = (nulls & 2) != 0 ? kNull : Key{10};
        Key const high = (nulls & 1) != 0 ? kNull : Key{19};
        for (unsigned short op = 0; op < 8; ++op) {
          double area = AreaByTheBook(op, low, high, value);
          bool const reachesLow = (op & 4) != 0 || low.number <= value.number;
          bool const reachesHigh = (op & 2) != 0 || value.number <= high.number;
          if (row.IsWide() && nulls == 0 && area == 0 && reachesLow && reachesHigh) area = 1;
          // A null counts as 0 here.
          auto const steps = static_cast<double>(high.number - low.number + 1);
          float expected = area == 0 ? 0.0F : static_cast<float>(area / steps);
          if (row.IsReal() && area != 0 && expected < 0x1p-23F) expected = 0x1p-23F;
          for (unsigned char format : kNumberForms) {
            ASSERT_EQ(Share(row, low, high, value, op, format), expected)
                << row.Name() << " form " << +format << " nulls " << nulls << ": " << number
                << " under " << op;
          }
        }
      }
    }
  }
}

TEST(NullBounds, ARangeOverNullsIsAsWideAsFromZero) {
  // Of negative numbers the width is negative, and the share with it; none at all makes it
  // infinite.
  EXPECT_EQ(Share(Int(), kNull, {-11}, {-20}, 2), -0.05F);
  EXPECT_EQ(Share(Int(), kNull, {-1}, {-20}, 2), INFINITY);
  EXPECT_EQ(Share(Int(), kNull, {-1}, {-20}, 0), 0.0F);
  EXPECT_EQ(Share(RowOf(XoNULL_DOUBLE_T), kNull, {-11}, {-20}, 2), 0x1p-23F);
}

TEST(NullBounds, OnlyANullByteOfOneIsNull) {
  for (NumberRow const& row : kNullRows) {
    for (unsigned char format : kNumberForms) {
      auto const lowest = StoredBits(row, 0, format, 2), highest = StoredNumber(row, 9, format);
      Predicate predicate(lowest, highest, StoredNumber(row, 5, format), format);
      EXPECT_EQ(predicate.Share(row, 2), 0.5F) << row.Name();
    }
  }
}

TEST(NullBounds, TheNumberOfANullIsNotLookedAt) {
  for (NumberRow const& row : kNullRows) {
    for (unsigned char format : kNumberForms) {
      auto const lowest = StoredBits(row, ~std::uint64_t{0}, format, 1);
      Predicate predicate(lowest, StoredNumber(row, 9, format), StoredNumber(row, 5, format),
                          format);
      EXPECT_EQ(predicate.Share(row, 4), static_cast<float>(0.5 / 10)) << row.Name();
    }
  }
}

TEST(NullBounds, SharesOfRealsAreNotBelowTheLeast) {
  for (char id : {char{XoNULL_FLOAT_T}, char{XoNULL_DOUBLE_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(Share(row, kNull, {1 << 24}, kNull, 1), 0x1p-23F);
    EXPECT_EQ(Share(row, kNull, {1 << 24}, kNull, 2), 0.0F);
  }
  EXPECT_EQ(Share(Int(), kNull, {(1 << 24) - 1}, kNull, 1), static_cast<float>(0.001 * 0x1p-24));
}

TEST(NullBounds, InfiniteRealsAreTheLargestDoubleAsPlainOnesAre) {
  double const infinity = INFINITY;
  EXPECT_EQ(ShareOfReals(RowOf(XoNULL_DOUBLE_T), -infinity, 5, 0, 2), 1.0F);
  EXPECT_EQ(ShareOfReals(RowOf(XoNULL_DOUBLE_T), -infinity, infinity, 0, 6), 1.0F);
  EXPECT_EQ(ShareOfReals(RowOf(XoNULL_FLOAT_T), -infinity, 5, 0, 2), 0x1p-23F);
  EXPECT_EQ(ShareOfReals(RowOf(XoNULL_FLOAT_T), -infinity, infinity, 0, 6), 1.0F);
  // Nulls at the bottom leave a finite half step of an infinite range.
  for (char id : {char{XoNULL_FLOAT_T}, char{XoNULL_DOUBLE_T}}) {
    NumberRow const& row = RowOf(id);
    Predicate predicate(StoredNull(row, 1), StoredReal(row, infinity, 1), StoredReal(row, 5, 1), 1);
    EXPECT_EQ(predicate.Share(row, 2), 0x1p-23F);
  }
}

TEST(NullBounds, WidePresentNumbersAreComparedExactly) {
  std::int64_t const low = std::int64_t{1} << 62;
  for (char id : {char{XoNULL_8B_T}, char{XoNULL_U8B_T}, char{XoNULL_XOINT64_T}}) {
    NumberRow const& row = RowOf(id);
    EXPECT_EQ(Share(row, {low}, {low + 1}, {low + 1}, 1), 1.0F);
    EXPECT_EQ(Share(row, {low}, {low + 1}, {low}, 4), 1.0F);
    EXPECT_EQ(Share(row, {low + 1}, {low + 2}, {low + 3}, 4), 0.0F);
    EXPECT_EQ(Share(row, {10}, {19}, {19}, 4), 0.1F);
    // A null value is no number of the range.
    EXPECT_EQ(Share(row, {0}, {9}, kNull, 1), 0.0F);
    EXPECT_EQ(Share(row, {0}, {9}, kNull, 2), 0.0F);
    EXPECT_EQ(Share(row, kNull, {9}, kNull, 0), 0.0F);
    EXPECT_EQ(Share(row, {0}, kNull, {0}, 1), 0.0F);
  }
}

TEST(NullBounds, AnUnknownRangeHasNoShareAndItsBoundsAreFilled) {
  for (NumberRow const& row : kNullRows) {
    for (int known = 0; known < 3; ++known) {
      Predicate predicate(Stored(row, {0}, 1), Stored(row, {9}, 1), Stored(row, kNull, 1), 1);
      if (known != 1) predicate.range.low = nullptr;
      if (known != 2) predicate.range.high = nullptr;
      OwnedBounds bounds;
      unsigned short op = 1;
      EXPECT_EQ(predicate.Evaluate(row, op, &bounds), 0.0F);
      EXPECT_NE(bounds.low, nullptr);
      EXPECT_NE(bounds.high, nullptr);
    }
    StoredKey value = Stored(row, {5}, 1);
    unsigned short op = 5;
    OwnedBounds bounds;
    EXPECT_EQ(XoTypeMgr().EvalAndBound(row.id, nullptr, op, value.data(), 1, 1, &bounds, nullptr),
              0.0F);
    EXPECT_NE(bounds.low, nullptr);
    EXPECT_EQ(bounds.high, nullptr);
  }
}

TEST(NullBounds, ABoundIsTheStoredElementsWithTheirNullBytes) {
  for (NumberRow const& row : kNullRows) {
    for (unsigned char format : kNumberForms) {
      StoredKey values;
      for (Key key : {Key{15}, kNull, Key{7}}) {
        StoredKey const element = Stored(row, key, format);
        values.insert(values.end(), element.begin(), element.end());
      }
      for (unsigned count = 1; count <= 3; ++count) {
        Predicate predicate(Stored(row, {10}, format), Stored(row, {19}, format), values, format);
        OwnedBounds bounds;
        unsigned short op = 0xFFF9;
        EXPECT_EQ(predicate.Evaluate(row, op, &bounds, count), 0.1F);
        EXPECT_EQ(op, 0xFFF9);
        ASSERT_EQ(bounds.lowLen, count * (row.width + 1));
        ASSERT_EQ(bounds.highLen, count * (row.width + 1));
        EXPECT_EQ(std::memcmp(bounds.low, values.data(), bounds.lowLen), 0);
        EXPECT_EQ(std::memcmp(bounds.high, values.data(), bounds.highLen), 0);
      }
    }
  }
}

TEST(NullBounds, LongBoundsKeepAllBytesAndALengthOfEightBits) {
  for (NumberRow const& row : kNullRows) {
    StoredKey const values(200 * row.DiskWidth(), 0x77);
    Predicate predicate(Stored(row, {10}, 1), Stored(row, {19}, 1), values, 1);
    OwnedBounds bounds;
    unsigned short op = 1;
    predicate.Evaluate(row, op, &bounds, 200);
    EXPECT_EQ(bounds.lowLen, 200 * (row.width + 1) % 256);
    EXPECT_EQ(std::memcmp(bounds.low, values.data(), values.size()), 0);
    EXPECT_EQ(std::memcmp(bounds.high, values.data(), values.size()), 0);
  }
}

class NullBoundLaws : public RandomTest {};

TEST_F(NullBoundLaws, AnyBytesGiveAShareThatIsANumber) {
  for (NumberRow const& row : kNullRows) {
    for (int round = 0; round < 1000; ++round) {
      unsigned char const format = kNumberForms[Below(std::size(kNumberForms))];
      auto const any = [&] {
        return StoredBits(row, OneIn(4) ? Bits() | 0xFFF00000FF800000 : Bits() >> Below(64), format,
                          static_cast<unsigned char>(Below(3)));
      };
      Predicate predicate(any(), any(), any(), format);
      for (unsigned short op = 0; op < 8; ++op)
        ASSERT_FALSE(std::isnan(predicate.Share(row, op))) << op;
    }
  }
}

}  // namespace
}  // namespace xo::test
