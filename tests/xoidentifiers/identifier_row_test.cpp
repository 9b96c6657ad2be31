#include <gtest/gtest.h>

#include "tests/xoidentifiers/identifier_bytes.hpp"

namespace xo::test {
namespace {

template <class Value>
void ExpectRoundTrip(int id, Value const& a, Value const& b) {
  for (unsigned char format : std::initializer_list<unsigned char>{0x01, 0x02, 0x81, 0x82, 0x41}) {
    bool const isBig = (format & 15) == 2;
    ByteList const expected = Stored(a, isBig) + Stored(b, isBig);
    Odd const memory(InMemory(a) + InMemory(b)), disk(ByteList(expected.size()));
    auto const size = static_cast<unsigned>(expected.size());
    ASSERT_EQ(Row(id).Store(disk, memory, format, 2), size);
    ASSERT_EQ(std::memcmp(disk, expected.data(), size), 0);
    Odd const back(ByteList(2 * sizeof a, 0xA5));
    ASSERT_EQ(Row(id).Load(back, disk, format, 2), size);
    ASSERT_EQ(Row(id).Store(disk, back, format, 2), size);
    ASSERT_EQ(std::memcmp(disk, expected.data(), size), 0);
  }
}

TEST_F(IdentifierRows, StoreTheirFieldsInTheOrderOfTheFormat) {
  for (int turn = 0; turn < 300; ++turn) {
    ExpectRoundTrip(XoOBJID_T, AnyObject(), AnyObject());
    ExpectRoundTrip(XoCLID_T, AnyClass(), AnyClass());
    ExpectRoundTrip(XoREF_T, AnyReference(), AnyReference());
  }
}

TEST(IdentifierStore, LeavesOutTheVersionOfAReference) {
  XoRef const ref{0x01020304, 0x05060708, 0x090A, 0x0B0C, 0x0D0E, 0x0F10};
  unsigned char disk[14];
  EXPECT_EQ(XoRef::Store(disk, &ref, FormBig, 1), 14u);
  for (int i = 0; i < 14; ++i) EXPECT_EQ(disk[i], i + 1);
  XoRef back{9, 9, 9, 9, 9, 9};
  EXPECT_EQ(XoRef::Load(&back, disk, FormBig, 1), 14u);
  EXPECT_EQ(back.classNumber, 0x0D0E);
  EXPECT_EQ(back.version, 0);
}

TEST(IdentifierSizes, DependOnTheCountAlone) {
  for (auto const& row : kWidths) {
    EXPECT_EQ(Row(row.id).MemLen, row.memory);
    for (unsigned count : {0u, 1u, 7u}) {
      EXPECT_EQ(Row(row.id).NullSizeGet(count), count * row.disk);
      EXPECT_EQ(Row(row.id).SizeGet(nullptr, 8, 1, count), count * row.disk);
      EXPECT_EQ(Row(row.id).SizeGetFromMemFile(nullptr, 2, count), count * row.disk);
    }
    EXPECT_EQ(Row(row.id).Store(nullptr, nullptr, 1, 0), 0u);
    EXPECT_EQ(Row(row.id).Load(nullptr, nullptr, 1, 0), 0u);
  }
}

TEST_F(IdentifierRows, TranslateFollowsTheFormsOfBothSides) {
  for (auto const& row : kWidths) {
    auto& translate = *Row(row.id).Translate;
    Odd const memory(Bytes(2 * row.memory)), disk(ByteList(2 * row.disk, 0x55));
    Odd const stored(ByteList(2 * row.disk));
    Row(row.id).Store(stored, memory, FormBig, 2);
    EXPECT_EQ(translate(disk, FormBig, 2 * row.disk, memory, 8, 0, 2), 2 * row.disk);
    EXPECT_EQ(std::memcmp(disk, stored, 2 * row.disk), 0);
    // Only whole elements are written, and read.
    Odd const shortDisk(ByteList(2 * row.disk - 1));
    EXPECT_EQ(translate(shortDisk, FormBig, 2 * row.disk - 1, memory, 8, 0, 2), row.disk);
    Odd const back(ByteList(2 * row.memory));
    EXPECT_EQ(translate(back, 8, 0, stored, FormBig, 2 * row.disk - 1, 2), row.disk);
    EXPECT_EQ(translate(back, 8, 0, stored, FormBig, 0, 2), 2 * row.disk);
    EXPECT_EQ(translate(back, 8, 0, memory, 8, 0, 2), 2 * row.memory);
    EXPECT_EQ(std::memcmp(back, memory, 2 * row.memory), 0);
    // Between disk forms: as they are, cut or filled up.
    EXPECT_EQ(translate(disk, FormLittle, 3, stored, FormBig, row.disk, 1), 3u);
    Odd const large(ByteList(row.disk + 2, 0x55));
    EXPECT_EQ(translate(large, FormLittle, row.disk + 2, stored, FormBig, row.disk, 1), row.disk);
    EXPECT_EQ(static_cast<unsigned char*>(static_cast<void*>(large))[row.disk + 1], 0);
  }
}

TEST(IdentifierStep, GoesToTheNextNumberAndKeepsTheRest) {
  XoRef ref{9, 0xFFFFFFFF, 1, 5, 6, 7};
  EXPECT_EQ(Row(XoREF_T).GetValue(&ref, 1, 8, 'N'), 0);
  EXPECT_EQ(ref.low, 0u);
  EXPECT_EQ(ref.high, 2u);
  EXPECT_EQ(ref.block, 9u);
  EXPECT_EQ(ref.database, 5u);
  EXPECT_EQ(ref.classNumber, 6u);
  EXPECT_EQ(ref.version, 7u);
  XoObjId top{9, 0xFFFFFFFF, 0xFFFF};
  EXPECT_EQ(Row(XoOBJID_T).GetValue(&top, 1, 8, 'M'), ERR_TM_NO_NEXT_VALUE);
  EXPECT_EQ(top.low, 0xFFFFFFFFu);
  EXPECT_EQ(top.high, 0xFFFFu);
  EXPECT_EQ(Row(XoOBJID_T).GetValue(&top, 1, 8, 'O'), 0);
  EXPECT_EQ(top.high, 0xFFFFu);
  EXPECT_EQ(Row(XoOBJID_T).GetValue(&top, 1, 8, kLowestValue), 0);
  EXPECT_EQ(top.IsNullValue(), 1);
  EXPECT_EQ(Row(XoOBJID_T).GetValue(&top, 1, 8, 'P'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(Row(XoOBJID_T).GetValue(&top, 1, 0x81, 'N'), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(Row(XoCLID_T).GetValue(&top, 1, 8, 'N'), ERR_TM_NOT_SUPPORTED);
}

TEST(IdentifierStep, ChangesAStoredValueInPlace) {
  XoTypeMgr const manager;
  Odd const disk(Stored(XoObjId{9, 41, 1}));
  EXPECT_EQ(manager.GetValue(XoOBJID_T, disk, 1, FormLittle, 'N'), 0);
  EXPECT_EQ(std::memcmp(disk, Stored(XoObjId{9, 42, 1}).data(), 10), 0);
}

TEST(IdentifierCreate, ClearsThePaddingToo) {
  for (auto const& row : kWidths) {
    ByteList memory(3 * row.memory, 0xAB);
    Row(row.id).Constructor(memory.data(), 3, 0);
    EXPECT_EQ(memory, ByteList(memory.size(), 0));
  }
}

TEST(IdentifierNull, SlotsSetWhatTheNullTextSets) {
  Odd const object(InMemory(XoObjId{1, 2, 3})), classId(InMemory(XoClassId{1, 2}));
  XoRef ref{1, 2, 3, 4, 5, 6};
  EXPECT_EQ(Row(XoOBJID_T).IsNull(object), 0);
  EXPECT_EQ(Row(XoOBJID_T).SetNull(object), 0);
  EXPECT_EQ(Row(XoOBJID_T).IsNull(object), 1);
  EXPECT_EQ(Row(XoCLID_T).IsNull(classId), 0);
  EXPECT_EQ(Row(XoCLID_T).SetNull(classId), 0);
  EXPECT_EQ(Row(XoCLID_T).IsNull(classId), 1);
  EXPECT_EQ(Row(XoREF_T).SetNull(&ref), 0);
  EXPECT_EQ(Row(XoREF_T).IsNull(&ref), 1);
  EXPECT_EQ(ref.block + ref.low + ref.high + ref.database, 0u);
  EXPECT_EQ(ref.classNumber, 5u);
  EXPECT_EQ(ref.version, 6u);
}

TEST(IdentifierCreate, GivesZerosForClassesToo) {
  for (auto const& row : kWidths) {
    for (unsigned count : {0u, 1u, 2u, 5u}) {
      // Stored, as padding is no part of a value.
      unsigned const elements = std::max(count, 1u);
      ByteList const zeros(elements * row.disk, 0);
      ByteList stored(zeros.size(), 0x55);
      void* made = Row(row.id).Create(count);
      Row(row.id).Store(stored.data(), made, FormLittle, elements);
      EXPECT_EQ(stored, zeros);
      EXPECT_EQ(Row(row.id).Delete(made, count), nullptr);
      made = Row(row.id).DefaultValue(count, 0);
      Row(row.id).Store(stored.data(), made, FormBig, elements);
      EXPECT_EQ(stored, zeros);
      Row(row.id).Delete(made, count);
      made = Row(row.id).DefaultValue(count, 1);
      for (unsigned i = 0; i < elements; ++i) {
        EXPECT_NE(Row(row.id).IsNull(static_cast<unsigned char*>(made) + i * row.memory), 0);
      }
      Row(row.id).Delete(made, count);
    }
    EXPECT_EQ(Row(row.id).Delete(nullptr, 3), nullptr);
  }
  auto* const made = static_cast<XoClassId*>(Row(XoCLID_T).Create(1));
  EXPECT_EQ(made->IsNullValue(), 0);
  Row(XoCLID_T).Delete(made, 1);
}

TEST(IdentifierSlots, PrintReferencesInThreeWays) {
  XoRef ref{3, 2, 1, 5, 7, 9};
  XoTypeMgr const manager;
  XoString out;
  EXPECT_STREQ(ref.PrintToXoString(out, nullptr).StrGet(), "(5:1-2#3, 7)");
  EXPECT_STREQ(XoRef::PrintToString(out, &ref, nullptr, 1).StrGet(), "(5:1-2#3,7v9)");
  EXPECT_STREQ(manager.PrintToXoString(XoREF_T, out, &ref, nullptr, 1).StrGet(), "(5:1-2#3, 7)");
  XoObjId id{3, 2, 1};
  EXPECT_STREQ(XoObjId::PrintToString(out, &id, nullptr, 1).StrGet(), "(1-2#3)");
  XoClassId classId{7, 9};
  EXPECT_STREQ(XoClassId::PrintToString(out, &classId, nullptr, 1).StrGet(), "(7v9)");
}

TEST(IdentifierSlots, ScanTellsAMissingTargetAlone) {
  XoString text("garbage");
  XoObjId id{1, 2, 3};
  EXPECT_EQ(XoObjId::ScanFromString(&id, text, nullptr, 1), &id);
  EXPECT_EQ(id.IsNullValue(), 1);
  EXPECT_EQ(XoObjId::ScanFromString(nullptr, text, nullptr, 1), nullptr);
  EXPECT_EQ(XoClassId::ScanFromString(nullptr, text, nullptr, 1), nullptr);
  EXPECT_EQ(XoRef::ScanFromString(nullptr, text, nullptr, 1), nullptr);
  Odd const target(ByteList(16));
  XoString reference("(5:1-2#3, 7)");
  EXPECT_EQ(XoRef::ScanFromString(target, reference, nullptr, 1), target);
  EXPECT_EQ(std::memcmp(target, InMemory(XoRef{3, 2, 1, 5, 7, 0}).data(), 16), 0);
}

TEST(IdentifierConvert, PrintsAndScansInTheFormatOfTheRow) {
  XoTypeMgr manager;
  XoRef refs[] = {{3, 2, 1, 5, 7, 9}, {3, 0, 0, 5, 7, 9}};
  XoTypeConvertData* strings = manager.ConvertTo(XoREF_T, refs, 2);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "(5:1-2#3, 7)");
  EXPECT_EQ(strings->GetString(1)->IsNullValue(), 1);
  auto* back = static_cast<XoRef*>(manager.ConvertFrom(XoREF_T, strings, 3));
  EXPECT_EQ((back[0] == refs[0]), 1);
  EXPECT_EQ(back[0].classNumber, 7u);
  EXPECT_EQ(back[1].IsNullValue(), 1);
  EXPECT_EQ(back[2].IsNullValue(), 1);
  manager.Delete(XoREF_T, back, 3);
  delete strings;
  XoClassId classes[] = {{7, 9}, {65535, 65535}};
  strings = manager.ConvertTo(XoCLID_T, classes, 2);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "(7v9)");
  EXPECT_EQ(strings->GetString(1)->IsNullValue(), 1);
  auto* const ids = static_cast<XoClassId*>(manager.ConvertFrom(XoCLID_T, strings, 2));
  EXPECT_EQ((ids[0] != classes[0]), 0);
  EXPECT_EQ(ids[1].IsNullValue(), 1);
  manager.Delete(XoCLID_T, ids, 2);
  delete strings;
  auto* const missing = static_cast<XoObjId*>(Row(XoOBJID_T).ConvertFrom(nullptr, 2));
  EXPECT_EQ(missing[1].IsNullValue(), 1);
  manager.Delete(XoOBJID_T, missing, 2);
}

TEST(IdentifierConvert, FollowsAnExchangedFormat) {
  XoTypeMgr manager;
  char const* const before = manager.ExchangeFormat(XoCLID_T, "%V.%C");
  XoClassId id{7, 9};
  XoTypeConvertData* const strings = manager.ConvertTo(XoCLID_T, &id, 1);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "9.7");
  auto* const back = static_cast<XoClassId*>(manager.ConvertFrom(XoCLID_T, strings, 1));
  EXPECT_EQ((*back != id), 0);
  manager.Delete(XoCLID_T, back, 1);
  delete strings;
  manager.ExchangeFormat(XoCLID_T, before);
}

TEST(IdentifierArrays, AssignAndCopyAllOrTheFirst) {
  XoClassId source[] = {{1, 2}, {3, 4}}, target[3] = {};
  for (auto* const assign : {Row(XoCLID_T).Assignment, Row(XoCLID_T).Copy}) {
    assign(target, source, 2, 0);
    EXPECT_EQ(target[1].classNumber, 3);
    assign(target, source, 3, 1);
    EXPECT_EQ(target[2].version, 2);
    assign(nullptr, nullptr, 0, 1);
  }
  XoClassId raw[2] = {{9, 9}, {9, 9}};
  Row(XoCLID_T).Constructor(raw, 2, 0);
  EXPECT_EQ(raw[1].classNumber, 0);
  Row(XoCLID_T).Destructor(raw, 2, 0);
}

}  // namespace
}  // namespace xo::test
