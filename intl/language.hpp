#pragma once

#include "../base/export.hpp"

/// A language: what chooses among the variants of sort orders and case forms. Records are constant
/// and live as long as the library; one is had from `XoLanguageContext::QueryLanguage`.
struct XoLanguage {
  unsigned char number;
  /// Group of the sort orders of the language's own script; 2 to 19.
  unsigned char group;
  /// Not zero when sort orders have variants for the language. Most of a text's characters are then
  /// asked for a variant, so a language without any saves that.
  unsigned short hasVariants;
  /// Not zero when case forms differ from those of other languages.
  unsigned short hasCaseRules;
  /// Flag by which entries tell that they may have a variant for the language
  /// (`CharOrderEntry::MayVary`); 0 without variants.
  unsigned char variantFlag;
  /// English name, such as "German, phone book".
  char name[26];
  /// Language tag (BCP 47), such as "de-u-co-phonebk".
  char tag[20];
};
