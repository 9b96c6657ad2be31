#include <bit>

#include "base/bytes.hpp"
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
// day number and date.

namespace {

/// The fields of a date, before they are cut to their widths.
struct DateFields {
  int year;
  int month;
  int day;
};

/// The whole days of so many months, 30.6001 of each, in fixed point with 16 bits behind the point.
constexpr unsigned DaysOfMonths(unsigned months) { return 2005408 * months >> 16; }
static_assert([] {
  for (unsigned months = 1; months <= 256; ++months) {
    if (DaysOfMonths(months) != kDaysOfMonth * months / kMonthParts) return false;
  }
  return true;
}());

// Masks stand in place of branches: no processor can foretell on which side of March, or of the
// reform of the calendar, the next date lies.

/// The number of a day whose year is reckoned in `Number`, without a sign if it has none.
template <class Number>
int NumberOfDayIn(Number year, unsigned month, unsigned day) {
  unsigned const ifOfYearBefore = month < 3 ? ~0U : 0;
  Number const y = year + static_cast<Number>(ifOfYearBefore);
  unsigned const m = month + 1 + (12 & ifOfYearBefore);
  Number const number =
      kQuarterDaysOfYear * y / 4 + static_cast<Number>(1720994 + day + DaysOfMonths(m));
  Number const c = y / 100;
  Number const ifGregorian = number >= kFirstGregorianSum ? ~Number{0} : 0;
  return static_cast<int>(number + ((c / 4 - c + 2) & ifGregorian));
}

int NumberOfDay(int year, unsigned month, unsigned day) {
  return year > 0 ? NumberOfDayIn(static_cast<unsigned>(year), month, day)
                  : NumberOfDayIn(year, month, day);
}

/// How many leap days more the Julian calendar has had after day number `number`.
template <class Wide>
Wide LeapDaysLeftOut(Wide number) {
  // (number + 1 - 1867216.25) / 36524.25
  Wide const p = (4 * number - 7468861) / kQuarterDaysOfCentury;
  Wide const ifGregorian = number >= kLastJulianNumber ? ~Wide{0} : 0;
  return (1 + p - p / 4) & ifGregorian;
}

/// The date of any day number.
DateFields FieldsOfDay(o_8b number) {
  o_8b const b = number + LeapDaysLeftOut(number) + 1525;
  // (b - 122.1) / 365.25
  o_8b const c = (20 * b - 2442) / 7305;
  // Of a year and a half at most, forward or back.
  o_8b const rest = b - kQuarterDaysOfYear * c / 4;
  o_8b const e = rest * kMonthParts / kDaysOfMonth;
  o_8b months = kDaysOfMonth * e;
  // Rounded down, not toward zero.
  if (months < 0) months -= kMonthParts - 1;
  int const day = static_cast<int>(rest - months / kMonthParts);
  int const month = static_cast<int>(e < 14 ? e - 1 : e - 13);
  return {static_cast<int>(c) - (month >= 3 ? 4716 : 4715), month, day};
}

/// The date of a day number that is not below 0 and whose year has room: the same steps, of which
/// none rounds a negative number.
d_Date CommonDate(unsigned number) {
  YearAndDay const date = JulianDate(4 * (number + LeapDaysLeftOut(number) + 1402) + 3);
  auto const year = static_cast<o_u2b>(date.year - 4716);
  auto const monthAndDay = std::bit_cast<o_u2b>(date.day);
  // Written as a whole, so that who reads a whole date need not wait for its parts.
  return std::bit_cast<d_Date>(year | static_cast<o_u4b>(monthAndDay) << 16);
}

}  // namespace

int d_Date::getAbsDate() const { return NumberOfDay(yearField, monthField, dayField); }

void d_Date::setAbsDate(int number) {
  if (static_cast<unsigned>(number) < unsigned{kLastDayNumber}) [[likely]] {
    *this = CommonDate(static_cast<unsigned>(number));
  } else {
    DateFields const fields = FieldsOfDay(number);
    yearField = static_cast<o_2b>(fields.year);
    monthField = static_cast<o_u1b>(fields.month);
    dayField = static_cast<o_u1b>(fields.day);
  }
}

// Day numbers wrap at 32 bits, however far a span reaches.
void d_Date::MoveBy(o_8b days) {
  setAbsDate(static_cast<int>(static_cast<o_u4b>(getAbsDate()) + static_cast<o_u4b>(days)));
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
