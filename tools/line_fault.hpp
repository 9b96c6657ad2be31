#pragma once

#include <string>

#include "tools/value_text.hpp"

namespace xo::tool {

/// A line, and what the row of its type made of it. A scan tells nothing of what it could not read,
/// left unread or cut to the width of a field, so that is found out here.
struct ScannedLine {
  ValueText const& values;
  /// Without blanks around it.
  std::string const& text;
  /// As it was scanned, stored and loaded again, and how it prints then.
  ValueBytes const& value;
  std::string const& printed;
};

enum class LineFault {
  kNone,
  kOtherText,  ///< the line says something else than the value, or more
  kInvalid,    ///< it is no date of its calendar, or no time of the day
  kPattern,    ///< it has wildcards
};

/// What is wrong with the value that was read from a line. Whether it comes back from its own print
/// is not looked at.
LineFault FaultOf(ScannedLine const& line);

/// Whether fields of a date, time or span are wildcards.
bool HasWildcard(char type, ValueBytes const& value);

// By families of types, for texts that are not empty.
LineFault NumberFaultOf(ScannedLine const& line);
LineFault TemporalFaultOf(ScannedLine const& line);

}  // namespace xo::tool
