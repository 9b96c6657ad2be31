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
  /// Bytes of one stored value.
  std::size_t width = 0;
  /// Comparisons made since the order was set.
  std::uint64_t comparisons = 0;
};
extern IndexOrder indexOrder;

/// From now on keys are stored values of `type` in `format`.
void SetIndexOrder(char type, unsigned char format);

/// For `mdb_set_compare`: the manager's comparison of the two stored values where they lie in
/// LMDB's pages. A key of another width is none that was stored; it comes before all that were if
/// it is shorter, behind them if it is longer, and is not read.
int CompareIndexKeys(MDB_val const* a, MDB_val const* b);

}  // namespace xo::tool
