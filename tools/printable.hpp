#pragma once

#include <string>
#include <string_view>

namespace xo::tool {

/// A file name as it goes into a message of one line: control characters are escaped.
std::string PrintableName(std::string_view name);

/// Text of the user's data as it goes into a message: in quotes, everything but printable ASCII
/// escaped, and cut where it is long.
std::string QuotedText(std::string_view text);

}  // namespace xo::tool
