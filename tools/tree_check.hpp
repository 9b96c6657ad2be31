#pragma once

#include <lmdb.h>

#include <cstdint>
#include <functional>
#include <string>

#include "tools/index_layout.hpp"

namespace xo::tool {

/// Sums over a whole database.
struct TreeTotals {
  std::uint64_t entries = 0;
  std::uint64_t distinct = 0;
  std::uint64_t checksum = 0;
};

/// Walks the `keys` database of the index `name` from end to end: each key is above the one before
/// it, and the lines of each ascend. `visit` is called for every line number with its key. What is
/// out of order is `Trouble`.
TreeTotals CheckKeys(MDB_txn* transaction, MDB_dbi keys, std::string const& name,
                     std::function<void(LineNumber, MDB_val const&)> const& visit);

/// The same for the `lines` or the `values` database; `visit` is given what each line has there.
TreeTotals CheckLines(MDB_txn* transaction, MDB_dbi lines, std::string const& name,
                      std::function<void(LineNumber, MDB_val const&)> const& visit);

}  // namespace xo::tool
