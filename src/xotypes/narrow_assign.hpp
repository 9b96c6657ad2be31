#pragma once

#include <cstring>
#include <string_view>

#include "base/allocation.hpp"
#include "xostring.hpp"

namespace xo {

/// Makes `characters` the text of `target`, in the default 8-bit code set and language, as the
/// assignment of plain text does. A number's text is short and known to be so, which spares it the
/// steps that any text goes through.
inline XoString& AssignNarrow(XoString& target, std::string_view characters) {
  char* const text = static_cast<char*>(AllocateArray(characters.size() + 1));
  std::memcpy(text, characters.data(), characters.size());
  text[characters.size()] = 0;
  ReleaseArray(target.text);
  target.text = text;
  target.size = static_cast<unsigned short>(characters.size() + 1);
  target.codeSet = XoString::GetDefault8CodeSet();
  target.language = XoString::GetDefaultLanguage();
  return target;
}

}  // namespace xo
