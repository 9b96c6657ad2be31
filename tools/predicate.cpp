#include "tools/predicate.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/platform.hpp"
#include "tools/fixed_predicate.hpp"
#include "tools/string_predicate.hpp"
#include "tools/temporal_views.hpp"
#include "tools/text_decoder.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_codec.hpp"
#include "tools/weighted_predicate.hpp"

namespace xo::tool {
namespace {

Bytes CopyOf(MDB_val const& bytes) {
  auto const* const first = static_cast<unsigned char const*>(bytes.mv_data);
  return {first, first + bytes.mv_size};
}

std::uint8_t ByteLength(std::size_t size) {
  return static_cast<std::uint8_t>(std::min<std::size_t>(size, 255));
}

std::optional<Bytes> BoundBytes(void const* bound, std::uint8_t length) {
  if (bound == nullptr) return std::nullopt;
  auto const* const first = static_cast<unsigned char const*>(bound);
  return Bytes(first, first + length);
}

/// Bounds that end with their evaluation.
struct OwnedBounds : XoIdxBounds {
  OwnedBounds() = default;
  ~OwnedBounds() { ReleaseBounds(*this); }
  OwnedBounds(OwnedBounds const&) = delete;
  OwnedBounds& operator=(OwnedBounds const&) = delete;
};

/// A pattern that begins with a wildcard is estimated by nothing, which the library asserts
/// against. That is no trouble of the user's.
class QuietAssertions {
 public:
  QuietAssertions() : before(XoExchangePlatform({})) {
    XoPlatform quiet = before;
    quiet.assertFailed = [](char const*, char const*, int) { return 0; };
    XoExchangePlatform(quiet);
  }
  ~QuietAssertions() { XoExchangePlatform(before); }
  QuietAssertions(QuietAssertions const&) = delete;
  QuietAssertions& operator=(QuietAssertions const&) = delete;

 private:
  XoPlatform before;
};

unsigned KnownBits(IndexShape const& shape) {
  if (shape.IsWeighted()) return kCmpNoWildcards;
  if (shape.HasText()) return ~0U;
  return IsTemporal(shape.type) ? kCmpNoWildcards : 0U;
}

std::unique_ptr<Predicate> MakeTextPredicate(IndexReader const& index, Condition const& condition) {
  IndexShape const& shape = index.Meta();
  if (!condition.format.empty()) {
    throw Trouble(
        fmt::format("{} holds text, which stands for itself: it has no format", index.Name()));
  }
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(shape.codeSet);
  XoString const text = DecodeArgument(condition.value, set, shape.language);
  Bytes record;
  MakeRecord(shape, text, record);
  unsigned short const relation = condition.relation;
  if (shape.IsWeighted()) {
    return std::make_unique<WeightedPredicate>(index, relation, condition.cmpOp, record);
  }
  return std::make_unique<StringPredicate>(index, relation, condition.cmpOp, record);
}

}  // namespace

void RequireKnownBits(IndexReader const& index, unsigned cmpOp) {
  if ((cmpOp & ~KnownBits(index.Meta())) == 0) return;
  throw Trouble(fmt::format("{} holds values of type {}: they are compared in one way alone",
                            index.Name(), TypeName(index.Meta().type)));
}

std::optional<EndKeys> EndKeysOf(IndexReader const& index) {
  KeyCursor cursor(index);
  if (!cursor.First()) return std::nullopt;
  EndKeys ends;
  ends.low = CopyOf(cursor.Key());
  if (!cursor.Last()) return std::nullopt;
  ends.high = CopyOf(cursor.Key());
  return ends;
}

Predicate::Predicate(IndexReader const& reader, unsigned short wantedRelation,
                     unsigned short wantedCmpOp)
    : index(reader), shape(reader.Meta()), relation(wantedRelation), cmpOp(wantedCmpOp) {}

Evaluation Predicate::Evaluate(std::optional<EndKeys> const& ends) const {
  EndKeys copies = ends.value_or(EndKeys{});
  XoIdxBounds range;
  range.low = copies.low.data();
  range.high = copies.high.data();
  range.lowLen = ByteLength(copies.low.size());
  range.highLen = ByteLength(copies.high.size());
  OwnedBounds bounds;
  bounds.keyLimit = ByteLength(shape.keyLength);

  Evaluated evaluated = ToEvaluate();
  auto op = static_cast<unsigned short>(relation | evaluated.cmpOp);
  QuietAssertions const quiet;
  float const share =
      XoTypeMgr{}.EvalAndBound(shape.type, ends ? &range : nullptr, op, evaluated.value.data(),
                               shape.format, 1, static_cast<XoIdxBounds*>(&bounds), nullptr);
  Evaluation evaluation;
  if (ends) evaluation.share = static_cast<double>(share);
  evaluation.isPattern = (op & kXoBoundPattern) != 0;
  evaluation.low = BoundBytes(bounds.low, bounds.lowLen);
  evaluation.high = BoundBytes(bounds.high, bounds.highLen);
  return evaluation;
}

ScanLimits Predicate::LimitsOf(Evaluation const& evaluation) const {
  return ReasonToScanAll() == nullptr ? LimitsOfBounds(evaluation) : ScanLimits{};
}

bool Predicate::Selects(KeyCursor& cursor) const {
  Answer const answer = Ask(cursor.Key());
  if (answer != Answer::kAskRecords) return answer == Answer::kYes;
  do {
    if (SelectsRecord(index.Record(cursor.Line()))) return true;
  } while (cursor.NextLine());
  return false;
}

bool Predicate::Relates(int order) const {
  unsigned const bit = order == 0 ? kXoBoundEqual : order < 0 ? kXoBoundBelow : kXoBoundAbove;
  return (relation & bit) != 0;
}

std::unique_ptr<Predicate> MakePredicate(IndexReader const& index, Condition const& condition) {
  if (index.Meta().HasText()) return MakeTextPredicate(index, condition);
  auto const codec = MakeCodec(index.Meta(), {condition.format, condition.takesPatterns});
  auto const stored = codec->Store(condition.value);
  if (!stored) throw Trouble(codec->Complaint(condition.value));
  bool const isPattern = (condition.cmpOp & kCmpNoWildcards) == 0 && stored->isPattern;
  return std::make_unique<FixedPredicate>(index, condition.relation, stored->key, isPattern);
}

std::unique_ptr<Predicate> MakePredicate(IndexReader const& index, unsigned short relation,
                                         ByteSpan key, ByteSpan record) {
  IndexShape const& shape = index.Meta();
  if (!shape.HasText()) return std::make_unique<FixedPredicate>(index, relation, key, false);
  if (shape.IsWeighted()) {
    return std::make_unique<WeightedPredicate>(index, relation, kCmpNoWildcards, record);
  }
  return std::make_unique<StringPredicate>(index, relation, kCmpNoWildcards, record);
}

}  // namespace xo::tool
