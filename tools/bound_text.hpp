#pragma once

#include <string>

#include "tools/text_form.hpp"

namespace xo::tool {

/// Bytes in hexadecimal, with a blank between two.
std::string HexText(ByteSpan bytes);

/// What a key of an index means, in one line: the value that it is, or of text the letters that its
/// sort orders or weights stand for. `format` is that of values other than text, empty for the
/// usual one.
std::string BoundText(IndexShape const& shape, ByteSpan key, std::string const& format);

}  // namespace xo::tool
