#pragma once

#include <string>
#include <string_view>
#include <xotypemgr.hpp>

namespace xo::tool {

/// Makes strings of one code set and language from text in UTF-8.
class TextDecoder {
 public:
  /// `set` must stay.
  TextDecoder(XoCodeSet const& set, unsigned char language);

  /// Makes `bytes` the text of `text`. Returns what is wrong with them, worded to follow their
  /// name ("is not UTF-8: byte 3 cannot be read"), or an empty text.
  std::string Decode(std::string_view bytes, XoString& text);

  /// What the last text held that the string does not ("ISO-8859-1 lacks U+6F22"), or an empty
  /// text.
  std::string Loss() const;
  /// What the string holds in its place.
  std::string Substitute() const;

 private:
  XoCodeSet const* set;
  unsigned char language;
  /// The first character of the last text that was replaced by another one, 0 for none.
  char32_t lost = 0;
  XoString piece;
};

/// The string of an argument. One that a string cannot hold as it is is `Trouble`.
XoString DecodeArgument(std::string const& bytes, XoCodeSet const& set, unsigned char language);

/// A text in UTF-8.
std::string Encoded(XoString const& text);

/// Unicode characters for the terminal, in UTF-8: controls and lone halves of a pair are left out.
std::string Shown(unsigned short const* characters, std::size_t count);

}  // namespace xo::tool
