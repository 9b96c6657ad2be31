#include "tools/weighted_search.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

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
    if (size > kWeightedFrame + 1) secondOfPair[key[kWeightedHeader]] = key[kWeightedHeader + 1];
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
  Bytes const literal = LiteralWeights(pattern);
  ByteSpan const sure = ByteSpan(literal).first(SureWeights(literal));
  Bytes const first = KeyOfWeights(shape, sure);
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, pattern, 0) == 0;
  };
  KeyCursor cursor(index);
  for (bool on = cursor.Seek(LmdbValue(first.data(), first.size())); on; on = cursor.NextKey()) {
    WeightedKey const key = Fields(cursor);
    if (!BeginsWith(key.Weights(), sure)) break;
    VisitLines(cursor, MayBegin(key, literal) ? Answer::kAskRecords : Answer::kNo, matches);
  }
}

/// The weights of what stands before the first wildcard, as many as a key has room for.
Bytes WeightedSearch::LiteralWeights(ByteSpan pattern) const {
  std::string_view const text = AsCharacters(TextBytes(pattern));
  std::string const literal(text.substr(0, text.find_first_of(kWildcards)));
  Bytes record;
  MakeRecord(shape, XoString(literal.c_str()), record);
  Bytes const key = KeyOf(record);
  ByteSpan const weights = WeightedKey(LmdbValue(key.data(), key.size()), shape).Weights();
  return {weights.begin(), weights.end()};
}

/// With how many of them the key of every text begins that matches. Where case does not count, a
/// pattern sees one letter in a byte that stands for two, and the key of that has both.
std::size_t WeightedSearch::SureWeights(ByteSpan literal) const {
  if (shape.type != static_cast<char>(XoCASEISTRING_T)) return literal.size();
  auto const pair = std::find_if(literal.begin(), literal.end(), [this](unsigned char weight) {
    return secondOfPair[weight] != 0;
  });
  auto const before = static_cast<std::size_t>(pair - literal.begin());
  return pair == literal.end() ? before : before + 1;
}

/// Whether a key can be that of a text which begins with these weights when second ones may be left
/// out.
bool WeightedSearch::MayBegin(WeightedKey const& key, ByteSpan literal) const {
  ByteSpan const weights = key.Weights();
  // Ends of what of the key has been met so far.
  std::vector<std::size_t> places = {0};
  for (unsigned char const wanted : literal) {
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
