#include "tools/order_report.hpp"

#include <fmt/core.h>

#include <iterator>
#include <nlohmann/json.hpp>

#include "tools/text_decoder.hpp"
#include "tools/text_table.hpp"

namespace xo::tool {
namespace {

constexpr unsigned char kUnicode = 253;
constexpr unsigned char kIdeographGroup = 20;
constexpr unsigned short kFirstSymbol = 80;
constexpr unsigned short kFirstDigit = 16128;
constexpr unsigned short kFirstLetter = 16384;
constexpr unsigned short kFirstIdeograph = 32768;

constexpr char const* kAccents[] = {"",       "cedilla",   "acute",     "grave",  "circumflex",
                                    "tilde",  "diaeresis", "ring",      "stroke", "caron",
                                    "macron", "breve",     "dot above", "ogonek", "double acute"};
constexpr char const* kCases[] = {"upper", "title or other", "other", "lower"};

enum class OrderClass { Space, Symbol, Digit, Letter, Ideograph };

OrderClass ClassOf(OrderReport const& element) {
  if (element.group >= kIdeographGroup || element.order >= kFirstIdeograph) {
    return OrderClass::Ideograph;
  }
  if (element.order < kFirstSymbol) return OrderClass::Space;
  if (element.order < kFirstDigit) return OrderClass::Symbol;
  return element.order < kFirstLetter ? OrderClass::Digit : OrderClass::Letter;
}

char const* NameOf(OrderClass kind) {
  switch (kind) {
    case OrderClass::Space:
      return "space";
    case OrderClass::Symbol:
      return "symbol";
    case OrderClass::Digit:
      return "digit";
    case OrderClass::Letter:
      return "letter";
    case OrderClass::Ideograph:
      break;
  }
  return "ideograph";
}

unsigned LetterOf(unsigned order) { return (order >> 2) & 31; }
unsigned ExtensionOf(unsigned order) { return order & 3; }
unsigned AccentOf(unsigned order) { return (order >> 7) & 31; }
unsigned CaseOf(unsigned order) { return (order >> 12) & 3; }

/// The letter value as the Latin letter that it stands for, or as a number.
std::string LetterText(OrderReport const& element) {
  unsigned const letter = LetterOf(element.order);
  unsigned const extension = ExtensionOf(element.order);
  bool const latin = element.group == 2 && letter >= 3 && letter <= 28;
  std::string text =
      latin ? std::string(1, static_cast<char>('A' + letter - 3)) : fmt::format("{}", letter);
  if (extension != 0) text += fmt::format("+{}", extension);
  return text;
}

std::string AccentText(unsigned accent) {
  return accent < std::size(kAccents) ? kAccents[accent] : fmt::format("{}", accent);
}

std::string Shown(std::vector<unsigned short> const& characters) {
  return xo::tool::Shown(characters.data(), characters.size());
}

std::string Codes(std::vector<unsigned short> const& codes) {
  std::string text;
  for (unsigned short const code : codes) {
    text += fmt::format("{}{:04X}", text.empty() ? "" : " ", code);
  }
  return text;
}

}  // namespace

std::vector<OrderReport> ReportOrders(std::vector<unsigned short> const& codes,
                                      XoCodeSet const& set, unsigned char language) {
  XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
  OrderTable const* const own = set.orderTable;
  OrderTable const& table = own != nullptr ? *own : *unicode.orderTable;
  auto const looked = [&](unsigned short code) {
    return own != nullptr ? code : unicode.MapCharacter(code, set.number);
  };
  std::vector<OrderReport> elements;
  for (std::size_t place = 0; place < codes.size(); ++place) {
    OrderReport element;
    element.codes = {codes[place]};
    element.characters = {set.ToUnicode(codes[place])};
    CharOrderEntry const* entry = table.Find(looked(codes[place]));
    if (entry == nullptr) {
      element.entry = false;
      element.order = looked(codes[place]);
      element.group = kIdeographGroup;
      elements.push_back(element);
      continue;
    }
    if (entry->HasVariants() && entry->Variant(language) != nullptr) {
      entry = entry->Variant(language);
      element.variant = true;
    }
    while (entry->HasContractions() && place + 1 < codes.size()) {
      CharOrderEntry const* const longer = entry->Contraction(looked(codes[place + 1]));
      if (longer == nullptr) break;
      entry = longer;
      ++place;
      element.codes.push_back(codes[place]);
      element.characters.push_back(set.ToUnicode(codes[place]));
    }
    element.order = entry->order;
    unsigned char const* const group = entry->GroupOverride();
    element.group = group != nullptr ? *group : set.CodeSetGroup(language);
    XoWCharList const& more = entry->Expansion();
    element.expansion.assign(more.values, more.values + more.count);
    elements.push_back(element);
  }
  return elements;
}

std::string OrdersAsText(std::vector<OrderReport> const& elements) {
  TextTable table("ttntntttttt");
  table.Add({"text", "code", "order", "class", "group", "value", "accent", "case", "expansion",
             "contraction", "variant"});
  for (OrderReport const& element : elements) {
    OrderClass const kind = ClassOf(element);
    std::string value, accent, letterCase, expansion;
    if (kind == OrderClass::Letter) {
      value = LetterText(element);
      accent = AccentText(AccentOf(element.order));
      letterCase = kCases[CaseOf(element.order)];
    } else if (kind == OrderClass::Digit) {
      value = fmt::format("{}", (element.order - kFirstDigit) / 10);
    } else if (kind == OrderClass::Symbol) {
      value = fmt::format("{}", element.order - kFirstSymbol);
    }
    for (unsigned short const order : element.expansion) {
      expansion += fmt::format("{}{}", expansion.empty() ? "" : " ", order);
    }
    table.Add({Shown(element.characters), Codes(element.codes), fmt::format("{}", element.order),
               NameOf(kind), fmt::format("{}", element.group), value, accent, letterCase, expansion,
               element.codes.size() > 1 ? "yes" : "", element.variant ? "yes" : ""});
  }
  return table.Text();
}

std::string OrdersAsJson(std::vector<OrderReport> const& elements) {
  using Json = nlohmann::ordered_json;
  Json list = Json::array();
  for (OrderReport const& element : elements) {
    OrderClass const kind = ClassOf(element);
    Json one = {{"text", Shown(element.characters)},
                {"codes", element.codes},
                {"characters", element.characters},
                {"order", element.order},
                {"class", NameOf(kind)},
                {"group", element.group}};
    if (kind == OrderClass::Letter) {
      one["letter"] = LetterOf(element.order);
      one["extension"] = ExtensionOf(element.order);
      one["accent"] = AccentOf(element.order);
      one["case"] = CaseOf(element.order);
    } else if (kind == OrderClass::Digit) {
      one["digit"] = (element.order - kFirstDigit) / 10;
    } else if (kind == OrderClass::Symbol) {
      one["symbol"] = element.order - kFirstSymbol;
    }
    one["expansion"] = element.expansion;
    one["contraction"] = element.codes.size() > 1;
    one["variant"] = element.variant;
    one["entry"] = element.entry;
    list.push_back(one);
  }
  return list.dump(2) + '\n';
}

}  // namespace xo::tool
