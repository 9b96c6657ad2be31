#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "src/xostring/level_comparison.hpp"

/// The comparison of index keys of one group where they lie, as an index page asks for it. It gives
/// what `XoStrCmp` gives of the same orders without a pattern.
namespace xo {

/// Orders of a key in the machine's byte order, which may lie at any address.
struct KeyOrders {
  unsigned char const* orders;
  std::size_t bytes;  ///< even

  /// The order whose bytes begin at `offset`, or 0, which ends a key, behind the last.
  unsigned short At(std::size_t offset) const {
    return offset < bytes ? LoadBytes<unsigned short>(orders + offset)
                          : static_cast<unsigned short>(0);
  }
};

/// Whether one of four orders is zero.
constexpr bool HasZeroOrder(std::uint64_t orders) {
  constexpr std::uint64_t kOnes = 0x0001000100010001;
  return ((orders - kOnes) & ~orders & kOnes << 15) != 0;
}

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

/// Compares in levels.
[[gnu::noinline]] inline int CompareKeyLevels(KeyOrders a, KeyOrders b, unsigned char group,
                                              unsigned short cmpOp) {
  auto const skips = [cmpOp](unsigned short bit) {
    return static_cast<unsigned short>(cmpOp & bit);
  };
  KeyCursor first{a, 0, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
  KeyCursor second{b, 0, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
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

/// The bits in which four orders differ from four others, without those of accent and case where
/// they are letters: bits 7 to 13 of orders whose upper two bits are 01.
constexpr std::uint64_t LetterDifference(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t kLetterBit = 0x4000400040004000;
  std::uint64_t const letters = a & ~(a >> 1) & kLetterBit;
  return (a ^ b) & ~(letters - (letters >> 7));
}

/// The place in bytes of the first orders in which two keys differ in more than accent and case, or
/// the end of the shorter one, which has `common` bytes; 0 where a zero ends a key before its end.
[[gnu::always_inline]] inline std::size_t FirstDifference(KeyOrders const& a, KeyOrders const& b,
                                                          std::size_t common) {
  auto const load = [](KeyOrders const& key, std::size_t at) {
    return LoadBytes<std::uint64_t>(key.orders + at);
  };
  auto const loadLast = [common](KeyOrders const& key) {
    return LoadBytes<std::uint64_t>(key.orders + common - 8);
  };
  auto const place = [](std::uint64_t bits) {
    return static_cast<std::size_t>(std::countr_zero(bits)) / 16 * 2;
  };
  // Two blocks at a time, of which the second may reach back into the first, so that the place of
  // the difference decides no branch: where it lies cannot be foretold.
  std::size_t offset = 0;
  for (; offset + 8 < common; offset += 16) {
    std::size_t const next = std::min(offset + 8, common - 8);
    std::uint64_t const orders1 = load(a, offset);
    std::uint64_t const orders2 = load(a, next);
    std::uint64_t const bits1 = LetterDifference(orders1, load(b, offset));
    std::uint64_t const bits2 = LetterDifference(orders2, load(b, next));
    if (HasZeroOrder(orders1) || HasZeroOrder(orders2)) [[unlikely]]
      return 0;
    if ((bits1 | bits2) != 0) return bits1 != 0 ? offset + place(bits1) : next + place(bits2);
  }
  if (offset >= common) return common;
  if (common < 4) return 0;
  // The last block ends with the shorter key. Where that has less than a block, at least two
  // orders, the block begins in the header of the record, which is shifted out.
  unsigned const before = common < 8 ? static_cast<unsigned>(8 * (8 - common)) : 0;
  std::size_t const start = common < 8 ? 0 : common - 8;
  std::uint64_t const orders = loadLast(a) >> before;
  if (HasZeroOrder(orders | ~(~std::uint64_t{0} >> before))) [[unlikely]]
    return 0;
  std::uint64_t const bits = LetterDifference(orders, loadLast(b) >> before);
  return bits != 0 ? start + place(bits) : common;
}

/// The key of an order of `group`, without accent and case: what `LetterLevel` gives of `KeyOf`.
constexpr unsigned LetterKey(unsigned order, unsigned group) {
  bool const isLetter = order >= kFirstLetterOrder && order < kFirstHanOrder;
  return ((isLetter ? order & 0x407F : order) + (order != 0 ? group << 16 : 0)) << 8;
}

/// The order of two keys of `group`, which is below `kUntabledGroup` and not 0, under an operator
/// without a pattern and with levels.
[[gnu::always_inline]] inline int CompareKeys(KeyOrders a, KeyOrders b, unsigned char group,
                                              unsigned short cmpOp) {
  std::size_t const offset = FirstDifference(a, b, std::min(a.bytes, b.bytes));
  unsigned const order1 = a.At(offset);
  unsigned const order2 = b.At(offset);
  // Letters and digits that differ decide, whatever follows, and so does the end of a key.
  if (!IsIgnorable(order1) && !IsIgnorable(order2)) [[likely]] {
    int const difference = Difference(LetterKey(order1, group), LetterKey(order2, group));
    if (difference != 0) return difference;
  }
  return CompareKeyLevels(a, b, group, cmpOp);
}

}  // namespace xo
