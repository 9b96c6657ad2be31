#pragma once

#include <bit>
#include <concepts>
#include <cstddef>

#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/scalar_family.hpp"
#include "xoint64.hpp"

/// `Hash` of the plain scalars: the elements' folds XORed, times a constant.
namespace xo {

/// Multiplier of the linear congruential generator in the C standard's sample `rand`.
inline constexpr o_u4b kHashMultiplier = 1103515245;

/// 32 bits of an element: its value, extended by its sign. Of 64-bit integers the low half alone
/// counts, of `o_double` both.
template <std::integral Value>
constexpr o_u4b Fold(Value value) {
  return static_cast<o_u4b>(value);
}
constexpr o_u4b Fold(o_float value) { return std::bit_cast<o_u4b>(value); }
constexpr o_u4b Fold(o_double value) {
  auto const bits = std::bit_cast<o_u8b>(value);
  return static_cast<o_u4b>(bits) ^ static_cast<o_u4b>(bits >> 32);
}

constexpr o_u4b Fold(XoInt64 value) { return value.low ^ static_cast<o_u4b>(value.high); }

/// The folds of `count` elements in memory form, XORed.
template <class Value>
o_u4b FoldElements(void const* values, std::size_t count) {
  // In lanes that do not wait for one another, which the compiler keeps in vector registers.
  constexpr std::size_t kLanes = 16;
  o_u4b lanes[kLanes] = {};
  std::size_t index = 0;
  for (; index + kLanes <= count; index += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      lanes[lane] ^= Fold(LoadBytes<Value>(Advance(values, (index + lane) * sizeof(Value))));
    }
  }
  for (; index < count; ++index) {
    lanes[0] ^= Fold(LoadBytes<Value>(Advance(values, index * sizeof(Value))));
  }
  o_u4b folds = 0;
  for (o_u4b const lane : lanes) folds ^= lane;
  return folds;
}

/// Slot `Hash` of a plain scalar. Elements that are not read where they lie are `Decoded`.
template <class Value, class Family, class Decoded = Value>
unsigned HashScalars(unsigned char format, unsigned length, void* data, unsigned count,
                     int& error) {
  unsigned const width = ElementWidth<Family>(format);
  unsigned const reachable = ReachableElements(count, length, width);
  error = reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
  o_u4b folds = 0;
  if (ReadsInPlace(format)) {
    folds = FoldElements<Value>(data, reachable);
  } else {
    for (std::size_t index = 0; index < reachable; ++index) {
      folds ^= Fold(DecodeElement<Decoded, Family>(Advance(data, index * width), format));
    }
  }
  return folds * kHashMultiplier;
}

}  // namespace xo
