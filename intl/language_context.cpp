#include "intl/language_context.hpp"

#include "intl/data/tables.hpp"

namespace {

constexpr unsigned char kIso8859Part1 = 1;
constexpr unsigned char kUnicode = 253;
constexpr unsigned char kNoPlace = 255;

#if defined(_WIN32)
constexpr unsigned char kNative = 15;  // windows-1252
#else
constexpr unsigned char kNative = kIso8859Part1;
#endif

/// The defaults that can be set. Written by the setters of `XoLanguageContext` and at the stop of
/// the module, during set-up alone.
struct Defaults {
  unsigned char codeSet = kIso8859Part1;
  unsigned char language = 0;
  unsigned short cmpOp = 0x0010;
};

constinit Defaults defaults{};

}  // namespace

void ___XoI18NContext(int start) {
  if (start == 0) defaults = Defaults{};
}

unsigned char XoLanguageContext::GetDefaultCodeSet() { return defaults.codeSet; }

void XoLanguageContext::SetDefaultCodeSet(unsigned char codeSet) { defaults.codeSet = codeSet; }

unsigned char XoLanguageContext::GetDefault8CodeSet() { return kIso8859Part1; }

unsigned char XoLanguageContext::GetDefault16CodeSet() { return kUnicode; }

unsigned char XoLanguageContext::GetNativeCodeSet() { return kNative; }

unsigned char XoLanguageContext::GetDefaultLanguage() { return defaults.language; }

void XoLanguageContext::SetDefaultLanguage(unsigned char language) { defaults.language = language; }

unsigned short XoLanguageContext::GetDefaultCmpOp() { return defaults.cmpOp; }

void XoLanguageContext::SetDefaultCmpOp(unsigned short cmpOp) { defaults.cmpOp = cmpOp; }

XoCodeSet const* XoLanguageContext::QueryCodeSet(unsigned char codeSet) {
  unsigned char const place = xo::intl::kCodeSetPlaces[codeSet != 0 ? codeSet : kNative];
  return place != kNoPlace ? &xo::intl::kCodeSets[place] : nullptr;
}

XoLanguage const* XoLanguageContext::QueryLanguage(unsigned char language) {
  return language < xo::intl::kLanguageCount ? &xo::intl::kLanguages[language] : nullptr;
}
