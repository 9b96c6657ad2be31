#include "tools/value_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/index_command.hpp"
#include "tools/line_source.hpp"
#include "tools/printable.hpp"
#include "tools/record_names.hpp"
#include "tools/row_value.hpp"
#include "tools/standard_streams.hpp"
#include "tools/temporal_views.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// Where values come from, and how their text is read.
struct ValueOptions {
  std::vector<std::string> values;
  std::string input = "-";
  std::string scanFormat;
  bool hasScanFormat = false;
  std::string codeSet = "windows-1252";

  char const* ScanFormat() const { return hasScanFormat ? scanFormat.c_str() : nullptr; }
};

struct PrintOptions : ValueOptions {
  std::string type;
  std::string format;
};

struct ConvertOptions : ValueOptions {
  std::string from;
  std::string to;
  std::string format;
  bool hasFormat = false;
};

XoCodeSet const& NarrowSetNamed(std::string const& wanted) {
  constexpr unsigned char kFirstWideSet = 225;
  XoCodeSet const& set = CodeSetNamed(wanted);
  if (set.number >= kFirstWideSet) {
    throw Trouble(fmt::format("--code-set {}: text prints in code sets of 8 bits only", wanted));
  }
  return set;
}

/// Calls `use` with each value and the place that it is from, worded to stand before a message.
template <class Use>
void ForEachValue(ValueOptions const& options, Use use) {
  for (std::string const& value : options.values) use(ValueOf(value), std::string());
  if (!options.values.empty()) return;
  LineSource source(options.input);
  while (source.Next()) {
    std::string_view line = source.Text();
    if (line.ends_with('\r')) line.remove_suffix(1);
    use(line, fmt::format("{}, line {}: ", PrintableName(source.Name()), source.Number()));
  }
}

/// Reads a value, which also has to be one that can be used.
void TakeValue(RowValue& value, std::string_view text, ValueOptions const& options,
               std::string const& place) {
  ScanValue(value, text, options.ScanFormat(), place);
  if (std::string const reason = WhyUnusable(value); !reason.empty()) {
    throw Trouble(fmt::format("{}{} is no valid {}: {}", place, QuotedText(text),
                              TypeName(value.Type()), reason));
  }
}

int PrintValues(PrintOptions const& options) {
  char const type = FindType(options.type);
  XoCodeSet const& set = NarrowSetNamed(options.codeSet);
  ForEachValue(options, [&](std::string_view text, std::string const& place) {
    RowValue value(type, set);
    TakeValue(value, text, options, place);
    WriteOutput(value.Print(options.format.c_str()) + '\n');
  });
  return kDone;
}

int ConvertValues(ConvertOptions const& options) {
  char const from = FindType(options.from);
  char const to = FindType(options.to);
  XoCodeSet const& set = NarrowSetNamed(options.codeSet);
  // A type without values is told before any input is looked at.
  RowValue const probe(to, set);
  XoTypeMgr manager;
  ForEachValue(options, [&](std::string_view text, std::string const& place) {
    RowValue value(from, set);
    TakeValue(value, text, options, place);
    std::unique_ptr<XoTypeConvertData> const strings(manager.ConvertTo(from, value.Get(), 1));
    if (strings == nullptr) {
      throw Trouble(fmt::format("values of type {} do not convert", TypeName(from)));
    }
    RowValue const converted(to, manager.ConvertFrom(to, strings.get(), 1), set);
    if (converted.Get() == nullptr) {
      throw Trouble(fmt::format("values do not convert to type {}", TypeName(to)));
    }
    WriteOutput(converted.Print(options.hasFormat ? options.format.c_str() : nullptr) + '\n');
  });
  return kDone;
}

/// Adds what both commands have. VALUE stands last on their lines.
void AddValueOptions(CLI::App& command, ValueOptions& options) {
  command.add_option("VALUE", options.values, "values; without any, one in each line of --input");
  command.add_option("--input", options.input, "a text, - for standard input")
      ->capture_default_str();
  command
      .add_option("--scan-format", options.scanFormat,
                  "format that values are read by; that of the row by default")
      ->each([&options](std::string const&) { options.hasScanFormat = true; });
  command.add_option("--code-set", options.codeSet, "of text: number or name, of 8 bits")
      ->capture_default_str();
}

}  // namespace

void AddValueCommands(CLI::App& tool, std::function<int()>& command) {
  auto const printed = std::make_shared<PrintOptions>();
  CLI::App* const print = tool.add_subcommand("print", "Print values by a format");
  print->add_option("TYPE", printed->type, "type of the values, see 'xotm types'")->required();
  print->add_option("FORMAT", printed->format, "format to print by")->required();
  AddValueOptions(*print, *printed);
  print->callback([printed, &command] { command = [printed] { return PrintValues(*printed); }; });

  auto const converted = std::make_shared<ConvertOptions>();
  CLI::App* const convert =
      tool.add_subcommand("convert", "Convert values of one type to another, by way of strings");
  convert->add_option("--from", converted->from, "type of the values, see 'xotm types'")
      ->required();
  convert->add_option("--to", converted->to, "type to convert to")->required();
  convert
      ->add_option("--format", converted->format,
                   "format to print the result by; that of its row by default")
      ->each([converted](std::string const&) { converted->hasFormat = true; });
  AddValueOptions(*convert, *converted);
  convert->callback(
      [converted, &command] { command = [converted] { return ConvertValues(*converted); }; });
}

}  // namespace xo::tool
