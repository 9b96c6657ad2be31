#pragma once

#include "src/xotypes/scalar_family.hpp"
#include "src/xotypes/scalar_step.hpp"
#include "xoint64.hpp"

/// `XoInt64` as a disk family.
namespace xo {

using Int64Family = ScalarFamily<8, XoInt64::Store, XoInt64::Load, XoInt64::Load, XoInt64::SizeGet,
                                 XoInt64::NullSizeGet>;

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
