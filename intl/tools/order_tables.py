"""Order tables: entries of characters, their language variants and the contractions behind them."""

import collections

from order_layout import FIRST_DIGIT, FIRST_LETTER, UNDEFINED
from spelling import compose, equivalents, spellings

BLOCK = 64
HAS_CONTRACTIONS, HAS_VARIANTS, HAS_EXPANSION, MARKS_ONLY = 1, 2, 4, 8
MARKS = range(0x300, 0x370)
# Languages are parted by how many characters they vary, with a flag for each part: most characters
# then tell by their flags alone that a language has no variant of them.
# English has a part of its own.
ENGLISH, ENGLISH_PART = 1, 16
PARTS = [(60, 32), (160, 64), (0x10000, 128)]
ROOT_PART = 1

# Letter heads: a letter with its group in the low bits, and above them a flag for each part of the
# languages, where the head does not settle what the letter compares as, and where the character may
# be more than its letter.
HEADS_OF_UNICODE = 0x800
UNSETTLED, MORE, IGNORABLE = 24, 16, 1 << 25
ALL_PARTS = ROOT_PART | ENGLISH_PART | sum(part for _, part in PARTS)
NO_HEAD = ALL_PARTS << UNSETTLED

Entry = collections.namedtuple("Entry", "order group flags expansion links")
# The flag sends the place of a missing entry down the slow way, where it is noticed.
ABSENT = Entry(0, 0, HAS_CONTRACTIONS, 0, 0)


def written(characters, text):
    """The ways to write a text that contracts; those of a letter with marks are all of them."""
    if all(characters.combining.get(code, 0) for code in text[1:]):
        return {text} | equivalents(characters, text)
    return {text, compose(characters, text)}


class Texts:
    """The orders of characters and of texts that contract, at the root or in a language."""

    def __init__(self, layout, spelled, adopted, strings):
        self.layout = layout
        self.adopted = adopted
        self.spelled = spelled
        self.following = collections.defaultdict(set)
        self.memory = {}
        self.nodes = {}
        self.parted = {}
        self._part_marked(strings)
        strings = set(strings) | set(self.parted)
        for text in strings:
            if self.orders(text) is not None and self.orders(text[:1]) is not None:
                for length in range(1, len(text)):
                    self.following[text[:length]].add(text[length])

    def orders(self, text):
        if len(text) == 1:
            return self.layout.orders.get(text[0])
        if text not in self.memory:
            self.memory[text] = self._orders(text)
        return self.memory[text]

    def _part_marked(self, strings):
        """Marks behind a contraction belong to its last letter alone where Unicode has the letter
        with them as one character, which does not contract."""
        combining = self.layout.characters.combining
        marked = collections.defaultdict(list)
        for text in self.spelled:
            marked[text[0]].append(text)
        known = {text[:length] for text in strings for length in range(2, len(text) + 1)}
        for text in known:
            if combining.get(text[-1], 0):
                continue
            for letter in marked[text[-1]]:
                if text[:-1] + letter not in known:
                    self.parted[text[:-1] + letter] = (text[:-1], letter)

    def _orders(self, text):
        if text in self.parted:
            first, last = (self.orders(part) for part in self.parted[text])
            if first is None or last is None:
                return None
            return first._replace(values=first.values + last.values)
        if text in self.spelled:
            return self.layout.orders.get(self.spelled[text])
        layout = self.adopted.get(text[0], self.layout)
        elements = layout.collation.elements(text)
        if elements is None:
            return None
        return layout.orders_of_elements(elements)

    def node(self, text):
        """(orders, following nodes by character) of a text, to be compared and kept."""
        if text not in self.nodes:
            following = self.following.get(text)
            self.nodes[text] = (self.orders(text), tuple(
                (code, self.node(text + (code,))) for code in sorted(following))
                if following else ())
        return self.nodes[text]


def letter_of(orders):
    """The letter that orders begin with, below the group of its script; None for anything else."""
    first = orders.values[0]
    is_letter = orders.group and FIRST_LETTER <= first < 2 * FIRST_LETTER
    return orders.group << 7 | first & 0x7F if is_letter else None


def begins_with(node, letter):
    """Whether a node's orders begin with a letter whatever contracts with its character."""
    orders, following = node
    return letter_of(orders) == letter and all(begins_with(after, letter) for _, after in following)


def is_one_letter(node):
    """Whether a node has no further orders, and contracts with nothing but marks."""
    orders, following = node
    return len(orders.values) == 1 and all(code in MARKS for code, _ in following)


def continuing(node):
    """The characters that contractions of a node go on with."""
    for code, after in node[1]:
        yield code
        yield from continuing(after)


class OrderTables:
    def __init__(self, characters, root_layout, language_layouts, adopted, code_sets,
                 to_unicode):
        self.characters = characters
        spelled = {}
        for code in root_layout.orders:
            for text in spellings(characters, code):
                spelled.setdefault(text, code)
        root_strings = set(spelled)
        for text in root_layout.strings:
            root_strings |= written(characters, text)
        for layout in set(adopted.values()):
            root_strings.update(layout.tailored)
        root_strings = {text for text in root_strings if len(text) > 1}
        self.root = Texts(root_layout, spelled, adopted, root_strings)
        self.languages = {}
        for number, layout in language_layouts.items():
            strings = set(root_strings)
            for text in layout.tailored:
                strings |= written(characters, text)
            own = dict(spelled)
            for text in layout.tailored:
                whole = compose(characters, text)
                if len(whole) > 1:
                    own.pop(whole, None)
                    own.pop(text, None)
            self.languages[number] = Texts(
                layout, own, adopted, {text for text in strings if len(text) > 1})
        self.entries = []
        self.extra_index = {}
        self.expansions = [()]
        self.expansion_index = {(): 0}
        self.links = [(0, 0, 0, 0)]
        self.link_index = {self.links[0]: 0}
        self.variant_targets = []
        self.variant_runs = {}
        self.contraction_characters = []
        self.contraction_targets = []
        self.contraction_runs = {}
        self._find_changes()
        self._build(code_sets, to_unicode)

    def _find_changes(self):
        """The characters whose entry a language replaces: {code: {language: node}}."""
        self.variants = collections.defaultdict(dict)
        for number, texts in self.languages.items():
            for code in texts.layout.orders:
                if texts.node((code,)) != self.root.node((code,)):
                    self.variants[code][number] = texts.node((code,))

        self.variant_flags = {}
        for number in self.languages:
            varied = sum(number in languages for languages in self.variants.values())
            self.variant_flags[number] = next(
                flag for most, flag in PARTS if varied <= most) if varied else 0
            if varied and number == ENGLISH:
                self.variant_flags[number] = ENGLISH_PART

    def _build(self, code_sets, to_unicode):
        pending = []
        self.table_start = {}
        for code_set in code_sets:
            if code_set.kind != "ordered":
                continue
            mapping = to_unicode[code_set.number]
            back = collections.defaultdict(list)
            for code, character in sorted(mapping.items()):
                back[character].append(code)
            self.table_start[code_set.number] = len(self.entries)
            for code in range(256):
                pending.append((len(self.entries), mapping.get(code), back))
                self.entries.append(None)
        self.blocks = []
        known = {}
        self.unicode_start = len(self.entries)
        for first in range(0, 0x10000, BLOCK):
            codes = range(first, first + BLOCK)
            empty = not any(code in self.root.layout.orders for code in codes)
            if empty and "empty" in known:
                self.blocks.append(known["empty"])
                continue
            if empty:
                known["empty"] = (len(self.entries) - self.unicode_start) // BLOCK
            self.blocks.append((len(self.entries) - self.unicode_start) // BLOCK)
            for code in codes:
                pending.append((len(self.entries), code, None))
                self.entries.append(None)
        self.heads = [NO_HEAD] * (self.unicode_start + HEADS_OF_UNICODE)
        following = {}
        for place, character, back in pending:
            code = place % 256 if back is not None else character
            start = place - code if back is not None else self.unicode_start
            head, entry = self._character(character, back, following.setdefault(start, {}))
            self.entries[place] = entry
            if start + code < len(self.heads):
                self.heads[start + code] = head if code else 0
        for start, parts in following.items():
            for code, part in parts.items():
                if start + code < len(self.heads):
                    self.heads[start + code] = self.heads[start + code] & ~IGNORABLE | (
                        part << UNSETTLED)
        assert len(self.entries) < 0x10000 and max(self.blocks) < 0x100

    def _character(self, character, back, following):
        """The letter head and the entry of a character. `following` takes the characters that go on
        with a contraction of it, with the parts of the languages that have it."""
        root = self.root.node((character,)) if character is not None else (None, ())
        if root[0] is None:
            return NO_HEAD, ABSENT if back is None else Entry(UNDEFINED, 0, 0, 0, 0)
        kept = self._restrict(root, back)
        variants = []
        for number, node in sorted(self.variants.get(character, {}).items()):
            node = self._restrict(node, back)
            if node != kept:
                variants.append((number, node))
        parts = [(ROOT_PART, kept)]
        parts += [(self.variant_flags[number], node) for number, node in variants]
        for part, node in parts:
            for code in continuing(node):
                following[code] = following.get(code, 0) | part
        entry = self._entry(kept, [(number, self._extra(node)) for number, node in variants])
        return self._head(parts), entry

    def _head(self, parts):
        """The letter head of a character with a node for each part of the languages."""
        root = parts[0][1]
        letter = letter_of(root[0])
        if letter is None:
            ignorable = parts == [(ROOT_PART, root)] and not root[1] and (
                len(root[0].values) == 1 and root[0].values[0] < FIRST_DIGIT)
            return NO_HEAD | (IGNORABLE if ignorable else 0)
        head = letter
        for part, node in parts:
            if not begins_with(node, letter):
                head |= part << UNSETTLED
            if not is_one_letter(node):
                head |= part << MORE
        return head

    def _restrict(self, node, back):
        """A node with what a code set can write, in the codes of the set."""
        orders, following = node
        result = []
        for code, after in following:
            for own in ([code] if back is None else back.get(code, ())):
                result.append((own, self._restrict(after, back)))
        return (orders, tuple(sorted(result)))

    def _extra(self, node):
        """Index of an entry that no code stands for: a variant or a contraction."""
        if node not in self.extra_index:
            entry = self._entry(node, [])
            self.extra_index[node] = len(self.entries)
            self.entries.append(entry)
        return self.extra_index[node]

    def _entry(self, node, variants):
        orders, following = node
        first, rest = orders.values[0], orders.values[1:]
        if rest not in self.expansion_index:
            self.expansion_index[rest] = len(self.expansions)
            self.expansions.append(rest)
        contractions = tuple((code, self._extra(after)) for code, after in following)
        flags = (HAS_CONTRACTIONS if contractions else 0) | (HAS_VARIANTS if variants else 0) | (
            HAS_EXPANSION if rest else 0)
        if contractions and all(code in MARKS for code, _ in contractions):
            flags ^= HAS_CONTRACTIONS | MARKS_ONLY
        for number, _ in variants:
            flags |= self.variant_flags[number]
        link = (
            sum(1 << number for number, _ in variants),
            self._run(self.variant_runs, tuple(index for _, index in variants),
                      lambda run: self.variant_targets.extend(run), self.variant_targets),
            self._run(self.contraction_runs, contractions, self._add_contractions,
                      self.contraction_characters),
            len(contractions))
        if link not in self.link_index:
            self.link_index[link] = len(self.links)
            self.links.append(link)
        return Entry(first, orders.group, flags, self.expansion_index[rest],
                     self.link_index[link])

    def _add_contractions(self, run):
        self.contraction_characters.extend(code for code, _ in run)
        self.contraction_targets.extend(index for _, index in run)

    @staticmethod
    def _run(known, run, add, values):
        if not run:
            return 0
        if run not in known:
            known[run] = len(values)
            add(run)
        return known[run]
