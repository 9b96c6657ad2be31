#include "tools/index_order.hpp"

namespace xo::tool {

IndexOrder indexOrder;

void SetIndexOrder(char type, unsigned char format) {
  indexOrder.type = type;
  indexOrder.format = format;
  indexOrder.width = indexOrder.manager.DiskLenGet(type, nullptr, format, 1, FormMemory);
  indexOrder.comparisons = 0;
}

int CompareIndexKeys(MDB_val const* a, MDB_val const* b) {
  ++indexOrder.comparisons;
  if (a->mv_size != indexOrder.width || b->mv_size != indexOrder.width) {
    return (a->mv_size > b->mv_size) - (a->mv_size < b->mv_size);
  }
  return indexOrder.manager.Cmp(indexOrder.type, a->mv_data, b->mv_data, 0, 1, indexOrder.format);
}

}  // namespace xo::tool
