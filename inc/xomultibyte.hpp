#pragma once

#include "base/export.hpp"

class XoString;

/// The boundary between strings and UTF-8, in its first form with sequences of up to six bytes. A
/// character of a string has 16 bits: a greater code is cut to its low 16 bits. Bytes that are no
/// sequence, and over-long sequences, are rejected with -1.

/// Decodes one character of the `limit` bytes at `bytes`. Returns the bytes it took; 0 for null
/// `bytes`; -1 for no byte, or a sequence that is wrong or goes on behind the limit.
XO_EXPORT int XoMultiByte2WChar(unsigned short* wide, char const* bytes, unsigned long long limit);

/// Encodes one code, of up to 31 bits. Returns the bytes written, at most six; 0 for null `bytes`;
/// -1 for a code above that.
XO_EXPORT int XoWChar2MultiByte(char* bytes, wchar_t code);

/// Decodes `length` bytes. Returns the number of characters, of which the first `capacity` are
/// stored, or -1.
XO_EXPORT int XoMultiByteStr2WCharStr(unsigned short* wide, int capacity, char const* bytes,
                                      int length);

/// Makes `length` bytes the text of `text`, in Unicode; its language stays. A zero ends the text.
/// Returns the bytes consumed, without that zero; -1 for a wrong sequence, -2 when 32768 bytes or
/// more were consumed, which is the most that is read: the text then holds what was decoded.
XO_EXPORT int XoMBS2XoString(char const* bytes, XoString& text, int length);
XO_EXPORT int XoMultiByteString2XoString(char const* bytes, XoString& text, int length);
/// The same with the units of `bytes`, a narrow string.
XO_EXPORT int XoMultiByteString2XoString(XoString const& bytes, XoString& text);

/// Bytes that the first `maxChars` characters take. A text of a code set below 6 that is
/// ASCII throughout is measured whole, whatever `maxChars` says; only 0 gives 0.
XO_EXPORT int XoMBSLength(XoString const& text, unsigned short maxChars = 65535);

/// Encodes into `size` bytes. Returns the bytes written, behind which a terminator stands if there
/// was room; where the text does not fit, the negative of the bytes that did (of a text in ASCII
/// and a code set below 27, of the bytes that it needs).
XO_EXPORT int XoString2XoMBS(XoString const& text, char* bytes, int size);

/// Encodes into the `size` bytes at `bytes`, or, where there are none, into a new buffer, the
/// caller's to release with `delete[]`, and sets `size` to its size, the length and a terminator.
/// Returns the length; -1 when the buffer given is too small, with the length in `size`.
XO_EXPORT int XoString2MultiByteString(XoString const& text, char*& bytes, int& size);
