// Written by intl/tools/generate.py from Unicode 15.0.0 and CLDR 41. Do not edit.
// clang-format off
#include "intl/data/tables.hpp"

namespace xo::intl {

constinit XoLanguage const kLanguages[] = {
  {0, 2, 0, 0, 0, "neutral", "und"},
  {1, 2, 1, 0, 16, "English", "en"},
  {2, 2, 0, 0, 0, "German", "de"},
  {3, 2, 1, 0, 64, "German, phone book", "de-u-co-phonebk"},
  {4, 2, 0, 0, 0, "Austrian", "de-AT"},
  {5, 2, 0, 0, 0, "Swiss", "de-CH"},
  {6, 2, 0, 0, 0, "French", "fr"},
  {7, 2, 1, 0, 32, "Spanish", "es"},
  {8, 2, 1, 0, 32, "Spanish, traditional", "es-u-co-trad"},
  {9, 2, 0, 0, 0, "Catalan", "ca"},
  {10, 2, 1, 0, 64, "Portuguese", "pt"},
  {11, 2, 0, 0, 0, "Italian", "it"},
  {12, 2, 0, 0, 0, "Dutch", "nl"},
  {13, 2, 1, 0, 64, "Swedish", "sv"},
  {14, 2, 1, 0, 64, "Danish", "da"},
  {15, 2, 1, 0, 64, "Norwegian", "no"},
  {16, 2, 1, 0, 128, "Finnish", "fi"},
  {17, 2, 1, 0, 128, "Icelandic", "is"},
  {18, 2, 1, 0, 64, "Faroese", "fo"},
  {19, 2, 0, 0, 0, "Irish", "ga"},
  {20, 2, 1, 0, 32, "Welsh", "cy"},
  {21, 2, 1, 0, 32, "Polish", "pl"},
  {22, 2, 1, 0, 32, "Czech", "cs"},
  {23, 2, 1, 0, 32, "Slovak", "sk"},
  {24, 2, 1, 0, 32, "Hungarian", "hu"},
  {25, 2, 1, 0, 32, "Slovenian", "sl"},
  {26, 2, 1, 0, 32, "Croatian", "hr"},
  {27, 4, 1, 0, 32, "Serbian", "sr"},
  {28, 2, 1, 0, 32, "Serbian, Latin script", "sr-Latn"},
  {29, 2, 1, 0, 32, "Romanian", "ro"},
  {30, 2, 1, 0, 128, "Albanian", "sq"},
  {31, 2, 1, 1, 64, "Turkish", "tr"},
  {32, 2, 1, 0, 64, "Estonian", "et"},
  {33, 2, 1, 0, 128, "Latvian", "lv"},
  {34, 2, 1, 1, 128, "Lithuanian", "lt"},
  {35, 2, 1, 0, 64, "Maltese", "mt"},
  {36, 2, 1, 0, 32, "Esperanto", "eo"},
  {37, 3, 1, 0, 64, "Greek", "el"},
  {38, 4, 0, 0, 0, "Russian", "ru"},
  {39, 4, 1, 0, 32, "Ukrainian", "uk"},
  {40, 4, 1, 0, 32, "Belarusian", "be"},
  {41, 4, 0, 0, 0, "Bulgarian", "bg"},
  {42, 4, 1, 0, 32, "Macedonian", "mk"},
  {43, 7, 0, 0, 0, "Hebrew", "he"},
  {44, 8, 1, 0, 128, "Arabic", "ar"},
  {45, 18, 0, 0, 0, "Thai", "th"},
  {46, 2, 1, 0, 128, "Vietnamese", "vi"},
  {47, 2, 1, 0, 32, "Austrian, phone book", "de-AT-u-co-phonebk"},
};
constinit unsigned const kLanguageCount = 48;

}  // namespace xo::intl
