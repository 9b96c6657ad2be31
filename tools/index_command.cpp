#include "tools/index_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>

#include "tools/standard_streams.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

constexpr char kBigEndian[] = "big";
constexpr char kLittleEndian[] = "little";

void AddFormatOption(CLI::App& command, std::string& format) {
  command.add_option("--format", format,
                     "how a value is written; that of its type by default, see 'xotm types'");
}

void AddCreate(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<CreateOptions>();
  CLI::App* const create =
      index.add_subcommand("create", "Build an index of the values in the lines of a text");
  create->add_option("FILE", options->file, "the index; one that is there is replaced")->required();
  CLI::Option* const type =
      create->add_option("--type", options->type, "type of the values, see 'xotm types'");
  CLI::Option* const input =
      create->add_option("--input", options->input, "the text, - for standard input");
  create->add_option("--column", options->column, "field of the line that holds the value")
      ->check(CLI::Range(std::int64_t{1}, INT64_MAX).description(">= 1"))
      ->capture_default_str();
  create->add_option("--delimiter", options->delimiter, "character between fields, \\t for a tab")
      ->check([](std::string const& text) {
        return text.size() == 1 || text == "\\t" ? "" : "must be one character or \\t";
      })
      ->capture_default_str();
  create->add_option("--skip", options->skip, "lines to pass over at the beginning")
      ->check(CLI::Range(std::int64_t{0}, INT64_MAX).description(">= 0"))
      ->capture_default_str();
  AddByteOrderOption(*create, options->byteOrder, "byte order of the stored values")
      ->capture_default_str();
  create
      ->add_option("--on-error", options->onError,
                   "stop at the first line without a value, or skip and count such lines")
      ->check(CLI::IsMember({"stop", "skip"}))
      ->capture_default_str();
  AddFormatOption(*create, options->format);
  create->add_flag("--patterns", options->patterns,
                   "of dates and times: a value may have wildcards, such as *-12-24");
  create->add_option("--language", options->language,
                     "of text: number, name or tag; neutral by default");
  create->add_option("--code-set", options->codeSet, "of text: number or name; Unicode by default");
  create
      ->add_option("--key-length", options->keyLength,
                   fmt::format("of text: bytes of a key at most, {} by default", kUsualKey))
      ->check(CLI::Range(kShortestKey, kLongestKey));
  CLI::Option* const rebuild = create->add_flag("--rebuild", options->rebuild,
                                                "rebuild an index of text from its own values");
  rebuild->excludes(type)->excludes(input);
  create->callback([options, type, input, &command] {
    if (!options->rebuild) {
      for (CLI::Option const* const needed : {type, input}) {
        if (needed->count() == 0) throw CLI::RequiredError(needed->get_name());
      }
    }
    command = [options] {
      return options->rebuild ? RebuildIndex(*options) : CreateIndex(*options);
    };
  });
}

void AddReadOptions(CLI::App& reader, ReadOptions& options) {
  reader.add_option("FILE", options.file, "the index")->required();
  reader.add_option("--type", options.type, "type that the values are thought to be of");
  AddByteOrderOption(reader, options.byteOrder, "byte order that is thought to be stored");
}

void AddSearchOptions(CLI::App& search, SearchOptions& options) {
  AddFormatOption(search, options.format);
  search.add_flag("--line-numbers", options.lineNumbers, "print the number before each line");
  search.add_flag("--count", options.count, "print only how many lines there are");
  search.add_flag("--json", options.json, "print one JSON object for each line");
  search.add_flag("--stats", options.stats, "tell the comparisons made and the time taken");
}

/// A flag by which a search of text sets a bit of its comparisons.
struct ComparisonFlag {
  char const* name;
  unsigned short bit;
  char const* description;
};
constexpr ComparisonFlag kComparisonFlags[] = {
    {"--ignore-case", kCmpIgnoreCase, "of text: upper and lower case are the same"},
    {"--ignore-accents", kCmpIgnoreAccents, "of text: letters are the same with any accent"},
    {"--skip-spaces", kCmpSkipSpaces, "of text: spaces do not count"},
    {"--skip-symbols", kCmpSkipSymbols, "of text: symbols do not count"},
    {"--no-wildcards", kCmpNoWildcards, "* and, of text, ? stand for themselves"},
};

/// `bits` is a part of what `owner` keeps.
void AddComparisonFlags(CLI::App& command, unsigned& bits, std::shared_ptr<void> const& owner) {
  for (ComparisonFlag const& flag : kComparisonFlags) {
    command.add_flag_callback(
        flag.name, [owner, &bits, bit = flag.bit] { bits |= bit; }, flag.description);
  }
}

void AddFind(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<SearchOptions>();
  CLI::App* const find = index.add_subcommand(
      "find", "Print the lines that hold a value, or one that matches a pattern");
  AddReadOptions(*find, *options);
  find->add_option("VALUE", options->low,
                   "the value; in text, * stands for any characters and ? for any one, in dates "
                   "and times * for any year, month, day and so on")
      ->required();
  AddComparisonFlags(*find, options->cmpOp, options);
  AddSearchOptions(*find, *options);
  find->callback([options, &command] { command = [options] { return SearchIndex(*options); }; });
}

void AddRange(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<SearchOptions>();
  CLI::App* const range = index.add_subcommand("range", "Print the lines from value to value");
  AddReadOptions(*range, *options);
  range->add_option("LOW", options->low, "the lowest value")->required();
  range->add_option("HIGH", options->high, "the highest value")->required();
  AddSearchOptions(*range, *options);
  range->callback([options, &command] { command = [options] { return SearchIndex(*options); }; });
}

void AddDump(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<DumpOptions>();
  CLI::App* const dump = index.add_subcommand(
      "dump", "Print all values in their order, each behind the number of its line");
  AddReadOptions(*dump, *options);
  AddFormatOption(*dump, options->format);
  dump->add_flag("--json", options->json, "print one JSON object for each value");
  dump->callback([options, &command] { command = [options] { return DumpIndex(*options); }; });
}

void AddExplain(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<ExplainOptions>();
  CLI::App* const explain = index.add_subcommand(
      "explain", "Tell where a predicate is scanned, its estimated and its true share of the keys");
  AddReadOptions(*explain, *options);
  explain
      ->add_option("PREDICATE", options->predicate,
                   "a relation, < <= = >= > or <>, and a value, such as '>= 15'")
      ->required();
  AddFormatOption(*explain, options->format);
  AddComparisonFlags(*explain, options->cmpOp, options);
  explain->add_flag("--json", options->json, "print one JSON object");
  explain->callback(
      [options, &command] { command = [options] { return ExplainPredicate(*options); }; });
}

void AddEstimate(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<EstimateOptions>();
  CLI::App* const estimate = index.add_subcommand(
      "estimate", "Try predicates on values of the index, and tell how far estimates are off");
  AddReadOptions(*estimate, *options);
  estimate->add_option("--predicates", options->predicates, "how many, of all kinds in turn")
      ->check(CLI::Range(1, 1000000))
      ->capture_default_str();
  estimate->add_option("--seed", options->seed, "of the random choice")->capture_default_str();
  estimate->add_option("--plot", options->plot,
                       "draw estimate against truth into this SVG file, by gnuplot");
  estimate->add_flag("--json", options->json, "print one JSON object");
  estimate->callback(
      [options, &command] { command = [options] { return TryEstimates(*options); }; });
}

void AddStat(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<ReadOptions>();
  CLI::App* const stat =
      index.add_subcommand("stat", "Tell what an index holds and how large it is");
  AddReadOptions(*stat, *options);
  stat->add_flag("--json", options->json, "print one JSON object");
  stat->callback(
      [options, &command] { command = [options] { return ShowIndexStatistics(*options); }; });
}

void AddVerify(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<ReadOptions>();
  CLI::App* const verify =
      index.add_subcommand("verify", "Check order and content of a whole index");
  AddReadOptions(*verify, *options);
  verify->callback([options, &command] { command = [options] { return VerifyIndex(*options); }; });
}

}  // namespace

void AddIndexCommands(CLI::App& tool, std::function<int()>& command) {
  CLI::App* const index = tool.add_subcommand("index", "Typed indexes of text files");
  index->require_subcommand(1);
  AddCreate(*index, command);
  AddFind(*index, command);
  AddRange(*index, command);
  AddDump(*index, command);
  AddExplain(*index, command);
  AddEstimate(*index, command);
  AddStat(*index, command);
  AddVerify(*index, command);
}

CLI::Option* AddByteOrderOption(CLI::App& command, std::string& byteOrder,
                                char const* description) {
  return command.add_option("--byte-order", byteOrder, description)
      ->check(CLI::IsMember({kLittleEndian, kBigEndian}));
}

unsigned char FormatOf(std::string const& byteOrder) {
  return byteOrder == kBigEndian ? FormBig : FormLittle;
}

std::string ByteOrderOf(unsigned char format) {
  return FormNibble(format) == FormBig ? kBigEndian : kLittleEndian;
}

/// No argument of a program holds it.
constexpr char kValueMark = '\0';

std::string ValueOf(std::string argument) {
  if (argument.starts_with(kValueMark)) argument.erase(0, 1);
  return argument;
}

void MarkNegativeValue(std::string& argument) {
  std::string word;
  for (char const character : argument) word += static_cast<char>(character | 0x20);
  if (word == "-inf" || word == "-infinity" || word == "-nan" || word.starts_with("-.")) {
    argument.insert(argument.begin(), kValueMark);
  }
}

void PrepareToRead(ReadOptions const& options, IndexReader const& index) {
  index.RequirePresentCollation();
  IndexMeta const& meta = index.Meta();
  if (!options.type.empty() && FindType(options.type) != meta.type) {
    WriteMessage(fmt::format("note: {} holds values of type {}, not {}", index.Name(),
                             TypeName(meta.type), options.type));
  }
  if (!options.byteOrder.empty() && FormatOf(options.byteOrder) != meta.format) {
    WriteMessage(fmt::format("note: {} holds values in byte order {}, not {}", index.Name(),
                             ByteOrderOf(meta.format), options.byteOrder));
  }
}

}  // namespace xo::tool
