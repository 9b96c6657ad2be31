#pragma once

#include <cstring>

namespace xo {

/// The value whose bytes start at `source`, which needs no alignment. The value classes have
/// constructors that ask the clock, so that the blank value takes the bytes.
template <class Value>
Value LoadValue(void const* source) {
  Value value = Value::ClearValue();
  std::memcpy(&value, source, sizeof value);
  return value;
}

}  // namespace xo
