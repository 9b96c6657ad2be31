#pragma once

#include <bit>
#include <type_traits>

#include "src/xoint64/int64_family.hpp"
#include "src/xotypes/scalar_family.hpp"
#include "src/xotypevl/bound_area.hpp"
#include "xoidxbounds.hpp"
#include "xotypes.hpp"

/// Slot `EvalAndBound` of the numbers, and what those that can be null share with them. A predicate
/// is evaluated by the first element of its value and of the two end keys. That element is read
/// whole, whatever the lengths of the keys say.
namespace xo {

/// The step between two keys that numbers are estimated by, fractions included.
inline constexpr double kNumberStep = 1.0;

// The share that keys of the measure `area` have of an index from `low` to `high`. It is never a
// NaN. No area is no share, also where the ends of the index are in the wrong order.

/// Of integers.
float ShareOfIntegers(double area, double low, double high);
/// Of doubles: an area or a range that is infinite or not a number counts as the largest double.
/// A share of an area is 2^-23 at least, so that no selection rounds to nothing.
float ShareOfDoubles(double area, double low, double high);
/// Of floats, with the same least share: an infinite range counts as such, and leaves any finite
/// area no more than that. Where this makes no number, the share is that of doubles.
float ShareOfFloats(double area, double low, double high);

template <class Value>
float ShareOf(double area, double low, double high) {
  if constexpr (std::is_same_v<Value, o_float>) {
    return ShareOfFloats(area, low, high);
  } else if constexpr (std::is_same_v<Value, o_double>) {
    return ShareOfDoubles(area, low, high);
  } else {
    return ShareOfIntegers(area, low, high);
  }
}

template <class Value>
double ToDouble(Value value) {
  return static_cast<double>(value);
}
inline double ToDouble(XoInt64 value) { return static_cast<double>(value.Get8b()); }

/// Whether a double may be short of bits to tell two neighbours apart.
template <class Value>
inline constexpr bool kRoundsInDouble = std::is_same_v<Value, XoInt64> ||
                                        (std::is_integral_v<Value> && sizeof(Value) == 8);

/// The number of a predicate and those at the ends of an index.
template <class Value>
struct KeyNumbers {
  Value value;
  Value low;
  Value high;
};

/// Whether a selection whose area is 0 may have lost it in rounding, by the order of the exact
/// numbers: the value lies in the index, on each side that the relation does not ask for. At an end
/// of the index this takes in a value that the relation leaves out.
template <class Value>
bool MeetsRange(unsigned short op, KeyNumbers<Value> const& keys) {
  return keys.low <= keys.high && ((op & kXoBoundAbove) != 0 || keys.low <= keys.value) &&
         ((op & kXoBoundBelow) != 0 || keys.value <= keys.high);
}

// How an element is read, and how large the bound of some is, by disk family.

/// Families whose bytes are reversed here under `FormBig` and read as they lie otherwise. The base
/// services read the elements of the others.
template <class Family>
inline constexpr bool kIsReadHere =
    std::is_same_v<Family, CharFamily> || std::is_same_v<Family, ShortFamily> ||
    std::is_same_v<Family, LongFamily> || std::is_same_v<Family, LongLongFamily>;

/// Families whose sizes are asked from the base services. The bound of an `int` has its width in
/// memory, whatever its stored width.
template <class Family>
inline constexpr bool kAsksForBoundSize =
    std::is_same_v<Family, FloatFamily> || std::is_same_v<Family, DoubleFamily>;

template <class Value, class Family>
Value ReadNumber(void const* source, unsigned char format) {
  unsigned char const nibble = FormNibble(format);
  if constexpr (kIsReadHere<Family>) {
    auto const bits = LoadBytes<UnsignedOf<sizeof(Value)>>(source);
    return std::bit_cast<Value>(nibble == FormBig ? ReverseBytes(bits) : bits);
  } else {
    return DecodeElement<Value, Family>(source, nibble);
  }
}

template <class Family>
unsigned BoundSize(unsigned char format, unsigned count) {
  if constexpr (kAsksForBoundSize<Family>) {
    return Family::kSizeGet(nullptr, FormMemory, format, count);
  } else {
    return Family::kWidth * count;
  }
}

/// The share of a range that is known.
template <class Value, class Family>
float EstimateNumber(XoIdxBounds const& range, unsigned short op, void const* value,
                     unsigned char format) {
  KeyNumbers<Value> const keys{ReadNumber<Value, Family>(value, format),
                               ReadNumber<Value, Family>(range.low, format),
                               ReadNumber<Value, Family>(range.high, format)};
  double const number = ToDouble(keys.value);
  double const low = ToDouble(keys.low);
  double const high = ToDouble(keys.high);
  double area = BoundRangeArea(op, number, number, low, high, kNumberStep);
  if constexpr (kRoundsInDouble<Value>) {
    if (area == 0 && MeetsRange(op, keys)) area = kNumberStep;
  }
  return ShareOf<Value>(area, low, high);
}

/// Slot `EvalAndBound` of a plain number.
template <class Value, class Family>
float EvaluateNumber(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                     unsigned count, void* bounds, XoEvalData*) {
  // First, as `bounds` may be the range.
  float const share =
      HasBothEnds(range) ? EstimateNumber<Value, Family>(*range, op, value, format) : 0.0F;
  BoundRecord(static_cast<XoIdxBounds*>(bounds), value, op, BoundSize<Family>(format, count));
  return share;
}

/// Slot `EvalAndBound` of `XoBoolean`: a third of an index, whichever of its three values is asked
/// for, and whatever its ends.
TypeDescriptor::EvalAndBoundFunction EvaluateBoolean;

}  // namespace xo
