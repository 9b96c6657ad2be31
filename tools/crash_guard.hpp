#pragma once

#include <lmdb.h>

#include <string_view>

namespace xo::tool {

/// The last resort against damaged index files. LMDB follows the numbers in a file's pages as they
/// are, so damage that no check has found can make it fail an assertion or read beyond the map.
///
/// While a guard is there, either ends the process with `message` as its one line on standard error
/// and the exit code of trouble. One guard at a time: the message is kept in a buffer of the
/// process that only the constructor writes. Builds for the address sanitizer leave the signals
/// to it.
class CrashGuard {
 public:
  explicit CrashGuard(std::string_view message);
  ~CrashGuard();
  CrashGuard(CrashGuard const&) = delete;
  CrashGuard& operator=(CrashGuard const&) = delete;
};

/// For `mdb_env_set_assert`, where there is a guard.
[[noreturn]] void EndOnLmdbAssertion(MDB_env* environment, char const* assertion);

}  // namespace xo::tool
