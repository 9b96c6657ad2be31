#pragma once

#include "xotypes.hpp"

/// The comparisons of the numbers, each with the signature and the contract of `XCompare`.
///
/// Unless noted, an element is read in place when the format's low nibble is 8 or 1, and through
/// the disk helper of its type otherwise. The result is -1, 0 or 1. `cmpOp` is not read.

XO_EXPORT XCompare CharCompare;      ///< `o_char`, signed; the format is not looked at
XO_EXPORT XCompare ByteCompare;      ///< `o_u1b`, unsigned; the format is not looked at
XO_EXPORT XCompare ShortCompare;     ///< `o_2b`; swapped under `FormBig`, in place otherwise
XO_EXPORT XCompare WordCompare;      ///< `o_u2b`; as `ShortCompare`
XO_EXPORT XCompare LongCompare;      ///< `o_4b`
XO_EXPORT XCompare DwordCompare;     ///< `o_u4b`, `BlockId`
XO_EXPORT XCompare IntCompare;       ///< `int`, `enum`; disk width as `IntSizeGet` says
XO_EXPORT XCompare UnsignedCompare;  ///< `unsigned`; disk width as `IntSizeGet` says
XO_EXPORT XCompare O_8BCompare;      ///< `o_8b`
XO_EXPORT XCompare O_U8BCompare;     ///< `o_u8b`

/// Floating point in a total order: NaN, negative infinity, the finite numbers, positive infinity.
/// All NaNs are equal to one another, and -0 equals +0.
XO_EXPORT XCompare FloatCompare;   ///< `o_float`
XO_EXPORT XCompare DoubleCompare;  ///< `o_double`

XO_EXPORT XCompare Int64Compare;  ///< `XoInt64`
/// `XoBoolean`: null, then by the signed bytes, so false before true.
XO_EXPORT XCompare BooleanCompare;

/// The comparison of strings: records as `StringStore` writes them, older records, and index keys,
/// by their sort orders as `XoStrCmp` orders them under `cmpOp`, which may make the second operand
/// a pattern. Result and `status` are told at `XCompare`; the result is that of `XoStrCmp`.
///
/// An operand is cut where its length ends more than one byte before the end of its record. What is
/// there is compared; where that is equal, the operand with more of it is the greater. The status
/// is `ERR_TM_LENGTH_EXCEEDED` unless the other operand is whole and the shorter one. A cut operand
/// of 254 bytes of text or more has no answer (`ERR_TM_NOT_SUPPORTED`, -1). Lengths are limits
/// here: nothing is read behind them, and in memory form they are not looked at. In memory form a
/// string without any text comes before one with text, whatever the pattern.
XO_EXPORT XCompare StringCompare;
// Dates, times and spans. In memory form the result is what `Compare` of the class gives, where a
// wildcard field, -1 on either side, equals every value unless `cmpOp` has `CmpOpNoWildcards`. In
// every other form the fields are compared where they lie, as signed numbers, the year and the
// nanoseconds in the format's byte order; the result is -1, 0 or 1, and the wildcards of the second
// operand alone count.
XO_EXPORT XCompare XoDateCompare;
XO_EXPORT XCompare XoTimeCompare;
XO_EXPORT XCompare XoDateTimeCompare;
XO_EXPORT XCompare XoDateTimeNCompare;
XO_EXPORT XCompare XoTimeSpanCompare;
/// Dates and times of the ODMG classes. In memory form the result is the difference that
/// `operator!=` of the class gives. In every other form the fields are compared where they lie, in
/// the order of the record: the year without a sign, in the format's byte order, all others as
/// signed bytes; the result is -1, 0 or 1. There, unless `cmpOp` has `CmpOpNoWildcards`, a date
/// field that is -1 in the second operand equals every value.
XO_EXPORT XCompare d_DateCompare;
XO_EXPORT XCompare d_TimeCompare;
XO_EXPORT XCompare d_TimestampCompare;

/// The comparisons of `XoIString` and `XoCaseIString`, by weights, or by bytes where the first
/// operand is an index key, whose texts are weights. Without `CmpOpNoWildcards` and
/// `CmpOpBinaryOrder` the second text may be a pattern: '*' stands for any run, '?' for one
/// character, and a backslash takes the next character as it is ("\\n", "\\r" and "\\t" are line
/// feed, return and tab). A first operand that is cut is compared without its last byte, with
/// `ERR_TM_LENGTH_EXCEEDED`; of a second that is cut the last byte counts as its end, and one of
/// 254 bytes or more has no answer (`ERR_TM_NOT_SUPPORTED`, -1). Nothing is read behind a length.
XO_EXPORT XCompare XoIStringCompare;
XO_EXPORT XCompare XoCaseIStringCompare;
/// The comparison of blobs. In memory as `XoBlob::operator!=` does; stored, by the bytes of the
/// elements and then by their lengths, -2 and 2 where one is null. The width of a length word is
/// counted into each element, so that the word behind an element may be compared with it, and of
/// arrays other places are read than where the elements are. With lengths given nothing is read
/// behind them. With a length of 0 the buffer must reach one word further than its record. No
/// status is set.
XO_EXPORT XCompare BlobCompare;
