#pragma once

#include <algorithm>
#include <cstring>

/// What translations of fixed-width types share: how lengths limit them.
namespace xo {

/// How many of `count` elements of `width` bytes lie whole within `length` bytes; 0 means not
/// limited.
constexpr unsigned WholeElements(unsigned count, unsigned length, unsigned width) {
  return length == 0 ? count : std::min(count, length / width);
}

/// Disk to disk: bytes as they are, whatever the two formats, in a target that is cleared first
/// where it is longer than the source.
inline unsigned CopyStored(void* target, unsigned targetLength, void const* source,
                           unsigned sourceLength) {
  unsigned const length = std::min(sourceLength, targetLength);
  if (length < targetLength) std::memset(target, 0, targetLength);
  if (length != 0) std::memmove(target, source, length);
  return length;
}

}  // namespace xo
