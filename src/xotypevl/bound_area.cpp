#include "src/xotypevl/bound_area.hpp"

#include <algorithm>
#include <cstring>

#include "base/allocation.hpp"
#include "xoidxbounds.hpp"

namespace xo {

double AreaAbove(double valueHigh, double rangeLow, double rangeHigh, double unit) {
  double const base = rangeLow > valueHigh ? rangeLow - unit : valueHigh;
  return std::max(FiniteDifference(rangeHigh - base), 0.0);
}

double AreaBelow(double valueLow, double rangeLow, double rangeHigh, double unit) {
  double const top = valueLow > rangeHigh ? rangeHigh + unit : valueLow;
  return std::max(FiniteDifference(top - rangeLow), 0.0);
}

double AreaEqual(double valueLow, double valueHigh, double rangeLow, double rangeHigh,
                 double unit) {
  // The lesser and the greater of two, one of which is not a number, are not numbers either.
  double const top = std::isnan(rangeHigh) ? rangeHigh : std::min(valueHigh, rangeHigh);
  double const base = std::isnan(rangeLow) ? rangeLow : std::max(valueLow, rangeLow);
  double const difference = top - base;
  return std::max(FiniteDifference(difference) + unit, 0.0);
}

namespace {

void* CopyOfBound(void const* value, unsigned size) {
  void* const copy = AllocateBound(size);
  if (size != 0) std::memcpy(copy, value, size);
  return copy;
}

}  // namespace
}  // namespace xo

void* AllocateBound(unsigned size) { return xo::AllocateArray(size); }

void ReleaseBounds(XoIdxBounds& bounds) {
  xo::ReleaseArray(bounds.low);
  xo::ReleaseArray(bounds.high);
  bounds.low = nullptr;
  bounds.high = nullptr;
  bounds.lowLen = 0;
  bounds.highLen = 0;
}

double BoundRangeArea(unsigned short op, double valueLow, double valueHigh, double rangeLow,
                      double rangeHigh, double unit) {
  double area = 0.0;
  if ((op & kXoBoundAbove) != 0) area += xo::AreaAbove(valueHigh, rangeLow, rangeHigh, unit);
  if ((op & kXoBoundBelow) != 0) area += xo::AreaBelow(valueLow, rangeLow, rangeHigh, unit);
  if ((op & kXoBoundEqual) != 0) {
    area += xo::AreaEqual(valueLow, valueHigh, rangeLow, rangeHigh, unit);
  }
  return area;
}

void BoundRecord(XoIdxBounds* bounds, void const* value, unsigned short op, unsigned size) {
  if (bounds == nullptr) return;
  if (bounds->low == nullptr && (op & kXoBoundBelow) == 0) {
    bounds->low = xo::CopyOfBound(value, size);
    bounds->lowLen = static_cast<std::uint8_t>(size);
  }
  if (bounds->high == nullptr && (op & kXoBoundAbove) == 0) {
    bounds->high = xo::CopyOfBound(value, size);
    bounds->highLen = static_cast<std::uint8_t>(size);
  }
}
