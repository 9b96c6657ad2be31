#pragma once

#include "tools/predicate.hpp"

namespace xo::tool {

/// A predicate on texts, whose value may be a pattern, and of which a key may tell too little.
class TextPredicate : public Predicate {
 public:
  char const* ReasonToScanAll() const override;
  bool SelectsRecord(ByteSpan other) const override;

 protected:
  /// The comparison of a value without a wildcard is one without wildcards.
  TextPredicate(IndexReader const& reader, unsigned short wantedRelation,
                unsigned short wantedCmpOp, ByteSpan wantedRecord, bool hasWildcard);

  bool IsPattern() const { return (cmpOp & kCmpNoWildcards) == 0; }

  /// The record of the value.
  Bytes const record;
};

}  // namespace xo::tool
