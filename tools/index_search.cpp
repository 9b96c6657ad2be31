#include "tools/index_search.hpp"

#include <fmt/core.h>

#include "tools/index_order.hpp"
#include "tools/stop_signals.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {

KeyCursor::KeyCursor(IndexReader const& reader)
    : index(reader), cursor(OpenCursor(reader.Transaction(), reader.Keys(), reader.Name())) {}

bool KeyCursor::First() {
  keysPassed = 0;
  return OnKey(MDB_FIRST);
}

bool KeyCursor::Last() {
  keysPassed = 0;
  return OnKey(MDB_LAST);
}

bool KeyCursor::Seek(MDB_val const& wanted) {
  keysPassed = 0;
  key = wanted;
  return OnKey(MDB_SET_RANGE);
}

bool KeyCursor::NextKey() {
  if (++keysPassed > index.Meta().entries) Damaged("number of keys");
  return OnKey(MDB_NEXT_NODUP);
}

bool KeyCursor::NextLine() {
  if (++linesPassed > index.Meta().entries) Damaged("number of entries");
  return Get(MDB_NEXT_DUP);
}

LineNumber KeyCursor::Line() const {
  if (data.mv_size != sizeof(LineNumber)) Damaged("width of a line number");
  return LineNumberOf(data);
}

std::uint64_t KeyCursor::Lines() const {
  std::size_t count = 0;
  if (int const code = mdb_cursor_count(cursor.get(), &count); code != 0) {
    ThrowUnreadable(index.Name(), code);
  }
  return count;
}

void KeyCursor::Damaged(char const* what) const {
  throw Trouble(fmt::format("{} ({})", DamageMessage(index.Name()), what));
}

bool KeyCursor::Get(MDB_cursor_op operation) {
  ThrowIfStopped();
  int const code = mdb_cursor_get(cursor.get(), &key, &data, operation);
  if (code != 0 && code != MDB_NOTFOUND) ThrowUnreadable(index.Name(), code);
  return code == 0;
}

bool KeyCursor::OnKey(MDB_cursor_op operation) {
  if (!Get(operation)) return false;
  ++indexOrder.keysVisited;
  if (!indexOrder.IsKeySize(key.mv_size)) Damaged("width of a key");
  return true;
}

namespace {

/// The values from `low` to `high`, one after the other.
class ValueRange {
 public:
  ValueRange(IndexReader const& reader, std::span<unsigned char const> low,
             std::span<unsigned char const> high)
      : cursor(reader), entries(reader.Meta().entries), last(LmdbValue(high.data(), high.size())) {
    inside = cursor.Seek(LmdbValue(low.data(), low.size())) && IsInside();
  }

  /// Whether the cursor is on a value of the range.
  bool Inside() const { return inside; }
  void NextValue() { inside = cursor.NextKey() && IsInside(); }
  KeyCursor& Cursor() { return cursor; }

  /// Damaged pages could lead round in circles: no more lines are counted than there are.
  void RequirePossible(std::uint64_t found) const {
    if (found > entries) cursor.Damaged("number of entries");
  }

 private:
  bool IsInside() const { return indexOrder.compare(&cursor.Key(), &last) <= 0; }

  KeyCursor cursor;
  std::uint64_t entries;
  MDB_val last;
  bool inside = false;
};

}  // namespace

std::uint64_t VisitRange(IndexReader const& index, std::span<unsigned char const> low,
                         std::span<unsigned char const> high,
                         std::function<void(LineNumber)> const& visit) {
  std::uint64_t found = 0;
  for (ValueRange range(index, low, high); range.Inside(); range.NextValue()) {
    do {
      range.RequirePossible(++found);
      visit(range.Cursor().Line());
    } while (range.Cursor().NextLine());
  }
  return found;
}

std::uint64_t CountRange(IndexReader const& index, std::span<unsigned char const> low,
                         std::span<unsigned char const> high) {
  std::uint64_t found = 0;
  for (ValueRange range(index, low, high); range.Inside(); range.NextValue()) {
    found += range.Cursor().Lines();
    range.RequirePossible(found);
  }
  return found;
}

std::uint64_t VisitMatching(IndexReader const& index, std::span<unsigned char const> pattern,
                            KeyLimits const& limits, bool countsOnly,
                            std::function<void(LineNumber)> const& visit) {
  KeyCursor cursor(index);
  std::uint64_t found = 0;
  MDB_val const wanted = LmdbValue(pattern.data(), pattern.size());
  auto const isPastEnd = [&] {
    if (!limits.high) return false;
    MDB_val const last = LmdbValue(limits.high->data(), limits.high->size());
    return indexOrder.compare(&cursor.Key(), &last) > 0;
  };
  bool on =
      limits.low ? cursor.Seek(LmdbValue(limits.low->data(), limits.low->size())) : cursor.First();
  for (; on && !isPastEnd(); on = cursor.NextKey()) {
    if (!MatchesIndexPattern(cursor.Key(), wanted)) continue;
    if (countsOnly) {
      found += cursor.Lines();
      if (found > index.Meta().entries) cursor.Damaged("number of entries");
      continue;
    }
    do {
      ++found;
      visit(cursor.Line());
    } while (cursor.NextLine());
  }
  return found;
}

}  // namespace xo::tool
