#include <gtest/gtest.h>

#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"
#include "tests/xotypmgr/row_probe.hpp"

namespace xo::test {
namespace {

int BackwardCompare(unsigned char format, unsigned lengthA, void* a, unsigned lengthB, void* b,
                    unsigned short op, unsigned count, int& status) {
  return LongCompare(format, lengthB, b, lengthA, a, op, count, status);
}

XoString& OtherPrint(XoString& out, void*, char const*, unsigned) { return out; }

void* OtherScan(void* target, XoString&, char const*, unsigned) { return target; }

class Exchange : public testing::Test {
 protected:
  XoTypeMgr first, second{12}, older{3};
};

TEST_F(Exchange, ComparisonShowsOnEveryManager) {
  RowKeeper const keeper(CurrentTypeTable[2]);
  o_4b small = 1, great = 2;
  for (XoTypeMgr* manager : {&first, &second, &older})
    EXPECT_EQ(manager->Cmp(2, &small, &great, 0, 1, 8), -1);
  EXPECT_EQ(first.ExchangeXoTypeCmpFunc(2, BackwardCompare), LongCompare);
  for (XoTypeMgr* manager : {&first, &second, &older}) {
    EXPECT_EQ(manager->Cmp(2, &small, &great, 0, 1, 8), 1);
    EXPECT_EQ(manager->CmpFuncPtrGet(2), BackwardCompare);
  }
  EXPECT_EQ(OlderTypeTable[2]->Compare, BackwardCompare);
  EXPECT_EQ(older.ExchangeXoTypeCmpFunc(2, LongCompare), BackwardCompare);
  EXPECT_EQ(first.Cmp(2, &small, &great, 0, 1, 8), -1);
}

TEST_F(Exchange, FormatPrintAndScanShowOnEveryManager) {
  RowKeeper const keeper(CurrentTypeTable[7]);
  auto* const oldPrint = CurrentTypeTable[7]->PrintToXoString;
  auto* const oldScan = CurrentTypeTable[7]->ScanFromXoString;
  char const other[] = "%5d";
  EXPECT_STREQ(first.ExchangeFormat(7, other), "%d");
  EXPECT_EQ(first.ExchangePrintToXoStringFunc(7, OtherPrint), oldPrint);
  EXPECT_EQ(first.ExchangeScanFromXoStringFunc(7, OtherScan), oldScan);
  for (XoTypeMgr* manager : {&first, &second, &older}) {
    EXPECT_EQ(manager->ExchangeFormat(7, nullptr), other);
    EXPECT_EQ(manager->ExchangePrintToXoStringFunc(7, nullptr), OtherPrint);
    EXPECT_EQ(manager->ExchangeScanFromXoStringFunc(7, nullptr), OtherScan);
  }
  EXPECT_EQ(CurrentTypeTable[7]->Format, other);
  EXPECT_EQ(OlderTypeTable[7]->PrintToXoString, OtherPrint);
}

TEST_F(Exchange, NullOnlyAsks) {
  for (int id = 0; id < kRowCount; ++id) {
    TypeDescriptor const before = *CurrentTypeTable[id];
    EXPECT_EQ(first.ExchangeXoTypeCmpFunc(Id(id), nullptr), before.Compare);
    EXPECT_EQ(first.ExchangeFormat(Id(id), nullptr), before.Format);
    EXPECT_EQ(first.ExchangePrintToXoStringFunc(Id(id), nullptr), before.PrintToXoString);
    EXPECT_EQ(first.ExchangeScanFromXoStringFunc(Id(id), nullptr), before.ScanFromXoString);
    EXPECT_EQ(CurrentTypeTable[id]->Compare, before.Compare);
    EXPECT_EQ(CurrentTypeTable[id]->Format, before.Format);
    EXPECT_EQ(CurrentTypeTable[id]->PrintToXoString, before.PrintToXoString);
    EXPECT_EQ(CurrentTypeTable[id]->ScanFromXoString, before.ScanFromXoString);
  }
}

TEST_F(Exchange, EachChangesItsOwnSlotAndNoOther) {
  RowKeeper const keeper(CurrentTypeTable[12]);
  first.ExchangeXoTypeCmpFunc(12, BackwardCompare);
  first.ExchangeFormat(12, "date");
  first.ExchangePrintToXoStringFunc(12, OtherPrint);
  first.ExchangeScanFromXoStringFunc(12, OtherScan);
  EXPECT_EQ(keeper->Compare, BackwardCompare);
  EXPECT_STREQ(keeper->Format, "date");
  EXPECT_EQ(keeper->PrintToXoString, OtherPrint);
  EXPECT_EQ(keeper->ScanFromXoString, OtherScan);
  EXPECT_STREQ(keeper->Name, "XoDate");
  EXPECT_STREQ(keeper->TypeIdName, "XoDATE_T");
  // A row that shared its functions keeps its own slots.
  EXPECT_STREQ(CurrentTypeTable[22]->Format, "%a %b %e");
  EXPECT_NE(CurrentTypeTable[22]->Compare, BackwardCompare);
}

TEST_F(Exchange, RowsThatShareAFunctionAreExchangedApart) {
  RowKeeper const keeper(CurrentTypeTable[6]);
  first.ExchangeXoTypeCmpFunc(6, BackwardCompare);
  EXPECT_EQ(first.CmpFuncPtrGet(6), BackwardCompare);
  EXPECT_EQ(first.CmpFuncPtrGet(14), DwordCompare);
}

TEST_F(Exchange, StringRowsOfTheTwoTablesAreApart) {
  RowKeeper const current(CurrentTypeTable[11]), old(OlderTypeTable[11]);
  first.ExchangeFormat(11, "%S");
  EXPECT_STREQ(second.ExchangeFormat(11, nullptr), "%S");
  EXPECT_STREQ(older.ExchangeFormat(11, nullptr), "%s");
  older.ExchangeXoTypeCmpFunc(11, BackwardCompare);
  EXPECT_EQ(older.CmpFuncPtrGet(11), BackwardCompare);
  EXPECT_NE(first.CmpFuncPtrGet(11), BackwardCompare);
}

int OtherCompare(unsigned char, unsigned, void*, unsigned, void*, unsigned short, unsigned,
                 int& status) {
  status = 1;
  return 77;
}

TEST_F(Exchange, ComparisonOfKeysGoesThroughItsSlot) {
  RowKeeper const current(CurrentTypeTable[11]), old(OlderTypeTable[11]);
  // "abcd" and "abce" as index keys, which their first letters tell apart.
  unsigned char one[] = {12, 0, 254, 1, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x18, 0x50, 0, 0xFF};
  unsigned char two[] = {12, 0, 254, 1, 0x0C, 0x50, 0x10, 0x50, 0x14, 0x50, 0x1C, 0x50, 0, 0xFF};
  auto const compare = [&](XoTypeMgr const& manager, int& status) {
    return manager.Cmp(11, sizeof one, one, sizeof two, two, 0x10, 1, 0x81, status);
  };
  for (XoTypeMgr* const manager : {&first, &older}) {
    int status = 1;
    EXPECT_LT(compare(*manager, status), 0);
    EXPECT_EQ(status, 0);
    manager->ExchangeXoTypeCmpFunc(11, OtherCompare);
    EXPECT_EQ(compare(*manager, status), 77);
    EXPECT_EQ(status, 1);
  }
}

TEST_F(Exchange, ReservedIdReachesTheIllegalRow) {
  RowKeeper const keeper(CurrentTypeTable[kIllegalRow]);
  EXPECT_STREQ(first.ExchangeFormat(XoRES_T, "none"), "illegal");
  EXPECT_STREQ(first.ExchangeFormat(46, nullptr), "none");
  EXPECT_STREQ(first.ExchangeFormat(127, nullptr), "none");
}

}  // namespace
}  // namespace xo::test
