#include <gtest/gtest.h>

#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

XoTypeMgr const manager;

struct Stepped {
  int result;
  ByteList bytes;
  bool operator==(Stepped const&) const = default;
};

/// Steps the value in a buffer of exactly the bytes given.
Stepped Step(ByteList const& bytes, NextValueCode code, unsigned char format = kLittleKey) {
  PlacedBytes const placed(bytes, 1);
  int const result =
      manager.GetValue(kString, placed.Data(), static_cast<unsigned>(bytes.size()), format, code);
  return {result, ByteList(placed.Data(), placed.Data() + bytes.size())};
}

/// The lowest letter, as it is appended.
ByteList LowestLetter() { return Unit(XoChar('a', 255, 0).CharOrder(), kLittle); }

TEST(StringStepStated, OnlyLittleEndianKeysAndTwoCodesAreSupported) {
  ByteList const key = Hex("06 00 FE 02 01 40 00 FF 00 00");
  for (unsigned char const format : Formats{1, 2, 8, 0x82, 0x88, 0xC1, 0xA1}) {
    EXPECT_EQ(Step(key, kNextValue, format), (Stepped{ERR_TM_NOT_SUPPORTED, key}));
    EXPECT_EQ(Step(key, kNextValueToo, format), (Stepped{ERR_TM_NOT_SUPPORTED, key}));
  }
  for (char const code : {'O', 'L', 'H', '\2'}) {
    EXPECT_EQ(Step(key, static_cast<NextValueCode>(code)), (Stepped{ERR_TM_NOT_SUPPORTED, key}));
  }
}

TEST(StringStepStated, AppendsTheLowestLetterToAKey) {
  ByteList const key = Hex("06 00 FE 02 01 40 00 FF 33 44");
  ByteList const longer = Hex("08 00 FE 02 01 40") + LowestLetter() + Hex("00 FF");
  EXPECT_EQ(Step(key, kNextValue), (Stepped{0, longer}));
  EXPECT_EQ(Step(key, kNextValueToo), (Stepped{0, longer}));
  EXPECT_EQ(Step(key + Hex("55"), kNextValue), (Stepped{0, longer + Hex("55")}));
}

TEST(StringStepStated, AppendsTheByteToTextWithoutCodeSet) {
  EXPECT_EQ(Step(Hex("06 00 00 00 78 79 00 FF 33"), kNextValue),
            (Stepped{0, Hex("07 00 00 00 78 79 61 00 FF")}));
  EXPECT_EQ(Step(Hex("04 00 00 00 00 FF 33"), kNextValue),
            (Stepped{0, Hex("05 00 00 00 61 00 FF")}));
}

TEST(StringStepStated, TheEndMovesUpAsFarAsThereIsRoom) {
  // Room for one closing byte, and for none.
  EXPECT_EQ(Step(Hex("06 00 FE 02 01 40 00 FF 33"), kNextValue),
            (Stepped{0, Hex("08 00 FE 02 01 40") + LowestLetter() + Hex("00")}));
  EXPECT_EQ(Step(Hex("06 00 FE 02 01 40 00 FF"), kNextValue),
            (Stepped{0, Hex("08 00 FE 02 01 40") + LowestLetter()}));
  EXPECT_EQ(Step(Hex("06 00 00 00 78 79 00 FF"), kNextValue),
            (Stepped{0, Hex("07 00 00 00 78 79 61 00")}));
  EXPECT_EQ(Step(Hex("06 00 00 00 78 79 00"), kNextValue),
            (Stepped{0, Hex("07 00 00 00 78 79 61")}));
}

TEST(StringStepStated, WithoutRoomTheLastCharacterGrows) {
  EXPECT_EQ(Step(Hex("08 00 FE 02 01 40 02 40"), kNextValue),
            (Stepped{0, Hex("08 00 FE 02 01 40 FE FF")}));
  EXPECT_EQ(Step(Hex("08 00 FE 02 01 40 02"), kNextValue),
            (Stepped{0, Hex("08 00 FE 02 01 FE FF")}));
  EXPECT_EQ(Step(Hex("06 00 00 00 78 79"), kNextValue), (Stepped{0, Hex("06 00 00 00 78 7A")}));
  EXPECT_EQ(Step(Hex("06 00 00 00 78 FF"), kNextValue), (Stepped{0, Hex("06 00 00 00 78 00")}));
  // The text may go on behind the buffer.
  EXPECT_EQ(Step(Hex("FF FF FE 02 01 40 02 40"), kNextValue),
            (Stepped{0, Hex("FF FF FE 02 01 40 FE FF")}));
}

TEST(StringStepStated, AWildcardTakesTheHighestValue) {
  ByteList const asterisk = Unit(AsteriskOrder(), kLittle),
                 question = Unit(QuestionOrder(), kLittle);
  for (ByteList const& wildcard : {asterisk, question}) {
    ByteList const key = Hex("0A 00 FE 02 01 40") + wildcard + Hex("02 40 00 FF");
    EXPECT_EQ(Step(key, kNextValueToo), (Stepped{0, Hex("0A 00 FE 02 01 40 FE FF 02 40 00 FF")}));
    // The other code does not look for one.
    EXPECT_EQ(Step(key, kNextValue),
              (Stepped{0, Hex("0C 00 FE 02 01 40") + wildcard + Hex("02 40") + LowestLetter()}));
  }
  EXPECT_EQ(Step(Hex("07 00 00 00 78 3F 2A 00 FF"), kNextValueToo),
            (Stepped{0, Hex("07 00 00 00 78 FF 2A 00 FF")}));
}

TEST(StringStepStated, AWildcardBehindTheTextDoesNotCount) {
  ByteList const asterisk = Unit(AsteriskOrder(), kLittle);
  EXPECT_EQ(Step(Hex("06 00 FE 02 01 40 00 FF") + asterisk, kNextValueToo),
            (Stepped{0, Hex("08 00 FE 02 01 40") + LowestLetter() + Hex("00 FF")}));
  // Of a text for whose end there is no room all that is there is searched.
  EXPECT_EQ(Step(Hex("08 00 FE 02 01 40") + asterisk, kNextValueToo),
            (Stepped{0, Hex("08 00 FE 02 01 40 FE FF")}));
  EXPECT_EQ(Step(Hex("20 00 FE 02 01 40") + asterisk, kNextValueToo),
            (Stepped{0, Hex("20 00 FE 02 01 40 FE FF")}));
  EXPECT_EQ(Step(Hex("06 00 00 00 78 79 2A"), kNextValueToo),
            (Stepped{0, Hex("06 00 00 00 78 79 FF")}));
}

TEST(StringStepStated, WithoutRoomForTextThereIsNoNextValue) {
  for (ByteList const& key : {Hex(""), Hex("06 00"), Hex("06 00 FE 02"), Hex("06 00 FE 02 01")}) {
    for (NextValueCode const code : {kNextValue, kNextValueToo}) {
      EXPECT_EQ(Step(key, code), (Stepped{ERR_TM_NO_NEXT_VALUE, key}));
    }
  }
}

class StringStepLaw : public RandomTest {};

TEST_F(StringStepLaw, TheNextKeySortsAbove) {
  for (unsigned round = 0; round < 4000 && !HasFailure(); ++round) {
    std::string text(Below(12), '\0');
    for (char& byte : text) byte = static_cast<char>('a' + Below(26));
    std::vector<XoString> strings = {Narrow(text)};
    Produced const key = FromMemory(manager, strings, kLittleKey, 40);
    Stepped next = Step(key.target, OneIn(2) ? kNextValue : kNextValueToo);
    ASSERT_EQ(next.result, 0);
    ByteList before = key.target;
    int error = 0;
    EXPECT_LT(manager.Cmp(kString, 40, before.data(), 40, next.bytes.data(), kCmpNoWildcards, 1,
                          kLittleKey, error),
              0)
        << text;
  }
}

TEST_F(StringStepLaw, NoByteBehindTheBufferIsTouched) {
  for (unsigned round = 0; round < 20000; ++round) {
    ByteList bytes = Bytes(Below(20));
    if (bytes.size() > 2) {
      bytes[0] = static_cast<unsigned char>(Below(30));
      if (!OneIn(5)) bytes[1] = 0;
      unsigned char const codeSets[] = {0, 1, 253, 254, 255, Byte()};
      bytes[2] = codeSets[Below(6)];
    }
    Step(bytes, OneIn(2) ? kNextValue : kNextValueToo);
  }
}

}  // namespace
}  // namespace xo::test
