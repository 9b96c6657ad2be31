#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/bytes.hpp"

/// Sort orders four at a time, where they lie in the machine's byte order.
namespace xo {

/// The code set of texts that are sort orders.
inline constexpr unsigned char kSortOrderSet = 254;
/// Letters have orders from here to 32767.
inline constexpr unsigned short kFirstLetterOrder = 16384;
/// Bits of a letter's order that tell it from other letters. Above them are accent and case.
inline constexpr unsigned kLetterBits = 0x7F;
/// The group of characters that the tables lack, above all groups of the tables.
inline constexpr unsigned char kUntabledGroup = 20;

/// Four orders, the first one lowest.
using OrderBlock = std::uint64_t;
inline constexpr std::size_t kBlockBytes = sizeof(OrderBlock);

constexpr OrderBlock FourTimes(unsigned order) { return OrderBlock{0x0001000100010001} * order; }

/// Bits of an order that are 01 in letters and in nothing else.
inline constexpr unsigned kKindBits = 0xC000;

/// Bits that are set where orders are no letters.
constexpr OrderBlock NoLetters(OrderBlock orders) {
  return (orders ^ FourTimes(kFirstLetterOrder)) & FourTimes(kKindBits);
}

/// Has its lowest bit in the first of four orders that is zero, and none if none is.
constexpr OrderBlock ZeroOrder(OrderBlock orders) {
  return (orders - FourTimes(1)) & ~orders & FourTimes(0x8000);
}

/// How far the first order of which `bits` has any stands from the lowest end, in bits.
inline unsigned FirstOrderIn(OrderBlock bits) {
  return static_cast<unsigned>(std::countr_zero(bits)) & 48;
}

/// Four orders of each of two keys, of one group of letters.
struct BlockPair {
  OrderBlock first;
  OrderBlock second;

  BlockPair(OrderBlock a, OrderBlock b) : first(a), second(b) {}
  BlockPair(void const* a, void const* b)
      : first(LoadBytes<OrderBlock>(a)), second(LoadBytes<OrderBlock>(b)) {}

  /// Whether all of them are letters.
  bool AreLetters() const {
    OrderBlock const others = (first ^ FourTimes(kFirstLetterOrder)) | (first ^ second);
    return (others & FourTimes(kKindBits)) == 0;
  }
  /// The bits in which letters differ.
  OrderBlock Differing() const { return (first ^ second) & FourTimes(kLetterBits); }
  /// The bits in which letters differ, and some wherever not both orders are letters. Of
  /// `kKindBits` there are some in such a place, and in no other.
  OrderBlock Notable() const {
    return NoLetters(first) | ((first ^ second) & FourTimes(kKindBits | kLetterBits));
  }
  /// The difference of the first letters that differ, of which there are some. Its sign is that of
  /// all four as one number, the first one highest, which is known sooner. Where no more is asked
  /// for, as in a sort, the rest of this falls away.
  int LetterDifference() const {
    constexpr int kSign = std::numeric_limits<int>::min();
    unsigned const bit = FirstOrderIn(Differing());
    int const difference = (static_cast<int>(first >> bit & kLetterBits) -
                            static_cast<int>(second >> bit & kLetterBits))
                           << 8;
    return FirstHighest(first) < FirstHighest(second) ? difference | kSign : difference & ~kSign;
  }

 private:
  static OrderBlock FirstHighest(OrderBlock orders) {
    return ReverseBytes(orders & FourTimes(kLetterBits));
  }
};

}  // namespace xo
