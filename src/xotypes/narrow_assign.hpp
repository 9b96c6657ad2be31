#pragma once

#include <cstring>
#include <string_view>

#include "base/allocation.hpp"
#include "xostring.hpp"

namespace xo {

/// Gives `target` the text `characters`, which are of its narrow code set; its own text is not
/// freed. A number's text is short and known to be so, which spares it the steps that any text goes
/// through.
inline void GiveText(XoString& target, std::string_view characters) {
  char* const text = static_cast<char*>(AllocateArray(characters.size() + 1));
  std::memcpy(text, characters.data(), characters.size());
  text[characters.size()] = 0;
  target.text = text;
  target.size = static_cast<unsigned short>(characters.size() + 1);
}

/// Makes `characters` the text of `target`, in the default 8-bit code set and language, as the
/// assignment of plain text does.
inline XoString& AssignNarrow(XoString& target, std::string_view characters) {
  char* const previous = target.text;
  GiveText(target, characters);
  ReleaseArray(previous);
  target.codeSet = XoString::GetDefault8CodeSet();
  target.language = XoString::GetDefaultLanguage();
  return target;
}

}  // namespace xo
