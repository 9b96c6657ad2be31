#include "tools/weighted_search.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "tools/index_order.hpp"

namespace xo::tool {
namespace {

constexpr std::string_view kWildcards = "*?\\";

std::string_view AsCharacters(ByteSpan bytes) {
  return {static_cast<char const*>(static_cast<void const*>(bytes.data())), bytes.size()};
}

bool BeginsWith(ByteSpan weights, ByteSpan beginning) {
  return weights.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), weights.begin());
}

int Compare(MDB_val const& a, Bytes const& b) {
  MDB_val const other = LmdbValue(b.data(), b.size());
  return indexOrder.compare(&a, &other);
}

}  // namespace

WeightedSearch::WeightedSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine)
    : RecordSearch(reader, std::move(visitLine)) {
  for (int byte = 1; byte < 256; ++byte) {
    std::array<char, 2> const one{static_cast<char>(byte), 0};
    Bytes record;
    MakeRecord(shape, XoString(one.data()), record);
    std::array<unsigned char, kLongestKey> key{};
    std::size_t const size = MakeKey(shape, record, key.data(), key.size());
    if (size > kWeightedFrame + 1) beginsPair.set(key[kWeightedHeader]);
  }
}

Bytes WeightedSearch::KeyOf(ByteSpan record) const {
  Bytes key(shape.keyLength);
  key.resize(MakeKey(shape, record, key.data(), key.size()));
  return key;
}

WeightedKey WeightedSearch::Fields(KeyCursor const& cursor) const {
  WeightedKey const key(cursor.Key(), shape);
  if (key.IsDamaged()) cursor.Damaged("a key");
  return key;
}

std::uint64_t WeightedSearch::Find(XoString const& text, unsigned short cmpOp) {
  Bytes wanted;
  MakeRecord(shape, text, wanted);
  bool const hasWildcard =
      AsCharacters(TextBytes(wanted)).find_first_of(kWildcards) != std::string_view::npos;
  if (hasWildcard && (cmpOp & kCmpNoWildcards) == 0) {
    FindMatching(wanted);
  } else {
    FindEqual(wanted);
  }
  return found;
}

/// Texts of equal weights have equal keys, cut alike.
void WeightedSearch::FindEqual(ByteSpan wanted) {
  Bytes const key = KeyOf(wanted);
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, wanted, kCmpNoWildcards) == 0;
  };
  KeyCursor cursor(index);
  if (!cursor.Seek(LmdbValue(key.data(), key.size())) || Compare(cursor.Key(), key) != 0) return;
  VisitLines(cursor, Fields(cursor).MayBeCut() ? Answer::kAskRecords : Answer::kYes, matches);
}

void WeightedSearch::FindMatching(ByteSpan pattern) {
  Bytes const beginning = FirstWeights(pattern);
  Bytes const first = KeyOfWeights(shape, beginning);
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, pattern, 0) == 0;
  };
  KeyCursor cursor(index);
  for (bool on = cursor.Seek(LmdbValue(first.data(), first.size())); on; on = cursor.NextKey()) {
    if (!BeginsWith(Fields(cursor).Weights(), beginning)) break;
    VisitLines(cursor, Answer::kAskRecords, matches);
  }
}

/// The weights with which the key of every text begins that matches.
Bytes WeightedSearch::FirstWeights(ByteSpan pattern) const {
  std::string_view const text = AsCharacters(TextBytes(pattern));
  std::string const literal(text.substr(0, text.find_first_of(kWildcards)));
  Bytes record;
  MakeRecord(shape, XoString(literal.c_str()), record);
  Bytes const key = KeyOf(record);
  ByteSpan weights = WeightedKey(LmdbValue(key.data(), key.size()), shape).Weights();
  // Where case does not count, a pattern sees one letter in a byte that stands for two, and its key
  // has both.
  if (shape.type == static_cast<char>(XoCASEISTRING_T)) {
    auto const pair = std::find_if(weights.begin(), weights.end(), [this](unsigned char weight) {
      return beginsPair.test(weight);
    });
    if (pair != weights.end()) {
      weights = weights.first(static_cast<std::size_t>(pair - weights.begin()) + 1);
    }
  }
  return {weights.begin(), weights.end()};
}

std::uint64_t WeightedSearch::Range(XoString const& low, XoString const& high) {
  Bytes from;
  Bytes to;
  MakeRecord(shape, low, from);
  MakeRecord(shape, high, to);
  Bytes const firstKey = KeyOf(from);
  Bytes const lastKey = KeyOf(to);
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, from, kCmpNoWildcards) >= 0 &&
           CompareRecords(shape, record, to, kCmpNoWildcards) <= 0;
  };
  KeyCursor cursor(index);
  bool on = cursor.Seek(LmdbValue(firstKey.data(), firstKey.size()));
  for (; on; on = cursor.NextKey()) {
    int const order = Compare(cursor.Key(), lastKey);
    if (order > 0) break;
    // Cut keys that are equal may be of texts on either side of the end.
    bool const isOpen =
        Fields(cursor).MayBeCut() && (order == 0 || Compare(cursor.Key(), firstKey) == 0);
    VisitLines(cursor, isOpen ? Answer::kAskRecords : Answer::kYes, matches);
  }
  return found;
}

}  // namespace xo::tool
