#pragma once

#include <string>

namespace xo::tool {

/// A file in the making, beside the one that it is to become or replace. Until `Install` has
/// returned, whatever stands at the path stays as it was; without it nothing is left behind.
class NewFile {
 public:
  /// Makes an empty file, with the permissions that the one at `path` has or would get.
  explicit NewFile(std::string const& path);
  ~NewFile();
  NewFile(NewFile const&) = delete;
  NewFile& operator=(NewFile const&) = delete;

  /// Where the file is now.
  std::string const& Path() const { return temporaryPath; }

  /// Puts the file, whose content is on the disk, in the place that it was made for, in one step.
  void Install();

  /// `Trouble` about a call that failed with `code`, a number of errno or LMDB's, while the file
  /// was written.
  [[noreturn]] void ThrowWriteFailure(int code) const;

 private:
  int CauseOfShortWrite() const;

  /// The path as messages name it.
  std::string name;
  std::string finalPath;
  std::string temporaryPath;
  int descriptor = -1;
  bool installed = false;
};

}  // namespace xo::tool
