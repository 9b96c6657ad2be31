"""Each language sorts as the published rules of its collation say, rule by rule.

The rules are read from the published files; the tables are asked only for comparisons.
"""

from probe_support import DATA, ask, finish, need_data

LETTER, ACCENT = 1, 2

# Letters that share the letter level of a neighbour, being rare: (language, letter).
SHARED = {("Macedonian", "\u0503"), ("Ukrainian", "\uA647")}
# A rare mark, which makes no letter another one and counts at the last level.
LAST = {("Thai", "\u0E4E")}
# The tatweel is read over, and so are the rules for what stands on one; the high hamza with its
# letter is a form that differs at the last level.
NOT_READ = {0x0640, 0x0674}


def questions_of(language, parse, read_tailoring, category):
    """Yields (line, lesser, greater, strength) of the rules."""
    path, lines = read_tailoring(DATA, *language.collation)
    rules = list(parse(path, lines))
    tailored = {rule[3] for rule in rules if rule[0] == "rule"}
    previous, anchor, before = None, None, 0
    for rule in rules:
        if rule[0] == "reset":
            _, _, before, anchor = rule
            previous = anchor
        elif rule[0] == "rule" and anchor is not None:
            _, line, strength, text, extension = rule
            if is_mark(previous, category) != is_mark(text, category) or is_symbol(text, category):
                continue  # marks and symbols have orders of their class by themselves
            if NOT_READ & set(previous):
                continue
            if category.get(anchor[0], "Cn")[0] == "P":
                strength = 3 if before != 1 else 0
            if strength == 0:
                yield line, text, anchor, 3  # both are symbols, which differ at the last level
            elif before:
                yield line, text, anchor, before
            else:
                yield line, previous + extension, text, strength
            previous, before = text, 0
            # A letter behind one of the alphabet stands before the next one of it.
            following = tuple(code + 1 for code in anchor)
            if strength == 1 and following not in tailored and len(anchor) == 1 and (
                    ord("a") <= anchor[0] < ord("z") or ord("A") <= anchor[0] < ord("Z")):
                yield line, text, following, 1


def is_mark(text, category):
    return category.get(text[0]) in ("Mn", "Mc")


def is_symbol(text, category):
    return category.get(text[0], "Cn")[0] == "S"


def text_of(codes):
    return "".join(map(chr, codes))


def main():
    need_data()
    import languages
    from collation import parse
    from unicode_data import Characters, read_tailoring
    category = Characters(DATA).category

    rows, questions = [], []
    for language in languages.LANGUAGES:
        if language.collation is None:
            continue
        for line, lesser, greater, strength in questions_of(
                language, parse, read_tailoring, category):
            sides = []
            for text in (lesser, greater):
                # A mark is compared on a letter.
                if is_mark(text, category):
                    text = (0x0E01 if text[0] >= 0xE00 else ord("i"),) + text
                sides.append(" ".join(f"{code:x}" for code in text))
            rows.append((language.name, line, lesser, greater, strength))
            questions.append(f"compare {language.number} {sides[0]} | {sides[1]}")
    failures = []
    for row, answer in zip(rows, ask(questions), strict=True):
        sign, level = (int(word) for word in answer.split())
        strength = row[4]
        held = {1: sign == -1 and level == LETTER,
                2: sign == -1 and (level == ACCENT or (row[0], text_of(row[2])) in LAST),
                3: sign == -1 and level > LETTER,
                4: sign == 0}[strength]
        if not held:
            name, line, lesser, greater, _ = row
            one, other = text_of(lesser), text_of(greater)
            if (name, one) in SHARED and level > LETTER:
                continue
            failures.append(f"{name}, line {line}: {one} {'<' * strength if strength < 4 else '='} "
                            f"{other} gives {sign} at level {level}")
    finish(failures, len(rows))


if __name__ == "__main__":
    main()
