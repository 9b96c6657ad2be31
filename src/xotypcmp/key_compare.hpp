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

/// Compares in levels, from an offset up to which both keys are the same.
[[gnu::noinline]] inline int CompareKeyLevels(KeyOrders const& a, KeyOrders const& b,
                                              std::size_t offset, unsigned char group,
                                              unsigned short cmpOp) {
  auto const skips = [cmpOp](unsigned short bit) {
    return static_cast<unsigned short>(cmpOp & bit);
  };
  KeyCursor first{a, offset, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
  KeyCursor second{b, offset, skips(kCmpSkipSpaces), skips(kCmpSkipSymbols)};
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

/// The place in bytes of the first orders in which two keys differ, up to the end of the shorter
/// one, whose `common` bytes are at least 4 and have four of the record before them. Keys with a
/// zero before that place may come to an end there: then it is a place before the zero.
[[gnu::always_inline]] inline std::size_t FirstDifference(KeyOrders const& a, KeyOrders const& b,
                                                          std::size_t common) {
  auto const difference = [&](std::size_t at, std::uint64_t& bits) {
    auto const orders = LoadBytes<std::uint64_t>(a.orders + at);
    bits = orders ^ LoadBytes<std::uint64_t>(b.orders + at);
    return HasZeroOrder(orders);
  };
  auto const place = [](std::uint64_t bits) {
    return static_cast<std::size_t>(std::countr_zero(bits)) / 16 * 2;
  };
  std::size_t offset = 0;
  std::uint64_t bits = 0;
  for (; offset + 8 <= common; offset += 8) {
    bool const hasZero = difference(offset, bits);
    if (hasZero) return offset;
    if (bits != 0) return offset + place(bits);
  }
  if (offset == common) return common;
  // The last block ends with the shorter key; what it has of those before is shifted out.
  std::size_t const before = 8 - (common - offset);
  auto const rest = LoadBytes<std::uint64_t>(a.orders + common - 8);
  bits = (rest ^ LoadBytes<std::uint64_t>(b.orders + common - 8)) >> 8 * before;
  if (HasZeroOrder(rest | ((std::uint64_t{1} << 8 * before) - 1))) return offset;
  return bits != 0 ? offset + place(bits) : common;
}

/// The order of two keys of `group`, which is below `kUntabledGroup` and not 0, under an operator
/// without a pattern and with levels.
[[gnu::always_inline]] inline int CompareKeys(KeyOrders const& a, KeyOrders const& b,
                                              unsigned char group, unsigned short cmpOp) {
  std::size_t const common = std::min(a.bytes, b.bytes);
  std::size_t const offset = common >= 4 ? FirstDifference(a, b, common) : 0;
  unsigned const order1 = a.At(offset);
  unsigned const order2 = b.At(offset);
  // Letters and digits that differ decide, whatever follows, and so does the end of a key.
  if (!IsIgnorable(order1) && !IsIgnorable(order2)) [[likely]] {
    auto const letters = [group](unsigned order) {
      return LetterLevel(KeyOf(static_cast<unsigned short>(order), group));
    };
    int const difference = Difference(letters(order1), letters(order2));
    if (difference != 0) return difference;
  }
  return CompareKeyLevels(a, b, offset, group, cmpOp);
}

}  // namespace xo
