#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

XoTypeMgr const manager;

// Into memory.

TEST(StringToMemoryStated, FromMemoryConstructsCopies) {
  std::vector<XoString> source = {Narrow("a", kLatin2, 3), Wide(u"bc")};
  source.emplace_back().SetNullValue();
  for (unsigned char const format : Formats{8, 0x88, 0xFF}) {
    // Raw memory: what it held is not freed.
    alignas(XoString) unsigned char memory[3 * sizeof(XoString)];
    std::fill(std::begin(memory), std::end(memory), kUntouched);
    EXPECT_EQ(manager.Translate(kString, memory, format, 1, source.data(), kMemory, 1, 3), 48u);
    auto* const copies = static_cast<XoString*>(static_cast<void*>(memory));
    for (unsigned index = 0; index < 3; ++index) {
      EXPECT_TRUE(SameValue(copies[index], source[index]));
      EXPECT_TRUE(copies[index].text == nullptr || copies[index].text != source[index].text);
      std::destroy_at(copies + index);
    }
  }
  EXPECT_EQ(manager.Translate(kString, nullptr, kMemory, 0, nullptr, kMemory, 0, 0), 0u);
}

TEST(StringToMemoryStated, FromDiskLoads) {
  auto const big =
      ToMemory(manager, Hex("00 06 FD 05 01 42 00 FF | 00 05 02 01 61 00 FF"), kBig, 2);
  EXPECT_EQ(big.result, 15u);
  EXPECT_EQ(WideTextOf(big.strings[0]), u"\u0142");
  EXPECT_EQ(TextOf(big.strings[1]), "a");
  EXPECT_EQ(big.strings[1].codeSet, kLatin2);
  auto const older = ToMemory(manager, Hex("05 00 61 00 62 63 00"), kLittle, 2);
  EXPECT_EQ(older.result, 7u);
  EXPECT_EQ(TextOf(older.strings[0]), "a");
  EXPECT_EQ(TextOf(older.strings[1]), "bc");
}

TEST(StringToMemoryStated, ALengthOfZeroDoesNotLimitRecords) {
  ByteList stored = Hex("06 00 02 01 61 62 00 FF");
  XoString string;
  EXPECT_EQ(manager.Translate(kString, &string, kMemory, 0, stored.data(), kLittle, 0, 1), 8u);
  EXPECT_EQ(TextOf(string), "ab");
}

TEST(StringToMemoryStated, ARecordThatIsCutGivesTheTextThatIsThere) {
  auto const two = ToMemory(manager, Hex("05 00 01 00 61 00 FF | 09 00 02 03 78 79"), kLittle, 3);
  EXPECT_EQ(two.result, 13u);
  EXPECT_EQ(TextOf(two.strings[0]), "a");
  EXPECT_EQ(TextOf(two.strings[1]), "xy");
  EXPECT_EQ(two.strings[1].codeSet, kLatin2);
  EXPECT_EQ(two.strings[2].Len(), 0u);
}

TEST(StringToMemoryStated, AWholeKeyLoads) {
  auto const key = ToMemory(manager, Hex("08 00 FE 02 01 40 02 40 00 FF"), kLittleKey, 1);
  EXPECT_EQ(key.result, 10u);
  EXPECT_EQ(WideTextOf(key.strings[0]), u"\u4001\u4002");
  EXPECT_EQ(key.strings[0].codeSet, kOrders);
  EXPECT_EQ(key.strings[0].language, 2);
  // More bytes than the record has do not matter, not even more than a cut key may have.
  auto const longer =
      ToMemory(manager, Hex("08 00 FE 02 01 40 02 40 00 FF") + ByteList(400, 0x33), kLittleKey, 1);
  EXPECT_EQ(longer.result, 10u);
  EXPECT_EQ(WideTextOf(longer.strings[0]), u"\u4001\u4002");
  // A record without header is one whole record too.
  EXPECT_EQ(TextOf(ToMemory(manager, Hex("03 00 61 62 00"), kLittleKey, 1).strings[0]), "ab");
}

TEST(StringToMemoryStated, ACutKeyGivesTheOrdersThatAreThere) {
  auto const little = ToMemory(manager, Hex("0C 00 FE 82 01 40 02 40"), kLittleKey, 1);
  EXPECT_EQ(WideTextOf(little.strings[0]), u"\u4001\u4002");
  EXPECT_EQ(little.strings[0].codeSet, kOrders);
  EXPECT_EQ(little.strings[0].language, 0x82);
  // What remains stands for the length, and a length field goes with it.
  EXPECT_EQ(little.result, 8u + 2u);
  auto const big = ToMemory(manager, Hex("00 0C FE 02 40 01 40 02 40"), kBigKey, 1);
  EXPECT_EQ(WideTextOf(big.strings[0]), u"\u4001\u4002");
  EXPECT_EQ(big.result, 9u + 2u);
}

TEST(StringToMemoryStated, AKeyThatLacksItsClosingBytesKeepsItsText) {
  for (unsigned missing : {1u, 2u}) {
    ByteList stored = Hex("08 00 FE 02 01 40 02 40 00 FF");
    stored.resize(stored.size() - missing);
    auto const key = ToMemory(manager, stored, kLittleKey, 1);
    EXPECT_EQ(WideTextOf(key.strings[0]), u"\u4001\u4002");
    EXPECT_EQ(key.result, 10u);
  }
}

TEST(StringToMemoryStated, SeveralKeysAreReadUntilFiveBytesAreLeft) {
  ByteList const keys = Hex("06 00 FE 02 01 40 00 FF | 06 00 FE 03 02 40 00 FF");
  auto const two = ToMemory(manager, keys, kLittleKey, 2);
  EXPECT_EQ(two.result, 16u);
  EXPECT_EQ(WideTextOf(two.strings[0]), u"\u4001");
  EXPECT_EQ(WideTextOf(two.strings[1]), u"\u4002");
  EXPECT_EQ(two.strings[1].language, 3);
  // The elements left are empty, in the last code set and language, and count six bytes each.
  auto const four = ToMemory(manager, keys, kLittleKey, 4);
  EXPECT_EQ(four.result, 16u + 12u);
  for (unsigned index : {2u, 3u}) {
    EXPECT_EQ(four.strings[index].Len(), 0u);
    EXPECT_EQ(four.strings[index].codeSet, kOrders);
    EXPECT_EQ(four.strings[index].language, 3);
  }
  // Five bytes behind the first are no further key, six are.
  ByteList const five(keys.begin(), keys.begin() + 13), six(keys.begin(), keys.begin() + 14);
  auto const unread = ToMemory(manager, five, kLittleKey, 2);
  EXPECT_EQ(unread.result, 8u + 6u);
  EXPECT_EQ(unread.strings[1].Len(), 0u);
  EXPECT_EQ(unread.strings[1].language, 2);
  EXPECT_EQ(WideTextOf(ToMemory(manager, six, kLittleKey, 2).strings[1]), u"\u4002");
}

TEST(StringToMemoryStated, OfExactlyFiveBytesNothingIsRead) {
  auto const key = ToMemory(manager, Hex("09 00 FE 02 61"), kLittleKey, 1);
  EXPECT_EQ(key.result, 6u);
  EXPECT_EQ(key.strings[0].Len(), 0u);
  EXPECT_EQ(key.strings[0].codeSet, kOrders);
  EXPECT_EQ(key.strings[0].language, 2);
  // A record without header has neither code set nor language.
  auto const older = ToMemory(manager, Hex("03 00 61 62 00"), kLittleKey, 2);
  EXPECT_EQ(older.result, 12u);
  EXPECT_EQ(older.strings[1].codeSet, kNative);
  EXPECT_EQ(older.strings[1].language, 0);
}

TEST(StringToMemoryStated, NarrowKeysAreReadByBytes) {
  auto const key = ToMemory(manager, Hex("20 00 00 00 61 62 63"), kLittleKey, 1);
  EXPECT_EQ(TextOf(key.strings[0]), "abc");
  EXPECT_EQ(key.strings[0].codeSet, kNative);
}

TEST(StringToMemoryStated, TheLongestCutKeyHas259Bytes) {
  ByteList const key = Hex("FF 7F FE 02") + ByteList(255, 0x41);
  auto const loaded = ToMemory(manager, key, kLittleKey, 1);
  EXPECT_EQ(loaded.strings[0].Len(), 127u);
  EXPECT_EQ(loaded.result, 259u + 2u);
}

#if GTEST_HAS_DEATH_TEST && !defined(_WIN32)
int LeaveWithThree(char const*, char const*, int) { std::_Exit(3); }

TEST(StringToMemoryDeathTest, ALongerCutKeyEndsTheProcess) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  ByteList const key = Hex("FF 7F FE 02") + ByteList(256, 0x41);
  EXPECT_DEATH(ToMemory(manager, key, kLittleKey, 1), "");
  // The failed condition is reported before that.
  EXPECT_EXIT(
      {
        XoPlatform platform = {};
        platform.assertFailed = LeaveWithThree;
        XoExchangePlatform(platform);
        ToMemory(manager, key, kLittleKey, 1);
      },
      testing::ExitedWithCode(3), "");
}
#endif

// Onto disk, plainly.

TEST(StringToDiskStated, FromMemoryStoresIntoAClearedTarget) {
  std::vector<XoString> strings = {Narrow("ab", kLatin2, 5)};
  ByteList const record = Hex("06 00 02 05 61 62 00 FF");
  EXPECT_EQ(FromMemory(manager, strings, kLittle, 8), (Produced{8, record}));
  EXPECT_EQ(FromMemory(manager, strings, kLittle, 12), (Produced{8, Filled(record, 12, 0)}));
  EXPECT_EQ(FromMemory(manager, strings, kBig, 8), (Produced{8, Hex("00 06 02 05 61 62 00 FF")}));
  // The bits for code sets have no say here.
  EXPECT_EQ(FromMemory(manager, strings, kLittle | kDropSet, 8), (Produced{8, record}));
  std::vector<XoString> bytes = {Narrow("a", kNative)};
  EXPECT_EQ(FromMemory(manager, bytes, kLittle | kToNative, 7),
            (Produced{7, Hex("05 00 00 00 61 00 FF")}));
  std::vector<XoString> none;
  EXPECT_EQ(FromMemory(manager, none, kLittle, 3), (Produced{0, ByteList(3, 0)}));
}

TEST(StringToDiskStated, WhatDoesNotFitIsCut) {
  std::vector<XoString> strings = {Narrow("ab", kLatin2, 5), Wide(u"cd")};
  for (unsigned char const format : Formats{kLittle, kBig}) {
    Produced const whole = FromMemory(manager, strings, format, 18);
    ASSERT_EQ(whole.result, 18u);
    for (unsigned room = 0; room < 18; ++room) {
      ByteList const cut(whole.target.begin(), whole.target.begin() + room);
      EXPECT_EQ(FromMemory(manager, strings, format, room), (Produced{room, cut}));
    }
  }
}

std::string assertedText, assertedFile;
int assertedLine = 0, assertions = 0;
int NoteAssertion(char const* expression, char const* file, int line) {
  assertedText = expression;
  assertedFile = file;
  assertedLine = line;
  return ++assertions;
}

TEST(StringToDiskStated, BetweenFormatsThereIsNoWay) {
  XoPlatform platform = {};
  platform.assertFailed = NoteAssertion;
  XoPlatform const before = XoExchangePlatform(platform);
  ByteList const record = Hex("05 00 01 00 61 00 FF");
  assertions = 0;
  EXPECT_EQ(FromDisk(manager, record, kLittle, kBig, 7), (Produced{0, ByteList(7, kUntouched)}));
  EXPECT_EQ(assertedText, "format combination not supported");
  EXPECT_EQ(assertedFile, "src\\xotypes");
  EXPECT_EQ(assertedLine, 1745);
  EXPECT_EQ(FromDisk(manager, record, kLittleKey, kLittle, 7).result, 0u);
  EXPECT_EQ(FromDisk(manager, record, kLittle, kLittle | kToNative, 7).result, 0u);
  EXPECT_EQ(FromDisk(manager, Hex("03 00 61 62 00"), kLittle, kBig, 9).result, 0u);
  EXPECT_EQ(assertions, 4);
  EXPECT_EQ(FromDisk(manager, record, kLittle, kLittle, 7).result, 7u);
  EXPECT_EQ(assertions, 4);
  XoExchangePlatform(before);
}

TEST(StringToDiskStated, InOneFormatIsACopyOfAllBytes) {
  ByteList const array = Hex("05 00 01 00 61 00 FF | 06 00 FD 00 62 00 00 FF");
  for (unsigned room = 0; room < 18; ++room) {
    unsigned const copied = std::min(room, 15u);
    ByteList expected(array.begin(), array.begin() + copied);
    EXPECT_EQ(FromDisk(manager, array, kLittle, kLittle, room, 2),
              (Produced{copied, Filled(expected, room, 0)}));
  }
  // Unicode text stays as it is while its code set does.
  ByteList const wide = Hex("00 06 FD 00 00 62 00 FF");
  EXPECT_EQ(FromDisk(manager, wide, kBig, kBig, 8), (Produced{8, wide}));
  ByteList const key = Hex("06 00 FE 02 61 62 00 FF");
  EXPECT_EQ(FromDisk(manager, key, kLittleKey, kLittleKey, 8), (Produced{8, key}));
  EXPECT_EQ(FromDisk(manager, key, kLittleKey, kLittleKey | kDropSet | kToNative, 8),
            (Produced{8, key}));
}

TEST(StringToDiskStated, ACopyTakesTheEffectiveCodeSetOfItsFirstRecord) {
  unsigned char const drop = kLittle | kDropSet, native = kLittle | kToNative;
  EXPECT_EQ(FromDisk(manager, Hex("05 00 02 07 61 00 FF 05 00 02 07 61 00 FF"), drop, drop, 14, 2),
            (Produced{14, Hex("05 00 00 07 61 00 FF 05 00 02 07 61 00 FF")}));
  ByteList expected = Hex("05 00 00 07 61 00 FF");
  expected[2] = XoLanguageContext::GetNativeCodeSet();
  EXPECT_EQ(FromDisk(manager, Hex("05 00 00 07 61 00 FF"), native, native, 7),
            (Produced{7, expected}));
  EXPECT_EQ(FromDisk(manager, Hex("05 00 00 07 61 00 FF"), kLittleKey, kLittleKey | kDropSet, 7),
            (Produced{7, Hex("05 00 00 07 61 00 FF")}));
}

TEST(StringToDiskStated, AnOlderRecordGetsAHeader) {
  ByteList const older = Hex("03 00 61 62 00");
  ByteList const current = Hex("06 00 00 00 61 62 00 FF");
  // The answer does not count the end mark, which stands where there is room for it.
  EXPECT_EQ(FromDisk(manager, older, kLittle, kLittle, 8), (Produced{7, current}));
  EXPECT_EQ(FromDisk(manager, older, kLittle, kLittle, 10), (Produced{7, Filled(current, 10, 0)}));
  for (unsigned room = 0; room < 8; ++room) {
    ByteList const cut(current.begin(), current.begin() + room);
    EXPECT_EQ(FromDisk(manager, older, kLittle, kLittle, room), (Produced{room, cut}));
  }
  EXPECT_EQ(FromDisk(manager, Hex("00 03 61 62 00"), kBig, kBig, 8),
            (Produced{7, Hex("00 06 00 00 61 62 00 FF")}));
  // Into a key without code set, in the order of the target.
  EXPECT_EQ(FromDisk(manager, older, kLittle, kBigKey, 8),
            (Produced{7, Hex("00 06 00 00 61 62 00 FF")}));
  unsigned char const native = kLittle | kToNative;
  ByteList withNative = current;
  withNative[2] = XoLanguageContext::GetNativeCodeSet();
  EXPECT_EQ(FromDisk(manager, older, native, native, 8), (Produced{7, withNative}));
}

TEST(StringToDiskStated, AnOlderRecordTakesWhatLiesBehindItAlong) {
  EXPECT_EQ(FromDisk(manager, Hex("03 00 61 62 00 77 78"), kLittle, kLittle, 12),
            (Produced{9, Hex("06 00 00 00 61 62 00 FF 78 00 00 00")}));
  // The end mark needs room behind all of that.
  EXPECT_EQ(FromDisk(manager, Hex("03 00 61 62 00 77 78"), kLittle, kLittle, 9),
            (Produced{9, Hex("06 00 00 00 61 62 00 77 78")}));
}

// Under a code set that is none.

TEST(StringToDiskStated, AKeyWithoutCodeSetIsTheRecord) {
  std::vector<XoString> strings = {Narrow("ab", kNative, 5), Narrow("c", kLatin2, 6)};
  EXPECT_EQ(FromMemory(manager, strings, kBigKey, 15),
            (Produced{15, Hex("00 06 00 05 61 62 00 FF | 00 05 02 06 63 00 FF")}));
  std::vector<XoString> latin = {Narrow("ab", kLatin2, 5)};
  EXPECT_EQ(FromMemory(manager, latin, kLittleKey | kDropSet, 10),
            (Produced{8, Hex("06 00 00 05 61 62 00 FF 00 00")}));
  EXPECT_EQ(FromMemory(manager, latin, kLittleKey | kDropSet, 5),
            (Produced{5, Hex("06 00 00 05 61")}));
  std::vector<XoString> orders = {Wide(u"\u4001", kOrders, 2)};
  EXPECT_EQ(FromMemory(manager, orders, kBigKey | kDropSet, 8),
            (Produced{8, Hex("00 06 FE 02 40 01 00 FF")}));
  std::vector<XoString> none;
  EXPECT_EQ(FromMemory(manager, none, kLittleKey, 3), (Produced{0, ByteList(3, 0)}));
}

TEST(StringToDiskStated, UnicodeWithoutItsCodeSetIsNarrowed) {
  std::vector<XoString> strings = {Wide(u"A\u0142b", kUnicode, 9)};
  // The high byte is dropped unseen, and the code set stands in place of the language too.
  EXPECT_EQ(FromMemory(manager, strings, kLittleKey | kDropSet, 9),
            (Produced{9, Hex("07 00 00 00 41 42 62 00 FF")}));
  EXPECT_EQ(FromMemory(manager, strings, kBigKey | kDropSet, 12),
            (Produced{9, Hex("00 07 00 00 41 42 62 00 FF 00 00 00")}));
  ByteList const big = Hex("00 08 FD 09 00 41 01 42 00 FF");
  EXPECT_EQ(FromDisk(manager, big, kBig, kLittleKey | kDropSet, 8),
            (Produced{8, Hex("06 00 00 00 41 42 00 FF")}));
  EXPECT_EQ(FromDisk(manager, big, kBig | kDropSet, kBig | kDropSet, 8),
            (Produced{8, Hex("00 06 00 00 41 42 00 FF")}));
  std::vector<XoString> empty = {XoString(kUnicode, 9)};
  EXPECT_EQ(FromMemory(manager, empty, kLittleKey | kDropSet, 6),
            (Produced{6, Hex("04 00 00 00 00 FF")}));
}

TEST(StringToDiskStated, ANarrowedRecordThatDoesNotFitIsCut) {
  std::vector<XoString> strings = {Wide(u"abc", kUnicode, 9)};
  for (unsigned room = 0; room < 9; ++room) {
    Produced const cut = FromMemory(manager, strings, kLittleKey | kDropSet, room);
    ByteList const whole = Hex("07 00 00 00 61 62 63 00");
    EXPECT_EQ(cut, (Produced{room, ByteList(whole.begin(), whole.begin() + room)}));
  }
}

TEST(StringToDiskStated, ALaterConfigurationDoesNotChangeTheAnswer) {
  std::vector<XoString> strings = {Wide(u"a")};
  ByteList const narrowed = Hex("05 00 00 00 61 00 FF");
  ASSERT_EQ(FromMemory(manager, strings, kLittleKey | kDropSet, 7).target, narrowed);
  XoMemoryConfig config;
  config.Set("oldIndexUnicodeOrder", 1);
  XoConfig* const before = DefaultConfig(&config);
  EXPECT_EQ(FromMemory(manager, strings, kLittleKey | kDropSet, 7).target, narrowed);
  DefaultConfig(before);
}

// Laws.

class StringTranslateLaw : public RandomTest {
 protected:
  unsigned char AnyFormat() {
    return static_cast<unsigned char>((Byte() & 0xE0) | (OneIn(2) ? 1 : 2));
  }
  /// Bytes that look like records often enough, and lie.
  ByteList AnyRecords(unsigned char format) {
    ByteList bytes;
    for (unsigned left = 1 + Below(3); left != 0; --left) {
      unsigned char const codeSets[] = {0, 1, 5, 253, 254, 255, Byte()};
      bytes = bytes + Record(Bytes(Below(12)), codeSets[Below(7)], Byte(), format);
    }
    if (OneIn(2)) bytes.resize(Below(static_cast<unsigned>(bytes.size()) + 1));
    if (OneIn(3) && !bytes.empty()) bytes[Below(static_cast<unsigned>(bytes.size()))] = Byte();
    return bytes;
  }
};

TEST_F(StringTranslateLaw, WhateverIsStoredIsReadWithinItsLength) {
  XoPlatform platform = {};
  platform.assertFailed = NoteAssertion;
  XoPlatform const before = XoExchangePlatform(platform);
  for (unsigned round = 0; round < 20000 && !HasFailure(); ++round) {
    XoTypeMgr const anyManager(OneIn(2) ? 3 : 5);
    unsigned char const from = AnyFormat();
    unsigned char const to = OneIn(2) ? from : AnyFormat();
    ByteList const stored = AnyRecords(from);
    unsigned const room = Below(60);
    Produced const produced = FromDisk(anyManager, stored, from, to, room, Below(5));
    EXPECT_LE(produced.result, room);
    if (stored.empty()) continue;
    for (XoString const& string : ToMemory(anyManager, stored, from, Below(5)).strings) {
      EXPECT_TRUE(IsSound(string));
    }
  }
  XoExchangePlatform(before);
}

}  // namespace
}  // namespace xo::test
