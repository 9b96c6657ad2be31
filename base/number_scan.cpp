#include <cstring>
#include <limits>

#include "base/number_conversion.hpp"
#include "base/number_format.hpp"
#include "base/number_parts.hpp"

namespace xo {
namespace {

/// A conversion of a scan, behind its "%": a number to read, or text to pass over.
struct ScanConversion {
  bool discards = false;
  unsigned width = 0;
  unsigned bits = 32;
  char letter = 0;

  /// Whether this is "%*s" or "%*c", which take any text.
  bool PassesOver() const { return discards && (letter == 's' || letter == 'c'); }

  /// Reads the conversion at `format`; its end, or null where it does not take a number of the kind
  /// that `takes` knows the letters of.
  char const* Read(char const* format, bool (*takes)(char letter)) {
    discards = *format == '*';
    if (discards) ++format;
    width = TakeWidth(format);
    bits = TakeSize(format);
    letter = *format;
    // More than one character is no number.
    if (letter == 'c' && width > 1 && !discards) return nullptr;
    return takes(letter) || PassesOver() ? format + 1 : nullptr;
  }

  /// Where the text that the conversion may take ends at the latest.
  char const* LimitOf(char const* text) const {
    if (width == 0) return text + std::strlen(text);
    void const* const end = std::memchr(text, 0, width);
    return end != nullptr ? static_cast<char const*>(end) : text + width;
  }
};

char const* SkipWhite(char const* text) {
  while (IsWhite(*text)) ++text;
  return text;
}

/// Passes over the characters of "%*s" and "%*c"; null where there is none.
char const* PassOver(char const* text, ScanConversion const& conversion) {
  if (conversion.letter == 's') text = SkipWhite(text);
  char const* const first = text;
  std::size_t most = conversion.width;
  if (most == 0) most = conversion.letter == 'c' ? 1 : static_cast<std::size_t>(-1);
  while (most != 0 && *text != 0 && (conversion.letter == 'c' || !IsWhite(*text))) {
    ++text;
    --most;
  }
  return text != first ? text : nullptr;
}

/// Reads an integer at `text`; its end, or null where there is none. Digits are met one by one, so
/// that the end of the text need not be known.
char const* ReadConverted(char const* text, ScanConversion const& conversion,
                          std::uint64_t& value) {
  std::size_t left = conversion.width != 0 ? conversion.width : static_cast<std::size_t>(-1);
  auto const take = [&text, &left] {
    ++text;
    --left;
  };
  bool const isSigned = IsSignedLetter(conversion.letter);
  bool const negative = *text == '-';
  if (negative || *text == '+') take();

  unsigned base = 10;
  if (conversion.letter == 'o') base = 8;
  bool const isHexadecimal = conversion.letter == 'x' || conversion.letter == 'X';
  if (isHexadecimal) base = 16;
  if ((isHexadecimal || conversion.letter == 'i') && left != 0 && *text == '0') {
    bool const marked = left > 2 && LowerAscii(text[1]) == 'x' && DigitValue(text[2]) < 16;
    base = marked || isHexadecimal ? 16 : 8;
    if (marked) {
      take();
      take();
    }
  }

  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
  if (isSigned) limit = limit / 2 + (negative ? 1 : 0);
  std::uint64_t const most = limit / base;
  std::uint64_t magnitude = 0;
  bool overflows = false;
  char const* const first = text;
  for (unsigned digit = 0; left != 0 && (digit = DigitValue(*text)) < base; take()) {
    if (magnitude > most || (magnitude == most && digit > limit % base)) overflows = true;
    magnitude = magnitude * base + digit;
  }
  if (text == first) return nullptr;
  // Beyond the greatest unsigned number the sign does not count.
  if (overflows) magnitude = negative && !isSigned ? 0 - limit : limit;
  value = CutTo(negative ? 0 - magnitude : magnitude, conversion.bits, isSigned);
  return text;
}

char const* ReadInteger(char const* text, ScanConversion const& conversion, std::uint64_t& value) {
  if (conversion.letter != 'c') return ReadConverted(SkipWhite(text), conversion, value);
  if (*text == 0) return nullptr;
  value = static_cast<unsigned char>(*text);
  return text + 1;
}

template <class Number>
char const* ReadFloating(char const* text, ScanConversion const& conversion, Number& value) {
  text = SkipWhite(text);
  char const* const last = conversion.LimitOf(text);
  bool const negative = text != last && *text == '-';
  if (negative || (text != last && *text == '+')) ++text;
  Number magnitude = 0;
  char const* const end = ReadMagnitude(text, last, magnitude);
  if (end != nullptr) value = negative ? -magnitude : magnitude;
  return end;
}

template <class Value>
bool ScanValue(char const* text, char const* format, bool (*takes)(char letter),
               char const* (*read)(char const*, ScanConversion const&, Value&), Value& value) {
  if (text == nullptr || format == nullptr) return false;
  bool found = false;
  while (*format != 0) {
    if (IsWhite(*format)) {
      text = SkipWhite(text);
      ++format;
      continue;
    }
    if (*format == '%') {
      if (format[1] == '%') {
        // A "%" is met behind white space, as a number is.
        text = SkipWhite(text);
        ++format;
      } else {
        ScanConversion conversion;
        char const* const behind = conversion.Read(format + 1, takes);
        if (behind != nullptr && (conversion.discards || !found)) {
          Value passed = 0;
          char const* const end =
              conversion.PassesOver()
                  ? PassOver(text, conversion)
                  : read(text, conversion, conversion.discards ? passed : value);
          if (end == nullptr) return found;
          if (!conversion.discards) found = true;
          text = end;
          format = behind;
          continue;
        }
      }
    }
    if (*text != *format) return found;
    ++text;
    ++format;
  }
  return found;
}

}  // namespace

bool ScanInteger(char const* text, char const* format, std::uint64_t& value) {
  return ScanValue(text, format, IsIntegerLetter, ReadInteger, value);
}

bool ScanDouble(char const* text, char const* format, double& value) {
  return ScanValue(text, format, IsFloatingLetter, ReadFloating<double>, value);
}

bool ScanFloat(char const* text, char const* format, float& value) {
  return ScanValue(text, format, IsFloatingLetter, ReadFloating<float>, value);
}

}  // namespace xo
