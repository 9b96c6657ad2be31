#pragma once

#include "xotypes.hpp"

/// The comparisons of the plain scalars, each with the signature and the contract of `XCompare`.
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
