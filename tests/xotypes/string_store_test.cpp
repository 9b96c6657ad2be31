#include <gtest/gtest.h>

#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

/// What `StringStore` writes into exactly as many bytes as `StringSizeGet` asks for.
ByteList StoredAsIs(XoString const* strings, unsigned count, unsigned char format) {
  unsigned const size = StringSizeGet(strings, kMemory, format, count);
  PlacedBytes const target(ByteList(size, kUntouched), 1);
  EXPECT_EQ(StringStore(target.Data(), strings, format, count), size);
  return ByteList(target.Data(), target.Data() + size);
}

ByteList Stored(std::vector<XoString> const& strings, unsigned char format) {
  return StoredAsIs(strings.data(), static_cast<unsigned>(strings.size()), format);
}

struct Read {
  unsigned result;
  std::vector<XoString> strings;
};
Read LoadFrom(ByteList const& stored, unsigned char format, unsigned count) {
  PlacedBytes const source(stored, 1);
  std::vector<XoString> strings(count, Narrow("held before", kLatin2, 7));
  unsigned const result = StringLoad(strings.data(), source.Data(), format, count);
  return {result, std::move(strings)};
}

// Store.

TEST(StringStoreStated, EmptyStringTakesSixBytes) {
  EXPECT_EQ(Stored({XoString(kLatin1, 3)}, kLittle), Hex("04 00 01 03 00 FF"));
  EXPECT_EQ(Stored({XoString(kLatin1, 3)}, kBig), Hex("00 04 01 03 00 FF"));
  EXPECT_EQ(Stored({XoString(kUnicode, 3)}, kLittle), Hex("04 00 FD 03 00 FF"));
  EXPECT_EQ(CurrentTypeTable[11]->NullSizeGet(1), 6u);
  EXPECT_EQ(CurrentTypeTable[11]->NullSizeGet(3), 18u);
  EXPECT_EQ(CurrentTypeTable[11]->NullSizeGet(0), 0u);
  EXPECT_EQ(OlderTypeTable[11]->NullSizeGet(3), 18u);
}

TEST(StringStoreStated, CharactersOfOneByteAreTheSameInBothOrders) {
  EXPECT_EQ(Stored({Narrow("a")}, kLittle), Hex("05 00 01 00 61 00 FF"));
  EXPECT_EQ(Stored({Narrow("ab", kLatin2, 9)}, kLittle), Hex("06 00 02 09 61 62 00 FF"));
  EXPECT_EQ(Stored({Narrow("ab", kLatin2, 9)}, kBig), Hex("00 06 02 09 61 62 00 FF"));
}

TEST(StringStoreStated, CharactersOfTwoBytesTakeTheOrderOfTheFormat) {
  XoString const text = Wide(u"A\u0142");
  EXPECT_EQ(Stored({text}, kLittle), Hex("08 00 FD 00 41 00 42 01 00 FF"));
  EXPECT_EQ(Stored({text}, kBig), Hex("00 08 FD 00 00 41 01 42 00 FF"));
  EXPECT_EQ(Stored({Wide(u"\u1234", kOrders, 2)}, kBig), Hex("00 06 FE 02 12 34 00 FF"));
  EXPECT_EQ(Stored({Wide(u"\u1234", 225, 2)}, kBig), Hex("00 06 E1 02 12 34 00 FF"));
  EXPECT_EQ(Stored({Narrow("a", 224, 2)}, kBig), Hex("00 05 E0 02 61 00 FF"));
}

TEST(StringStoreStated, OnlyTheNibbleOfTheFormatCounts) {
  for (unsigned char const upper : Formats{0x20, 0x40, 0x60}) {
    auto const little = static_cast<unsigned char>(upper | kLittle);
    auto const big = static_cast<unsigned char>(upper | kBig);
    EXPECT_EQ(Stored({Narrow("a", kNative)}, little), Hex("05 00 00 00 61 00 FF"));
    EXPECT_EQ(Stored({Wide(u"a")}, big), Hex("00 06 FD 00 00 61 00 FF"));
  }
  ByteList target(7);
  XoString const text = Narrow("a");
  EXPECT_EQ(StringStore(target.data(), &text, kLittleKey, 1), 7u);
  EXPECT_EQ(target, Hex("05 00 01 00 61 00 FF"));
}

TEST(StringStoreStated, AnArrayIsRecordsOneBehindTheOther) {
  EXPECT_EQ(Stored({Narrow("a"), XoString(kLatin2, 4), Wide(u"b")}, kLittle),
            Hex("05 00 01 00 61 00 FF | 04 00 02 04 00 FF | 06 00 FD 00 62 00 00 FF"));
  EXPECT_EQ(StringStore(nullptr, nullptr, kLittle, 0), 0u);
}

TEST(StringStoreStated, NullKeepsItsLanguage) {
  XoString null;
  null.SetNullValue();
  EXPECT_EQ(Stored({null}, kLittle), Hex("04 00 00 FE 00 FF"));
  auto const back = LoadFrom(Hex("04 00 00 FE 00 FF"), kLittle, 1);
  EXPECT_EQ(back.strings[0].IsNullValue(), 1);
}

TEST(StringStoreStated, ABufferWithRoomToSpareIsStoredWhole) {
  XoString text = Narrow("abcdef");
  ASSERT_EQ(text.CopyMapped(Narrow("xy"), kLatin1), 2);
  ASSERT_EQ(text.size, 7u);
  ByteList const stored = StoredAsIs(&text, 1, kLittle);
  EXPECT_EQ(stored.size(), 12u);
  EXPECT_EQ(ByteList(stored.begin(), stored.begin() + 7), Hex("0A 00 01 00 78 79 00"));
  EXPECT_EQ(ByteList(stored.end() - 2, stored.end()), Hex("00 FF"));
  EXPECT_EQ(TextOf(LoadFrom(stored, kLittle, 1).strings[0]), "xy");
}

TEST(StringStoreStated, AByteToSpareOfWideTextIsStored) {
  XoString text = Narrow("abcdef");
  ASSERT_EQ(text.CopyMapped(Wide(u"A\u0142"), kUnicode), 2);
  ASSERT_EQ(text.size, 7u);
  ByteList const little = StoredAsIs(&text, 1, kLittle), big = StoredAsIs(&text, 1, kBig);
  EXPECT_EQ(little.size(), 11u);
  EXPECT_EQ(ByteList(little.begin(), little.begin() + 8), Hex("09 00 FD 00 41 00 42 01"));
  EXPECT_EQ(ByteList(big.begin(), big.begin() + 8), Hex("00 09 FD 00 00 41 01 42"));
  EXPECT_EQ(WideTextOf(LoadFrom(big, kBig, 1).strings[0]), u"A\u0142");
}

TEST(StringStoreStated, HalfAUnitIsNoText) {
  char half[1] = {'a'};
  XoString text;
  text.text = half;
  text.size = 1;
  text.codeSet = kUnicode;
  text.language = 0;
  EXPECT_EQ(StoredAsIs(&text, 1, kLittle), Hex("04 00 FD 00 00 FF"));
  EXPECT_EQ(StoredAsIs(&text, 1, kBig), Hex("00 04 FD 00 00 FF"));
  text.Init();
}

// Load.

TEST(StringLoadStated, TakesCodeSetLanguageAndText) {
  auto const little = LoadFrom(Hex("08 00 FD 05 41 00 42 01 00 FF"), kLittle, 1);
  EXPECT_EQ(little.result, 10u);
  EXPECT_EQ(WideTextOf(little.strings[0]), u"A\u0142");
  EXPECT_EQ(little.strings[0].codeSet, kUnicode);
  EXPECT_EQ(little.strings[0].language, 5);
  auto const big = LoadFrom(Hex("00 08 FD 05 00 41 01 42 00 FF"), kBig, 1);
  EXPECT_EQ(WideTextOf(big.strings[0]), u"A\u0142");
}

TEST(StringLoadStated, ALengthBelowFourHasNoText) {
  // With a length of 0 the byte that tells the two kinds apart is the length's own, 0.
  auto const loaded = LoadFrom(Hex("03 00 01 02 FF"), kLittle, 1);
  EXPECT_EQ(loaded.result, 5u);
  EXPECT_EQ(loaded.strings[0].Len(), 0u);
  EXPECT_EQ(loaded.strings[0].codeSet, kLatin1);
  EXPECT_EQ(loaded.strings[0].language, 2);
}

TEST(StringLoadStated, AnOddByteOfWideTextIsLeftOut) {
  auto const loaded = LoadFrom(Hex("07 00 FD 00 41 00 42 00 FF"), kLittle, 1);
  EXPECT_EQ(loaded.result, 9u);
  EXPECT_EQ(WideTextOf(loaded.strings[0]), u"A");
}

TEST(StringLoadStated, AnOlderRecordHasTextsInTheDefaultCodeSet) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    ByteList const record = Unit(3, format) + Hex("61 62 00");
    auto const loaded = LoadFrom(record, format, 1);
    EXPECT_EQ(loaded.result, 5u);
    EXPECT_EQ(TextOf(loaded.strings[0]), "ab");
    EXPECT_EQ(loaded.strings[0].codeSet, XoString::GetDefault8CodeSet());
    EXPECT_EQ(loaded.strings[0].language, XoString::GetDefaultLanguage());
  }
}

TEST(StringLoadStated, AnOlderRecordHasOneLengthForAllTexts) {
  auto const loaded = LoadFrom(Hex("06 00 61 00 00 62 63 00"), kLittle, 3);
  EXPECT_EQ(loaded.result, 8u);
  EXPECT_EQ(TextOf(loaded.strings[0]), "a");
  EXPECT_EQ(TextOf(loaded.strings[1]), "");
  EXPECT_EQ(TextOf(loaded.strings[2]), "bc");
}

TEST(StringLoadStated, TextsThatAnOlderRecordLacksAreEmpty) {
  auto const loaded = LoadFrom(Hex("03 00 61 62 00"), kLittle, 4);
  EXPECT_EQ(loaded.result, 5u);
  EXPECT_EQ(TextOf(loaded.strings[0]), "ab");
  for (unsigned index = 1; index < 4; ++index) EXPECT_EQ(loaded.strings[index].Len(), 0u);
}

TEST(StringLoadStated, TheFirstRecordSaysOfWhichKindAllAre) {
  auto const loaded = LoadFrom(Hex("05 00 01 02 61 00 FF | 06 00 02 03 78 79 00 00"), kLittle, 2);
  EXPECT_EQ(loaded.result, 15u);
  EXPECT_EQ(TextOf(loaded.strings[0]), "a");
  EXPECT_EQ(TextOf(loaded.strings[1]), "xy");
  EXPECT_EQ(loaded.strings[1].codeSet, kLatin2);
  EXPECT_EQ(loaded.strings[1].language, 3);
}

// Sizes of what lies in memory.

TEST(StringSizeStated, OfAnIndexKeyIsABoundByTheWidthOfCharacters) {
  XoString const ten = Narrow("0123456789");
  EXPECT_EQ(StringSizeGet(&ten, kMemory, kLittle, 1), 16u);
  EXPECT_EQ(StringSizeGet(&ten, kMemory, kLittleKey, 1), (11 + 1) * 4 + 4u);
  XoString const wide = Wide(u"0123456789");
  EXPECT_EQ(StringSizeGet(&wide, kMemory, kLittle, 1), 26u);
  EXPECT_EQ(StringSizeGet(&wide, kMemory, kLittleKey, 1), 22 * 2 + 4u);
  XoString const empty(kLatin1, 0);
  EXPECT_EQ(StringSizeGet(&empty, kMemory, kLittleKey, 1), 2 * 4 + 4u);
  XoString const emptyWide(kUnicode, 0);
  EXPECT_EQ(StringSizeGet(&emptyWide, kMemory, kLittleKey, 1), 2 * 2 + 4u);
}

TEST(StringSizeStated, OfAKeyWithoutARealCodeSetIsThatOfTheRecord) {
  XoString const bytes = Narrow("ab", kNative);
  XoString const orders = Wide(u"ab", kOrders, 2);
  XoString const latin = Narrow("ab");
  EXPECT_EQ(StringSizeGet(&bytes, kMemory, kLittleKey, 1), 8u);
  EXPECT_EQ(StringSizeGet(&orders, kMemory, kLittleKey, 1), 10u);
  EXPECT_EQ(StringSizeGet(&orders, kMemory, kLittleKey | kDropSet, 1), 10u);
  EXPECT_EQ(StringSizeGet(&latin, kMemory, kLittleKey | kDropSet, 1), 8u);
  EXPECT_EQ(StringSizeGet(&bytes, kMemory, kLittleKey | kToNative, 1), 4 * 4 + 4u);
  // Only a code set that there is is dropped, and what is dropped does not become the native one.
  EXPECT_EQ(StringSizeGet(&latin, kMemory, kLittleKey | kToNative | kDropSet, 1), 8u);
  EXPECT_EQ(StringSizeGet(&bytes, kMemory, kLittleKey | kToNative | kDropSet, 1), 4 * 4 + 4u);
}

TEST(StringSizeStated, OfAnArrayIsTheSumInMemory) {
  std::vector<XoString> const two = {Narrow("ab"), Wide(u"a")};
  EXPECT_EQ(StringSizeGet(two.data(), kMemory, kLittle, 2), 8u + 8u);
  EXPECT_EQ(StringSizeGet(two.data(), 0x88, kLittleKey, 2), (4 * 4 + 4) + (4 * 2 + 4u));
  EXPECT_EQ(StringSizeGet(two.data(), kMemory, kLittle, 0), 0u);
}

// Sizes of what is stored.

unsigned StoredSize(ByteList const& stored, unsigned char from, unsigned char to, unsigned count) {
  PlacedBytes const source(stored, 1);
  return StringSizeGet(source.Data(), from, to, count);
}

TEST(StringSizeStated, OfStoredRecordsIsTheirSum) {
  EXPECT_EQ(StoredSize(Hex("05 00 01 00 61 00 FF 04 00 02 04 00 FF"), kLittle, kLittle, 2), 13u);
  EXPECT_EQ(StoredSize(Hex("00 05 01 00 61 00 FF 00 04 02 04 00 FF"), kBig, kBig, 2), 13u);
}

TEST(StringSizeStated, AnOlderRecordAnswersForAllAndDropsWhatWasSummed) {
  EXPECT_EQ(StoredSize(Hex("06 00 61 00 00 62 63 00"), kLittle, kLittle, 3), 8u);
  EXPECT_EQ(StoredSize(Hex("05 00 01 00 61 00 FF 03 00 61 62 00"), kLittle, kLittle, 2), 5u);
}

TEST(StringSizeStated, OfAStoredKeyMultipliesTheLength) {
  EXPECT_EQ(StoredSize(Hex("06 00 01 00 61 62 00 FF"), kLittle, kLittleKey, 1), 6 * 4 + 2u);
  EXPECT_EQ(StoredSize(Hex("00 06 FD 00 00 61 00 FF"), kBig, kLittleKey, 1), 6 * 2 + 2u);
  EXPECT_EQ(StoredSize(Hex("06 00 FE 02 61 62 00 FF"), kLittleKey, kLittleKey, 1), 8u);
  EXPECT_EQ(StoredSize(Hex("06 00 00 02 61 62 00 FF"), kLittle, kLittleKey, 1), 8u);
  EXPECT_EQ(StoredSize(Hex("06 00 00 02 61 62 00 FF"), kLittle, kLittleKey | kToNative, 1), 26u);
}

TEST(StringSizeStated, OfACutKeyReadsNoMoreThanItsHeader) {
  EXPECT_EQ(StoredSize(Hex("20 01 FE 02"), kLittleKey, kLittleKey, 1), 0x120 + 2u);
  EXPECT_EQ(StoredSize(Hex("20 01 01 02"), kLittleKey, kLittleKey, 1), 0x120 * 4 + 2u);
}

TEST(StringSizeStated, TheMultipliedLengthWrapsAtSixteenBits) {
  EXPECT_EQ(StoredSize(Hex("01 40 01 02"), kLittle, kLittleKey, 1), 4 + 2u);
  EXPECT_EQ(StoredSize(Hex("FF FF FD 02"), kLittle, kLittleKey, 1), 0xFFFE + 2u);
  EXPECT_EQ(StoredSize(Hex("FF FF FE 02"), kLittle, kLittleKey, 1), 0xFFFF + 2u);
}

TEST(StringSizeStated, TheNextRecordIsLookedForBehindTheMultipliedLength) {
  // 5 * 4 + 2: the second one, at 7, is not met.
  ByteList const stored = Hex("05 00 01 00 61 00 FF") + Hex("04 00 FD 00 00 FF") +
                          ByteList(9, 0x33) + Hex("06 00 FD 00");
  EXPECT_EQ(StoredSize(stored, kLittle, kLittleKey, 2), (5 * 4 + 2) + (6 * 2 + 2u));
}

// Sizes of what stands in a file.

unsigned FileSize(ByteList const& bytes, unsigned char format, unsigned count, int position = 0,
                  XoTypeMgr const& manager = XoTypeMgr()) {
  PlacedBytes const placed(bytes, 1);
  MemFile file(placed.Data(), static_cast<unsigned>(bytes.size()));
  file.Seek(position, 0, nullptr, 1);
  unsigned const size = manager.DiskLenGetFromMemFile(kString, &file, format, count);
  EXPECT_EQ(file.Position(), static_cast<unsigned>(position));
  return size;
}

TEST(StringFileSizeStated, IsTheSumOfRecordsFromThePositionOn) {
  ByteList const two = Hex("05 00 01 00 61 00 FF 04 00 02 04 00 FF");
  EXPECT_EQ(FileSize(two, kLittle, 1), 7u);
  EXPECT_EQ(FileSize(two, kLittle, 2), 13u);
  EXPECT_EQ(FileSize(two, kLittle, 1, 7), 6u);
  EXPECT_EQ(FileSize(two, kLittle, 0), 0u);
  EXPECT_EQ(FileSize(Hex("00 05 01 00 61 00 FF 00 04 02 04 00 FF"), kBig, 2), 13u);
}

TEST(StringFileSizeStated, WithoutBytesIsZero) {
  EXPECT_EQ(FileSize({}, kLittle, 3), 0u);
  EXPECT_EQ(FileSize(Hex("05 00 01 00 61 00 FF"), kLittle, 1, 7), 0u);
}

TEST(StringFileSizeStated, AnOlderRecordIsToldOnlyWhileElementsRemain) {
  EXPECT_EQ(FileSize(Hex("06 00 61 00 00 62 63 00"), kLittle, 3), 8u);
  EXPECT_EQ(FileSize(Hex("06 00 61 00 00 62 63 00"), kLittle, 1), 8u);
  ByteList const mixed = Hex("05 00 01 00 61 00 FF 03 00 61 62 00");
  EXPECT_EQ(FileSize(mixed, kLittle, 2), 12u);
  EXPECT_EQ(FileSize(mixed + Hex("04 00 01 00 00 FF"), kLittle, 3), 5u);
}

TEST(StringFileSizeStated, ARecordThatCannotBeWalkedGivesTheWorstCaseForAllLeft) {
  EXPECT_EQ(FileSize(Hex("06 00 01 00 61"), kLittle, 3), 3 * 65535u);
  EXPECT_EQ(FileSize(Hex("05 00 01 00 61 00 FF 09 00 01 00 61"), kLittle, 3), 2 * 65535u);
  // The last one is not walked: its length is enough.
  EXPECT_EQ(FileSize(Hex("09 00 01 00 61"), kLittle, 1), 11u);
  // A length that just fits can be walked, whatever lies behind.
  EXPECT_EQ(FileSize(Hex("05 00 01 00 61"), kLittle, 2), 65535u);
}

TEST(StringFileSizeStated, OfKeysMultipliesTheLength) {
  EXPECT_EQ(FileSize(Hex("06 00 01 00 61 62 00 FF"), kLittleKey, 1), 26u);
  EXPECT_EQ(FileSize(Hex("06 00 FD 00 61 00 00 FF"), kLittleKey, 1), 14u);
  EXPECT_EQ(FileSize(Hex("06 00 FE 00 61 00 00 FF"), kLittleKey, 1), 8u);
  EXPECT_EQ(FileSize(Hex("06 00 00 00 61 62 00 FF"), kLittleKey, 1), 8u);
  EXPECT_EQ(FileSize(Hex("06 00 00 00 61 62 00 FF"), kLittleKey | kToNative, 1), 26u);
  EXPECT_EQ(FileSize(Hex("06 00 01 00 61 62 00 FF"), kLittleKey | kDropSet, 1), 8u);
  EXPECT_EQ(FileSize(Hex("06 00 FE 00 61 00 00 FF 04 00 FE 02 00 FF"), kLittleKey, 2), 14u);
}

// Laws.

class StringStoreLaw : public RandomTest {
 protected:
  XoString AnyString() {
    unsigned char const codeSet = std::array<unsigned char, 9>{
        kNative, kLatin1, kLatin2, kCyrillic, 224, 225, kUnicode, kOrders, kByDefault}[Below(9)];
    XoString string;
    if (codeSet > 224) {
      std::u16string text(Below(OneIn(200) ? 33000 : 20), u'\0');
      for (char16_t& unit : text) unit = static_cast<char16_t>(1 + Below(65535));
      string = Wide(text);
    } else {
      std::string text(Below(OneIn(200) ? 66000 : 20), '\0');
      for (char& byte : text) byte = static_cast<char>(1 + Below(255));
      string = Narrow(text);
    }
    string.codeSet = codeSet;
    string.language = Byte();
    return string;
  }
};

TEST_F(StringStoreLaw, StoreWritesWhatTheSizesSayAndLoadGivesItBack) {
  for (unsigned round = 0; round < 600 && !HasFailure(); ++round) {
    std::vector<XoString> strings(1 + Below(4));
    for (XoString& string : strings) string = AnyString();
    auto const count = static_cast<unsigned>(strings.size());
    unsigned char const format = OneIn(2) ? kLittle : kBig;
    ByteList const stored = Stored(strings, format);
    ByteList expected;
    for (XoString const& string : strings) {
      expected = expected + Record(string.codeSet > 224 ? UnitBytes(WideTextOf(string), format)
                                                        : BytesOf(TextOf(string)),
                                   string.codeSet, string.language, format);
    }
    ASSERT_TRUE(stored == expected);
    EXPECT_EQ(StoredSize(stored, format, format, count), stored.size());
    EXPECT_EQ(FileSize(stored, format, count), stored.size());
    auto const loaded = LoadFrom(stored, format, count);
    EXPECT_EQ(loaded.result, stored.size());
    for (unsigned index = 0; index < count; ++index) {
      EXPECT_TRUE(SameValue(loaded.strings[index], strings[index]));
      EXPECT_TRUE(IsSound(loaded.strings[index]));
    }
  }
}

TEST_F(StringStoreLaw, AFileOfAnyBytesIsNeverReadBehindItsEnd) {
  for (unsigned round = 0; round < 20000; ++round) {
    ByteList bytes = Bytes(Below(40));
    for (unsigned char& byte : bytes) {
      if (OneIn(2)) byte = static_cast<unsigned char>(Below(12));
    }
    auto const format = static_cast<unsigned char>((Byte() & 0xE0) | (OneIn(2) ? 1 : 2));
    FileSize(bytes, format, Below(5), 0, XoTypeMgr(OneIn(2) ? 3 : 5));
  }
}

}  // namespace
}  // namespace xo::test
