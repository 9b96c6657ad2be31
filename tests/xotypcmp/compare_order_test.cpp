#include <limits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/compare_oracle.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kForms[] = {8, 1, 2, 0x81, 0x82, 0x88};

/// Compares one element of each in every form, and expects exactly this answer.
template <class T>
void ExpectOrder(int id, T a, T b, int expected) {
  XoTypeMgr const manager;
  for (unsigned char format : kForms) {
    auto first = Encode<T>({a}, format), second = Encode<T>({b}, format);
    int status = 4711;
    EXPECT_EQ(
        manager.Cmp(static_cast<char>(id), 0, first.data(), 0, second.data(), 0, 1, format, status),
        expected)
        << +format;
    EXPECT_EQ(status, 0);
  }
}

template <class Row>
class ScalarOrder : public testing::Test {};

TYPED_TEST_SUITE(ScalarOrder, ScalarRows, ScalarName);

TYPED_TEST(ScalarOrder, ValuesWrittenInTheirOrderCompareSo) {
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  std::vector<Value> ascending;
  if constexpr (std::is_floating_point_v<Value>) {
    ascending = {-Limits::infinity(),  -Limits::max(),        Value{-1},
                 -Limits::min(),       -Limits::denorm_min(), Value{0},
                 Limits::denorm_min(), Limits::min(),         Value{1},
                 Limits::max(),        Limits::infinity()};
  } else {
    if constexpr (std::is_signed_v<Value>) {
      ascending = {Limits::min(), static_cast<Value>(Limits::min() + 1), Value{-2}, Value{-1}};
    }
    for (Value value : {Value{0}, Value{1}, Value{2}, static_cast<Value>(Limits::max() / 2),
                        static_cast<Value>(Limits::max() / 2 + 1),
                        static_cast<Value>(Limits::max() - 1), Limits::max()})
      ascending.push_back(value);
  }
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      SCOPED_TRACE(testing::Message() << i << " against " << j);
      ExpectOrder(int{TypeParam::kId}, ascending[i], ascending[j], i < j ? -1 : i > j ? 1 : 0);
    }
  }
}

template <class Row>
class IntegerOrder : public RandomTest {};

TYPED_TEST_SUITE(IntegerOrder, IntegerRows, ScalarName);

TYPED_TEST(IntegerOrder, EqualsThePlainOrderOfNumbers) {
  using Value = typename TypeParam::Value;
  if constexpr (sizeof(Value) == 1) {
    // All pairs.
    for (int a = std::numeric_limits<Value>::min(); a <= std::numeric_limits<Value>::max(); ++a) {
      for (int b = std::numeric_limits<Value>::min(); b <= std::numeric_limits<Value>::max(); ++b) {
        Value first = static_cast<Value>(a), second = static_cast<Value>(b);
        ASSERT_EQ(XoTypeMgr().Cmp(TypeParam::kId, &first, &second, 0, 1, 8), a < b   ? -1
                                                                             : a > b ? 1
                                                                                     : 0);
      }
    }
  } else {
    for (int round = 0; round < 3000; ++round) {
      auto const a = static_cast<Value>(this->Bits() >> this->Below(64));
      auto const b = this->OneIn(4) ? static_cast<Value>(a + 1)
                                    : static_cast<Value>(this->Bits() >> this->Below(64));
      ExpectOrder(int{TypeParam::kId}, a, b, a < b ? -1 : a > b ? 1 : 0);
      if (this->HasFailure()) return;
    }
  }
}

template <class Row>
class FloatingOrder : public RandomTest {
 protected:
  using Element = typename Row::Value;
  using Pattern = FloatBits<Element>;
  using Raw = typename Pattern::Word;
  using Range = std::numeric_limits<Element>;

  /// A value of any kind, the rare kinds as often as the others.
  Element AnyValue() {
    static std::vector<Element> const nans = Pattern::Nans();
    switch (Below(6)) {
      case 0:
        return nans[Below(static_cast<unsigned>(nans.size()))];
      case 1:
        return OneIn(2) ? Range::infinity() : -Range::infinity();
      case 2:
        return OneIn(2) ? Element{0} : -Element{0};
      case 3:
        return Pattern::Value(static_cast<Raw>(Bits()) & (Pattern::kSign | Pattern::kFraction));
      default:
        return Pattern::Value(static_cast<Raw>(Bits()));
    }
  }

  /// An equal value, for zeroes and nearly always for NaNs of other bits.
  Element EqualValue(Element value) {
    static std::vector<Element> const nans = Pattern::Nans();
    if (FloatRank(value) == -2) return nans[Below(static_cast<unsigned>(nans.size()))];
    return value == 0 ? -value : value;
  }

  /// Compares whole arrays in every form.
  void CheckArrays(std::vector<Element> const& first, std::vector<Element> const& second) {
    auto const count = static_cast<unsigned>(first.size());
    for (unsigned char format : kForms) {
      PlacedBytes const a(Encode(first, format), Below(4));
      PlacedBytes const b(Encode(second, format), Below(4));
      int status = 4711;
      int const result = compare(format, 0, a.Data(), 0, b.Data(), 0, count, status);
      ASSERT_EQ((CompareAnswer{result, status}),
                CompareByTheBook<Element>(format, 0, a.Data(), 0, b.Data(), count))
          << "format " << +format << " count " << count;
    }
  }

 private:
  XCompare* compare = XoTypeMgr().CmpFuncPtrGet(Row::kId);
};

TYPED_TEST_SUITE(FloatingOrder, FloatingRows, ScalarName);

TYPED_TEST(FloatingOrder, NansAreEqualAndBelowEverything) {
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  auto const nans = FloatBits<Value>::Nans();
  for (Value const& a : nans) {
    for (Value const& b : nans) ExpectOrder(int{TypeParam::kId}, a, b, 0);
    for (Value b : {-Limits::infinity(), -Limits::max(), -Limits::denorm_min(), -Value{0}, Value{0},
                    Limits::denorm_min(), Value{1}, Limits::max(), Limits::infinity()}) {
      ExpectOrder(int{TypeParam::kId}, a, b, -1);
      ExpectOrder(int{TypeParam::kId}, b, a, 1);
    }
  }
}

TYPED_TEST(FloatingOrder, ZeroesAreEqual) {
  using Value = typename TypeParam::Value;
  using Limits = std::numeric_limits<Value>;
  ExpectOrder(int{TypeParam::kId}, -Value{0}, Value{0}, 0);
  ExpectOrder(int{TypeParam::kId}, Value{0}, -Value{0}, 0);
  ExpectOrder(int{TypeParam::kId}, -Limits::denorm_min(), -Value{0}, -1);
  ExpectOrder(int{TypeParam::kId}, -Value{0}, Limits::denorm_min(), -1);
}

TYPED_TEST(FloatingOrder, IsATotalOrderOfAllPatterns) {
  using Value = typename TypeParam::Value;
  XoTypeMgr const manager;
  for (int round = 0; round < 50000; ++round) {
    Value values[3] = {this->AnyValue(), this->AnyValue(), this->AnyValue()};
    int order[3][3];
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) {
        order[i][j] = manager.Cmp(TypeParam::kId, &values[i], &values[j], 0, 1, 8);
        ASSERT_EQ(order[i][j], Order(values[i], values[j]));
      }
    }
    for (int i = 0; i < 3; ++i) {
      ASSERT_EQ(order[i][i], 0);
      for (int j = 0; j < 3; ++j) {
        ASSERT_EQ(order[i][j], -order[j][i]);
        int const k = 3 - i - j;
        if (i != j && order[i][j] <= 0 && order[j][k] <= 0) {
          ASSERT_LE(order[i][k], 0);
        }
      }
    }
  }
}

// Arrays that are equal in order but not in bytes must be walked to their end.
TYPED_TEST(FloatingOrder, ArraysOfEqualNumbersWithOtherBits) {
  using Value = typename TypeParam::Value;
  for (int round = 0; round < 1000; ++round) {
    unsigned const count = 1 + (this->OneIn(20) ? this->Below(2000) : this->Below(40));
    std::vector<Value> first(count), second(count);
    for (unsigned i = 0; i < count; ++i) {
      first[i] = this->AnyValue();
      second[i] = this->EqualValue(first[i]);
    }
    if (this->OneIn(2)) second[this->Below(count)] = this->AnyValue();
    this->CheckArrays(first, second);
    if (this->HasFatalFailure()) return;
  }
}

TYPED_TEST(FloatingOrder, EqualNumbersOfOtherBitsDoNotDecideBeforeTheFirstDifference) {
  using Value = typename TypeParam::Value;
  constexpr unsigned kStep = sizeof(Value);
  Value const zero{0}, nan = FloatBits<Value>::Nans().front();
  for (unsigned border : kBlockBorders) {
    for (unsigned place = border / kStep - 2; place <= border / kStep + 2; ++place) {
      // Equal numbers of other bits stand at the start, right before the difference, half way
      // to it, or everywhere.
      std::vector<std::vector<unsigned>> patterns = {{0}, {place - 1}, {place / 2}, {}};
      for (unsigned i = 0; i < place; ++i) patterns.back().push_back(i);
      for (auto const& pattern : patterns) {
        std::vector<Value> first(1100), second;
        for (Value& value : first) value = this->AnyValue();
        second = first;
        for (unsigned i : pattern) {
          first[i] = i % 2 != 0 ? zero : nan;
          second[i] = this->EqualValue(first[i]);
        }
        first[place] = Value{1};
        second[place] = Value{2};
        this->CheckArrays(first, second);
        this->CheckArrays(second, first);
        if (this->HasFatalFailure()) return;
      }
    }
  }
}

struct Stated {
  std::vector<o_4b> first, second;
  unsigned length1, length2, count;
  CompareAnswer expected;
};

TEST(CompareStated, LengthsOfLongArrays) {
  Stated const cases[] = {
      // Decided by the first element, with two more to come and no data for them.
      {{1, 2, 3}, {2, 2, 3}, 4, 0, 3, {-1, 2101}},
      {{1, 2, 3}, {2, 2, 3}, 0, 4, 3, {-1, 2101}},
      {{2, 2, 3}, {1, 2, 3}, 4, 4, 3, {1, 2101}},
      {{1, 2, 3}, {2, 2, 3}, 5, 5, 3, {-1, 0}},
      {{1, 2, 3}, {2, 2, 3}, 0, 0, 3, {-1, 0}},
      // Six bytes hold the start of a second element, which is read whole.
      {{1, 2}, {1, 3}, 6, 0, 2, {-1, 0}},
      {{1, 2}, {1, 3}, 5, 5, 2, {-1, 0}},
      {{1, 2}, {1, 3}, 4, 0, 2, {0, 2101}},
      {{1, 2}, {1, 3}, 0, 4, 2, {0, 2101}},
      {{1, 2}, {1, 3}, 1, 0, 2, {0, 2101}},
      // No test follows the last element.
      {{1}, {2}, 1, 1, 1, {-1, 0}},
      {{1}, {1}, 1, 3, 1, {0, 0}},
      {{1, 2}, {1, 3}, 8, 5, 2, {-1, 0}},
      // More data than elements.
      {{1, 2, 9}, {1, 2, 8}, 12, 12, 2, {0, 0}},
      {{1, 2, 9}, {1, 2, 8}, 12, 12, 3, {1, 0}},
      // Only the first two elements are there.
      {{1, 2, 9}, {1, 2, 8}, 8, 12, 3, {0, 2101}},
      {{1, 5, 9}, {1, 2, 8}, 8, 12, 3, {1, 2101}},
  };
  XoTypeMgr const manager;
  for (auto const& each : cases) {
    for (int id : {2, 6, 7, 8, 9, 14}) {
      for (unsigned char format : Formats{8, 1, 2}) {
        auto first = Encode(each.first, format), second = Encode(each.second, format);
        int status = 4711;
        int const result = manager.Cmp(static_cast<char>(id), each.length1, first.data(),
                                       each.length2, second.data(), 0, each.count, format, status);
        EXPECT_EQ((CompareAnswer{result, status}), each.expected)
            << "id " << id << " lengths " << each.length1 << ' ' << each.length2;
      }
    }
  }
}

TEST(CompareStated, BytesAreTheSameInEveryFormat) {
  XoTypeMgr const manager;
  unsigned char high[] = {0x80, 1}, low[] = {0x7F, 2};
  for (int format = 0; format < 256; ++format) {
    EXPECT_EQ(manager.Cmp(0, high, low, 0, 2, static_cast<unsigned char>(format)), -1);
    EXPECT_EQ(manager.Cmp(10, high, low, 0, 2, static_cast<unsigned char>(format)), 1);
  }
}

TEST(CompareStated, OnlyTheBigEndianNibbleReversesBytes) {
  XoTypeMgr const manager;
  // As stored bytes: 1 and 256, or 256 and 1 the other way round.
  unsigned char a[] = {0, 0, 0, 0, 0, 0, 1, 0}, b[] = {0, 0, 0, 0, 0, 0, 0, 1};
  for (int format = 0; format < 256; ++format) {
    int const expected = format % 16 == 2 ? 1 : -1;
    auto const byte = static_cast<unsigned char>(format);
    EXPECT_EQ(manager.Cmp(42, a, b, 0, 1, byte), expected) << format;
    EXPECT_EQ(manager.Cmp(43, a, b, 0, 1, byte), expected) << format;
    for (char id : {char{2}, char{6}, char{7}, char{8}, char{9}, char{14}})
      EXPECT_EQ(manager.Cmp(id, a + 4, b + 4, 0, 1, byte), expected) << format;
    EXPECT_EQ(manager.Cmp(1, a + 6, b + 6, 0, 1, byte), expected) << format;
    EXPECT_EQ(manager.Cmp(5, a + 6, b + 6, 0, 1, byte), expected) << format;
  }
}

}  // namespace
}  // namespace xo::test
