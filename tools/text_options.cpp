#include "tools/text_options.hpp"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <charconv>
#include <string_view>

#include "tools/near_names.hpp"
#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

/// A word for an operator's bit, which it sets or clears.
struct OperatorWord {
  char const* word;
  unsigned short bit;
  bool sets;
};

constexpr OperatorWord kWords[] = {
    {"wildcards", kCmpNoWildcards, false}, {"no-wildcards", kCmpNoWildcards, true},
    {"ignore-case", kCmpIgnoreCase, true}, {"ignore-accents", kCmpIgnoreAccents, true},
    {"skip-spaces", kCmpSkipSpaces, true}, {"skip-symbols", kCmpSkipSymbols, true},
    {"plain", kCmpPlainOrders, true},
};

/// A number with or without "0x" before hexadecimal digits; false for any other text.
bool ReadNumber(std::string_view text, unsigned& number) {
  bool const isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (isHexadecimal) text.remove_prefix(2);
  auto const [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
  return error == std::errc() && end == text.data() + text.size();
}

OperatorWord const& WordNamed(std::string const& wanted) {
  std::vector<std::string> names;
  for (OperatorWord const& each : kWords) {
    if (wanted == each.word) return each;
    names.push_back(each.word);
  }
  auto const near = NearNames(wanted, names);
  std::string message = fmt::format("{} is no option of a comparison", QuotedText(wanted));
  message += near.empty() ? fmt::format(" ({})", fmt::join(names, ", "))
                          : fmt::format("; perhaps {}", QuotedText(near.front()));
  throw Trouble(message);
}

}  // namespace

void AddTextOptions(CLI::App& command, TextOptions& options) {
  command.add_option("--language", options.language, "number, name or tag; neutral by default");
  command.add_option("--code-set", options.codeSet, "number or name; Unicode by default");
  command
      .add_option("--op", options.operators,
                  "how to compare: wildcards, no-wildcards, ignore-case, ignore-accents, "
                  "skip-spaces, skip-symbols, plain, or a number such as 0x0030")
      ->delimiter(',')
      ->allow_extra_args(false);
}

unsigned short OperatorOf(TextOptions const& options, unsigned short usual) {
  unsigned numbers = 0;
  bool isGiven = false;
  unsigned short set = 0;
  unsigned short cleared = 0;
  for (std::string const& each : options.operators) {
    unsigned number = 0;
    if (ReadNumber(each, number)) {
      if (number > 0xFFFF) throw Trouble(fmt::format("--op {}: it has more than 16 bits", each));
      numbers |= number;
      isGiven = true;
      continue;
    }
    OperatorWord const& word = WordNamed(each);
    (word.sets ? set : cleared) |= word.bit;
  }
  if ((set & cleared) != 0) throw Trouble("--op: wildcards cannot be on and off");
  // As an argument of the library, all bits stand for the default.
  if (isGiven && numbers == 0xFFFF) numbers = XoLanguageContext::GetDefaultCmpOp();
  unsigned const bits = isGiven ? numbers : usual;
  return static_cast<unsigned short>((bits & ~unsigned{cleared}) | set);
}

bool HasPattern(unsigned short cmpOp) { return (cmpOp & (kCmpNoWildcards | kCmpPlainOrders)) == 0; }

std::string OperatorText(unsigned short cmpOp) {
  if ((cmpOp & kCmpPlainOrders) != 0) return "plain";
  std::string text = HasPattern(cmpOp) ? "wildcards" : "no wildcards";
  if ((cmpOp & kCmpIgnoreCase) != 0) text += ", ignore case";
  if ((cmpOp & kCmpIgnoreAccents) != 0) text += ", ignore accents";
  if ((cmpOp & kCmpSkipSpaces) != 0) text += ", skip spaces";
  if ((cmpOp & kCmpSkipSymbols) != 0) text += ", skip symbols";
  return text;
}

}  // namespace xo::tool
