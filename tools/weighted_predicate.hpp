#pragma once

#include <array>

#include "tools/text_predicate.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {

/// A predicate on weighted texts.
///
/// A key that is whole tells everything by which texts compare. What matches a pattern begins with
/// what stands before its first wildcard; the rest is settled on the records.
class WeightedPredicate : public TextPredicate {
 public:
  WeightedPredicate(IndexReader const& reader, unsigned short wantedRelation,
                    unsigned short wantedCmpOp, ByteSpan wantedRecord);

  Answer Ask(MDB_val const& key) const override;

 protected:
  Evaluated ToEvaluate() const override;
  ScanLimits LimitsOfBounds(Evaluation const& evaluation) const override;

 private:
  ByteSpan Literal() const;
  std::size_t SureWeights(ByteSpan literal) const;
  bool MayBegin(WeightedKey const& key) const;
  void FindPairs();

  /// The key that the index has of the value, or of what a pattern has before its first wildcard.
  Bytes literalKey;
  /// By first weight, the second one of a byte that stands for two letters; 0 where there is none.
  std::array<unsigned char, 256> secondOfPair{};
};

}  // namespace xo::tool
