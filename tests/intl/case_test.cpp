#include <gtest/gtest.h>

#include <xotypemgr.hpp>

namespace xo::test {
namespace {

constexpr unsigned char kNeutral = 0, kTurkish = 31, kLithuanian = 34;

XoUnicodeProps const* Forms(unsigned short code, unsigned char language = kNeutral,
                            unsigned char codeSet = 253) {
  return XoLanguageContext::QueryCodeSet(codeSet)->GetUnicodeProps(code, language);
}

unsigned Upper(unsigned short code, unsigned char language = kNeutral, unsigned char set = 253) {
  XoUnicodeProps const* const forms = Forms(code, language, set);
  return forms != nullptr ? forms->upperCase : 0;
}

unsigned Lower(unsigned short code, unsigned char language = kNeutral, unsigned char set = 253) {
  XoUnicodeProps const* const forms = Forms(code, language, set);
  return forms != nullptr ? forms->lowerCase : 0;
}

TEST(CaseForms, SimpleForms) {
  EXPECT_EQ(Upper('a'), 'A');
  EXPECT_EQ(Lower('A'), 'a');
  EXPECT_EQ(Upper('A'), 0u);
  EXPECT_EQ(Lower('a'), 0u);
  EXPECT_EQ(Upper(0xE9), 0xC9u);
  EXPECT_EQ(Upper(0xFF), 0x178u);
  EXPECT_EQ(Upper(0x3C2), 0x3A3u);
  EXPECT_EQ(Lower(0x410), 0x430u);
  EXPECT_EQ(Upper(0x01C5), 0x01C4u);
  EXPECT_EQ(Lower(0x01C5), 0x01C6u);
  EXPECT_EQ(Forms('1'), nullptr);
  EXPECT_EQ(Forms(0x4E00), nullptr);
}

struct Expanding {
  unsigned short character;
  std::vector<unsigned short> upper;
};

TEST(CaseForms, UpperFormsOfSeveralCharacters) {
  for (Expanding const& each :
       {Expanding{0xDF, {'S', 'S'}}, Expanding{0x149, {0x2BC, 'N'}}, Expanding{0x1F0, {'J', 0x30C}},
        Expanding{0xFB01, {'F', 'I'}}, Expanding{0xFB03, {'F', 'F', 'I'}},
        Expanding{0x390, {0x399, 0x308, 0x301}}, Expanding{0x1FB3, {0x391, 0x399}},
        Expanding{0x587, {0x535, 0x552}}}) {
    XoUnicodeProps const* const forms = Forms(each.character);
    ASSERT_NE(forms, nullptr);
    EXPECT_EQ(forms->upperCase, each.upper[0]);
    ASSERT_EQ(forms->upperExpansion.count, each.upper.size() - 1);
    for (unsigned index = 1; index < each.upper.size(); ++index) {
      EXPECT_EQ(forms->upperExpansion.values[index - 1], each.upper[index]);
    }
  }
  EXPECT_EQ(Forms('a')->upperExpansion.count, 0);
}

TEST(CaseForms, TurkishDotsStay) {
  EXPECT_EQ(Upper('i', kTurkish), 0x130u);
  EXPECT_EQ(Lower('I', kTurkish), 0x131u);
  EXPECT_EQ(Lower(0x130, kTurkish), 'i');
  EXPECT_EQ(Upper(0x131, kTurkish), 'I');
  EXPECT_EQ(Forms(0x130, kTurkish)->LowerSequence().count, 0);
  EXPECT_EQ(Forms(0xCC, kTurkish)->LowerSequence().count, 0);
  EXPECT_EQ(Upper('i'), 'I');
  EXPECT_EQ(Lower('I'), 'i');
}

TEST(CaseForms, LithuanianAccentedIKeepsItsDot) {
  XoUnicodeProps const* const forms = Forms(0xCC, kLithuanian);
  ASSERT_NE(forms, nullptr);
  EXPECT_EQ(forms->lowerCase, 0xECu);
  ASSERT_EQ(forms->LowerSequence().count, 3);
  EXPECT_EQ(forms->LowerSequence().values[0], 'i');
  EXPECT_EQ(forms->LowerSequence().values[1], 0x307);
  EXPECT_EQ(forms->LowerSequence().values[2], 0x300);
  EXPECT_EQ(Forms(0xCC)->LowerSequence().count, 0);
  EXPECT_EQ(Upper('i', kLithuanian), 'I');
}

TEST(CaseForms, WhatTheSetHasNoPlaceForStays) {
  EXPECT_EQ(Forms(0xFF, kNeutral, 1), nullptr);  // ÿ
  EXPECT_EQ(Forms(0xB5, kNeutral, 1), nullptr);  // µ
  EXPECT_EQ(Upper(0xFF, kNeutral, 15), 0x178u);  // windows-1252 has Ÿ
  EXPECT_EQ(Upper(0xDF, kNeutral, 1), 'S');
  EXPECT_EQ(Forms(0xDF, kNeutral, 1)->upperExpansion.count, 1);
  EXPECT_EQ(Forms(0xC0, kNeutral, 7), nullptr);  // ΐ, whose parts ISO 8859-7 lacks
  EXPECT_EQ(Forms('i', kTurkish, 1), nullptr);   // no dotted capital in ISO 8859-1
  EXPECT_EQ(Forms('I', kTurkish, 1), nullptr);   // nor a dotless small one
  EXPECT_EQ(Upper('i', kTurkish, 9), 0x130u);    // but in ISO 8859-9
}

TEST(CaseForms, CodesAreThoseOfTheSet) {
  EXPECT_EQ(Upper(0x81, kNeutral, 32), 'A');
  EXPECT_EQ(Upper(0xD0, kNeutral, 5), 0x410u);
  EXPECT_EQ(Forms(0x81, kNeutral, 15), nullptr);  // not defined
}

TEST(CaseForms, FurtherCharactersAreCodesOfTheSet) {
  XoUnicodeProps const* const sharp = Forms(0x59, kNeutral, 32);  // ß in EBCDIC
  ASSERT_NE(sharp, nullptr);
  EXPECT_EQ(sharp->upperCase, 'S');
  ASSERT_EQ(sharp->upperExpansion.count, 1);
  EXPECT_EQ(sharp->upperExpansion.values[0], 0xE2);  // S in EBCDIC
  for (unsigned number = 1; number < 254; ++number) {
    auto const byte = static_cast<unsigned char>(number);
    XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(byte);
    if (set == nullptr) continue;
    for (unsigned code = 0; code < (number < 225 ? 0x100u : 0x10000u); ++code) {
      for (unsigned char const language : {kNeutral, kTurkish, kLithuanian}) {
        auto const character = static_cast<unsigned short>(code);
        XoUnicodeProps const* const own = Forms(character, language, byte);
        if (own == nullptr) continue;
        XoUnicodeProps const* const wide = Forms(set->ToUnicode(character), language);
        ASSERT_EQ(own->upperExpansion.count, wide->upperExpansion.count);
        for (unsigned index = 0; index < own->upperExpansion.count; ++index) {
          EXPECT_EQ(set->ToUnicode(own->upperExpansion.values[index]),
                    wide->upperExpansion.values[index]);
        }
      }
    }
  }
}

TEST(CaseForms, UnknownLanguagesAreNeutral) {
  for (int const number : {48, 200, 254, 255}) {
    auto const language = static_cast<unsigned char>(number);
    EXPECT_EQ(Forms('i', language), Forms('i', kNeutral));
  }
}

TEST(CaseForms, BadCodesHaveNone) {
  for (int const code : {0xD800, 0xDFFF, 0xFFFD, 0xFFFE, 0xFFFF, 0x0378}) {
    EXPECT_EQ(Forms(static_cast<unsigned short>(code)), nullptr);
  }
}

TEST(CaseForms, NarrowSetsAgreeWithUnicodeWhereTheyHaveTheForm) {
  for (unsigned char number = 1; number <= 35; ++number) {
    XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(number);
    for (unsigned short code = 0; code < 256; ++code) {
      unsigned short const unicode = set.ToUnicode(code);
      XoUnicodeProps const* const wide = Forms(unicode);
      XoUnicodeProps const* const narrow = set.GetUnicodeProps(code, kNeutral);
      if (narrow != nullptr) {
        EXPECT_EQ(narrow->upperCase, wide->upperCase);
        EXPECT_EQ(narrow->lowerCase, wide->lowerCase);
        EXPECT_EQ(&narrow->LowerSequence(), &wide->LowerSequence());
      } else if (wide != nullptr && wide->upperExpansion.count == 0) {
        // No record says that the one form that there is has no code.
        EXPECT_TRUE(wide->upperCase == 0 || wide->lowerCase == 0);
        EXPECT_EQ(set.HasCharacter(wide->upperCase != 0 ? wide->upperCase : wide->lowerCase), 0);
      }
    }
  }
}

}  // namespace
}  // namespace xo::test
