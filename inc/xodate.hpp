#pragma once

#include <array>
#include <cstddef>

#include "base/export.hpp"
#include "base/wrapping.hpp"
#include "xostring.hpp"
#include "xotypes.hpp"
#include "xovaluesetters.hpp"

/// Days of the week, as `XoDate::GetDayOfTheDate` gives them.
enum XoDaysOfTheWeek : int {
  XoMonday = 0,
  XoTuesday = 1,
  XoWednesday = 2,
  XoThursday = 3,
  XoFriday = 4,
  XoSaturday = 5,
  XoSunday = 6,
};

/// A calendar date.
///
/// The calendar is the proleptic Gregorian one: its leap-year rule runs unchanged through all
/// years, counted astronomically, so that there is a year 0. Date arithmetic goes by the Julian Day
/// Number, which `dayabs` and `dateabs` convert from and to.
///
/// A field may hold -1, the wildcard: it makes the value a pattern, which prints as "*", and which
/// `Compare` matches with every value of the field. Nothing is checked on construction or
/// arithmetic; `IsDate` tells whether the fields are a real date.
class XoDate : public xo::ValueSetters<XoDate> {
 public:
  o_2b year;     ///< astronomical year
  o_char month;  ///< 1 to 12
  o_char day;    ///< 1 to 31

  /// The current local date.
  XO_EXPORT XoDate();
  /// The date with this Julian Day Number.
  constexpr XoDate(int dayNumber) : year(0), month(0), day(0) { dateabs(dayNumber); }
  /// The fields as given, cut to their widths.
  constexpr XoDate(int yearGiven, int monthGiven, int dayGiven)
      : year(static_cast<o_2b>(yearGiven)),
        month(static_cast<o_char>(monthGiven)),
        day(static_cast<o_char>(dayGiven)) {}
  /// Takes the current local date.
  XO_EXPORT XoDate& Today();

  // The distinguished values.
  static constexpr XoDate const& NullValue();     ///< no value: -32768, -128, -128
  static constexpr XoDate const& DefaultValue();  ///< -4713-11-24, whose day number is 0
  static constexpr XoDate const& ZeroValue();     ///< 0000-01-01
  static constexpr XoDate const& ClearValue();    ///< all fields 0, which is no valid date
  constexpr int IsNullValue() const { return *this == NullValue() ? 1 : 0; }
  constexpr int IsDefaultValue() const { return *this == DefaultValue() ? 1 : 0; }
  constexpr int IsZeroValue() const { return *this == ZeroValue() ? 1 : 0; }

  // Day numbers.
  /// The Julian Day Number of the fields. Month 13 is month 1 of the year after.
  constexpr int dayabs() const;
  /// Takes the date with this day number. Exact from -32044 (-4800-03-01) on, as far as the year
  /// has room.
  constexpr XoDate& dateabs(int dayNumber);
  constexpr operator int() const { return dayabs(); }

  // Arithmetic in days, by way of the day number, which wraps at 32 bits.
  constexpr XoDate operator+(int days) const { return {xo::Wrap32(o_8b{dayabs()} + days)}; }
  constexpr XoDate operator-(int days) const { return {xo::Wrap32(o_8b{dayabs()} - days)}; }
  constexpr int operator-(XoDate const& other) const { return dayabs() - other.dayabs(); }
  constexpr XoDate& operator+=(int days) { return *this = *this + days; }
  constexpr XoDate& operator-=(int days) { return *this = *this - days; }
  constexpr XoDate& operator++() { return *this += 1; }
  constexpr XoDate& operator--() { return *this -= 1; }

  // Comparison goes by the fields, so that it holds for values that are no dates as well.
  constexpr bool operator==(XoDate const& other) const {
    return year == other.year && month == other.month && day == other.day;
  }
  /// Not a truth value: the first difference of year, month and day that is not 0.
  constexpr int operator!=(XoDate const& other) const;
  constexpr bool operator<(XoDate const& other) const { return (*this != other) < 0; }
  constexpr bool operator<=(XoDate const& other) const { return (*this != other) <= 0; }
  constexpr bool operator>(XoDate const& other) const { return (*this != other) > 0; }
  constexpr bool operator>=(XoDate const& other) const { return (*this != other) >= 0; }
  /// The same difference; unless `flags` has `CmpOpNoWildcards`, fields that are -1 on either side
  /// are passed over.
  constexpr int Compare(XoDate const& other, unsigned short flags) const;

  // The calendar.
  /// 1 when the fields are a date of the calendar. The year is not looked at.
  constexpr int IsDate() const;
  /// Days from this date to the first of the following month.
  constexpr int daynxtmonth() const { return XoDate(year, month + 1, 1) - *this; }
  constexpr int IsLastDayOfTheMonth() const { return daynxtmonth() == 1 ? 1 : 0; }
  /// The weekday. From year 1 on it follows the day number; before, and for months that there are
  /// not, it is what Zeller's congruence gives.
  constexpr XoDaysOfTheWeek GetDayOfTheDate() const;
  constexpr XoDaysOfTheWeek DayOfTheDate() { return GetDayOfTheDate(); }
  /// Name of the weekday.
  XO_EXPORT XoString PrintDayOfTheDate() const;
  /// Its number in decimal: another answer than a constant object gives, and meant to be.
  XO_EXPORT XoString PrintDayOfTheDate();
  /// Name of a day, or "no day" for what is none.
  XO_EXPORT static char const* DayName(XoDaysOfTheWeek day);
  /// Name of a month from 1 to 12, or null. The first two lack their last letter, as texts that
  /// were printed so must be read again.
  XO_EXPORT static char const* MonthName(int month);

  // Text, in the format language of docs/formats-temporal.md.
  /// Prints to `out` and returns it; a null format means "%Y-%m-%d".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  /// Reads from `in`, with the same default. Returns this, or null when the text ended too early;
  /// the fields that were read are taken even then, and all others are 0.
  XO_EXPORT XoDate* ScanFromXoString(XoString& in, char const* format);

 protected:
  /// The quotient of the magnitudes, negated when exactly one of the arguments is negative.
  constexpr int divide(int a, int b) const;
  /// The remainder of the magnitudes under that same rule for its sign.
  constexpr int modulo(int a, int b) const;

 private:
  constexpr bool IsInFastRange() const;
  constexpr int FastDayNumber() const;
  constexpr int StatedDayNumber() const;
  constexpr XoDate& TakeFast(unsigned daysSinceFirst);
  constexpr XoDate& TakeStated(int dayNumber);
};

static_assert(sizeof(XoDate) == 4);

namespace xo {

inline constexpr XoDate kNullDate(-32768, -128, -128);
inline constexpr XoDate kDefaultDate(-4713, 11, 24);
inline constexpr XoDate kZeroDate(0, 1, 1);
inline constexpr XoDate kClearDate(0, 0, 0);

/// What marks a field as a wildcard.
inline constexpr int kWildcard = -1;

/// The first difference of the fields of two values that are given pairwise; 0 if there is none.
template <class... Differences>
constexpr int FirstDifference(int first, Differences... others) {
  if constexpr (sizeof...(others) == 0) {
    return first;
  } else {
    return first != 0 ? first : FirstDifference(others...);
  }
}

/// Difference of two fields, which is 0 where wildcards count and one of them is one.
constexpr int FieldDifference(int a, int b, unsigned short flags) {
  bool const isPassedOver = (flags & CmpOpNoWildcards) == 0 && (a == kWildcard || b == kWildcard);
  return isPassedOver ? 0 : a - b;
}

/// The years that a period of the Gregorian calendar repeats after, counted from one that began
/// before every date that converts exactly.
inline constexpr int kFirstYear = -4800;
/// Day numbers of -4800-03-01 and 32767-12-31, between which dates and numbers correspond.
inline constexpr int kFirstDayNumber = -32044;
inline constexpr int kLastDayNumber = 13689325;

struct MonthAndDay {
  o_char month;
  o_char day;
};

/// Month and day of each day of a year that is counted from 1 March, so that a leap day is its
/// last.
inline constexpr auto kDaysFromMarch = [] {
  constexpr int kLengths[] = {31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31, 29};
  std::array<MonthAndDay, 366> days{};
  std::size_t next = 0;
  for (int index = 0; index < 12; ++index) {
    for (int day = 1; day <= kLengths[index]; ++day) {
      days[next++] = {static_cast<o_char>((index + 2) % 12 + 1), static_cast<o_char>(day)};
    }
  }
  return days;
}();

struct YearAndDay {
  unsigned year;
  MonthAndDay day;
};

/// The date of the Julian calendar so many quarters of a day, the time of day counted as three of
/// them, after 1 March of its year 0. Exact for 500,000 years.
///
/// Neri and Schneider, "Euclidean affine functions and their application to calendar algorithms",
/// Software: Practice and Experience 53 (2023) 937, with a look-up for the last step.
constexpr YearAndDay JulianDate(unsigned quarterDays) {
  // Quarters of days in years of 1461 of them, in fixed point with 40 bits behind the point, of
  // which the day of the year is left when the year is taken away.
  constexpr unsigned kFraction = 40;
  constexpr o_u8b kOne = o_u8b{1} << kFraction;
  o_u8b const years = quarterDays * (kOne / 1461 + 1);
  auto const dayOfYear = static_cast<unsigned>((years % kOne * 1461) >> (kFraction + 2));
  // From the 306th day on it is January or February. Whether it is cannot be foreseen, so that is
  // worked out without a branch.
  unsigned const nextYear = (dayOfYear + (1024 - 306)) >> 10;
  return {static_cast<unsigned>(years >> kFraction) + nextYear, kDaysFromMarch[dayOfYear]};
}

}  // namespace xo

constexpr XoDate const& XoDate::NullValue() { return xo::kNullDate; }
constexpr XoDate const& XoDate::DefaultValue() { return xo::kDefaultDate; }
constexpr XoDate const& XoDate::ZeroValue() { return xo::kZeroDate; }
constexpr XoDate const& XoDate::ClearValue() { return xo::kClearDate; }

constexpr int XoDate::operator!=(XoDate const& other) const {
  return xo::FirstDifference(year - other.year, month - other.month, day - other.day);
}

constexpr int XoDate::Compare(XoDate const& other, unsigned short flags) const {
  return xo::FirstDifference(xo::FieldDifference(year, other.year, flags),
                             xo::FieldDifference(month, other.month, flags),
                             xo::FieldDifference(day, other.day, flags));
}

constexpr int XoDate::divide(int a, int b) const {
  unsigned const magnitudeA = a < 0 ? 0U - static_cast<unsigned>(a) : static_cast<unsigned>(a);
  unsigned const magnitudeB = b < 0 ? 0U - static_cast<unsigned>(b) : static_cast<unsigned>(b);
  unsigned const quotient = magnitudeA / magnitudeB;
  return static_cast<int>((a < 0) != (b < 0) ? 0U - quotient : quotient);
}

// The sign is not the usual remainder's: modulo(-7, -3) is 1.
constexpr int XoDate::modulo(int a, int b) const {
  unsigned const magnitudeA = a < 0 ? 0U - static_cast<unsigned>(a) : static_cast<unsigned>(a);
  unsigned const magnitudeB = b < 0 ? 0U - static_cast<unsigned>(b) : static_cast<unsigned>(b);
  unsigned const remainder = magnitudeA % magnitudeB;
  return static_cast<int>((a < 0) != (b < 0) ? 0U - remainder : remainder);
}

/// Whether no step of the conversion meets a negative number. Month 13 is within.
constexpr bool XoDate::IsInFastRange() const {
  return static_cast<unsigned>(month - 1) < 13U && year > xo::kFirstYear;
}

/// Neri and Schneider, "Euclidean affine functions and their application to calendar algorithms",
/// Software: Practice and Experience 53 (2023) 937: years begin in March, the days before a month
/// are a linear function of it.
constexpr int XoDate::FastDayNumber() const {
  bool const isOfYearBefore = month < 3;
  auto const y = static_cast<unsigned>(year - xo::kFirstYear - (isOfYearBefore ? 1 : 0));
  auto const m = static_cast<unsigned>(month + (isOfYearBefore ? 12 : 0));
  unsigned const century = y / 100;
  unsigned const days = 1461 * y / 4 - century + century / 4 + (979 * m - 2919) / 32;
  return static_cast<int>(days) + day + (xo::kFirstDayNumber - 1);
}

/// Fliegel and Van Flandern, Communications of the ACM 11 (1968) 657, for any fields.
constexpr int XoDate::StatedDayNumber() const {
  int const a = (month - 14) / 12;
  int const b = year + 4800 + a;
  return day - 32075 + (1461 * b) / 4 + (367 * (month - 2 - 12 * a)) / 12 -
         (3 * ((b + 100) / 100)) / 4;
}

constexpr int XoDate::dayabs() const {
  return IsInFastRange() ? FastDayNumber() : StatedDayNumber();
}

/// After the same authors: adding the leap days that full centuries leave out makes the day one of
/// the Julian calendar, whose years need no century.
constexpr XoDate& XoDate::TakeFast(unsigned daysSinceFirst) {
  unsigned const century = (4 * daysSinceFirst + 3) / 146097;
  auto const date = xo::JulianDate(4 * (daysSinceFirst + century - century / 4) + 3);
  year = static_cast<o_2b>(static_cast<int>(date.year) + xo::kFirstYear);
  month = date.day.month;
  day = date.day.day;
  return *this;
}

/// Fliegel and Van Flandern's inverse, for any number: its steps wrap at 32 bits, and below the
/// first day its divisions, which truncate, give dates that are off.
constexpr XoDate& XoDate::TakeStated(int dayNumber) {
  using xo::Wrap32;
  int l = Wrap32(o_8b{dayNumber} + 68569);
  int const c = Wrap32(o_8b{4} * l) / 146097;
  l = Wrap32(o_8b{l} - Wrap32(o_8b{146097} * c + 3) / 4);
  int const i = Wrap32(4000 * (o_8b{l} + 1)) / 1461001;
  l = Wrap32(o_8b{l} - Wrap32(o_8b{1461} * i) / 4 + 31);
  int const j = Wrap32(o_8b{80} * l) / 2447;
  day = static_cast<o_char>(l - Wrap32(o_8b{2447} * j) / 80);
  int const k = j / 11;
  month = static_cast<o_char>(j + 2 - 12 * k);
  year = static_cast<o_2b>(100 * (c - 49) + i + k);
  return *this;
}

constexpr XoDate& XoDate::dateabs(int dayNumber) {
  auto const daysSinceFirst =
      static_cast<unsigned>(dayNumber) - static_cast<unsigned>(xo::kFirstDayNumber);
  constexpr auto kLast = static_cast<unsigned>(xo::kLastDayNumber - xo::kFirstDayNumber);
  return daysSinceFirst <= kLast ? TakeFast(daysSinceFirst) : TakeStated(dayNumber);
}

constexpr int XoDate::IsDate() const {
  bool const isInRange =
      static_cast<unsigned>(day - 1) < 31U && static_cast<unsigned>(month - 1) < 12U;
  return isInRange && daynxtmonth() > 0 ? 1 : 0;
}

constexpr XoDaysOfTheWeek XoDate::GetDayOfTheDate() const {
  constexpr int kDays = 7;
  if (year >= 1 && static_cast<unsigned>(month - 1) < 12U) {
    // Day number 0 was a Monday, and from year 1 on no number is negative.
    return static_cast<XoDaysOfTheWeek>(static_cast<unsigned>(FastDayNumber()) % kDays);
  }
  // Zeller's congruence, with divisions that truncate: January and February count to the year
  // before.
  int const y = year + (month - 14) / 12;
  int const m = (month + 10) - 12 * ((month + 10) / 13);
  int const k = (13 * m - 1) / 5;
  int const w = k + 77 + day - 2 * (y / 100) + y / 400 + (5 * (y % 100)) / 4;
  int remainder = w % kDays;
  if (remainder < 0 && year >= 1) remainder += kDays;
  // A negative remainder of the years before stays Sunday: they do not follow the day number.
  return remainder <= 0 ? XoSunday : static_cast<XoDaysOfTheWeek>(remainder - 1);
}
