#include "tools/key_batch.hpp"

#include <algorithm>

#include "tools/index_order.hpp"

namespace xo::tool {

std::vector<KeyBatch::Entry> const& KeyBatch::Sorted() {
  std::sort(entries.begin(), entries.end(), [](Entry const& a, Entry const& b) {
    MDB_val const keyA = LmdbValue(a.value.data(), indexOrder.width);
    MDB_val const keyB = LmdbValue(b.value.data(), indexOrder.width);
    int const order = CompareIndexKeys(&keyA, &keyB);
    return order != 0 ? order < 0 : a.line < b.line;
  });
  return entries;
}

}  // namespace xo::tool
