#pragma once

#include <algorithm>
#include <cstddef>

#include "src/xotypes/convert_arrays.hpp"

/// Conversions of rows whose values convert as they print and scan: null values to null strings,
/// and missing or null strings to null, or, of a type without it, to what an empty text reads as.
///
/// `Text` does this with one element: `IsNull`, `Print(out, value)`, `Scan(value, text)` and
/// `SetMissing(value)`.
namespace xo {

template <class Value, class Text>
XoTypeConvertData* ConvertByPrint(void* values, unsigned count) {
  using Strings = ObjectArray<XoString>;
  NewArray<Strings> strings(count);
  for (std::size_t index = 0; index < count; ++index) {
    XoString& text = *Strings::Element(strings.Get(), index);
    void* const value = Advance(values, index * sizeof(Value));
    if (Text::IsNull(value) != 0) {
      text.SetNullValue();
    } else {
      Text::Print(text, value);
    }
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

template <class Value, class Text>
void* ConvertByScan(XoTypeConvertData* strings, unsigned count) {
  NewArray<ObjectArray<Value>> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString const* const text =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    void* const value = Advance(values.Get(), index * sizeof(Value));
    if (text != nullptr && text->IsNullValue() == 0) {
      Text::Scan(value, *text);
    } else {
      Text::SetMissing(value);
    }
  }
  return values.Release();
}

/// Slot `DefaultValue`: new elements, null ones where that is asked for.
template <class Value>
void* NewOrNull(unsigned count, int asNull) {
  void* const values = ObjectArray<Value>::Create(count);
  if (asNull != 0) {
    for (std::size_t index = 0; index < std::max(count, 1u); ++index) {
      ObjectArray<Value>::Element(values, index)->SetNullValue();
    }
  }
  return values;
}

}  // namespace xo
