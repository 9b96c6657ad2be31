#include "tools/key_cursor.hpp"

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

}  // namespace xo::tool
