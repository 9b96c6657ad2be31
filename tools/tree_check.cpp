#include "tools/tree_check.hpp"

#include <fmt/core.h>

#include <cstring>
#include <vector>

#include "tools/index_order.hpp"
#include "tools/lmdb_file.hpp"
#include "tools/stop_signals.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

/// Steps through all entries of a database. Damaged pages could lead round in circles, so no more
/// steps are made than the database has entries by its own count.
class Walk {
 public:
  Walk(MDB_txn* transaction, MDB_dbi database, std::string const& indexName)
      : name(indexName), cursor(OpenCursor(transaction, database, name)) {
    MDB_stat statistics{};
    if (int const code = mdb_stat(transaction, database, &statistics); code != 0) {
      ThrowUnreadable(name, code);
    }
    expected = statistics.ms_entries;
  }

  /// Moves on to the next entry; false behind the last.
  bool Next() {
    ThrowIfStopped();
    int const code = mdb_cursor_get(cursor.get(), &key, &data, MDB_NEXT);
    if (code == MDB_NOTFOUND && steps == expected) return false;
    if (code != 0 && code != MDB_NOTFOUND) ThrowUnreadable(name, code);
    if (code == MDB_NOTFOUND || steps == expected) Damaged("number of entries");
    ++steps;
    return true;
  }

  [[noreturn]] void Damaged(char const* what) const {
    throw Trouble(fmt::format("{} ({}, after {} entries)", DamageMessage(name), what, steps));
  }

  MDB_val key{};
  MDB_val data{};

 private:
  std::string const& name;
  LmdbCursor cursor;
  std::uint64_t expected = 0;
  std::uint64_t steps = 0;
};

}  // namespace

TreeTotals CheckKeys(MDB_txn* transaction, MDB_dbi keys, std::string const& name,
                     std::function<void(LineNumber, MDB_val const&)> const& visit) {
  TreeTotals totals;
  Walk walk(transaction, keys, name);
  // A copy, as LMDB may hand out another page's memory at the next step of a transaction that
  // writes.
  std::vector<unsigned char> previousKey;
  LineNumber previousLine = 0;
  while (walk.Next()) {
    if (!indexOrder.IsKeySize(walk.key.mv_size)) walk.Damaged("width of a key");
    if (walk.data.mv_size != sizeof(LineNumber)) walk.Damaged("width of a line number");
    LineNumber const line = LineNumberOf(walk.data);

    MDB_val const previous = LmdbValue(previousKey.data(), previousKey.size());
    int const order = totals.entries == 0 ? -1 : indexOrder.compare(&previous, &walk.key);
    if (order > 0) walk.Damaged("keys out of order");
    if (order == 0 && previousLine >= line) walk.Damaged("lines of a key out of order");
    if (order < 0) {
      ++totals.distinct;
      auto const* const bytes = static_cast<unsigned char const*>(walk.key.mv_data);
      previousKey.assign(bytes, bytes + walk.key.mv_size);
    } else if (previousKey.size() != walk.key.mv_size ||
               std::memcmp(previousKey.data(), walk.key.mv_data, previousKey.size()) != 0) {
      walk.Damaged("a key is there twice");
    }
    ++totals.entries;
    totals.checksum += EntryChecksum(line, walk.key.mv_data, walk.key.mv_size);
    previousLine = line;
    visit(line, walk.key);
  }
  return totals;
}

TreeTotals CheckLines(MDB_txn* transaction, MDB_dbi lines, std::string const& name,
                      std::function<void(LineNumber, MDB_val const&)> const& visit) {
  TreeTotals totals;
  Walk walk(transaction, lines, name);
  LineNumber previousLine = 0;
  while (walk.Next()) {
    if (walk.key.mv_size != sizeof(LineNumber)) walk.Damaged("width of a line number");
    LineNumber const line = LineNumberOf(walk.key);
    if (line <= previousLine) walk.Damaged("lines out of order");
    ++totals.entries;
    ++totals.distinct;
    totals.checksum += EntryChecksum(line, walk.data.mv_data, walk.data.mv_size);
    previousLine = line;
    visit(line, walk.data);
  }
  return totals;
}

}  // namespace xo::tool
