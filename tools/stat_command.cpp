#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "tools/index_command.hpp"
#include "tools/index_reader.hpp"
#include "tools/key_cursor.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_key.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

nlohmann::ordered_json PagesAsJson(MDB_stat const& tree) {
  return {{"depth", tree.ms_depth},
          {"branchPages", tree.ms_branch_pages},
          {"leafPages", tree.ms_leaf_pages},
          {"overflowPages", tree.ms_overflow_pages}};
}

std::string PagesAsText(MDB_stat const& tree) {
  return fmt::format("depth {}, pages: {} branch, {} leaf, {} overflow", tree.ms_depth,
                     tree.ms_branch_pages, tree.ms_leaf_pages, tree.ms_overflow_pages);
}

/// How much of an index of text its keys do not tell.
struct CutKeys {
  /// Lines whose key is cut.
  std::uint64_t lines = 0;
  /// Keys that are cut: a look-up of their texts has to fetch a value.
  std::uint64_t keys = 0;
};

bool IsCut(MDB_val const& key, IndexMeta const& meta) {
  return meta.IsWeighted() ? WeightedKey(key, meta).MayBeCut() : TextKey(key, meta.format).IsCut();
}

CutKeys CountCutKeys(IndexReader const& index) {
  CutKeys cut;
  KeyCursor cursor(index);
  for (bool on = cursor.First(); on; on = cursor.NextKey()) {
    if (!IsCut(cursor.Key(), index.Meta())) continue;
    ++cut.keys;
    cut.lines += cursor.Lines();
  }
  return cut;
}

std::string Share(std::uint64_t part, std::uint64_t whole) {
  double const percent =
      whole != 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0;
  return fmt::format("{} of {} ({:.1f} %)", part, whole, percent);
}

std::string Fingerprint(IndexMeta const& meta) {
  return fmt::format("{:016x}", meta.collationFingerprint);
}

std::string AsJson(IndexReader const& index, MDB_stat const& keys, MDB_stat const& lines) {
  IndexMeta const& meta = index.Meta();
  nlohmann::ordered_json object;
  object["type"] = TypeName(meta.type);
  object["typeId"] = static_cast<int>(meta.type);
  object["formatByte"] = meta.format;
  object["byteOrder"] = ByteOrderOf(meta.format);
  object["entries"] = meta.entries;
  object["distinctKeys"] = meta.distinct;
  if (meta.HasText()) {
    CutKeys const cut = CountCutKeys(index);
    object["codeSet"] = meta.codeSet;
    if (!meta.IsWeighted()) {
      object["language"] = meta.language;
      object["collationVersion"] = meta.collationVersion;
      object["collationFingerprint"] = Fingerprint(meta);
    }
    object["keyLength"] = meta.keyLength;
    object["linesWithCutKey"] = cut.lines;
    object["lookUpsThatFetch"] = cut.keys;
  }
  object["keys"] = PagesAsJson(keys);
  object["lines"] = PagesAsJson(lines);
  if (meta.HasText()) object["values"] = PagesAsJson(index.Statistics(index.Values()));
  object["pageSize"] = keys.ms_psize;
  object["fileBytes"] = index.FileBytes();
  return object.dump(2) + '\n';
}

std::string AsText(IndexReader const& index, MDB_stat const& keys, MDB_stat const& lines) {
  IndexMeta const& meta = index.Meta();
  std::string text;
  auto const row = [&text](char const* name, std::string const& value) {
    text += fmt::format("{:<15}{}\n", name, value);
  };
  row("type", fmt::format("{} (id {})", TypeName(meta.type), static_cast<int>(meta.type)));
  row("format byte", fmt::format("{} ({}-endian)", meta.format, ByteOrderOf(meta.format)));
  row("entries", fmt::format("{}", meta.entries));
  row("distinct keys", fmt::format("{}", meta.distinct));
  if (meta.HasText()) {
    CutKeys const cut = CountCutKeys(index);
    row("code set",
        fmt::format("{} ({})", meta.codeSet, XoLanguageContext::QueryCodeSet(meta.codeSet)->name));
    if (!meta.IsWeighted()) {
      row("language", fmt::format("{} ({})", meta.language,
                                  XoLanguageContext::QueryLanguage(meta.language)->name));
      row("collation", fmt::format("{} ({})", meta.collationVersion, Fingerprint(meta)));
    }
    row("key length", fmt::format("{} bytes at most", meta.keyLength));
    row("cut keys", fmt::format("{} lines", Share(cut.lines, meta.entries)));
    row("fetching", fmt::format("{} look-ups, one for each key", Share(cut.keys, meta.distinct)));
  }
  row("tree of keys", PagesAsText(keys));
  row("tree of lines", PagesAsText(lines));
  if (meta.HasText()) row("tree of values", PagesAsText(index.Statistics(index.Values())));
  row("page size", fmt::format("{} bytes", keys.ms_psize));
  row("file", fmt::format("{} bytes", index.FileBytes()));
  return text;
}

}  // namespace

int ShowIndexStatistics(ReadOptions const& options) {
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  MDB_stat const keys = index.Statistics(index.Keys());
  MDB_stat const lines = index.Statistics(index.Lines());
  if (keys.ms_entries != index.Meta().entries || lines.ms_entries != index.Meta().entries) {
    throw Trouble(fmt::format("{} (number of entries)", DamageMessage(index.Name())));
  }
  WriteOutput(options.json ? AsJson(index, keys, lines) : AsText(index, keys, lines));
  return kDone;
}

}  // namespace xo::tool
