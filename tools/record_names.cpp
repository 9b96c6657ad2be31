#include "tools/record_names.hpp"

#include <fmt/core.h>

#include <charconv>

#include "tools/near_names.hpp"
#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

constexpr unsigned char kSortOrders = 254;

/// What the user calls `wanted`: the one whose number or one of whose names it is.
template <class Record, class NamesOf>
Record const& Named(std::vector<Record const*> const& records, std::string const& wanted,
                    char const* kind, NamesOf namesOf) {
  unsigned number = 0;
  auto const [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
  bool const isNumber = error == std::errc() && end == wanted.data() + wanted.size();
  std::vector<std::string> names;
  for (Record const* const record : records) {
    if (isNumber && record->number == number) return *record;
    for (std::string const& name : namesOf(*record)) {
      if (name.size() == wanted.size() && EditDistance(name, wanted) == 0) return *record;
      names.push_back(name);
    }
  }
  std::string message = fmt::format("no {} is called {}", kind, QuotedText(wanted));
  auto const near = isNumber ? std::vector<std::string>() : NearNames(wanted, names);
  if (!near.empty()) message += fmt::format("; perhaps {}", QuotedText(near.front()));
  throw Trouble(message);
}

}  // namespace

std::vector<XoCodeSet const*> AllCodeSets() {
  std::vector<XoCodeSet const*> sets;
  for (unsigned number = 1; number < 256; ++number) {
    auto const* const set = XoLanguageContext::QueryCodeSet(static_cast<unsigned char>(number));
    if (set != nullptr) sets.push_back(set);
  }
  return sets;
}

std::vector<XoLanguage const*> AllLanguages() {
  std::vector<XoLanguage const*> languages;
  for (unsigned number = 0; number < 254; ++number) {
    auto const* const one = XoLanguageContext::QueryLanguage(static_cast<unsigned char>(number));
    if (one != nullptr) languages.push_back(one);
  }
  return languages;
}

XoCodeSet const& CodeSetNamed(std::string const& wanted) {
  XoCodeSet const& set = Named(AllCodeSets(), wanted, "code set", [](XoCodeSet const& each) {
    return std::vector<std::string>{each.name};
  });
  if (set.number == kSortOrders) throw Trouble("code set 254 holds sort orders, not characters");
  return set;
}

XoLanguage const& LanguageNamed(std::string const& wanted) {
  return Named(AllLanguages(), wanted, "language", [](XoLanguage const& each) {
    return std::vector<std::string>{each.name, each.tag};
  });
}

}  // namespace xo::tool
