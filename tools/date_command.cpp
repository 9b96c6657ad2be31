#include "tools/date_command.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/calendar_report.hpp"
#include "tools/index_command.hpp"
#include "tools/printable.hpp"
#include "tools/row_value.hpp"
#include "tools/standard_streams.hpp"
#include "tools/temporal_views.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_table.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

struct DateOptions {
  std::string value;
  std::string type;
  std::string format;
  bool hasFormat = false;
};

/// What tells the temporal types apart: the formats that their values are usually written in
/// besides that of the row, the first of which is the class's own.
struct TemporalType {
  char type;
  bool hasDate;
  bool hasTime;
  std::vector<char const*> formats;
};

std::vector<TemporalType> const& TemporalTypes() {
  // Where a value is of several types, the first is meant.
  static std::vector<TemporalType> const types = {
      {XoDATE_T, true, false, {"%Y-%m-%d"}},
      {XoTIME_T, false, true, {"%H:%M:%S"}},
      {XoDATIME_T, true, true, {"%Y-%m-%dT%H:%M:%S", "%Y-%m-%d %H:%M:%S"}},
      {XoDATIME_N_T, true, true, {"%X", "%Y-%m-%d %H:%M:%f"}},
      {XoTIMESPAN_T, false, false, {"%V"}},
      {D_DATE_T, true, false, {"%Y-%m-%d"}},
      {D_TIME_T, false, true, {"%H:%M:%S"}},
      {D_TIMESTAMP_T, true, true, {"%Y-%m-%dT%H:%M:%S", "%Y-%m-%d %H:%M:%S"}},
      {D_INTERVAL_T, false, false, {}},
  };
  return types;
}

/// The types that a value without a named one is taken for.
constexpr std::size_t kGuessed = 4;

TemporalType const& TemporalNamed(std::string const& name) {
  char const type = FindType(name);
  for (TemporalType const& each : TemporalTypes()) {
    if (each.type == type) return each;
  }
  throw Trouble(fmt::format("values of type {} are no dates or times", TypeName(type)));
}

/// Reads `value` by the first of the type's usual formats that reads all of the text. That format
/// is returned, null if there is none.
char const* ScanUsual(TemporalType const& type, RowValue& value, std::string const& text) {
  for (char const* const format : type.formats) {
    if (value.ScanWhole(text, format)) return format;
  }
  char const* const own = XoTypeMgr{}.ExchangeFormat(type.type, nullptr);
  return value.ScanWhole(text, own) ? own : nullptr;
}

/// Whether a text looks as if it had a date, or a time, in it.
struct Looks {
  explicit Looks(std::string const& text) : hasTime(text.find(':') != std::string::npos) {
    std::string const front = text.substr(0, text.find(':'));
    hasDate = front.find_first_of("-/", 1) != std::string::npos ||
              std::any_of(front.begin(), front.end(), [](char each) {
                return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
              });
  }
  bool hasDate;
  bool hasTime;
};

/// A value with how it was found out.
struct FoundValue {
  std::unique_ptr<RowValue> value;
  TemporalType const* type = nullptr;
  std::string format;
};

FoundValue GuessValue(std::string const& text) {
  std::vector<std::string> names;
  // Null is one of every type.
  bool const isNull = text.starts_with(Encoded(XoTypeMgr::GetNullPrintString()));
  Looks const looks(text);
  for (std::size_t index = 0; index < kGuessed; ++index) {
    TemporalType const& type = TemporalTypes()[index];
    names.push_back(TypeName(type.type));
    if (isNull || type.hasDate != looks.hasDate || type.hasTime != looks.hasTime) continue;
    auto value = std::make_unique<RowValue>(type.type);
    char const* const format = ScanUsual(type, *value, text);
    if (format != nullptr) return {std::move(value), &type, format};
  }
  throw Trouble(fmt::format(
      "{} {} {}: name its --type, and its --format if that is not usual", QuotedText(text),
      isNull ? "may be any of" : "does not look like any of", fmt::join(names, ", ")));
}

FoundValue FindValue(DateOptions const& options) {
  std::string const text = ValueOf(options.value);
  if (options.type.empty()) {
    if (options.hasFormat) throw Trouble("--format: name the --type of the value as well");
    return GuessValue(text);
  }
  TemporalType const& type = TemporalNamed(options.type);
  auto value = std::make_unique<RowValue>(type.type);
  if (options.hasFormat) {
    ScanValue(*value, text, options.format.c_str());
    return {std::move(value), &type, options.format};
  }
  if (char const* const format = ScanUsual(type, *value, text)) {
    return {std::move(value), &type, format};
  }
  ScanValue(*value, text, type.formats.empty() ? nullptr : type.formats.front());
  return {std::move(value), &type, {}};
}

std::string HexOf(std::vector<unsigned char> const& bytes) {
  return fmt::format("{:02x}", fmt::join(bytes, " "));
}

std::string Validity(TemporalType const& type, Views const& views) {
  if (views.isNull) return "no, it is null";
  if (!type.hasDate && !type.hasTime) return "any fields are";
  if (views.isPattern) return "no, it is a pattern";
  return views.whyInvalid.empty() ? "yes" : fmt::format("no, {}", views.whyInvalid);
}

std::string Report(FoundValue const& found) {
  RowValue const& value = *found.value;
  TemporalType const& type = *found.type;
  Views const views = ViewsOf(value);
  bool const hasNull = XoTypeMgr{}.SupportsNullValue(type.type) != 0;

  TextTable table("tt");
  table.Add({"type", TypeName(type.type)});
  table.Add({"read by", found.format});
  std::vector<std::string> wildcards;
  for (Field const& field : views.fields) {
    if (field.isWildcard) wildcards.emplace_back(field.name);
    table.Add({field.name, field.text + (field.isWildcard ? " (wildcard)" : "")});
  }
  table.Add({"null", views.isNull ? "yes" : hasNull ? "no" : "no, the type has none"});
  table.Add({"valid", Validity(type, views)});
  table.Add({"wildcards", wildcards.empty() ? std::string("none")
                                            : fmt::format("{}", fmt::join(wildcards, ", "))});
  bool const isPlain = !views.isNull && !views.isPattern;
  for (Field const& total : views.totals) {
    if (isPlain) table.Add({total.name, total.text});
  }
  char const* const own = XoTypeMgr{}.ExchangeFormat(type.type, nullptr);
  for (char const* const format : type.formats) {
    if (format != std::string_view(own)) table.Add({format, value.Print(format)});
  }
  table.Add({fmt::format("row: {}", own), value.Print(nullptr)});
  table.Add({"stored, little", HexOf(value.Stored(FormLittle))});
  table.Add({"stored, big", HexOf(value.Stored(FormBig))});
  std::string report = table.Text();
  if (type.hasDate && isPlain) report += "\n" + CalendarReport(views.date);
  return report;
}

int ShowDate(DateOptions const& options) {
  WriteOutput(Report(FindValue(options)));
  return kDone;
}

}  // namespace

void AddDateCommand(CLI::App& tool, std::function<int()>& command) {
  auto const options = std::make_shared<DateOptions>();
  CLI::App* const date = tool.add_subcommand(
      "date", "Show every view of a date, time or span: fields, texts, bytes and calendars");
  date->add_option("VALUE", options->value, "the value; a field of * is a wildcard")->required();
  date->add_option("--type", options->type,
                   "its type; by default the date, time or date-time that it looks like");
  date->add_option("--format", options->format, "format that it is read by")
      ->each([options](std::string const&) { options->hasFormat = true; });
  date->callback([options, &command] { command = [options] { return ShowDate(*options); }; });
}

}  // namespace xo::tool
