#include "tools/scalar_text.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstring>
#include <limits>
#include <xotypemgr.hpp>

namespace xo::tool {
namespace {

/// The number in `text` without what is allowed around it.
std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  if (text.ends_with('\r')) text.remove_suffix(1);
  std::size_t const first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
  // Only before a digit or the like: a sign after the plus sign is no number.
  if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
  return text;
}

/// The whole of `text` as a number of this very type.
template <class Value>
ScalarOutcome ReadWhole(std::string_view text, Value& value) {
  char const* const end = text.data() + text.size();
  auto const [stop, error] = std::from_chars(text.data(), end, value);
  if (stop != end || error == std::errc::invalid_argument) return ScalarOutcome::kNoNumber;
  return error == std::errc{} ? ScalarOutcome::kValue : ScalarOutcome::kOutOfRange;
}

template <std::floating_point Value>
ScalarOutcome Read(std::string_view text, void* memory) {
  Value value{};
  ScalarOutcome const outcome = ReadWhole(Trim(text), value);
  if (outcome == ScalarOutcome::kValue) std::memcpy(memory, &value, sizeof value);
  return outcome;
}

/// Reads through the widest type of the number's own sign, so that a number that is merely too
/// large or too small is told from text that is none, also below an unsigned type's zero.
template <std::integral Value>
ScalarOutcome Read(std::string_view text, void* memory) {
  auto const narrow = [memory](auto wide) {
    if (!std::in_range<Value>(wide)) return ScalarOutcome::kOutOfRange;
    auto const value = static_cast<Value>(wide);
    std::memcpy(memory, &value, sizeof value);
    return ScalarOutcome::kValue;
  };
  std::string_view const number = Trim(text);
  ScalarOutcome outcome;
  if (number.starts_with('-')) {
    o_8b wide = 0;
    outcome = ReadWhole(number, wide);
    return outcome == ScalarOutcome::kValue ? narrow(wide) : outcome;
  }
  o_u8b wide = 0;
  outcome = ReadWhole(number, wide);
  return outcome == ScalarOutcome::kValue ? narrow(wide) : outcome;
}

template <std::integral Value>
std::string Accepted() {
  return fmt::format("a whole number from {} to {}", +std::numeric_limits<Value>::min(),
                     +std::numeric_limits<Value>::max());
}

template <std::floating_point Value>
std::string Accepted() {
  return fmt::format("a decimal number up to {:.2g} either way", std::numeric_limits<Value>::max());
}

template <class Value>
constexpr ScalarText TextOf(char type) {
  return {type, Read<Value>, Accepted<Value>};
}

constexpr ScalarText kScalarTexts[] = {
    TextOf<o_char>(Xo1B_T),       TextOf<o_u1b>(XoU1B_T),     TextOf<o_2b>(Xo2B_T),
    TextOf<o_u2b>(XoU2B_T),       TextOf<o_4b>(Xo4B_T),       TextOf<o_u4b>(XoU4B_T),
    TextOf<BlockId>(XoBLOCKID_T), TextOf<int>(XoINT_T),       TextOf<unsigned>(XoUNSIGNED_T),
    TextOf<int>(XoENUM_T),        TextOf<o_8b>(Xo8B_T),       TextOf<o_u8b>(XoU8B_T),
    TextOf<o_double>(XoDOUBLE_T), TextOf<o_float>(XoFLOAT_T),
};

}  // namespace

ScalarText const* FindScalarText(char type) {
  auto const* const found = std::find_if(std::begin(kScalarTexts), std::end(kScalarTexts),
                                         [type](auto const& text) { return text.type == type; });
  return found == std::end(kScalarTexts) ? nullptr : found;
}

}  // namespace xo::tool
