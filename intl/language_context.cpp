#include "intl/language_context.hpp"

#include "intl/defaults.hpp"
#include "intl/records.hpp"

namespace {

constexpr unsigned char kIso8859Part1 = 1;
constexpr unsigned char kUnicode = 253;
/// The defaults that can be set. Written by the setters of `XoLanguageContext` and at the stop of
/// the module, during set-up alone.
struct Defaults {
  unsigned char codeSet = kIso8859Part1;
  unsigned char language = 0;
  unsigned short cmpOp = 0x0010;
};

constinit Defaults defaults{};

}  // namespace

void xo::intl::RestoreDefaults() { defaults = Defaults{}; }

unsigned char XoLanguageContext::GetDefaultCodeSet() { return defaults.codeSet; }

void XoLanguageContext::SetDefaultCodeSet(unsigned char codeSet) { defaults.codeSet = codeSet; }

unsigned char XoLanguageContext::GetDefault8CodeSet() { return kIso8859Part1; }

unsigned char XoLanguageContext::GetDefault16CodeSet() { return kUnicode; }

unsigned char XoLanguageContext::GetNativeCodeSet() { return xo::intl::kNativeCodeSet; }

unsigned char XoLanguageContext::GetDefaultLanguage() { return defaults.language; }

void XoLanguageContext::SetDefaultLanguage(unsigned char language) { defaults.language = language; }

unsigned short XoLanguageContext::GetDefaultCmpOp() { return defaults.cmpOp; }

void XoLanguageContext::SetDefaultCmpOp(unsigned short cmpOp) { defaults.cmpOp = cmpOp; }

XoCodeSet const* XoLanguageContext::QueryCodeSet(unsigned char codeSet) {
  return xo::intl::FindCodeSet(codeSet);
}

XoLanguage const* XoLanguageContext::QueryLanguage(unsigned char language) {
  return xo::intl::FindLanguage(language);
}
