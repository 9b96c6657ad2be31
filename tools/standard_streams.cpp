#include "tools/standard_streams.hpp"

#include <fcntl.h>
#include <fmt/core.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

[[noreturn]] void ThrowUnwritten() {
  throw Trouble(fmt::format("standard output cannot be written: {}", std::strerror(errno)));
}

}  // namespace

void HoldStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // The lowest free descriptor is taken. Writing to it fails, as it must.
    if (fcntl(descriptor, F_GETFD) == -1) static_cast<void>(open("/dev/null", O_RDONLY));
  }
}

void WriteOutput(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) ThrowUnwritten();
}

bool OutputTakesColour() {
  char const* const none = std::getenv("NO_COLOR");
  if (none != nullptr && *none != '\0') return false;
  char const* const terminal = std::getenv("TERM");
  if (terminal == nullptr || std::string_view(terminal) == "dumb") return false;
  return isatty(STDOUT_FILENO) != 0;
}

void FlushOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) ThrowUnwritten();
}

void FinishOutput() {
  FlushOutput();
  // Network file systems tell about a full disk at the close.
  if (close(STDOUT_FILENO) != 0) ThrowUnwritten();
}

void WriteMessage(std::string_view message) {
  std::string const line = fmt::format("xotm: {}\n", message);
  // There is nowhere to tell that this failed.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace xo::tool
