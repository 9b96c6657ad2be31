#pragma once

#include <cmath>
#include <concepts>

#include "_xonulty.hpp"
#include "src/xotypcmp/array_compare.hpp"
#include "src/xotypes/scalar_family.hpp"
#include "xoboolean.hpp"

/// The comparison of the numbers: plain ones, booleans, and those that can be null.
namespace xo {

/// -1, 0 or 1 by the order of two numbers.
template <class Value>
constexpr int OrderOf(Value a, Value b) {
  return (a > b) - (a < b);
}

/// The place of a number among the classes that order before value: NaN, negative infinity, the
/// finite numbers, positive infinity.
template <std::floating_point Value>
int FloatClassRank(Value number) {
  if (std::isnan(number)) return -2;
  if (std::isinf(number)) return number < 0 ? -1 : 1;
  return 0;
}

/// Total order of floating-point numbers: by rank, finite ones by value. All NaNs are equal.
template <std::floating_point Value>
int OrderOf(Value a, Value b) {
  int const rankA = FloatClassRank(a);
  int const rankB = FloatClassRank(b);
  if (rankA != 0 || rankB != 0) return OrderOf<int>(rankA, rankB);
  return (a > b) - (a < b);
}

/// Order of booleans: null, then by their signed bytes.
constexpr int OrderOf(XoBoolean a, XoBoolean b) { return (a > b) - (a < b); }

/// Order of numbers that can be null: null, then the order of the numbers.
template <class Number, XoTypeId kRow>
int OrderOf(XoNullElement<Number, kRow> a, XoNullElement<Number, kRow> b) {
  if ((a.isNull | b.isNull) == 0) return OrderOf(a.value, b.value);
  return XoNullOrder(XoNullRelation(a.isNull != 0, b.isNull != 0));
}

/// Whether elements are compared as they lie. Bytes always are, and 16-bit numbers swap under
/// `FormBig` alone.
template <class Family>
constexpr bool ComparesInPlace(unsigned char nibble) {
  if constexpr (!Family::kIsPlain) return false;
  if constexpr (Family::kWidth == 1) return true;
  if constexpr (Family::kWidth == 2) return nibble != FormBig;
  return ReadsInPlace(nibble);
}

/// The elements of a plain scalar's arrays. Their comparison does not read `cmpOp`.
template <class Value, class Family>
struct ScalarElements {
  static unsigned Width(unsigned char nibble) { return ElementWidth<Family>(nibble); }

  static int Compare(unsigned char nibble, void const* a, void const* b, unsigned short) {
    if (ComparesInPlace<Family>(nibble)) return OrderOf(LoadBytes<Value>(a), LoadBytes<Value>(b));
    return OrderOf(DecodeElement<Value, Family>(a, nibble),
                   DecodeElement<Value, Family>(b, nibble));
  }
};

/// Slot `Compare` of a plain scalar.
template <class Value, class Family>
int CompareScalars(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                   unsigned short cmpOp, unsigned count, int& status) {
  // One element read where it lies is what an index page asks for. No length can end before it.
  if (count == 1 && ComparesInPlace<Family>(FormNibble(format))) [[likely]] {
    status = 0;
    return OrderOf(LoadBytes<Value>(buf1), LoadBytes<Value>(buf2));
  }
  if constexpr (!Family::kIsPlain) {
    if (count == 1) {
      status = 0;
      return ScalarElements<Value, Family>::Compare(FormNibble(format), buf1, buf2, cmpOp);
    }
  }
  return CompareArrays<ScalarElements<Value, Family>>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                      status);
}

}  // namespace xo
