#pragma once

#include "intl/records.hpp"
#include "src/xostring/text_units.hpp"

/// The entry by which a character is sorted in a language, and the group of its order.
namespace xo {

/// The record of a code set, or that of Unicode in place of one that does not exist.
inline XoCodeSet const& SetOrUnicode(XoCodeSet const* codeSet) {
  return codeSet != nullptr ? *codeSet : *intl::FindCodeSet(kUnicodeSet);
}

/// The order table by which characters of a code set are looked up, and whether they are mapped to
/// Unicode first because the code set has none of its own.
struct TableInUse {
  OrderTable const& table;
  bool mapping;
};
inline TableInUse TableOf(XoCodeSet const* codeSet) {
  if (codeSet != nullptr && codeSet->orderTable != nullptr) return {*codeSet->orderTable, false};
  return {*intl::FindCodeSet(kUnicodeSet)->orderTable, true};
}

/// The flag of entries that may have a variant for a language; 0 where none has, or where there is
/// no such language.
inline unsigned char VariantFlagOf(unsigned char language) {
  XoLanguage const* const record = intl::FindLanguage(language);
  return record != nullptr ? record->variantFlag : static_cast<unsigned char>(0);
}

/// The entry that a language has in place of `entry`, or else `entry`. `variants` is the language's
/// flag.
inline CharOrderEntry const* EntryInLanguage(CharOrderEntry const* entry, unsigned char language,
                                             unsigned char variants) {
  if (!entry->MayVary(variants)) return entry;
  CharOrderEntry const* const own = entry->Variant(language);
  return own != nullptr ? own : entry;
}

/// The group of an entry: its own, or that of the code set for the language.
inline unsigned char GroupOf(CharOrderEntry const* entry, XoCodeSet const& codeSet,
                             unsigned char language) {
  unsigned char const* const own = entry->GroupOverride();
  return own != nullptr ? *own : codeSet.CodeSetGroup(language);
}

}  // namespace xo
