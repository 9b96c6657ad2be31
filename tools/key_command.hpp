#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `key` to `tool`: the bytes of a text's index key, field by field. What it does, and returns
/// as exit code, goes into `command`.
void AddKeyCommand(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
