#pragma once

#include <cstddef>

#include "base/export.hpp"

/// The stored form of `XoString`, in which every element is a record of its own:
///
///     length (2 bytes) | code set (1) | language (1) | text | 0x00 | 0xFF
///
/// `length` counts all bytes behind itself, and it and text of two bytes a character are in the
/// byte order of the format. The record of an older generation has no code set and language: one
/// length counts all texts behind it, each of one byte a character and ended by a zero byte. The
/// last byte tells the two apart: 0xFF or 0. An index key is a record of code set 254, whose text
/// is sort orders of two bytes each, and whose language byte is the group that they belong to; bit
/// 7 of that says that the key ends where the group of the text changes.
namespace xo {

inline constexpr std::size_t kLengthBytes = 2;
/// Length, code set and language.
inline constexpr std::size_t kHeaderBytes = 4;

}  // namespace xo

/// Writes `count` strings at `source`, as records one behind the other. Only the low nibble of
/// `format` counts. Returns the bytes written: what `StringSizeGet` gives.
XO_EXPORT unsigned StringStore(void* target, void const* source, unsigned char format,
                               unsigned count);

/// Reads `count` records into the live strings at `target`; from an older record, `count` texts, in
/// the default 8-bit code set and language. Returns the bytes read. The lengths in the records are
/// believed: whoever is not sure of them uses `XoTypeMgr::Translate`, which takes a length.
XO_EXPORT unsigned StringLoad(void* target, void const* source, unsigned char format,
                              unsigned count);

/// The bytes that the strings at `data`, which are in `dataFormat`, take in `diskFormat`. For an
/// index key this is a bound and no size: four bytes for each byte of text, or two for each of text
/// of two bytes a character. A character that has more than two orders may take more; its key is
/// then cut to the bound. The bound of stored arrays of more than one element is not to be relied
/// on; it is looked for in other places than where the records are. Stored lengths are believed, as
/// by `StringLoad`; of a record for a key no more is read than its length and code set.
XO_EXPORT unsigned StringSizeGet(void const* data, unsigned char dataFormat,
                                 unsigned char diskFormat, unsigned count);
