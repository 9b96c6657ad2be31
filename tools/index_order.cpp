#include "tools/index_order.hpp"

#include "tools/text_key.hpp"

namespace xo::tool {

IndexOrder indexOrder;

void SetIndexOrder(char type, unsigned char format) {
  bool const isText = type == static_cast<char>(XoSTRING_T);
  indexOrder.type = type;
  indexOrder.format = format;
  indexOrder.width =
      isText ? 0 : indexOrder.manager.DiskLenGet(type, nullptr, format, 1, FormMemory);
  indexOrder.comparisons = 0;
  indexOrder.compare = isText ? static_cast<MDB_cmp_func*>(CompareTextKeys) : CompareIndexKeys;
}

bool IndexOrder::IsKeySize(std::size_t size) const {
  return width != 0 ? size == width : IsTextKeySize(size);
}

int CompareIndexKeys(MDB_val const* a, MDB_val const* b) {
  ++indexOrder.comparisons;
  if (a->mv_size != indexOrder.width || b->mv_size != indexOrder.width) {
    return (a->mv_size > b->mv_size) - (a->mv_size < b->mv_size);
  }
  return indexOrder.manager.Cmp(indexOrder.type, a->mv_data, b->mv_data, kCmpNoWildcards, 1,
                                indexOrder.format);
}

bool MatchesIndexPattern(MDB_val const& key, MDB_val const& pattern) {
  ++indexOrder.comparisons;
  return indexOrder.manager.Cmp(indexOrder.type, key.mv_data, pattern.mv_data, 0, 1,
                                indexOrder.format) == 0;
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

int CompareTextKeys(MDB_val const& a, MDB_val const& b, unsigned short cmpOp, int& status) {
  ++indexOrder.comparisons;
  return indexOrder.manager.Cmp(indexOrder.type, static_cast<unsigned>(a.mv_size), a.mv_data,
                                static_cast<unsigned>(b.mv_size), b.mv_data, cmpOp, 1,
                                static_cast<unsigned char>(indexOrder.format | FormatIndexKey),
                                status);
}

}  // namespace xo::tool
