#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace xo::tool {

/// How many insertions, deletions and replacements of one character turn `a` into `b`, upper and
/// lower case of ASCII letters being the same.
std::size_t EditDistance(std::string_view a, std::string_view b);

/// Those of `names` that `wanted` may have been meant to be, the nearest first.
std::vector<std::string> NearNames(std::string_view wanted, std::vector<std::string> const& names);

}  // namespace xo::tool
