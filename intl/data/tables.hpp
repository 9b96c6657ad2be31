#pragma once

#include "intl/code_set.hpp"
#include "intl/language.hpp"
#include "intl/order_table.hpp"

/// The constant tables of the module, written by intl/tools/generate.py. Nothing is worked out at
/// start.
namespace xo::intl {

/// A code set's mapping, in pages of 64 codes: the places in `kPageIndexes` of its two runs of page
/// numbers. An 8-bit set has 4 pages of its own codes, and its pages by Unicode are narrow ones; a
/// code of 0 says that the set lacks the character.
struct CodeSetTables {
  bool wide;
  unsigned short substitute;
  unsigned toUnicode;
  unsigned fromUnicode;
};

/// A case form that differs in a language.
struct LanguageCase {
  unsigned char language;
  unsigned short character;
  unsigned short properties;
};

/// A case form whose further characters have other codes in a code set than in Unicode.
struct CodeSetCase {
  unsigned char codeSet;
  unsigned short character;
  unsigned short properties;
};

extern CharOrderEntry const kOrderEntries[];
extern unsigned const kOrderEntryCount;
extern unsigned const kUnicodeEntries;
extern unsigned char const kUnicodeBlocks[1024];
/// The heads of the 8-bit tables, 256 for each, and of the first codes of Unicode. They follow from
/// the other tables, so the fingerprint leaves them out.
extern LetterHead const kLetterHeads[];
extern XoWCharList const kOrderExpansions[];
extern unsigned const kOrderExpansionCount;
extern unsigned const kOrderLinkCount;
extern unsigned short const kVariantEntries[];
extern unsigned const kVariantEntryCount;
extern unsigned short const kContractionCharacters[];
extern unsigned short const kContractionEntries[];
extern unsigned const kContractionCount;

extern CodeSetTables const kCodeSetTables[];
extern unsigned const kCodeSetTableCount;
extern unsigned short const kPageIndexes[];
extern unsigned const kPageIndexCount;
extern unsigned short const kToUnicodePages[];
extern unsigned const kToUnicodePageCount;
extern unsigned char const kFromUnicodeNarrowPages[];
extern unsigned const kFromUnicodeNarrowPageCount;
extern unsigned short const kFromUnicodeWidePages[];
extern unsigned const kFromUnicodeWidePageCount;

extern unsigned char const kCaseBlocks[1024];
extern unsigned short const kCasePages[];
extern unsigned const kCasePageCount;
extern XoUnicodeProps const kCaseForms[];
extern unsigned const kCaseFormCount;
extern XoWCharList const kCaseLists[];
extern unsigned const kCaseListCount;
extern LanguageCase const kLanguageCases[];
extern unsigned const kLanguageCaseCount;
extern CodeSetCase const kCodeSetCases[];
extern unsigned const kCodeSetCaseCount;

extern XoLanguage const kLanguages[];
extern unsigned const kLanguageCount;

/// The code sets by number, those of `kCodeSetTables` first; 253 and 254 have no tables.
extern XoCodeSet const kCodeSets[];
extern unsigned const kCodeSetCount;
/// Place in `kCodeSets` of each number; 255 for a number that is no code set.
extern unsigned char const kCodeSetPlaces[256];

extern unsigned const kCollationVersion;
extern unsigned long long const kCollationFingerprint;

}  // namespace xo::intl
