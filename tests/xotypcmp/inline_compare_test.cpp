#include "tests/xotypcmp/inline_compare.hpp"

#include <gtest/gtest.h>

#include <string>

namespace xo::test {
namespace {

template <class Text>
class InlineCompare : public testing::Test {
 protected:
  static constexpr bool caseless = kIgnoresCase<Text>;

  /// Plain texts, whole.
  static Answer Texts(std::string_view one, std::string_view two, unsigned short cmpOp) {
    Answer const stored = Compared<Text>(Plain(one), Plain(two), cmpOp);
    EXPECT_EQ(Compared<Text>(Plain(one, kBig), Plain(two, kBig), cmpOp, kBig), stored);
    EXPECT_EQ((ComparedInMemory<Text>({Text(std::string(one).c_str())},
                                      {Text(std::string(two).c_str())}, cmpOp)),
              stored);
    return stored;
  }
  static ByteList Key(std::string_view text) { return KeyOf<Text>(text); }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(InlineCompare, BothClasses);

TYPED_TEST(InlineCompare, NoElementsAreEqual) {
  int status = 12345;
  EXPECT_EQ(XoTypeMgr().Cmp(kId<TypeParam>, 0, nullptr, 0, nullptr, 0, 0, kLittle, status), 0);
  EXPECT_EQ(status, 0);
}

// Without patterns.

TYPED_TEST(InlineCompare, LiteralTextsCompareByWeightsAlone) {
  for (unsigned short const op : {kLiteral, static_cast<unsigned short>(0x100)}) {
    EXPECT_EQ(this->Texts("a", "A", op), (Answer{TestFixture::caseless ? 0 : -1, 0}));
    EXPECT_EQ(this->Texts("A", "b", op), (Answer{-1, 0}));
    EXPECT_EQ(this->Texts("\xE9", "e", op), (Answer{0, 0}));
    EXPECT_EQ(this->Texts("\xDF", "ss", op), (Answer{0, 0}));
    EXPECT_EQ(this->Texts("ss", "\xDF", op), (Answer{0, 0}));
    EXPECT_EQ(this->Texts("a*", "ab", op), (Answer{-1, 0}));
    EXPECT_EQ(this->Texts("", "", op), (Answer{0, 0}));
    EXPECT_EQ(this->Texts("", "a", op), (Answer{-1, 0}));
    EXPECT_EQ(this->Texts("ab", "a", op), (Answer{1, 0}));
  }
}

TYPED_TEST(InlineCompare, LiteralKeysCompareByTheirBytes) {
  EXPECT_EQ(Compared<TypeParam>(this->Key("ab"), this->Key("ab"), kLiteral), (Answer{0, 0}));
  EXPECT_EQ(Compared<TypeParam>(this->Key("ab"), this->Key("ac"), kLiteral), (Answer{-1, 0}));
  EXPECT_EQ(Compared<TypeParam>(this->Key("abc"), this->Key("ab"), kLiteral), (Answer{1, 0}));
  // Bytes against weights: the letter A is 0x41 and weighs 0x54.
  EXPECT_EQ(Compared<TypeParam>(this->Key("A"), Plain("A"), kLiteral), (Answer{1, 0}));
  // Text against a key goes by weights.
  EXPECT_EQ(Compared<TypeParam>(Plain("A"), this->Key("A"), kLiteral), (Answer{0, 0}));
}

TYPED_TEST(InlineCompare, CutFirstTextIsComparedOverItsLimitLessOne) {
  ByteList const abc = Plain("abc");
  for (unsigned short const op : {kLiteral, kPattern}) {
    EXPECT_EQ(Compared<TypeParam>(CutTo(abc, 5), Plain("abd"), op), (Answer{0, kExceeded}));
    EXPECT_EQ(Compared<TypeParam>(CutTo(abc, 5), Plain("aab"), op), (Answer{0, kExceeded}));
    EXPECT_EQ(Compared<TypeParam>(CutTo(abc, 5), Plain("bbb"), op), (Answer{-1, kExceeded}));
    EXPECT_EQ(Compared<TypeParam>(CutTo(abc, 6), Plain("aab"), op), (Answer{1, kExceeded}));
    for (unsigned size = 1; size <= 4; ++size) {
      EXPECT_EQ(Compared<TypeParam>(CutTo(abc, size), Plain("bbb"), op), (Answer{0, kExceeded}));
    }
  }
}

TYPED_TEST(InlineCompare, TextCutBehindAShorterOneIsDecided) {
  ByteList const cut = CutTo(Plain("abc"), 5);
  EXPECT_EQ(Compared<TypeParam>(cut, Plain("a"), kLiteral), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(cut, Plain("b"), kLiteral), (Answer{-1, 0}));
  EXPECT_EQ(Compared<TypeParam>(cut, Plain(""), kLiteral), (Answer{1, 0}));
}

TYPED_TEST(InlineCompare, TextCutWhereAnExpansionNeedsMoreIsUndecided) {
  EXPECT_EQ(Compared<TypeParam>(CutTo(Plain("sss"), 5), Plain("\xDF"), kLiteral),
            (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(Plain("ss"), 5), Plain("\xDF"), kLiteral),
            (Answer{0, kExceeded}));
}

TYPED_TEST(InlineCompare, TextCutBehindADifferenceOfAnExpansionIsDecided) {
  // Weights ss e against ss: the third tells, and is there.
  EXPECT_EQ(Compared<TypeParam>(CutTo(Plain("\xDF\x65z"), 5), Plain("\xDF"), kLiteral),
            (Answer{1, 0}));
}

TYPED_TEST(InlineCompare, CutSecondTextEndsAtItsLastByte) {
  ByteList const abc = Plain("abc");
  EXPECT_EQ(Compared<TypeParam>(abc, CutTo(abc, 5), kLiteral), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(Plain("a"), CutTo(abc, 5), kLiteral), (Answer{0, 0}));
  EXPECT_EQ(Compared<TypeParam>(abc, CutTo(abc, 4), kLiteral), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(abc, CutTo(abc, 1), kLiteral), (Answer{1, 0}));
}

TYPED_TEST(InlineCompare, LongCutSecondTextGetsNoAnswer) {
  ByteList const text = Plain(std::string(300, 'a'));
  EXPECT_EQ(Compared<TypeParam>(text, CutTo(text, 3 + 254), kLiteral), (Answer{-1, kUnsupported}));
  EXPECT_EQ(Compared<TypeParam>(text, CutTo(text, 303), kPattern), (Answer{-1, kUnsupported}));
  EXPECT_EQ(Compared<TypeParam>(text, CutTo(text, 3 + 253), kLiteral), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(text, text, kLiteral), (Answer{0, 0}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(text, 303), text, kLiteral), (Answer{0, kExceeded}));
}

TYPED_TEST(InlineCompare, WithoutALengthNothingIsLimited) {
  ByteList const one = Plain("ab"), two = Plain("ab");
  PlacedBytes const first(one, 1), second(two, 1);
  int status = 12345;
  EXPECT_EQ(XoTypeMgr().Cmp(kId<TypeParam>, 0, first.Data(), 0, second.Data(), kLiteral, 1, kLittle,
                            status),
            0);
  EXPECT_EQ(status, 0);
}

TYPED_TEST(InlineCompare, MemoryFormIsTheWholeFormatByte) {
  EXPECT_EQ(Compared<TypeParam>(Plain("a"), Plain("b"), kLiteral, 0x88), (Answer{-1, 0}));
  EXPECT_EQ(Compared<TypeParam>(Plain("a"), Plain("b"), kLiteral, 0x81), (Answer{-1, 0}));
}

// Patterns without wildcards.

TEST(InlineTieBreak, BytesDecideWhereCaseCounts) {
  auto const both = [](std::string_view one, std::string_view two) {
    return std::pair(Compared<XoIString>(Plain(one), Plain(two), kPattern),
                     Compared<XoCaseIString>(Plain(one), Plain(two), kPattern));
  };
  Answer const less{-1, 0}, equal{0, 0}, greater{1, 0};
  EXPECT_EQ(both("\xE9", "e"), std::pair(greater, equal));
  EXPECT_EQ(both("e", "\xE9"), std::pair(less, equal));
  EXPECT_EQ(both("e", "e"), std::pair(equal, equal));
  EXPECT_EQ(both("a", "A"), std::pair(less, equal));
  // The first text keeps its first weights alone where case does not count.
  EXPECT_EQ(both("\xDF", "ss"), std::pair(greater, less));
  EXPECT_EQ(both("ss", "\xDF"), std::pair(less, equal));
  EXPECT_EQ(both("\xDF", "s"), std::pair(greater, equal));
}

TYPED_TEST(InlineCompare, KeyAgainstTextIsNeverWhole) {
  ByteList const key = this->Key("ab");
  EXPECT_EQ(Compared<TypeParam>(key, Plain("ab"), kPattern), (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(key, Plain("abc"), kPattern), (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(key, Plain("ac"), kPattern), (Answer{-1, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(key, Plain("a"), kPattern), (Answer{1, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(key, 5), Plain("ac"), kPattern), (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(this->Key(""), Plain("a"), kPattern), (Answer{0, kExceeded}));
}

TYPED_TEST(InlineCompare, KeysAreTrustedWhereTheFirstIsLonger) {
  EXPECT_EQ(Compared<TypeParam>(this->Key("ab"), this->Key("ab"), kPattern),
            (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(this->Key("abc"), this->Key("ab"), kPattern), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(this->Key("ab"), this->Key("abc"), kPattern),
            (Answer{-1, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(this->Key("abc"), 5), this->Key("abd"), kPattern),
            (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(this->Key("abc"), 5), this->Key("bbb"), kPattern),
            (Answer{-1, kExceeded}));
}

TYPED_TEST(InlineCompare, KeysHoldNoWildcards) {
  // The signs weigh what their bytes are.
  EXPECT_EQ(Compared<TypeParam>(this->Key("12"), this->Key("*"), kPattern), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(Plain("1"), this->Key("*"), kPattern), (Answer{1, 0}));
  EXPECT_EQ(Compared<TypeParam>(Plain("*"), this->Key("*"), kPattern), (Answer{0, 0}));
}

// Wildcards.

TYPED_TEST(InlineCompare, PatternsMatchTexts) {
  Answer const match{0, 0};
  for (char const* const pattern :
       {"*", "a*", "abc*", "a?c", "???", "*c", "*b*", "**c", "ab\\c", "a*?c", "a***"}) {
    EXPECT_EQ(this->Texts("abc", pattern, kPattern), match) << pattern;
  }
  EXPECT_EQ(this->Texts("", "*", kPattern), match);
  EXPECT_EQ(this->Texts("a*c", "a\\*c", kPattern), match);
  EXPECT_EQ(this->Texts("a?c", "a\\?c", kPattern), match);
  EXPECT_EQ(this->Texts("a\\c", "a\\\\c", kPattern), match);
  EXPECT_EQ(this->Texts("\n\r\t", "\\n\\r\\t", kPattern), match);
  EXPECT_EQ(this->Texts("a\\", "a\\", kPattern), match);
  EXPECT_EQ(this->Texts("n", "\\n", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("aab", "*ab", kPattern), match);
  EXPECT_EQ(this->Texts("\xE9t\xE9", "et*", kPattern), match);
}

TYPED_TEST(InlineCompare, WhatDoesNotMatchGoesByThePrefixOfThePattern) {
  EXPECT_EQ(this->Texts("abc", "*x", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("abc", "?", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("", "?", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("abc", "b*", kPattern), (Answer{-1, 0}));
  EXPECT_EQ(this->Texts("cbc", "b*", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("abc", "ab?d", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("abc", "a\\*c", kPattern), (Answer{1, 0}));
  EXPECT_EQ(this->Texts("a", "abc*", kPattern), (Answer{-1, 0}));
}

TEST(InlinePattern, CaseCountsInOneClassAlone) {
  EXPECT_EQ(Compared<XoIString>(Plain("ABC"), Plain("a*"), kPattern), (Answer{1, 0}));
  EXPECT_EQ(Compared<XoCaseIString>(Plain("ABC"), Plain("a*"), kPattern), (Answer{0, 0}));
  // The expansion of the text counts as two letters in the one, as one in the other.
  EXPECT_EQ(Compared<XoIString>(Plain("\xDF!"), Plain("ss*"), kPattern), (Answer{0, 0}));
  EXPECT_EQ(Compared<XoCaseIString>(Plain("\xDF!"), Plain("s!*"), kPattern), (Answer{0, 0}));
  EXPECT_EQ(Compared<XoIString>(Plain("\xDF"), Plain("?"), kPattern), (Answer{0, 0}));
  EXPECT_EQ(Compared<XoIString>(Plain("\xDF"), Plain("s?"), kPattern), (Answer{0, 0}));
}

TYPED_TEST(InlineCompare, MatchOfACutTextIsNotTrusted) {
  ByteList const cut = CutTo(Plain("abc"), 5);
  EXPECT_EQ(Compared<TypeParam>(cut, Plain("a*"), kPattern), (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(cut, Plain("b*"), kPattern), (Answer{-1, kExceeded}));
}

TYPED_TEST(InlineCompare, EverythingPatternMatchesKeysAtOnce) {
  EXPECT_EQ(Compared<TypeParam>(this->Key("abc"), Plain("*"), kPattern), (Answer{0, 0}));
  EXPECT_EQ(Compared<TypeParam>(CutTo(this->Key("abc"), 4), Plain("*"), kPattern), (Answer{0, 0}));
}

TEST(InlinePattern, KeysThatTellCaseCannotBeMatched) {
  for (char const* const pattern : {"a*", "**", "b*", "?", "*x", "abcdefg*"}) {
    EXPECT_EQ(Compared<XoIString>(KeyOf<XoIString>("abc"), Plain(pattern), kPattern),
              (Answer{0, kExceeded}));
  }
}

TEST(InlinePattern, KeysWithoutCaseAreMatchedAsFarAsTheyGo) {
  auto const key = [](std::string_view text, std::string_view pattern, std::size_t size = 0) {
    ByteList const whole = KeyOf<XoCaseIString>(text);
    return Compared<XoCaseIString>(size != 0 ? CutTo(whole, size) : whole, Plain(pattern),
                                   kPattern);
  };
  Answer const less{-1, kExceeded}, none{0, kExceeded}, greater{1, kExceeded};
  // A wildcard at the end: the match, then the prefix.
  EXPECT_EQ(key("abc", "AB*"), none);
  EXPECT_EQ(key("abc", "ac*"), less);
  EXPECT_EQ(key("abc", "aa*"), greater);
  EXPECT_EQ(key("ab", "?"), greater);
  EXPECT_EQ(key("a", "?"), none);
  EXPECT_EQ(key("abc", "ab?"), none);
  EXPECT_EQ(key("abcd", "ab?"), greater);
  // A wildcard inside: the prefix alone.
  EXPECT_EQ(key("abc", "a*x"), none);
  EXPECT_EQ(key("abc", "b*x"), less);
  EXPECT_EQ(key("abc", "*x"), none);
  EXPECT_EQ(key("abc", "?x"), none);
  // A wildcard behind the key.
  EXPECT_EQ(key("ab", "abcde*"), none);
  EXPECT_EQ(key("ab", "acdef*"), less);
  // A cut key: what is sure of it.
  EXPECT_EQ(key("abcdef", "abcd*", 6), none);
  EXPECT_EQ(key("abcdef", "abx*", 6), none);
  EXPECT_EQ(key("abcdef", "bbcd*", 6), less);
  EXPECT_EQ(key("abcdef", "ab*", 6), none);
}

// Arrays.

TYPED_TEST(InlineCompare, FirstPairThatDiffersDecides) {
  auto const array = [](ByteList const& one, ByteList const& two, unsigned count) {
    return Compared<TypeParam>(Inline(0x40, one), Inline(0x40, two), kLiteral, kLittle, count);
  };
  ByteList const one = Ended("a") + Ended("b") + Ended("z");
  EXPECT_EQ(array(one, Ended("a") + Ended("c") + Ended("a"), 3), (Answer{-1, 0}));
  EXPECT_EQ(array(one, Ended("a") + Ended("c") + Ended("a"), 1), (Answer{0, 0}));
  EXPECT_EQ(array(one, one, 3), (Answer{0, 0}));
  EXPECT_EQ(array(one, one, 4), (Answer{0, kExceeded}));
  EXPECT_EQ(array(one, Ended("a"), 2), (Answer{0, kExceeded}));
  EXPECT_EQ(array(Ended("a"), one, 2), (Answer{0, kExceeded}));
  EXPECT_EQ(array(Ended("") + Ended("b"), Ended("") + Ended("a"), 2), (Answer{1, 0}));
  EXPECT_EQ((ComparedInMemory<TypeParam>({"a", "b", "z"}, {"a", "c", "a"}, kLiteral)),
            (Answer{-1, 0}));
  EXPECT_EQ((ComparedInMemory<TypeParam>({"a", ""}, {"a", ""}, kLiteral)), (Answer{0, 0}));
}

TYPED_TEST(InlineCompare, ArraysStopWhereTheirLengthDoes) {
  ByteList const record = Inline(0x40, Ended("ab") + Ended("c"));
  EXPECT_EQ(Compared<TypeParam>(CutTo(record, 6), record, kLiteral, kLittle, 2),
            (Answer{0, kExceeded}));
  EXPECT_EQ(Compared<TypeParam>(record, CutTo(record, 6), kLiteral, kLittle, 2),
            (Answer{0, kExceeded}));
}

TYPED_TEST(InlineCompare, WeightedValuesInMemoryCompareAsKeys) {
  TypeParam key("\x54");
  key.weighted = 0x80;
  std::vector<TypeParam> keys(1), letters = {"A"};
  keys[0] = key;
  int status = 0;
  EXPECT_EQ(XoTypeMgr().Cmp(kId<TypeParam>, 0, keys.data(), 0, letters.data(), kPattern, 1, kMemory,
                            status),
            0);
  EXPECT_EQ(status, kExceeded);
}

}  // namespace
}  // namespace xo::test
