#pragma once

#include "base/export.hpp"

class XoStringIterator;

/// The order of two texts: negative, 0 or positive.
///
/// Texts compare by the sort orders of their characters, across code sets, in levels: all letters
/// first; then accents, of which the last difference decides; then case, of which the first decides
/// and lower case comes first; then spaces and symbols. Two null strings are equal; a null string
/// comes before every other.
///
/// `cmpOp` is a sum of the bits below. Without `kCmpNoWildcards` the second text is a pattern, and
/// 0 means that the first one matches: the asterisk stands for any run of characters, the question
/// mark for any one. `count` is the number of orders to read of each side at most (-1: all; 0: the
/// texts are equal at once). Texts are ended by a zero unit, or `count` orders of which none may
/// contract with what follows; a null pointer reads as an empty text.
/// Two texts without a code set (0) compare by their bytes; where only one has none, it is of the
/// native code set. `byteOrder` is that of both texts where characters take two bytes. `positional`
/// may be null; see `kCmpSkipSpaces`.
XO_EXPORT int XoStrCmp(unsigned char codeSet1, unsigned char language1, char const* text1,
                       unsigned char codeSet2, unsigned char language2, char const* text2,
                       unsigned short cmpOp, short count = -1, unsigned char byteOrder = 1,
                       int* positional = nullptr);

inline constexpr unsigned short kCmpNoWildcards = 0x0010;    ///< the second text is no pattern
inline constexpr unsigned short kCmpIgnoreCase = 0x0020;     ///< without the case level
inline constexpr unsigned short kCmpIgnoreAccents = 0x0040;  ///< without the accent level
/// Spaces are skipped. Besides, with a `count` above 0, `positional` receives the difference
/// of letters of the last step within `count`.
inline constexpr unsigned short kCmpSkipSpaces = 0x0080;
inline constexpr unsigned short kCmpPlainOrders = 0x0100;  ///< by order keys alone, no levels
inline constexpr unsigned short kCmpSkipSymbols = 0x0200;  ///< symbols are skipped

namespace xo {
/// Bits of an operator by which the operands are not a text and a pattern.
inline constexpr unsigned short kNoPattern = kCmpNoWildcards | kCmpPlainOrders;
}  // namespace xo

/// The sort key of an order in a group: its bits rank the levels. The group stands in bits 24 to
/// 31; of a letter, letter and extension above bit 6, case in bits 5 and 6, accent below. 0 for
/// order 0.
XO_EXPORT unsigned OrderKey(unsigned short order, unsigned char group);

/// Order of the order keys of two texts from where the iterators stand: the difference of the first
/// keys that differ within `count` steps, or at the end of either.
XO_EXPORT int CompareOrdersOnly(XoStringIterator& iterator1, XoStringIterator& iterator2,
                                unsigned short count);

/// Difference of the first bytes that differ, read as unsigned, up to the terminator or, with a
/// `count` other than 0, that many bytes. A null pointer reads as an empty text.
XO_EXPORT int BinaryCompare(char const* a, char const* b, unsigned short count);

/// 0 when `text` matches `pattern`, in which the bytes '*' and '?' are wildcards, to the end or
/// within the first `count` bytes (-1: all). Null pointers: a null pattern gives 1 for a text that
/// is not empty, else 0; a null text 0 for an empty pattern, else -1.
///
/// A question mark right behind an asterisk is looked for as a byte. A star may have to be tried
/// from several places; bytes of the text that are then read again count again.
XO_EXPORT int BinaryWildcardMatch(char const* pattern, char const* text, short count);

/// Position of the first wildcard among the first `maxCount` characters of `text`, or -1. With
/// `asteriskOnly` other than 0 the question mark does not count. `byteOffset`, unless null,
/// receives its place in bytes, or 65535. Without a code set the bytes '*' and '?' count; otherwise
/// a wildcard is known by its order.
XO_EXPORT int FindWildcard(unsigned char codeSet, unsigned char language, char const* text,
                           int asteriskOnly, unsigned short maxCount, unsigned short* byteOffset,
                           unsigned char byteOrder);

/// The orders that wildcards have in patterns: those of '*', '?' and '\' in code set 1, or what
/// `XoString::SetAsterisk` and its like have set.
XO_EXPORT unsigned short AsteriskOrder();
XO_EXPORT unsigned short QuestionOrder();
XO_EXPORT unsigned short EscapeOrder();
