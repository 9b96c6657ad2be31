#pragma once

#include "src/xotypes/convert_arrays.hpp"
#include "xotypes.hpp"

/// The conversions of class rows, which are the row's own print and scan in the format that the row
/// has at the time: null values become null strings, and missing or null strings become null, or,
/// of a type without it, what an empty text reads as.
namespace xo {

/// The array operations of a row for a `NewArray`.
template <XoTypeId kRow>
struct RowArray {
  static void* Create(unsigned count) { return CurrentTypeTable[kRow]->Create(count); }
  static void Delete(void* values, unsigned count) {
    CurrentTypeTable[kRow]->Delete(values, count);
  }
};

/// Slot `ConvertTo`.
template <XoTypeId kRow>
XoTypeConvertData* PrintToStrings(void* values, unsigned count) {
  using Strings = ObjectArray<XoString>;
  TypeDescriptor const& row = *CurrentTypeTable[kRow];
  NewArray<Strings> strings(count);
  for (std::size_t index = 0; index < count; ++index) {
    XoString& text = *Strings::Element(strings.Get(), index);
    void* const value = Advance(values, index * row.MemLen);
    if (row.IsNull(value) != 0) {
      text.SetNullValue();
    } else {
      row.PrintToXoString(text, value, row.Format, 1);
    }
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

/// Slot `ConvertFrom`.
template <XoTypeId kRow>
void* ScanFromStrings(XoTypeConvertData* strings, unsigned count) {
  TypeDescriptor const& row = *CurrentTypeTable[kRow];
  NewArray<RowArray<kRow>> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString* const text =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    void* const value = Advance(values.Get(), std::size_t{index} * row.MemLen);
    if (text != nullptr && text->IsNullValue() == 0) {
      row.ScanFromXoString(value, *text, row.Format, 1);
    } else if (row.SetNull != nullptr) {
      row.SetNull(value);
    } else {
      XoString empty;
      row.ScanFromXoString(value, empty, row.Format, 1);
    }
  }
  return values.Release();
}

/// `row` with these two.
template <XoTypeId kRow>
constexpr TypeDescriptor WithTextConversions(TypeDescriptor row) {
  row.ConvertTo = PrintToStrings<kRow>;
  row.ConvertFrom = ScanFromStrings<kRow>;
  return row;
}

}  // namespace xo
