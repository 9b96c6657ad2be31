#pragma once

#include <string>
#include <string_view>

#include "tools/index_layout.hpp"
#include "tools/key_batch.hpp"
#include "tools/lmdb_file.hpp"
#include "tools/new_file.hpp"
#include "tools/progress.hpp"
#include "tools/value_codec.hpp"

namespace xo::tool {

/// Builds an index, in one transaction and in a file of its own that takes its place with
/// `Install`, and is gone without it. So a build that fails leaves an index that was there as it
/// was, searches that are under way go on in the index that they began in, and of two builds the
/// later one stays.
class IndexWriter {
 public:
  /// Begins an index of the given shape for the file at `path`. A file that is there and is no
  /// index is `Trouble`.
  IndexWriter(std::string const& path, IndexShape const& shape);

  /// What messages call the file.
  std::string const& Name() const { return name; }

  /// Adds the value of a line. Lines come in ascending order.
  void Add(StoredValue const& value, LineNumber line, std::string_view text);

  /// Ends the building: checks the whole tree of keys and writes all to the disk. Returns what the
  /// index holds.
  IndexMeta Commit(Progress& progress);

  /// Puts the index, committed before, in its place.
  void Install();

 private:
  MDB_dbi MakeDatabase(char const* databaseName, unsigned flags) const;
  void PutBatch();
  void Put(MDB_cursor* cursor, MDB_val key, MDB_val data, unsigned flags);
  void CommitTransaction();

  // In the order in which they must come to be; they end in reverse.
  std::string name;
  NewFile file;
  LmdbEnvironment environment;
  LmdbTransaction transaction;
  MDB_dbi metaDatabase = 0;
  MDB_dbi keys = 0;
  MDB_dbi lines = 0;
  MDB_dbi values = 0;
  LmdbCursor keysCursor;
  LmdbCursor linesCursor;
  LmdbCursor valuesCursor;
  IndexMeta meta;
  KeyBatch batch;
  bool isFirstBatch = true;
};

}  // namespace xo::tool
