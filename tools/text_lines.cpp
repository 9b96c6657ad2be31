#include "tools/text_lines.hpp"

#include <fmt/core.h>

#include "tools/standard_streams.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {

bool TextLines::Next(XoString& text) {
  if (!source.Next()) return false;
  std::string_view line = source.Text();
  if (line.ends_with('\r')) line.remove_suffix(1);
  std::string const complaint = decoder.Decode(line, text);
  if (!complaint.empty()) {
    throw Trouble(fmt::format("{}, line {} {}", source.Name(), source.Number(), complaint));
  }
  if (std::string const loss = decoder.Loss(); !loss.empty()) {
    if (losses == 0) {
      firstLoss = fmt::format("{}, line {}: {}, which counts as {}", source.Name(), source.Number(),
                              loss, decoder.Substitute());
    }
    ++losses;
  }
  return true;
}

void TextLines::TellLosses() const {
  if (losses == 0) return;
  std::string const others =
      losses > 1 ? fmt::format(" ({} lines with such characters)", losses) : std::string();
  WriteMessage(fmt::format("note: {}{}", firstLoss, others));
}

}  // namespace xo::tool
