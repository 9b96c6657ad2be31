"""Sort orders: how collation elements become numbers of 16 bits.

A letter's order holds a slot (letter value and extension, 7 bits), an accent (5 bits) and a case
(2 bits). Every script has its own slots. The chief letters, those of an alphabet in use, take slots
of their own; the rarer letters between two of them share the slot behind the first one, told apart
by accents above 14.
"""

import collections

from collation import VARIANT, Form, case_of_tertiary
from spelling import compose, parts_of

SPACE, FIRST_SYMBOL, FIRST_FREE_SYMBOL, FIRST_DIGIT, FIRST_LETTER = 32, 80, 220, 16128, 16384
UNDEFINED = 13
# Symbols that stand for no character: they tell accents beyond the last number apart, and forms.
FIRST_MARKER, FIRST_FORM_MARKER = 15000, 15100
FIRST_SLOT, LAST_SLOT = 12, 127
BEHIND_Z = 116
FIRST_FREE_ACCENT, LAST_ACCENT = 15, 31
LAST_LATIN_1 = 0xFF

GROUPS = ["Latin", "Greek", "Cyrillic", "Georgian", "Armenian", "Hebrew", "Arabic", "Devanagari",
          "Bengali", "Gurmukhi", "Gujarati", "Oriya", "Tamil", "Telugu", "Kannada", "Malayalam",
          "Thai", "Kana"]
GROUP_NUMBER = {script: number for number, script in enumerate(GROUPS, 2)}

NAMED_ACCENTS = {0x327: 1, 0x301: 2, 0x300: 3, 0x302: 4, 0x303: 5, 0x308: 6, 0x30A: 7, 0x338: 8,
                 0x335: 8, 0x30C: 9, 0x304: 10, 0x306: 11, 0x307: 12, 0x328: 13, 0x30B: 14}

SYMBOLS = {
    0x5F: 112, 0xAF: 114, 0xAD: 115, 0x2D: 116, 0x2C: 117, 0x3B: 118, 0x3A: 119, 0x21: 120,
    0xA1: 121, 0x3F: 122, 0x2F: 124, 0x2E: 126, 0xB7: 129, 0xB8: 130, 0x27: 132, 0x22: 135,
    0xAB: 138, 0xBB: 139, 0x28: 140, 0x29: 142, 0x5B: 144, 0x5D: 145, 0x7B: 146, 0x7D: 147,
    0xA7: 148, 0xB6: 149, 0xA9: 150, 0xAE: 151, 0x40: 153, 0xA4: 154, 0xA2: 155, 0x24: 156,
    0xA3: 157, 0xA5: 158, 0x2A: 159, 0x5C: 160, 0x26: 161, 0x23: 162, 0x25: 163, 0x2B: 165,
    0xB1: 167, 0x60: 169, 0x5E: 171, 0xA8: 174, 0x7E: 176, 0xF7: 178, 0xD7: 179, 0x3C: 181,
    0x3D: 183, 0x3E: 185, 0xAC: 186, 0x7C: 187, 0xA6: 188, 0xB0: 189, 0xB5: 190, 0xBF: 219,
}

Letter = collections.namedtuple("Letter", "primary accents case")  # accents: secondaries
Orders = collections.namedtuple("Orders", "group values")


def secondary_key(accents):
    """Sort key of a letter's secondaries: accents count from the end."""
    return tuple(reversed(accents))


def join(elements):
    """Puts secondaries to the letter that they belong to: [(primary, accents, tertiary)]."""
    result = []
    pending = []
    for element in elements:
        if element.primary:
            result.append([element.primary, [element.secondary] + pending, element.tertiary])
            pending = []
        elif element.secondary >= VARIANT:
            pending.append(element.secondary)
        elif element.secondary:
            if result:
                result[-1][1].append(element.secondary)
            else:
                result.append([0, [element.secondary], element.tertiary])
    if pending and result:
        result[-1][1].extend(pending)
    return [(primary, tuple(accents), tertiary) for primary, accents, tertiary in result]


def counts(characters, text, accents):
    """Whether a letter with accents is one in its own right, with a number for its accents. Marks
    that a compatibility character puts behind its letters stay marks, as in the text that it
    stands for."""
    return (plain(accents) or len(text) > 1 or text[0] not in characters.compatibility
            or accents[-1] >= VARIANT or accents[-1] != int(accents[-1]))


def is_ligature(accents):
    """Whether an accent tells a ligature from its letters. Ligatures get numbers before rare marks
    do: they are frequent, and what has a number needs no further order."""
    return accents[-1] >= VARIANT


def plain(accents):
    return len(accents) == 1 and accents[0] == 32.0


class Layout:
    """What is common to the root and the languages: from elements to orders."""

    def script_of(self, primary):
        return self.root.scripts.get(primary[0])

    def orders_of_elements(self, elements, title=False, marked=False):
        """Orders of joined elements, or None where a script has none. A marker behind a text
        that is `marked` tells it from the letters that it stands for."""
        values = []
        group = None
        digits = 0
        for primary, accents, tertiary in join(elements):
            if primary == 0:
                values.append(self.mark_symbol(accents[0]))
            elif primary[0] in self.root.digits:
                digits += 1
                values.append(FIRST_DIGIT + 10 * self.root.digits[primary[0]])
            elif primary[0] < self.root.first_digit:
                values.append(self.symbol_of_primary(primary))
            else:
                script = self.script_of(primary)
                if script is None:
                    return None
                group = group or GROUP_NUMBER[script]
                if isinstance(tertiary, Form):
                    case = tertiary.case
                    marked = marked or tertiary.marked
                else:
                    case = case_of_tertiary(tertiary, title)
                slot = self.slots[primary]
                loose = []
                while (primary, accents) not in self.accents:
                    loose.insert(0, self.mark_symbol(accents[-1]))
                    accents = accents[:-1]
                accent, marker = self.accents[(primary, accents)]
                values.append(FIRST_LETTER | case << 12 | accent << 7 | slot)
                assert marker < FIRST_FORM_MARKER - FIRST_MARKER
                if marker:
                    values.append(FIRST_MARKER + marker)
                values.extend(loose)
        if not values:
            return Orders(0, (UNDEFINED,))
        if digits > 1 and values[0] >= FIRST_DIGIT and values[0] < FIRST_LETTER:
            # A fraction is its digits: what tells it from other numbers is the mark on the first.
            values = [values[0] + 1] + [value for value in values[1:] if value >= FIRST_DIGIT]
        if marked:
            values.append(FIRST_FORM_MARKER)
        return Orders(group or 0, tuple(values))


class RootLayout(Layout):
    def __init__(self, root, scripts, chief, exemplars):
        """`chief` gives, by script, the codes of the letters that have slots of their own."""
        self.root = self
        self.collation = root
        self.characters = root.characters
        self.known = {}
        self.digits = {root.of_code(0x30 + digit)[0].primary[0]: digit for digit in range(10)}
        self.first_digit = min(self.digits)
        self.named = {}
        for code, accent in NAMED_ACCENTS.items():
            self.named[root.of_code(code)[0].secondary] = accent
        self._collect_texts(exemplars)
        self._find_scripts(scripts)
        self._number_symbols()
        self._place_letters(chief)
        self._number_accents()
        self._order_characters()

    def joined(self, text):
        """The letters of a text with their secondaries."""
        if text not in self.known:
            self.known[text] = join(self.collation.elements(text) or [])
        return self.known[text]

    def _find_scripts(self, scripts):
        self.scripts = {}
        self.primaries = collections.defaultdict(list)
        owner = {}
        for text, elements in self.collation.table.items():
            first = elements[0].primary
            if len(text) == 1 and len(elements) == 1 and first and first[0] > max(self.digits):
                script = scripts.get(text[0], "Common")
                script = "Kana" if script in ("Hiragana", "Katakana") else script
                if script not in ("Common", "Inherited") or first[0] not in owner:
                    if owner.get(first[0], "Common") in ("Common", "Inherited"):
                        owner[first[0]] = script
        previous = None
        for weight in sorted(owner):
            script = owner[weight]
            if script in ("Common", "Inherited"):
                script = previous
            previous = script
            if script in GROUP_NUMBER:
                self.scripts[weight] = script
                self.primaries[script].append((weight, 0.0))

    def _number_symbols(self):
        """Numbers for spaces and symbols, in the data's order; marks come last."""
        spaces, symbols, marks = [], [], []
        for code in range(0x10000):
            elements = self.collation.of_code(code)
            category = self.characters.category.get(code, "Cn")
            if elements is None or category in ("Cc", "Cs"):
                continue
            if category[0] == "Z":
                spaces.append((code != 0x20, elements[0].primary, elements[0].tertiary, code))
            elif elements[0].primary and elements[0].primary[0] < self.first_digit:
                key = [(e.primary or (0, 0), e.secondary, e.tertiary) for e in elements]
                symbols.append((key, code))
            elif not elements[0].primary and elements[0].secondary:
                marks.append(([(e.secondary, e.tertiary) for e in elements], code))
        self.space = {}
        for place, (*_, code) in enumerate(sorted(spaces)):
            self.space[code] = SPACE + place
        self.symbol = dict(SYMBOLS)
        self.symbols_by_primary = {}
        self.marks_by_secondary = {}
        number = FIRST_FREE_SYMBOL
        for key, code in sorted(symbols):
            if code not in self.symbol:
                self.symbol[code] = number
                number += 2
            if len(key) == 1:
                self.symbols_by_primary.setdefault(key[0][0], self.symbol[code])
        for code, value in self.space.items():
            elements = self.collation.of_code(code)
            self.symbols_by_primary.setdefault(elements[0].primary, value)
        self.symbols_by_primary[self.collation.of_code(0x20)[0].primary] = self.space[0x20]
        for key, code in sorted(marks):
            self.symbol[code] = number
            self.marks_by_secondary.setdefault(key[0][0], number)
            number += 2
        self._share_equivalents()
        assert number <= FIRST_MARKER and len(self.space) < FIRST_SYMBOL - SPACE

    def _share_equivalents(self):
        """Canonical equivalents have one number."""
        for table in (self.space, self.symbol):
            first = {}
            for code in sorted(table):
                form = self.characters.decompose((code,))
                if len(form) == 1 and form[0] in table:
                    table[code] = table[form[0]]
                else:
                    table[code] = table[first.setdefault(form, code)]

    def symbol_of_primary(self, primary):
        return self.symbols_by_primary[primary]

    def mark_symbol(self, secondary):
        found = self.marks_by_secondary.get(secondary)
        return self.symbol[0x301] if found is None else found

    def _place_letters(self, chief):
        self.slots = {}
        self.chief = {}
        self.owner = {}
        for script, primaries in self.primaries.items():
            chiefs = {self.collation.of_code(code)[0].primary for code in chief.get(script, ())
                      if self.collation.of_code(code)}
            chiefs &= set(primaries)
            if script == "Latin":
                self._place_latin(primaries, chiefs)
            else:
                self._place_others(primaries, chiefs)
            self.chief[script] = [each for each in primaries if each in chiefs]

    def _place_latin(self, primaries, chiefs):
        ascii_letters = {self.collation.of_code(code)[0].primary: code - 0x61
                         for code in range(0x61, 0x7B)}
        self.ascii = ascii_letters
        last = FIRST_SLOT
        for primary in primaries:
            if primary in ascii_letters:
                slot = (3 + ascii_letters[primary]) << 2
            elif last < (28 << 2):
                slot = last | 3
            elif primary == self.collation.of_code(0xFE)[0].primary:
                slot = BEHIND_Z
            elif last >= BEHIND_Z:
                slot = LAST_SLOT
            else:
                slot = last | 3
            self._take(slot, primary, chiefs)
            last = slot

    def _place_others(self, primaries, chiefs):
        room = LAST_SLOT - FIRST_SLOT + 1
        if not chiefs and len(primaries) * 2 <= room:
            chiefs.update(primaries)
        if chiefs and len(chiefs) * 2 <= room:
            slot = FIRST_SLOT - 2
            for primary in primaries:
                if primary in chiefs:
                    slot += 2
                    self._take(slot, primary, chiefs)
                else:
                    self._take(max(slot, FIRST_SLOT - 2) + 1, primary, chiefs)
        else:
            for place, primary in enumerate(primaries):
                if place < room:
                    chiefs.add(primary)
                self._take(min(FIRST_SLOT + place, LAST_SLOT), primary, chiefs)

    def _take(self, slot, primary, chiefs):
        self.slots[primary] = slot
        if slot not in self.owner.setdefault(self.scripts[primary[0]], {}) or primary in chiefs:
            self.owner[self.scripts[primary[0]]][slot] = primary

    def _number_accents(self):
        used = collections.defaultdict(set)
        for text in self.texts():
            elements = self.collation.elements(text)
            for primary, accents, _ in join(elements or []):
                if primary and primary in self.slots and counts(
                        self.characters, text, accents):
                    used[(self.script_of(primary), self.slots[primary])].add((primary, accents))
        for primary in self.slots:
            used[(self.script_of(primary), self.slots[primary])].add((primary, (32.0,)))
        self.accents = {}
        for (script, slot), letters in used.items():
            owner = self.owner[script][slot]
            rest = []
            for primary, accents in letters:
                fixed = self.fixed_accent(accents, self.named) if primary == owner else None
                if fixed is not None and (fixed, owner) not in rest:
                    self.accents[(primary, accents)] = (fixed, 0)
                else:
                    rest.append((primary != owner, primary, secondary_key(accents), accents))
            self._number_rest(rest)

    def _number_rest(self, rest):
        accent, marker = FIRST_FREE_ACCENT - 1, 0
        ligatures = sum(is_ligature(accents) for *_, accents in rest)
        for _, primary, _, accents in sorted(rest):
            ligature = is_ligature(accents)
            if accent < LAST_ACCENT - (0 if ligature else ligatures) or accent < FIRST_FREE_ACCENT:
                accent, marker = accent + 1, 0
            else:
                marker += 1
            ligatures -= ligature
            self.accents[(primary, accents)] = (accent, marker)

    @staticmethod
    def fixed_accent(accents, named):
        if plain(accents):
            return 0
        if len(accents) == 2 and accents[0] == 32.0:
            return named.get(accents[1])
        return None

    def texts(self):
        """Every text that an entry may stand for."""
        return self.all_texts

    def _collect_texts(self, exemplars):
        texts = set()
        self.strings = {text for text in self.collation.table if len(text) > 1}
        # Of the exemplar strings, letters with marks contract; strings of letters do so where a
        # language's rules say so.
        self.strings |= {text for text in exemplars if len(text) > 1 and all(
            self.characters.combining.get(code, 0) for code in text[1:])}
        whole = [self.characters.decompose((code,)) for code in self.characters.canonical]
        for text in list(self.strings) + [text for text in whole if len(text) > 1]:
            upper = tuple(self.characters.upper.get(code, code) for code in text)
            if upper != text and 0x345 not in text and len(compose(self.characters, upper)) > 1:
                self.strings.add(upper)
        for code in range(0x10000):
            if self.collation.of_code(code) is not None or code in self.characters.canonical:
                texts.add((code,))
        for text in sorted(texts) + sorted(self.strings):
            texts |= parts_of(self.characters, text)
        self.all_texts = sorted(texts)

    def own_order(self, code):
        """Order of a space, symbol or mark by itself, or None."""
        category = self.characters.category.get(code, "Cn")
        if category == "Cc":
            return UNDEFINED
        return self.space.get(code, self.symbol.get(code))

    def orders_of(self, code):
        own = self.own_order(code)
        if own == UNDEFINED or code in SYMBOLS or code in self.space:
            return Orders(0, (own,))
        elements = self.collation.elements((code,))
        if elements is None:
            return None
        if not any(element.primary or element.secondary for element in elements):
            return Orders(0, (UNDEFINED,))
        tertiaries = [element.tertiary for element in elements if element.primary]
        variant = any(element.secondary >= VARIANT for element in elements)
        marked = (len(tertiaries) > 1 and not variant and own is None
                  and any(each in (4, 0xA) for each in tertiaries))
        orders = self.orders_of_elements(
            elements, self.characters.case_of(code) == 1, marked)
        if orders is None or own is None:
            return orders
        # A symbol has a number of its own; letters and digits in it follow.
        rest = tuple(value for value in orders.values[1:] if value >= FIRST_DIGIT)
        return Orders(orders.group, (own,) + rest)

    def _order_characters(self):
        self.orders = {}
        for code in range(0x10000):
            if code >= 0x200 and self.collation.elements((code,)) is None:
                continue
            orders = self.orders_of(code)
            if orders is not None:
                self.orders[code] = orders
        tell_apart(self.orders, self.characters, lambda code: self._rank(code))

    def adopt(self, layout, codes):
        """Takes a language's orders of a script's characters over."""
        for code in codes:
            if code in layout.orders:
                self.orders[code] = layout.orders[code]

    def _rank(self, code):
        elements = self.collation.elements((code,)) or []
        return ([element.tertiary for element in elements],
                [element.secondary for element in elements])


def tell_apart(orders, characters, rank, changed=None, same=lambda one, other: False):
    """Gives characters of the same orders a marker each, but for the first in the data's order and
    for canonical equivalents. Those of Latin-1 come first, so that their keys are short."""
    taken = set(orders.values())
    alike = collections.defaultdict(list)
    for code, value in orders.items():
        if value.values != (UNDEFINED,):
            alike[value].append(code)
    for value, codes in alike.items():
        if len(codes) < 2:
            continue
        codes.sort(key=lambda code: (changed is not None and code in changed, code > LAST_LATIN_1,
                                     rank(code), code))
        forms = []
        for code in codes:
            form = characters.decompose((code,))
            known = [place for place, (other, text) in enumerate(forms)
                     if text == form or same(code, other)]
            place = known[0] if known else len(forms)
            if not known:
                forms.append((code, form))
            if place and (changed is None or code in changed):
                marker = FIRST_FORM_MARKER + place
                while Orders(value.group, value.values + (marker,)) in taken:
                    marker += 1
                orders[code] = Orders(value.group, value.values + (marker,))
                taken.add(orders[code])


def place_in_order(items, fixed, weights, low, high, free):
    """Values for items so that they rise: an item takes its fixed value or, at the cost of its
    weight, another one of `free`. None where they do not fit."""
    infinite = float("inf")
    best = {low - 1: (0, None)}
    for item in items:
        following = {}
        cheapest, chosen = infinite, None
        for value in range(low, high + 1):
            if value - 1 in best and best[value - 1][0] < cheapest:
                cheapest, chosen = best[value - 1][0], best[value - 1]
            if chosen is None:
                continue
            if fixed.get(item) == value:
                cost = 0
            elif value in free:
                cost = weights(item, value)
            else:
                continue
            following[value] = (cheapest + cost, (value, chosen))
        best = {value: (cost, (value, link[1])) for value, (cost, link) in following.items()}
        if not best:
            return None
    _, link = min(((cost, link) for cost, link in best.values()), key=lambda pair: pair[0])
    values = []
    while link is not None:
        value, before = link
        values.append(value)
        link = before[1] if before is not None else None
    return dict(zip(reversed(items), values))


class LanguageLayout(Layout):
    """Slots and accents of one language, as few as possible other than the root's."""

    def __init__(self, root, language, collation, main, auxiliary):
        self.root = root
        self.language = language
        self.collation = collation
        self.characters = root.characters
        self.named = {}
        for code, accent in NAMED_ACCENTS.items():
            elements = collation.elements((code,))
            self.named[elements[0].secondary] = accent
        self.main = main
        self.auxiliary = auxiliary
        self.tailored = list(collation.table)
        self.parts = sorted(set().union(
            *(parts_of(self.characters, text) for text in self.tailored)))
        self._collect()
        self._place_letters()
        self._number_accents()
        self._order_characters()

    def joined(self, text):
        if self.collation.is_untouched(text):
            return self.root.joined(text)
        return join(self.collation.elements(text) or [])

    def _collect(self):
        """All letters with their accents, and among them those of the exemplar characters."""
        self.used = collections.defaultdict(set)
        self.exemplar = {}
        self.known = set()
        for text in self.root.texts() + self.parts + self.main + self.auxiliary:
            for primary, accents, _ in self.joined(text):
                if primary and (
                        primary in self.root.slots or primary[0] in self.root.scripts) and counts(
                            self.characters, text, accents):
                    self.used[primary].add(accents)
        for weight, texts in ((1, self.auxiliary), (3, self.tailored), (4, self.main)):
            for text in texts:
                if len(text) == 1 and text[0] in self.characters.compatibility:
                    continue
                letters = self.joined(text)
                for primary, accents, _ in letters:
                    if accents in self.used.get(primary, ()) and len(letters) == 1:
                        self.exemplar[(primary, accents)] = weight
        for primary in self.used:
            self.used[primary].add((32.0,))

    def _place_letters(self):
        root = self.root
        self.slots = dict(root.slots)
        self.new = [primary for primary in self.used if primary not in root.slots]
        for script in GROUPS:
            new = [primary for primary in self.new if self.script_of(primary) == script]
            if new:
                self._place_script(script, new)

    def _place_script(self, script, new):
        root = self.root
        chiefs = set(root.chief[script]) | set(new)
        chiefs |= {primary for primary, _ in self.exemplar if self.script_of(primary) == script}
        sequence = sorted(chiefs)
        fixed = {primary: root.slots[primary] for primary in sequence if primary in root.slots}
        behind = root.collation.of_code(0xFE)[0].primary

        def cost(primary, slot):
            if primary in fixed:
                own = root.ascii.get(primary) if script == "Latin" else 0
                return (1000 if own is not None else 50) + abs(slot - fixed[primary])
            if script == "Latin" and primary > behind:
                return 200 if slot < BEHIND_Z else 5 * (slot & 3)
            return 1 + (slot & 3 if script == "Latin" else 0)

        slots = place_in_order(sequence, fixed, cost, FIRST_SLOT, LAST_SLOT,
                               range(FIRST_SLOT, LAST_SLOT + 1))
        if slots is None:
            raise ValueError(f"the letters of {self.language.name} do not fit")
        self.slots.update(slots)
        last = FIRST_SLOT
        following = sorted(slots.items())
        for primary in root.primaries[script]:
            if primary in slots:
                continue
            before = [slot for each, slot in following if each < primary]
            after = [slot for each, slot in following if each > primary]
            low = before[-1] if before else FIRST_SLOT
            high = after[0] if after else LAST_SLOT + 1
            if not low <= self.slots[primary] <= high:
                self.slots[primary] = low

    def _number_accents(self):
        root = self.root
        self.accents = {}
        # Letters that a rule puts behind another one keep the number of their own accent where the
        # order lets them (Hungarian ő behind ö, Swedish đ).
        named = {}
        for text in self.tailored:
            letters = join(self.collation.elements(text))
            own = join(root.collation.elements(text) or [])
            if len(letters) == 1 and len(own) == 1:
                accent, marker = root.accents.get(own[0][:2], (0, 0))
                if 0 < accent < FIRST_FREE_ACCENT and not marker:
                    named[letters[0][:2]] = accent
        for primary, letters in self.used.items():
            known = {accents: root.accents.get((primary, accents)) for accents in letters}
            if all(value is not None for value in known.values()):
                for accents, value in known.items():
                    self.accents[(primary, accents)] = value
                continue
            fixed = {}
            for accents in letters:
                if known[accents] is not None and not known[accents][1]:
                    fixed[accents] = known[accents][0]
                else:
                    value = RootLayout.fixed_accent(accents, self.named)
                    if value is not None:
                        fixed[accents] = value
            for accents in sorted(letters):
                value = named.get((primary, accents))
                if accents not in fixed and value not in fixed.values() and value is not None:
                    fixed[accents] = value
            self._number_letters(primary, letters, fixed)
        self._number_moved_marks()

    def _number_letters(self, primary, letters, fixed):
        chief = sorted((accents for accents in letters if (primary, accents) in self.exemplar),
                       key=secondary_key)
        if (32.0,) in letters and (32.0,) not in chief:
            chief.insert(0, (32.0,))
        free = range(FIRST_FREE_ACCENT, LAST_ACCENT + 1)
        while True:
            values = place_in_order(
                chief, fixed, lambda each, _: self.exemplar.get((primary, each), 9), 0,
                LAST_ACCENT, free)
            if values is not None:
                break
            chief.remove(min(chief, key=lambda each: self.exemplar.get((primary, each), 9)))
        taken = set(values.values())
        marker = 0
        for accents in sorted(letters, key=lambda each: (
                not is_ligature(each), secondary_key(each))):
            if accents in values:
                self.accents[(primary, accents)] = (values[accents], 0)
                continue
            value = fixed.get(accents)
            if value is None or value in taken:
                rising = reversed(free) if is_ligature(accents) else free
                value = next((each for each in rising if each not in taken), None)
            if value is None:
                marker += 1
                self.accents[(primary, accents)] = (LAST_ACCENT, marker)
            else:
                taken.add(value)
                self.accents[(primary, accents)] = (value, 0)

    def _number_moved_marks(self):
        """Numbers the letters with marks that the language moves among those above the named
        accents; all others keep their accents where the order allows it."""
        moved = {}
        for mark, bases in self.language.moved:
            for base in bases:
                primary = self.collation.elements((ord(base),))[0].primary
                moved[primary] = {self.collation.elements((mark,))[0].secondary}
        for primary, marks in moved.items():
            letters = self.used[primary]
            numbered = {accents for accents in letters
                        if RootLayout.fixed_accent(accents, self.named) is None
                        or (len(accents) == 2 and accents[1] in marks)}
            fixed = {accents: self.accents[(primary, accents)][0] for accents in numbered
                     if self.accents[(primary, accents)][0] >= FIRST_FREE_ACCENT
                     and not self.accents[(primary, accents)][1]}
            self._number_letters(primary, numbered, fixed)

    def mark_symbol(self, secondary):
        """A mark that a rule puts behind another one takes the number behind that one's."""
        if secondary in self.root.marks_by_secondary:
            return self.root.marks_by_secondary[secondary]
        return self.root.mark_symbol(float(int(secondary))) + 1

    def symbol_of_primary(self, primary):
        found = self.root.symbols_by_primary.get(primary)
        if found is not None:
            return found
        weight, place = primary
        return self.root.symbols_by_primary[(weight, 0.0)] + (1 if place > 0 else -1)

    def orders_of(self, text):
        """Orders of a text in this language, by its elements."""
        if len(text) == 1:
            elements = self.collation.elements(text)
            if elements == self.root.collation.elements(text) and self._same_letters(text):
                return self.root.orders.get(text[0])
        elements = self.collation.elements(text)
        if elements is None:
            return None
        title = len(text) == 1 and self.characters.case_of(text[0]) == 1
        return self.orders_of_elements(elements, title)

    def _same_letters(self, text):
        for primary, accents, _ in self.joined(text):
            if primary and primary in self.slots:
                if primary not in self.root.slots:
                    return False
                if self.slots[primary] != self.root.slots[primary]:
                    return False
                key = (primary, accents)
                if self.accents.get(key) != self.root.accents.get(key):
                    return False
        return True

    def _order_characters(self):
        self.orders = dict(self.root.orders)
        changed = set()
        for code in self.root.orders:
            orders = self.orders_of((code,))
            if orders is self.root.orders[code]:
                continue
            if orders is not None and self.root.own_order(code) is not None:
                own = self.collation.table.get(self.characters.decompose((code,)))
                if own is None or len(orders.values) != 1:
                    continue
            if orders is not None and orders != self.root.orders[code]:
                base = self.root.orders[code].values
                elements = self.collation.elements((code,))
                if elements == self.root.collation.elements((code,)):
                    # The same letters in another place keep what tells their form apart.
                    orders = Orders(orders.group, orders.values + tuple(
                        value for value in base[-1:] if value >= FIRST_FORM_MARKER
                        and value < FIRST_DIGIT and value not in orders.values))
                self.orders[code] = orders
                changed.add(code)
        self._foreign_letters(changed)
        tell_apart(self.orders, self.characters, lambda code: self.root._rank(code), changed,
                   self._ruled_equal)

    def _ruled_equal(self, one, other):
        """Whether a rule of the language makes two characters equal."""
        ruled = any(self.characters.decompose((code,)) in self.collation.table
                    for code in (one, other))
        return ruled and self.collation.elements((one,)) == self.collation.elements((other,))

    def _foreign_letters(self, changed):
        """Exemplar characters that are letters of another script go behind the language's own."""
        group = GROUP_NUMBER[self.language.script]
        for text in self.main:
            orders = self.orders.get(text[0]) if len(text) == 1 else None
            if orders is not None and orders.group not in (0, group):
                self.orders[text[0]] = Orders(group, (FIRST_LETTER | 3 << 12 | LAST_SLOT,))
                changed.add(text[0])
