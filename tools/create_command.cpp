#include <fmt/core.h>

#include "tools/index_command.hpp"
#include "tools/index_writer.hpp"
#include "tools/line_source.hpp"
#include "tools/progress.hpp"
#include "tools/record_names.hpp"
#include "tools/standard_streams.hpp"
#include "tools/stop_signals.hpp"
#include "tools/temporal_views.hpp"
#include "tools/text_form.hpp"
#include "tools/tree_check.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_codec.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

/// Lines that held no value and were passed over.
struct SkippedLines {
  std::uint64_t count = 0;
  LineNumber first = 0;
};

IndexShape ShapeOf(CreateOptions const& options) {
  IndexShape shape;
  shape.type = FindType(options.type);
  shape.format = FormatOf(options.byteOrder);
  unsigned const keyLength = options.keyLength != 0 ? options.keyLength : kUsualKey;
  if (shape.IsWeighted() && options.language.empty() && options.codeSet.empty()) {
    return WeightedShape(shape.type, shape.format, keyLength);
  }
  if (shape.IsWeighted()) {
    throw Trouble(fmt::format("texts of type {} have their own order, and code set {}",
                              TypeName(shape.type),
                              XoLanguageContext::QueryCodeSet(kWeightedCodeSet)->name));
  }
  if (shape.HasText()) {
    auto const orUsual = [](std::string const& given, char const* usual) {
      return given.empty() ? usual : given;
    };
    return TextShape(shape.format, CodeSetNamed(orUsual(options.codeSet, "253")).number,
                     LanguageNamed(orUsual(options.language, "0")).number, keyLength);
  }
  if (!options.language.empty() || !options.codeSet.empty() || options.keyLength != 0) {
    throw Trouble(fmt::format("language, code set and key length are of text, not of type {}",
                              TypeName(shape.type)));
  }
  return shape;
}

/// The one line that tells what is wrong with the present line of the input.
std::string Complaint(LineSource const& input, CreateOptions const& options, ValueCodec& codec,
                      std::optional<std::string_view> field) {
  std::string const reason =
      field ? codec.Complaint(*field) : fmt::format("there is no column {}", options.column);
  return fmt::format("{}, line {}: {}", input.Name(), input.Number(), reason);
}

void AddLines(LineSource& input, CreateOptions const& options, IndexShape const& shape,
              IndexWriter& writer, SkippedLines& skipped, Progress& progress) {
  auto const codec = MakeCodec(shape, {options.format, options.patterns});
  auto const column = static_cast<std::size_t>(options.column);
  char const delimiter = options.delimiter == "\\t" ? '\t' : options.delimiter[0];
  auto const header = static_cast<LineNumber>(options.skip);
  while (input.Next()) {
    if (input.Number() <= header) continue;
    std::string_view line = input.Text();
    // In text the carriage return before a line feed would be a character of the value.
    if (shape.HasText() && line.ends_with('\r')) line.remove_suffix(1);
    auto const field = FieldOf(line, column, delimiter);
    auto const value = field ? codec->Store(*field) : std::nullopt;
    if (value) {
      writer.Add(*value, input.Number(), input.Text());
    } else if (options.onError == "skip") {
      if (skipped.count++ == 0) skipped.first = input.Number();
    } else {
      throw Trouble(Complaint(input, options, *codec, field));
    }
    progress.Lines(input.Number(), input.BytesRead(), input.BytesInAll());
  }
}

/// Ends the building: `remark` goes behind what the index holds.
void Finish(IndexWriter& writer, Progress& progress, std::string const& remark) {
  IndexMeta const meta = writer.Commit(progress);
  progress.Clear();
  // Told before the index takes its place, so that nothing can fail any more once it has.
  WriteOutput(fmt::format("{}: {} entries, {} distinct keys of type {}{}\n", writer.Name(),
                          meta.entries, meta.distinct, TypeName(meta.type), remark));
  FlushOutput();
  writer.Install();
}

void Require(bool holds, IndexReader const& index, char const* what) {
  if (!holds) throw Trouble(fmt::format("{} ({})", DamageMessage(index.Name()), what));
}

/// Looks through all that an index is rebuilt from, so that nothing is begun on damaged data.
void CheckSources(IndexReader const& index) {
  auto const pass = [](LineNumber, MDB_val const&) {};
  IndexMeta const& meta = index.Meta();
  TreeTotals const lines = CheckLines(index.Transaction(), index.Lines(), index.Name(), pass);
  TreeTotals const values = CheckLines(index.Transaction(), index.Values(), index.Name(),
                                       [&index](LineNumber line, MDB_val const&) {
                                         static_cast<void>(index.Record(line));
                                         static_cast<void>(index.Line(line));
                                       });
  Require(lines.entries == meta.entries, index, "number of lines");
  Require(values.entries == meta.entries, index, "number of values");
  Require(lines.checksum == meta.linesChecksum, index, "checksum of the lines");
  Require(values.checksum == meta.valuesChecksum, index, "checksum of the values");
}

}  // namespace

int CreateIndex(CreateOptions const& options) {
  IndexShape const shape = ShapeOf(options);
  if (options.patterns && !IsTemporal(shape.type)) {
    throw Trouble(fmt::format("values of type {} have no wildcards", TypeName(shape.type)));
  }
  // Before there is a file: a type or a format that cannot be read is refused.
  static_cast<void>(MakeCodec(shape, {options.format, options.patterns}));
  LineSource input(options.input);
  IndexWriter writer(options.file, shape);
  SkippedLines skipped;
  Progress progress;
  AddLines(input, options, shape, writer, skipped, progress);

  auto const header = static_cast<LineNumber>(options.skip);
  if (input.Number() == 0) throw Trouble(fmt::format("{} is empty", input.Name()));
  if (input.Number() <= header) {
    throw Trouble(fmt::format("{} is empty after the {} lines to skip", input.Name(), header));
  }
  if (skipped.count == input.Number() - header) {
    throw Trouble(fmt::format("{}: none of its {} lines holds a value of type {}", input.Name(),
                              skipped.count, TypeName(shape.type)));
  }

  std::string remark;
  if (options.onError == "skip") {
    remark = fmt::format("; lines without a value skipped: {}", skipped.count);
    if (skipped.count > 0) remark += fmt::format(", the first of them line {}", skipped.first);
  }
  Finish(writer, progress, remark);
  return kDone;
}

int RebuildIndex(CreateOptions const& options) {
  IndexReader const index(options.file);
  IndexMeta const& meta = index.Meta();
  if (!meta.HasText()) {
    throw Trouble(
        fmt::format("{} holds values of type {}, whose order never changes: there is "
                    "nothing to rebuild",
                    index.Name(), TypeName(meta.type)));
  }
  CheckSources(index);
  unsigned const keyLength = options.keyLength != 0 ? options.keyLength : meta.keyLength;
  IndexShape const shape = meta.IsWeighted()
                               ? WeightedShape(meta.type, meta.format, keyLength)
                               : TextShape(meta.format, meta.codeSet, meta.language, keyLength);
  IndexWriter writer(options.file, shape);
  Progress progress;
  Bytes key(kLongestKey);
  CheckLines(index.Transaction(), index.Values(), index.Name(),
             [&](LineNumber line, MDB_val const&) {
               ByteSpan const record = index.Record(line);
               std::size_t const size = MakeKey(shape, record, key.data(), shape.keyLength);
               writer.Add({{key.data(), size}, record}, line, index.Line(line));
             });
  Finish(writer, progress, "; rebuilt from its values");
  return kDone;
}

}  // namespace xo::tool
