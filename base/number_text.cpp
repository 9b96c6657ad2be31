#include "base/number_text.hpp"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

#include "base/number_parts.hpp"

namespace xo {
namespace {

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t place = 0; place < a.size(); ++place) {
    if (LowerAscii(a[place]) != LowerAscii(b[place])) return false;
  }
  return true;
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
  if (ReadMagnitude(text, text + std::strlen(text), value) == nullptr) return 0;
  return std::copysign(value, negative ? -1.0 : 1.0);
}

}  // namespace xo
