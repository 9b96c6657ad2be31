#include "tools/new_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "tools/lmdb_file.hpp"
#include "tools/printable.hpp"

namespace xo::tool {
namespace {

/// The path behind symbolic links, so that the file is replaced and not a link to it. What the last
/// link points at need not be there yet.
std::filesystem::path FollowLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;  // as the system's own limit; a ring of links ends here
  std::error_code error;
  for (int link = 0; link < kMostLinks && std::filesystem::is_symlink(path, error); ++link) {
    // A relative link counts from the folder that it stands in.
    path = path.parent_path() / std::filesystem::read_symlink(path, error);
  }
  return path;
}

std::filesystem::path FolderOf(std::filesystem::path const& path) {
  return path.has_parent_path() ? path.parent_path() : std::filesystem::path{"."};
}

/// Gives a temporary file, which nobody else may read at first, the permissions and, where that is
/// allowed, the owner of the file at `path`, or the permissions of any new file.
void TakeOverPermissions(int descriptor, std::string const& path) {
  struct stat earlier {};
  if (stat(path.c_str(), &earlier) == 0) {
    [[maybe_unused]] int const result = fchown(descriptor, earlier.st_uid, earlier.st_gid);
    fchmod(descriptor, earlier.st_mode & ~mode_t{S_IFMT});
  } else {
    // The mask can only be read by changing it.
    mode_t const mask = umask(0);
    umask(mask);
    fchmod(descriptor, 0666 & ~mask);
  }
}

/// A file is safe in its place when its folder's entry is on the disk. A file system that cannot
/// promise that is none of this tool's trouble.
void SyncFolder(std::filesystem::path const& folder) {
  int const descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace

NewFile::NewFile(std::string const& path)
    : name(PrintableName(path)),
      finalPath(FollowLinks(path)),
      // A name of its own, as one that is longer than the final one might be too long.
      temporaryPath(FolderOf(finalPath) / ".xotm-XXXXXX"),
      descriptor(mkostemp(temporaryPath.data(), O_CLOEXEC)) {
  if (descriptor < 0) ThrowUnwritable(name, errno);
  TakeOverPermissions(descriptor, finalPath);
}

NewFile::~NewFile() {
  if (!installed) unlink(temporaryPath.c_str());
  close(descriptor);
}

void NewFile::Install() {
  if (std::rename(temporaryPath.c_str(), finalPath.c_str()) != 0) ThrowUnwritable(name, errno);
  installed = true;
  SyncFolder(FolderOf(finalPath));
}

void NewFile::ThrowWriteFailure(int code) const {
  ThrowUnwritable(name, code == EIO ? CauseOfShortWrite() : code);
}

// LMDB takes a write that came out short for a fault of the device, though it is how a disk begins
// to be full. What is written behind the end is refused for the true reason.
int NewFile::CauseOfShortWrite() const {
  constexpr int kAttempts = 256;
  constexpr std::array<char, 4096> kBlock{};
  if (lseek(descriptor, 0, SEEK_END) < 0) return errno;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (write(descriptor, kBlock.data(), kBlock.size()) < 0) return errno;
  }
  return EIO;
}

}  // namespace xo::tool
