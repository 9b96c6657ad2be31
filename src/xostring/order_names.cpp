#include <array>
#include <cstdio>
#include <string>

#include "src/xostring/order_keys.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xoorders.hpp"
#include "xostring.hpp"

using namespace xo;

namespace {

enum class OrderClass : unsigned char { kSpace, kSymbol, kDigit, kLetter, kHan };

constexpr unsigned short kUndefinedOrder = 13;
constexpr unsigned short kFirstNamed = 112;
constexpr unsigned short kLastNamed = 219;
constexpr unsigned short kBell = 7;
constexpr unsigned short kDelete = 127;

OrderClass ClassOf(unsigned short order, unsigned char group) {
  if (order >= kFirstHanOrder || (group & 127) >= kUntabledGroup) return OrderClass::kHan;
  if (order >= kFirstLetterOrder) return OrderClass::kLetter;
  if (order >= kFirstSignificantOrder) return OrderClass::kDigit;
  return order >= kFirstSymbolOrder ? OrderClass::kSymbol : OrderClass::kSpace;
}

// Fields of an order.
constexpr unsigned ExtensionOf(unsigned order) { return order & 3; }
constexpr unsigned LetterOf(unsigned order) { return order >> 2 & 31; }
constexpr unsigned AccentOf(unsigned order) { return order >> 7 & 31; }
constexpr bool IsUpperCase(unsigned order) { return (order >> 12 & 3) == 0; }
constexpr unsigned DigitOf(unsigned order) { return ((order & ~1u) - kFirstSignificantOrder) / 10; }

/// The letter in ASCII: letter 3 is A.
constexpr char AsciiLetter(unsigned order) {
  return static_cast<char>(LetterOf(order) + (IsUpperCase(order) ? 62 : 94));
}

constexpr char const* kAccentNames[15] = {
    "",
    "cedilla",
    "accent acute",
    "accent grave",
    "accent circumflex",
    "tilde",
    "diaeresis",
    "ring above",
    "stroke",
    "accent caron",
    "accent macron",
    "accent breve",
    "dot above",
    "ogonek",
    "accent o_double acute",
};

struct SymbolName {
  unsigned short order;
  char const* name;
};

constexpr SymbolName kSymbolNames[] = {
    {112, "_"},
    {114, "macron sign"},
    {115, "soft hyphen"},
    {116, "-"},
    {117, ","},
    {118, ";"},
    {119, ":"},
    {120, "!"},
    {121, "inverted exclamation mark"},
    {122, "?"},
    {124, "solidus"},
    {126, "full stop"},
    {129, "middle dot"},
    {130, "cedilla"},
    {132, "apostrophe"},
    {135, "\""},
    {138, "left pointing o_double angle quotation mark"},
    {139, "right pointing o_double angle quotation mark"},
    {140, "("},
    {142, ")"},
    {144, "["},
    {145, "]"},
    {146, "{"},
    {147, "}"},
    {148, "section sign"},
    {149, "pilcrow sign"},
    {150, "copyright sign"},
    {151, "registered sign"},
    {153, "@"},
    {154, "currency sign"},
    {155, "cent sign"},
    {156, "$"},
    {157, "pound sign"},
    {158, "yen sign"},
    {159, "*"},
    {160, "reverse solidus"},
    {161, "&"},
    {162, "#"},
    {163, "%"},
    {165, "+"},
    {167, "plus minus sign"},
    {168, "'"},
    {169, "`"},
    {171, "^"},
    {174, "diaeresis"},
    {176, "~"},
    {178, "division sign"},
    {179, "multiplication sign"},
    {181, "<"},
    {183, "="},
    {185, ">"},
    {186, "not sign"},
    {187, "|"},
    {188, "broken bar"},
    {189, "degree sign"},
    {190, "micron sign"},
    {219, "inverted question mark"},
};

using SymbolTable = std::array<char const*, kLastNamed - kFirstNamed + 1>;

/// The names by order, null where there is none.
constexpr SymbolTable kNamesByOrder = [] {
  SymbolTable names{};
  for (SymbolName const& each : kSymbolNames) names[each.order - kFirstNamed] = each.name;
  return names;
}();

char const* NameOf(unsigned short order) {
  return order >= kFirstNamed && order <= kLastNamed ? kNamesByOrder[order - kFirstNamed] : nullptr;
}

/// ASCII names of the letters of code set 1 from 192 on.
constexpr char const* kLetterNames[64] = {
    "\\`A",  "\\'A", "\\^A", "\\~A",  "\\\"A", "\\AA",  "\\AE",  "\\,C", "\\`E", "\\'E", "\\^E",
    "\\\"E", "\\`I", "\\'I", "\\^I",  "\\\"I", "\\-D",  "\\~N",  "\\`O", "\\'O", "\\^O", "\\~O",
    "\\\"O", "",     "\\-O", "\\`U",  "\\'U",  "\\^U",  "\\\"U", "\\'Y", "\\TH", "\\ss", "\\`a",
    "\\'a",  "\\^a", "\\~a", "\\\"a", "\\aa",  "\\ae",  "\\,c",  "\\`e", "\\'e", "\\^e", "\\\"e",
    "\\`i",  "\\'i", "\\^i", "\\\"i", "\\-d",  "\\~n",  "\\`o",  "\\'o", "\\^o", "\\~o", "\\\"o",
    "",      "\\-o", "\\`u", "\\'u",  "\\^u",  "\\\"u", "\\'y",  "\\th", "\\\"y"};

std::string Describe(unsigned short order, unsigned char group) {
  switch (ClassOf(order, group)) {
    case OrderClass::kHan: {
      char text[32];
      std::snprintf(text, sizeof text, "HAN character 0x%04x\n", unsigned{order});
      return text;
    }
    case OrderClass::kSpace:
      return order == kUndefinedOrder ? "undefined ordering indicator" : "space";
    case OrderClass::kSymbol: {
      char const* const name = NameOf(order);
      return std::string("symbol ") + (name != nullptr ? name : "");
    }
    case OrderClass::kDigit:
      return "digit " + std::to_string(DigitOf(order)) + ((order & 1) != 0 ? " with expand" : "");
    case OrderClass::kLetter:
      break;
  }
  std::string text = IsUpperCase(order) ? "upper letter " : "lower letter ";
  text += AsciiLetter(order);
  if (unsigned const accent = AccentOf(order); accent != 0) {
    text += " with ";
    if (accent < std::size(kAccentNames)) text += kAccentNames[accent];
  }
  if (ExtensionOf(order) != 0) text += " with extension";
  return text;
}

/// The ASCII character of a symbol's order: '.' where it has a name but no character.
unsigned char SymbolCharacter(unsigned short order) {
  constexpr unsigned short kSolidus = 124;
  constexpr unsigned short kApostrophe = 132;
  if (order == kSolidus) return '/';
  if (order == kApostrophe) return '\'';
  char const* const name = NameOf(order);
  if (name == nullptr) return kBell;
  return name[1] == 0 ? static_cast<unsigned char>(name[0]) : static_cast<unsigned char>('.');
}

}  // namespace

int XoConvertOrderToString(unsigned short order, unsigned char group, XoString& text) {
  text = Describe(order, group).c_str();
  return 0;
}

int XoConvertOrderToChar(unsigned short order, unsigned char group, unsigned char& character,
                         int mapAccented, char const** name) {
  switch (ClassOf(order, group)) {
    case OrderClass::kHan:
      character = kDelete;
      return 0;
    case OrderClass::kSpace:
      character = ' ';
      return 0;
    case OrderClass::kDigit:
      character = static_cast<unsigned char>('0' + DigitOf(order));
      return 0;
    case OrderClass::kSymbol:
      character = SymbolCharacter(order);
      return 0;
    case OrderClass::kLetter:
      break;
  }
  character = static_cast<unsigned char>(AsciiLetter(order));
  if (AccentOf(order) == 0 || mapAccented == 0) return 0;
  for (unsigned code = 128; code < 256; ++code) {
    if (XoChar(static_cast<char>(code), 1, 1).CharOrder() == order) {
      character = static_cast<unsigned char>(code);
      break;
    }
  }
  if (name != nullptr) *name = character >= 192 ? kLetterNames[character - 192] : "";
  return 0;
}

int XoExtractDigitFromOrder(unsigned short order, unsigned short& digit, unsigned short& expand) {
  if (ClassOf(order, 0) != OrderClass::kDigit) return kBadArgument;
  digit = static_cast<unsigned short>(DigitOf(order));
  expand = order & 1;
  return 0;
}

int XoExtractSymbolFromOrder(unsigned short order, unsigned short& symbol) {
  if (ClassOf(order, 0) != OrderClass::kSymbol) return kBadArgument;
  symbol = static_cast<unsigned short>(order - kFirstSymbolOrder);
  return 0;
}
