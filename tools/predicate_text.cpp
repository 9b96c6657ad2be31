#include "tools/predicate_text.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <xotypemgr.hpp>

#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

struct Sign {
  std::string_view text;
  unsigned short relation;
};

// Longer signs first, as they begin like shorter ones.
constexpr Sign kSigns[] = {
    {"<=", kXoBoundBelow | kXoBoundEqual},
    {">=", kXoBoundAbove | kXoBoundEqual},
    {"<>", kXoBoundBelow | kXoBoundAbove},
    {"<", kXoBoundBelow},
    {">", kXoBoundAbove},
    {"=", kXoBoundEqual},
};

}  // namespace

PredicateText ParsePredicate(std::string_view text) {
  std::string_view const rest = text.substr(std::min(text.find_first_not_of(' '), text.size()));
  auto const* const sign = std::find_if(std::begin(kSigns), std::end(kSigns), [&](Sign const& one) {
    return rest.starts_with(one.text);
  });
  if (sign == std::end(kSigns)) {
    throw Trouble(fmt::format("{} is no predicate: it must begin with one of < <= = >= > <>",
                              QuotedText(text)));
  }
  std::string_view value = rest.substr(sign->text.size());
  if (value.starts_with(' ')) value.remove_prefix(1);
  return {sign->relation, std::string(value)};
}

std::string_view RelationSign(unsigned short relation) {
  auto const* const sign =
      std::find_if(std::begin(kSigns), std::end(kSigns),
                   [relation](Sign const& one) { return one.relation == relation; });
  return sign == std::end(kSigns) ? "any" : sign->text;
}

}  // namespace xo::tool
