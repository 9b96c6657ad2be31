#include <string>

#include "tests/xostring/string_text.hpp"
#include "tests/xotypcmp/stored_records.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kKeyFormats[] = {kKeyLittle, kKeyBig};
constexpr unsigned short kPattern = 0, kPrefix = 0x90;

/// The key of an English text that is cut behind `orders` orders.
StoredBytes CutKey(std::string_view text, std::size_t orders, unsigned char format) {
  return CutTo(Key(Orders(text), format), 4 + 2 * orders);
}
StoredBytes WholeKey(std::string_view text, unsigned char format) {
  return Key(Orders(text), format);
}

// How much of a record has to be there.

TEST(CutOperand, WithoutTheEndMarkAloneATextIsWhole) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    StoredBytes const record = Record("abc", format);
    EXPECT_EQ(Compare(CutTo(record, 8), record, {format}), (Answer{0, 0}));
    EXPECT_EQ(Compare(record, CutTo(record, 8), {format}), (Answer{0, 0}));
    EXPECT_EQ(Compare(CutTo(record, 8), CutTo(record, 8), {format}), (Answer{0, 0}));
    StoredBytes const wide = WideRecord({'a', 'b', 'c'}, format);
    EXPECT_EQ(Compare(CutTo(wide, 11), record, {format}), (Answer{0, 0}));
    // With the terminator missing too it counts as cut.
    EXPECT_EQ(Compare(CutTo(record, 7), record, {format}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(CutTo(wide, 10), record, {format}), (Answer{0, kExceeded}));
  }
}

TEST(CutOperand, OfAKeyThatItsFirstLettersDecideHasTheStatusAllTheSame) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const small = WholeKey("abcdddd", format);
    StoredBytes const great = WholeKey("abddddd", format);
    // From the first four letters on to all that is before the bytes which close the key.
    for (std::size_t size = 12; size + 2 <= small.size(); ++size) {
      StoredBytes const cutSmall = CutTo(small, size);
      StoredBytes const cutGreat = CutTo(great, size);
      EXPECT_EQ(Compare(small, cutGreat, {format}), (Answer{-1, kExceeded})) << size;
      EXPECT_EQ(Compare(great, cutSmall, {format}), (Answer{1, kExceeded})) << size;
      EXPECT_EQ(Compare(cutSmall, great, {format}), (Answer{-1, kExceeded})) << size;
      EXPECT_EQ(Compare(cutGreat, small, {format}), (Answer{1, kExceeded})) << size;
      EXPECT_EQ(Compare(cutSmall, cutGreat, {format}), (Answer{-1, kExceeded})) << size;
      EXPECT_EQ(Compare(cutGreat, cutSmall, {format}), (Answer{1, kExceeded})) << size;
    }
  }
}

TEST(CutOperand, OfAtMost253BytesIsComparedAndOfMoreHasNoAnswer) {
  std::string const text(400, 'a');
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    StoredBytes const record = Record(text, format);
    StoredBytes const other = Record("b", format);
    EXPECT_EQ(Compare(CutTo(record, 4 + 253), other, {format}), (Answer{-1, 0}));
    EXPECT_EQ(Compare(CutTo(record, 4 + 254), other, {format}), (Answer{-1, kUnsupported}));
    EXPECT_EQ(Compare(other, CutTo(record, 4 + 253), {format}), (Answer{1, 0}));
    EXPECT_EQ(Compare(other, CutTo(record, 4 + 254), {format}), (Answer{-1, kUnsupported}));
    EXPECT_EQ(Compare(other, CutTo(record, 4 + 399), {format}), (Answer{-1, kUnsupported}));
    // All text is there, only what closes it is not.
    EXPECT_EQ(Compare(CutTo(record, 4 + 400), other, {format}), (Answer{-1, 0}));
  }
}

TEST(CutOperand, MayEndInsideItsHeader) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const key = WholeKey("abc", format);
    StoredBytes const text = Record("abc", format);
    for (unsigned size = 1; size <= 4; ++size) {
      // What is not there of the header reads as 0, so there is no text at most.
      Answer const first = Compare(CutTo(text, size), text, {format});
      Answer const second = Compare(text, CutTo(text, size), {format});
      bool const isCut = size > 1 || !IsBig(format);
      EXPECT_EQ(first.sign, -1) << size;
      EXPECT_EQ(second.sign, 1) << size;
      if (isCut) {
        EXPECT_EQ(first.status, kExceeded) << size;
        EXPECT_EQ(second.status, kExceeded) << size;
      }
      Compare(CutTo(key, size), key, {format, kPattern});
      Compare(key, CutTo(key, size), {format, kPattern});
    }
  }
}

// Cut against whole, without a pattern.

TEST(CutKey, ComparesBelowTheWholeText) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const cut = CutKey("abcde", 3, format);
    StoredBytes const whole = WholeKey("abcde", format);
    EXPECT_EQ(Compare(cut, whole, {format}), (Answer{-1, kExceeded}));
    EXPECT_EQ(Compare(whole, cut, {format}), (Answer{1, kExceeded}));
  }
}

TEST(CutKey, ComparesAboveAWholeTextThatItGoesBeyond) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const cut = CutKey("abcde", 4, format);
    for (std::string_view const text : {"", "a", "abc"}) {
      EXPECT_EQ(Compare(cut, WholeKey(text, format), {format}), (Answer{1, 0})) << text;
      EXPECT_EQ(Compare(WholeKey(text, format), cut, {format}), (Answer{-1, 0})) << text;
    }
  }
}

TEST(CutKey, EqualToAWholeTextAsLongIsUndecided) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const cut = CutKey("abcde", 3, format);
    EXPECT_EQ(Compare(cut, WholeKey("abc", format), {format}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(WholeKey("abc", format), cut, {format}), (Answer{0, kExceeded}));
  }
}

TEST(CutKey, AgainstAShorterWholeTextIsDecidedByADifferenceWithinIt) {
  for (unsigned char const format : kKeyFormats) {
    // 3 characters against 5 that are there.
    StoredBytes const cut = CutKey("abdefgh", 5, format);
    EXPECT_EQ(Compare(WholeKey("abc", format), cut, {format}), (Answer{-1, 0}));
    EXPECT_EQ(Compare(WholeKey("abe", format), cut, {format}), (Answer{1, 0}));
    EXPECT_EQ(Compare(cut, WholeKey("abc", format), {format}), (Answer{1, 0}));
    EXPECT_EQ(Compare(cut, WholeKey("abe", format), {format}), (Answer{-1, 0}));
  }
}

TEST(CutKey, AgainstALongerWholeTextTellsThatMoreMayMatter) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const cut = CutKey("abdefgh", 3, format);
    EXPECT_EQ(Compare(WholeKey("abcde", format), cut, {format}), (Answer{-1, kExceeded}));
    EXPECT_EQ(Compare(cut, WholeKey("abcde", format), {format}), (Answer{1, kExceeded}));
  }
}

TEST(CutKey, AgainstACutKeyComparesWhatBothHave) {
  for (unsigned char const format : kKeyFormats) {
    auto const compare = [format](std::string_view one, std::size_t left1, std::string_view two,
                                  std::size_t left2, unsigned short cmpOp = kLiteral) {
      return Compare(CutKey(one, left1, format), CutKey(two, left2, format), {format, cmpOp});
    };
    // Of two that are equal as far as both go neither is the greater, whatever their lengths.
    EXPECT_EQ(compare("abcdef", 3, "abcdef", 5), (Answer{0, kExceeded}));
    EXPECT_EQ(compare("abcdef", 5, "abcdef", 3), (Answer{0, kExceeded}));
    EXPECT_EQ(compare("abcdef", 3, "abcxyz", 5), (Answer{0, kExceeded}));
    EXPECT_EQ(compare("abcdef", 4, "abcxyz", 5), (Answer{-1, kExceeded}));
    EXPECT_EQ(compare("bbcdef", 2, "abcxyz", 5), (Answer{1, kExceeded}));
  }
}

TEST(CutKey, BytesBehindTheCutDoNotMatter) {
  for (unsigned char const format : kKeyFormats) {
    for (unsigned last : {0u, 1u, Lower('a'), Lower('z'), 0xFFFFu}) {
      StoredBytes const key = Key({Lower('a'), Lower('b'), last, last}, format);
      EXPECT_EQ(Compare(key, WholeKey("abc", format), {format}, 8), (Answer{-1, kExceeded}));
      EXPECT_EQ(Compare(WholeKey("abc", format), key, {format}, 0, 8), (Answer{1, kExceeded}));
      // Half an order does not count either.
      EXPECT_EQ(Compare(key, WholeKey("abc", format), {format}, 9), (Answer{-1, kExceeded}));
    }
  }
}

TEST(CutKey, OfTextIsCutInBytesOfItsOwnWidth) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    StoredBytes const narrow = CutTo(Record("abcdef", format), 4 + 3);
    StoredBytes const wide = CutTo(WideRecord({'a', 'b', 'c', 'd', 'e'}, format), 4 + 6);
    StoredBytes const whole = Record("abc", format);
    EXPECT_EQ(Compare(narrow, whole, {format}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(wide, whole, {format}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(narrow, wide, {format}), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(wide, Record("ab", format), {format}), (Answer{1, 0}));
    EXPECT_EQ(Compare(wide, Record("abcd", format), {format}), (Answer{-1, kExceeded}));
  }
}

// The difference inside the prefix.

TEST(PrefixResult, IsTheDifferenceOfLettersInsideWhatIsCompared) {
  for (unsigned char const format : kKeyFormats) {
    auto const compare = [format](StoredBytes const& one, StoredBytes const& two) {
      return Compare(one, two, {format, kPrefix});
    };
    // An equal prefix is equal, and a shorter whole text does not settle it.
    EXPECT_EQ(compare(CutKey("abcde", 3, format), WholeKey("abcde", format)),
              (Answer{0, kExceeded}));
    EXPECT_EQ(compare(WholeKey("abcde", format), CutKey("abcde", 3, format)),
              (Answer{0, kExceeded}));
    EXPECT_EQ(compare(CutKey("abcde", 3, format), WholeKey("abxy", format)),
              (Answer{-1, kExceeded}));
    EXPECT_EQ(compare(CutKey("abcde", 3, format), WholeKey("abb", format)), (Answer{1, kExceeded}));
    // Differences of case alone are none.
    EXPECT_EQ(compare(CutKey("ABCDE", 3, format), WholeKey("abcde", format)),
              (Answer{0, kExceeded}));
    // Whole operands are compared as ever.
    EXPECT_EQ(compare(WholeKey("ABC", format), WholeKey("abc", format)), (Answer{1, 0}));
  }
}

TEST(PrefixResult, AShorterWholeTextIsDecidedWhereItEnds) {
  for (unsigned char const format : kKeyFormats) {
    // Its end lies within the count, so the letter against it is a difference; yet the status
    // stays.
    EXPECT_EQ(Compare(CutKey("abcde", 4, format), WholeKey("ab", format), {format, kPrefix}),
              (Answer{1, kExceeded}));
    EXPECT_EQ(Compare(WholeKey("ab", format), CutKey("abcde", 4, format), {format, kPrefix}),
              (Answer{-1, kExceeded}));
  }
}

TEST(PrefixResult, IsNothingWhereLevelsAreNotCompared) {
  for (unsigned char const format : kKeyFormats) {
    EXPECT_EQ(Compare(CutKey("abc", 2, format), WholeKey("xyz", format), {format, 0x180}),
              (Answer{0, kExceeded}));
    EXPECT_EQ(
        Compare(CutTo(Record("abc", format, 0), 6), Record("xyz", format, 0), {format, kPrefix}),
        (Answer{0, kExceeded}));
  }
}

// Patterns.

class CutPattern : public testing::TestWithParam<unsigned char> {
 protected:
  unsigned char const format = GetParam();

  StoredBytes Text(std::string_view text) const { return Record(text, format); }
  StoredBytes Cut(std::string_view text, std::size_t left) const {
    return CutTo(Record(text, format), 4 + left);
  }
  Answer Match(StoredBytes const& one, StoredBytes const& two,
               unsigned short cmpOp = kPattern) const {
    return Compare(one, two, {format, cmpOp});
  }
};

INSTANTIATE_TEST_SUITE_P(Formats, CutPattern, testing::Values(kLittle, kBig, kKeyLittle, kKeyBig));

TEST_P(CutPattern, ThatEndsInItsOnlyStarIsMatchedByWhatIsThere) {
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("ab*")), (Answer{0, 0}));
  EXPECT_EQ(Match(Cut("abcdef", 2), Text("ab*")), (Answer{0, 0}));
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("*")), (Answer{0, 0}));
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("ax*")), (Answer{-1, 0}));
  EXPECT_EQ(Match(Cut("axcdef", 4), Text("ab*")), (Answer{1, 0}));
  // A question mark before it is no asterisk.
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("a?c*")), (Answer{0, 0}));
}

TEST_P(CutPattern, ReachingFurtherThanTheTextIsUndecided) {
  EXPECT_EQ(Match(Cut("abcdef", 1), Text("ab*")), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Cut("bbcdef", 1), Text("ab*")), (Answer{1, kExceeded}));
}

TEST_P(CutPattern, WithMoreBehindItsStarIsUndecided) {
  // Up to the star the texts are compared.
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("ab*z")), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("b*z")), (Answer{-1, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("a*b*")), (Answer{0, kExceeded}));
}

TEST_P(CutPattern, UnderThePrefixResultIsAlwaysUndecided) {
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("ab*"), 0x80), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("ax*"), 0x80), (Answer{-1, kExceeded}));
}

TEST_P(CutPattern, ThatIsItselfCutIsUndecided) {
  EXPECT_EQ(Match(Text("abc"), Cut("ab*", 3)), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 3), Cut("ab*", 3)), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Text("abc"), Cut("ab*cd", 2)), (Answer{1, kExceeded}));
}

TEST_P(CutPattern, EqualUpToTheStarIsOrderedByLengthOnlyWhereThatWasTheLimit) {
  // A whole text that ends before the star of a cut pattern: the limit was its length.
  EXPECT_EQ(Match(Text("ab"), Cut("abcd*ef", 6)), (Answer{-1, kExceeded}));
  EXPECT_EQ(Match(Text("abcd"), Cut("abcd*ef", 6)), (Answer{-1, kExceeded}));
  // One that ends behind it: the limit was the star.
  EXPECT_EQ(Match(Text("abcdx"), Cut("abcd*ef", 6)), (Answer{0, kExceeded}));
}

TEST_P(CutPattern, WithoutAStarIsComparedAsText) {
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("a?c")), (Answer{0, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("a?cd")), (Answer{-1, kExceeded}));
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("a?")), (Answer{1, 0}));
  EXPECT_EQ(Match(Cut("abcdef", 4), Text("a?x")), (Answer{-1, 0}));
  // A star behind the end of a cut pattern is not there.
  EXPECT_EQ(Match(Text("abc"), Cut("ab*", 2)), (Answer{1, kExceeded}));
}

TEST_P(CutPattern, IsNoneWithWildcardsOffOrPlainOrders) {
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("*"), 0x10).status, 0);
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("*"), 0x10).sign, 1);
  EXPECT_EQ(Match(Cut("abcdef", 3), Text("*"), 0x100).sign, 1);
}

// Keys that end where the group of their text changes.

StoredBytes GroupKey(std::string_view text, unsigned char format) {
  return Key(Orders(text), format, 0x82);
}

TEST(KeyCutAtGroup, TellsWhichOperandItIs) {
  for (unsigned char const format : kKeyFormats) {
    for (unsigned short const cmpOp : Operators{kLiteral, 0x0100}) {
      Question const question{format, cmpOp};
      EXPECT_EQ(Compare(GroupKey("ab", format), WholeKey("ac", format), question),
                (Answer{-1, kFirstCut}));
      EXPECT_EQ(Compare(WholeKey("ac", format), GroupKey("ab", format), question),
                (Answer{1, kSecondCut}));
      EXPECT_EQ(Compare(GroupKey("ab", format), GroupKey("ab", format), question),
                (Answer{0, kFirstCut}));
    }
  }
}

TEST(KeyCutAtGroup, ComparesAsThatOfItsGroup) {
  for (unsigned char const format : kKeyFormats) {
    EXPECT_EQ(Compare(GroupKey("ab", format), WholeKey("ab", format), {format}),
              (Answer{0, kFirstCut}));
    EXPECT_EQ(Compare(GroupKey("ab", format), Key(Orders("ab"), format, 3), {format}),
              (Answer{-1, kFirstCut}));
  }
}

TEST(KeyCutAtGroup, AsAPatternCountsAsCut) {
  for (unsigned char const format : kKeyFormats) {
    // Without wildcards it is compared whole; as a pattern its prefix is, and the longer is
    // greater.
    EXPECT_EQ(Compare(WholeKey("abc", format), GroupKey("ab", format), {format, kLiteral}),
              (Answer{1, kSecondCut}));
    EXPECT_EQ(Compare(WholeKey("abc", format), GroupKey("ab", format), {format, kPattern}),
              (Answer{1, kSecondCut}));
    EXPECT_EQ(Compare(WholeKey("abc", format), GroupKey("ab", format), {format, 0x80}),
              (Answer{0, kSecondCut}));
    EXPECT_EQ(Compare(WholeKey("abc", format), GroupKey("ab", format), {format, kPrefix}),
              (Answer{1, kSecondCut}))
        << "whole operands have no prefix";
  }
}

TEST(KeyCutAtGroup, ItsStatusStaysWhereALengthIsCutToo) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const cut = CutTo(GroupKey("abcd", format), 8);
    EXPECT_EQ(Compare(cut, WholeKey("ab", format), {format}), (Answer{0, kFirstCut}));
    EXPECT_EQ(Compare(WholeKey("ab", format), cut, {format}), (Answer{0, kSecondCut}));
    EXPECT_EQ(Compare(cut, cut, {format}), (Answer{0, kFirstCut}));
  }
}

TEST(KeyCutAtGroup, EndsAnArrayWithItsElement) {
  for (unsigned char const format : kKeyFormats) {
    StoredBytes const one = GroupKey("a", format) + WholeKey("b", format);
    StoredBytes const two = GroupKey("a", format) + WholeKey("c", format);
    EXPECT_EQ(Compare(one, two, {format, kLiteral, 2}, 0, 0), (Answer{0, kFirstCut}));
    EXPECT_EQ(Compare(one, WholeKey("a", format) + two, {format, kLiteral, 2}, 0, 0),
              (Answer{0, kFirstCut}));
  }
}

TEST(KeyCutAtGroup, InMemoryIsOneToo) {
  XoString one(kOrders, 0x82);
  XoString two(kOrders, 0x82);
  int status = 0;
  XoTypeMgr const manager;
  StoredBytes const key = GroupKey("ab", kLittle);
  manager.Load(XoSTRING_T, &one, const_cast<unsigned char*>(key.data()), kLittle, 1);
  manager.Load(XoSTRING_T, &two, const_cast<unsigned char*>(key.data()), kLittle, 1);
  ASSERT_EQ(one.language, 0x82);
  EXPECT_EQ(manager.Cmp(XoSTRING_T, 0, &one, 0, &two, kLiteral, 1, FormMemory, status), 0);
  EXPECT_EQ(status, kFirstCut);
  two.language = 2;
  EXPECT_EQ(manager.Cmp(XoSTRING_T, 0, &two, 0, &one, kLiteral, 1, FormMemory, status), 0);
  EXPECT_EQ(status, kSecondCut);
}

// Records without a header.

TEST(CutOlderRecord, IsOneOnlyForTheOlderRow) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    StoredBytes const cut = CutTo(OlderRecord({"abcdef"}, format), 2 + 3);
    Question const older{format, kLiteral, 1, true};
    EXPECT_EQ(Compare(cut, OlderRecord({"abc"}, format), older), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(cut, OlderRecord({"abcd"}, format), older), (Answer{-1, kExceeded}));
    EXPECT_EQ(Compare(cut, OlderRecord({"ab"}, format), older), (Answer{1, 0}));
    EXPECT_EQ(Compare(OlderRecord({"ab"}, format), cut, older), (Answer{-1, 0}));
    EXPECT_EQ(Compare(OlderRecord({"abx"}, format), cut, older), (Answer{1, kExceeded}));
    // The current row takes the first two characters for code set and language.
    Answer const current = Compare(cut, OlderRecord({"ab"}, format), {format});
    EXPECT_NE(current, (Answer{1, 0}));
  }
}

TEST(CutOlderRecord, WithoutItsTerminatorAloneCountsAsCut) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    StoredBytes const record = OlderRecord({"abc"}, format);
    Question const older{format, kLiteral, 1, true};
    EXPECT_EQ(Compare(CutTo(record, 5), record, older), (Answer{0, kExceeded}));
    EXPECT_EQ(Compare(record, record, older), (Answer{0, 0}));
  }
}

TEST(CutOlderRecord, HasAHeaderAsAnIndexKey) {
  for (unsigned char const format : kKeyFormats) {
    Question const older{format, kLiteral, 1, true};
    EXPECT_EQ(Compare(CutKey("abcde", 3, format), WholeKey("abcde", format), older),
              (Answer{-1, kExceeded}));
    EXPECT_EQ(Compare(CutKey("abcde", 3, format), WholeKey("ab", format), older), (Answer{1, 0}));
  }
}

TEST(CutOlderRecord, OfAtMost253BytesIsComparedAndOfMoreHasNoAnswer) {
  std::string const text(400, 'a');
  for (unsigned char const format : Formats{kLittle, kBig}) {
    Question const older{format, kLiteral, 1, true};
    StoredBytes const record = OlderRecord({text}, format);
    StoredBytes const other = OlderRecord({"b"}, format);
    EXPECT_EQ(Compare(CutTo(record, 2 + 253), other, older), (Answer{-1, 0}));
    EXPECT_EQ(Compare(CutTo(record, 2 + 254), other, older), (Answer{-1, kUnsupported}));
    EXPECT_EQ(Compare(other, CutTo(record, 2 + 254), older), (Answer{-1, kUnsupported}));
    // All text is there.
    EXPECT_EQ(Compare(CutTo(record, 2 + 400), other, older), (Answer{-1, 0}));
  }
}

TEST(CutOlderRecord, IsCutInTheElementInWhichItsLengthEnds) {
  for (unsigned char const format : Formats{kLittle, kBig}) {
    StoredBytes const record = OlderRecord({"ab", "cdef"}, format);
    Question const older{format, kLiteral, 2, true};
    // Behind the first text, 5 bytes from the start, the length of 10 is 5: all of the second text.
    EXPECT_EQ(Compare(record, record, older, 10, 10), (Answer{0, 0}));
    // Of 9, 4 remain, which is too little to go on.
    EXPECT_EQ(Compare(record, record, older, 9, 9), (Answer{0, kExceeded}));
    StoredBytes const longer = OlderRecord({"ab", "cdefgh"}, format);
    EXPECT_EQ(Compare(longer, record, older, 10, 0), (Answer{1, 0}))
        << "five bytes are there, one more than the whole text has";
    EXPECT_EQ(Compare(longer, OlderRecord({"ab", "cdefgx"}, format), older, 10, 0),
              (Answer{-1, kExceeded}));
  }
}

// Truncation everywhere.

TEST(CutOperand, AtEveryByteIsComparedWithoutReadingFurther) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    StoredBytes const arrays[] = {
        Record("abc", format) + Record("", format) + WideRecord({'x', 0x416, '*'}, format),
        Key(Orders("ab c"), format) + Key(Orders("Zz"), format, 0x82) + Record("a*c?", format),
        OlderRecord({"ab", "", "cdef*"}, format),
        Record("abc", format, 0) + Record("\xFF", format, 225) + Record("a", format, 255),
        UnitBytes(0, format) + UnitBytes(3, format) + StoredBytes{1, 1, 0xFF} +
            UnitBytes(65535, format)};
    for (StoredBytes const& one : arrays) {
      for (StoredBytes const& two : arrays) {
        for (std::size_t size = 1; size <= one.size(); ++size) {
          for (unsigned short const cmpOp : Operators{0x0000, 0x0010, 0x0080, 0x0090, 0x0100}) {
            for (bool const older : {false, true}) {
              Question const question{format, cmpOp, 3, older};
              // The other operand is cut as well, since its lengths may lie.
              Compare(CutTo(one, size), two, question);
              Compare(two, CutTo(one, size), question);
            }
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace xo::test
