#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = 1.7976931348623157e+308;

double AreaOfNumber(unsigned short op, double value, double low, double high) {
  return BoundRangeArea(op, value, value, low, high, 1.0);
}

TEST(BoundRangeArea, CountsTheKeysOfEachRelation) {
  EXPECT_EQ(AreaOfNumber(0, 15, 10, 19), 0.0);
  EXPECT_EQ(AreaOfNumber(1, 15, 10, 19), 1.0);
  EXPECT_EQ(AreaOfNumber(2, 15, 10, 19), 5.0);
  EXPECT_EQ(AreaOfNumber(4, 15, 10, 19), 4.0);
  EXPECT_EQ(AreaOfNumber(3, 15, 10, 19), 6.0);
  EXPECT_EQ(AreaOfNumber(5, 15, 10, 19), 5.0);
  EXPECT_EQ(AreaOfNumber(6, 15, 10, 19), 9.0);
  EXPECT_EQ(AreaOfNumber(7, 15, 10, 19), 10.0);
}

TEST(BoundRangeArea, TakesAllOrNothingForAValueOutside) {
  EXPECT_EQ(AreaOfNumber(2, 5, 10, 19), 0.0);
  EXPECT_EQ(AreaOfNumber(4, 5, 10, 19), 10.0);
  EXPECT_EQ(AreaOfNumber(1, 5, 10, 19), 0.0);
  EXPECT_EQ(AreaOfNumber(2, 25, 10, 19), 10.0);
  EXPECT_EQ(AreaOfNumber(4, 25, 10, 19), 0.0);
  EXPECT_EQ(AreaOfNumber(1, 25, 10, 19), 0.0);
}

TEST(BoundRangeArea, LooksAtTheRelationAlone) {
  EXPECT_EQ(AreaOfNumber(0xFFF8, 15, 10, 19), 0.0);
  EXPECT_EQ(AreaOfNumber(0xFFFA, 15, 10, 19), 5.0);
}

TEST(BoundRangeArea, StepsByTheUnit) {
  EXPECT_EQ(BoundRangeArea(1, 300, 300, 0, 1000, 128), 128.0);
  // A value below the range is taken for the key before it.
  EXPECT_EQ(BoundRangeArea(4, -5, -5, 0, 1000, 128), 1128.0);
  EXPECT_EQ(BoundRangeArea(2, 1001, 1001, 0, 1000, 128), 1128.0);
}

TEST(BoundRangeArea, OfAnIntervalBelowIsBelowItsLowEndAndAboveAboveItsHighEnd) {
  EXPECT_EQ(BoundRangeArea(2, 12, 15, 10, 19, 1), 2.0);
  EXPECT_EQ(BoundRangeArea(4, 12, 15, 10, 19, 1), 4.0);
  EXPECT_EQ(BoundRangeArea(1, 12, 15, 10, 19, 1), 4.0);
  EXPECT_EQ(BoundRangeArea(1, 5, 12, 10, 19, 1), 3.0);
  EXPECT_EQ(BoundRangeArea(1, 18, 30, 10, 19, 1), 2.0);
  EXPECT_EQ(BoundRangeArea(1, 0, 30, 10, 19, 1), 10.0);
}

TEST(BoundRangeArea, EqualKeysMayBeLessThanAUnitAway) {
  EXPECT_EQ(AreaOfNumber(1, 9.75, 10, 19), 0.75);
  EXPECT_EQ(AreaOfNumber(1, 19.5, 10, 19), 0.5);
  EXPECT_EQ(AreaOfNumber(1, 9, 10, 19), 0.0);
}

TEST(BoundRangeArea, AnInfiniteDifferenceIsTheLargestDouble) {
  EXPECT_EQ(AreaOfNumber(4, 0, -10, kInfinity), kLargest);
  EXPECT_EQ(AreaOfNumber(2, 0, -kInfinity, 10), kLargest);
  // A range that ends before it begins is as infinite.
  EXPECT_EQ(AreaOfNumber(4, 0, -10, -kInfinity), kLargest);
  EXPECT_EQ(AreaOfNumber(1, kInfinity, 0, 10), kLargest);
}

TEST(BoundRangeArea, ANumberThatIsNoneMakesTheLargestDouble) {
  EXPECT_EQ(AreaOfNumber(1, kNan, 0, 10), kLargest);
  EXPECT_EQ(AreaOfNumber(2, kNan, 0, 10), kLargest);
  EXPECT_EQ(AreaOfNumber(4, kNan, 0, 10), kLargest);
  EXPECT_EQ(AreaOfNumber(1, 5, kNan, 10), kLargest);
  EXPECT_EQ(AreaOfNumber(2, 5, kNan, 10), kLargest);
  EXPECT_EQ(AreaOfNumber(4, 5, kNan, 10), 5.0);
  EXPECT_EQ(AreaOfNumber(1, 5, 0, kNan), kLargest);
  EXPECT_EQ(AreaOfNumber(2, 5, 0, kNan), 5.0);
  EXPECT_EQ(AreaOfNumber(4, 5, 0, kNan), kLargest);
}

class BoundAreaLaws : public RandomTest {};

TEST_F(BoundAreaLaws, EqualsACountOfTheKeys) {
  for (int round = 0; round < 2000; ++round) {
    int const low = static_cast<int>(Below(60)) - 30;
    int const high = low + static_cast<int>(Below(30));
    int const valueLow = static_cast<int>(Below(80)) - 40;
    int const valueHigh = valueLow + static_cast<int>(Below(20));
    auto const op = static_cast<unsigned short>(Bits());
    int count = 0;
    for (int key = low; key <= high; ++key) {
      int const relation = key < valueLow ? 2 : key > valueHigh ? 4 : 1;
      if ((op & relation) != 0) ++count;
    }
    ASSERT_EQ(BoundRangeArea(op, valueLow, valueHigh, low, high, 1.0), count)
        << op << ": " << valueLow << ".." << valueHigh << " in " << low << ".." << high;
  }
}

TEST_F(BoundAreaLaws, IsAtLeastNothingForAnyDoubles) {
  auto const any = [this] {
    if (OneIn(8)) return OneIn(2) ? kInfinity : kNan;
    return OneIn(2) ? std::bit_cast<double>(Bits()) : static_cast<double>(Below(20)) - 10;
  };
  for (int round = 0; round < 20000; ++round) {
    auto const op = static_cast<unsigned short>(Below(8));
    double const area = BoundRangeArea(op, any(), any(), any(), any(), 1.0);
    ASSERT_GE(area, 0.0);
  }
}

unsigned char const kValue[] = {1, 2, 3, 4, 5, 6, 7, 8};

TEST(BoundRecord, SetsTheEndsThatTheRelationLeavesClosed) {
  for (unsigned short op = 0; op < 8; ++op) {
    SCOPED_TRACE(op);
    XoIdxBounds bounds;
    BoundRecord(&bounds, kValue, op, 4);
    bool const hasLow = op == 0 || op == 1 || op == 4 || op == 5;
    bool const hasHigh = op <= 3;
    ASSERT_EQ(bounds.low != nullptr, hasLow);
    ASSERT_EQ(bounds.high != nullptr, hasHigh);
    EXPECT_EQ(bounds.lowLen, hasLow ? 4 : 0);
    EXPECT_EQ(bounds.highLen, hasHigh ? 4 : 0);
    EXPECT_TRUE(!hasLow || std::memcmp(bounds.low, kValue, 4) == 0);
    EXPECT_TRUE(!hasHigh || std::memcmp(bounds.high, kValue, 4) == 0);
    EXPECT_TRUE(bounds.low == nullptr || bounds.low != bounds.high);
    ReleaseBounds(bounds);
  }
}

TEST(BoundRecord, KeepsABoundThatIsThere) {
  unsigned char mine[2] = {9, 9};
  XoIdxBounds bounds;
  bounds.low = mine;
  bounds.lowLen = 2;
  BoundRecord(&bounds, kValue, 1, 8);
  EXPECT_EQ(bounds.low, mine);
  EXPECT_EQ(bounds.lowLen, 2);
  EXPECT_EQ(mine[0], 9);
  ASSERT_NE(bounds.high, nullptr);
  EXPECT_EQ(bounds.highLen, 8);
  void* const high = bounds.high;
  BoundRecord(&bounds, mine, 1, 2);
  EXPECT_EQ(bounds.high, high);
  EXPECT_EQ(bounds.highLen, 8);
  EXPECT_EQ(std::memcmp(bounds.high, kValue, 8), 0);
  bounds.low = nullptr;
  ReleaseBounds(bounds);
}

TEST(BoundRecord, CutsTheLengthToAByteAndCopiesEverything) {
  std::vector<unsigned char> value(600);
  for (std::size_t index = 0; index < value.size(); ++index) {
    value[index] = static_cast<unsigned char>(index * 7);
  }
  for (unsigned size : {255U, 256U, 257U, 600U}) {
    XoIdxBounds bounds;
    BoundRecord(&bounds, value.data(), 1, size);
    EXPECT_EQ(bounds.lowLen, size % 256);
    EXPECT_EQ(bounds.highLen, size % 256);
    EXPECT_EQ(std::memcmp(bounds.low, value.data(), size), 0);
    EXPECT_EQ(std::memcmp(bounds.high, value.data(), size), 0);
    ReleaseBounds(bounds);
  }
}

TEST(BoundRecord, OfNoBytesIsABoundAllTheSame) {
  XoIdxBounds bounds;
  BoundRecord(&bounds, nullptr, 1, 0);
  EXPECT_NE(bounds.low, nullptr);
  EXPECT_NE(bounds.high, nullptr);
  EXPECT_EQ(bounds.lowLen, 0);
  ReleaseBounds(bounds);
}

TEST(BoundRecord, OfNoRecordDoesNothing) { BoundRecord(nullptr, kValue, 1, 8); }

TEST(BoundRecord, LeavesFlagsAndKeyLimit) {
  XoIdxBounds bounds;
  bounds.lowFlags = 0xFFFF;
  bounds.highFlags = 0x1235;
  bounds.keyLimit = 77;
  BoundRecord(&bounds, kValue, 1, 8);
  EXPECT_EQ(bounds.lowFlags, 0xFFFF);
  EXPECT_EQ(bounds.highFlags, 0x1235);
  EXPECT_EQ(bounds.keyLimit, 77);
  ReleaseBounds(bounds);
  EXPECT_EQ(bounds.lowFlags, 0xFFFF);
  EXPECT_EQ(bounds.highFlags, 0x1235);
  EXPECT_EQ(bounds.keyLimit, 77);
}

TEST(ReleaseBounds, ForgetsBothEndsAndTheirLengths) {
  XoIdxBounds bounds;
  bounds.low = AllocateBound(3);
  bounds.lowLen = 3;
  bounds.high = AllocateBound(0);
  bounds.highLen = 9;
  ReleaseBounds(bounds);
  EXPECT_EQ(bounds.low, nullptr);
  EXPECT_EQ(bounds.high, nullptr);
  EXPECT_EQ(bounds.lowLen, 0);
  EXPECT_EQ(bounds.highLen, 0);
  ReleaseBounds(bounds);
}

TEST(XoIdxBounds, HasItsFieldsInTheirOrder) {
  struct Fields {
    void* low;
    void* high;
    std::uint8_t lowLen, highLen;
    std::uint16_t lowFlags, highFlags;
    std::uint8_t keyLimit;
  };
  EXPECT_EQ(sizeof(XoIdxBounds), sizeof(Fields));
  EXPECT_EQ(offsetof(XoIdxBounds, high), offsetof(Fields, high));
  EXPECT_EQ(offsetof(XoIdxBounds, lowLen), offsetof(Fields, lowLen));
  EXPECT_EQ(offsetof(XoIdxBounds, highLen), offsetof(Fields, highLen));
  EXPECT_EQ(offsetof(XoIdxBounds, lowFlags), offsetof(Fields, lowFlags));
  EXPECT_EQ(offsetof(XoIdxBounds, highFlags), offsetof(Fields, highFlags));
  EXPECT_EQ(offsetof(XoIdxBounds, keyLimit), offsetof(Fields, keyLimit));
}

}  // namespace
}  // namespace xo::test
