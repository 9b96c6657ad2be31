"""`xotm key`: the bytes of keys, field by field; those of weighted texts, and colours."""

import unittest

from xotm_support import DONE, ToolTest


class Key(ToolTest):
    def rows(self, *arguments):
        """(bytes, field, meaning) of each row of the report."""
        result = self.run_tool("key", *arguments)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""), arguments)
        lines = result.stdout.decode().splitlines()
        return [(line[:7].strip(), line[7:17].strip(), line[17:].strip()) for line in lines]

    def weights(self, text, type, *options):
        """What the report says of the weights."""
        rows = self.rows(text, "--type", type, *options)
        return [(row[0], row[2]) for row in rows if row[1] == "weight"]


class WeightedKeys(Key):
    def test_FieldsStandInTheirOrder(self):
        self.assertEqual(
            self.rows("ab", "--type", "XoIString"),
            [("c0", "tag", "a key: weights in place of characters"),
             ("03 00", "payload", "3 bytes behind this field"),
             ("4e", "weight", "78  a, as à á â ã ä"),
             ("5a", "weight", "90  b"),
             ("00", "end", "of the weights")])
        self.assertEqual(self.rows("", "--type", "XoIString")[1][0], "01 00")
        self.assertEqual(self.rows("ab", "--type", "XoIString", "--byte-order", "big")[1][0],
                         "00 03")

    def test_LowerCaseComesBeforeUpperCaseOrIsTheSame(self):
        self.assertEqual(self.weights("bB", "XoIString"), [("5a", "90  b"), ("5b", "91  B")])
        self.assertEqual(self.weights("bB", "XoCaseIString"),
                         [("5b", "91  b, as B"), ("5b", "91  B, as b")])

    def test_AccentsDoNotWeigh(self):
        self.assertEqual(self.weights("é", "XoIString"), [("64", "100  é, as e è ê ë")])
        self.assertEqual(self.weights("é", "XoCaseIString"),
                         [("69", "105  é, as E e È É Ê Ë è ê ë")])

    def test_ACharacterMayWeighAsTwoLetters(self):
        self.assertEqual(self.weights("ß", "XoIString"), [("9c", "156  ß"), ("9c", "156  +")])
        self.assertEqual(self.weights("s", "XoIString"), [("9c", "156  s")])
        self.assertEqual(self.weights("œ", "XoCaseIString"),
                         [("90", "144  œ, as Œ"), ("69", "105  +")])
        self.assertEqual([each[0] for each in self.weights("oe", "XoCaseIString")], ["90", "69"])

    def test_ControlsAndSpacesAreShownByTheirNumbers(self):
        self.assertEqual(self.weights(" \x1b", "XoIString"), [("20", "32  20"), ("1b", "27  1b")])

    def test_AKeyIsCutToItsRoom(self):
        for length, is_cut in (("7", True), ("8", False)):
            rows = self.rows("abcd", "--type", "XoIString", "--key-length", length)
            self.assertEqual(len(rows), 2 + (3 if is_cut else 4) + 1)
            end = "cut: no room for more in 7 bytes" if is_cut else "of the weights"
            self.assertEqual(rows[-1], ("00", "end", end))
        self.assertEqual(self.weights("aß", "XoIString", "--key-length", "6")[-1],
                         ("9c", "156  ß"))

    def test_WhatHasNoSuchKeyIsTrouble(self):
        def refused(*arguments):
            return self.run_tool("key", *arguments)

        self.assert_trouble(refused("Ж", "--type", "XoIString"), "windows-1252", "U+0416")
        self.assert_trouble(refused("a", "--type", "XoIString", "--language", "German"), "XoString")
        self.assert_trouble(refused("a", "--type", "XoCaseIString", "--code-set", "1"), "XoString")
        self.assert_trouble(refused("1", "--type", "o_4b"), "o_4b")
        self.assert_trouble(refused("1", "--type", "XoIStrin"), "XoIString")
        self.assert_trouble(refused("a", "--type", "XoIString", "--key-length", "5"), "--key-length")


class Sizes(Key):
    def sizes(self, text, *options):
        result = self.run_tool("key", "--sizes", "-", *options, input=text)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return dict(line.rsplit(None, 1) for line in result.stdout.decode().splitlines())

    def test_AreSumsOverTheKeysOfAllLines(self):
        # Keys of weights have 3 bytes before the weights and 1 behind them, those of orders, of
        # which each has 2 bytes, 4 and 2.
        self.assertEqual(self.sizes("a\nß\né\n", "--type", "XoIString"), {
            "texts": "3", "bytes of a text, in UTF-8": "1.7", "bytes of a key": "5.3",
            "keys that are cut": "0", "distinct keys": "3"})
        self.assertEqual(self.sizes("a\nabc\n"), {
            "texts": "2", "bytes of a text, in UTF-8": "2.0", "bytes of a key": "10.0",
            "keys that are cut": "0", "distinct keys": "2"})

    def test_TellWhichTextsHaveOneKey(self):
        text = "e\nE\né\r\n"
        for type, count in (("XoString", "3"), ("XoIString", "2"), ("XoCaseIString", "1")):
            self.assertEqual(self.sizes(text, "--type", type)["distinct keys"], count)

    def test_CountKeysThatAreCut(self):
        for type, length in (("XoString", "8"), ("XoIString", "6")):
            sizes = self.sizes("ab\nabc\nabcd\n", "--type", type, "--key-length", length)
            self.assertEqual(sizes["keys that are cut"], "2" if type == "XoIString" else "3")

    def test_PassOverWhatTheCodeSetLacks(self):
        sizes = self.sizes("a\nЖ\n", "--type", "XoIString")
        self.assertEqual((sizes["texts"], sizes["lines that windows-1252 lacks"]), ("1", "1"))
        self.assertEqual(self.sizes("")["bytes of a key"], "-")

    def test_OfWhatCannotBeReadAreTrouble(self):
        self.assert_trouble(self.run_tool("key", "--sizes", "absent"), "absent")
        self.assert_trouble(self.run_tool("key", "--sizes", "-", input=b"a\n\xff\n"), "line 2")
        self.assert_trouble(self.run_tool("key", "a", "--sizes", "-"), "--sizes")
        self.assert_trouble(self.run_tool("key"), "TEXT")


class Colours(Key):
    def test_KeysOfOrdersHaveThemOnATerminal(self):
        coloured = self.assert_coloured_on_terminal("key", "a1-")
        # A letter, a digit, a symbol and what is around them.
        for colour in (b"\x1b[32m", b"\x1b[36m", b"\x1b[33m", b"\x1b[2m"):
            self.assertIn(colour, coloured)
        self.assertNotIn(b"\x1b[1;31m", coloured)
        self.assertIn(b"\x1b[1;31m", self.on_terminal("key", "abcd", "--key-length", "8"))

    def test_KeysOfWeightsHaveThemOnATerminal(self):
        coloured = self.assert_coloured_on_terminal("key", "é1-", "--type", "XoCaseIString")
        self.assertRegex(coloured, rb"\x1b\[32m69 ")
        self.assertRegex(coloured, rb"\x1b\[36m31 ")
        self.assertRegex(coloured, rb"\x1b\[33m2d ")
        self.assertIn(b"\x1b[1;31m", self.on_terminal("key", "abcd", "--type", "XoIString",
                                                      "--key-length", "6"))


if __name__ == "__main__":
    unittest.main()
