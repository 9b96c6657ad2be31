#pragma once

#include <concepts>
#include <type_traits>

#include "base/bytes.hpp"
#include "xoint64.hpp"
#include "xostring.hpp"
#include "xotypes.hpp"

/// The slots `PrintToXoString` and `ScanFromXoString` of the numbers and of the boolean. Print
/// replaces what `out` holds, unless noted. A scan into no target gives null; one that does not
/// match leaves the element as it was. Formats are told at base/number_format.hpp.
namespace xo {

XoString& PrintInteger(XoString& out, o_8b value, char const* format);
XoString& PrintFloating(XoString& out, o_double value, char const* format);

/// Reads a whole element, `width` bytes at `target`, or leaves it.
void* ScanInteger(void* target, XoString const& text, char const* format, unsigned width);
void* ScanFloating(void* target, XoString const& text, char const* format, unsigned width);

/// Bytes print as one piece of text: a printable one under `format`, others as "0x" and two
/// digits. They read from one place of the text each, "0x" and digits as a number, everything else
/// under `format`. Of both rows of bytes, so that a manager knows them by these two.
XoString& PrintBytes(XoString& out, void* values, char const* format, unsigned count);
void* ScanBytes(void* target, XoString& text, char const* format, unsigned count);

/// Print appends to `out`, and a scan that does not match gives -1.
XoString& PrintInt64(XoString& out, void* values, char const* format, unsigned count);
void* ScanInt64(void* target, XoString& text, char const* format, unsigned count);

/// "TRUE", "FALSE" or what null values print as; `format` is not read.
XoString& PrintBoolean(XoString& out, void* values, char const* format, unsigned count);
void* ScanBoolean(void* target, XoString& text, char const* format, unsigned count);

/// Whether `text` begins with what null values print as.
bool BeginsWithNull(XoString const& text);

/// The first element under `format`. Integers of 16 bits take part in it by their sign, unsigned
/// ones too.
template <class Value>
XoString& PrintNumber(XoString& out, void* values, char const* format, unsigned) {
  auto const value = LoadBytes<Value>(values);
  if constexpr (std::floating_point<Value>) {
    return PrintFloating(out, o_double{value}, format);
  } else {
    return PrintInteger(out, static_cast<o_8b>(value), format);
  }
}

template <class Value>
void* ScanNumber(void* target, XoString& text, char const* format, unsigned) {
  if constexpr (std::floating_point<Value>) {
    return ScanFloating(target, text, format, sizeof(Value));
  } else {
    return ScanInteger(target, text, format, sizeof(Value));
  }
}

/// The functions of a row of numbers. Integers share them where only the width of what a format
/// takes matters: those of 16 and of 64 bits.
template <class Value>
struct NumberText {
  static constexpr bool kSignMatters = sizeof(Value) == 4 || std::floating_point<Value>;
  using Shared = typename std::conditional_t<kSignMatters, std::type_identity<Value>,
                                             std::make_signed<Value>>::type;
  static constexpr TypeDescriptor::PrintFunction* kPrint = PrintNumber<Shared>;
  static constexpr TypeDescriptor::ScanFunction* kScan = ScanNumber<Shared>;
};

template <class Value>
requires(sizeof(Value) == 1) struct NumberText<Value> {
  static constexpr TypeDescriptor::PrintFunction* kPrint = PrintBytes;
  static constexpr TypeDescriptor::ScanFunction* kScan = ScanBytes;
};

template <>
struct NumberText<XoInt64> {
  static constexpr TypeDescriptor::PrintFunction* kPrint = PrintInt64;
  static constexpr TypeDescriptor::ScanFunction* kScan = ScanInt64;
};

struct BooleanText {
  static constexpr TypeDescriptor::PrintFunction* kPrint = PrintBoolean;
  static constexpr TypeDescriptor::ScanFunction* kScan = ScanBoolean;
};

}  // namespace xo
