#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "base/export.hpp"
#include "base/format.hpp"
#include "xoorderblocks.hpp"
#include "xostrcmp.hpp"
#include "xostringstore.hpp"
#include "xotypes.hpp"

/// The comparison of two index keys of strings as far as their first eight letters, in line, and
/// the calls by which it goes on.
namespace xo {

/// The fewest bytes behind the length field of a key that begins with a block of orders.
inline constexpr unsigned kLongLength = kHeaderBytes + kBlockBytes;

/// Whether a header with 0 for its length, and code set and group above that, is that of keys of a
/// group that has no rules of its own, neither null nor cut where it changes.
constexpr bool IsPlainKey(std::uint32_t header) {
  constexpr std::uint32_t kFirst = (1U << 8 | kSortOrderSet) << 16;
  // The group becomes the lowest byte, and whatever should not be there stands above it.
  return std::rotl(header - kFirst, 8) < kUntabledGroup - 1;
}

/// Whether two declared lengths have room for a block, and are no more than what the greatest
/// length field tells. A few pairs near that are given up for one test, and go a longer way.
constexpr bool HaveBlocks(unsigned len1, unsigned len2) {
  constexpr unsigned kFewest = kLengthBytes + kLongLength;
  constexpr unsigned kMost = kLengthBytes + 0xFFFF;
  // Neither number is greater than the bits of both.
  return ((len1 - kFewest) | (len2 - kFewest)) <= kMost - kFewest;
}

/// The header of a record less the length that it tells where the record fills `available` bytes,
/// which are no more than a length field can tell. Only of a record that does are the lower 16 bits
/// zero, and nothing has been borrowed then from code set and language above them.
inline std::uint32_t HeaderWithoutLength(void const* record, unsigned available) {
  constexpr unsigned kField = kLengthBytes;
  return LoadBytes<std::uint32_t>(record) - (available - kField);
}

// What follows compares two keys of one plain kind that are there whole.

/// Compares all of them.
XO_EXPORT int ComparePlainKeys(void const* key1, void const* key2, unsigned short cmpOp);
/// Goes on behind the block at `place`. As far as its end both are the same letters.
XO_EXPORT int CompareBlocksBehind(void const* key1, void const* key2, unsigned short cmpOp,
                                  std::size_t place);
/// Goes on at `place`. As far as there both are the same letters.
XO_EXPORT int CompareKeysFrom(void const* key1, void const* key2, unsigned short cmpOp,
                              std::size_t place);

/// Where the last block begins that both have, by the lesser of their length fields. It may reach
/// back into the block before it.
constexpr std::size_t LastBlock(unsigned lesserLength) {
  return (lesserLength & ~1U) - kBlockBytes;
}

/// Goes on at `place` with the orders there, of which not all are the same letters.
inline int CompareAtPair(void const* key1, void const* key2, unsigned short cmpOp,
                         std::size_t place, BlockPair pair) {
  OrderBlock const notable = pair.Notable();
  unsigned const bit = FirstOrderIn(notable);
  // What stands behind the first difference does not matter.
  if ((notable >> bit & kKindBits) == 0) [[likely]]
    return pair.LetterDifference();
  return CompareKeysFrom(key1, key2, cmpOp, place + bit / 8);
}

/// Compares keys that have a block, in line as far as their second blocks.
inline int CompareFirstBlocks(void const* key1, void const* key2, unsigned lesserLength,
                              unsigned short cmpOp) {
  BlockPair const pair(Advance(key1, kHeaderBytes), Advance(key2, kHeaderBytes));
  if (!pair.AreLetters()) [[unlikely]]
    return ComparePlainKeys(key1, key2, cmpOp);
  if (pair.Differing() != 0) [[likely]]
    return pair.LetterDifference();
  std::size_t const place = std::min(kHeaderBytes + kBlockBytes, LastBlock(lesserLength));
  BlockPair const next(Advance(key1, place), Advance(key2, place));
  if (next.Notable() == 0) [[unlikely]]
    return CompareBlocksBehind(key1, key2, cmpOp, place);
  return CompareAtPair(key1, key2, cmpOp, place, next);
}

/// What `otherwise` gives, which is `StringCompare` or takes what is left to it, with the arguments
/// and the contract of that.
inline int CompareByFirstLetters(XCompare* otherwise, unsigned char format, unsigned len1,
                                 void* buf1, unsigned len2, void* buf2, unsigned short cmpOp,
                                 unsigned count, int& status) {
  // Keys of one plain kind that fill what is declared, as an index page has them. GCC leads this
  // way straight down only where the conditions stand in `__builtin_expect` themselves.
  if (__builtin_expect(format == (FormatIndexKey | FormLittle) &&
                           (cmpOp & kNoPattern) == kCmpNoWildcards && count == 1 &&
                           HaveBlocks(len1, len2) && IsPlainKey(HeaderWithoutLength(buf1, len1)) &&
                           HeaderWithoutLength(buf1, len1) == HeaderWithoutLength(buf2, len2),
                       1)) {
    constexpr unsigned kField = kLengthBytes;
    status = 0;
    return CompareFirstBlocks(buf1, buf2, std::min(len1, len2) - kField, cmpOp);
  }
  return otherwise(format, len1, buf1, len2, buf2, cmpOp, count, status);
}

}  // namespace xo
