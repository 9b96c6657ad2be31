#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `text`, which compares texts and finds lines by a pattern, to `tool`; the rest as at
/// `AddIndexCommands`.
void AddTextCommands(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
