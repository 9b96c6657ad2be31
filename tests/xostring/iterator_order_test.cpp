#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <vector>

#include "tests/xostring/order_reads.hpp"

namespace xo::test {
namespace {

unsigned short OrderOf(unsigned short code, unsigned char codeSet = kUnicode) {
  return XoChar(code, codeSet, kNeutral).CharOrder();
}

// Stated.

TEST(IteratorOrders, OfAnEmptyTextAreZeroForEver) {
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 5, 32, 225, 253, 254}) {
    Text const text({}, set);
    XoStringIterator iterator(text.Get(), set, 1, 1);
    for (int time = 0; time < 5; ++time) {
      EXPECT_EQ(iterator.GetNextOrder(1), 0);
      EXPECT_EQ(iterator.GetNextOrder(0), 0);
      EXPECT_EQ(iterator.cursor, text.Get());
    }
  }
}

TEST(IteratorOrders, EndGivesZeroForEver) {
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 5, 32, 225, 253, 254}) {
    Text const text({'a', 'b'}, set);
    XoStringIterator iterator(text.Get(), set, 1, 1);
    EXPECT_NE(iterator.GetNextOrder(1), 0);
    EXPECT_NE(iterator.GetNextOrder(1), 0);
    for (int time = 0; time < 5; ++time) {
      EXPECT_EQ(iterator.GetNextOrder(1), 0);
      EXPECT_EQ(iterator.cursor, text.Get() + text.size) << int{set};
    }
  }
}

TEST(IteratorOrders, PlainCharactersGiveTheirOwnOrderAndMoveByOne) {
  std::vector<Read> const reads = ReadAll({'a', 'Z', '7', '-', ' '}, kLatin1, kNeutral);
  ASSERT_EQ(reads.size(), 5u);
  char const text[] = "aZ7- ";
  for (std::size_t place = 0; place < 5; ++place) {
    EXPECT_EQ(reads[place], (Read{XoChar(text[place], kLatin1).CharOrder(), kLatinGroup,
                                  static_cast<std::ptrdiff_t>(place) + 1}));
  }
}

TEST(IteratorOrders, GroupIsThatOfTheScriptOrElseOfTheLanguage) {
  std::vector<Read> const russian = ReadAll({'a', 0x416, '1', '-'}, kUnicode, kRussian);
  ASSERT_EQ(russian.size(), 4u);
  EXPECT_EQ(russian[0].group, kLatinGroup);
  EXPECT_EQ(russian[1].group, kCyrillicGroup);
  EXPECT_EQ(russian[2].group, kCyrillicGroup);
  EXPECT_EQ(russian[3].group, kCyrillicGroup);
  std::vector<Read> const german = ReadAll({0x416, '1'}, kUnicode, kGerman);
  EXPECT_EQ(german[0].group, kCyrillicGroup);
  EXPECT_EQ(german[1].group, kLatinGroup);
}

TEST(IteratorOrders, WithoutUpdateTheGroupStays) {
  for (Read const& read : ReadAll({'a', 0x416, 0x4E2D, 0x9FA5}, kUnicode, kGerman, 0)) {
    EXPECT_EQ(read.group, kLatinGroup);
  }
}

TEST(IteratorOrders, UntabledCodesAreTheirOwnOrderInAGroupAbove) {
  std::vector<Read> const reads = ReadAll({0x4E2D, 'a', 0x9FA5}, kUnicode, kGerman);
  ASSERT_EQ(reads.size(), 3u);
  EXPECT_EQ(reads[0], (Read{0x4E2D, kUntabledGroup, 2}));
  EXPECT_EQ(reads[1], (Read{OrderOf('a'), kLatinGroup, 4}));
  EXPECT_EQ(reads[2], (Read{0x9FA5, kUntabledGroup, 6}));
}

TEST(IteratorOrders, SpecialCodesLeaveTheGroup) {
  for (unsigned code = 65520; code < 65536; ++code) {
    unsigned short const unit = static_cast<unsigned short>(code);
    if (XoLanguageContext::QueryCodeSet(kUnicode)->orderTable->GetEntry(unit) != nullptr) continue;
    std::vector<Read> const reads = ReadAll({unit}, kUnicode, kGerman);
    ASSERT_EQ(reads.size(), 1u);
    EXPECT_EQ(reads[0], (Read{unit, kLatinGroup, 2}));
  }
  EXPECT_EQ(ReadAll({0xFFFF}, kUnicode, kGerman).at(0), (Read{0xFFFF, kLatinGroup, 2}));
  EXPECT_EQ(ReadAll({65519}, kUnicode, kGerman).at(0).group, kUntabledGroup);
}

TEST(IteratorOrders, ContractionIsOneOrder) {
  // Traditional Spanish "ch", and Hungarian "dzs", in which a link leads to a link.
  std::vector<Read> const spanish = ReadAll({'c', 'h', 'a'}, kLatin1, kTraditionalSpanish);
  ASSERT_EQ(spanish.size(), 2u);
  EXPECT_EQ(spanish[0].place, 2);
  EXPECT_GT(spanish[0].order & 0x7F, OrderOf('c') & 0x7F);
  EXPECT_LT(spanish[0].order & 0x7F, OrderOf('d') & 0x7F);
  EXPECT_EQ(ReadAll({'c', 'h', 'a'}, kLatin1, kGerman).size(), 3u);

  std::vector<Read> const hungarian = ReadAll({'d', 'z', 's', 'a'}, kUnicode, kHungarian);
  ASSERT_EQ(hungarian.size(), 2u);
  EXPECT_EQ(hungarian[0].place, 6);
  std::vector<Read> const shorter = ReadAll({'d', 'z', 'a'}, kUnicode, kHungarian);
  ASSERT_EQ(shorter.size(), 2u);
  EXPECT_EQ(shorter[0].place, 4);
  EXPECT_NE(shorter[0].order, hungarian[0].order);
}

TEST(IteratorOrders, ContractionThatFailsReadsTheNextCharacterAgain) {
  std::vector<Read> const reads = ReadAll({'c', 'x'}, kLatin1, kTraditionalSpanish);
  ASSERT_EQ(reads.size(), 2u);
  EXPECT_EQ(reads[0],
            (Read{ReadAll({'c'}, kLatin1, kTraditionalSpanish)[0].order, kLatinGroup, 1}));
  EXPECT_EQ(reads[1].order, OrderOf('x'));
  // The first of two that might start one.
  std::vector<Read> const twice = ReadAll({'c', 'c', 'h'}, kLatin1, kTraditionalSpanish);
  ASSERT_EQ(twice.size(), 2u);
  EXPECT_EQ(twice[0].place, 1);
  EXPECT_EQ(twice[1].place, 3);
}

TEST(IteratorOrders, ContractionStartAtTheEndIsItself) {
  for (unsigned char const language :
       std::initializer_list<unsigned char>{kTraditionalSpanish, kCzech, kHungarian}) {
    for (unsigned char const set : std::initializer_list<unsigned char>{kLatin1, kUnicode}) {
      std::vector<Read> const reads = ReadAll({'c'}, set, language);
      ASSERT_EQ(reads.size(), 1u);
      EXPECT_EQ(reads[0].place, set == kLatin1 ? 1 : 2);
      EXPECT_EQ(reads[0].order, OrderOf('c'));
    }
  }
}

TEST(IteratorOrders, LetterAndMarkAreTheirComposite) {
  for (unsigned char const language :
       std::initializer_list<unsigned char>{kNeutral, kGerman, kSwedish}) {
    std::vector<Read> const composite = ReadAll({0xE4}, kUnicode, language);
    std::vector<Read> const parts = ReadAll({'a', 0x308}, kUnicode, language);
    ASSERT_EQ(composite.size(), 1u);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].order, composite[0].order);
    EXPECT_EQ(parts[0].group, composite[0].group);
    EXPECT_EQ(parts[0].place, 4);
  }
}

TEST(IteratorOrders, LanguageReplacesTheEntry) {
  // Swedish sorts a with diaeresis behind z, German as a.
  unsigned short const german = ReadAll({0xE4}, kLatin1, kGerman).at(0).order;
  unsigned short const swedish = ReadAll({0xE4}, kLatin1, kSwedish).at(0).order;
  EXPECT_EQ(german & 0x7F, OrderOf('a') & 0x7F);
  EXPECT_GT(swedish & 0x7F, OrderOf('z') & 0x7F);
  // Numbers that are no language have no variants.
  for (unsigned char const language :
       std::initializer_list<unsigned char>{48, 63, 64, 100, 200, 253}) {
    EXPECT_EQ(ReadAll({0xE4}, kLatin1, language).at(0).order, german) << int{language};
  }
}

TEST(IteratorOrders, ExpansionMovesWithItsLastOrderOnly) {
  // Three orders: a code of a number form with an expansion of two, found in the table.
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
  unsigned found = 0;
  for (unsigned code = 1; code < 65536; ++code) {
    unsigned short const unit = static_cast<unsigned short>(code);
    CharOrderEntry const* const entry = unicode.orderTable->GetEntry(unit);
    if (entry == nullptr || !entry->HasExpansion() || entry->HasContractions()) continue;
    unsigned const more = entry->Expansion().count;
    ASSERT_NE(more, 0u) << code;
    found += more == 2;
    std::vector<Read> const reads = ReadAll({unit, 'x'}, kUnicode, kNeutral);
    ASSERT_EQ(reads.size(), more + 2u) << code;
    ASSERT_EQ(reads[0].order, entry->order);
    for (unsigned index = 0; index < more; ++index) {
      unsigned short value = 0;
      ASSERT_EQ(entry->Expansion().Get(index, &value), 0);
      ASSERT_EQ(reads[index].place, 0) << code;
      ASSERT_EQ(reads[index + 1].order, value) << code;
      ASSERT_EQ(reads[index + 1].group, reads[0].group) << code;
    }
    ASSERT_EQ(reads[more].place, 2) << code;
    ASSERT_EQ(reads[more + 1].order, OrderOf('x'));
  }
  EXPECT_GT(found, 10u);
}

TEST(IteratorOrders, SharpSIsTwoLetters) {
  std::vector<Read> const reads = ReadAll({0xDF}, kLatin1, kGerman);
  ASSERT_GE(reads.size(), 2u);
  EXPECT_EQ(reads[0].order & 0x7F, OrderOf('s') & 0x7F);
  EXPECT_EQ(reads[1].order & 0x7F, OrderOf('s') & 0x7F);
}

TEST(IteratorOrders, CodeSetWithoutTableReadsItsUnicodeForms) {
  XoCodeSet const& ebcdic = *XoLanguageContext::QueryCodeSet(kEbcdic);
  for (unsigned code = 1; code < 256; ++code) {
    unsigned short const unit = static_cast<unsigned short>(code);
    std::vector<Read> const own = ReadAll({unit}, kEbcdic, kSwedish);
    std::vector<Read> const unicode = ReadAll({ebcdic.ToUnicode(unit)}, kUnicode, kSwedish);
    ASSERT_EQ(own.size(), unicode.size()) << code;
    for (std::size_t index = 0; index < own.size(); ++index) {
      EXPECT_EQ(own[index].order, unicode[index].order) << code;
      EXPECT_EQ(own[index].group, unicode[index].group) << code;
    }
  }
  // Contractions too: "ch" is 0x83 0x88 in EBCDIC.
  EXPECT_EQ(ReadAll({0x83, 0x88}, kEbcdic, kTraditionalSpanish).size(), 1u);
}

TEST(IteratorOrders, TextWithoutCodeSetIsOfTheNativeOne) {
  Units const units{'a', 0xE9, '1'};
  EXPECT_EQ(ReadAll(units, 0, kGerman),
            ReadAll(units, XoLanguageContext::GetNativeCodeSet(), kGerman));
}

TEST(IteratorOrders, BigEndianTextReadsAlike) {
  Units const units{'c', 'h', 0x416, 0xE9, 'e', 0x301, 0x4E2D, 0xDF};
  for (unsigned char const language :
       std::initializer_list<unsigned char>{kNeutral, kTraditionalSpanish}) {
    Text const big(units, kUnicode, 2);
    XoStringIterator iterator(big.Get(), kUnicode, language, 2);
    for (Read const& read : ReadAll(units, kUnicode, language)) {
      EXPECT_EQ(iterator.GetNextOrder(1), read.order);
      EXPECT_EQ(iterator.orderGroup, read.group);
      EXPECT_EQ(iterator.cursor - big.Get(), read.place);
    }
    EXPECT_EQ(iterator.GetNextOrder(1), 0);
  }
}

/// The end of a text ends it in a code set that does not exist as well.
TEST(IteratorOrders, TextOfAnUnknownCodeSetEnds) {
  for (unsigned char const set : std::initializer_list<unsigned char>{100, 224, 240, 252}) {
    Text const text({'a', 'b'}, set);
    XoStringIterator iterator(text.Get(), set, kNeutral, 1);
    EXPECT_NE(iterator.GetNextOrder(1), 0);
    EXPECT_NE(iterator.GetNextOrder(1), 0);
    EXPECT_EQ(iterator.GetNextOrder(1), 0) << int{set};
    EXPECT_EQ(iterator.GetNextOrder(1), 0) << int{set};
  }
}

// Streams of orders.

TEST(OrderStream, GivesItsUnitsLowByteFirst) {
  char const bytes[] = {0x34, 0x12, static_cast<char>(0xFF), static_cast<char>(0xFF), 0, 0};
  for (unsigned char const order : std::initializer_list<unsigned char>{1, 8, 255, 0, 3}) {
    XoStringIterator iterator(bytes, kOrders, 4, order);
    EXPECT_EQ(iterator.orderGroup, 4);
    EXPECT_EQ(iterator.GetNextOrder(1), 0x1234);
    EXPECT_EQ(iterator.GetNextOrder(0), 0xFFFF);
    EXPECT_EQ(iterator.orderGroup, 4);
    EXPECT_EQ(iterator.GetNextOrder(1), 0);
    EXPECT_EQ(iterator.GetNextOrder(1), 0);
    EXPECT_EQ(iterator.cursor, bytes + 4);
  }
}

TEST(OrderStream, GivesItsUnitsHighByteFirstWhereTold) {
  char const bytes[] = {0x12, 0x34, 0, 0};
  XoStringIterator iterator(bytes, kOrders, 4, 2);
  EXPECT_EQ(iterator.GetNextOrder(1), 0x1234);
  EXPECT_EQ(iterator.GetNextOrder(1), 0);
}

TEST(OrderStream, StartsWithTheGroupOfItsLanguageByte) {
  for (unsigned language = 0; language < 254; ++language) {
    XoStringIterator const iterator("a\0\0", kOrders, static_cast<unsigned char>(language), 1);
    EXPECT_EQ(iterator.orderGroup, language & 127);
  }
}

TEST(OrderStream, WaitsWhileAnOverflowRemains) {
  char const bytes[] = {0x34, 0x12, 0x78, 0x56, 0, 0};
  XoWCharList more;
  more.count = 1;
  more.values[0] = 'x';
  XoStringIterator iterator(bytes, kOrders, 4, 1);
  iterator.SetOverflow(&more, kUnicode);
  EXPECT_EQ(iterator.GetNextOrder(1), 0x1234);
  EXPECT_EQ(iterator.cursor, bytes);
  *iterator;
  EXPECT_EQ(iterator.GetNextOrder(1), 0x1234);
  EXPECT_EQ(iterator.cursor, bytes + 2);
  EXPECT_EQ(iterator.overflow, nullptr);
  EXPECT_EQ(iterator.GetNextOrder(1), 0x5678);
}

// Orders of an overflow.

XoWCharList ListOf(std::initializer_list<unsigned short> values) {
  XoWCharList list;
  for (unsigned short const value : values) list.values[list.count++] = value;
  return list;
}

TEST(OverflowOrders, RawValuesAreServedAsTheyAre) {
  XoWCharList const more = ListOf({0x1234, 0x5678});
  char const text[] = "ab";
  XoStringIterator iterator(text, kLatin1, kGerman);
  iterator.SetOverflow(&more, kOrders);
  EXPECT_EQ(iterator.GetNextOrder(1), 0x1234);
  EXPECT_EQ(iterator.cursor, text);
  EXPECT_EQ(iterator.GetNextOrder(1), 0x5678);
  EXPECT_EQ(iterator.overflow, nullptr);
  EXPECT_EQ(iterator.cursor, text + 1);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('b'));
}

TEST(OverflowOrders, CharactersGiveTheirOrders) {
  XoWCharList const more = ListOf({'x', 'y'});
  char const text[] = "ab";
  XoStringIterator iterator(text, kLatin1, kGerman);
  iterator.SetOverflow(&more, 255);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('x'));
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('y'));
  EXPECT_EQ(iterator.cursor, text + 1);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('b'));
}

TEST(OverflowOrders, RecordOfTheirCodeSetServesFromTheNextCallOn) {
  XoWCharList const more = ListOf({'x', 0x416});
  char const text[] = "ab";
  XoStringIterator iterator(text, kCyrillic, kGerman);
  iterator.SetOverflow(&more, kUnicode);
  EXPECT_EQ(iterator.codeSetObject->number, kCyrillic);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('x'));
  EXPECT_EQ(iterator.codeSetObject->number, kUnicode);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf(0x416));
  EXPECT_EQ(iterator.orderGroup, kCyrillicGroup);
}

TEST(OverflowOrders, ContractionThatFailsGivesAnOverflowValueBack) {
  XoWCharList const more = ListOf({'c', 'x'});
  char const text[] = "ab";
  XoStringIterator iterator(text, kLatin1, kTraditionalSpanish);
  iterator.SetOverflow(&more, 255);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('c'));
  EXPECT_EQ(iterator.overflowIndex, 1);
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('x'));
  EXPECT_EQ(iterator.cursor, text + 1);
}

TEST(OverflowOrders, ContractionRunsThroughTheOverflowAndOutOfIt) {
  char const text[] = "ah";
  unsigned short const together = ReadAll({'c', 'h'}, kLatin1, kTraditionalSpanish).at(0).order;
  XoWCharList const both = ListOf({'c', 'h'}), one = ListOf({'c'});
  XoStringIterator within(text, kLatin1, kTraditionalSpanish);
  within.SetOverflow(&both, 255);
  EXPECT_EQ(within.GetNextOrder(1), together);
  EXPECT_EQ(within.cursor, text + 1);
  // The step behind the last value passes the character that the overflow stands for.
  XoStringIterator out(text, kLatin1, kTraditionalSpanish);
  out.SetOverflow(&one, 255);
  EXPECT_EQ(out.GetNextOrder(1), together);
  EXPECT_EQ(out.cursor, text + 2);
  EXPECT_EQ(out.GetNextOrder(1), 0);
}

TEST(OverflowOrders, AtTheEndDoNotPassIt) {
  XoWCharList const more = ListOf({'x'});
  char const text[] = "";
  for (unsigned char const set : std::initializer_list<unsigned char>{kLatin1, kOrders}) {
    XoStringIterator iterator(text, kLatin1, kGerman);
    iterator.SetOverflow(&more, set);
    EXPECT_EQ(iterator.GetNextOrder(1), set == kOrders ? 'x' : OrderOf('x'));
    EXPECT_EQ(iterator.cursor, text);
    EXPECT_EQ(iterator.GetNextOrder(1), 0);
    EXPECT_NE(iterator.IsEOS(), 0);
  }
}

TEST(OverflowOrders, LastValueAtTheEndContractsWithNothing) {
  XoWCharList const more = ListOf({'c'});
  Text const text({}, kLatin1);
  XoStringIterator iterator(text.Get(), kLatin1, kTraditionalSpanish);
  iterator.SetOverflow(&more, 255);
  // Nothing behind the terminator is read.
  EXPECT_EQ(iterator.GetNextOrder(1), OrderOf('c'));
  EXPECT_EQ(iterator.cursor, text.Get());
  EXPECT_EQ(iterator.GetNextOrder(1), 0);
}

}  // namespace
}  // namespace xo::test
