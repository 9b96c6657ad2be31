#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace xo::test {

/// A row of the plain scalars: its id and what an element is in memory.
template <int kNumber, class T>
struct Scalar {
  static constexpr char kId = static_cast<char>(kNumber);
  using Value = T;
};

using EnumRow = Scalar<9, std::int32_t>;
using DoubleRow = Scalar<3, double>;
using FloatRow = Scalar<4, float>;

/// The integers that can count upward, and others.
template <class... Others>
using CountingRowsAnd =
    ::testing::Types<Scalar<0, std::int8_t>, Scalar<10, std::uint8_t>, Scalar<1, std::int16_t>,
                     Scalar<5, std::uint16_t>, Scalar<2, std::int32_t>, Scalar<6, std::uint32_t>,
                     Scalar<14, std::uint32_t>, Scalar<7, std::int32_t>, Scalar<8, std::uint32_t>,
                     Scalar<42, std::int64_t>, Scalar<43, std::uint64_t>, Others...>;

using CountingRows = CountingRowsAnd<>;
using IntegerRows = CountingRowsAnd<EnumRow>;
using FloatingRows = ::testing::Types<DoubleRow, FloatRow>;
using ScalarRows = CountingRowsAnd<EnumRow, DoubleRow, FloatRow>;

struct ScalarName {
  template <class Row>
  static std::string GetName(int) {
    return "Id" + std::to_string(int{Row::kId});
  }
};

/// The rows of a list as values, each made by `make` from its `Scalar`. A test that walks them is
/// compiled once and not once for each row; what it needs of a type it takes as a function.
template <class... Rows, class Make>
auto RowValues(::testing::Types<Rows...>, Make make) {
  return std::vector{make(Rows{})...};
}

/// Names the tests of `RowValues` as `ScalarName` does.
struct RowName {
  template <class Row>
  std::string operator()(::testing::TestParamInfo<Row> const& info) const {
    return "Id" + std::to_string(int{info.param.id});
  }
};

/// Bit patterns of a floating-point type, by their fields.
template <class T>
struct FloatBits {
  using Word = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;
  static constexpr int kFractionBits = std::numeric_limits<T>::digits - 1;
  static constexpr Word kSign = Word{1} << (sizeof(T) * 8 - 1);
  static constexpr Word kFraction = (Word{1} << kFractionBits) - 1;
  static constexpr Word kExponent = static_cast<Word>(~kSign & ~kFraction);
  static constexpr Word kQuiet = Word{1} << (kFractionBits - 1);

  static T Value(Word bits) { return std::bit_cast<T>(bits); }
  static Word Of(T value) { return std::bit_cast<Word>(value); }

  /// Quiet and signalling NaNs of both signs, with small and full payloads.
  static std::vector<T> Nans() {
    std::vector<T> nans;
    for (Word sign : {Word{0}, kSign}) {
      for (Word fraction : {kQuiet, Word{1}, kFraction, Word{kQuiet | 1}, Word{kQuiet - 1}})
        nans.push_back(Value(sign | kExponent | fraction));
    }
    return nans;
  }
};

}  // namespace xo::test
