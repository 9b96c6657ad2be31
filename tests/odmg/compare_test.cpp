#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/base/random_test.hpp"
#include "tests/odmg/odmg_support.hpp"

namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

struct ComparedRow {
  int id;
  unsigned width;
};
constexpr ComparedRow kRows[] = {{D_DATE_T, 4}, {D_TIME_T, 6}, {D_TIMESTAMP_T, 10}};

int Ask(int id, unsigned char format, ByteList a, ByteList b, unsigned short op = 0,
        unsigned count = 1, unsigned lengthA = 0, unsigned lengthB = 0, int* statusOut = nullptr) {
  int status = 4711;
  int const order = CurrentTypeTable[id]->Compare(format, lengthA, a.data(), lengthB, b.data(), op,
                                                  count, status);
  if (statusOut != nullptr) *statusOut = status;
  return order;
}

TEST(OdmgCompare, StoredYearsHaveNoSign) {
  // 0xFFF0 is -16 as a year, and above 2021 here.
  EXPECT_EQ(Ask(D_DATE_T, 1, {0xF0, 0xFF, 1, 1}, {0xE5, 0x07, 1, 1}), 1);
  EXPECT_EQ(Ask(D_DATE_T, 2, {0xFF, 0xF0, 1, 1}, {0x07, 0xE5, 1, 1}), 1);
  EXPECT_EQ(Ask(D_DATE_T, 2, {0x00, 0xFF, 1, 1}, {0x01, 0x00, 1, 1}), -1);
  EXPECT_EQ(Ask(D_DATE_T, 1, {0x00, 0xFF, 1, 1}, {0x01, 0x00, 1, 1}), 1);
  EXPECT_EQ(Ask(D_TIMESTAMP_T, 1, {0xF0, 0xFF, 1, 1, 0, 0, 0, 0, 0, 0},
                {0xE5, 0x07, 1, 1, 0, 0, 0, 0, 0, 0}),
            1);
}

TEST(OdmgCompare, WildcardsOfTheSecondStoredDateEqualEveryValue) {
  ByteList const date = {0xE5, 0x07, 4, 15};
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xFF, 0xFF, 4, 15}), 0);
  EXPECT_EQ(Ask(D_DATE_T, 2, date, {0xFF, 0xFF, 4, 15}), 0);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xFE, 0xFF, 4, 15}), -1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xFF, 0xFF, 5, 15}), -1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 0xFF, 14}), 1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 0xFF, 15}), 0);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 4, 0xFF}), 0);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 3, 0xFF}), 1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 0xFF, 0xFF}), 0);
  // In the first operand they are values, and in both without wildcards.
  EXPECT_EQ(Ask(D_DATE_T, 1, {0xFF, 0xFF, 4, 15}, date), 1);
  EXPECT_EQ(Ask(D_DATE_T, 1, {0xE5, 0x07, 0xFF, 15}, date), -1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xFF, 0xFF, 4, 15}, CmpOpNoWildcards), -1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 0xFF, 15}, CmpOpNoWildcards), 1);
  EXPECT_EQ(Ask(D_DATE_T, 1, date, {0xE5, 0x07, 4, 0xFF}, CmpOpNoWildcards), 1);
}

TEST(OdmgCompare, StoredTimesHaveNoWildcardsAndBeginWithTheZone) {
  EXPECT_EQ(Ask(D_TIME_T, 1, {1, 0, 5, 0, 0, 0}, {0, 0, 9, 0, 0, 0}), 1);
  EXPECT_EQ(Ask(D_TIME_T, 1, {0, 0, 5, 0, 0, 0}, {0, 0, 0xFF, 0, 0, 0}), 1);
  EXPECT_EQ(Ask(D_TIME_T, 1, {0, 0, 5, 0, 0, 1}, {0, 0, 5, 0, 0, 2}), -1);
  EXPECT_EQ(Ask(D_TIMESTAMP_T, 1, {1, 0, 1, 1, 0, 0, 5, 0, 0, 0},
                {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0xFF, 0, 0, 0}),
            1);
}

TEST(OdmgCompare, ValuesGiveTheDifferenceOfTheirClass) {
  d_Date dates[] = {d_Date(1582, 10, 4), d_Date(1582, 10, 15), d_Date(2021, 255, 1)};
  d_Time times[] = {d_Time(10, 0, 0, 2, 0), d_Time(10, 0, 0), d_Time(13, 0, 0)};
  d_Timestamp stamps[] = {d_Timestamp(dates[0], times[0]), d_Timestamp(dates[0], times[1]),
                          d_Timestamp(dates[0], times[2])};
  int status = 4711;
  EXPECT_EQ(d_DateCompare(8, 0, dates, 0, dates + 1, 0, 1, status), -1);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(d_TimeCompare(8, 0, times, 0, times + 1, 0, 1, status), 0);
  EXPECT_EQ(d_TimeCompare(8, 0, times + 2, 0, times + 1, 0, 1, status), 3);
  EXPECT_EQ(d_TimestampCompare(8, 0, stamps, 0, stamps + 1, 0, 1, status), 0);
  EXPECT_EQ(d_TimestampCompare(8, 0, stamps, 0, stamps + 2, 0, 1, status), -3);
  // No wildcards there: month 255 is one.
  EXPECT_NE(d_DateCompare(8, 0, dates, 0, dates + 2, 0, 1, status), 0);
}

/// The comparison as it is composed of that of words and bytes.
int ComposedDate(unsigned char format, unsigned char* a, unsigned char* b, unsigned short op) {
  int status = 0;
  bool const isStrict = (op & CmpOpNoWildcards) != 0;
  int const year = WordCompare(format, 0, a, 0, b, op, 1, status);
  if (year != 0 && (isStrict || b[0] != 0xFF || b[1] != 0xFF)) return year;
  if (!isStrict) {
    if (b[2] == 0xFF && b[3] == 0xFF) return 0;
    if (b[2] == 0xFF) return CharCompare(format, 0, a + 3, 0, b + 3, op, 1, status);
    if (b[3] == 0xFF) return CharCompare(format, 0, a + 2, 0, b + 2, op, 1, status);
  }
  return CharCompare(format, 0, a + 2, 0, b + 2, op, 2, status);
}

int Composed(int id, unsigned char format, unsigned char* a, unsigned char* b, unsigned short op) {
  int status = 0;
  if (id == D_TIME_T) return CharCompare(format, 0, a, 0, b, op, 6, status);
  int const date = ComposedDate(format, a, b, op);
  if (id == D_DATE_T || date != 0) return date;
  return CharCompare(format, 0, a + 4, 0, b + 4, op, 6, status);
}

class OdmgCompareLaws : public RandomTest {
 protected:
  ByteList FewBytes(std::size_t size) {
    constexpr unsigned char kBytes[] = {0xFF, 0xFF, 0xFE, 0, 1, 0x7F, 0x80};
    ByteList bytes(size);
    for (unsigned char& byte : bytes) byte = OneIn(2) ? 1 : kBytes[Below(7)];
    return bytes;
  }
};

TEST_F(OdmgCompareLaws, StoredArraysCompareAsTheLoopOverTheirPartsDoes) {
  constexpr unsigned char kFormats[] = {1, 2, 0x81, 0x42, 0};
  for (int round = 0; round < 40000; ++round) {
    ComparedRow const row = kRows[Below(3)];
    unsigned const count = Below(5);
    unsigned const whole = count * row.width;
    unsigned const lengths[] = {OneIn(2) ? 0 : Below(whole + 3), OneIn(2) ? 0 : Below(whole + 3)};
    // Exactly the bytes that may be read, where the sanitizer sees one more.
    auto const reach = [&](unsigned length) {
      if (length == 0) return whole;
      return std::min(whole, (length + row.width - 1) / row.width * row.width);
    };
    ByteList a = FewBytes(reach(lengths[0])), b = FewBytes(reach(lengths[1]));
    if (OneIn(2)) std::copy_n(a.begin(), std::min(a.size(), b.size()), b.begin());
    unsigned char const format = kFormats[Below(5)];
    unsigned short const op = OneIn(2) ? CmpOpNoWildcards : 0;

    int expected = 0, expectedStatus = 0;
    for (unsigned i = 0; i < count && expected == 0 && expectedStatus == 0; ++i) {
      unsigned const at = i * row.width, next = at + row.width;
      expected = Composed(row.id, format & 15, a.data() + at, b.data() + at, op);
      if (i + 1 == count) break;
      if (next >= (lengths[0] != 0 ? lengths[0] : whole) ||
          next >= (lengths[1] != 0 ? lengths[1] : whole)) {
        expectedStatus = ERR_TM_LENGTH_EXCEEDED;
      }
    }
    int status = 4711;
    int const order = Ask(row.id, format, a, b, op, count, lengths[0], lengths[1], &status);
    ASSERT_EQ(order, expected) << row.id << " round " << round;
    ASSERT_EQ(status, expectedStatus) << row.id << " round " << round;
  }
}

TEST_F(OdmgCompareLaws, NothingIsReadOfNoElements) {
  for (ComparedRow const& row : kRows) {
    int status = 4711;
    for (unsigned char format : {FormLittle, FormBig, FormMemory}) {
      EXPECT_EQ(CurrentTypeTable[row.id]->Compare(format, 0, nullptr, 0, nullptr, 0, 0, status), 0);
      EXPECT_EQ(status, 0);
    }
  }
}

TEST_F(OdmgCompareLaws, ValuesOfAnyBytesCompareAsTheirClass) {
  for (int round = 0; round < 20000; ++round) {
    auto const a = std::make_unique<unsigned char[]>(11), b = std::make_unique<unsigned char[]>(11);
    for (int i = 0; i < 11; ++i) {
      a[i] = Byte();
      b[i] = OneIn(3) ? Byte() : a[i];
    }
    int status = 0;
    // At odd addresses.
    std::array<unsigned char, 10> left, right;
    std::copy_n(a.get() + 1, 10, left.begin());
    std::copy_n(b.get() + 1, 10, right.begin());
    ASSERT_EQ(d_TimestampCompare(8, 0, a.get() + 1, 0, b.get() + 1, 0, 1, status),
              std::bit_cast<d_Timestamp>(left) != std::bit_cast<d_Timestamp>(right));
    ASSERT_EQ(d_DateCompare(8, 0, a.get() + 1, 0, b.get() + 1, 0, 1, status),
              std::bit_cast<d_Timestamp>(left).date() != std::bit_cast<d_Timestamp>(right).date());
  }
}

}  // namespace
}  // namespace xo::test
