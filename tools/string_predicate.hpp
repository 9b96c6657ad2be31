#pragma once

#include "tools/text_predicate.hpp"

namespace xo::tool {

/// A predicate on strings, whose keys may be cut.
///
/// Letters rank first in the order of keys and of texts. Where those that a key shows differ from
/// the ones of the value, they decide; where it is whole its comparison does, and else its records
/// are asked.
///
/// Equal texts have equal keys, cut alike, and so do texts that match a pattern before its first
/// wildcard, but for case and accents that do not count: their bounds are made of the value's key
/// as the index would have it, and what is between them is all that there is. Bounds of other
/// predicates are taken by their letters.
class StringPredicate : public TextPredicate {
 public:
  StringPredicate(IndexReader const& reader, unsigned short wantedRelation,
                  unsigned short wantedCmpOp, ByteSpan wantedRecord);

  Answer Ask(MDB_val const& key) const override;

 protected:
  Evaluated ToEvaluate() const override;
  ScanLimits LimitsOfBounds(Evaluation const& evaluation) const override;

 private:
  bool IsFoundByKey() const;
  TextKey Fields(Bytes const& key) const;
  Bytes KeyInIndex() const;
  Bytes KeyOfLetters() const;
  ScanEnd EndByLetters(Bytes const& bound) const;
  int OrderByLetters(TextKey const& key) const;

  /// The key of the value with room for all of it.
  Bytes wholeKey;
  /// Its letters, of a pattern those before the first wildcard.
  Letters letters;
  /// Whether the key tells the whole value. Not so where the group changes in it.
  bool isWhole = false;
};

}  // namespace xo::tool
