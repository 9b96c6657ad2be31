#include "src/xotypes/convert_arrays.hpp"
#include "src/xotypes/text_print.hpp"
#include "xoistring.hpp"
#include "xostring.hpp"
#include "xotypeconvert.hpp"

/// The conversions of the text rows under the names that they are offered by.

namespace xo {
namespace {

/// Slot `ConvertTo`: `convert` makes a string of one value.
template <class Text, class Convert>
XoTypeConvertData* TextsToStrings(void* values, unsigned count, Convert convert) {
  using Strings = ObjectArray<XoString>;
  NewArray<Strings> strings(count);
  for (std::size_t index = 0; index < count; ++index) {
    *Strings::Element(strings.Get(), index) = convert(*ObjectArray<Text>::Element(values, index));
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

/// Slot `ConvertFrom`: `assign` gives a value the text of a string, or of none.
template <class Text, class Assign>
void* TextsFromStrings(XoTypeConvertData* strings, unsigned count, Assign assign) {
  NewArray<ObjectArray<Text>> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString const* const source =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    assign(*ObjectArray<Text>::Element(values.Get(), index), source);
  }
  return values.Release();
}

template <class Text>
XoTypeConvertData* WeightedToStrings(void* values, unsigned count) {
  return TextsToStrings<Text>(values, count,
                              [](Text const& value) { return XoString(value.StrGet()); });
}

template <class Text>
void* WeightedFromStrings(XoTypeConvertData* strings, unsigned count) {
  return TextsFromStrings<Text>(strings, count, [](Text& value, XoString const* source) {
    if (source != nullptr && source->IsNullValue() == 0) {
      value = Text(NarrowedText(*source).c_str());
    }
  });
}

}  // namespace
}  // namespace xo

XoTypeConvertData* StringConvertToXoString(void* values, unsigned count) {
  return xo::TextsToStrings<XoString>(values, count,
                                      [](XoString const& value) { return XoString(value); });
}
void* StringConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::TextsFromStrings<XoString>(strings, count,
                                        [](XoString& value, XoString const* source) {
                                          if (source != nullptr && source->IsNullValue() == 0) {
                                            value = *source;
                                          } else {
                                            value.SetNullValue();
                                          }
                                        });
}

XoTypeConvertData* XoIStringConvertToXoString(void* values, unsigned count) {
  return xo::WeightedToStrings<XoIString>(values, count);
}
void* XoIStringConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::WeightedFromStrings<XoIString>(strings, count);
}

XoTypeConvertData* XoCaseIStringConvertToXoString(void* values, unsigned count) {
  return xo::WeightedToStrings<XoCaseIString>(values, count);
}
void* XoCaseIStringConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::WeightedFromStrings<XoCaseIString>(strings, count);
}
