#include "base/platform.hpp"

#include <cstdio>

#include "base/system_clock.hpp"

namespace xo {
namespace {

int ReportAssertion(char const* expression, char const* file, int line) {
  std::fprintf(stderr, "%s(%d): assertion failed: %s\n", file != nullptr ? file : "?", line,
               expression != nullptr ? expression : "?");
  return 0;
}

int ReportMemoryExhausted(unsigned long long size) {
  std::fprintf(stderr, "out of memory: no room for %llu bytes\n", size);
  return 0;
}

constexpr XoPlatform kBuiltIn{ReportAssertion, ReportMemoryExhausted, SystemLocalTime,
                              SystemUtcTime, SystemTimeZoneMinutes};

/// The hooks as installed. Written by `XoExchangePlatform` alone, during set-up.
constinit XoPlatform installed{};

/// The installed hook, or the built-in one where there is none.
template <class Hook>
Hook InForce(Hook XoPlatform::*hook) {
  return installed.*hook != nullptr ? installed.*hook : kBuiltIn.*hook;
}

}  // namespace
}  // namespace xo

XoPlatform XoExchangePlatform(XoPlatform const& next) {
  XoPlatform const previous = xo::installed;
  xo::installed = next;
  return previous;
}

int XOLA_assert(char const* expression, char const* file, int line) {
  return xo::InForce(&XoPlatform::assertFailed)(expression, file, line);
}

int XoCallMemoryHandler(unsigned long long size) {
  return xo::InForce(&XoPlatform::memoryHandler)(size);
}

void bksGetHiresTime(bdate& date, btime& time, int& fraction) {
  xo::InForce (&XoPlatform::localTime)(date, time, fraction);
}

void bksGetHiresTimeUTC(bdate& date, btime& time, int& fraction) {
  xo::InForce (&XoPlatform::utcTime)(date, time, fraction);
}

void bksgetdate(bdate* date) {
  btime time{};
  int fraction = 0;
  bksGetHiresTime(*date, time, fraction);
}

void bksgettime(btime* time) {
  bdate date{};
  int fraction = 0;
  bksGetHiresTime(date, *time, fraction);
}

void bksgetsystemtime(btime* time, bdate* date) {
  int fraction = 0;
  bksGetHiresTimeUTC(*date, *time, fraction);
}

int bksgettimezone() { return xo::InForce(&XoPlatform::timeZoneMinutes)(); }
