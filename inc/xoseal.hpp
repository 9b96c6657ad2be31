#pragma once

#include <type_traits>

#include "xotypes.hpp"

class XoInt64;
class XoObjId;
class XoString;

/// A number of 48 bits in three words, without sign. It holds what an object's identity is told by,
/// or the lower 48 bits of an integer.
///
/// It is a plain value without constructors: `XoSeal seal{};` is zero. There is no null value. A
/// seal is stored most significant byte first, in every format.
class XO_EXPORT XoSeal {
 public:
  o_u2b top;     ///< bits 47 to 32
  o_u2b middle;  ///< bits 31 to 16
  o_u2b bottom;  ///< bits 15 to 0

  int operator==(XoSeal const& other) const {
    return top == other.top && middle == other.middle && bottom == other.bottom;
  }
  /// An order, not a yes or no: the difference of the first words that differ, from the top.
  int operator!=(XoSeal const& other) const;

  /// Takes the number of an object.
  void ConvertFrom(XoObjId const& source);
  // Take the lower 48 bits.
  void ConvertFrom(XoInt64 const& source);
  void ConvertFrom(o_8b const& source);
  // Give the number, which is never negative.
  void ConvertTo(XoInt64& target) const;
  void ConvertTo(o_8b& target) const;
  /// The same for the platform's other integers of 64 bits.
  template <class Integer>
  requires(std::is_integral_v<Integer> &&
           sizeof(Integer) == sizeof(o_8b)) void ConvertTo(Integer& target) const {
    o_8b number = 0;
    ConvertTo(number);
    target = static_cast<Integer>(number);
  }

  /// Appends the number in decimal to `out`, which it returns.
  XoString& PrintToXoString(XoString& out) const;
  /// Reads the number as `XoInt64` does under "%S", of which the lower 48 bits are taken, and all
  /// are 1 where the text is no number. An empty text is 0.
  void ScanFromXoString(XoString const& in);

  // Slots of the row.
  /// Reads no length, and sets no status but 0.
  static XCompare Compare;
  static TypeDescriptor::EvalAndBoundFunction EvalAndBound;
  /// Elements are read as in memory where the format's low nibble is 8 or 1.
  static TypeDescriptor::HashFunction Hash;
};

static_assert(sizeof(XoSeal) == 6);
