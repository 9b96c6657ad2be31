#pragma once

#include "src/xodate/temporal_output.hpp"

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
  bool hasHalfDayMark;  ///< the format names AM or PM somewhere
};

/// What a letter scans into.
struct ScanTarget {
  TemporalFields fields;
  bool isAm = false;
  bool isPm = false;
};

/// One letter of the language, in both directions.
struct TemporalLetter {
  /// Prints the text; null for an expansion.
  void (*print)(TemporalOutput& out, PrintSource const& source);
  /// Whether the value counts as zero where the conversion is conditional.
  bool (*isZero)(TemporalFields const& fields);
  /// Whether "*" is printed instead; null where the field before decides.
  bool (*isWildcard)(TemporalFields const& fields);
  /// Reads from the text, which ends with a zero, and moves on in it.
  void (*scan)(char const*& text, ScanTarget& target);
  /// Stores -1 in the fields of the letter, which "*" stands for; null where it has none.
  void (*setWildcard)(TemporalFields& fields);
  /// The format that stands for the letter, or null.
  char const* expansion;
};

/// The row of a letter, or null for a character that stands for itself.
TemporalLetter const* FindTemporalLetter(char letter);

}  // namespace xo
