#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/allocation.hpp"
#include "src/xotypes/scalar_family.hpp"
#include "src/xotypes/stored_copy.hpp"

/// The slots of the plain scalars that depend on the element's width and disk family alone. Arrays
/// are contiguous elements with no header, and need no alignment.
namespace xo {

/// A whole element as it is copied: a word of the machine where there is one of its width.
template <std::size_t kWidth>
struct ElementBits {
  struct Type {
    unsigned char bytes[kWidth];
  };
};
template <std::size_t kWidth>
requires requires { typename UnsignedOf<kWidth>; }
struct ElementBits<kWidth> {
  using Type = UnsignedOf<kWidth>;
};

template <class Family>
struct ScalarOperations {
  static constexpr std::size_t kWidth = Family::kWidth;
  using Bits = typename ElementBits<kWidth>::Type;

  static void* Create(unsigned count) {
    // The count widens as a signed number, so one of 2^31 and above is too large to be had; the
    // product of such a count asks for the largest size, which fails by way of the new-handler.
    std::size_t const elements = static_cast<std::size_t>(static_cast<std::int32_t>(count));
    std::size_t const size = elements > SIZE_MAX / kWidth ? SIZE_MAX : elements * kWidth;
    void* const values = AllocateArray(size);
    if constexpr (Family::kCreateZeroes) std::memset(values, 0, size);
    return values;
  }

  static void* Delete(void* values, unsigned) {
    ReleaseArray(values);
    return nullptr;
  }

  static unsigned SizeGetFromMemFile(MemFile*, unsigned char format, unsigned count) {
    return Family::FileSize(FormNibble(format), count);
  }

  static void Constructor(void* values, unsigned count, unsigned) {
    if (count == 1) {
      StoreBytes(values, Bits{});
    } else if (count != 0) {
      std::memset(values, 0, count * kWidth);
    }
  }

  static void Destructor(void*, unsigned, unsigned) {}

  /// Also the slot `Copy`: a plain scalar in raw memory is assigned to like a live one.
  static void Assignment(void* target, void* source, unsigned count, int fill) {
    if (count == 0) return;
    if (fill != 0) {
      auto const first = LoadBytes<Bits>(source);
      for (std::size_t offset = 0; offset < count * kWidth; offset += kWidth) {
        StoreBytes(Advance(target, offset), first);
      }
    } else {
      std::memmove(target, source, count * kWidth);
    }
  }

  /// What empty texts read as: 0, which is all bits zero in every row.
  static void* DefaultValue(unsigned count, int) {
    void* const values = Create(count);
    Constructor(values, count, 0);
    return values;
  }

  static unsigned Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                            void* source, unsigned char sourceFormat, unsigned sourceLength,
                            unsigned count) {
    bool const toMemory = HasMemoryBit(targetFormat);
    bool const fromMemory = HasMemoryBit(sourceFormat);
    if (toMemory && fromMemory) {
      for (std::size_t offset = 0; offset < count * kWidth; offset += kWidth) {
        StoreBytes(Advance(target, offset), LoadBytes<Bits>(Advance(source, offset)));
      }
      return count * Family::kWidth;
    }
    if (toMemory) {
      return Family::kLoad(target, source, sourceFormat,
                           ReachedElements(count, sourceLength, sourceFormat));
    }
    if (fromMemory) {
      unsigned char const format = FormNibble(targetFormat);
      return Family::kStore(target, source, format, ReachedElements(count, targetLength, format));
    }
    return CopyStored(target, targetLength, source, sourceLength);
  }

 private:
  /// The whole elements within a length. The helper is asked for their width only where the length
  /// limits.
  static unsigned ReachedElements(unsigned count, unsigned length, unsigned char format) {
    if (length == 0) return count;
    return WholeElements(count, length, DiskWidth<Family>(FormNibble(format)));
  }
};

}  // namespace xo
