#pragma once

#include "xotypes.hpp"

namespace xo {

/// Text that is being printed, up to a limit; what does not fit is left out.
class TemporalOutput {
 public:
  static constexpr unsigned kMostCharacters = 2559;

  void Put(char character) {
    if (length < kMostCharacters) text[length++] = character;
  }

  void Put(char const* characters) {
    for (; *characters != 0; ++characters) Put(*characters);
  }

  /// At most `count` characters of a text.
  void PutFirst(char const* characters, unsigned count) {
    for (; count != 0 && *characters != 0; --count) Put(*characters++);
  }

  /// In decimal, with at least so many digits behind the sign.
  void PutNumber(o_8b number, unsigned digits) {
    if (number < 0) Put('-');
    PutDigits(number < 0 ? 0 - static_cast<o_u8b>(number) : static_cast<o_u8b>(number), digits);
  }

  void PutDigits(o_u8b number, unsigned digits) {
    if (number < 100 && digits == 2) {
      Put(static_cast<char>('0' + number / 10));
      Put(static_cast<char>('0' + number % 10));
      return;
    }
    constexpr unsigned kMostDigits = 20;
    char reversed[kMostDigits];
    unsigned count = 0;
    for (; number != 0 || count < digits; number /= 10) {
      reversed[count++] = static_cast<char>('0' + number % 10);
    }
    while (count != 0) Put(reversed[--count]);
  }

  unsigned Length() const { return length; }
  void CutTo(unsigned shorter) { length = shorter; }

  /// The text with a terminator.
  char const* Terminated() {
    text[length] = 0;
    return text;
  }

 private:
  unsigned length = 0;
  // Not cleared: most texts are short.
  char text[kMostCharacters + 1];
};

}  // namespace xo
