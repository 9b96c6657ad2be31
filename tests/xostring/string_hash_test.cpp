#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/intl/order_walk.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kCyrillic = 5, kEbcdic = 32, kUnicode = 253, kOrders = 254;
constexpr unsigned char kNeutral = 0, kRussian = 38;
constexpr std::uint32_t kNullHash = 0xFEFE7575;

class StringHashLaw : public RandomTest {};

/// A text in a code set, from units that need no conversion.
XoString TextOf(std::vector<unsigned short> units, unsigned char codeSet) {
  units.push_back(0);
  XoString text;
  text = units.data();
  text.codeSet = codeSet;
  return text;
}

// Hashes of units.

TEST(HashOfUnits, OfALatinText) {
  EXPECT_EQ(HashXoString(XoString("")), 0u);
  EXPECT_EQ(HashXoString(XoString("a")), 97u);
  EXPECT_EQ(HashXoString(XoString("ab")), 97u * 9 + 98);
  EXPECT_EQ(HashXoString(XoString("abc")), (97u * 9 + 98) * 9 + 99);
  EXPECT_EQ(HashXoString7(XoString("abc")), (97u * 9 + 98) * 9 + 99);
}

TEST(HashOfUnits, WithoutTextIsZero) {
  EXPECT_EQ(HashXoString(XoString(kUnicode, kNeutral)), 0u);
  EXPECT_EQ(HashXoString7(XoString(kLatin1, kNeutral)), 0u);
  XoString null;
  null.SetNullValue();
  EXPECT_EQ(HashXoString(null), 0u);
}

TEST(HashOfUnits, TakesBytesWithTheirSign) {
  EXPECT_EQ(HashXoString(XoString("\xFF")), 0xFFFFFFFFu);
  EXPECT_EQ(HashXoString(XoString("\x80")), 0xFFFFFF80u);
  EXPECT_EQ(HashXoString(XoString("a\xE9")), 97u * 9 - 23);
  EXPECT_EQ(HashXoString7(XoString("a\xE9")), 97u * 9 + 0x69);
}

TEST(HashOfUnits, TakesUnicodeUnitsWithoutSign) {
  EXPECT_EQ(HashXoString(TextOf({0xFFFF}, kUnicode)), 0xFFFFu);
  EXPECT_EQ(HashXoString(TextOf({0x416, 0x20AC}, kUnicode)), 0x416u * 9 + 0x20AC);
  EXPECT_EQ(HashXoString7(TextOf({0x416, 0x20AC}, kUnicode)), 0x16u * 9 + 0x2C);
}

TEST(HashOfUnits, OfOtherWideSetsRunsOverBytes) {
  for (unsigned char const set : std::initializer_list<unsigned char>{225, 228, 240, 252, 254}) {
    // The high byte of a Latin letter is 0.
    EXPECT_EQ(HashXoString(TextOf({'a', 'b'}, set)), 97u) << int{set};
    EXPECT_EQ(HashXoString7(TextOf({'a', 'b'}, set)), 97u) << int{set};
    EXPECT_EQ(HashXoString(TextOf({0xB0A1}, set)), (0xFFFFFFA1u * 9 + 0xFFFFFFB0u)) << int{set};
    EXPECT_EQ(HashXoString7(TextOf({0xB0A1}, set)), 0x21u * 9 + 0x30) << int{set};
  }
}

TEST(HashOfUnits, IsTakenModuloTwoTo32) {
  std::string const text(1000, 'z');
  std::uint32_t hash = 0;
  for (char const each : text) hash = hash * 9 + static_cast<unsigned char>(each);
  EXPECT_EQ(HashXoString(XoString(text.c_str())), hash);
}

// Hash of orders.

TEST(HashOfOrders, OfANullValue) {
  EXPECT_EQ(HashString(kLatin1, 254, "a", -1, 1), kNullHash);
  EXPECT_EQ(HashString(0, 254, nullptr, 0, 1), kNullHash);
  EXPECT_EQ(HashString(kOrders, 0, nullptr, -1, 1), kNullHash);
  EXPECT_EQ(HashString(kOrders, 0, "ab\0", 0, 1), kNullHash);
  EXPECT_NE(HashString(kOrders, 1, "ab\0", -1, 1), kNullHash);
}

TEST(HashOfOrders, OfAnEmptyTextIsZero) {
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 32, 100, 253, 254}) {
    EXPECT_EQ(HashString(set, 1, "\0", -1, 1), 0u) << int{set};
    EXPECT_EQ(HashString(set, 1, nullptr, -1, 1), 0u) << int{set};
  }
  EXPECT_EQ(HashString(kLatin1, 1, "", 100, 1), 0u);
}

TEST(HashOfOrders, OfNoCountIsZero) {
  for (short const count : std::initializer_list<short>{0, -2, -3, -32768}) {
    EXPECT_EQ(HashString(kLatin1, kNeutral, "abc", count, 1), 0u) << count;
    EXPECT_EQ(HashString(0, kNeutral, "abc", count, 1), 0u) << count;
  }
}

/// The key of a Latin letter, digit or symbol.
std::uint32_t KeyOf(unsigned order, unsigned group) {
  if (order == 0) return 0;
  if (order >= 16384 && order <= 32767 && group != 20) {
    return group << 24 | (order & 0x407F) << 8 | ((order >> 7) & 0x7F);
  }
  return group << 24 | order << 8;
}

std::uint32_t KeyOf(char character) { return KeyOf(XoChar(character, kLatin1).CharOrder(), 2); }

TEST(HashOfOrders, RunsOverKeys) {
  EXPECT_EQ(HashString(kLatin1, kNeutral, "a", -1, 1), KeyOf('a'));
  EXPECT_EQ(HashString(kLatin1, kNeutral, "a-1", -1, 1),
            (KeyOf('a') * 9 + KeyOf('-')) * 9 + KeyOf('1'));
  EXPECT_EQ(HashString(kLatin1, kNeutral, "abc", 2, 1), KeyOf('a') * 9 + KeyOf('b'));
}

TEST(HashOfOrders, CountsTheEndAsZeros) {
  EXPECT_EQ(HashString(kLatin1, kNeutral, "ab", 2, 1), KeyOf('a') * 9 + KeyOf('b'));
  EXPECT_EQ(HashString(kLatin1, kNeutral, "ab", 4, 1), (KeyOf('a') * 9 + KeyOf('b')) * 81);
  EXPECT_EQ(HashString(kLatin1, kNeutral, "", 32767, 1), 0u);
}

TEST(HashOfOrders, DistinguishesCaseAndAccent) {
  EXPECT_NE(HashString(kLatin1, kNeutral, "Abc", -1, 1),
            HashString(kLatin1, kNeutral, "abc", -1, 1));
  EXPECT_NE(HashString(kLatin1, kNeutral, "\xE9", -1, 1),
            HashString(kLatin1, kNeutral, "e", -1, 1));
}

TEST(HashOfOrders, OfUntabledCharactersIsTheirCodeInTheirGroup) {
  char const text[] = {0x2D, 0x4E, 0, 0};
  EXPECT_EQ(HashString(kUnicode, kNeutral, text, -1, 1), 20u << 24 | 0x4E2Du << 8);
}

TEST(HashOfOrders, IsTheSameInEveryCodeSet) {
  // "Жук" in ISO 8859-5, KOI8-R, windows-1251 and Unicode of both byte orders.
  std::uint32_t const hash = HashString(kCyrillic, kRussian, "\xB6\xE3\xDA", -1, 1);
  EXPECT_EQ(HashString(22, kRussian, "\xF6\xD5\xCB", -1, 1), hash);
  EXPECT_EQ(HashString(14, kRussian, "\xC6\xF3\xEA", -1, 1), hash);
  EXPECT_EQ(HashString(kUnicode, kRussian, "\x16\x04\x43\x04\x3A\x04\0", -1, 1), hash);
  EXPECT_EQ(HashString(kUnicode, kRussian, "\x04\x16\x04\x43\x04\x3A\0", -1, 2), hash);
  // "Abc" in EBCDIC.
  EXPECT_EQ(HashString(kEbcdic, kNeutral, "\xC1\x82\x83", -1, 1),
            HashString(kLatin1, kNeutral, "Abc", -1, 1));
}

TEST(HashOfOrders, OfAStreamTakesItsOrders) {
  // Of 'A' and 'b', low byte first; the language byte holds the group 4, and bit 7 does not count.
  unsigned const first = XoChar('A', kLatin1).CharOrder(),
                 second = XoChar('b', kLatin1).CharOrder();
  char const low[] = {static_cast<char>(first & 255),
                      static_cast<char>(first >> 8),
                      static_cast<char>(second & 255),
                      static_cast<char>(second >> 8),
                      0,
                      0};
  char const high[] = {static_cast<char>(first >> 8),
                       static_cast<char>(first & 255),
                       static_cast<char>(second >> 8),
                       static_cast<char>(second & 255),
                       0,
                       0};
  std::uint32_t const expected = KeyOf(first, 4) * 9 + KeyOf(second, 4);
  EXPECT_EQ(HashString(kOrders, 4, low, -1, 1), expected);
  EXPECT_EQ(HashString(kOrders, 4, low, -1, 8), expected);
  EXPECT_EQ(HashString(kOrders, 4, low, -1, 255), expected);
  EXPECT_EQ(HashString(kOrders, 4, high, -1, 2), expected);
  EXPECT_EQ(HashString(kOrders, 0x84, low, -1, 1), expected);
}

TEST(HashOfOrders, WithoutCodeSetRunsOverUnsignedBytes) {
  EXPECT_EQ(HashString(0, kNeutral, "ab", -1, 1), 97u * 9 + 98);
  EXPECT_EQ(HashString(0, kNeutral, "a\xE9", -1, 1), 97u * 9 + 0xE9);
  EXPECT_EQ(HashString(0, kNeutral, "abc", 2, 1), 97u * 9 + 98);
  EXPECT_EQ(HashString(0, kNeutral, "abc", 3, 1), (97u * 9 + 98) * 9 + 99);
}

TEST(HashOfOrders, TakesDefaultsFor255) {
  EXPECT_EQ(HashString(255, 255, "abc", -1, 255), HashString(kLatin1, kNeutral, "abc", -1, 1));
}

TEST(HashOfOrders, OfCompositesEqualsThatOfTheirParts) {
  unsigned short const composed[] = {0xE9, 'x', 0}, decomposed[] = {'e', 0x301, 'x', 0};
  auto const hash = [](unsigned short const* text) {
    return HashString(kUnicode, kNeutral, reinterpret_cast<char const*>(text), -1, 1);
  };
  EXPECT_EQ(hash(composed), hash(decomposed));
}

TEST_F(StringHashLaw, TextsEqualUnderTheComparisonHashAlike) {
  // Few characters, so that equal texts come up often: letters with and without accent, a mark, a
  // ligature.
  unsigned short const alphabet[] = {'a',  'e',  0xE9, 0xE8, 0x301, 0x300,
                                     0xE6, 0xDF, 's',  '-',  0x200D};
  unsigned equal = 0;
  for (int run = 0; run < 20000; ++run) {
    std::vector<unsigned short> texts[2];
    for (auto& text : texts) {
      for (unsigned left = Below(4); left != 0; --left) text.push_back(alphabet[Below(11)]);
      text.push_back(0);
    }
    auto const bytes = [&texts](int side) {
      return reinterpret_cast<char const*>(texts[side].data());
    };
    unsigned char const language = static_cast<unsigned char>(Below(48));
    if (XoStrCmp(kUnicode, language, bytes(0), kUnicode, language, bytes(1), 0x0010) != 0) continue;
    ++equal;
    ASSERT_EQ(HashString(kUnicode, language, bytes(0), -1, 1),
              HashString(kUnicode, language, bytes(1), -1, 1));
  }
  EXPECT_GT(equal, 100u);
}

TEST_F(StringHashLaw, OrdersHashAsASlowWalkSays) {
  std::u16string const alphabet = u"aA\u00E1 -1cChHdzsZe\u0301\u00DF\u00E6\u00BD\u0416\u4E2D\uFFF5";
  for (int run = 0; run < 40000; ++run) {
    std::u16string text;
    for (unsigned left = Below(8); left != 0; --left) {
      text += alphabet[Below(static_cast<unsigned>(alphabet.size()))];
    }
    unsigned char const language = static_cast<unsigned char>(Below(48));
    short const count = OneIn(2) ? short{-1} : static_cast<short>(1 + Below(12));
    std::vector<WalkedOrder> orders = WalkOrders(text, language);
    if (count != -1) {
      // Behind the end are orders of 0, whatever the group.
      orders.resize(static_cast<std::size_t>(count), WalkedOrder{0, kNeutral});
    }
    std::uint32_t expected = 0;
    for (WalkedOrder const each : orders) expected = expected * 9 + KeyOf(each.order, each.group);
    ASSERT_EQ(HashString(kUnicode, language, reinterpret_cast<char const*>(text.c_str()), count, 1),
              expected)
        << int{language} << ' ' << count << ' '
        << testing::PrintToString(std::vector<unsigned short>(text.begin(), text.end()));
  }
}

TEST_F(StringHashLaw, UnitsHashAsTheSumOfPowersSays) {
  for (int run = 0; run < 2000; ++run) {
    std::vector<unsigned short> units;
    for (unsigned left = Below(300); left != 0; --left) {
      units.push_back(static_cast<unsigned short>(1 + Below(65535)));
    }
    std::uint64_t whole = 0, low = 0, power = 1;
    for (std::size_t place = units.size(); place-- != 0; power *= 9) {
      whole += units[place] * power;
      low += (units[place] % 128) * power;
    }
    XoString const text = TextOf(units, kUnicode);
    ASSERT_EQ(HashXoString(text), static_cast<std::uint32_t>(whole));
    ASSERT_EQ(HashXoString7(text), static_cast<std::uint32_t>(low));
  }
}

}  // namespace
}  // namespace xo::test
