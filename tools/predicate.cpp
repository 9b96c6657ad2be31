#include "tools/predicate.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/platform.hpp"
#include "tools/index_order.hpp"
#include "tools/row_value.hpp"
#include "tools/temporal_views.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_key.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/value_codec.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

/// Room for the key of a value. One that fills it counts as not whole.
constexpr std::size_t kValueKeyRoom = 4096;

constexpr unsigned short kSkips = kCmpSkipSpaces | kCmpSkipSymbols;
/// In the `op` of an evaluation: keys that match by skipping may stand anywhere below the value.
constexpr unsigned short kNoLowBoundForSkips = 0x1000;

/// The library does not write to the operands of a comparison.
void* Operand(Bytes const& bytes) { return const_cast<unsigned char*>(bytes.data()); }

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

bool HasWildcardIn(IndexShape const& shape, XoString const& text, ByteSpan record) {
  if (!shape.IsWeighted()) {
    return FindWildcard(text.codeSet, text.language, text.text, 0, 0xFFFF, nullptr, FormLittle) >=
           0;
  }
  constexpr std::array<unsigned char, 3> kWildcards = {'*', '?', '\\'};
  ByteSpan const bytes = TextBytes(record);
  return std::find_first_of(bytes.begin(), bytes.end(), kWildcards.begin(), kWildcards.end()) !=
         bytes.end();
}

unsigned KnownBits(IndexShape const& shape) {
  if (shape.IsWeighted()) return kCmpNoWildcards;
  if (shape.HasText()) return ~0U;
  return IsTemporal(shape.type) ? kCmpNoWildcards : 0U;
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
                     unsigned short wantedCmpOp, std::string const& text, std::string const& format)
    : index(reader), shape(reader.Meta()), relation(wantedRelation), cmpOp(wantedCmpOp) {
  if (shape.HasText()) {
    if (!format.empty()) {
      throw Trouble(
          fmt::format("{} holds text, which stands for itself: it has no format", reader.Name()));
    }
    XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(shape.codeSet);
    XoString const string = DecodeArgument(text, set, shape.language);
    MakeRecord(shape, string, value);
    isPattern = (cmpOp & kCmpNoWildcards) == 0 && HasWildcardIn(shape, string, value);
    MakeTextValue();
  } else {
    auto const codec = MakeCodec(shape, {format, true});
    auto const stored = codec->Store(text);
    if (!stored) throw Trouble(codec->Complaint(text));
    value.assign(stored->key.begin(), stored->key.end());
    isPattern = (cmpOp & kCmpNoWildcards) == 0 && stored->isPattern;
  }
  if (!isPattern) cmpOp |= kCmpNoWildcards;
}

Predicate::Predicate(IndexReader const& reader, unsigned short wantedRelation, ByteSpan key,
                     ByteSpan record)
    : index(reader), shape(reader.Meta()), relation(wantedRelation), cmpOp(kCmpNoWildcards) {
  ByteSpan const source = shape.HasText() ? record : key;
  value.assign(source.begin(), source.end());
  if (shape.HasText()) MakeTextValue();
}

void Predicate::MakeTextValue() {
  wholeKey.resize(kValueKeyRoom);
  wholeKey.resize(MakeKey(shape, value, wholeKey.data(), wholeKey.size()));
}

Evaluation const& Predicate::Evaluate(std::optional<EndKeys> const& ends) {
  EndKeys copies = ends.value_or(EndKeys{});
  XoIdxBounds range;
  range.low = copies.low.data();
  range.high = copies.high.data();
  range.lowLen = ByteLength(copies.low.size());
  range.highLen = ByteLength(copies.high.size());
  OwnedBounds bounds;
  bounds.keyLimit = ByteLength(shape.keyLength);

  auto op = static_cast<unsigned short>(relation | cmpOp);
  if (IsString() && (cmpOp & kSkips) != 0) op |= kNoLowBoundForSkips;
  QuietAssertions const quiet;
  // A whole key as the value gets whole bounds.
  Bytes evaluated = IsString() ? wholeKey : value;
  float const share =
      XoTypeMgr{}.EvalAndBound(shape.type, ends ? &range : nullptr, op, evaluated.data(),
                               shape.format, 1, static_cast<XoIdxBounds*>(&bounds), nullptr);
  evaluation = {};
  if (ends) evaluation.share = static_cast<double>(share);
  evaluation.isPattern = (op & kXoBoundPattern) != 0;
  evaluation.low = BoundBytes(bounds.low, bounds.lowLen);
  evaluation.high = BoundBytes(bounds.high, bounds.highLen);
  lowLetters = LettersOfBound(evaluation.low);
  highLetters = LettersOfBound(evaluation.high);
  return evaluation;
}

bool Predicate::Relates(int order) const {
  unsigned const bit = order == 0 ? kXoBoundEqual : order < 0 ? kXoBoundBelow : kXoBoundAbove;
  return (relation & bit) != 0;
}

bool Predicate::Selects(KeyCursor& cursor) const {
  if (shape.HasText()) return SelectsText(cursor);
  // The library does not write to the operands of a comparison.
  auto* const wanted = const_cast<unsigned char*>(value.data());
  return Relates(XoTypeMgr{}.Cmp(shape.type, cursor.Key().mv_data, wanted, cmpOp, 1, shape.format));
}

bool Predicate::SelectsText(KeyCursor& cursor) const {
  if (IsString() && wholeKey.size() + 1 < kValueKeyRoom) {
    MDB_val const wanted = LmdbValue(wholeKey.data(), wholeKey.size());
    bool const isCut =
        TextKey(wanted, shape.format).IsCut() || TextKey(cursor.Key(), shape.format).IsCut();
    int status = 0;
    int const order = CompareTextKeys(cursor.Key(), wanted, cmpOp, status);
    if (!isCut && status == 0) return Relates(order);
  }
  do {
    if (Relates(CompareRecords(shape, index.Record(cursor.Line()), value, cmpOp))) return true;
  } while (cursor.NextLine());
  return false;
}

bool Predicate::IsBetweenBounds(MDB_val const& key) const {
  if (evaluation.low && IsPast(key, *evaluation.low, lowLetters, -1)) return false;
  return !evaluation.high || !IsPast(key, *evaluation.high, highLetters, 1);
}

/// Whether a key is for sure on the `side` of a bound. Letters rank first in the order of an index,
/// so one that differs settles what the comparison of a cut key leaves open.
bool Predicate::IsPast(MDB_val const& key, Bytes const& bound, Letters const& letters,
                       int side) const {
  int status = 0;
  int order = 0;
  if (IsString()) {
    order = CompareTextKeys(key, LmdbValue(bound.data(), bound.size()), kCmpNoWildcards, status);
    if (status != 0) {
      LetterRelation const wanted = side < 0 ? LetterRelation::kLess : LetterRelation::kGreater;
      return CompareLetters(TextKey(key, shape.format), letters, letters.size()) == wanted;
    }
  } else {
    order = XoTypeMgr{}.Cmp(shape.type, static_cast<unsigned>(key.mv_size), key.mv_data,
                            static_cast<unsigned>(bound.size()), Operand(bound), kCmpNoWildcards, 1,
                            shape.format, status);
  }
  return status == 0 && (side < 0 ? order < 0 : order > 0);
}

Letters Predicate::LettersOfBound(std::optional<Bytes> const& bound) const {
  if (!IsString() || !bound) return {};
  std::vector<unsigned short> orders;
  return LettersOf(TextKey(LmdbValue(bound->data(), bound->size()), shape.format), false, orders);
}

char const* Predicate::ReasonToScanAll() const {
  if (shape.IsWeighted()) return ReasonOfWeightedTexts();
  return shape.HasText() ? ReasonOfStrings() : ReasonOfDates();
}

/// Texts that are compared without some of their characters stand elsewhere in an index than where
/// they compare, and what a pattern has behind its wildcard does not order.
char const* Predicate::ReasonOfStrings() const {
  if (relation == kXoBoundEqual) return nullptr;
  if ((cmpOp & kSkips) != 0) return "the index is not in an order that skips characters";
  return isPattern ? "the index is not in the order of a pattern" : nullptr;
}

char const* Predicate::ReasonOfWeightedTexts() const {
  Bytes key(kValueKeyRoom);
  std::size_t const size = MakeKey(shape, value, key.data(), key.size());
  if (size >= shape.keyLength) return "keys of texts as long as the value are cut";
  if (isPattern && relation != kXoBoundEqual) return "the index is not in the order of a pattern";
  // Where case does not count, a pattern takes the two letters that one byte may stand for as one.
  if (size != value.size() && shape.type == static_cast<char>(XoCASEISTRING_T)) {
    return "the value has letters of two weights";
  }
  return nullptr;
}

/// Bounds of a wildcard year are the years of which a type can tell the number of a day, but keys
/// may have others.
char const* Predicate::ReasonOfDates() const {
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
