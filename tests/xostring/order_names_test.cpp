#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

constexpr unsigned char kGroup = 2, kUntabledGroup = 20;
constexpr int kBadArgument = -2002;

std::string Described(unsigned short order, unsigned char group = kGroup) {
  XoString text(static_cast<unsigned short>('x'));
  EXPECT_EQ(XoConvertOrderToString(order, group, text), 0);
  EXPECT_EQ(text.codeSet, XoLanguageContext::GetDefault8CodeSet());
  EXPECT_EQ(text.language, XoLanguageContext::GetDefaultLanguage());
  return text.StrGet();
}

unsigned char CharacterOf(unsigned short order, unsigned char group = kGroup, int mapAccented = 0,
                          char const** name = nullptr) {
  unsigned char character = 0;
  EXPECT_EQ(XoConvertOrderToChar(order, group, character, mapAccented, name), 0);
  return character;
}

/// The order of a letter: 3 is A. Case 0 is upper case.
constexpr unsigned short Letter(unsigned letter, unsigned accent, unsigned letterCase,
                                unsigned extension = 0) {
  return static_cast<unsigned short>(0x4000 | letterCase << 12 | accent << 7 | letter << 2 |
                                     extension);
}

std::map<unsigned, std::string> const kNames = {
    {112, "_"},
    {114, "macron sign"},
    {115, "soft hyphen"},
    {116, "-"},
    {117, ","},
    {118, ";"},
    {119, ":"},
    {120, "!"},
    {121, "inverted exclamation mark"},
    {122, "?"},
    {124, "solidus"},
    {126, "full stop"},
    {129, "middle dot"},
    {130, "cedilla"},
    {132, "apostrophe"},
    {135, "\""},
    {138, "left pointing o_double angle quotation mark"},
    {139, "right pointing o_double angle quotation mark"},
    {140, "("},
    {142, ")"},
    {144, "["},
    {145, "]"},
    {146, "{"},
    {147, "}"},
    {148, "section sign"},
    {149, "pilcrow sign"},
    {150, "copyright sign"},
    {151, "registered sign"},
    {153, "@"},
    {154, "currency sign"},
    {155, "cent sign"},
    {156, "$"},
    {157, "pound sign"},
    {158, "yen sign"},
    {159, "*"},
    {160, "reverse solidus"},
    {161, "&"},
    {162, "#"},
    {163, "%"},
    {165, "+"},
    {167, "plus minus sign"},
    {168, "'"},
    {169, "`"},
    {171, "^"},
    {174, "diaeresis"},
    {176, "~"},
    {178, "division sign"},
    {179, "multiplication sign"},
    {181, "<"},
    {183, "="},
    {185, ">"},
    {186, "not sign"},
    {187, "|"},
    {188, "broken bar"},
    {189, "degree sign"},
    {190, "micron sign"},
    {219, "inverted question mark"},
};

char const* const kAccents[] = {"",
                                "cedilla",
                                "accent acute",
                                "accent grave",
                                "accent circumflex",
                                "tilde",
                                "diaeresis",
                                "ring above",
                                "stroke",
                                "accent caron",
                                "accent macron",
                                "accent breve",
                                "dot above",
                                "ogonek",
                                "accent o_double acute"};

// Descriptions.

TEST(OrderNames, SpacesButTheUndefinedIndicatorAreSpaces) {
  for (unsigned short order = 0; order < 80; ++order) {
    EXPECT_EQ(Described(order), order == 13 ? "undefined ordering indicator" : "space") << order;
  }
}

TEST(OrderNames, SymbolsAreNamedByTheListAlone) {
  for (unsigned order = 80; order < 16128; ++order) {
    auto const found = kNames.find(order);
    std::string const expected = "symbol " + (found != kNames.end() ? found->second : "");
    ASSERT_EQ(Described(static_cast<unsigned short>(order)), expected) << order;
  }
}

TEST(OrderNames, DigitsShowTheirValueAndTheExpandFlag) {
  EXPECT_EQ(Described(16128), "digit 0");
  EXPECT_EQ(Described(16129), "digit 0 with expand");
  EXPECT_EQ(Described(16138), "digit 1");
  EXPECT_EQ(Described(16139), "digit 1 with expand");
  EXPECT_EQ(Described(16137), "digit 0 with expand");
  EXPECT_EQ(Described(16218), "digit 9");
  EXPECT_EQ(Described(16383), "digit 25 with expand");
}

TEST(OrderNames, LettersShowCaseAccentAndExtension) {
  EXPECT_EQ(Described(Letter(3, 0, 0)), "upper letter A");
  EXPECT_EQ(Described(Letter(28, 0, 0)), "upper letter Z");
  EXPECT_EQ(Described(Letter(3, 0, 3)), "lower letter a");
  EXPECT_EQ(Described(Letter(28, 0, 1)), "lower letter z");
  EXPECT_EQ(Described(Letter(7, 2, 3)), "lower letter e with accent acute");
  EXPECT_EQ(Described(Letter(16, 5, 3, 1)), "lower letter n with tilde with extension");
  EXPECT_EQ(Described(Letter(16, 0, 0, 3)), "upper letter N with extension");
  EXPECT_EQ(Described(Letter(3, 15, 3)), "lower letter a with ");
  EXPECT_EQ(Described(Letter(3, 15, 3, 1)), "lower letter a with  with extension");
}

TEST(OrderNames, EveryLetterOrderIsPutTogetherFromItsFields) {
  for (unsigned order = 16384; order < 32768; ++order) {
    unsigned const extension = order % 4, letter = order / 4 % 32, accent = order / 128 % 32;
    bool const upper = order / 4096 % 4 == 0;
    std::string expected = upper ? "upper letter " : "lower letter ";
    expected += static_cast<char>(letter + (upper ? 62 : 94));
    if (accent != 0) expected += std::string(" with ") + (accent <= 14 ? kAccents[accent] : "");
    if (extension != 0) expected += " with extension";
    ASSERT_EQ(Described(static_cast<unsigned short>(order)), expected) << order;
  }
}

TEST(OrderNames, IdeographsShowTheirCodeAndALineFeed) {
  EXPECT_EQ(Described(0x8000), "HAN character 0x8000\n");
  EXPECT_EQ(Described(0xFFFF), "HAN character 0xffff\n");
  EXPECT_EQ(Described(0x9FA5), "HAN character 0x9fa5\n");
}

TEST(OrderNames, GroupFrom20OnMakesEveryOrderAnIdeograph) {
  for (unsigned short const order :
       std::initializer_list<unsigned short>{0, 13, 100, 122, 16128, 16384, 0x4E2D, 0x8000}) {
    std::string const han = Described(order, kUntabledGroup);
    EXPECT_EQ(han.substr(0, 16), "HAN character 0x") << order;
    EXPECT_EQ(han.size(), 21u);
    EXPECT_EQ(CharacterOf(order, kUntabledGroup), 127);
    EXPECT_EQ(Described(order, 127), han);
    EXPECT_EQ(Described(order, 19), Described(order, 2));
    // Bit 7 of the group does not count.
    EXPECT_EQ(Described(order, 0x80 | 2), Described(order, 2));
    EXPECT_EQ(Described(order, 0x80 | kUntabledGroup), han);
    EXPECT_EQ(CharacterOf(order, 0x80 | 2), CharacterOf(order, 2));
  }
  EXPECT_EQ(Described(13, kUntabledGroup), "HAN character 0x000d\n");
}

// Characters.

TEST(OrderCharacters, SpacesAndIdeographs) {
  for (unsigned short order = 0; order < 80; ++order) EXPECT_EQ(CharacterOf(order), ' ');
  EXPECT_EQ(CharacterOf(0x8000), 127);
  EXPECT_EQ(CharacterOf(0xFFFF), 127);
}

TEST(OrderCharacters, Digits) {
  for (unsigned digit = 0; digit < 10; ++digit) {
    unsigned short const order = static_cast<unsigned short>(16128 + 10 * digit);
    EXPECT_EQ(CharacterOf(order), '0' + digit);
    EXPECT_EQ(CharacterOf(static_cast<unsigned short>(order + 1)), '0' + digit);
  }
}

TEST(OrderCharacters, SymbolsAreThemselvesOrADotOrTheBell) {
  for (unsigned order = 80; order < 16128; ++order) {
    auto const found = kNames.find(order);
    int expected = 7;
    if (found != kNames.end()) {
      std::string const& name = found->second;
      expected = name.size() == 1       ? name[0]
                 : name == "solidus"    ? '/'
                 : name == "apostrophe" ? '\''
                                        : '.';
    }
    ASSERT_EQ(CharacterOf(static_cast<unsigned short>(order)), expected) << order;
  }
  EXPECT_EQ(CharacterOf(160), '.');
  EXPECT_EQ(CharacterOf(126), '.');
  EXPECT_EQ(CharacterOf(124), '/');
  EXPECT_EQ(CharacterOf(168), '\'');
  EXPECT_EQ(CharacterOf(135), '"');
  EXPECT_EQ(CharacterOf(200), 7);
}

TEST(OrderCharacters, LettersWithoutMappingLoseTheirAccent) {
  for (unsigned order = 16384; order < 32768; ++order) {
    bool const upper = order / 4096 % 4 == 0;
    char const* name = "untouched";
    ASSERT_EQ(CharacterOf(static_cast<unsigned short>(order), kGroup, 0, &name),
              order / 4 % 32 + (upper ? 62 : 94))
        << order;
    ASSERT_STREQ(name, "untouched");
  }
}

TEST(OrderCharacters, WithoutAccentKeepTheName) {
  char const* name = "untouched";
  EXPECT_EQ(CharacterOf(Letter(3, 0, 3), kGroup, 1, &name), 'a');
  EXPECT_STREQ(name, "untouched");
  EXPECT_EQ(CharacterOf(120, kGroup, 1, &name), '!');
  EXPECT_STREQ(name, "untouched");
}

TEST(OrderCharacters, AccentedLetterThatLatin1LacksHasAnEmptyName) {
  char const* name = "untouched";
  // E with ogonek.
  EXPECT_EQ(CharacterOf(Letter(7, 13, 3), kGroup, 1, &name), 'e');
  EXPECT_STREQ(name, "");
  EXPECT_EQ(CharacterOf(Letter(7, 13, 3), kGroup, 1, nullptr), 'e');
}

/// The way to write a letter of Latin-1 in ASCII, from the letter's own parts.
std::string NameOf(unsigned code) {
  bool const lower = code >= 224;
  unsigned const upper = lower ? code - 32 : code;
  if (code == 255) return "\\\"y";
  if (code == 223) return "\\ss";
  std::string const bases = "AAAAAAACEEEEIIIIDNOOOOO OUUUUYTs";
  std::string const signs = "`'^~\"  ,`'^\"`'^\"-~`'^~\" -`'^\"'  ";
  std::string name = "\\";
  if (upper == 197) {
    name += "AA";
  } else if (upper == 198) {
    name += "AE";
  } else if (upper == 222) {
    name += "TH";
  } else {
    name += signs[upper - 192];
    name += bases[upper - 192];
  }
  if (lower) {
    for (char& each : name) each = each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each;
  }
  return name;
}

/// Character, order, and back, over all of ISO 8859-1.
TEST(OrderCharacters, LettersOfLatin1ComeBackWithTheirNames) {
  unsigned named = 0;
  for (unsigned code = 128; code < 256; ++code) {
    unsigned short const order = XoChar(static_cast<char>(code), 1, 1).CharOrder();
    if (order < 16384 || order >= 32768 || order / 128 % 32 == 0) continue;
    // Where several codes have one order the first one is found.
    unsigned first = 128;
    while (XoChar(static_cast<char>(first), 1, 1).CharOrder() != order) ++first;
    char const* name = nullptr;
    EXPECT_EQ(CharacterOf(order, kGroup, 1, &name), first) << code;
    ASSERT_NE(name, nullptr) << code;
    EXPECT_EQ(std::string(name), first >= 192 ? NameOf(first) : "") << code;
    EXPECT_EQ(CharacterOf(order, kGroup, 1), first);
    EXPECT_LT(CharacterOf(order, kGroup, 0), 128);
    ++named;
  }
  // All of the letters from 192 on but a few that have a place of their own in the alphabet.
  EXPECT_GE(named, 50u);
  char const* name = nullptr;
  EXPECT_EQ(CharacterOf(XoChar('\xE9', 1, 1).CharOrder(), kGroup, 1, &name), 0xE9);
  EXPECT_STREQ(name, "\\'e");
}

TEST(OrderCharacters, AsciiComesBackAsItself) {
  for (char code = 33; code < 127; ++code) {
    unsigned short const order = XoChar(code, 1, 1).CharOrder();
    char const expected = code == '.' || code == '\\' ? '.' : code;
    EXPECT_EQ(CharacterOf(order), expected) << code;
  }
}

TEST(OrderNames, OfAllOfLatin1) {
  for (unsigned code = 32; code < 256; ++code) {
    XoChar const character(static_cast<char>(code), 1, 1);
    std::string const text = Described(character.CharOrder());
    std::string const kind = character.IsSpace() != 0    ? "space"
                             : character.IsSymbol() != 0 ? "symbol "
                             : character.IsDigit() != 0  ? "digit "
                                                         : " letter ";
    // Controls have no order of their own.
    if (code >= 127 && code < 160) continue;
    EXPECT_NE(text.find(kind), std::string::npos) << code << ' ' << text;
  }
  auto const of = [](int code) {
    return Described(XoChar(static_cast<char>(code), 1, 1).CharOrder());
  };
  EXPECT_EQ(of('A'), "upper letter A");
  EXPECT_EQ(of('z'), "lower letter z");
  EXPECT_EQ(of('7'), "digit 7");
  EXPECT_EQ(of(' '), "space");
  EXPECT_EQ(of(0x7F), "undefined ordering indicator");
  EXPECT_EQ(of(0xE9), "lower letter e with accent acute");
  EXPECT_EQ(of(0xC0), "upper letter A with accent grave");
  EXPECT_EQ(of(0xE7), "lower letter c with cedilla");
  EXPECT_EQ(of(0xD4), "upper letter O with accent circumflex");
  EXPECT_EQ(of(0xF1), "lower letter n with tilde");
  EXPECT_EQ(of(0xFC), "lower letter u with diaeresis");
  EXPECT_EQ(of(0xE5), "lower letter a with ring above");
  EXPECT_EQ(of(0xF8), "lower letter o with stroke");
  EXPECT_EQ(of(0xA1), "symbol inverted exclamation mark");
  EXPECT_EQ(of(0xA7), "symbol section sign");
  EXPECT_EQ(of(0xAB), "symbol left pointing o_double angle quotation mark");
  EXPECT_EQ(of(0xBB), "symbol right pointing o_double angle quotation mark");
  EXPECT_EQ(of(0xBF), "symbol inverted question mark");
  EXPECT_EQ(of(0xD7), "symbol multiplication sign");
  EXPECT_EQ(of(0xF7), "symbol division sign");
  EXPECT_EQ(of('.'), "symbol full stop");
  EXPECT_EQ(of('/'), "symbol solidus");
  EXPECT_EQ(of('\\'), "symbol reverse solidus");
  EXPECT_EQ(of('\''), "symbol apostrophe");
}

// Fields.

TEST(OrderFields, DigitAndExpandFlag) {
  for (unsigned order = 0; order < 65536; ++order) {
    unsigned short digit = 777, expand = 777;
    int const result = XoExtractDigitFromOrder(static_cast<unsigned short>(order), digit, expand);
    if (order < 16128 || order > 16383) {
      ASSERT_EQ(result, kBadArgument) << order;
      continue;
    }
    ASSERT_EQ(result, 0) << order;
    ASSERT_EQ(digit, (order - order % 2 - 16128) / 10) << order;
    ASSERT_EQ(expand, order % 2) << order;
  }
}

TEST(OrderFields, SymbolNumber) {
  for (unsigned order = 0; order < 65536; ++order) {
    unsigned short symbol = 777;
    int const result = XoExtractSymbolFromOrder(static_cast<unsigned short>(order), symbol);
    if (order < 80 || order > 16127) {
      ASSERT_EQ(result, kBadArgument) << order;
      continue;
    }
    ASSERT_EQ(result, 0) << order;
    ASSERT_EQ(symbol, order - 80) << order;
  }
}

}  // namespace
}  // namespace xo::test
