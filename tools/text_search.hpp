#pragma once

#include <cstdint>
#include <functional>
#include <xotypemgr.hpp>

#include "tools/index_search.hpp"
#include "tools/text_form.hpp"
#include "tools/text_key.hpp"

namespace xo::tool {

/// Searches an index of text.
///
/// The tree is walked on its pages. A key tells the beginning of its text: where that does not
/// decide, which the comparison's status says, the text's record is fetched and compared instead.
///
/// Letters rank first in the order of the tree, so that a search by them alone is a walk over one
/// stretch of it, and over the keys that are cut before they have shown as many letters as are
/// looked for: these stand at the beginnings of the letters, one seek for each.
class TextSearch {
 public:
  /// `visit` is called for each line that is found.
  TextSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine);

  // Each returns the number of lines found. They come in the order of the keys, those of one key in
  // the order of the lines.

  /// Lines whose text is equal to `text` or, unless `cmpOp` switches wildcards off, matches it.
  std::uint64_t Find(XoString const& text, unsigned short cmpOp);
  /// Lines whose text is from `low` to `high`, both included.
  std::uint64_t Range(XoString const& low, XoString const& high);

  /// Records that were fetched and compared.
  std::uint64_t Fetches() const { return fetches; }

 private:
  /// What is looked for: a text with the whole of its key.
  struct Wanted {
    Bytes record;
    Bytes keyBytes;
    MDB_val key{};
    Letters letters;
    /// As `LettersOf` gives them.
    std::vector<unsigned short> orders;
    unsigned char group = 0;
    /// Whether the key tells the whole text. Not so where the group changes in it.
    bool isWhole = false;
  };
  enum class Answer { kYes, kNo, kAskRecords };
  using Matches = std::function<bool(ByteSpan)>;

  Wanted MakeWanted(XoString const& text, bool isPattern) const;
  void FindEqual(Wanted const& wanted);
  void FindMatching(Wanted const& wanted, unsigned short cmpOp);
  Answer InRange(TextKey const& key, MDB_val const& bytes, Wanted const& low,
                 Wanted const& high) const;

  /// Walks over the cut keys whose letters are a beginning of those of `from`, and on over all keys
  /// from the first one with all of them until `take` says no.
  void Walk(Wanted const& from, std::function<bool(KeyCursor&, TextKey const&)> const& take);
  /// Visits those lines of the present key that are found.
  void VisitLines(KeyCursor& cursor, Answer answer, Matches const& matches);

  IndexReader const& index;
  IndexShape const& shape;
  std::function<void(LineNumber)> visit;
  std::uint64_t found = 0;
  std::uint64_t fetches = 0;
};

}  // namespace xo::tool
