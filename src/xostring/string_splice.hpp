#pragma once

#include "xostring.hpp"

/// The one writer of text, on which all editing is built.
namespace xo {

enum class SpliceMode : unsigned char {
  kOverwrite = 1,  ///< head, source, then the old text behind what the source covers
  kInsert = 2,     ///< head, source, then the rest of the old text
  kTruncate = 3,   ///< head, source, and nothing of the old text behind them
};

/// Gives `target` a new text in a new buffer: its first `position` characters, then `count`
/// characters of `source` from `sourceStart` on, then what `mode` says. A source of another code
/// set is converted; one without code set and of the right width is taken as it is. With a `repeat`
/// other than 1 the source's first character, that many times, takes the place of the source. The
/// source may be the target's own text. An empty source changes nothing except under `kTruncate`.
/// What is longer than a string holds is reported and cut.
///
/// `source` has at least `sourceStart + count` characters or a terminator before that; `byteOrder`
/// is its byte order.
void SpliceText(XoString& target, char const* source, unsigned char sourceCodeSet,
                unsigned short position, unsigned short sourceStart, unsigned short count,
                unsigned short repeat, SpliceMode mode, unsigned char byteOrder = 255);

/// Makes `count` characters of `source` (65535: all) the text of `target`, whose own text must have
/// been freed; null or no character leaves it without text.
void AssignText(XoString& target, char const* source, unsigned char codeSet,
                unsigned short count = 65535, unsigned char byteOrder = 255);

/// `count` characters of `source` from `start` on, all within its text, as a string of its code set
/// and language.
XoString CopyPart(XoString const& source, unsigned start, unsigned count);

/// Removes `count` characters of `target` from `start` on, all within its text.
void CutPart(XoString& target, unsigned start, unsigned count);

/// Converts up to `limit` characters of `source`, which is in `byteOrder`, into a new buffer at
/// `out`, the caller's to release with `ReleaseArray`; returns its size in bytes, terminator
/// included.
unsigned MapTextToNewBuffer(unsigned char fromSet, unsigned char toSet, char const* source,
                            char*& out, unsigned short limit = 65535,
                            unsigned char byteOrder = 255);

/// Converts `length` characters of `source` (65535: all) into `buffer`, of `bufferSize` bytes,
/// which is replaced when it is null or too small for that many. Returns the number of characters
/// written before the terminator.
unsigned MapTextIntoBuffer(unsigned char fromSet, unsigned char toSet, char const* source,
                           unsigned short length, char*& buffer, unsigned short& bufferSize);

/// Tells an installed configuration that asks for it that a text was too long.
void ReportStringOverflow();

}  // namespace xo
