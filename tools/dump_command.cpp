#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "tools/index_command.hpp"
#include "tools/key_cursor.hpp"
#include "tools/printable.hpp"
#include "tools/row_value.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/value_format.hpp"

namespace xo::tool {
namespace {

/// Values of an index as text: those of text by their records, as keys may be cut.
class ValuePrinter {
 public:
  ValuePrinter(IndexReader const& reader, std::string const& givenFormat) : index(reader) {
    if (!reader.Meta().HasText()) {
      format.emplace(reader.Meta().type, givenFormat);
      value.emplace(reader.Meta().type);
    } else if (!givenFormat.empty()) {
      throw Trouble(
          fmt::format("{} holds text, which stands for itself: it has no format", reader.Name()));
    }
  }

  std::string Text(MDB_val const& key, LineNumber line) {
    if (!value) return TextOfRecord(index.Meta(), index.Record(line));
    auto const* const stored = static_cast<unsigned char const*>(key.mv_data);
    value->Load({stored, key.mv_size}, index.Meta().format);
    return value->Print(format->Text());
  }

 private:
  IndexReader const& index;
  std::optional<ValueFormat> format;
  std::optional<RowValue> value;
};

std::string JsonOf(LineNumber line, std::string const& value) {
  nlohmann::ordered_json object;
  object["line"] = line;
  object["value"] = value;
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

int DumpIndex(DumpOptions const& options) {
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  ValuePrinter printer(index, options.format);
  KeyCursor cursor(index);
  for (bool on = cursor.First(); on; on = cursor.NextKey()) {
    do {
      LineNumber const line = cursor.Line();
      std::string const value = printer.Text(cursor.Key(), line);
      WriteOutput(options.json ? JsonOf(line, value) : fmt::format("{}:{}", line, value));
      WriteOutput("\n");
    } while (cursor.NextLine());
  }
  return kDone;
}

}  // namespace xo::tool
