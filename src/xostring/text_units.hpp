#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "intl/language_context.hpp"
#include "xoorderblocks.hpp"

/// Text as units of one or two bytes: what the code set byte says of them, and how they are read.
namespace xo {

inline constexpr unsigned char kNoCodeSet = 0;
inline constexpr unsigned char kUnicodeSet = 253;
inline constexpr unsigned char kNullLanguage = 254;
/// As an argument: a code set, language or byte order by default.
inline constexpr unsigned char kByDefault = 255;

/// What operations report: a bad argument, the end of a list.
inline constexpr int kBadArgument = -2002;
inline constexpr int kEndOfList = -2005;

constexpr bool IsWide(unsigned char codeSet) { return codeSet > 224; }
constexpr unsigned UnitSize(unsigned char codeSet) { return IsWide(codeSet) ? 2 : 1; }

constexpr bool IsNullText(unsigned char codeSet, unsigned char language) {
  return language == kNullLanguage || (codeSet == kSortOrderSet && language == 0);
}

inline unsigned char CodeSetOr8(unsigned char codeSet) {
  return codeSet == kByDefault ? XoLanguageContext::GetDefault8CodeSet() : codeSet;
}
inline unsigned char CodeSetOr16(unsigned char codeSet) {
  return codeSet == kByDefault ? XoLanguageContext::GetDefault16CodeSet() : codeSet;
}
inline unsigned char CodeSetOrDefault(unsigned char codeSet) {
  return codeSet == kByDefault ? XoLanguageContext::GetDefaultCodeSet() : codeSet;
}
inline unsigned char LanguageOrDefault(unsigned char language) {
  return language == kByDefault ? XoLanguageContext::GetDefaultLanguage() : language;
}
inline unsigned char CodeSetOrNative(unsigned char codeSet) {
  return codeSet == kNoCodeSet ? XoLanguageContext::GetNativeCodeSet() : codeSet;
}
inline unsigned short OperatorOrDefault(unsigned short cmpOp) {
  return cmpOp == 65535 ? XoLanguageContext::GetDefaultCmpOp() : cmpOp;
}
inline unsigned char OrderOrDefault(unsigned char byteOrder) {
  return byteOrder == kByDefault ? FormLittle : byteOrder;
}

/// A 16-bit unit in a byte order: 2 is most significant byte first, every other the machine's own.
inline unsigned short InByteOrder(unsigned short unit, unsigned char byteOrder) {
  return byteOrder == FormBig ? ReverseBytes(unit) : unit;
}
inline unsigned short LoadWide(char const* text, unsigned char byteOrder = FormLittle) {
  return InByteOrder(LoadBytes<unsigned short>(text), byteOrder);
}
inline unsigned char LoadNarrow(char const* text) { return static_cast<unsigned char>(*text); }

/// The unit at `text`, of the width of `codeSet`.
inline unsigned short LoadUnit(char const* text, unsigned char codeSet,
                               unsigned char byteOrder = FormLittle) {
  return IsWide(codeSet) ? LoadWide(text, byteOrder) : LoadNarrow(text);
}
/// Writes a unit; of a narrow code set the low byte.
inline void StoreUnit(char* text, unsigned char codeSet, unsigned short unit,
                      unsigned char byteOrder = FormLittle) {
  if (IsWide(codeSet)) {
    StoreBytes(text, InByteOrder(unit, byteOrder));
  } else {
    *text = static_cast<char>(unit);
  }
}

inline bool IsTextEmpty(unsigned char codeSet, char const* text) {
  return text == nullptr || LoadUnit(text, codeSet) == 0;
}

/// Number of 16-bit units before the terminator, or `limit` where that comes first.
inline std::size_t WideLength(char const* text, std::size_t limit = static_cast<std::size_t>(-1)) {
  std::size_t length = 0;
  while (length < limit && LoadWide(text + 2 * length) != 0) ++length;
  return length;
}

/// Number of characters before the terminator, or `limit` where that comes first. Null reads as
/// empty.
inline std::size_t TextLength(unsigned char codeSet, char const* text,
                              std::size_t limit = static_cast<std::size_t>(-1)) {
  if (text == nullptr) return 0;
  if (IsWide(codeSet)) return WideLength(text, limit);
  if (limit == static_cast<std::size_t>(-1)) return std::strlen(text);
  void const* const end = std::memchr(text, 0, limit);
  return end != nullptr ? static_cast<std::size_t>(static_cast<char const*>(end) - text) : limit;
}

/// A length as the text interface counts; what is longer than 65535 is cut to that.
inline unsigned short AsCount(std::size_t length) {
  return static_cast<unsigned short>(std::min<std::size_t>(length, 65535));
}

/// Writes a 16-bit value `count` times.
inline void WideFill(char* target, unsigned short value, std::size_t count) {
  for (std::size_t place = 0; place < count; ++place) StoreBytes(target + 2 * place, value);
}

/// Two zero bytes, which end a text of any width: what a string without text shows. Never written.
extern char const kEmptyText[2];

inline char const* OrEmptyText(char const* text) { return text != nullptr ? text : kEmptyText; }

/// The code in code set `toSet` of a character of `fromSet`. Code set 0 is the native one. A set
/// that does not exist takes the code as it is, or a question mark where it does not fit.
unsigned short MapCode(unsigned short code, unsigned char fromSet, unsigned char toSet);

}  // namespace xo
