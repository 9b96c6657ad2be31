#pragma once

#include <functional>
#include <string>
#include <xotypemgr.hpp>

#include "tools/text_form.hpp"

namespace xo::tool {

/// What the index keys of the lines of a text take: the report of `xotm key --sizes`. `keyOf` makes
/// the key of a text and tells whether it was cut.
std::string KeySizes(std::string const& file, XoCodeSet const& set, unsigned char language,
                     std::function<bool(XoString& text, Bytes& key)> const& keyOf);

}  // namespace xo::tool
