"""`xotm sort`: the lines of a text in the order of its language."""

import os
import random
import unittest

from xotm_support import DONE, ToolTest, new_seed


class Sort(ToolTest):
    def sorted_lines(self, lines, *arguments, seed=1):
        """`lines`, handed over shuffled, as the tool sorts them."""
        shuffled = list(lines)
        random.Random(seed).shuffle(shuffled)
        result = self.run_tool(
            "sort", "-", *arguments, input="".join(line + "\n" for line in shuffled))
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        self.assertTrue(result.stdout.endswith(b"\n") or not lines)
        return result.stdout.decode().split("\n")[:-1]

    def assert_order(self, language, words, *arguments):
        expected = words.split() if isinstance(words, str) else words
        for seed in range(3):
            self.assertEqual(
                self.sorted_lines(expected, "--language", language, *arguments, seed=seed),
                expected)

    # The orders of the dictionaries of each language, except that accents count from the end and
    # lower case precedes upper case in all of them.

    def test_EnglishHasCaseBehindLetters(self):
        self.assert_order("English", "a A ab Abe able Able ace Zoo")

    def test_GermanHasUmlautsAtTheirLettersAndInThePhoneBookAtTheirPairs(self):
        self.assert_order("German", "arm Ärmel Arzt Masse Maße Mast Ofen oft öfter Zug")
        self.assert_order("German, phone book", "Adler Ärmel Affe Mueller Müller Muller")

    def test_FrenchReadsAccentsFromTheEnd(self):
        self.assert_order("French", "cote côte coté côté cotes élan")

    def test_SpanishHasAnNWithTildeBehindN(self):
        self.assert_order("Spanish", "canto caña cañón capa")
        self.assert_order("Spanish", "canuto caña")

    def test_TraditionalSpanishHasChAndLlAsLetters(self):
        self.assert_order("Spanish, traditional", "cuna chico dama luz llama mano")
        self.assert_order("Spanish", "chico cuna dama llama luz mano")

    def test_SwedishHasItsLettersBehindZ(self):
        self.assert_order("Swedish", "ad zebra ål ärta öl")

    def test_DanishHasItsLettersBehindZAndDoubleAWithThem(self):
        self.assert_order("Danish", "abe zoo æble øl ål aal åre")

    def test_PolishHasAccentedLettersAsLetters(self):
        self.assert_order("Polish", "cena ćma lot łoś zero źle żaba")

    def test_CzechHasChBehindH(self):
        self.assert_order("Czech", "cena čas hora chata igla")

    def test_RussianHasItsAlphabet(self):
        self.assert_order("Russian", "а бык вода ёж ежа жук яма")

    # What holds in every language.

    def test_SpacesAndSymbolsComeLast(self):
        self.assert_order("0", ["coop", "co op", "co-op", "coops"])

    def test_LinesThatAreEqualStayAsTheyWere(self):
        result = self.run_tool(
            "sort", "-", "--op", "ignore-case,ignore-accents", input="c\nA\nb\na\nB\ná\n")
        self.assertEqual(result.stdout.decode(), "A\na\ná\nb\nB\nc\n")
        result = self.run_tool(
            "sort", "-", "--op", "ignore-case,skip-spaces", input="x y\nX Y\nxy\nX y\n")
        self.assertEqual(result.stdout.decode(), "x y\nX Y\nxy\nX y\n")

    def test_CodeSetsSortAlike(self):
        words = ["abc", "Abc", "ábc", "côte", "coté", "été", "zèle"]
        for code_set in ("253", "1", "IBM037", "windows-1252"):
            self.assert_order("French", words, "--code-set", code_set)

    def test_NothingIsLostOrAdded(self):
        seed = new_seed()
        source = random.Random(seed)
        letters = "aAbBéÉßæ -'*?漢жλ0123\u0301\u200d"
        lines = ["".join(source.choices(letters, k=source.randrange(12))) for _ in range(3000)]
        self.assertEqual(
            sorted(self.sorted_lines(lines, seed=seed)), sorted(lines), f"XOTM_SEED={seed}")
        again = self.sorted_lines(lines, seed=seed + 1)
        result = self.run_tool("sort", "-", input="".join(line + "\n" for line in again))
        self.assertEqual(result.stdout.decode().split("\n")[:-1], again, f"XOTM_SEED={seed}")

    def test_ASortedFileAgreesWithTheComparison(self):
        seed = new_seed()
        source = random.Random(seed)
        lines = ["".join(source.choices("aAbéÉ -", k=source.randrange(1, 6))) for _ in range(30)]
        ordered = self.sorted_lines(lines)
        for first, second in zip(ordered, ordered[1:]):
            report = self.run_tool("text", "compare", "--json", "--", first, second).stdout.decode()
            self.assertNotIn('"result": 1', report, f"{first!r} {second!r} XOTM_SEED={seed}")

    # Files.

    def test_TheLastLineNeedsNoEnd(self):
        self.write("words.txt", "b\na")
        result = self.run_tool("sort", "words.txt")
        self.assertEqual((result.returncode, result.stdout), (DONE, b"a\nb\n"))

    def test_AByteOrderMarkAndCarriageReturnsAreNoText(self):
        self.write("words.txt", "\ufeffc\r\nbb\r\nb\r\n")
        self.assertEqual(self.run_tool("sort", "words.txt").stdout, b"b\r\nbb\r\nc\r\n")

    def test_AnEmptyFileHasNoLines(self):
        self.write("empty", "")
        result = self.run_tool("sort", "empty")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (DONE, b"", b""))
        self.assertEqual(self.run_tool("sort", "-", input="\n\n").stdout, b"\n\n")

    def refuse(self, content, *fragments):
        self.write("words.txt", content)
        result = self.run_tool("sort", "words.txt")
        self.assert_trouble(result, "words.txt", *fragments)
        self.assertEqual(result.stdout, b"")

    def test_ALineThatIsNotUtf8IsNamed(self):
        self.refuse(b"a\nb\nz\xe9ro\n", "line 3 is not UTF-8", "byte 1")
        self.refuse(b"a\n\xc0\xaf\n", "line 2 is not UTF-8", "byte 0")
        self.refuse(b"a\xe2\x82\n", "line 1 is not UTF-8", "byte 1")
        self.refuse(b"\xed\xb0\x80\n", "line 1 is not UTF-8")
        self.refuse(b"\xf4\x90\x80\x80\n", "line 1 is not UTF-8")
        self.refuse(b"\xf8\x88\x80\x80\x80\n", "line 1 is not UTF-8")
        self.refuse("ab\n".encode("utf-16-le"), "line 1", "zero at byte 1")

    def test_ALineThatIsTooLongIsNamed(self):
        self.refuse("a\n" + "b" * 32766 + "\n", "line 2 is longer than", "32765 characters")
        self.refuse("a\n" + "b" * 200000 + "\n", "line 2 is longer than", "32765 characters")

    def test_TheLongestLineIsSorted(self):
        long = ["é" * 32765, "é" * 32764 + "f", "漢" * 32765]
        self.assertEqual(self.sorted_lines(long), long)

    def test_FilesThatCannotBeReadAreTrouble(self):
        self.assert_trouble(self.run_tool("sort", "absent"), "absent", "No such file")
        os.mkdir(self.path("folder"))
        self.assert_trouble(self.run_tool("sort", "folder"), "folder", "directory")
        self.write("locked", "a\n")
        os.chmod(self.path("locked"), 0)
        user = self.as_ordinary_user()
        self.assert_trouble(self.run_tool("sort", "locked", **user), "locked", "Permission denied")

    def test_LinesCannotBeSortedByPatterns(self):
        for operator in ("wildcards", "0x0020", "0"):
            result = self.run_tool("sort", "-", "--op", operator, input="a\n")
            self.assert_trouble(result, "wildcards")

    def test_CharactersThatAStringCannotHoldAreTold(self):
        result = self.run_tool("sort", "-", "--code-set", "1", input="b\n漢\na\n")
        self.assertEqual((result.returncode, result.stdout.decode()), (DONE, "漢\na\nb\n"))
        self.assertRegex(
            result.stderr.decode(),
            r"\Axotm: note: standard input, line 2: ISO-8859-1 lacks U\+6F22, "
            r"[^\n]*question mark\n\Z")


if __name__ == "__main__":
    unittest.main()
