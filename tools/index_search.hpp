#pragma once

#include <cstdint>
#include <functional>

#include "tools/index_reader.hpp"
#include "tools/value_codec.hpp"

namespace xo::tool {

/// Calls `visit` for every line whose value is from `low` to `high`, both included, in the order
/// of the values, those of one value in the order of the lines. Returns their number.
std::uint64_t VisitRange(IndexReader const& index, StoredValue const& low, StoredValue const& high,
                         std::function<void(LineNumber)> const& visit);

/// Only the number of these lines, which takes one step for each value.
std::uint64_t CountRange(IndexReader const& index, StoredValue const& low, StoredValue const& high);

}  // namespace xo::tool
