#pragma once

#include <lmdb.h>

#include <compare>
#include <cstdint>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::tool {

// Index keys of text, as `XoTypeMgr::Translate` makes them:
//
//     length (2 bytes) | code set 254 (1) | group (1) | sort orders (2 each) | 0x00 | 0xFF
//
// A key that was cut for room has the length that it would have with its closing bytes, which are
// not there. Bit 7 of the group says that the text goes on in another group.

inline constexpr std::size_t kKeyHeader = 4;
inline constexpr std::size_t kKeyClosing = 2;
inline constexpr std::size_t kKeyShortest = kKeyHeader + kKeyClosing;
inline constexpr std::size_t kKeyGroupAt = 3;
inline constexpr unsigned char kKeyEndsAtGroup = 0x80;

/// Closes the upper bound of a pattern. It stands for every order, those above it included.
inline constexpr unsigned short kHighestOrder = 0xFFFE;

/// Whether a key can be of `size` bytes. LMDB's pages hold none of more than 511.
constexpr bool IsTextKeySize(std::size_t size) { return size >= kKeyShortest && size <= 511; }

/// 1 if the key ends where the group of its text changes, else 0.
inline int EndsAtGroup(MDB_val const& key) {
  return static_cast<unsigned char const*>(key.mv_data)[kKeyGroupAt] >> 7;
}

/// What a key says, field by field.
class TextKey {
 public:
  /// A key in `format`, of `IsTextKeySize`, which must stay.
  TextKey(MDB_val const& key, unsigned char format);

  /// The length field.
  unsigned Length() const { return length; }
  unsigned char CodeSet() const { return bytes[2]; }
  unsigned char Group() const;
  bool EndsAtGroup() const { return (bytes[kKeyGroupAt] & kKeyEndsAtGroup) != 0; }
  /// Whether orders may be missing for want of room.
  bool IsCutForRoom() const { return size < length + 2; }
  /// Whether the key does not tell the whole text.
  bool IsCut() const { return EndsAtGroup() || IsCutForRoom(); }
  /// The orders that are there.
  std::size_t Orders() const { return orders; }
  unsigned short Order(std::size_t index) const;
  /// Whether an order ranks with the letters.
  bool IsSignificant(std::size_t index) const;
  /// Whether the length field says less than there is, or the field of the code set no key.
  bool IsDamaged() const;

 private:
  unsigned char const* bytes;
  std::size_t size;
  unsigned length;
  std::size_t orders;
  bool bigEndian;
};

/// The first level of a text: its letters without case and accent, digits and ideographs, each as a
/// number that grows with the order. Spaces and symbols do not count.
using Letters = std::vector<std::uint32_t>;

/// How the letters of a key stand to some wanted ones.
enum class LetterRelation {
  kLess,     ///< they come before, by a letter that differs
  kShorter,  ///< they are the beginning of the wanted ones
  kSame,
  kLonger,   ///< they begin with all of the wanted ones
  kGreater,  ///< they come behind, by a letter that differs
};

/// Compares the letters of a key with the first `count` of `wanted`.
LetterRelation CompareLetters(TextKey const& key, Letters const& wanted, std::size_t count);

/// A key's letters, up to the first wildcard where it is one of a pattern. `orders` receives the
/// least order that each may have had, in the order of the tree: without accent and in the case
/// that comes first.
Letters LettersOf(TextKey const& key, bool isPattern, std::vector<unsigned short>& orders);

/// Whether an order is that of a wildcard.
bool IsWildcardOrder(unsigned short order);

/// Makes a header with some orders behind it a whole key.
void CloseKey(std::vector<unsigned char>& key, unsigned char format);

/// Sets or takes away the mark of a key that ends where the group of its text changes.
void SetEndsAtGroup(std::vector<unsigned char>& key, bool ends);

/// The whole key of `count` of the orders that `LettersOf` gave: there is no lower one with these
/// letters.
std::vector<unsigned char> LeastKey(std::vector<unsigned short> const& orders, std::size_t count,
                                    unsigned char group, unsigned char format);

}  // namespace xo::tool
