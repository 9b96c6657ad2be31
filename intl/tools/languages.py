"""The languages: their numbers, names, locales and collations. A number never changes."""

import collections

Language = collections.namedtuple(
    "Language", "number name tag script exemplars collation case moved adopted")


def language(number, name, tag, script="Latin", exemplars=None, collation=None, case=None,
             moved=(), adopted=False):
    """`exemplars` names the locale whose exemplar sets count; `collation` is a locale and the kind
    of its rules; `case` a language with case rules of its own in the data. `moved` are marks, each with
    the letters that only foreign words of the language put it on: there its accent is numbered
    above the named ones, so that it comes in the data's order. An `adopted` language is the only one of its script, which
    sorts by its rules in all languages."""
    locale = tag.split("-")[0] if exemplars is None else exemplars
    return Language(number, name, tag, script, locale, collation, case, moved,
                    adopted)


MACRON, GRAVE = 0x304, 0x300

LANGUAGES = [
    Language(0, "neutral", "und", "Latin", None, None, None, (), False),
    language(1, "English", "en", moved=((MACRON, "u"),)),
    language(2, "German", "de"),
    language(3, "German, phone book", "de-u-co-phonebk", collation=("de", "phonebook")),
    language(4, "Austrian", "de-AT"),
    language(5, "Swiss", "de-CH", exemplars="de_CH"),
    language(6, "French", "fr"),
    language(7, "Spanish", "es", collation=("es", "standard")),
    language(8, "Spanish, traditional", "es-u-co-trad", collation=("es", "traditional")),
    language(9, "Catalan", "ca"),
    language(10, "Portuguese", "pt", moved=((MACRON, "iu"),)),
    language(11, "Italian", "it"),
    language(12, "Dutch", "nl"),
    language(13, "Swedish", "sv", collation=("sv", "reformed")),
    language(14, "Danish", "da", collation=("da", "standard")),
    language(15, "Norwegian", "no", collation=("no", "standard")),
    language(16, "Finnish", "fi", collation=("fi", "standard")),
    language(17, "Icelandic", "is", collation=("is", "standard")),
    language(18, "Faroese", "fo", collation=("fo", "standard")),
    language(19, "Irish", "ga"),
    language(20, "Welsh", "cy", collation=("cy", "standard")),
    language(21, "Polish", "pl", collation=("pl", "standard")),
    language(22, "Czech", "cs", collation=("cs", "standard")),
    language(23, "Slovak", "sk", collation=("sk", "standard")),
    language(24, "Hungarian", "hu", collation=("hu", "standard")),
    language(25, "Slovenian", "sl", collation=("sl", "standard")),
    language(26, "Croatian", "hr", collation=("hr", "standard")),
    language(27, "Serbian", "sr", "Cyrillic", collation=("sr", "standard")),
    language(28, "Serbian, Latin script", "sr-Latn", exemplars="sr_Latn",
             collation=("hr", "standard")),
    language(29, "Romanian", "ro", collation=("ro", "standard")),
    language(30, "Albanian", "sq", collation=("sq", "standard")),
    language(31, "Turkish", "tr", collation=("tr", "standard"), case="tr"),
    language(32, "Estonian", "et", collation=("et", "standard")),
    language(33, "Latvian", "lv", collation=("lv", "standard")),
    language(34, "Lithuanian", "lt", collation=("lt", "standard"), case="lt"),
    language(35, "Maltese", "mt", collation=("mt", "standard")),
    language(36, "Esperanto", "eo", collation=("eo", "standard")),
    language(37, "Greek", "el", "Greek", moved=((GRAVE, "εηυω"),)),
    language(38, "Russian", "ru", "Cyrillic"),
    language(39, "Ukrainian", "uk", "Cyrillic", collation=("uk", "standard")),
    language(40, "Belarusian", "be", "Cyrillic", collation=("be", "standard")),
    language(41, "Bulgarian", "bg", "Cyrillic"),
    language(42, "Macedonian", "mk", "Cyrillic", collation=("mk", "standard")),
    language(43, "Hebrew", "he", "Hebrew"),
    language(44, "Arabic", "ar", "Arabic", collation=("ar", "standard")),
    language(45, "Thai", "th", "Thai", collation=("th", "standard"), adopted=True),
    language(46, "Vietnamese", "vi", collation=("vi", "standard")),
    language(47, "Austrian, phone book", "de-AT-u-co-phonebk",
             collation=("de_AT", "phonebook")),
]
