#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"

namespace xo::test {
namespace {

TypeDescriptor const& Row(int id) { return *CurrentTypeTable[id]; }

TEST(StartUpFill, RowsHoldTheDiskHelpersOfTheirFamily) {
  struct {
    std::vector<int> rows;
    TypeDescriptor::StoreFunction* store;
    TypeDescriptor::LoadFunction* load;
    TypeDescriptor::NullSizeGetFunction* nullSizeGet;
    TypeDescriptor::SizeGetFunction* sizeGet;
  } const fills[] = {
      {{0, 10}, CharStore, CharStore, CharNullSizeGet, CharSizeGet},
      {{1, 5}, ShortStore, ShortStore, ShortNullSizeGet, ShortSizeGet},
      {{2, 6, 14}, LongStore, LongStore, LongNullSizeGet, LongSizeGet},
      {{3}, DoubleStore, DoubleStore, DoubleNullSizeGet, DoubleSizeGet},
      {{4}, FloatStore, FloatStore, FloatNullSizeGet, FloatSizeGet},
      {{7, 9}, IntStore, IntLoad, IntNullSizeGet, IntSizeGet},
      {{8}, UnsignedStore, UnsignedLoad, IntNullSizeGet, IntSizeGet},
      {{42, 43}, O_8BStore, O_8BStore, O_8BNullSizeGet, O_8BSizeGet},
  };
  for (auto const& fill : fills) {
    for (int id : fill.rows) {
      SCOPED_TRACE(id);
      EXPECT_EQ(Row(id).Store, fill.store);
      EXPECT_EQ(Row(id).Load, fill.load);
      EXPECT_EQ(Row(id).NullSizeGet, fill.nullSizeGet);
      EXPECT_EQ(Row(id).SizeGet, fill.sizeGet);
    }
  }
  EXPECT_EQ(Row(25).NullSizeGet, FloatNullSizeGet);
  EXPECT_EQ(Row(25).SizeGet, FloatSizeGet);
  EXPECT_NE(Row(25).Store, FloatStore);
  EXPECT_NE(Row(25).Load, FloatStore);
}

TEST(RowFunctions, OnlySetNullAndReservedAreNull) {
  std::vector<TypeDescriptor const*> rows(CurrentTypeTable, CurrentTypeTable + kRowCount);
  rows.push_back(OlderTypeTable[11]);
  for (TypeDescriptor const* row : rows) {
    SCOPED_TRACE(row->Name);
    EXPECT_NE(row->Create, nullptr);
    EXPECT_NE(row->Delete, nullptr);
    EXPECT_NE(row->Store, nullptr);
    EXPECT_NE(row->Load, nullptr);
    EXPECT_NE(row->NullSizeGet, nullptr);
    EXPECT_NE(row->SizeGet, nullptr);
    EXPECT_NE(row->SizeGetFromMemFile, nullptr);
    EXPECT_NE(row->Compare, nullptr);
    EXPECT_NE(row->EvalAndBound, nullptr);
    EXPECT_NE(row->Hash, nullptr);
    EXPECT_NE(row->ConvertTo, nullptr);
    EXPECT_NE(row->ConvertFrom, nullptr);
    EXPECT_NE(row->Constructor, nullptr);
    EXPECT_NE(row->Destructor, nullptr);
    EXPECT_NE(row->Assignment, nullptr);
    EXPECT_NE(row->Copy, nullptr);
    EXPECT_NE(row->Translate, nullptr);
    EXPECT_NE(row->IsNull, nullptr);
    EXPECT_NE(row->PrintToXoString, nullptr);
    EXPECT_NE(row->ScanFromXoString, nullptr);
    EXPECT_NE(row->DefaultValue, nullptr);
    EXPECT_NE(row->GetValue, nullptr);
  }
}

/// Checks every slot but those in which the rows are allowed to differ.
void ExpectSameFunctions(TypeDescriptor const& a, TypeDescriptor const& b, bool sameGetValue) {
  EXPECT_EQ(a.Create, b.Create);
  EXPECT_EQ(a.Delete, b.Delete);
  EXPECT_EQ(a.Store, b.Store);
  EXPECT_EQ(a.Load, b.Load);
  EXPECT_EQ(a.NullSizeGet, b.NullSizeGet);
  EXPECT_EQ(a.SizeGet, b.SizeGet);
  EXPECT_EQ(a.SizeGetFromMemFile, b.SizeGetFromMemFile);
  EXPECT_EQ(a.Compare, b.Compare);
  EXPECT_EQ(a.EvalAndBound, b.EvalAndBound);
  EXPECT_EQ(a.Hash, b.Hash);
  EXPECT_EQ(a.ConvertTo, b.ConvertTo);
  EXPECT_EQ(a.ConvertFrom, b.ConvertFrom);
  EXPECT_EQ(a.Constructor, b.Constructor);
  EXPECT_EQ(a.Destructor, b.Destructor);
  EXPECT_EQ(a.Assignment, b.Assignment);
  EXPECT_EQ(a.Copy, b.Copy);
  EXPECT_EQ(a.Translate, b.Translate);
  EXPECT_EQ(a.IsNull, b.IsNull);
  EXPECT_EQ(a.SetNull, b.SetNull);
  EXPECT_EQ(a.PrintToXoString, b.PrintToXoString);
  EXPECT_EQ(a.ScanFromXoString, b.ScanFromXoString);
  EXPECT_EQ(a.MemLen, b.MemLen);
  EXPECT_EQ(a.Fixed, b.Fixed);
  EXPECT_EQ(a.DefaultValue, b.DefaultValue);
  EXPECT_EQ(a.GetValue == b.GetValue, sameGetValue);
}

TEST(RowFunctions, BlockIdIsUnsignedLongButForItsNames) {
  ExpectSameFunctions(Row(6), Row(14), true);
}

TEST(RowFunctions, EnumIsIntButForItsNextValue) { ExpectSameFunctions(Row(7), Row(9), false); }

TEST(RowFunctions, EightByteRowsShareWhatHasNoSign) {
  TypeDescriptor const &a = Row(42), &b = Row(43);
  EXPECT_EQ(a.SizeGetFromMemFile, b.SizeGetFromMemFile);
  EXPECT_EQ(a.Constructor, b.Constructor);
  EXPECT_EQ(a.Destructor, b.Destructor);
  EXPECT_EQ(a.Assignment, b.Assignment);
  EXPECT_EQ(a.Copy, b.Copy);
  EXPECT_EQ(a.Translate, b.Translate);
  EXPECT_EQ(a.PrintToXoString, b.PrintToXoString);
  EXPECT_EQ(a.ScanFromXoString, b.ScanFromXoString);
  EXPECT_EQ(a.DefaultValue, b.DefaultValue);
  EXPECT_NE(a.Compare, b.Compare);
  EXPECT_NE(a.EvalAndBound, b.EvalAndBound);
  EXPECT_NE(a.Hash, b.Hash);
  EXPECT_NE(a.GetValue, b.GetValue);
}

TEST(RowFunctions, NullDefaultsStandInTheRowsThatHaveNoNull) {
  std::set<int> const noNull = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 14,
                                20, 21, 22, 23, 24, 25, 26, 39, 42, 43, 46};
  for (int id : noNull) {
    EXPECT_EQ(Row(id).IsNull, Row(kIllegalRow).IsNull) << id;
    EXPECT_EQ(Row(id).SetNull, nullptr) << id;
  }
  // The others have their own once they are built.
  for (int id = 0; id < kRowCount; ++id) {
    if (noNull.contains(id) || !kBuiltRows.contains(id)) continue;
    EXPECT_NE(Row(id).IsNull, Row(kIllegalRow).IsNull) << id;
    EXPECT_NE(Row(id).SetNull, nullptr) << id;
  }
}

TEST(RowFunctions, NextValueDefaultStandsInTheRowsThatHaveNoNextValue) {
  std::set<int> const noNext = {9, 16, 18, 20, 21, 39, 46};
  for (int id : noNext) EXPECT_EQ(Row(id).GetValue, Row(kIllegalRow).GetValue) << id;
  for (int id : kBuiltRows) {
    if (noNext.contains(id)) continue;
    EXPECT_NE(Row(id).GetValue, Row(kIllegalRow).GetValue) << id;
  }
}

TEST(RowFunctions, ComparisonsStandUnderTheirOwnNames) {
  // One by one: of a long constant list MinGW takes the addresses of its own jumps into the
  // library.
  auto const expect = [](int id, XCompare* compare) { EXPECT_EQ(Row(id).Compare, compare) << id; };
  expect(0, CharCompare);
  expect(1, ShortCompare);
  expect(2, LongCompare);
  expect(3, DoubleCompare);
  expect(4, FloatCompare);
  expect(5, WordCompare);
  expect(6, DwordCompare);
  expect(7, IntCompare);
  expect(8, UnsignedCompare);
  expect(9, IntCompare);
  expect(10, ByteCompare);
  expect(11, StringCompare);
  expect(12, XoDateCompare);
  expect(13, XoTimeCompare);
  expect(14, DwordCompare);
  expect(15, XoObjId::Compare);
  expect(16, XoClassId::Compare);
  expect(17, XoRef::Compare);
  expect(18, BlobCompare);
  expect(19, XoDateTimeCompare);
  expect(20, XoIStringCompare);
  expect(21, XoCaseIStringCompare);
  expect(22, d_DateCompare);
  expect(23, d_TimeCompare);
  expect(24, d_TimestampCompare);
  expect(25, FloatCompare);
  expect(26, Int64Compare);
  expect(27, BooleanCompare);
  expect(39, XoSeal::Compare);
  expect(40, XoDateTimeNCompare);
  expect(41, XoTimeSpanCompare);
  expect(42, O_8BCompare);
  expect(43, O_U8BCompare);
}

/// What the `illegal` row answers, asked of a row's slots that have no operation of their own.
void ExpectNoConversionTextOrBounds(TypeDescriptor const& row) {
  int value[4] = {1, 2, 3, 4};
  EXPECT_EQ(row.ConvertTo(value, 1), nullptr);
  EXPECT_EQ(row.ConvertFrom(nullptr, 1), nullptr);
  EXPECT_EQ(row.DefaultValue(1, 0), nullptr);
  EXPECT_EQ(row.DefaultValue(3, 1), nullptr);
  unsigned short op = 0x1234;
  EXPECT_EQ(row.EvalAndBound(nullptr, op, value, 8, 16, value, nullptr), 0.0f);
  EXPECT_EQ(op, 0x1234);

  // The text is only passed on, so any memory serves for it.
  alignas(std::max_align_t) unsigned char text[64];
  std::fill(std::begin(text), std::end(text), static_cast<unsigned char>(0xA5));
  auto& string = reinterpret_cast<XoString&>(text);
  EXPECT_EQ(&row.PrintToXoString(string, value, row.Format, 1), &string);
  EXPECT_EQ(row.ScanFromXoString(value, string, row.Format, 1), nullptr);
  EXPECT_EQ(std::count(std::begin(text), std::end(text), 0xA5), 64);
  EXPECT_EQ(value[0], 1);
}

void ExpectIllegalAnswers(TypeDescriptor const& row) {
  int value[4] = {1, 2, 3, 4};
  int other[4] = {5, 6, 7, 8};
  EXPECT_EQ(row.Create(1), nullptr);
  EXPECT_EQ(row.Create(0x80000000u), nullptr);
  EXPECT_EQ(row.Delete(nullptr, 1), nullptr);
  EXPECT_EQ(row.Delete(value, 4), nullptr);
  EXPECT_EQ(row.Store(value, other, 1, 4), 0u);
  EXPECT_EQ(row.Load(value, other, 1, 4), 0u);
  EXPECT_EQ(row.SizeGetFromMemFile(nullptr, 1, 4), 0u);
  EXPECT_EQ(row.Translate(value, 1, 16, other, 8, 16, 4), 0u);
  EXPECT_EQ(row.Translate(value, 1, 16, other, 1, 8, 4), 0u);
  int error = 4711;
  EXPECT_EQ(row.Compare(8, 0, value, 0, other, 0, 4, error), 0);
  EXPECT_EQ(row.Compare(1, 4, value, 4, other, 0, 4, error), 0);
  EXPECT_EQ(row.Hash(8, 0, value, 4, error), 0u);
  EXPECT_EQ(row.Hash(1, 4, value, 4, error), 0u);
  EXPECT_EQ(error, 4711);
  row.Constructor(value, 4, 0);
  row.Destructor(value, 4, 0);
  row.Assignment(value, other, 4, 0);
  row.Copy(value, other, 4, 1);
  EXPECT_EQ(row.IsNull(value), 0);
  EXPECT_EQ(row.SetNull, nullptr);
  for (int code = 0; code < 256; ++code)
    EXPECT_EQ(row.GetValue(value, 1, 8, static_cast<unsigned char>(code)), ERR_TM_NOT_SUPPORTED);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(value[i], i + 1);
    EXPECT_EQ(other[i], i + 5);
  }
  ExpectNoConversionTextOrBounds(row);
}

TEST(IllegalRow, DoesNothingAndAnswersNothing) {
  ExpectIllegalAnswers(Row(kIllegalRow));
  EXPECT_EQ(Row(kIllegalRow).NullSizeGet(4), 0u);
  EXPECT_EQ(Row(kIllegalRow).SizeGet(nullptr, 8, 1, 4), 0u);
}

TEST(IllegalRow, AnswersForRowsWithNoOperationsYet) {
  for (int id = 0; id < kRowCount; ++id) {
    if (kBuiltRows.contains(id)) continue;
    SCOPED_TRACE(id);
    ExpectIllegalAnswers(Row(id));
    EXPECT_EQ(Row(id).NullSizeGet(4), 0u);
    EXPECT_EQ(Row(id).SizeGet(nullptr, 8, 1, 4), 0u);
  }
}

TEST(RowFunctions, EveryRowTellsItsBounds) {
  for (int id : kBuiltRows) EXPECT_NE(Row(id).EvalAndBound, Row(kIllegalRow).EvalAndBound) << id;
}

TEST(RowFunctions, IntervalsTellTheirBoundsAsFloatsDo) {
  EXPECT_EQ(Row(25).EvalAndBound, Row(4).EvalAndBound);
}

TEST(RowFunctions, StringsTellTheirBoundsInEachTableByTheirOwn) {
  EXPECT_NE(OlderTypeTable[11]->EvalAndBound, Row(kIllegalRow).EvalAndBound);
  EXPECT_NE(OlderTypeTable[11]->EvalAndBound, Row(11).EvalAndBound);
}

TEST(RowFunctions, StringsConvertAlikeInBothTables) {
  TypeDescriptor const& older = *OlderTypeTable[11];
  EXPECT_EQ(older.ConvertTo, Row(11).ConvertTo);
  EXPECT_EQ(older.ConvertFrom, Row(11).ConvertFrom);
  EXPECT_EQ(older.PrintToXoString, Row(11).PrintToXoString);
  EXPECT_EQ(older.ScanFromXoString, Row(11).ScanFromXoString);
}

TEST(RowFunctions, BytesPrintAndScanByOneFunction) {
  EXPECT_EQ(Row(0).PrintToXoString, Row(10).PrintToXoString);
  EXPECT_EQ(Row(0).ScanFromXoString, Row(10).ScanFromXoString);
}

}  // namespace
}  // namespace xo::test
