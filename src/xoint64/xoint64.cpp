#include "xoint64.hpp"

#include <charconv>
#include <cmath>
#include <string>

#include "base/format.hpp"
#include "base/number_parts.hpp"
#include "base/platform.hpp"
#include "base/scalar_disk.hpp"
#include "src/xostring/narrow_text.hpp"
#include "src/xotypes/object_array.hpp"
#include "xostring.hpp"

namespace {

/// Above this a magnitude is beyond the type.
constexpr double kMostMagnitude = 9.223372036854775e18;
constexpr XoInt64 kLargest(0xFFFFFFFFu, 0x7FFFFFFF);
constexpr XoInt64 kLowest(0u, -0x7FFFFFFF - 1);

/// How a letter of a format prints and reads.
struct Letter {
  unsigned base;
  char const* prefix;
  char const* lowest;  ///< the lowest value behind the prefix, whose magnitude the type lacks
};

/// What the letter behind a "%" stands for; null where that is no conversion.
Letter const* FindLetter(char letter) {
  static constexpr Letter kDecimal = {10, "", "-9223372036854775808"};
  static constexpr Letter kOctal = {8, "0", "1000000000000000000000"};
  static constexpr Letter kHexadecimal = {16, "0x", "8000000000000000"};
  static constexpr Letter kUpperHexadecimal = {16, "0X", "8000000000000000"};
  switch (letter) {
    case 'S':
    case 'd':
    case 'i':
      return &kDecimal;
    case 'o':
      return &kOctal;
    case 'x':
      return &kHexadecimal;
    case 'X':
      return &kUpperHexadecimal;
    default:
      return nullptr;
  }
}

void Append(std::string& text, XoInt64 value, Letter const& letter) {
  if (value == kLowest) {
    text += letter.prefix;
    text += letter.lowest;
    return;
  }
  if (value < 0) text += '-';
  text += letter.prefix;
  char digits[24];
  char* const last = std::to_chars(digits, digits + sizeof digits, value.Abs().GetU8b(),
                                   static_cast<int>(letter.base))
                         .ptr;
  if (letter.prefix[0] != 0 && letter.prefix[1] == 'X') {
    for (char* digit = digits; digit != last; ++digit) *digit = xo::UpperAscii(*digit);
  }
  text.append(digits, last);
}

/// The value of a digit of any base; what is neither digit nor letter is none of any.
constexpr unsigned AnyDigitValue(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  char const upper = xo::UpperAscii(character);
  return upper >= 'A' && upper <= 'Z' ? static_cast<unsigned>(upper - 'A') + 10 : 36;
}

/// Reads the number that a conversion finds at `text`, which goes on to the character `behind`;
/// false where it does not match.
bool ReadNumber(char const*& text, char letter, char behind, XoInt64& value) {
  bool const negative = xo::TakeSign(text);
  unsigned base = 10;
  if (text[0] == '0') {
    bool const marked = text[1] == 'x' || text[1] == 'X';
    base = marked ? 16 : 8;
    text += marked ? 2 : 1;
  }
  if (letter != 'S' && FindLetter(letter)->base != base) return false;
  unsigned long long magnitude = 0;
  for (; *text != 0 && *text != behind; ++text) {
    unsigned const digit = AnyDigitValue(*text);
    if (digit >= base) return false;
    magnitude = magnitude * base + digit;
  }
  value = negative ? -XoInt64(magnitude) : XoInt64(magnitude);
  return true;
}

}  // namespace

XoInt64::XoInt64(double value) : XoInt64() {
  double const magnitude = std::fabs(value);
  if (magnitude > kMostMagnitude) {
    *this = kLargest;
  } else if (magnitude >= 1) {
    // Exactly the digits of "%E": one before the point, six behind it.
    char digits[16];
    char const* const last =
        std::to_chars(digits, digits + sizeof digits, magnitude, std::chars_format::scientific, 6)
            .ptr;
    int exponent = 0;
    std::from_chars(digits + 10, last, exponent);
    unsigned long long whole = static_cast<unsigned long long>(digits[0] - '0');
    for (int place = 2; place < 8 && exponent > 0; ++place, --exponent) {
      whole = whole * 10 + static_cast<unsigned long long>(digits[place] - '0');
    }
    for (; exponent > 0; --exponent) whole *= 10;
    *this = whole;
  }
  if (value < 0) *this = -*this;
}

void XoInt64::ReportDivisionByZero() {
  XOLA_assert("XoInt64 divide by zero", "src\\xoint64", __LINE__);
}

XoString& XoInt64::PrintToXoString(XoString& out, char const* format) const {
  if (format == nullptr) format = "%S";
  std::string text;
  while (*format != 0) {
    Letter const* const letter = *format == '%' ? FindLetter(format[1]) : nullptr;
    if (letter != nullptr) {
      Append(text, *this, *letter);
      format += 2;
    } else {
      text += *format++;
    }
    // More than a string holds need not be written out.
    if (text.size() > XoString::kMaxSize) break;
  }
  return text.empty() ? out : out << text.c_str();
}

void XoInt64::ScanFromXoString(XoString const& text, char const* format) {
  if (format == nullptr) format = "%S";
  xo::NarrowText const narrow(text);
  char const* place = narrow.Get();
  while (*format != 0 && *place != 0) {
    bool matches = false;
    if (*format == '%' && FindLetter(format[1]) != nullptr) {
      matches = ReadNumber(place, format[1], format[2], *this);
      format += 2;
    } else {
      matches = *place++ == *format++;
    }
    if (!matches) {
      *this = -1;
      return;
    }
  }
}

void* XoInt64::Create(unsigned count) { return xo::ObjectArray<XoInt64>::Create(count); }

void* XoInt64::Delete(void* values, unsigned count) {
  return xo::ObjectArray<XoInt64>::Delete(values, count);
}

unsigned XoInt64::Store(void* disk, void const* memory, unsigned char format, unsigned count) {
  return LongStore(disk, memory, xo::FormNibble(format), 2 * count);
}

unsigned XoInt64::Load(void* memory, void const* disk, unsigned char format, unsigned count) {
  return Store(memory, disk, format, count);
}

unsigned XoInt64::NullSizeGet(unsigned count) {
  return static_cast<unsigned>(sizeof(XoInt64)) * count;
}

unsigned XoInt64::SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return NullSizeGet(count);
}
