#include "src/xotypevl/inline_bounds.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "src/xoistring/weights.hpp"
#include "src/xotypes/inline_string.hpp"
#include "src/xotypevl/element_bounds.hpp"

namespace xo {
namespace {

/// Weights that make a number.
constexpr std::size_t kNumberBytes = 4;
/// What a key has besides its weights: the header and the closing zero.
constexpr unsigned kKeyFrame = kInlineHeaderBytes + 1;
/// Longest bound.
constexpr unsigned kLongestBound = 254;
/// Higher than every weight.
constexpr unsigned char kHighestWeight = 0xFF;

/// Some bytes of a record.
struct ByteRun {
  unsigned char const* bytes = nullptr;
  std::size_t size = 0;

  /// The number that the bytes from `offset` on begin with, most significant first; those that are
  /// missing are 0.
  o_u4b Number(std::size_t offset) const {
    o_u4b number = 0;
    for (std::size_t place = offset; place < offset + kNumberBytes; ++place) {
      number = number << 8 | (place < size ? bytes[place] : 0U);
    }
    return number;
  }
};

/// The weights of a key of `length` bytes at the end of an index.
ByteRun WeightsOfEnd(void const* key, std::uint8_t length) {
  return {Advance(key, kInlineHeaderBytes), length > kKeyFrame ? length - kKeyFrame : 0U};
}

/// The weights of both ends; none where the range does not tell them.
struct RangeWeights {
  explicit RangeWeights(XoIdxBounds const* range) : isKnown(HasBothEnds(range)) {
    if (!isKnown) return;
    low = WeightsOfEnd(range->low, range->lowLen);
    high = WeightsOfEnd(range->high, range->highLen);
  }

  bool isKnown;
  ByteRun low;
  ByteRun high;
};

/// The texts of a value, `count` of them with the zeros between, or one; without the last zero. The
/// record's own length is not trusted behind that zero.
ByteRun TextsOfValue(void const* record, InlineHeader const& header, unsigned count) {
  ByteRun texts{Advance(record, kInlineHeaderBytes), 0};
  std::size_t const limit = header.payload != 0 ? header.payload - std::size_t{1} : 0;
  for (unsigned left = count; texts.size < limit; ++texts.size) {
    if (texts.bytes[texts.size] == 0 && --left == 0) break;
  }
  return texts;
}

/// The first wildcard of a value, or its size. The weight of a letter of keys is the byte of a
/// backslash, which is none there.
std::size_t FirstWildcard(ByteRun const& texts, bool isKey) {
  auto const isWildcard = [isKey](unsigned char byte) {
    return byte == '*' || byte == '?' || (byte == '\\' && !isKey);
  };
  return static_cast<std::size_t>(std::find_if(texts.bytes, texts.bytes + texts.size, isWildcard) -
                                  texts.bytes);
}

/// The weights of a value up to its first wildcard. As many are kept as a bound has room for, and
/// zeros stand behind them.
struct ValueKey {
  std::array<unsigned char, kLongestBound> weights{};
  std::size_t size = 0;     ///< of all weights
  bool isPrefix = false;    ///< a wildcard follows
  bool isWildcard = false;  ///< it begins with one, and has no weights

  ByteRun Kept() const { return {weights.data(), std::min(size, weights.size())}; }
};

char const* AsText(void const* bytes) { return static_cast<char const*>(bytes); }
char* AsText(void* bytes) { return static_cast<char*>(bytes); }

template <class Text>
ValueKey KeyOfValue(void const* record, unsigned char nibble, unsigned count) {
  InlineHeader const header = ReadInlineHeader(record, kInlineHeaderBytes, nibble);
  ByteRun const texts = TextsOfValue(record, header, count);
  std::size_t const place = FirstWildcard(texts, header.IsKey());
  ValueKey key;
  bool const hasWildcard = place < texts.size;
  key.isWildcard = hasWildcard && place == 0;
  key.isPrefix = hasWildcard && place != 0;
  if (header.IsKey()) {
    key.size = place;
    std::copy_n(texts.bytes, std::min(place, key.weights.size()), key.weights.begin());
    return key;
  }
  key.size = MapToWeights<Text>(AsText(texts.bytes), place, AsText(key.weights.data()),
                                key.weights.size());
  return key;
}

/// The share that a value gets which begins with a wildcard: all. Where case counts it is taken
/// from the range, and is none of one that is too wide for a number with a sign.
template <class Text>
float ShareOfWildcard(RangeWeights const& range) {
  if constexpr (WeightRules<Text>::kFoldsCase) return 1.0F;
  o_u4b const total = range.high.Number(0) - range.low.Number(0) + 1;
  return static_cast<o_4b>(total) > 0 ? 1.0F : 0.0F;
}

/// What is left below a key of fewer weights than make a number.
o_u4b SpreadOf(std::size_t keyBytes) {
  return keyBytes < kNumberBytes ? o_u4b{0xFF} << (8 * (kNumberBytes - 1 - keyBytes)) : 0;
}

/// Leading weights in which a key agrees with both ends, of those that make its number.
std::size_t CommonPrefix(ByteRun const& key, RangeWeights const& range) {
  std::size_t const limit = std::min({range.high.size, range.low.size, kNumberBytes});
  std::size_t common = 0;
  while (common < limit && key.bytes[common] == range.high.bytes[common] &&
         key.bytes[common] == range.low.bytes[common]) {
    ++common;
  }
  return common;
}

o_u4b Clipped(o_u4b number, o_u4b low, o_u4b high) {
  if (number < low) return low - 1;
  return number > high ? high + 1 : number;
}

/// The share of a range that is known. Numbers compare without a sign and wrap; the area has one.
/// Keys below the value take in the value itself.
float ShareOfKey(unsigned short op, ByteRun const& key, RangeWeights const& range) {
  o_u4b const spread = SpreadOf(std::min(key.size, kNumberBytes));
  std::size_t const offset = spread == 0 ? CommonPrefix(key, range) : 0;
  o_u4b const high = range.high.Number(offset);
  o_u4b const low = range.low.Number(offset);
  o_u4b const total = high - low + 1;
  o_u4b const number = key.Number(offset);
  o_u4b const below = Clipped(number, low, high) - low + 1;
  o_u4b const upTo = Clipped(number + spread, low, high) - low + 1;
  o_u4b area = 0;
  if ((op & kXoBoundBelow) != 0) area += below;
  if ((op & kXoBoundAbove) != 0) area += total - upTo;
  if ((op & kXoBoundEqual) != 0) area += 1 + upTo - below;
  return static_cast<o_4b>(area) > 0 ? ShareOfTotal(area, total) : 0.0F;
}

/// A key of the first `size` weights of a value, cut where it grows too long; its header tells them
/// all. Under `isHighest` the last weight is the highest one.
void* NewBound(ValueKey const& key, std::size_t size, bool isHighest, unsigned char nibble,
               std::uint8_t keyLimit, std::uint8_t& length) {
  auto const bytes = static_cast<unsigned>(std::min<std::size_t>(size + kKeyFrame, kLongestBound));
  unsigned const room = std::max<unsigned>(bytes, keyLimit);
  void* const bound = AllocateBound(room);
  std::memset(bound, 0, room);
  BoundedTarget target(bound, bytes - 1);
  target.WriteByte(kInlineKeyBits);
  target.WriteUnit(static_cast<unsigned short>(size + 1), nibble);
  target.Write(key.weights.data(), std::min(size, key.weights.size()));
  if (isHighest) *Advance(bound, bytes - 2) = kHighestWeight;
  length = static_cast<std::uint8_t>(bytes);
  return bound;
}

void RecordBounds(XoIdxBounds& bounds, unsigned short op, ValueKey const& key,
                  unsigned char nibble) {
  if (bounds.low == nullptr && (op & kXoBoundBelow) == 0) {
    bounds.low = NewBound(key, key.size, false, nibble, bounds.keyLimit, bounds.lowLen);
  }
  if (bounds.high == nullptr && (op & kXoBoundAbove) == 0) {
    bounds.high = NewBound(key, key.size + (key.isPrefix ? 1 : 0), key.isPrefix, nibble,
                           bounds.keyLimit, bounds.highLen);
  }
}

}  // namespace

template <class Text>
float EvaluateInline(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                     unsigned count, void* bounds, XoEvalData*) {
  op &= kRelationAndPattern;
  if (HasMemoryBit(format)) return 0.0F;
  unsigned char const nibble = FormNibble(format);
  RangeWeights const ends(range);
  ValueKey const key = KeyOfValue<Text>(value, nibble, std::max(count, 1U));
  if (key.isPrefix || key.isWildcard) op |= kXoBoundPattern;
  if (key.isWildcard) return ShareOfWildcard<Text>(ends);
  // First, as `bounds` may be the range.
  float const share = ends.isKnown ? ShareOfKey(op, key.Kept(), ends) : 0.0F;
  if (bounds != nullptr) RecordBounds(*static_cast<XoIdxBounds*>(bounds), op, key, nibble);
  return share;
}

template TypeDescriptor::EvalAndBoundFunction EvaluateInline<XoIString>;
template TypeDescriptor::EvalAndBoundFunction EvaluateInline<XoCaseIString>;

}  // namespace xo
