#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace {

constexpr unsigned char kLatin1 = 1;
constexpr unsigned char kUnicode = 253;
constexpr unsigned char kStream = 254;

/// Units as bytes that lie as the library reads them.
std::vector<char> Wide(std::u16string const& text) {
  std::vector<char> bytes;
  for (char16_t const unit : text + u'\0') {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

int Pattern(char const* text, char const* pattern, short count) {
  return XoStrCmp(kLatin1, 1, text, kLatin1, 1, pattern, 0, count);
}

TEST(CountedPattern, AStarThatIsTakenUpAgainKeepsTheOrdersReadBeforeIt) {
  // Within two orders the pattern is "*b".
  EXPECT_EQ(Pattern("ab", "*b?", 2), 0);
}

TEST(CountedPattern, ABranchKeepsTheOrdersThatItHasRead) {
  EXPECT_EQ(Pattern("aa", "*a?", 2), 0);
  EXPECT_EQ(Pattern("aaa", "a*??b", 3), 0);
}

TEST(OrderStream, KeepsTheGroupOfTheFirstStep) {
  XoString const letter("a");
  unsigned short const order = letter[0].CharOrder();
  std::u16string const orders{static_cast<char16_t>(order), u'\u4E00'};
  EXPECT_EQ(XoStrCmp(kStream, 2, Wide(orders).data(), kUnicode, 1, Wide(u"a\u4E00").data(), 0x10),
            0);
}

TEST(OrderStream, InAGroupBehindAllTablesEveryOrderCounts) {
  EXPECT_LT(
      XoStrCmp(kStream, 25, Wide(u"\u000D").data(), kStream, 25, Wide(u"\u000E").data(), 0x90), 0);
  EXPECT_EQ(XoStrCmp(kStream, 2, Wide(u"\u000D").data(), kStream, 2, Wide(u"\u000E").data(), 0x90),
            0);
}

TEST(IteratorGroup, ACodeThatIsAWildcardsOrderKeepsTheGroup) {
  std::vector<char> const text = Wide(u"x\u4E00");
  for (int (*set)(XoChar const&) : {XoString::SetAsterisk, XoString::SetQuestion}) {
    set(XoChar(static_cast<unsigned short>(0x4E00), kUnicode, 1));
    XoStringIterator iterator(text.data(), kUnicode, 1);
    iterator.GetNextOrder(1);
    unsigned char const group = iterator.orderGroup;
    EXPECT_EQ(iterator.GetNextOrder(1), 0x4E00);
    EXPECT_EQ(iterator.orderGroup, group);
    XoString::SetAsterisk(XoChar('*'));
    XoString::SetQuestion(XoChar('?'));
  }
  XoStringIterator iterator(text.data(), kUnicode, 1);
  iterator.GetNextOrder(1);
  iterator.GetNextOrder(1);
  EXPECT_EQ(iterator.orderGroup, 20);
}

TEST(IteratorGroup, IsCopied) {
  std::vector<char> const text = Wide(u"\u0436a");
  XoStringIterator iterator(text.data(), kUnicode, 1);
  unsigned char const group = iterator.orderGroup;
  iterator.GetNextOrder(1);
  ASSERT_NE(iterator.orderGroup, group);
  EXPECT_EQ(XoStringIterator(iterator).orderGroup, iterator.orderGroup);
}

TEST(PrefixEstimate, LooksAtSevenBitsOfTheGroup) {
  XoStringIterator plain("...", kLatin1, 1);
  XoStringIterator marked("...", kLatin1, 1);
  plain.orderGroup = 2;
  marked.orderGroup = 130;
  EXPECT_EQ(StringPrefixEstimate(plain, 3), StringPrefixEstimate(marked, 3));
}

TEST(CharacterOrder, OfASetWithoutTableIsThatOfTheUnicodeCharacter) {
  // Sort orders map to Unicode as they are.
  EXPECT_EQ(XoChar(static_cast<unsigned short>('A'), kStream, 2).CharOrder(),
            XoChar(static_cast<unsigned short>('A'), kUnicode, 2).CharOrder());
}

TEST(CharacterOrder, OneCharacterComparesByItsFirstOrderAlone) {
  EXPECT_EQ(XoChar(static_cast<unsigned short>(0xDF), kLatin1, 2)
                .Compare(XoChar('s', kLatin1, 2), 0x0010),
            0);
}

/// A text without a terminator, in a buffer of its own, so that the sanitizer sees a byte too far.
TEST(CountedText, OfDigitsAndLettersIsReadNoFurtherThanItsCount) {
  std::unique_ptr<char[]> const text(new char[3]);
  std::unique_ptr<char[]> const same(new char[3]);
  std::memcpy(text.get(), "x7z", 3);
  std::memcpy(same.get(), "x7z", 3);
  for (int const bits : {0x0000, 0x0010, 0x0110, 0x0070}) {
    auto const op = static_cast<unsigned short>(bits);
    EXPECT_EQ(XoStrCmp(kLatin1, 1, text.get(), kLatin1, 1, same.get(), op, 3), 0);
    EXPECT_EQ(XoStrCmp(kLatin1, 1, text.get(), kLatin1, 2, same.get(), op, 3), 0);
  }
  EXPECT_EQ(HashString(kLatin1, 1, text.get(), 3), HashString(kLatin1, 1, "x7z"));
  EXPECT_EQ(FindWildcard(kLatin1, 1, text.get(), 0, 3, nullptr, 1), -1);
  EXPECT_EQ(FindWildcard(0, 0, text.get(), 0, 3, nullptr, 1), -1);
}

TEST(EmptyText, IsNeverWritten) {
  XoString const empty(kUnicode, 1);
  XoChar(empty, 1) = 'x';
  XoChar(empty, 0) = static_cast<unsigned short>('x');
  EXPECT_EQ(XoString().Len(), 0);
  EXPECT_EQ(XoString(kUnicode, 1).Len(), 0);
}

TEST(StringSum, TakesPlainTextOnEitherSide) {
  XoString const one("1");
  EXPECT_TRUE(one + "abc" == "1abc");
  EXPECT_TRUE("abc" + one == "abc1");
  EXPECT_TRUE(one + 'c' == "1c");
}

TEST(StringNumber, OnlyAMinusBeginsANumberWhateverTheDefaultOperatorIs) {
  unsigned short const before = XoString::GetDefaultCmpOp();
  XoString::SetDefaultCmpOp(0x0210);
  int value = 7;
  EXPECT_EQ(XoString("+5").Atol(value), -1);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(XoString("-5").Atol(value), 0);
  EXPECT_EQ(value, -5);
  XoString::SetDefaultCmpOp(before);
}

TEST(StringSearch, SplitsAndReplacesUnderTheDefaultOperator) {
  unsigned short const before = XoString::GetDefaultCmpOp();
  XoString::SetDefaultCmpOp(0x0030);
  XoString list("axbXc");
  EXPECT_STREQ(XoString(list).ReplaceAll("x", "-").StrGet(), "a-b-c");
  EXPECT_STREQ(XoString(list).ReplaceAll('x', '-').StrGet(), "a-b-c");
  XoString item;
  unsigned short place = 0;
  for (char const* const element : {"a", "b", "c"}) {
    ASSERT_EQ(XoSplitList(list, item, "x", place), 0);
    EXPECT_STREQ(item.StrGet(), element);
  }
  EXPECT_EQ(XoSplitList(list, item, "x", place), -2005);
  XoString::SetDefaultCmpOp(before);
}

TEST(StringSearch, ACharacterIsSoughtAsAByteWhereThereIsNoCodeSet) {
  XoString text("Abc");
  text.codeSet = 0;
  text.language = 0;
  EXPECT_EQ(text.Find('a', 0, 0x30), -1);
  EXPECT_EQ(text.Find("a", 0, 0x30), 0);
  text.codeSet = kLatin1;
  EXPECT_EQ(text.Find('a', 0, 0x30), 0);
}

TEST(StringBuffer, OneOfJustTheSizeIsKept) {
  XoString target("abc");
  char const* const buffer = target.StrGet();
  EXPECT_EQ(target.CopyMapped(XoString("xyz"), kLatin1), 3);
  EXPECT_EQ(target.StrGet(), buffer);
}

TEST(StringBuffer, OfOddSizeServesWideCharacters) {
  XoString target("0123456789");
  XoString source(kUnicode, 1);
  source += "xy";
  ASSERT_EQ(target.CopyMapped(source, kUnicode), 2);
  target.Insert("z", 1);
  EXPECT_EQ(target.size % 2, 0);
  EXPECT_TRUE(target == "xzy");
}

}  // namespace
