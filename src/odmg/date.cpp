#include <type_traits>

#include "base/clock.hpp"
#include "src/odmg/conversion.hpp"
#include "src/xodate/clock_fields.hpp"
#include "src/xodate/temporal_text.hpp"
#include "xoodmg.hpp"

using namespace xo;

namespace {

// The calendars change between 1582-10-04 and 1582-10-15, at these numbers.
constexpr int kFirstGregorianSum = 2299170;
constexpr int kLastJulianNumber = 2299160;

constexpr char kFormat[] = "%a %b %e";

// The factors of the conversions, as fractions: 365.25 days of a year, 36524.25 of a century and
// 30.6001 of a month.
constexpr int kQuarterDaysOfYear = 1461;
constexpr int kQuarterDaysOfCentury = 146097;
constexpr int kMonthParts = 10000;  ///< of a day
constexpr int kDaysOfMonth = 306001;

}  // namespace

d_Date::d_Date() : d_Date(Blank{}) {
  bdate today{};
  bksgetdate(&today);
  *this = FieldsOf(today);
}

d_Date::d_Date(short year, unsigned short month, unsigned short day)
    : yearField(year), monthField(static_cast<o_u1b>(month)), dayField(static_cast<o_u1b>(day)) {}

d_Date::d_Date(short year, unsigned short dayOfYear) : d_Date(year, 1, 1) {
  setAbsDate(getAbsDate() + dayOfYear - 1);
}

d_Date::d_Date(XoDate const& source) : d_Date(Blank{}) { *this = source; }
d_Date::d_Date(XoDateTime const& source) : d_Date(source.date) {}
d_Date::d_Date(d_Timestamp const& source) : d_Date(source.dateField) {}

d_Date& d_Date::operator=(XoDate const& source) {
  yearField = source.year;
  monthField = static_cast<o_u1b>(source.month);
  dayField = static_cast<o_u1b>(source.day);
  return *this;
}
d_Date& d_Date::operator=(XoDateTime const& source) { return *this = source.date; }
d_Date& d_Date::operator=(d_Timestamp const& source) { return *this = source.dateField; }

d_Date d_Date::current() { return {}; }

// The conversions of the Julian Day Number after Meeus, "Astronomical Algorithms", who multiplies
// and divides by decimal fractions and truncates, toward zero. No quotient comes so close to a
// whole number that a double would round it to that, so that integers truncate alike for every
// day number and date. Both calendars are reckoned before one is chosen, so that the processor need
// not guess which.

namespace {

/// The fields of a date, before they are cut to their widths.
struct DateFields {
  int year;
  int month;
  int day;
};

int NumberOfDay(int year, int month, int day) {
  bool const isOfYearBefore = month < 3;
  int const y = isOfYearBefore ? year - 1 : year;
  int const m = isOfYearBefore ? month + 13 : month + 1;
  int const number = day + kQuarterDaysOfYear * y / 4 + 1720994 + kDaysOfMonth * m / kMonthParts;
  int const c = y / 100;
  return number + (number >= kFirstGregorianSum ? c / 4 - c + 2 : 0);
}

/// The date of a day number, in numbers of a type that holds twenty times that of its Julian day.
template <class Wide>
DateFields FieldsOfDayIn(Wide number) {
  Wide a = number + 1;
  // (a - 1867216.25) / 36524.25
  Wide const p = (4 * a - 7468865) / kQuarterDaysOfCentury;
  a += a > kLastJulianNumber ? 1 + p - p / 4 : 0;
  Wide const b = a + 1524;
  // (b - 122.1) / 365.25
  Wide const c = (20 * b - 2442) / 7305;
  // Of a year and a half at most, forward or back.
  Wide const rest = b - kQuarterDaysOfYear * c / 4;
  Wide const e = rest * kMonthParts / kDaysOfMonth;
  Wide months = kDaysOfMonth * e;
  if constexpr (std::is_signed_v<Wide>) {
    // Rounded down, not toward zero.
    if (months < 0) months -= kMonthParts - 1;
  }
  int const day = static_cast<int>(rest - months / kMonthParts);
  int const month = static_cast<int>(e < 14 ? e - 1 : e - 13);
  return {static_cast<int>(c) - (month >= 3 ? 4716 : 4715), month, day};
}

DateFields FieldsOfDay(int number) {
  // Days of 500,000 years need no more than half the width, and no sign.
  constexpr unsigned kFewDays = 200000000;
  auto const positive = static_cast<unsigned>(number);
  return positive < kFewDays ? FieldsOfDayIn(positive) : FieldsOfDayIn(o_8b{number});
}

}  // namespace

int d_Date::getAbsDate() const { return NumberOfDay(yearField, monthField, dayField); }

void d_Date::setAbsDate(int number) {
  DateFields const fields = FieldsOfDay(number);
  yearField = static_cast<o_2b>(fields.year);
  monthField = static_cast<o_u1b>(fields.month);
  dayField = static_cast<o_u1b>(fields.day);
}

// Day numbers wrap at 32 bits, however far a span reaches.
void d_Date::MoveBy(o_8b days) {
  int const number = NumberOfDay(yearField, monthField, dayField);
  setAbsDate(static_cast<int>(static_cast<o_u4b>(number) + static_cast<o_u4b>(days)));
}

d_Date::Weekday d_Date::day_of_week() const { return static_cast<Weekday>((getAbsDate() + 2) % 7); }

unsigned short d_Date::day_of_year() const {
  return static_cast<unsigned short>(1 + getAbsDate() - d_Date(yearField, 1, 1).getAbsDate());
}

bool d_Date::is_leap_year(short year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0 || year < 1600);
}

int d_Date::days_in_month(short year, unsigned short month) {
  if (month < 1 || month > 12) return 0;
  if (month == February) return is_leap_year(year) ? 29 : 28;
  return month == April || month == June || month == September || month == November ? 30 : 31;
}

int d_Date::days_in_year(short year) { return is_leap_year(year) ? 366 : 365; }

bool d_Date::is_valid_date(short year, unsigned short month, unsigned short day) {
  // The days that the change of calendar left out.
  if (year == 1582 && month == October && day > 4 && day < 15) return false;
  return day >= 1 && int{day} <= days_in_month(year, month);
}

bool d_Date::is_between(d_Date const& first, d_Date const& last) const {
  return first <= *this && *this <= last;
}

d_Date& d_Date::next(Weekday weekday) {
  int days = weekday - day_of_week();
  if (days < 1) days += 7;
  MoveBy(days);
  return *this;
}

d_Date& d_Date::previous(Weekday weekday) {
  int days = day_of_week() - weekday;
  if (days < 1) days += 7;
  MoveBy(-o_8b{days});
  return *this;
}

d_Date& d_Date::operator++() {
  MoveBy(1);
  return *this;
}
d_Date d_Date::operator++(int) {
  d_Date const before = *this;
  ++*this;
  return before;
}
d_Date& d_Date::operator--() {
  MoveBy(-1);
  return *this;
}
d_Date d_Date::operator--(int) {
  d_Date const before = *this;
  --*this;
  return before;
}

d_Date& d_Date::operator+=(d_Interval const& span) {
  if (std::isfinite(span.Seconds())) MoveBy(span.day());
  return *this;
}
d_Date& d_Date::operator-=(d_Interval const& span) {
  if (std::isfinite(span.Seconds())) MoveBy(-o_8b{span.day()});
  return *this;
}

int operator!=(d_Date const& a, d_Date const& b) { return a.getAbsDate() - b.getAbsDate(); }

XoString& d_Date::PrintToXoString(XoString& out, char const* format) const {
  XoDateTime const record(XoDate(yearField, monthField, dayField), XoTime(0, 0, 0));
  return PrintValue(out, XoDateTimeN(record, 0), format != nullptr ? format : kFormat);
}

d_Date* d_Date::ScanFromXoString(XoString& in, char const* format) {
  XoDateTimeN record = XoDateTimeN::ClearValue();
  bool const isWhole = ScanTemporal(record, in, format != nullptr ? format : kFormat);
  *this = record.Date();
  return isWhole ? this : nullptr;
}
