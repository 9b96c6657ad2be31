#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "tools/bound_text.hpp"
#include "tools/index_command.hpp"
#include "tools/index_order.hpp"
#include "tools/index_search.hpp"
#include "tools/predicate_text.hpp"
#include "tools/standard_streams.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// What looking at keys tells of a predicate.
struct KeyCounts {
  std::uint64_t all = 0;
  std::uint64_t selected = 0;
  /// Keys that a search comes to, and lines that it finds.
  std::uint64_t visited = 0;
  std::uint64_t lines = 0;

  double Share() const {
    return all != 0 ? static_cast<double>(selected) / static_cast<double>(all) : 0.0;
  }
};

KeyCounts CountKeys(IndexReader const& index, Predicates const& predicates) {
  KeyCounts counts;
  KeyCursor cursor(index);
  for (bool on = cursor.First(); on; on = cursor.NextKey()) {
    ++counts.all;
    if (predicates.front()->Selects(cursor)) ++counts.selected;
  }
  std::uint64_t const before = indexOrder.keysVisited;
  counts.lines = SearchKeys(index, predicates, {}).found;
  counts.visited = indexOrder.keysVisited - before;
  return counts;
}

struct Explanation {
  Predicate const& predicate;
  Evaluation const& evaluation;
  KeyCounts counts;
};

std::string BoundAsText(IndexShape const& shape, std::optional<Bytes> const& bound,
                        std::string const& format, char const* end) {
  if (!bound) return fmt::format("none: the scan {}", end);
  return fmt::format("{}\n             {}", HexText(*bound), BoundText(shape, *bound, format));
}

std::string AsText(IndexReader const& index, ExplainOptions const& options,
                   Explanation const& told) {
  Evaluation const& evaluation = told.evaluation;
  IndexShape const& shape = index.Meta();
  std::string text = fmt::format("type         {}\n", TypeName(shape.type));
  text += fmt::format("lower bound  {}\n", BoundAsText(shape, evaluation.low, options.format,
                                                       "begins at the lowest key"));
  text += fmt::format("upper bound  {}\n", BoundAsText(shape, evaluation.high, options.format,
                                                       "ends at the highest key"));
  text += fmt::format("pattern      {}\n",
                      evaluation.isPattern ? "yes: each key between the bounds is tested" : "no");
  text += evaluation.share ? fmt::format("estimate     {:.4f} %\n", 100 * *evaluation.share)
                           : std::string("estimate     none: the index has no keys\n");
  text += fmt::format("true share   {:.4f} %: {} of {} keys\n", 100 * told.counts.Share(),
                      told.counts.selected, told.counts.all);
  char const* const reason = told.predicate.ReasonToScanAll();
  text += reason == nullptr ? fmt::format("visited      {} keys\n", told.counts.visited)
                            : fmt::format("visited      {} keys, which is all: {}\n",
                                          told.counts.visited, reason);
  text += fmt::format("found        {} lines\n", told.counts.lines);
  return text;
}

nlohmann::ordered_json BoundAsJson(IndexShape const& shape, std::optional<Bytes> const& bound,
                                   std::string const& format) {
  if (!bound) return nullptr;
  return {{"bytes", HexText(*bound)}, {"meaning", BoundText(shape, *bound, format)}};
}

std::string AsJson(IndexReader const& index, ExplainOptions const& options,
                   Explanation const& told) {
  Evaluation const& evaluation = told.evaluation;
  IndexShape const& shape = index.Meta();
  nlohmann::ordered_json object;
  object["type"] = TypeName(shape.type);
  object["low"] = BoundAsJson(shape, evaluation.low, options.format);
  object["high"] = BoundAsJson(shape, evaluation.high, options.format);
  object["pattern"] = evaluation.isPattern;
  object["estimate"] = nullptr;
  if (evaluation.share) object["estimate"] = *evaluation.share;
  object["share"] = told.counts.Share();
  object["keys"] = told.counts.all;
  object["selected"] = told.counts.selected;
  object["visited"] = told.counts.visited;
  object["found"] = told.counts.lines;
  object["scansAll"] = told.predicate.ReasonToScanAll() != nullptr;
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace

int ExplainPredicate(ExplainOptions const& options) {
  PredicateText const wanted = ParsePredicate(ValueOf(options.predicate));
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  RequireKnownBits(index, options.cmpOp);
  Predicates predicates;
  predicates.push_back(MakePredicate(
      index,
      {wanted.relation, static_cast<unsigned short>(options.cmpOp), wanted.value, options.format}));
  Predicate const& predicate = *predicates.front();
  Evaluation const evaluation = predicate.Evaluate(EndKeysOf(index));
  Explanation const told{predicate, evaluation, CountKeys(index, predicates)};
  WriteOutput(options.json ? AsJson(index, options, told) : AsText(index, options, told));
  return kDone;
}

}  // namespace xo::tool
