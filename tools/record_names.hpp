#pragma once

#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::tool {

/// All code sets and languages that the library knows, by their numbers.
std::vector<XoCodeSet const*> AllCodeSets();
std::vector<XoLanguage const*> AllLanguages();

/// The code set of characters, or the language, that the user calls `wanted`: the one whose number,
/// name or tag it is, upper and lower case being the same. Any other is `Trouble`.
XoCodeSet const& CodeSetNamed(std::string const& wanted);
XoLanguage const& LanguageNamed(std::string const& wanted);

}  // namespace xo::tool
