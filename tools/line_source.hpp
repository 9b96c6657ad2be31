#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace xo::tool {

/// Reads the lines of a file or of standard input, which may be of any size and hold any bytes.
///
/// A byte order mark before the first line is no part of it. The last line needs no line feed.
/// Whatever cannot be read is `Trouble`.
class LineSource {
 public:
  /// Opens the file at `path`, or takes standard input for "-".
  explicit LineSource(std::string const& path);
  ~LineSource();
  LineSource(LineSource const&) = delete;
  LineSource& operator=(LineSource const&) = delete;

  /// Moves on to the next line; false at the end.
  bool Next();
  /// The present line without its line feed, until the next call of `Next`.
  std::string_view Text() const { return text; }
  /// Its number, from 1.
  std::uint64_t Number() const { return number; }

  /// What messages call the input.
  std::string const& Name() const { return name; }
  /// Bytes of all lines so far, and of the whole input, 0 when that is not known beforehand.
  std::uint64_t BytesRead() const { return bytesRead; }
  std::uint64_t BytesInAll() const { return bytesInAll; }

 private:
  /// Reads on behind the bytes that are there; false at the end of the input.
  bool Fill();

  std::string name;
  int descriptor = -1;
  std::vector<char> buffer;
  // What was read and not yet given out: `buffer` from `begin` to `end`.
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string_view text;
  std::uint64_t number = 0;
  std::uint64_t bytesRead = 0;
  std::uint64_t bytesInAll = 0;
};

/// The `column`th field of `line`, from 1; nothing if the line has fewer.
std::optional<std::string_view> FieldOf(std::string_view line, std::size_t column, char delimiter);

}  // namespace xo::tool
