#include <fmt/core.h>

#include <chrono>
#include <nlohmann/json.hpp>

#include "tools/index_command.hpp"
#include "tools/index_order.hpp"
#include "tools/index_search.hpp"
#include "tools/predicate.hpp"
#include "tools/printable.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_search.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_codec.hpp"
#include "tools/weighted_search.hpp"

namespace xo::tool {
namespace {

/// A value of the command line, stored.
struct StoredArgument {
  Bytes bytes;
  bool isPattern;
};

StoredArgument StoreArgument(ValueCodec& codec, std::string const& text) {
  auto const value = codec.Store(text);
  if (!value) throw Trouble(codec.Complaint(text));
  return {{value->key.begin(), value->key.end()}, value->isPattern};
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

/// What a search did.
struct Outcome {
  std::uint64_t found = 0;
  /// Records compared because a key did not decide; nothing where keys always do.
  std::optional<std::uint64_t> fetches;
};

/// The keys between which all are that are equal to the value, or match it.
KeyLimits LimitsOf(IndexReader const& index, SearchOptions const& options) {
  Predicate predicate(index, kXoBoundEqual, static_cast<unsigned short>(options.cmpOp),
                      ValueOf(options.low), options.format);
  Evaluation const& evaluation = predicate.Evaluate({});
  if (predicate.ReasonToScanAll() != nullptr) return {};
  return {evaluation.low, evaluation.high};
}

Outcome SearchFixed(IndexReader const& index, SearchOptions const& options,
                    std::function<void(LineNumber)> const& visit) {
  auto const codec = MakeCodec(index.Meta(), {options.format, !options.high});
  StoredArgument const low = StoreArgument(*codec, ValueOf(options.low));
  if (low.isPattern && (options.cmpOp & kCmpNoWildcards) == 0 && !options.high) {
    return {VisitMatching(index, low.bytes, LimitsOf(index, options), options.count, visit), {}};
  }
  StoredArgument const high = options.high ? StoreArgument(*codec, ValueOf(*options.high)) : low;
  return {options.count ? CountRange(index, low.bytes, high.bytes)
                        : VisitRange(index, low.bytes, high.bytes, visit),
          {}};
}

std::unique_ptr<RecordSearch> SearchOf(IndexReader const& index,
                                       std::function<void(LineNumber)> const& visit) {
  if (index.Meta().IsWeighted()) return std::make_unique<WeightedSearch>(index, visit);
  return std::make_unique<TextSearch>(index, visit);
}

Outcome SearchText(IndexReader const& index, SearchOptions const& options,
                   std::function<void(LineNumber)> const& visit) {
  IndexMeta const& meta = index.Meta();
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(meta.codeSet);
  XoString const low = DecodeArgument(ValueOf(options.low), set, meta.language);
  auto const search = SearchOf(index, visit);
  Outcome outcome;
  if (options.high) {
    outcome.found = search->Range(low, DecodeArgument(ValueOf(*options.high), set, meta.language));
  } else {
    outcome.found = search->Find(low, static_cast<unsigned short>(options.cmpOp));
  }
  outcome.fetches = search->Fetches();
  return outcome;
}

}  // namespace

int SearchIndex(SearchOptions const& options) {
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  bool const isText = index.Meta().HasText();
  RequireKnownBits(index, options.cmpOp);
  if (isText && !options.format.empty()) {
    throw Trouble(
        fmt::format("{} holds text, which stands for itself: it has no format", index.Name()));
  }

  std::uint64_t const comparisonsBefore = indexOrder.comparisons;
  std::uint64_t const keysBefore = indexOrder.keysVisited;
  auto const start = std::chrono::steady_clock::now();
  auto const visit = [&](LineNumber line) {
    if (!options.count) PrintLine(index, options, line);
  };
  Outcome const outcome =
      isText ? SearchText(index, options, visit) : SearchFixed(index, options, visit);
  auto const time = std::chrono::steady_clock::now() - start;

  std::uint64_t const found = outcome.found;
  if (options.count) {
    WriteOutput(options.json ? fmt::format("{{\"count\":{}}}\n", found)
                             : fmt::format("{}\n", found));
  }
  if (options.stats) {
    std::string const fetches =
        outcome.fetches ? fmt::format(", values fetched: {}", *outcome.fetches) : std::string();
    WriteMessage(fmt::format("lines found: {}, keys visited: {}, comparisons: {}{}, time: {}",
                             found, indexOrder.keysVisited - keysBefore,
                             indexOrder.comparisons - comparisonsBefore, fetches,
                             ReadableTime(time)));
  }
  return found > 0 ? kDone : kNothingFound;
}

}  // namespace xo::tool
