#include <cstddef>

#include "src/xostring/order_keys.hpp"
#include "src/xotypcmp/string_rows.hpp"
#include "src/xotypes/stored_text.hpp"
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

// What follows compares whole keys where they lie. It gives what `CompareStrings` gives, or
// nothing.

/// A whole key of a group, in the machine's order.
struct WholeKey {
  unsigned char const* orders;
  std::size_t bytes;
};

/// The unit whose bytes begin at `offset`, or the end of the key.
unsigned short OrderAt(WholeKey const& key, std::size_t offset) {
  return offset < key.bytes ? LoadBytes<unsigned short>(key.orders + offset)
                            : static_cast<unsigned short>(0);
}

/// Whether one of four units is zero.
constexpr bool HasZeroUnit(std::uint64_t units) {
  constexpr std::uint64_t kOnes = 0x0001000100010001;
  return ((units - kOnes) & ~units & kOnes << 15) != 0;
}

constexpr bool IsSkippable(unsigned short order) {
  return order != 0 && order < kFirstSignificantOrder;
}

/// Finds the first unit in which two keys differ, and decides by it where letters decide.
bool DecideByFirstDifference(WholeKey const& a, WholeKey const& b, unsigned char group,
                             int& result) {
  std::size_t const common = std::min(a.bytes, b.bytes);
  std::size_t offset = 0;
  for (; offset + 8 <= common; offset += 8) {
    auto const four = LoadBytes<std::uint64_t>(a.orders + offset);
    if (HasZeroUnit(four)) return false;
    if (four != LoadBytes<std::uint64_t>(b.orders + offset)) break;
  }
  for (;; offset += 2) {
    unsigned short const order1 = OrderAt(a, offset);
    unsigned short const order2 = OrderAt(b, offset);
    if (order1 == order2) {
      // What stands behind a zero does not count.
      if (order1 != 0) continue;
      result = 0;
      return true;
    }
    if (IsSkippable(order1) || IsSkippable(order2)) return false;
    result = Difference(LetterLevel(KeyOf(order1, group)), LetterLevel(KeyOf(order2, group)));
    return result != 0;
  }
}

/// A record of code set 254 in the form of index keys, little-endian, that is there whole.
bool IsWholeKey(unsigned char const* record, unsigned length, WholeKey& key) {
  if (length != 0 && length < kEmptyRecordBytes) return false;
  unsigned const bytes = LoadBytes<unsigned short>(record);
  if (bytes < kHeaderBytes || (length != 0 && length < bytes + kLengthBytes)) return false;
  if (record[2] != kSortOrderSet) return false;
  key = {record + kHeaderBytes, bytes - kHeaderBytes};
  return key.bytes % 2 == 0;
}

bool CompareWholeKeys(unsigned char format, unsigned len1, void const* buf1, unsigned len2,
                      void const* buf2, unsigned short cmpOp, int& result) {
  if (format != (FormatIndexKey | FormLittle) || (cmpOp & kNoPattern) != kCmpNoWildcards) {
    return false;
  }
  auto const* const record1 = static_cast<unsigned char const*>(buf1);
  auto const* const record2 = static_cast<unsigned char const*>(buf2);
  WholeKey key1;
  WholeKey key2;
  if (!IsWholeKey(record1, len1, key1) || !IsWholeKey(record2, len2, key2)) return false;
  unsigned char const group = record1[3];
  // Neither null nor cut, and of one group.
  if (group != record2[3] || group == 0 || group >= kCutAtGroup) return false;
  return DecideByFirstDifference(key1, key2, group, result);
}

}  // namespace

int xo::OlderStringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                           void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  return CompareStrings(format, len1, buf1, len2, buf2, cmpOp, count, status, true);
}

int StringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                  void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  int result = 0;
  if (count == 1 && CompareWholeKeys(format, len1, buf1, len2, buf2, cmpOp, result)) {
    status = 0;
    return result;
  }
  return CompareStrings(format, len1, buf1, len2, buf2, cmpOp, count, status, false);
}
