#include "tools/index_search.hpp"

#include <algorithm>

namespace xo::tool {
namespace {

ScanLimits LimitsOfAll(Predicates const& predicates) {
  ScanLimits limits;
  for (auto const& predicate : predicates) {
    ScanLimits const own = predicate->LimitsOf(predicate->Evaluate({}));
    if (own.low) limits.low = own.low;
    if (own.high) limits.high = own.high;
  }
  return limits;
}

Answer AskAll(Predicates const& predicates, MDB_val const& key) {
  Answer all = Answer::kYes;
  for (auto const& predicate : predicates) {
    Answer const answer = predicate->Ask(key);
    if (answer == Answer::kNo) return answer;
    if (answer == Answer::kAskRecords) all = answer;
  }
  return all;
}

bool SelectRecord(Predicates const& predicates, ByteSpan record) {
  return std::all_of(predicates.begin(), predicates.end(),
                     [record](auto const& predicate) { return predicate->SelectsRecord(record); });
}

}  // namespace

SearchOutcome SearchKeys(IndexReader const& index, Predicates const& predicates,
                         std::function<void(LineNumber)> const& visit) {
  SearchOutcome outcome;
  ScanKeys(index, LimitsOfAll(predicates), [&](KeyCursor& cursor) {
    Answer const answer = AskAll(predicates, cursor.Key());
    if (answer == Answer::kNo) return;
    if (answer == Answer::kYes && !visit) {
      outcome.found += cursor.Lines();
      if (outcome.found > index.Meta().entries) cursor.Damaged("number of entries");
      return;
    }
    do {
      LineNumber const line = cursor.Line();
      if (answer == Answer::kAskRecords) {
        ++outcome.fetches;
        if (!SelectRecord(predicates, index.Record(line))) continue;
      }
      ++outcome.found;
      if (visit) visit(line);
    } while (cursor.NextLine());
  });
  return outcome;
}

}  // namespace xo::tool
