#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `sort`, which sorts the lines of a text as its language does, to `tool`; the rest as at
/// `AddIndexCommands`.
void AddSortCommand(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
