// How far whole words of dictionaries sort as ICU sorts them, at the letter level.
#include <gtest/gtest.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

struct WordList {
  char const* file;
  unsigned char language;
};

class WordLists : public RandomTest, public testing::WithParamInterface<WordList> {
 protected:
  /// The line at a random place.
  std::string Word(std::ifstream& list, std::streamoff size) {
    std::string word;
    do {
      list.clear();
      list.seekg(static_cast<std::streamoff>(Bits() % static_cast<std::uint64_t>(size)));
      std::getline(list, word);
    } while (!std::getline(list, word) || word.empty());
    return word;
  }
};

/// Lists are in UTF-8 but for some, which are in ISO 8859-1.
icu::UnicodeString Decoded(std::string const& word) {
  icu::UnicodeString const text = icu::UnicodeString::fromUTF8(word);
  if (text.indexOf(u'\uFFFD') < 0) return text;
  return icu::UnicodeString(word.data(), static_cast<int32_t>(word.size()), "ISO-8859-1");
}

TEST_P(WordLists, SortAsIcuSortsThemAtTheLetterLevel) {
  std::ifstream list(std::string("/usr/share/dict/") + GetParam().file, std::ios::binary);
  if (!list) GTEST_SKIP() << GetParam().file << " is not installed";
  list.seekg(0, std::ios::end);
  std::streamoff const size = list.tellg();
  unsigned char const language = GetParam().language;
  XoLanguage const& record = *XoLanguageContext::QueryLanguage(language);
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> const collator(
      icu::Collator::createInstance(icu::Locale::forLanguageTag(record.tag, status), status));
  collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, status);
  collator->setMaxVariable(UCOL_REORDER_CODE_CURRENCY, status);
  collator->setStrength(icu::Collator::PRIMARY);
  ASSERT_TRUE(U_SUCCESS(status));

  constexpr unsigned short kLetters =
      kCmpNoWildcards | kCmpIgnoreCase | kCmpIgnoreAccents | kCmpSkipSpaces | kCmpSkipSymbols;
  constexpr unsigned kPairs = 20000;
  unsigned agreeing = 0;
  for (unsigned pair = 0; pair < kPairs; ++pair) {
    std::string const words[2] = {Word(list, size), Word(list, size)};
    icu::UnicodeString const theirs1 = Decoded(words[0]), theirs2 = Decoded(words[1]);
    auto const bytes = [](icu::UnicodeString const& text) {
      return TextBytes({text.getBuffer(), static_cast<std::size_t>(text.length())}, kUnicode);
    };
    int const ours = Sign(XoStrCmp(kUnicode, language, bytes(theirs1).data(), kUnicode, language,
                                   bytes(theirs2).data(), kLetters));
    bool const agrees = ours == collator->compare(theirs1, theirs2, status);
    agreeing += agrees;
    if (!agrees && std::getenv("XO_LIST_DIFFERENCES") != nullptr) {
      std::printf("  %s %c %s\n", words[0].c_str(),
                  ours < 0   ? '<'
                  : ours > 0 ? '>'
                             : '=',
                  words[1].c_str());
    }
  }
  std::printf("%-18s %-12s %6.2f %% of %u pairs agree\n", GetParam().file, record.name,
              100.0 * agreeing / kPairs, kPairs);
  EXPECT_GE(agreeing * 1000.0, kPairs * 995.0);
}

INSTANTIATE_TEST_SUITE_P(Languages, WordLists,
                         testing::Values(WordList{"american-english", 1}, WordList{"ngerman", 2},
                                         WordList{"french", 6}, WordList{"spanish", 7},
                                         WordList{"portuguese", 10}, WordList{"italian", 11},
                                         WordList{"dutch", 12}, WordList{"swedish", 13},
                                         WordList{"danish", 14}, WordList{"polish", 21}));

}  // namespace
}  // namespace xo::test
