"""Writes the tables as C++ sources, and works out their fingerprint."""

WIDTH = 100
NONE = 0xFFFFFFFF  # in the fingerprint, the place of a table that there is not
HEADER = """// Written by intl/tools/generate.py from Unicode {unicode} and CLDR {cldr}. Do not edit.
// clang-format off
#include "intl/data/tables.hpp"

namespace xo::intl {{
"""


class Fingerprint:
    """FNV-1a of 64 bits, over values instead of bytes."""

    def __init__(self):
        self.value = 0xCBF29CE484222325

    def add(self, values):
        value = self.value
        for each in values:
            value = ((value ^ each) * 0x100000001B3) & 0xFFFFFFFFFFFFFFFF
        self.value = value


def wrapped(items):
    lines, line = [], " "
    for item in items:
        if len(line) + len(item) + 2 > WIDTH:
            lines.append(line)
            line = " "
        line += " " + item + ","
    if line.strip():
        lines.append(line)
    return "\n".join(lines)


def array(declaration, items):
    items = list(items)
    return f"constinit {declaration} = {{\n{wrapped(items or ['0'])}\n}};\n"


def count(name, number):
    return f"constinit unsigned const {name} = {number};\n"


def numbers(values):
    return [str(value) for value in values]


def wide_list(values):
    return f"{{{len(values)}, {{{', '.join(str(value) for value in values)}}}}}"


class Pages:
    """Pages of 64 values, each kept once."""

    def __init__(self):
        self.values = [0] * 64
        self.known = {tuple(self.values): 0}

    def place(self, page):
        page = tuple(page)
        if page not in self.known:
            self.known[page] = len(self.values) // 64
            self.values.extend(page)
        return self.known[page]


def order_source(tables):
    parts = []
    parts.append(array("CharOrderEntry const kOrderEntries[]",
                       ("{" + ",".join(str(value) for value in entry) + "}"
                        for entry in tables.entries)))
    parts.append(count("kOrderEntryCount", len(tables.entries)))
    parts.append(array("LetterHead const kLetterHeads[]",
                       (f"{head:#x}" for head in tables.heads)))
    parts.append(count("kUnicodeEntries", tables.unicode_start))
    parts.append(array("unsigned char const kUnicodeBlocks[1024]", numbers(tables.blocks)))
    parts.append(array("XoWCharList const kOrderExpansions[]",
                       (wide_list(values) for values in tables.expansions)))
    parts.append(count("kOrderExpansionCount", len(tables.expansions)))
    parts.append(array("OrderLinks const kOrderLinks[]",
                       (f"{{{link[0]:#x},{link[1]},{link[2]},{link[3]}}}"
                        for link in tables.links)))
    parts.append(count("kOrderLinkCount", len(tables.links)))
    parts.append(array("unsigned short const kVariantEntries[]",
                       numbers(tables.variant_targets)))
    parts.append(count("kVariantEntryCount", len(tables.variant_targets)))
    parts.append(array("unsigned short const kContractionCharacters[]",
                       numbers(tables.contraction_characters)))
    parts.append(array("unsigned short const kContractionEntries[]",
                       numbers(tables.contraction_targets)))
    parts.append(count("kContractionCount", len(tables.contraction_characters)))
    return "\n".join(parts)


def order_values(tables):
    for entry in tables.entries:
        yield from entry
    yield tables.unicode_start
    yield from tables.blocks
    for values in tables.expansions:
        yield len(values)
        yield from values
    for link in tables.links:
        yield from link
    yield from tables.variant_targets
    yield from tables.contraction_characters
    yield from tables.contraction_targets


class CodeSetData:
    def __init__(self, code_sets, to_unicode, from_unicode, undefined, order_start,
                 unicode_start):
        self.to_pages = Pages()
        self.narrow = Pages()
        self.wide = Pages()
        self.indexes = []
        self.tables = []
        runs = {}
        for code_set in code_sets:
            to, back = to_unicode[code_set.number], from_unicode[code_set.number]
            double = code_set.kind == "double"
            pages = [self.to_pages.place(to.get(code, undefined)
                                         for code in range(first, first + 64))
                     for first in range(0, 0x10000 if double else 0x100, 64)]
            pool = self.wide if double else self.narrow
            backward = [pool.place(back.get(code, 0) for code in range(first, first + 64))
                        for first in range(0, 0x10000, 64)]
            places = []
            for run in (tuple(pages), tuple(backward)):
                if run not in runs:
                    runs[run] = len(self.indexes)
                    self.indexes.extend(run)
                places.append(runs[run])
            self.tables.append((int(double), back[ord("?")], *places))
        self.code_sets = code_sets
        # (number, start of the order table or NONE, place of the table or NONE) of all records:
        # those with tables, then Unicode, then the sort orders.
        self.records = [
            (code_set.number,
             order_start[code_set.number] if code_set.kind == "ordered" else NONE, place)
            for place, code_set in enumerate(code_sets)]
        self.records += [(253, unicode_start, NONE), (254, NONE, NONE)]
        self.places = [255] * 256
        for place, (number, _, _) in enumerate(self.records):
            self.places[number] = place

    def source(self):
        parts = []
        parts.append(array("CodeSetTables const kCodeSetTables[]", (
            f"{{{str(bool(wide)).lower()},{substitute},{to},{back}}}"
            for wide, substitute, to, back in self.tables)))
        parts.append(count("kCodeSetTableCount", len(self.tables)))
        parts.append(array("unsigned short const kPageIndexes[]", numbers(self.indexes)))
        parts.append(count("kPageIndexCount", len(self.indexes)))
        for name, kind, pages in (("kToUnicode", "short", self.to_pages),
                                  ("kFromUnicodeNarrow", "char", self.narrow),
                                  ("kFromUnicodeWide", "short", self.wide)):
            parts.append(array(f"unsigned {kind} const {name}Pages[]", numbers(pages.values)))
            parts.append(count(f"{name}PageCount", len(pages.values)))
        return "\n".join(parts)

    def values(self):
        for table in self.tables:
            yield from table
        for number, orders, table in self.records:
            yield from (number, orders, table)
        yield from self.places
        yield from self.indexes
        yield from self.to_pages.values
        yield from self.narrow.values
        yield from self.wide.values

    def records_source(self):
        """The order tables and the records of the code sets."""
        names = {each.number: each.name for each in self.code_sets}
        names |= {253: "Unicode", 254: "sort orders"}
        tables, records = [], []
        for number, start, place in self.records:
            orders = "nullptr"
            if start != NONE:
                blocks = "kUnicodeBlocks" if number == 253 else "nullptr"
                tables.append(
                    f"  {{kOrderEntries + {start}, {blocks}, kLetterHeads + {start}}},")
                orders = f"&kOrderTables[{len(tables) - 1}]"
            own = "nullptr" if place == NONE else f"&kCodeSetTables[{place}]"
            records.append(f'  {{{number}, "{names[number]}", {orders}, {own}}},')
        return (tables, records)


class CaseData:
    def __init__(self, characters, special, languages, from_unicode):
        self.lists = [()]
        self.forms = [(0, (), 0, 0)]
        self.pages = Pages()
        self.language_cases = []
        upper, lower_whole, language = {}, {}, {}
        for code, up, low, condition in special:
            if not condition:
                if len(up) > 1:
                    upper[code] = up
                if len(low) > 1:
                    lower_whole[code] = low
            elif condition in ("tr", "tr Not_Before_Dot", "lt"):
                # Turkish capital I before a combining dot is rare enough to go without a look
                # ahead, which the operation on one character cannot take.
                language[(condition.split()[0], code)] = (up, low)
        index = {}
        for code in range(0x10000):
            first = upper.get(code, (characters.upper.get(code, 0),))
            form = (first[0], first[1:], characters.lower.get(code, 0),
                    self._list(lower_whole.get(code, ())))
            if form != self.forms[0]:
                index[code] = self._form(form)
        self.blocks = [self.pages.place(index.get(code, 0) for code in range(start, start + 64))
                       for start in range(0, 0x10000, 64)]
        for each in languages:
            for (condition, code), (up, low) in sorted(language.items()):
                if condition != each.case:
                    continue
                if len(low) == 1:
                    form = (0 if up == (code,) else up[0], (), 0 if low == (code,) else low[0], 0)
                else:
                    form = (0, (), characters.lower.get(code, 0), self._list(low))
                self.language_cases.append((each.number, code, self._form(form)))
        self.set_cases = []
        for number, back in from_unicode.items():
            for code, place in index.items():
                upper, more, *rest = self.forms[place]
                own = tuple(back.get(each, 0) for each in more)
                if code in back and own != more and all(own):
                    self.set_cases.append((number, code, self._form((upper, own, *rest))))

    def _list(self, values):
        values = tuple(values)
        if values not in self.lists:
            self.lists.append(values)
        return self.lists.index(values)

    def _form(self, form):
        if form not in self.forms:
            self.forms.append(form)
        return self.forms.index(form)

    def source(self):
        parts = []
        parts.append(array("unsigned char const kCaseBlocks[1024]", numbers(self.blocks)))
        parts.append(array("unsigned short const kCasePages[]", numbers(self.pages.values)))
        parts.append(count("kCasePageCount", len(self.pages.values)))
        parts.append(array("XoUnicodeProps const kCaseForms[]",
                           (f"{{{upper},{wide_list(more) if more else '{}'},{lower},{whole}}}"
                            for upper, more, lower, whole in self.forms)))
        parts.append(count("kCaseFormCount", len(self.forms)))
        parts.append(array("XoWCharList const kCaseLists[]",
                           (wide_list(values) for values in self.lists)))
        parts.append(count("kCaseListCount", len(self.lists)))
        parts.append(array("LanguageCase const kLanguageCases[]",
                           (f"{{{language},{code},{form}}}"
                            for language, code, form in self.language_cases)))
        parts.append(count("kLanguageCaseCount", len(self.language_cases)))
        parts.append(array("CodeSetCase const kCodeSetCases[]",
                           (f"{{{number},{code},{form}}}"
                            for number, code, form in self.set_cases)))
        parts.append(count("kCodeSetCaseCount", len(self.set_cases)))
        return "\n".join(parts)

    def values(self):
        yield from self.blocks
        yield from self.pages.values
        for upper, more, lower, whole in self.forms:
            yield from (upper, len(more), *more, lower, whole)
        for values in self.lists:
            yield len(values)
            yield from values
        for case in self.language_cases + self.set_cases:
            yield from case


def language_rows(languages, groups, variant_flags):
    for each in languages:
        flag = variant_flags.get(each.number, 0)
        yield (each.number, groups[each.script], int(flag != 0), int(each.case is not None), flag,
               each.name, each.tag)


def language_source(rows):
    lines = "\n".join(f'  {{{number}, {group}, {variants}, {case}, {flag}, "{name}", "{tag}"}},'
                      for number, group, variants, case, flag, name, tag in rows)
    return f"constinit XoLanguage const kLanguages[] = {{\n{lines}\n}};\n" + count(
        "kLanguageCount", len(rows))
