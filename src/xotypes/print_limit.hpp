#pragma once

namespace xo {

/// The longest text that a temporal value or an identifier prints under any format; what does not
/// fit is left out.
inline constexpr unsigned kMostCharacters = 2559;

}  // namespace xo
