// How far the characters and texts of every language's exemplar sets sort as ICU sorts them.
#include <gtest/gtest.h>
#include <unicode/caniter.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>
#include <unicode/usetiter.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <unordered_map>

#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

std::unique_ptr<icu::Collator> MakeCollator(char const* tag) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale = icu::Locale::forLanguageTag(tag, status);
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
  // Other languages than these have rules of their own; one that ICU does not know would be
  // compared by the common order.
  std::set<std::string> const common = {"en", "de", "de-AT", "de-CH", "fr",
                                        "ca", "pt", "it",    "nl",    "ga"};
  EXPECT_TRUE(status != U_USING_DEFAULT_WARNING || common.count(tag) != 0) << tag;
  collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
  collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, status);
  collator->setMaxVariable(UCOL_REORDER_CODE_CURRENCY, status);
  collator->setAttribute(UCOL_STRENGTH, UCOL_QUATERNARY, status);
  collator->setAttribute(UCOL_FRENCH_COLLATION, UCOL_ON, status);
  collator->setAttribute(UCOL_CASE_FIRST, UCOL_LOWER_FIRST, status);
  EXPECT_TRUE(U_SUCCESS(status)) << tag;
  return collator;
}

icu::UnicodeString Icu(std::u16string const& text) {
  return {text.data(), static_cast<int32_t>(text.size())};
}

std::u16string Text(icu::UnicodeString const& text) {
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::u16string Decomposed(std::u16string const& text) {
  UErrorCode status = U_ZERO_ERROR;
  return Text(icu::Normalizer2::getNFDInstance(status)->normalize(Icu(text), status));
}

/// The texts of the main and auxiliary exemplar sets, lower and upper case, in the basic plane.
std::set<std::u16string> ExemplarTexts(char const* tag) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale = icu::Locale::forLanguageTag(tag, status);
  std::set<std::u16string> result;
  ULocaleData* const data = ulocdata_open(locale.getBaseName(), &status);
  for (auto const kind : {ULOCDATA_ES_STANDARD, ULOCDATA_ES_AUXILIARY}) {
    USet* const set = ulocdata_getExemplarSet(data, nullptr, USET_ADD_CASE_MAPPINGS, kind, &status);
    EXPECT_NE(status, U_USING_DEFAULT_WARNING) << tag;
    icu::UnicodeSetIterator each(*icu::UnicodeSet::fromUSet(set));
    while (each.next()) {
      if (each.getString().countChar32() == each.getString().length()) {
        result.insert(Text(each.getString()));
      }
    }
    uset_close(set);
  }
  ulocdata_close(data);
  EXPECT_TRUE(U_SUCCESS(status)) << tag;
  return result;
}

std::set<std::u16string> ExemplarCharacters(char const* tag) {
  std::set<std::u16string> texts = ExemplarTexts(tag);
  std::erase_if(texts, [](std::u16string const& text) { return text.size() != 1; });
  return texts;
}

class EveryLanguage : public testing::TestWithParam<int> {};

void ExpectSortedAsIcuSortsThem(unsigned char number, std::set<std::u16string> const& texts,
                                char const* what) {
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
  auto const collator = MakeCollator(language.tag);
  unsigned pairs = 0, agreeing = 0;
  std::string differing;
  for (auto first = texts.begin(); first != texts.end(); ++first) {
    for (auto second = std::next(first); second != texts.end(); ++second) {
      UErrorCode status = U_ZERO_ERROR;
      int const theirs = collator->compare(Icu(*first), Icu(*second), status);
      int const ours = CompareTexts(*first, *second, number).sign;
      ++pairs;
      agreeing += ours == theirs;
      if (ours == theirs || std::getenv("XO_LIST_DIFFERENCES") == nullptr) continue;
      std::string one, two;
      Icu(*first).toUTF8String(one);
      Icu(*second).toUTF8String(two);
      differing += " " + one + (theirs < 0 ? "<" : theirs > 0 ? ">" : "=") + two;
    }
  }
  std::printf("%-24s %4zu %s, %6u pairs, %6.2f %% agree%s\n", language.name, texts.size(), what,
              pairs, 100.0 * agreeing / pairs, differing.c_str());
  EXPECT_GT(pairs, 0u) << language.name;
  EXPECT_GE(agreeing * 100.0, pairs * 99.0) << language.name;
}

TEST_P(EveryLanguage, ExemplarCharactersSortAsIcuSortsThem) {
  auto const number = static_cast<unsigned char>(GetParam());
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
  ExpectSortedAsIcuSortsThem(number, ExemplarCharacters(language.tag), "characters");
}

/// The texts of several characters too, and all of them decomposed.
TEST_P(EveryLanguage, DecomposedExemplarTextsSortAsIcuSortsThem) {
  auto const number = static_cast<unsigned char>(GetParam());
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
  std::set<std::u16string> texts;
  for (std::u16string const& text : ExemplarTexts(language.tag)) {
    texts.insert(Decomposed(text));
  }
  ExpectSortedAsIcuSortsThem(number, texts, "texts");
}

TEST_P(EveryLanguage, DecomposedCharactersSortAsComposedOnes) {
  auto const number = static_cast<unsigned char>(GetParam());
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  for (unsigned code = 0; code < 0x10000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    std::u16string const composed(1, static_cast<char16_t>(code));
    if (table.GetEntry(composed[0]) == nullptr) continue;
    EXPECT_EQ(CompareTexts(composed, Decomposed(composed), number).sign, 0) << code;
  }
}

TEST_P(EveryLanguage, EveryWayToWriteACharacterSortsAlike) {
  auto const number = static_cast<unsigned char>(GetParam());
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  unsigned checked = 0;
  for (unsigned code = 0; code < 0x10000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    std::u16string const composed(1, static_cast<char16_t>(code));
    if (table.GetEntry(composed[0]) == nullptr || Decomposed(composed) == composed) continue;
    UErrorCode status = U_ZERO_ERROR;
    icu::CanonicalIterator each(Icu(composed), status);
    for (icu::UnicodeString text = each.next(); !text.isBogus(); text = each.next()) {
      EXPECT_EQ(CompareTexts(composed, Text(text), number).sign, 0)
          << testing::PrintToString(Text(text));
      ++checked;
    }
  }
  EXPECT_GT(checked, 2000u);
}

/// The orders of a text as a comparison sees them: it reads no group of spaces and symbols. Two
/// texts compare equal at all levels just when theirs are the same.
std::u16string Compared(std::u16string const& text, unsigned char language) {
  std::u16string result;
  for (WalkedOrder const each : WalkOrders(text, language)) {
    result += static_cast<char16_t>(each.order);
    result += static_cast<char16_t>(IsSignificant(each) ? each.group : 0);
  }
  return result;
}

TEST(Languages, DifferentCharactersAreEqualOnlyWhereARuleSaysSo) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Normalizer2 const& compatible = *icu::Normalizer2::getNFKCInstance(status);
  // The letter or mark of a form; a mark's own form is spread on a space.
  auto const plain = [&](std::u16string const& text) {
    return compatible.normalize(Icu(text), status).trim();
  };
  // Romanian has the letters with a comma below, and takes those with a cedilla for them; Arabic
  // takes the joining forms of a letter for the letter.
  std::set<std::u16string> const romanian = {u"ŞȘ", u"şș", u"ŢȚ", u"ţț"};
  auto const ruled = [&](std::string const& tag, std::u16string const& one,
                         std::u16string const& other) {
    if (tag == "ro") return romanian.count(one + other) != 0;
    return tag == "ar" && plain(one) == plain(other);
  };
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  for (unsigned char number = 0; number < 48; ++number) {
    XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
    std::unordered_map<std::u16string, std::u16string> known;
    for (unsigned code = 0; code < 0x10000; ++code) {
      std::u16string const text(1, static_cast<char16_t>(code));
      CharOrderEntry const* const entry = table.GetEntry(text[0]);
      if (entry == nullptr || entry->order == 13) continue;  // 13 is what no collation reads
      auto const [place, inserted] = known.emplace(Compared(text, number), text);
      if (inserted || Decomposed(place->second) == Decomposed(text)) continue;
      EXPECT_TRUE(ruled(language.tag, place->second, text))
          << language.name << ": " << testing::PrintToString(place->second + text);
    }
  }
}

/// Words of a language's own letters, compared as ICU compares them at its first level.
TEST_P(EveryLanguage, WordsOfOwnLettersSortAsIcuSortsThemAtTheLetterLevel) {
  auto const number = static_cast<unsigned char>(GetParam());
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
  auto const collator = MakeCollator(language.tag);
  collator->setStrength(icu::Collator::PRIMARY);
  auto const set = ExemplarCharacters(language.tag);
  std::vector<std::u16string> const letters(set.begin(), set.end());
  std::mt19937 random(number);
  std::uniform_int_distribution<std::size_t> letter(0, letters.size() - 1), length(1, 6);
  unsigned agreeing = 0;
  constexpr unsigned kPairs = 20000;
  for (unsigned pair = 0; pair < kPairs; ++pair) {
    std::u16string words[2];
    for (auto& word : words) {
      for (std::size_t more = length(random); more != 0; --more) word += letters[letter(random)];
    }
    UErrorCode status = U_ZERO_ERROR;
    int const theirs = collator->compare(Icu(words[0]), Icu(words[1]), status);
    Difference const ours = CompareTexts(words[0], words[1], number);
    agreeing += (ours.level == Level::Letter ? ours.sign : 0) == theirs;
  }
  std::printf("%-24s %6.2f %% of random words agree at the letter level (seed %u)\n", language.name,
              100.0 * agreeing / kPairs, unsigned{number});
  EXPECT_GE(agreeing * 100.0, kPairs * 99.0) << language.name;
}

INSTANTIATE_TEST_SUITE_P(Languages, EveryLanguage, testing::Range(1, 48));

}  // namespace
}  // namespace xo::test
