// Answers questions about the tables, for the tests that are written in Python. Each line of the
// standard input is a question, each answer a line:
//   compare LANGUAGE CODE... | CODE...   sign and level of a comparison in Unicode
//   decode SET                           the Unicode of all codes
//   encode SET                           the codes of all of Unicode, 0 where there is none
//   fingerprint                          version and fingerprint
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

void Compare(std::istringstream& words) {
  unsigned language = 0;
  words >> std::dec >> language;
  std::u16string texts[2];
  unsigned side = 0;
  for (std::string word; words >> word;) {
    if (word == "|") {
      side = 1;
    } else {
      texts[side] += static_cast<char16_t>(std::stoul(word, nullptr, 16));
    }
  }
  Difference const difference =
      CompareTexts(texts[0], texts[1], static_cast<unsigned char>(language));
  std::printf("%d %d\n", difference.sign, static_cast<int>(difference.level));
}

void List(std::istringstream& words, bool decode) {
  unsigned number = 0;
  words >> std::dec >> number;
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(number));
  unsigned const end = decode && number < 225 ? 0x100 : 0x10000;
  for (unsigned each = 0; each < end; ++each) {
    auto const code = static_cast<unsigned short>(each);
    unsigned result = 0;
    if (decode) {
      result = set.ToUnicode(code);
    } else if (set.HasCharacter(code) != 0) {
      result = set.MapCharacter(code, 253);
    }
    std::printf("%s%x", each == 0 ? "" : " ", result);
  }
  std::printf("\n");
}

void Answer(std::string const& line) {
  std::istringstream words(line);
  std::string question;
  words >> question;
  if (question == "compare") {
    Compare(words);
  } else if (question == "decode" || question == "encode") {
    List(words, question == "decode");
  } else if (question == "fingerprint") {
    std::printf("%u %016llx\n", XoLanguageContext::GetCollationVersion(),
                XoLanguageContext::GetCollationFingerprint());
  } else {
    std::printf("?\n");
  }
}

}  // namespace
}  // namespace xo::test

int main() {
  for (std::string line; std::getline(std::cin, line);) xo::test::Answer(line);
}
