#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace xo::tool {

/// Adds `intl`, which shows code sets, languages, sort orders and the collation's version, to
/// `tool`; the rest as at `AddIndexCommands`.
void AddIntlCommands(CLI::App& tool, std::function<int()>& command);

}  // namespace xo::tool
