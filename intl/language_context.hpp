#pragma once

#include "../base/export.hpp"
#include "code_set.hpp"
#include "language.hpp"

/// Starts (`start` not zero) or stops the internationalisation module. Its tables are constant, so
/// nothing has to be built or released: a stop puts the defaults of `XoLanguageContext` back to
/// what they are at load.
XO_EXPORT void ___XoI18NContext(int start);

/// The process-wide text defaults, and the records of code sets and languages.
///
/// All operations may be called from any thread. The `Set` operations take no lock and belong to
/// set-up, before other threads use text. A running program may change the default code set and
/// language at any time at which no other thread reads them: values that exist keep the code set
/// and language that they carry. The default comparison operator must not change while an index or
/// a sorted container that was built with it is in use. The setters take every value; one that
/// names no code set or language works as told at `QueryCodeSet` and `QueryLanguage`. Not to be set
/// are 254 and 255: as a code set, 254 would make new text a run of sort orders, and 255 stands for
/// the default itself, as it does as a language.
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
  /// Code set of the platform's narrow text: 15, windows-1252, on Windows, and 1, ISO 8859-1,
  /// elsewhere. It does not depend on the locale of the process.
  static unsigned char GetNativeCodeSet();

  /// Language of new strings. At load 0, neutral.
  static unsigned char GetDefaultLanguage();
  static void SetDefaultLanguage(unsigned char language);

  /// Option word of text comparisons that are given none. At load 0x0010: wildcards off, all levels
  /// on, so that equal means equal and less is a strict weak order.
  static unsigned short GetDefaultCmpOp();
  static void SetDefaultCmpOp(unsigned short cmpOp);

  /// The record of a code set; null for a number that is none (255 among them). 0 gives the record
  /// of the native code set.
  static XoCodeSet const* QueryCodeSet(unsigned char codeSet);
  /// The record of a language; null for a number that is none (254 and 255 are never any).
  static XoLanguage const* QueryLanguage(unsigned char language);

  /// Number of the collation's version. It rises with every change of the tables, and with it
  /// whatever was built on their sort orders has to be built anew.
  static unsigned GetCollationVersion();
  /// Fingerprint of all tables: two libraries with the same fingerprint sort and map alike, on
  /// every platform. To be kept with an index, and compared before the index is searched.
  static unsigned long long GetCollationFingerprint();
  /// The same, worked out anew from the tables in memory (about a millisecond): it differs from
  /// `GetCollationFingerprint` only in a library that is damaged.
  static unsigned long long ComputeCollationFingerprint();
};
