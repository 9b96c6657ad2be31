#pragma once

#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>

#include "base/bytes.hpp"
#include "xotypes.hpp"

/// `GetValue` of the plain scalars: a value is replaced by the lowest or the next greater one of
/// its type.
namespace xo {

constexpr bool AsksForNextValue(NextValueCode code) {
  return code == kNextValue || code == kNextValueToo;
}

/// Slot `GetValue` of the integers: memory form alone, the first element alone.
template <std::integral Value>
int StepValue(void* value, unsigned, unsigned char format, NextValueCode code) {
  if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
  if (code == kLowestValue) {
    StoreBytes(value, std::numeric_limits<Value>::min());
    return 0;
  }
  if (code == kPresentValue) return 0;
  if (!AsksForNextValue(code)) return ERR_TM_NOT_SUPPORTED;
  auto const present = LoadBytes<Value>(value);
  if (present == std::numeric_limits<Value>::max()) return ERR_TM_NO_NEXT_VALUE;
  StoreBytes(value, static_cast<Value>(present + 1));
  return 0;
}

/// The next representable number above `x`, subnormal numbers skipped in both directions. The
/// largest number gives itself; NaN and both infinities give the lowest finite number.
template <std::floating_point Value>
Value NextNumber(Value x) {
  using Limits = std::numeric_limits<Value>;
  constexpr Value kSmallestNormal = Limits::min();
  if (!std::isfinite(x)) return Limits::lowest();
  if (x == Limits::max()) return x;
  if (x == 0) return kSmallestNormal;
  if (x > 0 && x < kSmallestNormal) return kSmallestNormal;
  if (x < 0 && x >= -kSmallestNormal) return 0;
  int exponent = 0;
  std::frexp(x, &exponent);
  Value const next = x + std::ldexp(Limits::epsilon(), exponent - 1);
  if (x > 0) return next;
  // Just above a negative power of two the numbers lie twice as close.
  int nextExponent = 0;
  std::frexp(next, &nextExponent);
  return nextExponent == exponent ? next : x + std::ldexp(Limits::epsilon(), exponent - 2);
}

/// Slot `GetValue` of `o_double` and `o_float`. The lowest value is a quiet NaN with its sign set,
/// stored as a pattern since a NaN's sign need not survive arithmetic.
template <std::floating_point Value>
int StepValue(void* value, unsigned, unsigned char format, NextValueCode code) {
  if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
  if (code == kLowestValue) {
    if constexpr (sizeof(Value) == sizeof(o_u8b)) {
      StoreBytes(value, o_u8b{0xFFF8000000000000});
    } else {
      StoreBytes(value, o_u4b{0xFFC00000});
    }
    return 0;
  }
  if (!AsksForNextValue(code)) return ERR_TM_NOT_SUPPORTED;
  auto const present = LoadBytes<Value>(value);
  Value const next = NextNumber(present);
  if (!(next > present)) return ERR_TM_NO_NEXT_VALUE;
  StoreBytes(value, next);
  return 0;
}

}  // namespace xo
