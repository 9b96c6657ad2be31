#include "tools/text_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <xotypemgr.hpp>

#include "tools/comparison_report.hpp"
#include "tools/record_names.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_lines.hpp"
#include "tools/text_options.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct CompareOptions : TextOptions {
  std::string first;
  std::string second;
  bool json = false;
};

struct MatchOptions : TextOptions {
  std::string pattern;
  std::string file;
};

int CompareTexts(CompareOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language);
  unsigned short const cmpOp = OperatorOf(options, kCmpNoWildcards);
  XoString const first = DecodeArgument(options.first, set, language.number);
  XoString const second = DecodeArgument(options.second, set, language.number);
  ComparisonReport const report(first, second, cmpOp);
  WriteOutput(options.json ? report.AsJson() : report.AsText(OutputTakesColour()));
  return kDone;
}

int MatchLines(MatchOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language);
  unsigned short const cmpOp = OperatorOf(options, 0);
  XoString const pattern = DecodeArgument(options.pattern, set, language.number);
  TextLines source(options.file, set, language.number);
  int exitCode = kNothingFound;
  XoString text;
  while (source.Next(text)) {
    if (text.Compare(pattern, -1, cmpOp) != 0) continue;
    WriteOutput(source.Line());
    WriteOutput("\n");
    exitCode = kDone;
  }
  source.TellLosses();
  return exitCode;
}

}  // namespace

void AddTextCommands(CLI::App& tool, std::function<int()>& command) {
  CLI::App* const text = tool.add_subcommand("text", "Compare texts, and find them by a pattern");
  text->require_subcommand(1);

  auto const compared = std::make_shared<CompareOptions>();
  CLI::App* const compare =
      text->add_subcommand("compare", "Tell which of two texts comes first, and why");
  compare->add_option("A", compared->first, "a text, in UTF-8")->required();
  compare->add_option("B", compared->second, "the other; a pattern under --op wildcards")
      ->required();
  AddTextOptions(*compare, *compared);
  compare->add_flag("--json", compared->json, "print one JSON object");
  compare->callback(
      [compared, &command] { command = [compared] { return CompareTexts(*compared); }; });

  auto const matched = std::make_shared<MatchOptions>();
  CLI::App* const match = text->add_subcommand(
      "match", "Print the lines that match a pattern: * any characters, ? any one");
  match->add_option("PATTERN", matched->pattern, "the pattern, in UTF-8")->required();
  match->add_option("FILE", matched->file, "the text in UTF-8, - for standard input")->required();
  AddTextOptions(*match, *matched);
  match->callback([matched, &command] { command = [matched] { return MatchLines(*matched); }; });
}

}  // namespace xo::tool
