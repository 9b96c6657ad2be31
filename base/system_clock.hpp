#pragma once

#include "base/clock.hpp"

/// The built-in clock hooks of `XoPlatform`.
namespace xo {

void SystemLocalTime(bdate& date, btime& time, int& nanoSeconds);
void SystemUtcTime(bdate& date, btime& time, int& nanoSeconds);
int SystemTimeZoneMinutes();

}  // namespace xo
