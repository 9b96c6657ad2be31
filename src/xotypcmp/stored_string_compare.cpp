#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "intl/records.hpp"
#include "src/xostring/order_keys.hpp"
#include "src/xotypcmp/key_compare.hpp"
#include "src/xotypcmp/string_rows.hpp"
#include "src/xotypcmp/text_compare.hpp"
#include "src/xotypes/stored_text.hpp"
#include "xoplainkeys.hpp"
#include "xostrcmp.hpp"
#include "xotypcmp.hpp"

using namespace xo;

namespace {

/// How many units of two texts are compared, and what is known of the end of that.
struct ComparedPart {
  std::size_t units;
  bool isPattern;  ///< it ends at an asterisk of the second text
  bool exceeds;    ///< what lies behind may matter
};

/// Which of two texts are cut.
struct Cut {
  bool first;
  bool second;
  bool Any() const { return first || second; }
  bool Both() const { return first && second; }
};

std::size_t UnitsOf(OperandText const& operand) {
  return operand.bytes / UnitSize(operand.codeSet);
}

/// The place of the first asterisk of a text, in units, or a negative number.
int FindAsterisk(OperandText const& operand, std::size_t units, unsigned char nibble) {
  return FindWildcard(operand.codeSet, operand.language, operand.text, 1, AsCount(units), nullptr,
                      nibble);
}

/// What can be compared of texts one of which is cut.
ComparedPart PartOf(OperandText const& first, OperandText const& second, Cut cut,
                    unsigned short cmpOp, unsigned char nibble) {
  std::size_t const units1 = UnitsOf(first);
  std::size_t const units2 = UnitsOf(second);
  bool const byPosition = (cmpOp & CmpOpPrefixResult) != 0;
  if ((cmpOp & kNoPattern) == 0) {
    int const asterisk = FindAsterisk(second, units2, nibble);
    if (asterisk >= 0) {
      std::size_t const place = static_cast<std::size_t>(asterisk);
      // A text that reaches to an asterisk which ends the pattern matches whatever follows.
      bool const settled =
          cut.first && !cut.second && !byPosition && place + 1 == units2 && units1 >= place;
      return {std::min(place, units1), true, !settled};
    }
  }
  if (cut.Both()) return {std::min(units1, units2), false, true};
  // A whole text that is the shorter one is decided within itself.
  bool const wholeIsShorter = cut.first ? units2 < units1 : units1 < units2;
  return {cut.first ? units1 : units2, false, !wholeIsShorter || byPosition};
}

/// Compares two texts one of which is cut.
int CompareCut(OperandText const& first, OperandText const& second, Cut cut, unsigned short cmpOp,
               unsigned char nibble, int& status) {
  ComparedPart const part = PartOf(first, second, cut, cmpOp, nibble);
  if (part.exceeds && status == 0) status = ERR_TM_LENGTH_EXCEEDED;
  int positional = 0;
  int result =
      XoStrCmp(first.codeSet, first.language, first.text, second.codeSet, second.language,
               second.text, cmpOp, static_cast<short>(AsCount(part.units)), nibble, &positional);
  std::size_t const units1 = UnitsOf(first);
  std::size_t const units2 = UnitsOf(second);
  if (result == 0 && units1 != units2 && !cut.Both()) {
    if (!part.isPattern) {
      result = units1 < units2 ? -1 : 1;
    } else if (cut.first && part.units == units2) {
      result = 1;
    } else if (cut.second && part.units == units1) {
      result = -1;
    }
  }
  return (cmpOp & CmpOpPrefixResult) != 0 ? positional : result;
}

/// Compares the texts of one element.
int CompareElement(OperandText first, OperandText second, unsigned short cmpOp,
                   unsigned char nibble, int& status) {
  if (first.text == nullptr || second.text == nullptr) {
    return (first.text != nullptr) - (second.text != nullptr);
  }
  Cut cut{first.isCut, second.isCut};
  auto const endsAtGroup = [](OperandText& key) {
    if (key.codeSet != kSortOrderSet || (key.language & kCutAtGroup) == 0) return false;
    key.language = static_cast<unsigned char>(key.language & ~kCutAtGroup);
    return true;
  };
  if (endsAtGroup(first)) status = ERR_TM_FIRST_KEY_CUT;
  if (endsAtGroup(second)) {
    status = status > 0 ? ERR_TM_FIRST_KEY_CUT : ERR_TM_SECOND_KEY_CUT;
    if ((cmpOp & kNoPattern) == 0) cut.second = true;
  }
  if (cut.Any()) return CompareCut(first, second, cut, cmpOp, nibble, status);
  return XoStrCmp(first.codeSet, first.language, first.text, second.codeSet, second.language,
                  second.text, cmpOp, -1, nibble);
}

/// The comparison of everything.
[[gnu::noinline]] int CompareStrings(unsigned char format, unsigned len1, void const* buf1,
                                     unsigned len2, void const* buf2, unsigned short cmpOp,
                                     unsigned count, int& status, bool cutIsOlder) {
  OperandReader first(buf1, len1, LengthRule::kShrinking, format, cutIsOlder);
  OperandReader second(buf2, len2, LengthRule::kShrinking, format, cutIsOlder);
  status = 0;
  int result = 0;
  while (count != 0 && result == 0 && status == 0) {
    OperandText const text1 = first.Read();
    OperandText const text2 = second.Read();
    if (text1.isUnreadable || text2.isUnreadable) {
      status = ERR_TM_NOT_SUPPORTED;
      return -1;
    }
    result = CompareElement(text1, text2, cmpOp, FormNibble(format), status);
    if (--count == 0) break;
    bool const goesOn1 = first.Advance();
    bool const goesOn2 = second.Advance();
    if (!goesOn1 || !goesOn2) status = ERR_TM_LENGTH_EXCEEDED;
  }
  return result;
}

// What follows compares single records that are there whole where they lie. It gives what
// `CompareStrings` gives, or nothing.

/// The length field of a record.
inline unsigned LengthOf(void const* record) { return LoadBytes<unsigned short>(record); }

/// Whether a record is there whole whose length field holds at least `least`. A declared length of
/// 0 becomes the greatest by the subtraction; the record may then end with its length field.
inline bool IsWhole(unsigned available, void const* record, unsigned least) {
  static_assert(kLengthBytes == 2);
  return available - 1 >= kLengthBytes - 1 && LengthOf(record) >= least &&
         available - 1 > LengthOf(record);
}

/// The code set and language of a record with a header.
inline unsigned short KindOf(void const* record) {
  return LoadBytes<unsigned short>(Advance(record, kLengthBytes));
}

/// Whether two records are keys of one plain kind that are there whole, with a header.
inline bool AreWholeKeys(unsigned len1, void const* buf1, unsigned len2, void const* buf2) {
  return IsWhole(len1, buf1, kHeaderBytes) && IsWhole(len2, buf2, kHeaderBytes) &&
         KindOf(buf1) == KindOf(buf2) && IsPlainKey(std::uint32_t{KindOf(buf1)} << 16);
}

/// The text of one byte a character of a record, if it can be read where it lies, or null.
inline char const* NarrowText(void const* record, unsigned available, bool isKey) {
  if (!IsWhole(available, record, kHeaderBytes)) return nullptr;
  unsigned const length = LengthOf(record);
  auto const codeSet = static_cast<unsigned char>(KindOf(record));
  if (codeSet == kNoCodeSet || IsWide(codeSet)) return nullptr;
  auto const* const bytes = static_cast<char const*>(record);
  if (bytes[length] != 0 || (!isKey && bytes[length + 1] == 0)) return nullptr;
  return bytes + kHeaderBytes;
}

/// Texts of one byte a character.
[[gnu::noinline]] bool CompareWholeTexts(bool isKey, unsigned len1, void const* buf1, unsigned len2,
                                         void const* buf2, unsigned short cmpOp, int& result) {
  char const* const text1 = NarrowText(buf1, len1, isKey);
  char const* const text2 = NarrowText(buf2, len2, isKey);
  if (text1 == nullptr || text2 == nullptr) return false;
  auto const* const record1 = static_cast<unsigned char const*>(buf1);
  auto const* const record2 = static_cast<unsigned char const*>(buf2);
  result =
      XoStrCmp(record1[2], record1[3], text1, record2[2], record2[3], text2, cmpOp, -1, FormLittle);
  return true;
}

}  // namespace

int xo::OlderStringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                           void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  return CompareStrings(format, len1, buf1, len2, buf2, cmpOp, count, status, true);
}

namespace {

/// Whether one of two keys ends in half an order.
inline bool HasHalfOrder(void const* buf1, void const* buf2) {
  return ((LengthOf(buf1) | LengthOf(buf2)) & 1) != 0;
}

/// The order at `place` of a key of whole orders, or 0 behind its last one.
inline unsigned OrderAt(void const* record, std::size_t place) {
  return place < LengthOf(record) ? LoadBytes<unsigned short>(Advance(record, place)) : 0;
}

/// The first order from `place` on that counts at the first level, if it is one of the first two.
inline unsigned SignificantOrderAt(void const* record, std::size_t place) {
  return OrderAt(record, place + (IsIgnorable(OrderAt(record, place)) ? 2 : 0));
}

/// The first four orders of a key, with zeros behind its end. Its length field is even.
inline OrderBlock FirstOrders(void const* record) {
  unsigned const length = LengthOf(record);
  if (length >= kLongLength) return LoadBytes<OrderBlock>(Advance(record, kHeaderBytes));
  if (length >= kBlockBytes)
    return LoadBytes<OrderBlock>(Advance(record, length - kBlockBytes)) >>
           (kLongLength - length) * 8;
  return length > kHeaderBytes ? LoadBytes<unsigned short>(Advance(record, kHeaderBytes)) : 0;
}

}  // namespace

int xo::CompareKeysFrom(void const* key1, void const* key2, unsigned short cmpOp,
                        std::size_t place) {
  auto const group = static_cast<unsigned char>(KindOf(key1) >> 8);
  if (!HasHalfOrder(key1, key2)) [[likely]] {
    unsigned const order1 = SignificantOrderAt(key1, place);
    unsigned const order2 = SignificantOrderAt(key2, place);
    int const difference = Difference(LetterKey(order1, group), LetterKey(order2, group));
    if (difference != 0 && !IsIgnorable(order1) && !IsIgnorable(order2)) [[likely]]
      return difference;
  }
  return CompareKeys({Advance(key1, kHeaderBytes), LengthOf(key1) - kHeaderBytes},
                     {Advance(key2, kHeaderBytes), LengthOf(key2) - kHeaderBytes}, group, cmpOp,
                     place - kHeaderBytes);
}

int xo::CompareBlocksBehind(void const* key1, void const* key2, unsigned short cmpOp,
                            std::size_t place) {
  std::size_t const last = LastBlock(std::min(LengthOf(key1), LengthOf(key2)));
  while (place != last) {
    place = std::min(place + kBlockBytes, last);
    BlockPair const pair(Advance(key1, place), Advance(key2, place));
    if (pair.Notable() != 0) return CompareAtPair(key1, key2, cmpOp, place, pair);
  }
  return CompareKeysFrom(key1, key2, cmpOp, place + kBlockBytes);
}

int xo::ComparePlainKeys(void const* key1, void const* key2, unsigned short cmpOp) {
  if (HasHalfOrder(key1, key2)) [[unlikely]]
    return CompareKeysFrom(key1, key2, cmpOp, kHeaderBytes);
  BlockPair const pair(FirstOrders(key1), FirstOrders(key2));
  if (pair.Notable() == 0) return CompareBlocksBehind(key1, key2, cmpOp, kHeaderBytes);
  return CompareAtPair(key1, key2, cmpOp, kHeaderBytes, pair);
}

namespace {

// What follows chooses the way for records as they come.

/// `StringCompare` of what first letters do not settle, neither those of keys nor those of texts.
[[gnu::noinline]] int CompareFurther(unsigned char format, unsigned len1, void* buf1, unsigned len2,
                                     void* buf2, unsigned short cmpOp, unsigned count,
                                     int& status) {
  if (count == 1 && (format & ~FormatIndexKey) == FormLittle) {
    bool const isKey = format != FormLittle;
    status = 0;
    if (isKey && (cmpOp & kNoPattern) == kCmpNoWildcards && AreWholeKeys(len1, buf1, len2, buf2)) {
      return ComparePlainKeys(buf1, buf2, cmpOp);
    }
    int result = 0;
    if (CompareWholeTexts(isKey, len1, buf1, len2, buf2, cmpOp, result)) return result;
  }
  return CompareStrings(format, len1, buf1, len2, buf2, cmpOp, count, status, false);
}

/// Compares whole texts of one byte a character, of one code set and language.
[[gnu::noinline]] int CompareAlikeTexts(void const* buf1, void const* buf2, unsigned short cmpOp) {
  unsigned short const kind = KindOf(buf1);
  auto const codeSet = static_cast<unsigned char>(kind);
  auto const language = static_cast<unsigned char>(kind >> 8);
  auto const* const text1 = static_cast<char const*>(buf1) + kHeaderBytes;
  auto const* const text2 = static_cast<char const*>(buf2) + kHeaderBytes;
  return XoStrCmp(codeSet, language, text1, codeSet, language, text2, cmpOp, -1, FormLittle);
}

/// Whether two records hold texts of one byte a character, of one code set and language, and are
/// there whole, with length fields of at least `least`.
inline bool AreWholeTexts(unsigned len1, void const* buf1, unsigned len2, void const* buf2,
                          unsigned least) {
  // A terminator, and an end mark, which an older record lacks.
  auto const closes = [](void const* record) {
    unsigned char const* const end = Advance(record, LengthOf(record));
    return end[0] == 0 && end[1] != 0;
  };
  return IsWhole(len1, buf1, least) && IsWhole(len2, buf2, least) && KindOf(buf1) == KindOf(buf2) &&
         !IsWide(static_cast<unsigned char>(KindOf(buf1))) && closes(buf1) && closes(buf2);
}

/// `StringCompare` of what the first letters of keys do not settle.
[[gnu::noinline]] int CompareTexts(unsigned char format, unsigned len1, void* buf1, unsigned len2,
                                   void* buf2, unsigned short cmpOp, unsigned count, int& status) {
  if (count == 1 && format == FormLittle && (cmpOp & kNoPattern) == kCmpNoWildcards &&
      AreWholeTexts(len1, buf1, len2, buf2, kTextBlockBytes - kLengthBytes)) [[likely]] {
    unsigned short const kind = KindOf(buf1);
    LetterHead const* const heads = intl::FindNarrowHeads(static_cast<unsigned char>(kind));
    XoLanguage const* const language = intl::FindLanguage(static_cast<unsigned char>(kind >> 8));
    if (heads != nullptr && language != nullptr) [[likely]] {
      std::size_t const end = std::min(LengthOf(buf1), LengthOf(buf2)) + kLengthBytes;
      status = 0;
      int const letters = DifferenceOfTexts(heads, language->variantFlag, Advance(buf1, 0),
                                            Advance(buf2, 0), kHeaderBytes, end);
      return letters != 0 ? letters : CompareAlikeTexts(buf1, buf2, cmpOp);
    }
  }
  return CompareFurther(format, len1, buf1, len2, buf2, cmpOp, count, status);
}

}  // namespace

int StringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                  void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  return CompareByFirstLetters(CompareTexts, format, len1, buf1, len2, buf2, cmpOp, count, status);
}
