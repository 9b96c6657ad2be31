#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <xotypemgr.hpp>

#include "tools/line_source.hpp"
#include "tools/text_decoder.hpp"

namespace xo::tool {

/// Reads the lines of a file in UTF-8 as strings. A line that cannot be one is `Trouble`.
class TextLines {
 public:
  /// The file at `path`, or standard input for "-".
  TextLines(std::string const& path, XoCodeSet const& set, unsigned char language)
      : source(path), decoder(set, language) {}

  /// Moves on to the next line and makes it the text of `text`; false at the end. A carriage return
  /// before the line feed belongs to the line's end, not to the text.
  bool Next(XoString& text);

  /// The line's bytes, until the next call of `Next`.
  std::string_view Line() const { return source.Text(); }

  /// Tells the user about characters that the strings did not hold.
  void TellLosses() const;

 private:
  LineSource source;
  TextDecoder decoder;
  /// The first line that lost a character, in words, and how many did.
  std::string firstLoss;
  std::uint64_t losses = 0;
};

}  // namespace xo::tool
