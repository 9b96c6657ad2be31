#include <gtest/gtest.h>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/temporal_values.hpp"

namespace xo::test {
namespace {

TEST(TemporalBounds, MeasureARangeByItsNumbers) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    Keys const range = {low, high};
    EXPECT_EQ(Share(id, kBelow, value, range), Of(10, 20));
    EXPECT_EQ(Share(id, kEqual, value, range), Of(1, 20));
    EXPECT_EQ(Share(id, kAbove, value, range), Of(9, 20));
    EXPECT_EQ(Share(id, kBelow | kEqual, value, range), Of(11, 20));
    EXPECT_EQ(Share(id, kAbove | kEqual, value, range), Of(10, 20));
    EXPECT_EQ(Share(id, kBelow | kAbove, value, range), Of(19, 20));
    EXPECT_EQ(Share(id, 7, value, range), 1.0F);
    EXPECT_EQ(Share(id, 0, value, range), 0.0F);
  }
}

TEST(TemporalBounds, AreBuiltWithoutARangeThatTellsBothEnds) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    for (unsigned short op = 0; op < 8; ++op) {
      MaybeBytes const lower = (op & kBelow) == 0 ? MaybeBytes(value) : std::nullopt;
      MaybeBytes const upper = (op & kAbove) == 0 ? MaybeBytes(value) : std::nullopt;
      Evaluated const expected = {0, op, lower, upper};
      EXPECT_EQ(Evaluate(id, op, value), expected);
      EXPECT_EQ(Evaluate(id, op, value, {low, {}}), expected);
      EXPECT_EQ(Evaluate(id, op, value, {{}, high}), expected);
      XoIdxBounds empty;
      unsigned short opOut = op;
      PlacedBytes const operand(value, 1);
      EXPECT_EQ(
          XoTypeMgr().EvalAndBound(id, &empty, opOut, operand.Data(), kLittle, 1, nullptr, nullptr),
          0.0F);
    }
  }
}

TEST(TemporalBounds, GiveNoShareOfARangeOfNoKeys) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    // The upper end is one below the lower.
    ByteList below = low;
    std::size_t const place = id == XoDATE_T || id == D_DATE_T ? 3
                              : id == XoTIME_T                 ? 2
                              : id == D_TIME_T                 ? 4
                              : id == D_TIMESTAMP_T            ? 8
                                                               : 6;
    ++below[place];
    for (unsigned short op = 0; op < 8; ++op) {
      EXPECT_EQ(Share(id, op, value, {below, low}), 0.0F) << op;
    }
  }
}

TEST(TemporalBounds, KeepOfTheOperatorWhatTheirTypeSays) {
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    unsigned short const expected =
        row.id == D_TIME_T                                                    ? 0xFFF9
        : row.id == XoDATE_T || row.id == D_DATE_T || row.id == D_TIMESTAMP_T ? 0x8009
                                                                              : 0x8001;
    EXPECT_EQ(Evaluate(row.id, 0xFFF9, row.value).op, expected);
  }
}

TEST(TemporalBounds, MayBeTheRangeItself) {
  for (auto const& [id, low, value, high] : kRows) {
    SCOPED_TRACE(int{id});
    PlacedBytes const operand(value, 1);
    PlacedKey const lower(low), upper(high);
    XoIdxBounds range{lower.Data(), upper.Data(), lower.Length(), upper.Length()};
    unsigned short op = kBelow;
    EXPECT_EQ(XoTypeMgr().EvalAndBound(id, &range, op, operand.Data(), kLittle, 1, &range, nullptr),
              Of(10, 20));
  }
}

// Laws.

class TemporalLaws : public RandomTest {
 protected:
  unsigned char AnyOrder() { return OneIn(2) ? kLittle : kBig; }
  unsigned short AnyRelation() { return static_cast<unsigned short>(Below(8)); }
  int Around(int middle) { return middle - 2 + static_cast<int>(Below(5)); }
  int Field(int middle, unsigned oneIn) { return OneIn(oneIn) ? -1 : Around(middle); }
  int AnyNanos() { return static_cast<int>(Below(3)) * 500000000; }

  /// A few bytes around a middle, with a byte of -1 or of any kind in between.
  ByteList Fields(std::size_t count, unsigned oneIn) {
    ByteList bytes;
    while (bytes.size() < count) {
      bytes.push_back(OneIn(20) ? Byte() : static_cast<unsigned char>(Field(5, oneIn)));
    }
    return bytes;
  }

  /// A value of a row, each of whose fields is a wildcard in one of so many. `isDate`: as a key it
  /// is a date of the calendar.
  ByteList AnyValue(char id, unsigned oneIn, unsigned char format) {
    constexpr unsigned kNever = 1000000;
    // The bounds of a wildcard year are in the wrong order for dates that order by the year without
    // its sign.
    bool const isOdmg = id == D_DATE_T || id == D_TIMESTAMP_T;
    ByteList const year = Year(isOdmg ? Around(2020) : Field(2020, oneIn), format);
    switch (id) {
      case XoDATE_T: {
        bool const isPattern = oneIn != kNever && oneIn < 100;
        int const month = isPattern ? Field(5, oneIn) : 1 + static_cast<int>(Below(12));
        int const day = isPattern ? Field(5, oneIn) : 1 + static_cast<int>(Below(28));
        return year + FieldBytes({month, day});
      }
      case XoTIME_T:
        return Fields(3, oneIn);
      case XoDATIME_T:
        return year + Fields(5, oneIn);
      case XoDATIME_N_T:
      case XoTIMESPAN_T:
        return year + Fields(5, oneIn) + Nanos(OneIn(oneIn) ? -1 : AnyNanos(), format);
      case D_DATE_T:
        return year + Fields(2, oneIn);
      case D_TIME_T:
        return Fields(6, oneIn);
      default:
        return year + Fields(8, oneIn);
    }
  }
};

TEST_F(TemporalLaws, BoundsBracketEveryMatch) {
  constexpr unsigned kNever = 1000000;
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    for (int round = 0; round < 1000; ++round) {
      unsigned char const format = AnyOrder();
      // A date reads its wildcards also in a literal comparison, where they are numbers: -1 is less
      // than the first month.
      bool const isLiteral = row.id != XoDATE_T && OneIn(4);
      auto const op = static_cast<unsigned short>(AnyRelation() | (isLiteral ? kLiteral : 0));
      ByteList const value = AnyValue(row.id, 4, format);
      Evaluated const result = Evaluate(row.id, op, value, {}, format);
      for (int key = 0; key < 30; ++key) {
        ByteList const stored =
            OneIn(8) && row.id != XoDATE_T ? value : AnyValue(row.id, kNever, format);
        // Bounds of nanoseconds hold those of a second.
        if (stored.size() == 11 && stored == value) continue;
        if (!Selects(row.id, op, stored, value, format)) continue;
        ASSERT_TRUE(Meets(row.id, result, stored, format))
            << result << " op " << op << Keys{stored, value};
      }
    }
  }
}

TEST_F(TemporalLaws, SharesOfDatesAreThoseOfTheirDaysCounted) {
  for (int round = 0; round < 200; ++round) {
    int const low = 2450000 + static_cast<int>(Below(1000));
    int const high = low + static_cast<int>(Below(400));
    int const value = low - 20 + static_cast<int>(Below(440));
    unsigned short const op = AnyRelation();
    int count = 0;
    for (int day = low; day <= high; ++day) {
      unsigned const relation = day < value ? 2 : day > value ? 4 : 1;
      count += (op & relation) != 0 ? 1 : 0;
    }
    auto const stored = [](int day) {
      XoDate const date(day);
      return Date(date.year, date.month, date.day);
    };
    // A value one day outside counts the step to it.
    ASSERT_EQ(Share(XoDATE_T, op, stored(value), {stored(low), stored(high)}),
              Of(count, high - low + 1))
        << low << ' ' << value << ' ' << high << ' ' << op;
  }
}

TEST_F(TemporalLaws, AnyBytesGiveANumber) {
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    for (int round = 0; round < 2000; ++round) {
      std::size_t const size = row.value.size();
      auto const format = static_cast<unsigned char>(OneIn(2) ? AnyOrder() : Byte());
      // In memory form there is padding besides.
      std::size_t const room = size + 1;
      Evaluated const result =
          Evaluate(row.id, static_cast<unsigned short>(Bits()), RandomTest::Bytes(room),
                   {RandomTest::Bytes(room), RandomTest::Bytes(room)}, format);
      ASSERT_FALSE(std::isnan(result.share));
      ASSERT_FALSE(std::isinf(result.share));
    }
  }
}

}  // namespace
}  // namespace xo::test
