#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

static_assert(sizeof(XoDateTime) == 8);
static_assert(std::is_trivially_copyable_v<XoDateTime>);

XoDateTime At(int year, int month, int day, int hour, int minute, int second) {
  return {XoDate(year, month, day), XoTime(hour, minute, second)};
}

XoDateTime Moved(XoDateTime value, int seconds) {
  value.AddSeconds(seconds);
  return value;
}

TEST(DateTimeAddSeconds, CarriesIntoTheDate) {
  EXPECT_EQ(Moved(At(2021, 12, 31, 23, 59, 59), 1), At(2022, 1, 1, 0, 0, 0));
  EXPECT_EQ(Moved(At(2021, 3, 1, 0, 0, 0), -1), At(2021, 2, 28, 23, 59, 59));
  EXPECT_EQ(Moved(At(2021, 3, 1, 1, 2, 3), 86400), At(2021, 3, 2, 1, 2, 3));
  EXPECT_EQ(Moved(At(2021, 3, 1, 1, 2, 3), -86400), At(2021, 2, 28, 1, 2, 3));
  EXPECT_EQ(Moved(At(2021, 3, 1, 1, 2, 3), 0), At(2021, 3, 1, 1, 2, 3));
}

TEST(DateTimeAddSeconds, RunsTheDateThroughItsDayNumberEvenForNothing) {
  EXPECT_EQ(Moved(At(2021, 2, 30, 1, 2, 3), 0), At(2021, 3, 2, 1, 2, 3));
}

class DateTimeRandom : public RandomTest {
 protected:
  XoDateTime Valid() {
    return {XoDate(static_cast<int>(Below(5373485 + 32044)) - 32044),
            XoTime(static_cast<int>(Below(86400)))};
  }
};

TEST_F(DateTimeRandom, AddSecondsIsArithmeticOnTheTotal) {
  for (int round = 0; round < 200000; ++round) {
    XoDateTime const value = Valid();
    int const seconds = round % 8 == 0   ? INT_MIN
                        : round % 8 == 1 ? INT_MAX
                                         : static_cast<int>(Bits());
    long long const total = value.date.dayabs() * 86400LL + static_cast<int>(value.time) + seconds;
    long long const days = total >= 0 ? total / 86400 : -((86399 - total) / 86400);
    if (days < -32044) continue;
    XoDateTime moved = Moved(value, seconds);
    // Back to the first hour of a day it says hour 24 where the hours come to an exact -24.
    if (moved.time.hour == 24 && seconds < 0) moved.time.hour = 0;
    ASSERT_EQ(moved, XoDateTime(XoDate(static_cast<int>(days)),
                                XoTime(static_cast<int>(total - days * 86400))));
  }
}

TEST(DateTimeAddSeconds, BackIntoTheFirstHourCanEndAtHourTwentyFour) {
  EXPECT_EQ(Moved(At(2021, 3, 1, 0, 0, 25), -86399), At(2021, 2, 28, 24, 0, 26));
}

TEST_F(DateTimeRandom, AddSecondsOnAnyFieldsStaysDefined) {
  for (int round = 0; round < 200000; ++round) {
    XoDateTime value(XoDate(static_cast<o_2b>(Bits()), Byte(), Byte()),
                     XoTime(Byte(), Byte(), Byte()));
    int const seconds = round % 4 == 0   ? INT_MIN
                        : round % 4 == 1 ? INT_MAX
                                         : static_cast<int>(Bits());
    XoTime time = value.time;
    int const rest = seconds % 86400;
    time += rest;
    int days = seconds / 86400;
    if (rest < 0 && time > value.time) --days;
    if (rest >= 0 && time < value.time) ++days;
    ASSERT_EQ(Moved(value, seconds), XoDateTime(value.date + days, time));
  }
}

TEST(DateTimeValues, AreMadeOfThoseOfTheParts) {
  XoDateTime value = At(1, 1, 1, 1, 1, 1);
  EXPECT_EQ(value.SetNullValue(), 0);
  EXPECT_EQ(value, At(-32768, -128, -128, -128, -128, -128));
  EXPECT_EQ(value.IsNullValue(), 1);
  EXPECT_EQ(value.SetDefaultValue(), 0);
  EXPECT_EQ(value, At(-4713, 11, 24, 0, 0, 0));
  EXPECT_EQ(value.SetZeroValue(), 0);
  EXPECT_EQ(value, At(0, 1, 1, 0, 0, 0));
  EXPECT_EQ(value.IsZeroValue(), 1);
  EXPECT_EQ(At(0, 1, 1, 0, 0, 1).IsZeroValue(), 0);
  EXPECT_EQ(XoDateTime::ClearValue(), At(0, 0, 0, 0, 0, 0));
}

TEST(DateTimeValues, DefaultLooksAtTheDateAlone) {
  EXPECT_EQ(At(-4713, 11, 24, 17, 5, 6).IsDefaultValue(), 1);
  EXPECT_EQ(At(-4713, 11, 25, 0, 0, 0).IsDefaultValue(), 0);
  EXPECT_EQ(XoDateTime(XoDate::NullValue(), XoTime(0, 0, 0)).IsNullValue(), 0);
}

TEST(DateTimeValues, NullIsTheClearValueAndNotNull) {
  EXPECT_EQ(XoDateTime::Null(), XoDateTime::ClearValue());
  EXPECT_EQ(XoDateTime::Null().IsNullValue(), 0);
}

TEST(DateTimeCompare, GivesTheFirstDifferenceOfAllFields) {
  XoDateTime const value = At(2021, 3, 1, 12, 30, 15);
  EXPECT_EQ(value.Compare(At(2021, 3, 1, 12, 30, 15)), 0);
  EXPECT_EQ(value.Compare(At(2021, 3, 3, 1, 1, 1)), -2);
  EXPECT_EQ(value.Compare(At(2021, 3, 1, 12, 35, 1)), -5);
  EXPECT_EQ(value != At(2021, 3, 1, 12, 30, 14), 1);
  EXPECT_FALSE(value == At(2021, 3, 1, 12, 30, 14));
  EXPECT_EQ(value.Compare(At(2021, -1, 1, 12, -1, 15), 0), 0);
  EXPECT_EQ(value.Compare(At(2021, -1, 1, 12, -1, 15)), 4);
  EXPECT_EQ(At(-1, -1, -1, -1, -1, 15).Compare(value, 0xFFEF), 0);
}

TEST(DateTimeValidity, NeedsBothParts) {
  EXPECT_EQ(At(2020, 2, 29, 23, 59, 59).IsDateTime(), 1);
  EXPECT_EQ(At(2020, 2, 29, 23, 59, 59).IsDaTime(), 1);
  EXPECT_EQ(At(2021, 2, 29, 23, 59, 59).IsDateTime(), 0);
  EXPECT_EQ(At(2020, 2, 29, 24, 0, 0).IsDaTime(), 0);
}

TEST(DateTimeConstruction, TakesMissingPartsFromTheClock) {
  StoppedClock const clock;
  EXPECT_EQ(XoDateTime(), At(2021, 4, 15, 13, 5, 9));
  EXPECT_EQ(XoDateTime(XoDate(1, 2, 3)), At(1, 2, 3, 13, 5, 9));
  EXPECT_EQ(XoDateTime(XoTime(1, 2, 3)), At(2021, 4, 15, 1, 2, 3));
  XoDateTime value = At(1, 2, 3, 4, 5, 6);
  value = XoTime(7, 8, 9);
  EXPECT_EQ(value, At(1, 2, 3, 7, 8, 9));
  EXPECT_EQ(&value.Now(), &value);
  EXPECT_EQ(value, At(2021, 4, 15, 13, 5, 9));
  EXPECT_EQ(&value.NowUTC(), &value);
  EXPECT_EQ(value, At(2021, 4, 16, 1, 6, 10));
}

TEST(DateTimeClock, NowReadsTheTimeBeforeTheDate) {
  MidnightClock const clock;
  XoDateTime value = At(1, 2, 3, 4, 5, 6);
  value.Now();
  EXPECT_EQ(MidnightClock::Looks(), 2);
  EXPECT_EQ(value, At(2021, 4, 16, 23, 59, 59));
}

TEST(DateTimeClock, NowUTCReadsBothAtOnce) {
  MidnightClock const clock;
  XoDateTime value = At(1, 2, 3, 4, 5, 6);
  value.NowUTC();
  EXPECT_EQ(MidnightClock::Looks(), 1);
  EXPECT_EQ(value, At(2021, 5, 15, 23, 59, 59));
}

XoDateTime ToLocal(XoDateTime value, int minutes) {
  StoppedClock const clock(minutes);
  EXPECT_EQ(value.ToLocalTime(), 0);
  return value;
}

TEST(DateTimeZone, CarriesOneDay) {
  EXPECT_EQ(ToLocal(At(2021, 12, 31, 23, 30, 7), 120), At(2022, 1, 1, 1, 30, 7));
  EXPECT_EQ(ToLocal(At(2021, 1, 1, 0, 30, 7), -120), At(2020, 12, 31, 22, 30, 7));
  EXPECT_EQ(ToLocal(At(2021, 1, 1, 0, 0, 0), -60), At(2020, 12, 31, 23, 0, 0));
  EXPECT_EQ(ToLocal(At(2021, 1, 1, 12, 0, 0), 345), At(2021, 1, 1, 17, 45, 0));
  for (int minutes = -720; minutes <= 840; ++minutes) {
    for (int minute = 0; minute < 1440; minute += 7) {
      XoDateTime value = At(2021, 3, 1, minute / 60, minute % 60, 30);
      XoDateTime const local = ToLocal(value, minutes);
      ASSERT_EQ(local, Moved(value, minutes * 60));
      StoppedClock const clock(minutes);
      value = local;
      ASSERT_EQ(value.ToUTCTime(), 0);
      ASSERT_EQ(value, At(2021, 3, 1, minute / 60, minute % 60, 30));
    }
  }
}

TEST(DateTimeZone, WithoutAZoneNothingChanges) {
  StoppedClock const clock(kTimeZoneUnknown);
  XoDateTime value = At(2021, 1, 1, 0, 30, 7);
  EXPECT_EQ(value.ToLocalTime(), -2171);
  EXPECT_EQ(value.ToUTCTime(), -2171);
  EXPECT_EQ(value, At(2021, 1, 1, 0, 30, 7));
}

TEST(DateTimeZone, OffsetsBeyondADayAreStillDefined) {
  // One day is carried at most; the rest stays in the hour, in 8 bits.
  EXPECT_EQ(ToLocal(At(2021, 1, 1, 0, 0, 0), 3000), At(2021, 1, 2, 26, 0, 0));
  EXPECT_EQ(ToLocal(At(2021, 1, 1, 0, 0, 0), -3000), At(2020, 12, 31, -26, 0, 0));
  for (int minutes : {INT_MIN, INT_MIN + 1, INT_MAX}) {
    StoppedClock const clock(minutes);
    XoDateTime value = At(2021, 1, 1, 23, 59, 0);
    EXPECT_EQ(value.ToLocalTime(), 0);
    EXPECT_EQ(value.ToUTCTime(), 0);
  }
}

}  // namespace
}  // namespace xo::test
