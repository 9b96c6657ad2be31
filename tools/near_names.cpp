#include "tools/near_names.hpp"

#include <algorithm>
#include <numeric>
#include <utility>

namespace xo::tool {
namespace {

/// Lower case of an ASCII letter, whatever the locale.
char LowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b) {
  // One row of the table of Wagner and Fischer, JACM 21 (1974) 168: distances from the part of `a`
  // seen so far to every beginning of `b`.
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (char const inA : a) {
    std::size_t diagonal = row[0]++;
    for (std::size_t column = 1; column <= b.size(); ++column) {
      std::size_t const replaced = diagonal + (LowerCase(inA) == LowerCase(b[column - 1]) ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({replaced, row[column - 1] + 1, row[column] + 1});
    }
  }
  return row[b.size()];
}

std::vector<std::string> NearNames(std::string_view wanted, std::vector<std::string> const& names) {
  constexpr std::size_t kMost = 5;
  // Two slips, or a third of a long name: farther names are no help.
  std::size_t const farthest = std::max<std::size_t>(2, wanted.size() / 3);
  std::vector<std::pair<std::size_t, std::string>> near;
  for (std::string const& name : names) {
    std::size_t const distance = EditDistance(wanted, name);
    if (distance <= farthest) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(),
                   [](auto const& a, auto const& b) { return a.first < b.first; });
  if (near.size() > kMost) near.resize(kMost);
  std::vector<std::string> result;
  for (auto& [distance, name] : near) result.push_back(std::move(name));
  return result;
}

}  // namespace xo::tool
