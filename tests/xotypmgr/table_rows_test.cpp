#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"

namespace xo::test {
namespace {

TEST(TypeTable, RowsAreExact) {
  for (int id = 0; id < kRowCount; ++id) {
    SCOPED_TRACE(id);
    TypeDescriptor const* const row = CurrentTypeTable[id];
    ASSERT_NE(row, nullptr);
    ExpectedRow const& expected = kExpectedRows[id];
    EXPECT_STREQ(row->Name, expected.name);
    EXPECT_STREQ(row->TypeIdName, expected.typeIdName);
    EXPECT_STREQ(row->Format, expected.format);
    EXPECT_EQ(row->MemLen, expected.size);
    EXPECT_EQ(row->Fixed, expected.fixed);
    EXPECT_EQ(row->Reserved, nullptr);
  }
}

TEST(TypeTable, EndsWithNull) {
  EXPECT_EQ(CurrentTypeTable[47], nullptr);
  EXPECT_EQ(OlderTypeTable[28], nullptr);
  EXPECT_EQ(std::size(CurrentTypeTable), 48u);
  EXPECT_EQ(std::size(OlderTypeTable), 29u);
}

TEST(TypeTable, RowsAreDistinct) {
  std::set<TypeDescriptor const*> rows;
  for (int id = 0; id < kRowCount; ++id) rows.insert(CurrentTypeTable[id]);
  rows.insert(OlderTypeTable[11]);
  EXPECT_EQ(rows.size(), 48u);
}

TEST(TypeTable, OlderTablePointsAtTheSameRowsButForStrings) {
  for (int id = 0; id < kOlderRowCount; ++id) {
    if (id == 11)
      EXPECT_NE(OlderTypeTable[id], CurrentTypeTable[id]);
    else
      EXPECT_EQ(OlderTypeTable[id], CurrentTypeTable[id]) << id;
  }
}

TEST(TypeTable, OlderStringRowLooksLikeTheCurrentOne) {
  TypeDescriptor const& older = *OlderTypeTable[11];
  TypeDescriptor const& current = *CurrentTypeTable[11];
  EXPECT_STREQ(older.Name, "XoString");
  EXPECT_STREQ(older.TypeIdName, "XoSTRING_T");
  EXPECT_STREQ(older.Format, "%s");
  EXPECT_EQ(older.MemLen, 16u);
  EXPECT_EQ(older.Fixed, 0u);
  EXPECT_EQ(older.Reserved, nullptr);
  EXPECT_EQ(older.Create, current.Create);
  EXPECT_EQ(older.Delete, current.Delete);
  EXPECT_EQ(older.Load, current.Load);
  EXPECT_EQ(older.NullSizeGet, current.NullSizeGet);
  EXPECT_EQ(older.ConvertTo, current.ConvertTo);
  EXPECT_EQ(older.ConvertFrom, current.ConvertFrom);
  EXPECT_EQ(older.Constructor, current.Constructor);
  EXPECT_EQ(older.Destructor, current.Destructor);
  EXPECT_EQ(older.Assignment, current.Assignment);
  EXPECT_EQ(older.Copy, current.Copy);
  EXPECT_EQ(older.PrintToXoString, current.PrintToXoString);
  EXPECT_EQ(older.ScanFromXoString, current.ScanFromXoString);
  EXPECT_EQ(older.DefaultValue, current.DefaultValue);
}

TEST(TypeTable, OlderStringRowHasNoNullAndNoNextValue) {
  TypeDescriptor const& older = *OlderTypeTable[11];
  TypeDescriptor const& illegal = *CurrentTypeTable[kIllegalRow];
  EXPECT_EQ(older.IsNull, illegal.IsNull);
  EXPECT_EQ(older.SetNull, nullptr);
  EXPECT_EQ(older.GetValue, illegal.GetValue);
}

TEST(TypeTable, OlderStringRowHasItsOwnStoredForm) {
  TypeDescriptor const& older = *OlderTypeTable[11];
  TypeDescriptor const& current = *CurrentTypeTable[11];
  EXPECT_NE(older.Store, current.Store);
  EXPECT_NE(older.SizeGet, current.SizeGet);
  EXPECT_NE(older.SizeGetFromMemFile, current.SizeGetFromMemFile);
  EXPECT_NE(older.Compare, current.Compare);
  EXPECT_NE(older.Hash, current.Hash);
  EXPECT_NE(older.Translate, current.Translate);
}

TEST(TypeDescriptorLayout, SlotsStandInOrder) {
  std::size_t const offsets[] = {
      offsetof(TypeDescriptor, Name),
      offsetof(TypeDescriptor, TypeIdName),
      offsetof(TypeDescriptor, Create),
      offsetof(TypeDescriptor, Delete),
      offsetof(TypeDescriptor, Store),
      offsetof(TypeDescriptor, Load),
      offsetof(TypeDescriptor, NullSizeGet),
      offsetof(TypeDescriptor, SizeGet),
      offsetof(TypeDescriptor, SizeGetFromMemFile),
      offsetof(TypeDescriptor, Compare),
      offsetof(TypeDescriptor, EvalAndBound),
      offsetof(TypeDescriptor, Hash),
      offsetof(TypeDescriptor, ConvertTo),
      offsetof(TypeDescriptor, ConvertFrom),
      offsetof(TypeDescriptor, Constructor),
      offsetof(TypeDescriptor, Destructor),
      offsetof(TypeDescriptor, Assignment),
      offsetof(TypeDescriptor, Copy),
      offsetof(TypeDescriptor, Translate),
      offsetof(TypeDescriptor, IsNull),
      offsetof(TypeDescriptor, SetNull),
      offsetof(TypeDescriptor, Format),
      offsetof(TypeDescriptor, PrintToXoString),
      offsetof(TypeDescriptor, ScanFromXoString),
      offsetof(TypeDescriptor, MemLen),
      offsetof(TypeDescriptor, DefaultValue),
      offsetof(TypeDescriptor, GetValue),
      offsetof(TypeDescriptor, Reserved),
  };
  ASSERT_EQ(std::size(offsets), 28u);
  for (std::size_t slot = 0; slot < 28; ++slot) EXPECT_EQ(offsets[slot], slot * sizeof(void*));
  EXPECT_EQ(offsetof(TypeDescriptor, Fixed), 24 * sizeof(void*) + 2);
  EXPECT_EQ(sizeof(TypeDescriptor::MemLen), 2u);
  EXPECT_EQ(sizeof(TypeDescriptor::Fixed), 2u);
  EXPECT_EQ(sizeof(TypeDescriptor), 28 * sizeof(void*));
}

TEST(FoldTypeId, AllIds) {
  for (int id = -128; id < 100; ++id) EXPECT_EQ(FoldTypeId(static_cast<signed char>(id)), id);
  // 100 - 54 is 46 already, and greater ids are cut to it.
  for (int id = 100; id < 128; ++id) EXPECT_EQ(FoldTypeId(static_cast<signed char>(id)), 46) << id;
}

TEST(TypeIds, ConstantsAreTheRowNumbers) {
  int const ids[] = {
      Xo1B_T,       Xo2B_T,          Xo4B_T,          XoDOUBLE_T,        XoFLOAT_T,
      XoU2B_T,      XoU4B_T,         XoINT_T,         XoUNSIGNED_T,      XoENUM_T,
      XoU1B_T,      XoSTRING_T,      XoDATE_T,        XoTIME_T,          XoBLOCKID_T,
      XoOBJID_T,    XoCLID_T,        XoREF_T,         XoBLOB_T,          XoDATIME_T,
      XoISTRING_T,  XoCASEISTRING_T, D_DATE_T,        D_TIME_T,          D_TIMESTAMP_T,
      D_INTERVAL_T, XoINT64_T,       XoBOOLEAN_T,     XoNULL_1B_T,       XoNULL_U1B_T,
      XoNULL_2B_T,  XoNULL_U2B_T,    XoNULL_INT_T,    XoNULL_UNSIGNED_T, XoNULL_4B_T,
      XoNULL_U4B_T, XoNULL_FLOAT_T,  XoNULL_DOUBLE_T, XoNULL_XOINT64_T,  XoSEAL_T,
      XoDATIME_N_T, XoTIMESPAN_T,    Xo8B_T,          XoU8B_T,           XoNULL_8B_T,
      XoNULL_U8B_T};
  ASSERT_EQ(std::size(ids), 46u);
  for (int id = 0; id < 46; ++id) EXPECT_EQ(ids[id], id);
  EXPECT_EQ(XoRES_T, 100);
}

TEST(ErrorCodes, ValuesAreFixed) {
  EXPECT_EQ(ERR_TM_NOT_SUPPORTED, -2999);
  EXPECT_EQ(ERR_TM_NO_NEXT_VALUE, 2091);
  EXPECT_EQ(ERR_TM_LENGTH_EXCEEDED, 2101);
  EXPECT_EQ(ERR_TM_FIRST_KEY_CUT, 2114);
  EXPECT_EQ(ERR_TM_SECOND_KEY_CUT, 2115);
}

TEST(CompareOptions, BitsAreFixed) {
  EXPECT_EQ(CmpOpNoWildcards, 0x10);
  EXPECT_EQ(CmpOpPrefixResult, 0x80);
  EXPECT_EQ(CmpOpBinaryOrder, 0x100);
}

}  // namespace
}  // namespace xo::test
