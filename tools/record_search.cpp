#include "tools/record_search.hpp"

#include <utility>

namespace xo::tool {

RecordSearch::RecordSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine)
    : index(reader), shape(reader.Meta()), visit(std::move(visitLine)) {}

void RecordSearch::VisitLines(KeyCursor& cursor, Answer answer, Matches const& matches) {
  if (answer == Answer::kNo) return;
  do {
    LineNumber const line = cursor.Line();
    if (answer == Answer::kAskRecords) {
      ++fetches;
      if (!matches(index.Record(line))) continue;
    }
    ++found;
    visit(line);
  } while (cursor.NextLine());
}

}  // namespace xo::tool
