#include <fmt/core.h>

#include "tools/index_command.hpp"
#include "tools/index_reader.hpp"
#include "tools/standard_streams.hpp"
#include "tools/tree_check.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

void Require(bool holds, IndexReader const& index, char const* what) {
  if (!holds) throw Trouble(fmt::format("{} ({})", DamageMessage(index.Name()), what));
}

}  // namespace

int VerifyIndex(ReadOptions const& options) {
  IndexReader const index(options.file);
  NoteUnusedOptions(options, index);
  IndexMeta const& meta = index.Meta();

  TreeTotals const keys =
      CheckKeys(index.Transaction(), index.Keys(), index.Name(),
                [&index](LineNumber line) { static_cast<void>(index.Line(line)); });
  TreeTotals const lines = CheckLines(index.Transaction(), index.Lines(), index.Name());
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
