#pragma once

#include "export.hpp"

/// A date as the clock gives it.
struct bdate {
  short year;           ///< of the proleptic Gregorian calendar
  unsigned char month;  ///< 1 to 12
  unsigned char day;    ///< 1 to 31
};

/// A time of day as the clock gives it.
struct btime {
  unsigned char hour;    ///< 0 to 23
  unsigned char minute;  ///< 0 to 59
  unsigned char second;  ///< 0 to 60
  int utcOffset;         ///< seconds that this clock is ahead of UTC; 0 for a UTC time
};

/// What `bksgettimezone` answers when the zone cannot be found out.
inline constexpr int kTimeZoneUnknown = -2171;

/// The clock operations may be called from any thread. No pointer may be null. They ask the hooks
/// of `XoPlatform`; the built-in hooks read the system clock and take the zone from the platform's
/// own zone data through the C library. The zone is the one in force at the moment of the call, so
/// summer time counts.

/// The local date.
XO_EXPORT void bksgetdate(bdate* date);
/// The local time of day.
XO_EXPORT void bksgettime(btime* time);
/// UTC time and date, both of one moment.
XO_EXPORT void bksgetsystemtime(btime* time, bdate* date);
/// Minutes that local time is ahead of UTC, or `kTimeZoneUnknown`.
XO_EXPORT int bksgettimezone();
/// Local date and time of one moment, with nanoseconds from 0 to 999999999.
XO_EXPORT void bksGetHiresTime(bdate& date, btime& time, int& fraction);
/// The same in UTC.
XO_EXPORT void bksGetHiresTimeUTC(bdate& date, btime& time, int& fraction);
