#include <gtest/gtest.h>

#include "tests/xotypevl/temporal_values.hpp"

namespace xo::test {
namespace {

Keys const kDay = {Time(0, 0, 0), Time(23, 59, 59)};

TEST(TimeBounds, WidenAllFieldsFromTheFirstWildcardOn) {
  // (6 * 60 - 128) * 60 - 128 = 13792 to (6 * 60 + 127) * 60 + 127 = 29347.
  EXPECT_EQ(Evaluate(XoTIME_T, kEqual, Time(6, -1, 30), kDay),
            (Evaluated{Of(15556, 86400), kEqual | kPattern, FieldBytes({6, 0x80, 0x80}),
                       FieldBytes({6, 0x7F, 0x7F})}));
  EXPECT_EQ(Evaluate(XoTIME_T, kEqual, Time(6, 7, -1)),
            (Evaluated{0, kEqual | kPattern, FieldBytes({6, 7, 0x80}), FieldBytes({6, 7, 0x7F})}));
  EXPECT_EQ(Evaluate(XoTIME_T, kEqual, Time(-1, 7, 8), kDay),
            (Evaluated{1, kEqual | kPattern, FieldBytes({0x80, 0x80, 0x80}),
                       FieldBytes({0x7F, 0x7F, 0x7F})}));
}

TEST(TimeBounds, TakeWildcardsAsNumbersOfALiteralComparison) {
  // (6 * 60 - 1) * 60 + 30 = 21570.
  EXPECT_EQ(Evaluate(XoTIME_T, kLiteral | kBelow, Time(6, -1, 30), kDay),
            (Evaluated{Of(21570, 86400), kBelow, {}, Time(6, -1, 30)}));
}

TEST(TimeBounds, LeaveBoundsThatThereAre) {
  ByteList const other = Time(1, 2, 3);
  EXPECT_EQ(WithPresent(XoTIME_T, kEqual, Time(6, -1, 30), {other, {}}),
            (Keys{other, FieldBytes({6, 0x7F, 0x7F})}));
}

Keys const kDayOf2020 = {DateTime(2020, 1, 1, 0, 0, 0), DateTime(2020, 1, 1, 23, 59, 59)};

TEST(DateTimeBounds, WidenAllFieldsFromTheFirstWildcardOn) {
  EXPECT_EQ(Evaluate(XoDATIME_T, kEqual, DateTime(2020, 1, 1, 12, 0, -1), kDayOf2020),
            (Evaluated{Of(256, 86400), kEqual | kPattern, DateTime(2020, 1, 1, 12, 0, -128),
                       DateTime(2020, 1, 1, 12, 0, 127)}));
  EXPECT_EQ(Evaluate(XoDATIME_T, kEqual, DateTime(2020, -1, 3, 4, 5, 6)),
            (Evaluated{0, kEqual | kPattern, DateTime(2020, -128, -128, -128, -128, -128),
                       DateTime(2020, 127, 127, 127, 127, 127)}));
  for (unsigned char const format : {kLittle, kBig}) {
    EXPECT_EQ(
        Evaluate(XoDATIME_T, kEqual, DateTime(-1, 2, 3, 4, 5, 6, format), {}, format),
        (Evaluated{0, kEqual | kPattern, DateTime(-32768, -128, -128, -128, -128, -128, format),
                   DateTime(32767, 127, 127, 127, 127, 127, format)}));
  }
}

TEST(DateTimeBounds, CountAWildcardYearAsTheBoundsDo) {
  // From year -32768 to year 32767 a range of all years that can be is met whole.
  Keys const all = {DateTime(-32768, -128, -128, -128, -128, -128),
                    DateTime(32767, 127, 127, 127, 127, 127)};
  EXPECT_EQ(Share(XoDATIME_T, kEqual, DateTime(-1, 1, 1, 0, 0, 0), all), 1.0F);
  EXPECT_EQ(Share(XoDATIME_T, kBelow, DateTime(-1, 1, 1, 0, 0, 0), all), 0.0F);
  EXPECT_EQ(Share(XoDATIME_T, kAbove, DateTime(-1, 1, 1, 0, 0, 0), all), 0.0F);
}

TEST(DateTimeBounds, CountMonthsOf31DaysAndYearsOf12) {
  Keys const years = {DateTime(2019, 1, 1, 0, 0, 0), DateTime(2021, 1, 1, 0, 0, 0)};
  double const total = 2.0 * 12 * 31 * 86400 + 1;
  EXPECT_EQ(Share(XoDATIME_T, kBelow, DateTime(2020, 3, 2, 1, 1, 1), years),
            Of((14.0 * 31 + 1) * 86400 + 3661, total));
}

TEST(DateTimeBounds, TakeWildcardsAsNumbersOfALiteralComparison) {
  for (auto const& value : {DateTime(-1, 2, 3, 4, 5, 6), DateTime(2020, -1, -1, -1, -1, -1)}) {
    EXPECT_EQ(Evaluate(XoDATIME_T, kLiteral | kEqual, value), (Evaluated{0, kEqual, value, value}));
    ByteList const longer = value + Nanos(-1);
    EXPECT_EQ(Evaluate(XoDATIME_N_T, kLiteral | kEqual, longer),
              (Evaluated{0, kEqual, longer, longer}));
  }
  // 12:00 less one minute and one second.
  EXPECT_EQ(Share(XoDATIME_T, kLiteral | kBelow, DateTime(2020, 1, 1, 12, -1, -1), kDayOf2020),
            Of(43200 - 61, 86400));
}

TEST(DateTimeBounds, WriteOverBoundsThatThereAre) {
  ByteList const other = DateTime(1999, 9, 9, 9, 9, 9), value = DateTime(2020, 1, 2, 3, 4, -1);
  ByteList const low = DateTime(2020, 1, 2, 3, 4, -128), high = DateTime(2020, 1, 2, 3, 4, 127);
  EXPECT_EQ(WithPresent(XoDATIME_T, kEqual, value, {other, other}), (Keys{low, high}));
  EXPECT_EQ(WithPresent(XoDATIME_T, kBelow, value, {other, {}}), (Keys{low, high}));
  EXPECT_EQ(WithPresent(XoDATIME_T, kAbove, value, {{}, other}), (Keys{low, high}));
  EXPECT_EQ(WithPresent(XoDATIME_T, kBelow, value, {}), (Keys{{}, high}));
  EXPECT_EQ(WithPresent(XoDATIME_N_T, kEqual, value + Nanos(5), {other + Nanos(1), {}}),
            (Keys{low + Nanos(0), high + Nanos(1000000000)}));
  EXPECT_EQ(WithPresent(XoTIMESPAN_T, kBelow, DateTime(1, 2, 3, 4, 5, 6) + Nanos(7),
                        {other + Nanos(1), {}}),
            (Keys{DateTime(1, 2, 3, 4, 5, 6) + Nanos(7), DateTime(1, 2, 3, 4, 5, 6) + Nanos(7)}));
}

TEST(DateTimeBounds, WriteNoFurtherThanTheLengthOfBoundsThatThereAre) {
  ByteList const value = DateTime(2020, 1, 2, 3, 4, 5) + Nanos(6);
  EXPECT_EQ(WithPresent(XoDATIME_N_T, kEqual, value, {ByteList(3, 0xA5), ByteList{}}),
            (Keys{ByteList(value.begin(), value.begin() + 3), ByteList{}}));
  ByteList const longer = value + ByteList{0xA5, 0xA5};
  EXPECT_EQ(WithPresent(XoDATIME_N_T, kEqual, value, {ByteList(13, 0xA5), {}}),
            (Keys{longer, value}));
}

TEST(NanoSecondBounds, AreASecondWideOfAWildcard) {
  ByteList const time = DateTime(2020, 1, 2, 3, 4, 5);
  for (char const id : {char{XoDATIME_N_T}, char{XoTIMESPAN_T}}) {
    EXPECT_EQ(Evaluate(id, kEqual, time + Nanos(-1)),
              (Evaluated{0, kEqual | kPattern, time + Nanos(0), time + Nanos(1000000000)}));
    ByteList const big = DateTime(2020, 1, 2, 3, 4, 5, kBig);
    EXPECT_EQ(
        Evaluate(id, kEqual, big + Nanos(-1, kBig), {}, kBig),
        (Evaluated{0, kEqual | kPattern, big + Nanos(0, kBig), big + Nanos(1000000000, kBig)}));
    EXPECT_EQ(Evaluate(id, kEqual, big + Nanos(77, kBig), {}, kBig),
              (Evaluated{0, kEqual, big + Nanos(77, kBig), big + Nanos(77, kBig)}));
    EXPECT_EQ(Evaluate(id, kEqual, DateTime(2020, 1, 2, 3, 4, -1) + Nanos(77)),
              (Evaluated{0, kEqual | kPattern, DateTime(2020, 1, 2, 3, 4, -128) + Nanos(0),
                         DateTime(2020, 1, 2, 3, 4, 127) + Nanos(1000000000)}));
  }
}

TEST(NanoSecondBounds, ClearTheFirstFlagsOfAWildcardAboveTheNanoSeconds) {
  auto const flagsAfter = [](char id, ByteList const& value) {
    PlacedBytes const operand(value, 1);
    XoIdxBounds bounds;
    bounds.lowFlags = 0xFFFF;
    bounds.highFlags = 0x0003;
    unsigned short op = kEqual;
    XoTypeMgr().EvalAndBound(id, nullptr, op, operand.Data(), kLittle, 1, &bounds, nullptr);
    ReleaseBounds(bounds);
    return std::pair<int, int>(bounds.lowFlags, bounds.highFlags);
  };
  std::pair<int, int> const kept(0xFFFF, 3), cleared(0xFFFE, 2);
  for (char const id : {char{XoDATIME_N_T}, char{XoTIMESPAN_T}}) {
    EXPECT_EQ(flagsAfter(id, DateTime(2020, 1, 2, 3, 4, -1) + Nanos(0)), cleared);
    EXPECT_EQ(flagsAfter(id, DateTime(2020, 1, 2, 3, 4, 5) + Nanos(-1)), kept);
    EXPECT_EQ(flagsAfter(id, DateTime(2020, 1, 2, 3, 4, 5) + Nanos(0)), kept);
  }
  EXPECT_EQ(flagsAfter(XoDATIME_T, DateTime(-1, 1, 2, 3, 4, 5)), kept);
  EXPECT_EQ(flagsAfter(XoDATE_T, Date(-1, 1, 2)), kept);
}

TEST(NanoSecondBounds, OfValuesInMemoryAreStoredOnes) {
  XoDateTimeN const value(2020, 1, 2, 3, 4, 5, 0x01020304);
  auto const bytes = std::bit_cast<std::array<unsigned char, sizeof value>>(value);
  ByteList const stored = DateTime(2020, 1, 2, 3, 4, 5) + Nanos(0x01020304);
  EXPECT_EQ(Evaluate(XoDATIME_N_T, kEqual, ByteList(bytes.begin(), bytes.end()), {}, kMemory),
            (Evaluated{0, kEqual, stored, stored}));
}

}  // namespace
}  // namespace xo::test
