"""Searches between bounds against scans over everything: no line that satisfies is missed."""

import datetime
import itertools
import json
import os
import random
import unittest

from xotm_support import DONE, IS_SANITIZED, RELATIONS, ToolTest, new_seed

FLAGS = ("ignore-case", "ignore-accents", "skip-spaces", "skip-symbols")
# Case twins, accents, letters that sort as two, spaces, symbols, digits, and other scripts.
PIECES = ["a", "A", "á", "Á", "b", "c", "ch", "e", "é", "ß", "ss", "ö", " ", "  ", "-", "'", "_", "1",
          "10", "α", "Α", "б", "漢", "\u3001", "か", "한", "\ufffd", "\uffff", "⒜", "℃", "ﬁ", "\u00ad", "\u0301"]
SETTINGS = (("253", "0"), ("253", "cs"), ("253", "sv"), ("253", "de"), ("253", "el"), ("253", "ru"))
NASTY = ["", " ", "  ", "-", "--", "'", "- -", "a-b", "a b", "ab", "AB", "Ab", "aB", "a-", "a--", "a---bcd",
         "abc", "α", " α", "- α", "aα", "Aα", "a-α", "a α", "aαb", "-aα", "、", "、a", "a、b", "漢", "漢a",
         "a漢", "1", "1α", "ß", "ss", "SS"]
WORDS = "/usr/share/dict/ngerman"


class Strings(ToolTest):
    """What `explain` tells that a search finds, against the place of the value in a sorted list."""

    def create_words(self, words, key_length, *arguments):
        self.words = words
        self.text = "".join(word + "\n" for word in words)
        self.options = arguments
        self.create("i", self.text, "--key-length", key_length, *arguments, type="XoString")

    def counts(self, value, flags):
        """How many of the words come before the value, and how many are equal to it."""
        # A stable sort puts the first line before its equals and the last one behind.
        ends = value + "\n"
        operators = ",".join(["no-wildcards", *flags])
        result = self.run_tool("sort", "-", *self.options, "--op", operators,
                               input=ends + self.text + ends)
        self.assertEqual(result.stderr, b"")
        ordered = result.stdout.decode().split("\n")[:-1]
        # Words that are the value may only stand between the two ends.
        first = ordered.index(value)
        last = len(ordered) - 1 - ordered[::-1].index(value)
        return first, last - first - 1

    def assert_finds(self, sign, value, flags, use):
        less, equal = self.counts(value, flags)
        order = [-1] * less + [0] * equal + [1] * (len(self.words) - less - equal)
        expected = sum(RELATIONS[sign](each, 0) for each in order)
        options = ["--no-wildcards", *(f"--{flag}" for flag in flags)]
        told = self.explain(f"{sign} {value}", *options)
        self.assertEqual(told["found"], expected, (sign, value, flags, use))

    def test_EveryRelationFindsWhatStandsOnItsSideInASortedList(self):
        seed = new_seed()
        source = random.Random(seed)
        for _ in range(2 if IS_SANITIZED else 6):
            words = list(NASTY)
            while len(words) < 120:
                chosen = source.sample(PIECES, k=source.randrange(1, 5))
                word = "".join(source.choices(chosen, k=source.randrange(1, 12)))
                words.append(word if source.random() < 0.7 else source.choice(words) + word)
            source.shuffle(words)
            key_length = source.choice((8, 9, 10, 12, 16, 24, 64, 254, 255, 256))
            code_set, language = source.choice(SETTINGS)
            byte_order = source.choice(("little", "big"))
            self.create_words(words, key_length, "--code-set", code_set, "--language", language)
            if byte_order == "big":
                self.create("i", self.text, "--key-length", key_length, "--byte-order", "big",
                            *self.options, type="XoString")
            for _ in range(5 if IS_SANITIZED else 15):
                flags = source.sample(FLAGS, k=source.choice((0, 0, 1, 1, 2, 4)))
                self.assert_finds(source.choice(list(RELATIONS)), source.choice(words), flags,
                                  f"{self.options}, {byte_order}, key length {key_length}, "
                                  f"XOTM_SEED={seed}")

    def test_RealWordsAreFoundByEveryRelation(self):
        if not os.path.exists(WORDS):
            self.skipTest("there is no list of words")
        seed = new_seed()
        source = random.Random(seed)
        with open(WORDS, encoding="utf-8") as file:
            words = source.sample(file.read().split("\n")[:-1], 1500)
        words += [word.upper() for word in words[:200]] + [word + "-" for word in words[:200]]
        for key_length in (8, 16, 64):
            self.create_words(words, key_length, "--language", "de")
            for sign in RELATIONS:
                flags = source.sample(FLAGS, k=source.choice((0, 0, 1, 2, 4)))
                self.assert_finds(sign, source.choice(words), flags,
                                  f"key length {key_length}, XOTM_SEED={seed}")

    def lines_found(self, *arguments):
        return [json.loads(line)["line"] for line in self.lines(*arguments, "--json")]

    def test_ATextThatComesAfterByWhatIsCutOffIsFound(self):
        # Four orders of the first are left, which come before those of the value.
        self.create_words(["a---bcd", "abb", "abc", "abd"], 12)
        self.assertEqual(self.lines_found("range", "i", "abc", "b"), [1, 3, 4])
        self.assertEqual(self.explain("> abc")["found"], 2)
        self.assertEqual(self.explain("< abc")["found"], 1)

    def test_ATextWhoseLettersAllFollowAChangeOfScriptIsFound(self):
        self.create_words(["- β", "b", "α", "γ"], 64)
        self.assertEqual(self.explain(">= b")["found"], 4)
        self.assertEqual(self.explain("< -β")["found"], 2)
        # Of the keys of both, all that is left are the spaces and symbols.
        self.assertEqual(self.lines_found("range", "i", "b", "β"), [2, 3])
        self.assertEqual(self.lines_found("range", "i", "b", "γ"), [1, 2, 3, 4])

    def test_OrdersAboveThatOfTheBoundAreInside(self):
        self.create_words(["str", "stra\uffffx", "stra\ufffe", "stsa"], 64)
        self.assertEqual(self.lines_found("find", "i", "stra*"), [3, 2])

    def test_EqualTextsAreOneStretchWhateverIsIgnored(self):
        words = ["co-op", "Co-op", "CÓ-OP", "coop", "co-opt", "co-oα", "co-oβ", "Co-oβ"]
        for key_length in (8, 10, 12, 64):
            self.create_words(words, key_length)
            flags = ("--ignore-case", "--ignore-accents")
            self.assertEqual(sorted(self.lines_found("find", "i", "co-op", *flags)), [1, 2, 3])
            self.assertEqual(sorted(self.lines_found("find", "i", "co-oβ", *flags)), [7, 8])
            self.assertEqual(sorted(self.lines_found("find", "i", "co-op*", *flags)), [1, 2, 3, 5])

    def test_BoundsThatAreCutTakeInWhatTheyBegin(self):
        # Bounds have room for 125 orders, keys for up to 126.
        words = [ending.join(("a" * count, "")) for count in range(120, 130) for ending in "bcdeé"]
        for key_length in (248, 252, 253, 254, 255, 256):
            self.create_words(words, key_length)
            for count in range(120, 130):
                line = words.index("a" * count + "d") + 1
                value = "a" * count
                self.assertEqual(self.lines_found("find", "i", value + "d"), [line])
                self.assertEqual(sorted(self.lines_found("find", "i", value + "E", "--ignore-case",
                                                         "--ignore-accents")), [line + 1, line + 2])
                self.assertEqual(len(self.lines_found("find", "i", value + "*")),
                                 5 * (130 - count))
                self.assertEqual(sorted(self.lines_found("range", "i", value + "d", value + "e")),
                                 [line, line + 1])

    def visited(self, *arguments):
        message = self.index(*arguments, "--count", "--stats").stderr.decode()
        return int(message.split("keys visited: ")[1].split(",")[0])

    def test_ASearchStaysBetweenItsBounds(self):
        words = ["".join(word) for word in itertools.product("abcd", repeat=5)]
        self.create_words(words, 64)
        # The keys that it finds and the one behind them; one seek for each letter of a lower end.
        self.assertEqual(self.visited("find", "i", "bcd*"), 16 + 1)
        self.assertEqual(self.visited("find", "i", "bcdab"), 1 + 1)
        self.assertLessEqual(self.visited("find", "i", "bc-dab", "--skip-symbols"), 1 + 1 + 5)
        self.assertLessEqual(self.visited("range", "i", "bcdaa", "bcddd"), 16 + 1 + 5)
        told = self.explain("= bcd*")
        self.assertEqual((told["visited"], told["found"]), (17, 16))
        # Where the script changes the value is no beginning of what matches.
        self.create_words([*words, "bβ", "bγ", "bγ"], 64)
        self.assertEqual(self.visited("find", "i", "bγ"), 1 + 1)

    @unittest.skipIf(IS_SANITIZED, "a sanitized tool takes its time for so many words")
    def test_ABeginningOfRealWordsVisitsLittleMoreThanItFinds(self):
        if not os.path.exists(WORDS):
            self.skipTest("there is no list of words")
        result = self.index("create", "i", "--type", "XoString", "--language", "de", "--input", WORDS)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        depth = json.loads(self.index("stat", "i", "--json").stdout)["keys"]["depth"]
        for beginning in ("stra", "ab", "über", "fluss"):
            told = self.explain(f"= {beginning}*", "--ignore-case", "--ignore-accents")
            self.assertGreater(told["found"], 50)
            self.assertLessEqual(told["visited"], 1.2 * told["selected"] + depth)
        told = self.explain("= stra*", "--ignore-case")
        self.assertLessEqual(told["visited"], 1.2 * told["selected"] + depth)

    def test_ALookUpOfALongTextIsOneSeekToo(self):
        words = ["a" * 40 + letter for letter in "abcdefgh"] + ["b" * number for number in range(1, 60)]
        self.create_words(words, 24)
        # Ten orders are there of a key, and all that fill it and begin so share one.
        self.assertEqual(self.visited("find", "i", "a" * 40 + "c"), 2)
        self.assertEqual(self.lines_found("find", "i", "a" * 40 + "c"), [3])
        self.assertEqual(self.lines_found("find", "i", "a" * 40 + "?"), [*range(1, 9)])


class WeightedTexts(ToolTest):
    """Letters order as aAbB...; where case does not count, they are one."""

    def test_EveryRelationFindsWhatAScanFinds(self):
        seed = new_seed()
        source = random.Random(seed)
        for type_name in ("XoIString", "XoCaseIString"):
            fold = str.upper if type_name == "XoCaseIString" else str
            key = lambda word: [(each.isalpha(), each.lower(), each.isupper()) for each in fold(word)]
            for key_length in (6, 7, 10, 64, 254, 256):
                words = ["".join(source.choices("aAbBnZ1-*", k=source.randrange(1, 10)))
                         for _ in range(100)]
                # Longer than a bound has room for.
                words += ["a" * number for number in range(245, 258)]
                self.create("i", "".join(word + "\n" for word in words), "--key-length",
                            key_length, type=type_name)
                for _ in range(3 if IS_SANITIZED else 12):
                    sign, value = source.choice(list(RELATIONS)), source.choice(words)
                    expected = sum(RELATIONS[sign](key(word), key(value)) for word in words)
                    told = self.explain(f"{sign} {value}", "--no-wildcards")
                    self.assertEqual(told["found"], expected,
                                     (sign, value, type_name, key_length, f"XOTM_SEED={seed}"))


class FixedValues(ToolTest):
    """Values of every type in the order of the tree, each of which is a value to look for."""

    STAMP = "%Y-%m-%d %H:%M:%S"
    SAMPLES = {
        "o_char": ["-128", "-1", "0", "5", "127"],
        "o_u2b": ["0", "1", "256", "65535"],
        "o_4b": ["-2147483648", "-1", "0", "1", "2147483647"],
        "o_double": ["nan", "-inf", "-1.5", "0", "1e-300", "inf"],
        "o_float": ["nan", "-inf", "-1", "0", "1", "inf"],
        "BlockId": ["0", "7", "4294967295"],
        "XoInt64": ["-9223372036854775808", "-1", "0", "9223372036854775807"],
        "o_u8b": ["0", "1", "18446744073709551615"],
        "XoBoolean": ["{NULL}", "FALSE", "TRUE"],
        "XoSeal": ["0", "1", "65536", "281474976710655"],
        "XoNull_short": ["{NULL}", "-32768", "0", "32767"],
        "XoNull_ulong": ["{NULL}", "0", "4294967295"],
        "XoNull_double": ["{NULL}", "-inf", "-1", "0", "1e300"],
        "XoNull_u8b": ["{NULL}", "0", "18446744073709551615"],
        "XoDate": ["-400-01-01", "1999-12-31", "2000-01-01", "2000-01-31", "9999-12-31"],
        "XoDateTime": ["1999-12-31 23:59:59", "2000-01-01 00:00:00", "2000-01-01 00:00:01"],
        "XoDateTimeN": ["1999-12-31 23:59:59", "2000-01-01 00:00:00", "2000-01-01 00:00:01"],
        "enum": ["-1", "0", "5"],
        "XoTime": ["00:00:00", "12:30:00", "23:59:59"],
        "d_Time": ["00:00:00", "12:30:00", "23:59:59"],
        "d_Interval": ["00 days, 00 hours, 00 minutes, 01 seconds",
                       "01 days, 00 hours, 00 minutes, 00 seconds"],
        "XoTimeSpan": ["0.0:0:0", "1.0:0:0", "1.0:0:1"],
        "XoRef": ["(1:1-2#3, 4)", "(1:1-3#3, 4)", "(2:0-2#3, 4)"],
        "XoClassId": ["(1v0)", "(1v1)", "(2v0)"],
        "XoObjId": ["(0-1#0)", "(0-2#0)", "(1-0#0)"],
        "d_Date": ["1999-12-31", "2000-01-01", "2000-02-29"],
        "d_Timestamp": ["1999-12-31 23:59:59", "2000-01-01 00:00:00", "2000-01-01 00:00:01"],
    }
    FORMATS = {"XoDate": "%Y-%m-%d", "d_Date": "%Y-%m-%d", "XoDateTime": STAMP,
               "XoDateTimeN": STAMP, "d_Timestamp": STAMP, "BlockId": "%lu", "XoTime": "%H:%M:%S",
               "d_Time": "%H:%M:%S"}

    def test_EveryRelationCountsFromThePlaceOfTheValue(self):
        byte_orders = itertools.cycle(("little", "big"))
        for (type_name, texts), byte_order in zip(self.SAMPLES.items(), byte_orders):
            text_format = self.FORMATS.get(type_name)
            options = ["--format", text_format] if text_format else []
            # Each value has a line more than the one before it.
            lines = [text for number, text in enumerate(texts) for _ in range(number + 1)]
            self.create("i", "".join(line + "\n" for line in lines), "--byte-order", byte_order,
                        *options, type=type_name)
            for place, text in enumerate(texts):
                for sign, relation in RELATIONS.items():
                    expected = sum(number + 1 for number in range(len(texts))
                                   if relation(number, place))
                    told = self.explain(f"{sign} {text}", *options)
                    self.assertEqual(told["found"], expected, (type_name, byte_order, sign, text))

    def test_ARangeHasBothItsEnds(self):
        for type_name, texts in self.SAMPLES.items():
            text_format = self.FORMATS.get(type_name)
            options = ["--format", text_format] if text_format else []
            self.create("i", "".join(text + "\n" for text in texts), *options, type=type_name)
            for low, high in ((0, len(texts) - 1), (1, len(texts) - 1), (0, 1), (1, 0)):
                self.assertEqual(self.lines("range", "i", texts[low], texts[high], *options),
                                 texts[low : high + 1], type_name)


class Dates(ToolTest):
    """Patterns against plain loops, among keys that may be patterns themselves."""

    def test_AKeyWithWildcardsIsNotMissed(self):
        lines = ["2010-02-*", "2010-02-05", "2010-*-05", "*-02-05", "2010-03-01", "2010-01-05"]
        for type_name in ("XoDate", "d_Date"):
            self.create("i", "".join(line + "\n" for line in lines), "--format", "%Y-%m-%d",
                        "--patterns", type=type_name)
            find = lambda *arguments: sorted(
                self.lines("find", "i", "--format", "%Y-%m-%d", *arguments))
            self.assertEqual(find("2010-02-*"), ["2010-02-*", "2010-02-05"])
            self.assertEqual(find("2010-*-05"), ["2010-*-05", "2010-01-05", "2010-02-05"])
            self.assertEqual(find("2010-02-*", "--no-wildcards"), ["2010-02-*"])
            self.assertEqual(find("*-02-05", "--no-wildcards"), ["*-02-05"])
            self.assertEqual(find("2010-*-*"), sorted(line for line in lines if line[0] != "*"))

    def test_ATimeWithWildcardsIsNotMissed(self):
        lines = ["10:*:30", "10:05:30", "11:05:30", "*:05:30", "10:05:*"]
        self.create("i", "".join(line + "\n" for line in lines), "--format", "%H:%M:%S",
                    "--patterns", type="XoTime")
        find = lambda value: sorted(self.lines("find", "i", "--format", "%H:%M:%S", value))
        self.assertEqual(find("10:*:30"), ["10:*:30", "10:05:30"])
        self.assertEqual(find("*:05:30"), ["*:05:30", "10:05:30", "11:05:30"])
        self.assertEqual(find("10:05:*"), ["10:05:*", "10:05:30"])

    def test_EveryPatternAndRelationSelectsWhatALoopDoes(self):
        seed = new_seed()
        source = random.Random(seed)
        days = [datetime.date(2008, 11, 20) + datetime.timedelta(days=source.randrange(900))
                for _ in range(200)]
        for type_name in ("XoDate", "d_Date"):
            self.create("i", "".join(f"{day}\n" for day in days), "--format", "%Y-%m-%d",
                        type=type_name)
            for _ in range(4 if IS_SANITIZED else 15):
                chosen = source.choice(days)
                fields = [chosen.year, chosen.month, chosen.day]
                kept = [source.random() < 0.6 for _ in fields]
                pattern = "-".join(f"{field:02}" if keep else "*" for field, keep in zip(fields, kept))
                sign = source.choice(list(RELATIONS))
                # A wildcard is passed over.
                pick = lambda values: [value for value, keep in zip(values, kept) if keep]
                expected = sum(RELATIONS[sign](pick([day.year, day.month, day.day]), pick(fields))
                               for day in days)
                told = self.explain(f"{sign} {pattern}", "--format", "%Y-%m-%d")
                self.assertEqual(told["found"], expected,
                                 (type_name, sign, pattern, f"XOTM_SEED={seed}"))


if __name__ == "__main__":
    unittest.main()
