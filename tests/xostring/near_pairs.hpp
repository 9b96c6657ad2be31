#pragma once

#include <string>
#include <vector>

#include "tests/base/random_test.hpp"
#include "xotypemgr.hpp"

/// Random texts, in pairs that mostly differ in little.
namespace xo::test {

inline constexpr unsigned char kUnicode = 253;

/// The bytes of a text in a code set, with its terminator and nothing behind it.
inline std::vector<char> TextBytes(std::u16string const& text, unsigned char codeSet) {
  std::vector<char> bytes;
  for (std::size_t place = 0; place <= text.size(); ++place) {
    char16_t const unit = place < text.size() ? text[place] : u'\0';
    bytes.push_back(static_cast<char>(unit & 0xFF));
    if (codeSet > 224) bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

inline int Sign(int value) { return value < 0 ? -1 : value > 0; }

/// The code sets that have an order table of their own.
inline std::vector<unsigned char> CodeSetsWithTables() {
  std::vector<unsigned char> sets;
  for (unsigned set = 1; set < 254; ++set) {
    auto const number = static_cast<unsigned char>(set);
    XoCodeSet const* const record = XoLanguageContext::QueryCodeSet(number);
    if (record != nullptr && record->orderTable != nullptr) sets.push_back(number);
  }
  return sets;
}

class NearPairs : public RandomTest {
 protected:
  /// Characters that begin or continue contractions of some language, and what is near them.
  static constexpr char16_t kContracting[] = u"cChHdDzZsSgGyYnNtTlLjJfFrRpPaAkKiIeEoOuUž·'";
  /// Letters with accents, those with expansions, and other scripts.
  static constexpr char16_t kLetters[] =
      u"abcABCeéèêëEÉoöøőOÖüűßẞæÆœĳŀŉþðđłñčšřąęåÅäÄıİσςΣάαжЖёїьאבבּكلاกเแあアガ½²ªﬁ㎏ﷺ";
  static constexpr char16_t kSymbols[] = u"  -–+*?_.,'’\"\u00AD\u200D\u00A0\t°";
  static constexpr char16_t kUntabled[] = u"一丁亜\x3400\xAC00\xE000\xD800\xDC00\x0378";

  char16_t Wide() {
    switch (Below(12)) {
      case 0:
      case 1:
      case 2:
        return static_cast<char16_t>(u'a' + Below(3));
      case 3:
      case 4:
      case 5:
        return kContracting[Below(std::size(kContracting) - 1)];
      case 6:
      case 7:
        return kLetters[Below(std::size(kLetters) - 1)];
      case 8:
        return kSymbols[Below(std::size(kSymbols) - 1)];
      case 9:
        return static_cast<char16_t>(OneIn(3) ? 0x300 + Below(0x70) : 0x300 + Below(12));
      case 10:
        return kUntabled[Below(std::size(kUntabled) - 1)];
      default:
        if (OneIn(3) && specials) return static_cast<char16_t>(0xFFF0 + Below(16));
        return static_cast<char16_t>(1 + Below(OneIn(2) ? 0x600 : 0xFFEF));
    }
  }

  char16_t Narrow() {
    if (OneIn(2)) return kContracting[Below(36)];
    if (OneIn(3)) return kSymbols[Below(2)];
    return static_cast<char16_t>(1 + Below(255));
  }

  char16_t Character(unsigned char codeSet) { return codeSet > 224 ? Wide() : Narrow(); }

  std::u16string Text(unsigned char codeSet, unsigned longest) {
    std::u16string text;
    for (unsigned more = Below(longest + 1); more != 0; --more) text += Character(codeSet);
    return text;
  }

  /// A text like the one given, but for a few changes.
  std::u16string Changed(std::u16string text, unsigned char codeSet) {
    for (unsigned changes = Below(4); changes != 0; --changes) {
      std::size_t const place = Below(static_cast<unsigned>(text.size()) + 1);
      switch (Below(5)) {
        case 0:
          text.insert(place, 1, Character(codeSet));
          break;
        case 1:
          if (place < text.size()) text.erase(place, 1);
          break;
        case 2:
          if (place < text.size()) text[place] = Character(codeSet);
          break;
        case 3:
          // The other case of a letter of ASCII; another character for all else.
          if (place < text.size() && (text[place] ^ 0x20) != 0) {
            text[place] = static_cast<char16_t>(text[place] ^ 0x20);
          }
          break;
        default:
          if (place + 1 < text.size()) std::swap(text[place], text[place + 1]);
          break;
      }
    }
    return text;
  }

  /// Whether codes without an entry that have no group of their own are among the characters.
  bool specials = true;
};

}  // namespace xo::test
