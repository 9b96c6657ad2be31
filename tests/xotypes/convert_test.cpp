#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "base/bytes.hpp"
#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"
#include "tests/xotypes/text_support.hpp"

namespace xo::test {
namespace {

using Texts = std::vector<std::string>;

TEST(ConvertTo, NumbersInDecimal) {
  EXPECT_EQ(ToText<o_char>(0, 'A'), "65");
  EXPECT_EQ(ToText<o_char>(0, -128), "-128");
  EXPECT_EQ(ToText<o_u1b>(10, 255), "255");
  EXPECT_EQ(ToText<o_2b>(1, -32768), "-32768");
  EXPECT_EQ(ToText<o_u2b>(5, 65), "65");
  EXPECT_EQ(ToText<o_u2b>(5, 65535), "65535");
  EXPECT_EQ(ToText<o_4b>(2, -1), "-1");
  EXPECT_EQ(ToText<o_u4b>(6, 4294967295), "4294967295");
  EXPECT_EQ(ToText<BlockId>(14, 4294967295), "4294967295");
  EXPECT_EQ(ToText<int>(7, -1), "-1");
  EXPECT_EQ(ToText<unsigned>(8, 4294967295), "4294967295");
  EXPECT_EQ(ToText<int>(9, -1), "-1");
  EXPECT_EQ(ToText<o_8b>(42, std::numeric_limits<o_8b>::min()), "-9223372036854775808");
  EXPECT_EQ(ToText<o_u8b>(43, std::numeric_limits<o_u8b>::max()), "18446744073709551615");
  EXPECT_EQ(ToText<o_double>(3, 0.1), "0.10000000000000001");
  EXPECT_EQ(ToText<o_float>(4, 0.1F), "0.10000000149011612");
  EXPECT_EQ(ToText<o_double>(3, -std::numeric_limits<double>::infinity()), "-Infinity");
}

TEST(ConvertTo, ArraysElementByElement) {
  o_4b values[] = {1, -2, 3};
  EXPECT_EQ(ToTexts(2, values, 3), (Texts{"1", "-2", "3"}));
  EXPECT_EQ(ToTexts(2, values, 0), Texts{});
  o_u2b words[] = {1, 40000};
  EXPECT_EQ(ToTexts(5, words, 2), (Texts{"1", "40000"}));
}

TEST(ConvertTo, RowsWithoutItGiveNull) {
  XoTypeMgr manager;
  int value = 0;
  EXPECT_EQ(manager.ConvertTo(XoRES_T, &value, 1), nullptr);
  EXPECT_EQ(manager.ConvertFrom(XoRES_T, nullptr, 1), nullptr);
}

TEST(ConvertFrom, ThePrefixChoosesTheBase) {
  EXPECT_EQ(FromText<o_char>(0, "0x10"), 16);
  EXPECT_EQ(FromText<o_2b>(1, "010"), 8);
  EXPECT_EQ(FromText<o_u2b>(5, "0xFFFF"), 65535);
  EXPECT_EQ(FromText<o_4b>(2, "-0x10"), -16);
  EXPECT_EQ(FromText<o_8b>(42, "0x7fffffffffffffff"), std::numeric_limits<o_8b>::max());
}

TEST(ConvertFrom, IntegersAreCutToTheirWidth) {
  EXPECT_EQ(FromText<o_char>(0, "300"), 44);
  EXPECT_EQ(FromText<o_u1b>(10, "-1"), 255);
  EXPECT_EQ(FromText<o_2b>(1, "65537"), 1);
  EXPECT_EQ(FromText<o_u2b>(5, "65537"), 1);
  EXPECT_EQ(FromText<o_u2b>(5, "-1"), 65535);
  EXPECT_EQ(FromText<o_4b>(2, "99999999999"), 2147483647);
  EXPECT_EQ(FromText<o_8b>(42, "99999999999999999999"), std::numeric_limits<o_8b>::max());
}

TEST(ConvertFrom, UnsignedOf32BitsReadAsFloatingPoint) {
  for (int id : {6, 8, 14}) {
    EXPECT_EQ(FromText<o_u4b>(id, "3.7"), 3u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "4294967295"), 4294967295u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "4294967297"), 1u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "-1"), 4294967295u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "010"), 10u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "0x10"), 16u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "1e3"), 1000u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "1e300"), 0u) << id;
    EXPECT_EQ(FromText<o_u4b>(id, "NaN"), 0u) << id;
  }
}

TEST(ConvertFrom, UnsignedOf64BitsReadAsSigned) {
  EXPECT_EQ(FromText<o_u8b>(43, "-1"), std::numeric_limits<o_u8b>::max());
  EXPECT_EQ(FromText<o_u8b>(43, "18446744073709551615"), o_u8b{0x7FFFFFFFFFFFFFFF});
}

TEST(ConvertFrom, FloatingPoint) {
  EXPECT_EQ(FromText<o_double>(3, "-1.5e3x"), -1500);
  EXPECT_EQ(FromText<o_float>(4, "0.1"), 0.1F);
  EXPECT_EQ(FromText<o_float>(4, "1e300"), std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isnan(FromText<o_double>(3, "NaN")));
}

TEST(ConvertFrom, WhatIsMissingOrNullIsZero) {
  EXPECT_EQ((FromTexts<int>(7, {"1", "2"}, 4)), (std::vector<int>{1, 2, 0, 0}));
  EXPECT_EQ((FromTexts<int>(7, {"1", NullString(), "", "abc"}, 4)), (std::vector<int>{1, 0, 0, 0}));
  for (int id : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 14, 42, 43}) {
    XoTypeMgr manager;
    void* const values = manager.ConvertFrom(static_cast<char>(id), nullptr, 3);
    unsigned char const zeros[24] = {};
    EXPECT_EQ(std::memcmp(values, zeros, 3u * CurrentTypeTable[id]->MemLen), 0) << id;
    manager.Delete(static_cast<char>(id), values, 3);
  }
}

TEST(ConvertFrom, ACarrierOfOtherValuesHasNoStrings) {
  XoTypeMgr manager;
  o_4b numbers[] = {5, 6};
  XoTypeConvertData* const carrier = XoTypeConvertData::Make(Xo4B_T, 2, numbers, nullptr);
  void* const values = manager.ConvertFrom(2, carrier, 2);
  EXPECT_EQ(static_cast<o_4b*>(values)[0], 0);
  EXPECT_EQ(static_cast<o_4b*>(values)[1], 0);
  manager.Delete(2, values, 2);
  EXPECT_EQ(carrier->manager, &manager);
  carrier->manager = nullptr;
  delete carrier;
}

TEST(ConvertFunctions, StandUnderTheirOwnNames) {
  // One by one: of a long constant list MinGW takes the addresses of its own jumps into the
  // library.
  auto const expect = [](int id, XoConvertTo* to, XoConvertFrom* from) {
    EXPECT_EQ(CurrentTypeTable[id]->ConvertTo, to) << id;
    EXPECT_EQ(CurrentTypeTable[id]->ConvertFrom, from) << id;
  };
  expect(0, CharConvertToXoString, CharConvertFromXoString);
  expect(1, ShortConvertToXoString, ShortConvertFromXoString);
  expect(2, LongConvertToXoString, LongConvertFromXoString);
  expect(3, DoubleConvertToXoString, DoubleConvertFromXoString);
  expect(4, FloatConvertToXoString, FloatConvertFromXoString);
  expect(5, WordConvertToXoString, WordConvertFromXoString);
  expect(6, DwordConvertToXoString, DwordConvertFromXoString);
  expect(7, IntConvertToXoString, IntConvertFromXoString);
  expect(8, UnsignedConvertToXoString, UnsignedConvertFromXoString);
  expect(9, IntConvertToXoString, IntConvertFromXoString);
  expect(10, O_U1BConvertToXoString, O_U1BConvertFromXoString);
  expect(14, DwordConvertToXoString, DwordConvertFromXoString);
  expect(42, O_8BConvertToXoString, O_8BConvertFromXoString);
  expect(43, O_U8BConvertToXoString, O_U8BConvertFromXoString);
}

template <class Row>
class ConvertRoundTrip : public RandomTest {};
TYPED_TEST_SUITE(ConvertRoundTrip, ScalarRows, ScalarName);

TYPED_TEST(ConvertRoundTrip, ValuesComeBackFromTheirTexts) {
  using Value = typename TypeParam::Value;
  using Word = UnsignedOf<sizeof(Value)>;
  std::vector<Value> values;
  for (unsigned index = 0; index < 500; ++index) {
    auto value = std::bit_cast<Value>(static_cast<Word>(this->Bits()));
    if constexpr (std::is_floating_point_v<Value>) {
      if (std::isnan(value)) value = 0;
    }
    // Above the greatest signed number text does not reach.
    if constexpr (std::is_same_v<Value, o_u8b>) value /= 2;
    values.push_back(value);
  }
  auto const texts = ToTexts(TypeParam::kId, values.data(), 500);
  std::vector<XoString> strings;
  for (auto const& text : texts) strings.emplace_back(text.c_str());
  EXPECT_EQ(FromTexts<Value>(TypeParam::kId, strings, 500), values);
}

TYPED_TEST(ConvertRoundTrip, DefaultsAreZero) {
  using Value = typename TypeParam::Value;
  XoTypeMgr manager;
  for (int asNull : {0, 1}) {
    void* const values = manager.DefaultValue(TypeParam::kId, 2, asNull);
    EXPECT_EQ(static_cast<Value*>(values)[0], Value(0));
    EXPECT_EQ(static_cast<Value*>(values)[1], Value(0));
    manager.Delete(TypeParam::kId, values, 2);
  }
}

TYPED_TEST(ConvertRoundTrip, NullIsZero) {
  XoTypeMgr manager;
  typename TypeParam::Value value = 17;
  EXPECT_EQ(manager.SetNullValue(TypeParam::kId, &value), 0);
  EXPECT_EQ(value, 0);
}

}  // namespace
}  // namespace xo::test
