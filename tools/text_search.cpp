#include "tools/text_search.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "tools/index_order.hpp"

namespace xo::tool {
namespace {

/// Room for the key of what is looked for. One that fills it counts as not whole.
constexpr std::size_t kWantedKeyRoom = 4096;

constexpr unsigned short kSkips = kCmpSkipSpaces | kCmpSkipSymbols;

bool HasWildcard(XoString const& text) {
  return FindWildcard(text.codeSet, text.language, text.text, 0, 0xFFFF, nullptr, FormLittle) >= 0;
}

TextKey Fields(KeyCursor const& cursor, IndexShape const& shape) {
  TextKey const key(cursor.Key(), shape.format);
  if (key.IsDamaged()) cursor.Damaged("a key");
  return key;
}

}  // namespace

TextSearch::TextSearch(IndexReader const& reader, std::function<void(LineNumber)> visitLine)
    : RecordSearch(reader, std::move(visitLine)) {}

TextSearch::Wanted TextSearch::MakeWanted(XoString const& text, bool isPattern) const {
  Wanted wanted;
  MakeRecord(shape, text, wanted.record);
  wanted.keyBytes.resize(kWantedKeyRoom);
  std::size_t const size =
      MakeKey(shape, wanted.record, wanted.keyBytes.data(), wanted.keyBytes.size());
  wanted.keyBytes.resize(size);
  wanted.key = LmdbValue(wanted.keyBytes.data(), size);
  TextKey const key(wanted.key, shape.format);
  wanted.letters = LettersOf(key, isPattern, wanted.orders);
  wanted.group = key.Group();
  wanted.isWhole = !key.IsCut() && size + 1 < kWantedKeyRoom;
  return wanted;
}

std::uint64_t TextSearch::Find(XoString const& text, unsigned short cmpOp) {
  if (!HasWildcard(text)) cmpOp |= kCmpNoWildcards;
  bool const isPattern = (cmpOp & kCmpNoWildcards) == 0;
  Wanted const wanted = MakeWanted(text, isPattern);
  if (cmpOp == kCmpNoWildcards) {
    FindEqual(wanted);
  } else {
    FindMatching(wanted, cmpOp);
  }
  return found;
}

/// Equal texts have equal keys, cut alike. So there is one place to look at, or two: keys that end
/// where the group changes stand behind those that do not.
void TextSearch::FindEqual(Wanted const& wanted) {
  std::array<unsigned char, kLongestKey> bytes{};
  std::size_t const size = MakeKey(shape, wanted.record, bytes.data(), shape.keyLength);
  std::array<unsigned char, kLongestKey> first = bytes;
  first[kKeyGroupAt] = static_cast<unsigned char>(first[kKeyGroupAt] & ~kKeyEndsAtGroup);
  MDB_val const key = LmdbValue(bytes.data(), size);
  bool const isCut = TextKey(key, shape.format).IsCut();
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, wanted.record, kCmpNoWildcards) == 0;
  };
  KeyCursor cursor(index);
  for (bool on = cursor.Seek(LmdbValue(first.data(), size)); on; on = cursor.NextKey()) {
    TextKey const there = Fields(cursor, shape);
    int status = 0;
    if (CompareTextKeys(cursor.Key(), key, kCmpNoWildcards, status) != 0) break;
    bool const isDecided = !isCut && !there.IsCut() && status == 0;
    VisitLines(cursor, isDecided ? Answer::kYes : Answer::kAskRecords, matches);
  }
}

/// Whatever is ignored or skipped, and whatever a wildcard stands for, texts that match have the
/// letters that stand before the first wildcard.
void TextSearch::FindMatching(Wanted const& wanted, unsigned short cmpOp) {
  bool const isPattern = (cmpOp & kCmpNoWildcards) == 0;
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, wanted.record, cmpOp) == 0;
  };
  auto const answer = [&](TextKey const& key, MDB_val const& bytes) {
    if (!wanted.isWhole) return Answer::kAskRecords;
    int status = 0;
    int const order = CompareTextKeys(bytes, wanted.key, cmpOp, status);
    // How many orders of a cut key were compared is not how many count where some are skipped.
    if (status != 0 || (key.IsCut() && (cmpOp & kSkips) != 0)) return Answer::kAskRecords;
    return order == 0 ? Answer::kYes : Answer::kNo;
  };
  Walk(wanted, [&](KeyCursor& cursor, TextKey const& key) {
    LetterRelation const relation = CompareLetters(key, wanted.letters, wanted.letters.size());
    if (relation == LetterRelation::kGreater) return false;
    if (relation == LetterRelation::kLonger && !isPattern && wanted.isWhole) return false;
    if (relation == LetterRelation::kLess) return true;
    if (relation == LetterRelation::kShorter && !key.IsCut()) return true;
    VisitLines(cursor, answer(key, cursor.Key()), matches);
    return true;
  });
}

std::uint64_t TextSearch::Range(XoString const& low, XoString const& high) {
  Wanted const from = MakeWanted(low, false);
  Wanted const to = MakeWanted(high, false);
  auto const matches = [&](ByteSpan record) {
    return CompareRecords(shape, record, from.record, kCmpNoWildcards) >= 0 &&
           CompareRecords(shape, record, to.record, kCmpNoWildcards) <= 0;
  };
  Walk(from, [&](KeyCursor& cursor, TextKey const& key) {
    LetterRelation const relation = CompareLetters(key, to.letters, to.letters.size());
    if (relation == LetterRelation::kGreater) return false;
    if (relation == LetterRelation::kLonger && to.isWhole) return false;
    VisitLines(cursor, InRange(key, cursor.Key(), from, to), matches);
    return true;
  });
  return found;
}

/// Letters decide wherever they differ. For the rest the key is compared, if it is whole.
TextSearch::Answer TextSearch::InRange(TextKey const& key, MDB_val const& bytes, Wanted const& low,
                                       Wanted const& high) const {
  bool isOpen = false;
  // Whether a text with these letters is on the `side` of an end, or the end itself.
  auto const isOnSide = [&](Wanted const& end, int side) {
    LetterRelation const relation = CompareLetters(key, end.letters, end.letters.size());
    if (relation == LetterRelation::kLess) return side < 0;
    if (relation == LetterRelation::kGreater) return side > 0;
    if (relation == LetterRelation::kLonger && end.isWhole) return side > 0;
    if (relation == LetterRelation::kShorter && !key.IsCut()) return side < 0;
    int status = 0;
    int const order = end.isWhole ? CompareTextKeys(bytes, end.key, kCmpNoWildcards, status) : 0;
    if (!end.isWhole || key.IsCut() || status != 0) {
      isOpen = true;
      return true;
    }
    return side < 0 ? order <= 0 : order >= 0;
  };
  if (!isOnSide(low, 1) || !isOnSide(high, -1)) return Answer::kNo;
  return isOpen ? Answer::kAskRecords : Answer::kYes;
}

void TextSearch::Walk(Wanted const& from,
                      std::function<bool(KeyCursor&, TextKey const&)> const& take) {
  std::size_t const mostOrders = (shape.keyLength - kKeyHeader) / 2;
  std::size_t const last = std::min(from.letters.size(), mostOrders);
  KeyCursor cursor(index);
  for (std::size_t count = 0; count <= last; ++count) {
    Bytes const least = LeastKey(from.orders, count, from.group, shape.format);
    bool on = count == 0 ? cursor.First() : cursor.Seek(LmdbValue(least.data(), least.size()));
    for (; on; on = cursor.NextKey()) {
      TextKey const key = Fields(cursor, shape);
      if (count < last) {
        if (CompareLetters(key, from.letters, count) != LetterRelation::kSame) break;
        if (!key.IsCut()) continue;
      }
      if (!take(cursor, key)) break;
    }
  }
}

}  // namespace xo::tool
