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


class Values(TextIndexTest):
    def test_EqualTextsAreFoundWhateverTheLengthOfKeys(self):
        lines = ["kall", "källa", "källan", "källarmästare", "Källa", "källa"]
        for key_length in (6, 7, 8, 12, 24, 255, 256):
            self.create_text("i", lines, "--language", "sv", "--key-length", key_length)
            self.assertEqual(self.numbers("find", "i", "källa"), [2, 6])
            self.assertEqual(self.numbers("find", "i", "källarmästare"), [4])
            self.assertEqual(self.numbers("find", "i", "källarmäster"), [])
            self.assert_in_order("i")

    def test_ATextThatGoesOnInAnotherScriptIsNotTheOneBeforeIt(self):
        self.create_text("i", ["aα", "a", "aβ", "a"])
        self.assertEqual(self.numbers("find", "i", "a"), [2, 4])
        self.assertEqual(self.numbers("find", "i", "aα"), [1])
        self.assertEqual(self.numbers("find", "i", "a*"), [2, 4, 1, 3])

    def test_FlagsIgnoreAndSkipWhatTheySay(self):
        self.create_text("i", ["resume", "Resume", "résumé", "re sume", "re-sume"])
        self.assertEqual(self.numbers("find", "i", "resume"), [1])
        find = lambda *flags: sorted(
            json.loads(line)["line"]
            for line in self.lines("find", "i", "resume", "--json", *flags))
        self.assertEqual(find("--ignore-case"), [1, 2])
        self.assertEqual(find("--ignore-accents"), [1, 3])
        self.assertEqual(find("--skip-spaces"), [1, 4])
        self.assertEqual(find("--skip-symbols"), [1, 5])
        self.assertEqual(find("--ignore-case", "--ignore-accents", "--skip-spaces",
                              "--skip-symbols"), [1, 2, 3, 4, 5])

    def test_WildcardsCanStandForThemselves(self):
        self.create_text("i", ["a*", "ab", "abc"])
        self.assertEqual(self.lines("find", "i", "a*", "--no-wildcards"), ["a*"])
        self.assertEqual(self.lines("find", "i", "a?"), ["a*", "ab"])

    def test_BothEndsOfARangeAreInside(self):
        self.create_text("i", ["öl", "ask", "zebra", "ål", "är", "ö"], "--language", "sv")
        self.assertEqual(self.lines("range", "i", "zebra", "ö"), ["zebra", "ål", "är", "ö"])
        self.assertEqual(self.lines("range", "i", "ål", "ål"), ["ål"])
        self.assertEqual(self.lines("range", "i", "ö", "ål"), [])
        self.assertEqual(self.index("range", "i", "b", "z", "--count").stdout, b"0\n")

    def test_ALookUpMakesFewComparisonsAndFetchesForCutKeysAlone(self):
        count = 4096
        self.create_text("i", [f"word{number:05}" for number in range(count)])

        def stats(value):
            result = self.index("find", "i", value, "--stats")
            return [int(number) for number in re.findall(rb"(?:comparisons|fetched): (\d+)",
                                                         result.stderr)]

        comparisons, fetches = stats("word01234")
        self.assertLessEqual(comparisons, 12 + 20)
        self.assertEqual(fetches, 0)
        self.create_text("i", [f"word{number:05}" for number in range(count)], "--key-length", 20)
        # Eight orders are there, and ten words for each.
        self.assertEqual(stats("word01234")[1], 10)

    def test_ValuesThatLookLikeOptionsAreTakenAsTheyAre(self):
        self.create_text("i", ["-inf", " -inf", "-.5", "-abc"])
        self.assertEqual(self.numbers("find", "i", "-inf"), [1])
        self.assertEqual(self.lines("find", "i", "-inf"), ["-inf"])
        self.assertEqual(self.lines("find", "i", "-.5"), ["-.5"])
        self.assertEqual(self.numbers("find", "i", " -inf"), [2])
        self.assertEqual(self.numbers("find", "i", "-abc"), [4])

    def test_LineEndsAreNoPartOfAText(self):
        self.create("i", b"\xef\xbb\xbfab\r\ncd\r\n\r\nab", type="XoString")
        self.assertEqual(self.index("find", "i", "ab").stdout, b"ab\r\nab\n")
        self.assertEqual(self.numbers("find", "i", ""), [3])

    def test_LongTextsAreKeptWhole(self):
        longest = "x" * 32765
        self.create_text("i", [longest, longest[:-1] + "y", "x"], "--key-length", 6)
        self.assertEqual(self.numbers("find", "i", longest), [1])
        self.assertEqual(self.numbers("find", "i", longest[:-1] + "?"), [1, 2])
        self.assert_in_order("i")


class Shares(TextIndexTest):
    def test_CutKeysAreCounted(self):
        # A key of 10 bytes has room for three orders, and is whole with up to two.
        lines = ["a", "ab", "abc", "abcd", "abcde", "xyz", "bα"]
        self.create_text("i", lines, "--key-length", 10, "--language", "de", "--code-set", 253)
        stat = json.loads(self.index("stat", "i", "--json").stdout)
        self.assertEqual((stat["linesWithCutKey"], stat["lookUpsThatFetch"]), (5, 3))
        self.assertEqual((stat["entries"], stat["distinctKeys"]), (7, 5))
        self.assertEqual((stat["codeSet"], stat["keyLength"]), (253, 10))
        text = self.index("stat", "i").stdout.decode()
        self.assertIn("5 of 7 (71.4 %) lines", text)
        self.assertIn("3 of 5 (60.0 %) look-ups", text)


class BadText(TextIndexTest):
    def refused(self, lines, *arguments):
        self.create_text("i", ["a", "b"])
        before = self.read("i")
        result = self.index("create", "i", "--type", "XoString", "--input", "-", *arguments,
                            input=lines)
        self.assertEqual(self.read("i"), before)
        self.assertEqual(self.files(), ["i"])
        return result

    def test_ALineThatIsNotTextIsNamed(self):
        self.assert_trouble(self.refused(b"a\n\xff\n"), "standard input, line 2", r"'\xff'",
                            "not UTF-8")
        self.assert_trouble(self.refused(b"a\0b\n"), "line 1", "zero at byte 1")
        self.assert_trouble(self.refused("x" * 32766 + "\n"), "line 1", "longer than a string")

    def test_ALineThatTheCodeSetCannotHoldIsABadLine(self):
        self.assert_trouble(self.refused("łódź\n", "--code-set", "1"), "line 1", "ISO-8859-1 lacks",
                            "U+0142")
        result = self.create_text("i", ["łódź", "fjord", "\U0001F600"], "--code-set", 1,
                                  "--on-error", "skip")
        self.assertIn(b"skipped: 2, the first of them line 1", result.stdout)
        self.assertEqual(self.lines("find", "i", "*"), ["fjord"])
        self.assert_trouble(self.index("find", "i", "łódź"), "ISO-8859-1 lacks U+0142")

    def test_OptionsOfTextAreForTextAlone(self):
        for option in (["--language", "sv"], ["--code-set", "1"], ["--key-length", "24"]):
            result = self.index("create", "n", "--type", "o_8b", "--input", "-", *option, input="1")
            self.assert_trouble(result, "of text")
        self.create("n", "1\n")
        self.assert_trouble(self.index("find", "n", "1", "--ignore-case"), "type o_8b")
        self.assert_trouble(self.index("create", "n", "--rebuild"), "nothing to rebuild")
        self.assert_trouble(self.index("create", "n", "--type", "o_8b"), "--input is required")
        self.assert_trouble(self.index("create", "n", "--rebuild", "--input", "x"), "--rebuild")

    def test_ALengthOfKeysBeyondItsEndsIsRefused(self):
        for length in ("5", "257", "x"):
            self.assert_trouble(self.refused("a\n", "--key-length", length), "--key-length")


META_MAGIC = b"XOTMIDX\0"
META_SIZE = 112


def checksum(data):
    value = 0xCBF29CE484222325
    for byte in data:
        value = (value ^ byte) * 0x100000001B3 % 2**64
    return value


class OtherCollation(TextIndexTest):
    COMMANDS = (["find", "i", "ab"], ["find", "i", "a*"], ["range", "i", "a", "b"], ["stat", "i"],
                ["verify", "i"])

    def setUp(self):
        super().setUp()
        self.create_text("i", ["ab", "abc", "B", "ab"], "--key-length", 8, "--language", "sv")
        content = bytearray(self.read("i"))
        start = content.index(META_MAGIC)
        content[start + 88] ^= 1
        content[start + 104 : start + META_SIZE] = struct.pack(
            "<Q", checksum(content[start : start + 104]))
        self.write("i", content)

    def test_IsRefusedByEveryCommandThatReads(self):
        for command in self.COMMANDS:
            self.assert_trouble(self.index(*command), "i is ordered by collation", "--rebuild")

    def test_AnIndexIsRebuiltFromItsValues(self):
        result = self.index("create", "i", "--rebuild")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        self.assertEqual(
            result.stdout, b"i: 4 entries, 2 distinct keys of type XoString; rebuilt from its values\n")
        self.assertEqual(self.numbers("find", "i", "ab"), [1, 4])
        stat = json.loads(self.index("stat", "i", "--json").stdout)
        self.assertEqual(stat["keyLength"], 8)
        self.assert_in_order("i")
        self.assertEqual(self.files(), ["i"])

    def test_AnIndexIsReplacedAsAnyOther(self):
        self.create_text("i", ["x"])
        self.assertEqual(self.lines("find", "i", "x"), ["x"])

    def test_ADamagedIndexIsNotRebuilt(self):
        content = self.read("i")
        record = struct.pack("<H", 10)
        place = content.index(record + bytes([253]))
        changed = bytearray(content)
        changed[place + 4] ^= 1
        self.write("i", changed)
        self.assert_trouble(self.index("create", "i", "--rebuild"), "i is damaged")
        self.assertEqual(self.read("i"), bytes(changed))
        self.assertEqual(self.files(), ["i"])


class KeyBytes(TextIndexTest):
    def key(self, *arguments):
        result = self.run_tool("key", *arguments)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return result.stdout.decode().splitlines()

    def test_FieldsAreShownInTheirOrder(self):
        lines = self.key("b A", "--byte-order", "big")
        self.assertEqual([line.split()[0] for line in lines[1:3]], ["fe", "02"])
        self.assertRegex(lines[0], r"\A00 0a  length +10 bytes")
        self.assertIn("lower letter b", lines[3])
        self.assertIn("space", lines[4])
        self.assertIn("upper letter A", lines[5])
        self.assertEqual([line.split()[0] for line in lines[6:]], ["00", "ff"])

    def test_ACutIsToldApartFromAnEnd(self):
        self.assertRegex(self.key("abc", "--key-length", "8")[-1], r"cut: no room .* 8 bytes")
        self.assertRegex(self.key("aα")[2], r"\A82 +group +2; cut: .* another group")
        self.assertNotIn("cut", "".join(self.key("ab", "--key-length", "10")))

    def test_WhatIsNoTextIsTrouble(self):
        self.assert_trouble(self.run_tool("key", "漢", "--code-set", "1"), "U+6F22")
        self.assert_trouble(self.run_tool("key", "a", "--key-length", "5"), "--key-length")


if __name__ == "__main__":
    unittest.main()
