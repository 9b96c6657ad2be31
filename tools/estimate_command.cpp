#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <nlohmann/json.hpp>
#include <random>

#include "tools/index_command.hpp"
#include "tools/plot.hpp"
#include "tools/predicate.hpp"
#include "tools/predicate_text.hpp"
#include "tools/printable.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_form.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// What a predicate is estimated to select, and what it does, as shares of all keys.
struct Sample {
  double truth;
  double estimate;

  /// In points of a percentage.
  double Error() const { return 100 * std::fabs(estimate - truth); }
};

/// Predicates of one kind.
struct Kind {
  std::string name;
  unsigned short relation;
  /// Whether the value is the beginning of a text and a wildcard.
  bool isPrefix;
  std::vector<Sample> samples = {};
};

/// A key of the index and one of its lines.
struct Place {
  MDB_val key;
  LineNumber line;
};

/// Characters of a beginning at most: there are few texts that begin with more.
constexpr unsigned kLongestPrefix = 4;
/// Texts that are drawn until one has a beginning without characters that are wildcards.
constexpr int kDraws = 100;

/// The first `characters` characters of a text in UTF-8.
std::string Prefix(std::string const& text, std::size_t characters) {
  std::size_t end = 0;
  while (end < text.size() && characters != 0) {
    ++end;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) ++end;
    --characters;
  }
  return text.substr(0, end);
}

/// Draws predicates on an index from its own keys.
class Sampler {
 public:
  Sampler(IndexReader const& reader, std::uint64_t seed)
      : index(reader), ends(EndKeysOf(reader)), random(seed) {
    KeyCursor cursor(index);
    for (bool on = cursor.First(); on; on = cursor.NextKey()) {
      places.push_back({cursor.Key(), cursor.Line()});
    }
  }

  std::size_t Keys() const { return places.size(); }

  /// A predicate of a kind with its truth, or nothing where no text has a fit beginning.
  std::optional<Sample> Draw(Kind const& kind) {
    return kind.isPrefix ? DrawPrefix() : std::optional(DrawRelation(kind.relation));
  }

 private:
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random() % limit); }

  double ShareOf(std::size_t count) const {
    return static_cast<double>(count) / static_cast<double>(places.size());
  }

  ByteSpan RecordAt(Place const& place) const {
    return index.Meta().HasText() ? index.Record(place.line) : ByteSpan{};
  }

  /// How many keys are below a value that is a key itself is its place among them.
  Sample DrawRelation(unsigned short relation) {
    std::size_t const at = Below(places.size());
    Place const& place = places[at];
    ByteSpan const key(static_cast<unsigned char const*>(place.key.mv_data), place.key.mv_size);
    auto const predicate = MakePredicate(index, relation, key, RecordAt(place));
    double const estimate = predicate->Evaluate(ends).share.value_or(0);
    std::size_t selected = 0;
    if ((relation & kXoBoundBelow) != 0) selected += at;
    if ((relation & kXoBoundEqual) != 0) selected += 1;
    if ((relation & kXoBoundAbove) != 0) selected += places.size() - at - 1;
    return {ShareOf(selected), estimate};
  }

  std::optional<Sample> DrawPrefix() {
    for (int draw = 0; draw < kDraws; ++draw) {
      Place const& place = places[Below(places.size())];
      std::string const text = TextOfRecord(index.Meta(), RecordAt(place));
      std::string const prefix = Prefix(text, 1 + Below(kLongestPrefix));
      if (prefix.empty() || prefix.find_first_of("*?\\") != std::string::npos) continue;
      auto const predicate = MakePredicate(index, {kXoBoundEqual, 0, prefix + '*', {}});
      double const estimate = predicate->Evaluate(ends).share.value_or(0);
      return Sample{ShareOf(CountSelected(*predicate)), estimate};
    }
    return std::nullopt;
  }

  std::size_t CountSelected(Predicate const& predicate) const {
    std::size_t selected = 0;
    KeyCursor cursor(index);
    for (bool on = cursor.First(); on; on = cursor.NextKey()) {
      if (predicate.Selects(cursor)) ++selected;
    }
    return selected;
  }

  IndexReader const& index;
  std::optional<EndKeys> ends;
  std::mt19937_64 random;
  std::vector<Place> places;
};

std::vector<Kind> KindsOf(IndexReader const& index) {
  std::vector<Kind> kinds;
  for (std::string_view const sign : {"<", "<=", ">", ">=", "=", "<>"}) {
    kinds.push_back({std::string(sign), ParsePredicate(sign).relation, false});
  }
  if (index.Meta().HasText()) kinds.push_back({"= prefix*", kXoBoundEqual, true});
  return kinds;
}

/// The errors of several kinds together, in their order.
struct Errors {
  std::string name;
  std::vector<double> sorted;

  /// The least error that a share `part` of all does not exceed.
  double Quantile(double part) const {
    auto const rank =
        static_cast<std::size_t>(std::ceil(part * static_cast<double>(sorted.size())));
    return sorted[std::max<std::size_t>(rank, 1) - 1];
  }
};

Errors Pool(std::string name, std::vector<Kind> const& kinds,
            std::function<bool(Kind const&)> const& takes) {
  Errors errors{std::move(name), {}};
  for (Kind const& kind : kinds) {
    if (!takes(kind)) continue;
    for (Sample const& sample : kind.samples) errors.sorted.push_back(sample.Error());
  }
  std::sort(errors.sorted.begin(), errors.sorted.end());
  return errors;
}

/// One row for each kind, and for those that belong together.
std::vector<Errors> ReportOf(std::vector<Kind> const& kinds) {
  std::vector<Errors> report;
  for (Kind const& kind : kinds) {
    report.push_back(Pool(kind.name, kinds, [&](Kind const& one) { return &one == &kind; }));
  }
  auto const isSided = [](Kind const& kind) {
    bool const isBelow = (kind.relation & kXoBoundBelow) != 0;
    bool const isAbove = (kind.relation & kXoBoundAbove) != 0;
    return isBelow != isAbove;
  };
  report.push_back(Pool("< and >", kinds, isSided));
  if (kinds.back().isPrefix) {
    report.push_back(Pool("< and > with prefixes", kinds,
                          [&](Kind const& kind) { return isSided(kind) || kind.isPrefix; }));
  }
  std::erase_if(report, [](Errors const& errors) { return errors.sorted.empty(); });
  return report;
}

struct QuantileColumn {
  char const* title;
  char const* name;
  double part;
};
constexpr std::array<QuantileColumn, 5> kColumns = {{{"25 %", "q25", 0.25},
                                                     {"median", "median", 0.5},
                                                     {"75 %", "q75", 0.75},
                                                     {"95 %", "q95", 0.95},
                                                     {"largest", "largest", 1.0}}};

std::string ReportAsText(std::vector<Errors> const& report) {
  std::string text = "error of the estimate, in percentage points\n";
  text += fmt::format("{:<22}{:>6}", "kind", "count");
  for (QuantileColumn const& column : kColumns) text += fmt::format("{:>9}", column.title);
  text += '\n';
  for (Errors const& errors : report) {
    text += fmt::format("{:<22}{:>6}", errors.name, errors.sorted.size());
    for (QuantileColumn const& column : kColumns) {
      text += fmt::format("{:>9.2f}", errors.Quantile(column.part));
    }
    text += '\n';
  }
  return text;
}

std::string ReportAsJson(std::vector<Errors> const& report, std::size_t keys) {
  nlohmann::ordered_json object;
  object["keys"] = keys;
  for (Errors const& errors : report) {
    nlohmann::ordered_json row;
    row["count"] = errors.sorted.size();
    for (QuantileColumn const& column : kColumns) row[column.name] = errors.Quantile(column.part);
    object["kinds"][errors.name] = row;
  }
  return object.dump() + "\n";
}

void Plot(std::string const& file, std::vector<Kind> const& kinds) {
  std::vector<PlotSeries> series;
  for (Kind const& kind : kinds) {
    if (kind.samples.empty()) continue;
    PlotSeries one{kind.name, {}};
    for (Sample const& sample : kind.samples) {
      one.points.emplace_back(100 * sample.truth, 100 * sample.estimate);
    }
    series.push_back(std::move(one));
  }
  DrawEstimates(file, series);
}

}  // namespace

int TryEstimates(EstimateOptions const& options) {
  // Before the work, not behind it.
  if (!options.plot.empty()) RequirePlotter(options.plot);
  IndexReader const index(options.file);
  PrepareToRead(options, index);
  Sampler sampler(index, options.seed);
  if (sampler.Keys() == 0) throw Trouble(fmt::format("{} has no keys", index.Name()));
  std::vector<Kind> kinds = KindsOf(index);
  for (std::uint64_t drawn = 0; drawn < options.predicates; ++drawn) {
    Kind& kind = kinds[drawn % kinds.size()];
    if (auto const sample = sampler.Draw(kind)) kind.samples.push_back(*sample);
  }
  std::vector<Errors> const report = ReportOf(kinds);
  if (!options.plot.empty()) Plot(options.plot, kinds);
  if (options.json) {
    WriteOutput(ReportAsJson(report, sampler.Keys()));
  } else {
    WriteOutput(fmt::format("{}: {} keys of type {}\n{}", index.Name(), sampler.Keys(),
                            TypeName(index.Meta().type), ReportAsText(report)));
  }
  return kDone;
}

}  // namespace xo::tool
