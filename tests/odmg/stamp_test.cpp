#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/odmg/odmg_support.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

TEST(Interval, SumsMagnitudesAndNegatesThemAllForOneBelowZero) {
  EXPECT_EQ(d_Interval(1, 2, 3, 4.5F).Seconds(), 93784.5F);
  EXPECT_EQ(d_Interval(1, -1, 0, 0).Seconds(), -90000);
  EXPECT_EQ(d_Interval(0, 0, -1, 30).Seconds(), -90);
  EXPECT_EQ(d_Interval(0, 0, 1, -30).Seconds(), -90);
  EXPECT_EQ(d_Interval(-1).Seconds(), -86400);
  EXPECT_EQ(d_Interval().Seconds(), 0);
  EXPECT_EQ(d_Interval(INT_MIN).Seconds(), -86400.0F * 2147483648.0F);
}

TEST(Interval, RoundsAtEveryStepFromMinutesToDays) {
  // Near 6,000 days floats lie 32 apart: 80 more rounds to 64, but 60 and then 20 to 96.
  EXPECT_EQ(d_Interval(6000, 0, 1, 20).Seconds(), 518400064.0F);
}

TEST(Interval, ShowsDaysAndWhatIsLeft) {
  d_Interval const span(1, 2, 3, 4.5F);
  EXPECT_EQ(span.day(), 1);
  EXPECT_EQ(span.hour(), 2);
  EXPECT_EQ(span.minute(), 3);
  EXPECT_EQ(span.second(), 4.5F);
  EXPECT_EQ((-span).minute(), -3);
  EXPECT_FALSE(span.is_zero());
  EXPECT_TRUE(d_Interval().is_zero());
}

TEST(Interval, CalculatesOnTheNumber) {
  d_Interval const a = d_Interval::OfSeconds(10), b = d_Interval::OfSeconds(4);
  EXPECT_EQ((a + b).Seconds(), 14);
  EXPECT_EQ((b - a).Seconds(), -6);
  EXPECT_EQ((a * -3).Seconds(), -30);
  EXPECT_EQ((-3 * a).Seconds(), -30);
  EXPECT_EQ((a / 4).Seconds(), 2.5F);
  EXPECT_EQ((a / 0).Seconds(), 10);
  d_Interval c = a;
  EXPECT_EQ((c /= 0).Seconds(), 10);
  EXPECT_EQ((a * INT_MIN).Seconds(), -21474836480.0F);
  EXPECT_TRUE(b < a && b <= a && a > b && a >= b && a != b && a == a);
}

TEST(Interval, FoldsHoursAbove12InItsOwnFormat) {
  EXPECT_EQ(Printed(d_Interval(0, 13)), "00 days, 01 hours, 00 minutes, 00 seconds");
  EXPECT_EQ(Printed(d_Interval(3, 4, 5, 6.9F)), "03 days, 04 hours, 05 minutes, 06 seconds");
}

TEST(Interval, PrintsByTruncationAndCutsTheDayToAByte) {
  // 300 less 256.
  EXPECT_EQ(Printed(d_Interval(300)), "44 days, 00 hours, 00 minutes, 00 seconds");
  // A field of -1 is a wildcard.
  EXPECT_EQ(Printed(d_Interval::OfSeconds(-90)), "00 days, 00 hours, * minutes, -30 seconds");
  for (float seconds : {kInfinity, -kInfinity, kNoNumber, 3e38F, -3e38F}) {
    EXPECT_NE(Printed(d_Interval::OfSeconds(seconds)), "");
  }
}

TEST(Interval, ScanRebuildsItFromDaysToSeconds) {
  XoString text("01 days, 02 hours, 03 minutes, 04 seconds");
  d_Interval span(9, 9);
  EXPECT_EQ(span.ScanFromXoString(text, nullptr), &span);
  EXPECT_EQ(span.Seconds(), 93784);
  XoString shorter("02 days, 03");
  EXPECT_EQ(span.ScanFromXoString(shorter, nullptr), nullptr);
  EXPECT_EQ(span.Seconds(), 2 * 86400 + 3 * 3600);
}

d_Timestamp Stamp(int month, int day, int hour, int minute, float seconds) {
  auto const part = [](int number) { return static_cast<unsigned short>(number); };
  return d_Timestamp(2021, part(month), part(day), part(hour), part(minute), seconds);
}

using xo::test::Text;

std::string Text(d_Timestamp const& stamp) {
  return Text(stamp.date()) + ' ' + std::to_string(stamp.hour()) + ':' +
         std::to_string(stamp.minute()) + ':' + std::to_string(stamp.second()).substr(0, 4);
}

TEST(StampArithmetic, CarriesFromTheTimeToTheDate) {
  d_Timestamp const stamp = Stamp(4, 30, 23, 59, 58);
  EXPECT_EQ(Text(stamp + d_Interval(0, 0, 0, 3.25F)), "2021-5-1 0:0:1.25");
  EXPECT_EQ(Text(d_Interval(0, 0, 0, 3.25F) + stamp), "2021-5-1 0:0:1.25");
  EXPECT_EQ(Text(stamp + d_Interval(31)), "2021-5-31 23:59:58.0");
  EXPECT_EQ(Text(stamp - d_Interval(0, 24)), "2021-4-29 23:59:58.0");
  d_Timestamp moved = stamp;
  EXPECT_EQ(Text(moved += d_Interval(0, 1)), "2021-5-1 0:59:58.0");
  EXPECT_EQ(Text(moved -= d_Interval(0, 1)), "2021-4-30 23:59:58.0");
}

TEST(StampArithmetic, TakesTheDayOfTheMonthIntoTheSum) {
  EXPECT_EQ(Text(Stamp(4, 1, 0, 0, 0) - d_Interval(0, 0, 0, 1)), "2021-3-31 23:59:59.0");
  EXPECT_EQ(Text(Stamp(4, 1, 0, 0, 0) - d_Interval(2, 12)), "2021-3-29 12:0:0.00");
  // A sum below 0 of whole days goes one day further, to the end of the rule.
  EXPECT_EQ(Text(Stamp(4, 1, 0, 0, 0) - d_Interval(3)), "2021-3-28 0:0:0.00");
}

TEST(StampArithmetic, KeepsTheZoneInAllForms) {
  d_Timestamp const stamp(d_Date(2021, 4, 15), d_Time(10, 0, 0, 2, 30));
  d_Interval const hour(0, 1);
  TimeBytes const later = {2, 30, 13, 30, 0, 0}, earlier = {2, 30, 11, 30, 0, 0};
  EXPECT_EQ(Fields((stamp + hour).time()), later);
  EXPECT_EQ(Fields((stamp - hour).time()), earlier);
  d_Timestamp moved = stamp;
  EXPECT_EQ(Fields((moved += hour).time()), later);
  moved = stamp;
  EXPECT_EQ(Fields((moved -= hour).time()), earlier);
}

TEST(StampArithmetic, AnySpanEndsAndOneWithoutEndLeavesTheValue) {
  d_Timestamp const stamp = Stamp(4, 15, 1, 2, 3);
  for (float seconds : {3.4e38F, -3.4e38F, 1e24F, -1e24F, 1.9e14F, -1.9e14F}) {
    d_Timestamp moved = stamp;
    moved += d_Interval::OfSeconds(seconds);
    EXPECT_LT(moved.hour(), 24);
    moved = stamp;
    moved -= d_Interval::OfSeconds(seconds);
    EXPECT_LT(moved.hour(), 24);
  }
  for (float seconds : {kInfinity, -kInfinity, kNoNumber}) {
    d_Timestamp moved = stamp;
    moved += d_Interval::OfSeconds(seconds);
    moved -= d_Interval::OfSeconds(seconds);
    EXPECT_EQ(Text(moved), Text(stamp));
  }
}

TEST(Stamp, ComparesDatesAndThenTimes) {
  d_Timestamp const stamp = Stamp(4, 15, 10, 20, 30);
  EXPECT_EQ(Stamp(4, 17, 0, 0, 0) != stamp, 2);
  EXPECT_EQ(Stamp(4, 15, 7, 50, 0) != stamp, -3);
  EXPECT_EQ(Stamp(4, 15, 10, 20, 30.75F) != stamp, 0);
  EXPECT_TRUE(Stamp(4, 15, 9, 0, 0) < stamp && stamp <= stamp && stamp == stamp);
  EXPECT_TRUE(stamp > Stamp(4, 14, 23, 0, 0) && stamp >= stamp);
  EXPECT_TRUE(stamp.is_between(Stamp(4, 15, 0, 0, 0), Stamp(4, 16, 0, 0, 0)));
}

TEST(Stamp, IsMadeOfADateATimeOrBoth) {
  DefaultZone const zone(3);
  d_Date const date(2021, 4, 15);
  EXPECT_EQ(Fields(d_Timestamp(date).time()), (TimeBytes{3, 0, 3, 0, 0, 0}));
  EXPECT_EQ(Text(d_Timestamp(1999)), "1999-1-1 0:0:0.00");
  XoDateTime const both(XoDate(2020, 1, 2), XoTime(3, 4, 5));
  d_Timestamp stamp(both);
  EXPECT_EQ(Text(stamp), "2020-1-2 3:4:5.00");
  // The parts take it by their assignments, that of the time without the zone.
  stamp = both;
  EXPECT_EQ(Fields(stamp.time()), (TimeBytes{3, 0, 3, 4, 5, 0}));
  EXPECT_EQ(Text(stamp), "2020-1-2 0:4:5.00");
  stamp = date;
  EXPECT_EQ(Text(stamp), "2021-4-15 0:4:5.00");
  EXPECT_EQ(stamp.tz_hour(), 3);
  EXPECT_EQ(stamp.tz_minute(), 0);
  EXPECT_EQ(stamp.year(), 2021);
  EXPECT_EQ(stamp.month(), d_Date::April);
  EXPECT_EQ(stamp.day(), 15);
  StoppedClock const clock;
  EXPECT_EQ(Text(d_Timestamp()), "2021-4-15 13:5:9.00");
  EXPECT_EQ(Text(d_Timestamp::current()), "2021-4-15 13:5:9.00");
}

TEST(OdmgText, DatesPrintWithTheWeekdayOfThePlainCalendar) {
  EXPECT_EQ(Printed(d_Date(2021, 4, 15)), "Thu Apr 15");
  EXPECT_EQ(Printed(d_Date(2021, 4, 15), "%Y-%m-%dT%T"), "2021-04-15T00:00:00");
  // A Thursday, but the Gregorian 4th of October was a Monday.
  EXPECT_EQ(Printed(d_Date(1582, 10, 4), "%A"), "Monday");
}

TEST(OdmgText, TimesPrintWithoutZone) {
  EXPECT_EQ(Printed(d_Time(13, 5, 9.75F, 2, 30)), "01:05:09 pm");
  EXPECT_EQ(Printed(d_Time(13, 5, 9, 2, 30), "%D %H:%M:%f"), "0000-01-01 13:05:09");
  EXPECT_EQ(Printed(Stamp(4, 15, 13, 5, 9)), "Thu Apr 15 01:05:09 pm");
  EXPECT_EQ(Printed(d_Timestamp(d_Date(2021, 4, 15), d_Time(1, 5, 9, -5, 0)), "%O"),
            "2021-04-15T01:05:09");
}

TEST(OdmgText, ScanStoresTheHourWithoutTheDefaultZone) {
  DefaultZone const zone(5);
  XoString text("10:20:30 pm");
  d_Time time(0, 0, 1.5F, 1, 2);
  EXPECT_EQ(time.ScanFromXoString(text, nullptr), &time);
  EXPECT_EQ(Fields(time), (TimeBytes{5, 0, 22, 20, 30, 0}));
  XoString both("Thu Apr 15 10:20:30 am");
  d_Timestamp stamp(1999, 9, 9);
  EXPECT_EQ(stamp.ScanFromXoString(both, nullptr), &stamp);
  EXPECT_EQ(Text(stamp.date()), "0-4-15");
  EXPECT_EQ(Fields(stamp.time()), (TimeBytes{5, 0, 10, 20, 30, 0}));
}

TEST(OdmgText, AFailedScanLeavesWhatItRead) {
  XoString text("2020-07");
  d_Date date(1999, 9, 9);
  EXPECT_EQ(date.ScanFromXoString(text, "%Y-%m-%d"), nullptr);
  EXPECT_EQ(Text(date), "2020-7-0");
  XoString hour("7");
  d_Time time(1, 2, 3);
  EXPECT_EQ(time.ScanFromXoString(hour, "%H:%M"), nullptr);
  EXPECT_EQ(Fields(time), (TimeBytes{0, 0, 7, 0, 0, 0}));
  XoString stampText("2020-07");
  d_Timestamp stamp(1999, 9, 9, 9);
  EXPECT_EQ(stamp.ScanFromXoString(stampText, "%Y-%m-%d"), nullptr);
  EXPECT_EQ(Text(stamp), "2020-7-0 0:0:0.00");
}

TEST(OdmgText, TheTextOfNullReadsAsTheNullFields) {
  XoString text("{NULL}");
  d_Date date(1999, 9, 9);
  EXPECT_EQ(date.ScanFromXoString(text, nullptr), &date);
  EXPECT_EQ(Text(date), "-32768-128-128");
  d_Timestamp stamp(1999, 9, 9, 9);
  EXPECT_EQ(stamp.ScanFromXoString(text, nullptr), &stamp);
  EXPECT_EQ(Fields(stamp.time()), (TimeBytes{0, 0, -128, -128, -128, 0}));
  EXPECT_EQ(Printed(stamp), "{NULL}");
}

}  // namespace
}  // namespace xo::test
