#pragma once

#include "../base/export.hpp"

/// Starts (`start` not zero) or stops the internationalisation module. Its tables are constant, so
/// nothing has to be built or released: a stop puts the defaults of `XoLanguageContext` back to
/// what they are at load.
XO_EXPORT void ___XoI18NContext(int start);

/// The process-wide text defaults. Readable from any thread; the `Set` operations take no lock and
/// belong to set-up, before other threads use text.
class XO_EXPORT XoLanguageContext {
 public:
  XoLanguageContext() = delete;

  /// Code set of new strings. At load 1, ISO 8859-1.
  static unsigned char GetDefaultCodeSet();
  static void SetDefaultCodeSet(unsigned char codeSet);

  /// The default among the 8-bit code sets: 1, ISO 8859-1.
  static unsigned char GetDefault8CodeSet();
  /// The default among the 16-bit code sets: 253, Unicode.
  static unsigned char GetDefault16CodeSet();
  /// Code set of the platform's narrow text: 1, ISO 8859-1.
  static unsigned char GetNativeCodeSet();

  /// Language of new strings. At load 0, neutral.
  static unsigned char GetDefaultLanguage();
  static void SetDefaultLanguage(unsigned char language);

  /// Option word of text comparisons that are given none. At load 0x0010: wildcards off, all levels
  /// on, so that equal means equal and less is a strict weak order.
  static unsigned short GetDefaultCmpOp();
  static void SetDefaultCmpOp(unsigned short cmpOp);
};
