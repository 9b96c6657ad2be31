#pragma once

#include <cstdint>

/// The conversion of a number in a format, as its printer and its scanner read it.
namespace xo {

/// Widths and precisions above this are this: no text is as long.
inline constexpr unsigned kMostWidth = 1'000'000;

constexpr bool IsDecimalDigit(char character) { return character >= '0' && character <= '9'; }

/// Reads the decimal number at `place`, 0 where there is none, and moves on behind it.
constexpr unsigned TakeWidth(char const*& place) {
  unsigned width = 0;
  for (; IsDecimalDigit(*place); ++place) {
    if (width < kMostWidth) width = width * 10 + static_cast<unsigned>(*place - '0');
  }
  return width < kMostWidth ? width : kMostWidth;
}

/// Reads the size at `place` and moves on behind it; how many bits of an integer count.
constexpr unsigned TakeSize(char const*& place) {
  switch (*place) {
    case 'h':
      if (*++place != 'h') return 16;
      ++place;
      return 8;
    case 'l':
      if (*++place != 'l') return 32;
      ++place;
      return 64;
    case 'I':
      ++place;
      if (place[0] == '3' && place[1] == '2') {
        place += 2;
        return 32;
      }
      if (place[0] == '6' && place[1] == '4') place += 2;
      return 64;
    case 'j':
    case 't':
    case 'z':
      ++place;
      return 64;
    case 'w':
    case 'L':
      ++place;
      return 32;
    default:
      return 32;
  }
}

constexpr bool IsSignedLetter(char letter) { return letter == 'd' || letter == 'i'; }

constexpr bool IsIntegerLetter(char letter) {
  switch (letter) {
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X':
    case 'c':
      return true;
    default:
      return false;
  }
}

constexpr bool IsFloatingLetter(char letter) {
  switch (letter) {
    case 'e':
    case 'f':
    case 'g':
    case 'a':
    case 'E':
    case 'F':
    case 'G':
    case 'A':
      return true;
    default:
      return false;
  }
}

/// The low `bits` of `value`, extended to 64 by their sign or by zeros.
constexpr std::uint64_t CutTo(std::uint64_t value, unsigned bits, bool isSigned) {
  unsigned const shift = 64 - bits;
  return isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(value << shift) >> shift)
                  : value << shift >> shift;
}

}  // namespace xo
