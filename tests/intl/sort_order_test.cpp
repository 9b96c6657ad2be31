#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kUnicode = 253;

OrderTable const& Table(unsigned char codeSet = kUnicode) {
  return *XoLanguageContext::QueryCodeSet(codeSet)->orderTable;
}

unsigned Order(unsigned short character, unsigned char codeSet = kUnicode) {
  return Table(codeSet).GetEntry(character)->order;
}

std::vector<unsigned char> OrderedNarrowSets() {
  std::vector<unsigned char> sets;
  for (unsigned number = 1; number < 225; ++number) {
    auto const byte = static_cast<unsigned char>(number);
    XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(byte);
    if (set != nullptr && set->orderTable != nullptr) sets.push_back(byte);
  }
  return sets;
}

struct Listed {
  unsigned short character;
  unsigned short order;
};

/// Every symbol with an order of its own. The apostrophe takes the named one of its two orders.
constexpr Listed kListed[] = {
    {'_', 112},  {0xAF, 114}, {0xAD, 115}, {'-', 116},  {',', 117},  {';', 118},  {':', 119},
    {'!', 120},  {0xA1, 121}, {'?', 122},  {'/', 124},  {'.', 126},  {0xB7, 129}, {0xB8, 130},
    {'\'', 132}, {'"', 135},  {0xAB, 138}, {0xBB, 139}, {'(', 140},  {')', 142},  {'[', 144},
    {']', 145},  {'{', 146},  {'}', 147},  {0xA7, 148}, {0xB6, 149}, {0xA9, 150}, {0xAE, 151},
    {'@', 153},  {0xA4, 154}, {0xA2, 155}, {'$', 156},  {0xA3, 157}, {0xA5, 158}, {'*', 159},
    {'\\', 160}, {'&', 161},  {'#', 162},  {'%', 163},  {'+', 165},  {0xB1, 167}, {'`', 169},
    {'^', 171},  {0xA8, 174}, {'~', 176},  {0xF7, 178}, {0xD7, 179}, {'<', 181},  {'=', 183},
    {'>', 185},  {0xAC, 186}, {'|', 187},  {0xA6, 188}, {0xB0, 189}, {0xB5, 190}, {0xBF, 219}};

TEST(SortOrders, ListedSymbolsHaveTheirNumbers) {
  for (Listed const each : kListed) EXPECT_EQ(Order(each.character), each.order);
  for (unsigned char const set : OrderedNarrowSets()) {
    XoCodeSet const& codes = *XoLanguageContext::QueryCodeSet(set);
    for (Listed const each : kListed) {
      if (codes.HasCharacter(each.character) == 0) continue;
      EXPECT_EQ(Order(codes.MapCharacter(each.character, kUnicode), set), each.order) << codes.name;
    }
  }
}

TEST(SortOrders, OtherSymbolsComeBehindThem) {
  std::set<unsigned short> listed;
  for (Listed const each : kListed) listed.insert(each.character);
  // Canonical equivalents of the semicolon, the middle dot and the grave accent.
  listed.insert({0x37E, 0x387, 0x1FEF});
  for (unsigned code = 0; code < 0x10000; ++code) {
    auto const character = static_cast<unsigned short>(code);
    CharOrderEntry const* const entry = Table().GetEntry(character);
    if (entry == nullptr || entry->order < 80 || entry->order >= 16128) continue;
    if (listed.count(character) == 0) {
      EXPECT_GT(entry->order, 219) << code;
    }
  }
}

TEST(SortOrders, DigitsStepByTen) {
  for (unsigned char const set : OrderedNarrowSets()) {
    for (unsigned short digit = 0; digit < 10; ++digit) {
      auto const character = static_cast<unsigned short>('0' + digit);
      EXPECT_EQ(Order(character, set), 16128u + 10u * digit);
      EXPECT_EQ(Order(character), 16128u + 10u * digit);
      EXPECT_FALSE(Table(set).GetEntry(character)->HasExpansion());
    }
  }
}

TEST(SortOrders, LettersOfTheAlphabetTakeValues3To28) {
  for (unsigned char const set : OrderedNarrowSets()) {
    for (unsigned short letter = 0; letter < 26; ++letter) {
      unsigned const upper = 0x4000u | (3u + letter) << 2;
      auto const character = static_cast<unsigned short>('A' + letter);
      auto const small = static_cast<unsigned short>('a' + letter);
      EXPECT_EQ(Order(character, set), upper);
      EXPECT_EQ(Order(small, set), upper | 0x3000u);
      EXPECT_EQ(Order(character), upper);
      EXPECT_EQ(Order(small), upper | 0x3000u);
    }
  }
}

TEST(SortOrders, EveryNarrowCodeHasAnEntry) {
  for (unsigned char const set : OrderedNarrowSets()) {
    for (unsigned code = 0; code < 256; ++code) {
      CharOrderEntry const* const entry = Table(set).GetEntry(static_cast<unsigned short>(code));
      ASSERT_NE(entry, nullptr);
      EXPECT_NE(entry->order, 0) << unsigned{set} << ": " << code;
    }
  }
  for (unsigned code = 0; code < 512; ++code) {
    EXPECT_NE(Table().GetEntry(static_cast<unsigned short>(code)), nullptr) << code;
  }
}

TEST(SortOrders, ControlsAndUndefinedCodesAreUndefined) {
  for (unsigned short code = 0; code < 32; ++code) {
    EXPECT_EQ(Order(code), 13u);
    EXPECT_EQ(Order(code, 1), 13u);
  }
  for (unsigned short code = 127; code < 160; ++code) EXPECT_EQ(Order(code), 13u);
  EXPECT_EQ(Order(0x81, 15), 13u);  // not defined in windows-1252
  EXPECT_EQ(Order(0x200D), 13u);    // zero width joiner
  EXPECT_EQ(Order(0x0640), 13u);    // tatweel, which no collation reads
}

TEST(SortOrders, CharactersThatNoCollationReadsAreUndefined) {
  // A joining form, signs of Vedic and a letter of Sanskrit that stands for a pause: letters, marks
  // and punctuation.
  for (int const code : {0xFE73, 0x1CD3, 0x1CE1, 0x1CF7}) {
    ASSERT_NE(Table().GetEntry(static_cast<unsigned short>(code)), nullptr);
    EXPECT_EQ(Order(static_cast<unsigned short>(code)), 13u) << code;
  }
}

TEST(SortOrders, TheSpaceIs32) {
  EXPECT_EQ(Order(' '), 32u);
  for (unsigned char const set : OrderedNarrowSets()) EXPECT_EQ(Order(' ', set), 32u);
}

TEST(SortOrders, SpacesAreBelow80) {
  for (unsigned short const code :
       std::initializer_list<unsigned short>{0x20, 0xA0, 0x2002, 0x2028, 0x3000}) {
    EXPECT_LT(Order(code), 80u);
    EXPECT_NE(Order(code), 13u);
  }
}

TEST(SortOrders, WhatHasNoPlaceHasNoEntry) {
  for (unsigned const code :
       {0x4E00u, 0x9FFFu, 0x3400u, 0xAC00u, 0xF900u,  // ideographs and syllables
        0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu,           // lone surrogates
        0xE000u, 0xF8FFu, 0x0378u,                    // private use, not assigned
        0x1200u, 0x13A0u, 0xA000u,                    // scripts without a group
        0xFFFDu, 0xFFFEu, 0xFFFFu}) {
    EXPECT_EQ(Table().GetEntry(static_cast<unsigned short>(code)), nullptr) << code;
  }
}

TEST(SortOrders, WildcardOrdersAreThoseOfCodeSet1) {
  EXPECT_EQ(Order('*', 1), 159u);
  EXPECT_EQ(Order('?', 1), 122u);
  EXPECT_EQ(Order('\\', 1), 160u);
}

TEST(SortOrders, FindEqualsGetEntry) {
  for (unsigned code = 0; code < 0x10000; ++code) {
    auto const character = static_cast<unsigned short>(code);
    EXPECT_EQ(Table().Find(character), Table().GetEntry(character));
    CharOrderEntry const* const raw = Table().FindWide(character);
    EXPECT_EQ(raw->order != 0 ? raw : nullptr, Table().GetEntry(character));
    EXPECT_TRUE(raw->order != 0 || !raw->IsPlain(0, u'a'));
    EXPECT_EQ(Table(1).Find(character), Table(1).GetEntry(character));
  }
}

TEST(SortOrders, NarrowTablesHaveNothingFrom512On) {
  for (unsigned char const set : OrderedNarrowSets()) {
    for (unsigned code = 256; code < 0x10000; code += code < 520 ? 1u : 251u) {
      auto const character = static_cast<unsigned short>(code);
      CharOrderEntry const* const low = Table(set).FindNarrow(static_cast<unsigned char>(code));
      EXPECT_EQ(Table(set).GetEntry(character), code < 512 ? low : nullptr) << code;
    }
  }
}

/// A plain entry has nothing to be asked for: no variant, no contraction, no expansion.
void ExpectNothingBehindPlain(CharOrderEntry const& entry, unsigned char codeSet) {
  std::vector<unsigned short> following = {0, 'a', 0x301};
  for (unsigned index = 0; index < entry.ContractionCount(); ++index) {
    following.push_back(entry.ContractionCharacter(index));
    ExpectNothingBehindPlain(*entry.ContractionEntry(index), codeSet);
  }
  for (unsigned index = 0; index < entry.VariantCount(); ++index) {
    ExpectNothingBehindPlain(*entry.VariantEntry(index), codeSet);
  }
  for (unsigned char language = 0; language < 48; ++language) {
    unsigned char const flag = XoLanguageContext::QueryLanguage(language)->variantFlag;
    for (unsigned short const next : following) {
      if (!entry.IsPlain(flag, next)) continue;
      EXPECT_EQ(entry.Variant(language), nullptr) << unsigned{codeSet};
      EXPECT_EQ(entry.Contraction(next), nullptr) << unsigned{codeSet} << ' ' << next;
      EXPECT_FALSE(entry.HasExpansion()) << unsigned{codeSet};
    }
  }
}

TEST(SortOrders, NothingFollowsAPlainEntry) {
  for (unsigned code = 0; code < 0x10000; ++code) {
    CharOrderEntry const* const entry = Table().GetEntry(static_cast<unsigned short>(code));
    if (entry != nullptr) ExpectNothingBehindPlain(*entry, kUnicode);
  }
  for (unsigned char const set : OrderedNarrowSets()) {
    for (unsigned short code = 0; code < 256; ++code) {
      ExpectNothingBehindPlain(*Table(set).GetEntry(code), set);
    }
  }
}

enum : unsigned {
  kNone = 0,
  kCedilla,
  kAcute,
  kGrave,
  kCircumflex,
  kTilde,
  kDiaeresis,
  kRing,
  kStroke
};

struct Latin1Letter {
  unsigned short code;
  char letter;
  unsigned accent;
};

constexpr Latin1Letter kLatin1[] = {
    {0xC0, 'A', kGrave},      {0xC1, 'A', kAcute},      {0xC2, 'A', kCircumflex},
    {0xC3, 'A', kTilde},      {0xC4, 'A', kDiaeresis},  {0xC5, 'A', kRing},
    {0xC7, 'C', kCedilla},    {0xC8, 'E', kGrave},      {0xC9, 'E', kAcute},
    {0xCA, 'E', kCircumflex}, {0xCB, 'E', kDiaeresis},  {0xCC, 'I', kGrave},
    {0xCD, 'I', kAcute},      {0xCE, 'I', kCircumflex}, {0xCF, 'I', kDiaeresis},
    {0xD1, 'N', kTilde},      {0xD2, 'O', kGrave},      {0xD3, 'O', kAcute},
    {0xD4, 'O', kCircumflex}, {0xD5, 'O', kTilde},      {0xD6, 'O', kDiaeresis},
    {0xD8, 'O', kStroke},     {0xD9, 'U', kGrave},      {0xDA, 'U', kAcute},
    {0xDB, 'U', kCircumflex}, {0xDC, 'U', kDiaeresis},  {0xDD, 'Y', kAcute}};

unsigned LetterOf(unsigned order) { return (order >> 2) & 31; }
unsigned ExtensionOf(unsigned order) { return order & 3; }
unsigned AccentOf(unsigned order) { return (order >> 7) & 31; }
unsigned CaseOf(unsigned order) { return (order >> 12) & 3; }
bool IsLetter(unsigned order) { return order >= 16384 && order < 32768; }

TEST(SortOrders, AccentedLettersOfLatin1ReadFromTheirBits) {
  for (Latin1Letter const each : kLatin1) {
    for (unsigned const small : {0u, 0x20u}) {
      auto const code = static_cast<unsigned short>(each.code + small);
      unsigned const order = Order(code, 1);
      EXPECT_TRUE(IsLetter(order)) << code;
      EXPECT_EQ(LetterOf(order) + 62, static_cast<unsigned>(each.letter)) << code;
      EXPECT_EQ(ExtensionOf(order), 0u) << code;
      EXPECT_EQ(AccentOf(order), each.accent) << code;
      EXPECT_EQ(CaseOf(order), small != 0 ? 3u : 0u) << code;
      EXPECT_FALSE(Table(1).GetEntry(code)->HasExpansion()) << code;
    }
  }
  unsigned const small = Order(0xFF, 1);
  EXPECT_EQ(LetterOf(small) + 62, unsigned{'Y'});
  EXPECT_EQ(AccentOf(small), kDiaeresis);
}

TEST(SortOrders, OtherLettersOfLatin1ReadFromTheirBits) {
  for (unsigned short const eth : std::initializer_list<unsigned short>{0xD0, 0xF0}) {
    EXPECT_EQ(LetterOf(Order(eth, 1)) + 62, unsigned{'D'});
    EXPECT_GT(AccentOf(Order(eth, 1)), 14u);
  }
  for (unsigned short const thorn : std::initializer_list<unsigned short>{0xDE, 0xFE}) {
    EXPECT_EQ(LetterOf(Order(thorn, 1)), 29u);
    EXPECT_EQ(AccentOf(Order(thorn, 1)), 0u);
  }
  EXPECT_EQ(CaseOf(Order(0xD0, 1)), 0u);
  EXPECT_EQ(CaseOf(Order(0xFE, 1)), 3u);
  for (auto const& [ordinal, letter] : {std::pair{0xAA, 'A'}, std::pair{0xBA, 'O'}}) {
    unsigned const order = Order(static_cast<unsigned short>(ordinal), 1);
    EXPECT_EQ(LetterOf(order) + 62, static_cast<unsigned>(letter));
    EXPECT_TRUE(CaseOf(order) == 1 || CaseOf(order) == 2);
  }
  for (unsigned short const code :
       std::initializer_list<unsigned short>{0xB2, 0xB3, 0xB9, 0xBC, 0xBD, 0xBE}) {
    EXPECT_TRUE(Order(code, 1) >= 16128 && Order(code, 1) < 16384) << code;
  }
  EXPECT_GT(Order(0xB4, 1), 219u);  // the acute accent by itself
  EXPECT_LT(Order(0xA0, 1), 80u);   // the no-break space
}

TEST(SortOrders, AccentedLettersOfLatin1HaveOrdersOfTheirOwn) {
  std::set<unsigned> orders;
  for (Latin1Letter const each : kLatin1) {
    EXPECT_TRUE(orders.insert(Order(each.code, 1)).second);
    EXPECT_TRUE(orders.insert(Order(static_cast<unsigned short>(each.code + 0x20), 1)).second);
  }
}

TEST(SortOrders, NamedAccentsBeyondLatin1) {
  struct Named {
    unsigned short character;
    char letter;
    unsigned accent;
  };
  for (Named const each : {Named{0x10D, 'C', 9}, Named{0x101, 'A', 10}, Named{0x103, 'A', 11},
                           Named{0x117, 'E', 12}, Named{0x119, 'E', 13}, Named{0x151, 'O', 14},
                           Named{0x142, 'L', 8}, Named{0x111, 'D', 8}, Named{0x127, 'H', 8}}) {
    EXPECT_EQ(LetterOf(Order(each.character)) + 62, static_cast<unsigned>(each.letter));
    EXPECT_EQ(AccentOf(Order(each.character)), each.accent);
  }
}

TEST(SortOrders, CaseBitsOfOtherFormsLieBetween) {
  EXPECT_EQ(CaseOf(Order(0x01C6)), 3u);  // ǆ
  EXPECT_EQ(CaseOf(Order(0x01C5)), 1u);  // ǅ
  EXPECT_EQ(CaseOf(Order(0x01C4)), 0u);  // Ǆ
  EXPECT_EQ(CaseOf(Order(0xFF41)), 2u);  // fullwidth a
  EXPECT_EQ(CaseOf(Order(0xFF21)), 1u);  // fullwidth A
  EXPECT_EQ(CaseOf(Order(0x1F88)), 1u);  // ᾈ
  EXPECT_EQ(CaseOf(Order(0x1FFC)), 1u);  // ῼ
}

std::vector<unsigned> Walked(std::u16string const& text, unsigned char language = 0) {
  std::vector<unsigned> orders;
  for (WalkedOrder const each : WalkOrders(text, language)) orders.push_back(each.order);
  return orders;
}

/// Letters of the orders of a text, for a Latin one; other orders are left out.
std::string LettersOf(std::u16string const& text) {
  std::string letters;
  for (unsigned const order : Walked(text)) {
    if (!IsLetter(order)) continue;
    letters += static_cast<char>(LetterOf(order) + (CaseOf(order) == 0 ? 62 : 94));
  }
  return letters;
}

TEST(SortOrders, ExpansionsGiveTheLettersOfALigature) {
  EXPECT_EQ(LettersOf(u"ß"), "ss");
  EXPECT_EQ(LettersOf(u"æ"), "ae");
  EXPECT_EQ(LettersOf(u"Œ"), "OE");
  EXPECT_EQ(LettersOf(u"ĳ"), "ij");
  EXPECT_EQ(LettersOf(u"ﬃ"), "ffi");
  EXPECT_EQ(LettersOf(u"Ⅷ"), "VIII");
  EXPECT_EQ(Walked(u"½"), (std::vector<unsigned>{16139, 16148}));
  EXPECT_EQ(WalkOrders(u"\uFDFA", 0).size(), 18u);
}

TEST(SortOrders, LigaturesDifferFromTheirLettersBelowTheLetterLevel) {
  for (auto const& [ligature, letters] :
       {std::pair{u"ß", u"ss"}, std::pair{u"æ", u"ae"}, std::pair{u"ﬁ", u"fi"},
        std::pair{u"ǆ", u"dž"}, std::pair{u"ª", u"a"}, std::pair{u"Ａ", u"A"},
        std::pair{u"²", u"2"}, std::pair{u"٣", u"3"}}) {
    Difference const difference = CompareTexts(ligature, letters, 0);
    EXPECT_NE(difference.sign, 0);
    EXPECT_NE(difference.level, Level::Letter);
  }
}

TEST(SortOrders, LettersCarryTheGroupOfTheirScript) {
  struct Sample {
    unsigned short character;
    unsigned group;
  };
  for (Sample const each :
       {Sample{'a', 2}, Sample{0x3B1, 3}, Sample{0x430, 4}, Sample{0x10D0, 5}, Sample{0x561, 6},
        Sample{0x5D0, 7}, Sample{0x628, 8}, Sample{0x905, 9}, Sample{0x985, 10}, Sample{0xA05, 11},
        Sample{0xA85, 12}, Sample{0xB05, 13}, Sample{0xB85, 14}, Sample{0xC05, 15},
        Sample{0xC85, 16}, Sample{0xD05, 17}, Sample{0xE01, 18}, Sample{0x3042, 19}}) {
    ASSERT_NE(Table().GetEntry(each.character), nullptr);
    ASSERT_NE(Table().GetEntry(each.character)->GroupOverride(), nullptr);
    EXPECT_EQ(*Table().GetEntry(each.character)->GroupOverride(), each.group);
  }
}

TEST(SortOrders, OnlyLettersCarryAGroup) {
  for (unsigned code = 0; code < 0x10000; ++code) {
    CharOrderEntry const* const entry = Table().GetEntry(static_cast<unsigned short>(code));
    if (entry == nullptr) continue;
    EXPECT_LT(entry->order, 32768) << code;
    XoWCharList const& more = entry->Expansion();
    bool const standsForLetters = std::any_of(more.values, more.values + more.count, IsLetter);
    if (!IsLetter(entry->order) && !standsForLetters) {
      EXPECT_EQ(entry->GroupOverride(), nullptr) << code;
      continue;
    }
    ASSERT_NE(entry->GroupOverride(), nullptr) << code;
    EXPECT_TRUE(*entry->GroupOverride() >= 2 && *entry->GroupOverride() <= 19) << code;
  }
}

TEST(SortOrders, CodeSetGroupIsThatOfTheLanguagesScript) {
  for (unsigned char const set : std::initializer_list<unsigned char>{1, 14, 32, 225, 253}) {
    XoCodeSet const& codes = *XoLanguageContext::QueryCodeSet(set);
    EXPECT_EQ(codes.CodeSetGroup(0), 2);
    EXPECT_EQ(codes.CodeSetGroup(37), 3);  // Greek
    EXPECT_EQ(codes.CodeSetGroup(38), 4);  // Russian
    EXPECT_EQ(codes.CodeSetGroup(43), 7);  // Hebrew
    EXPECT_EQ(codes.CodeSetGroup(200), 2);
    EXPECT_EQ(codes.CodeSetGroup(254), 2);
    EXPECT_EQ(codes.CodeSetGroup(255), 2);
  }
  XoCodeSet const& orders = *XoLanguageContext::QueryCodeSet(254);
  for (unsigned byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(orders.CodeSetGroup(static_cast<unsigned char>(byte)), byte & 0x7F);
  }
}

TEST(SortOrders, ClassNeverDependsOnLanguage) {
  auto const classOf = [](unsigned order) {
    return order < 80 ? 0 : order < 16128 ? 1 : order < 16384 ? 2 : 3;
  };
  for (unsigned code = 0; code < 0x10000; ++code) {
    CharOrderEntry const* const entry = Table().GetEntry(static_cast<unsigned short>(code));
    if (entry == nullptr) continue;
    for (unsigned index = 0; index < entry->VariantCount(); ++index) {
      EXPECT_EQ(classOf(entry->VariantEntry(index)->order), classOf(entry->order)) << code;
    }
  }
}

TEST(SortOrders, NarrowTablesAgreeWithUnicode) {
  for (unsigned char const set : OrderedNarrowSets()) {
    XoCodeSet const& codes = *XoLanguageContext::QueryCodeSet(set);
    for (unsigned short code = 0; code < 256; ++code) {
      unsigned short const character = codes.ToUnicode(code);
      if (character == 0xFFFD) continue;
      for (unsigned char language = 0; language < 48; ++language) {
        auto const own = WalkOrders(std::u16string(1, static_cast<char16_t>(code)), language, set);
        auto const wide = WalkOrders(std::u16string(1, static_cast<char16_t>(character)), language);
        EXPECT_EQ(CompareByLevels(own, wide).sign, 0) << codes.name << ' ' << code;
      }
    }
  }
}

/// The entry in a language.
CharOrderEntry const& InLanguage(CharOrderEntry const& entry, unsigned char language) {
  CharOrderEntry const* const own = entry.Variant(language);
  return own != nullptr ? *own : entry;
}

/// The same orders, and the same behind every character that the set can write.
bool SameTree(CharOrderEntry const& narrow, CharOrderEntry const& wide, XoCodeSet const& codes) {
  unsigned char const* const group = narrow.GroupOverride();
  unsigned char const* const wideGroup = wide.GroupOverride();
  if (narrow.order != wide.order || (group == nullptr) != (wideGroup == nullptr)) return false;
  if (group != nullptr && *group != *wideGroup) return false;
  XoWCharList const& more = narrow.Expansion();
  XoWCharList const& wideMore = wide.Expansion();
  if (!std::equal(more.values, more.values + more.count, wideMore.values,
                  wideMore.values + wideMore.count)) {
    return false;
  }
  unsigned found = 0;
  for (unsigned index = 0; index < wide.ContractionCount(); ++index) {
    unsigned short const character = wide.ContractionCharacter(index);
    if (codes.HasCharacter(character) == 0) continue;
    CharOrderEntry const* const longer =
        narrow.Contraction(codes.MapCharacter(character, kUnicode));
    if (longer == nullptr || !SameTree(*longer, *wide.ContractionEntry(index), codes)) return false;
    ++found;
  }
  return found == narrow.ContractionCount();
}

TEST(SortOrders, NarrowEntriesAreThoseOfUnicodeWithTheirContractions) {
  for (unsigned char const set : OrderedNarrowSets()) {
    XoCodeSet const& codes = *XoLanguageContext::QueryCodeSet(set);
    for (unsigned short code = 0; code < 256; ++code) {
      unsigned short const character = codes.ToUnicode(code);
      if (character == 0xFFFD || Table().GetEntry(character) == nullptr) continue;
      for (unsigned char language = 0; language < 48; ++language) {
        EXPECT_TRUE(SameTree(InLanguage(*Table(set).GetEntry(code), language),
                             InLanguage(*Table().GetEntry(character), language), codes))
            << codes.name << ' ' << code << " in language " << unsigned{language};
      }
    }
  }
}

TEST(SortOrders, NarrowCharactersHaveAtMostTwoOrders) {
  // Three have the number sign, the digraphs of Yiddish, the Thai am and, where a rule of the
  // language makes it a form of th, þ.
  std::set<unsigned> const longer = {0x2116, 0x5F0, 0x5F1, 0x5F2, 0xE33};
  std::set<unsigned> const nordic = {13, 15, 18};
  for (unsigned char const set : OrderedNarrowSets()) {
    XoCodeSet const& codes = *XoLanguageContext::QueryCodeSet(set);
    for (unsigned short code = 0; code < 256; ++code) {
      unsigned const character = codes.ToUnicode(code);
      for (unsigned char language = 0; language < 48; ++language) {
        bool const thorn = (character == 0xDE || character == 0xFE) && nordic.count(language) != 0;
        auto const orders =
            WalkOrders(std::u16string(1, static_cast<char16_t>(code)), language, set);
        EXPECT_LE(orders.size(), thorn || longer.count(character) != 0 ? 3u : 2u)
            << codes.name << ' ' << code << " in language " << unsigned{language};
      }
    }
  }
}

TEST(SortOrders, UpperAndLowerFormDifferInCaseAlone) {
  constexpr unsigned char kTurkish = 31;
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
  for (unsigned char language = 0; language < 48; ++language) {
    for (unsigned code = 0; code < 0x10000; ++code) {
      auto const lower = static_cast<unsigned short>(code);
      XoUnicodeProps const* const forms = unicode.GetUnicodeProps(lower, language);
      if (forms == nullptr || forms->upperCase == 0 || forms->upperExpansion.count != 0) continue;
      XoUnicodeProps const* const back = unicode.GetUnicodeProps(forms->upperCase, language);
      if (back == nullptr || back->lowerCase != lower) continue;
      if (Table().GetEntry(lower) == nullptr || Table().GetEntry(forms->upperCase) == nullptr) {
        continue;
      }
      // To Turkish readers i and I, with marks or without, are two letters.
      if (language == kTurkish && LetterOf(Order(lower)) == 'I' - 62) continue;
      std::u16string const small(1, static_cast<char16_t>(lower));
      std::u16string const capital(1, static_cast<char16_t>(forms->upperCase));
      Difference const difference = CompareTexts(small, capital, language);
      EXPECT_TRUE(difference.sign == -1 && difference.level == Level::Case)
          << std::hex << code << " in language " << std::dec << unsigned{language};
    }
  }
}

TEST(SortOrders, UpperFormsOfALetterAndMarksDifferInCaseAlone) {
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
  auto const isMark = [](unsigned short each) { return each >= 0x300 && each < 0x370; };
  unsigned checked = 0;
  for (unsigned code = 0; code < 0x10000; ++code) {
    auto const lower = static_cast<unsigned short>(code);
    XoUnicodeProps const* const forms = unicode.GetUnicodeProps(lower, 0);
    if (forms == nullptr || forms->upperExpansion.count == 0) continue;
    XoWCharList const& more = forms->upperExpansion;
    if (!std::all_of(more.values, more.values + more.count, isMark)) continue;
    std::u16string capital(1, static_cast<char16_t>(forms->upperCase));
    for (unsigned index = 0; index < more.count; ++index) {
      capital += static_cast<char16_t>(more.values[index]);
    }
    for (unsigned char language = 0; language < 48; ++language) {
      Difference const difference =
          CompareTexts(std::u16string(1, static_cast<char16_t>(code)), capital, language);
      EXPECT_TRUE(difference.sign == -1 && difference.level == Level::Case)
          << std::hex << code << " in language " << std::dec << unsigned{language};
      ++checked;
    }
  }
  EXPECT_GT(checked, 500u);
}

TEST(SortOrders, RecordsAreSmall) {
  EXPECT_EQ(sizeof(CharOrderEntry), 8u);
  EXPECT_LE(sizeof(CharOrderEntry) * 256, 2048u);
}

}  // namespace
}  // namespace xo::test
