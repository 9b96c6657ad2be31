#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "tools/predicate.hpp"

namespace xo::tool {

/// What a search did.
struct SearchOutcome {
  std::uint64_t found = 0;
  /// Records that were compared because a key did not decide.
  std::uint64_t fetches = 0;
};

using Predicates = std::vector<std::unique_ptr<Predicate>>;

/// Looks for the lines that satisfy all of the predicates, of which no more than one has a bound at
/// either end: each key between the bounds is asked, and where that does not decide, the record of
/// each line. `visit` is called for every line that is found, in the order of the keys, those of
/// one key in the order of the lines; without it they are only counted.
SearchOutcome SearchKeys(IndexReader const& index, Predicates const& predicates,
                         std::function<void(LineNumber)> const& visit);

}  // namespace xo::tool
