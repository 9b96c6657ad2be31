#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

__extension__ using Wide = __int128;

constexpr long long kMost = std::numeric_limits<long long>::max();
constexpr long long kLeast = std::numeric_limits<long long>::min();

long long Wrap(Wide value) {
  return static_cast<long long>(static_cast<unsigned long long>(value));
}

TEST(Int64Layout, TwoHalvesLowFirst) {
  XoInt64 const value(0x89ABCDEFu, 0x01234567);
  EXPECT_EQ(value.low, 0x89ABCDEFu);
  EXPECT_EQ(value.high, 0x01234567);
  EXPECT_EQ(sizeof value, 8u);
  EXPECT_EQ(alignof(XoInt64), 4u);
  EXPECT_EQ(value.Get8b(), 0x0123456789ABCDEF);
  unsigned char bytes[8];
  std::memcpy(bytes, &value, 8);
  EXPECT_EQ(bytes[0], 0xEF);
  EXPECT_EQ(bytes[7], 0x01);
}

TEST(Int64Construction, EveryKindOfNumber) {
  EXPECT_EQ(XoInt64().Get8b(), 0);
  EXPECT_EQ(XoInt64(-1).Get8b(), -1);
  EXPECT_EQ(XoInt64(0xFFFFFFFFu).Get8b(), 4294967295);
  EXPECT_EQ(XoInt64(0xFFFFFFFFu, 0).Get8b(), 4294967295);
  EXPECT_EQ(XoInt64(-1L).Get8b(), -1);
  EXPECT_EQ(XoInt64(1UL).Get8b(), 1);
  EXPECT_EQ(XoInt64(kLeast).Get8b(), kLeast);
  EXPECT_EQ(XoInt64(~0ULL).Get8b(), -1);
  EXPECT_EQ(XoInt64(~0ULL).GetU8b(), ~0ULL);
  XoInt64 value;
  value = -7;
  EXPECT_EQ(value.Get8b(), -7);
  value = 4000000000u;
  EXPECT_EQ(value.Get8b(), 4000000000);
  value = kMost;
  EXPECT_EQ(value.Get8b(), kMost);
  value = static_cast<unsigned long long>(kMost) + 1;
  EXPECT_EQ(value.Get8b(), kLeast);
}

TEST(Int64FromDouble, SevenDigitsCount) {
  EXPECT_EQ(XoInt64(0.5).Get8b(), 0);
  EXPECT_EQ(XoInt64(0.99999999).Get8b(), 0);
  EXPECT_EQ(XoInt64(1.0).Get8b(), 1);
  EXPECT_EQ(XoInt64(-1.5).Get8b(), -1);
  EXPECT_EQ(XoInt64(12.75).Get8b(), 12);
  EXPECT_EQ(XoInt64(9.9999999).Get8b(), 10);
  EXPECT_EQ(XoInt64(999999.96).Get8b(), 1000000);
  EXPECT_EQ(XoInt64(1234567.0).Get8b(), 1234567);
  EXPECT_EQ(XoInt64(1234567890123.0).Get8b(), 1234568000000);
  EXPECT_EQ(XoInt64(-1234567890123.0).Get8b(), -1234568000000);
  EXPECT_EQ(XoInt64(9.223372036854775e18).Get8b(), 9223372000000000000);
  EXPECT_EQ(XoInt64(9.223372036854776e18).Get8b(), kMost);
  EXPECT_EQ(XoInt64(1e300).Get8b(), kMost);
  EXPECT_EQ(XoInt64(-1e300).Get8b(), -kMost);
  EXPECT_EQ(XoInt64(std::numeric_limits<double>::infinity()).Get8b(), kMost);
  EXPECT_EQ(XoInt64(std::numeric_limits<double>::quiet_NaN()).Get8b(), 0);
}

TEST(Int64Division, TruncatesTowardZero) {
  EXPECT_EQ((XoInt64(-7) / 2).Get8b(), -3);
  EXPECT_EQ((XoInt64(-7) % 2).Get8b(), -1);
  EXPECT_EQ((XoInt64(7) / -2).Get8b(), -3);
  EXPECT_EQ((XoInt64(7) % -2).Get8b(), 1);
  EXPECT_EQ(XoInt64(-7).Division(-2, 0).Get8b(), 3);
  EXPECT_EQ(XoInt64(-7).Division(-2, 1).Get8b(), -1);
}

TEST(Int64Division, OfAndByTheLowestValue) {
  XoInt64 const lowest(kLeast);
  EXPECT_EQ((lowest / -1).Get8b(), kLeast);
  EXPECT_EQ((lowest % -1).Get8b(), 0);
  EXPECT_EQ((lowest / lowest).Get8b(), 1);
  EXPECT_EQ((lowest % lowest).Get8b(), 0);
  EXPECT_EQ((lowest / 2).Get8b(), kLeast / 2);
  EXPECT_EQ((XoInt64(-5) / lowest).Get8b(), 0);
  EXPECT_EQ((XoInt64(-5) % lowest).Get8b(), -5);
  EXPECT_EQ((XoInt64(5) % lowest).Get8b(), 5);
  EXPECT_EQ(lowest.Abs().Get8b(), kLeast);
  EXPECT_EQ((-lowest).Get8b(), kLeast);
}

struct Assertion {
  static inline std::vector<std::string> messages;
  static int Keep(char const* expression, char const* file, int) {
    messages.push_back(std::string(expression) + "|" + file);
    return 0;
  }
};

TEST(Int64Division, ByZeroIsReportedAndGivesZero) {
  XoPlatform hooks;
  hooks.assertFailed = Assertion::Keep;
  hooks.memoryHandler = nullptr;
  hooks.localTime = nullptr;
  hooks.utcTime = nullptr;
  hooks.timeZoneMinutes = nullptr;
  XoPlatform const previous = XoExchangePlatform(hooks);
  Assertion::messages.clear();
  XoInt64 const seven(7);
  XoInt64 const quotient = seven / 0;
  XoInt64 const remainder = seven % 0;
  XoExchangePlatform(previous);
  EXPECT_EQ(quotient.Get8b(), 0);
  EXPECT_EQ(remainder.Get8b(), 0);
  EXPECT_EQ(Assertion::messages,
            std::vector<std::string>(2, "XoInt64 divide by zero|src\\xoint64"));
}

TEST(Int64Shift, KeepsTheSignToTheRight) {
  EXPECT_EQ((XoInt64(1) << 63).Get8b(), kLeast);
  EXPECT_EQ((XoInt64(kLeast) >> 63).Get8b(), -1);
  EXPECT_EQ((XoInt64(-5) >> 1).Get8b(), -3);
  EXPECT_EQ((XoInt64(1) << 64).Get8b(), 0);
  EXPECT_EQ((XoInt64(-1) >> 1000).Get8b(), -1);
  EXPECT_EQ((XoInt64(1) >> 64).Get8b(), 0);
  XoInt64 value(3);
  XoInt64 copy = value <<= 33;
  EXPECT_EQ(value.Get8b(), 3LL << 33);
  EXPECT_EQ(copy.Get8b(), 3LL << 33);
  copy = value >>= 32;
  copy += 1;
  EXPECT_EQ(value.Get8b(), 6);
}

class Int64Oracle : public RandomTest {
 protected:
  static std::vector<long long> Boundaries() {
    std::vector<long long> values;
    for (int bit = 0; bit < 64; ++bit) {
      auto const power = static_cast<long long>(1ULL << bit);
      for (long long const value : {power, Wrap(Wide{power} - 1), Wrap(Wide{power} + 1)}) {
        values.push_back(value);
        values.push_back(Wrap(-Wide{value}));
      }
    }
    for (long long const value :
         {10LL, 1000000000000000000LL, 0x00000000FFFFFFFFLL, 3037000500LL}) {
      values.push_back(value);
      values.push_back(-value);
    }
    return values;
  }

  void Check(long long a, long long b) {
    XoInt64 const x(a);
    XoInt64 const y(b);
    Wide const wideA = a;
    Wide const wideB = b;
    bool good = (x + y).Get8b() == Wrap(wideA + wideB) && (x - y).Get8b() == Wrap(wideA - wideB) &&
                (x * y).Get8b() == Wrap(wideA * wideB) && (-x).Get8b() == Wrap(-wideA) &&
                (x & y).Get8b() == (a & b) && (x | y).Get8b() == (a | b) && (~x).Get8b() == ~a &&
                x.Abs().Get8b() == Wrap(a < 0 ? -wideA : wideA);
    if (b != 0) {
      good = good && (x / y).Get8b() == Wrap(wideA / wideB) &&
             (x % y).Get8b() == Wrap(wideA % wideB) &&
             x.Division(y, 0).Get8b() == Wrap(wideA / wideB);
    }
    good = good && (x == y) == (a == b) && (x != y) == (a != b) && (x < y) == (a < b) &&
           (x <= y) == (a <= b) && (x > y) == (a > b) && (x >= y) == (a >= b);
    auto const count = static_cast<unsigned>(b) % 64;
    good =
        good && (x >> count).Get8b() == a >> count && (x << count).GetU8b() == x.GetU8b() << count;
    XoInt64 step = x;
    good = good && (++step).Get8b() == Wrap(wideA + 1) && (--step).Get8b() == a;
    step += y;
    step -= y;
    good = good && step == x;
    step *= y;
    good = good && step.Get8b() == Wrap(wideA * wideB);
    if (b != 0) {
      XoInt64 quotient = x;
      quotient /= y;
      XoInt64 remainder = x;
      remainder %= y;
      good = good && (quotient * y + remainder) == x;
    }
    EXPECT_TRUE(good) << a << ' ' << b;
  }
};

TEST_F(Int64Oracle, BoundaryPairsCalculateAsInTwiceTheWidth) {
  auto const values = Boundaries();
  for (long long const a : values) {
    for (long long const b : values) Check(a, b);
  }
}

TEST_F(Int64Oracle, RandomPairsCalculateAsInTwiceTheWidth) {
  for (int round = 0; round < 2'000'000; ++round) {
    // Of all magnitudes, as most pairs of whole words divide to nothing.
    Check(static_cast<long long>(Bits()) >> Below(64), static_cast<long long>(Bits()) >> Below(64));
  }
}

/// What the digits of "%E" give, taken one by one.
long long FromDigits(double value) {
  double const magnitude = std::fabs(value);
  if (magnitude < 1) return 0;
  char text[64];
  std::snprintf(text, sizeof text, "%E", magnitude);
  int exponent = std::atoi(std::strchr(text, 'E') + 1);
  long long whole = text[0] - '0';
  for (char const* digit = text + 2; *digit != 'E'; ++digit) {
    if (--exponent < 0) break;
    whole = whole * 10 + (*digit - '0');
  }
  for (; exponent > 0; --exponent) whole *= 10;
  return value < 0 ? -whole : whole;
}

TEST_F(Int64Oracle, DoublesGoThroughTheirPrintedDigits) {
  for (int round = 0; round < 100'000; ++round) {
    double const value = std::ldexp(static_cast<double>(static_cast<long long>(Bits())),
                                    -static_cast<int>(Below(70)));
    if (std::fabs(value) > 9.2e18) continue;
    EXPECT_EQ(XoInt64(value).Get8b(), FromDigits(value)) << value;
  }
}

std::string Print(XoInt64 value, char const* format) {
  XoString out;
  EXPECT_EQ(&value.PrintToXoString(out, format), &out);
  return out.StrGet();
}

TEST(Int64Print, LettersOfItsOwn) {
  EXPECT_EQ(Print(255, "%S"), "255");
  EXPECT_EQ(Print(255, "%d"), "255");
  EXPECT_EQ(Print(255, "%i"), "255");
  EXPECT_EQ(Print(255, "%o"), "0377");
  EXPECT_EQ(Print(255, "%x"), "0xff");
  EXPECT_EQ(Print(255, "%X"), "0XFF");
  EXPECT_EQ(Print(-1, "%x"), "-0x1");
  EXPECT_EQ(Print(-8, "%o"), "-010");
  EXPECT_EQ(Print(0, "%d %o %x"), "0 00 0x0");
  EXPECT_EQ(Print(255, "a=%d, %Z"), "a=255, %Z");
  EXPECT_EQ(Print(255, nullptr), "255");
  EXPECT_EQ(Print(255, ""), "");
  EXPECT_EQ(Print(255, "%%d"), "%255");
  EXPECT_EQ(Print(255, "%%"), "%%");
  EXPECT_EQ(Print(255, "%5d%"), "%5d%");
  EXPECT_EQ(Print(255, "%d%d"), "255255");
}

TEST(Int64Print, TheLowestValueShowsItsSignInDecimalAlone) {
  XoInt64 const lowest(kLeast);
  EXPECT_EQ(Print(lowest, "%S"), "-9223372036854775808");
  EXPECT_EQ(Print(lowest, "%d"), "-9223372036854775808");
  EXPECT_EQ(Print(lowest, "%o"), "01000000000000000000000");
  EXPECT_EQ(Print(lowest, "%x"), "0x8000000000000000");
  EXPECT_EQ(Print(lowest, "%X"), "0X8000000000000000");
  EXPECT_EQ(Print(XoInt64(kLeast + 1), "%x"), "-0x7fffffffffffffff");
}

TEST(Int64Print, AppendsToWhatIsThere) {
  XoString out("x=");
  XoInt64(7).PrintToXoString(out, "%d;");
  XoInt64(8).PrintToXoString(out, "%d;");
  EXPECT_STREQ(out.StrGet(), "x=7;8;");
}

TEST(Int64Print, LongFormatsFillTheStringAndNoMore) {
  std::string format;
  while (format.size() < 10'000) format += "%x";
  XoString out;
  XoInt64(kMost).PrintToXoString(out, format.c_str());
  EXPECT_EQ(out.Len(), 65531);
  EXPECT_EQ(Print(1, std::string(10'000, '%').c_str()), std::string(10'000, '%'));
}

long long Scan(char const* text, char const* format, long long before = 4711) {
  XoInt64 value(before);
  value.ScanFromXoString(XoString(text), format);
  return value.Get8b();
}

TEST(Int64Scan, ThePrefixDecidesAndTheLetterMustAgree) {
  EXPECT_EQ(Scan("16", "%d"), 16);
  EXPECT_EQ(Scan("0x10", "%d"), -1);
  EXPECT_EQ(Scan("0x10", "%S"), 16);
  EXPECT_EQ(Scan("0X1f", "%x"), 31);
  EXPECT_EQ(Scan("0x1F", "%X"), 31);
  EXPECT_EQ(Scan("1F", "%x"), -1);
  EXPECT_EQ(Scan("010", "%S"), 8);
  EXPECT_EQ(Scan("010", "%o"), 8);
  EXPECT_EQ(Scan("010", "%i"), -1);
  EXPECT_EQ(Scan("10", "%o"), -1);
  EXPECT_EQ(Scan("0", "%d"), -1);
  EXPECT_EQ(Scan("0", "%S"), 0);
  EXPECT_EQ(Scan("0", "%o"), 0);
  EXPECT_EQ(Scan("5", nullptr), 5);
}

TEST(Int64Scan, SignsAndDigits) {
  EXPECT_EQ(Scan("-5", "%d"), -5);
  EXPECT_EQ(Scan("+5", "%d"), 5);
  EXPECT_EQ(Scan("-0x10", "%S"), -16);
  EXPECT_EQ(Scan("--5", "%d"), -1);
  EXPECT_EQ(Scan("5a", "%d"), -1);
  EXPECT_EQ(Scan("0xg", "%S"), -1);
  EXPECT_EQ(Scan("08", "%S"), -1);
  EXPECT_EQ(Scan(" 5", "%d"), -1);
  EXPECT_EQ(Scan("5 ", "%d"), -1);
  EXPECT_EQ(Scan("18446744073709551617", "%d"), 1);
  EXPECT_EQ(Scan("9223372036854775808", "%d"), kLeast);
  EXPECT_EQ(Scan("0x\xE4", "%S"), -1);
}

TEST(Int64Scan, FormatAndTextGoTogether) {
  EXPECT_EQ(Scan("a=5;", "a=%d;"), 5);
  EXPECT_EQ(Scan("a=5;rest", "a=%d;"), 5);
  EXPECT_EQ(Scan("b=5;", "a=%d;"), -1);
  EXPECT_EQ(Scan("%5", "%%d"), 5);
  EXPECT_EQ(Scan("%Z5", "%Z%d"), 5);
  EXPECT_EQ(Scan("5,6", "%d,%d"), 6);
  EXPECT_EQ(Scan("5,x", "%d,%d"), -1);
}

TEST(Int64Scan, TextThatEndsEarlyLeavesWhatWasRead) {
  EXPECT_EQ(Scan("", "%d"), 4711);
  EXPECT_EQ(Scan("a=", "a=%d"), 4711);
  EXPECT_EQ(Scan("5", "%d;"), 5);
  EXPECT_EQ(Scan("5,", "%d,%d"), 5);
  EXPECT_EQ(Scan("5", ""), 4711);
  XoInt64 value(4711);
  XoString null;
  null.SetNullValue();
  value.ScanFromXoString(null, "%d");
  EXPECT_EQ(value.Get8b(), 4711);
}

TEST(Int64Scan, WideTextIsReadAsNarrow) {
  unsigned short const text[] = {'-', '0', 'x', '1', '0', 0};
  XoInt64 value;
  value.ScanFromXoString(XoString(text), "%S");
  EXPECT_EQ(value.Get8b(), -16);
}

class Int64Text : public RandomTest {};

TEST_F(Int64Text, WhatIsPrintedScansBack) {
  for (int round = 0; round < 5'000; ++round) {
    auto value = static_cast<long long>(Bits()) >> Below(64);
    if (round == 0) value = kLeast;
    if (round == 1) value = kMost;
    EXPECT_EQ(Scan(Print(value, "%S").c_str(), "%S"), value);
    if (value == kLeast) continue;
    EXPECT_EQ(Scan(Print(value, "%x").c_str(), "%x"), value);
    EXPECT_EQ(Scan(Print(value, "%X").c_str(), "%S"), value);
    EXPECT_EQ(Scan(Print(value, "[%o]").c_str(), "[%o]"), value);
  }
}

}  // namespace
}  // namespace xo::test
