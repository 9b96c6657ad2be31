#pragma once

#include <lmdb.h>

#include <cstdint>
#include <memory>
#include <string>

namespace xo::tool {

struct CloseEnvironment {
  void operator()(MDB_env* environment) const { mdb_env_close(environment); }
};
struct AbortTransaction {
  void operator()(MDB_txn* transaction) const { mdb_txn_abort(transaction); }
};
struct CloseCursor {
  void operator()(MDB_cursor* cursor) const { mdb_cursor_close(cursor); }
};
using LmdbEnvironment = std::unique_ptr<MDB_env, CloseEnvironment>;
using LmdbTransaction = std::unique_ptr<MDB_txn, AbortTransaction>;
using LmdbCursor = std::unique_ptr<MDB_cursor, CloseCursor>;

/// Looks at the file at `path` before LMDB does, which maps a file and trusts what it says of
/// itself: `Trouble` unless it is a regular file that can be read, both of its header pages are
/// LMDB's, and all pages that it uses are there. Returns its size in bytes.
std::uint64_t CheckLmdbFile(std::string const& path, std::string const& name);

/// Opens the environment in the file at `path`, with no lock file, as no file is ever written by
/// one process and used by another. `MDB_RDONLY`, for which there must be a crash guard, is the
/// only flag. A map of `mapSize` bytes is wanted; where there is not as much address space, writing
/// makes do with less.
LmdbEnvironment OpenEnvironment(std::string const& path, std::string const& name, unsigned flags,
                                std::size_t mapSize);

LmdbTransaction BeginTransaction(MDB_env* environment, std::string const& name, unsigned flags);

LmdbCursor OpenCursor(MDB_txn* transaction, MDB_dbi database, std::string const& name);

/// What every message about damage begins with.
std::string DamageMessage(std::string const& name);

/// `Trouble` about a call of LMDB that failed with `code` while the index `name` was read.
[[noreturn]] void ThrowUnreadable(std::string const& name, int code);

/// The same while it was written.
[[noreturn]] void ThrowUnwritable(std::string const& name, int code);

}  // namespace xo::tool
