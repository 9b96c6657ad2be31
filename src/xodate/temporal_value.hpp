#pragma once

#include <array>
#include <bit>
#include <cstring>

namespace xo {

/// The value whose bytes start at `source`, which needs no alignment. The value classes have
/// constructors that ask the clock, so that the bytes become the value without one, or are taken by
/// the blank value of classes that have it.
template <class Value>
Value LoadValue(void const* source) {
  if constexpr (requires { Value::ClearValue(); }) {
    Value value = Value::ClearValue();
    std::memcpy(&value, source, sizeof value);
    return value;
  } else {
    std::array<unsigned char, sizeof(Value)> bytes;
    std::memcpy(bytes.data(), source, sizeof bytes);
    return std::bit_cast<Value>(bytes);
  }
}

}  // namespace xo
