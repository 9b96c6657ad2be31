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

inline XoCodeSet const* FindCodeSet(unsigned char codeSet) {
  constexpr unsigned char kNoPlace = 255;
  unsigned char const place = kCodeSetPlaces[codeSet != 0 ? codeSet : kNativeCodeSet];
  return place != kNoPlace ? &kCodeSets[place] : nullptr;
}

inline XoLanguage const* FindLanguage(unsigned char language) {
  return language < kLanguageCount ? &kLanguages[language] : nullptr;
}

}  // namespace xo::intl
