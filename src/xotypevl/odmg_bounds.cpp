#include "src/xotypevl/odmg_bounds.hpp"

#include <cstdint>

#include "src/odmg/odmg_rows.hpp"
#include "src/xotypevl/element_bounds.hpp"

namespace xo {
namespace {

/// The fields of a date, which lie as those of an `XoDate` do.
struct DateRecord : DateLayout {
  static int Number(XoDate const& date) {
    constexpr int kYearsBefore = 40000;
    return ((date.year + kYearsBefore) * 12 + date.month) * 31 + date.day;
  }
};

/// The fields of a time, in every form alike.
struct TimeRecord {
  using Value = OdmgTimeFields;
  static constexpr unsigned kDiskWidth = OdmgTimeLayout::kDiskWidth;

  static Value Decode(void const* data, unsigned char) { return LoadBytes<Value>(data); }
  /// Seconds of the day, whatever the zone.
  static int Number(Value const& time) { return (time.hour * 60 + time.minute) * 60 + time.second; }
};

struct TimestampFields {
  XoDate date;
  OdmgTimeFields time;
};

struct TimestampRecord {
  using Value = TimestampFields;
  static constexpr unsigned kDiskWidth = OdmgTimestampLayout::kDiskWidth;

  static Value Decode(void const* data, unsigned char nibble) {
    return {DateRecord::Decode(data, nibble),
            TimeRecord::Decode(Advance(data, DateRecord::kDiskWidth), nibble)};
  }
  static void StoreOne(void* target, Value const* value, unsigned char nibble) {
    DateRecord::StoreOne(target, &value->date, nibble);
    StoreBytes(Advance(target, DateRecord::kDiskWidth), value->time);
  }
  static double Number(Value const& value) {
    OdmgTimeFields const& time = value.time;
    return ((DateRecord::Number(value.date) * 24.0 + time.hour) * 60.0 + time.minute) * 60.0 +
           time.second;
  }
};

/// The share by whole numbers, of which a value outside the range can make more than the range
/// has.
float ShareOfIntegers(unsigned short op, int value, EndNumbers ends) {
  int const total = static_cast<int>(ends.Total());
  int const place = value - static_cast<int>(ends.low) + 1;
  int area = 0;
  if ((op & kXoBoundBelow) != 0) area += place - 1;
  if ((op & kXoBoundAbove) != 0) area += total - place;
  if ((op & kXoBoundEqual) != 0) area += 1;
  return ShareOfTotal(std::max(area, 0), total);
}

template <class Field>
bool WidenField(Field& low, Field& high, Field lowest, Field highest) {
  if (low != kWildcard) return false;
  low = lowest;
  high = highest;
  return true;
}

/// Widens each wildcard of a date. True: there is one.
bool WidenDate(XoDate& low, XoDate& high) {
  bool const year = WidenField<o_2b>(low.year, high.year, INT16_MIN, INT16_MAX);
  bool const month = WidenField<o_char>(low.month, high.month, INT8_MIN, INT8_MAX);
  bool const day = WidenField<o_char>(low.day, high.day, INT8_MIN, INT8_MAX);
  return year || month || day;
}

struct DateRules : DateRecord {
  static bool Widen(Ends<XoDate>& ends) { return WidenDate(ends.low, ends.high); }
  // A wildcard counts as the -1 that it is stored as.
  static float Share(unsigned short op, XoDate const& plain, Ends<XoDate> const&,
                     EndNumbers numbers) {
    return ShareOfIntegers(op, Number(plain), numbers);
  }
};

struct TimestampRules : TimestampRecord {
  static bool Widen(Ends<TimestampFields>& ends) {
    return WidenDate(ends.low.date, ends.high.date);
  }
  static float Share(unsigned short op, TimestampFields const&, Ends<TimestampFields> const& ends,
                     EndNumbers numbers) {
    return ShareOfRange(op, Number(ends.low), Number(ends.high), numbers);
  }
};

}  // namespace

float EvaluateOdmgDate(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                       unsigned count, void* bounds, XoEvalData*) {
  return EvaluateDates<DateRecord, DateRules>(range, op, value, format, count, bounds);
}

float EvaluateOdmgTime(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                       unsigned count, void* bounds, XoEvalData*) {
  unsigned char const nibble = FormNibble(format);
  float const share =
      HasBothEnds(range)
          ? ShareOfIntegers(op, TimeRecord::Number(TimeRecord::Decode(value, nibble)),
                            NumbersOfEnds<TimeRecord>(range, nibble, TimeRecord::Number))
          : 0.0F;
  BoundRecord(static_cast<XoIdxBounds*>(bounds), value, op, TimeRecord::kDiskWidth * count);
  return share;
}

float EvaluateOdmgTimestamp(XoIdxBounds* range, unsigned short& op, void* value,
                            unsigned char format, unsigned count, void* bounds, XoEvalData*) {
  return EvaluateDates<TimestampRecord, TimestampRules>(range, op, value, format, count, bounds);
}

}  // namespace xo
