#include "intl/order_table.hpp"

#include <bit>

#include "intl/data/tables.hpp"

using namespace xo::intl;

namespace {

/// Number of bits set. The compiler's own is a call on processors that it cannot take to know it.
constexpr unsigned BitCount(unsigned long long bits) {
  bits -= (bits >> 1) & 0x5555555555555555ULL;
  bits = (bits & 0x3333333333333333ULL) + ((bits >> 2) & 0x3333333333333333ULL);
  bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0FULL;
  return static_cast<unsigned>((bits * 0x0101010101010101ULL) >> 56);
}

}  // namespace

CharOrderEntry const* OrderTable::GetEntry(unsigned short character) const {
  return Find(character);
}

XoWCharList const& CharOrderEntry::Expansion() const { return kOrderExpansions[expansion]; }

unsigned CharOrderEntry::VariantCount() const { return BitCount(kOrderLinks[links].languages); }

XoLanguage const* CharOrderEntry::VariantLanguage(unsigned index) const {
  unsigned long long languages = kOrderLinks[links].languages;
  for (; languages != 0 && index != 0; --index) languages &= languages - 1;
  return languages != 0 ? &kLanguages[std::countr_zero(languages)] : nullptr;
}

CharOrderEntry const* CharOrderEntry::VariantEntry(unsigned index) const {
  if (index >= VariantCount()) return nullptr;
  return &kOrderEntries[kVariantEntries[kOrderLinks[links].firstVariant + index]];
}

CharOrderEntry const* CharOrderEntry::FindVariant(unsigned char language) const {
  OrderLinks const& own = kOrderLinks[links];
  unsigned const before = BitCount(own.languages & ((1ULL << language) - 1));
  return &kOrderEntries[kVariantEntries[own.firstVariant + before]];
}

CharOrderEntry const* CharOrderEntry::FindContraction(unsigned short character) const {
  OrderLinks const& own = kOrderLinks[links];
  unsigned low = own.firstContraction;
  unsigned high = low + own.contractionCount;
  unsigned const end = high;
  if (low == high || character < kContractionCharacters[low]) return nullptr;
  while (low < high) {
    unsigned const middle = (low + high) / 2;
    if (kContractionCharacters[middle] < character) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low == end || kContractionCharacters[low] != character) return nullptr;
  return &kOrderEntries[kContractionEntries[low]];
}

unsigned CharOrderEntry::ContractionCount() const { return kOrderLinks[links].contractionCount; }

unsigned short CharOrderEntry::ContractionCharacter(unsigned index) const {
  if (index >= ContractionCount()) return 0;
  return kContractionCharacters[kOrderLinks[links].firstContraction + index];
}

CharOrderEntry const* CharOrderEntry::ContractionEntry(unsigned index) const {
  if (index >= ContractionCount()) return nullptr;
  return &kOrderEntries[kContractionEntries[kOrderLinks[links].firstContraction + index]];
}
