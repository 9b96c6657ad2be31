#include "tools/index_reader.hpp"

#include <fmt/core.h>

#include "tools/index_order.hpp"
#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
IndexReader::IndexReader(std::string const& path)
    : name(PrintableName(path)),
      fileBytes(CheckLmdbFile(path, name)),
      guard(DamageMessage(name)),
      environment(OpenEnvironment(path, name, MDB_RDONLY, fileBytes)),
      transaction(BeginTransaction(environment.get(), name, MDB_RDONLY)),
      meta(ReadMeta()) {
  SetIndexOrder(meta.type, meta.format);
  keys = OpenDatabase(kKeysDatabase, kKeysFlags);
  lines = OpenDatabase(kLinesDatabase, kLinesFlags);
  mdb_set_compare(transaction.get(), keys, CompareIndexKeys);
}

IndexMeta IndexReader::ReadMeta() const {
  MDB_dbi database = 0;
  int code = mdb_dbi_open(transaction.get(), kMetaDatabase, 0, &database);
  MDB_val key = MetaKey();
  MDB_val record{};
  if (code == 0) code = mdb_get(transaction.get(), database, &key, &record);
  if (code == MDB_NOTFOUND || code == MDB_INCOMPATIBLE) {
    throw Trouble(fmt::format("{} is no index made by xotm", name));
  }
  if (code != 0) ThrowUnreadable(name, code);
  return DecodeMeta({static_cast<unsigned char const*>(record.mv_data), record.mv_size}, name);
}

MDB_dbi IndexReader::OpenDatabase(char const* databaseName, unsigned expectedFlags) const {
  MDB_dbi database = 0;
  unsigned flags = 0;
  int code = mdb_dbi_open(transaction.get(), databaseName, 0, &database);
  if (code == 0) code = mdb_dbi_flags(transaction.get(), database, &flags);
  if (code != 0) ThrowUnreadable(name, code);
  if (flags != expectedFlags) {
    throw Trouble(fmt::format("{} (database '{}')", DamageMessage(name), databaseName));
  }
  return database;
}

std::string_view IndexReader::Line(LineNumber number) const {
  MDB_val key = LmdbValue(&number, sizeof number);
  MDB_val text{};
  int const code = mdb_get(transaction.get(), lines, &key, &text);
  if (code == MDB_NOTFOUND) {
    throw Trouble(fmt::format("{} (line {} is not there)", DamageMessage(name), number));
  }
  if (code != 0) ThrowUnreadable(name, code);
  if (text.mv_size > fileBytes) {
    throw Trouble(fmt::format("{} (length of line {})", DamageMessage(name), number));
  }
  return {static_cast<char const*>(text.mv_data), text.mv_size};
}

MDB_stat IndexReader::Statistics(MDB_dbi database) const {
  MDB_stat statistics{};
  if (int const code = mdb_stat(transaction.get(), database, &statistics); code != 0) {
    ThrowUnreadable(name, code);
  }
  return statistics;
}

}  // namespace xo::tool
