#include "tools/progress.hpp"

#include <fmt/core.h>
#include <unistd.h>

#include <cstdio>

namespace xo::tool {
namespace {

constexpr std::chrono::milliseconds kFirst{1000};
constexpr std::chrono::milliseconds kInterval{100};

}  // namespace

Progress::Progress()
    : active(isatty(STDERR_FILENO) != 0), next(std::chrono::steady_clock::now() + kFirst) {}

void Progress::Lines(std::uint64_t lines, std::uint64_t bytes, std::uint64_t bytesInAll) {
  if (!active || std::chrono::steady_clock::now() < next) return;
  Show(bytesInAll > 0 ? fmt::format("{} lines, {} %", lines, bytes * 100 / bytesInAll)
                      : fmt::format("{} lines", lines));
}

void Progress::Phase(char const* words) {
  // A command that was quick so far stays quiet.
  if (shown) Show(words);
}

void Progress::Show(std::string const& words) {
  fmt::print(stderr, "\r\033[K{}", words);
  std::fflush(stderr);
  shown = true;
  next = std::chrono::steady_clock::now() + kInterval;
}

void Progress::Clear() {
  if (!shown) return;
  fmt::print(stderr, "\r\033[K");
  std::fflush(stderr);
  shown = false;
}

}  // namespace xo::tool
