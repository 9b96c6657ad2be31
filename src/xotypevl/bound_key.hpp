#pragma once

#include <cstddef>
#include <cstdint>

#include "src/xotypevl/evaluated_text.hpp"

/// Bounds of a scan, built as index keys. Their buffers have `keyLimit` bytes at least, so that who
/// scans can complete them.
namespace xo {

/// Bits of letter orders.
inline constexpr unsigned short kCaseBits = 0x3000;
inline constexpr unsigned short kAccentBits = 0x0F80;

/// What a bound is built of.
struct BoundSource {
  void* value;  ///< a stored record
  EvaluatedText const& text;
  unsigned char format;
  Generation generation;
  bool hasWildcard = false;       ///< or else a pattern is a key that is cut
  int wildcard = -1;              ///< place of the first wildcard in characters, or -1
  std::size_t wildcardPlace = 0;  ///< the same in bytes
  bool skipsOrders = false;       ///< spaces or symbols do not count
  unsigned short caseMask = 0;    ///< bits of letters that do not count
  unsigned short accentMask = 0;  ///< likewise

  bool IsPattern() const { return wildcard >= 0; }
};

/// Longer keys have no length with which they could be compared.
inline constexpr std::size_t kLongestBound = 254;

/// The key of a value as far as both its bounds need it; made once. Nothing is set to zero for it.
class ValueKey {
 public:
  ValueKey() {}

  void Make(BoundSource const& source);
  /// Makes the key of a value that turns out, on the way, to be no pattern and as most texts are.
  /// False: nothing is made, and nothing known of the value.
  bool MakePlain(BoundSource const& source);
  std::size_t Size() const { return written; }
  unsigned char const* Bytes() const { return bytes; }

 private:
  std::size_t written = 0;
  unsigned char bytes[kLongestBound];
};

/// A bound, allocated as `AllocateBound` does.
struct BuiltBound {
  void* record;
  std::uint8_t length;
  unsigned short characters;  ///< that take part in the estimate
};

/// The place where a scan starts: the key of the value, as far as there is room for it, in the
/// lowest spelling that does not count as different.
///
/// The room is what the value itself takes, or the part of a pattern before its wildcard: a key of
/// characters of one byte gets half of its orders. What is left of it is closed, and stands before
/// everything that begins with it.
BuiltBound BuildLowBound(BoundSource const& source, ValueKey const& key, std::uint8_t keyLimit);

/// The place where a scan ends, in the highest spelling.
///
/// The last order of a pattern is replaced by one above all others, and so is that of a value of
/// which spaces or symbols do not count. A value that has no room for its whole key gets a cut key,
/// with no terminator and with a length that says so: what begins with it compares to it with
/// `ERR_TM_LENGTH_EXCEEDED`, and is to be taken as inside.
BuiltBound BuildHighBound(BoundSource const& source, ValueKey const& key, std::uint8_t keyLimit);

}  // namespace xo
