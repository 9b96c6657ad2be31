"""`xotm index explain`: bounds, estimate and truth of predicates, against counts made here."""

import datetime
import fnmatch
import itertools
import json
import random
import re
import unittest

from xotm_support import IS_SANITIZED, RELATIONS, ToolTest, new_seed

DATE = "%Y-%m-%d"


class ExplainTest(ToolTest):
    def assert_selects(self, keys, predicate, test, *arguments):
        told = self.explain(predicate, *arguments)
        self.assertEqual(told["keys"], len(keys))
        self.assertEqual(told["selected"], sum(map(test, keys)), predicate)
        return told


class Numbers(ExplainTest):
    def test_BoundsAreTheBytesOfTheValueAndEndWhereTheRelationDoes(self):
        self.create("i", "".join(f"{n}\n" for n in range(1, 101)), type="o_4b")
        fifteen = {"bytes": "0f 00 00 00", "meaning": "15"}
        # Relation: lower bound, upper bound, keys that it selects and that a search comes to, which
        # sees by the key behind the upper bound that it has passed it.
        expected = {
            "<": (None, fifteen, 14, 16),
            "<=": (None, fifteen, 15, 16),
            "=": (fifteen, fifteen, 1, 2),
            ">=": (fifteen, None, 86, 86),
            ">": (fifteen, None, 85, 86),
            "<>": (None, None, 99, 100),
        }
        for sign, (low, high, selected, visited) in expected.items():
            with self.subTest(sign):
                told = self.explain(sign + " 15")
                self.assertEqual((told["low"], told["high"]), (low, high))
                self.assertEqual((told["selected"], told["visited"]), (selected, visited))
                self.assertEqual(told["found"], selected)
                self.assertFalse(told["pattern"])
                # The keys are spread as evenly as the model has it.
                self.assertAlmostEqual(told["estimate"], selected / 100, places=6)

    def test_BytesAreInTheByteOrderOfTheIndex(self):
        self.create("i", "1\n258\n", "--byte-order", "big", type="o_2b")
        self.assertEqual(self.explain("= 258")["low"], {"bytes": "01 02", "meaning": "258"})

    def test_TheReportHasALineForEach(self):
        self.create("i", "".join(f"{n}\n" for n in range(1, 101)), type="o_4b")
        result = self.index("explain", "i", "<15")
        self.assertEqual(
            result.stdout.decode(),
            "type         o_4b\n"
            "lower bound  none: the scan begins at the lowest key\n"
            "upper bound  0f 00 00 00\n"
            "             15\n"
            "pattern      no\n"
            "estimate     14.0000 %\n"
            "true share   14.0000 %: 14 of 100 keys\n"
            "visited      16 keys\n"
            "found        14 lines\n",
        )

    def test_CountsAreThoseOfAPlainLoop(self):
        seed = new_seed()
        random.seed(seed)
        for type_name in ("o_8b", "o_double", "XoNull_short"):
            numbers = [random.randrange(-99, 99) for _ in range(80)]
            self.create("i", "".join(f"{n}\n" for n in numbers), type=type_name)
            keys = set(numbers)
            for _ in range(3 if IS_SANITIZED else 12):
                sign, value = random.choice(list(RELATIONS)), random.randrange(-110, 110)
                with self.subTest(seed=seed, type=type_name):
                    told = self.assert_selects(
                        keys, f"{sign} {value}", lambda key: RELATIONS[sign](key, value)
                    )
                    self.assertFalse(told["scansAll"])
                    if sign != "<>":
                        self.assertLessEqual(told["visited"], told["selected"] + 2)


class Dates(ExplainTest):
    def days(self):
        first = datetime.date(2019, 12, 1)
        return [first + datetime.timedelta(days=3 * n) for n in range(150)]

    def test_APatternHasTheBoundsOfTheDaysThatItStandsFor(self):
        days = self.days()
        self.create("i", "".join(f"{day}\n" for day in days), "--format", DATE, type="XoDate")
        told = self.assert_selects(
            days, "= 2020-02-*", lambda day: (day.year, day.month) == (2020, 2), "--format", DATE
        )
        self.assertTrue(told["pattern"])
        self.assertEqual(told["low"]["meaning"], "2020-02-01")
        self.assertEqual(told["high"]["meaning"], "2020-02-29")
        self.assertEqual(told["visited"], told["selected"] + 1)

    def test_AWildcardYearIsLookedForEverywhere(self):
        days = self.days()
        self.create("i", "".join(f"{day}\n" for day in days), "--format", DATE, type="XoDate")
        told = self.assert_selects(days, "= *-02-*", lambda day: day.month == 2, "--format", DATE)
        self.assertTrue(told["scansAll"])
        self.assertEqual(told["visited"], len(days))


class Texts(ExplainTest):
    def create_words(self, words, *arguments, type_name="XoString"):
        self.create("i", "".join(word + "\n" for word in words), *arguments, type=type_name)

    def test_APatternIsScannedFromItsBeginningToTheOrderAboveAllOthers(self):
        self.create_words(["Stab", "strafe", "Strand", "STRASSE", "strawberry", "Strom", "tram"])
        told = self.explain("= stra*", "--ignore-case")
        # Lower case comes first; what the pattern begins with has four letters.
        self.assertEqual(told["low"]["meaning"].count("lower letter"), 4)
        self.assertEqual(told["high"]["meaning"].count("upper letter"), 4)
        self.assertTrue(told["high"]["meaning"].endswith("65534 (above all others)"))
        self.assertEqual((told["selected"], told["visited"]), (4, 5))
        self.assertTrue(told["pattern"])
        told = self.explain("= stra*")
        self.assertEqual(told["selected"], 2)

    def test_ALeadingWildcardHasNoBounds(self):
        self.create_words(["zig", "zag", "zigzag"])
        told = self.explain("= *zag")
        self.assertEqual((told["low"], told["high"], told["visited"]), (None, None, 3))
        self.assertEqual(told["selected"], 2)

    def test_ALongPatternDoesNotVisitCutKeysOfOtherLetters(self):
        words = [letter * 30 for letter in "abcdefgh"]
        self.create_words(words, "--key-length", "16")
        told = self.explain("= " + "d" * 20 + "*")
        self.assertEqual((told["selected"], told["visited"]), (1, 2))

    def test_CountsAreThoseOfAPlainLoop(self):
        seed = new_seed()
        random.seed(seed)
        for key_length in (12, 64):
            words = ["".join(random.choices("abc", k=random.randrange(1, 9))) for _ in range(80)]
            words = sorted(set(words))
            self.create_words(words, "--key-length", str(key_length))
            # Words that are cut alike have one key, which is selected if one of them is.
            keys = {}
            for word in words:
                keys.setdefault(word[: (key_length - 4) // 2], []).append(word)
            for _ in range(4 if IS_SANITIZED else 15):
                with self.subTest(seed=seed, key_length=key_length):
                    if random.randrange(2):
                        pattern = random.choice(words)[: random.randrange(1, 5)] + "*"
                        predicate = "= " + pattern
                        test = lambda word: fnmatch.fnmatchcase(word, pattern)
                    else:
                        sign, value = random.choice(list(RELATIONS)), random.choice(words)
                        predicate = f"{sign} {value}"
                        test = lambda word: RELATIONS[sign](word, value)
                    self.assert_selects(
                        keys.values(), predicate, lambda texts: any(map(test, texts))
                    )

    def test_WeightedTextsHaveTheirWeightsAsBounds(self):
        words = ["apple", "Berlin", "berth", "best", "zoo"]
        for type_name in ("XoIString", "XoCaseIString"):
            with self.subTest(type_name):
                self.create_words(words, type_name=type_name)
                told = self.explain("= ber*")
                self.assertTrue(told["low"]["meaning"].startswith("weights "))
                self.assertTrue(told["high"]["meaning"].startswith(told["low"]["meaning"]))
                self.assertTrue(told["pattern"])
                folds = type_name == "XoCaseIString"
                self.assertEqual(told["selected"], 2 if folds else 1)
                self.assertEqual(self.explain(">= cat")["selected"], 1)

    def test_OptionsOfTextAreThoseOfTheSearch(self):
        self.create_words(["co-op", "coop", "côté", "cote"])
        self.assertEqual(self.explain("= cote", "--ignore-accents")["selected"], 2)
        self.assertEqual(self.explain("= coop", "--skip-symbols")["selected"], 2)
        told = self.explain("< cote", "--skip-symbols")
        self.assertEqual((told["selected"], told["found"]), (2, 2))

    def test_APatternHasNoOrder(self):
        self.create_words(["ab", "ac", "b"])
        told = self.explain("< ac*")
        self.assertTrue(told["scansAll"])
        self.assertEqual(told["visited"], 3)


class Searches(ExplainTest):
    """What `find` comes to, by the bounds that are explained."""

    def visited(self, *arguments):
        """(lines found, keys visited)"""
        message = self.index("find", "i", *arguments, "--count", "--stats").stderr.decode()
        return tuple(map(int, re.match(r"xotm: lines found: (\d+), keys visited: (\d+),",
                                       message).groups()))

    def test_APatternOfDaysIsScannedBetweenItsBoundsAlone(self):
        first = datetime.date(2019, 12, 1)
        days = [first + datetime.timedelta(days=3 * n) for n in range(150)]
        self.create("i", "".join(f"{day}\n" for day in days), "--format", DATE, type="XoDate")
        matching = sum((day.year, day.month) == (2020, 2) for day in days)
        # And the first key behind them.
        self.assertEqual(self.visited("2020-02-*", "--format", DATE), (matching, matching + 1))
        february = sum(day.month == 2 for day in days)
        self.assertEqual(self.visited("*-02-*", "--format", DATE), (february, len(days)))

    def test_ABeginningVisitsLittleMoreThanWhatItFinds(self):
        letters = "arst"
        words = ["".join(word) for word in itertools.product(letters, repeat=7)]
        words += [word.upper() for word in words]
        self.create("i", "".join(word + "\n" for word in words), type="XoString")
        depth = json.loads(self.index("stat", "i", "--json").stdout)["keys"]["depth"]
        found, visited = self.visited("stra*", "--ignore-case")
        self.assertEqual(found, 2 * len(letters) ** 3)
        self.assertLessEqual(visited, 1.2 * found + depth)


class Trouble(ExplainTest):
    def test_WhatIsNoPredicateIsRefused(self):
        self.create("i", "1\n2\n", type="o_4b")
        for predicate in ("15", "", "!= 3", "like 3"):
            result = self.index("explain", "i", predicate)
            self.assert_trouble(result, "is no predicate", "< <= = >= > <>")
        self.assert_trouble(self.index("explain", "i", "< x"), "'x' is no value of type o_4b")
        self.assert_trouble(self.index("explain", "i", "="), "is no value of type o_4b")

    def test_OptionsThatTheTypeDoesNotKnowAreRefused(self):
        self.create("i", "1\n2\n", type="o_4b")
        result = self.index("explain", "i", "< 2", "--ignore-case")
        self.assert_trouble(result, "compared in one way alone")
        self.create("i", "a\n", type="XoString")
        self.assert_trouble(self.index("explain", "i", "< a", "--format", "%d"), "no format")


if __name__ == "__main__":
    unittest.main()
