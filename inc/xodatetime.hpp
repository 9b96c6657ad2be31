#pragma once

#include "base/export.hpp"
#include "xodate.hpp"
#include "xotime.hpp"

/// A point in time to the second. Arithmetic carries from the time into the date.
class XoDateTime : public xo::ValueSetters<XoDateTime> {
 public:
  XoDate date;
  XoTime time;

  /// Comparison flags under which wildcards are ordinary numbers.
  static constexpr unsigned short kStrict = 0xFFFF;

  /// The current local date and time.
  XO_EXPORT XoDateTime();
  /// The date given at the current local time.
  XO_EXPORT XoDateTime(XoDate const& dateGiven);
  /// The time given on the current local date.
  XO_EXPORT XoDateTime(XoTime const& timeGiven);
  constexpr XoDateTime(XoDate const& dateGiven, XoTime const& timeGiven)
      : date(dateGiven), time(timeGiven) {}
  constexpr XoDateTime(XoDateTime const&) = default;
  constexpr XoDateTime& operator=(XoDateTime const&) = default;
  /// Replaces the time and keeps the date.
  constexpr XoDateTime& operator=(XoTime const& timeGiven) {
    time = timeGiven;
    return *this;
  }

  /// Takes the current local time, then the current local date: at midnight the old time can stand
  /// with the new date.
  XO_EXPORT XoDateTime& Now();
  /// Takes UTC date and time, both of one moment.
  XO_EXPORT XoDateTime& NowUTC();

  // The distinguished values, made of those of date and time.
  static constexpr XoDateTime const& NullValue();
  static constexpr XoDateTime const& DefaultValue();
  static constexpr XoDateTime const& ZeroValue();
  static constexpr XoDateTime const& ClearValue();
  /// A second name of `ClearValue`, not of `NullValue`, and meant to be.
  static constexpr XoDateTime const& Null() { return ClearValue(); }
  constexpr int IsNullValue() const { return *this == NullValue() ? 1 : 0; }
  /// Whether the date is the default one: the time is not looked at.
  constexpr int IsDefaultValue() const { return date.IsDefaultValue(); }
  constexpr int IsZeroValue() const { return *this == ZeroValue() ? 1 : 0; }

  constexpr bool operator==(XoDateTime const& other) const {
    return date == other.date && time == other.time;
  }
  /// Not a truth value: the first difference of the fields that is not 0.
  constexpr int operator!=(XoDateTime const& other) const { return Compare(other); }
  /// The first difference of the fields, from the year down; 0 if there is none.
  constexpr int Compare(XoDateTime const& other) const { return Compare(other, kStrict); }
  /// The same; unless `flags` has `CmpOpNoWildcards`, fields that are -1 on either side are passed
  /// over.
  constexpr int Compare(XoDateTime const& other, unsigned short flags) const {
    return xo::FirstDifference(date.Compare(other.date, flags), time.Compare(other.time, flags));
  }

  /// Moves by `seconds`. The date always goes by way of its day number, so that one which is no
  /// date comes out as what its number stands for.
  constexpr void AddSeconds(int seconds);

  /// 1 when the fields are a date of the calendar and a time of day.
  constexpr int IsDateTime() const { return date.IsDate() & time.IsTime(); }
  constexpr int IsDaTime() const { return IsDateTime(); }

  // Shift by the present offset of local time from UTC; the second stays. Each returns 0, or
  // `kTimeZoneUnknown` with nothing changed.
  XO_EXPORT int ToLocalTime();
  XO_EXPORT int ToUTCTime();

  // Text, as told at `XoDate`; a null format means "%Y-%m-%dT%H:%M:%S".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  XO_EXPORT XoDateTime* ScanFromXoString(XoString& in, char const* format);

 private:
  constexpr void SetHourMinuteOfDay(int minutes);
  void ShiftMinutes(o_8b minutes);
};

static_assert(sizeof(XoDateTime) == 8);

namespace xo {

inline constexpr XoDateTime kNullDateTime(kNullDate, kNullTime);
inline constexpr XoDateTime kDefaultDateTime(kDefaultDate, kClearTime);
inline constexpr XoDateTime kZeroDateTime(kZeroDate, kClearTime);
inline constexpr XoDateTime kClearDateTime(kClearDate, kClearTime);

}  // namespace xo

constexpr XoDateTime const& XoDateTime::NullValue() { return xo::kNullDateTime; }
constexpr XoDateTime const& XoDateTime::DefaultValue() { return xo::kDefaultDateTime; }
constexpr XoDateTime const& XoDateTime::ZeroValue() { return xo::kZeroDateTime; }
constexpr XoDateTime const& XoDateTime::ClearValue() { return xo::kClearDateTime; }

constexpr void XoDateTime::AddSeconds(int seconds) {
  constexpr int kSecondsOfDay = 86400;
  int days = seconds / kSecondsOfDay;
  int const rest = seconds % kSecondsOfDay;
  // The time has no date to carry into: it went around the day when it moved the wrong way.
  XoTime moved = time;
  if (rest < 0) {
    moved -= -rest;
    if (moved > time) --days;
  } else {
    moved += rest;
    if (moved < time) ++days;
  }
  date += days;
  time = moved;
}

/// Takes hour and minute from minutes since midnight, over one day border at most.
constexpr void XoDateTime::SetHourMinuteOfDay(int minutes) {
  constexpr int kMinutesOfDay = 1440;
  if (minutes < 0) {
    --date;
    int const hours = minutes / 60;
    int const rest = minutes % 60;
    time.hour = static_cast<o_char>(rest == 0 ? hours + 24 : hours + 23);
    time.minute = static_cast<o_char>(rest == 0 ? 0 : rest + 60);
    return;
  }
  if (minutes >= kMinutesOfDay) {
    ++date;
    minutes -= kMinutesOfDay;
  }
  time.hour = static_cast<o_char>(minutes / 60);
  time.minute = static_cast<o_char>(minutes % 60);
}
