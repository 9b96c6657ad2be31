"""`xotm text`: which of two texts comes first and why, and the lines that match a pattern."""

import fnmatch
import json
import os
import random
import unittest

from xotm_support import DONE, NOTHING_FOUND, ToolTest, new_seed

# Orders of the letters that the tests use: letter value times 4, accent times 128, case, class.
LETTER, LOWER = 16384, 0x3000
ACUTE, CIRCUMFLEX = 2 * 128, 4 * 128


def lower(letter, accent=0):
    return LETTER + LOWER + 4 * (ord(letter) - ord("a") + 3) + accent


class Compare(ToolTest):
    def output(self, *arguments, **options):
        result = self.run_tool("text", "compare", *arguments, **options)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return result.stdout.decode()

    def report(self, *arguments):
        return json.loads(self.output("--json", *arguments))

    def assert_decided(self, a, b, result, level, *arguments):
        """The result one way round, the opposite the other way round, and the level both ways."""
        for first, second, expected in ((a, b, result), (b, a, -result)):
            report = self.report(*arguments, "--", first, second)
            self.assertEqual((report["result"], report["level"]), (expected, level),
                             (first, second))

    def test_TheStrongestLevelDecides(self):
        self.assert_decided("abc", "abc", 0, "equal")
        self.assert_decided("ab", "ac", -1, "letters")
        self.assert_decided("ab", "abc", -1, "letters")
        self.assert_decided("Éa", "eb", -1, "letters")
        self.assert_decided("E", "é", -1, "accents")
        self.assert_decided("a", "A", -1, "case")
        self.assert_decided("ab", "a b", -1, "spaces and symbols")
        self.assert_decided("a b", "ac", -1, "letters")
        self.assert_decided("a-b", "A-b", -1, "case")
        self.assert_decided("a b", "a-b", -1, "spaces and symbols")
        self.assert_decided("", "a", -1, "letters")
        self.assert_decided("", "", 0, "equal")

    def test_TheLastAccentAndTheFirstCaseDecide(self):
        self.assert_decided("côte", "coté", -1, "accents")
        self.assert_decided("aB", "Ab", -1, "case")
        report = self.report("côte", "coté")
        self.assertEqual([pair["differs"] for pair in report["pairs"]],
                         [[], ["accents"], [], ["accents"]])
        self.assertEqual(report["decider"], 3)
        self.assertEqual(self.report("aB", "Ab")["decider"], 0)

    def test_AnIgnoredLevelDoesNotDecide(self):
        self.assert_decided("a", "A", 0, "equal", "--op", "ignore-case")
        self.assert_decided("é", "e", 0, "equal", "--op", "ignore-accents")
        self.assert_decided("É", "e", 1, "accents", "--op", "ignore-case")
        self.assert_decided("É", "e", 1, "case", "--op", "ignore-accents")
        self.assert_decided("É", "e", 0, "equal", "--op", "ignore-accents,ignore-case")
        self.assert_decided("a b", "ab", 0, "equal", "--op", "skip-spaces")
        self.assert_decided("a-b", "ab", 0, "equal", "--op", "skip-symbols")
        self.assert_decided("a-b", "ab", 1, "spaces and symbols", "--op", "skip-spaces")
        self.assert_decided("a-b", "a b", 0, "equal", "--op", "skip-spaces", "--op", "skip-symbols")

    def test_APlainComparisonHasNoLevels(self):
        # By the key of the first order that differs: a space comes before every letter there.
        self.assert_decided("a b", "ab", -1, "order keys", "--op", "plain")
        self.assert_decided("éa", "eb", 1, "order keys", "--op", "plain")
        self.assertEqual(self.report("a*", "ab", "--op", "plain,wildcards")["level"], "order keys")

    def test_OperatorsMayBeNumbers(self):
        self.assertEqual(self.report("a", "A", "--op", "0x0030")["operator"], 0x30)
        self.assertEqual(self.report("a", "A", "--op", "48")["operator"], 0x30)
        self.assertEqual(self.report("a", "A", "--op", "0x20,0x10")["operator"], 0x30)
        self.assertEqual(self.report("a", "A", "--op", "0x20,skip-spaces")["operator"], 0xA0)
        self.assertEqual(self.report("a", "A", "--op", "0x30,wildcards")["operator"], 0x20)
        self.assertEqual(self.report("a", "A")["operator"], 0x10)
        # All bits stand for the default.
        self.assertEqual(self.report("a", "A", "--op", "65535")["operator"], 0x10)

    def test_TheOtherTextIsAPatternUnderWildcards(self):
        for pattern in ("a*", "*c", "a?c", "*", "**", "abc", "?b?"):
            report = self.report("abc", pattern, "--op", "wildcards")
            self.assertEqual((report["result"], report["level"]), (0, "equal"), pattern)
        for text, pattern in (("ab", "a?c"), ("", "?"), ("abd", "a*c"), ("abc", "ab")):
            report = self.report(text, pattern, "--op", "wildcards")
            self.assertNotEqual(report["result"], 0, pattern)
            self.assertEqual(report["level"], "letters", pattern)
        self.assertEqual(self.report("", "*", "--op", "wildcards")["result"], 0)
        self.assertNotEqual(self.report("a*", "abc", "--op", "wildcards")["result"], 0)
        self.assertIn("abc matches a*\n", self.output("abc", "a*", "--op", "wildcards"))
        self.assertIn("Abc does not match a*: case\n",
                      self.output("Abc", "a*", "--op", "wildcards"))

    def test_OrdersOfAPatternStandUnderWhatTheyStandFor(self):
        def pairs(text, pattern):
            report = self.report(text, pattern, "--op", "wildcards")
            return [(pair["first"], pair["second"]) for pair in report["pairs"]]

        self.assertEqual(pairs("abc", "a?c"), [(0, 0), (1, 1), (2, 2)])
        self.assertEqual(pairs("abc", "*c"), [(0, 0), (1, 0), (2, 1)])
        self.assertEqual(pairs("abab", "*ab"), [(0, 0), (1, 0), (2, 1), (3, 2)])
        self.assertEqual(pairs("ab", "a*b"), [(0, 0), (None, 1), (1, 2)])
        self.assertEqual(pairs("", "*"), [(None, 0)])

    def test_OrdersOfBothTextsStandBeneathEachOther(self):
        report = self.report("a b", "ab")
        self.assertEqual([(pair["first"], pair["second"]) for pair in report["pairs"]],
                         [(0, 0), (1, None), (2, 1)])
        self.assertEqual(report["decider"], 1)
        report = self.report("coté", "ô")
        self.assertEqual([each["order"] for each in report["first"]],
                         [lower("c"), lower("o"), lower("t"), lower("e", ACUTE)])
        self.assertEqual(report["second"], [
            {"text": "ô", "order": lower("o", CIRCUMFLEX), "group": 2,
             "name": "lower letter o with accent circumflex"}])

        lines = self.output("té", "tè").splitlines()
        self.assertEqual(lines[0], "té < tè, decided by accents")
        self.assertEqual([line.split() for line in lines[-5:]],
                         [["A", "t", "é"],
                          ["order", str(lower("t")), str(lower("e", ACUTE))],
                          ["B", "t", "è"],
                          ["order", str(lower("t")), str(lower("e", 3 * 128))],
                          ["differs", "accents"]])
        # The same column of the terminal from top to bottom.
        self.assertEqual(len({line.index(mark) for line, mark in
                              zip(lines[-5:], ["é", str(lower("e", ACUTE)), "è",
                                               str(lower("e", 3 * 128)), "accents"])}), 1)

    def test_OrdersShowTheLevelThatTheComparisonNames(self):
        seed = new_seed()
        source = random.Random(seed)
        for _ in range(60):
            first, second = ("".join(source.choices("aAbéÉßæ -'?漢ch\u0301", k=source.randrange(8)))
                             for _ in range(2))
            operator = source.choice(["0x10", "0x30", "0x50", "0x70", "0x90", "0x210", "0x100"])
            report = self.report("--op", operator, "--", first, second)
            told = f"{first!r} {second!r} {operator} XOTM_SEED={seed}"
            # Every order stands somewhere, once.
            for side in ("first", "second"):
                places = [pair[side] for pair in report["pairs"] if pair[side] is not None]
                self.assertEqual(places, list(range(len(report[side]))), told)
            differing = [place for place, pair in enumerate(report["pairs"])
                         if report["level"] in pair["differs"]]
            self.assertEqual(differing == [], report["level"] == "equal", told)
            if differing:
                last = report["level"] in ("accents", "spaces and symbols")
                self.assertEqual(report["decider"], differing[-1 if last else 0], told)

    def test_LongTextsAreBrokenIntoLines(self):
        lines = self.output("x" * 300, "x" * 300).splitlines()
        self.assertLessEqual(max(map(len, lines[2:])), 80)
        self.assertEqual(sum(line.startswith("A ") and line.count("x") for line in lines), 300)

    def test_ContractionsAndExpansionsAreShownAsTheySort(self):
        first = self.report("chata", "c", "--language", "Czech")["first"]
        self.assertEqual([each["text"] for each in first], ["ch", "a", "t", "a"])
        first = self.report("ßa", "c")["first"]
        self.assertEqual([each["text"] for each in first], ["ß", "", "a"])
        self.assert_decided("chata", "cukr", 1, "letters", "--language", "cs")
        self.assert_decided("chata", "cukr", -1, "letters", "--language", "en")
        self.assert_decided("Straße", "Strasze", -1, "letters", "--language", "de")

    def test_CodeSetsCompareAlike(self):
        for code_set in ("253", "1", "windows-1252", "IBM037"):
            self.assert_decided("côte", "coté", -1, "accents", "--code-set", code_set)
            report = self.report("é", "e", "--code-set", code_set)
            self.assertEqual([each["text"] for each in report["first"]], ["é"])

    def test_DashesAndBlanksOfATextArePartOfIt(self):
        self.assertTrue(self.output("--", "-inf", "-inf").startswith("-inf = -inf\n"))
        self.assertTrue(self.output("--", " a", "a ").startswith(" a < a , decided by spaces"))
        self.assertTrue(self.output("--", "[a]", "'a'").startswith("[a] > 'a',"))

    def test_ControlCharactersDoNotReachTheTerminal(self):
        self.assertNotIn("\x1b", self.output("a\x1b[31m", "\x1b"))
        self.assertNotIn("\x1b", self.output("--json", "a\x1b[31m", "\x1b"))

    def test_OnlyATerminalGetsColours(self):
        self.assert_coloured_on_terminal("text", "compare", "a", "A")

    def test_WhatCannotBeAStringIsTrouble(self):
        def refused(a, b, *arguments):
            return self.run_tool("text", "compare", a, b, *arguments)

        self.assert_trouble(refused(os.fsdecode(b"a\xff"), "b"), "UTF-8", "byte 1")
        self.assert_trouble(refused("b", os.fsdecode(b"\xc0\x80")), "UTF-8", "byte 0")
        self.assert_trouble(refused("b", os.fsdecode(b"\xed\xa0\x80")), "UTF-8", "byte 0")
        self.assert_trouble(refused("b", os.fsdecode(b"ab\xe6\xbc")), "UTF-8", "byte 2")
        self.assert_trouble(refused("\U0001F600", "a"), "U+1F600")
        self.assert_trouble(refused("漢", "a", "--code-set", "1"), "ISO-8859-1", "U+6F22")
        self.assert_trouble(refused("a" * 32766, "a"), "32765 characters")
        self.assertIn(" > é, decided by letters", self.output("é" * 32765, "é"))

    def test_UnknownOptionsAreTroubleWithASuggestion(self):
        def refused(*arguments):
            return self.run_tool("text", "compare", "a", "b", *arguments)

        self.assert_trouble(refused("--op", "ignorecase"), "'ignorecase'", "'ignore-case'")
        self.assert_trouble(refused("--op", "zzz"), "'zzz'", "wildcards")
        self.assert_trouble(refused("--op", ""), "''")
        self.assert_trouble(refused("--op", "0x"), "'0x'")
        self.assert_trouble(refused("--op", "0x10000"), "16 bits")
        self.assert_trouble(refused("--op", "99999999999999999999"), "99999999999999999999")
        self.assert_trouble(refused("--op", "wildcards,no-wildcards"), "wildcards")
        self.assert_trouble(refused("--language", "Swedsh"), "Swedish")
        self.assert_trouble(refused("--code-set", "254"), "254")
        self.assert_trouble(self.run_tool("text", "compare", "a"), "--help")


class Match(ToolTest):
    def matching(self, pattern, text, *arguments):
        """The lines that match, with the exit code that goes with them."""
        result = self.run_tool("text", "match", *arguments, "--", pattern, "-", input=text)
        self.assertEqual(result.stderr, b"")
        self.assertEqual(result.returncode, DONE if result.stdout else NOTHING_FOUND)
        return result.stdout.decode().splitlines()

    def test_LinesThatMatchArePrintedInTheirOrder(self):
        text = "cab\nabc\nb\nabbc\nac\n"
        self.assertEqual(self.matching("a*c", text), ["abc", "abbc", "ac"])
        self.assertEqual(self.matching("a?c", text), ["abc"])
        self.assertEqual(self.matching("*b*", text), ["cab", "abc", "b", "abbc"])
        self.assertEqual(self.matching("*", "a\n\nb\n"), ["a", "", "b"])
        self.assertEqual(self.matching("?", "a\n\nbc\n"), ["a"])
        self.assertEqual(self.matching("x*", text), [])
        self.assertEqual(self.matching("*", ""), [])

    def test_PatternsOfLettersMatchAsTheyDoElsewhere(self):
        seed = new_seed()
        source = random.Random(seed)
        lines = sorted({"".join(source.choices("ab", k=source.randrange(1, 9)))
                        for _ in range(400)})
        text = "".join(line + "\n" for line in lines)
        for _ in range(40):
            pattern = "".join(source.choices("ab*?", k=source.randrange(1, 6)))
            expected = [line for line in lines if fnmatch.fnmatchcase(line, pattern)]
            for operator in ("0", "ignore-case", "ignore-accents", "ignore-case,ignore-accents"):
                self.assertEqual(self.matching(pattern, text, "--op", operator), expected,
                                 f"{pattern} {operator} XOTM_SEED={seed}")

    def test_OptionsOfAComparisonChangeWhatMatches(self):
        text = "Éa\nea\nEa\néa\n"
        self.assertEqual(self.matching("e*", text), ["ea"])
        self.assertEqual(self.matching("e*", text, "--op", "ignore-case"), ["ea", "Ea"])
        self.assertEqual(self.matching("e*", text, "--op", "ignore-accents"), ["ea", "éa"])
        self.assertEqual(self.matching("e*", text, "--op", "ignore-accents,ignore-case"),
                         ["Éa", "ea", "Ea", "éa"])
        self.assertEqual(self.matching("a*", "a*\nab\n", "--op", "no-wildcards"), ["a*"])
        self.assertEqual(self.matching("ab", "a b\na-b\nab\n", "--op", "skip-spaces"),
                         ["a b", "ab"])

    def test_LanguageDecidesWhatIsOneCharacter(self):
        self.assertEqual(self.matching("?ata", "chata\nkata\n", "--language", "cs"),
                         ["chata", "kata"])
        self.assertEqual(self.matching("?ata", "chata\nkata\n"), ["kata"])

    def test_LineEndsAreNoPartOfALine(self):
        self.assertEqual(self.matching("ab", "ab\r\nb\r\nab"), ["ab", "ab"])
        self.assertEqual(self.matching("ab", "\ufeffab\n"), ["ab"])

    def test_AFileThatIsNotUtf8IsTrouble(self):
        self.write("words.txt", b"ab\ncd\na\xe9b\n")
        result = self.run_tool("text", "match", "x", "words.txt")
        self.assert_trouble(result, "words.txt, line 3 is not UTF-8", "byte 1")
        self.assert_trouble(self.run_tool("text", "match", "x", "absent"), "absent", "No such file")
        self.assert_trouble(
            self.run_tool("text", "match", os.fsdecode(b"\xff"), "words.txt"), r"'\xff'", "UTF-8")

    def test_APatternIsNeverChangedByACodeSet(self):
        # As a question mark it would match everything.
        result = self.run_tool("text", "match", "漢", "-", "--code-set", "1", input="a\n")
        self.assert_trouble(result, "ISO-8859-1", "U+6F22")

    def test_CharactersThatAStringCannotHoldAreTold(self):
        result = self.run_tool("text", "match", "a*", "-", input="b\na\U0001F600\na\U0001F601\n")
        self.assertEqual((result.returncode, result.stdout.decode()),
                         (DONE, "a\U0001F600\na\U0001F601\n"))
        self.assertRegex(
            result.stderr.decode(),
            r"\Axotm: note: standard input, line 2: [^\n]*U\+1F600, [^\n]*U\+F600 \(2 lines"
            r"[^\n]*\n\Z")


if __name__ == "__main__":
    unittest.main()
