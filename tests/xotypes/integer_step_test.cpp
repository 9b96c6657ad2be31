#include <limits>
#include <set>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

constexpr NextValueCode kLowest = 2;

template <class Row>
class IntegerStep : public RandomTest {
 protected:
  using Element = typename Row::Value;

  /// Checks all codes on one value; the elements beside it must stay.
  void Check(Element value) {
    constexpr Element kTop = std::numeric_limits<Element>::max();
    for (NextValueCode code : {NextValueCode{'M'}, NextValueCode{'N'}}) {
      Element values[3] = {11, value, 22};
      int const result = row.GetValue(&values[1], 5, 8, code);
      if (value == kTop) {
        ASSERT_EQ(result, 2091);
        ASSERT_EQ(values[1], kTop);
      } else {
        ASSERT_EQ(result, 0);
        ASSERT_GT(values[1], value);
        ASSERT_EQ(static_cast<Element>(values[1] - 1), value);
      }
      ASSERT_EQ(values[0], 11);
      ASSERT_EQ(values[2], 22);
    }
    Element same = value;
    ASSERT_EQ(row.GetValue(&same, 0, 8, 'O'), 0);
    ASSERT_EQ(same, value);
    ASSERT_EQ(row.GetValue(&same, 0, 8, kLowest), 0);
    ASSERT_EQ(same, std::numeric_limits<Element>::min());
  }

  TypeDescriptor const& row = *CurrentTypeTable[int{Row::kId}];
};

TYPED_TEST_SUITE(IntegerStep, CountingRows, ScalarName);

TYPED_TEST(IntegerStep, AllValuesOrManyOfThem) {
  using Value = typename TypeParam::Value;
  if constexpr (sizeof(Value) <= 2) {
    for (long value = std::numeric_limits<Value>::min(); value <= std::numeric_limits<Value>::max();
         ++value) {
      this->Check(static_cast<Value>(value));
      if (this->HasFatalFailure()) return;
    }
  } else {
    std::set<Value> values;
    for (int bit = 0; bit < std::numeric_limits<Value>::digits; ++bit) {
      Value const power = static_cast<Value>(Value{1} << bit);
      for (Value each : {power, static_cast<Value>(power - 1), static_cast<Value>(power + 1)}) {
        values.insert(each);
        values.insert(static_cast<Value>(Value{0} - each));
        values.insert(static_cast<Value>(std::numeric_limits<Value>::max() - each));
      }
    }
    values.insert({std::numeric_limits<Value>::min(), std::numeric_limits<Value>::max(), Value{0}});
    for (int round = 0; round < 100000; ++round) values.insert(static_cast<Value>(this->Bits()));
    for (Value value : values) {
      this->Check(value);
      if (this->HasFatalFailure()) return;
    }
  }
}

TYPED_TEST(IntegerStep, OtherCodesAreNotSupported) {
  using Value = typename TypeParam::Value;
  for (int code = 0; code < 256; ++code) {
    if (code == kLowest || code == 'M' || code == 'N' || code == 'O') continue;
    Value value = 42;
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, static_cast<NextValueCode>(code)), -2999) << code;
    EXPECT_EQ(value, 42);
  }
}

TYPED_TEST(IntegerStep, OtherFormatsAreNotSupported) {
  using Value = typename TypeParam::Value;
  for (int format = 0; format < 256; ++format) {
    if (format == 8) continue;
    for (NextValueCode code :
         {kLowest, NextValueCode{'M'}, NextValueCode{'N'}, NextValueCode{'O'}}) {
      Value value = 42;
      EXPECT_EQ(this->row.GetValue(&value, 1, static_cast<unsigned char>(format), code), -2999);
      EXPECT_EQ(value, 42);
    }
  }
}

TYPED_TEST(IntegerStep, GoesThroughTheManagerInMemoryForm) {
  using Value = typename TypeParam::Value;
  XoTypeMgr const manager;
  Value value = 41;
  EXPECT_EQ(manager.GetValue(TypeParam::kId, &value, 1, 8, 'M'), 0);
  EXPECT_EQ(value, 42);
  EXPECT_EQ(manager.GetValue(TypeParam::kId, &value, 1, 8, 'O'), 0);
  EXPECT_EQ(value, 42);
  EXPECT_EQ(manager.GetValue(TypeParam::kId, &value, 1, 8, kLowest), -2999);
  EXPECT_EQ(value, 42);
}

TEST(IntegerStepStated, BytesAndShorts) {
  XoTypeMgr const manager;
  o_char signedByte = 127;
  EXPECT_EQ(manager.GetValue(0, &signedByte, 1, 8, 'M'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(signedByte, 127);
  o_u1b unsignedByte = 127;
  EXPECT_EQ(manager.GetValue(10, &unsignedByte, 1, 8, 'M'), 0);
  EXPECT_EQ(unsignedByte, 128);
  o_2b signedShort = -1;
  EXPECT_EQ(manager.GetValue(1, &signedShort, 1, 8, 'N'), 0);
  EXPECT_EQ(signedShort, 0);
}

TEST(IntegerStepStated, LowestValues) {
  auto const lowest = [](int id, auto value) {
    EXPECT_EQ(CurrentTypeTable[id]->GetValue(&value, 1, 8, kLowest), 0);
    return value;
  };
  EXPECT_EQ(lowest(0, o_char{5}), -128);
  EXPECT_EQ(lowest(10, o_u1b{5}), 0);
  EXPECT_EQ(lowest(1, o_2b{5}), -32768);
  EXPECT_EQ(lowest(5, o_u2b{5}), 0);
  EXPECT_EQ(lowest(2, o_4b{5}), -2147483648LL);
  EXPECT_EQ(lowest(6, o_u4b{5}), 0u);
  EXPECT_EQ(lowest(14, BlockId{5}), 0u);
  EXPECT_EQ(lowest(7, 5), -2147483648LL);
  EXPECT_EQ(lowest(8, 5u), 0u);
  EXPECT_EQ(lowest(42, o_8b{5}), -9223372036854775807LL - 1);
  EXPECT_EQ(lowest(43, o_u8b{5}), 0u);
}

TEST(EnumStep, IsNeverSupported) {
  XoTypeMgr const manager;
  for (int code = 0; code < 256; ++code) {
    for (int format = 0; format < 256; ++format) {
      int value = 3;
      auto const formatByte = static_cast<unsigned char>(format);
      ASSERT_EQ(
          CurrentTypeTable[9]->GetValue(&value, 1, formatByte, static_cast<NextValueCode>(code)),
          ERR_TM_NOT_SUPPORTED);
      ASSERT_EQ(value, 3);
    }
    int value = 3;
    ASSERT_EQ(manager.GetValue(9, &value, 1, 8, static_cast<NextValueCode>(code)),
              ERR_TM_NOT_SUPPORTED);
    ASSERT_EQ(value, 3);
  }
}

}  // namespace
}  // namespace xo::test
