#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

/// What readers of numbers share: characters as the C library classes them in its own locale, and
/// floating-point numbers in a bounded text.
namespace xo {

constexpr bool IsWhite(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

constexpr char UpperAscii(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

/// The value of a digit in some base up to 16, or 16.
constexpr unsigned DigitValue(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  char const lower = LowerAscii(character);
  if (lower >= 'a' && lower <= 'f') return static_cast<unsigned>(lower - 'a') + 10;
  return 16;
}

/// Takes a sign at `text` and moves on behind it; whether it was a minus.
inline bool TakeSign(char const*& text) {
  bool const negative = *text == '-';
  if (negative || *text == '+') ++text;
  return negative;
}

/// Whether a number that `from_chars` found out of range, in [first, last), is too great; otherwise
/// it is too small. Told from the place of its first digit that is not 0, and its exponent.
inline bool IsTooGreat(char const* first, char const* last, bool hexadecimal) {
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

/// Reads the number that begins at `first`, behind its sign, and ends before `last`. Returns where
/// it ends, or null where there is none. What is too great gives infinity, what is too small 0.
template <class Number>
char const* ReadMagnitude(char const* first, char const* last, Number& value) {
  // `from_chars` takes a sign of its own; that would be a second one.
  if (first == last || *first == '-') return nullptr;
  auto const digitAt = [first, last](int place) {
    return last - first > place && DigitValue(first[place]) < 16;
  };
  bool const hexadecimal = last - first > 2 && first[0] == '0' && LowerAscii(first[1]) == 'x' &&
                           (digitAt(2) || (first[2] == '.' && digitAt(3)));
  if (hexadecimal) first += 2;
  auto const read = std::from_chars(
      first, last, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (read.ec == std::errc::result_out_of_range) {
    value = IsTooGreat(first, read.ptr, hexadecimal) ? std::numeric_limits<Number>::infinity() : 0;
  } else if (read.ec != std::errc{}) {
    return nullptr;
  }
  return read.ptr;
}

}  // namespace xo
