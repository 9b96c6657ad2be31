#include <gtest/gtest.h>

#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

XoTypeMgr const older(3);
TypeDescriptor const& row = *OlderTypeTable[11];

ByteList Stored(std::vector<XoString> const& strings, unsigned char format) {
  auto const count = static_cast<unsigned>(strings.size());
  PlacedBytes const target(ByteList(row.SizeGet(strings.data(), kMemory, format, count), 0), 1);
  unsigned const size = row.Store(target.Data(), strings.data(), format, count);
  EXPECT_EQ(size, row.SizeGet(strings.data(), kMemory, format, count));
  return ByteList(target.Data(), target.Data() + size);
}

TEST(OlderStringStated, TextsStandBehindOneLength) {
  EXPECT_EQ(Stored({Narrow("ab")}, kLittle), Hex("03 00 61 62 00"));
  EXPECT_EQ(Stored({Narrow("a"), XoString(kLatin1, 0), Narrow("bc")}, kLittle),
            Hex("06 00 61 00 00 62 63 00"));
  EXPECT_EQ(Stored({Narrow("ab")}, kBig), Hex("00 03 61 62 00"));
  EXPECT_EQ(Stored({XoString(kUnicode, 0)}, kLittle), Hex("01 00 00"));
  EXPECT_EQ(Stored({}, kLittle), Hex("00 00"));
}

TEST(OlderStringStated, WideTextBecomesNarrow) {
  EXPECT_EQ(Stored({Wide(u"ab"), Narrow("c")}, kLittle), Hex("05 00 61 62 00 63 00"));
  EXPECT_EQ(Stored({Wide(u"\u00E9")}, kLittle).size(), 4u);
}

TEST(OlderStringStated, TextEndsAtItsFirstZero) {
  XoString text = Narrow("abcdef");
  ASSERT_EQ(text.CopyMapped(Narrow("xy"), kLatin1), 2);
  EXPECT_EQ(Stored({text}, kLittle), Hex("03 00 78 79 00"));
}

TEST(OlderStringStated, SizesOfStoredRecords) {
  ByteList const two = Hex("03 00 61 62 00 01 00 00");
  EXPECT_EQ(row.SizeGet(two.data(), kLittle, kLittle, 1), 5u);
  EXPECT_EQ(row.SizeGet(two.data(), kLittle, kLittleKey, 7), 5u);
  ByteList const big = Hex("00 03 61 62 00");
  EXPECT_EQ(row.SizeGet(big.data(), kBig, kLittle, 1), 5u);
  MemFile file(two.data(), 8);
  EXPECT_EQ(row.SizeGetFromMemFile(&file, kLittle, 1), 5u);
  EXPECT_EQ(row.SizeGetFromMemFile(&file, kLittle, 2), 8u);
  EXPECT_EQ(row.SizeGetFromMemFile(&file, kLittle, 0), 0u);
  file.Seek(5, 0, nullptr, 1);
  EXPECT_EQ(row.SizeGetFromMemFile(&file, kLittle, 1), 3u);
  EXPECT_EQ(file.Position(), 5u);
  file.Seek(0, 2, nullptr, 1);
  EXPECT_EQ(row.SizeGetFromMemFile(&file, kLittle, 1), 0u);
}

TEST(OlderStringStated, HasNoNullValueAndNoNextOne) {
  XoString null;
  null.SetNullValue();
  EXPECT_EQ(older.IsNullValue(kString, &null), 0);
  EXPECT_EQ(older.SetNullPtrGet(kString), nullptr);
  EXPECT_EQ(older.SupportsNullValue(kString), 0);
  ByteList key = Hex("06 00 FE 02 01 40 00 FF 00 00 00 00");
  ByteList const before = key;
  EXPECT_EQ(older.GetValue(kString, key.data(), 12, kLittleKey, kNextValue), ERR_TM_NOT_SUPPORTED);
  EXPECT_EQ(key, before);
}

TEST(OlderStringStated, SharesTheRestOfItsRow) {
  TypeDescriptor const& current = *CurrentTypeTable[11];
  EXPECT_STREQ(row.Name, current.Name);
  EXPECT_STREQ(row.TypeIdName, current.TypeIdName);
  EXPECT_STREQ(row.Format, current.Format);
  EXPECT_EQ(row.MemLen, current.MemLen);
  EXPECT_EQ(row.Fixed, current.Fixed);
  EXPECT_TRUE(row.Create == current.Create && row.Delete == current.Delete);
  EXPECT_TRUE(row.Load == current.Load && row.NullSizeGet == current.NullSizeGet);
  EXPECT_TRUE(row.Constructor == current.Constructor && row.Destructor == current.Destructor);
  EXPECT_TRUE(row.Assignment == current.Assignment && row.Copy == current.Copy);
  EXPECT_TRUE(row.DefaultValue == current.DefaultValue);
}

// Translate.

TEST(OlderStringTranslateStated, FromMemoryIntoMemoryConstructsCopies) {
  std::vector<XoString> source = {Narrow("a", kLatin2, 3), Wide(u"bc")};
  alignas(XoString) unsigned char memory[2 * sizeof(XoString)];
  EXPECT_EQ(older.Translate(kString, memory, kMemory, 0, source.data(), kMemory, 0, 2), 32u);
  auto* const copies = static_cast<XoString*>(static_cast<void*>(memory));
  for (unsigned index = 0; index < 2; ++index) {
    EXPECT_TRUE(SameValue(copies[index], source[index]));
    std::destroy_at(copies + index);
  }
}

TEST(OlderStringTranslateStated, FromDiskIntoMemoryLoadsBothKinds) {
  auto const own = ToMemory(older, Hex("05 00 61 00 62 63 00"), kLittle, 2);
  EXPECT_EQ(own.result, 7u);
  EXPECT_EQ(TextOf(own.strings[0]), "a");
  EXPECT_EQ(TextOf(own.strings[1]), "bc");
  auto const current = ToMemory(older, Hex("00 06 FD 05 01 42 00 FF"), kBig, 1);
  EXPECT_EQ(current.result, 8u);
  EXPECT_EQ(WideTextOf(current.strings[0]), u"\u0142");
}

TEST(OlderStringTranslateStated, FromMemoryOntoDiskStoresIntoAClearedTarget) {
  std::vector<XoString> strings = {Narrow("a"), Narrow("bc")};
  ByteList const record = Hex("05 00 61 00 62 63 00");
  EXPECT_EQ(FromMemory(older, strings, kLittle, 9), (Produced{7, Filled(record, 9, 0)}));
  EXPECT_EQ(FromMemory(older, strings, kBigKey, 7), (Produced{7, Hex("00 05 61 00 62 63 00")}));
  for (unsigned room = 0; room < 7; ++room) {
    EXPECT_EQ(FromMemory(older, strings, kLittle, room),
              (Produced{room, ByteList(record.begin(), record.begin() + room)}));
  }
}

TEST(OlderStringTranslateStated, BetweenRecordsTheLengthTakesTheNewOrder) {
  ByteList const record = Hex("03 00 61 62 00");
  EXPECT_EQ(FromDisk(older, record, kLittle, kBig, 5), (Produced{5, Hex("00 03 61 62 00")}));
  EXPECT_EQ(FromDisk(older, record, kLittle, kLittle, 7),
            (Produced{5, Hex("03 00 61 62 00 00 00")}));
  EXPECT_EQ(FromDisk(older, record, kLittle, kBig, 3), (Produced{3, Hex("00 03 61")}));
  EXPECT_EQ(FromDisk(older, record, kLittle, kBig, 1), (Produced{1, Hex("00")}));
}

TEST(OlderStringTranslateStated, ACurrentRecordLosesItsHeader) {
  ByteList const current = Hex("06 00 02 09 61 62 00 FF");
  EXPECT_EQ(FromDisk(older, current, kLittle, kLittle, 5), (Produced{5, Hex("03 00 61 62 00")}));
  EXPECT_EQ(FromDisk(older, current, kLittle, kBig, 8),
            (Produced{5, Hex("00 03 61 62 00 00 00 00")}));
  EXPECT_EQ(FromDisk(older, current, kLittle, kLittle, 4), (Produced{4, Hex("03 00 61 62")}));
  EXPECT_EQ(FromDisk(older, Hex("04 00 02 09 00 FF"), kLittle, kLittle, 3),
            (Produced{3, Hex("01 00 00")}));
}

TEST(OlderStringTranslateStated, ARecordThatIsCutIsCopiedAsItStands) {
  ByteList const current = Hex("06 00 02 09 61 62 00");
  EXPECT_EQ(FromDisk(older, current, kLittle, kLittle, 9),
            (Produced{7, Hex("06 00 02 09 61 62 00 00 00")}));
}

// Laws.

class OlderStringLaw : public RandomTest {};

TEST_F(OlderStringLaw, LoadGivesBackWhatWasStored) {
  for (unsigned round = 0; round < 2000 && !HasFailure(); ++round) {
    std::vector<XoString> strings(1 + Below(5));
    ByteList texts;
    for (XoString& string : strings) {
      std::string text(Below(15), '\0');
      for (char& byte : text) byte = static_cast<char>(1 + Below(255));
      string = Narrow(text, static_cast<unsigned char>(Below(225)), Byte());
      texts = texts + BytesOf(text) + ByteList{0};
    }
    unsigned char const format = OneIn(2) ? kLittle : kBig;
    ByteList const stored = Stored(strings, format);
    EXPECT_EQ(stored, Unit(static_cast<unsigned>(texts.size()), format) + texts);
    auto const count = static_cast<unsigned>(strings.size());
    auto const loaded = ToMemory(older, stored, format, count);
    EXPECT_EQ(loaded.result, stored.size());
    for (unsigned index = 0; index < count; ++index) {
      EXPECT_EQ(TextOf(loaded.strings[index]), TextOf(strings[index]));
    }
    MemFile file(stored.data(), static_cast<unsigned>(stored.size()));
    EXPECT_EQ(row.SizeGetFromMemFile(&file, format, 1), stored.size());
  }
}

TEST_F(OlderStringLaw, WideTextsTakeTheSizeToldWhateverTheirCharacters) {
  for (unsigned round = 0; round < 2000 && !HasFailure(); ++round) {
    std::u16string text(Below(15), u'\0');
    for (char16_t& unit : text) {
      unit = static_cast<char16_t>(1 + Below(OneIn(2) ? 0x250 : 0xFFFF));
    }
    Stored({Wide(text)}, OneIn(2) ? kLittle : kBig);
  }
}

}  // namespace
}  // namespace xo::test
