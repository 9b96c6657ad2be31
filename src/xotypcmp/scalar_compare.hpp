#pragma once

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstring>

#include "src/xotypcmp/element_match.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/scalar_family.hpp"

/// The comparison loop of the plain scalars.
namespace xo {

/// -1, 0 or 1 by the order of two numbers.
template <class Value>
constexpr int OrderOf(Value a, Value b) {
  return (a > b) - (a < b);
}

/// The place of a number among the classes that order before value: NaN, negative infinity, the
/// finite numbers, positive infinity.
template <std::floating_point Value>
int FloatClassRank(Value number) {
  if (std::isnan(number)) return -2;
  if (std::isinf(number)) return number < 0 ? -1 : 1;
  return 0;
}

/// Total order of floating-point numbers: by rank, finite ones by value. All NaNs are equal.
template <std::floating_point Value>
int OrderOf(Value a, Value b) {
  int const rankA = FloatClassRank(a);
  int const rankB = FloatClassRank(b);
  if (rankA != 0 || rankB != 0) return OrderOf<int>(rankA, rankB);
  return (a > b) - (a < b);
}

/// Whether elements are compared as they lie. Bytes always are, and 16-bit numbers swap under
/// `FormBig` alone.
template <class Family>
constexpr bool ComparesInPlace(unsigned char nibble) {
  if constexpr (Family::kWidth == 1) return true;
  if constexpr (Family::kWidth == 2) return nibble != FormBig;
  return ReadsInPlace(nibble);
}

/// Order of the elements at two addresses.
template <class Value, class Family>
int CompareElements(unsigned char nibble, void const* a, void const* b) {
  if (ComparesInPlace<Family>(nibble)) return OrderOf(LoadBytes<Value>(a), LoadBytes<Value>(b));
  return OrderOf(DecodeElement<Value, Family>(a, nibble), DecodeElement<Value, Family>(b, nibble));
}

/// Runs from this many bytes on are searched for their first difference by blocks.
inline constexpr std::size_t kBlockSearchBytes = 64;

/// The comparison of arrays, and of elements that have to be decoded. It is kept out of line so
/// that the path of an index key needs no stack of its own.
template <class Value, class Family>
[[gnu::noinline]] int CompareArrays(unsigned char format, unsigned len1, void const* buf1,
                                    unsigned len2, void const* buf2, unsigned count, int& status) {
  unsigned char const nibble = FormNibble(format);
  unsigned const width = ElementWidth<Family>(nibble);
  unsigned const reachable = ReachableElements(ReachableElements(count, len1, width), len2, width);
  std::size_t const size = std::size_t{reachable} * width;
  int result = 0;
  std::size_t offset = 0;
  bool search = true;
  for (; offset < size; offset += width) {
    // Equal bytes are equal values in every form, so only a difference has to be looked at.
    if (search && size - offset >= kBlockSearchBytes) {
      offset += MatchingPrefix(Advance(buf1, offset), Advance(buf2, offset), size - offset, width);
      if (offset == size) break;
    }
    result = CompareElements<Value, Family>(nibble, Advance(buf1, offset), Advance(buf2, offset));
    if (result != 0) break;
    // Equal numbers of other bytes, such as zeros of both signs, rarely come alone, and a search
    // from each would cost more than it skips.
    search = std::memcmp(Advance(buf1, offset), Advance(buf2, offset), width) == 0;
  }
  // The end test comes after the comparison, so a decided result can carry the status; it needs no
  // look at the end while further reachable elements remain.
  bool const usedUp = result == 0 || offset + width == size;
  status = usedUp && reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
  return result;
}

/// Slot `Compare` of a plain scalar.
template <class Value, class Family>
int CompareScalars(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                   unsigned short, unsigned count, int& status) {
  // One element read where it lies is what an index page asks for. No length can end before it.
  if (count == 1 && ComparesInPlace<Family>(FormNibble(format))) [[likely]] {
    status = 0;
    return OrderOf(LoadBytes<Value>(buf1), LoadBytes<Value>(buf2));
  }
  return CompareArrays<Value, Family>(format, len1, buf1, len2, buf2, count, status);
}

}  // namespace xo
