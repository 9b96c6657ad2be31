#include "tools/text_predicate.hpp"

#include "tools/text_form.hpp"

namespace xo::tool {

TextPredicate::TextPredicate(IndexReader const& reader, unsigned short wantedRelation,
                             unsigned short wantedCmpOp, ByteSpan wantedRecord, bool hasWildcard)
    : Predicate(reader, wantedRelation,
                static_cast<unsigned short>(wantedCmpOp | (hasWildcard ? 0 : kCmpNoWildcards))),
      record(wantedRecord.begin(), wantedRecord.end()) {}

/// What a pattern has behind its wildcard does not order.
char const* TextPredicate::ReasonToScanAll() const {
  bool const isInOrder = relation == kXoBoundEqual || !IsPattern();
  return isInOrder ? nullptr : "the index is not in the order of a pattern";
}

bool TextPredicate::SelectsRecord(ByteSpan other) const {
  return Relates(CompareRecords(shape, other, record, cmpOp));
}

}  // namespace xo::tool
