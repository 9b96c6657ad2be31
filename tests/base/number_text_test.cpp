#include "base/number_text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

constexpr std::int32_t kMost32 = std::numeric_limits<std::int32_t>::max(),
                       kLeast32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMost64 = std::numeric_limits<std::int64_t>::max(),
                       kLeast64 = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Print(double value) {
  char buffer[kDoubleTextSize];
  std::memset(buffer, 'x', sizeof buffer);
  PrintDouble(buffer, value);
  return buffer;
}

std::uint64_t BitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

double OfBits(std::uint64_t bits) {
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

/// Runs in the C locale, so that the C library is an oracle.
class NumberText : public RandomTest {
 protected:
  /// Up to `most` characters of `alphabet`.
  std::string Text(std::string const& alphabet, unsigned most) {
    std::string text(Below(most + 1), ' ');
    for (char& each : text) each = alphabet[Below(static_cast<unsigned>(alphabet.size()))];
    return text;
  }
};

TEST_F(NumberText, IntegersInDecimal) {
  for (auto const base : {IntegerBase::kDecimal, IntegerBase::kByPrefix}) {
    EXPECT_EQ(ReadInt32("0", base), 0);
    EXPECT_EQ(ReadInt32("12", base), 12);
    EXPECT_EQ(ReadInt32("-12", base), -12);
    EXPECT_EQ(ReadInt32("+12", base), 12);
    EXPECT_EQ(ReadInt32(" \t\n\v\f\r 12x", base), 12);
    EXPECT_EQ(ReadInt32("", base), 0);
    EXPECT_EQ(ReadInt32("-", base), 0);
    EXPECT_EQ(ReadInt32("+-1", base), 0);
    EXPECT_EQ(ReadInt32("- 1", base), 0);
    EXPECT_EQ(ReadInt32("\xA0"
                        "1",
                        base),
              0);
  }
}

TEST_F(NumberText, ThePrefixChoosesTheBase) {
  EXPECT_EQ(ReadInt32("0x10", IntegerBase::kByPrefix), 16);
  EXPECT_EQ(ReadInt32("0x10", IntegerBase::kDecimal), 0);
  EXPECT_EQ(ReadInt32("-0XaF", IntegerBase::kByPrefix), -175);
  EXPECT_EQ(ReadInt32("010", IntegerBase::kByPrefix), 8);
  EXPECT_EQ(ReadInt32("010", IntegerBase::kDecimal), 10);
  EXPECT_EQ(ReadInt32("019", IntegerBase::kByPrefix), 1);
  EXPECT_EQ(ReadInt32("0x", IntegerBase::kByPrefix), 0);
  EXPECT_EQ(ReadInt32("0xg", IntegerBase::kByPrefix), 0);
}

TEST_F(NumberText, IntegersStopAtTheLimits) {
  EXPECT_EQ(ReadInt32("2147483647", IntegerBase::kDecimal), kMost32);
  EXPECT_EQ(ReadInt32("2147483648", IntegerBase::kDecimal), kMost32);
  EXPECT_EQ(ReadInt32("-2147483648", IntegerBase::kDecimal), kLeast32);
  EXPECT_EQ(ReadInt32("-2147483649", IntegerBase::kDecimal), kLeast32);
  EXPECT_EQ(ReadInt32("0xFFFFFFFF", IntegerBase::kByPrefix), kMost32);
  EXPECT_EQ(ReadInt64("9223372036854775807", IntegerBase::kDecimal), kMost64);
  EXPECT_EQ(ReadInt64("9223372036854775808", IntegerBase::kDecimal), kMost64);
  EXPECT_EQ(ReadInt64("-9223372036854775808", IntegerBase::kDecimal), kLeast64);
  EXPECT_EQ(ReadInt64("-9223372036854775809", IntegerBase::kDecimal), kLeast64);
  EXPECT_EQ(ReadInt64("-0x8000000000000000", IntegerBase::kByPrefix), kLeast64);
  EXPECT_EQ(ReadInt64(std::string(1000, '9').c_str(), IntegerBase::kDecimal), kMost64);
}

TEST_F(NumberText, IntegersAreThoseOfTheCLibrary) {
  for (int round = 0; round < 50000; ++round) {
    std::string text = Text(" +-", 1) + Text("-0x", 3) + Text("0123456789abcdefABCDEFxX. ", 19);
    if (OneIn(3)) text = Text(" -", 2) + Text("0123456789", 22);
    for (auto const choice : {IntegerBase::kDecimal, IntegerBase::kByPrefix}) {
      int const base = choice == IntegerBase::kDecimal ? 10 : 0;
      long long const expected = std::strtoll(text.c_str(), nullptr, base);
      ASSERT_EQ(ReadInt64(text.c_str(), choice), expected) << text;
      ASSERT_EQ(ReadInt32(text.c_str(), choice), std::clamp<long long>(expected, kLeast32, kMost32))
          << text;
    }
  }
}

TEST_F(NumberText, IntegersAreWrittenInDecimal) {
  char buffer[kIntegerTextSize];
  PrintInteger(buffer, std::int64_t{0});
  EXPECT_STREQ(buffer, "0");
  PrintInteger(buffer, kLeast64);
  EXPECT_STREQ(buffer, "-9223372036854775808");
  PrintInteger(buffer, std::numeric_limits<std::uint64_t>::max());
  EXPECT_STREQ(buffer, "18446744073709551615");
  for (int round = 0; round < 5000; ++round) {
    std::int64_t const value = static_cast<std::int64_t>(Bits()) >> Below(64);
    PrintInteger(buffer, value);
    ASSERT_EQ(buffer, std::to_string(value));
    PrintInteger(buffer, static_cast<std::uint64_t>(value));
    ASSERT_EQ(buffer, std::to_string(static_cast<std::uint64_t>(value)));
  }
}

TEST_F(NumberText, DoublesHaveSeventeenDigitsAtMost) {
  EXPECT_EQ(Print(0.0), "0");
  EXPECT_EQ(Print(-0.0), "-0");
  EXPECT_EQ(Print(1.0), "1");
  EXPECT_EQ(Print(0.1), "0.10000000000000001");
  EXPECT_EQ(Print(0.5), "0.5");
  EXPECT_EQ(Print(100000.0), "100000");
  // 2 to the power of 70 is 1180591620717411303424.
  EXPECT_EQ(Print(0x1p70), "1.1805916207174113e+21");
  // The exponent form begins where the exponent reaches the digits, and below -4.
  EXPECT_EQ(Print(1e16), "10000000000000000");
  EXPECT_EQ(Print(1e17), "1e+17");
  EXPECT_EQ(Print(0x1p-13), "0.0001220703125");
  EXPECT_EQ(Print(0x1p-14), "6.103515625e-05");
}

TEST_F(NumberText, NoFiniteNumberIsAWord) {
  EXPECT_EQ(Print(kInfinity), "Infinity");
  EXPECT_EQ(Print(-kInfinity), "-Infinity");
  // Quiet and signalling, of either sign.
  for (std::uint64_t const bits : {0x7FF8000000000000ull, 0xFFF8000000000000ull,
                                   0x7FF0000000000001ull, 0xFFF0000000000001ull}) {
    EXPECT_EQ(Print(OfBits(bits)), "NaN");
  }
}

TEST_F(NumberText, DoublesAreWrittenAsTheCLibraryWritesThem) {
  for (int round = 0; round < 20000; ++round) {
    double value = OfBits(Bits());
    if (OneIn(2))
      value = std::ldexp(static_cast<double>(Below(1u << 20)), -static_cast<int>(Below(40)));
    if (!std::isfinite(value)) continue;
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.17g", value);
    ASSERT_EQ(Print(value), expected);
  }
}

TEST_F(NumberText, DoublesComeBack) {
  for (int round = 0; round < 20000; ++round) {
    double const value = OfBits(Bits());
    if (std::isnan(value)) continue;
    ASSERT_EQ(BitsOf(ReadDouble(Print(value).c_str())), BitsOf(value)) << Print(value);
  }
  for (std::uint64_t const bits : {0ull, 1ull, 2ull, 0x000FFFFFFFFFFFFFull, 0x0010000000000000ull,
                                   0x7FEFFFFFFFFFFFFFull, 0x7FF0000000000000ull}) {
    for (double const value : {OfBits(bits), -OfBits(bits)}) {
      EXPECT_EQ(BitsOf(ReadDouble(Print(value).c_str())), BitsOf(value)) << Print(value);
    }
  }
}

TEST_F(NumberText, TheWordsOfNoFiniteNumberAreRead) {
  for (char const* const text : {"Infinity", "infinity", "INFINITY"}) {
    EXPECT_EQ(ReadDouble(text), kInfinity);
  }
  for (char const* const text : {"-Infinity", "-infinity", "-INFINITY"}) {
    EXPECT_EQ(ReadDouble(text), -kInfinity);
  }
  for (char const* const text : {"NaN", "nan", "NAN"}) {
    double const value = ReadDouble(text);
    EXPECT_TRUE(std::isnan(value));
    EXPECT_TRUE(std::signbit(value));
    // Quiet: the highest bit of the fraction is set.
    EXPECT_NE(BitsOf(value) & 0x0008000000000000ull, 0u);
  }
}

TEST_F(NumberText, WhatIsNoNumberIsAPositiveZero) {
  for (char const* const text :
       {"", "abc", "-", "+", "-abc", "+-1", "--1", "-+1", ".", "-.", "-.e5", "e5", "-x1", "- 1"}) {
    EXPECT_EQ(BitsOf(ReadDouble(text)), 0u) << text;
  }
  EXPECT_EQ(BitsOf(ReadDouble("-0")), BitsOf(-0.0));
  EXPECT_EQ(BitsOf(ReadDouble("-0x")), BitsOf(-0.0));
}

TEST_F(NumberText, ADoubleEndsWhereItsTextDoes) {
  EXPECT_EQ(ReadDouble(" \t\n\v\f\r1.5x"), 1.5);
  EXPECT_EQ(ReadDouble("1e"), 1);
  EXPECT_EQ(ReadDouble("1e+"), 1);
  EXPECT_EQ(ReadDouble("1e+2"), 100);
  EXPECT_EQ(ReadDouble("+.5."), 0.5);
  EXPECT_EQ(ReadDouble("5."), 5);
  // The point is one in every locale.
  EXPECT_EQ(ReadDouble("1,5"), 1);
}

TEST_F(NumberText, HexadecimalDoublesAreRead) {
  EXPECT_EQ(ReadDouble("0x10"), 16);
  EXPECT_EQ(ReadDouble("-0X1.8p3"), -12);
  EXPECT_EQ(ReadDouble("0x.8"), 0.5);
  EXPECT_EQ(ReadDouble("0x1p-1074"), 0x1p-1074);
  EXPECT_EQ(ReadDouble("0x1p1024"), kInfinity);
  EXPECT_EQ(ReadDouble("-0x1p99999"), -kInfinity);
  EXPECT_EQ(BitsOf(ReadDouble("-0x1p-99999")), BitsOf(-0.0));
}

TEST_F(NumberText, OutOfRangeIsInfinityOrTheNearestNumber) {
  EXPECT_EQ(ReadDouble("1e309"), kInfinity);
  EXPECT_EQ(ReadDouble("-1e309"), -kInfinity);
  EXPECT_EQ(ReadDouble("1e99999999999999999999"), kInfinity);
  EXPECT_EQ(BitsOf(ReadDouble("1e-400")), 0u);
  EXPECT_EQ(BitsOf(ReadDouble("-1e-400")), BitsOf(-0.0));
  EXPECT_EQ(BitsOf(ReadDouble("1e-99999999999999999999")), 0u);
  EXPECT_EQ(ReadDouble("3e-324"), 0x1p-1074);
  EXPECT_EQ(ReadDouble("1e-310"), std::strtod("1e-310", nullptr));
  EXPECT_EQ(ReadDouble("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST_F(NumberText, LongTextsAreReadExactly) {
  std::string const zeros(70000, '0');
  EXPECT_EQ(ReadDouble(("0." + zeros + "1e70001").c_str()), 1);
  EXPECT_EQ(ReadDouble(("1" + zeros + "e-70000").c_str()), 1);
  EXPECT_EQ(ReadDouble(("1" + zeros).c_str()), kInfinity);
  EXPECT_EQ(BitsOf(ReadDouble(("0." + zeros + "1").c_str())), 0u);
  EXPECT_EQ(ReadDouble(("0." + zeros + "1e70400").c_str()), kInfinity);
  EXPECT_EQ(ReadDouble((zeros + "7").c_str()), 7);
  // Half way between 1 and its successor, and a little more.
  std::string const half = "1.00000000000000011102230246251565404236316680908203125";
  EXPECT_EQ(ReadDouble(half.c_str()), 1);
  EXPECT_EQ(ReadDouble((half + zeros + "1").c_str()), 1 + std::numeric_limits<double>::epsilon());
}

TEST_F(NumberText, DoublesAreThoseOfTheCLibrary) {
  for (int round = 0; round < 50000; ++round) {
    std::string text =
        Text(" +-", 2) + Text("0123456789", 18) + Text(".", 1) + Text("0123456789", 12);
    if (OneIn(2)) text += Text("eE", 1) + Text("+-", 1) + Text("0123456789", 3);
    if (OneIn(4)) text = Text(" +-0123456789.eExXpPaAfF", 12);
    if (OneIn(4)) {
      text = Text("-", 1) + "0x" + Text("0123456789abcdefABCDEF", 10) + Text(".", 1) +
             Text("0123456789abcdef", 10) + Text("pP", 1) + Text("+-", 1) + Text("0123456789", 4);
    }
    char* end = nullptr;
    double expected = std::strtod(text.c_str(), &end);
    // Libraries differ in the sign of the zero that they give for no number.
    if (end == text.c_str()) expected = 0;
    ASSERT_EQ(BitsOf(ReadDouble(text.c_str())), BitsOf(expected)) << text;
  }
}

}  // namespace
}  // namespace xo::test
