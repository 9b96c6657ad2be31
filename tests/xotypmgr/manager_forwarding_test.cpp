#include <gtest/gtest.h>

#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"
#include "tests/xotypmgr/row_probe.hpp"

namespace xo::test {
namespace {

/// The arguments with which a slot was called last.
Words seen;

/// Every test puts a function that notes its arguments into one slot of row 40, and calls the
/// manager's operation with arguments that are all different.
class Forwarding : public testing::Test {
 protected:
  void SetUp() override { seen.clear(); }

  static constexpr char kId = 40;  // XoDateTimeN
  XoTypeMgr manager;
  RowKeeper row{CurrentTypeTable[int{kId}]};
  char first = 0, second = 0, third = 0, fourth = 0;
};

TEST_F(Forwarding, Create) {
  row->Create = [](unsigned count) -> void* {
    seen = WordsOf(count);
    return &seen;
  };
  EXPECT_EQ(manager.Create(kId, 0xFFFFFFFEu), &seen);
  EXPECT_EQ(seen, WordsOf(0xFFFFFFFEu));
}

TEST_F(Forwarding, Delete) {
  row->Delete = [](void* values, unsigned count) -> void* {
    seen = WordsOf(values, count);
    return &seen;
  };
  EXPECT_EQ(manager.Delete(kId, &first, 7), &seen);
  EXPECT_EQ(seen, WordsOf(&first, 7u));
}

TEST_F(Forwarding, DefaultValue) {
  row->DefaultValue = [](unsigned count, int asNull) -> void* {
    seen = WordsOf(count, asNull);
    return &seen;
  };
  EXPECT_EQ(manager.DefaultValue(kId, 5, -3), &seen);
  EXPECT_EQ(seen, WordsOf(5u, -3));
}

TEST_F(Forwarding, CmpPutsTheFormatFirst) {
  row->Compare = [](unsigned char format, unsigned lengthA, void* a, unsigned lengthB, void* b,
                    unsigned short op, unsigned count, int& error) {
    seen = WordsOf(format, lengthA, a, lengthB, b, op, count, &error);
    error = 2114;
    return -5;
  };
  int error = 3;
  EXPECT_EQ(manager.Cmp(kId, 11, &first, 22, &second, 0x3344, 55, 0x86, error), -5);
  EXPECT_EQ(seen, WordsOf(0x86, 11, &first, 22, &second, 0x3344, 55, &error));
  EXPECT_EQ(error, 2114);
}

TEST_F(Forwarding, CmpWithoutLengthsPassesZeroesAndAFreshStatus) {
  row->Compare = [](unsigned char format, unsigned lengthA, void* a, unsigned lengthB, void* b,
                    unsigned short op, unsigned count, int& error) {
    seen = WordsOf(format, lengthA, a, lengthB, b, op, count, error);
    error = 2101;
    return 9;
  };
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(manager.Cmp(kId, &first, &second, 0x3344, 55, 0x86), 9);
    EXPECT_EQ(seen, WordsOf(0x86, 0, &first, 0, &second, 0x3344, 55, 0));
  }
}

TEST_F(Forwarding, Hash) {
  row->Hash = [](unsigned char format, unsigned length, void* data, unsigned count, int& error) {
    seen = WordsOf(format, length, data, count, &error);
    error = 17;
    return 0xCAFEBABEu;
  };
  int error = 0;
  EXPECT_EQ(manager.Hash(kId, 12, &first, 34, 0xE1, error), 0xCAFEBABEu);
  EXPECT_EQ(seen, WordsOf(0xE1, 12, &first, 34, &error));
  EXPECT_EQ(error, 17);
}

TEST_F(Forwarding, StoreAndLoadKeepTheWholeFormatByte) {
  row->Store = [](void* disk, void const* memory, unsigned char format, unsigned count) {
    seen = WordsOf(1, disk, memory, format, count);
    return 101u;
  };
  row->Load = [](void* memory, void const* disk, unsigned char format, unsigned count) {
    seen = WordsOf(2, memory, disk, format, count);
    return 102u;
  };
  EXPECT_EQ(manager.Store(kId, &first, &second, 0xE2, 9), 101u);
  EXPECT_EQ(seen, WordsOf(1, &first, &second, 0xE2, 9));
  EXPECT_EQ(manager.Load(kId, &first, &second, 0xE2, 9), 102u);
  EXPECT_EQ(seen, WordsOf(2, &first, &second, 0xE2, 9));
}

TEST_F(Forwarding, DiskLenGetPutsTheDataFormatFirst) {
  row->SizeGet = [](void const* data, unsigned char dataFormat, unsigned char diskFormat,
                    unsigned count) {
    seen = WordsOf(data, dataFormat, diskFormat, count);
    return 103u;
  };
  EXPECT_EQ(manager.DiskLenGet(kId, &first, 0x81, 6, 0x48), 103u);
  EXPECT_EQ(seen, WordsOf(&first, 0x48, 0x81, 6));
}

TEST_F(Forwarding, DiskLenGetFromMemFile) {
  row->SizeGetFromMemFile = [](MemFile* file, unsigned char format, unsigned count) {
    seen = WordsOf(file, format, count);
    return 104u;
  };
  MemFile file(&first, 1);
  EXPECT_EQ(manager.DiskLenGetFromMemFile(kId, &file, 0x81, 6), 104u);
  EXPECT_EQ(seen, WordsOf(&file, 0x81, 6));
}

TEST_F(Forwarding, Translate) {
  row->Translate = [](void* target, unsigned char targetFormat, unsigned targetLength, void* source,
                      unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
    seen = WordsOf(target, targetFormat, targetLength, source, sourceFormat, sourceLength, count);
    return 105u;
  };
  EXPECT_EQ(manager.Translate(kId, &first, 0x81, 10, &second, 0x48, 20, 30), 105u);
  EXPECT_EQ(seen, WordsOf(&first, 0x81, 10, &second, 0x48, 20, 30));
}

TEST_F(Forwarding, EvalAndBound) {
  row->EvalAndBound = [](XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                         unsigned count, void* bounds, XoEvalData* data) {
    seen = WordsOf(range, &op, value, format, count, bounds, data);
    op = 8;
    return 0.25f;
  };
  unsigned short op = 7;
  auto* const range = reinterpret_cast<XoIdxBounds*>(&third);
  auto* const data = reinterpret_cast<XoEvalData*>(&fourth);
  EXPECT_EQ(manager.EvalAndBound(kId, range, op, &first, 0x81, 66, &second, data), 0.25f);
  EXPECT_EQ(seen, WordsOf(&third, &op, &first, 0x81, 66, &second, &fourth));
  EXPECT_EQ(op, 8);
}

TEST_F(Forwarding, IsNullValue) {
  row->IsNull = [](void* value) {
    seen = WordsOf(value);
    return 6;
  };
  EXPECT_EQ(manager.IsNullValue(kId, &first), 6);
  EXPECT_EQ(seen, WordsOf(&first));
}

TEST_F(Forwarding, AccessorsGiveTheSlotsAsTheyStand) {
  for (int id = 0; id < kRowCount; ++id) {
    SCOPED_TRACE(id);
    TypeDescriptor const& each = *CurrentTypeTable[id];
    EXPECT_EQ(manager.CmpFuncPtrGet(Id(id)), each.Compare);
    EXPECT_EQ(manager.LoadPtrGet(Id(id)), each.Load);
    EXPECT_EQ(manager.StorePtrGet(Id(id)), each.Store);
    EXPECT_EQ(manager.ConstructorPtrGet(Id(id)), each.Constructor);
    EXPECT_EQ(manager.DestructorPtrGet(Id(id)), each.Destructor);
    EXPECT_EQ(manager.AssignmentPtrGet(Id(id)), each.Assignment);
    EXPECT_EQ(manager.CopyPtrGet(Id(id)), each.Copy);
    EXPECT_EQ(manager.IsNullPtrGet(Id(id)), each.IsNull);
    EXPECT_EQ(manager.SetNullPtrGet(Id(id)), each.SetNull);
  }
}

TEST_F(Forwarding, AccessorsGiveEachSlotItsOwn) {
  // In rows that share functions a mistaken slot would not show.
  row->Constructor = [](void*, unsigned, unsigned) { seen = WordsOf(1); };
  row->Destructor = [](void*, unsigned, unsigned) { seen = WordsOf(2); };
  row->Assignment = [](void*, void*, unsigned, int) { seen = WordsOf(3); };
  row->Copy = [](void*, void*, unsigned, int) { seen = WordsOf(4); };
  row->IsNull = [](void*) { return 5; };
  row->SetNull = [](void*) { return 6; };
  manager.ConstructorPtrGet(kId)(nullptr, 0, 0);
  EXPECT_EQ(seen, WordsOf(1));
  manager.DestructorPtrGet(kId)(nullptr, 0, 0);
  EXPECT_EQ(seen, WordsOf(2));
  manager.AssignmentPtrGet(kId)(nullptr, nullptr, 0, 0);
  EXPECT_EQ(seen, WordsOf(3));
  manager.CopyPtrGet(kId)(nullptr, nullptr, 0, 0);
  EXPECT_EQ(seen, WordsOf(4));
  EXPECT_EQ(manager.IsNullPtrGet(kId)(nullptr), 5);
  EXPECT_EQ(manager.SetNullPtrGet(kId)(nullptr), 6);
  EXPECT_EQ(manager.SupportsNullValue(kId), 1);
}

TEST_F(Forwarding, ATwoArgumentComparisonNoLongerExists) {
  XoTypeMgr const older(3);
  for (int id = -128; id < 128; ++id) {
    EXPECT_EQ(manager.ComparePtrGet(Id(id)), nullptr);
    EXPECT_EQ(older.ComparePtrGet(Id(id)), nullptr);
  }
}

TEST_F(Forwarding, StoredBytesCannotBeAskedForNull) {
  XoTypeMgr const older(3);
  unsigned char bytes[16] = {};
  for (int id = -128; id < 128; ++id) {
    EXPECT_EQ(manager.DiskIsNullValue(Id(id), bytes), -2999);
    EXPECT_EQ(manager.DiskIsNullValue(Id(id), nullptr), -2999);
    EXPECT_EQ(older.DiskIsNullValue(Id(id), bytes), -2999);
  }
  for (unsigned char byte : bytes) EXPECT_EQ(byte, 0);
}

TEST_F(Forwarding, OlderManagersUseTheOlderStringRow) {
  RowKeeper const older(OlderTypeTable[11]);
  older->IsNull = [](void*) { return 77; };
  EXPECT_EQ(XoTypeMgr(3).IsNullValue(11, &first), 77);
  EXPECT_EQ(XoTypeMgr(11).IsNullValue(11, &first), 77);
  XoString text;
  EXPECT_EQ(XoTypeMgr(5).IsNullValue(11, &text), 0);
}

}  // namespace
}  // namespace xo::test
