#include "tools/fixed_predicate.hpp"

#include <algorithm>
#include <array>

#include "tools/index_order.hpp"
#include "tools/row_value.hpp"

namespace xo::tool {

FixedPredicate::FixedPredicate(IndexReader const& reader, unsigned short wantedRelation,
                               ByteSpan wantedValue, bool hasWildcards)
    : Predicate(reader, wantedRelation, hasWildcards ? 0 : kCmpNoWildcards),
      value(wantedValue.begin(), wantedValue.end()),
      isPattern(hasWildcards) {}

Answer FixedPredicate::Ask(MDB_val const& key) const {
  ++indexOrder.comparisons;
  // The library does not write to the operands of a comparison.
  auto* const wanted = const_cast<unsigned char*>(value.data());
  int const order = indexOrder.manager.Cmp(shape.type, key.mv_data, wanted, cmpOp, 1, shape.format);
  return Relates(order) ? Answer::kYes : Answer::kNo;
}

bool FixedPredicate::IsBelow(Bytes const& one, Bytes const& other) const {
  MDB_val const a = LmdbValue(one.data(), one.size());
  MDB_val const b = LmdbValue(other.data(), other.size());
  return indexOrder.compare(&a, &b) < 0;
}

/// A key may have wildcards as well, which rank as numbers outside those that they stand for. The
/// outermost of these that a pattern matches is the pattern itself.
ScanLimits FixedPredicate::LimitsOfBounds(Evaluation const& evaluation) const {
  ScanLimits limits;
  if (evaluation.low) {
    limits.low = {IsBelow(value, *evaluation.low) ? value : *evaluation.low, {}};
  }
  if (evaluation.high) {
    limits.high = {IsBelow(*evaluation.high, value) ? value : *evaluation.high, {}};
  }
  return limits;
}

/// Bounds of a wildcard year are the years of which a type can tell the number of a day, but keys
/// may have others.
char const* FixedPredicate::ReasonToScanAll() const {
  constexpr std::array<char, 5> kDates = {XoDATE_T, XoDATIME_T, XoDATIME_N_T, D_DATE_T,
                                          D_TIMESTAMP_T};
  bool const isDate = std::find(kDates.begin(), kDates.end(), shape.type) != kDates.end();
  if (!isPattern || !isDate) return nullptr;
  RowValue date(shape.type);
  date.Load(value, shape.format);
  bool const isAnyYear = date.Print("%Y").find('*') != std::string::npos;
  return isAnyYear ? "the year is a wildcard" : nullptr;
}

}  // namespace xo::tool
