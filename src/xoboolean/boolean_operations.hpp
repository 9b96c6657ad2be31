#pragma once

#include "base/bytes.hpp"
#include "src/xotypes/scalar_step.hpp"
#include "xoboolean.hpp"

/// The slots of the boolean's row that are its own.
namespace xo {

/// Slot `GetValue`: true follows on whatever is below it, null included.
inline int StepBoolean(void* value, unsigned, unsigned char format, NextValueCode code) {
  if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
  if (code == kPresentValue) return 0;
  if (code == kLowestValue) {
    StoreBytes(value, XoBoolean(0));
    return 0;
  }
  if (!AsksForNextValue(code)) return ERR_TM_NOT_SUPPORTED;
  if ((LoadBytes<XoBoolean>(value) < 1) == 0) return ERR_TM_NO_NEXT_VALUE;
  StoreBytes(value, XoBoolean(1));
  return 0;
}

inline int IsNullBoolean(void* value) { return LoadBytes<XoBoolean>(value).IsNullValue(); }

inline int SetNullBoolean(void* value) {
  XoBoolean null;
  null.SetNullValue();
  StoreBytes(value, null);
  return 0;
}

}  // namespace xo
