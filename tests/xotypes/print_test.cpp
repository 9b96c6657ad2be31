#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberPrint, EveryRowUnderItsOwnFormat) {
  EXPECT_EQ(PrintOne<o_char>(0, 'A'), "A");
  EXPECT_EQ(PrintOne<o_u1b>(10, 'A'), "A");
  EXPECT_EQ(PrintOne<o_2b>(1, -32768), "-32768");
  EXPECT_EQ(PrintOne<o_u2b>(5, 65535), "65535");
  EXPECT_EQ(PrintOne<o_4b>(2, -2147483647 - 1), "-2147483648");
  EXPECT_EQ(PrintOne<o_u4b>(6, 4294967295), "4294967295");
  EXPECT_EQ(PrintOne<BlockId>(14, 4294967295), "#4294967295");
  EXPECT_EQ(PrintOne<int>(7, -1), "-1");
  EXPECT_EQ(PrintOne<unsigned>(8, 4294967295), "4294967295");
  EXPECT_EQ(PrintOne<int>(9, -1), "-1");
  EXPECT_EQ(PrintOne<o_8b>(42, std::numeric_limits<o_8b>::min()), "-9223372036854775808");
  EXPECT_EQ(PrintOne<o_u8b>(43, std::numeric_limits<o_u8b>::max()), "18446744073709551615");
  EXPECT_EQ(PrintOne<o_double>(3, 0.1), "0.10000000000000001");
  EXPECT_EQ(PrintOne<o_float>(4, 0.1F), "0.10000000149011612");
}

TEST(NumberPrint, SixteenBitsReachTheFormatByTheirSign) {
  EXPECT_EQ(PrintOne<o_u2b>(5, 40000, "%d"), "-25536");
  EXPECT_EQ(PrintOne<o_u2b>(5, 40000, "%hu"), "40000");
  EXPECT_EQ(PrintOne<o_2b>(1, -1, "%u"), "4294967295");
  EXPECT_EQ(PrintOne<o_2b>(1, -1, "%x"), "ffffffff");
}

TEST(NumberPrint, FormatsTakeTheValueAtHand) {
  EXPECT_EQ(PrintOne<o_4b>(2, 255, "%#06lx|"), "0x00ff|");
  EXPECT_EQ(PrintOne<o_4b>(2, -1, "%I64d"), "-1");
  EXPECT_EQ(PrintOne<o_u4b>(6, 4294967295, "%I64d"), "4294967295");
  EXPECT_EQ(PrintOne<o_8b>(42, 4294967297, "%d"), "1");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%s"), "%s");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%n"), "%n");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%g"), "%g");
  EXPECT_EQ(PrintOne<o_double>(3, 7, "%d"), "%d");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%d%d"), "7%d");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%"), "%");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, ""), "");
}

TEST(NumberPrint, ReplacesTextCodeSetAndLanguage) {
  XoTypeMgr const manager;
  int value = 5;
  XoString out = NullString();
  manager.PrintToXoString(7, out, &value, nullptr, 1);
  EXPECT_EQ(Text(out), "5");
  EXPECT_EQ(out.codeSet, XoString::GetDefault8CodeSet());
}

TEST(NumberPrint, LongTextsEndWhereAStringDoes) {
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%99999d"), std::string(65531, ' '));
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%-99999d"), "7" + std::string(65530, ' '));
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%600d"), std::string(599, ' ') + "7");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%511d"), std::string(510, ' ') + "7");
  EXPECT_EQ(PrintOne<o_4b>(2, 7, "%512d"), std::string(511, ' ') + "7");
  EXPECT_EQ(PrintOne<o_double>(3, 1.5, "%.99999f").size(), 65531u);
  EXPECT_EQ(PrintOne<o_double>(3, 1e308, "%.300f").size(), 309u + 301);
  std::string const letters(10'000, 'x');
  EXPECT_EQ(PrintOne<o_4b>(2, 7, (letters + "%d").c_str()), letters + "7");
  EXPECT_EQ(PrintOne<o_double>(3, 7, (letters + "%g").c_str()), letters + "7");
}

TEST(NumberPrint, ACharacterOfZeroEndsTheText) {
  EXPECT_EQ(PrintOne<o_4b>(2, 0, "a%cb"), "a");
  EXPECT_EQ(PrintOne<o_4b>(2, 'x', "a%cb"), "axb");
}

TEST(NumberPrint, ArraysAppendWithCommas) {
  int values[] = {1, 2, 3};
  EXPECT_EQ(Print(7, values, "%d", 3, "x"), "x1,2,3");
  EXPECT_EQ(Print(7, values, "%d", 1, "x"), "1");
  EXPECT_EQ(Print(7, values, "%d", 0, "x"), "1");
  EXPECT_EQ(Print(7, values, "<%d>", 2, ""), "<1>,<2>");
  o_double numbers[] = {0.5, kInfinity};
  EXPECT_EQ(Print(3, numbers, nullptr, 2), "0.5,Infinity");
}

TEST(NumberPrint, ALongArrayFillsTheString) {
  std::vector<o_4b> values(100'000, 123456);
  std::string const text = Print(2, values.data(), nullptr, 100'000);
  EXPECT_EQ(text.size(), 65531u);
  EXPECT_EQ(text.substr(0, 14), "123456,123456,");
}

TEST(BytePrint, AnArrayIsOnePieceOfText) {
  o_char bytes[] = {'a', 'b', 'c'};
  EXPECT_EQ(Print(0, bytes, nullptr, 3, "x"), "abc");
  EXPECT_EQ(Print(10, bytes, nullptr, 3, "x"), "abc");
  EXPECT_EQ(Print(0, bytes, nullptr, 0, "x"), "");
  EXPECT_EQ(Print(0, bytes, "[%c]", 2), "[a][b]");
  EXPECT_EQ(Print(0, bytes, "%d ", 3), "97 98 99 ");
}

TEST(BytePrint, WhatIsNotPrintableIsANumberOfTwoDigits) {
  for (int byte = 0; byte < 256; ++byte) {
    char expected[8];
    std::snprintf(expected, sizeof expected, byte >= 32 && byte < 127 ? "%c" : "0x%02x",
                  static_cast<unsigned char>(byte));
    EXPECT_EQ(PrintOne<o_char>(0, static_cast<o_char>(byte)), expected);
    EXPECT_EQ(PrintOne<o_u1b>(10, static_cast<o_u1b>(byte)), expected);
  }
  o_char bytes[] = {'a', 7, -1, 'b'};
  EXPECT_EQ(Print(0, bytes, "<%c>", 4), "<a>0x070xff<b>");
}

TEST(BytePrint, LongPiecesEndWhereAStringDoes) {
  o_char bytes[] = {'a', 'b', 'c'};
  EXPECT_EQ(Print(0, bytes, "%-600c", 3).size(), 1800u);
  EXPECT_EQ(Print(0, bytes, "%-99999c", 3), "a" + std::string(65530, ' '));
  std::vector<o_char> many(200'000, 'x');
  EXPECT_EQ(Print(0, many.data(), nullptr, 200'000), std::string(65531, 'x'));
}

TEST(FloatingPrint, TheExactFormatNamesWhatIsNotFinite) {
  for (double const nan : FloatBits<double>::Nans()) EXPECT_EQ(PrintOne(3, nan), "NaN");
  EXPECT_EQ(PrintOne(3, kInfinity), "Infinity");
  EXPECT_EQ(PrintOne(3, -kInfinity), "-Infinity");
  EXPECT_EQ(PrintOne(4, std::numeric_limits<float>::infinity()), "Infinity");
  EXPECT_EQ(PrintOne(4, std::numeric_limits<float>::quiet_NaN()), "NaN");
  EXPECT_EQ(PrintOne(3, -0.0), "-0");
  EXPECT_EQ(PrintOne(3, 1e300), "1.0000000000000001e+300");
  EXPECT_EQ(PrintOne(3, 1e-7), "9.9999999999999995e-08");
}

TEST(FloatingPrint, OtherFormatsAreThoseOfTheRuntime) {
  EXPECT_EQ(PrintOne(3, kInfinity, "%g"), "inf");
  EXPECT_EQ(PrintOne(3, 0.1, " %.17g"), " 0.10000000000000001");
  EXPECT_EQ(PrintOne(3, kInfinity, "%.17g "), "inf ");
  EXPECT_EQ(PrintOne(4, 1.5F, "%8.3f|"), "   1.500|");
  EXPECT_EQ(PrintOne(3, 1.5, "ldexp("), "ldexp(");
  EXPECT_EQ(PrintOne(4, 1.5F, "ldexp("), "ldexp(");
}

TEST(NumberPrint, AnExchangedFunctionIsAskedElementByElement) {
  XoTypeMgr manager;
  auto* const print = +[](XoString& out, void* values, char const*, unsigned count) -> XoString& {
    return out << '<' << int{*static_cast<o_char*>(values)} << ':' << static_cast<int>(count)
               << '>';
  };
  auto* const previous = manager.ExchangePrintToXoStringFunc(0, print);
  o_char bytes[] = {1, 2};
  std::string const text = Print(0, bytes, nullptr, 2);
  manager.ExchangePrintToXoStringFunc(0, previous);
  EXPECT_EQ(text, "<1:1>,<2:1>");
}

TEST(NumberPrint, AnExchangedFormatIsTheRows) {
  XoTypeMgr manager;
  char const* const previous = manager.ExchangeFormat(2, "[%05ld]");
  std::string const text = PrintOne<o_4b>(2, -7);
  manager.ExchangeFormat(2, previous);
  EXPECT_EQ(text, "[-0007]");
  EXPECT_EQ(PrintOne<o_4b>(2, -7), "-7");
}

}  // namespace
}  // namespace xo::test
