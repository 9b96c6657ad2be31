#include "tools/key_sizes.hpp"

#include <fmt/core.h>

#include <cstdint>
#include <string_view>
#include <unordered_set>

#include "tools/line_source.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_table.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct Sums {
  std::uint64_t texts = 0;
  std::uint64_t textBytes = 0;
  std::uint64_t keyBytes = 0;
  std::uint64_t cut = 0;
  /// Lines that the code set cannot hold.
  std::uint64_t left = 0;
};

std::string Mean(std::uint64_t sum, std::uint64_t count) {
  return count == 0 ? "-"
                    : fmt::format("{:.1f}", static_cast<double>(sum) / static_cast<double>(count));
}

}  // namespace

std::string KeySizes(std::string const& file, XoCodeSet const& set, unsigned char language,
                     std::function<bool(XoString& text, Bytes& key)> const& keyOf) {
  LineSource source(file);
  TextDecoder decoder(set, language);
  std::unordered_set<std::string> distinct;
  Sums sums;
  XoString text;
  Bytes key;
  while (source.Next()) {
    std::string_view line = source.Text();
    if (line.ends_with('\r')) line.remove_suffix(1);
    std::string const complaint = decoder.Decode(line, text);
    if (!complaint.empty()) {
      throw Trouble(fmt::format("{}, line {} {}", source.Name(), source.Number(), complaint));
    }
    if (!decoder.Loss().empty()) {
      ++sums.left;
      continue;
    }
    if (keyOf(text, key)) ++sums.cut;
    ++sums.texts;
    sums.textBytes += line.size();
    sums.keyBytes += key.size();
    distinct.emplace(key.begin(), key.end());
  }
  TextTable table("tn");
  table.Add({"texts", fmt::format("{}", sums.texts)});
  table.Add({"bytes of a text, in UTF-8", Mean(sums.textBytes, sums.texts)});
  table.Add({"bytes of a key", Mean(sums.keyBytes, sums.texts)});
  table.Add({"keys that are cut", fmt::format("{}", sums.cut)});
  table.Add({"distinct keys", fmt::format("{}", distinct.size())});
  if (sums.left != 0) {
    table.Add({fmt::format("lines that {} lacks", set.name), fmt::format("{}", sums.left)});
  }
  return table.Text();
}

}  // namespace xo::tool
