#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/odmg/odmg_support.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

TEST(ZonedTime, StoresTheHourWithItsZone) {
  d_Time const time(10, 20, 30.25F, 2, 15);
  EXPECT_EQ(Fields(time), (TimeBytes{2, 15, 12, 35, 30, 25}));
  EXPECT_EQ(time.hour(), 10);
  EXPECT_EQ(time.minute(), 20);
  EXPECT_EQ(time.second(), 30.25F);
  EXPECT_EQ(time.tz_hour(), 2);
  EXPECT_EQ(time.tz_minute(), 15);
  EXPECT_EQ(time.time_zone(), d_Time::GMT2);
}

TEST(ZonedTime, DefaultZoneIsForTimesWithoutOne) {
  DefaultZone const zone(5);
  EXPECT_EQ(Fields(d_Time(10, 20, 30)), (TimeBytes{5, 0, 15, 20, 30, 0}));
  EXPECT_EQ(Fields(d_Time(10, 20, 30, 0, 0)), (TimeBytes{0, 0, 10, 20, 30, 0}));
  EXPECT_EQ(Fields(d_Time(3661)), (TimeBytes{5, 0, 6, 1, 1, 0}));
  StoppedClock const clock;
  EXPECT_EQ(Fields(d_Time()), (TimeBytes{5, 0, 18, 5, 9, 0}));
  EXPECT_EQ(Fields(d_Time::current()), (TimeBytes{5, 0, 18, 5, 9, 0}));
}

TEST(ZonedTime, AssignmentOfAPlainTimeDoesNotAddTheZone) {
  DefaultZone const zone(5);
  XoTime const plain(10, 1, 2);
  XoDateTime const both(XoDate(2021, 4, 15), plain);
  EXPECT_EQ(Fields(d_Time(plain)), (TimeBytes{5, 0, 15, 1, 2, 0}));
  EXPECT_EQ(Fields(d_Time(both)), (TimeBytes{5, 0, 15, 1, 2, 0}));
  d_Time time(1, 2, 3.5F, 7, 8);
  time = plain;
  EXPECT_EQ(Fields(time), (TimeBytes{5, 0, 10, 1, 2, 0}));
  EXPECT_EQ(Printed(time, "%H:%M"), "05:01");
  time = d_Time(1, 2, 3.5F, 7, 8);
  time = both;
  EXPECT_EQ(Fields(time), (TimeBytes{5, 0, 10, 1, 2, 0}));
  d_Time const other(1, 2, 3.5F, 7, 8);
  d_Timestamp const stamp(d_Date(2021, 4, 15), other);
  EXPECT_EQ(Fields(d_Time(stamp)), Fields(other));
  EXPECT_EQ(Fields(time = stamp), Fields(other));
}

TEST(ZonedTime, SecondsBelowZeroCountBackFromMidnight) {
  EXPECT_EQ(Fields(d_Time(-1)), (TimeBytes{0, 0, 23, 59, 59, 0}));
  EXPECT_EQ(Fields(d_Time(-86400)), (TimeBytes{0, 0, 0, 0, 0, 0}));
  // 24,856 days less 74,752 seconds.
  EXPECT_EQ(Fields(d_Time(INT_MIN)), (TimeBytes{0, 0, 20, 45, 52, 0}));
  DefaultZone const zone(-3);
  EXPECT_EQ(Fields(d_Time(-1)), (TimeBytes{-3, 0, 20, 59, 59, 0}));
  EXPECT_EQ(Printed(d_Time(-1), "%T"), "23:59:59");
}

TEST(ZonedTime, SecondsOfADayAndMoreAreNotReduced) {
  EXPECT_EQ(Fields(d_Time(86405)), (TimeBytes{0, 0, 24, 0, 5, 0}));
  EXPECT_EQ(d_Time(INT_MAX).minute(), INT_MAX / 60 % 60);
}

TEST(ZonedTime, HundredthsAreCutNotRounded) {
  EXPECT_EQ(Fields(d_Time(0, 0, 1.999F))[5], 99);
  EXPECT_EQ(Fields(d_Time(0, 0, 59.5F))[5], 50);
  for (float seconds : {kInfinity, -kInfinity, kNoNumber, 3e38F}) d_Time(0, 0, seconds);
}

TEST(ZonedTime, ComparesWithoutZoneAndByWholeSeconds) {
  d_Time const ten(10, 0, 0, 0, 0);
  EXPECT_EQ(d_Time(10, 0, 0, 2, 30) != ten, 0);
  EXPECT_EQ(d_Time(13, 0, 0, -5, 0) != ten, 3);
  EXPECT_EQ(d_Time(9, 59, 59) != ten, -1);
  EXPECT_EQ(d_Time(10, 45, 0) != ten, 45);
  EXPECT_EQ(d_Time(10, 0, 17) != ten, 17);
  d_Time const a(10, 0, 7.25F), b(10, 0, 7.75F);
  EXPECT_TRUE(a == b && !(a < b) && !(b < a) && a <= b && a >= b && !(a > b));
  EXPECT_EQ(d_Time(10, 0, 8.25F) != a, 1);
  EXPECT_EQ(a != d_Time(10, 0, 8.25F), -1);
  EXPECT_TRUE(a.is_between(ten, b));
  EXPECT_FALSE(ten.is_between(a, b));
}

TEST(ZonedTime, DifferenceIsThatOfTheStoredFieldsInWholeSeconds) {
  d_Interval const zones = d_Time(10, 0, 0, 2, 0) - d_Time(10, 0, 0, 0, 0);
  EXPECT_EQ(zones.Seconds(), 7200);
  EXPECT_EQ((d_Time(1, 1, 1.75F) - d_Time(0, 0, 0)).Seconds(), 3661);
  EXPECT_EQ((d_Time(0, 0, 1) - d_Time(1, 0, 0)).Seconds(), -3599);
}

TEST(ZonedTime, AssigningFormsKeepTheStoredHourAndTheOthersAddTheZone) {
  d_Time const time(10, 0, 5.5F, 2, 10);
  d_Interval const hour(0, 1);
  EXPECT_EQ(Fields(time + hour), (TimeBytes{2, 10, 15, 20, 5, 0}));
  EXPECT_EQ(Fields(hour + time), (TimeBytes{2, 10, 15, 20, 5, 0}));
  EXPECT_EQ(Fields(time - hour), (TimeBytes{2, 10, 13, 20, 5, 0}));
  d_Time moved = time;
  EXPECT_EQ(&(moved += hour), &moved);
  EXPECT_EQ(Fields(moved), (TimeBytes{2, 10, 13, 10, 5, 50}));
  moved = time;
  EXPECT_EQ(&(moved -= hour), &moved);
  EXPECT_EQ(Fields(moved), (TimeBytes{2, 10, 11, 10, 5, 0}));
}

TEST(ZonedTime, MovesAroundTheDay) {
  d_Time time(23, 59, 59);
  time += d_Interval(0, 0, 0, 1);
  EXPECT_EQ(Fields(time), (TimeBytes{0, 0, 0, 0, 0, 0}));
  time -= d_Interval(0, 0, 0, 1);
  EXPECT_EQ(Fields(time), (TimeBytes{0, 0, 23, 59, 59, 0}));
  time += d_Interval(7, 1);
  EXPECT_EQ(Fields(time), (TimeBytes{0, 0, 0, 59, 59, 0}));
}

TEST(ZonedTime, JustBelowMidnightRoundsToIt) {
  // A float near a day cannot tell a thousandth of a second less.
  d_Time time(0, 0, 0);
  time += d_Interval::OfSeconds(-0.001F);
  EXPECT_EQ(Fields(time), (TimeBytes{0, 0, 0, 0, 0, 0}));
}

TEST(ZonedTime, HugeSpansEndAtOnceAndThoseWithoutEndLeaveTheTime) {
  for (float seconds : {3.4e38F, -3.4e38F, -1e12F}) {
    d_Time time(1, 2, 3);
    time += d_Interval::OfSeconds(seconds);
    EXPECT_LT(time.hour(), 24);
    EXPECT_LT(time.minute(), 60);
  }
  for (float seconds : {kInfinity, -kInfinity, kNoNumber}) {
    d_Interval const span = d_Interval::OfSeconds(seconds);
    d_Time time(1, 2, 3.5F, 4, 5);
    TimeBytes const before = Fields(time);
    EXPECT_EQ(Fields(time + span), before);
    EXPECT_EQ(Fields(time - span), before);
    EXPECT_EQ(Fields(time += span), before);
    EXPECT_EQ(Fields(time -= span), before);
  }
}

class ZonedTimeLaws : public RandomTest {
 protected:
  float Seconds() { return static_cast<float>(static_cast<int>(Below(20000001)) - 10000000) / 4; }
};

TEST_F(ZonedTimeLaws, AdditionIsWhatTheStepsGive) {
  for (int round = 0; round < 20000; ++round) {
    d_Time const time(static_cast<unsigned short>(Below(24)),
                      static_cast<unsigned short>(Below(60)), static_cast<float>(Below(6000)) / 100,
                      static_cast<short>(static_cast<int>(Below(25)) - 12),
                      static_cast<short>(Below(3) * 15));
    TimeBytes const f = Fields(time);
    float const span = Seconds();
    bool const plus = OneIn(2), assigns = OneIn(2);
    float const own = plus && assigns ? static_cast<float>(f[4] + f[5] / 100.0) : f[4];
    d_Interval v(0, f[2], f[3], own);
    v += d_Interval::OfSeconds(plus ? span : -span);
    while (v.Seconds() < 0) v += d_Interval(1);
    int const s = static_cast<int>(v.Seconds());
    TimeBytes expected = f;
    expected[2] = static_cast<signed char>(s % 86400 / 3600 + (assigns ? 0 : f[0]));
    expected[3] = static_cast<signed char>(s % 3600 / 60 + (assigns ? 0 : f[1]));
    expected[4] = static_cast<signed char>(s % 60);
    expected[5] = static_cast<signed char>((v.Seconds() - static_cast<float>(s)) * 100);

    d_Time moved = time;
    d_Interval const by = d_Interval::OfSeconds(span);
    if (assigns) {
      plus ? moved += by : moved -= by;
    } else {
      moved = plus ? time + by : time - by;
    }
    ASSERT_EQ(Fields(moved), expected) << span << (plus ? " plus " : " minus ") << assigns;
  }
}

/// A clock whose local time is ahead of UTC by a chosen number of seconds.
class ClockAhead {
 public:
  explicit ClockAhead(int seconds) {
    Ahead() = seconds;
    XoPlatform hooks{};
    hooks.localTime = [](bdate& date, btime& time, int& nanoSeconds) {
      date = {2021, 4, 15};
      time = {13, 5, 9, Ahead()};
      nanoSeconds = 0;
    };
    before = XoExchangePlatform(hooks);
  }
  ~ClockAhead() { XoExchangePlatform(before); }
  ClockAhead(ClockAhead const&) = delete;
  ClockAhead& operator=(ClockAhead const&) = delete;

 private:
  static int& Ahead() {
    static int ahead = 0;
    return ahead;
  }
  XoPlatform before;
};

TEST(ZonedTime, LocalZoneIsTheWholeHoursAheadAndNothingForNone) {
  DefaultZone const zone(7);
  {
    ClockAhead const clock(0);
    d_Time::set_default_Time_Zone_to_local();
    EXPECT_EQ(d_Time(0, 0).tz_hour(), 7);
  }
  {
    ClockAhead const clock(-12600);
    d_Time::set_default_Time_Zone_to_local();
    EXPECT_EQ(d_Time(0, 0).tz_hour(), -3);
    EXPECT_EQ(d_Time(0, 0).tz_minute(), 0);
  }
  ClockAhead const clock(7200);
  d_Time::set_default_Time_Zone_to_local();
  EXPECT_EQ(d_Time(0, 0).tz_hour(), 2);
}

}  // namespace
}  // namespace xo::test
