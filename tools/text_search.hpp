#pragma once

#include "tools/record_search.hpp"
#include "tools/text_key.hpp"

namespace xo::tool {

/// Searches an index of strings.
///
/// The tree is walked on its pages. Whether a key decides is what the comparison's status says.
///
/// Letters rank first in the order of the tree, so that a search by them alone is a walk over one
/// stretch of it, and over the keys that are cut before they have shown as many letters as are
/// looked for: these stand at the beginnings of the letters, one seek for each.
class TextSearch : public RecordSearch {
 public:
  TextSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine);

  std::uint64_t Find(XoString const& text, unsigned short cmpOp) override;
  std::uint64_t Range(XoString const& low, XoString const& high) override;

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

  Wanted MakeWanted(XoString const& text, bool isPattern) const;
  void FindEqual(Wanted const& wanted);
  void FindMatching(Wanted const& wanted, unsigned short cmpOp);
  Answer InRange(TextKey const& key, MDB_val const& bytes, Wanted const& low,
                 Wanted const& high) const;

  /// Walks over the cut keys whose letters are a beginning of those of `from`, and on over all keys
  /// from the first one with all of them until `take` says no.
  void Walk(Wanted const& from, std::function<bool(KeyCursor&, TextKey const&)> const& take);
};

}  // namespace xo::tool
