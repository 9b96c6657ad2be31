#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"
#include "tests/xotypmgr/row_probe.hpp"

namespace xo::test {
namespace {

/// Calls `check(manager, id)` for every id without a row, and for those of the `illegal` row.
template <class Check>
void ForEveryStrayId(Check check) {
  XoTypeMgr current, older(3);
  for (int number = -128; number < 128; ++number) {
    if (number >= 0 && number < kOlderRowCount) continue;
    SCOPED_TRACE(number);
    if (number < 0 || number >= kIllegalRow) check(current, Id(number));
    check(older, Id(number));
  }
}

TEST(StrayIds, AnswerAsTheIllegalRow) {
  ForEveryStrayId([](XoTypeMgr& manager, char id) {
    int value[4] = {1, 2, 3, 4}, other[4] = {5, 6, 7, 8};
    EXPECT_EQ(manager.Create(id, 1), nullptr);
    EXPECT_EQ(manager.Create(id, 0x80000000u), nullptr);
    EXPECT_EQ(manager.Delete(id, value, 4), nullptr);
    EXPECT_EQ(manager.DefaultValue(id, 1, 0), nullptr);
    int error = 4711;
    EXPECT_EQ(manager.Cmp(id, 4, value, 8, other, 0, 4, 1, error), 0);
    EXPECT_EQ(error, 4711);
    EXPECT_EQ(manager.Cmp(id, value, other, 0, 4, 8), 0);
    EXPECT_EQ(manager.Hash(id, 4, value, 4, 8, error), 0u);
    EXPECT_EQ(error, 4711);
    EXPECT_EQ(manager.Store(id, value, other, 2, 4), 0u);
    EXPECT_EQ(manager.Load(id, value, other, 2, 4), 0u);
    EXPECT_EQ(manager.DiskLenGet(id, value, 1, 4, 8), 0u);
    EXPECT_EQ(manager.DiskLenGetFromMemFile(id, nullptr, 1, 4), 0u);
    EXPECT_EQ(manager.Translate(id, value, 1, 16, other, 8, 16, 4), 0u);
    EXPECT_EQ(manager.Translate(id, value, 1, 16, other, 1, 8, 4), 0u);
    unsigned short op = 5;
    EXPECT_EQ(manager.EvalAndBound(id, nullptr, op, value, 8, 16, other, nullptr), 0.0f);
    EXPECT_EQ(manager.IsNullValue(id, value), 0);
    for (int code : {2, int{'M'}, int{'N'}, int{'O'}, int{'P'}}) {
      for (int format : {8, 1, 0x81, 2}) {
        EXPECT_EQ(manager.GetValue(id, value, 1, static_cast<unsigned char>(format),
                                   static_cast<NextValueCode>(code)),
                  ERR_TM_NOT_SUPPORTED);
      }
    }
    for (int i = 0; i < 4; ++i) EXPECT_EQ(value[i], i + 1);
  });
}

TEST(StrayIds, HaveTheIllegalRowsFunctionsAndNames) {
  TypeDescriptor const& illegal = *CurrentTypeTable[kIllegalRow];
  ForEveryStrayId([&](XoTypeMgr& manager, char id) {
    EXPECT_EQ(manager.CmpFuncPtrGet(id), illegal.Compare);
    EXPECT_EQ(manager.LoadPtrGet(id), illegal.Load);
    EXPECT_EQ(manager.StorePtrGet(id), illegal.Store);
    EXPECT_EQ(manager.ConstructorPtrGet(id), illegal.Constructor);
    EXPECT_EQ(manager.DestructorPtrGet(id), illegal.Destructor);
    EXPECT_EQ(manager.AssignmentPtrGet(id), illegal.Assignment);
    EXPECT_EQ(manager.CopyPtrGet(id), illegal.Copy);
    EXPECT_EQ(manager.IsNullPtrGet(id), illegal.IsNull);
    EXPECT_EQ(manager.SetNullPtrGet(id), nullptr);
    EXPECT_EQ(manager.MemLenGet(id, 1000), 0);
    EXPECT_EQ(manager.IsFixed(id), 1);
    EXPECT_STREQ(manager.NameGet(id, nullptr), "illegal");
    EXPECT_STREQ(manager.TypeIdNameGet(id, nullptr), "XoRES_T");
    char buffer[16];
    EXPECT_STREQ(manager.NameGet(id, buffer), "illegal");
    EXPECT_STREQ(manager.TypeIdNameGet(id, buffer), "XoRES_T");
    EXPECT_EQ(manager.SupportsNullValue(id), 0);
  });
}

TEST(StrayIds, HaveNoArrayElements) {
  XoTypeMgr const current, older(3);
  int values[4] = {};
  for (int number = -128; number < 128; ++number) {
    SCOPED_TRACE(number);
    bool const isRow = number >= 0 && (number < kRowCount || number >= 100);
    bool const isOlderRow = number >= 0 && number < kOlderRowCount;
    for (unsigned count : {0u, 4u}) {
      EXPECT_EQ(current.GetArrayElement(Id(number), values, 1, count) != nullptr, isRow);
      EXPECT_EQ(older.GetArrayElement(Id(number), values, 1, count) != nullptr, isOlderRow);
    }
  }
  // The `illegal` row is a row, and its elements have no size.
  EXPECT_EQ(current.GetArrayElement(46, values, 3, 4), values);
  EXPECT_EQ(current.GetArrayElement(127, values, 3, 4), values);
  EXPECT_EQ(current.GetArrayElement(100, values, 4, 4), nullptr);
}

TEST(StrayIds, PrintGivesTheTextBackAsItWas) {
  ForEveryStrayId([](XoTypeMgr& manager, char id) {
    // Exchanging for null only asks.
    auto* const print = manager.ExchangePrintToXoStringFunc(id, nullptr);
    ASSERT_NE(print, nullptr);
    alignas(std::max_align_t) unsigned char text[64];
    std::fill(std::begin(text), std::end(text), static_cast<unsigned char>(0x5A));
    auto& string = reinterpret_cast<XoString&>(text);
    int value = 3;
    EXPECT_EQ(&print(string, &value, "%d", 1), &string);
    EXPECT_EQ(std::count(std::begin(text), std::end(text), 0x5A), 64);
    auto* const scan = manager.ExchangeScanFromXoStringFunc(id, nullptr);
    ASSERT_NE(scan, nullptr);
    EXPECT_EQ(scan(&value, string, "%d", 1), nullptr);
    EXPECT_EQ(value, 3);
  });
}

TEST(StrayIds, ExchangesReachTheIllegalRow) {
  RowKeeper const keeper(CurrentTypeTable[kIllegalRow]);
  ForEveryStrayId([&](XoTypeMgr& manager, char id) {
    CurrentTypeTable[kIllegalRow]->Format = "illegal";
    EXPECT_STREQ(manager.ExchangeFormat(id, "other"), "illegal");
    EXPECT_STREQ(CurrentTypeTable[kIllegalRow]->Format, "other");
    XCompare* const illegalCompare = CurrentTypeTable[kIllegalRow]->Compare;
    EXPECT_EQ(manager.ExchangeXoTypeCmpFunc(id, CharCompare), illegalCompare);
    EXPECT_EQ(manager.ExchangeXoTypeCmpFunc(id, illegalCompare), CharCompare);
  });
}

TEST(StrayIds, OfTheOlderTableStillHaveARowInTheCurrentOne) {
  XoTypeMgr const current, older(3);
  o_8b const value = 5;
  unsigned char disk[8] = {};
  EXPECT_EQ(current.Store(42, disk, const_cast<o_8b*>(&value), 1, 1), 8u);
  EXPECT_EQ(older.Store(42, disk, const_cast<o_8b*>(&value), 1, 1), 0u);
  EXPECT_STREQ(current.NameGet(42, nullptr), "o_8b");
  EXPECT_STREQ(older.NameGet(42, nullptr), "illegal");
}

}  // namespace
}  // namespace xo::test
