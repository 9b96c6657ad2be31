#include "tools/weighted_predicate.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/index_order.hpp"

namespace xo::tool {
namespace {

constexpr std::string_view kWildcards = "*?\\";
/// Weights that a bound has room for.
constexpr std::size_t kMostBoundWeights = 254 - kWeightedFrame;

std::string_view AsCharacters(ByteSpan bytes) {
  return {static_cast<char const*>(static_cast<void const*>(bytes.data())), bytes.size()};
}

bool HasWildcard(ByteSpan record) {
  return AsCharacters(TextBytes(record)).find_first_of(kWildcards) != std::string_view::npos;
}

}  // namespace

WeightedPredicate::WeightedPredicate(IndexReader const& reader, unsigned short wantedRelation,
                                     unsigned short wantedCmpOp, ByteSpan wantedRecord)
    : TextPredicate(reader, wantedRelation, wantedCmpOp, wantedRecord, HasWildcard(wantedRecord)),
      literalKey(shape.keyLength) {
  std::string_view text = AsCharacters(TextBytes(record));
  if (IsPattern()) text = text.substr(0, text.find_first_of(kWildcards));
  Bytes literal;
  MakeRecord(shape, XoString(std::string(text).c_str()), literal);
  literalKey.resize(MakeKey(shape, literal, literalKey.data(), literalKey.size()));
  if (IsPattern()) FindPairs();
}

void WeightedPredicate::FindPairs() {
  for (int byte = 1; byte < 256; ++byte) {
    std::array<char, 2> const one{static_cast<char>(byte), 0};
    Bytes text;
    MakeRecord(shape, XoString(one.data()), text);
    std::array<unsigned char, kLongestKey> key{};
    std::size_t const size = MakeKey(shape, text, key.data(), key.size());
    if (size > kWeightedFrame + 1) secondOfPair[key[kWeightedHeader]] = key[kWeightedHeader + 1];
  }
}

ByteSpan WeightedPredicate::Literal() const {
  return WeightedKey(LmdbValue(literalKey.data(), literalKey.size()), shape).Weights();
}

/// With how many of its weights the key of every text begins that matches. Where case does not
/// count, a pattern sees one letter in a byte that stands for two, and the key of that has both.
std::size_t WeightedPredicate::SureWeights(ByteSpan literal) const {
  if (shape.type != static_cast<char>(XoCASEISTRING_T)) return literal.size();
  auto const pair = std::find_if(literal.begin(), literal.end(), [this](unsigned char weight) {
    return secondOfPair[weight] != 0;
  });
  auto const before = static_cast<std::size_t>(pair - literal.begin());
  return pair == literal.end() ? before : before + 1;
}

/// A key of which more is to come ends with an asterisk, which is a wildcard among weights too.
Predicate::Evaluated WeightedPredicate::ToEvaluate() const {
  ByteSpan weights = Literal();
  bool isPrefix = IsPattern();
  if (isPrefix) weights = weights.first(SureWeights(weights));
  if (weights.size() > kMostBoundWeights - 1) {
    weights = weights.first(kMostBoundWeights - 1);
    isPrefix = true;
  }
  Bytes value(weights.size() + (isPrefix ? 1 : 0), '*');
  std::copy(weights.begin(), weights.end(), value.begin());
  return {KeyOfWeights(shape, value), cmpOp};
}

ScanLimits WeightedPredicate::LimitsOfBounds(Evaluation const& evaluation) const {
  ScanLimits limits;
  if (evaluation.low) limits.low = {*evaluation.low, {}};
  if (evaluation.high) limits.high = {*evaluation.high, {}};
  return limits;
}

/// Whether a key can be that of a text which begins with the letters of the pattern when second
/// weights may be left out.
bool WeightedPredicate::MayBegin(WeightedKey const& key) const {
  ByteSpan const weights = key.Weights();
  // Ends of what of the key has been met so far.
  std::vector<std::size_t> places = {0};
  for (unsigned char const wanted : Literal()) {
    std::vector<std::size_t> next;
    auto const add = [&next](std::size_t place) {
      if (std::find(next.begin(), next.end(), place) == next.end()) next.push_back(place);
    };
    for (std::size_t const place : places) {
      if (place == weights.size() && key.MayBeCut()) return true;
      if (place == weights.size() || weights[place] != wanted) continue;
      add(place + 1);
      unsigned char const second = secondOfPair[wanted];
      if (second != 0 && place + 1 < weights.size() && weights[place + 1] == second) add(place + 2);
    }
    places = std::move(next);
  }
  return !places.empty();
}

Answer WeightedPredicate::Ask(MDB_val const& key) const {
  WeightedKey const fields(key, shape);
  if (IsPattern()) {
    bool const mayMatch = relation != kXoBoundEqual || MayBegin(fields);
    return mayMatch ? Answer::kAskRecords : Answer::kNo;
  }
  // Keys are cut alike: two that differ are of texts that do.
  MDB_val const wanted = LmdbValue(literalKey.data(), literalKey.size());
  int const order = indexOrder.compare(&key, &wanted);
  if (order == 0 && fields.MayBeCut()) return Answer::kAskRecords;
  return Relates(order) ? Answer::kYes : Answer::kNo;
}

}  // namespace xo::tool
