#pragma once

#include "src/xotypes/convert_arrays.hpp"
#include "xotypes.hpp"

/// The conversions of class rows, which are the row's own print and scan in the row's own format.
namespace xo {

/// The array operations of a row for a `NewArray`.
template <int Id>
struct RowArray {
  static void* Create(unsigned count) { return CurrentTypeTable[Id]->Create(count); }
  static void Delete(void* values, unsigned count) { CurrentTypeTable[Id]->Delete(values, count); }
};

/// Slot `ConvertTo`.
template <int Id>
XoTypeConvertData* PrintToStrings(void* values, unsigned count) {
  using Strings = ObjectArray<XoString>;
  TypeDescriptor const& row = *CurrentTypeTable[Id];
  NewArray<Strings> strings(count);
  for (std::size_t index = 0; index < count; ++index) {
    row.PrintToXoString(*Strings::Element(strings.Get(), index),
                        Advance(values, index * row.MemLen), row.Format, 1);
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

/// Slot `ConvertFrom` of rows without a null value: a missing text reads as an empty one.
template <int Id>
void* ScanFromStrings(XoTypeConvertData* strings, unsigned count) {
  TypeDescriptor const& row = *CurrentTypeTable[Id];
  NewArray<RowArray<Id>> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString* const text =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    bool const isThere = text != nullptr && text->IsNullValue() == 0;
    XoString empty;
    row.ScanFromXoString(Advance(values.Get(), std::size_t{index} * row.MemLen),
                         isThere ? *text : empty, row.Format, 1);
  }
  return values.Release();
}

}  // namespace xo
