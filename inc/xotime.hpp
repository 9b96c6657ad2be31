#pragma once

#include "base/export.hpp"
#include "xodate.hpp"

/// A time of day to the second, without a date: arithmetic wraps around the day.
///
/// As in `XoDate`, a field of -1 is a wildcard, and nothing is checked but by `IsTime`.
class XoTime : public xo::ValueSetters<XoTime> {
 public:
  o_char hour;    ///< 0 to 23
  o_char minute;  ///< 0 to 59
  o_char second;  ///< 0 to 59

  /// The current local time.
  XO_EXPORT XoTime();
  /// As `SetSecondsAbs`.
  constexpr XoTime(int seconds) : hour(0), minute(0), second(0) { SetSecondsAbs(seconds); }
  /// The fields as given, cut to their widths.
  constexpr XoTime(int hourGiven, int minuteGiven, int secondGiven)
      : hour(static_cast<o_char>(hourGiven)),
        minute(static_cast<o_char>(minuteGiven)),
        second(static_cast<o_char>(secondGiven)) {}
  /// Takes the current local time.
  XO_EXPORT XoTime& Now();
  /// Takes the current UTC time.
  XO_EXPORT XoTime& NowUTC();

  // The distinguished values, of which all but the first are 00:00:00.
  static constexpr XoTime const& NullValue();  ///< no value: -128 in each field
  static constexpr XoTime const& DefaultValue();
  static constexpr XoTime const& ZeroValue();
  static constexpr XoTime const& ClearValue();
  constexpr int IsNullValue() const { return *this == NullValue() ? 1 : 0; }
  constexpr int IsDefaultValue() const { return *this == DefaultValue() ? 1 : 0; }
  constexpr int IsZeroValue() const { return *this == ZeroValue() ? 1 : 0; }

  /// Splits a count of seconds. It does not wrap: a day or more gives an hour of 24 or beyond, cut
  /// to its width, and a negative count gives negative fields.
  constexpr void SetSecondsAbs(int seconds);
  /// Seconds since midnight.
  constexpr operator int() const { return (hour * 60 + minute) * 60 + second; }

  // Arithmetic in seconds, which wraps around the day. The fields are added in 8 bits, so that a
  // shift of 128 hours or more can overflow before it is wrapped, and midnight less an exact number
  // of days is hour 24.
  constexpr XoTime operator+(int seconds) const;
  constexpr XoTime operator-(int seconds) const { return *this + xo::WrappingNegation(seconds); }
  constexpr XoTime operator-(XoTime const& other) const { return *this - static_cast<int>(other); }
  constexpr XoTime& operator+=(int seconds) { return *this = *this + seconds; }
  constexpr XoTime& operator-=(int seconds) { return *this = *this - seconds; }
  constexpr XoTime& operator++() { return *this += 1; }
  constexpr XoTime& operator--() { return *this -= 1; }

  constexpr bool operator==(XoTime const& other) const {
    return hour == other.hour && minute == other.minute && second == other.second;
  }
  /// Not a truth value: the first difference of hour, minute and second that is not 0.
  constexpr int operator!=(XoTime const& other) const;
  constexpr bool operator<(XoTime const& other) const { return (*this != other) < 0; }
  constexpr bool operator<=(XoTime const& other) const { return (*this != other) <= 0; }
  constexpr bool operator>(XoTime const& other) const { return (*this != other) > 0; }
  constexpr bool operator>=(XoTime const& other) const { return (*this != other) >= 0; }
  /// The same difference; unless `flags` has `CmpOpNoWildcards`, fields that are -1 on either side
  /// are passed over.
  constexpr int Compare(XoTime const& other, unsigned short flags) const;

  /// 1 when the fields are a time of day.
  constexpr int IsTime() const;

  // Shift by the present offset of local time from UTC. There is no date, so a shift over midnight
  // is lost. Each returns 0, or `kTimeZoneUnknown` with the time as it was.
  XO_EXPORT int ToLocalTime();
  XO_EXPORT int ToUTCTime();

  // Text, as told at `XoDate`; a null format means "%H:%M:%S".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  XO_EXPORT XoTime* ScanFromXoString(XoString& in, char const* format);
};

static_assert(sizeof(XoTime) == 3);

namespace xo {

inline constexpr XoTime kNullTime(-128, -128, -128);
inline constexpr XoTime kClearTime(0, 0, 0);

}  // namespace xo

constexpr XoTime const& XoTime::NullValue() { return xo::kNullTime; }
constexpr XoTime const& XoTime::DefaultValue() { return xo::kClearTime; }
constexpr XoTime const& XoTime::ZeroValue() { return xo::kClearTime; }
constexpr XoTime const& XoTime::ClearValue() { return xo::kClearTime; }

constexpr void XoTime::SetSecondsAbs(int seconds) {
  hour = static_cast<o_char>(seconds / 3600);
  minute = static_cast<o_char>(seconds % 3600 / 60);
  second = static_cast<o_char>(seconds % 60);
}

constexpr XoTime XoTime::operator+(int seconds) const {
  XoTime sum = *this;
  int const minutes = seconds / 60;
  int const hours = minutes / 60;
  // Every step is cut to 8 bits, and the steps stay in this order: that decides what a shift comes
  // to which overflows a field.
  sum.hour = static_cast<o_char>(sum.hour + static_cast<o_char>(hours));
  sum.minute = static_cast<o_char>(sum.minute + (minutes - 60 * hours));
  sum.second = static_cast<o_char>(sum.second + (seconds - 60 * minutes));
  if (sum.second >= 60) {
    sum.second = static_cast<o_char>(sum.second - 60);
    sum.minute = static_cast<o_char>(sum.minute + 1);
  } else if (sum.second < 0) {
    sum.second = static_cast<o_char>(sum.second + 60);
    sum.minute = static_cast<o_char>(sum.minute - 1);
  }
  if (sum.minute >= 60) {
    sum.minute = static_cast<o_char>(sum.minute - 60);
    sum.hour = static_cast<o_char>(sum.hour + 1);
  } else if (sum.minute < 0) {
    sum.minute = static_cast<o_char>(sum.minute + 60);
    sum.hour = static_cast<o_char>(sum.hour - 1);
  }
  if (sum.hour >= 24) {
    sum.hour = static_cast<o_char>(sum.hour - 24 * (sum.hour / 24));
  } else if (sum.hour < 0) {
    // An exact negative multiple of 24 gives 24, which is no hour of a day, and is to stay.
    sum.hour = static_cast<o_char>(sum.hour + 24 * (1 - sum.hour / 24));
  }
  return sum;
}

constexpr int XoTime::operator!=(XoTime const& other) const {
  return xo::FirstDifference(hour - other.hour, minute - other.minute, second - other.second);
}

constexpr int XoTime::Compare(XoTime const& other, unsigned short flags) const {
  return xo::FirstDifference(xo::FieldDifference(hour, other.hour, flags),
                             xo::FieldDifference(minute, other.minute, flags),
                             xo::FieldDifference(second, other.second, flags));
}

constexpr int XoTime::IsTime() const {
  auto const isWithin = [](o_char field, unsigned last) {
    return static_cast<o_u1b>(field) <= last;
  };
  return isWithin(hour, 23) && isWithin(minute, 59) && isWithin(second, 59) ? 1 : 0;
}
