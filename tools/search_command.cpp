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

/// What `find` and `range` look for.
Predicates PredicatesOf(IndexReader const& index, SearchOptions const& options) {
  auto const cmpOp = static_cast<unsigned short>(options.cmpOp);
  Predicates predicates;
  auto const add = [&](unsigned short relation, unsigned short bits, std::string const& value) {
    Condition const condition{relation, bits, ValueOf(value), options.format, !options.high};
    predicates.push_back(MakePredicate(index, condition));
  };
  if (options.high) {
    add(kXoBoundEqual | kXoBoundAbove, kCmpNoWildcards, options.low);
    add(kXoBoundEqual | kXoBoundBelow, kCmpNoWildcards, *options.high);
  } else {
    add(kXoBoundEqual, cmpOp, options.low);
  }
  return predicates;
}

}  // namespace

int SearchIndex(SearchOptions const& options) {
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  RequireKnownBits(index, options.cmpOp);

  std::uint64_t const comparisonsBefore = indexOrder.comparisons;
  std::uint64_t const keysBefore = indexOrder.keysVisited;
  auto const start = std::chrono::steady_clock::now();
  std::function<void(LineNumber)> print;
  if (!options.count) print = [&](LineNumber line) { PrintLine(index, options, line); };
  SearchOutcome const outcome = SearchKeys(index, PredicatesOf(index, options), print);
  auto const time = std::chrono::steady_clock::now() - start;

  std::uint64_t const found = outcome.found;
  if (options.count) {
    WriteOutput(options.json ? fmt::format("{{\"count\":{}}}\n", found)
                             : fmt::format("{}\n", found));
  }
  if (options.stats) {
    std::string const fetches =
        index.Meta().HasText() ? fmt::format(", values fetched: {}", outcome.fetches) : "";
    WriteMessage(fmt::format("lines found: {}, keys visited: {}, comparisons: {}{}, time: {}",
                             found, indexOrder.keysVisited - keysBefore,
                             indexOrder.comparisons - comparisonsBefore, fetches,
                             ReadableTime(time)));
  }
  return found > 0 ? kDone : kNothingFound;
}

}  // namespace xo::tool
