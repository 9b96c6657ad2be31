#include "src/xoidentifiers/identifier_text.hpp"

#include <cstring>

#include "src/xostring/narrow_text.hpp"
#include "src/xotypes/number_print.hpp"
#include "src/xotypes/print_limit.hpp"

namespace xo {

namespace {

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }
constexpr bool IsBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}
constexpr bool IsPositional(char letter) { return letter == 'h' || letter == 'l'; }

constexpr unsigned kNoField = kMostFields;

unsigned FieldOf(IdentifierLanguage const& language, char letter) {
  for (unsigned field = 0; field < language.fields.size(); ++field) {
    if (language.fields[field].letter == letter) return field;
  }
  return kNoField;
}

/// The field of the next positional conversion.
unsigned NextPosition(IdentifierLanguage const& language, char letter, unsigned& position) {
  unsigned const place = position++;
  if (place >= language.positions.size()) return kNoField;
  return language.positions[place].letter == letter ? language.positions[place].field : kNoField;
}

/// The number that a text begins with, behind blanks and a sign, of which the low bits count. False
/// where there is none.
bool ReadNumber(char const* text, std::uint32_t& number) {
  while (IsBlank(*text)) ++text;
  bool const isNegative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  if (!IsDigit(*text)) return false;
  std::uint64_t value = 0;
  for (; IsDigit(*text); ++text) {
    std::uint64_t const digit = static_cast<std::uint64_t>(*text - '0');
    value = value > (UINT64_MAX - digit) / 10 ? UINT64_MAX : value * 10 + digit;
  }
  number = static_cast<std::uint32_t>(isNegative ? 0 - value : value);
  return true;
}

/// A scan in its course.
class IdentifierScan {
 public:
  IdentifierScan(IdentifierLanguage const& language_, IdentifierValues& values_, char const* in_,
                 char const* format_)
      : language(language_), values(values_), in(in_), format(format_) {}

  void Run() {
    while (true) {
      if (language.literals == LiteralRule::kSkipAllBlanks) SkipBlanks();
      if (*format == 0 || *in == 0) return;
      if (*format != '%') {
        Literal();
      } else if (format[1] == 0) {
        return;
      } else {
        Conversion(format[1]);
      }
    }
  }

 private:
  void SkipBlanks() {
    while (IsBlank(*format) || *format == '(') ++format;
    while (IsBlank(*in) || *in == '(') ++in;
  }

  void SkipDigits() {
    while (IsDigit(*in)) ++in;
  }

  void Conversion(char letter) {
    format += 2;
    if (unsigned const field = FieldOf(language, letter); field != kNoField) {
      Read(field);
      SkipDigits();
    } else if (IsPositional(letter)) {
      // Only the letter is passed: what stands behind it is a literal. So the digits stay, and a
      // number of more than one digit spoils what follows. Older formats depend on nothing better.
      Read(NextPosition(language, letter, position));
      if (FieldOf(language, *format) != kNoField) SkipDigits();
    } else {
      ++in;
    }
  }

  void Read(unsigned field) {
    if (field == kNoField) return;
    std::uint32_t number = 0;
    if (!ReadNumber(in, number)) return;
    values[field] = language.fields[field].isWide ? number : number & 0xFFFF;
  }

  void Literal() {
    if (language.literals == LiteralRule::kMatch && *in != *format && IsDigit(*in)) {
      // The part of the format up to a '-' that the text does not have may be missing.
      char const* const dash = std::strchr(format, '-');
      format = dash != nullptr && std::strchr(in, '-') == nullptr ? dash + 1 : format + 1;
      return;
    }
    ++in;
    ++format;
  }

  IdentifierLanguage const& language;
  IdentifierValues& values;
  char const* in;
  char const* format;
  unsigned position = 0;
};

}  // namespace

std::string PrintIdentifier(IdentifierLanguage const& language, IdentifierValues const& values,
                            char const* format) {
  std::string text;
  unsigned position = 0;
  for (; *format != 0 && text.size() < kMostCharacters; ++format) {
    if (*format != '%') {
      text += *format;
      continue;
    }
    char const letter = *++format;
    if (letter == 0) break;
    if (unsigned const field = FieldOf(language, letter); field != kNoField) {
      text += std::to_string(values[field]);
    } else if (IsPositional(letter)) {
      unsigned const place = NextPosition(language, letter, position);
      text += std::to_string(place != kNoField ? values[place] : 0);
      if (*++format == 0) break;
    } else {
      text += letter;
    }
  }
  if (text.size() > kMostCharacters) text.resize(kMostCharacters);
  return text;
}

bool ScanIdentifier(IdentifierLanguage const& language, IdentifierValues& values,
                    XoString const& text, char const* format) {
  if (BeginsWithNull(text)) return false;
  for (std::uint32_t& value : values) value = 0;
  NarrowText const narrow(text);
  IdentifierScan(language, values, narrow.Get(), format).Run();
  return true;
}

}  // namespace xo
