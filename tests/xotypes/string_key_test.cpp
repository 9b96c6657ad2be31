#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kLatinGroup = 2, kCyrillicGroup = 4;

XoTypeMgr const manager;

/// The order of a character of Unicode by itself.
unsigned Order(char16_t character) {
  return XoChar(static_cast<unsigned short>(character), kUnicode, 0).CharOrder();
}
ByteList Orders(std::u16string_view text, unsigned char format) {
  ByteList bytes;
  for (char16_t const character : text) bytes = bytes + Unit(Order(character), format);
  return bytes;
}

// Whole keys.

TEST(StringKeyStated, IsTheOrdersOfItsTextAndTheirGroup) {
  for (unsigned char const format : Formats{kLittleKey, kBigKey}) {
    ByteList const expected = Record(Orders(u"ab", format), kOrders, kLatinGroup, format);
    std::vector<XoString> narrow = {Narrow("ab")}, wide = {Wide(u"ab")};
    EXPECT_EQ(FromMemory(manager, narrow, format, 10), (Produced{10, expected}));
    EXPECT_EQ(FromMemory(manager, wide, format, 10), (Produced{10, expected}));
    for (unsigned char const from : Formats{kLittle, kBig, kLittleKey, kBigKey}) {
      EXPECT_EQ(FromDisk(manager, Record(BytesOf("ab"), kLatin1, 0, from), from, format, 10),
                (Produced{10, expected}));
      EXPECT_EQ(
          FromDisk(manager, Record(UnitBytes(u"ab", from), kUnicode, 0, from), from, format, 10),
          (Produced{10, expected}));
    }
  }
}

TEST(StringKeyStated, WhatLiesBehindAKeyIsLeftAlone) {
  std::vector<XoString> text = {Narrow("a")};
  ByteList const key = Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle);
  EXPECT_EQ(FromMemory(manager, text, kLittleKey, 12), (Produced{8, Filled(key, 12, kUntouched)}));
}

TEST(StringKeyStated, OfAnEmptyTextIsTheGroupAlone) {
  std::vector<XoString> empty = {XoString(kLatin1, 0)};
  EXPECT_EQ(FromMemory(manager, empty, kLittleKey, 6), (Produced{6, Hex("04 00 FE 02 00 FF")}));
  EXPECT_EQ(FromDisk(manager, Hex("00 04 01 00 00 FF"), kBig, kBigKey, 6),
            (Produced{6, Hex("00 04 FE 02 00 FF")}));
}

TEST(StringKeyStated, OfANullIsTheNullMarker) {
  std::vector<XoString> null = {XoString(kLatin1, kNullLanguage)};
  EXPECT_EQ(FromMemory(manager, null, kLittleKey, 6), (Produced{6, Hex("04 00 FE 00 00 FF")}));
  EXPECT_EQ(FromDisk(manager, Hex("04 00 01 FE 00 FF"), kLittle, kLittleKey, 6),
            (Produced{6, Hex("04 00 FE 00 00 FF")}));
}

TEST(StringKeyStated, ANullThatHasTextTakesItsGroup) {
  EXPECT_EQ(FromDisk(manager, Hex("05 00 01 FE 61 00 FF"), kLittle, kLittleKey, 8),
            (Produced{8, Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle)}));
}

TEST(StringKeyStated, TextWithoutCodeSetTakesTheNativeOneWhereAsked) {
  unsigned char const format = kLittleKey | kToNative;
  ByteList const key = Record(Orders(u"ab", kLittle), kOrders, kLatinGroup, kLittle);
  std::vector<XoString> bytes = {Narrow("ab", kNative)};
  ASSERT_EQ(XoLanguageContext::GetNativeCodeSet() > 224, false);
  EXPECT_EQ(FromMemory(manager, bytes, format, 10), (Produced{10, key}));
  EXPECT_EQ(FromDisk(manager, Hex("06 00 00 00 61 62 00 FF"), kLittle, format, 10),
            (Produced{10, key}));
  // A record without header has language 0 and no code set.
  EXPECT_EQ(FromDisk(manager, Hex("03 00 61 62 00"), kLittle, format, 10), (Produced{10, key}));
  EXPECT_EQ(FromDisk(manager, Hex("00 03 61 62 00"), kBig, format, 10), (Produced{10, key}));
}

TEST(StringKeyStated, EndsWhereTheGroupOfItsTextChanges) {
  std::vector<XoString> text = {Wide(u"ab\u0416c")};
  for (unsigned char const format : Formats{kLittleKey, kBigKey}) {
    EXPECT_EQ(
        FromMemory(manager, text, format, 40).target,
        Filled(Record(Orders(u"ab", format), kOrders, kLatinGroup | 0x80, format), 40, kUntouched));
  }
}

TEST(StringKeyStated, TheGroupOfTheFirstOrderStands) {
  // Neutral Unicode is of the Latin group before it has been read.
  std::vector<XoString> text = {Wide(u"\u0416"), Wide(u"\u0416")};
  text.resize(1);
  EXPECT_EQ(FromMemory(manager, text, kLittleKey, 8),
            (Produced{8, Record(Orders(u"\u0416", kLittle), kOrders, kCyrillicGroup, kLittle)}));
}

// Cut keys.

TEST(StringKeyStated, AKeyThatDoesNotFitIsOpenAndKeepsTheLengthOfAClosedOne) {
  std::vector<XoString> text = {Narrow("abc")};
  for (unsigned char const format : Formats{kLittleKey, kBigKey}) {
    ByteList const header = {kOrders, kLatinGroup};
    ByteList const two = Unit(4 + 4, format) + header + Orders(u"ab", format);
    EXPECT_EQ(FromMemory(manager, text, format, 8), (Produced{8, two}));
    // Room counts in whole units.
    EXPECT_EQ(FromMemory(manager, text, format, 9), (Produced{8, Filled(two, 9, kUntouched)}));
    // Without room for its end a whole text looks cut.
    ByteList const three = Unit(4 + 6, format) + header + Orders(u"abc", format);
    EXPECT_EQ(FromMemory(manager, text, format, 10), (Produced{10, three}));
    EXPECT_EQ(FromMemory(manager, text, format, 11), (Produced{10, Filled(three, 11, kUntouched)}));
    EXPECT_EQ(FromMemory(manager, text, format, 12), (Produced{12, three + Hex("00 FF")}));
  }
}

TEST(StringKeyStated, WithLessThanFiveBytesNoKeyIsBegun) {
  std::vector<XoString> text = {Narrow("abc")};
  for (unsigned room = 0; room < 5; ++room) {
    EXPECT_EQ(FromMemory(manager, text, kLittleKey, room),
              (Produced{0, ByteList(room, kUntouched)}));
  }
  EXPECT_EQ(FromMemory(manager, text, kLittleKey, 5), (Produced{4, Hex("04 00 FE 02 A5")}));
  EXPECT_EQ(FromMemory(manager, text, kLittleKey, 6),
            (Produced{6, Hex("06 00 FE 02") + Orders(u"a", kLittle)}));
}

TEST(StringKeyStated, ALargeTargetClosesAKeyThatDoesNotFit) {
  std::vector<XoString> text = {Narrow(std::string(300, 'a'))};
  for (unsigned const room : {256u, 257u, 258u, 259u}) {
    unsigned const units = (room - 4) / 2;
    bool const closed = room >= 257;
    unsigned const written = 4 + 2 * units;
    Produced const made = FromMemory(manager, text, kLittleKey, room);
    EXPECT_EQ(made.result, written);
    ByteList expected = Unit(written - (closed ? 2 : 0), kLittle) + Hex("FE 02");
    for (unsigned unit = 0; unit + (closed ? 1 : 0) < units; ++unit) {
      expected = expected + Orders(u"a", kLittle);
    }
    if (closed) expected = expected + Hex("00 FF");
    EXPECT_EQ(made.target, Filled(expected, room, kUntouched));
  }
}

TEST(StringKeyStated, TextThatIsCutGivesAnOpenKey) {
  ByteList const two = Unit(8, kLittle) + Hex("FE 02") + Orders(u"ab", kLittle);
  EXPECT_EQ(FromDisk(manager, Hex("09 00 01 00 61 62"), kLittle, kLittleKey, 20),
            (Produced{8, Filled(two, 20, kUntouched)}));
  // Half a character of it does not count.
  EXPECT_EQ(FromDisk(manager, Hex("0E 00 FD 00 61 00 62 00 42"), kLittle, kLittleKey, 20),
            (Produced{8, Filled(two, 20, kUntouched)}));
  EXPECT_EQ(FromDisk(manager, Hex("00 0E FD 00 00 61 00 62 01"), kBig, kLittleKey, 20),
            (Produced{8, Filled(two, 20, kUntouched)}));
  // Text that lacks no more than its closing bytes is whole.
  for (unsigned missing : {1u, 2u}) {
    ByteList stored = Hex("06 00 01 00 61 62 00 FF");
    stored.resize(stored.size() - missing);
    EXPECT_EQ(FromDisk(manager, stored, kLittle, kLittleKey, 10),
              (Produced{10, Record(Orders(u"ab", kLittle), kOrders, kLatinGroup, kLittle)}));
  }
}

TEST(StringKeyStated, ALengthOfMoreThanSixteenBitsIsReported) {
  static std::string reported;
  static int line = 0;
  XoPlatform platform = {};
  platform.assertFailed = [](char const* expression, char const*, int at) {
    reported = expression;
    return line = at;
  };
  XoPlatform const before = XoExchangePlatform(platform);
  std::vector<XoString> text = {Narrow(std::string(40000, 'a'))};
  Produced const made = FromMemory(manager, text, kLittleKey, 80006);
  XoExchangePlatform(before);
  EXPECT_EQ(reported, "(o_u4b)_nLen == nLen");
  EXPECT_EQ(line, 1569);
  EXPECT_EQ(made.result, 80006u);
  EXPECT_EQ(ByteList(made.target.begin(), made.target.begin() + 4),
            Unit(80004 % 65536, kLittle) + Hex("FE 02"));
}

// Arrays.

TEST(StringKeyStated, LaterElementsAreWalkedAsIfTheyHeldOrders) {
  std::vector<XoString> texts = {Narrow("a", kLatin1, 0), Narrow("bcde", kLatin1, 3)};
  ByteList const first = Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle);
  // "bc" and "de" read as two units; their language stands as the group.
  ByteList const second =
      Record(Unit(0x6362, kLittle) + Unit(0x6564, kLittle), kOrders, 3, kLittle);
  EXPECT_EQ(FromMemory(manager, texts, kLittleKey, 18), (Produced{18, first + second}));
  ByteList const stored = Hex("00 05 01 00 61 00 FF | 00 08 01 03 62 63 64 65 00 FF");
  ByteList const fromBig =
      Record(Unit(0x6263, kLittle) + Unit(0x6465, kLittle), kOrders, 3, kLittle);
  EXPECT_EQ(FromDisk(manager, stored, kBig, kLittleKey, 18, 2), (Produced{18, first + fromBig}));
}

TEST(StringKeyStated, ALaterElementOfLanguageZeroIsNullUntilItHasText) {
  std::vector<XoString> texts = {Narrow("a"), XoString(kLatin1, 0)};
  ByteList const first = Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle);
  EXPECT_EQ(FromMemory(manager, texts, kLittleKey, 14),
            (Produced{14, first + Hex("04 00 FE 00 00 FF")}));
}

TEST(StringKeyStated, AnArrayStopsWhereNoKeyFits) {
  std::vector<XoString> texts = {Narrow("a"), Wide(u"\u4001\u4002", kLatin1, 3), Narrow("c")};
  texts[1].codeSet = kUnicode;
  ByteList const first = Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle);
  for (unsigned room = 8; room < 13; ++room) {
    EXPECT_EQ(FromMemory(manager, texts, kLittleKey, room),
              (Produced{8, Filled(first, room, kUntouched)}));
  }
  EXPECT_EQ(FromMemory(manager, texts, kLittleKey, 14),
            (Produced{14, first + Hex("06 00 FE 03 01 40")}));
}

TEST(StringKeyStated, AnOlderRecordGivesAKeyForEachText) {
  ByteList const stored = Hex("07 00 61 00 62 63 64 65 00");
  ByteList const first = Record(Orders(u"a", kLittle), kOrders, kLatinGroup, kLittle);
  EXPECT_EQ(FromDisk(manager, stored, kLittle, kLittleKey | kToNative, 18, 2).target,
            first + Record(Unit(0x6362, kLittle) + Unit(0x6564, kLittle), kOrders, 0, kLittle));
}

// Laws.

/// A key by the rules, one step after the other. `room` is what is left, `whole` the target's size.
ByteList KeyByTheBook(XoString const& text, std::size_t room, std::size_t whole,
                      unsigned char format) {
  XoStringIterator reader(text);
  bool const isNull = text.language == kNullLanguage || (text.codeSet == kOrders && !text.language);
  unsigned group = isNull ? 0 : reader.orderGroup;
  ByteList orders;
  std::size_t written = 4;
  // A unit for which there is no room is not read.
  while (written + 2 <= room) {
    unsigned order = reader.GetNextOrder(1);
    if (reader.orderGroup != group) {
      if (!orders.empty()) {
        group |= 0x80;
        order = 0;
      } else if (order != 0) {
        group = reader.orderGroup;
      }
    }
    written += 2;
    if (order == 0) return Record(orders, kOrders, static_cast<unsigned char>(group), format);
    orders = orders + Unit(order, format);
  }
  if (whole >= 257 && !orders.empty()) {
    orders.resize(orders.size() - 2);
    return Record(orders, kOrders, static_cast<unsigned char>(group), format);
  }
  return Unit(static_cast<unsigned>(written), format) +
         ByteList{kOrders, static_cast<unsigned char>(group)} + orders;
}

class StringKeyLaw : public RandomTest {
 protected:
  XoString AnyText() {
    if (OneIn(3)) return NarrowText();
    return WideText(OneIn(2) ? 0x180 : OneIn(2) ? 0x500 : 0xFFFF);
  }
  XoString NarrowText() {
    std::string text(Below(20), '\0');
    for (char& byte : text) byte = static_cast<char>(1 + Below(255));
    unsigned char const codeSets[] = {kLatin1, kLatin2, kCyrillic, kEbcdic};
    return Narrow(text, codeSets[Below(4)], Language());
  }
  XoString WideText(unsigned limit) {
    std::u16string text(Below(20), u'\0');
    for (char16_t& unit : text) unit = static_cast<char16_t>(1 + Below(limit));
    return Wide(text, kUnicode, Language());
  }
  unsigned char Language() {
    return OneIn(20) ? kNullLanguage : static_cast<unsigned char>(Below(45));
  }
};

TEST_F(StringKeyLaw, KeysAreWhatTheRulesGive) {
  for (unsigned round = 0; round < 6000 && !HasFailure(); ++round) {
    std::vector<XoString> text = {AnyText()};
    unsigned char const format = OneIn(2) ? kLittleKey : kBigKey;
    unsigned const room = OneIn(3) ? 257 + Below(20) : 5 + Below(60);
    ByteList const key = KeyByTheBook(text[0], room, room, format);
    Produced const expected{static_cast<unsigned>(key.size()), Filled(key, room, kUntouched)};
    ASSERT_EQ(FromMemory(manager, text, format, room), expected);
    for (unsigned char const from : Formats{kLittle, kBig}) {
      ByteList stored(StringSizeGet(text.data(), kMemory, from, 1));
      StringStore(stored.data(), text.data(), from, 1);
      ASSERT_EQ(FromDisk(manager, stored, from, format, room), expected);
    }
  }
}

TEST_F(StringKeyLaw, AKeyOfAtMostTwoOrdersACharacterFitsTheBound) {
  for (unsigned round = 0; round < 1500 && !HasFailure(); ++round) {
    // ASCII and the letters of Latin-1 have one order or two; a fraction for example has three.
    std::u16string units(Below(20), u'\0');
    for (char16_t& unit : units) {
      unit = static_cast<char16_t>(OneIn(2) ? 1 + Below(126) : 0xC0 + Below(64));
    }
    std::vector<XoString> text = {OneIn(2) ? Wide(units)
                                           : Narrow(std::string(units.begin(), units.end()))};
    unsigned const bound = StringSizeGet(text.data(), kMemory, kLittleKey, 1);
    EXPECT_LE(FromMemory(manager, text, kLittleKey, 256).result, bound);
  }
}

TEST_F(StringKeyLaw, ACutKeyBeginsAsTheWholeOneDoes) {
  for (unsigned round = 0; round < 1500 && !HasFailure(); ++round) {
    std::vector<XoString> text = {AnyText()};
    Produced const whole = FromMemory(manager, text, kLittleKey, 256);
    unsigned const room = 5 + Below(60);
    Produced const cut = FromMemory(manager, text, kLittleKey, room);
    EXPECT_LE(cut.result, room);
    if (cut.result >= whole.result) continue;
    EXPECT_TRUE(std::equal(cut.target.begin() + 4, cut.target.begin() + cut.result,
                           whole.target.begin() + 4));
  }
}

TEST_F(StringKeyLaw, AKeyThatIsReadBackIsItsOwnKey) {
  for (unsigned round = 0; round < 1500 && !HasFailure(); ++round) {
    std::vector<XoString> text = {AnyText()};
    Produced key = FromMemory(manager, text, kLittleKey, 256);
    key.target.resize(key.result);
    std::vector<XoString> read = ToMemory(manager, key.target, kLittleKey, 1).strings;
    EXPECT_EQ(read[0].codeSet, kOrders);
    EXPECT_EQ(FromMemory(manager, read, kLittleKey, key.result).target, key.target);
    EXPECT_EQ(FromDisk(manager, key.target, kLittleKey, kLittleKey, key.result).target, key.target);
  }
}

}  // namespace
}  // namespace xo::test
