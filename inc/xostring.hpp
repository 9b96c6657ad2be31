#pragma once

#include <type_traits>

#include "base/export.hpp"

class XoChar;
class XoCharOperation;

/// Text of one code set and language.
///
/// A character is one byte in the code sets 0 to 224 and two, in the machine's order, in those from
/// 225 on; a zero unit ends the text wherever it stands. A string holds at most 65531 characters of
/// one byte or 32765 of two: what is longer is cut, which is no error (an installed configuration
/// with "stringOverflow" in the section "debug" is told of it first, through `XOLA_assert`). Every
/// operation converts between code sets by itself. The length is not stored, so `Len` costs time in
/// proportion to it, and every change of text takes a new buffer: iterators and bound characters
/// do not survive it.
///
/// The code set byte: 0 for none, the bytes stand for themselves and are converted as the native
/// code set; 253 Unicode; 254 sort orders in place of characters. As an argument 255 stands for the
/// default. The language byte: 254 marks null, 255 as an argument stands for the default. A null
/// string differs from an empty one; a code set of 254 with language 0 marks null as well.
///
/// A position is counted from 0 in characters. One that is out of range is never an error: the
/// operation does nothing, or takes the nearest that is in range, as told there. A string belongs
/// to one thread at a time. Exhausted memory ends in the standard allocation failure.
class XO_EXPORT XoString {
 public:
  // The fields, which may be read and, except for `text` and `size`, written.
  char* text;              ///< the characters and their terminator, owned; null without any text
  unsigned short size;     ///< bytes of the buffer at `text`; more than the text may need
  unsigned char codeSet;   ///< code set of the text
  unsigned char language;  ///< language of the text

  /// The longest text, in bytes with its terminator.
  static constexpr unsigned kMaxSize = 65532;

  /// Empty, in the default code set and language.
  XoString();
  /// The same text, code set and language, null included.
  XoString(XoString const& source);
  /// Takes the text of `source`, which keeps its code set and language.
  XoString(XoString&& source) noexcept;
  /// One character of the default 8-bit code set; none for the zero character.
  XoString(char character);
  XoString(unsigned char character);
  /// Empty, with the code set and language given.
  XoString(unsigned char codeSet, unsigned char language);
  /// One character, not a number, of the default 16-bit code set; none for the zero character.
  XoString(unsigned short character);
  // Numbers in decimal, as text of the default 8-bit code set.
  XoString(short number);
  XoString(int number);
  XoString(unsigned number);  ///< read as `int`: a value above 2147483647 gives a negative number
  XoString(long number);
  XoString(unsigned long number);
  XoString(long long number);
  XoString(unsigned long long number);
  XoString(double number);  ///< with 17 significant digits
  // Text in the default 8-bit or 16-bit code set, up to its terminator or, with a `length`, up to
  // that many characters (65535: not limited). A null pointer gives an empty string.
  XoString(char const* characters);
  XoString(char const* characters, unsigned short length);
  XoString(unsigned short const* characters);
  XoString(unsigned short const* characters, unsigned short length);
  ~XoString();

  /// Takes code set, text and language.
  XoString& operator=(XoString const& source);
  XoString& operator=(XoString&& source) noexcept;
  /// Takes the text in the default code set of its width, and the default language.
  XoString& operator=(char const* characters);
  XoString& operator=(unsigned short const* characters);

  // Lifecycle.
  /// Makes a string of raw memory; what was there is not freed.
  void Init();
  /// Frees the text and sets all fields to zero: empty, without code set.
  void Destroy();
  void d_deactivate();  ///< `Destroy`
  /// Frees the own text and takes that of `source` with its code set and language, which `source`
  /// keeps. Nothing happens when both are the same object.
  void Destruct(XoString& source) noexcept;
  /// Makes the string null, without code set. Returns 0.
  int SetNullValue();
  int IsNullValue() const;
  int IsEmpty() const;  ///< 1 without characters, null included
  int operator!() const;
  /// Number of characters.
  unsigned short Len() const;
  /// The text, never null. It must not be written when the string is empty.
  char const* StrGet() const;
  /// The character at `index`, which may be the terminator's, bound to it: to assign to it writes
  /// into the string, a constant one too. Outside the text it is unbound, with value 0 in the
  /// default 16-bit code set.
  XoChar operator[](int index) const;
  /// An empty string in the code set and language that were the default at load.
  static XoString const& EmptyString();

  // Appending. The text appended takes this string's code set; the language of this string stays,
  // null included.
  XoString& operator+=(XoString const& other);
  /// Both texts, in the code set and language of the left one.
  XoString operator+(XoString const& other) const;
  XoString& operator<<(XoString const& other);
  XoString& operator<<(char character);  ///< nothing for the zero character
  /// A wide string takes it as a character, a narrow one as a number in decimal.
  XoString& operator<<(unsigned short characterOrNumber);
  XoString& operator<<(short number);
  XoString& operator<<(int number);
  XoString& operator<<(unsigned number);  ///< read as `int`
  XoString& operator<<(long number);
  XoString& operator<<(unsigned long number);
  XoString& operator<<(long long number);
  XoString& operator<<(unsigned long long number);
  XoString& operator<<(float number);  ///< with the 17 digits of the number as a `double`
  XoString& operator<<(double number);
  XoString& operator<<(char const* characters);
  XoString& operator<<(unsigned short const* characters);

  // The number that the text begins with, behind white space; 0 for none. Integers take their base
  // from the prefix ("0x", "0"), those of narrow text are decimal when bit 0 of `XoTypeMgrOptions`
  // is set. Integers of 16 bits are the low bits of those of 32; these and those of 64 bits stop at
  // the greatest and least value. Of wide text integers take at most 30
  // characters behind white space.
  operator short() const;
  operator int() const;
  operator long() const;
  operator long long() const;
  operator double() const;

  // Code sets.
  /// Converts the text. Returns 0, or -2002 for code set 0.
  int MapToCodeSet(unsigned char set);
  /// Changes the code set: converts the text where the width of characters changes, and leaves its
  /// bytes as they are where not.
  void SetCodeSet(unsigned char set);
  /// Changes the code set and leaves the bytes as they are. Returns 0, or -2002, with nothing
  /// changed, when the width of characters would change.
  int SetCodeSetCode(unsigned char set);
  /// Takes up to `length` characters of `source` (-1: all) converted to `set`, and its language.
  /// The present buffer is kept where it has room for that many, or for all with -1. Returns the
  /// number of characters, or -2002 when `source` is this string.
  int CopyMapped(XoString const& source, unsigned char set, short length = -1);

  // The text defaults, which `XoLanguageContext` keeps.
  static unsigned char GetDefaultCodeSet();
  static unsigned char GetDefault8CodeSet();
  static unsigned char GetDefault16CodeSet();
  static unsigned char GetDefaultLanguage();
  static unsigned short GetDefaultCmpOp();
  static void SetDefaultCodeSet(unsigned char codeSet);
  static void SetDefaultLanguage(unsigned char language);
  static void SetDefaultCmpOp(unsigned short cmpOp);

  // Comparison by sort orders, under the default operator; see `XoStrCmp`.
  bool operator==(XoString const& other) const;
  bool operator!=(XoString const& other) const;
  bool operator<(XoString const& other) const;
  bool operator<=(XoString const& other) const;
  bool operator>(XoString const& other) const;
  bool operator>=(XoString const& other) const;
  /// Negative, 0 or positive; up to `count` orders of each side (-1: all), under `cmpOp` (65535:
  /// the default operator).
  int Compare(XoString const& other, short count = -1, unsigned short cmpOp = 65535) const;
  /// 1 when all sort orders are the same, whatever the languages. A string that
  /// is null by its language equals an empty one.
  int EqualsIgnoreLanguage(XoString const& other) const;
  /// The characters that stand for any run of characters, for any one character, and for an
  /// escape, which comparisons do not use, in patterns of all code sets. Set-up calls, without a
  /// lock. Each returns 0.
  static int SetAsterisk(XoChar const& character);
  static int SetQuestion(XoChar const& character);
  static int SetEscape(XoChar const& character);

  // Parts of the text, as new strings.
  /// `count` characters from `start` (-1, or more than there are: to the end). From the end of the
  /// text on, a copy of `EmptyString`.
  XoString Copy(unsigned short start, short count = -1) const;
  XoString Left(unsigned short count) const;
  XoString Right(unsigned short count) const;

  // Editing.
  /// Removes `count` characters from `start` (-1, or more than there are: to the end).
  XoString& Cut(unsigned short start, short count = -1);
  /// Inserts at `position`; nothing behind the end of the text.
  XoString& Insert(XoString const& other, unsigned short position);
  /// Overwrites from `position` on, as far as this text reaches: the length stays.
  XoString& Replace(XoString const& other, unsigned short position);
  /// Replaces every `from`, found as `Find` finds it, from `start` on.
  XoString& ReplaceAll(XoString const& from, XoString const& to, unsigned short start = 0);
  XoString& ReplaceAll(char from, char to, unsigned short start = 0);
  XoString& ReplaceAll(unsigned short from, unsigned short to, unsigned short start = 0);
  /// Appends `fill` until the text has `length` characters.
  XoString& Expand(unsigned short length, char fill = ' ');
  XoString& Expand(unsigned short length, unsigned short fill);
  /// Replaces the text by `length` times `fill`.
  XoString& Fill(unsigned short length, char fill = ' ');
  XoString& Fill(unsigned short length, unsigned short fill);
  /// Removes characters of the space class (`XoChar::IsSpace`) at the ends. `RightTrim` never
  /// removes the first character.
  XoString& LeftTrim();
  XoString& RightTrim();
  XoString& Trim();
  XoString& ToLower();
  XoString& ToUpper();
  /// Replaces every character by what `operation` makes of it.
  XoString& Transform(XoCharOperation& operation);

  // Search.
  /// The first position from `start` on at which `pattern` is found under `cmpOp` (65535: the
  /// default operator), or -1, also where either is empty. A position above 32767 comes as a
  /// negative number, to be read as unsigned. Under an operator with wildcards on, given as such,
  /// the pattern may hold wildcards, and must still be no longer than what is left of the text.
  short Find(XoString const& pattern, unsigned short start = 0, unsigned short cmpOp = 65535) const;
  short Find(char character, unsigned short start = 0, unsigned short cmpOp = 65535) const;
  short Find(unsigned short character, unsigned short start = 0,
             unsigned short cmpOp = 65535) const;
  short SubStringPos(XoString const& pattern, unsigned short cmpOp = 65535) const;

  // The number that the text begins with, where its first character is a digit or '-': 0, with the
  // number in `value`; otherwise -1, with 0 in `value`. `Atol` and `Atoll` read narrow text as
  // decimal; everything else takes its base from the prefix.
  int Atol(int& value) const;
  int Atoll(long long& value) const;
  int Strtol(int& value) const;
  int Strtoll(long long& value) const;
  // The same where the platform's `long` has 64 bits.
  template <class Long>
  requires(std::is_same_v<Long, long> && sizeof(Long) == 8) int Atoll(Long& value) const {
    long long whole = 0;
    int const result = Atoll(whole);
    value = whole;
    return result;
  }
  template <class Long>
  requires(std::is_same_v<Long, long> && sizeof(Long) == 8) int Strtoll(Long& value) const {
    long long whole = 0;
    int const result = Strtoll(whole);
    value = whole;
    return result;
  }
};

// The sum with plain text. Without these a string would go into arithmetic of pointers by way of
// its conversion to a number.
XO_EXPORT XoString operator+(XoString const& left, char const* right);
XO_EXPORT XoString operator+(XoString const& left, unsigned short const* right);
XO_EXPORT XoString operator+(XoString const& left, char right);
XO_EXPORT XoString operator+(char const* left, XoString const& right);

/// Takes the element of `list` that begins at `position` and ends before the next `delimiter` or
/// at the end of `list`, and puts it, trimmed, into `item`; a delimiter at the very start is
/// skipped. `position` moves on to the character behind the one at which the element ended. Returns
/// 0, or -2005 at the end of the list.
XO_EXPORT int XoSplitList(XoString& list, XoString& item, XoString const& delimiter,
                          unsigned short& position);

/// What null values of every type print as and read from, at first "{NULL}": the text of
/// `XoTypeMgr::GetNullPrintString`. Written during set-up, without a lock.
XO_EXPORT extern XoString NullPrintString;
