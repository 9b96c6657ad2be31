#include "tools/index_reader.hpp"

#include <fmt/core.h>

#include "tools/index_order.hpp"
#include "tools/printable.hpp"
#include "tools/text_form.hpp"
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
  if (meta.HasText()) values = OpenDatabase(kValuesDatabase, kLinesFlags);
  mdb_set_compare(transaction.get(), keys, indexOrder.compare);
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

MDB_val IndexReader::Fetch(MDB_dbi database, LineNumber number, char const* what) const {
  MDB_val key = LmdbValue(&number, sizeof number);
  MDB_val data{};
  int const code = mdb_get(transaction.get(), database, &key, &data);
  if (code == MDB_NOTFOUND) {
    throw Trouble(fmt::format("{} ({} {} is not there)", DamageMessage(name), what, number));
  }
  if (code != 0) ThrowUnreadable(name, code);
  if (data.mv_size > fileBytes) {
    throw Trouble(fmt::format("{} (length of {} {})", DamageMessage(name), what, number));
  }
  return data;
}

std::string_view IndexReader::Line(LineNumber number) const {
  MDB_val const text = Fetch(lines, number, "line");
  return {static_cast<char const*>(text.mv_data), text.mv_size};
}

std::span<unsigned char const> IndexReader::Record(LineNumber number) const {
  MDB_val const value = Fetch(values, number, "value of line");
  ByteSpan const record{static_cast<unsigned char const*>(value.mv_data), value.mv_size};
  if (!IsRecord(meta, record)) {
    throw Trouble(fmt::format("{} (value of line {})", DamageMessage(name), number));
  }
  return record;
}

void IndexReader::RequirePresentCollation() const {
  if (!meta.HasText() || meta.IsWeighted() ||
      meta.collationFingerprint == XoLanguageContext::GetCollationFingerprint()) {
    return;
  }
  throw Trouble(fmt::format(
      "{} is ordered by collation {} ({:016x}), this xotm has collation {} ({:016x}): "
      "'xotm index create FILE --rebuild' rebuilds it",
      name, meta.collationVersion, meta.collationFingerprint,
      XoLanguageContext::GetCollationVersion(), XoLanguageContext::GetCollationFingerprint()));
}

MDB_stat IndexReader::Statistics(MDB_dbi database) const {
  MDB_stat statistics{};
  if (int const code = mdb_stat(transaction.get(), database, &statistics); code != 0) {
    ThrowUnreadable(name, code);
  }
  return statistics;
}

}  // namespace xo::tool
