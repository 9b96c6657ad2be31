#include "tools/line_source.hpp"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tools/printable.hpp"
#include "tools/stop_signals.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

/// A line longer than this is taken for a file that has no lines at all, before it eats up memory.
constexpr std::size_t kLongestLine = std::size_t{1} << 26;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

LineSource::LineSource(std::string const& path)
    : name(path == "-" ? "standard input" : PrintableName(path)), buffer(kBlock) {
  descriptor = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (descriptor < 0 || fstat(descriptor, &status) != 0) {
    throw Trouble(fmt::format("{} cannot be read: {}", name, std::strerror(errno)));
  }
  if (S_ISREG(status.st_mode)) bytesInAll = static_cast<std::uint64_t>(status.st_size);
}

LineSource::~LineSource() {
  if (descriptor > STDIN_FILENO) close(descriptor);
}

bool LineSource::Fill() {
  if (end == buffer.size()) {
    if (begin != 0) {
      std::memmove(buffer.data(), buffer.data() + begin, end - begin);
      end -= begin;
      begin = 0;
    } else if (buffer.size() < kLongestLine) {
      buffer.resize(buffer.size() * 2);
    } else {
      throw Trouble(fmt::format("{}, line {}: it is longer than {} MiB", name, number + 1,
                                kLongestLine >> 20));
    }
  }
  for (;;) {
    WaitForInput(descriptor);
    ssize_t const count = read(descriptor, buffer.data() + end, buffer.size() - end);
    if (count >= 0) {
      end += static_cast<std::size_t>(count);
      return count > 0;
    }
    if (errno != EINTR) {
      throw Trouble(fmt::format("{} cannot be read: {}", name, std::strerror(errno)));
    }
  }
}

bool LineSource::Next() {
  std::size_t searched = 0;
  char const* lineFeed = nullptr;
  for (;;) {
    char const* const start = buffer.data() + begin;
    std::size_t const size = end - begin;
    if (size > searched) {
      lineFeed = static_cast<char const*>(std::memchr(start + searched, '\n', size - searched));
    }
    if (lineFeed != nullptr) break;
    searched = size;
    if (!Fill()) break;
  }
  if (lineFeed == nullptr && begin == end) return false;

  char const* const start = buffer.data() + begin;
  std::size_t const size =
      lineFeed != nullptr ? static_cast<std::size_t>(lineFeed - start) : end - begin;
  std::size_t const taken = lineFeed != nullptr ? size + 1 : size;
  text = {start, size};
  begin += taken;
  bytesRead += taken;
  ++number;
  if (number == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return true;
}

std::optional<std::string_view> FieldOf(std::string_view line, std::size_t column, char delimiter) {
  for (; column > 1; --column) {
    std::size_t const stop = line.find(delimiter);
    if (stop == std::string_view::npos) return std::nullopt;
    line.remove_prefix(stop + 1);
  }
  return line.substr(0, line.find(delimiter));
}

}  // namespace xo::tool
