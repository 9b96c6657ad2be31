#pragma once

#include <cstring>
#include <optional>

#include "tests/xotypcmp/stored_records.hpp"

/// Predicates on stored strings, evaluated through the manager.
namespace xo::test {

inline constexpr unsigned short kEqual = 1, kBelow = 2, kAbove = 4, kIsPattern = 8;
inline constexpr unsigned short kNoCase = 0x20, kNoAccents = 0x40, kSkipSpaces = 0x80,
                                kSkipSymbols = 0x200, kSkipScan = 0x1000;

/// End keys of an index.
struct KeyRange {
  StoredBytes low;
  StoredBytes high;
};

struct Predicate {
  StoredBytes value;
  unsigned short op = kEqual;
  unsigned char format = kLittle;
  bool older = false;
  std::optional<KeyRange> range{};
  unsigned char keyLimit = 0;
};

/// What an evaluation gives. Bounds are the bytes of their declared lengths, or nothing.
struct Evaluation {
  float share;
  unsigned short op;
  std::optional<StoredBytes> low;
  std::optional<StoredBytes> high;
};

/// Takes over the bytes of a bound.
inline std::optional<StoredBytes> BoundBytes(void const* bound, unsigned char length) {
  if (bound == nullptr) return std::nullopt;
  auto const* const bytes = static_cast<unsigned char const*>(bound);
  return StoredBytes(bytes, bytes + length);
}

/// Evaluates with buffers that end where their records do, and expects them unchanged. A buffer of
/// a bound is written to as far as `keyLimit`, which it must have.
inline Evaluation Evaluate(Predicate const& predicate, StoredBytes const* existingLow = nullptr,
                           StoredBytes const* existingHigh = nullptr) {
  PlacedBytes const value(predicate.value, 1);
  KeyRange const keys = predicate.range.value_or(KeyRange{});
  PlacedBytes const rangeLow(keys.low, 1);
  PlacedBytes const rangeHigh(keys.high, 1);
  XoIdxBounds range;
  range.low = rangeLow.Data();
  range.high = rangeHigh.Data();
  range.lowLen = static_cast<unsigned char>(keys.low.size());
  range.highLen = static_cast<unsigned char>(keys.high.size());
  XoIdxBounds bounds;
  bounds.keyLimit = predicate.keyLimit;
  auto const exists = [](StoredBytes const* bytes, void*& bound, std::uint8_t& length) {
    if (bytes == nullptr) return;
    bound = AllocateBound(static_cast<unsigned>(bytes->size()));
    std::memcpy(bound, bytes->data(), bytes->size());
    length = static_cast<std::uint8_t>(bytes->size());
  };
  exists(existingLow, bounds.low, bounds.lowLen);
  exists(existingHigh, bounds.high, bounds.highLen);
  void* const givenLow = bounds.low;
  void* const givenHigh = bounds.high;
  unsigned short op = predicate.op;
  float const share = XoTypeMgr(predicate.older ? 3 : 5)
                          .EvalAndBound(XoSTRING_T, predicate.range ? &range : nullptr, op,
                                        value.Data(), predicate.format, 1, &bounds, nullptr);
  auto const same = [](StoredBytes const& before, unsigned char const* now) {
    return std::equal(before.begin(), before.end(), now);
  };
  EXPECT_TRUE(same(predicate.value, value.Data()));
  EXPECT_TRUE(same(keys.low, rangeLow.Data()) && same(keys.high, rangeHigh.Data()));
  Evaluation const result{share, op, BoundBytes(bounds.low, bounds.lowLen),
                          BoundBytes(bounds.high, bounds.highLen)};
  if (existingLow != nullptr) {
    EXPECT_EQ(bounds.low, givenLow);
    EXPECT_EQ(*result.low, *existingLow);
  } else if (bounds.low != nullptr) {
    std::memset(bounds.low, 1, std::max(bounds.lowLen, bounds.keyLimit));
  }
  if (existingHigh != nullptr) {
    EXPECT_EQ(bounds.high, givenHigh);
    EXPECT_EQ(*result.high, *existingHigh);
  } else if (bounds.high != nullptr) {
    std::memset(bounds.high, 1, std::max(bounds.highLen, bounds.keyLimit));
  }
  ReleaseBounds(bounds);
  return result;
}

/// A text of 16-bit characters.
inline StoredBytes WideText(std::string_view text, unsigned char format = kLittle) {
  return WideRecord(std::vector<unsigned>(text.begin(), text.end()), format);
}

/// The order of a character of code set 1, with an accent in its bits 7 to 11.
inline unsigned OrderOf(char character, unsigned accent = 0) {
  char const text[] = {character, 0};
  return XoStringIterator(text, 1, 1).GetNextOrder() + accent * 128;
}

/// The orders of the characters of a text, and what follows them.
inline std::vector<unsigned> TextOrders(std::string_view text, std::vector<unsigned> more = {}) {
  std::vector<unsigned> orders;
  for (char const character : text) orders.push_back(OrderOf(character));
  orders.insert(orders.end(), more.begin(), more.end());
  return orders;
}

}  // namespace xo::test
