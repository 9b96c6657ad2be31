#include <string>

#include "tests/xostring/string_text.hpp"
#include "tests/xotypcmp/stored_records.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kDiskFormats[] = {kLittle, kBig, kKeyLittle, kKeyBig};

Answer CompareInMemory(XoString one, XoString two, unsigned short cmpOp = kLiteral) {
  int status = 12345;
  int const result = XoTypeMgr().Cmp(XoSTRING_T, 0, &one, 0, &two, cmpOp, 1, FormMemory, status);
  return {SignOf(result), status};
}

// Single values.

TEST(StringCompare, CountZeroIsEqualWithoutALook) {
  for (unsigned const factory : {3u, 5u}) {
    for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kInMemory}) {
      int status = 77;
      EXPECT_EQ(XoTypeMgr(factory).Cmp(XoSTRING_T, 1, nullptr, 1, nullptr, 0, 0, format, status),
                0);
      EXPECT_EQ(status, 0);
    }
  }
}

TEST(StringCompare, TextsInMemoryCompareByLettersThenAccentsThenCase) {
  EXPECT_EQ(CompareInMemory(Narrow("abc"), Narrow("abd")), (Answer{-1, 0}));
  EXPECT_EQ(CompareInMemory(Narrow("abc"), Narrow("ABC")), (Answer{-1, 0}));
  EXPECT_EQ(CompareInMemory(Narrow("abc"), Narrow("ABC"), 0x30), (Answer{0, 0}));
  EXPECT_EQ(CompareInMemory(Narrow("\xE9"), Narrow("e")), (Answer{1, 0}));
  EXPECT_EQ(CompareInMemory(Narrow("abc"), Wide(u"abc")), (Answer{0, 0}));
}

TEST(StringCompare, WithoutTextInMemoryComesFirstWhateverThePattern) {
  XoString const none;
  ASSERT_EQ(none.text, nullptr);
  for (unsigned short const cmpOp : Operators{0x0000, 0x0010, 0x0100, 0x0080}) {
    EXPECT_EQ(CompareInMemory(none, none, cmpOp), (Answer{0, 0}));
    EXPECT_EQ(CompareInMemory(none, Narrow("*"), cmpOp), (Answer{-1, 0}));
    EXPECT_EQ(CompareInMemory(Narrow("a"), none, cmpOp), (Answer{1, 0}));
  }
}

TEST(StringCompare, LengthsAreNotReadInMemory) {
  XoString one[3] = {Narrow("a"), Narrow("b"), Narrow("d")};
  XoString two[3] = {Narrow("a"), Narrow("b"), Narrow("c")};
  for (unsigned const length : {1u, 5u, 16u, 20u, 47u}) {
    int status = 0;
    EXPECT_GT(
        XoTypeMgr().Cmp(XoSTRING_T, length, one, length, two, kLiteral, 3, FormMemory, status), 0);
    EXPECT_EQ(status, 0);
  }
}

TEST(StringCompare, RecordsCompareAsTheirTextsInEitherByteOrder) {
  for (unsigned char const format : kDiskFormats) {
    Question const literal{format};
    EXPECT_EQ(Compare(Record("abc", format), Record("abd", format), literal), (Answer{-1, 0}));
    EXPECT_EQ(Compare(Record("abd", format), Record("abc", format), literal), (Answer{1, 0}));
    EXPECT_EQ(Compare(Record("abc", format), Record("abc", format), literal), (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("ab", format), Record("abc", format), literal), (Answer{-1, 0}));
    EXPECT_EQ(Compare(Record("", format), Record("a", format), literal), (Answer{-1, 0}));
    EXPECT_EQ(Compare(Record("", format), Record("", format), literal), (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("abc", format), Record("ABC", format), {format, 0x30}),
              (Answer{0, 0}));
  }
}

TEST(StringCompare, WideRecordsAreReadInTheByteOrderOfTheFormat) {
  for (unsigned char const format : kDiskFormats) {
    // Cyrillic a and be, U+0430 and U+0431, whose bytes read the other way are ideographs.
    EXPECT_EQ(Compare(WideRecord({0x430}, format), WideRecord({0x431}, format), {format}),
              (Answer{-1, 0}));
    EXPECT_EQ(Compare(WideRecord({'a', 'b'}, format), Record("ab", format), {format}),
              (Answer{0, 0}));
    EXPECT_EQ(Compare(WideRecord({'a'}, format), Record("b", format, 2), {format}),
              (Answer{-1, 0}));
  }
}

TEST(StringCompare, KeysCompareByTheirOrdersInEitherByteOrder) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    auto const compare = [format](std::string_view one, std::string_view two,
                                  unsigned short cmpOp = kLiteral) {
      return Compare(Key(Orders(one), format), Key(Orders(two), format), {format, cmpOp});
    };
    EXPECT_EQ(compare("abc", "abd"), (Answer{-1, 0}));
    EXPECT_EQ(compare("b", "abcdefghijklm"), (Answer{1, 0}));
    EXPECT_EQ(compare("abcdefghi", "abcdefgh"), (Answer{1, 0}));
    EXPECT_EQ(compare("a", "A"), (Answer{-1, 0}));
    EXPECT_EQ(compare("aB", "Ab"), (Answer{-1, 0})) << "the first difference of case";
    EXPECT_EQ(compare("aB", "Ab", 0x30), (Answer{0, 0}));
    EXPECT_EQ(compare("a b", "ab"), (Answer{1, 0}));
    EXPECT_EQ(compare("a b", "ac"), (Answer{-1, 0})) << "letters before spaces";
    EXPECT_EQ(compare("a b", "ab", 0x90), (Answer{0, 0}));
    EXPECT_EQ(compare("a-b", "ab", 0x210), (Answer{0, 0}));
    EXPECT_EQ(compare("a-b", "a b"), (Answer{1, 0}));
    EXPECT_EQ(compare("", ""), (Answer{0, 0}));
    EXPECT_EQ(compare("1", "a"), (Answer{-1, 0}));
  }
}

TEST(StringCompare, AmongAccentsOfKeysTheLastDecidesAndAmongCaseTheFirst) {
  StoredBytes const one = Key({Lower('e', 2), Upper('o', 0), Lower('e', 3)});
  StoredBytes const two = Key({Lower('e', 3), Lower('o', 0), Lower('e', 2)});
  EXPECT_EQ(Compare(one, two, {kKeyLittle}), (Answer{1, 0}));
  EXPECT_EQ(Compare(one, two, {kKeyLittle, 0x50}), (Answer{1, 0}));
  EXPECT_EQ(Compare(one, two, {kKeyLittle, 0x30}), (Answer{1, 0}));
  EXPECT_EQ(Compare(one, two, {kKeyLittle, 0x70}), (Answer{0, 0}));
}

TEST(StringCompare, KeysOfGreaterGroupsComeLaterWhateverTheirOrders) {
  EXPECT_EQ(Compare(Key(Orders("z"), kKeyLittle, 2), Key(Orders("a"), kKeyLittle, 3), {kKeyLittle}),
            (Answer{-1, 0}));
  // From group 20 on every order counts as a letter does.
  for (unsigned char const group : Formats{19, 20, 21}) {
    Answer const answer = Compare(Key({kHyphen, Lower('a')}, kKeyLittle, group),
                                  Key({Lower('b')}, kKeyLittle, group), {kKeyLittle});
    EXPECT_EQ(answer, (Answer{-1, 0})) << int{group};
    EXPECT_EQ(Compare(Key({kHyphen, Lower('b')}, kKeyLittle, group),
                      Key({Lower('a')}, kKeyLittle, group), {kKeyLittle}),
              (Answer{group < 20 ? 1 : -1, 0}))
        << int{group};
  }
}

TEST(StringCompare, WhatStandsBehindAZeroOrderDoesNotCount) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    EXPECT_EQ(
        Compare(Key({Lower('a'), 0, Lower('b')}, format), Key({Lower('a')}, format), {format}),
        (Answer{0, 0}));
    EXPECT_EQ(Compare(Key({Lower('a'), 0, Lower('b'), Lower('b')}, format),
                      Key({Lower('a'), 0, Lower('c'), Lower('c')}, format), {format}),
              (Answer{0, 0}));
    EXPECT_EQ(Compare(Key({0, 0, 0, 0, 0}, format), Key({Lower('a')}, format), {format}),
              (Answer{-1, 0}));
  }
}

TEST(StringCompare, AKeyComparesWithTextOfItsGroup) {
  // Orders of the tables: a text against the key that is made of it.
  XoString text = Narrow("Grun-Wald 7", kLatin1, 1);
  StoredBytes key(100);
  XoTypeMgr const manager;
  unsigned const size =
      manager.Translate(XoSTRING_T, key.data(), kKeyLittle, 100, &text, FormMemory, sizeof text, 1);
  key.resize(size);
  EXPECT_EQ(Compare(key, Record("Grun-Wald 7"), {kKeyLittle}), (Answer{0, 0}));
  EXPECT_EQ(Compare(Record("Grun-Wald 6"), key, {kKeyLittle}), (Answer{-1, 0}));
  EXPECT_EQ(Compare(key, Record("g*7"), {kKeyLittle, 0x0020}), (Answer{0, 0}));
}

TEST(StringCompare, WithoutCodeSetTextsCompareByBytes) {
  for (unsigned char const format : kDiskFormats) {
    EXPECT_EQ(Compare(Record("a", format, 0), Record("B", format, 0), {format}), (Answer{1, 0}));
    EXPECT_EQ(Compare(Record("\xFF", format, 0), Record("a", format, 0), {format}), (Answer{1, 0}));
  }
}

TEST(StringCompare, CodeSetsThatDoNotExistAreComparedWithoutReadingTooFar) {
  for (unsigned char const format : kDiskFormats) {
    for (unsigned codeSet = 0; codeSet < 256; ++codeSet) {
      auto const set = static_cast<unsigned char>(codeSet);
      for (unsigned char const language : Formats{0, 1, 127, 254, 255}) {
        StoredBytes const one = Record("abcd", format, set, language);
        if (set == 254 && language >= 128) continue;
        EXPECT_EQ(Compare(one, one, {format}), (Answer{0, 0})) << codeSet;
        EXPECT_EQ(Compare(one, one, {format, 0}), (Answer{0, 0})) << codeSet;
      }
    }
  }
}

TEST(StringCompare, CodeSet255IsReadAsTheNarrowDefault) {
  EXPECT_EQ(
      Compare(Record("abcd", kLittle, 255, 1), Record("ABCD", kLittle, 1, 1), {kLittle, 0x30}),
      (Answer{0, 0}));
}

TEST(StringCompare, NullComesBeforeEveryTextAndEqualsNull) {
  for (unsigned char const format : kDiskFormats) {
    StoredBytes const marked = Record("", format, 1, 254);
    StoredBytes const keyOfNull = Record("", format, 254, 0);
    StoredBytes const empty = Record("", format);
    EXPECT_EQ(Compare(marked, keyOfNull, {format}), (Answer{0, 0}));
    EXPECT_EQ(Compare(keyOfNull, marked, {format}), (Answer{0, 0}));
    EXPECT_EQ(Compare(marked, empty, {format}), (Answer{-1, 0}));
    EXPECT_EQ(Compare(empty, keyOfNull, {format}), (Answer{1, 0}));
    // As a first operand it may match a pattern.
    EXPECT_EQ(Compare(marked, Record("*", format), {format, 0}), (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("x", format), marked, {format, 0}), (Answer{1, 0}));
  }
}

TEST(StringCompare, TheSecondOperandIsThePattern) {
  for (unsigned char const format : kDiskFormats) {
    EXPECT_EQ(Compare(Record("abcde", format), Record("a*e", format), {format, 0}), (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("abc", format), Record("a?c", format), {format, 0}), (Answer{0, 0}));
    EXPECT_NE(Compare(Record("a*e", format), Record("abcde", format), {format, 0}).sign, 0);
    for (unsigned short const literal : Operators{0x0010, 0x0100, 0x0110}) {
      EXPECT_NE(Compare(Record("abcde", format), Record("a*e", format), {format, literal}).sign, 0);
    }
  }
}

TEST(StringCompare, UnderPlainOrdersNoLevelComesBeforeAnother) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    // Case stands below the letter, but in the first order that differs it decides.
    EXPECT_EQ(Compare(Key(Orders("Ab"), format), Key(Orders("aa"), format), {format, 0x100}),
              (Answer{-1, 0}));
    EXPECT_EQ(Compare(Key(Orders("Ab"), format), Key(Orders("aa"), format), {format}),
              (Answer{1, 0}));
    for (std::string const text : {"a", "abcdefgh"}) {
      EXPECT_EQ(
          Compare(Key(Orders(" " + text), format), Key(Orders(text), format), {format, 0x110}),
          (Answer{-1, 0}));
    }
    EXPECT_EQ(
        Compare(Key(Orders("aaaaaaAb"), format), Key(Orders("aaaaaaaa"), format), {format, 0x110}),
        (Answer{-1, 0}));
  }
}

TEST(StringCompare, LongTextsCompareWhole) {
  for (unsigned const length : {250u, 251u, 252u, 253u, 254u, 255u, 256u, 257u, 1000u, 65531u}) {
    std::string const text(length, 'a');
    std::string later = text;
    later.back() = 'b';
    for (unsigned char const format : kDiskFormats) {
      EXPECT_EQ(Compare(Record(text, format), Record(later, format), {format}), (Answer{-1, 0}));
      std::vector<unsigned> units(text.begin(), text.end());
      if (length > 32765) continue;
      EXPECT_EQ(Compare(WideRecord(units, format), Record(later, format), {format}),
                (Answer{-1, 0}));
    }
  }
}

// Records of the older kind.

TEST(StringCompare, ARecordThatEndsInAZeroHasNoHeader) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    EXPECT_EQ(Compare(OlderRecord({"abc"}, format), OlderRecord({"abd"}, format), {format}),
              (Answer{-1, 0}));
    EXPECT_EQ(Compare(OlderRecord({"abc"}, format), Record("abc", format), {format}),
              (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("abd", format), OlderRecord({"abc"}, format), {format}),
              (Answer{1, 0}));
    EXPECT_EQ(Compare(OlderRecord({""}, format), OlderRecord({""}, format), {format}),
              (Answer{0, 0}));
    // Two of them have no code set: they compare by bytes, in which capitals come first.
    EXPECT_EQ(Compare(OlderRecord({"a"}, format), OlderRecord({"B"}, format), {format}),
              (Answer{1, 0}));
    // An undeclared length counts as holding the record.
    EXPECT_EQ(Compare(OlderRecord({"abc"}, format), OlderRecord({"abd"}, format), {format}, 0, 0),
              (Answer{-1, 0}));
  }
}

TEST(StringCompare, AnIndexKeyAlwaysHasAHeader) {
  for (unsigned char const format : Formats{kKeyLittle, kKeyBig}) {
    // Two empty texts in two languages, or two texts without a header.
    StoredBytes const one = UnitBytes(4, format) + StoredBytes{1, 1, 0, 0};
    StoredBytes const two = UnitBytes(4, format) + StoredBytes{1, 2, 0, 0};
    EXPECT_EQ(Compare(one, two, {format}), (Answer{0, 0}));
    unsigned char const plain = IsBig(format) ? kBig : kLittle;
    EXPECT_EQ(Compare(one, two, {plain}), (Answer{-1, 0}));
  }
}

TEST(StringCompare, TheTextsOfAnOlderArrayLieInOneRun) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    StoredBytes const one = OlderRecord({"ab", "", "xyz"}, format);
    StoredBytes const two = OlderRecord({"ab", "", "xyy"}, format);
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 2}, 0, 0), (Answer{0, 0}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 3}, 0, 0), (Answer{1, 0}));
    // Behind the run there are no texts, and nothing is read.
    EXPECT_EQ(Compare(one, one, {format, kLiteral, 9}, 0, 0), (Answer{0, 0}));
    // Each operand keeps its own kind.
    StoredBytes const records = Record("ab", format) + Record("", format) + Record("xyy", format);
    EXPECT_EQ(Compare(one, records, {format, kLiteral, 2}, 0, 0), (Answer{0, 0}));
    EXPECT_EQ(Compare(one, records, {format, kLiteral, 3}, 0, 0), (Answer{1, 0}));
  }
}

TEST(StringCompare, ALengthOfZeroIsARecordWithoutText) {
  for (unsigned char const format : kDiskFormats) {
    StoredBytes const nothing{0, 0};
    EXPECT_EQ(Compare(nothing, nothing, {format}, 0, 0), (Answer{0, 0}));
    EXPECT_EQ(Compare(nothing, Record("a", format), {format}, 0, 0), (Answer{-1, 0}));
  }
}

// Arrays.

TEST(StringCompare, TheFirstElementsThatDifferDecide) {
  for (unsigned char const format : kDiskFormats) {
    StoredBytes const one = Record("a", format) + Record("long text", format) + Record("c", format);
    StoredBytes const two =
        Record("a", format) + Record("long texts", format) + Record("b", format);
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 1}, 0, 0), (Answer{0, 0}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 2}, 0, 0), (Answer{-1, 0}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 3}, 0, 0), (Answer{-1, 0}));
    EXPECT_EQ(Compare(two, one, {format, kLiteral, 3}, 0, 0), (Answer{1, 0}));
  }
}

TEST(StringCompare, FromTheThirdElementOnADeclaredLengthShrinksTwice) {
  for (unsigned char const format : kDiskFormats) {
    // Records of 7 bytes. Behind the first the length is 21 - 7 = 14, behind the second
    // 14 - 14 = 0: the third is not compared.
    StoredBytes const one = Record("a", format) + Record("b", format) + Record("c", format);
    StoredBytes const two = Record("a", format) + Record("b", format) + Record("d", format);
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 3}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 2}), (Answer{0, 0}));
    // With 5 bytes more there is a remainder of 5: the header and one byte of a cut text.
    StoredBytes const more(5, 0xEE);
    EXPECT_EQ(Compare(one + more, two + more, {format, kLiteral, 3}), (Answer{-1, kExceeded}));
    StoredBytes const fewer(4, 0xEE);
    EXPECT_EQ(Compare(one + fewer, two + fewer, {format, kLiteral, 3}), (Answer{0, kExceeded}));
    // One operand that has used up its length is enough.
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 3}, 0), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 3}, -1, 0), (Answer{0, kExceeded}));
  }
}

TEST(StringCompare, ADecidedResultCarriesTheStatusOfAUsedUpLength) {
  for (unsigned char const format : kDiskFormats) {
    EXPECT_EQ(Compare(Record("a", format), Record("b", format), {format, kLiteral, 2}),
              (Answer{-1, kExceeded}));
    EXPECT_EQ(Compare(Record("a", format), Record("b", format), {format, kLiteral, 1}),
              (Answer{-1, 0}));
  }
}

TEST(StringCompare, AnArrayInMemoryIsComparedElementByElement) {
  XoString one[3] = {Narrow("a"), XoString(), Narrow("c")};
  XoString two[3] = {Narrow("a"), XoString(), Narrow("b")};
  int status = 0;
  EXPECT_GT(XoTypeMgr().Cmp(XoSTRING_T, 0, one, 0, two, kLiteral, 3, FormMemory, status), 0);
  EXPECT_EQ(XoTypeMgr().Cmp(XoSTRING_T, 0, one, 0, two, kLiteral, 2, FormMemory, status), 0);
  EXPECT_EQ(XoTypeMgr().Cmp(XoSTRING_T, one, two, kLiteral, 2, FormMemory), 0);
}

TEST(StringCompare, AnyOtherFormatThanEightIsStored) {
  // The upper bits make a stored form of it, whatever the nibble.
  EXPECT_EQ(Compare(Record("a"), Record("b"), {0x48}), (Answer{-1, 0}));
  EXPECT_EQ(Compare(Record("a"), Record("b"), {0x00}), (Answer{-1, 0}));
  EXPECT_EQ(Compare(Record("a"), Record("b"), {0xFF}), (Answer{-1, 0}));
}

// The row of the older generation.

TEST(OlderStringCompare, ReadsWholeRecordsOfBothKinds) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    Question const question{format, kLiteral, 1, true};
    EXPECT_EQ(Compare(Record("abc", format), OlderRecord({"abc"}, format), question),
              (Answer{0, 0}));
    EXPECT_EQ(Compare(Record("abc", format), Record("abd", format), question), (Answer{-1, 0}));
    EXPECT_EQ(Compare(OlderRecord({"abc"}, format), OlderRecord({"abd"}, format), question),
              (Answer{-1, 0}));
  }
}

}  // namespace
}  // namespace xo::test
