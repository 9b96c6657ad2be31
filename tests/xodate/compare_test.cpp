#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/temporal_rows.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kStrict = 0x10;

int Compare(TemporalRow const& row, ByteList a, ByteList b, unsigned char format, unsigned short op,
            unsigned count = 1, unsigned lengthA = 0, unsigned lengthB = 0,
            int expectedStatus = 0) {
  int status = 99;
  int const order =
      Row(row).Compare(format, lengthA, a.data(), lengthB, b.data(), op, count, status);
  EXPECT_EQ(status, expectedStatus);
  return order;
}

/// The order of two lists of fields, one by one. On disk the second alone is a pattern, in memory
/// both are, and the difference counts, but for nanoseconds.
int Oracle(TemporalRow const& row, FieldList const& a, FieldList const& b, bool inMemory,
           bool strict) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!strict && (b[i] == -1 || (inMemory && a[i] == -1))) continue;
    if (a[i] == b[i]) continue;
    bool const isNano = row.hasNano && i + 1 == a.size();
    if (inMemory && !isNano) return a[i] - b[i];
    return a[i] < b[i] ? -1 : 1;
  }
  return 0;
}

TEST(TemporalCompare, TheSecondOperandAloneIsAPatternOnDisk) {
  TemporalRow const& row = kTemporal[0];
  ByteList const july = Stored(row, {2021, 7, 5}), anyMonth = Stored(row, {2021, -1, 5}),
                 anyYear = Stored(row, {-1, 7, 5}), anyDay = Stored(row, {2021, 7, -1});
  EXPECT_EQ(Compare(row, july, anyMonth, 1, 0), 0);
  EXPECT_EQ(Compare(row, july, anyYear, 1, 0), 0);
  EXPECT_EQ(Compare(row, july, anyDay, 1, 0), 0);
  EXPECT_EQ(Compare(row, anyMonth, july, 1, 0), -1);
  EXPECT_EQ(Compare(row, anyYear, july, 1, 0), -1);
  EXPECT_EQ(Compare(row, anyDay, july, 1, 0), -1);
  EXPECT_EQ(Compare(row, july, anyMonth, 1, kStrict), 1);
  EXPECT_EQ(Compare(row, july, anyYear, 1, kStrict), 1);
  EXPECT_EQ(Compare(row, july, anyDay, 1, kStrict), 1);
  EXPECT_EQ(Compare(row, july, Stored(row, {-1, 8, 1}), 1, 0), -1);
}

TEST(TemporalCompare, BothOperandsArePatternsInMemory) {
  TemporalRow const& row = kTemporal[0];
  EXPECT_EQ(Compare(row, InMemory(row, {2021, -1, 5}), InMemory(row, {2021, 7, 5}), 8, 0), 0);
  EXPECT_EQ(Compare(row, InMemory(row, {2021, -1, 5}), InMemory(row, {2021, 7, 5}), 8, kStrict),
            -8);
  EXPECT_EQ(Compare(row, InMemory(row, {2021, 7, 5}), InMemory(row, {2021, 7, -1}), 0x88, 0), 0);
}

TEST(TemporalCompare, AYearOfMinusTwoIsNoWildcard) {
  TemporalRow const& row = kTemporal[0];
  EXPECT_EQ(Compare(row, Stored(row, {2021, 7, 5}), Stored(row, {-2, 7, 5}), 1, 0), 1);
  EXPECT_EQ(Compare(row, Stored(row, {2021, 7, 5}, true), Stored(row, {-2, 7, 5}, true), 2, 0), 1);
  TemporalRow const& nano = kTemporal[3];
  EXPECT_EQ(Compare(nano, Stored(nano, {1, 1, 1, 1, 1, 1, 5}), Stored(nano, {1, 1, 1, 1, 1, 1, -2}),
                    1, 0),
            1);
}

TEST(TemporalCompare, AYearIsSwappedInBigEndianFormOnly) {
  // 0x0102 against 0x0201 in the machine's order; the other way round when swapped.
  for (TemporalRow const& row : {kTemporal[0], kTemporal[2]}) {
    FieldList a(FieldCount(row), 1), b = a;
    a[0] = 0x0102;
    b[0] = 0x0201;
    for (unsigned short const op : std::initializer_list<unsigned short>{0, kStrict}) {
      for (unsigned char const format : std::initializer_list<unsigned char>{0, 1, 3, 0x81}) {
        EXPECT_EQ(Compare(row, Stored(row, a), Stored(row, b), format, op), -1);
      }
      EXPECT_EQ(Compare(row, Stored(row, a), Stored(row, b), 2, op), 1);
      EXPECT_EQ(Compare(row, Stored(row, a), Stored(row, b), 0x82, op), 1);
    }
  }
}

TEST(TemporalCompare, AStoredHourOfMinusOneSortsBeforeZeroWhenStrict) {
  TemporalRow const& row = kTemporal[1];
  EXPECT_EQ(Compare(row, Stored(row, {0, 0, 0}), Stored(row, {-1, 0, 0}), 1, kStrict), 1);
  EXPECT_EQ(Compare(row, Stored(row, {-1, 0, 0}), Stored(row, {0, 0, 0}), 1, 0), -1);
  EXPECT_EQ(Compare(row, Stored(row, {0, 0, 0}), Stored(row, {-1, 0, 0}), 1, 0), 0);
}

class TemporalCompareLaws : public RandomTest {
 protected:
  FieldList Fields(TemporalRow const& row) {
    FieldList fields;
    for (std::size_t i = 0; i < FieldCount(row); ++i) {
      int const value = OneIn(3)   ? -1
                        : OneIn(2) ? static_cast<int>(Below(3))
                                   : static_cast<int>(Bits());
      fields.push_back(Cut(row, i, value));
    }
    return fields;
  }

  FieldList Near(TemporalRow const& row, FieldList fields) {
    if (OneIn(3)) return fields;
    std::size_t const place = Below(static_cast<unsigned>(fields.size()));
    fields[place] = Cut(row, place, OneIn(2) ? -1 : static_cast<int>(Bits()));
    return fields;
  }
};

TEST_F(TemporalCompareLaws, OneElementIsItsFieldsInOrder) {
  for (int round = 0; round < 40000; ++round) {
    for (TemporalRow const& row : kTemporal) {
      FieldList const a = Fields(row), b = OneIn(3) ? Fields(row) : Near(row, a);
      for (bool strict : {false, true}) {
        auto const op = static_cast<unsigned short>(strict ? Bits() | 0x10 : Bits() & ~0x10u);
        ASSERT_EQ(Compare(row, Stored(row, a), Stored(row, b), 1, op),
                  Oracle(row, a, b, false, strict));
        ASSERT_EQ(Compare(row, Stored(row, a, true), Stored(row, b, true), 2, op),
                  Oracle(row, a, b, false, strict));
        ASSERT_EQ(Compare(row, Stored(row, a), Stored(row, b), 0x81, op),
                  Oracle(row, a, b, false, strict));
        ASSERT_EQ(Compare(row, InMemory(row, a, Byte()), InMemory(row, b, Byte()), 8, op),
                  Oracle(row, a, b, true, strict));
      }
    }
  }
}

TEST_F(TemporalCompareLaws, ArraysAreDecidedByTheFirstPairThatDiffers) {
  for (int round = 0; round < 3000; ++round) {
    for (TemporalRow const& row : kTemporal) {
      unsigned const count = Below(40);
      bool const strict = OneIn(2);
      unsigned char const format = OneIn(3) ? FormMemory : OneIn(2) ? FormLittle : FormBig;
      bool const inMemory = format == FormMemory;
      unsigned const width = inMemory ? row.memory : row.disk;
      ByteList a, b;
      std::vector<int> orders;
      for (unsigned i = 0; i < count; ++i) {
        FieldList const one = Fields(row), other = OneIn(12) ? Near(row, one) : one;
        a += inMemory ? InMemory(row, one) : Stored(row, one, format == FormBig);
        b += inMemory ? InMemory(row, other) : Stored(row, other, format == FormBig);
        orders.push_back(Oracle(row, one, other, inMemory, strict));
      }
      // Lengths, 0 for all: elements that start within both are looked at.
      unsigned lengths[2] = {0, 0};
      unsigned there = count;
      for (unsigned& length : lengths) {
        if (count == 0 || OneIn(2)) continue;
        length = 1 + Below(count * width);
        there = std::min(there, (length + width - 1) / width);
      }
      auto const decided = std::find_if(orders.begin(), orders.begin() + there,
                                        [](int order) { return order != 0; });
      auto const seen = static_cast<unsigned>(decided - orders.begin());
      int const expected = seen == there ? 0 : *decided;
      // The end is looked for behind the element that decided.
      bool const usedUp = there < count && seen + 1 >= there;
      ASSERT_EQ(Compare(row, a, b, format, strict ? kStrict : 0, count, lengths[0], lengths[1],
                        usedUp ? ERR_TM_LENGTH_EXCEEDED : 0),
                expected);
    }
  }
}

TEST_F(TemporalCompareLaws, StrictOrderIsTotal) {
  for (TemporalRow const& row : kTemporal) {
    std::vector<ByteList> values;
    for (int i = 0; i < 300; ++i) values.push_back(Stored(row, Fields(row)));
    auto const less = [&](ByteList const& a, ByteList const& b) {
      return Compare(row, a, b, 1, kStrict) < 0;
    };
    std::sort(values.begin(), values.end(), less);
    for (std::size_t i = 0; i < values.size(); ++i) {
      for (std::size_t j = i; j < values.size(); ++j) {
        int const order = Compare(row, values[i], values[j], 1, kStrict);
        ASSERT_LE(order, 0);
        ASSERT_EQ(Compare(row, values[j], values[i], 1, kStrict), -order);
        ASSERT_EQ(order == 0, values[i] == values[j]);
      }
    }
  }
}

TEST(TemporalCompare, ACountOfZeroIsEqual) {
  for (TemporalRow const& row : kTemporal) {
    for (unsigned char const format : std::initializer_list<unsigned char>{1, 2, 8}) {
      EXPECT_EQ(Compare(row, {}, {}, format, 0, 0), 0);
    }
  }
}

}  // namespace
}  // namespace xo::test
