"""The ways to write a composed character."""

import itertools


def spellings(characters, code):
    """Other ways to write a composed character."""
    full = characters.decompose((code,))
    if len(full) < 2 or any(each not in characters.category for each in full):
        return set()
    return equivalents(characters, full)


def equivalents(characters, text):
    """All texts of several characters that are canonically equivalent to one of a letter and its
    marks: composed in part, with the marks in another order, and with the characters that stand for
    others."""
    full = characters.decompose(text)
    result = set()
    for order in set(itertools.permutations(full[1:])):
        decomposed = full[:1] + order
        if characters.decompose(decomposed) != full:
            continue
        composed = full[0]
        for place in range(len(full)):
            if place:
                composed = characters.compose.get((composed, decomposed[place]))
                if composed is None:
                    break
            for rest in with_other_marks(characters, decomposed[place + 1:]):
                if rest:
                    result.update((letter,) + rest for letter in
                                  [composed] + characters.other_letters.get(composed, []))
    return result


def with_other_marks(characters, marks):
    """The marks, and the same written with those that stand for one or two of them."""
    if not marks:
        return [()]
    result = [marks[:1] + rest for rest in with_other_marks(characters, marks[1:])]
    for code, parts in characters.other_marks.items():
        if marks[:len(parts)] == parts:
            result.extend((code,) + rest
                          for rest in with_other_marks(characters, marks[len(parts):]))
    return result


def compose(characters, text):
    result = []
    for code in text:
        pair = characters.compose.get((result[-1], code)) if result else None
        if pair is None:
            result.append(code)
        else:
            result[-1] = pair
    return tuple(result)


def parts_of(characters, text):
    """All beginnings of the spellings of a text, which contractions pass through."""
    texts = {text, compose(characters, text), characters.decompose(text)}
    if len(text) == 1:
        texts |= spellings(characters, text[0])
    return {each[:length] for each in texts for length in range(1, len(each) + 1)}
