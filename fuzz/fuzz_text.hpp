#pragma once

#include <cstring>

#include "fuzz/fuzz_input.hpp"

namespace fuzz {

/// A text in a buffer of its own that ends with its terminator, so that the sanitizer sees a byte
/// too far. It is of any code set and language, and a wide one may start at an odd address.
struct Text {
  explicit Text(FuzzedDataProvider& input)
      : codeSet(input.ConsumeBool() ? input.PickValueInArray<unsigned char>({0, 1, 15, 253, 254})
                                    : input.ConsumeIntegral<unsigned char>()),
        language(input.ConsumeIntegral<unsigned char>()),
        // 255 stands for a narrow default.
        unit(codeSet > 224 && codeSet != 255 ? 2u : 1u),
        length(input.ConsumeIntegralInRange<std::size_t>(0, 200)),
        buffer(input, (length + 1) * unit, input.ConsumeBool()) {
    for (std::size_t place = 0; place < length; ++place) {
      unsigned char* const at = buffer.Data() + place * unit;
      if (at[0] == 0 && (unit == 1 || at[1] == 0)) *at = 'a';
    }
    std::memset(buffer.Data() + length * unit, 0, unit);
  }

  char const* Get() { return static_cast<char const*>(static_cast<void*>(buffer.Data())); }

  unsigned char codeSet;
  unsigned char language;
  unsigned unit;
  std::size_t length;
  Buffer buffer;
};

inline unsigned char AnyByteOrder(FuzzedDataProvider& input) {
  return input.PickValueInArray<unsigned char>({1, 2, 8, 255});
}

}  // namespace fuzz
