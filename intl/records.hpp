#pragma once

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

inline XoLanguage const* FindLanguage(unsigned char language) {
  return language < kLanguageCount ? &kLanguages[language] : nullptr;
}

}  // namespace xo::intl
