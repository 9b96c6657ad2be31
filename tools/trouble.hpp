#pragma once

#include <stdexcept>

namespace xo::tool {

// Exit codes of the tool.
inline constexpr int kDone = 0;
inline constexpr int kNothingFound = 1;
inline constexpr int kTrouble = 2;

/// What ends a command: one line for the user, who gets it on standard error with exit code 2.
class Trouble : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace xo::tool
