#include <gtest/gtest.h>

#include "tests/xotypevl/temporal_values.hpp"

namespace xo::test {
namespace {

Keys const kYear2020 = {Date(2020, 1, 1), Date(2020, 12, 31)};

TEST(DateBounds, CountDaysOfTheCalendar) {
  // 2020 has 366 days, 60 of them before 1 March.
  ByteList const march = Date(2020, 3, 1);
  EXPECT_EQ(Share(XoDATE_T, kBelow, march, kYear2020), Of(60, 366));
  EXPECT_EQ(Share(XoDATE_T, kEqual, march, kYear2020), Of(1, 366));
  EXPECT_EQ(Share(XoDATE_T, kAbove, march, kYear2020), Of(305, 366));
  EXPECT_EQ(Share(XoDATE_T, kBelow | kEqual, march, kYear2020), Of(61, 366));
  EXPECT_EQ(Share(XoDATE_T, kBelow | kAbove, march, kYear2020), Of(365, 366));
  EXPECT_EQ(Share(XoDATE_T, 7, march, kYear2020), 1.0F);
  EXPECT_EQ(Share(XoDATE_T, 0, march, kYear2020), 0.0F);
  EXPECT_EQ(Share(XoDATE_T, kAbove, Date(2019, 12, 31), kYear2020), 1.0F);
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(2021, 1, 1), kYear2020), 1.0F);
  EXPECT_EQ(Share(XoDATE_T, kEqual, Date(2021, 1, 1), kYear2020), 0.0F);
}

TEST(DateBounds, ReadTheByteOrderOfTheFormat) {
  Keys const range = {Date(2020, 1, 1, kBig), Date(2020, 12, 31, kBig)};
  Evaluated const expected = {Of(60, 366), kBelow, std::nullopt, Date(2020, 3, 1, kBig)};
  EXPECT_EQ(Evaluate(XoDATE_T, kBelow, Date(2020, 3, 1, kBig), range, kBig), expected);
  EXPECT_EQ(Evaluate(XoDATE_T, kBelow, Date(2020, 3, 1, kBig), range, kBigKey), expected);
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(2020, 3, 1), kYear2020, kMemory), Of(60, 366));
}

TEST(DateBounds, AreTheValueOnTheSidesThatTheRelationCloses) {
  ByteList const value = Date(2020, 3, 1);
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, value), (Evaluated{0, kEqual, value, value}));
  EXPECT_EQ(Evaluate(XoDATE_T, kBelow, value), (Evaluated{0, kBelow, {}, value}));
  EXPECT_EQ(Evaluate(XoDATE_T, kAbove | kEqual, value), (Evaluated{0, kAbove | kEqual, value, {}}));
  EXPECT_EQ(Evaluate(XoDATE_T, kBelow | kAbove, value), (Evaluated{0, kBelow | kAbove, {}, {}}));
}

TEST(DateBounds, KeepOnlyRelationPatternAndUppermostBit) {
  EXPECT_EQ(Evaluate(XoDATE_T, 0xFFF9, Date(2020, 3, 1)).op, 0x8009);
  EXPECT_EQ(Evaluate(XoDATE_T, 0x0001, Date(2020, 3, 1)).op, 0x0001);
  // The mark for literal comparison is dropped as well: a wildcard stays one.
  EXPECT_EQ(Evaluate(XoDATE_T, kLiteral | kEqual, Date(2020, 3, -1)).op, kEqual | kPattern);
}

TEST(DateBounds, OfAMonthWildcardAreTheFirstAndTheLastMonth) {
  // 1 January to 1 December are 336 days.
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2020, -1, 1), kYear2020),
            (Evaluated{Of(336, 366), kEqual | kPattern, Date(2020, 1, 1), Date(2020, 12, 1)}));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2020, -1, 1, kBig), {}, kBig),
            (Evaluated{0, kEqual | kPattern, Date(2020, 1, 1, kBig), Date(2020, 12, 1, kBig)}));
}

TEST(DateBounds, OfADayWildcardEndWithTheMonth) {
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2020, 2, -1), kYear2020),
            (Evaluated{Of(29, 366), kEqual | kPattern, Date(2020, 2, 1), Date(2020, 2, 29)}));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2021, 2, -1)).high, Date(2021, 2, 28));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2100, 2, -1)).high, Date(2100, 2, 28));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2021, 4, -1)).high, Date(2021, 4, 30));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2021, 12, -1)).high, Date(2021, 12, 31));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(32767, 12, -1)).high, Date(32767, 12, 31));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2021, -1, -1)),
            (Evaluated{0, kEqual | kPattern, Date(2021, 1, 1), Date(2021, 12, 31)}));
}

TEST(DateBounds, OfAYearWildcardReachFromTheFirstDayNumberToTheLastYearButOne) {
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-1, 5, 17), kYear2020),
            (Evaluated{1, kEqual | kPattern, Date(-4713, 5, 17), Date(32766, 5, 17)}));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-1, -1, -1)),
            (Evaluated{0, kEqual | kPattern, Date(-4713, 11, 24), Date(32766, 12, 31)}));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-1, 2, -1)).high, Date(32766, 2, 28));
}

TEST(DateBounds, OfWildcardsInTheFirstYearStartWithTheFirstDay) {
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-4713, -1, 5)).low, Date(-4713, 11, 5));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-4713, 11, -1)),
            (Evaluated{0, kEqual | kPattern, Date(-4713, 11, 24), Date(-4713, 11, 30)}));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-4713, 12, -1)).low, Date(-4713, 12, 1));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-4712, 11, -1)).low, Date(-4712, 11, 1));
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(-4712, -1, 5)).low, Date(-4712, 1, 5));
}

TEST(DateBounds, RaiseTheLowerEndToTheFirstDayForTheNumberAlone) {
  // Day numbers -327 to 0, and to 37.
  Keys const year = {Date(-4713, 1, 1), Date(-4713, 11, 24)};
  Keys const longer = {Date(-4713, 1, 1), Date(-4713, 12, 31)};
  EXPECT_EQ(Evaluate(XoDATE_T, kBelow, Date(-4713, 1, 11), year),
            (Evaluated{Of(327, 328), kBelow, {}, Date(-4713, 1, 11)}));
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(-4713, 11, 10), year), Of(327, 328));
  // The upper end is not raised.
  EXPECT_EQ(Share(XoDATE_T, kAbove, Date(-4713, 1, 11), year), Of(317, 328));
  // Year for year and month for month: -4714-12-30 counts from -4713-12-30.
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(-4714, 12, 30), longer), Of(363, 365));
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(-4714, 3, 5), longer), Of(327, 365));
  // Behind the first month no day is.
  EXPECT_EQ(Share(XoDATE_T, kBelow, Date(-4713, 12, 5), longer), Of(338, 365));
}

TEST(DateBounds, LeaveBoundsThatThereAre) {
  ByteList const other = Date(1999, 9, 9);
  EXPECT_EQ(WithPresent(XoDATE_T, kEqual, Date(2020, -1, 1), {other, other}), (Keys{other, other}));
  EXPECT_EQ(WithPresent(XoDATE_T, kEqual, Date(2020, -1, 1), {other, {}}),
            (Keys{other, Date(2020, 12, 1)}));
  EXPECT_EQ(WithPresent(XoDATE_T, kEqual, Date(2020, -1, 1), {{}, other}),
            (Keys{Date(2020, 1, 1), other}));
  EXPECT_EQ(WithPresent(XoDATE_T, kBelow, Date(2020, -1, 1), {other, {}}),
            (Keys{other, Date(2020, 12, 1)}));
}

TEST(DateBounds, TakeAllElementsAndWidenTheFirst) {
  ByteList const second = Date(2021, -1, -1);
  EXPECT_EQ(
      Evaluate(XoDATE_T, kEqual, Date(2020, 2, -1) + second, {}, kLittle, 2),
      (Evaluated{0, kEqual | kPattern, Date(2020, 2, 1) + second, Date(2020, 2, 29) + second}));
  // Of no elements there is nothing to write.
  EXPECT_EQ(Evaluate(XoDATE_T, kEqual, Date(2020, 2, -1), {}, kLittle, 0),
            (Evaluated{0, kEqual | kPattern, ByteList{}, ByteList{}}));
}

TEST(DateBounds, WidenAlsoWhereTheLengthIsCutTo8Bits) {
  constexpr unsigned kCount = 64;
  ByteList value;
  for (unsigned index = 0; index < kCount; ++index) value = value + Date(2020, -1, 7);
  PlacedBytes const operand(value, 1);
  XoIdxBounds bounds;
  unsigned short op = kEqual;
  XoTypeMgr().EvalAndBound(XoDATE_T, nullptr, op, operand.Data(), kLittle, kCount, &bounds,
                           nullptr);
  EXPECT_EQ(bounds.lowLen, 0);
  ByteList expected = value;
  expected[2] = 1;
  EXPECT_EQ(BoundBytes(bounds.low, value.size()), expected);
  expected[2] = 12;
  EXPECT_EQ(BoundBytes(bounds.high, value.size()), expected);
  ReleaseBounds(bounds);
}

}  // namespace
}  // namespace xo::test
