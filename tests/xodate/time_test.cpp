#include <gtest/gtest.h>

#include <climits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

static_assert(sizeof(XoTime) == 3);
static_assert(static_cast<int>(XoTime(3661)) == 3661);

TEST(TimeArithmetic, WrapsAroundTheDay) {
  EXPECT_EQ(XoTime(23, 59, 59) + 1, XoTime(0, 0, 0));
  EXPECT_EQ(XoTime(0, 0, 0) - 1, XoTime(23, 59, 59));
  EXPECT_EQ(XoTime(0, 0, 0) + 86400, XoTime(0, 0, 0));
  EXPECT_EQ(XoTime(10, 0, 0) - XoTime(11, 0, 0), XoTime(23, 0, 0));
  EXPECT_EQ(XoTime(11, 0, 0) - XoTime(10, 30, 15), XoTime(0, 29, 45));
  XoTime time(23, 59, 59);
  EXPECT_EQ(++time, XoTime(0, 0, 0));
  EXPECT_EQ(--time, XoTime(23, 59, 59));
  EXPECT_EQ(time += 2, XoTime(0, 0, 1));
  EXPECT_EQ(time -= 2, XoTime(23, 59, 59));
}

TEST(TimeArithmetic, ExactNegativeDaysEndAtHourTwentyFour) {
  XoTime const time = XoTime(0, 0, 0) - 86400;
  EXPECT_EQ(time, XoTime(24, 0, 0));
  EXPECT_EQ(time.IsTime(), 0);
  EXPECT_EQ(XoTime(0, 0, 0) - 2 * 86400, XoTime(24, 0, 0));
  // What is at hour 24 already passes through the same step.
  EXPECT_EQ(XoTime(24, 0, 0) - 86400, XoTime(0, 0, 0));
}

TEST(TimeArithmetic, HourOverflowsInEightBitsBeforeItIsWrapped) {
  EXPECT_EQ(XoTime(0, 0, 0) + 720000, XoTime(16, 0, 0));
  EXPECT_EQ(XoTime(0, 0, 0) + 127 * 3600, XoTime(7, 0, 0));
}

/// The steps, each cut to 8 bits.
XoTime Steps(XoTime const& time, int n) {
  auto const cut = [](int value) { return static_cast<signed char>(value); };
  int const t = n / 60, h = t / 60;
  signed char hour = cut(time.hour + cut(h));
  signed char minute = cut(time.minute + cut(t - 60 * h));
  signed char second = cut(time.second + cut(n - 60 * t));
  int carry = second >= 60 ? 1 : second < 0 ? -1 : 0;
  second = cut(second - 60 * carry);
  minute = cut(minute + carry);
  carry = minute >= 60 ? 1 : minute < 0 ? -1 : 0;
  minute = cut(minute - 60 * carry);
  hour = cut(hour + carry);
  if (hour >= 24) {
    hour = cut(hour % 24);
  } else if (hour < 0) {
    hour = cut(hour + 24 * (1 - hour / 24));
  }
  return {hour, minute, second};
}

class TimeRandom : public RandomTest {};

TEST_F(TimeRandom, AnyFieldsAndAnyShiftFollowTheSteps) {
  for (int round = 0; round < 300000; ++round) {
    XoTime const time(Byte(), Byte(), Byte());
    int const shifts[] = {static_cast<int>(Bits()), static_cast<int>(Below(400000)) - 200000,
                          INT_MIN, INT_MAX, INT_MIN + 1};
    for (int n : shifts) {
      ASSERT_EQ(time + n, Steps(time, n)) << n;
      ASSERT_EQ(time - n, Steps(time, n == INT_MIN ? n : -n)) << n;
    }
  }
}

TEST(TimeArithmetic, EverySecondOfADayWrapsAsTheClockDoes) {
  for (int second = 0; second < 86400; ++second) {
    XoTime const time(second);
    ASSERT_EQ(time.IsTime(), 1);
    ASSERT_EQ(static_cast<int>(time), second);
    ASSERT_EQ(time + 1, XoTime((second + 1) % 86400));
    ASSERT_EQ(time - 1, XoTime((second + 86399) % 86400));
    ASSERT_EQ(time + 86399, XoTime((second + 86399) % 86400));
  }
}

TEST(TimeFromSeconds, DoesNotWrap) {
  EXPECT_EQ(XoTime(3661), XoTime(1, 1, 1));
  EXPECT_EQ(XoTime(90000), XoTime(25, 0, 0));
  EXPECT_EQ(XoTime(90000).IsTime(), 0);
  EXPECT_EQ(XoTime(-1), XoTime(0, 0, -1));
  EXPECT_EQ(XoTime(-3661), XoTime(-1, -1, -1));
  EXPECT_EQ(XoTime(INT_MIN), XoTime(static_cast<o_char>(-596523), -14, -8));
  EXPECT_EQ(XoTime(INT_MAX), XoTime(static_cast<o_char>(596523), 14, 7));
  XoTime time(1, 2, 3);
  time.SetSecondsAbs(86399);
  EXPECT_EQ(time, XoTime(23, 59, 59));
}

TEST(TimeValidity, TakesFieldsAsUnsigned) {
  for (int hour = -128; hour < 128; ++hour) {
    EXPECT_EQ(XoTime(hour, 0, 0).IsTime(), hour >= 0 && hour <= 23);
    EXPECT_EQ(XoTime(0, hour, 0).IsTime(), hour >= 0 && hour <= 59);
    EXPECT_EQ(XoTime(0, 0, hour).IsTime(), hour >= 0 && hour <= 59);
  }
  EXPECT_EQ(XoTime::NullValue().IsTime(), 0);
}

TEST(TimeValues, AllButNullAreMidnight) {
  XoTime const midnight(0, 0, 0);
  EXPECT_EQ(midnight.IsDefaultValue() & midnight.IsZeroValue(), 1);
  EXPECT_EQ(midnight, XoTime::ClearValue());
  EXPECT_EQ(midnight.IsNullValue(), 0);
  XoTime time(1, 2, 3);
  EXPECT_EQ(time.IsDefaultValue() | time.IsZeroValue() | time.IsNullValue(), 0);
  EXPECT_EQ(time.SetNullValue(), 0);
  EXPECT_EQ(time, XoTime(-128, -128, -128));
  EXPECT_EQ(time.IsNullValue(), 1);
  EXPECT_EQ(time.SetDefaultValue(), 0);
  EXPECT_EQ(time, midnight);
  time.SetNullValue();
  EXPECT_EQ(time.SetZeroValue(), 0);
  EXPECT_EQ(time, midnight);
}

TEST(TimeCompare, GivesTheFirstDifference) {
  EXPECT_EQ(XoTime(1, 2, 3) != XoTime(4, 2, 3), -3);
  EXPECT_EQ(XoTime(1, 2, 3) != XoTime(1, 1, 9), 1);
  EXPECT_EQ(XoTime(1, 2, 3) != XoTime(1, 2, 9), -6);
  EXPECT_EQ(XoTime(1, 2, 3) != XoTime(1, 2, 3), 0);
  EXPECT_EQ(XoTime(-1, 2, 3).Compare(XoTime(4, -1, 3), 0), 0);
  EXPECT_EQ(XoTime(-1, 2, 3).Compare(XoTime(4, -1, 3), 0x10), -5);
  EXPECT_EQ(XoTime(1, 2, -1).Compare(XoTime(1, 2, 9), 0xFFEF), 0);
  EXPECT_TRUE(XoTime(1, 2, 3) < XoTime(1, 2, 4) && XoTime(1, 2, 3) <= XoTime(1, 2, 3));
  EXPECT_TRUE(XoTime(2, 0, 0) > XoTime(1, 59, 59) && XoTime(2, 0, 0) >= XoTime(1, 59, 59));
  EXPECT_FALSE(XoTime(2, 0, 0) == XoTime(1, 59, 59));
}

TEST(TimeClock, ReadsLocalTimeAndUtc) {
  StoppedClock const clock;
  EXPECT_EQ(XoTime(), XoTime(13, 5, 9));
  XoTime time(0, 0, 0);
  EXPECT_EQ(&time.Now(), &time);
  EXPECT_EQ(time, XoTime(13, 5, 9));
  EXPECT_EQ(&time.NowUTC(), &time);
  EXPECT_EQ(time, XoTime(1, 6, 10));
}

TEST(TimeZone, ShiftLosesTheDay) {
  StoppedClock const clock(60);
  XoTime time(23, 30, 0);
  EXPECT_EQ(time.ToLocalTime(), 0);
  EXPECT_EQ(time, XoTime(0, 30, 0));
  EXPECT_EQ(time.ToUTCTime(), 0);
  EXPECT_EQ(time, XoTime(23, 30, 0));
}

TEST(TimeZone, WithoutAZoneNothingChanges) {
  StoppedClock const clock(kTimeZoneUnknown);
  XoTime time(23, 30, 0);
  EXPECT_EQ(time.ToLocalTime(), -2171);
  EXPECT_EQ(time.ToUTCTime(), -2171);
  EXPECT_EQ(time, XoTime(23, 30, 0));
}

TEST(TimeZone, AnyOffsetWraps) {
  StoppedClock const clock(INT_MIN);
  XoTime time(1, 2, 3);
  EXPECT_EQ(time.ToLocalTime(), 0);
  EXPECT_EQ(time.ToUTCTime(), 0);
  EXPECT_EQ(time, XoTime(1, 2, 3));  // 2^31 minutes are no seconds in 32 bits
}

}  // namespace
}  // namespace xo::test
