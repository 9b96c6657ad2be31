#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/bytes.hpp"
#include "xostring.hpp"
#include "xotypes.hpp"

/// The format language of the identifiers: one walker for printing and one for scanning. A class
/// brings its letters, the order of its older positional conversions, and what literal text does in
/// a scan.
namespace xo {

/// A field by its letter.
struct IdentifierField {
  char letter;
  bool isWide;  ///< 32 bits instead of 16
};

/// What an older conversion stands for: 'h' or 'l' at its place, and the field.
struct PositionalField {
  char letter;
  unsigned field;
};

/// What a character of a format that stands for itself does in a scan.
enum class LiteralRule : unsigned char {
  kSkipOne,        ///< skips one character of the text
  kMatch,          ///< moves both where they are equal; see `ScanIdentifier`
  kSkipAllBlanks,  ///< blanks and opening brackets are skipped first, in both
};

struct IdentifierLanguage {
  std::span<IdentifierField const> fields;
  std::span<PositionalField const> positions;
  LiteralRule literals;
};

/// Most fields that an identifier has.
inline constexpr unsigned kMostFields = 6;
using IdentifierValues = std::uint32_t[kMostFields];

/// The values of the fields under a format, as far as `kMostCharacters`.
std::string PrintIdentifier(IdentifierLanguage const& language, IdentifierValues const& values,
                            char const* format);

/// Reads the fields that a format names out of a text; the others become 0. False, and nothing is
/// read, for the text of null.
bool ScanIdentifier(IdentifierLanguage const& language, IdentifierValues& values,
                    XoString const& text, char const* format);

constexpr char const* FormatOr(char const* format, char const* usual) {
  return format != nullptr ? format : usual;
}

/// Makes a value of these fields the text of `out`.
template <class Identifier>
XoString& PrintIdentifier(XoString& out, Identifier const& value,
                          IdentifierLanguage const& language, IdentifierValues const& values,
                          char const* format) {
  if (value.IsNullValue() != 0) return out = NullPrintString;
  return out = PrintIdentifier(language, values, format).c_str();
}

/// Slot `ScanFromXoString`: null for a null value alone.
template <class Identifier>
void* ScanInto(void* value, XoString const& in, char const* format) {
  if (value == nullptr) return nullptr;
  auto identifier = LoadBytes<Identifier>(value);
  identifier.ScanFromXoString(in, format);
  StoreBytes(value, identifier);
  return value;
}

constexpr o_u2b Low16(std::uint32_t value) { return static_cast<o_u2b>(value); }

}  // namespace xo
