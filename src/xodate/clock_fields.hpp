#pragma once

#include "base/clock.hpp"
#include "xotime.hpp"

/// What the clock of base services tells, as values.
namespace xo {

inline XoDate FieldsOf(bdate const& date) { return {date.year, date.month, date.day}; }
inline XoTime FieldsOf(btime const& time) { return {time.hour, time.minute, time.second}; }

/// Calls `shift` with the minutes that local time is ahead of UTC, and returns 0. Where these are
/// not known it does nothing and returns `kTimeZoneUnknown`.
template <class Shift>
int ShiftByZone(Shift shift) {
  int const minutes = bksgettimezone();
  if (minutes == kTimeZoneUnknown) return kTimeZoneUnknown;
  shift(minutes);
  return 0;
}

}  // namespace xo
