#include "src/xotypevl/null_bounds.hpp"

#include "src/xotypevl/bound_area.hpp"

namespace xo {
namespace {

constexpr double kIntervalBesideNull = 0.5;
constexpr double kValueBesideNull = 0.1;
constexpr double kNullItself = 0.001;

double NullAreaAbove(KeyNumbers<double> const& keys, KeyNumbers<bool> const& nulls) {
  // With a null at the top there is nothing else in the index.
  if (nulls.high) return 0.0;
  if (nulls.value || nulls.low) return kIntervalBesideNull;
  return AreaAbove(keys.value, keys.low, keys.high, kNumberStep);
}

double NullAreaBelow(KeyNumbers<double> const& keys, KeyNumbers<bool> const& nulls) {
  if (nulls.value || nulls.high) return 0.0;
  if (nulls.low) return kIntervalBesideNull;
  return AreaBelow(keys.value, keys.low, keys.high, kNumberStep);
}

double NullAreaEqual(KeyNumbers<double> const& keys, KeyNumbers<bool> const& nulls) {
  if (nulls.value) return nulls.low ? kNullItself : 0.0;
  if (nulls.high) return 0.0;
  if (nulls.low) return kValueBesideNull;
  return AreaEqual(keys.value, keys.value, keys.low, keys.high, kNumberStep);
}

}  // namespace

double NullRangeArea(unsigned short op, KeyNumbers<double> const& keys,
                     KeyNumbers<bool> const& nulls) {
  double area = 0.0;
  if ((op & kXoBoundAbove) != 0) area += NullAreaAbove(keys, nulls);
  if ((op & kXoBoundBelow) != 0) area += NullAreaBelow(keys, nulls);
  if ((op & kXoBoundEqual) != 0) area += NullAreaEqual(keys, nulls);
  return area;
}

}  // namespace xo
