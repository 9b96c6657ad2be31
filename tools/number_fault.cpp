#include <algorithm>
#include <cmath>
#include <cstring>

#include "tools/line_fault.hpp"
#include "tools/text_tokens.hpp"

namespace xo::tool {
namespace {

constexpr std::string_view kIntegerLetters = "diouxXc";
constexpr std::string_view kFloatingLetters = "efgaEFGA";
constexpr std::string_view kLargeIntegerLetters = "SdioxX";

template <class Value>
Value ValueOfBytes(ValueBytes const& bytes) {
  Value value{};
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

/// An integer extended to 64 bits by its sign, if its type has one.
std::uint64_t WideOf(char type, ValueBytes const& value) {
  auto const wide = [&value]<class Value>(Value) {
    return static_cast<std::uint64_t>(o_8b{ValueOfBytes<Value>(value)});
  };
  switch (PlainTypeOf(type)) {
    case Xo1B_T:
      return wide(o_char{});
    case XoU1B_T:
      return wide(o_u1b{});
    case Xo2B_T:
      return wide(o_2b{});
    case XoU2B_T:
      return wide(o_u2b{});
    case Xo4B_T:
    case XoINT_T:
    case XoENUM_T:
      return wide(o_4b{});
    case XoU4B_T:
    case XoUNSIGNED_T:
    case XoBLOCKID_T:
      return wide(o_u4b{});
    default:
      return ValueOfBytes<std::uint64_t>(value);
  }
}

std::string PrintWide(std::string const& format, std::uint64_t value) {
  std::string text(512, '\0');
  std::size_t const length = FormatInteger(text.data(), text.size(), format.c_str(), value);
  if (length >= text.size()) {
    text.resize(length + 1);
    FormatInteger(text.data(), text.size(), format.c_str(), value);
  }
  return text.c_str();
}

/// Whether two texts say the same.
bool AreAlike(std::string_view a, std::string_view b, char letter) {
  bool const isHexadecimal = letter == 'x' || letter == 'X';
  return TokensOf(a, isHexadecimal) == TokensOf(b, isHexadecimal);
}

/// Whether the line is the number printed under the format, by any of the letters that can stand
/// for what `letter` reads.
template <class Print>
bool IsPrinted(ScannedLine const& line, FormatNumber const& number, std::string_view letters,
               Print print) {
  return std::any_of(letters.begin(), letters.end(), [&](char letter) {
    std::string format = line.values.Format();
    format[number.letter] = letter;
    return AreAlike(line.text, print(format), letter);
  });
}

bool IsInteger(ScannedLine const& line) {
  FormatNumber const number = FindNumber(line.values.Format(), kIntegerLetters);
  if (!number.IsThere()) return false;
  char const type = line.values.Type();
  std::uint64_t const wide = WideOf(type, line.value);
  char const letter = line.values.Format()[number.letter];
  std::string_view const own(&letter, 1);
  bool const isNegative = letter == 'i' && static_cast<o_8b>(wide) < 0;
  auto const print = [&](std::string format) {
    // What is read by its prefix may have a minus sign in every base.
    bool const needsSign = isNegative && format[number.letter] != 'd';
    if (needsSign) format.insert(number.start, 1, '-');
    return PrintWide(format, needsSign ? 0 - wide : wide);
  };
  // A byte may be written like one that does not print, whatever the format.
  bool const isByteCode = FamilyOf(type) == TextFamily::kByte && line.text.starts_with("0x") &&
                          AreAlike(line.text, PrintWide("0x%02x", wide & 0xFF), 'x');
  return isByteCode || IsPrinted(line, number, letter == 'i' ? "dxo" : own, print);
}

bool IsLargeInteger(ScannedLine const& line) {
  XoInt64 value;
  if (line.values.Type() == XoSEAL_T) {
    ValueOfBytes<XoSeal>(line.value).ConvertTo(value);
  } else {
    value = ValueOfBytes<XoInt64>(line.value);
  }
  auto const print = [value](std::string const& format) {
    XoString text;
    value.PrintToXoString(text, format.c_str());
    return std::string(text.StrGet());
  };
  if (line.values.Type() == XoSEAL_T) {
    return AreAlike(line.text, print("%S"), 'S') || AreAlike(line.text, print("%x"), 'x') ||
           AreAlike(line.text, print("%o"), 'o');
  }
  FormatNumber const number = FindNumber(line.values.Format(), kLargeIntegerLetters);
  if (!number.IsThere()) return false;
  char const letter = line.values.Format()[number.letter];
  return IsPrinted(line, number, letter == 'S' ? "Sxo" : std::string_view(&letter, 1), print);
}

/// Whether the format takes the line to its end. Its number is passed over, so that there is room
/// for another one, which is met only behind the whole of it.
bool IsTakenWhole(ScannedLine const& line, FormatNumber const& number) {
  std::string const& format = line.values.Format();
  // Under their own format the rows read what the number can be; others have no precision in a
  // scan.
  bool const isExact = format == "%.17g";
  std::string probe = isExact ? "%*lg"
                              : format.substr(0, number.start + 1) + '*' +
                                    format.substr(number.start + 1, number.letter - number.start);
  // What is behind the number stands for itself, conversions as well.
  for (std::size_t place = number.letter + 1; place < format.size(); ++place) {
    probe += format[place];
    if (format[place] != '%') continue;
    probe += '%';
    if (place + 1 < format.size() && format[place + 1] == '%') ++place;
  }
  probe += "\1%lg";
  constexpr double kMark = 271828;
  double met = 0;
  return ScanDouble((line.text + "\1"
                                 "271828")
                        .c_str(),
                    probe.c_str(), met) &&
         met == kMark;
}

/// Whether the number is beyond the type: infinite without saying so, or 0 with other digits.
bool IsOutOfRange(ScannedLine const& line, FormatNumber const& number, double value) {
  std::string_view text = line.text;
  text.remove_prefix(std::min(number.start, text.size()));
  if (std::isinf(value)) return text.find_first_of("nN") == std::string_view::npos;
  if (value != 0) return false;
  bool const isHexadecimal = text.find_first_of("xX") != std::string_view::npos;
  std::string_view const mantissa = text.substr(0, text.find_first_of(isHexadecimal ? "pP" : "eE"));
  return mantissa.find_first_of("123456789") != std::string_view::npos;
}

bool IsFloating(ScannedLine const& line) {
  FormatNumber const number = FindNumber(line.values.Format(), kFloatingLetters);
  if (!number.IsThere() || !IsTakenWhole(line, number)) return false;
  bool const isShort = PlainTypeOf(line.values.Type()) == XoFLOAT_T;
  double const value =
      isShort ? double{ValueOfBytes<float>(line.value)} : ValueOfBytes<double>(line.value);
  return !IsOutOfRange(line, number, value);
}

}  // namespace

LineFault NumberFaultOf(ScannedLine const& line) {
  bool holds = false;
  switch (FamilyOf(line.values.Type())) {
    case TextFamily::kFloating:
      holds = IsFloating(line);
      break;
    case TextFamily::kLargeInteger:
      holds = IsLargeInteger(line);
      break;
    default:
      holds = IsInteger(line);
  }
  return holds ? LineFault::kNone : LineFault::kOtherText;
}

}  // namespace xo::tool
