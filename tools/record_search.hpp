#pragma once

#include <cstdint>
#include <functional>
#include <xotypemgr.hpp>

#include "tools/index_search.hpp"
#include "tools/text_form.hpp"

namespace xo::tool {

/// What the searches of text have in common: a key may be cut, and tell only the beginning of its
/// text. Where that does not decide, the text's record is fetched and compared instead.
class RecordSearch {
 public:
  virtual ~RecordSearch() = default;

  // Each returns the number of lines found. They come in the order of the keys, those of one key in
  // the order of the lines.

  /// Lines whose text is equal to `text` or, unless `cmpOp` switches wildcards off, matches it.
  virtual std::uint64_t Find(XoString const& text, unsigned short cmpOp) = 0;
  /// Lines whose text is from `low` to `high`, both included.
  virtual std::uint64_t Range(XoString const& low, XoString const& high) = 0;

  /// Records that were fetched and compared.
  std::uint64_t Fetches() const { return fetches; }

 protected:
  enum class Answer { kYes, kNo, kAskRecords };
  using Matches = std::function<bool(ByteSpan)>;

  /// `visitLine` is called for each line that is found.
  RecordSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine);

  /// Visits those lines of the present key that are found.
  void VisitLines(KeyCursor& cursor, Answer answer, Matches const& matches);

  IndexReader const& index;
  IndexShape const& shape;
  std::uint64_t found = 0;

 private:
  std::function<void(LineNumber)> visit;
  std::uint64_t fetches = 0;
};

}  // namespace xo::tool
