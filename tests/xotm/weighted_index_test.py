"""`xotm index` of texts that carry their collation with them."""

import json
import random
import re
import struct
import unittest

from xotm_support import IS_SANITIZED, NOTHING_FOUND, ToolTest, new_seed

TYPES = ("XoIString", "XoCaseIString")
WORDS = ("Straße", "Strasse", "strasse", "STRASSE", "Strase", "Café", "cafe", "Cafe", "a*b", "aXb",
         "a\\b", "", "Zebra", "äpfel", "Apfel")


class WeightedTest(ToolTest):
    def create_words(self, type_name, words, *arguments):
        self.create("i", "".join(word + "\n" for word in words), *arguments, type=type_name)
        self.assert_in_order("i")

    def numbers(self, command, *arguments):
        result = self.index(command, "i", "--json", "--", *arguments)
        self.assertEqual(result.stderr, b"", arguments)
        return [json.loads(line)["line"] for line in result.stdout.splitlines()]


class Order(WeightedTest):
    def test_LowerCaseComesRightBeforeUpperCaseWhereItCounts(self):
        self.create_words("XoIString", ("B", "a", "b", "A", "aa", "1", "-"))
        self.assertEqual(self.lines("dump", "i"),
                         ["7:-", "6:1", "2:a", "5:aa", "4:A", "3:b", "1:B"])

    def test_CaseAndAccentsDoNotPartTextsWhereTheyDoNotCount(self):
        self.create_words("XoCaseIString", ("É", "f", "E", "e", "D"))
        self.assertEqual(self.lines("dump", "i"), ["5:D", "1:É", "3:E", "4:e", "2:f"])
        self.assertEqual(self.lines("find", "i", "è"), ["É", "E", "e"])

    def test_AccentsDoNotPartTextsAnywhere(self):
        self.create_words("XoIString", WORDS)
        self.assertEqual(self.lines("find", "i", "Cafe"), ["Café", "Cafe"])
        self.assertEqual(self.lines("find", "i", "cafe"), ["cafe"])

    def test_OneByteMayWeighWhatTwoLettersDo(self):
        for type_name, found in (("XoIString", ["Straße", "Strasse"]),
                                 ("XoCaseIString", ["Straße", "Strasse", "strasse", "STRASSE"])):
            for key_length in ("6", "8", "64"):
                self.create_words(type_name, WORDS, "--key-length", key_length)
                for text in found[:2]:
                    self.assertEqual(self.lines("find", "i", text), found, key_length)

    def test_KeysAreWeightsInTheChosenByteOrder(self):
        # A and B weigh 54 and 5B.
        for order, payload in (("little", "<H"), ("big", ">H")):
            self.create_words("XoIString", ("AB",), "--byte-order", order)
            self.assertIn(b"\xc0" + struct.pack(payload, 3) + b"\x54\x5b\0", self.read("i"))


class Patterns(WeightedTest):
    def test_WildcardsAreSettledOnTheWholeText(self):
        for key_length in ("6", "8", "64"):
            self.create_words("XoIString", WORDS, "--key-length", key_length)
            for pattern, found in (("Stras*", ["Strase", "Straße", "Strasse"]), ("Caf?", ["Café", "Cafe"]),
                                   ("a*b", ["a*b", "a\\b", "aXb"]), ("a\\*b", ["a*b"]),
                                   ("?pfel", ["äpfel", "Apfel"]), ("*se", ["strasse", "Strase", "Straße", "Strasse"])):
                with self.subTest(pattern=pattern, key_length=key_length):
                    self.assertEqual(sorted(self.lines("find", "i", pattern)), sorted(found))

    def test_WildcardsStandForThemselvesWhenTheyAreSwitchedOff(self):
        for type_name in TYPES:
            self.create_words(type_name, WORDS)
            self.assertEqual(self.lines("find", "i", "a*b", "--no-wildcards"), ["a*b"])

    def test_APatternSeesOneLetterInASharpSWhereCaseDoesNotCount(self):
        # The key has two, so that the search must not go by it beyond the first.
        for key_length in ("6", "8", "64"):
            self.create_words("XoCaseIString", WORDS, "--key-length", key_length)
            self.assertEqual(sorted(self.lines("find", "i", "strase*")), ["Strase", "Straße"])

    def test_OnlyKeysThatCanMatchAreLookedAt(self):
        self.create_words("XoCaseIString", WORDS + tuple(f"Se{number}" for number in range(50)))
        result = self.index("find", "i", "strase*", "--count", "--stats")
        # Of Straße and Strasse, in three spellings, the key is the same; and there is Strase.
        self.assertIn(b"values fetched: 5,", result.stderr)

    def test_NothingFoundIsCodeOne(self):
        self.create_words("XoIString", WORDS)
        for pattern in ("x*", "Strassen", "cafe?"):
            self.assertEqual(self.index("find", "i", pattern).returncode, NOTHING_FOUND)


class AgainstAModel(WeightedTest):
    """Letters order as aAbB..., accents do not count; below them stand the other characters."""

    @staticmethod
    def plain(word):
        return word.replace("é", "e").replace("É", "E")

    def key(self, type_name, word):
        word = self.plain(word)
        if type_name == "XoCaseIString":
            word = word.upper()
        return [(each.isalpha(), each.lower(), each.isupper()) for each in word]

    def matches(self, type_name, pattern, word):
        parts = {"*": ".*", "?": "."}
        expression = "".join(parts.get(each) or re.escape(each) for each in self.plain(pattern))
        flags = re.IGNORECASE if type_name == "XoCaseIString" else 0
        return re.fullmatch(expression, self.plain(word), flags) is not None

    def test_SearchesFindWhatAScanFinds(self):
        seed = new_seed()
        source = random.Random(seed)
        for type_name in TYPES:
            for _ in range(1 if IS_SANITIZED else 2):
                words = ["".join(source.choices("aAbBeéÉnZ1- ", k=source.randrange(1, 12))).rstrip()
                         for _ in range(200)]
                words += [word[: len(word) // 2 + 1] for word in words[:50]]
                key_length = source.choice((6, 7, 8, 10, 64, 256))
                use = f"{type_name}, key length {key_length}, seed {seed}"
                self.create_words(type_name, words, "--key-length", key_length, "--byte-order",
                                  source.choice(("little", "big")))
                keys = [self.key(type_name, word) for word in words]
                for _ in range(5 if IS_SANITIZED else 25):
                    word = source.choice(words)
                    place = source.randrange(len(word) + 1)
                    pattern = (word[:place] + source.choice(("*", "?", "*?", ""))
                               + word[source.randrange(place, len(word) + 1):])
                    found = [number for number, each in enumerate(words, 1)
                             if self.matches(type_name, pattern, each)]
                    self.assertEqual(sorted(self.numbers("find", pattern)), found, (use, pattern))
                    low, high = source.choice(words), source.choice(words)
                    found = [number for number, key in enumerate(keys, 1)
                             if self.key(type_name, low) <= key <= self.key(type_name, high)]
                    self.assertEqual(sorted(self.numbers("range", low, high)), found,
                                     (use, low, high))


class Index(WeightedTest):
    def test_OptionsOfOtherTextAreRefused(self):
        for type_name in TYPES:
            for option in (("--language", "German"), ("--code-set", "1")):
                result = self.index("create", "i", "--type", type_name, "--input", "-", *option,
                                    input="a\n")
                self.assert_trouble(result, type_name, "windows-1252")
            self.create_words(type_name, ("a",))
            self.assert_trouble(self.index("find", "i", "a", "--ignore-case"), "one way alone")
            self.assert_trouble(self.index("dump", "i", "--format", "%s"), "no format")

    def test_ALineThatTheCodeSetLacksIsBad(self):
        for type_name in TYPES:
            for text in ("漢", "a\0b", b"\xff"):
                result = self.index("create", "i", "--type", type_name, "--input", "-", input=text)
                self.assert_trouble(result, "standard input, line 1: '")
                self.assertEqual(self.files(), [])
        self.create_words("XoIString", ("€", "Œuvre", "ÿ"))
        self.assertEqual(sorted(self.lines("dump", "i")), ["1:€", "2:Œuvre", "3:ÿ"])

    def test_ARebuildMayTakeOtherKeyLengths(self):
        self.create_words("XoIString", WORDS, "--key-length", "6")
        before = self.numbers("find", "Stra*")
        result = self.index("create", "i", "--rebuild", "--key-length", "32")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assert_in_order("i")
        self.assertEqual(sorted(self.numbers("find", "Stra*")), sorted(before))
        shape = json.loads(self.index("stat", "i", "--json").stdout)
        self.assertEqual((shape["keyLength"], shape["linesWithCutKey"]), (32, 0))
        self.assertNotIn("collationVersion", shape)

    def test_DamageAnywhereIsNoticedOrDoesNotMatter(self):
        seed = new_seed()
        source = random.Random(seed)
        self.create_words("XoIString", WORDS)
        content = self.read("i")
        for _ in range(5 if IS_SANITIZED else 25):
            damaged = bytearray(content)
            for _ in range(4):
                damaged[source.randrange(len(damaged))] = source.randrange(256)
            self.write("j", bytes(damaged))
            for command in (["verify"], ["dump"], ["find", "S*"], ["range", "a", "z"], ["stat"]):
                result = self.index(command[0], "j", *command[1:])
                self.assertIn(result.returncode, (0, 1, 2), (seed, command, result.stderr))


if __name__ == "__main__":
    unittest.main()
