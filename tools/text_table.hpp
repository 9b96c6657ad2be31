#pragma once

#include <string>
#include <vector>

namespace xo::tool {

/// A table for the terminal: columns as wide as their widest cell. The first row is the heading;
/// columns of numbers stand to the right.
class TextTable {
 public:
  /// `kinds` has a letter for each column: 'n' for numbers, 't' for text.
  explicit TextTable(std::string kinds) : columns(std::move(kinds)) {}

  /// Adds a row with a cell for each column, in UTF-8.
  void Add(std::vector<std::string> row) { rows.push_back(std::move(row)); }

  std::string Text() const;

 private:
  std::string columns;
  std::vector<std::vector<std::string>> rows;
};

}  // namespace xo::tool
