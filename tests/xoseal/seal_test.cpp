#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

static_assert(std::is_aggregate_v<XoSeal> && std::is_trivially_copyable_v<XoSeal>);

o_8b NumberOf(XoSeal const& seal) {
  o_8b number = -1;
  seal.ConvertTo(number);
  return number;
}

std::string Printed(XoSeal const& seal) {
  XoString out;
  EXPECT_EQ(&seal.PrintToXoString(out), &out);
  return out.StrGet();
}

TEST(Seal, HoldsTheNumberOfAnObject) {
  XoSeal seal{};
  seal.ConvertFrom(XoObjId{99, 0x00020003, 1});
  EXPECT_EQ(seal.top, 1u);
  EXPECT_EQ(seal.middle, 2u);
  EXPECT_EQ(seal.bottom, 3u);
  EXPECT_EQ(NumberOf(seal), 0x000100020003);
}

TEST(Seal, DropsTheUpperBitsOfAnInteger) {
  XoSeal seal{};
  seal.ConvertFrom(o_8b{0x7ABC000100020003});
  EXPECT_EQ(NumberOf(seal), 0x000100020003);
  seal.ConvertFrom(o_8b{-1});
  EXPECT_EQ(NumberOf(seal), 0xFFFFFFFFFFFF);
  seal.ConvertFrom(o_8b{INT64_MIN});
  EXPECT_EQ(NumberOf(seal), 0);
  seal.ConvertFrom(XoInt64(0x80000001u, INT_MIN + 5));
  EXPECT_EQ(seal.top, 5u);
  EXPECT_EQ(seal.middle, 0x8000u);
  EXPECT_EQ(seal.bottom, 1u);
}

TEST(Seal, IsNeverNegativeAsAnInteger) {
  XoInt64 number(-1);
  XoSeal{0xFFFF, 0x8000, 1}.ConvertTo(number);
  EXPECT_EQ(number.low, 0x80000001u);
  EXPECT_EQ(number.high, 0xFFFF);
}

TEST(Seal, GivesItsNumberToEveryIntegerOf64Bits) {
  XoSeal const seal{0x8001, 2, 3};
  long long number = -1;
  seal.ConvertTo(number);
  EXPECT_EQ(number, 0x800100020003LL);
  unsigned long long unsignedNumber = 0;
  seal.ConvertTo(unsignedNumber);
  EXPECT_EQ(unsignedNumber, 0x800100020003ULL);
}

TEST(Seal, OrdersByTheDifferenceOfTheFirstWordThatDiffers) {
  EXPECT_EQ((XoSeal{1, 2, 3} != XoSeal{1, 5, 0}), -3);
  EXPECT_EQ((XoSeal{1, 2, 3} != XoSeal{0, 5, 9}), 1);
  EXPECT_EQ((XoSeal{1, 2, 3} != XoSeal{1, 2, 1}), 2);
  EXPECT_EQ((XoSeal{1, 2, 3} != XoSeal{1, 2, 3}), 0);
  EXPECT_EQ((XoSeal{0xFFFF, 0, 0} != XoSeal{0, 0, 0}), 65535);
  EXPECT_EQ((XoSeal{1, 2, 3} == XoSeal{1, 2, 3}), 1);
  EXPECT_EQ((XoSeal{1, 2, 3} == XoSeal{1, 2, 4}), 0);
  EXPECT_EQ((XoSeal{1, 2, 3} == XoSeal{1, 3, 3}), 0);
  EXPECT_EQ((XoSeal{1, 2, 3} == XoSeal{2, 2, 3}), 0);
}

TEST(SealText, IsDecimalAndAppended) {
  EXPECT_EQ(Printed({1, 2, 3}), "4295098371");  // 2^32 + 2 * 2^16 + 3
  EXPECT_EQ(Printed({0, 0, 0}), "0");
  EXPECT_EQ(Printed({0xFFFF, 0xFFFF, 0xFFFF}), "281474976710655");
  XoString out("seal ");
  XoSeal{0, 0, 7}.PrintToXoString(out);
  EXPECT_STREQ(out.StrGet(), "seal 7");
}

TEST(SealText, EmptyTextIsZero) {
  XoSeal seal{1, 2, 3};
  seal.ScanFromXoString(XoString(""));
  EXPECT_EQ(NumberOf(seal), 0);
  seal = {1, 2, 3};
  XoString null;
  null.SetNullValue();
  seal.ScanFromXoString(null);
  EXPECT_EQ(NumberOf(seal), 0);
}

TEST(SealText, ReadsAsIntegersDo) {
  struct {
    char const* text;
    o_8b number;
  } const cases[] = {{"4295098371", 4295098371},
                     {"0x000100020003", 0x000100020003},
                     {"010", 8},
                     {"-1", 0xFFFFFFFFFFFF},
                     {"281474976710656", 0},  // 2^48
                     {"none", 0xFFFFFFFFFFFF},
                     {"12x", 0xFFFFFFFFFFFF}};
  for (auto const& test : cases) {
    XoSeal seal{9, 9, 9};
    seal.ScanFromXoString(XoString(test.text));
    EXPECT_EQ(NumberOf(seal), test.number) << test.text;
  }
}

class SealRow : public RandomTest {
 protected:
  TypeDescriptor const& row = *CurrentTypeTable[XoSEAL_T];

  XoSeal Any() {
    // Few values of a word, so that many are equal.
    auto const word = [&] { return static_cast<o_u2b>(OneIn(3) ? Bits() : Below(3) << 7); };
    return {word(), word(), word()};
  }
};

TEST_F(SealRow, StoresMostSignificantByteFirstInEveryFormat) {
  XoSeal const seals[] = {{0x0102, 0x0304, 0x0506}, {0xA1A2, 0xA3A4, 0xA5A6}};
  std::vector<unsigned char> const stored = {1, 2, 3, 4, 5, 6, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6};
  for (unsigned char format :
       {FormLittle, FormBig, FormatIndexKey, static_cast<unsigned char>(0x42)}) {
    std::vector<unsigned char> disk(12);
    EXPECT_EQ(row.Store(disk.data(), seals, format, 2), 12u);
    EXPECT_EQ(disk, stored);
    XoSeal back[2] = {};
    EXPECT_EQ(row.Load(back, disk.data(), format, 2), 12u);
    EXPECT_EQ((back[0] == seals[0]) + (back[1] == seals[1]), 2);
  }
  EXPECT_EQ(row.Store(nullptr, nullptr, FormBig, 0), 0u);
  for (unsigned count : {0u, 1u, 5u}) {
    EXPECT_EQ(row.NullSizeGet(count), 6 * count);
    EXPECT_EQ(row.SizeGet(nullptr, 8, 1, count), 6 * count);
    EXPECT_EQ(row.SizeGetFromMemFile(nullptr, 1, count), 6 * count);
  }
}

TEST_F(SealRow, StoredOrderIsTheOrderOfValues) {
  for (int turn = 0; turn < 20000; ++turn) {
    XoSeal a[2] = {Any(), Any()}, b[2] = {OneIn(3) ? Any() : a[0], Any()};
    unsigned char diskA[12], diskB[12];
    row.Store(diskA, a, FormLittle, 2);
    row.Store(diskB, b, FormLittle, 2);
    int status = 1, status2 = 1;
    int const inMemory = row.Compare(8, 1, a, 1, b, 0, 2, status);
    int const stored = row.Compare(1, 1, diskA, 1, diskB, 0, 2, status2);
    ASSERT_EQ((inMemory > 0) - (inMemory < 0), (stored > 0) - (stored < 0));
    ASSERT_EQ(inMemory == 0, std::memcmp(diskA, diskB, 12) == 0);
    ASSERT_EQ(status, 0);
    ASSERT_EQ(status2, 0);
  }
}

TEST_F(SealRow, ComparesStoredBytesByTheirDifference) {
  unsigned char a[] = {1, 2, 3, 4, 5, 6}, b[] = {1, 2, 3, 0xF4, 5, 0};
  int status = 7;
  EXPECT_EQ(row.Compare(FormBig, 0, a, 0, b, 0, 1, status), 4 - 0xF4);
  EXPECT_EQ(status, 0);
  // Memory is the whole byte 8: under 0x88 the words are bytes.
  XoSeal c{0x0100, 0, 0}, d{0x00FF, 0, 0};
  EXPECT_EQ(row.Compare(8, 0, &c, 0, &d, 0, 1, status), 1);
  EXPECT_LT(row.Compare(0x88, 0, &c, 0, &d, 0, 1, status), 0);
  EXPECT_EQ(row.Compare(FormBig, 0, nullptr, 0, nullptr, 0, 0, status), 0);
}

TEST_F(SealRow, HashIsTheXorOfTheWords) {
  XoSeal seals[] = {{0x0102, 0x0304, 0x0506}, {7, 0, 0}};
  unsigned const expected = (0x0102u ^ 0x0304u ^ 0x0506u ^ 7u) * 1103515245u;
  int error = 9;
  EXPECT_EQ(row.Hash(8, 0, seals, 2, error), expected);
  EXPECT_EQ(error, 0);
  // The nibble decides: 8 and 1 read the words as they lie in memory.
  EXPECT_EQ(row.Hash(0x88, 0, seals, 2, error), expected);
  EXPECT_EQ(row.Hash(FormLittle, 0, seals, 2, error), expected);
  unsigned char disk[12];
  row.Store(disk, seals, FormBig, 2);
  EXPECT_EQ(row.Hash(FormBig, 0, disk, 2, error), expected);
  EXPECT_EQ(row.Hash(FormBig, 6, disk, 2, error), (0x0102u ^ 0x0304u ^ 0x0506u) * 1103515245u);
  EXPECT_EQ(error, ERR_TM_LENGTH_EXCEEDED);
  EXPECT_EQ(row.Hash(FormBig, 6, disk, 0, error), 0u);
  EXPECT_EQ(error, 0);
}

TEST_F(SealRow, HasNoNullAndNoNextValue) {
  XoSeal seal{1, 2, 3};
  EXPECT_EQ(row.SetNull, nullptr);
  EXPECT_EQ(row.IsNull(&seal), 0);
  EXPECT_EQ(row.GetValue(&seal, 1, 8, kNextValue), ERR_TM_NOT_SUPPORTED);
  // The manager then takes what an empty string converts to.
  XoTypeMgr manager;
  EXPECT_EQ(manager.SetNullValue(XoSEAL_T, &seal), 0);
  EXPECT_EQ(NumberOf(seal), 0);
}

TEST_F(SealRow, SlotsPrintAndScan) {
  XoSeal seal{1, 2, 3};
  XoTypeMgr const manager;
  XoString out("is ");
  EXPECT_EQ(&row.PrintToXoString(out, &seal, "noop", 1), &out);
  EXPECT_STREQ(out.StrGet(), "is 4295098371");
  XoString wide(XoString::GetDefault16CodeSet(), 0);
  wide += XoString("42");
  EXPECT_EQ(row.ScanFromXoString(&seal, wide, nullptr, 1), &seal);
  EXPECT_EQ(NumberOf(seal), 42);
  EXPECT_EQ(row.ScanFromXoString(nullptr, wide, nullptr, 1), nullptr);
  XoSeal two[] = {{0, 0, 1}, {0, 0, 2}};
  XoString list;
  manager.PrintToXoString(XoSEAL_T, list, two, nullptr, 2);
  EXPECT_STREQ(list.StrGet(), "1,2");
}

TEST_F(SealRow, ConvertsByItsText) {
  XoTypeMgr manager;
  XoSeal seals[] = {{0, 0, 12}, {1, 2, 3}};
  XoTypeConvertData* const strings = manager.ConvertTo(XoSEAL_T, seals, 2);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "12");
  EXPECT_STREQ(strings->GetString(1)->StrGet(), "4295098371");
  strings->GetString(0)->SetNullValue();
  auto* const back = static_cast<XoSeal*>(manager.ConvertFrom(XoSEAL_T, strings, 3));
  EXPECT_EQ(NumberOf(back[0]), 0);
  EXPECT_EQ(NumberOf(back[1]), 4295098371);
  EXPECT_EQ(NumberOf(back[2]), 0);
  manager.Delete(XoSEAL_T, back, 3);
  delete strings;
}

TEST_F(SealRow, NewOnesAreZero) {
  for (unsigned count : {0u, 1u, 3u}) {
    auto* made = static_cast<XoSeal*>(row.Create(count));
    for (unsigned i = 0; i < std::max(count, 1u); ++i) EXPECT_EQ(NumberOf(made[i]), 0);
    row.Delete(made, count);
    made = static_cast<XoSeal*>(row.DefaultValue(count, 1));
    for (unsigned i = 0; i < std::max(count, 1u); ++i) EXPECT_EQ(NumberOf(made[i]), 0);
    row.Delete(made, count);
  }
}

}  // namespace
}  // namespace xo::test
