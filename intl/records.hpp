#pragma once

#include <cstddef>

#include "intl/data/tables.hpp"

/// Look-up of the module's records without a call, for the inner loops of the floors above. What
/// they give is told at `XoLanguageContext::QueryCodeSet` and `QueryLanguage`.
namespace xo::intl {

#if defined(_WIN32)
inline constexpr unsigned char kNativeCodeSet = 15;  // windows-1252
#else
inline constexpr unsigned char kNativeCodeSet = 1;  // ISO 8859-1
#endif

/// In `kCodeSetPlaces`: no code set has this number.
inline constexpr unsigned char kNoCodeSetPlace = 255;

inline XoCodeSet const* FindCodeSet(unsigned char codeSet) {
  unsigned char const place = kCodeSetPlaces[codeSet != 0 ? codeSet : kNativeCodeSet];
  return place != kNoCodeSetPlace ? &kCodeSets[place] : nullptr;
}

/// The order table of a code set; null where it has none of its own, and for number 0.
inline OrderTable const* FindOrderTable(unsigned char codeSet) {
  unsigned char const place = kCodeSetPlaces[codeSet];
  return place != kNoCodeSetPlace ? kCodeSets[place].orderTable : nullptr;
}

/// The letter heads of an 8-bit code set with an order table of its own; null for any other one.
/// They stand in the order of the records, and in front of those of Unicode, so a comparison has
/// them without a look at a record.
inline LetterHead const* FindNarrowHeads(unsigned char codeSet) {
  constexpr std::size_t kHeads = 256;
  std::size_t const start = kHeads * kCodeSetPlaces[codeSet];
  return start < kUnicodeEntries ? kLetterHeads + start : nullptr;
}

inline XoLanguage const* FindLanguage(unsigned char language) {
  return language < kLanguageCount ? &kLanguages[language] : nullptr;
}

}  // namespace xo::intl
