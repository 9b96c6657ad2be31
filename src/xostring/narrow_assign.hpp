#pragma once

#include <cstring>

#include "base/allocation.hpp"
#include "xostring.hpp"

namespace xo {

/// Makes `length` characters, none of them zero and no more than a string holds, the text of
/// `target`, in the default 8-bit code set and language: what assigning a string made of them does,
/// in one step. A buffer of that very size is kept.
inline void AssignNarrow(XoString& target, char const* characters, unsigned length) {
  auto const size = static_cast<unsigned short>(length + 1);
  if (target.text == nullptr || target.size != size) {
    auto* const buffer = static_cast<char*>(AllocateArray(size));
    ReleaseArray(target.text);
    target.text = buffer;
    target.size = size;
  }
  std::memcpy(target.text, characters, length);
  target.text[length] = 0;
  target.codeSet = XoString::GetDefault8CodeSet();
  target.language = XoString::GetDefaultLanguage();
}

}  // namespace xo
