#pragma once

#include <array>

#include "tools/record_search.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {

/// Searches an index of weighted texts.
///
/// A key that is whole tells everything by which texts compare. A pattern is looked for among the
/// keys that begin with what stands before its first wildcard, and settled on the records.
class WeightedSearch : public RecordSearch {
 public:
  WeightedSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine);

  std::uint64_t Find(XoString const& text, unsigned short cmpOp) override;
  std::uint64_t Range(XoString const& low, XoString const& high) override;

 private:
  Bytes KeyOf(ByteSpan record) const;
  WeightedKey Fields(KeyCursor const& cursor) const;
  void FindEqual(ByteSpan wanted);
  void FindMatching(ByteSpan pattern);
  Bytes LiteralWeights(ByteSpan pattern) const;
  std::size_t SureWeights(ByteSpan literal) const;
  bool MayBegin(WeightedKey const& key, ByteSpan literal) const;

  /// By first weight, the second one of a byte that stands for two letters; 0 where there is none.
  std::array<unsigned char, 256> secondOfPair{};
};

}  // namespace xo::tool
