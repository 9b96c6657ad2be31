#include <fmt/core.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tools/index_command.hpp"
#include "tools/index_search.hpp"
#include "tools/printable.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/value_text.hpp"

namespace xo::tool {
namespace {

/// Values of an index as text: those of text by their records, as keys may be cut.
class ValuePrinter {
 public:
  ValuePrinter(IndexReader const& reader, std::string const& format) : index(reader) {
    if (!reader.Meta().HasText()) values.emplace(reader.Meta().type, format);
    if (reader.Meta().HasText() && !format.empty()) {
      throw Trouble(
          fmt::format("{} holds text, which stands for itself: it has no format", reader.Name()));
    }
  }

  std::string Text(MDB_val const& key, LineNumber line) const {
    if (!values) return TextOfRecord(index.Meta(), index.Record(line));
    ValueBytes stored{};
    std::copy_n(static_cast<unsigned char const*>(key.mv_data),
                std::min(key.mv_size, stored.size()), stored.begin());
    ValueBytes value{};
    XoTypeMgr{}.Load(values->Type(), value.data(), stored.data(), index.Meta().format, 1);
    return values->Print(value);
  }

 private:
  IndexReader const& index;
  std::optional<ValueText> values;
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
  ValuePrinter const printer(index, options.format);
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
