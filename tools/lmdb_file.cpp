#include "tools/lmdb_file.hpp"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstring>

#include "tools/crash_guard.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

// The header of an LMDB data file: pages 0 and 1 are alike, and the one with the higher transaction
// number counts. LMDB writes them as these structures, in the machine's own byte order and word
// size.
struct DatabaseRecord {
  std::uint32_t pad;  // of the first database: the page size
  std::uint16_t flags;
  std::uint16_t depth;
  std::size_t branchPages;
  std::size_t leafPages;
  std::size_t overflowPages;
  std::size_t entries;
  std::size_t root;
};
struct HeaderPage {
  std::size_t pageNumber;
  std::uint16_t pad;
  std::uint16_t pageFlags;
  std::uint32_t bounds;
  std::uint32_t magic;
  std::uint32_t version;
  std::size_t address;
  std::size_t mapSize;
  DatabaseRecord databases[2];
  std::size_t lastPage;
  std::size_t transaction;
};
static_assert(sizeof(HeaderPage) == 16 + 8 + 16 + 96 + 16);

constexpr std::uint16_t kHeaderPageFlag = 0x08;
constexpr std::uint32_t kMagic = 0xBEEFC0DE;
constexpr std::uint32_t kFormatVersion = 1;
constexpr std::uint32_t kSmallestPage = 512;
constexpr std::uint32_t kLargestPage = 65536;

/// Databases of one environment.
constexpr MDB_dbi kDatabases = 4;

/// A file descriptor that is closed at the end.
struct Descriptor {
  int number;
  ~Descriptor() { close(number); }
};

int OpenRegularFile(std::string const& path, std::string const& name) {
  // Opened without waiting, as the other end of a pipe may never come.
  int const descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    throw Trouble(fmt::format("{} cannot be opened: {}", name, std::strerror(errno)));
  }
  struct stat status {};
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(descriptor);
    throw Trouble(
        fmt::format("{} is {}", name, S_ISDIR(status.st_mode) ? "a directory" : "no regular file"));
  }
  return descriptor;
}

std::uint64_t FileSize(int descriptor, std::string const& name) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) ThrowUnreadable(name, errno);
  return static_cast<std::uint64_t>(status.st_size);
}

HeaderPage ReadHeaderPage(int descriptor, std::string const& name, off_t offset) {
  HeaderPage page;
  ssize_t const count = pread(descriptor, &page, sizeof page, offset);
  if (count < 0) ThrowUnreadable(name, errno);
  bool const whole = static_cast<std::size_t>(count) == sizeof page;
  if (!whole || page.magic != kMagic || (page.pageFlags & kHeaderPageFlag) == 0) {
    if (offset != 0) throw Trouble(fmt::format("{} (second header page)", DamageMessage(name)));
    throw Trouble(fmt::format("{} is no index made by xotm", name));
  }
  if (page.version != kFormatVersion) {
    throw Trouble(fmt::format("{} was written by another version of LMDB", name));
  }
  return page;
}

std::string ErrorText(int code) {
  // The numbers of errno are positive, LMDB's own negative.
  return code > 0 ? std::strerror(code) : mdb_strerror(code);
}

}  // namespace

std::uint64_t CheckLmdbFile(std::string const& path, std::string const& name) {
  Descriptor const file{OpenRegularFile(path, name)};
  std::uint64_t const size = FileSize(file.number, name);
  if (size == 0) throw Trouble(fmt::format("{} is empty: it is no index made by xotm", name));
  HeaderPage const first = ReadHeaderPage(file.number, name, 0);
  std::uint32_t const pageSize = first.databases[0].pad;
  if (pageSize < kSmallestPage || pageSize > kLargestPage || !std::has_single_bit(pageSize)) {
    throw Trouble(fmt::format("{} (page size {})", DamageMessage(name), pageSize));
  }
  HeaderPage const second = ReadHeaderPage(file.number, name, static_cast<off_t>(pageSize));
  if (second.databases[0].pad != pageSize) {
    throw Trouble(fmt::format("{} (two page sizes)", DamageMessage(name)));
  }
  std::uint64_t const lastPage =
      second.transaction > first.transaction ? second.lastPage : first.lastPage;
  std::uint64_t const wholePages = size / pageSize;
  if (lastPage >= wholePages) {
    throw Trouble(
        fmt::format("{}: it is truncated, page {} is not there", DamageMessage(name), lastPage));
  }
  return size;
}

LmdbEnvironment OpenEnvironment(std::string const& path, std::string const& name, unsigned flags,
                                std::size_t mapSize) {
  constexpr std::size_t kLeastMap = std::size_t{1} << 20;
  constexpr mdb_mode_t kMode = 0666;
  bool const reading = (flags & MDB_RDONLY) != 0;
  for (;;) {
    MDB_env* created = nullptr;
    if (int const code = mdb_env_create(&created); code != 0) ThrowUnreadable(name, code);
    LmdbEnvironment environment{created};
    if (reading) mdb_env_set_assert(created, EndOnLmdbAssertion);
    mdb_env_set_maxdbs(created, kDatabases);
    mdb_env_set_mapsize(created, mapSize);
    int const code = mdb_env_open(created, path.c_str(), flags | MDB_NOSUBDIR | MDB_NOLOCK, kMode);
    if (code == 0) return environment;
    if (reading) ThrowUnreadable(name, code);
    // The map of an index that is written is address space without memory or disk behind it.
    if (code != ENOMEM || mapSize <= kLeastMap) ThrowUnwritable(name, code);
    mapSize /= 2;
  }
}

LmdbTransaction BeginTransaction(MDB_env* environment, std::string const& name, unsigned flags) {
  MDB_txn* transaction = nullptr;
  if (int const code = mdb_txn_begin(environment, nullptr, flags, &transaction); code != 0) {
    ThrowUnreadable(name, code);
  }
  return LmdbTransaction{transaction};
}

LmdbCursor OpenCursor(MDB_txn* transaction, MDB_dbi database, std::string const& name) {
  MDB_cursor* cursor = nullptr;
  if (int const code = mdb_cursor_open(transaction, database, &cursor); code != 0) {
    ThrowUnreadable(name, code);
  }
  return LmdbCursor{cursor};
}

std::string DamageMessage(std::string const& name) { return fmt::format("{} is damaged", name); }

void ThrowUnreadable(std::string const& name, int code) {
  if (code > 0 && code != EINVAL) {
    throw Trouble(fmt::format("{} cannot be read: {}", name, ErrorText(code)));
  }
  throw Trouble(fmt::format("{} ({})", DamageMessage(name), ErrorText(code)));
}

void ThrowUnwritable(std::string const& name, int code) {
  std::string reason = ErrorText(code);
  if (code == MDB_MAP_FULL) reason = "it would be larger than the address space to be had";
  throw Trouble(fmt::format("{} cannot be written: {}", name, reason));
}

}  // namespace xo::tool
