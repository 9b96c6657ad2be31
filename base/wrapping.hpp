#pragma once

#include <cstdint>

/// Arithmetic that keeps the low bits of a result which does not fit its type.
namespace xo {

/// The low 32 bits of a result that was formed in 64.
constexpr std::int32_t Wrap32(std::int64_t value) { return static_cast<std::int32_t>(value); }

/// `-value`; the lowest number is its own. Written as a case of its own: GCC 12 takes a quotient of
/// the wrapped negation for the negated quotient, which is another number there.
constexpr std::int32_t WrappingNegation(std::int32_t value) {
  return value == INT32_MIN ? value : -value;
}

constexpr std::int64_t WrappingSum(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
constexpr std::int64_t WrappingProduct(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

}  // namespace xo
