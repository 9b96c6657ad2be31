#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

static_assert(sizeof(XoDateTimeN) == 12 && sizeof(XoTimeSpan) == 12);
static_assert(std::is_trivially_copyable_v<XoDateTimeN> &&
              std::is_trivially_copyable_v<XoTimeSpan>);
static_assert(std::is_standard_layout_v<XoDateTimeN> && std::is_standard_layout_v<XoTimeSpan>);

using N = XoDateTimeN;
using Span = XoTimeSpan;

N At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int nano = 0) {
  return {XoDateTime(XoDate(year, month, day), XoTime(hour, minute, second)), nano};
}

TEST(NanoConstruction, FillsTheRestWithZero) {
  EXPECT_EQ(N(), N::NullValue());
  EXPECT_EQ(N(XoDate(2021, 4, 15)), At(2021, 4, 15));
  EXPECT_EQ(N(XoTime(1, 2, 3)), At(0, 0, 0, 1, 2, 3));
  EXPECT_EQ(N(XoDate(2021, 4, 15), XoTime(1, 2, 3)), At(2021, 4, 15, 1, 2, 3));
  EXPECT_EQ(N(XoDate(2021, 4, 15), 3661), At(2021, 4, 15, 1, 1, 1));
  EXPECT_EQ(N(2021, 4, 15, 1, 2, 3, 4), At(2021, 4, 15, 1, 2, 3, 4));
  EXPECT_EQ(N(86400.5), At(0, 1, 2, 0, 0, 0, 500000000));
  N value(2021, 4, 15, 1, 2, 3, 4);
  value = XoDateTime(XoDate(1, 2, 3), XoTime(4, 5, 6));
  EXPECT_EQ(value, At(1, 2, 3, 4, 5, 6));
}

TEST(NanoValues, StandForNullDefaultZeroAndClear) {
  N value(2021, 4, 15, 1, 2, 3, 4);
  EXPECT_EQ(value.IsNullValue() | value.IsDefaultValue() | value.IsZeroValue(), 0);
  EXPECT_EQ(value.SetNullValue(), 0);
  EXPECT_EQ(value, N(-32768, -128, -128, -128, -128, -128, 0));
  EXPECT_EQ(value.IsNullValue(), 1);
  value.nanoSeconds = 1;
  EXPECT_EQ(value.IsNullValue(), 0);
  EXPECT_EQ(value.SetDefaultValue(), 0);
  EXPECT_EQ(value, At(-4713, 11, 24));
  EXPECT_EQ(value.IsDefaultValue(), 1);
  value.hour = 1;
  EXPECT_EQ(value.IsDefaultValue(), 0);
  EXPECT_EQ(value.SetZeroValue(), 0);
  EXPECT_EQ(value, At(0, 1, 1));
  EXPECT_EQ(value.IsZeroValue(), 1);
  value.nanoSeconds = -1;
  EXPECT_EQ(value.IsZeroValue(), 0);
  value.SetZero();
  EXPECT_EQ(value, N::ZeroValue());
  EXPECT_EQ(N::ClearValue(), At(0, 0, 0));
}

TEST(SpanValues, StandForNullDefaultZeroAndClear) {
  EXPECT_EQ(Span(), Span::NullValue());
  Span value(1, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(value.SetNullValue(), 0);
  EXPECT_EQ(value, Span(-32768, -128, -128, -128, -128, -128, 0));
  EXPECT_EQ(value.SetDefaultValue(), 0);
  EXPECT_EQ(value, Span(-4713, 11, 24, 0, 0, 0, 0));
  EXPECT_EQ(value.IsDefaultValue(), 1);
  EXPECT_EQ(value.SetZeroValue(), 0);
  EXPECT_EQ(value, Span(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(value, Span::ClearValue());
  value.day = 1;
  value.SetZero();
  EXPECT_EQ(value.IsZeroValue(), 1);
}

TEST(NanoCompare, NanosecondsComeLastAndGiveASign) {
  N const value(2021, 4, 15, 1, 2, 3, 400);
  EXPECT_EQ(value.Compare(N(2021, 4, 20, 1, 2, 3, 0), 0xFFFF), -5);
  EXPECT_EQ(value.Compare(N(2021, 4, 15, 1, 2, 3, 401), 0xFFFF), -1);
  EXPECT_EQ(value.Compare(N(2021, 4, 15, 1, 2, 3, -7), 0xFFFF), 1);
  EXPECT_EQ(value.Compare(value, 0xFFFF), 0);
  EXPECT_EQ(value.Compare(N(2021, -1, 15, 1, 2, 3, -1), 0), 0);
  EXPECT_EQ(value.Compare(N(2021, 4, 15, 1, 2, 3, -1), 0xFFEF), 0);
  EXPECT_EQ(value.Compare(N(2021, 4, 15, 1, 2, 3, -1), 0x10), 1);
  EXPECT_EQ(N(2021, 4, 15, 1, 2, 3, -1).Compare(value, 0), 0);
  EXPECT_EQ(N(2021, 4, 15, 1, 2, 3, -1).Compare(value, 0x10), -1);
  EXPECT_FALSE(value == N(2021, -1, 15, 1, 2, 3, 400));
  EXPECT_EQ(N(0, -1, 1, 0, 0, 0, 0).IsZeroValue(), 0);
  EXPECT_TRUE(value == N(2021, 4, 15, 1, 2, 3, 400));
  EXPECT_FALSE(value == N(2021, 4, 15, 1, 2, 3, 401));
  EXPECT_EQ(value != N(2021, 4, 15, 1, 2, 3, 401), -1);
  EXPECT_EQ(N(2021, 4, 15, 1, 2, 3, INT_MIN).Compare(N(2021, 4, 15, 1, 2, 3, INT_MAX), 0x10), -1);
}

TEST(NanoClock, ReadsTheHighResolutionClocks) {
  StoppedClock const clock(-90);
  N value;
  EXPECT_EQ(&value.Now(), &value);
  EXPECT_EQ(value, N(2021, 4, 15, 13, 5, 9, 250000000));
  EXPECT_EQ(&value.NowUTC(), &value);
  EXPECT_EQ(value, N(2021, 4, 16, 1, 6, 10, 1));
  EXPECT_EQ(value.ToLocalTime(), 0);
  EXPECT_EQ(value, N(2021, 4, 15, 23, 36, 10, 1));
  EXPECT_EQ(value.ToUTCTime(), 0);
  EXPECT_EQ(value, N(2021, 4, 16, 1, 6, 10, 1));
}

TEST(NanoClock, ReadsAllFieldsAtOnce) {
  MidnightClock const clock;
  N value;
  value.Now();
  EXPECT_EQ(value, N(2021, 4, 15, 23, 59, 59, 0));
  value.NowUTC();
  EXPECT_EQ(value, N(2021, 5, 16, 0, 0, 0, 1));
  EXPECT_EQ(MidnightClock::Looks(), 2);
}

TEST(NanoClock, WithoutAZoneNothingChanges) {
  StoppedClock const clock(kTimeZoneUnknown);
  N value(2021, 4, 16, 1, 6, 10, 1);
  EXPECT_EQ(value.ToLocalTime(), -2171);
  EXPECT_EQ(value.ToUTCTime(), -2171);
  EXPECT_EQ(value, N(2021, 4, 16, 1, 6, 10, 1));
}

TEST(NanoValidity, IsThatOfDateAndTime) {
  EXPECT_EQ(N(2020, 2, 29, 23, 59, 59, INT_MIN).IsValidDateTime(), 1);
  EXPECT_EQ(N(2021, 2, 29, 23, 59, 59, 0).IsValidDateTime(), 0);
  EXPECT_EQ(N(2020, 2, 29, 23, 60, 59, 0).IsValidDateTime(), 0);
}

TEST(SpanConstruction, StoresFieldsWithNoCarryButForDays) {
  EXPECT_EQ(Span(1, 25, 61, 62, 5), Span(0, 0, 1, 25, 61, 62, 5));
  EXPECT_EQ(Span(361, 0, 0, 0, 0), Span(1, 0, 1, 0, 0, 0, 0));
  EXPECT_EQ(Span(-5, 0, 0, 0, 0), Span(0, 0, -5, 0, 0, 0, 0));
  Span const cut(65537, 257, 256 + 3, 300, 0, 0, 7);
  EXPECT_EQ(cut, Span(1, 1, 3, 44, 0, 0, 7));
  EXPECT_EQ(Span(90061.25), Span(0, 0, 1, 1, 1, 1, 250000000));
}

TEST(SpanSetters, CutToTheFieldsWidth) {
  Span span(0, 0, 0, 0, 0, 0, 0);
  span.SetYears(65536 + 5);
  span.SetMonths(256 + 6);
  span.SetDays(-1);
  span.SetHours(128);
  span.SetMinutes(70);
  span.SetSeconds(80);
  span.SetNanoSeconds(INT_MIN);
  EXPECT_EQ(span, Span(5, 6, -1, -128, 70, 80, INT_MIN));
}

template <class Value, class... Arguments>
Value With(Value value, void (Value::*operation)(Arguments...), Arguments... arguments) {
  (value.*operation)(arguments...);
  return value;
}

template <class Value>
Value PlusDays(Value value, int days) {
  value.AddDays(days);
  return value;
}
template <class Value, class Count>
Value PlusSeconds(Value value, Count seconds) {
  value.AddSeconds(seconds);
  return value;
}
template <class Value, class Count>
Value PlusNanos(Value value, Count nanos) {
  value.AddNanoSeconds(nanos);
  return value;
}

TEST(Carry, DaysOfAPointInTimeGoByTheCalendar) {
  EXPECT_EQ(PlusDays(At(2021, 1, 31), 1), At(2021, 2, 1));
  EXPECT_EQ(PlusDays(At(2021, 3, 1, 5, 6, 7, 8), -1), At(2021, 2, 28, 5, 6, 7, 8));
  EXPECT_EQ(PlusDays(At(2021, 3, 1), 0), At(2021, 3, 1));
  // The date alone decides, not the time.
  EXPECT_EQ(PlusDays(At(2021, 1, 31, 99, 99, 99), 1), At(2021, 2, 1, 99, 99, 99));
}

TEST(Carry, DaysOfASpanGoByMonthsOfThirtyDays) {
  EXPECT_EQ(PlusDays(Span(0, 0, 29, 0, 0, 0, 0), 1), Span(0, 1, 0, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(Span(0, 11, 29, 0, 0, 0, 0), 1), Span(1, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(Span(1, 0, 0, 0, 0, 0, 0), -1), Span(0, 11, 29, 0, 0, 0, 0));
}

TEST(Carry, TheHighestFieldOfASpanCarriesTheSign) {
  Span const zero(0, 0, 0, 0, 0, 0, 0);
  EXPECT_EQ(PlusDays(zero, -5), Span(0, 0, -5, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(zero, -35), Span(0, -2, 25, 0, 0, 0, 0));
  // Out of a month that is there the day borrows.
  EXPECT_EQ(PlusDays(Span(0, 1, 0, 0, 0, 0, 0), -5), Span(0, 0, 25, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(Span(0, -2, 25, 0, 0, 0, 0), -26), Span(0, -3, 29, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(zero, -30), Span(0, -1, 0, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(zero, -360), Span(-1, 0, 0, 0, 0, 0, 0));
  // 13 months back and the borrow from the day: the month borrows because it has a carry.
  EXPECT_EQ(PlusDays(zero, -395), Span(-2, 10, 25, 0, 0, 0, 0));
}

TEST(Carry, APointInTimeWithoutAValidDateGoesByTheFixedCalendar) {
  EXPECT_EQ(PlusDays(At(2021, 0, 29), 1), At(2021, 1, 0));
  EXPECT_EQ(PlusDays(At(0, 0, 0), 29), At(0, 0, 29));
  EXPECT_EQ(PlusDays(At(2021, 2, 29), 1), At(2021, 3, 0));
}

TEST(Carry, SecondsAndNanosecondsBorrowThroughEveryField) {
  EXPECT_EQ(PlusSeconds(At(2021, 4, 15), 0.5), At(2021, 4, 15, 0, 0, 0, 500000000));
  EXPECT_EQ(PlusNanos(At(2021, 4, 15, 0, 0, 1), -1), At(2021, 4, 15, 0, 0, 0, 999999999));
  EXPECT_EQ(PlusNanos(At(2021, 1, 1), -1), At(2020, 12, 31, 23, 59, 59, 999999999));
  EXPECT_EQ(PlusNanos(At(2020, 12, 31, 23, 59, 59, 999999999), 1), At(2021, 1, 1));
  EXPECT_EQ(PlusSeconds(At(2021, 4, 15), 0.0), At(2021, 4, 15));
  EXPECT_EQ(PlusSeconds(At(2021, 4, 15), -0.25), At(2021, 4, 14, 23, 59, 59, 750000000));
  EXPECT_EQ(PlusSeconds(Span(0, 0, 0, 0, 0, 0, 0), -1), Span(0, 0, -1, 23, 59, 59, 0));
  N hours = At(2021, 4, 15, 23);
  hours.AddHours(25);
  EXPECT_EQ(hours, At(2021, 4, 17));
  N minutes = At(2021, 4, 15);
  minutes.AddMinutes(-1);
  EXPECT_EQ(minutes, At(2021, 4, 14, 23, 59));
}

TEST(Carry, AddingNothingLeavesFieldsOutOfRange) {
  N const odd(2021, 2, 31, 99, 99, 99, -5);
  EXPECT_EQ(PlusNanos(odd, 0), odd);
  EXPECT_EQ(PlusSeconds(odd, 0), odd);
  EXPECT_EQ(PlusSeconds(odd, 0.0), odd);
  EXPECT_EQ(PlusSeconds(odd, 1e-10), odd);
  N same = odd;
  same.AddMinutes(0);
  same.AddHours(0);
  same.AddDays(0);
  EXPECT_EQ(same, odd);
}

TEST(Carry, StopsAtTheFirstLevelThatCarriesNothing) {
  // Second 99 is only looked at when nanoseconds carry.
  EXPECT_EQ(PlusNanos(N(2021, 2, 3, 99, 99, 99, 5), 1), N(2021, 2, 3, 99, 99, 99, 6));
  EXPECT_EQ(PlusNanos(N(2021, 2, 3, 99, 99, 99, 999999999), 1), N(2021, 2, 7, 4, 40, 40, 0));
}

TEST(Carry, TheYearStopsAtItsLimits) {
  EXPECT_EQ(PlusDays(Span(32767, 11, 29, 0, 0, 0, 0), 1), Span(32767, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(Span(-32768, 0, 0, 0, 0, 0, 0), -1), Span(-32768, 11, 29, 0, 0, 0, 0));
  EXPECT_EQ(PlusDays(Span(30000, 0, 0, 0, 0, 0, 0), INT_MAX).year, 32767);
  EXPECT_EQ(PlusDays(Span(-30000, 0, 0, 0, 0, 0, 0), INT_MIN).year, -32768);
}

TEST(Carry, ACarryBeyondThirtyTwoBitsKeepsItsLowBits) {
  // 2^32 minutes are none; one second is left.
  EXPECT_EQ(PlusSeconds(Span(0, 0, 0, 0, 0, 0, 0), 60LL * 4294967296LL + 1),
            Span(0, 0, 0, 0, 0, 1, 0));
  EXPECT_EQ(PlusSeconds(Span(0, 0, 0, 0, 0, 0, 0), 60LL * (4294967296LL + 3)),
            Span(0, 0, 0, 0, 3, 0, 0));
}

/// The levels from the nanosecond to the hour, in wide arithmetic; the days carried.
struct Levels {
  long long nano, second, minute, hour, days;
};

long long Split(long long& field, long long base) {
  long long carry = field / base;
  field %= base;
  if (field < 0) {
    field += base;
    --carry;
  }
  return carry;
}

class NanoRandom : public RandomTest {};

TEST_F(NanoRandom, AddingNanosecondsIsArithmeticOnTheTotal) {
  for (int round = 0; round < 100000; ++round) {
    N value(XoDateTime(XoDate(static_cast<int>(Below(3000000)) + 1000000),
                       XoTime(static_cast<int>(Below(86400)))),
            static_cast<int>(Below(1000000000)));
    auto const nanos = static_cast<long long>(Bits());
    // Only what stays within the range in which days convert exactly.
    Levels levels{value.nanoSeconds + nanos / 2, value.second, value.minute, value.hour, 0};
    N const moved = PlusNanos(value, nanos / 2);
    levels.second += Split(levels.nano, 1000000000);
    levels.minute += Split(levels.second, 60);
    levels.hour += Split(levels.minute, 60);
    levels.days = Split(levels.hour, 24);
    XoDate const date = value.Date() + static_cast<int>(levels.days);
    ASSERT_EQ(moved, N(XoDateTime(date, XoTime(static_cast<int>(levels.hour),
                                               static_cast<int>(levels.minute),
                                               static_cast<int>(levels.second))),
                       static_cast<int>(levels.nano)));
    ASSERT_EQ(PlusNanos(moved, -(nanos / 2)), value);
  }
}

TEST_F(NanoRandom, SpansKeepTheirTotal) {
  for (int round = 0; round < 100000; ++round) {
    int const days = static_cast<int>(Below(20000000)) - 10000000;
    Span span;
    span.SetTotalDays(days);
    ASSERT_EQ(span.GetTotalDays(), days);
    ASSERT_LT(std::abs(span.month), 12);
    ASSERT_LT(std::abs(span.day), 30);
    long long const seconds = static_cast<long long>(Bits() % 800000000000) - 400000000000;
    // Minutes are carried in 32 bits.
    if (seconds / 60 > INT_MAX || seconds / 60 < INT_MIN) continue;
    span.SetTotalSeconds(seconds);
    ASSERT_EQ(span.GetTotalSeconds(), seconds);
    N point;
    if (seconds < 0) continue;
    point.SetTotalSeconds(seconds);
    ASSERT_EQ(point.GetTotalSeconds(), seconds);
    auto const nanos = static_cast<long long>(Bits() >> 1);
    point.SetTotalNanoSeconds(nanos);
    ASSERT_EQ(point.GetTotalNanoSeconds(), nanos);
    span.SetTotalNanoSeconds(nanos);
    ASSERT_EQ(span.GetTotalNanoSeconds(), nanos);
  }
}

TEST_F(NanoRandom, EveryAdditionToAnyFieldsIsDefined) {
  for (int round = 0; round < 100000; ++round) {
    Span span(static_cast<int>(Bits()), Byte(), Byte(), Byte(), Byte(), Byte(),
              static_cast<int>(Bits()));
    N point(span.DateTime(), span.nanoSeconds);
    constexpr long long kCounts[] = {INT_MIN, INT_MAX, LLONG_MIN, LLONG_MAX, -1, 1};
    long long const count = round % 2 == 0 ? kCounts[Below(6)] : static_cast<long long>(Bits());
    auto const small = static_cast<int>(count);
    auto const all = [&](auto& value) {
      value.AddDays(small);
      value.AddHours(small);
      value.AddMinutes(small);
      value.AddSeconds(small);
      value.AddSeconds(count);
      value.AddNanoSeconds(small);
      value.AddNanoSeconds(count);
      value.AddSeconds(static_cast<double>(count) * 1e10);
      value.AddSeconds(std::numeric_limits<double>::quiet_NaN());
      (void)value.GetTotalDays();
      (void)value.GetTotalSeconds();
      (void)value.GetTotalNanoSeconds();
      ASSERT_TRUE(value.nanoSeconds >= 0 && value.nanoSeconds < 1000000000);
      ASSERT_TRUE(value.second >= 0 && value.second < 60);
    };
    all(span);
    all(point);
    (void)Span::Difference(span, Span(point.year, point.month, point.day, point.hour, point.minute,
                                      point.second, small));
  }
}

TEST(Totals, CountFromTheZeroValue) {
  Span span(1, 2, 3, 0, 0, 0, 0);
  EXPECT_EQ(span.GetTotalDays(), 423);
  span.SetTotalDays(423);
  EXPECT_EQ(span, Span(1, 2, 3, 0, 0, 0, 0));
  EXPECT_EQ(At(0, 1, 1).GetTotalDays(), 0);
  EXPECT_EQ(At(2000, 1, 1).GetTotalDays(), 730485);
  EXPECT_EQ(At(0, 1, 2, 1, 1, 1, 7).GetTotalSeconds(), 90061);
  EXPECT_EQ(At(0, 1, 2, 1, 1, 1, 7).GetTotalNanoSeconds(), 90061000000007);
  EXPECT_EQ(At(0, 1, 2, 1, 1, 1, 500000000).GetTotalSeconds_f(), 90061.5);
  EXPECT_EQ(Span(0, 0, 1, 1, 1, 1, 250000000).GetTotalSeconds_f(), 90061.25);
  N value(2021, 4, 15, 1, 2, 3, 4);
  value.SetTotalDays(1);
  EXPECT_EQ(value, At(0, 1, 2));
  value.SetTotalSeconds(1.5);
  EXPECT_EQ(value, At(0, 1, 1, 0, 0, 1, 500000000));
}

TEST(Totals, NanosecondsWrap) {
  // 2000-01-01 is 63113904000 seconds on: 63113904000000000000 mod 2^64, as a signed number.
  EXPECT_EQ(At(2000, 1, 1).GetTotalNanoSeconds(),
            static_cast<long long>(63113904000ULL * 1000000000ULL));
}

TEST(TotalsOfDoubles, BeyondTheirNanosecondsTakeTheLowestNumber) {
  Span lowest(0, 0, 0, 0, 0, 0, 0);
  lowest.AddNanoSeconds(LLONG_MIN);
  for (double seconds : {1e10, -1e10, std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(Span(seconds), lowest);
  }
}

TEST(Difference, IsAbsolute) {
  Span const later(2021, 3, 2, 0, 0, 0, 0), earlier(2021, 3, 1, 23, 0, 0, 0);
  EXPECT_EQ(Span::Difference(later, earlier), Span(0, 0, 0, 1, 0, 0, 0));
  EXPECT_EQ(Span::Difference(earlier, later), Span(0, 0, 0, 1, 0, 0, 0));
  EXPECT_EQ(Span::Difference(later, later), Span(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(Span::Difference(Span(2022, 3, 2, 4, 5, 6, 7), Span(2021, 3, 1, 3, 4, 5, 8)),
            Span(1, 0, 6, 1, 1, 0, 999999999));
}

TEST(Difference, TakesNullForZero) {
  Span const null;
  EXPECT_EQ(Span::Difference(null, null), Span(0, 0, 0, 0, 0, 0, 0));
  // Fields of zero have the day number of -0001-11-30.
  EXPECT_EQ(Span::Difference(null, Span(0, 1, 1, 0, 0, 0, 0)), Span(0, 1, 2, 0, 0, 0, 0));
}

TEST(Difference, TakesNullFieldsWithNanosecondsAsTheyAre) {
  Span odd;
  odd.nanoSeconds = 5;
  EXPECT_EQ(Span::Difference(odd, Span(0, 0, 0, 0, 0, 0, 0)).nanoSeconds, 999999995);
}

TEST(Difference, WithoutADayBetweenTheTimeGoesAroundTheDay) {
  // Both dates have one day number, so that there is no day to take the hours from.
  EXPECT_EQ(Span::Difference(Span(2021, 3, 3, 1, 0, 0, 0), Span(2021, 2, 31, 5, 0, 0, 0)),
            Span(0, 0, 0, 20, 0, 0, 0));
}

TEST(Difference, BorrowedSecondGoesAroundTheDayAndTheDateStays) {
  Span const small(2021, 3, 1, 23, 59, 59, 500), big(2021, 3, 2, 0, 0, 1, 100);
  // 1.9999996 seconds apart, but small's time has become midnight of its own day.
  EXPECT_EQ(Span::Difference(big, small), Span(0, 0, 1, 0, 0, 1, 999999600));
}

TEST_F(NanoRandom, DifferenceIsSymmetricAndCountsRealDays) {
  for (int round = 0; round < 100000; ++round) {
    int const dayA = static_cast<int>(Below(2000000)) + 1000000,
              dayB = dayA + static_cast<int>(Below(900));
    XoDate const dateA(dayA), dateB(dayB);
    int const timeA = static_cast<int>(Below(86400)), timeB = static_cast<int>(Below(86400));
    int const nanoA = static_cast<int>(Below(1000000000)),
              nanoB = static_cast<int>(Below(1000000000));
    auto const span = [](XoDate const& date, int time, int nano) {
      XoTime const t(time);
      return Span(date.year, date.month, date.day, t.hour, t.minute, t.second, nano);
    };
    Span const a = span(dateA, timeA, nanoA), b = span(dateB, timeB, nanoB);
    Span const difference = Span::Difference(a, b);
    ASSERT_EQ(difference, Span::Difference(b, a));
    long long const nanos =
        std::llabs(((dayB - dayA) * 86400LL + timeB - timeA) * 1000000000LL + (nanoB - nanoA));
    bool const isAEarlier = a.Compare(b, 0xFFFF) < 0;
    bool const borrows = isAEarlier ? nanoB < nanoA : nanoA < nanoB;
    if (borrows && (isAEarlier ? timeA : timeB) == 86399) continue;
    ASSERT_EQ(difference.GetTotalNanoSeconds(), nanos);
  }
}

}  // namespace
}  // namespace xo::test
