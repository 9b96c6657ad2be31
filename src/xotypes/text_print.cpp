#include "src/xotypes/text_print.hpp"

#include <algorithm>
#include <cstring>

#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "xoorders.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"
#include "xostringiterator.hpp"

namespace xo {

namespace {

/// The longest text that is worth making.
constexpr std::size_t kLongest = XoString::kMaxSize - 1;

/// A conversion that takes text.
struct TextConversion {
  std::size_t width = 0;
  std::size_t precision = std::string_view::npos;
  bool fromLeft = false;
  bool withZeros = false;  ///< padding in front of the text
  std::size_t size = 0;    ///< of the conversion in the format; 0: it is none
};

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// A number, which stops at what is longer than any text.
std::size_t ReadNumber(std::string_view format, std::size_t& at) {
  std::size_t number = 0;
  for (; at < format.size() && IsDigit(format[at]); ++at) {
    number = std::min(kLongest, number * 10 + static_cast<std::size_t>(format[at] - '0'));
  }
  return number;
}

/// The conversion at the beginning of `format`, which is a percent sign.
TextConversion ReadConversion(std::string_view format) {
  TextConversion conversion;
  std::size_t at = 1;
  auto const in = [&](std::string_view set) {
    return at < format.size() && set.find(format[at]) != std::string_view::npos;
  };
  for (; in("-+ #0"); ++at) {
    conversion.fromLeft |= format[at] == '-';
    conversion.withZeros |= format[at] == '0';
  }
  conversion.width = ReadNumber(format, at);
  if (in(".")) {
    ++at;
    conversion.precision = ReadNumber(format, at);
  }
  while (in("hlwL")) ++at;
  if (in("s")) conversion.size = at + 1;
  return conversion;
}

void Append(std::string& out, std::string_view text) {
  out.append(text.substr(0, kLongest - std::min(kLongest, out.size())));
}

void AppendPadded(std::string& out, std::string_view text, TextConversion const& conversion) {
  text = text.substr(0, conversion.precision);
  std::string const padding(conversion.width > text.size() ? conversion.width - text.size() : 0,
                            conversion.withZeros && !conversion.fromLeft ? '0' : ' ');
  if (!conversion.fromLeft) Append(out, padding);
  Append(out, text);
  if (conversion.fromLeft) Append(out, padding);
}

/// Code set of a text that is to be printed into a string of `codeSet`.
unsigned char PrintCodeSet(unsigned char codeSet) {
  if (codeSet == kNoCodeSet) codeSet = XoString::GetDefaultCodeSet();
  return CodeSetOrNative(codeSet);
}

/// What a format does with the orders of a key.
enum class OrderMode : unsigned char {
  kPlain,       ///< no conversion of its own: all as characters
  kCharacters,  ///< "%1M": all as characters of ASCII
  kAccented,    ///< "%2M": all as characters, with accents
  kNames,       ///< "%3M": each by its description
  kSpellings,   ///< "%4M": each as a character, or spelled where it has an accent
};

/// A format with its order conversion as a conversion of text.
struct OrderFormat {
  explicit OrderFormat(std::string_view format) : text(format) {
    for (char digit = '1'; digit <= '4'; ++digit) {
      char const conversion[] = {'%', digit, 'M'};
      std::size_t const place = format.find(std::string_view(conversion, sizeof conversion));
      if (place == std::string_view::npos) continue;
      mode = static_cast<OrderMode>(digit - '0');
      text.replace(place, sizeof conversion, "%s");
      return;
    }
  }
  OrderMode mode = OrderMode::kPlain;
  std::string text;
};

/// Calls `visit` with every order of a key.
template <class Visit>
void ForEachOrder(XoString const& key, Visit visit) {
  XoStringIterator iterator(key);
  for (unsigned short order = iterator.GetNextOrder(1); order != 0;
       order = iterator.GetNextOrder(1)) {
    visit(order);
  }
}

std::string OrdersAsCharacters(XoString const& key, bool mapAccented) {
  std::string text;
  ForEachOrder(key, [&](unsigned short order) {
    unsigned char character = 0;
    XoConvertOrderToChar(order, key.language, character, mapAccented ? 1 : 0);
    text += static_cast<char>(character);
  });
  // A character of the value 0 ends a text.
  return text.c_str();
}

/// One piece for each order, side by side.
std::string OrdersAsPieces(XoString const& key, OrderFormat const& format) {
  std::string out;
  ForEachOrder(key, [&](unsigned short order) {
    if (format.mode == OrderMode::kNames) {
      XoString name;
      XoConvertOrderToString(order, key.language, name);
      Append(out, FormatText(format.text, name.StrGet()));
      return;
    }
    char const* spelling = nullptr;
    unsigned char character = 0;
    XoConvertOrderToChar(order, key.language, character, 1, &spelling);
    char const one[2] = {static_cast<char>(character), 0};
    Append(out, FormatText(format.text, spelling != nullptr ? spelling : one));
  });
  constexpr unsigned char kMixed = 0x80;
  if (format.mode == OrderMode::kNames && (key.language & kMixed) != 0) {
    Append(out, FormatText(format.text, "[MIX]"));
  }
  return out;
}

XoString& PrintKey(XoString& out, XoString const& key, std::string_view formatText) {
  OrderFormat const format(formatText);
  constexpr unsigned char kCharacterSet = 1;
  switch (format.mode) {
    case OrderMode::kNames:
    case OrderMode::kSpellings:
      return out = OrdersAsPieces(key, format).c_str();
    case OrderMode::kCharacters:
      return out = FormatText(format.text, OrdersAsCharacters(key, false)).c_str();
    default:
      break;
  }
  std::string const text = FormatText(format.text, OrdersAsCharacters(key, true));
  unsigned char const codeSet = PrintCodeSet(out.codeSet);
  if (codeSet == kCharacterSet) return out = text.c_str();
  unsigned char const language = out.language;
  out.Destroy();
  out.codeSet = codeSet;
  out.language = language;
  AssignText(out, text.c_str(), kCharacterSet);
  return out;
}

/// Prints wide text into the code set that `out` has.
XoString& PrintWide(XoString& out, XoString const& value, char const* format) {
  unsigned char codeSet = PrintCodeSet(out.codeSet);
  if (IsWide(codeSet)) codeSet = XoString::GetDefault8CodeSet();
  XoString narrow(codeSet, 0);
  narrow += value;
  return out = FormatText(format, narrow.StrGet()).c_str();
}

}  // namespace

std::string FormatText(std::string_view format, std::string_view text) {
  std::string out;
  bool isTaken = false;
  while (!format.empty()) {
    std::size_t const literal = std::min(format.find('%'), format.size());
    Append(out, format.substr(0, literal));
    format.remove_prefix(literal);
    if (format.empty()) break;
    if (format.size() > 1 && format[1] == '%') {
      Append(out, "%");
      format.remove_prefix(2);
      continue;
    }
    TextConversion const conversion = ReadConversion(format);
    if (conversion.size != 0 && !isTaken) {
      AppendPadded(out, text, conversion);
      isTaken = true;
      format.remove_prefix(conversion.size);
    } else {
      Append(out, "%");
      format.remove_prefix(1);
    }
  }
  return out;
}

std::string NarrowedText(XoString const& text) {
  if (!IsWide(text.codeSet)) return text.StrGet();
  XoString narrow(XoString::GetDefault8CodeSet(), 0);
  narrow += text;
  return narrow.StrGet();
}

XoString& StringPrintToXoString(XoString& out, void* values, char const* format, unsigned) {
  // A copy, as the value may be the string that is printed to.
  XoString const value(*static_cast<XoString const*>(values));
  if (value.IsNullValue() != 0) return out = NullPrintString;
  if (value.IsEmpty() != 0) return out = value;
  if (format == nullptr) format = "";
  if (value.codeSet == kSortOrderSet) return PrintKey(out, value, format);
  if (IsWide(value.codeSet)) return PrintWide(out, value, format);
  out = FormatText(format, value.StrGet()).c_str();
  out.codeSet = value.codeSet;
  return out;
}

void* StringScanFromXoString(void* target, XoString& text, char const*, unsigned) {
  if (target == nullptr) return nullptr;
  auto& value = *static_cast<XoString*>(target);
  XoString const& null = NullPrintString;
  if (text.Compare(null, static_cast<short>(null.Len())) == 0) {
    value.SetNullValue();
  } else {
    value = text;
  }
  return target;
}

template <class Text>
XoString& PrintWeightedText(XoString& out, void* values, char const* format, unsigned) {
  auto const& value = *static_cast<Text const*>(values);
  if (!value) return out = value.StrGet();
  return out = FormatText(format != nullptr ? format : "", value.StrGet()).c_str();
}

template <class Text>
void* ScanWeightedText(void* target, XoString& text, char const*, unsigned) {
  if (target != nullptr) *static_cast<Text*>(target) = Text(NarrowedText(text).c_str());
  return target;
}

template TypeDescriptor::PrintFunction PrintWeightedText<XoIString>;
template TypeDescriptor::PrintFunction PrintWeightedText<XoCaseIString>;
template TypeDescriptor::ScanFunction ScanWeightedText<XoIString>;
template TypeDescriptor::ScanFunction ScanWeightedText<XoCaseIString>;

}  // namespace xo
