#include "tools/intl_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/order_report.hpp"
#include "tools/printable.hpp"
#include "tools/record_names.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_decoder.hpp"
#include "tools/text_table.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr unsigned char kSortOrders = 254;

std::string_view KindOf(XoCodeSet const& set) {
  if (set.number == kSortOrders) return "16-bit";
  return set.number < 225 ? "8-bit" : "16-bit";
}

std::string CodeSets(bool json) {
  TextTable table("nttt");
  table.Add({"number", "name", "unit", "order table"});
  Json list = Json::array();
  for (XoCodeSet const* const set : AllCodeSets()) {
    bool const ordered = set->orderTable != nullptr;
    table.Add({fmt::format("{}", set->number), set->name, std::string(KindOf(*set)),
               ordered ? "own" : "-"});
    list.push_back({{"number", set->number},
                    {"name", set->name},
                    {"bytes", set->number < 225 ? 1 : 2},
                    {"orderTable", ordered}});
  }
  return json ? list.dump(2) + '\n' : table.Text();
}

std::string Languages(bool json) {
  TextTable table("nttntt");
  table.Add({"number", "name", "tag", "group", "variants", "case rules"});
  Json list = Json::array();
  for (XoLanguage const* const each : AllLanguages()) {
    table.Add({fmt::format("{}", each->number), each->name, each->tag,
               fmt::format("{}", each->group), each->hasVariants != 0 ? "yes" : "no",
               each->hasCaseRules != 0 ? "own" : "-"});
    list.push_back({{"number", each->number},
                    {"name", each->name},
                    {"tag", each->tag},
                    {"group", each->group},
                    {"variants", each->hasVariants != 0},
                    {"caseRules", each->hasCaseRules != 0}});
  }
  return json ? list.dump(2) + '\n' : table.Text();
}

std::string CollationVersion(bool json) {
  unsigned const version = XoLanguageContext::GetCollationVersion();
  auto const fingerprint = fmt::format("{:016x}", XoLanguageContext::GetCollationFingerprint());
  if (json) return Json{{"version", version}, {"fingerprint", fingerprint}}.dump(2) + '\n';
  return fmt::format("collation version {}, fingerprint {}\n", version, fingerprint);
}

struct OrderOptions {
  std::string text;
  std::string language = "0";
  std::string codeSet = "253";
  bool json = false;
};

std::string Orders(OrderOptions const& options) {
  XoCodeSet const& set = CodeSetNamed(options.codeSet);
  XoLanguage const& language = LanguageNamed(options.language);
  std::vector<unsigned short> codes;
  TextDecoder decoder(set, language.number);
  XoString text;
  std::string const complaint = decoder.Decode(options.text, text);
  if (!complaint.empty()) throw Trouble(fmt::format("{} {}", QuotedText(options.text), complaint));
  if (std::string const loss = decoder.Loss(); !loss.empty()) {
    WriteMessage(fmt::format("note: {}: {}, which counts as {}", QuotedText(options.text), loss,
                             decoder.Substitute()));
  }
  for (XoStringIterator place(text); place.IsEOS() == 0; ++place) codes.push_back((*place).Code());
  auto const elements = ReportOrders(codes, set, language.number);
  return options.json ? OrdersAsJson(elements) : OrdersAsText(elements);
}

}  // namespace

void AddIntlCommands(CLI::App& tool, std::function<int()>& command) {
  CLI::App* const intl = tool.add_subcommand("intl", "Show code sets, languages and sort orders");
  intl->require_subcommand(1);
  auto const json = std::make_shared<bool>(false);
  auto const add = [&](char const* name, char const* help, std::string (*show)(bool)) {
    CLI::App* const one = intl->add_subcommand(name, help);
    one->add_flag("--json", *json, "print JSON");
    one->callback([json, show, &command] {
      command = [json, show] {
        WriteOutput(show(*json));
        return kDone;
      };
    });
  };
  add("code-sets", "List the code sets", CodeSets);
  add("languages", "List the languages", Languages);
  add("version", "Tell the version and fingerprint of the collation", CollationVersion);

  auto const options = std::make_shared<OrderOptions>();
  CLI::App* const order = intl->add_subcommand("order", "Show how each character of a text sorts");
  order->add_option("TEXT", options->text, "the text, in UTF-8")->required();
  order->add_option("--language", options->language, "number, name or tag; neutral by default");
  order->add_option("--code-set", options->codeSet, "number or name; Unicode by default");
  order->add_flag("--json", options->json, "print a JSON array");
  order->callback([options, &command] {
    command = [options] {
      WriteOutput(Orders(*options));
      return kDone;
    };
  });
}

}  // namespace xo::tool
