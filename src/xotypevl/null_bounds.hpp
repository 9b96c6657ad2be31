#pragma once

#include "src/xonulty/null_family.hpp"
#include "src/xotypevl/number_bounds.hpp"

/// Slot `EvalAndBound` of the numbers that can be null. A null key comes before all others.
namespace xo {

/// `BoundRangeArea` of keys of which some may be null; the number of those is 0. Nulls take half a
/// step of an open interval, a tenth of one beside a value that is looked for, and a thousandth
/// when they are looked for themselves.
double NullRangeArea(unsigned short op, KeyNumbers<double> const& keys,
                     KeyNumbers<bool> const& nulls);

/// The share of a range that is known: as of the plain number, with an area of its own.
template <class Element, class Plain>
float EstimateNullNumber(XoIdxBounds const& range, unsigned short op, void const* value,
                         unsigned char format) {
  using Number = typename Element::Plain;
  using Family = NullFamily<Element, Plain>;
  auto const element = DecodeElement<Element, Family>(value, format);
  auto const lowest = DecodeElement<Element, Family>(range.low, format);
  auto const highest = DecodeElement<Element, Family>(range.high, format);
  // A null stands as 0 in the width of the range, which is negative then where all numbers are. The
  // share is what that gives.
  double const low = ToDouble(lowest.value);
  double const high = ToDouble(highest.value);
  KeyNumbers<bool> const nulls{element.isNull != 0, lowest.isNull != 0, highest.isNull != 0};
  double area = NullRangeArea(op, {ToDouble(element.value), low, high}, nulls);
  if constexpr (kRoundsInDouble<Number>) {
    // A null has no place among the numbers that could have been rounded together.
    bool const arePresent = !nulls.value && !nulls.low && !nulls.high;
    KeyNumbers<Number> const keys{element.value, lowest.value, highest.value};
    if (area == 0 && arePresent && MeetsRange(op, keys)) area = kNumberStep;
  }
  return ShareOf<Number>(area, low, high);
}

/// Slot `EvalAndBound` of a number that can be null: the class `Element` of a number of the disk
/// family `Plain`.
template <class Element, class Plain>
float EvaluateNullNumber(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                         unsigned count, void* bounds, XoEvalData*) {
  // First, as `bounds` may be the range.
  float const share =
      HasBothEnds(range) ? EstimateNullNumber<Element, Plain>(*range, op, value, format) : 0.0F;
  BoundRecord(static_cast<XoIdxBounds*>(bounds), value, op,
              NullFamily<Element, Plain>::kNullSizeGet(count));
  return share;
}

}  // namespace xo
