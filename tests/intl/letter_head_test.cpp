// Letter heads say nothing that the entries do not. Each is held against the entry of its
// character, and all that it may become in every language.
#include <gtest/gtest.h>

#include <set>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

struct Table {
  unsigned char codeSet;
  OrderTable const* orders;

  unsigned Codes() const { return codeSet > 224 ? 0x10000 : 256; }
  unsigned Heads() const { return codeSet > 224 ? OrderTable::kWideHeads : 256; }
};

std::vector<Table> Tables() {
  std::vector<Table> tables;
  for (unsigned set = 1; set < 254; ++set) {
    XoCodeSet const* const record =
        XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(set));
    if (record == nullptr || record->orderTable == nullptr) continue;
    tables.push_back({static_cast<unsigned char>(set), record->orderTable});
  }
  return tables;
}

/// The languages with a record, and one without.
std::vector<unsigned char> Languages() {
  std::vector<unsigned char> languages{200};
  for (unsigned char number = 0; XoLanguageContext::QueryLanguage(number) != nullptr; ++number) {
    languages.push_back(number);
  }
  return languages;
}

CharOrderEntry const* EntryIn(Table const& table, unsigned code, unsigned char language) {
  CharOrderEntry const* const entry = table.orders->GetEntry(static_cast<unsigned short>(code));
  if (entry == nullptr) return nullptr;
  CharOrderEntry const* const own = entry->Variant(language);
  return own != nullptr ? own : entry;
}

bool IsMark(unsigned code) { return code >= 0x300 && code < 0x370; }

/// Adds what continues contractions of an entry.
void AddContinuing(CharOrderEntry const& entry, std::set<unsigned>& codes) {
  for (unsigned index = 0; index < entry.ContractionCount(); ++index) {
    codes.insert(entry.ContractionCharacter(index));
    AddContinuing(*entry.ContractionEntry(index), codes);
  }
}

/// The letter that an entry's orders begin with, and its group, as a head tells it; 0 for none.
unsigned LetterOf(CharOrderEntry const& entry) {
  if (entry.order < 0x4000 || entry.order >= 0x8000 || entry.GroupOverride() == nullptr) return 0;
  return *entry.GroupOverride() * 128u + entry.order % 128u;
}

/// Whether an entry, and all that it contracts to, begin with a letter.
bool AlwaysBeginsWith(CharOrderEntry const& entry, unsigned letter) {
  if (LetterOf(entry) != letter) return false;
  for (unsigned index = 0; index < entry.ContractionCount(); ++index) {
    if (!AlwaysBeginsWith(*entry.ContractionEntry(index), letter)) return false;
  }
  return true;
}

unsigned char FlagOf(unsigned char language) {
  XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
  return record != nullptr ? record->variantFlag : static_cast<unsigned char>(0);
}

TEST(LetterHead, SettlesOnlyWhatBeginsWithItsLetterInEveryLanguageOfItsFlag) {
  for (Table const& table : Tables()) {
    for (unsigned char const language : Languages()) {
      unsigned char const flag = FlagOf(language);
      std::set<unsigned> continuing;
      for (unsigned code = 0; code < table.Codes(); ++code) {
        CharOrderEntry const* const entry = EntryIn(table, code, language);
        if (entry != nullptr) AddContinuing(*entry, continuing);
      }
      for (unsigned code = 1; code < table.Heads(); ++code) {
        LetterHead const head = table.orders->Heads()[code];
        if (head.IsUnsettled(flag)) continue;
        CharOrderEntry const* const entry = EntryIn(table, code, language);
        ASSERT_NE(entry, nullptr) << int{table.codeSet} << ' ' << code;
        EXPECT_NE(head.Letter(), 0u) << int{table.codeSet} << ' ' << code;
        EXPECT_TRUE(AlwaysBeginsWith(*entry, head.Letter()))
            << "code set " << int{table.codeSet} << " language " << int{language} << " code "
            << code;
        EXPECT_FALSE(continuing.contains(code)) << "code set " << int{table.codeSet} << " language "
                                                << int{language} << " code " << code;
        if (head.MayBeMore(flag)) continue;
        EXPECT_FALSE(entry->HasExpansion()) << int{table.codeSet} << ' ' << code;
        for (unsigned index = 0; index < entry->ContractionCount(); ++index) {
          EXPECT_TRUE(IsMark(entry->ContractionCharacter(index)))
              << int{table.codeSet} << ' ' << code;
        }
      }
    }
  }
}

TEST(LetterHead, IsIgnorableOnlyWhereOneSpaceOrSymbolStandsAloneInAllLanguages) {
  for (Table const& table : Tables()) {
    std::set<unsigned> continuing;
    for (unsigned code = 0; code < table.Codes(); ++code) {
      for (unsigned char const language : Languages()) {
        CharOrderEntry const* const entry = EntryIn(table, code, language);
        if (entry != nullptr) AddContinuing(*entry, continuing);
      }
    }
    for (unsigned code = 0; code < table.Heads(); ++code) {
      LetterHead const head = table.orders->Heads()[code];
      if (!head.IsIgnorable()) continue;
      EXPECT_TRUE(head.IsUnsettled(0)) << int{table.codeSet} << ' ' << code;
      CharOrderEntry const* const entry = table.orders->GetEntry(static_cast<unsigned short>(code));
      ASSERT_NE(entry, nullptr);
      EXPECT_LT(entry->order, 16128) << int{table.codeSet} << ' ' << code;
      EXPECT_EQ(entry->ContractionCount(), 0u) << int{table.codeSet} << ' ' << code;
      EXPECT_EQ(entry->VariantCount(), 0u) << int{table.codeSet} << ' ' << code;
      EXPECT_FALSE(entry->HasExpansion()) << int{table.codeSet} << ' ' << code;
      EXPECT_FALSE(continuing.contains(code)) << int{table.codeSet} << ' ' << code;
    }
  }
}

TEST(LetterHead, OfTheEndIsSettledBelowAllLetters) {
  for (Table const& table : Tables()) {
    LetterHead const head = table.orders->Heads()[0];
    EXPECT_EQ(head.Letter(), 0u);
    EXPECT_FALSE(head.IsUnsettled(0xF0));
    EXPECT_FALSE(head.IsIgnorable());
  }
}

/// What the heads are for: they settle letters of common words.
TEST(LetterHead, SettlesTheLettersOfAsciiAndTheirAccents) {
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(253);
  for (char16_t const code : std::u16string(u"abcdefghijkmnopqrstuvwxyzABCDEFGHIJKMNOPQRSTUVWXYZ"
                                            u"\u00E0\u00E9\u00FC\u00C9\u0436\u03B1")) {
    LetterHead const head = unicode.orderTable->Heads()[code];
    EXPECT_FALSE(head.IsUnsettled(FlagOf(1))) << unsigned{code};
    EXPECT_FALSE(head.IsUnsettled(FlagOf(2))) << unsigned{code};
    EXPECT_FALSE(head.IsUnsettled(FlagOf(6))) << unsigned{code};
    EXPECT_FALSE(head.MayBeMore(FlagOf(2))) << unsigned{code};
  }
  EXPECT_TRUE(unicode.orderTable->Heads()[u'-'].IsIgnorable());
  EXPECT_TRUE(unicode.orderTable->Heads()[u'\''].IsIgnorable());
}

}  // namespace
}  // namespace xo::test
