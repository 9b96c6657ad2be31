#pragma once

#include "src/xodate/temporal_text.hpp"
#include "src/xotypes/convert_arrays.hpp"

/// Conversion of arrays of temporal values to strings and back: print and scan in the format that
/// the row has at the time, a null string for null.
namespace xo {

/// Slot `ConvertTo` of row `kRow`.
template <class Value, XoTypeId kRow>
XoTypeConvertData* ConvertTemporalToStrings(void* values, unsigned count) {
  using Strings = ObjectArray<XoString>;
  NewArray<Strings> strings(count);
  for (std::size_t index = 0; index < count; ++index) {
    XoString& text = *Strings::Element(strings.Get(), index);
    auto const value = LoadValue<Value>(Advance(values, index * sizeof(Value)));
    if (value.IsNullValue() != 0) {
      text.SetNullValue();
    } else {
      PrintValue(text, value, CurrentTypeTable[kRow]->Format);
    }
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

/// Slot `ConvertFrom` of row `kRow`: null where there is no string.
template <class Value, XoTypeId kRow>
void* ConvertTemporalFromStrings(XoTypeConvertData* strings, unsigned count) {
  using Values = ObjectArray<Value>;
  NewArray<Values> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString const* const text =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    Value& value = *Values::Element(values.Get(), index);
    if (text != nullptr && text->IsNullValue() == 0) {
      ScanValue(value, *text, CurrentTypeTable[kRow]->Format);
    } else {
      value.SetNullValue();
    }
  }
  return values.Release();
}

}  // namespace xo
