#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "base/bytes.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberScanSlot, EveryRowUnderItsOwnFormat) {
  EXPECT_EQ(ScanOne<o_2b>(1, "-32768"), -32768);
  EXPECT_EQ(ScanOne<o_u2b>(5, "65535"), 65535);
  EXPECT_EQ(ScanOne<o_4b>(2, "-2147483648"), -2147483647 - 1);
  EXPECT_EQ(ScanOne<o_u4b>(6, "4294967295"), 4294967295);
  EXPECT_EQ(ScanOne<BlockId>(14, "#4294967295"), 4294967295);
  EXPECT_EQ(ScanOne<int>(7, "-1"), -1);
  EXPECT_EQ(ScanOne<unsigned>(8, "4294967295"), 4294967295);
  EXPECT_EQ(ScanOne<int>(9, "-1"), -1);
  EXPECT_EQ(ScanOne<o_8b>(42, "-9223372036854775808"), std::numeric_limits<o_8b>::min());
  EXPECT_EQ(ScanOne<o_u8b>(43, "18446744073709551615"), std::numeric_limits<o_u8b>::max());
  EXPECT_EQ(ScanOne<o_double>(3, "0.1"), 0.1);
  EXPECT_EQ(ScanOne<o_float>(4, "0.1"), 0.1F);
}

TEST(NumberScanSlot, WhatDoesNotMatchLeavesTheElement) {
  EXPECT_EQ(ScanOne<o_4b>(2, "abc", nullptr, 17), 17);
  EXPECT_EQ(ScanOne<o_4b>(2, "", nullptr, 17), 17);
  EXPECT_EQ(ScanOne<o_4b>(2, NullString(), nullptr, 17), 17);
  EXPECT_EQ(ScanOne<BlockId>(14, "5", nullptr, 17), 17u);
  EXPECT_EQ(ScanOne<o_8b>(42, "5", "%s", 17), 17);
  EXPECT_EQ(ScanOne<o_8b>(42, "5", "", 17), 17);
  EXPECT_EQ(ScanOne<o_8b>(42, "5", "%", 17), 17);
  EXPECT_EQ(ScanOne<o_double>(3, "abc", "%g", 17.0), 17.0);
  EXPECT_EQ(ScanOne<o_float>(4, "abc", "%g", 17.0F), 17.0F);
}

TEST(NumberScanSlot, TheWholeElementIsWritten) {
  EXPECT_EQ(ScanOne<o_8b>(42, "-5", "%hd", 0x5555555555555555), -5);
  EXPECT_EQ(ScanOne<o_8b>(42, "4294967295", "%lu", -1), 4294967295);
  EXPECT_EQ(ScanOne<o_4b>(2, "A", "%c", -1), 'A');
  EXPECT_EQ(ScanOne<o_2b>(1, "70000", "%d", 0), 4464);
}

TEST(NumberScanSlot, WritesNothingBehindTheElement) {
  XoTypeMgr const manager;
  XoString text("-1");
  for (int id : {0, 1, 2, 5, 6, 7, 8, 9, 10, 14}) {
    unsigned char memory[16];
    std::memset(memory, 0x11, sizeof memory);
    manager.ScanFromXoString(static_cast<char>(id), memory, text, "%I64d", 1);
    unsigned const width = CurrentTypeTable[id]->MemLen;
    for (unsigned place = width; place < sizeof memory; ++place) EXPECT_EQ(memory[place], 0x11);
    if (width > 1) {
      for (unsigned place = 0; place < width; ++place) EXPECT_EQ(memory[place], 0xFF) << id;
    }
  }
  float values[2] = {0, 0.5F};
  text = "1.5";
  manager.ScanFromXoString(4, values, text, "%lf", 1);
  EXPECT_EQ(values[0], 1.5F);
  EXPECT_EQ(values[1], 0.5F);
}

TEST(NumberScanSlot, NoTargetGivesNull) {
  XoTypeMgr const manager;
  XoString text("1");
  for (int id : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 42, 43})
    EXPECT_EQ(manager.ScanFromXoString(static_cast<char>(id), nullptr, text, nullptr, 1), nullptr)
        << id;
}

TEST(NumberScanSlot, WideTextIsReadAsNarrow) {
  unsigned short const text[] = {'-', '1', '2', 0};
  EXPECT_EQ(ScanOne<o_4b>(2, XoString(text)), -12);
  EXPECT_EQ(ScanOne<o_double>(3, XoString(text)), -12);
  EXPECT_EQ(ScanOne<o_double>(3, XoString(text), "%g"), -12);
  EXPECT_EQ(ScanOne<o_char>(0, XoString(text)), '-');
}

TEST(ByteScan, ANumberBehindItsMarkOrACharacter) {
  EXPECT_EQ(ScanOne<o_char>(0, "0x41"), 65);
  EXPECT_EQ(ScanOne<o_char>(0, "0xff"), -1);
  EXPECT_EQ(ScanOne<o_u1b>(10, "0xff"), 255);
  EXPECT_EQ(ScanOne<o_char>(0, "0x1ff"), -1);
  EXPECT_EQ(ScanOne<o_char>(0, "0xg"), '0');
  EXPECT_EQ(ScanOne<o_char>(0, "A"), 'A');
  EXPECT_EQ(ScanOne<o_char>(0, " "), ' ');
  EXPECT_EQ(ScanOne<o_char>(0, "65", "%d"), 65);
  EXPECT_EQ(ScanOne<o_char>(0, "-1", "%d"), -1);
  EXPECT_EQ(ScanOne<o_char>(0, "", nullptr, 17), 17);
  EXPECT_EQ(ScanOne<o_char>(0, "x", "%d", 17), 17);
}

TEST(ByteScan, OnePlaceOfTheTextForEachElement) {
  XoTypeMgr const manager;
  XoString text("ab0x41");
  o_char bytes[8];
  std::memset(bytes, 17, sizeof bytes);
  EXPECT_EQ(manager.ScanFromXoString(0, bytes, text, nullptr, 8), bytes);
  EXPECT_EQ(std::string(bytes, bytes + 8), "abAx41\x11\x11");
  std::memset(bytes, 17, sizeof bytes);
  manager.ScanFromXoString(0, bytes, text, nullptr, 2);
  EXPECT_EQ(std::string(bytes, bytes + 3), "ab\x11");
  manager.ScanFromXoString(0, bytes, text, nullptr, 0);
  EXPECT_EQ(bytes[0], 'a');
}

// To read the rest of the text from each place would take minutes.
TEST(ByteScan, TakesTimeInProportionToTheText) {
  constexpr unsigned kLength = 65531;
  XoTypeMgr const manager;
  std::vector<o_char> bytes(kLength);
  auto const start = std::chrono::steady_clock::now();
  for (char const character : {'7', '0', ' ', 'a'}) {
    XoString text(std::string(kLength, character).c_str());
    for (char const* format :
         {"%c", " %c", "%d", "%o", "%x", "%*d%c", "%*s%c", "%*d %*s %c", "%*65000c%c", "%*c%d"}) {
      manager.ScanFromXoString(0, bytes.data(), text, format, kLength);
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
}

TEST(FloatingScan, NamesOfWhatIsNotFinite) {
  EXPECT_EQ(ScanOne<double>(3, "Infinity"), kInfinity);
  EXPECT_EQ(ScanOne<double>(3, "-infinity"), -kInfinity);
  double const nan = ScanOne<double>(3, "nan");
  EXPECT_TRUE(std::isnan(nan));
  EXPECT_TRUE(std::signbit(nan));
  EXPECT_TRUE(std::isnan(ScanOne<float>(4, "NaN")));
  EXPECT_EQ(ScanOne<double>(3, "abc", nullptr, 17.0), 0);
  EXPECT_EQ(ScanOne<double>(3, "", nullptr, 17.0), 0);
  EXPECT_EQ(ScanOne<double>(3, "1e999"), kInfinity);
  EXPECT_EQ(ScanOne<double>(3, "-1e999"), -kInfinity);
  EXPECT_EQ(ScanOne<double>(3, "1e-999"), 0);
  EXPECT_EQ(ScanOne<float>(4, "1e39"), std::numeric_limits<float>::infinity());
}

TEST(FloatingScan, FormatsReadTheElementsOwnType) {
  EXPECT_EQ(ScanOne<double>(3, "0.1", "%g"), 0.1);
  EXPECT_EQ(ScanOne<double>(3, "0.1", "%lf"), 0.1);
  EXPECT_EQ(ScanOne<float>(4, "0.1", "%f"), 0.1F);
  EXPECT_EQ(ScanOne<double>(3, "x=0.5;", "x=%lg;"), 0.5);
  EXPECT_EQ(ScanOne<double>(3, "0.5", "ldexp(", 17.0), 17.0);
  EXPECT_EQ(ScanOne<double>(3, "ldexp(0.5", "ldexp(", 17.0), 17.0);
  EXPECT_EQ(ScanOne<float>(4, "0.5", "ldexp(", 17.0F), 17.0F);
}

TEST(FloatingScan, AFloatOfTheExactFormatNarrowsFromADouble) {
  // Just above the middle between two floats: the double is that middle, which goes to the even
  // one.
  EXPECT_EQ(ScanOne<float>(4, "1.00000005960464477539062500001"), 1.0F);
  EXPECT_EQ(ScanOne<float>(4, "1.00000005960464477539062500001", "%g"),
            1 + std::numeric_limits<float>::epsilon());
}

template <class Row>
class TextRoundTrip : public RandomTest {};
TYPED_TEST_SUITE(TextRoundTrip, ScalarRows, ScalarName);

TYPED_TEST(TextRoundTrip, WhatIsPrintedScansBack) {
  using Value = typename TypeParam::Value;
  using Word = UnsignedOf<sizeof(Value)>;
  TypeDescriptor const& row = *CurrentTypeTable[int{TypeParam::kId}];
  XoString text;
  auto const check = [&](Word bits) {
    auto const value = std::bit_cast<Value>(bits);
    Value printed = value;
    Value read = std::bit_cast<Value>(static_cast<Word>(~bits));
    row.PrintToXoString(text, &printed, row.Format, 1);
    row.ScanFromXoString(&read, text, row.Format, 1);
    if constexpr (std::is_floating_point_v<Value>) {
      // One NaN stands for all of them.
      if (std::isnan(value)) {
        EXPECT_TRUE(std::isnan(read));
        return;
      }
    }
    EXPECT_EQ(std::bit_cast<Word>(read), bits) << +bits;
  };
  if constexpr (sizeof(Value) <= 2) {
    for (unsigned bits = 0; bits < 1u << (8 * sizeof(Value)); ++bits)
      check(static_cast<Word>(bits));
  } else {
    for (unsigned bit = 0; bit < 8 * sizeof(Value); ++bit) {
      Word const power = Word{1} << bit;
      for (Word const bits : {power, power - 1, power + 1, 0 - power, ~power})
        check(static_cast<Word>(bits));
    }
    for (int round = 0; round < 5'000; ++round)
      check(static_cast<Word>(this->Bits() >> this->Below(64)));
    for (int round = 0; round < 5'000; ++round) check(static_cast<Word>(this->Bits()));
  }
}

TEST(TextRoundTrip, EveryClassOfDouble) {
  using Limits = std::numeric_limits<double>;
  for (double const value : {0.0, Limits::denorm_min(), Limits::min() - Limits::denorm_min(),
                             Limits::min(), 1.0, Limits::max(), Limits::infinity()}) {
    for (double const number : {value, -value}) {
      double const read = ScanOne<double>(3, XoString(PrintOne(3, number).c_str()));
      EXPECT_EQ(std::bit_cast<o_u8b>(read), std::bit_cast<o_u8b>(number)) << number;
    }
  }
  double const nan = ScanOne<double>(3, XoString(PrintOne(3, Limits::quiet_NaN()).c_str()));
  EXPECT_EQ(std::bit_cast<o_u8b>(nan), 0xFFF8000000000000);
}

}  // namespace
}  // namespace xo::test
