#pragma once

#include <cstddef>

#include "base/export.hpp"

class XoString;
class XoTypeMgr;

/// Carries an array of values, in conversions an array of strings.
///
/// With a manager as its owner it frees the array at its end, through that manager. Without one the
/// array is left alone. Either way `type` and `count` then show an empty carrier.
class XO_EXPORT XoTypeConvertData {
 public:
  // May be read and written.
  XoTypeMgr* manager;  ///< the owner, or null
  void* data;          ///< the array, as the row's `Create` gave it
  unsigned count;      ///< its number of elements
  char type;           ///< their type; `XoRES_T` when the carrier is empty

  /// Empty, without owner.
  XoTypeConvertData();
  ~XoTypeConvertData();
  XoTypeConvertData(XoTypeConvertData const&) = delete;
  XoTypeConvertData& operator=(XoTypeConvertData const&) = delete;

  /// A new carrier of these values, to be freed with `delete`.
  static XoTypeConvertData* Make(char type, unsigned count, void* data, XoTypeMgr* manager);

  /// The string `index`; null outside the array, and in a carrier of no strings.
  XoString* GetString(int index) const;

  // Carriers come from the library's own memory, whichever module frees them.
  static void* operator new(std::size_t size);
  static void operator delete(void* memory);
};

/// Conversions of rows, arrays of values to arrays of strings and back.
///
/// `XxxConvertToXoString` gives a new carrier, without owner, of `count` strings. Numbers are in
/// decimal, floating-point ones with 17 digits.
///
/// `XxxConvertFromXoString` gives a new array of `count` values, the caller's to delete through the
/// row. A string that is missing or null, also where there is no carrier, counts as an empty one,
/// which reads as 0. Text reads as the conversions of `XoString` to numbers read it, and integers
/// are cut to their width. Unsigned ones of 32 bits read by way of a floating-point number, so
/// "3.7" gives 3, those of 64 bits by way of a signed one.
using XoConvertTo = XoTypeConvertData*(void* values, unsigned count);
using XoConvertFrom = void*(XoTypeConvertData* strings, unsigned count);

XO_EXPORT XoConvertTo CharConvertToXoString;
XO_EXPORT XoConvertFrom CharConvertFromXoString;
XO_EXPORT XoConvertTo O_U1BConvertToXoString;
XO_EXPORT XoConvertFrom O_U1BConvertFromXoString;
XO_EXPORT XoConvertTo ShortConvertToXoString;
XO_EXPORT XoConvertFrom ShortConvertFromXoString;
XO_EXPORT XoConvertTo WordConvertToXoString;
XO_EXPORT XoConvertFrom WordConvertFromXoString;
XO_EXPORT XoConvertTo LongConvertToXoString;
XO_EXPORT XoConvertFrom LongConvertFromXoString;
XO_EXPORT XoConvertTo DwordConvertToXoString;  ///< also of `BlockId`
XO_EXPORT XoConvertFrom DwordConvertFromXoString;
XO_EXPORT XoConvertTo IntConvertToXoString;  ///< also of `enum`
XO_EXPORT XoConvertFrom IntConvertFromXoString;
XO_EXPORT XoConvertTo UnsignedConvertToXoString;
XO_EXPORT XoConvertFrom UnsignedConvertFromXoString;
XO_EXPORT XoConvertTo O_8BConvertToXoString;
XO_EXPORT XoConvertFrom O_8BConvertFromXoString;
XO_EXPORT XoConvertTo O_U8BConvertToXoString;
XO_EXPORT XoConvertFrom O_U8BConvertFromXoString;
XO_EXPORT XoConvertTo FloatConvertToXoString;
XO_EXPORT XoConvertFrom FloatConvertFromXoString;
XO_EXPORT XoConvertTo DoubleConvertToXoString;
XO_EXPORT XoConvertFrom DoubleConvertFromXoString;

/// `XoInt64`: text reads by `XoInt64::ScanFromXoString` under "%S", so -1 where it is no number.
XO_EXPORT XoConvertTo Int64ConvertToXoString;
XO_EXPORT XoConvertFrom Int64ConvertFromXoString;
/// `XoBoolean`: "1" or "0", and a null string for null. A string that is missing or null gives
/// null, every other the truth of its first character being "1".
XO_EXPORT XoConvertTo BooleanConvertToXoString;
XO_EXPORT XoConvertFrom BooleanConvertFromXoString;
// Conversions of the text rows: copies of the text. A string that is missing or null gives a null
// string, and an empty weighted text, which knows no null.
XO_EXPORT XoConvertTo StringConvertToXoString;
XO_EXPORT XoConvertFrom StringConvertFromXoString;
XO_EXPORT XoConvertTo XoIStringConvertToXoString;
XO_EXPORT XoConvertFrom XoIStringConvertFromXoString;
XO_EXPORT XoConvertTo XoCaseIStringConvertToXoString;
XO_EXPORT XoConvertFrom XoCaseIStringConvertFromXoString;
