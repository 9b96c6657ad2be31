#pragma once

#include <cmath>
#include <limits>

#include "xoidxbounds.hpp"

namespace xo {

/// Whether both ends of an index are known.
inline bool HasBothEnds(XoIdxBounds const* range) {
  return range != nullptr && range->low != nullptr && range->high != nullptr;
}

inline constexpr double kLargestDouble = std::numeric_limits<double>::max();

/// `difference`, or the largest double where it is infinite or not a number, so that no estimate
/// is.
inline double FiniteDifference(double difference) {
  return std::isfinite(difference) ? difference : kLargestDouble;
}

/// Measure of the keys above, below or at a value, as `BoundRangeArea` adds them; 0 where that is
/// negative.
double AreaAbove(double valueHigh, double rangeLow, double rangeHigh, double unit);
double AreaBelow(double valueLow, double rangeLow, double rangeHigh, double unit);
double AreaEqual(double valueLow, double valueHigh, double rangeLow, double rangeHigh, double unit);

}  // namespace xo
