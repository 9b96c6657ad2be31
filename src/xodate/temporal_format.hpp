#pragma once

#include "xodatetimen.hpp"

/// Text of all temporal values: one formatter and one scanner, in the language that
/// docs/formats-temporal.md tells. Both work on the seven fields of an `XoDateTimeN`; the other
/// types widen to it.
namespace xo {

/// Prints `value`, which is not null, by `format` to `out` and returns it.
XoString& PrintTemporal(XoString& out, XoDateTimeN const& value, char const* format);

/// Reads all fields of `value` from `in` by `format`; false when the text ended before the last
/// conversion. The fields are taken in either case.
bool ScanTemporal(XoDateTimeN& value, XoString const& in, char const* format);

}  // namespace xo
