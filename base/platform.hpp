#pragma once

#include "clock.hpp"
#include "export.hpp"

/// The hooks through which the library reaches its surroundings. An embedding system, or a test,
/// installs its own with `XoExchangePlatform`; a null member stands for the built-in behaviour.
struct XoPlatform {
  /// A failed invariant: what failed, and where. The caller goes on with a safe result when this
  /// returns, and does not look at the answer. Built in: one line on standard error.
  int (*assertFailed)(char const* expression, char const* file, int line);
  /// A raw allocation of `size` bytes failed. It is not tried again, so a handler that cannot help
  /// should not return. Built in: one line on standard error.
  int (*memoryHandler)(unsigned long long size);
  /// Local date and time with nanoseconds; `btime::utcOffset` is to be set. Built in: the system
  /// clock.
  void (*localTime)(bdate& date, btime& time, int& nanoSeconds);
  /// The same in UTC.
  void (*utcTime)(bdate& date, btime& time, int& nanoSeconds);
  /// Minutes that local time is ahead of UTC, or `kTimeZoneUnknown`. Built in: the platform's zone
  /// data.
  int (*timeZoneMinutes)();
};

/// Puts the hooks of `next` in force and returns those in force before, as they were put there:
/// null for built-in behaviour, at first all of them. What it returns can be put back as it is.
/// Takes no lock: call it during set-up, while no other thread is in the library.
XO_EXPORT XoPlatform XoExchangePlatform(XoPlatform const& next);

/// Reports a failed invariant through `XoPlatform::assertFailed`, and returns its answer.
XO_EXPORT int XOLA_assert(char const* expression, char const* file, int line);

/// Reports that a raw allocation of `size` bytes failed, through `XoPlatform::memoryHandler`, and
/// returns its answer.
XO_EXPORT int XoCallMemoryHandler(unsigned long long size);
