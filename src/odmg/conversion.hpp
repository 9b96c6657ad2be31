#pragma once

#include <cmath>
#include <limits>

#include "xotypes.hpp"

/// Numbers with a fraction to whole ones, without undefined behaviour.
namespace xo {

/// `value` without its fraction, stopped at the greatest and least number; 0 for what is none.
inline o_8b Truncated(double value) {
  if (std::isnan(value)) return 0;
  constexpr double kTooGreat = 9223372036854775808.0;
  if (value >= kTooGreat) return std::numeric_limits<o_8b>::max();
  if (value < -kTooGreat) return std::numeric_limits<o_8b>::min();
  return static_cast<o_8b>(value);
}

inline constexpr int kDaySeconds = 86400;
inline constexpr int kHourSeconds = 3600;
inline constexpr int kMinuteSeconds = 60;

}  // namespace xo
