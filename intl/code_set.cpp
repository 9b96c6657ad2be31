#include "intl/code_set.hpp"

#include "intl/data/tables.hpp"
#include "intl/language_context.hpp"

using namespace xo::intl;

namespace {

constexpr unsigned char kSortOrders = 254;
constexpr unsigned char kLatinGroup = 2;
constexpr unsigned kNone = 0xFFFFFFFF;
constexpr unsigned short kQuestionMark = 0x3F;

/// The value of a character in a table of pages: `index` holds the page numbers.
template <class Value>
Value InPages(unsigned short const* index, Value const* pages, unsigned short character) {
  return pages[(static_cast<unsigned>(index[character >> 6]) << 6) + (character & 63u)];
}

}  // namespace

XoWCharList const& XoUnicodeProps::LowerSequence() const { return kCaseLists[lowerList]; }

unsigned char XoCodeSet::CodeSetGroup(unsigned char language) const {
  if (number == kSortOrders) return language & 0x7F;
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  return record != nullptr ? record->group : kLatinGroup;
}

unsigned short XoCodeSet::ToUnicode(unsigned short code) const {
  if (tables == nullptr) return code;
  if (!tables->wide) code &= 0xFF;
  return InPages(kPageIndexes + tables->toUnicode, kToUnicodePages, code);
}

int XoCodeSet::FromUnicode(unsigned short unicode, unsigned short* code) const {
  unsigned short found = unicode;
  if (tables != nullptr) {
    unsigned short const* const index = kPageIndexes + tables->fromUnicode;
    found = tables->wide ? InPages(index, kFromUnicodeWidePages, unicode)
                         : InPages(index, kFromUnicodeNarrowPages, unicode);
    if (found == 0 && unicode != 0) return 0;
  }
  *code = found;
  return 1;
}

int XoCodeSet::HasCharacter(unsigned short unicode) const {
  unsigned short code = 0;
  return FromUnicode(unicode, &code);
}

unsigned short XoCodeSet::MapCharacter(unsigned short code, unsigned char fromSet) const {
  if (number == kSortOrders || fromSet == kSortOrders) return code;
  XoCodeSet const* const from = XoLanguageContext::QueryCodeSet(fromSet);
  if (from == this) return tables != nullptr && !tables->wide ? code & 0xFF : code;
  unsigned short mapped = 0;
  if (from != nullptr && FromUnicode(from->ToUnicode(code), &mapped) != 0) return mapped;
  return tables != nullptr ? tables->substitute : kQuestionMark;
}

int XoCodeSet::HoldsForms(XoUnicodeProps const& forms) const {
  if (forms.upperCase != 0 && HasCharacter(forms.upperCase) == 0) return 0;
  if (forms.lowerCase != 0 && HasCharacter(forms.lowerCase) == 0) return 0;
  XoWCharList const& more = forms.upperExpansion;
  for (unsigned index = 0; index < more.count; ++index) {
    if (HasCharacter(more.values[index]) == 0) return 0;
  }
  return 1;
}

unsigned XoCodeSet::OrdersPlace() const {
  if (orderTable == nullptr) return kNone;
  return static_cast<unsigned>(orderTable->FirstEntry() - kOrderEntries);
}

unsigned XoCodeSet::TablesPlace() const {
  return tables != nullptr ? static_cast<unsigned>(tables - kCodeSetTables) : kNone;
}

XoUnicodeProps* XoCodeSet::GetUnicodeProps(unsigned short character, unsigned char language) const {
  if (number == kSortOrders) return nullptr;
  unsigned short const unicode = ToUnicode(character);
  unsigned form =
      kCasePages[(static_cast<unsigned>(kCaseBlocks[unicode >> 6]) << 6) + (unicode & 63u)];
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  if (record != nullptr && record->hasCaseRules != 0) {
    for (unsigned index = 0; index < kLanguageCaseCount; ++index) {
      LanguageCase const& own = kLanguageCases[index];
      if (own.language == language && own.character == unicode) form = own.properties;
    }
  }
  if (form == 0 || HoldsForms(kCaseForms[form]) == 0) return nullptr;
  if (kCaseForms[form].upperExpansion.count != 0) {
    for (unsigned index = 0; index < kCodeSetCaseCount; ++index) {
      CodeSetCase const& own = kCodeSetCases[index];
      if (own.codeSet == number && own.character == unicode) form = own.properties;
    }
  }
  // The interface asks for a pointer that is not to constant data; nothing is written through it.
  return const_cast<XoUnicodeProps*>(&kCaseForms[form]);
}
