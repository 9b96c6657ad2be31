#pragma once

#include <optional>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

/// A slow and obvious walk over the sort orders of a text, and the comparison by levels over it.
namespace xo::test {

struct WalkedOrder {
  unsigned short order;
  unsigned char group;
};

/// The sort orders of a text in a code set with an order table.
inline std::vector<WalkedOrder> WalkOrders(std::u16string const& text, unsigned char language,
                                           unsigned char codeSet = 253) {
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(codeSet);
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  std::vector<WalkedOrder> orders;
  unsigned char group = set.CodeSetGroup(language);
  for (std::size_t place = 0; place < text.size(); ++place) {
    CharOrderEntry const* entry = set.orderTable->GetEntry(text[place]);
    if (entry == nullptr) {
      // The last codes leave the group as it is.
      if (text[place] < 65520) group = 20;
      orders.push_back({text[place], group});
      continue;
    }
    if (record != nullptr && record->hasVariants != 0 && entry->HasVariants()) {
      for (unsigned index = 0; index < entry->VariantCount(); ++index) {
        if (entry->VariantLanguage(index) != record) continue;
        entry = entry->VariantEntry(index);
        break;
      }
    }
    while (entry->HasContractions() && place + 1 < text.size()) {
      CharOrderEntry const* longer = nullptr;
      for (unsigned index = 0; index < entry->ContractionCount(); ++index) {
        if (entry->ContractionCharacter(index) != text[place + 1]) continue;
        longer = entry->ContractionEntry(index);
        break;
      }
      if (longer == nullptr) break;
      entry = longer;
      ++place;
    }
    unsigned char const* const own = entry->GroupOverride();
    group = own != nullptr ? *own : set.CodeSetGroup(language);
    orders.push_back({entry->order, group});
    if (!entry->HasExpansion()) continue;
    XoWCharList const& more = entry->Expansion();
    for (unsigned index = 0; index < more.count; ++index) {
      unsigned short value = 0;
      more.Get(index, &value);
      orders.push_back({value, group});
    }
  }
  return orders;
}

inline bool IsSignificant(WalkedOrder each) {
  return each.order >= 16128 || (each.group & 127) >= 20;
}

/// The order with its group, the letter above the case and the case above the accent.
inline unsigned OrderKeyOf(WalkedOrder each) {
  unsigned const group = static_cast<unsigned>(each.group) << 24;
  if ((each.order & 0xC000) == 0x4000 && each.group != 20) {
    return group | (each.order & 0x407Fu) << 8 | ((each.order >> 7) & 0x7Fu);
  }
  return group | static_cast<unsigned>(each.order) << 8;
}

enum class Level { Letter = 1, Accent, Case, Ignorable, None };

struct Difference {
  int sign;
  Level level;
};

/// Comparison by levels: the first letter difference, or the last accent difference, or the first
/// case difference (lower case first), or the last difference of spaces and symbols.
inline Difference CompareByLevels(std::vector<WalkedOrder> const& first,
                                  std::vector<WalkedOrder> const& second) {
  auto const sign = [](unsigned one, unsigned other) { return one < other ? -1 : one > other; };
  int accent = 0, letterCase = 0, ignorable = 0;
  std::size_t at = 0, other = 0;
  for (;;) {
    for (;;) {
      bool const skip = at < first.size() && !IsSignificant(first[at]);
      bool const skipOther = other < second.size() && !IsSignificant(second[other]);
      if (!skip && !skipOther) break;
      unsigned const one = skip ? first[at++].order : 0u;
      unsigned const two = skipOther ? second[other++].order : 0u;
      if (one != two) ignorable = sign(one, two);
    }
    unsigned const key = at < first.size() ? OrderKeyOf(first[at++]) : 0;
    unsigned const keyOther = other < second.size() ? OrderKeyOf(second[other++]) : 0;
    if (int const letter = sign(key & ~0x7Fu, keyOther & ~0x7Fu)) return {letter, Level::Letter};
    if (letterCase == 0) letterCase = sign(keyOther & ~0x1Fu, key & ~0x1Fu);
    if (int const marks = sign(key & ~0x60u, keyOther & ~0x60u)) accent = marks;
    if (key == 0) break;
  }
  if (accent != 0) return {accent, Level::Accent};
  if (letterCase != 0) return {letterCase, Level::Case};
  if (ignorable != 0) return {ignorable, Level::Ignorable};
  return {0, Level::None};
}

inline Difference CompareTexts(std::u16string const& first, std::u16string const& second,
                               unsigned char language, unsigned char codeSet = 253) {
  return CompareByLevels(WalkOrders(first, language, codeSet),
                         WalkOrders(second, language, codeSet));
}

}  // namespace xo::test
