#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace xo::tool {

/// Texts that say the same in another spelling have the same tokens: each number is one, without
/// leading zeroes, a plus sign, or a minus sign before zero, and every other character is one.
/// White space only parts them. `hexadecimal` numbers have digits up to "f", in any case, and may
/// begin with "0x".
std::vector<std::string> TokensOf(std::string_view text, bool hexadecimal);

/// Whether `tokens` stand in `whole` in their order, and what `whole` has besides is no number but
/// zero.
bool AreTokensOf(std::vector<std::string> const& tokens, std::vector<std::string> const& whole);

/// The numbers in `text` as their digits, without leading and trailing zeroes.
std::vector<std::string> NumbersOf(std::string_view text);

/// The place of the number in a format of numbers.
struct FormatNumber {
  std::size_t start = std::string_view::npos;  ///< of its "%"
  std::size_t letter = 0;                      ///< of the letter that ends it
  bool IsThere() const { return start != std::string_view::npos; }
};

/// The first conversion whose letter is one of `letters`.
FormatNumber FindNumber(std::string_view format, std::string_view letters);

}  // namespace xo::tool
