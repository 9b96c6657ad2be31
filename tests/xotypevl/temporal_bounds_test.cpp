#include <gtest/gtest.h>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/evaluated.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kEqual = 1, kBelow = 2, kAbove = 4, kPattern = 8, kLiteral = 0x10;

ByteList FieldBytes(std::initializer_list<int> bytes) {
  ByteList list;
  for (int const byte : bytes) list.push_back(static_cast<unsigned char>(byte));
  return list;
}

ByteList Year(int year, unsigned char format) {
  return Unit(static_cast<unsigned>(year) & 0xFFFF, format);
}

ByteList Date(int year, int month, int day, unsigned char format = kLittle) {
  return Year(year, format) + FieldBytes({month, day});
}
ByteList Time(int hour, int minute, int second) { return FieldBytes({hour, minute, second}); }
ByteList DateTime(int year, int month, int day, int hour, int minute, int second,
                  unsigned char format = kLittle) {
  return Date(year, month, day, format) + Time(hour, minute, second);
}
ByteList Nanos(int nanoSeconds, unsigned char format = kLittle) {
  return Encode<int>({nanoSeconds}, format);
}

Keys const kYear2020 = {Date(2020, 1, 1), Date(2020, 12, 31)};

// Dates.

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

// Every temporal row.

struct RowOfValues {
  char id;
  ByteList low, value, high;
};

std::vector<RowOfValues> const kRows = {
    {XoDATE_T, Date(2020, 1, 1), Date(2020, 1, 11), Date(2020, 1, 20)},
    {XoTIME_T, Time(10, 0, 0), Time(10, 0, 10), Time(10, 0, 19)},
    {XoDATIME_T, DateTime(2020, 1, 1, 10, 0, 0), DateTime(2020, 1, 1, 10, 0, 10),
     DateTime(2020, 1, 1, 10, 0, 19)},
    {XoDATIME_N_T, DateTime(2020, 1, 1, 10, 0, 0) + Nanos(5),
     DateTime(2020, 1, 1, 10, 0, 10) + Nanos(7), DateTime(2020, 1, 1, 10, 0, 19) + Nanos(3)},
    {XoTIMESPAN_T, DateTime(0, 1, 1, 10, 0, 0) + Nanos(5), DateTime(0, 1, 1, 10, 0, 10) + Nanos(7),
     DateTime(0, 1, 1, 10, 0, 19) + Nanos(3)},
    {D_DATE_T, Date(2020, 1, 1), Date(2020, 1, 11), Date(2020, 1, 20)},
    {D_TIME_T, FieldBytes({2, 0, 10, 0, 0, 9}), FieldBytes({0, 5, 10, 0, 10, 8}),
     FieldBytes({-3, 0, 10, 0, 19, 7})},
    {D_TIMESTAMP_T, Date(2020, 1, 1) + FieldBytes({2, 0, 10, 0, 0, 9}),
     Date(2020, 1, 1) + FieldBytes({0, 5, 10, 0, 10, 8}),
     Date(2020, 1, 1) + FieldBytes({-3, 0, 10, 0, 19, 7})},
};

TEST(TemporalBounds, MeasureARangeByItsNumbers) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    Keys const range = {low, high};
    EXPECT_EQ(Share(id, kBelow, value, range), Of(10, 20));
    EXPECT_EQ(Share(id, kEqual, value, range), Of(1, 20));
    EXPECT_EQ(Share(id, kAbove, value, range), Of(9, 20));
    EXPECT_EQ(Share(id, kBelow | kEqual, value, range), Of(11, 20));
    EXPECT_EQ(Share(id, kAbove | kEqual, value, range), Of(10, 20));
    EXPECT_EQ(Share(id, kBelow | kAbove, value, range), Of(19, 20));
    EXPECT_EQ(Share(id, 7, value, range), 1.0F);
    EXPECT_EQ(Share(id, 0, value, range), 0.0F);
  }
}

TEST(TemporalBounds, AreBuiltWithoutARangeThatTellsBothEnds) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    for (unsigned short op = 0; op < 8; ++op) {
      MaybeBytes const lower = (op & kBelow) == 0 ? MaybeBytes(value) : std::nullopt;
      MaybeBytes const upper = (op & kAbove) == 0 ? MaybeBytes(value) : std::nullopt;
      Evaluated const expected = {0, op, lower, upper};
      EXPECT_EQ(Evaluate(id, op, value), expected);
      EXPECT_EQ(Evaluate(id, op, value, {low, {}}), expected);
      EXPECT_EQ(Evaluate(id, op, value, {{}, high}), expected);
      XoIdxBounds empty;
      unsigned short opOut = op;
      PlacedBytes const operand(value, 1);
      EXPECT_EQ(
          XoTypeMgr().EvalAndBound(id, &empty, opOut, operand.Data(), kLittle, 1, nullptr, nullptr),
          0.0F);
    }
  }
}

TEST(TemporalBounds, GiveNoShareOfARangeOfNoKeys) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    // The upper end is one below the lower.
    ByteList below = low;
    std::size_t const place = id == XoDATE_T || id == D_DATE_T ? 3
                              : id == XoTIME_T                 ? 2
                              : id == D_TIME_T                 ? 4
                              : id == D_TIMESTAMP_T            ? 8
                                                               : 6;
    ++below[place];
    for (unsigned short op = 0; op < 8; ++op) {
      EXPECT_EQ(Share(id, op, value, {below, low}), 0.0F) << op;
    }
  }
}

TEST(TemporalBounds, KeepOfTheOperatorWhatTheirTypeSays) {
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    unsigned short const expected =
        row.id == D_TIME_T                                                    ? 0xFFF9
        : row.id == XoDATE_T || row.id == D_DATE_T || row.id == D_TIMESTAMP_T ? 0x8009
                                                                              : 0x8001;
    EXPECT_EQ(Evaluate(row.id, 0xFFF9, row.value).op, expected);
  }
}

TEST(TemporalBounds, MayBeTheRangeItself) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    PlacedBytes const operand(value, 1);
    PlacedKey const lower(low), upper(high);
    XoIdxBounds range{lower.Data(), upper.Data(), lower.Length(), upper.Length()};
    unsigned short op = kBelow;
    EXPECT_EQ(XoTypeMgr().EvalAndBound(id, &range, op, operand.Data(), kLittle, 1, &range, nullptr),
              Of(10, 20));
  }
}

// Times and date-times.

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

// The ODMG classes.

Keys const kJanuary = {Date(2020, 1, 1), Date(2020, 1, 31)};

TEST(OdmgDateBounds, CountBeyondTheRange) {
  // 5 February lies 35 days behind 1 January, of 31.
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2020, 2, 5), kJanuary), Of(35, 31));
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2020, 2, 5), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kBelow | kAbove, Date(2020, 2, 5), kJanuary), Of(30, 31));
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2019, 12, 31), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kBelow | kEqual, Date(2019, 12, 31), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2019, 12, 31), kJanuary), Of(31, 31));
  EXPECT_EQ(Share(D_DATE_T, kEqual, Date(2025, 1, 1), kJanuary), Of(1, 31));
}

TEST(OdmgDateBounds, CountYearsWithTheirSign) {
  Keys const years = {Date(-2, 1, 1), Date(2, 1, 1)};
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(0, 1, 1), years), Of(2 * 372, 4 * 372 + 1));
}

TEST(OdmgDateBounds, WidenEachWildcardAlone) {
  EXPECT_EQ(Evaluate(D_DATE_T, kEqual, Date(2020, -1, 5)),
            (Evaluated{0, kEqual | kPattern, Date(2020, -128, 5), Date(2020, 127, 5)}));
  EXPECT_EQ(Evaluate(D_DATE_T, kEqual, Date(2020, 5, -1)),
            (Evaluated{0, kEqual | kPattern, Date(2020, 5, -128), Date(2020, 5, 127)}));
  for (unsigned char const format : {kLittle, kBig}) {
    EXPECT_EQ(
        Evaluate(D_DATE_T, kEqual, Date(-1, 5, 6, format), {}, format),
        (Evaluated{0, kEqual | kPattern, Date(-32768, 5, 6, format), Date(32767, 5, 6, format)}));
  }
  EXPECT_EQ(Evaluate(D_DATE_T, kLiteral | kEqual, Date(2020, -1, -1)),
            (Evaluated{0, kEqual | kPattern, Date(2020, -128, -128), Date(2020, 127, 127)}));
}

TEST(OdmgDateBounds, CountAWildcardAsMinusOne) {
  // Two months before January, and four days on: 58 before the first.
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2020, -1, 5), kJanuary), Of(31 + 57, 31));
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2020, -1, 5), kJanuary), 0.0F);
}

TEST(OdmgDateBounds, LeaveBoundsThatThereAre) {
  ByteList const other = Date(1999, 9, 9);
  EXPECT_EQ(WithPresent(D_DATE_T, kEqual, Date(2020, -1, 1), {{}, other}),
            (Keys{Date(2020, -128, 1), other}));
}

TEST(OdmgTimeBounds, HaveNoWildcards) {
  ByteList const value = FieldBytes({-1, -1, -1, -1, -1, -1});
  EXPECT_EQ(Evaluate(D_TIME_T, kEqual, value), (Evaluated{0, kEqual, value, value}));
}

TEST(OdmgTimestampBounds, WidenTheWildcardsOfTheDate) {
  ByteList const time = FieldBytes({0, 0, 12, 0, 0, 0});
  EXPECT_EQ(
      Evaluate(D_TIMESTAMP_T, kEqual, Date(2020, -1, 5) + time),
      (Evaluated{0, kEqual | kPattern, Date(2020, -128, 5) + time, Date(2020, 127, 5) + time}));
  ByteList const wild = FieldBytes({-1, -1, -1, -1, -1, -1});
  EXPECT_EQ(Evaluate(D_TIMESTAMP_T, kEqual, Date(2020, 5, 5) + wild),
            (Evaluated{0, kEqual, Date(2020, 5, 5) + wild, Date(2020, 5, 5) + wild}));
}

TEST(OdmgTimestampBounds, LeaveBoundsThatThereAre) {
  ByteList const time = FieldBytes({0, 0, 12, 0, 0, 0});
  ByteList const other = Date(1999, 9, 9) + time;
  EXPECT_EQ(WithPresent(D_TIMESTAMP_T, kEqual, Date(2020, -1, 1) + time, {{}, other}),
            (Keys{Date(2020, -128, 1) + time, other}));
}

TEST(OdmgTimestampBounds, CountDaysOfTheDateAndTheTimeAsStored) {
  ByteList const start = FieldBytes({0, 0, 0, 0, 0, 0}), noon = FieldBytes({5, 0, 12, 0, 0, 99});
  Keys const january = {Date(2020, 1, 1) + start, Date(2020, 2, 1) + start};
  EXPECT_EQ(Share(D_TIMESTAMP_T, kBelow, Date(2020, 1, 11) + noon, january),
            Of(10.5 * 86400, 31 * 86400 + 1));
  // The day that a wildcard stands for is one of 256.
  Keys const years = {Date(2019, 1, 1) + start, Date(2021, 1, 1) + start};
  EXPECT_EQ(Share(D_TIMESTAMP_T, kEqual, Date(2020, 1, -1) + start, years),
            Of(255 * 86400 + 1, 2 * 372 * 86400 + 1));
}

// Laws.

class TemporalLaws : public RandomTest {
 protected:
  unsigned char AnyOrder() { return OneIn(2) ? kLittle : kBig; }
  unsigned short AnyRelation() { return static_cast<unsigned short>(Below(8)); }
  int Around(int middle) { return middle - 2 + static_cast<int>(Below(5)); }
  int Field(int middle, unsigned oneIn) { return OneIn(oneIn) ? -1 : Around(middle); }
  int AnyNanos() { return static_cast<int>(Below(3)) * 500000000; }

  /// A few bytes around a middle, with a byte of -1 or of any kind in between.
  ByteList Fields(std::size_t count, unsigned oneIn) {
    ByteList bytes;
    while (bytes.size() < count) {
      bytes.push_back(OneIn(20) ? Byte() : static_cast<unsigned char>(Field(5, oneIn)));
    }
    return bytes;
  }

  /// A value of a row, each of whose fields is a wildcard in one of so many. `isDate`: as a key it
  /// is a date of the calendar.
  ByteList AnyValue(char id, unsigned oneIn, unsigned char format) {
    constexpr unsigned kNever = 1000000;
    // The bounds of a wildcard year are in the wrong order for dates that order by the year without
    // its sign.
    bool const isOdmg = id == D_DATE_T || id == D_TIMESTAMP_T;
    ByteList const year = Year(isOdmg ? Around(2020) : Field(2020, oneIn), format);
    switch (id) {
      case XoDATE_T: {
        bool const isPattern = oneIn != kNever && oneIn < 100;
        int const month = isPattern ? Field(5, oneIn) : 1 + static_cast<int>(Below(12));
        int const day = isPattern ? Field(5, oneIn) : 1 + static_cast<int>(Below(28));
        return year + FieldBytes({month, day});
      }
      case XoTIME_T:
        return Fields(3, oneIn);
      case XoDATIME_T:
        return year + Fields(5, oneIn);
      case XoDATIME_N_T:
      case XoTIMESPAN_T:
        return year + Fields(5, oneIn) + Nanos(OneIn(oneIn) ? -1 : AnyNanos(), format);
      case D_DATE_T:
        return year + Fields(2, oneIn);
      case D_TIME_T:
        return Fields(6, oneIn);
      default:
        return year + Fields(8, oneIn);
    }
  }
};

TEST_F(TemporalLaws, BoundsBracketEveryMatch) {
  constexpr unsigned kNever = 1000000;
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    for (int round = 0; round < 1000; ++round) {
      unsigned char const format = AnyOrder();
      // A date reads its wildcards also in a literal comparison, where they are numbers: -1 is less
      // than the first month.
      bool const isLiteral = row.id != XoDATE_T && OneIn(4);
      auto const op = static_cast<unsigned short>(AnyRelation() | (isLiteral ? kLiteral : 0));
      ByteList const value = AnyValue(row.id, 4, format);
      Evaluated const result = Evaluate(row.id, op, value, {}, format);
      for (int key = 0; key < 30; ++key) {
        ByteList const stored =
            OneIn(8) && row.id != XoDATE_T ? value : AnyValue(row.id, kNever, format);
        // Bounds of nanoseconds hold those of a second.
        if (stored.size() == 11 && stored == value) continue;
        if (!Selects(row.id, op, stored, value, format)) continue;
        ASSERT_TRUE(Meets(row.id, result, stored, format))
            << result << " op " << op << Keys{stored, value};
      }
    }
  }
}

TEST_F(TemporalLaws, SharesOfDatesAreThoseOfTheirDaysCounted) {
  for (int round = 0; round < 200; ++round) {
    int const low = 2450000 + static_cast<int>(Below(1000));
    int const high = low + static_cast<int>(Below(400));
    int const value = low - 20 + static_cast<int>(Below(440));
    unsigned short const op = AnyRelation();
    int count = 0;
    for (int day = low; day <= high; ++day) {
      unsigned const relation = day < value ? 2 : day > value ? 4 : 1;
      count += (op & relation) != 0 ? 1 : 0;
    }
    auto const stored = [](int day) {
      XoDate const date(day);
      return Date(date.year, date.month, date.day);
    };
    // A value one day outside counts the step to it.
    ASSERT_EQ(Share(XoDATE_T, op, stored(value), {stored(low), stored(high)}),
              Of(count, high - low + 1))
        << low << ' ' << value << ' ' << high << ' ' << op;
  }
}

TEST_F(TemporalLaws, AnyBytesGiveANumber) {
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    for (int round = 0; round < 2000; ++round) {
      std::size_t const size = row.value.size();
      auto const format = static_cast<unsigned char>(OneIn(2) ? AnyOrder() : Byte());
      // In memory form there is padding besides.
      std::size_t const room = size + 1;
      Evaluated const result =
          Evaluate(row.id, static_cast<unsigned short>(Bits()), RandomTest::Bytes(room),
                   {RandomTest::Bytes(room), RandomTest::Bytes(room)}, format);
      ASSERT_FALSE(std::isnan(result.share));
      ASSERT_FALSE(std::isinf(result.share));
    }
  }
}

}  // namespace
}  // namespace xo::test
