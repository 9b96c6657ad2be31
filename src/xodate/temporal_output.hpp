#pragma once

#include <cstring>

#include "xotypes.hpp"

/// How fields become text: each function writes at `at`, where there is room for `kMostFieldText`
/// characters, and returns the place behind what it wrote.
namespace xo {

/// No field has a longer text, sign and point included.
inline constexpr unsigned kMostFieldText = 32;

/// The decimal digits of 00 to 99.
inline constexpr auto kDigitPairs = [] {
  struct {
    char text[200];
  } pairs{};
  for (int number = 0; number < 100; ++number) {
    pairs.text[2 * number] = static_cast<char>('0' + number / 10);
    pairs.text[2 * number + 1] = static_cast<char>('0' + number % 10);
  }
  return pairs;
}();

inline char* PutPair(char* at, unsigned number) {
  std::memcpy(at, kDigitPairs.text + 2 * number, 2);
  return at + 2;
}

/// In decimal, with at least so many digits.
inline char* PutDigits(char* at, o_u8b number, unsigned digits) {
  char reversed[kMostFieldText];
  unsigned count = 0;
  for (; number != 0 || count < digits; number /= 10) {
    reversed[count++] = static_cast<char>('0' + number % 10);
  }
  while (count != 0) *at++ = reversed[--count];
  return at;
}

/// The same behind the sign of a negative number.
inline char* PutNumber(char* at, int number, unsigned digits) {
  auto const magnitude = static_cast<unsigned>(number);
  // What most fields are.
  if (digits == 2 && magnitude < 100) return PutPair(at, magnitude);
  if (digits == 4 && magnitude < 10000) {
    return PutPair(PutPair(at, magnitude / 100), magnitude % 100);
  }
  if (number >= 0) return PutDigits(at, magnitude, digits);
  *at = '-';
  return PutDigits(at + 1, 0U - magnitude, digits);
}

/// At most `count` characters of a text.
inline char* PutFirst(char* at, char const* characters, unsigned count) {
  for (; count != 0 && *characters != 0; --count) *at++ = *characters++;
  return at;
}

}  // namespace xo
