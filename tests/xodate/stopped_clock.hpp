#pragma once

#include <xotypemgr.hpp>

namespace xo::test {

/// The hooks of the clock, for the length of a scope.
class ClockHooks {
 public:
  explicit ClockHooks(XoPlatform const& hooks) : before(XoExchangePlatform(hooks)) {}
  ~ClockHooks() { XoExchangePlatform(before); }
  ClockHooks(ClockHooks const&) = delete;
  ClockHooks& operator=(ClockHooks const&) = delete;

 private:
  XoPlatform before;
};

/// A clock that stands still for the length of a scope: local time 2021-04-15 13:05:09.25, UTC
/// 2021-04-16 01:06:10 and one nanosecond, which no real zone has, and a zone to be chosen.
class StoppedClock {
 public:
  explicit StoppedClock(int minutes = 60) : hooks(Hooks()) { Zone() = minutes; }

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

  ClockHooks hooks;
};

/// A clock that goes on from the last second of a day to the first of the next with each look at
/// it, from 2021-04-15 23:59:59 on; UTC does the same a month later.
class MidnightClock {
 public:
  MidnightClock() : hooks(Hooks()) { Looks() = 0; }

  /// How often the clock was looked at.
  static int& Looks() {
    static int looks = 0;
    return looks;
  }

 private:
  template <unsigned char kMonth>
  static void Look(bdate& date, btime& time, int& nanoSeconds) {
    int const look = Looks()++;
    date = {2021, kMonth, static_cast<unsigned char>(15 + (look + 1) / 2)};
    time = look % 2 == 0 ? btime{23, 59, 59, 0} : btime{0, 0, 0, 0};
    nanoSeconds = look;
  }

  static XoPlatform Hooks() {
    XoPlatform hooks{};
    hooks.localTime = Look<4>;
    hooks.utcTime = Look<5>;
    return hooks;
  }

  ClockHooks hooks;
};

}  // namespace xo::test
