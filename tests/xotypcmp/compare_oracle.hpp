#pragma once

#include <cstdint>
#include <ostream>
#include <type_traits>

#include "tests/base/stored_bytes.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {

/// Sizes in bytes at which a comparison of long arrays may change its stride.
inline constexpr unsigned kBlockBorders[] = {64, 128, 256, 512, 1024, 2048, 4096};

/// Bytes of an array that goes on behind the last border.
inline constexpr unsigned kLongArray = 4200;

struct CompareAnswer {
  int result;
  int status;
  bool operator==(CompareAnswer const&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, CompareAnswer const& answer) {
  return out << answer.result << " status " << answer.status;
}

/// Place of a floating-point value in the total order: NaN, negative infinity, the finite numbers,
/// positive infinity.
template <class T>
int FloatRank(T value) {
  using Bit = FloatBits<T>;
  auto const bits = Bit::Of(value);
  if ((bits & Bit::kExponent) != Bit::kExponent) return 0;
  if ((bits & Bit::kFraction) != 0) return -2;
  return (bits & Bit::kSign) != 0 ? -1 : 1;
}

template <class T>
int Order(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    int const rankA = FloatRank(a), rankB = FloatRank(b);
    if (rankA != 0 || rankB != 0) return rankA < rankB ? -1 : rankA > rankB ? 1 : 0;
  }
  return a < b ? -1 : a > b ? 1 : 0;
}

/// The comparison protocol as the obvious loop, one element at a time.
template <class T>
CompareAnswer CompareByTheBook(unsigned char format, unsigned length1, unsigned char const* first,
                               unsigned length2, unsigned char const* second, unsigned count) {
  CompareAnswer answer{0, 0};
  std::uint64_t const whole = std::uint64_t{count} * sizeof(T);
  std::uint64_t const end1 = length1 != 0 ? length1 : whole;
  std::uint64_t const end2 = length2 != 0 ? length2 : whole;
  std::uint64_t position1 = 0, position2 = 0;
  for (unsigned remaining = count; remaining != 0 && answer == CompareAnswer{0, 0};) {
    --remaining;
    answer.result =
        Order(DecodeAt<T>(first + position1, format), DecodeAt<T>(second + position2, format));
    if (remaining == 0) break;
    position1 += sizeof(T);
    position2 += sizeof(T);
    if (position1 >= end1 || position2 >= end2) answer.status = 2101;
  }
  return answer;
}

}  // namespace xo::test
