#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "src/xotypevl/bound_area.hpp"
#include "xoidxbounds.hpp"

/// What the evaluations of dates, times and identifiers share. A predicate is evaluated by the
/// first element of its value and of the two end keys, which are read whole, whatever the lengths
/// of the keys say.
namespace xo {

/// The bits of an operator that the evaluation of most types of wildcards leaves: the relation, the
/// mark of a pattern, and the uppermost bit, which is passed through.
inline constexpr unsigned short kRelationAndPattern = 0x800F;
/// The same where the mark only tells of the value at hand.
inline constexpr unsigned short kRelationAlone = 0x8007;

/// The numbers of the keys at the ends of an index.
struct EndNumbers {
  double low;
  double high;
  double Total() const { return high - low + 1.0; }
};

/// `area` as a share of a range of `total` keys. There is none of a range of no keys, such as one
/// whose ends are in the wrong order.
inline float ShareOfTotal(double area, double total) {
  return area == 0.0 || total == 0.0 ? 0.0F : static_cast<float>(area / total);
}

/// The share of a predicate on a value that stands for the numbers from `valueLow` to `valueHigh`.
inline float ShareOfRange(unsigned short op, double valueLow, double valueHigh, EndNumbers ends) {
  double const area = BoundRangeArea(op, valueLow, valueHigh, ends.low, ends.high, 1.0);
  return ShareOfTotal(area, ends.Total());
}

/// The numbers of the ends of a range that knows them.
template <class NumberAt>
EndNumbers NumbersOf(XoIdxBounds const& range, NumberAt numberAt) {
  return {static_cast<double>(numberAt(range.low)), static_cast<double>(numberAt(range.high))};
}

/// `numberOf` of the values at the ends of an index, read before bounds are written, as these may
/// be the range.
template <class Layout, class NumberOf>
EndNumbers NumbersOfEnds(XoIdxBounds const* range, unsigned char nibble, NumberOf numberOf) {
  if (!HasBothEnds(range)) return {};
  return NumbersOf(*range, [&](void const* key) { return numberOf(Layout::Decode(key, nibble)); });
}

/// What becomes of a bound that was there before the call, where a value has wildcards.
enum class PresentBound { kLeft, kRewritten };

/// The bounds of one evaluation: recorded as copies of the value, to be written over with the ends
/// that it stands for.
class ValueBounds {
 public:
  /// Records `size` bytes of `value`. `bounds` may be null.
  ValueBounds(void* bounds_, void const* value, unsigned short op, unsigned size,
              PresentBound present)
      : bounds(static_cast<XoIdxBounds*>(bounds_)) {
    if (bounds == nullptr) return;
    bool const hadLow = bounds->low != nullptr;
    bool const hadHigh = bounds->high != nullptr;
    BoundRecord(bounds, value, op, size);
    lowRoom = RoomOf(bounds->low, hadLow, bounds->lowLen, size, present);
    highRoom = RoomOf(bounds->high, hadHigh, bounds->highLen, size, present);
  }

  /// Writes the first element of both bounds, as far as they have room.
  template <std::size_t Size>
  void Write(std::array<unsigned char, Size> const& low,
             std::array<unsigned char, Size> const& high) {
    if (lowRoom != 0) std::memcpy(bounds->low, low.data(), std::min(lowRoom, Size));
    if (highRoom != 0) std::memcpy(bounds->high, high.data(), std::min(highRoom, Size));
  }

  /// Clears the lowest of the flags of both.
  void ClearFirstFlags() {
    if (bounds == nullptr) return;
    bounds->lowFlags = static_cast<std::uint16_t>(bounds->lowFlags & ~1U);
    bounds->highFlags = static_cast<std::uint16_t>(bounds->highFlags & ~1U);
  }

 private:
  /// Bytes that may be written over. The length of a bound of the call's own may be cut to 8 bits;
  /// of one that was there it is all that is known.
  static std::size_t RoomOf(void const* bound, bool wasThere, std::uint8_t length, unsigned size,
                            PresentBound present) {
    if (bound == nullptr) return 0;
    if (!wasThere) return size;
    return present == PresentBound::kRewritten ? length : 0;
  }

  XoIdxBounds* bounds;
  std::size_t lowRoom = 0;
  std::size_t highRoom = 0;
};

/// The stored element of a value.
template <class Layout>
std::array<unsigned char, Layout::kDiskWidth> StoredElement(typename Layout::Value const& value,
                                                            unsigned char nibble) {
  std::array<unsigned char, Layout::kDiskWidth> element;
  Layout::StoreOne(element.data(), &value, nibble);
  return element;
}

/// The lowest and the highest value that one with wildcards stands for; its bounds.
template <class Value>
struct Ends {
  Value low;
  Value high;
};

/// Evaluates a predicate on a date, alone or with a time. Bounds that are there before the call
/// stay as they are. `Rules` tells the `Number` of a value; its `Widen` widens the ends and tells
/// whether there is a wildcard; its `Share` is that of an index whose ends are known.
template <class Layout, class Rules>
float EvaluateDates(XoIdxBounds const* range, unsigned short& op, void const* value,
                    unsigned char format, unsigned count, void* bounds) {
  unsigned char const nibble = FormNibble(format);
  bool const isKnown = HasBothEnds(range);
  EndNumbers const numbers = NumbersOfEnds<Layout>(range, nibble, Rules::Number);
  op &= kRelationAndPattern;
  auto const plain = Layout::Decode(value, nibble);
  Ends<typename Layout::Value> ends{plain, plain};
  if (Rules::Widen(ends)) op |= kXoBoundPattern;
  ValueBounds targets(bounds, value, op, Layout::kDiskWidth * count, PresentBound::kLeft);
  targets.Write(StoredElement<Layout>(ends.low, nibble), StoredElement<Layout>(ends.high, nibble));
  return isKnown ? Rules::Share(op, plain, ends, numbers) : 0.0F;
}

}  // namespace xo
