#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `types`, which shows the table of types, to `tool`; the rest as at `AddIndexCommands`.
void AddTypesCommand(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
