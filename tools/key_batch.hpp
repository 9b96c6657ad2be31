#pragma once

#include <cstddef>
#include <vector>

#include "tools/index_layout.hpp"
#include "tools/value_codec.hpp"

namespace xo::tool {

/// Entries on their way into the tree. They go there sorted, many at a time, as a tree that is
/// filled in order touches each of its pages once.
class KeyBatch {
 public:
  struct Entry {
    StoredValue value;
    LineNumber line;
  };

  void Add(StoredValue const& value, LineNumber line) { entries.push_back({value, line}); }

  /// Whether it is time to empty the batch.
  bool IsFull() const { return entries.size() >= kFull; }

  /// The entries in the index's order, those of one value by line.
  std::vector<Entry> const& Sorted();

  void Clear() { entries.clear(); }

 private:
  /// 16 MiB of entries.
  static constexpr std::size_t kFull = (std::size_t{16} << 20) / sizeof(Entry);

  std::vector<Entry> entries;
};

}  // namespace xo::tool
