#pragma once

#include "xoorderblocks.hpp"
#include "xostrcmp.hpp"

/// Classes of sort orders, and the keys by which they compare.
namespace xo {

inline constexpr unsigned short kFirstSymbolOrder = 80;
/// Digits, letters and ideographs: what is compared at the first level.
inline constexpr unsigned short kFirstSignificantOrder = 16128;
inline constexpr unsigned short kFirstHanOrder = 32768;
/// Codes from here on may lack an entry.
inline constexpr unsigned short kFirstUncertainCode = 512;
/// Codes from here on leave the group as it is where they lack one.
inline constexpr unsigned short kFirstSpecialCode = 65520;

constexpr unsigned KeyOf(unsigned short order, unsigned char group) {
  if (order == 0) return 0;
  unsigned const top = unsigned{group} << 24;
  if (order >= kFirstLetterOrder && order < kFirstHanOrder && group != kUntabledGroup) {
    return top | (order & (kFirstLetterOrder | kLetterBits)) << 8 | (order >> 7 & 0x7Fu);
  }
  return top | unsigned{order} << 8;
}

// Levels of a key: its bits without those of the levels below.
constexpr unsigned LetterLevel(unsigned key) { return key & ~0x7Fu; }
constexpr unsigned CaseLevel(unsigned key) { return key & ~0x1Fu; }
constexpr unsigned AccentLevel(unsigned key) { return key & ~0x60u; }

constexpr int Difference(unsigned a, unsigned b) { return static_cast<int>(a - b); }

}  // namespace xo
