"""Collation elements of texts, at the root and in a language.

An element is (primary, secondary, tertiary). A primary is 0 or a pair (root weight, place), so that
a tailoring finds room between two of them; a secondary is a number, with fractions for the same
reason; a tertiary is a root weight or a `Form` given by a tailoring.
"""

import collections
import re

from unicode_data import DataError, Reading

Element = collections.namedtuple("Element", "primary secondary tertiary")
Form = collections.namedtuple("Form", "case marked")
Relation = collections.namedtuple("Relation", "path line strength anchor text")

COMMON = 0x20.__float__()
VARIANT = 0x11C  # secondaries from here on tell variants of a letter, such as ligatures, apart
UPPER_TERTIARIES = {8, 9, 0xA, 0xB, 0xC, 0x1D}
KANA_CASES = {0xD: 3, 0xE: 2, 0xF: 1, 0x10: 1, 0x11: 0, 0x12: 0, 0x13: 0}
BIDI_MARKS = "\u200E\u200F\u061C"


class Root:
    def __init__(self, characters, allkeys):
        self.characters = characters
        self.table = {}
        for text, elements in allkeys.items():
            self.table[text] = [
                Element((p, 0.0) if p else 0, float(s), t) for p, s, t in elements]
        self.suppressed = set()
        self.lengths = self._lengths()
        self.known = {}

    def _lengths(self):
        lengths = {}
        for text in self.table:
            lengths[text[0]] = max(lengths.get(text[0], 1), len(text))
        return lengths

    def find(self, text):
        return self.table.get(text)

    def of_code(self, code):
        return self.find((code,))

    def elements(self, text):
        """Elements of a tuple of codes; None where a character has none in the data."""
        if text not in self.known:
            self.known[text] = self._elements(self.characters.decompose(text))
        return self.known[text]

    def _elements(self, text):
        result = []
        index = 0
        while index < len(text):
            match = None
            limit = self.lengths.get(text[index], 1)
            if text[index] in self.suppressed:
                limit = 1
            for length in range(min(limit, len(text) - index), 0, -1):
                match = self.find(text[index:index + length])
                if match is not None:
                    break
            if match is None:
                return None
            matched = text[index:index + length]
            rest = list(text[index + length:])
            index += length
            # Marks further on may belong to the match, where no mark of their class is between.
            skipped = set()
            place = 0
            while (place < len(rest) and matched[0] not in self.suppressed
                   and self.characters.combining.get(rest[place], 0)):
                combining = self.characters.combining[rest[place]]
                longer = self.find(matched + (rest[place],))
                if combining not in skipped and longer is not None:
                    match = longer
                    matched += (rest[place],)
                    del rest[place]
                else:
                    skipped.add(combining)
                    place += 1
            text = text[:index] + tuple(rest)
            result.extend(match)
        return result


class Tailored(Root):
    """The root with a language's rules applied."""

    def __init__(self, root, path, rules):
        self.root = root
        self.characters = root.characters
        self.table = {}
        self.suppressed = set()
        self.lengths = dict(root.lengths)
        self.touched = set()
        self.places = collections.defaultdict(set)
        self.secondaries = set()
        self.relations = []
        self.shared_secondaries = {}
        self.path = path
        for code in range(0x20, 0x120):
            self.secondaries.add(float(code))
        self._apply(rules)

    def find(self, text):
        found = self.table.get(text)
        return self.root.find(text) if found is None else found

    def is_untouched(self, text):
        """Whether no rule says anything about any character of a text."""
        return self.touched.isdisjoint(self.characters.decompose(text))

    def elements(self, text):
        if self.is_untouched(text):
            return self.root.elements(text)
        return self._elements(self.characters.decompose(text))

    def _next_place(self, primary):
        weight, place = primary
        later = [each for each in self.places[weight] if each > place]
        new = (place + min(later)) / 2 if later else place + 1
        self.places[weight].add(new)
        return (weight, new)

    def _previous_place(self, primary):
        weight, place = primary
        self.places[weight].add(0.0)
        earlier = [each for each in self.places[weight] if each < place]
        new = (place + max(earlier)) / 2 if earlier else place - 1
        self.places[weight].add(new)
        return (weight, new)

    def _next_secondary(self, secondary):
        later = min(each for each in self.secondaries | {999.0} if each > secondary)
        new = (secondary + later) / 2
        self.secondaries.add(new)
        return new

    def _secondary_of_pair(self, previous, text, secondary):
        """The next secondary, and the same one again for the same letters in another case: &th<<<þ
        and &TH<<<Þ give one accent."""
        pair = tuple(tuple(self.characters.lower.get(code, code) for code in each)
                     for each in (previous, text))
        if pair not in self.shared_secondaries:
            self.shared_secondaries[pair] = self._next_secondary(secondary)
        return self.shared_secondaries[pair]

    def _previous_secondary(self, secondary):
        earlier = max(each for each in self.secondaries | {0.0} if each < secondary)
        new = (secondary + earlier) / 2
        self.secondaries.add(new)
        return new

    def _apply(self, rules):
        anchor = None
        with Reading(self.path, None) as place:
            for rule in rules:
                kind, line = rule[0], rule[1]
                place.line = line
                if kind == "suppress":
                    self.suppressed.update(rule[2])
                    self.touched.update(rule[2])
                elif kind == "reset":
                    _, _, before, anchor = rule
                    if anchor is None:
                        continue
                    current = self.elements(anchor)
                    if current is None:
                        raise DataError(self.path, line, "resets to a character without weights")
                    current = list(current)
                    previous = anchor
                    last = self._case_of_element(current[-1].tertiary)
                    if before == 1:
                        current[-1] = current[-1]._replace(
                            primary=self._previous_place(current[-1].primary))
                    elif before == 2:
                        current[-1] = current[-1]._replace(
                            secondary=self._previous_secondary(current[-1].secondary))
                    elif before:
                        raise DataError(self.path, line, f"resets before strength {before}")
                    fresh = before
                else:
                    _, _, strength, text, extension = rule
                    if anchor is None:
                        continue
                    text = self.characters.decompose(text)
                    case = self._case(text)
                    compatibility = len(text) == 1 and text[0] in self.characters.compatibility
                    combining = self.characters.category.get(text[0]) == "Mn" and len(text) == 1
                    marked = bool(extension) or compatibility or (strength == 3 and combining)
                    element = current[-1]
                    if element.primary and element.primary[0] == 0:
                        raise DataError(self.path, line, "tailors an ignorable character")
                    strengths = strength
                    if strength == 3 and not marked and last is not None and case >= last:
                        strengths = 2
                    if strengths == 1:
                        primary = element.primary
                        if not primary:
                            raise DataError(self.path, line, "gives a letter's place to a mark")
                        if fresh != 1:
                            primary = self._next_place(primary)
                        element = Element(primary, COMMON, None)
                    elif strengths == 2 and strength == 3:
                        element = element._replace(secondary=self._secondary_of_pair(
                            previous, text, element.secondary))
                    elif strengths == 2 and fresh != 2:
                        element = element._replace(
                            secondary=self._next_secondary(element.secondary))
                    if strength != 4:
                        element = element._replace(tertiary=Form(case, marked))
                    fresh = 0
                    if not extension and len(current) > 1 and strength != 4:
                        form = Form(case, False)
                        current = [each._replace(tertiary=form) if each.primary else each
                                   for each in current]
                    last = case if strength != 4 else last
                    current = current[:-1] + [element]
                    elements = list(current)
                    if extension:
                        elements = [each._replace(tertiary=Form(self._case_at(text, at), True))
                                    for at, each in enumerate(elements)]
                        elements += [each._replace(tertiary=Form(
                            self._case_of_element(each.tertiary), True))
                            for each in self.elements(extension)]
                    self.table[text] = elements
                    self.touched.update(text)
                    self.lengths[text[0]] = max(self.lengths.get(text[0], 1), len(text))
                    self.relations.append(Relation(self.path, line, strength, previous, text))
                    previous = text

    def _case_of_element(self, tertiary):
        return tertiary.case if isinstance(tertiary, Form) else case_of_tertiary(tertiary, False)

    def _case_at(self, text, index):
        return self.characters.case_of(text[min(index, len(text) - 1)])

    def _case(self, text):
        """3 for all lower, 2 for lower first, 1 for upper first, 0 for all upper."""
        letters = [self.characters.case_of(code) for code in text
                   if not self.characters.combining.get(code, 0)]
        if not letters or all(case == 3 for case in letters):
            return 3
        if all(case == 0 for case in letters):
            return 0
        return 2 if letters[0] == 3 else 1


def case_of_tertiary(tertiary, title):
    """Case bits: 3 lower, 0 upper, the other forms between."""
    if tertiary in KANA_CASES:
        return KANA_CASES[tertiary]
    if tertiary in (2, 4):
        return 3
    if tertiary in (8, 0xA):
        return 1 if title else 0
    return 1 if tertiary in UPPER_TERTIARIES else 2


def tokens(path, lines):
    """Yields (line, kind, text) of the rules: operators, brackets and strings."""
    for number, line in lines:
        with Reading(path, number):
            index = 0
            line = line.lstrip("\uFEFF")
            text = ""
            while index <= len(line):
                char = line[index] if index < len(line) else "\n"
                special = None
                if char in BIDI_MARKS:
                    index += 1
                    continue
                if char == "'":
                    end = line.find("'", index + 1)
                    if end < 0:
                        raise DataError(path, number, "a quotation is not closed")
                    quoted = line[index + 1:end] or "'"
                    text += re.sub(r"\\(.)", r"\1", quoted)
                    index = end + 1
                    continue
                if char == "\\":
                    found = re.match(r"\\+u([0-9A-Fa-f]{4})", line[index:])
                    if found:
                        text += chr(int(found[1], 16))
                        index += len(found[0])
                    else:
                        text += line[index + 1]
                        index += 2
                    continue
                if char in " \t\n#&<=/[|":
                    if text:
                        yield number, "text", tuple(ord(each) for each in text)
                        text = ""
                    if char == "#" or char == "\n":
                        break
                    if char == "[":
                        depth, end = 0, index
                        while end < len(line):
                            depth += {"[": 1, "]": -1}.get(line[end], 0)
                            end += 1
                            if depth == 0:
                                break
                        if depth:
                            raise DataError(path, number, "a bracket is not closed")
                        yield number, "option", line[index + 1:end - 1]
                        index = end
                        continue
                    if char == "<":
                        found = re.match("<+", line[index:])
                        if len(found[0]) > 3 or line[index + len(found[0]):][:1] == "*":
                            raise DataError(path, number, "uses a relation that is not known")
                        yield number, "relation", len(found[0])
                        index += len(found[0])
                        continue
                    if char == "|":
                        raise DataError(path, number, "uses a prefix")
                    special = {"&": "reset", "=": "equal", "/": "extend"}.get(char)
                    if special:
                        yield number, special, None
                    index += 1
                    continue
                text += char
                index += 1


def parse(path, lines):
    """Yields ('reset', line, before, anchor), ('rule', line, strength, text, extension) and
    ('suppress', line, codes). An anchor of None stands for rules about ignorable characters, which
    this system orders as symbols."""
    stream = list(tokens(path, lines))
    index = 0
    ignored = ("reorder", "normalization", "alternate", "caseFirst", "backwards")
    while index < len(stream):
        line, kind, value = stream[index]
        index += 1
        if kind == "option":
            if value.startswith("suppressContractions"):
                with Reading(path, line):
                    yield "suppress", line, [ord(each) for each in value.split("[")[1].rstrip("]")]
            elif not value.startswith(ignored):
                raise DataError(path, line, f"uses an option that is not known: [{value}]")
        elif kind == "reset":
            before = 0
            anchor = ()
            while index < len(stream) and stream[index][1] in ("option", "text"):
                _, inner, text = stream[index]
                if inner == "text":
                    if anchor is not None:
                        anchor += text
                elif text.startswith("before"):
                    with Reading(path, line):
                        before = int(text.split()[1])
                elif text == "last secondary ignorable":
                    anchor = None
                else:
                    raise DataError(path, line, f"resets to [{text}]")
                index += 1
            if anchor == ():
                raise DataError(path, line, "resets to nothing")
            yield "reset", line, before, anchor
        elif kind in ("relation", "equal"):
            if index >= len(stream) or stream[index][1] != "text":
                raise DataError(path, line, "a relation without a text")
            text = stream[index][2]
            index += 1
            extension = ()
            if index + 1 < len(stream) and stream[index][1] == "extend" and (
                    stream[index + 1][1] == "text"):
                extension = stream[index + 1][2]
                index += 2
            yield "rule", line, 4 if kind == "equal" else value, text, extension
        else:
            raise DataError(path, line, "cannot be read as a rule")
