#pragma once

#include <string>
#include <vector>

namespace xo::tool {

/// What each row of the table was asked, and where an answer was wrong.
struct RowCheck {
  int rows = 0;
  int questions = 0;
  /// One line each.
  std::vector<std::string> faults;
};

/// Asks every row that stands for a type for everything that a row has an operation for, with two
/// values of which it is known how they print and order.
RowCheck CheckRows();

}  // namespace xo::tool
