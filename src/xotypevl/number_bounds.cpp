#include "src/xotypevl/number_bounds.hpp"

#include <cmath>
#include <limits>

#include "src/xotypevl/bound_area.hpp"

namespace xo {
namespace {

/// The least share of floating-point keys that are selected.
constexpr double kLeastShare = 0x1p-23;

constexpr float kBooleanShare = 1.0F / 3;

/// A quotient beyond all floats is infinite as one.
float ToFloat(double quotient) {
  constexpr double kLargestFloat = std::numeric_limits<float>::max();
  if (quotient > kLargestFloat) return std::numeric_limits<float>::infinity();
  return static_cast<float>(quotient);
}

float AtLeastLeastShare(double quotient) {
  return ToFloat(quotient < kLeastShare ? kLeastShare : quotient);
}

}  // namespace

float ShareOfIntegers(double area, double low, double high) {
  if (area == 0) return 0.0F;
  return ToFloat(area / (high - low + kNumberStep));
}

float ShareOfDoubles(double area, double low, double high) {
  if (area == 0) return 0.0F;
  return AtLeastLeastShare(FiniteDifference(area) / (FiniteDifference(high - low) + kNumberStep));
}

float ShareOfFloats(double area, double low, double high) {
  if (area == 0) return 0.0F;
  double const quotient = area / (high - low + kNumberStep);
  if (std::isnan(quotient)) return ShareOfDoubles(area, low, high);
  return AtLeastLeastShare(quotient);
}

float EvaluateBoolean(XoIdxBounds* range, unsigned short& op, void* value, unsigned char,
                      unsigned count, void* bounds, XoEvalData*) {
  float const share = range != nullptr ? kBooleanShare : 0.0F;
  BoundRecord(static_cast<XoIdxBounds*>(bounds), value, op, count);
  return share;
}

}  // namespace xo
