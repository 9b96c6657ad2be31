#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

/// Strings of the library made from, and read as, those of the language's library.
namespace xo::test {

inline constexpr unsigned char kNative = 0, kLatin1 = 1, kLatin2 = 2, kCyrillic = 5, kKoi8 = 22,
                               kEbcdic = 32, kUnicode = 253, kOrders = 254, kByDefault = 255;
inline constexpr unsigned char kNullLanguage = 254;
inline constexpr int kBadArgument = -2002, kEndOfList = -2005;
inline constexpr unsigned kMostNarrow = 65531, kMostWide = 32765;

inline std::string TextOf(XoString const& string) {
  return std::string(string.StrGet(), string.Len());
}

inline std::u16string WideTextOf(XoString const& string) {
  std::u16string text(string.Len(), u'\0');
  std::memcpy(text.data(), string.StrGet(), 2 * text.size());
  return text;
}

/// The bytes, as they are, in a narrow code set.
inline XoString Narrow(std::string_view bytes, unsigned char codeSet = kLatin1,
                       unsigned char language = 0) {
  XoString string(std::string(bytes).c_str());
  string.codeSet = codeSet;
  string.language = language;
  return string;
}

inline std::vector<unsigned short> Units(std::u16string_view text) {
  std::vector<unsigned short> units(text.begin(), text.end());
  units.push_back(0);
  return units;
}

/// The units, as they are, in a wide code set.
inline XoString Wide(std::u16string_view text, unsigned char codeSet = kUnicode,
                     unsigned char language = 0) {
  XoString string(Units(text).data());
  string.codeSet = codeSet;
  string.language = language;
  return string;
}

/// Whether the fields fit together: no text without size, a terminator inside it, the limit.
inline bool IsSound(XoString const& string) {
  if (string.text == nullptr) return string.size == 0;
  unsigned const unit = string.codeSet > 224 ? 2 : 1;
  return string.size <= 65532 && (string.Len() + 1u) * unit <= string.size;
}

}  // namespace xo::test
