#pragma once

#include <lmdb.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <xotypemgr.hpp>

namespace xo::tool {

// What an index file holds, in the databases of one LMDB environment:
//
// | database | key                      | data                                         |
// |----------|--------------------------|----------------------------------------------|
// | `meta`   | `index`                  | the record of `IndexMeta`                    |
// | `keys`   | a value in disk form     | the numbers of the lines that hold the value |
// | `lines`  | line number              | text of the line                             |
// | `values` | line number              | the value as `Store` writes it               |
//
// Only an index of text has `values`. Its keys are index keys, which may be cut: the value whole
// is in the record alone.
//
// Line numbers are of 64 bits, as LMDB's integer keys are, in the machine's own byte order.

using LineNumber = std::uint64_t;
static_assert(sizeof(LineNumber) == sizeof(std::size_t), "LMDB's integers are of the word size");

inline constexpr char kMetaDatabase[] = "meta";
inline constexpr char kKeysDatabase[] = "keys";
inline constexpr char kLinesDatabase[] = "lines";
inline constexpr char kValuesDatabase[] = "values";
inline constexpr unsigned kKeysFlags = MDB_DUPSORT | MDB_DUPFIXED | MDB_INTEGERDUP;
inline constexpr unsigned kLinesFlags = MDB_INTEGERKEY;

/// The generation of this layout. A file of another generation is left alone.
inline constexpr o_u4b kLayoutVersion = 2;

// Bytes of a string's key. LMDB takes keys of up to 511 bytes, but comparisons give no answer for
// cut text of 254 bytes and more. The shortest key has room for one sort order.
inline constexpr unsigned kShortestKey = 6;
inline constexpr unsigned kLongestKey = 256;
inline constexpr unsigned kUsualKey = 64;

/// What the keys of an index are made of.
struct IndexShape {
  char type = XoRES_T;
  unsigned char format = FormLittle;
  // Of text alone, and 0 for every other type:
  unsigned char codeSet = 0;
  unsigned char language = 0;
  /// Bytes that a key takes at most.
  std::uint16_t keyLength = 0;
  /// Version and fingerprint of the collation that the keys are ordered by; 0 of weighted texts,
  /// whose weights never change.
  std::uint32_t collationVersion = 0;
  std::uint64_t collationFingerprint = 0;

  bool IsWeighted() const {
    return type == static_cast<char>(XoISTRING_T) || type == static_cast<char>(XoCASEISTRING_T);
  }
  bool HasText() const { return type == static_cast<char>(XoSTRING_T) || IsWeighted(); }
};

/// What an index says of itself.
struct IndexMeta : IndexShape {
  /// Lines, and values that differ from one another.
  std::uint64_t entries = 0;
  std::uint64_t distinct = 0;
  /// Sums of `EntryChecksum` over all keys with their line numbers, all lines and all values.
  std::uint64_t keysChecksum = 0;
  std::uint64_t linesChecksum = 0;
  std::uint64_t valuesChecksum = 0;
};

inline constexpr std::size_t kMetaRecordSize = 112;
using MetaRecord = std::array<unsigned char, kMetaRecordSize>;

/// The record as it is stored under `MetaKey`.
MetaRecord EncodeMeta(IndexMeta const& meta);

/// The same read back. A record that is none, of another layout, or damaged, is `Trouble` about
/// the index `name`.
IndexMeta DecodeMeta(std::span<unsigned char const> record, std::string const& name);

/// The key of the record.
MDB_val MetaKey();

/// Checksum of one line number with the key or the text that belongs to it. Sums of them, modulo
/// 2^64, do not depend on the order.
std::uint64_t EntryChecksum(LineNumber line, void const* bytes, std::size_t size);

/// `bytes` as LMDB takes them; it does not write to them.
MDB_val LmdbValue(void const* bytes, std::size_t size);

/// The line number that LMDB gave, which has the size of one.
LineNumber LineNumberOf(MDB_val const& value);

}  // namespace xo::tool
