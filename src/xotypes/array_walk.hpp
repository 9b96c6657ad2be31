#pragma once

#include <algorithm>

/// How far the operations on arrays of fixed-width elements get into their data.
namespace xo {

/// How many of `count` elements of `width` bytes start within `length` bytes, the first one always;
/// a length of 0 means not limited. An element counts as there when its first byte is: a partial
/// last element is read whole.
constexpr unsigned ReachableElements(unsigned count, unsigned length, unsigned width) {
  if (length == 0) return count;
  return std::min(count, length / width + (length % width != 0 ? 1 : 0));
}

}  // namespace xo
