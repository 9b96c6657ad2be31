#pragma once

#include <lmdb.h>

#include <cstdint>
#include <xotypemgr.hpp>

namespace xo::tool {

/// The order of the index's keys, as LMDB's pages need it.
///
/// LMDB hands its comparisons two keys and nothing else, so what they mean stands here. It is
/// written by `SetIndexOrder` alone, before the tree that it is for is first looked at; the
/// comparisons only count. One tree at a time, one thread.
struct IndexOrder {
  XoTypeMgr manager;
  char type = XoRES_T;
  unsigned char format = FormLittle;
  /// Bytes of one stored value; 0 for text, whose keys are of many widths.
  std::size_t width = 0;
  /// Comparisons made since the order was set.
  std::uint64_t comparisons = 0;
  /// Keys that a cursor was set on, likewise.
  std::uint64_t keysVisited = 0;
  /// The comparison to give to `mdb_set_compare`.
  MDB_cmp_func* compare = nullptr;

  /// Whether `size` is one that a stored key can have.
  bool IsKeySize(std::size_t size) const;
};
extern IndexOrder indexOrder;

/// From now on keys are stored values of `type` in `format`, or of text, index keys.
void SetIndexOrder(char type, unsigned char format);

/// For `mdb_set_compare`: the manager's comparison of the two stored values where they lie in
/// LMDB's pages, wildcards as ordinary numbers. A key of another width is none that was stored; it
/// comes before all that were if it is shorter, behind them if it is longer, and is not read.
int CompareIndexKeys(MDB_val const* a, MDB_val const* b);

/// The same for keys of text, with as many bytes of each as there are. Of keys that compare equal
/// those come last that end where the group of their text changes: they tell less than the whole
/// text, while the others tell all of it, so the two must not take the same place in the tree.
int CompareTextKeys(MDB_val const* a, MDB_val const* b);

/// For `mdb_set_compare`: the comparison of keys of weighted texts. Damaged ones are told by their
/// size alone, and nothing is read behind it.
int CompareWeightedKeys(MDB_val const* a, MDB_val const* b);

/// The order of two whole keys, or of what there is of cut ones; the second is a pattern unless
/// `cmpOp` says otherwise. `status` tells what that is worth, as at `XCompare`.
int CompareTextKeys(MDB_val const& a, MDB_val const& b, unsigned short cmpOp, int& status);

}  // namespace xo::tool
