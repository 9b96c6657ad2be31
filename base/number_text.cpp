#include "base/number_text.hpp"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace xo {
namespace {

constexpr bool IsWhite(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

/// The value of a digit in some base up to 16, or 16.
constexpr unsigned DigitValue(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  char const lower = LowerAscii(character);
  if (lower >= 'a' && lower <= 'f') return static_cast<unsigned>(lower - 'a') + 10;
  return 16;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t place = 0; place < a.size(); ++place) {
    if (LowerAscii(a[place]) != LowerAscii(b[place])) return false;
  }
  return true;
}

/// Takes a sign at `text` and moves on behind it; whether it was a minus.
bool TakeSign(char const*& text) {
  bool const negative = *text == '-';
  if (negative || *text == '+') ++text;
  return negative;
}

template <class Integer>
Integer ReadInteger(char const* text, IntegerBase choice) {
  while (IsWhite(*text)) ++text;
  bool const negative = TakeSign(text);
  unsigned base = 10;
  if (choice == IntegerBase::kByPrefix && *text == '0') {
    bool const marked = text[1] == 'x' || text[1] == 'X';
    base = marked && DigitValue(text[2]) < 16 ? 16 : 8;
    if (base == 16) text += 2;
  }
  using Unsigned = std::make_unsigned_t<Integer>;
  Unsigned const limit =
      static_cast<Unsigned>(std::numeric_limits<Integer>::max()) + (negative ? 1u : 0u);
  Unsigned value = 0;
  for (unsigned digit = DigitValue(*text); digit < base; digit = DigitValue(*++text)) {
    if (value > (limit - digit) / base) {
      value = limit;
      break;
    }
    value = static_cast<Unsigned>(value * base + digit);
  }
  return static_cast<Integer>(negative ? Unsigned{0} - value : value);
}

template <class Integer>
void PrintDecimal(char (&buffer)[kIntegerTextSize], Integer value) {
  *std::to_chars(buffer, buffer + kIntegerTextSize - 1, value).ptr = 0;
}

/// Whether a number that `from_chars` found out of range, in [first, last), is too great; otherwise
/// it is too small. Told from the place of its first digit that is not 0, and its exponent.
bool IsTooGreat(char const* first, char const* last, bool hexadecimal) {
  long long place = 0;
  bool behindPoint = false;
  bool started = false;
  for (; first != last; ++first) {
    char const lower = LowerAscii(*first);
    if (lower == (hexadecimal ? 'p' : 'e')) break;
    if (lower == '.') {
      behindPoint = true;
      continue;
    }
    if (lower != '0') started = true;
    if (started && !behindPoint) ++place;
    if (!started && behindPoint) --place;
  }
  long long exponent = 0;
  if (first != last) {
    ++first;
    bool const negative = TakeSign(first);
    for (; first != last && exponent < 1'000'000'000; ++first)
      exponent = exponent * 10 + (*first - '0');
    if (negative) exponent = -exponent;
  }
  return (hexadecimal ? 4 * place : place) + exponent > 0;
}

/// Reads the number at `text`, behind its sign; false where there is none.
bool ReadMagnitude(char const* text, double& value) {
  bool const hexadecimal =
      text[0] == '0' && (text[1] == 'x' || text[1] == 'X') &&
      (DigitValue(text[2]) < 16 || (text[2] == '.' && DigitValue(text[3]) < 16));
  if (hexadecimal) text += 2;
  // `from_chars` takes a sign of its own; that would be a second one.
  if (*text == '-') return false;
  char const* const end = text + std::strlen(text);
  auto const read = std::from_chars(
      text, end, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (read.ec == std::errc::result_out_of_range) {
    value = IsTooGreat(text, read.ptr, hexadecimal) ? std::numeric_limits<double>::infinity() : 0;
    return true;
  }
  return read.ec == std::errc{};
}

}  // namespace

std::int32_t ReadInt32(char const* text, IntegerBase base) {
  return ReadInteger<std::int32_t>(text, base);
}

std::int64_t ReadInt64(char const* text, IntegerBase base) {
  return ReadInteger<std::int64_t>(text, base);
}

void PrintInteger(char (&buffer)[kIntegerTextSize], std::int64_t value) {
  PrintDecimal(buffer, value);
}

void PrintInteger(char (&buffer)[kIntegerTextSize], std::uint64_t value) {
  PrintDecimal(buffer, value);
}

void PrintDouble(char (&buffer)[kDoubleTextSize], double value) {
  if (std::isnan(value)) {
    std::memcpy(buffer, "NaN", 4);
  } else if (std::isinf(value)) {
    std::strcpy(buffer, value < 0 ? "-Infinity" : "Infinity");
  } else {
    *std::to_chars(buffer, buffer + kDoubleTextSize - 1, value, std::chars_format::general, 17)
         .ptr = 0;
  }
}

double ReadDouble(char const* text) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (EqualIgnoringCase(text, "-Infinity")) return -kInfinity;
  if (EqualIgnoringCase(text, "Infinity")) return kInfinity;
  if (EqualIgnoringCase(text, "NaN")) {
    return std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0);
  }
  while (IsWhite(*text)) ++text;
  bool const negative = TakeSign(text);
  double value = 0;
  // A sign without a number does not make the 0 negative.
  if (!ReadMagnitude(text, value)) return 0;
  return std::copysign(value, negative ? -1.0 : 1.0);
}

}  // namespace xo
