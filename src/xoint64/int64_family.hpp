#pragma once

#include "src/xotypes/scalar_family.hpp"
#include "src/xotypes/scalar_step.hpp"
#include "xoint64.hpp"

/// The stored form of `XoInt64`: its two halves in the order of memory, the low one first in every
/// format, each as a long is stored.
namespace xo {

inline unsigned Int64Store(void* target, void const* source, unsigned char format, unsigned count) {
  return LongStore(target, source, FormNibble(format), 2 * count);
}

inline unsigned Int64NullSizeGet(unsigned count) { return 8 * count; }

inline unsigned Int64SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return Int64NullSizeGet(count);
}

using Int64Family =
    ScalarFamily<8, Int64Store, Int64Store, Int64Store, Int64SizeGet, Int64NullSizeGet>;

/// Slot `GetValue`. Its lowest value is 0, unlike that of the plain 64-bit integer.
inline int StepInt64(void* value, unsigned count, unsigned char format, NextValueCode code) {
  if (format == FormMemory && code == kLowestValue) {
    StoreBytes(value, XoInt64());
    return 0;
  }
  // In memory the halves lie as those of a plain integer do.
  return StepValue<o_8b>(value, count, format, code);
}

}  // namespace xo
