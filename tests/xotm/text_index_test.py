"""`xotm index` of text, whose keys are cut: what it finds against a scan over all lines."""

import json
import random
import re
import struct
import unittest

from xotm_support import DONE, NOTHING_FOUND, ToolTest, new_seed

# Letters and what surrounds them: case twins, accents, spaces, symbols, digits, other scripts,
# ideographs, letters that sort as two, and pairs that some languages sort as one.
PIECES = ["a", "A", "á", "Á", "à", "b", "B", "c", "ch", "CH", "h", "e", "é", "È", "ß", "æ", "ö",
          " ", "  ", "-", "'", ".", "+", "_", "1", "2", "10", "α", "Α", "β", "б", "Б", "漢", "字",
          "\u3001", "\uff0c", "\u00ad", "\u0301", "ﬁ", "ⅷ", "か", "한"]
FLAGS = ("ignore-case", "ignore-accents", "skip-spaces", "skip-symbols")
SETTINGS = (("253", "0"), ("253", "cs"), ("253", "sv"), ("253", "de"), ("253", "fr"), ("1", "sv"))


class TextIndexTest(ToolTest):
    def create_text(self, name, lines, *arguments, **options):
        text = "".join(line + "\n" for line in lines)
        return self.create(name, text, *arguments, type="XoString", **options)

    def numbers(self, *arguments):
        """The numbers of the lines that a search finds."""
        result = self.index(*arguments[:2], "--json", "--", *arguments[2:])
        self.assertEqual(result.stderr, b"", arguments)
        self.assertEqual(result.returncode, DONE if result.stdout else NOTHING_FOUND)
        return [json.loads(line)["line"] for line in result.stdout.decode().splitlines()]


def nasty_words(source, pieces, count):
    words = ["", " ", "-", "*", "a*b", "?"]
    while len(words) < count:
        # Few different letters, so that many words begin alike and are cut at the same place.
        chosen = source.sample(pieces, k=source.randrange(1, 5))
        word = "".join(source.choices(chosen, k=source.randrange(1, 14)))
        words.append(word if source.random() < 0.7 else source.choice(words) + word)
    return words


def pattern_from(source, word):
    place, kinds = source.randrange(len(word) + 1), ("*", "?", "", "*?", "?*")
    other = source.randrange(place, len(word) + 1)
    return word[:place] + source.choice(kinds) + word[other:] + source.choice(("", "", "*", "?"))


class AgainstAScan(TextIndexTest):
    def setting(self, source):
        code_set, language = source.choice(SETTINGS)
        pieces = [each for each in PIECES if code_set == "253" or self.is_latin(each)]
        words = nasty_words(source, pieces, source.choice((40, 150, 300)))
        self.write("words", "".join(word + "\n" for word in words))
        self.options = ["--code-set", code_set, "--language", language]
        key_length = source.choice((*range(6, 32), 64, 255, 256))
        self.create("i", self.read("words"), *self.options, "--key-length", key_length,
                    "--byte-order", source.choice(("little", "big")), type="XoString")
        self.assert_in_order("i")
        return words, f"{self.options}, key length {key_length}"

    @staticmethod
    def is_latin(text):
        try:
            text.encode("latin-1")
        except UnicodeEncodeError:
            return False
        return True

    def scan(self, words, pattern, operator):
        """Numbers of the lines that match, from a scan over the texts."""
        result = self.run_tool("text", "match", *self.options, "--op", operator, "--", pattern,
                               "words")
        self.assertEqual(result.stderr, b"")
        found = set(result.stdout.decode().split("\n")[:-1])
        return [number for number, word in enumerate(words, 1) if word in found]

    def test_FindFindsExactlyWhatAScanFinds(self):
        seed = new_seed()
        source = random.Random(seed)
        for _ in range(12):
            words, setting = self.setting(source)
            for _ in range(24):
                word = source.choice(words)
                if source.random() < 0.7:
                    word = pattern_from(source, word)
                flags = source.sample(FLAGS, k=source.choice((0, 0, 1, 1, 2, 4)))
                if source.random() < 0.2:
                    flags.append("no-wildcards")
                arguments = [f"--{flag}" for flag in flags]
                result = self.index("find", "i", "--json", *arguments, "--", word)
                self.assertEqual(result.stderr, b"")
                found = [json.loads(line)["line"] for line in result.stdout.decode().splitlines()]
                expected = self.scan(words, word, ",".join(flags) if flags else "wildcards")
                self.assertEqual(sorted(found), expected,
                                 f"{word!r} {flags} {setting} XOTM_SEED={seed}")

    def test_RangeFindsExactlyWhatStandsBetweenItsEndsInASortedList(self):
        seed = new_seed()
        source = random.Random(seed)
        for _ in range(12):
            words, setting = self.setting(source)
            for _ in range(12):
                low, high = source.choice(words), source.choice(words)
                if source.random() < 0.3:
                    low, high = low[: len(low) // 2], high + source.choice(PIECES[:10])
                # A stable sort puts the first line before its equals and the last one behind.
                text = "".join(line + "\n" for line in (low, *words, high))
                result = self.run_tool("sort", "-", *self.options, input=text)
                self.assertEqual(result.stderr, b"")
                ordered = result.stdout.decode().split("\n")[:-1]
                begin = ordered.index(low)
                end = len(ordered) - 1 - ordered[::-1].index(high)
                found = self.numbers("range", "i", low, high)
                self.assertEqual(sorted(words[number - 1] for number in found),
                                 sorted(ordered[begin + 1 : end]),
                                 f"{low!r} {high!r} {setting} XOTM_SEED={seed}")


if __name__ == "__main__":
    unittest.main()
