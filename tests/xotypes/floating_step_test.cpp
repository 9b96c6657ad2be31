#include <cmath>
#include <limits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

template <class Row>
class FloatingStep : public RandomTest {
 protected:
  using Element = typename Row::Value;
  using Pattern = FloatBits<Element>;
  using Raw = typename Pattern::Word;
  using Range = std::numeric_limits<Element>;

  /// The next greater number of a type without subnormal numbers, or NaN where there is none.
  static Element Next(Element value) {
    constexpr Element kNone = Range::quiet_NaN();
    if (std::isnan(value) || value == Range::infinity() || value == Range::max()) return kNone;
    if (value == 0) return Range::min();
    Element const next = std::nextafter(value, Range::infinity());
    if (std::fabs(next) >= Range::min()) return next;
    // Among the subnormal numbers, or just above the last normal one below 0.
    return value > 0 ? Range::min() : Element{0};
  }

  void Check(Raw bits) {
    Element const value = Pattern::Value(bits);
    Element const expected = Next(value);
    for (NextValueCode code : {NextValueCode{'M'}, NextValueCode{'N'}}) {
      Raw words[3] = {7, bits, 9};
      int const result = row.GetValue(&words[1], 4, 8, code);
      if (std::isnan(expected)) {
        ASSERT_EQ(result, 2091) << std::hex << bits;
        ASSERT_EQ(words[1], bits) << std::hex << bits;
      } else {
        ASSERT_EQ(result, 0) << std::hex << bits;
        ASSERT_EQ(words[1], Pattern::Of(expected)) << std::hex << bits;
      }
      ASSERT_EQ(words[0], 7u);
      ASSERT_EQ(words[2], 9u);
    }
  }

  TypeDescriptor const& row = *CurrentTypeTable[int{Row::kId}];
};

TYPED_TEST_SUITE(FloatingStep, FloatingRows, ScalarName);

TYPED_TEST(FloatingStep, PowersOfTwoAndTheirNeighbours) {
  using Bit = FloatBits<typename TypeParam::Value>;
  using Word = typename FloatBits<typename TypeParam::Value>::Word;
  // Every exponent, also those of 0, subnormal numbers, infinities and NaNs.
  Word const one = Word{1} << Bit::kFractionBits;
  for (Word exponent = 0; exponent <= Bit::kExponent; exponent += one) {
    for (Word sign : {Word{0}, Word{Bit::kSign}}) {
      for (Word fraction : {Word{0}, Word{1}, Word{2}, Word{3}, Word{Bit::kQuiet - 1},
                            Word{Bit::kQuiet}, Word{Bit::kQuiet + 1}, Word{Bit::kFraction - 2},
                            Word{Bit::kFraction - 1}, Word{Bit::kFraction}}) {
        this->Check(sign | exponent | fraction);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

TYPED_TEST(FloatingStep, RandomPatterns) {
  using Word = typename FloatBits<typename TypeParam::Value>::Word;
  for (int round = 0; round < 1000000; ++round) {
    this->Check(static_cast<Word>(this->Bits()));
    if (this->HasFatalFailure()) return;
  }
}

TYPED_TEST(FloatingStep, ChainsOverTheBoundaries) {
  using Bit = FloatBits<typename TypeParam::Value>;
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  // From shortly below -MIN the steps lead through 0 to shortly above MIN.
  Value value = Bit::Value(Bit::Of(-Limits::min()) + 3);
  Value const expected[] = {Bit::Value(Bit::Of(-Limits::min()) + 2),
                            Bit::Value(Bit::Of(-Limits::min()) + 1),
                            -Limits::min(),
                            Value{0},
                            Limits::min(),
                            Bit::Value(Bit::Of(Limits::min()) + 1)};
  for (Value each : expected) {
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, 'M'), 0);
    EXPECT_EQ(Bit::Of(value), Bit::Of(each));
  }
}

TYPED_TEST(FloatingStep, NegativeInfinityMovesToTheLowestNumber) {
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  Value value = -Limits::infinity();
  EXPECT_EQ(this->row.GetValue(&value, 1, 8, 'M'), 0);
  EXPECT_EQ(value, -Limits::max());
}

TYPED_TEST(FloatingStep, WhatHasNoNextValueStaysToTheBit) {
  using Bit = FloatBits<typename TypeParam::Value>;
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  auto values = Bit::Nans();
  values.push_back(Limits::infinity());
  values.push_back(Limits::max());
  for (Value const& each : values) this->Check(Bit::Of(each));
}

TYPED_TEST(FloatingStep, NegativeZeroStepsToTheSmallestNormal) {
  using Value = typename TypeParam::Value;
  Value value = Value{-0.0f};
  EXPECT_EQ(this->row.GetValue(&value, 1, 8, 'N'), 0);
  EXPECT_EQ(value, std::numeric_limits<Value>::min());
}

TYPED_TEST(FloatingStep, OtherCodesAreNotSupported) {
  using Value = typename TypeParam::Value;
  for (int code = 0; code < 256; ++code) {
    if (code == 2 || code == 'M' || code == 'N') continue;
    Value value = 1.5f;
    EXPECT_EQ(this->row.GetValue(&value, 1, 8, static_cast<NextValueCode>(code)), -2999) << code;
    EXPECT_EQ(value, Value{1.5f});
  }
}

TYPED_TEST(FloatingStep, OtherFormatsAreNotSupported) {
  using Value = typename TypeParam::Value;
  for (int format = 0; format < 256; ++format) {
    if (format == 8) continue;
    for (int code : {2, int{'M'}, int{'N'}, int{'O'}}) {
      Value value = 1.5f;
      EXPECT_EQ(this->row.GetValue(&value, 1, static_cast<unsigned char>(format),
                                   static_cast<NextValueCode>(code)),
                -2999);
      EXPECT_EQ(value, Value{1.5f});
    }
  }
}

TEST(FloatingStepStated, Doubles) {
  XoTypeMgr const manager;
  auto const next = [&](double value) {
    EXPECT_EQ(manager.GetValue(3, &value, 1, 8, 'M'), 0);
    return value;
  };
  EXPECT_EQ(next(0.0), 2.2250738585072014e-308);
  EXPECT_EQ(next(-1e-310), 0.0);
  EXPECT_EQ(next(1e-310), 2.2250738585072014e-308);
  EXPECT_EQ(next(1.0), 1.0000000000000002);
  EXPECT_EQ(next(-1.0), -0.9999999999999999);
  EXPECT_EQ(next(-2.2250738585072014e-308), 0.0);
  double top = 1.7976931348623157e308;
  EXPECT_EQ(manager.GetValue(3, &top, 1, 8, 'M'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(top, 1.7976931348623157e308);
  double present = 1.0;
  EXPECT_EQ(manager.GetValue(3, &present, 1, 8, 'O'), ERR_TM_NOT_SUPPORTED);
}

TEST(FloatingStepStated, Floats) {
  XoTypeMgr const manager;
  auto const next = [&](float value) {
    EXPECT_EQ(manager.GetValue(4, &value, 1, 8, 'N'), 0);
    return value;
  };
  EXPECT_EQ(next(0.0f), 1.17549435e-38f);
  EXPECT_EQ(next(-1e-40f), 0.0f);
  EXPECT_EQ(next(1.0f), 1.00000012f);
  EXPECT_EQ(next(-1.0f), -0.99999994f);
  EXPECT_EQ(next(16777216.0f), 16777218.0f);
  EXPECT_EQ(next(-16777216.0f), -16777215.0f);
}

TEST(FloatingStepStated, LowestIsANegativeQuietNan) {
  std::uint64_t wide = 0x3FF0000000000000u;
  EXPECT_EQ(CurrentTypeTable[3]->GetValue(&wide, 1, 8, 2), 0);
  EXPECT_EQ(wide, 0xFFF8000000000000u);
  std::uint32_t narrow = 0x3F800000u;
  EXPECT_EQ(CurrentTypeTable[4]->GetValue(&narrow, 1, 8, 2), 0);
  EXPECT_EQ(narrow, 0xFFC00000u);
}

}  // namespace
}  // namespace xo::test
