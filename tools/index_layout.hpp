#pragma once

#include <lmdb.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <xotypemgr.hpp>

namespace xo::tool {

// What an index file holds, in three databases of one LMDB environment:
//
// | database | key                      | data                                        |
// |----------|--------------------------|---------------------------------------------|
// | `meta`   | `index`                  | the record of `IndexMeta`                   |
// | `keys`   | a value in disk form     | the numbers of the lines that hold the value |
// | `lines`  | line number              | text of the line                            |
//
// Line numbers are of 64 bits, as LMDB's integer keys are, in the machine's own byte order.

using LineNumber = std::uint64_t;
static_assert(sizeof(LineNumber) == sizeof(std::size_t), "LMDB's integers are of the word size");

inline constexpr char kMetaDatabase[] = "meta";
inline constexpr char kKeysDatabase[] = "keys";
inline constexpr char kLinesDatabase[] = "lines";
inline constexpr unsigned kKeysFlags = MDB_DUPSORT | MDB_DUPFIXED | MDB_INTEGERDUP;
inline constexpr unsigned kLinesFlags = MDB_INTEGERKEY;

/// The generation of this layout. A file of another generation is left alone.
inline constexpr o_u4b kLayoutVersion = 1;

/// What an index says of itself.
struct IndexMeta {
  char type = XoRES_T;
  unsigned char format = FormLittle;
  /// Lines, and values that differ from one another.
  std::uint64_t entries = 0;
  std::uint64_t distinct = 0;
  /// Sums of `EntryChecksum` over all keys with their line numbers, and over all lines.
  std::uint64_t keysChecksum = 0;
  std::uint64_t linesChecksum = 0;
};

inline constexpr std::size_t kMetaRecordSize = 88;
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
