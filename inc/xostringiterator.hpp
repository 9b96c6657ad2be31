#pragma once

#include "base/export.hpp"
#include "xochar.hpp"

class CharOrderEntry;
class XoCodeSet;
class XoString;
struct XoWCharList;

/// A place in a text: walks it character by character, and reads it as sort orders.
///
/// An iterator does not keep the text alive, and an edit of the string invalidates it. It may hold
/// an overflow: values that are served before the text goes on, the rest of an expansion for
/// example. One belongs to one thread. As an argument a code set or language of 255 stands for the
/// default, a byte order of 255 for 1; of orders (code set 254) a byte order of 2 means high byte
/// first, and everything else low byte first.
class XO_EXPORT XoStringIterator {
 public:
  // The fields, which may be read.
  XoCodeSet const* codeSetObject;  ///< record of the code set that serves, or null
  unsigned char codeSet;           ///< code set of the text
  unsigned char language;          ///< chooses variants, and the group
  unsigned char orderGroup;        ///< group of the order last read
  unsigned char overflowCodeSet;   ///< code set of the overflow; 254: they are orders
  short overflowIndex;             ///< next value of the overflow
  unsigned char byteOrder;         ///< of the text, where characters take two bytes
  unsigned short ownsBuffer;       ///< not zero: the text is the iterator's own
  char const* cursor;              ///< the present character
  XoWCharList const* overflow;     ///< values to serve first, not owned, or null

  /// On no text.
  XoStringIterator();
  /// On the first character.
  XoStringIterator(XoString const& text);
  /// On a text of its own of one character.
  XoStringIterator(XoChar const& character);
  XoStringIterator(char const* text, unsigned char codeSet = 255, unsigned char language = 255,
                   unsigned char byteOrder = 255);
  XoStringIterator(unsigned short const* text, unsigned char codeSet = 255,
                   unsigned char language = 255, unsigned char byteOrder = 255);
  /// On the same place. A copy of an iterator with a text of its own lasts no longer than that.
  XoStringIterator(XoStringIterator const& other);
  XoStringIterator& operator=(XoStringIterator const& other);
  ~XoStringIterator();

  /// Whether both stand on the same place.
  bool operator==(XoStringIterator const& other) const { return cursor == other.cursor; }

  /// The next value of the overflow, unbound, which is consumed by that; without one, the character
  /// in the text, bound.
  XoChar operator*();
  /// Moves on by one character, unless values of the overflow remain.
  XoStringIterator& operator++();
  XoStringIterator operator++(int);
  /// Moves back by one character; the caller knows that there is one.
  XoStringIterator& operator--();
  XoStringIterator operator--(int);
  /// `++` for a `forward` other than 0, else `--`.
  XoStringIterator& Step(unsigned short forward);
  /// 1 at the end of the text, when no overflow is pending.
  int IsEOS() const;
  /// Serves the values of `list`, which must stay, before the text goes on; `set` is their code
  /// set, 255 for the text's own.
  void SetOverflow(XoWCharList const* list, unsigned char set);

  /// Reads the next sort order; 0 at the end, as often as asked. With `updateGroup` 0 the
  /// `orderGroup` stays.
  unsigned short GetNextOrder(unsigned short updateGroup = 1);

  /// Writes what `operation` makes of each character to `destination`, to the end of the text and
  /// with a terminator; both then stand behind it. `destination` must have the room.
  void Transform(XoStringIterator& destination, XoCharOperation& operation);

  /// One character of that.
  void TransformOne(XoStringIterator& destination, XoCharOperation& operation);
  /// Whether `Transform` has more to do before the terminator.
  bool HasMore() const;

 private:
  /// A character read for its order, and the code set that it is of.
  struct Character {
    unsigned short code;
    unsigned char codeSet;
    bool fromOverflow;
  };

  void Start(char const* text);
  void Destroy();
  bool OverflowRemains() const;
  unsigned short CodeAtCursor() const;
  Character ReadCharacter();
  void MoveOn();
  unsigned short NextStreamOrder();
  unsigned short ReadPlainOrder(unsigned short updateGroup);
  CharOrderEntry const* Contract(CharOrderEntry const* entry, bool mapping);

  char* buffer = nullptr;
};

/// A number that grows with the order of texts: from the first three digits, letters or ideographs
/// among the next `count` orders, or from the first four of the next `count` bytes where there is no
/// code set. For estimates of how far two texts are apart.
XO_EXPORT double StringPrefixEstimate(XoStringIterator& iterator, unsigned short count);
