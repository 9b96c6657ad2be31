#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>

#include "_xonulty.hpp"
#include "base/bytes.hpp"
#include "base/number_text.hpp"
#include "src/xostring/narrow_text.hpp"
#include "src/xotypes/narrow_assign.hpp"
#include "src/xotypes/object_array.hpp"
#include "xoboolean.hpp"
#include "xoint64.hpp"
#include "xostring.hpp"
#include "xotypeconvert.hpp"
#include "xotypes.hpp"

/// Arrays of values as arrays of strings and back. `TextOf` converts one element.
namespace xo {

/// A number cut to 64 bits, toward zero; what does not fit, NaN included, gives the lowest value.
constexpr o_8b TruncateToInteger(o_double number) {
  constexpr o_double kLimit = 9223372036854775808.0;
  return number >= -kLimit && number < kLimit ? static_cast<o_8b>(number)
                                              : std::numeric_limits<o_8b>::min();
}

/// How a value writes, into a new string of the default 8-bit code set, and reads as text. Integers
/// up to the width of `int` read as one and are cut; unsigned ones of that width need the greater
/// range of a floating-point number.
template <class Value>
struct TextOf {
  static void Write(XoString& text, Value value) {
    if constexpr (std::floating_point<Value>) {
      char digits[kDoubleTextSize];
      PrintDouble(digits, value);
      GiveText(text, digits);
    } else {
      char digits[kIntegerTextSize];
      char const* const last = std::to_chars(digits, digits + sizeof digits, value).ptr;
      GiveText(text, {digits, static_cast<std::size_t>(last - digits)});
    }
  }

  static Value Read(XoString const& text) {
    if constexpr (std::floating_point<Value>) {
      return static_cast<Value>(static_cast<o_double>(text));
    } else if constexpr (std::is_same_v<Value, o_u4b>) {
      return static_cast<Value>(TruncateToInteger(static_cast<o_double>(text)));
    } else if constexpr (sizeof(Value) == sizeof(long long)) {
      return static_cast<Value>(static_cast<long long>(text));
    } else {
      return static_cast<Value>(static_cast<int>(text));
    }
  }
};

template <>
struct TextOf<XoInt64> {
  static void Write(XoString& text, XoInt64 value) {
    // Printed text takes the code set of what it is appended to.
    text.codeSet = XoString::GetDefaultCodeSet();
    value.PrintToXoString(text, nullptr);
  }

  static XoInt64 Read(XoString const& text) {
    XoInt64 value;
    value.ScanFromXoString(text, nullptr);
    return value;
  }
};

template <>
struct TextOf<XoBoolean> {
  static void Write(XoString& text, XoBoolean value) {
    if (value.IsNullValue() != 0) {
      text.SetNullValue();
    } else {
      GiveText(text, value.value == 1 ? "1" : "0");
    }
  }

  static XoBoolean Read(XoString const& text) { return NarrowText(text).Get()[0] == '1' ? 1 : 0; }
};

template <class Number, XoTypeId kRow>
struct TextOf<XoNullElement<Number, kRow>> {
  using Element = XoNullElement<Number, kRow>;

  static void Write(XoString& text, Element element) {
    if (element.IsNullValue() != 0) {
      text.SetNullValue();
    } else {
      TextOf<Number>::Write(text, element.value);
    }
  }

  static Element Read(XoString const& text) { return TextOf<Number>::Read(text); }
};

/// What stands for a text that is missing or null: null where the type has it, else 0.
template <class Value>
Value MissingValue() {
  Value value{};
  if constexpr (requires { value.SetNullValue(); }) value.SetNullValue();
  return value;
}

/// An array that goes back to its row unless it is handed on.
template <class Array>
class NewArray {
 public:
  explicit NewArray(unsigned count_) : NewArray(count_, Array::Create(count_)) {}
  NewArray(unsigned count_, void* values_) : values(values_), count(count_) {}
  ~NewArray() { Array::Delete(values, count); }
  NewArray(NewArray const&) = delete;
  NewArray& operator=(NewArray const&) = delete;

  void* Get() const { return values; }
  void* Release() { return std::exchange(values, nullptr); }

 private:
  void* values;
  unsigned count;
};

/// Slot `ConvertTo`.
template <class Value>
XoTypeConvertData* ConvertToStrings(void* values, unsigned count) {
  using Strings = ObjectArray<XoString>;
  NewArray<Strings> strings(count, Strings::CreateWith(count, XoString::GetDefault8CodeSet(),
                                                       XoString::GetDefaultLanguage()));
  for (std::size_t index = 0; index < count; ++index) {
    TextOf<Value>::Write(*Strings::Element(strings.Get(), index),
                         LoadBytes<Value>(Advance(values, index * sizeof(Value))));
  }
  auto* const carrier = XoTypeConvertData::Make(XoSTRING_T, count, strings.Get(), nullptr);
  strings.Release();
  return carrier;
}

/// Slot `ConvertFrom`: `Array` makes the values.
template <class Value, class Array>
void* ConvertFromStrings(XoTypeConvertData* strings, unsigned count) {
  NewArray<Array> values(count);
  for (unsigned index = 0; index < count; ++index) {
    XoString const* const text =
        strings != nullptr ? strings->GetString(static_cast<int>(index)) : nullptr;
    bool const isThere = text != nullptr && text->IsNullValue() == 0;
    StoreBytes(Advance(values.Get(), index * sizeof(Value)),
               isThere ? TextOf<Value>::Read(*text) : MissingValue<Value>());
  }
  return values.Release();
}

/// Slot `DefaultValue` of types with a null value: null values, or what an empty text reads as.
template <class Value, class Array>
void* DefaultOrNull(unsigned count, int asNull) {
  NewArray<Array> values(count);
  Value value = TextOf<Value>::Read(XoString());
  if (asNull != 0) value.SetNullValue();
  for (std::size_t index = 0; index < count; ++index) {
    StoreBytes(Advance(values.Get(), index * sizeof(Value)), value);
  }
  return values.Release();
}

}  // namespace xo
