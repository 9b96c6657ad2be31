#pragma once

#include "tools/predicate.hpp"

namespace xo::tool {

/// A predicate on values of fixed width, whose keys are the values.
class FixedPredicate : public Predicate {
 public:
  FixedPredicate(IndexReader const& reader, unsigned short wantedRelation, ByteSpan wantedValue,
                 bool hasWildcards);

  char const* ReasonToScanAll() const override;
  Answer Ask(MDB_val const& key) const override;
  bool SelectsRecord(ByteSpan) const override { return false; }

 protected:
  Evaluated ToEvaluate() const override { return {value, cmpOp}; }
  ScanLimits LimitsOfBounds(Evaluation const& evaluation) const override;

 private:
  bool IsBelow(Bytes const& one, Bytes const& other) const;

  Bytes value;
  bool isPattern;
};

}  // namespace xo::tool
