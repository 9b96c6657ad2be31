#include "tools/string_predicate.hpp"

#include "tools/index_order.hpp"

namespace xo::tool {
namespace {

/// Room for the key of a value. One that fills it counts as not whole.
constexpr std::size_t kValueKeyRoom = 4096;
/// Longer keys make bounds that are cut. Several keys may be equal to one that is cut shorter than
/// they are, and a seek may come to any of these.
constexpr std::size_t kLongestWholeBound = 254;

constexpr unsigned short kSkips = kCmpSkipSpaces | kCmpSkipSymbols;

bool HasWildcard(IndexShape const& shape, ByteSpan record) {
  XoString text;
  // The library does not write to the source of a load.
  auto* const source = const_cast<unsigned char*>(record.data());
  XoTypeMgr{}.Load(shape.type, &text, source, shape.format, 1);
  return FindWildcard(text.codeSet, text.language, text.text, 0, 0xFFFF, nullptr, FormLittle) >= 0;
}

}  // namespace

StringPredicate::StringPredicate(IndexReader const& reader, unsigned short wantedRelation,
                                 unsigned short wantedCmpOp, ByteSpan wantedRecord)
    : TextPredicate(reader, wantedRelation, wantedCmpOp, wantedRecord,
                    HasWildcard(reader.Meta(), wantedRecord)),
      wholeKey(kValueKeyRoom) {
  wholeKey.resize(MakeKey(shape, record, wholeKey.data(), wholeKey.size()));
  TextKey const key = Fields(wholeKey);
  std::vector<unsigned short> orders;
  letters = LettersOf(key, IsPattern(), orders);
  isWhole = !key.IsCut() && wholeKey.size() + 1 < kValueKeyRoom;
}

TextKey StringPredicate::Fields(Bytes const& key) const {
  return {LmdbValue(key.data(), key.size()), shape.format};
}

/// Whether the keys of all that is selected are made as the value's is. Spaces and symbols that do
/// not count take room in a key, and move its cut.
bool StringPredicate::IsFoundByKey() const {
  return relation == kXoBoundEqual && (cmpOp & kSkips) == 0 &&
         shape.keyLength + kKeyClosing <= kLongestWholeBound;
}

/// The key that the index has of the value, closed where it is cut. If it is then a pattern without
/// its wildcard it stands, by its mark, for all that begins with it.
Bytes StringPredicate::KeyInIndex() const {
  Bytes key(shape.keyLength);
  key.resize(MakeKey(shape, record, key.data(), key.size()));
  TextKey const fields = Fields(key);
  bool const isCut = fields.IsCut();
  if (fields.IsCutForRoom()) {
    key.resize(kKeyHeader + 2 * fields.Orders());
    CloseKey(key, shape.format);
  }
  SetEndsAtGroup(key, isCut && IsPattern());
  return key;
}

/// The key of the letters of the value, and of what else counts everywhere. Of a pattern it ends
/// with the wildcard.
Bytes StringPredicate::KeyOfLetters() const {
  TextKey const whole = Fields(wholeKey);
  Bytes key(wholeKey.begin(), wholeKey.begin() + kKeyHeader);
  for (std::size_t place = 0; place < whole.Orders(); ++place) {
    bool const isWildcard = IsPattern() && IsWildcardOrder(whole.Order(place));
    if (!isWildcard && !whole.IsSignificant(place)) continue;
    auto const at = wholeKey.begin() + static_cast<std::ptrdiff_t>(kKeyHeader + 2 * place);
    key.insert(key.end(), at, at + 2);
    if (isWildcard) break;
  }
  CloseKey(key, shape.format);
  return key;
}

/// An index is not in an order that skips characters: bounds are made of what is never skipped.
Predicate::Evaluated StringPredicate::ToEvaluate() const {
  if (IsFoundByKey()) return {KeyInIndex(), cmpOp};
  if ((cmpOp & kSkips) != 0) return {KeyOfLetters(), static_cast<unsigned short>(cmpOp & ~kSkips)};
  return {wholeKey, cmpOp};
}

ScanLimits StringPredicate::LimitsOfBounds(Evaluation const& evaluation) const {
  ScanLimits limits;
  if (evaluation.low) {
    limits.low = EndByLetters(*evaluation.low);
    if (IsFoundByKey()) limits.low->letters.reset();
    // Of keys that are equal those come last that end where the group changes.
    SetEndsAtGroup(limits.low->key, false);
  }
  if (evaluation.high) {
    limits.high = EndByLetters(*evaluation.high);
    if (IsFoundByKey() && !limits.high->letters->isOpen) limits.high->letters.reset();
    SetEndsAtGroup(limits.high->key, true);
  }
  return limits;
}

ScanEnd StringPredicate::EndByLetters(Bytes const& bound) const {
  TextKey const key = Fields(bound);
  LetterLimit limit;
  limit.letters = LettersOf(key, false, limit.orders);
  limit.group = key.Group();
  limit.isOpen = key.IsCutForRoom();
  if (!limit.orders.empty() && limit.orders.back() == kHighestOrder) {
    limit.letters.pop_back();
    limit.orders.pop_back();
    limit.isOpen = true;
  }
  return {bound, limit};
}

/// The order of the texts of a key to the value where letters tell it, or 0.
int StringPredicate::OrderByLetters(TextKey const& key) const {
  switch (CompareLetters(key, letters, letters.size())) {
    case LetterRelation::kLess:
      return -1;
    case LetterRelation::kGreater:
      return 1;
    case LetterRelation::kLonger:
      return isWhole && !IsPattern() ? 1 : 0;
    case LetterRelation::kShorter:
      return key.IsCut() ? 0 : -1;
    default:
      return 0;
  }
}

Answer StringPredicate::Ask(MDB_val const& key) const {
  auto const answer = [this](int order) { return Relates(order) ? Answer::kYes : Answer::kNo; };
  TextKey const fields(key, shape.format);
  if (ReasonToScanAll() == nullptr) {
    if (int const order = OrderByLetters(fields); order != 0) return answer(order);
  }
  if (!isWhole) return Answer::kAskRecords;
  int status = 0;
  int const order =
      CompareTextKeys(key, LmdbValue(wholeKey.data(), wholeKey.size()), cmpOp, status);
  // On which side of the value the text of a cut key is, no status tells for sure; nor how many
  // orders count where some are skipped.
  bool const isSettled =
      status == 0 && (!fields.IsCut() || (relation == kXoBoundEqual && (cmpOp & kSkips) == 0));
  return isSettled ? answer(order) : Answer::kAskRecords;
}

}  // namespace xo::tool
