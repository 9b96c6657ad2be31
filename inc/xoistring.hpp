#pragma once

#include "base/export.hpp"

class XO_EXPORT XoIString;
class XO_EXPORT XoCaseIString;

namespace xo {

/// What `XoIString` and `XoCaseIString`, the two `Text` classes, have in common.
///
/// A text of bytes of a Western code page that carries its collation with it: it compares by
/// weights, of which each byte has one or two, and needs no code set, no language and no tables of
/// the internationalisation module. It is its own heap block with a terminator, null when empty, of
/// any length; positions and counts are unsigned numbers of 16 bits. One that is out of range is
/// never an error: the operation does nothing, or takes the nearest that is in range. Exhausted
/// memory ends in the standard allocation failure.
template <class Text>
class XO_EXPORT WeightedText {
 public:
  // The fields.
  char* text;              ///< the bytes and their terminator, owned; null when empty
  unsigned char weighted;  ///< bit 7: the bytes are weights already, as those of an index key

  WeightedText() noexcept;
  /// The text alone: the copy counts as plain text.
  WeightedText(WeightedText const& source);
  WeightedText(char character);  ///< empty for the zero character
  // Numbers in decimal.
  WeightedText(short number);
  WeightedText(int number);
  WeightedText(unsigned number);
  WeightedText(long number);
  WeightedText(unsigned long number);
  WeightedText(long long number);
  WeightedText(unsigned long long number);
  WeightedText(double number);  ///< with six decimals
  WeightedText(char const* characters);
  /// At most `length` bytes of the text.
  WeightedText(char const* characters, unsigned short length);
  ~WeightedText();

  /// Takes the text and `weighted`.
  WeightedText& operator=(WeightedText const& source);

  bool operator!() const;
  /// The byte at `index`, which must be one of the text or its terminator. Without any text, a byte
  /// that belongs to none.
  char& operator[](int index);
  char operator[](int index) const;
  /// The bytes before the terminator.
  unsigned Len() const;
  /// The text, never null.
  char const* StrGet() const;

  // By `WeightCompare` of the whole texts.
  bool operator==(Text const& other) const;
  bool operator!=(Text const& other) const;
  bool operator<(Text const& other) const;
  bool operator<=(Text const& other) const;
  bool operator>(Text const& other) const;
  bool operator>=(Text const& other) const;

  // The decimal number that the text begins with behind white space; 0 for none. One of 16 bits is
  // the low half of one of 32; those stop at the greatest and least value.
  operator short() const;
  operator int() const;
  operator long() const;
  operator long long() const;
  operator double() const;

  Text operator+(Text const& other) const;
  Text& operator+=(Text const& other);
  // The sum with plain text, which would otherwise be as good a sum of numbers.
  Text operator+(char const* characters) const;
  Text operator+(char character) const;
  friend Text operator+(char const* left, Text const& right) { return Text(left) + right; }

  /// `count` bytes from `start` (65535, or more than there are: to the end).
  Text Copy(unsigned short start, unsigned short count = 65535) const;
  /// Removes `count` bytes from `start` (65535, or more than there are: to the end).
  Text& Cut(unsigned short start, unsigned short count = 65535);
  /// Appends `fill` until the text has `length` bytes.
  Text& Expand(unsigned short length, char fill = ' ');
  /// Replaces the text by `length` times `fill`.
  Text& Fill(unsigned short length, char fill = ' ');
  /// Inserts at `position`; nothing behind the end of the text.
  Text& Insert(Text const& other, unsigned short position);
  /// Overwrites from `position` on, as far as this text reaches.
  Text& Replace(Text const& other, unsigned short position);
  /// Blanks become the character '0'.
  Text& SpaceToZero();
  /// Characters '0' become blanks.
  Text& ZeroToSpace();
  /// The other case. Byte 255 is the lower case of 159 here, in either class.
  Text& ToLower();
  Text& ToUpper();
  /// The first place at which the bytes of `other` stand, or -1; case and weights do not matter.
  int SubStringPos(Text const& other) const;

  /// Order of two texts by their weights: negative, 0 or positive. At most `count` weights are
  /// looked at (0: 65535). Of each side, bit 7 of its flag means that its bytes are weights, bit 5
  /// (0x20) that second weights do not count. Accents do not count. A null pointer comes before
  /// every text, and an empty text is compared by its first byte.
  static int WeightCompare(char const* a, char const* b, unsigned short count, unsigned char flagA,
                           unsigned char flagB);

 private:
  bool IsOfWords() const;
  int Order(Text const& other) const;
  Text& Self();
  void Hold(char* block);
  void Take(char const* bytes, unsigned size);
  Text& Splice(unsigned head, char const* middle, unsigned middleSize, unsigned tail);

  /// The complement of the address, as far as it fits, of the block of whole words made for `text`.
  /// What is put in its place at the same address may be read to the end of a word of eight bytes.
  unsigned blockOfWords;
};

extern template class WeightedText<XoIString>;
extern template class WeightedText<XoCaseIString>;

}  // namespace xo

/// A weighted text that tells lower from upper case: each lower-case letter comes right before its
/// upper-case form.
class XO_EXPORT XoIString : public xo::WeightedText<XoIString> {
 public:
  using WeightedText::WeightedText;
};

/// A weighted text to which lower and upper case are the same.
class XO_EXPORT XoCaseIString : public xo::WeightedText<XoCaseIString> {
 public:
  using WeightedText::WeightedText;
};
