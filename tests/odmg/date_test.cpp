#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/odmg/odmg_support.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

d_Date const kAnchor(2000, 1, 1);
constexpr int kAnchorNumber = 2451544;

/// The number of a day, of which the class shows differences alone.
int NumberOf(d_Date const& date) { return (date != kAnchor) + kAnchorNumber; }

bool HasFields(d_Date const& date, int year, int month, int day) {
  return date.year() == year && date.month() == month && date.day() == day;
}

bool SameFields(d_Date const& a, d_Date const& b) {
  return HasFields(a, b.year(), b.month(), b.day());
}

short Year(int year) { return static_cast<short>(year); }
unsigned short Small(int number) { return static_cast<unsigned short>(number); }

TEST(HistoricalDate, DaysOfTheChangeOfCalendarAreConsecutive) {
  EXPECT_EQ(NumberOf({1582, 10, 4}), 2299159);
  EXPECT_EQ(NumberOf({1582, 10, 15}), 2299160);
  d_Date date(1582, 10, 4);
  EXPECT_EQ(Text(date++), "1582-10-4");
  EXPECT_EQ(Text(date), "1582-10-15");
  EXPECT_EQ(Text(date--), "1582-10-15");
  EXPECT_EQ(Text(date), "1582-10-4");
  EXPECT_EQ(Text(++date), "1582-10-15");
  EXPECT_EQ(Text(--date), "1582-10-4");
}

TEST(HistoricalDate, EveryDayFromMarchOfYearOneTo9999RoundTrips) {
  int year = 1, month = 3, day = 1, number = 1721482, dayOfYear = 60;
  for (d_Date date(1, 3, 1); year < 10000; ++date, ++number, ++dayOfYear) {
    int const weekday = (number + 2) % 7;
    if (!HasFields(date, year, month, day) || NumberOf(date) != number ||
        !HasFields(d_Date(Year(year), Small(dayOfYear)), year, month, day) ||
        date.day_of_year() != dayOfYear || date.day_of_week() != weekday) {
      FAIL() << Text(date) << " for " << year << '-' << month << '-' << day;
    }
    // The next day by the rules of the two calendars.
    bool const isJulian = year < 1582 || (year == 1582 && month < 11);
    bool const isLeap = year % 4 == 0 && (isJulian || year % 100 != 0 || year % 400 == 0);
    int const lengths[] = {31, isLeap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    ASSERT_EQ(date.days_in_month(), lengths[month - 1]);
    if (year == 1582 && month == 10 && day == 4) {
      day = 15;
    } else if (++day > lengths[month - 1]) {
      day = 1;
      if (++month > 12) {
        month = 1;
        ++year;
        dayOfYear = 0;
      }
    }
  }
}

TEST(HistoricalDate, DaysOfEveryYearAreWhatTheStepsGive) {
  for (int year = SHRT_MIN; year <= SHRT_MAX; ++year) {
    for (int month = 1; month <= 12; month += 1 + (year & 1)) {
      d_Date const date(Year(year), Small(month), Small(28 + year % 4));
      if (NumberOf(date) != HistoricalSteps::Number(year, month, date.day())) FAIL() << Text(date);
    }
    int const first = HistoricalSteps::Number(year, 1, 1);
    for (int ofYear : {0, 1, 31, 32, 59, 60, 61, 306, 365, 366}) {
      d_Date const date(Year(year), Small(ofYear));
      d_Date const expected = HistoricalSteps::Date(first + ofYear - 1);
      if (!SameFields(date, expected)) {
        FAIL() << year << " day " << ofYear << ": " << Text(date) << " for " << Text(expected);
      }
    }
  }
}

TEST(HistoricalDate, EveryDayBeforeYearTwoIsWhatTheStepsGive) {
  for (int year = -4800; year <= 1; ++year) {
    int const first = HistoricalSteps::Number(year, 1, 1);
    for (int ofYear = 1; ofYear <= 366; ++ofYear) {
      d_Date const date(Year(year), Small(ofYear));
      if (!SameFields(date, HistoricalSteps::Date(first + ofYear - 1))) {
        FAIL() << year << " day " << ofYear << ": " << Text(date);
      }
    }
  }
}

// The steps multiply and divide in floating point, the class in integers.

TEST(HistoricalDate, EveryMonthOfEveryYearIsWhatTheStepsGive) {
  for (int year = SHRT_MIN; year <= SHRT_MAX; ++year) {
    for (int month = 1; month <= UCHAR_MAX; month += month < 15 ? 1 : 15) {
      if (NumberOf({Year(year), Small(month), 1}) != HistoricalSteps::Number(year, month, 1)) {
        FAIL() << year << '-' << month;
      }
    }
  }
  for (int month = 1; month <= UCHAR_MAX; ++month) {
    ASSERT_EQ(NumberOf({1, Small(month), 1}), HistoricalSteps::Number(1, month, 1)) << month;
  }
}

TEST(HistoricalDate, EveryDayThatYearsOf16BitsHoldIsWhatTheStepsGive) {
  constexpr int kYears = 100;
  for (int year = SHRT_MIN; year <= SHRT_MAX; year += kYears) {
    int const first = HistoricalSteps::Number(year, 1, 1);
    int const next = HistoricalSteps::Number(year + kYears, 1, 1);
    for (int number = first; number < next; ++number) {
      d_Date const date(Year(year), Small(number - first + 1));
      if (!SameFields(date, HistoricalSteps::Date(number))) {
        FAIL() << Text(date) << " for day " << number;
      }
    }
  }
}

class FarHistoricalDate : public RandomTest {};

TEST_F(FarHistoricalDate, EveryDayNumberIsWhatTheStepsGive) {
  for (unsigned round = 0; round < 200000; ++round) {
    int const days = static_cast<int>(Bits() >> (32 + Below(32)));
    d_Interval const span(OneIn(2) ? days : -days);
    std::int64_t const number = std::int64_t{kAnchorNumber} + span.day();
    d_Date const date = kAnchor + span;
    if (!SameFields(date, HistoricalSteps::Date(static_cast<int>(number)))) {
      FAIL() << Text(date) << " for day " << number;
    }
  }
}

TEST(HistoricalDate, MonthZeroIsDecemberOfTheYearBefore) {
  EXPECT_EQ(NumberOf({2000, 0, 5}), NumberOf({1999, 12, 5}));
  EXPECT_EQ(NumberOf({-100, 0, 5}), NumberOf({-101, 12, 5}));
}

TEST(HistoricalDate, TruncationTakesJanuaryOfYearZeroADayOff) {
  d_Date date(0, 1, 1);
  date += d_Interval();
  EXPECT_EQ(Text(date), "0-1-2");
}

TEST(HistoricalDate, WeekdaysCountFromSunday) {
  EXPECT_EQ(kAnchor.day_of_week(), d_Date::Saturday);
  EXPECT_EQ(d_Date(2021, 4, 15).day_of_week(), d_Date::Thursday);
  // The last Julian day was a Thursday, the first Gregorian one a Friday.
  EXPECT_EQ(d_Date(1582, 10, 4).day_of_week(), d_Date::Thursday);
  EXPECT_EQ(d_Date(1582, 10, 15).day_of_week(), d_Date::Friday);
}

TEST(HistoricalDate, CenturiesBefore1600AreLeapYears) {
  for (int const each : {4, 100, 1500, 1600, 2000, 2024, -4, 0}) {
    short const year = Year(each);
    EXPECT_TRUE(d_Date::is_leap_year(year)) << year;
    EXPECT_EQ(d_Date::days_in_month(year, 2), 29) << year;
    EXPECT_EQ(d_Date::days_in_year(year), 366) << year;
  }
  for (int const each : {1, 1700, 1900, 2021, 2100}) {
    short const year = Year(each);
    EXPECT_FALSE(d_Date(year, 1, 1).is_leap_year()) << year;
    EXPECT_EQ(d_Date::days_in_month(year, 2), 28) << year;
    EXPECT_EQ(d_Date(year, 1, 1).days_in_year(), 365) << year;
  }
  EXPECT_EQ(d_Date::days_in_month(2021, 0), 0);
  EXPECT_EQ(d_Date::days_in_month(2021, 13), 0);
  EXPECT_EQ(d_Date::days_in_month(2021, 65535), 0);
}

TEST(HistoricalDate, DaysLeftOutAreNotValid) {
  EXPECT_TRUE(d_Date::is_valid_date(1582, 10, 4));
  EXPECT_FALSE(d_Date::is_valid_date(1582, 10, 5));
  EXPECT_FALSE(d_Date::is_valid_date(1582, 10, 14));
  EXPECT_TRUE(d_Date::is_valid_date(1582, 10, 15));
  EXPECT_FALSE(d_Date::is_valid_date(2021, 2, 29));
  EXPECT_FALSE(d_Date::is_valid_date(2021, 4, 0));
  EXPECT_FALSE(d_Date::is_valid_date(2021, 13, 1));
}

TEST(HistoricalDate, NextAndPreviousMoveOneToSevenDays) {
  d_Date const thursday(2021, 4, 15);
  for (int weekday = 0; weekday < 7; ++weekday) {
    d_Date next = thursday, previous = thursday;
    EXPECT_EQ(&next.next(static_cast<d_Date::Weekday>(weekday)), &next);
    EXPECT_EQ(&previous.previous(static_cast<d_Date::Weekday>(weekday)), &previous);
    EXPECT_EQ(next.day_of_week(), weekday);
    EXPECT_EQ(previous.day_of_week(), weekday);
    EXPECT_TRUE((next != thursday) >= 1 && (next != thursday) <= 7);
    EXPECT_TRUE((thursday != previous) >= 1 && (thursday != previous) <= 7);
  }
  d_Date date = thursday;
  EXPECT_EQ(Text(date.next(d_Date::Thursday)), "2021-4-22");
  date = thursday;
  EXPECT_EQ(Text(date.previous(d_Date::Thursday)), "2021-4-8");
}

TEST(HistoricalDate, DaysOfAYearRunOverItsEnds) {
  EXPECT_EQ(Text(d_Date(1582, 278)), "1582-10-15");
  EXPECT_EQ(d_Date(1582, 12, 31).day_of_year(), 355);
  EXPECT_EQ(Text(d_Date(2021, 366)), "2022-1-1");
  EXPECT_EQ(Text(d_Date(2021, 0)), "2020-12-31");
  // 179 years with 43 leap days are 65,378 days, and 156 more end on June 5.
  EXPECT_EQ(Text(d_Date(2001, 65535)), "2180-6-5");
}

TEST(HistoricalDate, SpansMoveByTheirWholeDays) {
  d_Date const date(2021, 4, 15);
  EXPECT_EQ(Text(date + d_Interval(1, 23, 59, 59)), "2021-4-16");
  EXPECT_EQ(Text(d_Interval(20) + date), "2021-5-5");
  EXPECT_EQ(Text(date - d_Interval(15, 23)), "2021-3-31");
  // Truncation goes toward the date on either side.
  EXPECT_EQ(Text(date + d_Interval(0, -23)), "2021-4-15");
  EXPECT_EQ(Text(date - d_Interval(-1, 23)), "2021-4-16");
  d_Date moved = date;
  EXPECT_EQ(&(moved += d_Interval(16)), &moved);
  EXPECT_EQ(Text(moved), "2021-5-1");
  moved -= d_Interval(16);
  EXPECT_EQ(Text(moved), "2021-4-15");
}

TEST(HistoricalDate, SpansWithoutEndLeaveTheDate) {
  float const infinity = std::numeric_limits<float>::infinity();
  for (float seconds : {infinity, -infinity, std::numeric_limits<float>::quiet_NaN()}) {
    d_Date date(2021, 4, 15);
    date += d_Interval::OfSeconds(seconds);
    date -= d_Interval::OfSeconds(seconds);
    EXPECT_EQ(Text(date), "2021-4-15");
  }
}

TEST(HistoricalDate, AnySpanEndsSomewhere) {
  for (float seconds : {3.4e38F, -3.4e38F, 1.9e14F, -1.9e14F}) {
    for (short year : {short{-32768}, short{2021}, short{32767}}) {
      d_Date date(year, 255, 255);
      date += d_Interval::OfSeconds(seconds);
      date -= d_Interval::OfSeconds(seconds);
      date.next(d_Date::Sunday).previous(d_Date::Saturday);
    }
  }
}

TEST(HistoricalDate, ComparisonGivesTheDifferenceInDays) {
  d_Date const a(2021, 4, 15), b(2021, 5, 15);
  EXPECT_EQ(a != b, -30);
  EXPECT_EQ(b != a, 30);
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && !(a == b) && a <= a && a >= a && a == a);
  // Days that the calendar does not have are days of the next month.
  EXPECT_TRUE(d_Date(2021, 4, 31) == d_Date(2021, 5, 1));
  EXPECT_TRUE(d_Date(2021, 4, 30).is_between(a, b));
  EXPECT_FALSE(d_Date(2021, 4, 14).is_between(a, b));
}

TEST(HistoricalDate, OtherClassesGiveTheirFields) {
  XoDate const plain(-5, 2, 30);
  XoDateTime const both(XoDate(2020, 1, 2), XoTime(3, 4, 5));
  EXPECT_EQ(Text(d_Date(plain)), "-5-2-30");
  EXPECT_EQ(Text(d_Date(both)), "2020-1-2");
  EXPECT_EQ(Text(d_Date(d_Timestamp(1999, 9, 8))), "1999-9-8");
  d_Date date(1, 1, 1);
  EXPECT_EQ(Text(date = plain), "-5-2-30");
  EXPECT_EQ(Text(date = both), "2020-1-2");
  EXPECT_EQ(Text(date = d_Timestamp(1999, 9, 8)), "1999-9-8");
  EXPECT_EQ(date.month_of_year(), d_Date::September);
  // Fields are cut to a byte.
  EXPECT_EQ(Text(d_Date(2021, 257, 300)), "2021-1-44");
}

TEST(HistoricalDate, ANewOneIsToday) {
  StoppedClock const clock;
  EXPECT_EQ(Text(d_Date()), "2021-4-15");
  EXPECT_EQ(Text(d_Date::current()), "2021-4-15");
}

class Periods : public RandomTest {};

TEST_F(Periods, OverlapWhereTheyShareADayIncludingTheirEnds) {
  auto const day = [](int number) { return d_Date(2021, Small(number)); };
  EXPECT_EQ(overlaps(day(1), day(5), day(5), day(9)), 1);
  EXPECT_EQ(overlaps(day(1), day(5), day(6), day(9)), 0);
  EXPECT_EQ(overlaps(day(5), day(1), day(9), day(0)), 1);
  for (int round = 0; round < 2000; ++round) {
    int n[4];
    for (int& each : n) each = static_cast<int>(Below(8)) + 1;
    bool shared = false;
    for (int each = 1; each <= 8; ++each) {
      shared |= each >= std::min(n[0], n[1]) && each <= std::max(n[0], n[1]) &&
                each >= std::min(n[2], n[3]) && each <= std::max(n[2], n[3]);
    }
    ASSERT_EQ(overlaps(day(n[0]), day(n[1]), day(n[2]), day(n[3])), shared ? 1 : 0);
    // Of time stamps only the part counts that the other pair has.
    auto const at = [&](int number) { return d_Timestamp(day(number), d_Time(Small(number), 0)); };
    auto const hour = [](int number) { return d_Time(Small(number), 0); };
    ASSERT_EQ(overlaps(at(n[0]), at(n[1]), at(n[2]), at(n[3])), shared ? 1 : 0);
    ASSERT_EQ(overlaps(day(n[0]), day(n[1]), at(n[2]), at(n[3])), shared ? 1 : 0);
    ASSERT_EQ(overlaps(at(n[0]), at(n[1]), day(n[2]), day(n[3])), shared ? 1 : 0);
    ASSERT_EQ(overlaps(hour(n[0]), hour(n[1]), hour(n[2]), hour(n[3])), shared ? 1 : 0);
    ASSERT_EQ(overlaps(hour(n[0]), hour(n[1]), at(n[2]), at(n[3])), shared ? 1 : 0);
    ASSERT_EQ(overlaps(at(n[0]), at(n[1]), hour(n[2]), hour(n[3])), shared ? 1 : 0);
  }
}

}  // namespace
}  // namespace xo::test
