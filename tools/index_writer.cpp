#include "tools/index_writer.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tools/index_order.hpp"
#include "tools/index_reader.hpp"
#include "tools/printable.hpp"
#include "tools/tree_check.hpp"

namespace xo::tool {
namespace {

/// Address space for the map of an index that is written. It costs neither memory nor disk, and
/// bounds the size of the index.
constexpr std::size_t kMapSize = std::size_t{1} << 40;

/// The path of an index to be: what is there already must be an index that can be opened.
std::string const& RequireReplaceable(std::string const& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) == 0) IndexReader{path};
  return path;
}

/// Makes a file whose last pages LMDB has set aside, but not written, as long as LMDB counts it.
/// Returns 0 or a number of errno.
int FillUpLastPages(MDB_env* environment, std::string const& path) {
  MDB_envinfo info{};
  MDB_stat statistics{};
  mdb_env_info(environment, &info);
  mdb_env_stat(environment, &statistics);
  auto const used = static_cast<off_t>((info.me_last_pgno + 1) * statistics.ms_psize);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return errno;
  return status.st_size >= used || truncate(path.c_str(), used) == 0 ? 0 : errno;
}

}  // namespace

IndexWriter::IndexWriter(std::string const& path, IndexShape const& shape)
    : name(PrintableName(path)),
      file(RequireReplaceable(path)),
      environment(OpenEnvironment(file.Path(), name, 0, kMapSize)),
      transaction(BeginTransaction(environment.get(), name, 0)) {
  static_cast<IndexShape&>(meta) = shape;
  SetIndexOrder(meta.type, meta.format);
  metaDatabase = MakeDatabase(kMetaDatabase, 0);
  keys = MakeDatabase(kKeysDatabase, kKeysFlags);
  lines = MakeDatabase(kLinesDatabase, kLinesFlags);
  mdb_set_compare(transaction.get(), keys, indexOrder.compare);
  keysCursor = OpenCursor(transaction.get(), keys, name);
  linesCursor = OpenCursor(transaction.get(), lines, name);
  if (meta.HasText()) {
    values = MakeDatabase(kValuesDatabase, kLinesFlags);
    valuesCursor = OpenCursor(transaction.get(), values, name);
  }
}

MDB_dbi IndexWriter::MakeDatabase(char const* databaseName, unsigned flags) const {
  MDB_dbi database = 0;
  int const code = mdb_dbi_open(transaction.get(), databaseName, flags | MDB_CREATE, &database);
  if (code != 0) file.ThrowWriteFailure(code);
  return database;
}

void IndexWriter::Add(StoredValue const& value, LineNumber line, std::string_view text) {
  Put(linesCursor.get(), LmdbValue(&line, sizeof line), LmdbValue(text.data(), text.size()),
      MDB_APPEND);
  meta.linesChecksum += EntryChecksum(line, text.data(), text.size());
  if (meta.HasText()) {
    Put(valuesCursor.get(), LmdbValue(&line, sizeof line),
        LmdbValue(value.record.data(), value.record.size()), MDB_APPEND);
    meta.valuesChecksum += EntryChecksum(line, value.record.data(), value.record.size());
  }
  batch.Add(value.key, line);
  if (batch.IsFull()) PutBatch();
}

void IndexWriter::PutBatch() {
  MDB_val previous{};
  for (KeyBatch::Entry const& entry : batch.Sorted()) {
    MDB_val const key = batch.Key(entry);
    // Where everything comes in order, pages are filled to the brim instead of being split in
    // halves.
    unsigned flags = 0;
    if (isFirstBatch) {
      bool const isRepeated =
          previous.mv_data != nullptr && indexOrder.compare(&previous, &key) == 0;
      flags = isRepeated ? MDB_APPENDDUP : MDB_APPEND;
    }
    Put(keysCursor.get(), key, LmdbValue(&entry.line, sizeof entry.line), flags);
    previous = key;
  }
  batch.Clear();
  isFirstBatch = false;
}

void IndexWriter::Put(MDB_cursor* cursor, MDB_val key, MDB_val data, unsigned flags) {
  if (int const code = mdb_cursor_put(cursor, &key, &data, flags); code != 0) {
    file.ThrowWriteFailure(code);
  }
}

IndexMeta IndexWriter::Commit(Progress& progress) {
  progress.Phase("sorting the last values");
  PutBatch();
  keysCursor.reset();
  linesCursor.reset();
  valuesCursor.reset();
  progress.Phase("checking");
  TreeTotals const totals =
      CheckKeys(transaction.get(), keys, name, [](LineNumber, MDB_val const&) {});
  meta.entries = totals.entries;
  meta.distinct = totals.distinct;
  meta.keysChecksum = totals.checksum;
  progress.Phase("writing");
  CommitTransaction();
  return meta;
}

void IndexWriter::Install() { file.Install(); }

void IndexWriter::CommitTransaction() {
  MetaRecord const record = EncodeMeta(meta);
  MDB_val key = MetaKey();
  MDB_val data = LmdbValue(record.data(), record.size());
  int code = mdb_put(transaction.get(), metaDatabase, &key, &data, 0);
  // The transaction ends with the commit, whether that succeeds or fails.
  if (code == 0) code = mdb_txn_commit(transaction.release());
  if (code == 0) code = FillUpLastPages(environment.get(), file.Path());
  if (code != 0) file.ThrowWriteFailure(code);
}

}  // namespace xo::tool
