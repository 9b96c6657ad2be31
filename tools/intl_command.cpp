#include "tools/intl_command.hpp"

#include <fmt/format.h>
#include <utf8.h>

#include <array>
#include <charconv>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/near_names.hpp"
#include "tools/order_report.hpp"
#include "tools/printable.hpp"
#include "tools/standard_streams.hpp"
#include "tools/text_table.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr unsigned char kUnicode = 253;
constexpr unsigned char kSortOrders = 254;

std::vector<XoCodeSet const*> AllCodeSets() {
  std::vector<XoCodeSet const*> sets;
  for (unsigned number = 1; number < 256; ++number) {
    auto const* const set = XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(number));
    if (set != nullptr) sets.push_back(set);
  }
  return sets;
}

std::vector<XoLanguage const*> AllLanguages() {
  std::vector<XoLanguage const*> languages;
  for (unsigned number = 0; number < 254; ++number) {
    auto const* const one = XoLanguageContext::QueryLanguage(static_cast<unsigned char>(number));
    if (one != nullptr) languages.push_back(one);
  }
  return languages;
}

/// What the user calls `wanted`: the one whose number or one of whose names it is, upper and lower
/// case being the same.
template <class Record, class NamesOf>
Record const& Named(std::vector<Record const*> const& records, std::string const& wanted,
                    char const* kind, NamesOf namesOf) {
  unsigned number = 0;
  auto const [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
  bool const isNumber = error == std::errc() && end == wanted.data() + wanted.size();
  std::vector<std::string> names;
  for (Record const* const record : records) {
    if (isNumber && record->number == number) return *record;
    for (std::string const& name : namesOf(*record)) {
      if (name.size() == wanted.size() && EditDistance(name, wanted) == 0) return *record;
      names.push_back(name);
    }
  }
  std::string message = fmt::format("no {} is called {}", kind, QuotedText(wanted));
  auto const near = isNumber ? std::vector<std::string>() : NearNames(wanted, names);
  if (!near.empty()) message += fmt::format("; perhaps {}", QuotedText(near.front()));
  throw Trouble(message);
}

XoCodeSet const& CodeSetNamed(std::string const& wanted) {
  XoCodeSet const& set = Named(AllCodeSets(), wanted, "code set", [](XoCodeSet const& each) {
    return std::vector<std::string>{each.name};
  });
  if (set.number == kSortOrders) throw Trouble("code set 254 holds sort orders, not characters");
  return set;
}

XoLanguage const& LanguageNamed(std::string const& wanted) {
  return Named(AllLanguages(), wanted, "language", [](XoLanguage const& each) {
    return std::vector<std::string>{each.name, each.tag};
  });
}

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

std::u16string Decoded(std::string const& text) {
  auto const bad = utf8::find_invalid(text.begin(), text.end());
  if (bad != text.end()) {
    throw Trouble(fmt::format("{} is not UTF-8: byte {} cannot be read", QuotedText(text),
                              bad - text.begin()));
  }
  std::u16string units;
  utf8::utf8to16(text.begin(), text.end(), std::back_inserter(units));
  return units;
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
  for (char16_t const unit : Decoded(options.text)) {
    codes.push_back(set.MapCharacter(static_cast<unsigned short>(unit), kUnicode));
  }
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
