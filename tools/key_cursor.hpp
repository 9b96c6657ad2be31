#pragma once

#include <cstdint>

#include "tools/index_reader.hpp"

namespace xo::tool {

/// A place in an index's tree of keys. What cannot be read there, or leads round in circles, is
/// `Trouble`.
class KeyCursor {
 public:
  explicit KeyCursor(IndexReader const& reader);

  // Each false where there is no such place; the cursor is on none then.
  /// To the lowest key.
  bool First();
  /// To the highest key, and its last line.
  bool Last();
  /// To the first key that is not below `key`.
  bool Seek(MDB_val const& key);
  /// On to the next key.
  bool NextKey();
  /// On to the next line of the same key. Where there is none the cursor stays.
  bool NextLine();

  /// The key, in the map of the file.
  MDB_val const& Key() const { return key; }
  LineNumber Line() const;
  /// How many lines the key has.
  std::uint64_t Lines() const;

  [[noreturn]] void Damaged(char const* what) const;

 private:
  bool Get(MDB_cursor_op operation);
  bool OnKey(MDB_cursor_op operation);

  IndexReader const& index;
  LmdbCursor cursor;
  MDB_val key{};
  MDB_val data{};
  // Damaged pages could lead round in circles: no more keys are passed from one seek to the next
  // than there can be, and no more lines in all.
  std::uint64_t keysPassed = 0;
  std::uint64_t linesPassed = 0;
};

}  // namespace xo::tool
