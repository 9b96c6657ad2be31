"""Readers of the published Unicode and CLDR files.

Every reader names the file and the line that it cannot read (`DataError`), and the caller checks
the versions that the files give against those that the generator was written for.
"""

import os
import re

BMP = 0x10000
UNICODE_VERSION = "15.0.0"
CLDR_VERSION = "41"


class DataError(Exception):
    """A data file that is missing, of another version, or cannot be read."""

    def __init__(self, path, line, message):
        where = path if line is None else f"{path}:{line}"
        super().__init__(f"{where}: {message}")


class Reading:
    """While a line is read, what is wrong with it is told with its file and number."""

    def __init__(self, path, line):
        self.path = path
        self.line = line

    def __enter__(self):
        return self

    def __exit__(self, kind, error, trace):
        if isinstance(error, (ValueError, LookupError, TypeError, RecursionError)):
            raise DataError(self.path, self.line, f"cannot be read ({error})") from error


def read_file(path):
    try:
        with open(path, "rb") as file:
            data = file.read()
        return data.decode("utf-8")
    except OSError as error:
        raise DataError(path, None, error.strerror) from error
    except UnicodeDecodeError as error:
        line = data.count(b"\n", 0, error.start) + 1
        raise DataError(path, line, "is not UTF-8") from error


def read_lines(path):
    """Yields (number, text) of the lines of a file that hold data, without comments."""
    for number, line in enumerate(read_file(path).split("\n"), 1):
        line = line.split("#")[0].strip()
        if line:
            yield number, line


def first_match(path, pattern):
    found = re.search(pattern, read_file(path), re.MULTILINE)
    return found[1] if found else None


def check_versions(folder, accept_other):
    """Refuses files of another version than the one that the generator was written for."""
    expected = [
        ("allkeys.txt", r"^@version (\S+)", UNICODE_VERSION),
        ("Scripts.txt", r"^# Scripts-(\S+)\.txt", UNICODE_VERSION),
        ("SpecialCasing.txt", r"^# SpecialCasing-(\S+)\.txt", UNICODE_VERSION),
        ("cldr/common/dtd/ldml.dtd", r'cldrVersion CDATA #FIXED "([^"]+)"', CLDR_VERSION),
    ]
    for name, pattern, wanted in expected:
        path = os.path.join(folder, name)
        version = first_match(path, pattern)
        if version is None:
            raise DataError(path, None, "does not tell its version")
        if version != wanted and not accept_other:
            raise DataError(path, None, f"is version {version}, and the generator was written for "
                            f"{wanted}; --accept-version takes it all the same")


def code_points(text):
    codes = tuple([int(word, 16) for word in text.split()])
    if codes and not 0 <= min(codes) <= max(codes) < 0x110000:
        raise ValueError(f"'{text}' is beyond the last code point")
    return codes


class Characters:
    """Category, combining class, decomposition and case of the characters of the BMP."""

    def __init__(self, folder):
        self.category = {}
        self.combining = {}
        self.canonical = {}
        self.compatibility = set()
        self.upper = {}
        self.lower = {}
        self.name = {}
        self.decomposed = {}
        path = os.path.join(folder, "UnicodeData.txt")
        self.range_start = None
        lines = {}
        for number, line in read_lines(path):
            with Reading(path, number):
                fields = line.split(";")
                if len(fields) != 15:
                    raise ValueError(f"{len(fields)} fields where 15 are expected")
                (code,) = code_points(fields[0])
                if code >= BMP:
                    break
                lines[code] = number
                self._add(code, fields)
        self.compose = {}
        for code, parts in self.canonical.items():
            with Reading(path, lines[code]):
                self.decompose((code,))
                if len(parts) == 2 and self.combining[parts[0]] == 0:
                    self.compose.setdefault(parts, code)
        # Characters that stand for another one or, of marks, for two.
        self.other_marks = {code: self.decompose((code,)) for code in self.canonical
                            if self.combining[code]}
        self.other_letters = {}
        for code, parts in self.canonical.items():
            if len(parts) == 1 and not self.combining[code]:
                self.other_letters.setdefault(parts[0], []).append(code)

    def _add(self, code, fields):
        if fields[1].endswith("First>"):
            self.range_start = code
            return
        first = code if self.range_start is None else self.range_start
        self.range_start = None
        for each in range(first, code + 1):
            self.category[each] = fields[2]
        self.name[code] = fields[10] if fields[1] == "<control>" else fields[1]
        self.combining[code] = int(fields[3])
        if fields[5].startswith("<"):
            self.compatibility.add(code)
        elif fields[5]:
            self.canonical[code] = code_points(fields[5])
        for forms, field in ((self.upper, fields[12]), (self.lower, fields[13])):
            if field:
                (forms[code],) = code_points(field)

    def decompose(self, text):
        """The canonical decomposition of a tuple of codes."""
        if text not in self.decomposed:
            self.decomposed[text] = self._decompose(text)
        return self.decomposed[text]

    def _decompose(self, text):
        result = []
        for code in text:
            if code in self.canonical:
                result.extend(self.decompose(self.canonical[code]))
            else:
                result.append(code)
        start = 0
        while start < len(result):
            end = start
            while end < len(result) and self.combining.get(result[end], 0) != 0:
                end += 1
            if end > start:
                result[start:end] = sorted(result[start:end], key=lambda c: self.combining[c])
            start = end + 1
        return tuple(result)

    def case_of(self, code):
        """3 for lower case, 1 for title case, 0 for upper case; 3 for what has no case."""
        category = self.category.get(code)
        return 0 if category == "Lu" else 1 if category == "Lt" else 3


def read_scripts(folder):
    path = os.path.join(folder, "Scripts.txt")
    scripts = {}
    for number, line in read_lines(path):
        found = re.fullmatch(r"([0-9A-F]+)(?:\.\.([0-9A-F]+))?\s*;\s*(\w+)", line)
        if not found:
            raise DataError(path, number, "is no range with its script")
        first, last = int(found[1], 16), int(found[2] or found[1], 16)
        if last < first:
            raise DataError(path, number, "is a range that ends before it starts")
        for code in range(first, min(last, BMP - 1) + 1):
            scripts[code] = found[3]
    return scripts


def read_special_casing(folder):
    """(upper, lower, condition) by code: the case forms of several characters."""
    path = os.path.join(folder, "SpecialCasing.txt")
    rows = []
    for number, line in read_lines(path):
        with Reading(path, number):
            fields = [field.strip() for field in line.split(";")]
            if len(fields) < 5:
                raise ValueError(f"{len(fields)} fields where 5 or 6 are expected")
            (code,) = code_points(fields[0])
            lower, _, upper = (code_points(field) for field in fields[1:4])
            if (not lower or not upper) and " After" not in " " + fields[4]:
                raise ValueError("a form without characters")
        if code < BMP and all(each < BMP for each in upper + lower):
            rows.append((code, upper, lower, fields[4]))
    return rows


def read_allkeys(folder):
    """Collation elements, as (primary, secondary, tertiary), of characters and sequences."""
    path = os.path.join(folder, "allkeys.txt")
    table = {}
    with Reading(path, None) as place:
        for number, line in read_lines(path):
            place.line = number
            if line.startswith("@"):
                continue
            found = re.fullmatch(r"([0-9A-F ]+?)\s*;\s*((?:\[[.*][0-9A-F.]+\])+)", line)
            if not found:
                raise ValueError("no sequence with its collation elements")
            text = code_points(found[1])
            elements = []
            for element in re.findall(r"\[[.*]([0-9A-F.]+)\]", found[2]):
                primary, secondary, tertiary = element.split(".")
                elements.append((int(primary, 16), int(secondary, 16), int(tertiary, 16)))
            if text and max(text) < BMP:
                table[text] = elements
    return table


def read_exemplars(folder, locale, kind):
    """The strings of a locale's exemplar set, `main` or `auxiliary`. Every locale has a main set;
    one without an auxiliary set gives nothing."""
    path = os.path.join(folder, "cldr/common/main", locale + ".xml")
    text = read_file(path)
    attribute = "" if kind == "main" else ' type="auxiliary"'
    found = re.search(rf"<exemplarCharacters{attribute}(?: draft=\"\w+\")?>\[(.*?)\]<", text)
    if not found:
        element = re.search(rf"<exemplarCharacters{attribute or '(?![^>]*type=)'}", text)
        if element or kind == "main":
            line = text.count("\n", 0, element.start()) + 1 if element else None
            raise DataError(path, line, f"has no {kind} exemplar set that can be read")
        return []
    line = text.count("\n", 0, found.start()) + 1
    with Reading(path, line):
        return exemplar_strings(found[1])


def exemplar_strings(text):
    body = re.sub(r"\\u([0-9A-Fa-f]{4})", lambda match: chr(int(match[1], 16)), text)
    strings = []
    index = 0
    while index < len(body):
        if body[index] == "{":
            end = body.find("}", index)
            if end < 0:
                raise ValueError("a brace of the exemplar set is not closed")
            strings.append(body[index + 1:end])
            index = end + 1
        elif body[index] == "-" and strings and index + 1 < len(body) and body[index + 1] != " ":
            first, last = ord(strings[-1]), ord(body[index + 1])
            if last < first:
                raise ValueError("a range of the exemplar set ends before it starts")
            strings.extend(chr(code) for code in range(first + 1, last + 1))
            index += 2
        else:
            if body[index] == "\\":
                index += 1
            if body[index] != " ":
                strings.append(body[index])
            index += 1
    return strings


def read_tailoring(folder, locale, kind):
    """(path, [(line, text)]) of the rules of a locale's collation of a kind."""
    path = os.path.join(folder, "cldr/common/collation", locale + ".xml")
    text = read_file(path)
    for found in re.finditer(r"<collation\s([^>]*)>(.*?)</collation\s*>", text, re.S):
        if f'type="{kind}"' not in found[1] or "alt=" in found[1]:
            continue
        first = text.count("\n", 0, found.start(2)) + 1
        body = re.sub(r"<cr><!\[CDATA\[|\]\]></cr>", "", found[2])
        body = re.sub(r"<!--.*?-->", lambda match: "\n" * match[0].count("\n"), body, flags=re.S)
        return path, list(enumerate(body.split("\n"), first))
    raise DataError(path, None, f"has no collation '{kind}'")
