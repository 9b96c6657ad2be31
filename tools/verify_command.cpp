#include <fmt/core.h>

#include "tools/index_command.hpp"
#include "tools/index_order.hpp"
#include "tools/index_reader.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_form.hpp"
#include "tools/tree_check.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

void Require(bool holds, IndexReader const& index, std::string const& what) {
  if (!holds) throw Trouble(fmt::format("{} ({})", DamageMessage(index.Name()), what));
}

}  // namespace

int VerifyIndex(ReadOptions const& options) {
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  IndexMeta const& meta = index.Meta();

  Bytes rebuilt(kLongestKey);
  auto const checkKey = [&](LineNumber line, MDB_val const& key) {
    static_cast<void>(index.Line(line));
    if (!meta.HasText()) return;
    std::size_t const size = MakeKey(meta, index.Record(line), rebuilt.data(), meta.keyLength);
    MDB_val const expected = LmdbValue(rebuilt.data(), size);
    // Keys without letters may differ in their group and share a place still.
    Require(indexOrder.compare(&key, &expected) == 0, index,
            fmt::format("the key of line {} is not that of its value", line));
  };
  auto const pass = [](LineNumber, MDB_val const&) {};
  TreeTotals const keys = CheckKeys(index.Transaction(), index.Keys(), index.Name(), checkKey);
  TreeTotals const lines = CheckLines(index.Transaction(), index.Lines(), index.Name(), pass);
  if (meta.HasText()) {
    TreeTotals const values = CheckLines(index.Transaction(), index.Values(), index.Name(), pass);
    Require(values.entries == meta.entries, index, "number of values");
    Require(values.checksum == meta.valuesChecksum, index, "checksum of the values");
  }
  Require(keys.entries == meta.entries, index, "number of entries");
  Require(keys.distinct == meta.distinct, index, "number of distinct keys");
  Require(lines.entries == meta.entries, index, "number of lines");
  Require(keys.checksum == meta.keysChecksum, index, "checksum of the keys");
  Require(lines.checksum == meta.linesChecksum, index, "checksum of the lines");

  WriteOutput(fmt::format("{} is in order: {} entries, {} distinct keys, {} lines checked\n",
                          index.Name(), keys.entries, keys.distinct, lines.entries));
  return kDone;
}

}  // namespace xo::tool
