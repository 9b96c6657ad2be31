#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kCyrillic = 5, kUnicode = 253;
constexpr unsigned char kNeutral = 0, kGerman = 2, kRussian = 38;
constexpr unsigned char kLatinGroup = 2, kCyrillicGroup = 4;

XoWCharList ListOf(std::initializer_list<unsigned short> values) {
  XoWCharList list;
  for (unsigned short const value : values) list.values[list.count++] = value;
  return list;
}

void ExpectAtStart(XoStringIterator const& iterator) {
  EXPECT_EQ(iterator.codeSetObject, XoLanguageContext::QueryCodeSet(iterator.codeSet));
  EXPECT_EQ(iterator.overflow, nullptr);
  EXPECT_EQ(iterator.overflowIndex, 0);
  EXPECT_EQ(iterator.overflowCodeSet, 0);
}

// Construction.

TEST(Iterator, FieldsStandInOrder) {
  static_assert(!std::is_polymorphic_v<XoStringIterator>);
  XoStringIterator const it;
  auto const at = [&it](auto const& field) {
    return reinterpret_cast<char const*>(&field) - reinterpret_cast<char const*>(&it);
  };
  EXPECT_EQ(at(it.codeSetObject), 0);
  EXPECT_LT(at(it.codeSetObject), at(it.codeSet));
  EXPECT_LT(at(it.codeSet), at(it.language));
  EXPECT_LT(at(it.language), at(it.orderGroup));
  EXPECT_LT(at(it.orderGroup), at(it.overflowCodeSet));
  EXPECT_LT(at(it.overflowCodeSet), at(it.overflowIndex));
  EXPECT_LT(at(it.overflowIndex), at(it.byteOrder));
  EXPECT_LT(at(it.byteOrder), at(it.ownsBuffer));
  EXPECT_LT(at(it.ownsBuffer), at(it.cursor));
  EXPECT_LT(at(it.cursor), at(it.overflow));
}

TEST(Iterator, OnNothing) {
  XoStringIterator iterator;
  ExpectAtStart(iterator);
  EXPECT_EQ(iterator.codeSet, 0);
  EXPECT_EQ(iterator.language, 0);
  EXPECT_EQ(iterator.orderGroup, 0);
  EXPECT_EQ(iterator.byteOrder, 1);
  EXPECT_EQ(iterator.cursor, nullptr);
  EXPECT_EQ(iterator.ownsBuffer, 0);
  EXPECT_NE(iterator.IsEOS(), 0);
  EXPECT_EQ(iterator.GetNextOrder(1), 0);
  EXPECT_EQ((*iterator).Code(), 0);
  EXPECT_EQ(StringPrefixEstimate(iterator, 10), 0.0);
}

TEST(Iterator, StepsOnNothingStayThere) {
  XoStringIterator iterator;
  ++iterator;
  --iterator;
  EXPECT_EQ(iterator.cursor, nullptr);
  XoStringIterator other;
  XoCharToUpper upper;
  iterator.Transform(other, upper);
  EXPECT_EQ(iterator.cursor, nullptr);
}

TEST(Iterator, OnAString) {
  XoString text("abc");
  text.language = kRussian;
  XoStringIterator const iterator(text);
  ExpectAtStart(iterator);
  EXPECT_EQ(iterator.codeSet, kLatin1);
  EXPECT_EQ(iterator.language, kRussian);
  EXPECT_EQ(iterator.orderGroup, kCyrillicGroup);
  EXPECT_EQ(iterator.byteOrder, 8);
  EXPECT_EQ(iterator.cursor, text.text);
  EXPECT_EQ(iterator.ownsBuffer, 0);

  text.language = 255;
  EXPECT_EQ(XoStringIterator(text).language, XoLanguageContext::GetDefaultLanguage());
  XoString const none(kUnicode, kNeutral);
  XoStringIterator empty(none);
  EXPECT_NE(empty.cursor, nullptr);
  EXPECT_NE(empty.IsEOS(), 0);
}

TEST(Iterator, OnACharacterOwnsATextOfIt) {
  XoStringIterator narrow(XoChar(static_cast<char>(0xE9), kLatin1, kGerman));
  ExpectAtStart(narrow);
  EXPECT_EQ(narrow.codeSet, kLatin1);
  EXPECT_EQ(narrow.language, kGerman);
  EXPECT_EQ(narrow.byteOrder, 1);
  EXPECT_NE(narrow.ownsBuffer, 0);
  EXPECT_EQ((*narrow).Code(), 0xE9);
  ++narrow;
  EXPECT_NE(narrow.IsEOS(), 0);

  char const big[] = {0x20, static_cast<char>(0xAC)};
  XoStringIterator wide(XoChar(big, kUnicode, kNeutral, 2));
  EXPECT_EQ(wide.byteOrder, 1);
  EXPECT_EQ((*wide).Code(), 0x20AC);
  ++wide;
  EXPECT_NE(wide.IsEOS(), 0);
}

TEST(Iterator, OnACharacterEndsCleanlyWhereverItStands) {
  for (int steps = 0; steps <= 1; ++steps) {
    XoStringIterator iterator(XoChar(static_cast<unsigned short>('a'), kUnicode));
    for (int step = 0; step < steps; ++step) ++iterator;
    XoStringIterator copy(iterator);
    EXPECT_EQ(copy.ownsBuffer, 0);
    EXPECT_TRUE(copy == iterator);
  }
}

TEST(Iterator, OnPointersTakesDefaultsFor255) {
  char const narrow[] = "a";
  XoStringIterator const first(narrow);
  ExpectAtStart(first);
  EXPECT_EQ(first.codeSet, XoLanguageContext::GetDefault8CodeSet());
  EXPECT_EQ(first.language, XoLanguageContext::GetDefaultLanguage());
  EXPECT_EQ(first.byteOrder, 1);
  EXPECT_EQ(first.cursor, narrow);
  unsigned short const wide[] = {'a', 0};
  XoStringIterator const second(wide);
  ExpectAtStart(second);
  EXPECT_EQ(second.codeSet, XoLanguageContext::GetDefault16CodeSet());
  EXPECT_EQ(second.language, XoLanguageContext::GetDefaultLanguage());
  EXPECT_EQ(second.byteOrder, 1);

  XoStringIterator const third(narrow, kCyrillic, kRussian, 2);
  EXPECT_EQ(third.codeSet, kCyrillic);
  EXPECT_EQ(third.language, kRussian);
  EXPECT_EQ(third.byteOrder, 2);
  EXPECT_EQ(third.orderGroup, kCyrillicGroup);
  EXPECT_EQ(XoStringIterator(narrow, kCyrillic, kGerman).orderGroup, kLatinGroup);
}

TEST(Iterator, OnANullPointerReadsAsEmpty) {
  XoStringIterator narrow(static_cast<char const*>(nullptr), kLatin1, kNeutral);
  EXPECT_NE(narrow.IsEOS(), 0);
  EXPECT_EQ(narrow.GetNextOrder(1), 0);
  XoStringIterator wide(static_cast<unsigned short const*>(nullptr));
  EXPECT_NE(wide.IsEOS(), 0);
  EXPECT_EQ(wide.GetNextOrder(1), 0);
}

TEST(Iterator, OfAnUnknownCodeSetHasNoRecord) {
  for (unsigned char const set : std::initializer_list<unsigned char>{100, 224, 240, 252}) {
    char const text[] = {'a', 0, 0, 0};
    XoStringIterator iterator(text, set, kNeutral);
    EXPECT_EQ(iterator.codeSetObject, nullptr);
    EXPECT_EQ((*iterator).Code(), 'a');
    EXPECT_NE(iterator.GetNextOrder(1), 0);
    EXPECT_NE(iterator.IsEOS(), 0);
  }
}

TEST(Iterator, CopyTakesAllFieldsButTheOwnership) {
  char const text[] = "abc";
  XoWCharList const more = ListOf({'x', 'y'});
  XoStringIterator iterator(text, kCyrillic, kRussian, 2);
  ++iterator;
  iterator.SetOverflow(&more, kUnicode);
  *iterator;
  for (int way = 0; way < 2; ++way) {
    XoStringIterator copy;
    if (way == 0) {
      copy = iterator;
    } else {
      copy.~XoStringIterator();
      new (&copy) XoStringIterator(iterator);
    }
    EXPECT_EQ(copy.codeSetObject, iterator.codeSetObject);
    EXPECT_EQ(copy.codeSet, kCyrillic);
    EXPECT_EQ(copy.language, kRussian);
    EXPECT_EQ(copy.orderGroup, kCyrillicGroup);
    EXPECT_EQ(copy.overflowCodeSet, kUnicode);
    EXPECT_EQ(copy.overflowIndex, 1);
    EXPECT_EQ(copy.byteOrder, 2);
    EXPECT_EQ(copy.ownsBuffer, 0);
    EXPECT_EQ(copy.cursor, text + 1);
    EXPECT_EQ(copy.overflow, &more);
  }
}

TEST(Iterator, AssignmentReleasesTheOwnText) {
  char const text[] = "abc";
  XoStringIterator iterator(XoChar('x'));
  ++iterator;
  XoStringIterator const other(text);
  iterator = other;
  EXPECT_EQ(iterator.ownsBuffer, 0);
  EXPECT_EQ(iterator.cursor, text);
  XoStringIterator own(XoChar('x'));
  XoStringIterator const& self = own;
  own = self;
  EXPECT_EQ((*own).Code(), 'x');
}

TEST(Iterator, EqualsAtTheSamePlace) {
  char const text[] = "aa";
  XoStringIterator first(text, kLatin1);
  XoStringIterator const second(text, kCyrillic, kRussian);
  EXPECT_TRUE(first == second);
  ++first;
  EXPECT_FALSE(first == second);
}

// Steps.

TEST(Iterator, StepsByCharacters) {
  char const narrow[] = "abc";
  XoStringIterator one(narrow, 224);
  EXPECT_EQ((++one).cursor, narrow + 1);
  EXPECT_EQ((--one).cursor, narrow);
  EXPECT_EQ(one.Step(1).cursor, narrow + 1);
  EXPECT_EQ(one.Step(65535).cursor, narrow + 2);
  EXPECT_EQ(one.Step(0).cursor, narrow + 1);

  char const wide[] = {'a', 0, 'b', 0, 'c', 0, 0, 0};
  XoStringIterator two(wide, 225);
  EXPECT_EQ((++two).cursor, wide + 2);
  EXPECT_EQ((--two).cursor, wide);
}

TEST(Iterator, PostfixStepsGiveTheEarlierState) {
  char const text[] = "abc";
  XoStringIterator iterator(text);
  EXPECT_EQ((iterator++).cursor, text);
  EXPECT_EQ(iterator.cursor, text + 1);
  EXPECT_EQ((iterator--).cursor, text + 1);
  EXPECT_EQ(iterator.cursor, text);
  XoStringIterator owner(XoChar('x'));
  EXPECT_EQ((owner++).ownsBuffer, 0);
  EXPECT_NE(owner.ownsBuffer, 0);
}

TEST(Iterator, GivesTheCharacterBoundToItsPlace) {
  XoString text("abc");
  XoStringIterator iterator(text);
  ++iterator;
  *iterator = XoChar(static_cast<unsigned short>(0xE9), kUnicode);
  EXPECT_STREQ(text.StrGet(),
               "a\xE9"
               "c");
  EXPECT_EQ((*iterator).binding, text.text + 1);
  EXPECT_EQ((*iterator).codeSet, kLatin1);
}

TEST(Iterator, GivesBigEndianCharacters) {
  char const text[] = {0x20, static_cast<char>(0xAC), 0, 0};
  XoStringIterator iterator(text, kUnicode, kNeutral, 2);
  EXPECT_EQ((*iterator).Code(), 0x20AC);
  EXPECT_EQ((*iterator).byteOrder, 2);
}

// Overflow.

TEST(Iterator, ServesTheOverflowBeforeItMoves) {
  char const text[] = "ab";
  XoWCharList const more = ListOf({0x416, 0x417});
  XoStringIterator iterator(text, kLatin1, kGerman);
  iterator.SetOverflow(&more, kUnicode);
  XoChar const first = *iterator;
  EXPECT_EQ(first.Code(), 0x416);
  EXPECT_EQ(first.codeSet, kUnicode);
  EXPECT_EQ(first.language, kGerman);
  EXPECT_EQ(first.binding, nullptr);
  // A step does not move while a value remains.
  ++iterator;
  EXPECT_EQ(iterator.cursor, text);
  EXPECT_EQ(iterator.overflow, &more);
  EXPECT_EQ((*iterator).Code(), 0x417);
  EXPECT_EQ(iterator.overflow, &more);
  // All are served: the present character again, until the step that clears them.
  EXPECT_EQ((*iterator).Code(), 'a');
  ++iterator;
  EXPECT_EQ(iterator.overflow, nullptr);
  EXPECT_EQ(iterator.cursor, text + 1);
  EXPECT_EQ((*iterator).Code(), 'b');
}

TEST(Iterator, StepBackDoesNotLookAtTheOverflow) {
  char const text[] = "ab";
  XoWCharList const more = ListOf({'x'});
  XoStringIterator iterator(text + 1, kLatin1);
  iterator.SetOverflow(&more, 255);
  --iterator;
  EXPECT_EQ(iterator.cursor, text);
  EXPECT_EQ(iterator.overflow, &more);
  EXPECT_EQ(iterator.overflowIndex, 0);
}

TEST(Iterator, OverflowOf255IsOfItsOwnCodeSet) {
  char const text[] = "ab";
  XoWCharList const more = ListOf({0xB6});
  XoStringIterator iterator(text, kCyrillic);
  iterator.SetOverflow(&more, 255);
  EXPECT_EQ(iterator.overflowCodeSet, kCyrillic);
  EXPECT_EQ((*iterator).codeSet, kCyrillic);
}

TEST(Iterator, NewOverflowIsServedFromItsStart) {
  char const text[] = "ab";
  XoWCharList const first = ListOf({'x', 'y'}), second = ListOf({'z'});
  XoStringIterator iterator(text, kLatin1);
  iterator.SetOverflow(&first, 255);
  *iterator;
  iterator.SetOverflow(&second, 255);
  EXPECT_EQ(iterator.overflowIndex, 0);
  EXPECT_EQ((*iterator).Code(), 'z');
  iterator.SetOverflow(nullptr, 255);
  EXPECT_EQ((*iterator).Code(), 'a');
}

TEST(Iterator, IsNotAtTheEndBeforeTheOverflowIsCleared) {
  char const text[] = "a";
  XoWCharList const more = ListOf({'x'});
  XoStringIterator iterator(text + 1, kLatin1);
  EXPECT_NE(iterator.IsEOS(), 0);
  iterator.SetOverflow(&more, 255);
  EXPECT_EQ(iterator.IsEOS(), 0);
  *iterator;
  EXPECT_EQ(iterator.IsEOS(), 0);
  // The move that clears it passes the character that the overflow belongs to.
  XoStringIterator before(text, kLatin1);
  before.SetOverflow(&more, 255);
  *before;
  EXPECT_EQ(before.IsEOS(), 0);
  ++before;
  EXPECT_NE(before.IsEOS(), 0);
}

// Estimates.

/// The order of a character without its accent and case, as it stands in a key.
double KeyLetter(char letter) {
  unsigned const order = XoChar(letter, kLatin1).CharOrder();
  return order & 0x407F;
}

TEST(Estimate, HoldsTheFirstThreeLetters) {
  XoStringIterator iterator("abcd", kLatin1, kNeutral);
  double const expected = (2 * 65536.0 + 0) * 4294967296.0;
  // The group fills the upper 16 bits beside the first letter, the second those beside the third.
  EXPECT_EQ(StringPrefixEstimate(iterator, 100),
            expected + KeyLetter('a') * 4294967296.0 + KeyLetter('b') * 65536.0 + KeyLetter('c'));
}

TEST(Estimate, LeavesOutSpacesAndSymbols) {
  XoStringIterator plain("abc", kLatin1, kNeutral);
  XoStringIterator dotted(" a-. b!c", kLatin1, kNeutral);
  EXPECT_EQ(StringPrefixEstimate(plain, 100), StringPrefixEstimate(dotted, 100));
}

TEST(Estimate, CountsEveryOrderThatItReads) {
  XoStringIterator iterator("-a-b", kLatin1, kNeutral);
  XoStringIterator one("a", kLatin1, kNeutral);
  EXPECT_EQ(StringPrefixEstimate(iterator, 3), StringPrefixEstimate(one, 100));
  XoStringIterator none("abc", kLatin1, kNeutral);
  EXPECT_EQ(StringPrefixEstimate(none, 0), 2 * 65536.0 * 4294967296.0);
}

TEST(Estimate, TakesTheGroupAtTheStart) {
  // The text is Cyrillic, but the language Latin: the group before any reading counts.
  XoStringIterator iterator("\xB6", kCyrillic, kGerman);
  unsigned const letter = XoChar(static_cast<char>(0xB6), kCyrillic).CharOrder() & 0x407Fu;
  EXPECT_EQ(StringPrefixEstimate(iterator, 100), (2 * 65536.0 + letter) * 4294967296.0);
  XoStringIterator empty("", kCyrillic, kRussian);
  EXPECT_EQ(StringPrefixEstimate(empty, 100), 4 * 65536.0 * 4294967296.0);
}

TEST(Estimate, OfAnIdeographIsItsCode) {
  unsigned short const text[] = {0x9FA5, 0};
  XoStringIterator iterator(text, kUnicode, kNeutral);
  EXPECT_EQ(StringPrefixEstimate(iterator, 100), (2 * 65536.0 + 0x9FA5) * 4294967296.0);
}

TEST(Estimate, WithoutCodeSetIsOfFourBytes) {
  auto const estimate = [](char const* text) {
    XoStringIterator iterator(text, 0, kNeutral);
    return StringPrefixEstimate(iterator, 100);
  };
  EXPECT_EQ(estimate(""), 0.0);
  EXPECT_EQ(estimate("a"), 97.0 * 128 * 128 * 128);
  EXPECT_EQ(estimate("ab"), (97.0 * 128 + 98) * 128 * 128);
  EXPECT_EQ(estimate("abcd"), ((97.0 * 128 + 98) * 128 + 99) * 128 + 100);
  EXPECT_EQ(estimate("abcdz"), estimate("abcda"));
  EXPECT_EQ(estimate("\xE9"), 127.0 * 128 * 128 * 128);
}

TEST(Estimate, WithoutCodeSetTakesNoMoreBytesThanAsked) {
  double const whole[] = {0.0, 97.0 * 128 * 128 * 128, (97.0 * 128 + 98) * 128 * 128,
                          ((97.0 * 128 + 98) * 128 + 99) * 128,
                          ((97.0 * 128 + 98) * 128 + 99) * 128 + 100};
  for (unsigned short count = 0; count < 7; ++count) {
    XoStringIterator iterator("abcdef", 0, kNeutral);
    EXPECT_EQ(StringPrefixEstimate(iterator, count), whole[std::min<unsigned>(count, 4)]) << count;
  }
}

TEST(Estimate, GrowsWithTheText) {
  double before = -1;
  for (char const* const text : {"", "1", "2", "a", "aa", "aab", "ab", "b", "ba", "z", "zz"}) {
    XoStringIterator iterator(text, kLatin1, kNeutral);
    double const estimate = StringPrefixEstimate(iterator, 100);
    EXPECT_GT(estimate, before) << text;
    before = estimate;
  }
}

}  // namespace
}  // namespace xo::test
