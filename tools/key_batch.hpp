#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "tools/index_layout.hpp"

namespace xo::tool {

/// Entries on their way into the tree. They go there sorted, many at a time, as a tree that is
/// filled in order touches each of its pages once.
class KeyBatch {
 public:
  struct Entry {
    LineNumber line;
    /// Bytes of the key.
    std::uint32_t size;
    /// Where they begin, unless they are few enough to stand in the entry.
    std::uint32_t offset;
    std::array<unsigned char, 8> few;
  };

  void Add(std::span<unsigned char const> key, LineNumber line);

  /// The key of one of the entries, until the batch changes.
  MDB_val Key(Entry const& entry) const {
    bool const isHere = entry.size <= entry.few.size();
    return LmdbValue(isHere ? entry.few.data() : bytes.data() + entry.offset, entry.size);
  }

  /// Whether it is time to empty the batch.
  bool IsFull() const { return entries.size() >= kFull || bytes.size() >= kFullBytes; }

  /// The entries in the index's order, those of one key by line.
  std::vector<Entry> const& Sorted();

  void Clear();

 private:
  /// 24 MiB of entries, and as many bytes of longer keys.
  static constexpr std::size_t kFull = std::size_t{1} << 20;
  static constexpr std::size_t kFullBytes = kFull * sizeof(Entry);

  std::vector<Entry> entries;
  std::vector<unsigned char> bytes;
};

}  // namespace xo::tool
