"""`xotm types` and the command line as a whole."""

import json
import re
import subprocess
import unittest

from xotm_support import DONE, FLOATING_TYPES, INTEGER_RANGES, TROUBLE, ToolTest

SCALARS = [*INTEGER_RANGES, *FLOATING_TYPES]


class Types(ToolTest):
    def table(self):
        result = self.run_tool("types", "--json")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        return json.loads(result.stdout)

    def test_JsonHasEveryRowInTheOrderOfIds(self):
        self.assertEqual([row["id"] for row in self.table()], list(range(47)))

    def test_JsonTellsTheRowOfALongInteger(self):
        self.assertEqual(
            self.table()[42],
            {
                "id": 42,
                "name": "o_8b",
                "idName": "Xo8B_T",
                "format": "%I64d",
                "memorySize": 8,
                "diskSize": 8,
                "fixed": True,
                "nullValue": False,
                "built": True,
            },
        )

    def test_JsonLeavesOpenWhatARowWithoutOperationsCannotTell(self):
        string = self.table()[11]
        self.assertEqual(string["name"], "XoString")
        self.assertEqual((string["memorySize"], string["fixed"]), (16, False))
        if not string["built"]:
            self.assertIsNone(string["diskSize"])
            self.assertIsNone(string["nullValue"])

    def test_ScalarsAreBuiltWithTheSizeOfTheirRange(self):
        rows = {row["name"]: row for row in self.table()}
        for name in SCALARS:
            with self.subTest(type=name):
                row = rows[name]
                self.assertTrue(row["built"] and row["fixed"])
                self.assertEqual(row["diskSize"], row["memorySize"])
                if name in INTEGER_RANGES:
                    low, high = INTEGER_RANGES[name]
                    self.assertEqual(256 ** row["diskSize"], high - low + 1)
        self.assertEqual(rows["o_double"]["diskSize"], 8)
        self.assertEqual(rows["o_float"]["diskSize"], 4)

    def test_TheReservedIdHasNoDiskForm(self):
        last = self.table()[46]
        self.assertEqual((last["name"], last["idName"]), ("illegal", "XoRES_T"))
        self.assertEqual((last["built"], last["diskSize"]), (False, None))

    def test_TextTableIsAlignedAndSaysTheSame(self):
        result = self.run_tool("types")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""))
        header, *rows = result.stdout.decode().splitlines()
        table = self.table()
        self.assertEqual(len(rows), len(table))
        format_column = header.index("format")
        for line, row in zip(rows, table):
            with self.subTest(type=row["name"]):
                self.assertEqual(line[format_column:], row["format"])
                cells = line[:format_column].split()
                disk = "-" if row["diskSize"] is None else str(row["diskSize"])
                null = {None: "-", True: "yes", False: "no"}[row["nullValue"]]
                self.assertEqual(
                    cells,
                    [
                        str(row["id"]),
                        row["name"],
                        row["idName"],
                        str(row["memorySize"]),
                        disk,
                        "yes" if row["fixed"] else "no",
                        null,
                        "yes" if row["built"] else "no",
                    ],
                )


class Check(ToolTest):
    def test_EveryRowAnswersAllThatItIsAsked(self):
        result = self.run_tool("types", "--check")
        self.assertEqual((result.returncode, result.stderr), (DONE, b""), result.stdout)
        rows, questions = map(int, re.findall(r"\d+", result.stdout.decode()))
        self.assertEqual(rows, 46)
        self.assertGreater(questions, 30 * rows)

    def test_CheckAndTableExcludeEachOther(self):
        self.assert_trouble(self.run_tool("types", "--check", "--json"), "--json")


class CommandLine(ToolTest):
    def test_HelpSucceedsEverywhere(self):
        commands = [[], ["types"], ["index"]]
        commands += [["index", name] for name in ("create", "find", "range", "dump", "stat", "verify")]
        for command in commands:
            with self.subTest(command=command):
                result = self.run_tool(*command, "--help")
                self.assertEqual((result.returncode, result.stderr), (DONE, b""))
                self.assertIn(b"Usage:", result.stdout)

    def test_VersionIsPrinted(self):
        result = self.run_tool("--version")
        self.assertEqual(result.returncode, DONE)
        self.assertRegex(result.stdout.decode(), r"\d+\.\d+\.\d+")

    def test_WrongUsageIsOneLineAndCodeTwo(self):
        wrong = [
            [],
            ["nonsense"],
            ["index"],
            ["index", "find"],
            ["index", "find", "i", "1", "2"],
            ["index", "range", "i", "1"],
            ["index", "stat", "i", "--nonsense"],
            ["index", "create", "i"],
            ["index", "create", "i", "--type", "o_8b"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--byte-order", "middle"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--on-error", "cry"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--column", "0"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--column", "two"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--skip", "-1"],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--delimiter", ""],
            ["index", "create", "i", "--type", "o_8b", "--input", "-", "--delimiter", "ab"],
            ["index", "find", "i", "1", "--byte-order", "middle"],
            ["types", "extra\nword"],
        ]
        for arguments in wrong:
            with self.subTest(arguments=arguments):
                self.assert_trouble(self.run_tool(*arguments))
        self.assertEqual(self.files(), [])

    def test_OutputThatCannotBeWrittenIsTrouble(self):
        self.create("i", "1\n")
        for arguments in (["types"], ["--help"], ["index", "find", "i", "1"], ["index", "stat", "i"]):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                result = self.run_tool(*arguments, stdout=full)
                self.assert_trouble(result, "standard output", "No space left on device")

    def test_CreateWhoseReportCannotBeWrittenLeavesTheEarlierIndex(self):
        self.create("i", "1\n")
        with open("/dev/full", "wb") as full:
            result = self.run_tool(
                "index", "create", "i", "--type", "o_8b", "--input", "-", input="2\n", stdout=full
            )
        self.assert_trouble(result, "standard output", "No space left on device")
        self.assertEqual(self.lines("find", "i", "1"), ["1"])
        self.assertEqual(self.files(), ["i"])

    def test_ClosedStandardOutputDoesNotEndUpInTheIndex(self):
        self.create("i", "1\n")
        before = self.read("i")
        result = subprocess.run(
            ["sh", "-c", '"$XOTM" index create j --type o_8b --input - >&-; exec "$XOTM" index find i 1 >&-'],
            input=b"5\n",
            stderr=subprocess.PIPE,
            cwd=self.folder,
        )
        self.assertEqual(result.returncode, TROUBLE)
        self.assertEqual(self.read("i"), before)
        # A report that nobody can read is a build that failed.
        self.assertEqual(self.files(), ["i"])


if __name__ == "__main__":
    unittest.main()
