#pragma once

#include <array>

#include "base/scalar_disk.hpp"
#include "src/xodate/temporal_layout.hpp"
#include "src/xodate/temporal_rows.hpp"
#include "src/xotypes/scalar_operations.hpp"
#include "xoodmg.hpp"

/// The ODMG classes as rows of the table. They have no null value.
namespace xo {

using OdmgDateLayout = TemporalLayout<d_Date, true, 2, false>;
using OdmgTimeLayout = TemporalLayout<d_Time, false, 6, false>;
using OdmgTimestampLayout = TemporalLayout<d_Timestamp, true, 8, false>;

static_assert(OdmgDateLayout::kDiskWidth == 4 && OdmgTimeLayout::kDiskWidth == 6 &&
              OdmgTimestampLayout::kDiskWidth == 10);

/// The bytes of a time, in the order of its fields.
struct OdmgTimeFields {
  o_char zoneHour, zoneMinute, hour, minute, second, hundredths;
};

// Hash.

/// As of the plain dates, but of the value: a stored date hashes as it does in memory.
inline o_u4b FoldOdmgDate(void const* date, unsigned char nibble) {
  return FoldOf(DateLayout::Decode(date, nibble));
}

/// The bytes as two numbers of 24 bits.
inline o_u4b FoldOdmgTime(void const* time, unsigned char) {
  auto const bytes = LoadBytes<std::array<unsigned char, 6>>(time);
  return FoldFields(bytes[0], bytes[1], bytes[2]) ^ FoldFields(bytes[3], bytes[4], bytes[5]);
}

inline o_u4b FoldOdmgTimestamp(void const* stamp, unsigned char nibble) {
  return FoldOdmgDate(stamp, nibble) ^
         FoldOdmgTime(Advance(stamp, OdmgDateLayout::kDiskWidth), nibble);
}

// Step. By the fields, as the arithmetic of the classes would round the hundredths away.

/// Moves a time to the next second; false at the end of the day of its zone, with the time at the
/// day's first second.
inline bool StepSecond(d_Time& time) {
  constexpr int kMinutes = 60, kSeconds = 60, kHours = 24;
  auto fields = std::bit_cast<OdmgTimeFields>(time);
  bool isSameDay = true;
  if (++fields.second >= kSeconds || fields.second < 0) {
    int minute = fields.minute - fields.zoneMinute + 1;
    fields.second = 0;
    if (minute >= kMinutes) {
      minute = 0;
      int hour = fields.hour - fields.zoneHour + 1;
      isSameDay = hour < kHours;
      if (!isSameDay) hour = 0;
      fields.hour = static_cast<o_char>(hour + fields.zoneHour);
    }
    fields.minute = static_cast<o_char>(minute + fields.zoneMinute);
  }
  time = std::bit_cast<d_Time>(fields);
  return isSameDay;
}

inline void StepOn(d_Date& date) { ++date; }
inline void StepOn(d_Time& time) { StepSecond(time); }
inline void StepOn(d_Timestamp& stamp) {
  d_Date date = stamp.date();
  d_Time time = stamp.time();
  if (!StepSecond(time)) ++date;
  stamp = d_Timestamp(date, time);
}

/// Slot `GetValue` of dates, times and time stamps: memory form alone, the first element alone.
template <class Value>
int StepOdmg(void* data, unsigned, unsigned char format, NextValueCode code) {
  if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
  if (code == kPresentValue) {
    StoreBytes(data, Value::current());
    return 0;
  }
  if (!AsksForNextValue(code)) return ERR_TM_NOT_SUPPORTED;
  auto const present = LoadValue<Value>(data);
  Value next = present;
  StepOn(next);
  if (!(next > present)) return ERR_TM_NO_NEXT_VALUE;
  StoreBytes(data, next);
  return 0;
}

// Text.

template <class Value>
XoString& PrintOdmg(XoString& out, void* values, char const* format, unsigned) {
  return LoadValue<Value>(values).PrintToXoString(out, format);
}

/// What was read is stored also where the text ended too early, which null tells.
template <class Value>
void* ScanOdmg(void* target, XoString& text, char const* format, unsigned) {
  if (target == nullptr) return nullptr;
  auto value = LoadValue<Value>(target);
  bool const isWhole = value.ScanFromXoString(text, format) != nullptr;
  StoreBytes(target, value);
  return isWhole ? target : nullptr;
}

// Intervals are stored as their number.

inline unsigned OdmgIntervalStore(void* disk, void const* memory, unsigned char format,
                                  unsigned count) {
  return FloatStore(disk, memory, format, count);
}
inline unsigned OdmgIntervalLoad(void* memory, void const* disk, unsigned char format,
                                 unsigned count) {
  return FloatStore(memory, disk, format, count);
}

using OdmgIntervalFamily = SizedByHelper<ScalarFamily<4, OdmgIntervalStore, OdmgIntervalLoad,
                                                      FloatStore, FloatSizeGet, FloatNullSizeGet>>;

// Time stamps of other records.

/// The time within an `XoDateTimeN`, behind its date.
inline void const* TimeOfRecord(void const* record) { return Advance(record, sizeof(XoDate)); }

/// The date and time of the record, in the default zone. Its fraction counts as whole seconds.
inline d_Timestamp OdmgStampOf(XoDateTimeN const& record) {
  auto const part = [](o_char field) { return static_cast<unsigned short>(field); };
  float const seconds = static_cast<float>(record.second) + static_cast<float>(record.nanoSeconds);
  return {d_Date(record.year, part(record.month), part(record.day)),
          d_Time(part(record.hour), part(record.minute), seconds)};
}

}  // namespace xo
