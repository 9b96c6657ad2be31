#include <gtest/gtest.h>

#include "tests/xotypevl/temporal_values.hpp"

namespace xo::test {
namespace {

Keys const kJanuary = {Date(2020, 1, 1), Date(2020, 1, 31)};

TEST(OdmgDateBounds, CountBeyondTheRange) {
  // 5 February lies 35 days behind 1 January, of 31.
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2020, 2, 5), kJanuary), Of(35, 31));
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2020, 2, 5), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kBelow | kAbove, Date(2020, 2, 5), kJanuary), Of(30, 31));
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2019, 12, 31), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kBelow | kEqual, Date(2019, 12, 31), kJanuary), 0.0F);
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2019, 12, 31), kJanuary), Of(31, 31));
  EXPECT_EQ(Share(D_DATE_T, kEqual, Date(2025, 1, 1), kJanuary), Of(1, 31));
}

TEST(OdmgDateBounds, CountYearsWithTheirSign) {
  Keys const years = {Date(-2, 1, 1), Date(2, 1, 1)};
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(0, 1, 1), years), Of(2 * 372, 4 * 372 + 1));
}

TEST(OdmgDateBounds, WidenEachWildcardAlone) {
  EXPECT_EQ(Evaluate(D_DATE_T, kEqual, Date(2020, -1, 5)),
            (Evaluated{0, kEqual | kPattern, Date(2020, -128, 5), Date(2020, 127, 5)}));
  EXPECT_EQ(Evaluate(D_DATE_T, kEqual, Date(2020, 5, -1)),
            (Evaluated{0, kEqual | kPattern, Date(2020, 5, -128), Date(2020, 5, 127)}));
  for (unsigned char const format : {kLittle, kBig}) {
    EXPECT_EQ(
        Evaluate(D_DATE_T, kEqual, Date(-1, 5, 6, format), {}, format),
        (Evaluated{0, kEqual | kPattern, Date(-32768, 5, 6, format), Date(32767, 5, 6, format)}));
  }
  EXPECT_EQ(Evaluate(D_DATE_T, kLiteral | kEqual, Date(2020, -1, -1)),
            (Evaluated{0, kEqual | kPattern, Date(2020, -128, -128), Date(2020, 127, 127)}));
}

TEST(OdmgDateBounds, CountAWildcardAsMinusOne) {
  // Two months before January, and four days on: 58 before the first.
  EXPECT_EQ(Share(D_DATE_T, kAbove, Date(2020, -1, 5), kJanuary), Of(31 + 57, 31));
  EXPECT_EQ(Share(D_DATE_T, kBelow, Date(2020, -1, 5), kJanuary), 0.0F);
}

TEST(OdmgDateBounds, LeaveBoundsThatThereAre) {
  ByteList const other = Date(1999, 9, 9);
  EXPECT_EQ(WithPresent(D_DATE_T, kEqual, Date(2020, -1, 1), {{}, other}),
            (Keys{Date(2020, -128, 1), other}));
}

TEST(OdmgTimeBounds, HaveNoWildcards) {
  ByteList const value = FieldBytes({-1, -1, -1, -1, -1, -1});
  EXPECT_EQ(Evaluate(D_TIME_T, kEqual, value), (Evaluated{0, kEqual, value, value}));
}

TEST(OdmgTimestampBounds, WidenTheWildcardsOfTheDate) {
  ByteList const time = FieldBytes({0, 0, 12, 0, 0, 0});
  EXPECT_EQ(
      Evaluate(D_TIMESTAMP_T, kEqual, Date(2020, -1, 5) + time),
      (Evaluated{0, kEqual | kPattern, Date(2020, -128, 5) + time, Date(2020, 127, 5) + time}));
  ByteList const wild = FieldBytes({-1, -1, -1, -1, -1, -1});
  EXPECT_EQ(Evaluate(D_TIMESTAMP_T, kEqual, Date(2020, 5, 5) + wild),
            (Evaluated{0, kEqual, Date(2020, 5, 5) + wild, Date(2020, 5, 5) + wild}));
}

TEST(OdmgTimestampBounds, LeaveBoundsThatThereAre) {
  ByteList const time = FieldBytes({0, 0, 12, 0, 0, 0});
  ByteList const other = Date(1999, 9, 9) + time;
  EXPECT_EQ(WithPresent(D_TIMESTAMP_T, kEqual, Date(2020, -1, 1) + time, {{}, other}),
            (Keys{Date(2020, -128, 1) + time, other}));
}

TEST(OdmgTimestampBounds, CountDaysOfTheDateAndTheTimeAsStored) {
  ByteList const start = FieldBytes({0, 0, 0, 0, 0, 0}), noon = FieldBytes({5, 0, 12, 0, 0, 99});
  Keys const january = {Date(2020, 1, 1) + start, Date(2020, 2, 1) + start};
  EXPECT_EQ(Share(D_TIMESTAMP_T, kBelow, Date(2020, 1, 11) + noon, january),
            Of(10.5 * 86400, 31 * 86400 + 1));
  // The day that a wildcard stands for is one of 256.
  Keys const years = {Date(2019, 1, 1) + start, Date(2021, 1, 1) + start};
  EXPECT_EQ(Share(D_TIMESTAMP_T, kEqual, Date(2020, 1, -1) + start, years),
            Of(255 * 86400 + 1, 2 * 372 * 86400 + 1));
}

}  // namespace
}  // namespace xo::test
