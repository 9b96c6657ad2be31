#include <fmt/core.h>

#include <chrono>
#include <nlohmann/json.hpp>

#include "tools/index_command.hpp"
#include "tools/index_order.hpp"
#include "tools/index_search.hpp"
#include "tools/standard_streams.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

StoredValue StoreArgument(ValueCodec const& codec, std::string const& text) {
  auto const value = codec.Store(text);
  if (!value) throw Trouble(codec.Complaint(text));
  return *value;
}

std::string JsonLine(LineNumber line, std::string_view text) {
  nlohmann::ordered_json object;
  object["line"] = line;
  object["text"] = text;
  // JSON is Unicode; bytes of a line that are not become the replacement character.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

void PrintLine(IndexReader const& index, SearchOptions const& options, LineNumber line) {
  std::string_view const text = index.Line(line);
  if (options.json) {
    WriteOutput(JsonLine(line, text));
  } else {
    if (options.lineNumbers) WriteOutput(fmt::format("{}:", line));
    WriteOutput(text);
  }
  WriteOutput("\n");
}

std::string ReadableTime(std::chrono::steady_clock::duration duration) {
  double const microseconds = std::chrono::duration<double, std::micro>(duration).count();
  if (microseconds < 1e3) return fmt::format("{:.1f} microseconds", microseconds);
  if (microseconds < 1e6) return fmt::format("{:.1f} milliseconds", microseconds / 1e3);
  return fmt::format("{:.2f} seconds", microseconds / 1e6);
}

}  // namespace

int SearchIndex(SearchOptions const& options) {
  IndexReader const index(options.file);
  NoteUnusedOptions(options, index);
  ValueCodec const codec(index.Meta().type, index.Meta().format);
  StoredValue const low = StoreArgument(codec, options.low);
  StoredValue const high = options.high ? StoreArgument(codec, *options.high) : low;

  std::uint64_t const comparisonsBefore = indexOrder.comparisons;
  auto const start = std::chrono::steady_clock::now();
  std::uint64_t const found =
      options.count
          ? CountRange(index, low, high)
          : VisitRange(index, low, high, [&](LineNumber line) { PrintLine(index, options, line); });
  auto const time = std::chrono::steady_clock::now() - start;

  if (options.count) {
    WriteOutput(options.json ? fmt::format("{{\"count\":{}}}\n", found)
                             : fmt::format("{}\n", found));
  }
  if (options.stats) {
    WriteMessage(fmt::format("lines found: {}, comparisons: {}, time: {}", found,
                             indexOrder.comparisons - comparisonsBefore, ReadableTime(time)));
  }
  return found > 0 ? kDone : kNothingFound;
}

}  // namespace xo::tool
