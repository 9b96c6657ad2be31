#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `date` to `tool`. What the command does, and its exit code, goes to `command`.
void AddDateCommand(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
