#include <cstring>

#include "src/xostring/level_comparison.hpp"
#include "src/xostring/order_keys.hpp"
#include "src/xostring/plain_lane.hpp"
#include "src/xostring/text_units.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"

using namespace xo;

namespace {

/// A count that does not limit.
constexpr unsigned short kToTheEnd = 65535;

}  // namespace

unsigned OrderKey(unsigned short order, unsigned char group) { return KeyOf(order, group); }

int CompareOrdersOnly(XoStringIterator& iterator1, XoStringIterator& iterator2,
                      unsigned short count) {
  int difference = 0;
  for (unsigned step = 0; count == kToTheEnd || step < count; ++step) {
    unsigned short const order1 = iterator1.GetNextOrder(1);
    unsigned short const order2 = iterator2.GetNextOrder(1);
    difference =
        Difference(KeyOf(order1, iterator1.orderGroup), KeyOf(order2, iterator2.orderGroup));
    if (difference != 0 || order1 == 0 || order2 == 0) break;
  }
  return difference;
}

namespace {

/// Compares by orders, from the iterators on.
int CompareGenerally(XoStringIterator& iterator1, XoStringIterator& iterator2, unsigned short cmpOp,
                     short count, LevelDifferences before, int* positional) {
  if ((cmpOp & kCmpPlainOrders) != 0) {
    return CompareOrdersOnly(iterator1, iterator2, static_cast<unsigned short>(count));
  }
  return LevelComparison(iterator1, iterator2, cmpOp, count, before).Run(positional);
}

/// Two texts that are not null, one of them at least with a code set.
int CompareTexts(unsigned char codeSet1, unsigned char language1, char const* text1,
                 unsigned char codeSet2, unsigned char language2, char const* text2,
                 unsigned short cmpOp, short count, unsigned char byteOrder, int* positional) {
  XoStringIterator iterator1(OrEmptyText(text1), CodeSetOrNative(codeSet1), language1, byteOrder);
  XoStringIterator iterator2(OrEmptyText(text2), CodeSetOrNative(codeSet2), language2, byteOrder);
  return CompareGenerally(iterator1, iterator2, cmpOp, count, {}, positional);
}

/// Compares two texts of one language and code set, in the fast lane as far as that goes.
template <class Units>
[[gnu::noinline]] int CompareInLane(PlainReader<Units> reader, char const* text1, char const* text2,
                                    unsigned short cmpOp, short count) {
  LaneResult lane;
  if ((cmpOp & kCmpPlainOrders) == 0) {
    lane = count == -1 ? RunPlainLane<false>(reader, text1, text2, cmpOp, 0)
                       : RunPlainLane<true>(reader, text1, text2, cmpOp,
                                            static_cast<unsigned short>(count));
    if (lane.isDecided) return lane.outcome;
  }
  bool const anew = lane.at1 == nullptr;
  XoStringIterator iterator1(anew ? text1 : lane.at1, reader.codeSet.number, reader.language);
  XoStringIterator iterator2(anew ? text2 : lane.at2, reader.codeSet.number, reader.language);
  return CompareGenerally(iterator1, iterator2, cmpOp, count, lane.before, nullptr);
}

/// Compares two texts of one code set and language from their start, without pattern.
template <class Units>
[[gnu::noinline]] int CompareAlike(unsigned char codeSet, unsigned char language, char const* text1,
                                   char const* text2, unsigned short cmpOp, short count) {
  XoCodeSet const* const record = intl::FindCodeSet(codeSet);
  if (record == nullptr || record->orderTable == nullptr) {
    return CompareTexts(codeSet, language, text1, codeSet, language, text2, cmpOp, count,
                        FormLittle, nullptr);
  }
  PlainReader<Units> const reader(*record, language);
  if (count != -1 && (cmpOp & kCmpPlainOrders) == 0) {
    // No more than the first order of each side is sure to count.
    int const letters = DifferenceOfLetters<Units>(record->orderTable->Heads(), reader.variants,
                                                   Units::Get(text1), Units::Get(text2));
    if (letters != 0) return letters;
  }
  return CompareInLane(reader, text1, text2, cmpOp, count);
}

/// Whether the fast lane may be taken: both texts are of one language and code set, which are given
/// as such, there is no pattern, and nobody asks for the position.
bool AreAlike(unsigned char codeSet1, unsigned char language1, char const* text1,
              unsigned char codeSet2, unsigned char language2, char const* text2,
              unsigned short cmpOp, unsigned char byteOrder, int const* positional) {
  return codeSet1 == codeSet2 && language1 == language2 && (cmpOp & kNoPattern) != 0 &&
         codeSet1 != kNoCodeSet && codeSet1 < kSortOrderSet && language1 < kNullLanguage &&
         text1 != nullptr && text2 != nullptr && byteOrder != FormBig && positional == nullptr;
}

/// `XoStrCmp` for everything that letters alone do not settle.
[[gnu::noinline]] int CompareAny(unsigned char codeSet1, unsigned char language1, char const* text1,
                                 unsigned char codeSet2, unsigned char language2, char const* text2,
                                 unsigned short cmpOp, short count, unsigned char byteOrder,
                                 int* positional) {
  if (count != 0 && AreAlike(codeSet1, language1, text1, codeSet2, language2, text2, cmpOp,
                             byteOrder, positional)) {
    return IsWide(codeSet1)
               ? CompareAlike<WideUnits>(codeSet1, language1, text1, text2, cmpOp, count)
               : CompareAlike<NarrowUnits>(codeSet1, language1, text1, text2, cmpOp, count);
  }
  bool const null1 = IsNullText(codeSet1, language1);
  bool const null2 = IsNullText(codeSet2, language2);
  bool const noPattern = (cmpOp & kNoPattern) != 0;
  if (null2) return null1 ? 0 : 1;
  // A null text may still match a pattern, as an empty one.
  if (null1 && noPattern) return -1;
  if (null1) text1 = kEmptyText;
  if (count == 0) return 0;
  if (codeSet1 == kNoCodeSet && codeSet2 == kNoCodeSet) {
    if (!noPattern) return BinaryWildcardMatch(text2, OrEmptyText(text1), count);
    return BinaryCompare(text1, text2, static_cast<unsigned short>(count == -1 ? 0 : count));
  }
  return CompareTexts(codeSet1, language1, text1, codeSet2, language2, text2, cmpOp, count,
                      byteOrder, positional);
}

/// Compares two whole texts of one code set and language that their first letters do not settle.
/// `same` leading bytes, up to `kFar`, are the same on both sides.
template <class Units>
[[gnu::noinline]] int CompareFurther(unsigned char codeSet, unsigned char language,
                                     char const* text1, char const* text2, unsigned short cmpOp,
                                     std::size_t same = 0) {
  OrderTable const* const table = intl::FindOrderTable(codeSet);
  XoLanguage const* const record = intl::FindLanguage(language);
  if (table != nullptr && record != nullptr) {
    int const outcome =
        CompareLetters<Units>(*table, record->variantFlag, text1, text2, same, cmpOp);
    if (outcome != kUnsettled) return outcome;
  }
  return CompareAny(codeSet, language, text1, codeSet, language, text2, cmpOp, -1, FormLittle,
                    nullptr);
}

/// Whether more than the letters may begin at a place of two texts, of which `both` are the heads.
template <class Units>
[[gnu::always_inline]] inline bool MayBeMoreAt(LetterHead both, unsigned char variants,
                                               char const* text1, char const* text2,
                                               std::size_t place) {
  std::size_t const next = place + Units::kSize;
  return both.MayBeMore(variants) || Units::IsMarkAt(text1 + next) || Units::IsMarkAt(text2 + next);
}

/// Compares two whole texts of one code set and language, without a pattern. Words mostly differ in
/// a letter soon: that is settled here without a call, so that nothing has to be kept in memory.
template <class Units>
[[gnu::always_inline]] inline int CompareWhole(unsigned char codeSet, unsigned char language,
                                               char const* text1, char const* text2,
                                               unsigned short cmpOp) {
  LetterHead const* const heads = Units::Heads(codeSet);
  XoLanguage const* const record = intl::FindLanguage(language);
  if (heads == nullptr || record == nullptr) [[unlikely]]
    return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
  unsigned char const variants = record->variantFlag;
  // The first letters are looked at as such: that they are the same, but perhaps a capital on one
  // side, is easier to foretell than whether they are the same characters.
  unsigned const first1 = Units::Get(text1);
  unsigned const first2 = Units::Get(text2);
  if (!Units::HaveHeads(first1 | first2)) [[unlikely]]
    return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
  LetterHead const start1 = heads[first1];
  LetterHead const start2 = heads[first2];
  if ((start1 | start2).IsUnsettled(variants)) [[unlikely]] {
    if (first1 != first2) return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
  } else {
    int const letters = start1.LetterDifference(start2);
    if (letters != 0) return letters;
    if (first1 == 0) return 0;
    if (MayBeMoreAt<Units>(start1 | start2, variants, text1, text2, 0) && first1 != first2)
        [[unlikely]]
      return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
  }
  // Unrolled, since how far two words go together is foretold best of each place by itself.
#pragma GCC unroll 16
  for (std::size_t place = Units::kSize; place != kFar<Units>; place += Units::kSize) {
    unsigned const code1 = Units::Get(text1 + place);
    unsigned const code2 = Units::Get(text2 + place);
    if (code1 == code2) {
      if (code1 != 0) continue;
      return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
    }
    if (!Units::HaveHeads(code1 | code2))
      return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
    LetterHead const head1 = heads[code1];
    LetterHead const head2 = heads[code2];
    if ((head1 | head2).IsUnsettled(variants))
      return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
    int const letters = head1.LetterDifference(head2);
    if (letters != 0) [[likely]]
      return letters;
    // The same letter in another case: the next ones that differ may be others.
    if (MayBeMoreAt<Units>(head1 | head2, variants, text1, text2, place))
      return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp);
  }
  bool const isSame = std::memcmp(text1, text2, kFar<Units>) == 0;
  return CompareFurther<Units>(codeSet, language, text1, text2, cmpOp, isSame ? kFar<Units> : 0);
}

[[gnu::noinline]] int CompareWholeWide(unsigned char codeSet, unsigned char language,
                                       char const* text1, char const* text2, unsigned short cmpOp) {
  return CompareWhole<WideUnits>(codeSet, language, text1, text2, cmpOp);
}

}  // namespace

int XoStrCmp(unsigned char codeSet1, unsigned char language1, char const* text1,
             unsigned char codeSet2, unsigned char language2, char const* text2,
             unsigned short cmpOp, short count, unsigned char byteOrder, int* positional) {
  if (codeSet1 == codeSet2 && language1 == language2 && text1 != nullptr && text2 != nullptr &&
      (cmpOp & kNoPattern) == kCmpNoWildcards && count == -1 && byteOrder != FormBig &&
      positional == nullptr) {
    if (IsWide(codeSet1)) return CompareWholeWide(codeSet1, language1, text1, text2, cmpOp);
    return CompareWhole<NarrowUnits>(codeSet1, language1, text1, text2, cmpOp);
  }
  return CompareAny(codeSet1, language1, text1, codeSet2, language2, text2, cmpOp, count, byteOrder,
                    positional);
}

// Operators of strings.

int XoString::Compare(XoString const& other, short count, unsigned short cmpOp) const {
  return XoStrCmp(codeSet, language, text, other.codeSet, other.language, other.text,
                  OperatorOrDefault(cmpOp), count);
}

bool XoString::operator==(XoString const& other) const {
  return this == &other || Compare(other) == 0;
}
bool XoString::operator!=(XoString const& other) const { return Compare(other) != 0; }
bool XoString::operator<(XoString const& other) const { return Compare(other) < 0; }
bool XoString::operator<=(XoString const& other) const { return Compare(other) <= 0; }
bool XoString::operator>(XoString const& other) const { return Compare(other) > 0; }
bool XoString::operator>=(XoString const& other) const { return Compare(other) >= 0; }

int XoString::EqualsIgnoreLanguage(XoString const& other) const {
  // The languages that differ are those of null strings, too: such a string is empty here.
  unsigned char const common =
      language == other.language ? language : static_cast<unsigned char>(0);
  return XoStrCmp(codeSet, common, text, other.codeSet, common, other.text, kCmpPlainOrders) == 0;
}
