#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdlib>
#include <initializer_list>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/stopped_clock.hpp"

namespace xo::test {
namespace {

constexpr int kFirstDay = -32044;     // -4800-03-01
constexpr int kLastOf9999 = 5373484;  // 9999-12-31

static_assert(sizeof(XoDate) == 4);
static_assert(XoDate(2000, 1, 1).dayabs() == 2451545);
static_assert(XoDate(1970, 1, 1).dayabs() == 2440588);
static_assert(XoDate(0, 1, 1).dayabs() == 1721060);
static_assert(XoDate(1, 1, 1).dayabs() == 1721426);
static_assert(XoDate(-4713, 11, 24).dayabs() == 0);
static_assert(XoDate(-4800, 3, 1).dayabs() == kFirstDay);
static_assert(XoDate(9999, 12, 31).dayabs() == kLastOf9999);
static_assert(XoDate(1582, 10, 4).dayabs() == 2299150);
static_assert(XoDate(1582, 10, 15).dayabs() == 2299161);
static_assert(XoDate(2000, 1, 1).GetDayOfTheDate() == XoSaturday);
static_assert(XoDate(1, 1, 1).GetDayOfTheDate() == XoMonday);
static_assert(XoDate(2021, 2, 1).GetDayOfTheDate() == XoMonday);

/// The steps of the conversion, in arithmetic that wraps at 32 bits, one by one.
struct Steps {
  static int Cut(long long value) { return static_cast<int>(value); }

  static int DayNumber(int year, int month, int day) {
    int const a = (month - 14) / 12;
    int const b = year + 4800 + a;
    return day - 32075 + 1461 * b / 4 + 367 * (month - 2 - 12 * a) / 12 - 3 * ((b + 100) / 100) / 4;
  }

  static XoDate Date(int n) {
    int l = Cut(n + 68569LL);
    int const c = Cut(4LL * l) / 146097;
    l = Cut(l - static_cast<long long>(Cut(146097LL * c + 3) / 4));
    int const i = Cut(4000 * (l + 1LL)) / 1461001;
    l = Cut(l - static_cast<long long>(Cut(1461LL * i) / 4) + 31);
    int const j = Cut(80LL * l) / 2447;
    int const day = l - Cut(2447LL * j) / 80;
    int const k = j / 11;
    return {100 * (c - 49) + i + k, j + 2 - 12 * k, day};
  }

  /// 0 Monday to 6 Sunday.
  static int Weekday(int year, int month, int day) {
    int const y = year + (month - 14) / 12;
    int const m = month + 10 - 12 * ((month + 10) / 13);
    int const k = (13 * m - 1) / 5;
    int const w = k + 77 + day - 2 * (y / 100) + y / 400 + 5 * (y % 100) / 4;
    int r = w % 7;
    if (r < 0 && year >= 1) r += 7;
    return r <= 0 ? 6 : r - 1;
  }
};

TEST(DateDayNumber, EveryDayTo9999RoundTripsInCalendarOrder) {
  XoDate date(-4800, 3, 1);
  for (int n = kFirstDay; n <= kLastOf9999; ++n) {
    XoDate const back(n);
    if (back != date || date.dayabs() != n || date.IsDate() != 1) {
      FAIL() << n << ": " << back.year << '-' << +back.month << '-' << +back.day;
    }
    // The next day by the rules of the calendar alone.
    int const year = date.year;
    bool const leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    int const lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool const isLast = date.day == lengths[date.month - 1];
    if ((date.IsLastDayOfTheMonth() == 1) != isLast ||
        date.daynxtmonth() != lengths[date.month - 1] - date.day + 1) {
      FAIL() << n;
    }
    date = !isLast           ? XoDate(year, date.month, date.day + 1)
           : date.month < 12 ? XoDate(year, date.month + 1, 1)
                             : XoDate(year + 1, 1, 1);
  }
}

TEST(DateDayNumber, IsTheStepsForEveryNumberInAndAroundTheYearsOf16Bits) {
  for (int n = kFirstDay - 400000; n < 13689325 + 400000; ++n) {
    if (XoDate(n) != Steps::Date(n)) FAIL() << n;
  }
}

TEST(DateDayNumber, IsTheStepsForEveryMonthAndDayOfSomeYears) {
  for (int year : {-32768, -32767, -10000, -4801, -4800, -4799, -4713, -401, -400,  -399, -101,
                   -100,   -99,    -5,     -4,    -1,    0,     1,     4,    99,    100,  101,
                   399,    400,    401,    1582,  1900,  2000,  2021,  9999, 32766, 32767}) {
    for (int month = -128; month < 128; ++month) {
      for (int day = -128; day < 128; ++day) {
        XoDate const date(year, month, day);
        if (date.dayabs() != Steps::DayNumber(year, month, day) ||
            date.GetDayOfTheDate() != Steps::Weekday(year, month, day)) {
          FAIL() << year << '-' << month << '-' << day;
        }
      }
    }
  }
}

TEST(DateDayNumber, AgreesWithTheStandardCalendarOnEveryDayOfItsYears) {
  namespace c = std::chrono;
  constexpr int kEpoch = 2440588;
  int const first = XoDate(-4799, 1, 1).dayabs();
  int const last = XoDate(32767, 12, 31).dayabs();
  for (int n = first; n <= last; ++n) {
    c::year_month_day const day{c::sys_days{c::days{n - kEpoch}}};
    XoDate const date(n);
    if (date.year != static_cast<int>(day.year()) ||
        date.month != static_cast<int>(static_cast<unsigned>(day.month())) ||
        date.day != static_cast<int>(static_cast<unsigned>(day.day()))) {
      FAIL() << n;
    }
  }
}

TEST(DateDayNumber, LeavesTheRoundTripBelowItsFirstDay) {
  XoDate const below(-32045);
  EXPECT_EQ(below, XoDate(-4800, 2, 29));
  EXPECT_EQ(below.dayabs(), -32044);
  EXPECT_EQ(XoDate(0), XoDate(-4713, 11, 24));
  EXPECT_EQ(XoDate(-1), XoDate(-4713, 11, 23));
}

class DateRandom : public RandomTest {};

TEST_F(DateRandom, AnyDayNumberAndAnyFieldsFollowTheSteps) {
  for (int n : {INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1, INT_MAX - 68569, INT_MAX - 68568}) {
    EXPECT_EQ(XoDate(n), Steps::Date(n)) << n;
  }
  for (int round = 0; round < 500000; ++round) {
    auto const n = static_cast<int>(Bits());
    ASSERT_EQ(XoDate(n), Steps::Date(n)) << n;
    XoDate const date(static_cast<o_2b>(Bits()), static_cast<o_char>(Bits()),
                      static_cast<o_char>(Bits()));
    ASSERT_EQ(date.dayabs(), Steps::DayNumber(date.year, date.month, date.day));
    ASSERT_EQ(date.GetDayOfTheDate(), Steps::Weekday(date.year, date.month, date.day));
  }
}

TEST_F(DateRandom, ArithmeticWrapsAtThirtyTwoBits) {
  for (int days : {INT_MIN, INT_MIN + 1, INT_MAX, -1, 0, 1}) {
    for (int round = 0; round < 2000; ++round) {
      XoDate const date(static_cast<o_2b>(Bits()), static_cast<o_char>(Bits()),
                        static_cast<o_char>(Bits()));
      auto const n = static_cast<unsigned>(date.dayabs());
      auto const by = static_cast<unsigned>(days);
      ASSERT_EQ(date + days, XoDate(static_cast<int>(n + by)));
      ASSERT_EQ(date - days, XoDate(static_cast<int>(n - by)));
      XoDate sum = date, rest = date;
      ASSERT_EQ(sum += days, date + days);
      ASSERT_EQ(rest -= days, date - days);
    }
  }
}

TEST(DateArithmetic, CountsDays) {
  XoDate date(2021, 12, 31);
  EXPECT_EQ(date + 1, XoDate(2022, 1, 1));
  EXPECT_EQ(date - 365, XoDate(2020, 12, 31));
  EXPECT_EQ(date - XoDate(2020, 12, 31), 365);
  EXPECT_EQ(XoDate(1582, 10, 15) - XoDate(1582, 10, 4), 11);
  EXPECT_EQ(static_cast<int>(date), 2459580);
  EXPECT_EQ(++date, XoDate(2022, 1, 1));
  EXPECT_EQ(--date, XoDate(2021, 12, 31));
  EXPECT_EQ(date.dateabs(2451545), XoDate(2000, 1, 1));
}

TEST(DateWeekday, FollowsTheDayNumberFromYearOneTo9999) {
  for (int n = 1721426; n <= kLastOf9999; ++n) {
    XoDate const date(n);
    if (date.GetDayOfTheDate() != n % 7) FAIL() << n;
  }
  // Here the congruence's sum turns negative.
  EXPECT_EQ(XoDate(4600, 3, 1).GetDayOfTheDate(), XoDate(4600, 3, 1).dayabs() % 7);
}

TEST(DateWeekday, IsSundayWhereTheSumIsNegativeBeforeYearOne) {
  int sundays = 0;
  for (int n = kFirstDay; n < 1721426; ++n) {
    XoDate const date(n);
    if (date.GetDayOfTheDate() != Steps::Weekday(date.year, date.month, date.day)) FAIL() << n;
    sundays += date.GetDayOfTheDate() == XoSunday ? 1 : 0;
  }
  EXPECT_NE(sundays, (1721426 - kFirstDay) / 7);
}

TEST(DateWeekday, PrintsItsNameOrItsNumber) {
  XoDate date(2021, 4, 15);
  XoDate const constant = date;
  EXPECT_STREQ(constant.PrintDayOfTheDate().StrGet(), "Thursday");
  EXPECT_STREQ(date.PrintDayOfTheDate().StrGet(), "3");
  EXPECT_EQ(date.DayOfTheDate(), XoThursday);
  EXPECT_STREQ(XoDate::DayName(static_cast<XoDaysOfTheWeek>(7)), "no day");
  EXPECT_STREQ(XoDate::DayName(static_cast<XoDaysOfTheWeek>(-1)), "no day");
}

TEST(DateNames, TheFirstTwoMonthsLackALetter) {
  char const* const months[] = {"Januar",    "Februar", "March",    "April",
                                "May",       "June",    "July",     "August",
                                "September", "October", "November", "December"};
  for (int month = 1; month <= 12; ++month) {
    EXPECT_STREQ(XoDate::MonthName(month), months[month - 1]);
  }
  EXPECT_EQ(XoDate::MonthName(0), nullptr);
  EXPECT_EQ(XoDate::MonthName(13), nullptr);
}

TEST(DateValidity, RefusesWhatTheCalendarHasNot) {
  for (XoDate const& date :
       {XoDate(2021, 2, 29), XoDate(2021, 4, 31), XoDate(2021, 0, 1), XoDate(2021, 13, 1),
        XoDate(2021, 1, 0), XoDate(2021, 1, 32), XoDate(1900, 2, 29), XoDate(2021, -1, 5),
        XoDate(2021, 5, -1), XoDate::NullValue(), XoDate::ClearValue()}) {
    EXPECT_EQ(date.IsDate(), 0) << date.year << '-' << +date.month << '-' << +date.day;
  }
  for (XoDate const& date : {XoDate(2020, 2, 29), XoDate(2000, 2, 29), XoDate(-1, 5, 5),
                             XoDate::DefaultValue(), XoDate::ZeroValue()}) {
    EXPECT_EQ(date.IsDate(), 1) << date.year << '-' << +date.month << '-' << +date.day;
  }
}

TEST(DateMonthEnd, DecemberEndsByWayOfMonthThirteen) {
  EXPECT_EQ(XoDate(2021, 12, 31).daynxtmonth(), 1);
  EXPECT_EQ(XoDate(2021, 12, 31).IsLastDayOfTheMonth(), 1);
  EXPECT_EQ(XoDate(2021, 12, 1).daynxtmonth(), 31);
  EXPECT_EQ(XoDate(2021, 13, 1).dayabs(), XoDate(2022, 1, 1).dayabs());
}

TEST(DateMonthEnd, ADayBehindItIsNotTheLast) {
  EXPECT_EQ(XoDate(2021, 2, 28).IsLastDayOfTheMonth(), 1);
  EXPECT_EQ(XoDate(2021, 2, 29).daynxtmonth(), 0);
  EXPECT_EQ(XoDate(2021, 2, 29).IsLastDayOfTheMonth(), 0);
  EXPECT_EQ(XoDate(2021, 2, 31).daynxtmonth(), -2);
  EXPECT_EQ(XoDate(2021, 2, 31).IsLastDayOfTheMonth(), 0);
}

TEST(DateValues, AreFourWithTheirTestsAndSetters) {
  XoDate date(2021, 4, 15);
  EXPECT_EQ(date.IsNullValue() | date.IsDefaultValue() | date.IsZeroValue(), 0);
  EXPECT_EQ(date.SetNullValue(), 0);
  EXPECT_EQ(date, XoDate(-32768, -128, -128));
  EXPECT_EQ(date.IsNullValue(), 1);
  EXPECT_EQ(date.SetDefaultValue(), 0);
  EXPECT_EQ(date, XoDate(-4713, 11, 24));
  EXPECT_EQ(date.IsDefaultValue(), 1);
  EXPECT_EQ(date.SetZeroValue(), 0);
  EXPECT_EQ(date, XoDate(0, 1, 1));
  EXPECT_EQ(date.IsZeroValue(), 1);
  EXPECT_EQ(XoDate::ClearValue(), XoDate(0, 0, 0));
}

TEST(DateCompare, UnequalGivesTheDifference) {
  EXPECT_EQ(XoDate(2021, 3, 1) != XoDate(2021, 5, 1), -2);
  EXPECT_EQ(XoDate(2021, 3, 1) != XoDate(2019, 5, 1), 2);
  EXPECT_EQ(XoDate(2021, 3, 1) != XoDate(2021, 3, 30), -29);
  EXPECT_EQ(XoDate(2021, 3, 1) != XoDate(2021, 3, 1), 0);
}

TEST(DateCompare, WildcardsOnEitherSideArePassedOverUnlessStrict) {
  EXPECT_EQ(XoDate(2021, -1, 5).Compare(XoDate(2021, 7, 5), 0), 0);
  EXPECT_EQ(XoDate(2021, -1, 5).Compare(XoDate(2021, 7, 5), 0x10), -8);
  EXPECT_EQ(XoDate(2021, 7, 5).Compare(XoDate(-1, 7, -1), 0), 0);
  EXPECT_EQ(XoDate(2021, 7, 5).Compare(XoDate(-1, 8, 5), 0xFFEF), -1);
  EXPECT_EQ(XoDate(2021, 7, 5).Compare(XoDate(-1, 8, 5), 0xFFFF), 2022);
}

TEST(DateCompare, RelationsFollowTheFields) {
  XoDate const dates[] = {XoDate::NullValue(), XoDate(-1, 1, 1),   XoDate(2021, -1, 5),
                          XoDate(2021, 2, 29), XoDate(2021, 3, 1), XoDate(2021, 3, 2)};
  for (int i = 0; i < 6; ++i) {
    for (int j = 0; j < 6; ++j) {
      EXPECT_EQ(dates[i] < dates[j], i < j);
      EXPECT_EQ(dates[i] <= dates[j], i <= j);
      EXPECT_EQ(dates[i] > dates[j], i > j);
      EXPECT_EQ(dates[i] >= dates[j], i >= j);
      EXPECT_EQ(dates[i] == dates[j], i == j);
    }
  }
}

TEST(DateClock, TodayIsTheLocalDate) {
  StoppedClock const clock;
  EXPECT_EQ(XoDate(), XoDate(2021, 4, 15));
  XoDate date(1, 1, 1);
  EXPECT_EQ(&date.Today(), &date);
  EXPECT_EQ(date, XoDate(2021, 4, 15));
}

struct OpenDate : XoDate {
  OpenDate() : XoDate(0, 0, 0) {}
  using XoDate::divide;
  using XoDate::modulo;
};

TEST(DateDivision, GoesByMagnitudes) {
  OpenDate const date;
  EXPECT_EQ(date.divide(7, 3), 2);
  EXPECT_EQ(date.divide(-7, 3), -2);
  EXPECT_EQ(date.divide(7, -3), -2);
  EXPECT_EQ(date.divide(-7, -3), 2);
  EXPECT_EQ(date.modulo(7, 3), 1);
  EXPECT_EQ(date.modulo(-7, 3), -1);
  EXPECT_EQ(date.modulo(7, -3), -1);
  EXPECT_EQ(date.modulo(-7, -3), 1);
  EXPECT_EQ(date.divide(INT_MIN, -1), INT_MIN);
  EXPECT_EQ(date.divide(INT_MIN, 1), INT_MIN);
  EXPECT_EQ(date.modulo(INT_MIN, -1), 0);
}

}  // namespace
}  // namespace xo::test
