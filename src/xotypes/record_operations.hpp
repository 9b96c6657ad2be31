#pragma once

#include <algorithm>
#include <cstddef>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "base/scalar_disk.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/stored_copy.hpp"
#include "xotypes.hpp"

/// The slots of rows whose values are stored as records of fixed width.
namespace xo {

// Fields of records, as they lie in the order of a format.

inline o_u2b LoadField2(void const* place, unsigned char format) {
  o_u2b field = 0;
  ShortStoreOne(&field, place, FormNibble(format));
  return field;
}
inline o_u4b LoadField4(void const* place, unsigned char format) {
  o_u4b field = 0;
  LongStoreOne(&field, place, FormNibble(format));
  return field;
}
inline void StoreField2(void* place, o_u2b field, unsigned char format) {
  ShortStoreOne(place, &field, FormNibble(format));
}
inline void StoreField4(void* place, o_u4b field, unsigned char format) {
  LongStoreOne(place, &field, FormNibble(format));
}

/// `Record` names the `Value`, its `kDiskWidth`, and how one is read and written: `Read(place,
/// format)` and `Write(place, value, format)`. No address needs alignment.
template <class Record>
struct RecordOperations : FixedWidthSlots<RecordOperations<Record>, Record::kDiskWidth,
                                          sizeof(typename Record::Value)> {
  using Value = typename Record::Value;
  static constexpr unsigned kDiskWidth = Record::kDiskWidth;
  static constexpr unsigned kWidth = sizeof(Value);

  static unsigned Store(void* disk, void const* memory, unsigned char format, unsigned count) {
    for (std::size_t index = 0; index < count; ++index) {
      Record::Write(Advance(disk, index * kDiskWidth),
                    LoadBytes<Value>(Advance(memory, index * kWidth)), format);
    }
    return RecordOperations::NullSizeGet(count);
  }

  static unsigned Load(void* memory, void const* disk, unsigned char format, unsigned count) {
    for (std::size_t index = 0; index < count; ++index) {
      StoreBytes(Advance(memory, index * kWidth),
                 Record::Read(Advance(disk, index * kDiskWidth), format));
    }
    return RecordOperations::NullSizeGet(count);
  }

  /// `fold` of each element, XORed, times the multiplier of all hashes. `isMemory` tells whether
  /// elements are as wide as in memory, and read as they lie.
  template <class Fold>
  static unsigned HashElements(bool isMemory, unsigned char format, unsigned length,
                               void const* data, unsigned count, int& error, Fold fold) {
    unsigned const width = isMemory ? kWidth : kDiskWidth;
    unsigned const reachable = ReachableElements(count, length, width);
    error = reachable < count ? ERR_TM_LENGTH_EXCEEDED : 0;
    unsigned folds = 0;
    for (std::size_t index = 0; index < reachable; ++index) {
      void const* const place = Advance(data, index * width);
      folds ^= fold(isMemory ? LoadBytes<Value>(place) : Record::Read(place, format));
    }
    return folds * kHashMultiplier;
  }
};

}  // namespace xo
