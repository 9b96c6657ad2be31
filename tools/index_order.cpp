#include "tools/index_order.hpp"

#include "tools/index_layout.hpp"
#include "tools/text_key.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {

IndexOrder indexOrder;

void SetIndexOrder(char type, unsigned char format) {
  IndexShape shape;
  shape.type = type;
  indexOrder.type = type;
  indexOrder.format = format;
  indexOrder.width =
      shape.HasText() ? 0 : indexOrder.manager.DiskLenGet(type, nullptr, format, 1, FormMemory);
  indexOrder.comparisons = 0;
  indexOrder.keysVisited = 0;
  indexOrder.compare = CompareIndexKeys;
  if (shape.IsWeighted()) {
    indexOrder.compare = CompareWeightedKeys;
  } else if (shape.HasText()) {
    indexOrder.compare = static_cast<MDB_cmp_func*>(CompareTextKeys);
  }
}

bool IndexOrder::IsKeySize(std::size_t size) const {
  if (width != 0) return size == width;
  return compare == CompareWeightedKeys ? IsWeightedKeySize(size) : IsTextKeySize(size);
}

int CompareIndexKeys(MDB_val const* a, MDB_val const* b) {
  ++indexOrder.comparisons;
  if (a->mv_size != indexOrder.width || b->mv_size != indexOrder.width) {
    return (a->mv_size > b->mv_size) - (a->mv_size < b->mv_size);
  }
  return indexOrder.manager.Cmp(indexOrder.type, a->mv_data, b->mv_data, kCmpNoWildcards, 1,
                                indexOrder.format);
}

int CompareTextKeys(MDB_val const* a, MDB_val const* b) {
  if (!IsTextKeySize(a->mv_size) || !IsTextKeySize(b->mv_size)) {
    ++indexOrder.comparisons;
    return (a->mv_size > b->mv_size) - (a->mv_size < b->mv_size);
  }
  int status = 0;
  int const order = CompareTextKeys(*a, *b, kCmpNoWildcards, status);
  return order != 0 ? order : EndsAtGroup(*a) - EndsAtGroup(*b);
}

int CompareWeightedKeys(MDB_val const* a, MDB_val const* b) {
  ++indexOrder.comparisons;
  if (!IsWeightedKeySize(a->mv_size) || !IsWeightedKeySize(b->mv_size)) {
    return (a->mv_size > b->mv_size) - (a->mv_size < b->mv_size);
  }
  int status = 0;
  return indexOrder.manager.Cmp(indexOrder.type, static_cast<unsigned>(a->mv_size), a->mv_data,
                                static_cast<unsigned>(b->mv_size), b->mv_data, kCmpNoWildcards, 1,
                                indexOrder.format, status);
}

int CompareTextKeys(MDB_val const& a, MDB_val const& b, unsigned short cmpOp, int& status) {
  ++indexOrder.comparisons;
  return indexOrder.manager.Cmp(indexOrder.type, static_cast<unsigned>(a.mv_size), a.mv_data,
                                static_cast<unsigned>(b.mv_size), b.mv_data, cmpOp, 1,
                                static_cast<unsigned char>(indexOrder.format | FormatIndexKey),
                                status);
}

}  // namespace xo::tool
