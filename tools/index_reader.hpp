#pragma once

#include <lmdb.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tools/crash_guard.hpp"
#include "tools/index_layout.hpp"
#include "tools/lmdb_file.hpp"

namespace xo::tool {

/// An index opened for reading, whose file nobody changes: a build puts another one in its place.
/// Its type and format are set as the order of this process's keys.
///
/// What is no index, or damaged, is `Trouble`, now or when the damage is met.
class IndexReader {
 public:
  explicit IndexReader(std::string const& path);

  /// What messages call the file.
  std::string const& Name() const { return name; }
  IndexMeta const& Meta() const { return meta; }
  MDB_txn* Transaction() const { return transaction.get(); }
  MDB_dbi Keys() const { return keys; }
  MDB_dbi Lines() const { return lines; }
  /// Of text alone.
  MDB_dbi Values() const { return values; }

  /// The text of a line that a key leads to. It belongs to the map of the file.
  std::string_view Line(LineNumber number) const;

  /// The value of a line that a key of text leads to, a whole record. It belongs to the map too.
  std::span<unsigned char const> Record(LineNumber number) const;

  /// An index of strings that is ordered by another collation than this program's is `Trouble`.
  void RequirePresentCollation() const;

  /// Counts of pages and entries of one of the databases.
  MDB_stat Statistics(MDB_dbi database) const;
  std::uint64_t FileBytes() const { return fileBytes; }

 private:
  IndexMeta ReadMeta() const;
  MDB_dbi OpenDatabase(char const* databaseName, unsigned expectedFlags) const;
  MDB_val Fetch(MDB_dbi database, LineNumber number, char const* what) const;

  // In the order in which they must come to be; they end in reverse.
  std::string name;
  std::uint64_t fileBytes;
  CrashGuard guard;
  LmdbEnvironment environment;
  LmdbTransaction transaction;
  IndexMeta meta;
  MDB_dbi keys = 0;
  MDB_dbi lines = 0;
  MDB_dbi values = 0;
};

}  // namespace xo::tool
