#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `blob` to `tool`. What the command does, and its exit code, goes to `command`.
void AddBlobCommand(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
