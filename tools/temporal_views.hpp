#pragma once

#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/row_value.hpp"

namespace xo::tool {

/// A named number of a temporal value.
struct Field {
  char const* name;
  std::string text;
  bool isWildcard = false;
};

/// What there is to tell about a date, time or span but its texts and bytes.
struct Views {
  std::vector<Field> fields;
  bool isNull = false;
  /// Whether a field is a wildcard.
  bool isPattern = false;
  /// Why it is no date or time, by the calendar of its class ("there is no month 14"); empty where
  /// it is one, and for spans, of which any fields are.
  std::string whyInvalid;
  /// Numbers that it stands for.
  std::vector<Field> totals;
  /// The date in it.
  XoDate date = XoDate::NullValue();
};

/// Whether values of a type are dates, times or spans.
bool IsTemporal(char type);

/// The views of a value of such a type.
Views ViewsOf(RowValue const& value);

/// Why a value cannot be used as one: a date or time that is neither valid nor null nor a pattern.
/// Empty for every other value.
std::string WhyUnusable(RowValue const& value);

}  // namespace xo::tool
