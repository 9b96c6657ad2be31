#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

XoBoolean OfByte(int byte) {
  XoBoolean value;
  value.value = static_cast<signed char>(byte);
  return value;
}

TEST(Boolean, HoldsTheTruthOfANumber) {
  EXPECT_EQ(XoBoolean().value, 0);
  EXPECT_EQ(XoBoolean(5).value, 1);
  EXPECT_EQ(XoBoolean(0).value, 0);
  XoBoolean value;
  value = -3;
  EXPECT_EQ(value.value, 1);
  value = 0;
  EXPECT_EQ(value.value, 0);
  // Another's byte comes along as it is.
  value = OfByte(2);
  EXPECT_EQ(value.value, 2);
  EXPECT_EQ(XoBoolean(OfByte(200)).value, static_cast<signed char>(200));
  EXPECT_EQ(sizeof value, 1u);
}

TEST(Boolean, NullIsTheByte255) {
  XoBoolean value(1);
  EXPECT_EQ(value.IsNullValue(), 0);
  EXPECT_EQ(value.SetNullValue(), 0);
  EXPECT_NE(value.IsNullValue(), 0);
  unsigned char byte = 0;
  std::memcpy(&byte, &value, 1);
  EXPECT_EQ(byte, 255);
}

TEST(Boolean, EveryPairOfBytes) {
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      XoBoolean const x = OfByte(a);
      XoBoolean const y = OfByte(b);
      bool const equal = a == 255 || b == 255 ? a == b : (a != 0) == (b != 0);
      int const signedA = a < 128 ? a : a - 256;
      int const signedB = b < 128 ? b : b - 256;
      // Null comes before all, whatever its number.
      int const orderA = a == 255 ? -1000 : signedA;
      int const orderB = b == 255 ? -1000 : signedB;
      EXPECT_EQ((x == y) != 0, equal) << a << ' ' << b;
      EXPECT_EQ((x < y) != 0, orderA < orderB) << a << ' ' << b;
      EXPECT_EQ((x > y) != 0, orderA > orderB) << a << ' ' << b;
    }
  }
}

TEST(Boolean, NumbersStandForTheirTruth) {
  XoBoolean const isTrue(1), isFalse(0);
  XoBoolean null;
  null.SetNullValue();
  EXPECT_NE(isTrue == 5, 0);
  EXPECT_NE(OfByte(2) == 1, 0);
  EXPECT_EQ(isTrue == 0, 0);
  EXPECT_NE(isFalse < 255, 0);
  EXPECT_NE(isTrue > 0, 0);
  EXPECT_EQ(isTrue > 1, 0);
  for (int number : {0, 1, 255, -1}) {
    EXPECT_EQ(null == number, 0) << number;
    EXPECT_NE(null < number, 0) << number;
    EXPECT_EQ(null > number, 0) << number;
  }
}

template <class Class>
class NullClasses : public testing::Test {};
using Classes = testing::Types<XoNull_char, XoNull_uchar, XoNull_short, XoNull_ushort, XoNull_int,
                               XoNull_unsigned, XoNull_long, XoNull_ulong, XoNull_float,
                               XoNull_double, XoNull_XoInt64, XoNull_8b, XoNull_u8b>;
TYPED_TEST_SUITE(NullClasses, Classes);

TYPED_TEST(NullClasses, AreNullUntilTheyHoldANumber) {
  using Value = typename TypeParam::Plain;
  TypeParam value;
  EXPECT_EQ(value.IsNullValue(), 1);
  EXPECT_TRUE(Value(value) == Value(0));
  value = Value(5);
  EXPECT_EQ(value.IsNullValue(), 0);
  EXPECT_TRUE(value.value == Value(5));
  EXPECT_EQ(value.SetNullValue(), 0);
  EXPECT_EQ(value.IsNullValue(), 1);
  EXPECT_TRUE(value.value == Value(0));
}

TYPED_TEST(NullClasses, HoldTheNullByteRightBehindTheNumber) {
  TypeParam const value(typename TypeParam::Plain(1));
  auto const* first = static_cast<void const*>(&value);
  auto const* null = static_cast<void const*>(&value.isNull);
  EXPECT_EQ(static_cast<unsigned char const*>(null) - static_cast<unsigned char const*>(first),
            static_cast<std::ptrdiff_t>(sizeof value.value));
  EXPECT_EQ(sizeof value, CurrentTypeTable[TypeParam::kTypeId]->MemLen);
}

TEST(NullRelations, NullComesFirst) {
  EXPECT_EQ(XoNullRelation(true, true), 0);
  EXPECT_EQ(XoNullRelation(true, false), 1);
  EXPECT_EQ(XoNullRelation(false, true), 2);
  EXPECT_EQ(XoNullRelation(false, false), 3);
  EXPECT_EQ(XoNullOrder(kBothNull), 0);
  EXPECT_EQ(XoNullOrder(kOnlyFirstNull), -1);
  EXPECT_EQ(XoNullOrder(kOnlySecondNull), 1);
}

std::vector<std::string> reports;

TEST(NullRelations, OrderWithoutANullIsAFault) {
  XoPlatform hooks{};
  hooks.assertFailed = [](char const* expression, char const* file, int) {
    reports.push_back(std::string(expression) + "|" + file);
    return 0;
  };
  XoPlatform const previous = XoExchangePlatform(hooks);
  int const order = XoNullOrder(kNeitherNull);
  XoExchangePlatform(previous);
  EXPECT_EQ(order, -2);
  EXPECT_EQ(reports, std::vector<std::string>{"nr != unknown|inc\\_xonulty"});
}

TEST(ConvertData, CarriesWhatItIsMadeOf) {
  XoString strings[2] = {XoString("a"), XoString("b")};
  XoTypeMgr manager;
  XoTypeConvertData* const carrier = XoTypeConvertData::Make(XoSTRING_T, 2, strings, nullptr);
  EXPECT_EQ(carrier->manager, nullptr);
  EXPECT_EQ(carrier->data, strings);
  EXPECT_EQ(carrier->count, 2u);
  EXPECT_EQ(carrier->type, XoSTRING_T);
  EXPECT_EQ(carrier->GetString(0), &strings[0]);
  EXPECT_EQ(carrier->GetString(1), &strings[1]);
  EXPECT_EQ(carrier->GetString(2), nullptr);
  EXPECT_EQ(carrier->GetString(-1), nullptr);
  carrier->type = Xo4B_T;
  EXPECT_EQ(carrier->GetString(0), nullptr);
  carrier->type = XoSTRING_T;
  carrier->data = nullptr;
  EXPECT_EQ(carrier->GetString(0), nullptr);
  EXPECT_EQ(carrier->GetString(1), nullptr);
  delete carrier;
}

TEST(ConvertData, ACountAboveTheGreatestIndexHasNoStrings) {
  XoString string("a");
  XoTypeConvertData carrier;
  carrier.type = XoSTRING_T;
  carrier.data = &string;
  carrier.count = 0x80000000u;
  EXPECT_EQ(carrier.GetString(0), nullptr);
}

/// Ends a carrier in place and looks at what is left.
template <class Look>
void EndCarrier(XoTypeMgr* owner, char type, void* data, unsigned count, Look look) {
  alignas(XoTypeConvertData) unsigned char memory[sizeof(XoTypeConvertData)];
  auto* const carrier = ::new (memory) XoTypeConvertData;
  carrier->manager = owner;
  carrier->type = type;
  carrier->data = data;
  carrier->count = count;
  carrier->~XoTypeConvertData();
  void* leftData = nullptr;
  unsigned leftCount = 0;
  char leftType = 0;
  std::memcpy(&leftData, memory + offsetof(XoTypeConvertData, data), sizeof leftData);
  std::memcpy(&leftCount, memory + offsetof(XoTypeConvertData, count), sizeof leftCount);
  std::memcpy(&leftType, memory + offsetof(XoTypeConvertData, type), sizeof leftType);
  EXPECT_EQ(leftCount, 0u);
  EXPECT_EQ(leftType, XoRES_T);
  look(leftData);
}

TEST(ConvertData, WithoutAnOwnerTheArrayStays) {
  int values[2] = {1, 2};
  EndCarrier(nullptr, Xo4B_T, values, 2, [&](void* left) { EXPECT_EQ(left, values); });
  EXPECT_EQ(values[1], 2);
}

TEST(ConvertData, AnOwnerFreesTheArray) {
  XoTypeMgr manager;
  void* const values = manager.Create(Xo4B_T, 2);
  EndCarrier(&manager, Xo4B_T, values, 2, [](void* left) { EXPECT_EQ(left, nullptr); });
  EndCarrier(&manager, Xo4B_T, nullptr, 2, [](void* left) { EXPECT_EQ(left, nullptr); });
  // An array of none is there all the same.
  void* const none = manager.Create(XoSTRING_T, 0);
  EndCarrier(&manager, XoSTRING_T, none, 0, [](void* left) { EXPECT_EQ(left, nullptr); });
}

}  // namespace
}  // namespace xo::test
