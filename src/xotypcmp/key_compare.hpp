#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "src/xostring/level_comparison.hpp"
#include "xoorderblocks.hpp"

/// The comparison of index keys of one group where they lie, as an index page asks for it. It gives
/// what `XoStrCmp` gives of the same orders without a pattern.
namespace xo {

/// Orders of a key in the machine's byte order, which may lie at any address.
struct KeyOrders {
  unsigned char const* orders;
  std::size_t bytes;

  /// The order whose bytes begin at `offset`, or 0, which ends a key, behind the last. Half an
  /// order at the end is one of 8 bits.
  unsigned short At(std::size_t offset) const {
    if (offset + 1 < bytes) return LoadBytes<unsigned short>(orders + offset);
    return offset < bytes ? orders[offset] : static_cast<unsigned short>(0);
  }
};

/// Whether an order is that of a space or symbol.
constexpr bool IsIgnorable(unsigned order) { return order - 1 < kFirstSignificantOrder - 1u; }

/// A cursor of the comparison in levels.
struct KeyCursor {
  KeyOrders const& key;
  std::size_t offset;
  unsigned short const skipsSpaces;
  unsigned short const skipsSymbols;
  unsigned short order = 0;

  /// Goes on to the next order that counts. What is behind the end of the key reads as its end.
  void Advance() {
    for (;;) {
      order = key.At(offset);
      if (order == 0) return;
      offset += 2;
      if (order >= kFirstSignificantOrder) return;
      if ((order < kFirstSymbolOrder ? skipsSpaces : skipsSymbols) == 0) return;
    }
  }
  /// Whether it stands on a space or symbol, which counts at the last level.
  bool IsOnIgnorable() const { return IsIgnorable(order); }
};

/// Compares in levels from `same` bytes on, which are the same in both keys.
[[gnu::noinline]] inline int CompareKeyLevels(KeyOrders a, KeyOrders b, std::size_t same,
                                              unsigned char group, unsigned short cmpOp) {
  auto const skips = [cmpOp](unsigned short bit) {
    return static_cast<unsigned short>(cmpOp & bit);
  };
  KeyCursor first{a, same, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
  KeyCursor second{b, same, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
  LevelDifferences levels;
  for (;;) {
    first.Advance();
    second.Advance();
    // Spaces and symbols on the way are paired off as they are met.
    int pending = 0;
    while (first.IsOnIgnorable() || second.IsOnIgnorable()) {
      bool const onFirst = first.IsOnIgnorable();
      bool const onSecond = second.IsOnIgnorable();
      int const difference = (onFirst ? first.order : 0) - (onSecond ? second.order : 0);
      if (difference != 0) pending = difference;
      if (onFirst) first.Advance();
      if (onSecond) second.Advance();
    }
    int const letters = levels.Take(KeyOf(first.order, group), KeyOf(second.order, group));
    if (pending != 0) levels.ignorable = pending;
    if (letters != 0) return letters;
    if (first.order == 0 || second.order == 0) return levels.Outcome(cmpOp);
  }
}

/// The key of an order without accent and case: `LetterLevel` of `KeyOf` for a `group` that has
/// tables, without building the levels below.
constexpr unsigned LetterKey(unsigned order, unsigned group) {
  bool const isLetter = order >= kFirstLetterOrder && order < kFirstHanOrder;
  return ((isLetter ? order & (kFirstLetterOrder | kLetterBits) : order) +
          (order != 0 ? group << 16 : 0))
         << 8;
}

/// The place in bytes of the first orders that differ, or of the zero at which both keys end before
/// that; not beyond the last whole order of the shorter one. 0 where that has no block.
inline std::size_t FirstDifference(KeyOrders const& a, KeyOrders const& b) {
  std::size_t const common = std::min(a.bytes, b.bytes) & ~std::size_t{1};
  if (common < kBlockBytes) return 0;
  for (std::size_t offset = 0;;) {
    auto const orders = LoadBytes<OrderBlock>(a.orders + offset);
    OrderBlock const bits = (orders ^ LoadBytes<OrderBlock>(b.orders + offset)) | ZeroOrder(orders);
    if (bits != 0) return offset + FirstOrderIn(bits) / 8;
    if (offset + kBlockBytes == common) return common;
    // The last block may reach back into the one before it.
    offset = std::min(offset + kBlockBytes, common - kBlockBytes);
  }
}

/// The outcome for keys that are the same but for one space or symbol at `place`, which only one of
/// them has, as of a possessive and a plural. 0, which no symbol is, for all others, and where
/// spaces or symbols are skipped. `place` is that of `FirstDifference`.
inline int LoneSymbol(KeyOrders const& a, KeyOrders const& b, std::size_t place,
                      unsigned short cmpOp) {
  bool const isInFirst = a.bytes > b.bytes;
  KeyOrders const& with = isInFirst ? a : b;
  KeyOrders const& without = isInFirst ? b : a;
  unsigned const symbol = with.At(place);
  if ((cmpOp & (kCmpSkipSpaces | kCmpSkipSymbols)) != 0 || with.bytes != without.bytes + 2 ||
      !IsIgnorable(symbol) ||
      // It would be paired off with `symbol`, and of such pairs the last that differs stands.
      IsIgnorable(without.At(place)) ||
      std::memcmp(with.orders + place + 2, without.orders + place, without.bytes - place) != 0) {
    return 0;
  }
  return isInFirst ? Difference(symbol, 0) : Difference(0, symbol);
}

/// The order of two keys of `group`, which is below `kUntabledGroup` and not 0, under an operator
/// without a pattern and with levels. They begin with the same letters in their first `start`
/// bytes.
[[gnu::noinline]] inline int CompareKeys(KeyOrders a, KeyOrders b, unsigned char group,
                                         unsigned short cmpOp, std::size_t start) {
  std::size_t const different = FirstDifference(a, b);
  if (int const outcome = LoneSymbol(a, b, different, cmpOp); outcome != 0) return outcome;
  auto const next = [](KeyOrders const& key, std::size_t& offset) {
    while (IsIgnorable(key.At(offset))) offset += 2;
    return unsigned{key.At(offset)};
  };
  for (std::size_t offset1 = start, offset2 = start;; offset1 += 2, offset2 += 2) {
    unsigned const order1 = next(a, offset1);
    unsigned const order2 = next(b, offset2);
    // Letters and digits that differ decide, whatever stands around them, and so does the end.
    if (order1 != order2) {
      int const difference = Difference(LetterKey(order1, group), LetterKey(order2, group));
      if (difference != 0) return difference;
    } else if (order1 == 0) {
      break;
    }
  }
  // Accents and case count from the beginning.
  return CompareKeyLevels(a, b, different, group, cmpOp);
}

}  // namespace xo
