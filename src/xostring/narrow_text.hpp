#pragma once

#include "src/xostring/text_units.hpp"
#include "xostring.hpp"

namespace xo {

/// A string's text in one byte a character, as numbers read it: its own, or that of a wide one
/// converted to the default 8-bit code set.
class NarrowText {
 public:
  explicit NarrowText(XoString const& string) : converted(kNoCodeSet, string.language) {
    if (!IsWide(string.codeSet)) {
      text = string.StrGet();
      return;
    }
    converted.codeSet = XoString::GetDefault8CodeSet();
    converted += string;
    text = converted.StrGet();
  }
  NarrowText(NarrowText const&) = delete;
  NarrowText& operator=(NarrowText const&) = delete;

  char const* Get() const { return text; }

 private:
  XoString converted;
  char const* text;
};

}  // namespace xo
