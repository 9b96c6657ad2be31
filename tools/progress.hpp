#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace xo::tool {

/// A line on the terminal that tells how far a long command has come. It appears after a moment
/// only, vanishes at the end, and is not there at all where standard error is no terminal.
class Progress {
 public:
  Progress();
  ~Progress() { Clear(); }
  Progress(Progress const&) = delete;
  Progress& operator=(Progress const&) = delete;

  /// `lines` have been read, `bytes` of `bytesInAll` (0 for not known).
  void Lines(std::uint64_t lines, std::uint64_t bytes, std::uint64_t bytesInAll);
  /// What is being done now, when it cannot be counted.
  void Phase(char const* words);
  /// Takes the line off the terminal.
  void Clear();

 private:
  void Show(std::string const& words);

  bool active;
  bool shown = false;
  std::chrono::steady_clock::time_point next;
};

}  // namespace xo::tool
