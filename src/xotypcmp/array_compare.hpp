#pragma once

#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "src/xotypcmp/element_match.hpp"
#include "src/xotypes/array_walk.hpp"
#include "xotypes.hpp"

/// The comparison loop of all types of fixed width.
namespace xo {

/// Runs from this many bytes on are searched for their first difference by blocks.
inline constexpr std::size_t kBlockSearchBytes = 64;

/// The comparison of arrays. `Elements` tells the width of an element in a form, and how two are
/// compared, of which equal bytes are equal. It is kept out of line so that the path of an index
/// key needs no stack of its own.
template <class Elements>
[[gnu::noinline]] int CompareArrays(unsigned char format, unsigned len1, void* buf1, unsigned len2,
                                    void* buf2, unsigned short cmpOp, unsigned count, int& status) {
  unsigned char const nibble = FormNibble(format);
  unsigned const width = Elements::Width(nibble);
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
    result = Elements::Compare(nibble, Advance(buf1, offset), Advance(buf2, offset), cmpOp);
    if (result != 0) break;
    // Equal values of other bytes, such as zeros of both signs or a wildcard, rarely come alone,
    // and a search from each would cost more than it skips.
    search = std::memcmp(Advance(buf1, offset), Advance(buf2, offset), width) == 0;
  }
  // The end test comes after the comparison, so a decided result can carry the status; it needs no
  // look at the end while further reachable elements remain.
  bool const usedUp = result == 0 || offset + width == size;
  status = usedUp && reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
  return result;
}

}  // namespace xo
