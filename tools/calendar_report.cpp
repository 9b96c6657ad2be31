#include "tools/calendar_report.hpp"

#include <fmt/core.h>

#include <algorithm>

#include "tools/text_table.hpp"

namespace xo::tool {
namespace {

/// A day whose number is known in both calendars, and that of the class `d_Date`.
constexpr int kNumberOf2000 = 2451544;

std::string YesOrNo(bool value) { return value ? "yes" : "no"; }

template <class Date>
std::string DateText(Date const& date) {
  XoString text;
  date.PrintToXoString(text, "%Y-%m-%d");
  return text.StrGet();
}

int NumberOf(d_Date const& date) { return (date != d_Date(2000, 1, 1)) + kNumberOf2000; }

/// The historical date of a day number of `d_Date` that is in `year` or somewhat more than a year
/// before or behind it.
d_Date DateOfNumber(int number, int year) {
  auto const base = static_cast<o_2b>(std::max(year - 1, -32768));
  return {base, static_cast<unsigned short>(number - NumberOf(d_Date(base, 1, 1)) + 1)};
}

std::string WeekdayOf(d_Date const& date) {
  constexpr char const* kNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
  // Negative day numbers have none.
  auto const day = static_cast<unsigned>(date.day_of_week());
  return day < std::size(kNames) ? kNames[day] : "-";
}

/// The date that `dateOf` gives for a Julian Day Number, where dates and numbers correspond.
template <class DateOf>
std::string SameDay(int number, DateOf dateOf) {
  return number < xo::kFirstDayNumber || number > xo::kLastDayNumber ? "-" : dateOf();
}

bool IsLeapYear(int year) { return XoDate(year, 2, 29).IsDate() != 0; }

}  // namespace

std::string WhyNoDate(XoDate const& date) {
  if (date.IsDate() != 0) return {};
  if (date.month < 1 || date.month > 12) return fmt::format("there is no month {}", +date.month);
  XoDate first = date;
  first.day = 1;
  return fmt::format("month {} has {} days", +date.month, first.daynxtmonth());
}

std::string WhyNoTime(XoTime const& time) {
  if (time.hour < 0 || time.hour > 23) return fmt::format("there is no hour {}", +time.hour);
  if (time.minute < 0 || time.minute > 59) {
    return fmt::format("there is no minute {}", +time.minute);
  }
  if (time.second < 0 || time.second > 59) {
    return fmt::format("there is no second {}", +time.second);
  }
  return {};
}

std::string CalendarReport(XoDate const& date) {
  d_Date const historical(date);
  int const number = date.dayabs();
  int const historicalNumber = NumberOf(historical);
  // The Julian Day Number is one more.
  int const apart = historicalNumber + 1 - number;
  bool const isHistorical = d_Date::is_valid_date(
      historical.year(), static_cast<unsigned short>(historical.month()), historical.day());
  TextTable table("ttt");
  table.Add({"calendar", "proleptic Gregorian", "historical"});
  table.Add({"class", "XoDate", "d_Date"});
  table.Add({"a date there", YesOrNo(date.IsDate() != 0), YesOrNo(isHistorical)});
  table.Add({"day number", fmt::format("{}", number), fmt::format("{}", historicalNumber)});
  table.Add(
      {"Julian Day Number", fmt::format("{}", number), fmt::format("{}", historicalNumber + 1)});
  table.Add({"weekday", XoDate::DayName(date.GetDayOfTheDate()), WeekdayOf(historical)});
  table.Add({"day of the year", fmt::format("{}", number - XoDate(date.year, 1, 1).dayabs() + 1),
             fmt::format("{}", historical.day_of_year())});
  table.Add({"leap year", YesOrNo(IsLeapYear(date.year)), YesOrNo(historical.is_leap_year())});
  table.Add(
      {"same day in the other",
       SameDay(number, [&] { return DateText(DateOfNumber(number - 1, date.year)); }),
       SameDay(historicalNumber + 1, [&] { return DateText(XoDate(historicalNumber + 1)); })});
  std::string const distance =
      apart == 0 ? "no day"
                 : fmt::format("{} {}", apart, apart == 1 || apart == -1 ? "day" : "days");
  table.Add({"days between them", distance, ""});
  return table.Text();
}

}  // namespace xo::tool
