#include "tools/sort_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/record_names.hpp"
#include "tools/standard_streams.hpp"
#include "tools/stop_signals.hpp"
#include "tools/text_lines.hpp"
#include "tools/text_options.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct SortOptions : TextOptions {
  std::string file;
};

/// A line by its text, and where it stands in what was read.
struct SortedLine {
  XoString text;
  std::size_t begin;
  std::size_t size;
};

/// Whether one line comes before another. Looks now and then for the user's wish to stop.
class ComesBefore {
 public:
  explicit ComesBefore(unsigned short op) : cmpOp(op) {}
  bool operator()(SortedLine const& a, SortedLine const& b) {
    constexpr unsigned kLook = 1u << 16;
    if (++comparisons % kLook == 0) ThrowIfStopped();
    return a.text.Compare(b.text, -1, cmpOp) < 0;
  }

 private:
  unsigned short cmpOp;
  unsigned comparisons = 0;
};

int SortLines(SortOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language);
  unsigned short const cmpOp = OperatorOf(options, kCmpNoWildcards);
  if (HasPattern(cmpOp)) throw Trouble("--op: lines cannot be sorted with wildcards on");

  TextLines source(options.file, set, language.number);
  std::string bytes;
  std::vector<SortedLine> lines;
  XoString text;
  while (source.Next(text)) {
    std::string_view const line = source.Line();
    lines.push_back({std::move(text), bytes.size(), line.size()});
    bytes += line;
  }
  source.TellLosses();
  std::stable_sort(lines.begin(), lines.end(), ComesBefore(cmpOp));
  for (SortedLine const& line : lines) {
    WriteOutput(std::string_view(bytes).substr(line.begin, line.size));
    WriteOutput("\n");
  }
  return kDone;
}

}  // namespace

void AddSortCommand(CLI::App& tool, std::function<int()>& command) {
  auto const options = std::make_shared<SortOptions>();
  CLI::App* const sort = tool.add_subcommand("sort", "Sort the lines of a text in UTF-8");
  sort->add_option("FILE", options->file, "the text, - for standard input")->required();
  AddTextOptions(*sort, *options);
  sort->callback([options, &command] { command = [options] { return SortLines(*options); }; });
}

}  // namespace xo::tool
