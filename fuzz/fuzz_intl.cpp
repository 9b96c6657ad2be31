#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.hpp"
#include "tests/intl/order_walk.hpp"

namespace {

using fuzz::Require;

/// Code sets from here on have codes of 16 bits.
constexpr unsigned char kFirstWide = 225;
constexpr unsigned char kUnicode = 253;
constexpr unsigned char kSortOrders = 254;
constexpr unsigned short kUndefined = 0xFFFD;
/// More characters than any contraction has.
constexpr unsigned kDeepest = 8;

void CheckList(XoWCharList const& list) {
  Require(list.count <= XoWCharList::kCapacity);
  unsigned short value = 0xABCD;
  for (unsigned index = list.count; index < list.count + 3u; ++index) {
    Require(list.Get(index, &value) == XoWCharList::kEndOfList && value == 0xABCD);
  }
  for (unsigned index = 0; index < list.count; ++index) {
    Require(list.Get(index, &value) == 0 && value == list.values[index] && value != 0);
  }
}

/// The lists of an entry end, agree with what is found by key, and lead to entries like it.
void CheckEntry(CharOrderEntry const& entry, unsigned depth) {
  Require(entry.order != 0 && depth < kDeepest);
  CheckList(entry.Expansion());
  Require(entry.HasExpansion() == (entry.Expansion().count != 0));

  unsigned const contractions = entry.ContractionCount();
  Require(entry.HasContractions() == (contractions != 0));
  Require(entry.ContractionEntry(contractions) == nullptr);
  Require(entry.ContractionCharacter(contractions) == 0);
  for (unsigned index = 0; index < contractions; ++index) {
    unsigned short const character = entry.ContractionCharacter(index);
    Require(index == 0 || entry.ContractionCharacter(index - 1) < character);
    Require(entry.Contraction(character) == entry.ContractionEntry(index));
    CheckEntry(*entry.ContractionEntry(index), depth + 1);
  }

  unsigned const variants = entry.VariantCount();
  Require(entry.HasVariants() == (variants != 0));
  Require(entry.VariantEntry(variants) == nullptr && entry.VariantLanguage(variants) == nullptr);
  for (unsigned index = 0; index < variants; ++index) {
    XoLanguage const& language = *entry.VariantLanguage(index);
    Require(entry.MayVary(language.variantFlag) && language.hasVariants != 0);
    Require(entry.Variant(language.number) == entry.VariantEntry(index));
    Require(entry.VariantEntry(index)->VariantCount() == 0);
    CheckEntry(*entry.VariantEntry(index), depth + 1);
  }
}

/// The entry that stands for this one in a language: its variant, or itself.
CharOrderEntry const& InLanguage(CharOrderEntry const& entry, unsigned char language) {
  CharOrderEntry const* const own = entry.Variant(language);
  return own != nullptr ? *own : entry;
}

/// A character of an 8-bit set has the orders that it has in Unicode.
void CheckAgainstUnicode(CharOrderEntry const& entry, unsigned short unicode,
                         unsigned char language) {
  CharOrderEntry const* const found =
      XoLanguageContext::QueryCodeSet(kUnicode)->orderTable->GetEntry(unicode);
  if (unicode == kUndefined || found == nullptr) return;
  CharOrderEntry const& narrow = InLanguage(entry, language);
  CharOrderEntry const& wide = InLanguage(*found, language);
  Require(narrow.order == wide.order);
  Require((narrow.GroupOverride() == nullptr) == (wide.GroupOverride() == nullptr));
  Require(narrow.GroupOverride() == nullptr || *narrow.GroupOverride() == *wide.GroupOverride());
  Require(narrow.Expansion().count == wide.Expansion().count);
  for (unsigned index = 0; index < wide.Expansion().count; ++index) {
    Require(narrow.Expansion().values[index] == wide.Expansion().values[index]);
  }
}

/// All ways to look a character up agree, and what is told to be plain has nothing to be read.
void CheckOrder(XoCodeSet const& set, unsigned short code, unsigned short next,
                unsigned char language) {
  OrderTable const& table = *set.orderTable;
  CharOrderEntry const* const entry = table.GetEntry(code);
  Require(table.Find(code) == entry);
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  unsigned char const flag = record != nullptr ? record->variantFlag : 0;
  if (set.number == kUnicode) {
    CharOrderEntry const* const place = table.FindWide(code);
    Require(entry != nullptr ? place == entry : place->order == 0 && !place->IsPlain(flag, next));
  } else {
    auto const byte = static_cast<unsigned char>(code);
    Require(entry == (code < 512 ? table.FindNarrow(byte) : nullptr));
    if (entry != nullptr) CheckAgainstUnicode(*entry, set.ToUnicode(code), language);
  }
  if (entry == nullptr) return;
  CheckEntry(*entry, 0);
  Require(record != nullptr || entry->Variant(language) == nullptr);
  if (!entry->IsPlain(flag, next)) return;
  Require(entry->Variant(language) == nullptr && entry->Contraction(next) == nullptr);
  Require(!entry->HasExpansion());
}

/// The orders of a text, read as a comparison reads them, are those of the slow and obvious walk.
void CheckText(XoCodeSet const& set, std::u16string const& text, unsigned char language) {
  std::vector<unsigned short> orders;
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  unsigned char const flag = record != nullptr ? record->variantFlag : 0;
  for (std::size_t place = 0; place < text.size(); ++place) {
    CharOrderEntry const* entry = set.orderTable->Find(text[place]);
    if (entry == nullptr) {
      orders.push_back(text[place]);
      continue;
    }
    if (!entry->IsPlain(flag, text.c_str()[place + 1])) entry = &InLanguage(*entry, language);
    while (!entry->IsPlain(0, text.c_str()[place + 1]) && place + 1 < text.size()) {
      CharOrderEntry const* const longer = entry->Contraction(text[place + 1]);
      if (longer == nullptr) break;
      entry = longer;
      ++place;
    }
    orders.push_back(entry->order);
    XoWCharList const& more = entry->Expansion();
    orders.insert(orders.end(), more.values, more.values + more.count);
  }
  auto const walked = xo::test::WalkOrders(text, language, set.number);
  Require(std::equal(orders.begin(), orders.end(), walked.begin(), walked.end(),
                     [](unsigned short one, auto const& other) { return one == other.order; }));
}

/// A code means the same in its own set, in Unicode and in any other set that has the character.
void CheckMapping(XoCodeSet const& set, unsigned short code, unsigned char other) {
  unsigned short const unicode = set.ToUnicode(code);
  XoCodeSet const* const target = XoLanguageContext::QueryCodeSet(other);
  if (target == nullptr) {
    unsigned short const expected = set.number == kSortOrders ? code : set.MapCharacter('?', 1);
    Require(set.MapCharacter(code, other) == expected);
    return;
  }
  unsigned short const mapped = target->MapCharacter(code, set.number);
  if (target->number == kSortOrders || set.number == kSortOrders) {
    Require(mapped == code);
  } else if (target->number == set.number) {
    bool const narrow = set.number < 225;
    Require(mapped == (narrow ? code & 0xFF : code));
  } else if (target->HasCharacter(unicode) != 0) {
    Require(target->ToUnicode(mapped) == unicode);
  } else {
    Require(target->ToUnicode(mapped) == '?');
  }
}

/// The set has a place for the case forms that it gives out; a form is its own form of that case;
/// and from the lower case to the upper one and back leads to the lower one.
void CheckCase(XoCodeSet const& set, unsigned short code, unsigned char language) {
  auto const formsOf = [&](unsigned short unicode) {
    return set.GetUnicodeProps(set.MapCharacter(unicode, kUnicode), language);
  };
  XoUnicodeProps const* const forms = set.GetUnicodeProps(code, language);
  if (forms == nullptr) return;
  CheckList(forms->upperExpansion);
  CheckList(forms->LowerSequence());
  for (unsigned short const form : {forms->upperCase, forms->lowerCase}) {
    Require(form == 0 || set.HasCharacter(form) != 0);
  }
  if (XoUnicodeProps const* const upper = formsOf(forms->upperCase);
      forms->upperCase != 0 && upper != nullptr) {
    Require(upper->upperCase == 0 || upper->upperCase == forms->upperCase);
  }
  XoUnicodeProps const* const lower = formsOf(forms->lowerCase);
  if (forms->lowerCase == 0 || lower == nullptr) return;
  Require(lower->lowerCase == 0 || lower->lowerCase == forms->lowerCase);
  if (lower->upperCase == 0 || lower->upperExpansion.count != 0) return;
  XoUnicodeProps const* const back = formsOf(lower->upperCase);
  Require(back == nullptr || back->lowerCase == forms->lowerCase);
}

}  // namespace

/// Reads arbitrary text in an arbitrary code set and language, known or not: all that the tables
/// say of it holds together.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  auto const number = input.ConsumeIntegral<unsigned char>();
  auto const other = input.ConsumeIntegral<unsigned char>();
  auto const language = input.ConsumeIntegral<unsigned char>();
  XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(number);
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  Require(record == nullptr || record->number == language);
  if (set == nullptr) return 0;
  Require(set->number == (number != 0 ? number : XoLanguageContext::GetNativeCodeSet()));
  unsigned const group = set->CodeSetGroup(language);
  Require(number == kSortOrders ? group == (language & 0x7Fu) : group >= 2 && group <= 19);

  std::u16string text;
  while (input.remaining_bytes() != 0 && text.size() < fuzz::kMostElements) {
    text += static_cast<char16_t>(number < kFirstWide ? input.ConsumeIntegral<unsigned char>()
                                                      : input.ConsumeIntegral<unsigned short>());
  }
  for (std::size_t place = 0; place < text.size(); ++place) {
    CheckMapping(*set, text[place], other);
    CheckCase(*set, text[place], language);
    if (set->orderTable != nullptr) {
      CheckOrder(*set, text[place], text.c_str()[place + 1], language);
    }
  }
  if (set->orderTable != nullptr) CheckText(*set, text, language);
  return 0;
}
