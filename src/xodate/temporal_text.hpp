#pragma once

#include "base/bytes.hpp"
#include "src/xodate/temporal_format.hpp"
#include "src/xodate/temporal_value.hpp"
#include "xostring.hpp"
#include "xotimespan.hpp"

/// Print and scan of the temporal classes: each widens to the record of the one formatter and
/// scanner, and takes back the fields that it has.
namespace xo {

/// What a class has of its own: its default format, and the way to the record and back.
template <class Value>
struct TemporalText;

template <>
struct TemporalText<XoDate> {
  static constexpr char const* kFormat = "%Y-%m-%d";
  static XoDateTimeN Widen(XoDate const& value) { return {value}; }
  static XoDate Narrow(XoDateTimeN const& record) { return record.Date(); }
};

template <>
struct TemporalText<XoTime> {
  static constexpr char const* kFormat = "%H:%M:%S";
  static XoDateTimeN Widen(XoTime const& value) { return {value}; }
  static XoTime Narrow(XoDateTimeN const& record) { return record.Time(); }
};

template <>
struct TemporalText<XoDateTime> {
  static constexpr char const* kFormat = "%Y-%m-%dT%H:%M:%S";
  static XoDateTimeN Widen(XoDateTime const& value) { return {value}; }
  static XoDateTime Narrow(XoDateTimeN const& record) { return record.DateTime(); }
};

template <>
struct TemporalText<XoDateTimeN> {
  static constexpr char const* kFormat = "%X";
  static XoDateTimeN const& Widen(XoDateTimeN const& value) { return value; }
  static XoDateTimeN const& Narrow(XoDateTimeN const& record) { return record; }
};

template <>
struct TemporalText<XoTimeSpan> {
  static constexpr char const* kFormat = "%V";
  static XoDateTimeN Widen(XoTimeSpan const& value) {
    return {value.DateTime(), value.nanoSeconds};
  }
  static XoTimeSpan Narrow(XoDateTimeN const& record) {
    return {record.year,   record.month,  record.day,        record.hour,
            record.minute, record.second, record.nanoSeconds};
  }
};

/// Prints `value` to `out`, by the default format of its class where `format` is null.
template <class Value>
XoString& PrintValue(XoString& out, Value const& value, char const* format) {
  using Text = TemporalText<Value>;
  if (value.IsNullValue() != 0) return out = NullPrintString;
  return PrintTemporal(out, Text::Widen(value), format != nullptr ? format : Text::kFormat);
}

/// Reads `value` from `in` with the same default. The fields are taken even where the result is
/// false, which tells that the text ended too early.
template <class Value>
bool ScanValue(Value& value, XoString const& in, char const* format) {
  using Text = TemporalText<Value>;
  XoDateTimeN record;
  bool const isWhole = ScanTemporal(record, in, format != nullptr ? format : Text::kFormat);
  value = Text::Narrow(record);
  return isWhole;
}

/// Slot `PrintToXoString`: the first value alone.
template <class Value>
XoString& PrintSlot(XoString& out, void* values, char const* format, unsigned) {
  return PrintValue(out, LoadValue<Value>(values), format);
}

/// Slot `ScanFromXoString`: null for a null target, and where the text ended too early.
template <class Value>
void* ScanSlot(void* target, XoString& text, char const* format, unsigned) {
  if (target == nullptr) return nullptr;
  Value value = Value::ClearValue();
  bool const isWhole = ScanValue(value, text, format);
  StoreBytes(target, value);
  return isWhole ? target : nullptr;
}

}  // namespace xo
