#pragma once

#include <array>

#include "src/xodate/temporal_output.hpp"
#include "xodate.hpp"

/// The letters of temporal formats.
namespace xo {

/// The fields of a value at work, wider than they are stored.
struct TemporalFields {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int nanoSeconds = 0;
};

/// What a letter prints from.
struct PrintSource {
  TemporalFields fields;
  char const* format;  ///< the whole format
};

/// What a letter scans into.
struct ScanTarget {
  TemporalFields fields;
  bool isAm = false;
  bool isPm = false;
};

/// One letter of the language, in both directions.
struct TemporalLetter {
  /// The field that counts as zero, that is a wildcard, and that a "*" is stored in, where no
  /// function below says otherwise.
  int TemporalFields::*field = nullptr;
  /// At least so many digits of the field are printed, and a number is read into it; 0 where
  /// `print` and `scan` stand instead.
  unsigned char digits = 0;
  /// Prints the text, as told in temporal_output.hpp.
  char* (*print)(char* at, PrintSource const& source) = nullptr;
  /// Reads from the text, which ends with a zero, and returns the place behind what it consumed.
  char const* (*scan)(char const* text, ScanTarget& target) = nullptr;
  /// Whether the value counts as zero where the conversion is conditional.
  bool (*isZero)(TemporalFields const& fields) = nullptr;
  /// Whether "*" is printed instead.
  bool (*isWildcard)(TemporalFields const& fields) = nullptr;
  /// Whether the field printed before decides instead about the "*".
  bool followsField = false;
  /// Stores -1 in the fields that "*" stands for.
  void (*setWildcard)(TemporalFields& fields) = nullptr;
  /// The format that stands for the letter, or null.
  char const* expansion = nullptr;

  bool IsZero(TemporalFields const& fields) const {
    return isZero != nullptr ? isZero(fields) : fields.*field == 0;
  }
  bool IsWildcard(TemporalFields const& fields) const {
    return isWildcard != nullptr ? isWildcard(fields) : fields.*field == kWildcard;
  }
  void SetWildcard(TemporalFields& fields) const {
    if (setWildcard != nullptr) {
      setWildcard(fields);
    } else {
      fields.*field = kWildcard;
    }
  }
};

/// The rows by character; null for one that stands for itself.
extern std::array<TemporalLetter const*, 256> const kTemporalLetters;

inline TemporalLetter const* FindTemporalLetter(char letter) {
  return kTemporalLetters[static_cast<unsigned char>(letter)];
}

constexpr unsigned DigitOf(char character) {
  return static_cast<unsigned>(static_cast<unsigned char>(character)) - '0';
}
constexpr bool IsDigit(char character) { return DigitOf(character) < 10; }

/// Reads the digits that the text begins with, at least one, into `number`, which keeps the low 32
/// bits of a long one; `sign` is 0, or all ones for a negative number. Returns the place behind.
inline char const* TakeDigits(char const* text, unsigned sign, int& number) {
  unsigned value = DigitOf(*text);
  for (unsigned digit = DigitOf(*++text); digit < 10; digit = DigitOf(*++text)) {
    value = value * 10 + digit;
  }
  number = static_cast<int>((value ^ sign) - sign);
  return text;
}

/// Reads a decimal number into `number`, which keeps its value where there is no digit, and returns
/// the place behind it, or behind its sign. A long number is read whole and keeps its low 32 bits.
inline char const* TakeNumber(char const* text, int& number) {
  bool const isNegative = *text == '-';
  if (isNegative || *text == '+') ++text;
  return IsDigit(*text) ? TakeDigits(text, isNegative ? ~0U : 0U, number) : text;
}

}  // namespace xo
