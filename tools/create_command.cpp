#include <fmt/core.h>

#include "tools/index_command.hpp"
#include "tools/index_writer.hpp"
#include "tools/line_source.hpp"
#include "tools/progress.hpp"
#include "tools/standard_streams.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_codec.hpp"

namespace xo::tool {
namespace {

/// Lines that held no value and were passed over.
struct SkippedLines {
  std::uint64_t count = 0;
  LineNumber first = 0;
};

/// The one line that tells what is wrong with the present line of the input.
std::string Complaint(LineSource const& input, CreateOptions const& options,
                      ValueCodec const& codec, std::optional<std::string_view> field) {
  std::string const reason =
      field ? codec.Complaint(*field) : fmt::format("there is no column {}", options.column);
  return fmt::format("{}, line {}: {}", input.Name(), input.Number(), reason);
}

void AddLines(LineSource& input, CreateOptions const& options, ValueCodec const& codec,
              IndexWriter& writer, SkippedLines& skipped, Progress& progress) {
  auto const column = static_cast<std::size_t>(options.column);
  char const delimiter = options.delimiter == "\\t" ? '\t' : options.delimiter[0];
  auto const header = static_cast<LineNumber>(options.skip);
  while (input.Next()) {
    if (input.Number() <= header) continue;
    auto const field = FieldOf(input.Text(), column, delimiter);
    auto const value = field ? codec.Store(*field) : std::nullopt;
    if (value) {
      writer.Add(*value, input.Number(), input.Text());
    } else if (options.onError == "skip") {
      if (skipped.count++ == 0) skipped.first = input.Number();
    } else {
      throw Trouble(Complaint(input, options, codec, field));
    }
    progress.Lines(input.Number(), input.BytesRead(), input.BytesInAll());
  }
}

}  // namespace

int CreateIndex(CreateOptions const& options) {
  char const type = FindType(options.type);
  unsigned char const format = FormatOf(options.byteOrder);
  ValueCodec const codec(type, format);
  LineSource input(options.input);
  IndexWriter writer(options.file, type, format);
  SkippedLines skipped;
  Progress progress;
  AddLines(input, options, codec, writer, skipped, progress);

  auto const header = static_cast<LineNumber>(options.skip);
  if (input.Number() == 0) throw Trouble(fmt::format("{} is empty", input.Name()));
  if (input.Number() <= header) {
    throw Trouble(fmt::format("{} is empty after the {} lines to skip", input.Name(), header));
  }
  if (skipped.count == input.Number() - header) {
    throw Trouble(fmt::format("{}: none of its {} lines holds a value of type {}", input.Name(),
                              skipped.count, TypeName(type)));
  }

  IndexMeta const meta = writer.Commit(progress);
  progress.Clear();
  std::string report = fmt::format("{}: {} entries, {} distinct keys of type {}", writer.Name(),
                                   meta.entries, meta.distinct, TypeName(type));
  if (options.onError == "skip") {
    report += fmt::format("; lines without a value skipped: {}", skipped.count);
    if (skipped.count > 0) report += fmt::format(", the first of them line {}", skipped.first);
  }
  // Told before the index takes its place, so that nothing can fail any more once it has.
  WriteOutput(report + '\n');
  FlushOutput();
  writer.Install();
  return kDone;
}

}  // namespace xo::tool
