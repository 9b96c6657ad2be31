#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

namespace xo::test {

// How the tests understand stored scalars, written without the library's own helpers: the bytes of
// an element are in the machine's order, but reversed under a format whose low nibble is 2.

template <class T>
T DecodeAt(unsigned char const* source, unsigned char format) {
  std::array<unsigned char, sizeof(T)> bytes;
  std::copy_n(source, sizeof(T), bytes.begin());
  if (format % 16 == 2) std::reverse(bytes.begin(), bytes.end());
  return std::bit_cast<T>(bytes);
}

template <class T>
void EncodeAt(unsigned char* target, T const& value, unsigned char format) {
  auto bytes = std::bit_cast<std::array<unsigned char, sizeof(T)>>(value);
  if (format % 16 == 2) std::reverse(bytes.begin(), bytes.end());
  std::copy(bytes.begin(), bytes.end(), target);
}

/// For loops over a few format bytes.
using Formats = std::initializer_list<unsigned char>;

/// The values one behind the other, as they are stored in `format`.
template <class T>
std::vector<unsigned char> Encode(std::vector<T> const& values, unsigned char format) {
  std::vector<unsigned char> bytes(values.size() * sizeof(T));
  for (std::size_t i = 0; i < values.size(); ++i)
    EncodeAt(bytes.data() + i * sizeof(T), values[i], format);
  return bytes;
}

/// Bytes that an operation may read of stored elements of `width` bytes: up to the end of the
/// element in which their length ends, where 0 means that all `count` are there.
inline unsigned Readable(unsigned width, unsigned length, unsigned count) {
  return length == 0 ? count * width : (length + width - 1) / width * width;
}

/// A copy of some bytes that starts `offset` bytes into an allocation and ends with it, so that a
/// read behind them is seen by the address sanitizer, and an odd offset leaves them unaligned.
class PlacedBytes {
 public:
  PlacedBytes(std::vector<unsigned char> const& bytes, std::size_t offset)
      : memory(new unsigned char[offset + bytes.size()]), start(memory.get() + offset) {
    std::copy(bytes.begin(), bytes.end(), start);
  }

  unsigned char* Data() const { return start; }

 private:
  std::unique_ptr<unsigned char[]> memory;
  unsigned char* start;
};

}  // namespace xo::test
