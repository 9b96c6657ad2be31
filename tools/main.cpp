#include <fmt/core.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <csignal>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/blob_command.hpp"
#include "tools/date_command.hpp"
#include "tools/index_command.hpp"
#include "tools/intl_command.hpp"
#include "tools/key_command.hpp"
#include "tools/printable.hpp"
#include "tools/sort_command.hpp"
#include "tools/standard_streams.hpp"
#include "tools/stop_signals.hpp"
#include "tools/text_command.hpp"
#include "tools/trouble.hpp"
#include "tools/types_command.hpp"
#include "tools/value_command.hpp"

namespace xo::tool {
namespace {

/// The library between its start and its stop.
struct LibraryContext {
  LibraryContext() { ___XoTypemgrContext(1); }
  ~LibraryContext() { ___XoTypemgrContext(0); }
  LibraryContext(LibraryContext const&) = delete;
  LibraryContext& operator=(LibraryContext const&) = delete;
};

std::string Version() {
  char const* description = nullptr;
  GetXoTypeMgrInfo(nullptr, nullptr, &description, nullptr, nullptr);
  return description;
}

/// The arguments in the reverse order in which CLI11 takes them. What stands behind "--" is no
/// option anyway.
std::vector<std::string> Arguments(int count, char** values) {
  std::vector<std::string> arguments(values + 1, values + count);
  constexpr std::string_view kOfValues[] = {"index", "print", "convert", "date"};
  bool const areValues = !arguments.empty() && std::find(std::begin(kOfValues), std::end(kOfValues),
                                                         arguments.front()) != std::end(kOfValues);
  for (std::string& argument : arguments) {
    if (argument == "--") break;
    if (areValues) MarkNegativeValue(argument);
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

int Run(int count, char** values) {
  LibraryContext const context;
  CLI::App tool("Types and typed indexes of the type manager", "xotm");
  tool.set_version_flag("--version", Version);
  tool.require_subcommand(1);
  std::function<int()> command;
  AddTypesCommand(tool, command);
  AddIndexCommands(tool, command);
  AddIntlCommands(tool, command);
  AddTextCommands(tool, command);
  AddSortCommand(tool, command);
  AddKeyCommand(tool, command);
  AddValueCommands(tool, command);
  AddDateCommand(tool, command);
  AddBlobCommand(tool, command);
  int exitCode = kDone;
  try {
    tool.parse(Arguments(count, values));
    exitCode = command();
  } catch (CLI::ParseError const& error) {
    if (error.get_exit_code() != 0) {
      throw Trouble(fmt::format("{} (see --help)", PrintableName(error.what())));
    }
    // The help or the version was asked for.
    tool.exit(error);
  }
  FinishOutput();
  return exitCode;
}

}  // namespace
}  // namespace xo::tool

int main(int count, char** values) {
  using namespace xo::tool;
  HoldStandardDescriptors();
  // A file that may not grow further is a failed write with a reason, not the end of the process.
  std::signal(SIGXFSZ, SIG_IGN);
  CatchStopSignals();
  try {
    return Run(count, values);
  } catch (Stopped const& stopped) {
    EndBySignal(stopped.signal);
  } catch (std::bad_alloc const&) {
    WriteMessage("not enough memory");
  } catch (std::exception const& error) {
    WriteMessage(error.what());
  }
  return kTrouble;
}
