#include "tools/line_fault.hpp"

#include <algorithm>
#include <string_view>

#include "tools/text_tokens.hpp"

namespace xo::tool {
namespace {

LineFault Unless(bool holds) { return holds ? LineFault::kNone : LineFault::kOtherText; }

/// Everything that the row does not take for true, or for null, it takes for false.
LineFault BooleanFaultOf(ScannedLine const& line) {
  constexpr std::string_view kTruths[] = {"T", "t", "1", "TRUE", "true"};
  constexpr std::string_view kFalsehoods[] = {"F", "f", "0", "FALSE", "false"};
  auto const& words = line.value[0] == 1 ? kTruths : kFalsehoods;
  return Unless(std::find(std::begin(words), std::end(words), line.text) != std::end(words));
}

/// The format with zeroes for all fields, or whatever a null has in them.
std::string TextOfNull(std::string const& format, char const* field) {
  std::string text;
  for (std::size_t place = 0; place < format.size(); ++place) {
    if (format[place] != '%') {
      text += format[place];
      continue;
    }
    ++place;
    while (place < format.size() && (format[place] == 'h' || format[place] == 'l')) ++place;
    if (place < format.size()) text += format[place] == '%' ? "%" : field;
  }
  return text;
}

/// Numbers that are not there read as 0, and what is too much does not matter to the row.
LineFault IdentifierFaultOf(ScannedLine const& line) {
  ValueText const& values = line.values;
  std::string whole = line.printed;
  // A null prints nothing of the block and the class that it may have.
  if (values.IsNull(line.value)) {
    whole = TextOfNull(values.Format(), values.Type() == XoCLID_T ? "65535" : "0");
  }
  auto const tokens = TokensOf(line.text, false);
  bool const hasNumber = std::any_of(tokens.begin(), tokens.end(), [](std::string const& token) {
    return token[0] >= '0' && token[0] <= '9';
  });
  return Unless(hasNumber && AreTokensOf(tokens, TokensOf(whole, false)));
}

}  // namespace

LineFault FaultOf(ScannedLine const& line) {
  if (line.values.IsNull(line.value)) {
    if (line.text == NullText()) return LineFault::kNone;
    // To numbers that can be null, and to them alone, no text is null.
    if (line.text.empty()) {
      return Unless(PlainTypeOf(line.values.Type()) != line.values.Type());
    }
  }
  if (line.text.empty()) return LineFault::kOtherText;
  switch (FamilyOf(line.values.Type())) {
    case TextFamily::kBoolean:
      return BooleanFaultOf(line);
    case TextFamily::kTemporal:
      return TemporalFaultOf(line);
    case TextFamily::kIdentifier:
      return IdentifierFaultOf(line);
    default:
      return NumberFaultOf(line);
  }
}

}  // namespace xo::tool
