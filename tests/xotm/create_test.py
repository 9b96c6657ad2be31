"""`xotm index create`: what becomes of the input."""

import os
import stat
import struct
import unittest

from xotm_support import DONE, FLOATING_TYPES, INTEGER_RANGES, ToolTest

LOWEST, HIGHEST = "-9223372036854775808", "9223372036854775807"


class Input(ToolTest):
    def test_AFileAndStandardInputGiveTheSameIndex(self):
        text = "3\tc\n1\ta\n2\tb\n"
        self.write("in", text)
        result = self.index("create", "one", "--type", "o_8b", "--input", "in")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        self.create("two", text)
        self.assertEqual(self.lines("range", "one", LOWEST, HIGHEST), ["1\ta", "2\tb", "3\tc"])
        self.assertEqual(self.lines("range", "two", LOWEST, HIGHEST), ["1\ta", "2\tb", "3\tc"])

    def test_TheReportTellsEntriesAndDistinctKeys(self):
        result = self.create("i", "5\n5\n7\n")
        self.assertEqual(result.stdout, b"i: 3 entries, 2 distinct keys of type o_8b\n")

    def test_NothingButTheIndexIsLeftInTheFolder(self):
        self.create("i", "1\n")
        self.lines("find", "i", "1")
        self.assertEqual(self.files(), ["i"])

    def test_ColumnAndDelimiterChooseTheField(self):
        self.create("i", "x;7;y\nz;-8;\n", "--column", "2", "--delimiter", ";")
        self.assertEqual(self.lines("range", "i", LOWEST, HIGHEST), ["z;-8;", "x;7;y"])

    def test_TheTabIsTheDelimiterAndCanBeSpelled(self):
        self.create("i", "a\t1\n", "--column", "2")
        self.create("j", "a\t1\n", "--column", "2", "--delimiter", "\\t")
        self.create("k", "a\t1\n", "--column", "2", "--delimiter", "\t")
        for name in "ijk":
            self.assertEqual(self.lines("find", name, "1"), ["a\t1"])

    def test_TheLastColumnNeedsNoDelimiterBehindIt(self):
        self.create("i", "1,2,3\n", "--column", "3", "--delimiter", ",")
        self.assertEqual(self.lines("find", "i", "3"), ["1,2,3"])

    def test_SkippedHeaderLinesKeepTheirNumbers(self):
        self.create("i", "head\nhead\n10\n11\n", "--skip", "2")
        self.assertEqual(
            self.lines("range", "i", "0", "99", "--line-numbers"), ["3:10", "4:11"]
        )

    def test_LinesWithoutAValueAreSkippedAndCounted(self):
        result = self.create("i", "1\nx\n\n9999999999999999999\n5\n", "--on-error", "skip")
        self.assertIn(b"without a value skipped: 3, the first of them line 2", result.stdout)
        self.assertEqual(self.lines("range", "i", "0", "9", "--line-numbers"), ["1:1", "5:5"])
        self.assert_in_order("i")

    def test_LinesWithoutTheColumnAreSkippedAndCounted(self):
        result = self.create("i", "a\t1\nb\n", "--column", "2", "--on-error", "skip")
        self.assertIn(b"skipped: 1,", result.stdout)

    def test_TheCountIsReportedWhenItIsZero(self):
        result = self.create("i", "1\n", "--on-error", "skip")
        self.assertIn(b"skipped: 0\n", result.stdout)

    def test_BlanksAPlusSignAndACarriageReturnAreTolerated(self):
        self.create("i", b" 1\n2 \n\t3\t\n+4\n5\r\n +6 \r\n007\n", "--delimiter", ";")
        self.assertEqual(
            self.index("range", "i", "1", "7").stdout,
            b" 1\n2 \n\t3\t\n+4\n5\r\n +6 \r\n007\n",
        )

    def test_AByteOrderMarkBeforeTheFirstLineIsPassedOver(self):
        self.create("i", b"\xef\xbb\xbf1\n2\n")
        self.assertEqual(self.index("find", "i", "1").stdout, b"1\n")

    def test_TheLastLineNeedsNoLineFeed(self):
        self.create("i", "1\n2")
        self.assertEqual(self.lines("find", "i", "2"), ["2"])

    def test_LinesAreKeptToTheByte(self):
        line = b"1\t" + bytes(set(range(256)) - {0x0A})
        self.create("i", line + b"\n")
        self.assertEqual(self.index("find", "i", "1").stdout, line + b"\n")

    def test_LinesLongerThanAPageOrABlockOfReadingAreKept(self):
        texts = [f"{size}\t{'x' * size}" for size in (4000, 5000, 262140, 262144, 1000000)]
        self.create("i", "\n".join(texts) + "\n")
        for text in texts:
            self.assertEqual(self.lines("find", "i", text.split("\t")[0]), [text])
        self.assert_in_order("i")

    def test_MoreValuesThanAreSortedAtOnceEndUpInOneOrder(self):
        count = 1_100_000
        self.create("i", "\n".join(map(str, range(count, 0, -1))), type="o_4b")
        self.assertEqual(self.lines("range", "i", "2", "1099998", "--count"), ["1099997"])
        self.assertEqual(self.lines("find", "i", "1", "--line-numbers"), ["1100000:1"])
        self.assert_in_order("i")


class Replacing(ToolTest):
    def test_AnIndexIsReplacedByOneOfAnotherType(self):
        self.create("i", "1\n2\n3\n")
        self.create("i", "0.5\n-0.5\n", "--byte-order", "big", type="o_double")
        self.assertEqual(self.lines("range", "i", "-inf", "inf"), ["-0.5", "0.5"])
        self.assert_in_order("i")

    def test_AReplacedIndexIsAsSmallAsANewOne(self):
        text = "\n".join(map(str, range(20000)))
        sizes = []
        for _ in range(3):
            self.create("i", text)
            sizes.append(len(self.read("i")))
        self.assertEqual(sizes, sizes[:1] * 3)
        self.assert_in_order("i")

    def test_PermissionsAreThoseOfTheEarlierIndexOrOfAnyNewFile(self):
        def permissions():
            return stat.S_IMODE(os.stat(self.path("i")).st_mode)

        def mask():
            os.umask(0o027)

        self.create("i", "1\n", preexec_fn=mask)
        self.assertEqual(permissions(), 0o640)
        os.chmod(self.path("i"), 0o604)
        self.create("i", "1\n", preexec_fn=mask)
        self.assertEqual(permissions(), 0o604)

    def test_AnIndexBehindALinkIsReplacedThereAndTheLinkStays(self):
        os.mkdir(self.path("folder"))
        self.create("folder/i", "1\n")
        os.symlink("folder/i", self.path("link"))
        self.create("link", "2\n")
        self.assertTrue(os.path.islink(self.path("link")))
        self.assertEqual(self.lines("range", "folder/i", "0", "9"), ["2"])

    def test_ALinkToNoFileYetGetsItsFile(self):
        os.mkdir(self.path("folder"))
        os.symlink("folder/i", self.path("link"))
        self.create("link", "1\n")
        self.assertTrue(os.path.islink(self.path("link")))
        self.assertEqual(self.lines("find", "folder/i", "1"), ["1"])

    def test_AFailedBuildLeavesTheEarlierIndexToTheByte(self):
        self.create("i", "1\n2\n3\n")
        before = self.read("i")
        for text in ("4\nx\n", "", "\n".join(map(str, range(300000))) + "\nx\n"):
            result = self.index("create", "i", "--type", "o_8b", "--input", "-", input=text)
            self.assert_trouble(result, "standard input")
            self.assertEqual(self.read("i"), before)
        self.assertEqual(self.files(), ["i"])

    def test_AFailedBuildOfANewIndexLeavesNothingBehind(self):
        for text in ("1\nx\n", "", "\n".join(map(str, range(300000))) + "\nx\n"):
            result = self.index("create", "i", "--type", "o_8b", "--input", "-", input=text)
            self.assert_trouble(result, "standard input")
            self.assertEqual(self.files(), [])

    def test_AFileThatIsNoIndexIsNotTouched(self):
        for content in (b"", b"some notes\n", bytes(100000)):
            self.write("notes", content)
            result = self.index("create", "notes", "--type", "o_8b", "--input", "-", input="1\n")
            self.assert_trouble(result, "notes", "no index")
            self.assertEqual(self.read("notes"), content)


class DiskForm(ToolTest):
    def test_ValuesAreStoredInTheChosenByteOrder(self):
        value = 0x1122334455667788
        self.create("little", f"{value}\n")
        self.create("big", f"{value}\n", "--byte-order", "big")
        self.assertIn(struct.pack("<q", value), self.read("little"))
        self.assertNotIn(struct.pack(">q", value), self.read("little"))
        self.assertIn(struct.pack(">q", value), self.read("big"))
        self.assertNotIn(struct.pack("<q", value), self.read("big"))


class Numbers(ToolTest):
    def assert_accepted(self, type_name, *texts):
        self.create("i", "\n".join(texts), type=type_name)

    def assert_refused(self, type_name, text, reason):
        result = self.index("create", "i", "--type", type_name, "--input", "-", input=text + "\n")
        self.assert_trouble(result, "standard input, line 1", f"'{text}'", reason, type_name)

    def test_IntegersReachToTheEndsOfTheirTypeAndNoFurther(self):
        for type_name, (low, high) in INTEGER_RANGES.items():
            self.assert_accepted(type_name, str(low), str(high), "0", "1")
            for value in (low - 1, high + 1, 10**30):
                self.assert_refused(type_name, str(value), "out of the range")

    def test_MinusZeroIsAnUnsignedNumber(self):
        self.assert_accepted("o_u4b", "-0")

    def test_WhatIsNoWholeNumberIsNoInteger(self):
        texts = ["x", "1.5", "1e3", "0x10", "1 2", "--1", "+-1", "-+1", "++1", "+", "-", "1,000"]
        for text in texts + ["inf", "nan", "١"]:
            result = self.index("create", "i", "--type", "o_4b", "--input", "-", input=text + "\n")
            self.assert_trouble(result, "line 1", "no value of type o_4b")

    def test_AnEmptyFieldIsNoNumber(self):
        for type_name in ("o_4b", "o_double"):
            for text in ("", "  ", "\ta"):
                result = self.index(
                    "create", "i", "--type", type_name, "--input", "-", input=f"{text}\n"
                )
                self.assert_trouble(result, "line 1: ''", "no value")

    def test_FloatingPointNumbersAreDecimalHexadecimalInfiniteOrNone(self):
        accepted = ["1", "-1.5", ".5", "5.", "1e10", "1E-10", "+2.5", "inf", "-INF", "Infinity"]
        for type_name in FLOATING_TYPES:
            self.assert_accepted(type_name, *accepted, "nan", "-NaN", "0e99999", "-0.0", "0x1p4")
            for text in ("x", "1e", "1,5", "inf1", "1 2", "e5", "."):
                self.assert_refused(type_name, text, "no value")

    def test_FloatingPointNumbersBeyondTheTypeAreOutOfRange(self):
        beyond_float = ("1e39", "-1e39", "3.5e38", "1e-50")
        self.assert_accepted("o_double", *beyond_float)
        for text in beyond_float:
            self.assert_refused("o_float", text, "out of the range")
        for text in ("1e309", "-1e309", "1e99999", "1e-400"):
            self.assert_refused("o_double", text, "out of the range")
        self.assert_accepted("o_double", "1.7976931348623157e308", "5e-324")
        self.assert_accepted("o_float", "3.4028234663852886e38")


if __name__ == "__main__":
    unittest.main()
