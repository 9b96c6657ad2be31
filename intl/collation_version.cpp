#include "intl/data/tables.hpp"
#include "intl/language_context.hpp"

using namespace xo::intl;

namespace {

/// FNV-1a of 64 bits, over values instead of bytes, so that no byte order enters it.
class Fingerprint {
 public:
  template <class... Values>
  void Add(Values const&... values) {
    (AddOne(values), ...);
  }

  template <class Value>
  void AddAll(Value const* values, unsigned count) {
    for (unsigned index = 0; index < count; ++index) Add(values[index]);
  }

  unsigned long long value = 0xCBF29CE484222325ULL;

 private:
  template <class Value>
  void AddOne(Value each) {
    value = (value ^ static_cast<unsigned long long>(each)) * 0x100000001B3ULL;
  }

  void AddOne(XoWCharList const& list) {
    AddOne(list.count);
    AddAll(list.values, list.count);
  }
};

void AddMapping(Fingerprint& sum) {
  for (unsigned index = 0; index < kCodeSetTableCount; ++index) {
    CodeSetTables const& each = kCodeSetTables[index];
    sum.Add(each.wide, each.substitute, each.toUnicode, each.fromUnicode);
  }
  for (unsigned index = 0; index < kCodeSetCount; ++index) kCodeSets[index].Visit(sum);
  sum.AddAll(kCodeSetPlaces, 256);
  sum.AddAll(kPageIndexes, kPageIndexCount);
  sum.AddAll(kToUnicodePages, kToUnicodePageCount);
  sum.AddAll(kFromUnicodeNarrowPages, kFromUnicodeNarrowPageCount);
  sum.AddAll(kFromUnicodeWidePages, kFromUnicodeWidePageCount);
}

void AddCase(Fingerprint& sum) {
  sum.AddAll(kCaseBlocks, 1024);
  sum.AddAll(kCasePages, kCasePageCount);
  for (unsigned index = 0; index < kCaseFormCount; ++index) kCaseForms[index].Visit(sum);
  sum.AddAll(kCaseLists, kCaseListCount);
  for (unsigned index = 0; index < kLanguageCaseCount; ++index) {
    LanguageCase const& each = kLanguageCases[index];
    sum.Add(each.language, each.character, each.properties);
  }
  for (unsigned index = 0; index < kCodeSetCaseCount; ++index) {
    CodeSetCase const& each = kCodeSetCases[index];
    sum.Add(each.codeSet, each.character, each.properties);
  }
}

void AddOrders(Fingerprint& sum) {
  for (unsigned index = 0; index < kOrderEntryCount; ++index) kOrderEntries[index].Visit(sum);
  sum.Add(kUnicodeEntries);
  sum.AddAll(kUnicodeBlocks, 1024);
  sum.AddAll(kOrderExpansions, kOrderExpansionCount);
  for (unsigned index = 0; index < kOrderLinkCount; ++index) {
    OrderLinks const& each = kOrderLinks[index];
    sum.Add(each.languages, each.firstVariant, each.firstContraction, each.contractionCount);
  }
  sum.AddAll(kVariantEntries, kVariantEntryCount);
  sum.AddAll(kContractionCharacters, kContractionCount);
  sum.AddAll(kContractionEntries, kContractionCount);
}

}  // namespace

unsigned XoLanguageContext::GetCollationVersion() { return kCollationVersion; }

unsigned long long XoLanguageContext::GetCollationFingerprint() { return kCollationFingerprint; }

unsigned long long XoLanguageContext::ComputeCollationFingerprint() {
  Fingerprint sum;
  AddOrders(sum);
  AddMapping(sum);
  AddCase(sum);
  for (unsigned index = 0; index < kLanguageCount; ++index) {
    XoLanguage const& each = kLanguages[index];
    sum.Add(each.number, each.group, each.hasVariants, each.hasCaseRules, each.variantFlag);
  }
  return sum.value;
}
