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


def read_lines(path):
    """Yields (number, text) of the lines of a file that hold data, without comments."""
    try:
        with open(path, encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                line = line.split("#")[0].strip()
                if line:
                    yield number, line
    except OSError as error:
        raise DataError(path, None, error.strerror) from error
    except UnicodeDecodeError as error:
        raise DataError(path, None, "is not UTF-8") from error


def first_match(path, pattern):
    try:
        with open(path, encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                found = re.search(pattern, line)
                if found:
                    return found[1]
    except OSError as error:
        raise DataError(path, None, error.strerror) from error
    return None


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


def code_points(path, number, text):
    try:
        return tuple(int(word, 16) for word in text.split())
    except ValueError as error:
        raise DataError(path, number, f"'{text}' is no list of code points") from error


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
        range_start = None
        for number, line in read_lines(path):
            fields = line.split(";")
            if len(fields) != 15:
                raise DataError(path, number, f"{len(fields)} fields where 15 are expected")
            (code,) = code_points(path, number, fields[0])
            if code >= BMP:
                break
            if fields[1].endswith("First>"):
                range_start = code
                continue
            first = code if range_start is None else range_start
            range_start = None
            for each in range(first, code + 1):
                self.category[each] = fields[2]
            self.name[code] = fields[10] if fields[1] == "<control>" else fields[1]
            self.combining[code] = int(fields[3])
            if fields[5].startswith("<"):
                self.compatibility.add(code)
            elif fields[5]:
                self.canonical[code] = code_points(path, number, fields[5])
            if fields[12]:
                self.upper[code] = int(fields[12], 16)
            if fields[13]:
                self.lower[code] = int(fields[13], 16)
        self.compose = {}
        for code, parts in self.canonical.items():
            if len(parts) == 2 and self.combining[parts[0]] == 0:
                self.compose.setdefault(parts, code)
        # Characters that stand for another one or, of marks, for two.
        self.other_marks = {code: self.decompose((code,)) for code in self.canonical
                            if self.combining[code]}
        self.other_letters = {}
        for code, parts in self.canonical.items():
            if len(parts) == 1 and not self.combining[code]:
                self.other_letters.setdefault(parts[0], []).append(code)

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
        for code in range(int(found[1], 16), min(int(found[2] or found[1], 16), BMP - 1) + 1):
            scripts[code] = found[3]
    return scripts


def read_special_casing(folder):
    """(upper, lower, condition) by code: the case forms of several characters."""
    path = os.path.join(folder, "SpecialCasing.txt")
    rows = []
    for number, line in read_lines(path):
        fields = [field.strip() for field in line.split(";")]
        if len(fields) < 5:
            raise DataError(path, number, f"{len(fields)} fields where 5 or 6 are expected")
        (code,) = code_points(path, number, fields[0])
        lower = code_points(path, number, fields[1])
        upper = code_points(path, number, fields[3])
        if code < BMP and all(each < BMP for each in upper + lower):
            rows.append((code, upper, lower, fields[4]))
    return rows


def read_allkeys(folder):
    """Collation elements, as (primary, secondary, tertiary), of characters and sequences."""
    path = os.path.join(folder, "allkeys.txt")
    table = {}
    for number, line in read_lines(path):
        if line.startswith("@"):
            continue
        found = re.fullmatch(r"([0-9A-F ]+?)\s*;\s*((?:\[[.*][0-9A-F.]+\])+)", line)
        if not found:
            raise DataError(path, number, "is no sequence with its collation elements")
        text = code_points(path, number, found[1])
        if any(code >= BMP for code in text):
            continue
        elements = []
        for element in re.findall(r"\[[.*]([0-9A-F.]+)\]", found[2]):
            weights = element.split(".")
            if len(weights) != 3:
                raise DataError(path, number, f"'{element}' is no collation element")
            elements.append(tuple(int(weight, 16) for weight in weights))
        table[text] = elements
    return table


def read_file(path):
    try:
        with open(path, encoding="utf-8") as file:
            return file.read()
    except OSError as error:
        raise DataError(path, None, error.strerror) from error


def read_exemplars(folder, locale, kind):
    """The strings of a locale's exemplar set, `main` or `auxiliary`; empty without one."""
    path = os.path.join(folder, "cldr/common/main", locale + ".xml")
    text = read_file(path)
    attribute = "" if kind == "main" else ' type="auxiliary"'
    found = re.search(rf"<exemplarCharacters{attribute}(?: draft=\"\w+\")?>\[(.*?)\]<", text)
    if not found:
        return []
    line = text.count("\n", 0, found.start()) + 1
    body = re.sub(r"\\u([0-9A-Fa-f]{4})", lambda match: chr(int(match[1], 16)), found[1])
    strings = []
    index = 0
    while index < len(body):
        if body[index] == "{":
            end = body.find("}", index)
            if end < 0:
                raise DataError(path, line, "a brace of the exemplar set is not closed")
            strings.append(body[index + 1:end])
            index = end + 1
        elif body[index] == "-" and strings and index + 1 < len(body) and body[index + 1] != " ":
            first, last = ord(strings[-1]), ord(body[index + 1])
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
