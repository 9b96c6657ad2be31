#pragma once

#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "base/scalar_disk.hpp"
#include "src/xodate/temporal_value.hpp"
#include "src/xotypes/stored_copy.hpp"
#include "xotimespan.hpp"

/// Disk form of the temporal values: their fields one behind the other, without the padding that
/// memory has.
namespace xo {

/// A record of a 16-bit year, some fields of a byte, and 32-bit nanoseconds, as far as it has them.
template <class ValueType, bool HasYear, unsigned ByteFields, bool HasNanoSeconds>
struct TemporalLayout {
  using Value = ValueType;

  static constexpr bool kHasYear = HasYear;
  static constexpr bool kHasNanoSeconds = HasNanoSeconds;
  static constexpr unsigned kFirstByte = HasYear ? 2 : 0;
  static constexpr unsigned kByteFields = ByteFields;
  static constexpr unsigned kNanoSecondsOnDisk = kFirstByte + ByteFields;
  static constexpr unsigned kMemoryWidth = sizeof(Value);
  static constexpr unsigned kNanoSecondsInMemory = kMemoryWidth - 4;
  static constexpr unsigned kDiskWidth = kNanoSecondsOnDisk + (HasNanoSeconds ? 4 : 0);

  static unsigned Width(unsigned char nibble) {
    return nibble == FormMemory ? kMemoryWidth : kDiskWidth;
  }

  static void StoreOne(void* disk, void const* memory, unsigned char nibble) {
    CopyFields(disk, kNanoSecondsOnDisk, memory, kNanoSecondsInMemory, nibble);
  }

  static void LoadOne(void* memory, void const* disk, unsigned char nibble) {
    CopyFields(memory, kNanoSecondsInMemory, disk, kNanoSecondsOnDisk, nibble);
  }

  /// The value at an address in any form.
  static Value Decode(void const* data, unsigned char nibble) {
    if (nibble == FormMemory) return LoadValue<Value>(data);
    Value value = Value::ClearValue();
    LoadOne(&value, data, nibble);
    return value;
  }

 private:
  static void CopyFields(void* target, unsigned targetNanoSeconds, void const* source,
                         unsigned sourceNanoSeconds, unsigned char nibble) {
    if constexpr (kHasYear) ShortStoreOne(target, source, nibble);
    std::memcpy(Advance(target, kFirstByte), Advance(source, kFirstByte), kByteFields);
    if constexpr (kHasNanoSeconds) {
      LongStoreOne(Advance(target, targetNanoSeconds), Advance(source, sourceNanoSeconds), nibble);
    }
  }
};

using DateLayout = TemporalLayout<XoDate, true, 2, false>;
using TimeLayout = TemporalLayout<XoTime, false, 3, false>;
using DateTimeLayout = TemporalLayout<XoDateTime, true, 5, false>;
using DateTimeNLayout = TemporalLayout<XoDateTimeN, true, 5, true>;
using TimeSpanLayout = TemporalLayout<XoTimeSpan, true, 5, true>;

static_assert(DateLayout::kDiskWidth == 4 && TimeLayout::kDiskWidth == 3);
static_assert(DateTimeLayout::kDiskWidth == 7 && DateTimeNLayout::kDiskWidth == 11);

/// The slots of rows that follow from a layout.
template <class Layout>
struct TemporalStorage
    : FixedWidthSlots<TemporalStorage<Layout>, Layout::kDiskWidth, Layout::kMemoryWidth> {
  static unsigned Store(void* disk, void const* memory, unsigned char format, unsigned count) {
    for (std::size_t index = 0; index < count; ++index) {
      Layout::StoreOne(Advance(disk, index * Layout::kDiskWidth),
                       Advance(memory, index * Layout::kMemoryWidth), FormNibble(format));
    }
    return TemporalStorage::NullSizeGet(count);
  }

  static unsigned Load(void* memory, void const* disk, unsigned char format, unsigned count) {
    for (std::size_t index = 0; index < count; ++index) {
      Layout::LoadOne(Advance(memory, index * Layout::kMemoryWidth),
                      Advance(disk, index * Layout::kDiskWidth), FormNibble(format));
    }
    return TemporalStorage::NullSizeGet(count);
  }
};

}  // namespace xo
