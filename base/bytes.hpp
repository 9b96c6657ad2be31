#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The one door through which bytes become values and values bytes. Nothing else in the library
/// knows the machine's byte order or reads a wider type through a byte pointer.
namespace xo {

// Little-endian disk form is read in place, so it must be the machine's own order.
static_assert(std::endian::native == std::endian::little);

/// The value of type `T` whose bytes start at `source`, which needs no alignment.
template <class T>
T LoadBytes(void const* source) {
  T value;
  std::memcpy(&value, source, sizeof value);
  return value;
}

/// Writes the bytes of `value` to `target`, which needs no alignment.
template <class T>
void StoreBytes(void* target, T value) {
  std::memcpy(target, &value, sizeof value);
}

/// `bytes` moved on by `distance` bytes.
inline unsigned char* Advance(void* bytes, std::size_t distance) {
  return static_cast<unsigned char*>(bytes) + distance;
}
inline unsigned char const* Advance(void const* bytes, std::size_t distance) {
  return static_cast<unsigned char const*>(bytes) + distance;
}

/// `value` with its bytes in reverse order.
constexpr std::uint8_t ReverseBytes(std::uint8_t value) { return value; }
constexpr std::uint16_t ReverseBytes(std::uint16_t value) {
  return static_cast<std::uint16_t>(value << 8 | value >> 8);
}
constexpr std::uint32_t ReverseBytes(std::uint32_t value) {
  return static_cast<std::uint32_t>(ReverseBytes(static_cast<std::uint16_t>(value))) << 16 |
         ReverseBytes(static_cast<std::uint16_t>(value >> 16));
}
constexpr std::uint64_t ReverseBytes(std::uint64_t value) {
#ifdef __GNUC__
  // Of a value that has been masked, GCC does not see that the shifts below are one instruction.
  return __builtin_bswap64(value);
#else
  return static_cast<std::uint64_t>(ReverseBytes(static_cast<std::uint32_t>(value))) << 32 |
         ReverseBytes(static_cast<std::uint32_t>(value >> 32));
#endif
}

/// The unsigned integer type of `Width` bytes.
template <std::size_t Width>
struct UnsignedOfWidth;
template <>
struct UnsignedOfWidth<1> {
  using Type = std::uint8_t;
};
template <>
struct UnsignedOfWidth<2> {
  using Type = std::uint16_t;
};
template <>
struct UnsignedOfWidth<4> {
  using Type = std::uint32_t;
};
template <>
struct UnsignedOfWidth<8> {
  using Type = std::uint64_t;
};
template <std::size_t Width>
using UnsignedOf = typename UnsignedOfWidth<Width>::Type;

}  // namespace xo
