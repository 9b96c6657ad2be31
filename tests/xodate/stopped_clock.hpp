#pragma once

#include <xotypemgr.hpp>

namespace xo::test {

/// A clock that stands still for the length of a scope: local time 2021-04-15 13:05:09.25, UTC
/// 2021-04-16 01:06:10 and one nanosecond, which no real zone has, and a zone to be chosen.
class StoppedClock {
 public:
  explicit StoppedClock(int minutes = 60) : before(XoExchangePlatform(Hooks())) {
    Zone() = minutes;
  }
  ~StoppedClock() { XoExchangePlatform(before); }
  StoppedClock(StoppedClock const&) = delete;
  StoppedClock& operator=(StoppedClock const&) = delete;

  /// Minutes that local time is ahead of UTC, or `kTimeZoneUnknown`.
  static int& Zone() {
    static int zone = 0;
    return zone;
  }

 private:
  static XoPlatform Hooks() {
    XoPlatform hooks{};
    hooks.localTime = [](bdate& date, btime& time, int& nanoSeconds) {
      date = {2021, 4, 15};
      time = {13, 5, 9, 3600};
      nanoSeconds = 250000000;
    };
    hooks.utcTime = [](bdate& date, btime& time, int& nanoSeconds) {
      date = {2021, 4, 16};
      time = {1, 6, 10, 0};
      nanoSeconds = 1;
    };
    hooks.timeZoneMinutes = [] { return Zone(); };
    return hooks;
  }

  XoPlatform before;
};

}  // namespace xo::test
