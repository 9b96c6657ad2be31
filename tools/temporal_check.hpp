#pragma once

#include "tools/row_value.hpp"

namespace xo::tool {

/// Whether fields of a date, time or span are wildcards. Values of other types have none.
bool HasWildcard(RowValue const& value);

/// Whether a value is no date of its calendar, or no time of the day, whatever its wildcards stand
/// for. Null and the values of other types are neither.
bool IsInvalid(RowValue const& value);

}  // namespace xo::tool
