#include "tools/index_search.hpp"

#include <fmt/core.h>

#include "tools/index_order.hpp"
#include "tools/stop_signals.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

/// A cursor on the values from `low` to `high`, one after the other.
class ValueRange {
 public:
  ValueRange(IndexReader const& reader, StoredValue const& low, StoredValue const& high)
      : index(reader),
        cursor(OpenCursor(reader.Transaction(), reader.Keys(), reader.Name())),
        last(LmdbValue(high.data(), indexOrder.width)) {
    key = LmdbValue(low.data(), indexOrder.width);
    inside = Get(MDB_SET_RANGE) && IsInside();
  }

  /// Whether the cursor is on a value of the range.
  bool Inside() const { return inside; }

  /// On to the next value.
  void NextValue() { inside = Get(MDB_NEXT_NODUP) && IsInside(); }

  /// On to the next line of the same value; false if there is none.
  bool NextLine() { return Get(MDB_NEXT_DUP); }

  LineNumber Line() const {
    if (data.mv_size != sizeof(LineNumber)) Damaged("width of a line number");
    return LineNumberOf(data);
  }

  /// How many lines hold the present value.
  std::uint64_t Lines() const {
    std::size_t count = 0;
    if (int const code = mdb_cursor_count(cursor.get(), &count); code != 0) {
      ThrowUnreadable(index.Name(), code);
    }
    return count;
  }

  [[noreturn]] void Damaged(char const* what) const {
    throw Trouble(fmt::format("{} ({})", DamageMessage(index.Name()), what));
  }

 private:
  bool Get(MDB_cursor_op operation) {
    ThrowIfStopped();
    int const code = mdb_cursor_get(cursor.get(), &key, &data, operation);
    if (code != 0 && code != MDB_NOTFOUND) ThrowUnreadable(index.Name(), code);
    return code == 0;
  }

  bool IsInside() const {
    if (key.mv_size != indexOrder.width) Damaged("width of a key");
    return CompareIndexKeys(&key, &last) <= 0;
  }

  IndexReader const& index;
  LmdbCursor cursor;
  MDB_val last;
  MDB_val key{};
  MDB_val data{};
  bool inside = false;
};

/// Damaged pages could lead round in circles: no more lines are counted than there are.
void RequirePossible(std::uint64_t found, IndexReader const& index, ValueRange const& range) {
  if (found > index.Meta().entries) range.Damaged("number of entries");
}

}  // namespace

std::uint64_t VisitRange(IndexReader const& index, StoredValue const& low, StoredValue const& high,
                         std::function<void(LineNumber)> const& visit) {
  std::uint64_t found = 0;
  for (ValueRange range(index, low, high); range.Inside(); range.NextValue()) {
    do {
      RequirePossible(++found, index, range);
      visit(range.Line());
    } while (range.NextLine());
  }
  return found;
}

std::uint64_t CountRange(IndexReader const& index, StoredValue const& low,
                         StoredValue const& high) {
  std::uint64_t found = 0;
  for (ValueRange range(index, low, high); range.Inside(); range.NextValue()) {
    found += range.Lines();
    RequirePossible(found, index, range);
  }
  return found;
}

}  // namespace xo::tool
