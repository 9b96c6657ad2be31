#include "tools/key_batch.hpp"

#include <algorithm>

#include "tools/index_order.hpp"

namespace xo::tool {

void KeyBatch::Add(std::span<unsigned char const> key, LineNumber line) {
  Entry entry{line, static_cast<std::uint32_t>(key.size()), 0, {}};
  if (key.size() <= entry.few.size()) {
    std::copy(key.begin(), key.end(), entry.few.begin());
  } else {
    entry.offset = static_cast<std::uint32_t>(bytes.size());
    bytes.insert(bytes.end(), key.begin(), key.end());
  }
  entries.push_back(entry);
}

std::vector<KeyBatch::Entry> const& KeyBatch::Sorted() {
  std::sort(entries.begin(), entries.end(), [this](Entry const& a, Entry const& b) {
    MDB_val const keyA = Key(a);
    MDB_val const keyB = Key(b);
    int const order = indexOrder.compare(&keyA, &keyB);
    return order != 0 ? order < 0 : a.line < b.line;
  });
  return entries;
}

void KeyBatch::Clear() {
  entries.clear();
  bytes.clear();
}

}  // namespace xo::tool
