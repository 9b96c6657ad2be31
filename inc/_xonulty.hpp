#pragma once

#include "xoint64.hpp"
#include "xostringhash.hpp"
#include "xotypes.hpp"

/// Plain numbers that can be null, one class for each row of the table.

/// Which of two values are null.
enum NullRelation {
  kBothNull = 0,
  kOnlyFirstNull = 1,
  kOnlySecondNull = 2,
  kNeitherNull = 3,
};

constexpr NullRelation XoNullRelation(bool firstIsNull, bool secondIsNull) {
  if (firstIsNull) return secondIsNull ? kBothNull : kOnlyFirstNull;
  return secondIsNull ? kOnlySecondNull : kNeitherNull;
}

/// Order of two values of which one at least is null: null comes first. It is a fault to ask it of
/// `kNeitherNull`, reported through `XOLA_assert`, and gives -2.
XO_EXPORT int XoNullOrder(NullRelation relation);

/// A number, then a byte that is 1 when there is none; the number is 0 then. `kRow` is the row of
/// the class, which tells apart classes of the same number.
template <class Value, XoTypeId kRow>
class XoNullElement {
 public:
  using Plain = Value;
  static constexpr XoTypeId kTypeId = kRow;

  // May be read and written.
  Value value;
  unsigned char isNull;

  /// Null.
  constexpr XoNullElement() : value(0), isNull(1) {}
  constexpr XoNullElement(Value number) : value(number), isNull(0) {}

  constexpr int IsNullValue() const { return isNull; }
  /// Returns 0.
  constexpr int SetNullValue() {
    *this = XoNullElement();
    return 0;
  }

  /// The number, 0 for null.
  constexpr operator Value() const { return value; }
};

using XoNull_char = XoNullElement<o_char, XoNULL_1B_T>;
using XoNull_uchar = XoNullElement<o_u1b, XoNULL_U1B_T>;
using XoNull_short = XoNullElement<o_2b, XoNULL_2B_T>;
using XoNull_ushort = XoNullElement<o_u2b, XoNULL_U2B_T>;
using XoNull_int = XoNullElement<o_4b, XoNULL_INT_T>;
using XoNull_unsigned = XoNullElement<o_u4b, XoNULL_UNSIGNED_T>;
using XoNull_long = XoNullElement<o_4b, XoNULL_4B_T>;
using XoNull_ulong = XoNullElement<o_u4b, XoNULL_U4B_T>;
using XoNull_float = XoNullElement<o_float, XoNULL_FLOAT_T>;
using XoNull_double = XoNullElement<o_double, XoNULL_DOUBLE_T>;
using XoNull_XoInt64 = XoNullElement<XoInt64, XoNULL_XOINT64_T>;
using XoNull_8b = XoNullElement<o_8b, XoNULL_8B_T>;
using XoNull_u8b = XoNullElement<o_u8b, XoNULL_U8B_T>;

static_assert(sizeof(XoNull_char) == 2 && sizeof(XoNull_short) == 4 && sizeof(XoNull_int) == 8);
static_assert(sizeof(XoNull_double) == 16 && sizeof(XoNull_8b) == 16);
static_assert(sizeof(XoNull_XoInt64) == 12);
