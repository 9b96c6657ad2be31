#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/option_word.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
constexpr long long kMost64 = std::numeric_limits<long long>::max(),
                    kLeast64 = std::numeric_limits<long long>::min();

XoString WideOf(std::string_view text) { return Wide(std::u16string(text.begin(), text.end())); }

int Int(std::string_view text) { return static_cast<int>(Narrow(text)); }
int WideInt(std::string_view text) { return static_cast<int>(WideOf(text)); }
long long Long(std::string_view text) { return static_cast<long long>(Narrow(text)); }
double Double(std::string_view text) { return static_cast<double>(Narrow(text)); }

/// Puts the option word back behind each test.
class StringNumber : public RandomTest {
 protected:
  void TearDown() override { ___XoTypeMgrOptions() = options; }
  int const options = ___XoTypeMgrOptions();
};

TEST_F(StringNumber, OfNoTextIsZero) {
  XoString const string;
  EXPECT_EQ(static_cast<short>(string), 0);
  EXPECT_EQ(static_cast<int>(string), 0);
  EXPECT_EQ(static_cast<long>(string), 0);
  EXPECT_EQ(static_cast<long long>(string), 0);
  EXPECT_EQ(static_cast<double>(string), 0);
  XoString const wide(kUnicode, 0);
  EXPECT_EQ(static_cast<int>(wide), 0);
  EXPECT_EQ(static_cast<double>(wide), 0);
  EXPECT_EQ(Int(""), 0);
  EXPECT_EQ(Int("abc"), 0);
  EXPECT_EQ(WideInt(""), 0);
}

TEST_F(StringNumber, TakesTheBaseFromThePrefix) {
  for (auto const read : {Int, WideInt}) {
    EXPECT_EQ(read("0x10"), 16);
    EXPECT_EQ(read("-0X1f"), -31);
    EXPECT_EQ(read("010"), 8);
    EXPECT_EQ(read("-12"), -12);
    EXPECT_EQ(read("+12 apples"), 12);
    EXPECT_EQ(read(" \t\r\n\v\f12"), 12);
    EXPECT_EQ(read("08"), 0);
    EXPECT_EQ(read("0x"), 0);
    EXPECT_EQ(read("--1"), 0);
  }
  EXPECT_EQ(Long("0x7fffffffffffffff"), kMost64);
}

TEST_F(StringNumber, IsDecimalWithTheOptionAndOfNarrowText) {
  ___XoTypeMgrOptions() = 1;
  EXPECT_EQ(Int("0x10"), 0);
  EXPECT_EQ(Int("010"), 10);
  EXPECT_EQ(Int(" -12"), -12);
  EXPECT_EQ(Long("0x10"), 0);
  EXPECT_EQ(Long("010"), 10);
  EXPECT_EQ(static_cast<short>(Narrow("0x10")), 0);
  EXPECT_EQ(static_cast<short>(Narrow("010")), 10);
  EXPECT_EQ(WideInt("0x10"), 16);
  EXPECT_EQ(static_cast<long long>(WideOf("010")), 8);
  EXPECT_EQ(static_cast<short>(WideOf("010")), 8);
}

TEST_F(StringNumber, OfTheOptionWordOnlyTheLowestBitCounts) {
  ___XoTypeMgrOptions() = ~1;
  EXPECT_EQ(Int("0x10"), 16);
  ___XoTypeMgrOptions() = -1;
  EXPECT_EQ(Int("0x10"), 0);
}

TEST_F(StringNumber, StopsAtTheLimitsOfItsType) {
  for (int const option : {0, 1}) {
    ___XoTypeMgrOptions() = option;
    EXPECT_EQ(Int("2147483647"), kMost);
    EXPECT_EQ(Int("2147483648"), kMost);
    EXPECT_EQ(Int("-2147483648"), kLeast);
    EXPECT_EQ(Int("-2147483649"), kLeast);
    EXPECT_EQ(Int("99999999999999999999999"), kMost);
    EXPECT_EQ(Long("9223372036854775807"), kMost64);
    EXPECT_EQ(Long("9223372036854775808"), kMost64);
    EXPECT_EQ(Long("-9223372036854775808"), kLeast64);
    EXPECT_EQ(Long("-99999999999999999999"), kLeast64);
  }
  EXPECT_EQ(WideInt("-99999999999"), kLeast);
}

TEST_F(StringNumber, AShortIsTheLowBitsOfAnInt) {
  EXPECT_EQ(static_cast<short>(Narrow("65537")), 1);
  EXPECT_EQ(static_cast<short>(Narrow("70000")), 4464);
  EXPECT_EQ(static_cast<short>(Narrow("-32769")), 32767);
  EXPECT_EQ(static_cast<short>(WideOf("65535")), -1);
  // The greatest int ends in sixteen ones.
  EXPECT_EQ(static_cast<short>(Narrow("99999999999")), -1);
}

TEST_F(StringNumber, ALongIsThatOfThePlatform) {
  EXPECT_EQ(static_cast<long>(Narrow("-123456")), -123456L);
  EXPECT_EQ(static_cast<long>(Narrow("99999999999999999999")), std::numeric_limits<long>::max());
}

TEST_F(StringNumber, WideWhiteSpaceIsSkipped) {
  EXPECT_EQ(static_cast<int>(Wide(u"\u3000\u2003\u00A0\u2028 12")), 12);
  // In any number: it does not count among the characters that are taken.
  EXPECT_EQ(static_cast<int>(Wide(std::u16string(100, u'\u3000') + u"12")), 12);
  EXPECT_EQ(static_cast<int>(Wide(std::u16string(100, u' '))), 0);
}

TEST_F(StringNumber, WideWhiteSpaceIsThatOfUnicode) {
  // The property White_Space of the character database; all of it has 16 bits.
  auto const isSpace = [](unsigned code) {
    return (code >= 9 && code <= 13) || code == 0x20 || code == 0x85 || code == 0xA0 ||
           code == 0x1680 || (code >= 0x2000 && code <= 0x200A) || code == 0x2028 ||
           code == 0x2029 || code == 0x202F || code == 0x205F || code == 0x3000;
  };
  for (unsigned code = 1; code < 65536; ++code) {
    char16_t const first = static_cast<char16_t>(code);
    if (first == u'+' || first == u'-' || (first >= u'0' && first <= u'9')) continue;
    XoString const text = Wide(std::u16string(1, first) + u"12");
    ASSERT_EQ(static_cast<int>(text), isSpace(code) ? 12 : 0) << code;
    ASSERT_EQ(static_cast<long long>(text), isSpace(code) ? 12 : 0) << code;
  }
}

TEST_F(StringNumber, WideTextEndsAtTheFirstCodeAbove255) {
  EXPECT_EQ(static_cast<int>(Wide(u"12\u066034")), 12);
  // The low byte of this one is the digit 2.
  EXPECT_EQ(static_cast<int>(Wide(u"12\u013234")), 12);
  EXPECT_EQ(static_cast<int>(Wide(u"\uFF11")), 0);
}

TEST_F(StringNumber, OfWideTextThirtyCharactersCount) {
  // Octal: the thirtieth character is read, the next is not.
  EXPECT_EQ(WideInt(std::string(29, '0') + "11"), 1);
  EXPECT_EQ(WideInt(std::string(28, '0') + "11"), 9);
  EXPECT_EQ(WideInt(std::string(30, '0') + "1"), 0);
}

TEST_F(StringNumber, ZerosThatPadAWideHexadecimalMarkCollapse) {
  EXPECT_EQ(WideInt("00x1F"), 31);
  EXPECT_EQ(WideInt(std::string(40, '0') + "x1F"), 31);
  EXPECT_EQ(WideInt("-" + std::string(40, '0') + "X1F"), -31);
  EXPECT_EQ(static_cast<long long>(WideOf("000x7fffffffffffffff")), kMost64);
  // Not in narrow text.
  EXPECT_EQ(Int("00x1F"), 0);
}

TEST_F(StringNumber, ZerosBehindOtherDigitsStay) {
  EXPECT_EQ(WideInt("1000x5"), 1000);
  EXPECT_EQ(WideInt("0100"), 64);
  EXPECT_EQ(WideInt("00100"), 64);
}

TEST_F(StringNumber, ADoubleIsReadWhole) {
  EXPECT_EQ(Double("1.5e3x"), 1500);
  EXPECT_EQ(Double(" -0.25"), -0.25);
  EXPECT_EQ(Double("abc"), 0);
  EXPECT_EQ(Double(""), 0);
  EXPECT_EQ(Double("infinity"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(Double("-INFINITY"), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(Double("nan")));
  EXPECT_EQ(static_cast<double>(WideOf("1.5e3x")), 1500);
  EXPECT_EQ(static_cast<double>(WideOf("-Infinity")), -std::numeric_limits<double>::infinity());
  // A double is not bounded to thirty characters.
  EXPECT_EQ(static_cast<double>(WideOf("0." + std::string(60, '0') + "1e61")), 1);
}

TEST_F(StringNumber, DoublesComeBack) {
  for (int round = 0; round < 2000; ++round) {
    std::uint64_t const bits = Bits();
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    if (std::isnan(number)) continue;
    XoString const text(number);
    ASSERT_EQ(static_cast<double>(text), number) << TextOf(text);
    ASSERT_EQ(static_cast<double>(WideOf(TextOf(text))), number);
  }
}

TEST_F(StringNumber, IntegersComeBack) {
  for (int round = 0; round < 2000; ++round) {
    long long const number = static_cast<long long>(Bits()) >> Below(64);
    XoString const text(number);
    ASSERT_EQ(static_cast<long long>(text), number);
    ASSERT_EQ(static_cast<long long>(WideOf(TextOf(text))), number);
    int const small = static_cast<int>(number);
    ASSERT_EQ(static_cast<int>(XoString(small)), small);
    ASSERT_EQ(static_cast<short>(XoString(small)), static_cast<short>(small));
  }
}

/// What the four readers say of a text; the number before must not shine through.
struct Readings {
  explicit Readings(XoString const& text) {
    results[0] = text.Atol(atol);
    results[1] = text.Atoll(atoll);
    results[2] = text.Strtol(strtol);
    results[3] = text.Strtoll(strtoll);
  }
  bool All(int result) const {
    for (int const each : results) {
      if (each != result) return false;
    }
    return true;
  }
  int atol = 77, strtol = 77;
  long long atoll = 77, strtoll = 77;
  int results[4];
};

TEST_F(StringNumber, ReadersTakeWhatBeginsWithADigitOrAMinus) {
  for (XoString const& text : {Narrow("12abc"), WideOf("12abc"), Narrow("12abc", kNative)}) {
    Readings const readings(text);
    EXPECT_TRUE(readings.All(0));
    EXPECT_EQ(readings.atol, 12);
    EXPECT_EQ(readings.atoll, 12);
    EXPECT_EQ(readings.strtol, 12);
    EXPECT_EQ(readings.strtoll, 12);
  }
  Readings const negative(Narrow("-12"));
  EXPECT_TRUE(negative.All(0));
  EXPECT_EQ(negative.atol, -12);
  EXPECT_EQ(negative.strtoll, -12);
}

TEST_F(StringNumber, OnlyTheFirstCharacterIsLookedAt) {
  Readings const readings(Narrow("-abc"));
  EXPECT_TRUE(readings.All(0));
  EXPECT_EQ(readings.atol, 0);
  EXPECT_EQ(readings.strtoll, 0);
}

TEST_F(StringNumber, ReadersRefuseEverythingElseWithZero) {
  for (std::string_view const text : {"", " 1", "+1", "a1", ".5", "x10", "\t1"}) {
    for (XoString const& string : {Narrow(text), WideOf(text)}) {
      Readings const readings(string);
      EXPECT_TRUE(readings.All(-1)) << text;
      EXPECT_EQ(readings.atol, 0);
      EXPECT_EQ(readings.atoll, 0);
      EXPECT_EQ(readings.strtol, 0);
      EXPECT_EQ(readings.strtoll, 0);
    }
  }
  EXPECT_TRUE(Readings(XoString()).All(-1));
  XoString null;
  null.SetNullValue();
  EXPECT_TRUE(Readings(null).All(-1));
}

TEST_F(StringNumber, AtolIsDecimalOfNarrowTextAndGoesByThePrefixOfWideText) {
  Readings const narrow(Narrow("010"));
  EXPECT_EQ(narrow.atol, 10);
  EXPECT_EQ(narrow.atoll, 10);
  EXPECT_EQ(narrow.strtol, 8);
  EXPECT_EQ(narrow.strtoll, 8);
  Readings const wide(WideOf("010"));
  EXPECT_EQ(wide.atol, 8);
  EXPECT_EQ(wide.atoll, 8);
  EXPECT_EQ(wide.strtol, 8);
  EXPECT_EQ(wide.strtoll, 8);
  EXPECT_EQ(Readings(Narrow("0x1F")).atol, 0);
  EXPECT_EQ(Readings(Narrow("0x1F")).strtol, 31);
  EXPECT_EQ(Readings(WideOf("000x1F")).atoll, 31);
}

TEST_F(StringNumber, TheReadersDoNotLookAtTheOption) {
  ___XoTypeMgrOptions() = 1;
  Readings const readings(Narrow("010"));
  EXPECT_EQ(readings.atol, 10);
  EXPECT_EQ(readings.strtol, 8);
  EXPECT_EQ(readings.strtoll, 8);
}

TEST_F(StringNumber, TheReadersStopAtTheLimits) {
  Readings const great(Narrow("99999999999999999999"));
  EXPECT_EQ(great.atol, kMost);
  EXPECT_EQ(great.atoll, kMost64);
  EXPECT_EQ(great.strtol, kMost);
  EXPECT_EQ(great.strtoll, kMost64);
  Readings const small(WideOf("-99999999999999999999"));
  EXPECT_EQ(small.atol, kLeast);
  EXPECT_EQ(small.atoll, kLeast64);
}

TEST_F(StringNumber, EveryFirstByteIsAcceptedByItsClass) {
  for (unsigned char const set : {kLatin1, kLatin2, kKoi8}) {
    for (int code = 1; code < 256; ++code) {
      char const first = static_cast<char>(code);
      XoString const text = Narrow(std::string(1, first) + "7", set);
      bool const accepted = text[0].IsDigit() != 0 || first == '-';
      EXPECT_TRUE(Readings(text).All(accepted ? 0 : -1)) << int{set} << ' ' << code;
      if (code < 128) {
        EXPECT_EQ(accepted, first == '-' || (first >= '0' && first <= '9')) << code;
      }
    }
  }
}

}  // namespace
}  // namespace xo::test
