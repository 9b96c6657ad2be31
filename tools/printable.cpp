#include "tools/printable.hpp"

#include <fmt/core.h>

#include <iterator>

namespace xo::tool {
namespace {

constexpr unsigned char kDelete = 0x7f;

void AppendEscaped(std::string& out, unsigned char byte) {
  switch (byte) {
    case '\t':
      out += "\\t";
      break;
    case '\n':
      out += "\\n";
      break;
    case '\r':
      out += "\\r";
      break;
    default:
      fmt::format_to(std::back_inserter(out), "\\x{:02x}", byte);
  }
}

}  // namespace

std::string PrintableName(std::string_view name) {
  std::string out;
  for (char const character : name) {
    auto const byte = static_cast<unsigned char>(character);
    // Bytes above ASCII are left alone: they are the letters of names in other scripts.
    if (byte < ' ' || byte == kDelete) {
      AppendEscaped(out, byte);
    } else {
      out += character;
    }
  }
  return out;
}

std::string QuotedText(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  std::string out = "'";
  for (char const character : text.substr(0, kLongest)) {
    auto const byte = static_cast<unsigned char>(character);
    if (byte < ' ' || byte >= kDelete) {
      AppendEscaped(out, byte);
    } else {
      out += character;
    }
  }
  if (text.size() > kLongest) out += "...";
  return out += '\'';
}

}  // namespace xo::tool
