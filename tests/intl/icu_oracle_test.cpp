// How far single characters of every language's exemplar set sort as ICU sorts them.
#include <gtest/gtest.h>
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

#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

std::unique_ptr<icu::Collator> MakeCollator(char const* tag) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale = icu::Locale::forLanguageTag(tag, status);
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
  collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, status);
  collator->setMaxVariable(UCOL_REORDER_CODE_CURRENCY, status);
  collator->setAttribute(UCOL_STRENGTH, UCOL_QUATERNARY, status);
  collator->setAttribute(UCOL_FRENCH_COLLATION, UCOL_ON, status);
  collator->setAttribute(UCOL_CASE_FIRST, UCOL_LOWER_FIRST, status);
  EXPECT_TRUE(U_SUCCESS(status)) << tag;
  return collator;
}

/// The characters of the main and auxiliary exemplar sets, lower and upper case, in the basic
/// plane.
std::set<std::u16string> ExemplarCharacters(char const* tag) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale = icu::Locale::forLanguageTag(tag, status);
  std::set<std::u16string> result;
  ULocaleData* const data = ulocdata_open(locale.getBaseName(), &status);
  for (auto const kind : {ULOCDATA_ES_STANDARD, ULOCDATA_ES_AUXILIARY}) {
    USet* const set = ulocdata_getExemplarSet(data, nullptr, USET_ADD_CASE_MAPPINGS, kind, &status);
    icu::UnicodeSetIterator each(*icu::UnicodeSet::fromUSet(set));
    while (each.next()) {
      icu::UnicodeString const text = each.getString();
      if (text.length() == 1) result.insert(std::u16string(text.getBuffer(), 1));
    }
    uset_close(set);
  }
  ulocdata_close(data);
  EXPECT_TRUE(U_SUCCESS(status)) << tag;
  return result;
}

class EveryLanguage : public testing::TestWithParam<int> {};

TEST_P(EveryLanguage, ExemplarCharactersSortAsIcuSortsThem) {
  auto const number = static_cast<unsigned char>(GetParam());
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(number);
  auto const collator = MakeCollator(language.tag);
  auto const characters = ExemplarCharacters(language.tag);
  unsigned pairs = 0, agreeing = 0;
  std::string differing;
  for (auto first = characters.begin(); first != characters.end(); ++first) {
    for (auto second = std::next(first); second != characters.end(); ++second) {
      UErrorCode status = U_ZERO_ERROR;
      int const theirs = collator->compare(icu::UnicodeString(first->data(), 1),
                                           icu::UnicodeString(second->data(), 1), status);
      int const ours = CompareTexts(*first, *second, number).sign;
      ++pairs;
      agreeing += ours == theirs;
      if (ours == theirs || std::getenv("XO_LIST_DIFFERENCES") == nullptr) continue;
      std::string one, two;
      icu::UnicodeString(first->data(), 1).toUTF8String(one);
      icu::UnicodeString(second->data(), 1).toUTF8String(two);
      differing += " " + one + (theirs < 0 ? "<" : theirs > 0 ? ">" : "=") + two;
    }
  }
  std::printf("%-24s %4zu characters, %6u pairs, %6.2f %% agree%s\n", language.name,
              characters.size(), pairs, 100.0 * agreeing / pairs, differing.c_str());
  EXPECT_GE(agreeing * 100.0, pairs * 99.0) << language.name;
}

std::u16string Normalized(icu::Normalizer2 const& form, std::u16string const& text) {
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString const result =
      form.normalize(icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())), status);
  return {result.getBuffer(), static_cast<std::size_t>(result.length())};
}

TEST_P(EveryLanguage, DecomposedCharactersSortAsComposedOnes) {
  auto const number = static_cast<unsigned char>(GetParam());
  UErrorCode status = U_ZERO_ERROR;
  icu::Normalizer2 const& decompose = *icu::Normalizer2::getNFDInstance(status);
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(253)->orderTable;
  for (unsigned code = 0; code < 0x10000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    std::u16string const composed(1, static_cast<char16_t>(code));
    if (table.GetEntry(composed[0]) == nullptr) continue;
    EXPECT_EQ(CompareTexts(composed, Normalized(decompose, composed), number).sign, 0) << code;
  }
}

/// Words of a language's own letters, compared as ICU compares them. Accents of several letters are
/// weighed alike, so that all levels take part.
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
    int const theirs = collator->compare(
        icu::UnicodeString(words[0].data(), static_cast<int32_t>(words[0].size())),
        icu::UnicodeString(words[1].data(), static_cast<int32_t>(words[1].size())), status);
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
