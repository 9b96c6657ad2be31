#pragma once

#include <cstdint>

#include "base/export.hpp"

/// What an index holds, or where a scan of it runs: two stored keys. `XoTypeMgr::EvalAndBound`
/// takes the first as `range`, of which it changes no field, and fills the second as `bounds`.
///
/// A bound that is present is kept, so that several predicates on one key can share a record: the
/// first one wins. What an evaluation adds is allocated as `AllocateBound` does and belongs to the
/// caller from then on, who gives it back by `ReleaseBounds`. Two evaluations must not fill one
/// record at the same time.
struct XoIdxBounds {
  void* low = nullptr;          ///< lowest key, or where a scan starts; null: unknown
  void* high = nullptr;         ///< highest key, or where a scan ends; null: unknown
  std::uint8_t lowLen = 0;      ///< bytes behind `low`
  std::uint8_t highLen = 0;     ///< bytes behind `high`
  std::uint16_t lowFlags = 0;   ///< flags of the lower bound; an evaluation at most clears bit 0
  std::uint16_t highFlags = 0;  ///< flags of the upper bound, likewise
  std::uint8_t keyLimit = 0;    ///< texts only: the longest key; buffers of bounds have its size
};

/// The relation of a predicate, as the low bits of the `op` of an evaluation. `<=` sets two.
inline constexpr unsigned short kXoBoundEqual = 1;  ///< keys equal to the value
inline constexpr unsigned short kXoBoundBelow = 2;  ///< keys below the value
inline constexpr unsigned short kXoBoundAbove = 4;  ///< keys above the value
/// Out: the bounds only narrow the scan, and the predicate is to be tested on each key, since the
/// value is a pattern or has a wildcard.
inline constexpr unsigned short kXoBoundPattern = 8;

/// Memory for a bound of `size` bytes, by the allocator of the library. Never null.
XO_EXPORT void* AllocateBound(unsigned size);

/// Gives back both bounds of `bounds` and forgets them with their lengths; flags and `keyLimit`
/// stay. Null ends are ignored.
XO_EXPORT void ReleaseBounds(XoIdxBounds& bounds);

/// The measure of the keys in `[rangeLow, rangeHigh]` that satisfy the relation in `op` to a value
/// that stands for `[valueLow, valueHigh]`; a number passes itself twice. `unit` is the smallest
/// step between two keys. A difference that is infinite or not a number counts as the largest
/// double; the sum of several may be infinite.
XO_EXPORT double BoundRangeArea(unsigned short op, double valueLow, double valueHigh,
                                double rangeLow, double rangeHigh, double unit);

/// Records the `size` bytes at `value` as a bound of a predicate: as `low` unless there is one or
/// keys below are asked for, and as `high` unless there is one or keys above are. The length keeps
/// the low 8 bits of `size`; all bytes are copied. `bounds` may be null, and gets nothing then.
XO_EXPORT void BoundRecord(XoIdxBounds* bounds, void const* value, unsigned short op,
                           unsigned size);
