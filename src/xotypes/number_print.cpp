#include "src/xotypes/number_print.hpp"

#include <algorithm>
#include <cstring>
#include <string>

#include "base/number_format.hpp"
#include "base/number_text.hpp"
#include "src/xostring/narrow_text.hpp"
#include "src/xotypes/narrow_assign.hpp"
#include "xoboolean.hpp"
#include "xostring.hpp"

namespace xo {
namespace {

/// Room for what formats of the table print; longer texts take memory of their own.
constexpr std::size_t kUsualText = 512;

/// The format of floating-point numbers in the table, under which those that are not finite have
/// names of their own.
bool IsExactFormat(char const* format) {
  return format != nullptr && std::strcmp(format, "%.17g") == 0;
}

constexpr bool IsPrintable(o_u1b byte) { return byte >= 0x20 && byte < 0x7F; }

template <class Value>
XoString& PrintFormatted(XoString& out,
                         std::size_t (*print)(char*, std::size_t, char const*, Value),
                         char const* format, Value value) {
  char usual[kUsualText];
  std::size_t const length = print(usual, sizeof usual, format, value);
  // A character of zero ends the text.
  if (length < sizeof usual) return AssignNarrow(out, usual);
  // No string takes more than this.
  std::string text(std::min<std::size_t>(length, XoString::kMaxSize), 0);
  print(text.data(), text.size() + 1, format, value);
  return out = text.c_str();
}

}  // namespace

XoString& PrintInteger(XoString& out, o_8b value, char const* format) {
  return PrintFormatted(out, FormatInteger, format, static_cast<std::uint64_t>(value));
}

XoString& PrintFloating(XoString& out, o_double value, char const* format) {
  if (!IsExactFormat(format)) return PrintFormatted(out, FormatDouble, format, value);
  char text[kDoubleTextSize];
  PrintDouble(text, value);
  return AssignNarrow(out, text);
}

void* ScanInteger(void* target, XoString const& text, char const* format, unsigned width) {
  if (target == nullptr) return nullptr;
  std::uint64_t value = 0;
  if (ScanInteger(NarrowText(text).Get(), format, value)) std::memcpy(target, &value, width);
  return target;
}

void* ScanFloating(void* target, XoString const& text, char const* format, unsigned width) {
  if (target == nullptr) return nullptr;
  NarrowText const narrow(text);
  o_double number = 0;
  o_float shortNumber = 0;
  bool const isShort = width == sizeof shortNumber;
  if (IsExactFormat(format)) {
    number = ReadDouble(narrow.Get());
    shortNumber = static_cast<o_float>(number);
  } else if (isShort ? !ScanFloat(narrow.Get(), format, shortNumber)
                     : !ScanDouble(narrow.Get(), format, number)) {
    return target;
  }
  if (isShort) {
    StoreBytes(target, shortNumber);
  } else {
    StoreBytes(target, number);
  }
  return target;
}

XoString& PrintBytes(XoString& out, void* values, char const* format, unsigned count) {
  std::string text;
  std::string piece;
  for (std::size_t index = 0; index < count && text.size() < XoString::kMaxSize; ++index) {
    auto const byte = LoadBytes<o_u1b>(Advance(values, index));
    char const* const pieceFormat = IsPrintable(byte) ? format : "0x%02x";
    char usual[kUsualText];
    std::size_t const length = FormatInteger(usual, sizeof usual, pieceFormat, byte);
    if (length < sizeof usual) {
      text += usual;
      continue;
    }
    piece.resize(std::min<std::size_t>(length, XoString::kMaxSize));
    FormatInteger(piece.data(), piece.size() + 1, pieceFormat, byte);
    text += piece.c_str();
  }
  return out = text.c_str();
}

void* ScanBytes(void* target, XoString& text, char const* format, unsigned count) {
  if (target == nullptr) return nullptr;
  NarrowText const narrow(text);
  char const* place = narrow.Get();
  IntegerScanner scanner(format);
  for (std::size_t index = 0; index < count && *place != 0; ++index, ++place) {
    std::uint64_t value = 0;
    if (ScanInteger(place, "0x%x", value) || scanner.Scan(place, value)) {
      StoreBytes(Advance(target, index), static_cast<o_u1b>(value));
    }
  }
  return target;
}

XoString& PrintInt64(XoString& out, void* values, char const* format, unsigned) {
  return LoadBytes<XoInt64>(values).PrintToXoString(out, format);
}

void* ScanInt64(void* target, XoString& text, char const* format, unsigned) {
  if (target == nullptr) return nullptr;
  auto value = LoadBytes<XoInt64>(target);
  value.ScanFromXoString(text, format);
  StoreBytes(target, value);
  return target;
}

XoString& PrintBoolean(XoString& out, void* values, char const*, unsigned) {
  auto const value = LoadBytes<XoBoolean>(values);
  if (value.IsNullValue() != 0) return out = NullPrintString;
  return out = value.value == 1 ? "TRUE" : "FALSE";
}

void* ScanBoolean(void* target, XoString& text, char const*, unsigned) {
  if (target == nullptr) return nullptr;
  XoBoolean value;
  if (BeginsWithNull(text)) {
    value.SetNullValue();
  } else {
    NarrowText const narrow(text);
    for (char const* const name : {"T", "t", "1", "TRUE", "true"}) {
      if (std::strcmp(narrow.Get(), name) == 0) value = 1;
    }
  }
  StoreBytes(target, value);
  return target;
}

bool BeginsWithNull(XoString const& text) {
  NarrowText const null(NullPrintString);
  return std::strncmp(NarrowText(text).Get(), null.Get(), std::strlen(null.Get())) == 0;
}

}  // namespace xo
