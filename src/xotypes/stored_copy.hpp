#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/format.hpp"

class MemFile;

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

/// The slots that follow from the widths of an element and from the `Store` and `Load` of arrays,
/// which `Storage` has.
template <class Storage, unsigned kDiskWidth, unsigned kMemoryWidth>
struct FixedWidthSlots {
  static unsigned NullSizeGet(unsigned count) { return count * kDiskWidth; }

  static unsigned SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
    return NullSizeGet(count);
  }

  static unsigned SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
    return NullSizeGet(count);
  }

  static unsigned Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                            void* source, unsigned char sourceFormat, unsigned sourceLength,
                            unsigned count) {
    bool const toMemory = HasMemoryBit(targetFormat);
    bool const fromMemory = HasMemoryBit(sourceFormat);
    if (toMemory && fromMemory) {
      std::size_t const size = std::size_t{count} * kMemoryWidth;
      if (size != 0) std::memmove(target, source, size);
      return static_cast<unsigned>(size);
    }
    if (toMemory) {
      return Storage::Load(target, source, sourceFormat,
                           WholeElements(count, sourceLength, kDiskWidth));
    }
    if (fromMemory) {
      return Storage::Store(target, source, FormNibble(targetFormat),
                            WholeElements(count, targetLength, kDiskWidth));
    }
    return CopyStored(target, targetLength, source, sourceLength);
  }
};

}  // namespace xo
