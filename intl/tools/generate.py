#!/usr/bin/env python3
"""Generates the tables of intl/data/ from Debian's unicode-data and unicode-cldr-core and from
Python's code-page codecs.

The collation version is kept in intl/data/collation_versions.txt, a line for each version with its
fingerprint. Tables with another fingerprint than the last one need --new-version: they make every
index of texts that was built before unusable until it is rebuilt.
"""

import argparse
import collections
import os
import sys

import code_sets
import emit
import languages
from collation import Root, Tailored, parse
from order_layout import GROUP_NUMBER, LanguageLayout, RootLayout
from order_tables import OrderTables
from unicode_data import (CLDR_VERSION, UNICODE_VERSION, Characters, DataError, Reading,
                          check_versions, read_allkeys, read_exemplars, read_lines, read_scripts,
                          read_special_casing, read_tailoring)

Tables = collections.namedtuple("Tables", "orders sets case rows")

VERSIONS_FILE = "collation_versions.txt"


def read_languages(folder, characters):
    """Exemplar texts by language, and the chief letters by script."""
    exemplars, chief = {}, {}
    for language in languages.LANGUAGES:
        if language.exemplars is None:
            continue
        sets = []
        for kind in ("main", "auxiliary"):
            texts = [tuple(ord(char) for char in text)
                     for text in read_exemplars(folder, language.exemplars, kind)]
            for text in texts:
                chief.setdefault(language.script, set()).update(characters.decompose(text), text)
            sets.append(texts)
        exemplars[language.number] = sets
    return exemplars, chief


def read_rules(folder, language):
    """The file of a language's collation and its rules."""
    if language.collation is None:
        return folder, []
    path, lines = read_tailoring(folder, *language.collation)
    return path, list(parse(path, lines))


def generate(folder):
    """All tables, from the published files in a folder. The files are read before anything is laid
    out, so that one that cannot be read is told at once."""
    characters = Characters(folder)
    special = read_special_casing(folder)
    exemplars, chief = read_languages(folder, characters)
    texts = [text for sets in exemplars.values() for each in sets for text in each]
    scripts = read_scripts(folder)
    rules = {each.number: read_rules(folder, each) for each in languages.LANGUAGES}
    root_collation = Root(characters, read_allkeys(folder))
    tailored = {number: Tailored(root_collation, *rules[number]) for number in exemplars}
    root = RootLayout(root_collation, scripts, chief, texts)
    layouts, adopted = {}, {}
    for language in sorted(languages.LANGUAGES, key=lambda each: not each.adopted):
        if language.number not in exemplars:
            continue
        layout = LanguageLayout(
            root, language, tailored[language.number], *exemplars[language.number])
        if language.adopted:
            codes = [code for code, script in scripts.items() if script == language.script]
            root.adopt(layout, codes)
            adopted.update((code, layout) for code in codes)
        else:
            layouts[language.number] = layout
    to_unicode = {each.number: code_sets.to_unicode(each) for each in code_sets.CODE_SETS}
    from_unicode = {each.number: code_sets.from_unicode(each, to_unicode[each.number])
                    for each in code_sets.CODE_SETS}
    orders = OrderTables(characters, root, layouts, adopted, code_sets.CODE_SETS, to_unicode)
    sets = emit.CodeSetData(code_sets.CODE_SETS, to_unicode, from_unicode, code_sets.UNDEFINED,
                            orders.table_start, orders.unicode_start)
    case = emit.CaseData(characters, special, languages.LANGUAGES, from_unicode)
    rows = list(emit.language_rows(languages.LANGUAGES, GROUP_NUMBER, orders.variant_flags))

    return Tables(orders, sets, case, rows)


def fingerprint_of(tables):
    fingerprint = emit.Fingerprint()
    fingerprint.add(emit.order_values(tables.orders))
    fingerprint.add(tables.sets.values())
    fingerprint.add(tables.case.values())
    fingerprint.add(value for row in tables.rows for value in row[:5])
    return fingerprint.value


def sources_of(tables):
    """The sources by file name but for the version's."""
    orders, sets, case, rows = tables
    order_tables, records = sets.records_source()
    return {
        "order_data.cpp": emit.order_source(orders),
        "mapping_data.cpp": sets.source(),
        "case_data.cpp": case.source(),
        "language_data.cpp": emit.language_source(rows),
        "code_set_data.cpp": "\n".join([
            "// The bounds let addresses of elements be constants.",
            f"XO_EXPORT extern CharOrderEntry const kOrderEntries[{len(orders.entries)}];",
            f"extern LetterHead const kLetterHeads[{len(orders.heads)}];",
            f"extern CodeSetTables const kCodeSetTables[{len(sets.tables)}];", "",
            "namespace {", "",
            "constinit OrderTable const kOrderTables[] = {", *order_tables, "};", "",
            "}  // namespace", "",
            "constinit XoCodeSet const kCodeSets[] = {", *records, "};",
            emit.count("kCodeSetCount", len(records)),
            emit.array("unsigned char const kCodeSetPlaces[256]", emit.numbers(sets.places))]),
    }


def read_versions(path):
    versions = []
    for number, line in read_lines(path):
        with Reading(path, number):
            version, fingerprint = line.split()
            if int(version) != len(versions) + 1:
                raise ValueError("not the version that follows")
            versions.append(int(fingerprint, 16))
    return versions


def write(folder, name, body):
    text = emit.HEADER.format(unicode=UNICODE_VERSION, cldr=CLDR_VERSION)
    with open(os.path.join(folder, name), "w", encoding="utf-8", newline="\n") as file:
        file.write(text + "\n" + body.rstrip("\n") + "\n\n}  // namespace xo::intl\n")


def publish(tables, versions_path, new_version, output):
    """Writes the tables, and their fingerprint where it is that of a new version."""
    fingerprint = fingerprint_of(tables)
    versions = read_versions(versions_path)
    if not versions or versions[-1] != fingerprint:
        if not new_version:
            raise DataError(versions_path, None,
                            f"the tables' fingerprint {fingerprint:016x} is not that of the last "
                            "version; changed tables need --new-version")
        versions.append(fingerprint)
        with open(versions_path, "a", encoding="utf-8", newline="\n") as file:
            file.write(f"{len(versions)} {fingerprint:016x}\n")
    sources = sources_of(tables)
    sources["version_data.cpp"] = (
        emit.count("kCollationVersion", len(versions))
        + f"constinit unsigned long long const kCollationFingerprint = {fingerprint:#018x};\n")
    for name, body in sources.items():
        write(output, name, body)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--data", default="/usr/share/unicode",
                        help="folder of the published files (default %(default)s)")
    parser.add_argument("--output", default=os.path.join(here, "..", "data"),
                        help="folder to write to (default %(default)s)")
    parser.add_argument("--versions", default=os.path.join(here, "..", "data", VERSIONS_FILE),
                        help="list of collation versions (default %(default)s)")
    parser.add_argument("--new-version", action="store_true",
                        help="take changed tables as the next collation version")
    parser.add_argument("--accept-version", action="store_true",
                        help="take data files of another version than the generator was "
                        "written for")
    arguments = parser.parse_args()
    try:
        check_versions(arguments.data, arguments.accept_version)
        read_versions(arguments.versions)
        publish(generate(arguments.data), arguments.versions, arguments.new_version,
                arguments.output)
    except DataError as error:
        print(f"generate.py: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
