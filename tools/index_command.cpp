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

void AddCreate(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<CreateOptions>();
  CLI::App* const create =
      index.add_subcommand("create", "Build an index of the values in the lines of a text");
  create->add_option("FILE", options->file, "the index; one that is there is replaced")->required();
  create->add_option("--type", options->type, "type of the values, see 'xotm types'")->required();
  create->add_option("--input", options->input, "the text, - for standard input")->required();
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
  create->add_option("--byte-order", options->byteOrder, "byte order of the stored values")
      ->check(CLI::IsMember({kLittleEndian, kBigEndian}))
      ->capture_default_str();
  create
      ->add_option("--on-error", options->onError,
                   "stop at the first line without a value, or skip and count such lines")
      ->check(CLI::IsMember({"stop", "skip"}))
      ->capture_default_str();
  create->callback([options, &command] { command = [options] { return CreateIndex(*options); }; });
}

void AddReadOptions(CLI::App& reader, ReadOptions& options) {
  reader.add_option("FILE", options.file, "the index")->required();
  reader.add_option("--type", options.type, "type that the values are thought to be of");
  reader.add_option("--byte-order", options.byteOrder, "byte order that is thought to be stored")
      ->check(CLI::IsMember({kLittleEndian, kBigEndian}));
}

void AddSearchOptions(CLI::App& search, SearchOptions& options) {
  search.add_flag("--line-numbers", options.lineNumbers, "print the number before each line");
  search.add_flag("--count", options.count, "print only how many lines there are");
  search.add_flag("--json", options.json, "print one JSON object for each line");
  search.add_flag("--stats", options.stats, "tell the comparisons made and the time taken");
}

void AddFind(CLI::App& index, std::function<int()>& command) {
  auto const options = std::make_shared<SearchOptions>();
  CLI::App* const find = index.add_subcommand("find", "Print the lines that hold a value");
  AddReadOptions(*find, *options);
  find->add_option("VALUE", options->low, "the value")->required();
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
  AddStat(*index, command);
  AddVerify(*index, command);
}

unsigned char FormatOf(std::string const& byteOrder) {
  return byteOrder == kBigEndian ? FormBig : FormLittle;
}

std::string ByteOrderOf(unsigned char format) {
  return FormNibble(format) == FormBig ? kBigEndian : kLittleEndian;
}

void NoteUnusedOptions(ReadOptions const& options, IndexReader const& index) {
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
