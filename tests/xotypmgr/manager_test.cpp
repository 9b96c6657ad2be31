#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"
#include "tests/xotypmgr/row_probe.hpp"

namespace xo::test {
namespace {

/// Only the current table has a row 40.
bool UsesCurrentTable(XoTypeMgr const& manager) {
  return std::string(manager.NameGet(40, nullptr)) == "XoDateTimeN";
}

struct Level {
  unsigned factory;
  bool current;
  unsigned short level;
};

Level const kLevels[] = {
    {0, false, 0},          {1, false, 1},          {2, false, 2},    {3, false, 3},
    {4, true, 4},           {5, true, 5},           {6, true, 6},     {7, true, 7},
    {8, true, 8},           {9, true, 9},           {10, true, 10},   {11, false, 3},
    {12, true, 4},          {13, true, 4},          {4000, true, 4},  {65535, true, 4},
    {65536, true, 4},       {65539, true, 4},       {65547, true, 4}, {0x7FFFFFFFu, true, 4},
    {0x80000003u, true, 4}, {0xFFFFFFFFu, true, 4},
};

TEST(ManagerFactory, ArgumentChoosesTableAndLevel) {
  for (Level const& each : kLevels) {
    SCOPED_TRACE(each.factory);
    XoTypeMgr const manager(each.factory);
    EXPECT_EQ(UsesCurrentTable(manager), each.current);
    EXPECT_EQ(manager.FactoryLevel(), each.level);
  }
}

TEST(ManagerFactory, SetFactoryChoosesAnew) {
  XoTypeMgr manager(2);
  for (Level const& each : kLevels) {
    SCOPED_TRACE(each.factory);
    manager.SetFactory(each.factory);
    EXPECT_EQ(UsesCurrentTable(manager), each.current);
    EXPECT_EQ(manager.FactoryLevel(), each.level);
  }
}

TEST(ManagerFactory, DefaultLevelIsFive) {
  XoTypeMgr const manager;
  EXPECT_TRUE(UsesCurrentTable(manager));
  EXPECT_EQ(manager.FactoryLevel(), 5);
}

TEST(ManagerFactory, ManagersAreSmallAndPlain) {
  EXPECT_TRUE(std::is_trivially_copyable_v<XoTypeMgr>);
  EXPECT_TRUE(std::is_trivially_destructible_v<XoTypeMgr>);
  EXPECT_FALSE(std::is_polymorphic_v<XoTypeMgr>);
  EXPECT_EQ(sizeof(XoTypeMgr), 2 * sizeof(void*));
  XoTypeMgr const older(3);
  XoTypeMgr copy = older;
  EXPECT_FALSE(UsesCurrentTable(copy));
  EXPECT_EQ(copy.FactoryLevel(), 3);
  copy.SetFactory(7);
  EXPECT_EQ(older.FactoryLevel(), 3);
}

TEST(ManagerRows, SizesAndFixedFlags) {
  XoTypeMgr const manager;
  for (int id = 0; id < kRowCount; ++id) {
    EXPECT_EQ(manager.MemLenGet(Id(id), 1), kExpectedRows[id].size) << id;
    EXPECT_EQ(manager.MemLenGet(Id(id), 0), 0) << id;
    EXPECT_EQ(manager.MemLenGet(Id(id), 3), 3 * kExpectedRows[id].size) << id;
    EXPECT_EQ(manager.IsFixed(Id(id)), id == 11 || id == 18 || id == 20 || id == 21 ? 0 : 1) << id;
  }
}

TEST(ManagerRows, MemorySizeIsCutToSixteenBits) {
  XoTypeMgr const manager;
  EXPECT_EQ(manager.MemLenGet(17, 20000), 57856);
  EXPECT_EQ(manager.MemLenGet(0, 65536), 0);
  EXPECT_EQ(manager.MemLenGet(0, 65535), 65535);
  EXPECT_EQ(manager.MemLenGet(2, 16384), 0);
  EXPECT_EQ(manager.MemLenGet(42, 8193), 8);
  EXPECT_EQ(manager.MemLenGet(0, 0xFFFFFFFFu), 65535);
  EXPECT_EQ(manager.MemLenGet(13, 0xFFFFFFFFu), 65533);
}

TEST(ManagerRows, NamesAreTheRowsOwn) {
  XoTypeMgr const manager;
  for (int id = 0; id < kRowCount; ++id) {
    EXPECT_STREQ(manager.NameGet(Id(id), nullptr), kExpectedRows[id].name);
    EXPECT_EQ(manager.NameGet(Id(id), nullptr), CurrentTypeTable[id]->Name);
    EXPECT_STREQ(manager.TypeIdNameGet(Id(id), nullptr), kExpectedRows[id].typeIdName);
    EXPECT_EQ(manager.TypeIdNameGet(Id(id), nullptr), CurrentTypeTable[id]->TypeIdName);
  }
}

TEST(ManagerRows, NamesAreCopiedWithTheirTerminatorAndNoMore) {
  XoTypeMgr const manager;
  for (int id = 0; id < kRowCount; ++id) {
    char buffer[32];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(manager.NameGet(Id(id), buffer), buffer);
    EXPECT_STREQ(buffer, kExpectedRows[id].name);
    EXPECT_EQ(buffer[std::strlen(kExpectedRows[id].name) + 1], '#');
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(manager.TypeIdNameGet(Id(id), buffer), buffer);
    EXPECT_STREQ(buffer, kExpectedRows[id].typeIdName);
    EXPECT_EQ(buffer[std::strlen(kExpectedRows[id].typeIdName) + 1], '#');
  }
}

TEST(ManagerRows, ArrayElementsStandOneMemorySizeApart) {
  XoTypeMgr const manager;
  unsigned char values[64 * 16];
  auto const start = reinterpret_cast<std::uintptr_t>(values);
  for (int id = 0; id < kRowCount; ++id) {
    for (unsigned count : {0u, 1u, 3u, 64u}) {
      for (unsigned index : {0u, 1u, 2u, 3u, 4u, 63u}) {
        SCOPED_TRACE(testing::Message() << id << ": " << index << " of " << count);
        void* const element = manager.GetArrayElement(Id(id), values, index, count);
        if (count != 0 && index >= count)
          EXPECT_EQ(element, nullptr);
        else
          EXPECT_EQ(reinterpret_cast<std::uintptr_t>(element),
                    start + index * kExpectedRows[id].size);
      }
    }
    EXPECT_EQ(manager.GetArrayElement(Id(id), values, 0xFFFFFFFFu, 64), nullptr);
  }
}

TEST(ManagerRows, ArrayElementsAreReachedByNumberAlone) {
  XoTypeMgr const manager;
  unsigned char values[16];
  for (void* start : {static_cast<void*>(values), static_cast<void*>(nullptr)}) {
    for (int id : {11, 17}) {  // 16 bytes each
      EXPECT_EQ(WordOf(manager.GetArrayElement(Id(id), start, 0x10000000, 0)),
                WordOf(start) + 0x100000000);
    }
    EXPECT_EQ(manager.GetArrayElement(2, start, 0, 0), start);
    EXPECT_EQ(manager.GetArrayElement(2, start, 5, 5), nullptr);
  }
  EXPECT_EQ(WordOf(manager.GetArrayElement(2, nullptr, 4, 5)), 16u);
}

TEST(ManagerNames, EveryNameIsFound) {
  XoTypeMgr const current, older(3);
  for (int id = 0; id < kRowCount; ++id) {
    char found = 99;
    EXPECT_EQ(current.Name2XoTypeId(kExpectedRows[id].name, found), 0);
    EXPECT_EQ(found, id);
    if (id >= kOlderRowCount) continue;
    found = 99;
    EXPECT_EQ(older.Name2XoTypeId(kExpectedRows[id].name, found), 0);
    EXPECT_EQ(found, id);
  }
}

TEST(ManagerNames, OthersAreNotFound) {
  XoTypeMgr const current, older(3);
  for (char const* name : {"", "Int", "INT", "in", "int ", " int", "XoInt6", "xostring", "XoRES_T",
                           "o_16b", "XoNull", "ILLEGAL"}) {
    for (XoTypeMgr const* manager : {&current, &older}) {
      char found = 3;
      EXPECT_EQ(manager->Name2XoTypeId(name, found), 1) << name;
      EXPECT_EQ(found, 47) << name;
    }
  }
  char found = 3;
  EXPECT_EQ(older.Name2XoTypeId("XoSeal", found), 1);
  EXPECT_EQ(found, 47);
}

TEST(ManagerNames, IllegalIsTheNameOfARowOfTheCurrentTableAlone) {
  char found = 3;
  EXPECT_EQ(XoTypeMgr().Name2XoTypeId("illegal", found), 0);
  EXPECT_EQ(found, 46);
  EXPECT_EQ(XoTypeMgr(3).Name2XoTypeId("illegal", found), 1);
  EXPECT_EQ(found, 47);
}

TEST(ManagerIds, ValidityLooksAtNoTable) {
  XoTypeMgr const current, older(3);
  for (int id = -128; id < 128; ++id) {
    bool const valid = id < 47 || id >= 100;
    EXPECT_EQ(current.IsValidType(Id(id)) != 0, valid) << id;
    EXPECT_EQ(older.IsValidType(Id(id)) != 0, valid) << id;
  }
}

TEST(ManagerCapabilities, ListsOverAllIds) {
  // Types with a null value, by row; the older table ends with row 27 and its strings have none.
  std::set<int> const nullable = {11, 12, 13, 15, 16, 17, 18, 19, 27, 28, 29, 30,
                                  31, 32, 33, 34, 35, 36, 37, 38, 40, 41, 44, 45};
  std::set<int> const counting = {0, 1, 2, 5, 6, 7, 8, 9, 10, 15, 26, 42, 43};
  std::set<int> const stamped = {12, 13, 19, 22, 23, 24, 40};
  XoTypeMgr const current, older(3);
  for (int id = -128; id < 128; ++id) {
    SCOPED_TRACE(id);
    bool const hasNull = nullable.contains(id) && kBuiltRows.contains(id);
    bool const olderHasNull = hasNull && id < kOlderRowCount && id != 11;
    EXPECT_EQ(current.SupportsCapability(Id(id), 1), hasNull);
    EXPECT_EQ(older.SupportsCapability(Id(id), 1), olderHasNull);
    EXPECT_EQ(current.SupportsNullValue(Id(id)), hasNull);
    EXPECT_EQ(older.SupportsNullValue(Id(id)), olderHasNull);
    for (XoTypeMgr const* manager : {&current, &older}) {
      EXPECT_EQ(manager->SupportsCapability(Id(id), 2), counting.contains(id));
      EXPECT_EQ(manager->SupportsCapability(Id(id), 3), stamped.contains(id));
      for (unsigned short other :
           std::initializer_list<unsigned short>{0, 4, 5, 256, 257, 258, 65535})
        EXPECT_EQ(manager->SupportsCapability(Id(id), other), 0) << other;
    }
  }
}

TEST(ManagerCapabilities, NullValueFollowsTheRowOfTheTableInUse) {
  auto* const setNull = +[](void*) { return 0; };
  RowKeeper const currentString(CurrentTypeTable[11]), dateTime(CurrentTypeTable[40]);
  currentString->SetNull = dateTime->SetNull = setNull;
  XoTypeMgr const current, older(3);
  for (int id : {11, 40}) {
    EXPECT_EQ(current.SupportsCapability(Id(id), 1), 1) << id;
    EXPECT_EQ(current.SupportsNullValue(Id(id)), 1) << id;
    EXPECT_EQ(older.SupportsCapability(Id(id), 1), 0) << id;
    EXPECT_EQ(older.SupportsNullValue(Id(id)), 0) << id;
  }
  // The reserved id folds to the `illegal` row, which answers for ids without a row as well.
  RowKeeper const illegal(CurrentTypeTable[kIllegalRow]);
  EXPECT_EQ(current.SupportsCapability(XoRES_T, 1), 0);
  EXPECT_EQ(older.SupportsCapability(XoRES_T, 1), 0);
  illegal->SetNull = setNull;
  EXPECT_EQ(current.SupportsCapability(XoRES_T, 1), 1);
  EXPECT_EQ(older.SupportsCapability(XoRES_T, 1), 1);
  EXPECT_EQ(older.SupportsCapability(40, 1), 1);
  EXPECT_EQ(older.SupportsCapability(11, 1), 0);
}

TEST(ManagerNulls, ScalarsAreNeverNull) {
  XoTypeMgr const manager;
  unsigned char zeroes[8] = {}, ones[8];
  std::memset(ones, 0xFF, sizeof ones);
  for (int id : kScalarRows) {
    EXPECT_EQ(manager.IsNullValue(Id(id), zeroes), 0);
    EXPECT_EQ(manager.IsNullValue(Id(id), ones), 0);
    EXPECT_EQ(manager.SetNullPtrGet(Id(id)), nullptr);
  }
}

}  // namespace
}  // namespace xo::test
