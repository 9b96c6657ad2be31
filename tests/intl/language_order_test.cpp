#include <gtest/gtest.h>

#include <initializer_list>
#include <tuple>

#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

enum Language : unsigned char {
  kNeutral = 0,
  kEnglish = 1,
  kGerman = 2,
  kPhoneBook = 3,
  kFrench = 6,
  kSpanish = 7,
  kTraditional = 8,
  kCatalan = 9,
  kDutch = 12,
  kSwedish = 13,
  kDanish = 14,
  kNorwegian = 15,
  kFinnish = 16,
  kIcelandic = 17,
  kFaroese = 18,
  kWelsh = 20,
  kPolish = 21,
  kCzech = 22,
  kSlovak = 23,
  kHungarian = 24,
  kSlovenian = 25,
  kCroatian = 26,
  kSerbian = 27,
  kRomanian = 29,
  kAlbanian = 30,
  kTurkish = 31,
  kEstonian = 32,
  kLatvian = 33,
  kLithuanian = 34,
  kMaltese = 35,
  kEsperanto = 36,
  kGreek = 37,
  kRussian = 38,
  kUkrainian = 39,
  kBelarusian = 40,
  kBulgarian = 41,
  kMacedonian = 42,
  kHebrew = 43,
  kArabic = 44,
  kThai = 45,
  kVietnamese = 46,
  kAustrianBook = 47
};

void ExpectRising(unsigned char language, Level level,
                  std::initializer_list<char16_t const*> texts) {
  char16_t const* before = nullptr;
  for (char16_t const* const text : texts) {
    if (before != nullptr) {
      Difference const difference = CompareTexts(before, text, language);
      EXPECT_EQ(difference.sign, -1) << testing::PrintToString(std::u16string(before)) << " and "
                                     << testing::PrintToString(std::u16string(text));
      EXPECT_EQ(difference.level, level) << testing::PrintToString(std::u16string(text));
    }
    before = text;
  }
}

TEST(LanguageOrder, AlphabetsAsTheirReadersKnowThem) {
  ExpectRising(kSpanish, Level::Letter, {u"n", u"ñ", u"o"});
  ExpectRising(kTraditional, Level::Letter, {u"c", u"cz", u"ch", u"d", u"l", u"lz", u"ll", u"m"});
  ExpectRising(kSwedish, Level::Letter, {u"y", u"z", u"å", u"ä", u"ö"});
  ExpectRising(kDanish, Level::Letter, {u"z", u"æ", u"ø", u"å"});
  ExpectRising(kNorwegian, Level::Letter, {u"z", u"æ", u"ø", u"å"});
  ExpectRising(kFinnish, Level::Letter, {u"z", u"å", u"ä", u"ö"});
  ExpectRising(kIcelandic, Level::Letter,
               {u"a", u"á", u"b", u"d", u"ð", u"e", u"é", u"f", u"i", u"í", u"j", u"o",
                u"ó", u"p", u"u", u"ú", u"v", u"x", u"y", u"ý", u"þ", u"æ", u"ö"});
  ExpectRising(kWelsh, Level::Letter,
               {u"c", u"ch", u"d", u"dd", u"e", u"f", u"ff", u"g", u"ng", u"h", u"l", u"ll", u"p",
                u"ph", u"r", u"rh", u"t", u"th"});
  ExpectRising(kPolish, Level::Letter,
               {u"a", u"ą", u"b", u"c", u"ć", u"e", u"ę", u"l", u"ł", u"m", u"n", u"ń", u"o", u"ó",
                u"s", u"ś", u"z", u"ź", u"ż"});
  ExpectRising(kCzech, Level::Letter,
               {u"c", u"č", u"d", u"h", u"hz", u"ch", u"i", u"r", u"ř", u"s", u"š", u"z", u"ž"});
  ExpectRising(kSlovak, Level::Letter, {u"a", u"ä", u"b", u"h", u"ch", u"i", u"o", u"ô", u"p"});
  ExpectRising(kHungarian, Level::Letter,
               {u"c",  u"cs", u"d", u"dz", u"dzs", u"e", u"g",  u"gy", u"l", u"ly", u"n",
                u"ny", u"o",  u"ö", u"s",  u"sz",  u"t", u"ty", u"u",  u"ü", u"z",  u"zs"});
  ExpectRising(kCroatian, Level::Letter,
               {u"c", u"č", u"ć", u"d", u"dž", u"đ", u"e", u"l", u"lj", u"n", u"nj", u"š", u"ž"});
  ExpectRising(kRomanian, Level::Letter, {u"a", u"ă", u"â", u"i", u"î", u"s", u"ș", u"t", u"ț"});
  ExpectRising(kAlbanian, Level::Letter,
               {u"c",  u"ç", u"d",  u"dh", u"e",  u"ë", u"f",  u"g", u"gj", u"l", u"ll", u"n",
                u"nj", u"r", u"rr", u"s",  u"sh", u"t", u"th", u"x", u"xh", u"y", u"z",  u"zh"});
  ExpectRising(
      kTurkish, Level::Letter,
      {u"c", u"ç", u"g", u"ğ", u"h", u"ı", u"i", u"j", u"o", u"ö", u"s", u"ş", u"u", u"ü"});
  ExpectRising(
      kEstonian, Level::Letter,
      {u"s", u"š", u"z", u"ž", u"t", u"u", u"v", u"w", u"õ", u"ä", u"ö", u"ü", u"x", u"y"});
  ExpectRising(
      kLatvian, Level::Letter,
      {u"c", u"č", u"g", u"ģ", u"k", u"ķ", u"l", u"ļ", u"n", u"ņ", u"s", u"š", u"z", u"ž"});
  ExpectRising(kLithuanian, Level::Letter, {u"c", u"č", u"i", u"j", u"s", u"š", u"z", u"ž"});
  ExpectRising(kMaltese, Level::Letter,
               {u"b", u"ċ", u"d", u"f", u"ġ", u"g", u"għ", u"h", u"ħ", u"i", u"ż", u"z"});
  ExpectRising(kEsperanto, Level::Letter,
               {u"c", u"ĉ", u"g", u"ĝ", u"h", u"ĥ", u"j", u"ĵ", u"s", u"ŝ", u"u", u"ŭ"});
  ExpectRising(kUkrainian, Level::Letter, {u"г", u"ґ", u"д", u"е", u"є", u"и", u"і", u"ї", u"й"});
  ExpectRising(kBelarusian, Level::Letter, {u"е", u"ё", u"ж", u"у", u"ў", u"ф"});
  ExpectRising(kMacedonian, Level::Letter, {u"д", u"ѓ", u"е", u"з", u"ѕ", u"т", u"ќ", u"у"});
  ExpectRising(kSerbian, Level::Letter, {u"д", u"ђ", u"л", u"љ", u"н", u"њ", u"ц", u"ч", u"џ"});
  ExpectRising(kRussian, Level::Letter, {u"и", u"й", u"к", u"ш", u"щ", u"ъ", u"ы", u"ь", u"э"});
  ExpectRising(kVietnamese, Level::Letter,
               {u"a", u"ă", u"â", u"d", u"đ", u"e", u"ê", u"o", u"ô", u"ơ", u"u", u"ư"});
  ExpectRising(kAustrianBook, Level::Letter, {u"az", u"ä", u"b", u"o", u"ö", u"u", u"ü"});
}

TEST(LanguageOrder, AccentsOfOneLetter) {
  ExpectRising(kVietnamese, Level::Accent, {u"a", u"à", u"ả", u"ã", u"á", u"ạ"});
  ExpectRising(kVietnamese, Level::Accent, {u"ơ", u"ờ", u"ở", u"ỡ", u"ớ", u"ợ"});
  ExpectRising(kHungarian, Level::Accent, {u"ö", u"ő"});
  ExpectRising(kSwedish, Level::Accent, {u"ä", u"æ"});
  ExpectRising(kLithuanian, Level::Accent, {u"i", u"į", u"y"});
  ExpectRising(kGerman, Level::Accent, {u"a", u"ä"});
  ExpectRising(kNeutral, Level::Accent, {u"c", u"č"});
  ExpectRising(kRussian, Level::Accent, {u"е", u"ё"});
}

TEST(LanguageOrder, PhoneBookWritesUmlautsAsTwoLetters) {
  ExpectRising(kPhoneBook, Level::Letter, {u"ad", u"ä", u"af"});
  EXPECT_EQ(CompareTexts(u"Müller", u"Mueller", kPhoneBook).level, Level::Accent);
  EXPECT_EQ(CompareTexts(u"Müller", u"Mueller", kGerman).level, Level::Letter);
}

TEST(LanguageOrder, LongestContractionWins) {
  EXPECT_EQ(WalkOrders(u"dzs", kHungarian).size(), 1u);
  EXPECT_EQ(WalkOrders(u"dz", kHungarian).size(), 1u);
  EXPECT_EQ(WalkOrders(u"dzx", kHungarian).size(), 2u);
  EXPECT_EQ(WalkOrders(u"dzs", kNeutral).size(), 3u);
  EXPECT_EQ(WalkOrders(u"ccs", kHungarian).size(), 3u);  // cs, cs and what tells it from cscs
  EXPECT_EQ(CompareTexts(u"ccs", u"cscs", kHungarian).level, Level::Ignorable);
}

TEST(LanguageOrder, LettersContractOnlyWhereALanguageSaysSo) {
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
    for (char16_t next = u'a'; next <= u'z'; ++next) {
      EXPECT_EQ(table.GetEntry(letter)->Contraction(next), nullptr);
    }
  }
  EXPECT_FALSE(XoLanguageContext::QueryCodeSet(1)->orderTable->GetEntry(u'c')->HasContractions());
}

TEST(LanguageOrder, ContractionsWorkInNarrowSets) {
  std::u16string const ch = u"ch";
  EXPECT_EQ(WalkOrders(ch, kCzech, 2).size(), 1u);
  EXPECT_EQ(WalkOrders(u"d\u00BE", kCroatian, 2).size(), 1u);     // dž in ISO 8859-2
  EXPECT_EQ(WalkOrders(u"a\u00D2", kVietnamese, 21).size(), 1u);  // a with hook in windows-1258
}

TEST(LanguageOrder, DecomposedTextSortsAsComposed) {
  for (auto const& [composed, decomposed] :
       {std::pair{u"é", u"e\u0301"}, std::pair{u"Å", u"A\u030A"}, std::pair{u"ậ", u"a\u0323\u0302"},
        std::pair{u"ậ", u"a\u0302\u0323"}, std::pair{u"ậ", u"â\u0323"}, std::pair{u"ậ", u"ạ\u0302"},
        std::pair{u"й", u"и\u0306"}, std::pair{u"ΐ", u"ϊ\u0301"},
        // Marks in every order that is equivalent.
        std::pair{u"ṩ", u"s\u0307\u0323"}, std::pair{u"ᾂ", u"α\u0345\u0313\u0300"},
        std::pair{u"ᾂ", u"α\u0313\u0345\u0300"}, std::pair{u"ᾂ", u"ἀ\u0345\u0300"},
        // Marks that stand for others.
        std::pair{u"à", u"a\u0340"}, std::pair{u"á", u"a\u0341"}, std::pair{u"ἀ", u"α\u0343"},
        std::pair{u"ΐ", u"ι\u0344"}, std::pair{u"ᾂ", u"α\u0345\u0343\u0340"},
        std::pair{u"\u1FB4", u"\u1F71\u0345"}}) {
    for (unsigned char language = 0; language < 48; ++language) {
      EXPECT_EQ(CompareTexts(composed, decomposed, language).sign, 0) << unsigned{language};
    }
  }
}

TEST(LanguageOrder, MarksBehindAContractionBelongToItsLastLetter) {
  for (auto const& [composed, decomposed, language] :
       {std::tuple{u"cś", u"cs\u0301", kHungarian}, std::tuple{u"gý", u"gy\u0301", kHungarian},
        std::tuple{u"dzş", u"dzs\u0327", kHungarian}, std::tuple{u"aá", u"aa\u0301", kDanish},
        std::tuple{u"aå", u"aa\u030A", kDanish}, std::tuple{u"dź", u"dz\u0301", kCroatian},
        std::tuple{u"cṩ", u"cs\u0307\u0323", kHungarian},
        std::tuple{u"cś", u"cs\u0341", kHungarian}}) {
    EXPECT_EQ(CompareTexts(composed, decomposed, language).sign, 0)
        << testing::PrintToString(std::u16string(composed));
  }
}

TEST(LanguageOrder, MarkedCapitalsWithoutAComposedFormDifferInCaseAlone) {
  for (unsigned char language = 0; language < 48; ++language) {
    for (auto const& [small, capital] :
         {std::pair{u"а\u0301", u"А\u0301"}, std::pair{u"j\u030C", u"J\u030C"},
          std::pair{u"ǰ", u"J\u030C"}, std::pair{u"ẖ", u"H\u0331"},
          std::pair{u"m\u0303", u"M\u0303"}}) {
      Difference const difference = CompareTexts(small, capital, language);
      EXPECT_EQ(difference.sign, -1) << testing::PrintToString(std::u16string(small));
      EXPECT_EQ(difference.level, Level::Case) << unsigned{language};
    }
  }
}

TEST(LanguageOrder, ShortIIsALetterOfItsOwn) {
  for (unsigned char language = 0; language < 48; ++language) {
    // Serbian and Macedonian have no й, and take it for и with a breve.
    bool const own = language != kSerbian && language != kMacedonian;
    ExpectRising(language, own ? Level::Letter : Level::Accent, {u"и", u"й"});
    ExpectRising(language, Level::Letter, {u"й", u"к"});
    if (own) {
      EXPECT_EQ(WalkOrders(u"й", language)[0].order >> 7 & 31, 0);
    }
  }
}

TEST(LanguageOrder, DanishThornsDifferInCaseAlone) {
  ExpectRising(kDanish, Level::Case, {u"þ", u"Þ"});
  ExpectRising(kDanish, Level::Accent, {u"th", u"þ"});
}

TEST(LanguageOrder, HungarianDoubleAcuteKeepsItsNumber) {
  for (char16_t const* const text : {u"ő", u"Ő", u"ű", u"Ű"}) {
    EXPECT_EQ(WalkOrders(text, kHungarian)[0].order >> 7 & 31, 14);
  }
}

TEST(LanguageOrder, VowelsBeforeThaiConsonantsSortBehindThem) {
  ExpectRising(kThai, Level::Letter, {u"กา", u"เก", u"ขา"});
}

TEST(LanguageOrder, UnknownLanguagesSortAsNeutral) {
  for (int const number : {48, 100, 253, 254, 255}) {
    auto const language = static_cast<unsigned char>(number);
    EXPECT_EQ(XoLanguageContext::QueryLanguage(language), nullptr);
    EXPECT_EQ(CompareTexts(u"ch", u"ci", language).sign, CompareTexts(u"ch", u"ci", 0).sign);
    EXPECT_EQ(XoLanguageContext::QueryCodeSet(253)->orderTable->GetEntry(u'a')->Variant(language),
              nullptr);
  }
}

TEST(LanguageOrder, VariantsFoundByNumberAreThoseOfTheList) {
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  for (unsigned code = 0; code < 0x10000; ++code) {
    CharOrderEntry const* const entry = table.GetEntry(static_cast<unsigned short>(code));
    if (entry == nullptr) continue;
    EXPECT_EQ(entry->HasVariants(), entry->VariantCount() != 0);
    EXPECT_EQ(entry->HasContractions(), entry->ContractionCount() != 0);
    EXPECT_EQ(entry->HasExpansion(), entry->Expansion().count != 0);
    for (unsigned index = 0; index < entry->VariantCount(); ++index) {
      XoLanguage const* const language = entry->VariantLanguage(index);
      ASSERT_NE(language, nullptr);
      EXPECT_NE(language->hasVariants, 0);
      EXPECT_TRUE(entry->MayVary(language->variantFlag));
      EXPECT_EQ(entry->Variant(language->number), entry->VariantEntry(index));
    }
    EXPECT_EQ(entry->VariantLanguage(entry->VariantCount()), nullptr);
    EXPECT_EQ(entry->VariantEntry(entry->VariantCount()), nullptr);
    for (unsigned index = 0; index < entry->ContractionCount(); ++index) {
      EXPECT_EQ(entry->Contraction(entry->ContractionCharacter(index)),
                entry->ContractionEntry(index));
    }
    EXPECT_EQ(entry->ContractionEntry(entry->ContractionCount()), nullptr);
    EXPECT_EQ(entry->ContractionCharacter(entry->ContractionCount()), 0);
    EXPECT_EQ(entry->Contraction(u'\u4E00'), nullptr);
  }
}

TEST(LanguageOrder, LanguagesAreNumberedInTheirOrder) {
  for (unsigned char number = 0; number < 48; ++number) {
    XoLanguage const* const language = XoLanguageContext::QueryLanguage(number);
    ASSERT_NE(language, nullptr);
    EXPECT_EQ(language->number, number);
    EXPECT_NE(language->name[0], '\0');
    EXPECT_NE(language->tag[0], '\0');
  }
  EXPECT_STREQ(XoLanguageContext::QueryLanguage(0)->name, "neutral");
  EXPECT_STREQ(XoLanguageContext::QueryLanguage(1)->name, "English");
}

}  // namespace
}  // namespace xo::test
