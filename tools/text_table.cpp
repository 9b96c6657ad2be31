#include "tools/text_table.hpp"

#include <algorithm>

namespace xo::tool {
namespace {

/// Characters of a UTF-8 text: every byte but the following ones of a sequence.
std::size_t Width(std::string const& cell) {
  return static_cast<std::size_t>(std::count_if(cell.begin(), cell.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

}  // namespace

std::string TextTable::Text() const {
  std::vector<std::size_t> widths(columns.size());
  for (auto const& row : rows) {
    for (std::size_t column = 0; column < columns.size(); ++column) {
      widths[column] = std::max(widths[column], Width(row[column]));
    }
  }
  std::string text;
  for (auto const& row : rows) {
    std::string line;
    for (std::size_t column = 0; column < columns.size(); ++column) {
      std::string const fill(widths[column] - Width(row[column]), ' ');
      if (column != 0) line += "  ";
      line += columns[column] == 'n' ? fill + row[column] : row[column] + fill;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

}  // namespace xo::tool
