#pragma once

#include "base/export.hpp"

class XoString;
class XoStringIterator;

/// One character with its code set and language: bound to its place in a text, so that to assign to
/// it writes there, or unbound, with a value of its own.
///
/// A copy is never bound. A bound character must not outlive the text, nor any edit of the string
/// that holds it. As an argument a code set or language of 255 stands for the default, a byte order
/// of 255 for 1. A byte order is a format byte: 2 for most significant byte first; every other is
/// the machine's own order.
class XO_EXPORT XoChar {
 public:
  // The fields.
  char* binding;            ///< the place in a text, or null
  unsigned short value;     ///< the code of an unbound character
  unsigned char codeSet;    ///< as in `XoString`
  unsigned char language;   ///< as in `XoString`
  unsigned char byteOrder;  ///< of the code, where it takes two bytes

  /// Bound to the text of a string, `offset` bytes into it, which must be a place of the text.
  XoChar(XoString const& text, int offset);
  /// Unbound, with the code of `other`.
  XoChar(XoChar const& other);
  /// Unbound.
  XoChar(char character, unsigned char codeSet = 255, unsigned char language = 255);
  /// Unbound; of a narrow code set, the low byte counts.
  XoChar(unsigned short character, unsigned char codeSet = 255, unsigned char language = 255);
  /// Bound to `place`.
  XoChar(char const* place, unsigned char codeSet = 255, unsigned char language = 255,
         unsigned char byteOrder = 255);

  /// Unbound: takes everything from `other` but its binding. Bound: writes the character, converted
  /// to the own code set, in the own byte order.
  XoChar& operator=(XoChar const& other);
  /// Takes or writes one byte, as it is.
  XoChar& operator=(char character);
  /// Takes or writes a code, as it is; of a narrow code set one byte.
  XoChar& operator=(unsigned short character);

  /// The code in the own code set.
  unsigned short Code() const;

  /// Order of the two as texts of one character under `cmpOp` (65535: the default operator).
  /// `other` is the pattern where wildcards are on.
  int Compare(XoChar const& other, unsigned short cmpOp = 65535) const;
  bool operator==(XoChar const& other) const;
  bool operator!=(XoChar const& other) const;
  bool operator<(XoChar const& other) const;
  bool operator<=(XoChar const& other) const;
  bool operator>(XoChar const& other) const;
  bool operator>=(XoChar const& other) const;
  // With a character of the default 8-bit code set.
  bool operator==(char other) const;
  bool operator!=(char other) const;
  bool operator<(char other) const;
  bool operator<=(char other) const;
  bool operator>(char other) const;
  bool operator>=(char other) const;
  // With a character of the default 16-bit code set.
  bool operator==(unsigned short other) const;
  bool operator!=(unsigned short other) const;
  bool operator<(unsigned short other) const;
  bool operator<=(unsigned short other) const;
  bool operator>(unsigned short other) const;
  bool operator>=(unsigned short other) const;

  /// The sort order of the character by itself, in any language. One that the tables lack, from
  /// code 512 on, has its code for an order.
  unsigned short CharOrder() const;
  // The class of that order; exactly one holds. Each gives 1 or 0.
  int IsSpace() const;
  int IsSymbol() const;
  int IsDigit() const;
  int IsAlpha() const;
  int IsHan() const;

  /// The character in code set `set`; the same for 0 and for its own. A code set that does not
  /// exist takes the code as it is.
  XoChar MapTo(unsigned char set) const;
  /// The other case, where the character has one in its code set. Where the upper case has several
  /// characters this gives the first, and `iterator`, unless it is null, serves the others next.
  XoChar ToLower(XoStringIterator* iterator = nullptr) const;
  XoChar ToUpper(XoStringIterator* iterator = nullptr) const;

 private:
  void Write(unsigned short code);
};

/// What `Transform` does to each character; here nothing. The transform is the only virtual
/// operation: destroy an operation as what it is.
class XO_EXPORT XoCharOperation {
 public:
  /// Gives the character to write for `character`, which `iterator` stands on. It may give
  /// `iterator` further characters to serve next (`XoStringIterator::SetOverflow`); they come
  /// through the operation as well.
  virtual XoChar Transform(XoChar const& character, XoStringIterator& iterator);
};

class XO_EXPORT XoCharToUpper : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator& iterator) override;
};

class XO_EXPORT XoCharToLower : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator& iterator) override;
};
