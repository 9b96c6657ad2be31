"""The ways to write a composed character."""


def spellings(characters, code):
    """Other ways to write a composed character: decomposed in whole or in part, and with marks of
    different classes in another order."""
    full = characters.decompose((code,))
    if len(full) < 2 or any(each not in characters.category for each in full):
        return set()
    base, marks = full[0], full[1:]
    orders = {marks}
    if len(marks) == 2:
        first, second = (characters.combining.get(mark, 0) for mark in marks)
        if first and second and first != second:
            orders.add((marks[1], marks[0]))
    result = set()
    for order in orders:
        result.add((base,) + order)
        composed = base
        for place, mark in enumerate(order):
            composed = characters.compose.get((composed, mark))
            if composed is None:
                break
            if place + 1 < len(order):
                result.add((composed,) + order[place + 1:])
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
