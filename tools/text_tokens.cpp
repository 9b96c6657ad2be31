#include "tools/text_tokens.hpp"

#include <algorithm>

namespace xo::tool {
namespace {

bool IsBlank(char character) {
  return std::string_view(" \t\r\n\v\f").find(character) != std::string_view::npos;
}

bool IsDecimal(char character) { return character >= '0' && character <= '9'; }

bool IsDigit(char character, bool hexadecimal) {
  return IsDecimal(character) || (hexadecimal && ((character >= 'a' && character <= 'f') ||
                                                  (character >= 'A' && character <= 'F')));
}

char LowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                              : character;
}

/// Goes over the number at `place`.
std::string TakeNumber(std::string_view text, std::size_t& place, bool hexadecimal) {
  bool const isPrefixed = hexadecimal && text.size() - place > 2 && text[place] == '0' &&
                          LowerCase(text[place + 1]) == 'x' && IsDigit(text[place + 2], true);
  if (isPrefixed) place += 2;
  std::string digits;
  for (; place < text.size() && IsDigit(text[place], hexadecimal); ++place) {
    digits += LowerCase(text[place]);
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
  return digits;
}

}  // namespace

std::vector<std::string> TokensOf(std::string_view text, bool hexadecimal) {
  std::vector<std::string> tokens;
  for (std::size_t place = 0; place < text.size();) {
    char const character = text[place];
    if (IsDigit(character, hexadecimal)) {
      std::string const number = TakeNumber(text, place, hexadecimal);
      if (number == "0" && !tokens.empty() && tokens.back() == "-") tokens.pop_back();
      tokens.push_back(number);
      continue;
    }
    ++place;
    bool const isPlusSign =
        character == '+' && place < text.size() && IsDigit(text[place], hexadecimal);
    if (!IsBlank(character) && !isPlusSign) tokens.emplace_back(1, character);
  }
  return tokens;
}

bool AreTokensOf(std::vector<std::string> const& tokens, std::vector<std::string> const& whole) {
  std::size_t met = 0;
  for (std::string const& token : whole) {
    if (met < tokens.size() && tokens[met] == token) {
      ++met;
    } else if (IsDecimal(token[0]) && token != "0") {
      return false;
    }
  }
  return met == tokens.size();
}

std::vector<std::string> NumbersOf(std::string_view text) {
  std::vector<std::string> numbers;
  for (std::string& token : TokensOf(text, false)) {
    if (!IsDecimal(token[0])) continue;
    while (token.size() > 1 && token.back() == '0') token.pop_back();
    numbers.push_back(std::move(token));
  }
  return numbers;
}

FormatNumber FindNumber(std::string_view format, std::string_view letters) {
  constexpr std::string_view kPrefixes[] = {"-+ #0", "0123456789", ".", "0123456789"};
  constexpr std::string_view kSizes = "hlLwjztI";
  auto const isOneOf = [&format](std::size_t place, std::string_view set) {
    return place < format.size() && set.find(format[place]) != std::string_view::npos;
  };
  for (std::size_t start = 0; start < format.size(); ++start) {
    if (format[start] != '%') continue;
    std::size_t place = start + 1;
    if (isOneOf(place, "%")) {
      start = place;
      continue;
    }
    for (std::string_view const set : kPrefixes) {
      while (isOneOf(place, set)) ++place;
    }
    while (isOneOf(place, kSizes)) ++place;
    if (isOneOf(place - 1, "I") && isOneOf(place, "36")) place += 2;
    if (isOneOf(place, letters)) return {start, place};
  }
  return {};
}

}  // namespace xo::tool
