"""`xotm intl`: code sets, languages, sort orders and the collation's version."""

import json
import os
import unittest

from xotm_support import DONE, ToolTest


class Intl(ToolTest):
    def output(self, *arguments):
        result = self.run_tool("intl", *arguments)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return result.stdout.decode()

    def orders(self, *arguments):
        return json.loads(self.output("order", *arguments, "--json"))

    def test_CodeSetsAreListedWithTheirNumbers(self):
        sets = {each["number"]: each for each in json.loads(self.output("code-sets", "--json"))}
        self.assertEqual(sets[1]["name"], "ISO-8859-1")
        self.assertEqual((sets[253]["name"], sets[253]["bytes"]), ("Unicode", 2))
        self.assertFalse(sets[32]["orderTable"])
        self.assertIn("windows-1252", self.output("code-sets"))

    def test_LanguagesAreListedWithTheirNumbers(self):
        languages = json.loads(self.output("languages", "--json"))
        self.assertEqual([each["number"] for each in languages], list(range(48)))
        self.assertEqual(languages[0]["name"], "neutral")
        self.assertEqual(languages[38], {
            "number": 38, "name": "Russian", "tag": "ru", "group": 4, "variants": False,
            "caseRules": False})
        self.assertIn("Swedish", self.output("languages"))

    def test_OrderTellsAnAccentedLetter(self):
        self.assertEqual(self.orders("é"), [{
            "text": "é", "codes": [0xE9], "characters": [0xE9], "order": 16384 + 7 * 4 + 2 * 128
            + 0x3000, "class": "letter", "group": 2, "letter": 7, "extension": 0, "accent": 2,
            "case": 3, "expansion": [], "contraction": False, "variant": False, "entry": True}])

    def test_OrderTellsSymbolsDigitsSpacesAndIdeographs(self):
        self.assertEqual([each["class"] for each in self.orders("*7 漢")],
                         ["symbol", "digit", "space", "ideograph"])
        self.assertEqual([each["order"] for each in self.orders("*7漢")], [159, 16198, 0x6F22])

    def test_LanguageChoosesContractionsAndVariants(self):
        czech = self.orders("chč", "--language", "Czech")
        self.assertEqual([(each["text"], each["contraction"]) for each in czech],
                         [("ch", True), ("č", False)])
        self.assertTrue(czech[1]["variant"])
        self.assertEqual(len(self.orders("chč")), 3)
        self.assertEqual(self.orders("chč", "--language", "22"), czech)
        self.assertEqual(self.orders("chč", "--language", "cs"), czech)

    def test_CodeSetChoosesTheCodes(self):
        self.assertEqual(self.orders("é", "--code-set", "24")[0]["codes"], [0x82])
        self.assertEqual(self.orders("é", "--code-set", "IBM437")[0]["characters"], [0xE9])
        ebcdic = self.orders("a", "--code-set", "IBM037")[0]
        self.assertEqual((ebcdic["codes"], ebcdic["letter"]), ([0x81], 3))

    def test_CharactersThatAStringCannotHoldAreTold(self):
        def codes(*arguments):
            result = self.run_tool("intl", "order", "--json", *arguments)
            self.assertEqual(result.returncode, DONE)
            self.assertRegex(result.stderr, rb"\Axotm: note: [^\n]+\n\Z")
            return json.loads(result.stdout)[0]["codes"]

        self.assertEqual(codes("漢", "--code-set", "1"), [ord("?")])
        self.assertEqual(codes("\U0001F600"), [0xF600])

    def test_TextIsShownAsATable(self):
        lines = self.output("order", "ß").splitlines()
        self.assertEqual(lines[0].split()[:5], ["text", "code", "order", "class", "group"])
        self.assertEqual(lines[1].split()[:2], ["ß", "00DF"])

    def test_VersionTellsTheFingerprint(self):
        version = json.loads(self.output("version", "--json"))
        self.assertRegex(version["fingerprint"], "^[0-9a-f]{16}$")
        self.assertEqual(
            self.output("version"),
            f"collation version {version['version']}, fingerprint {version['fingerprint']}\n")

    def test_UnknownNamesAreTroubleWithASuggestion(self):
        self.assert_trouble(
            self.run_tool("intl", "order", "a", "--language", "Swedsh"), "Swedsh", "Swedish")
        self.assert_trouble(self.run_tool("intl", "order", "a", "--language", "255"), "255")
        self.assert_trouble(self.run_tool("intl", "order", "a", "--code-set", "99"), "99")
        self.assert_trouble(self.run_tool("intl", "order", "a", "--code-set", "254"), "254")

    def test_WhatIsNotUtf8IsTrouble(self):
        self.assert_trouble(self.run_tool("intl", "order", os.fsdecode(b"a\xff")), "UTF-8", "byte 1")


if __name__ == "__main__":
    unittest.main()
