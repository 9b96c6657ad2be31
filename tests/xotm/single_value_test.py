"""`xotm print` and `xotm convert`: single values under their formats."""

import os
import random
import struct
import unittest

from xotm_support import DONE, FLOATING_TYPES, INTEGER_RANGES, ToolTest, new_seed


class ValueTest(ToolTest):
    def output(self, *arguments, **options):
        """The lines that a run prints, which must go well."""
        result = self.run_tool(*arguments, **options)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""), arguments)
        return result.stdout.decode().splitlines()

    def printed(self, type, format, *values):
        return self.output("print", type, format, *values)

    def assert_bad(self, type, value, *fragments, scan_format=None):
        """The value is none of the type: one line that quotes it, and exit code 2."""
        options = [] if scan_format is None else ["--scan-format", scan_format]
        result = self.run_tool("print", type, "x", *options, "--", value)
        self.assert_trouble(result, type, *fragments)
        self.assertEqual(result.stdout, b"")


class Print(ValueTest):
    def test_FormatsOfNumbersAreThoseOfTheRuntime(self):
        self.assertEqual(self.printed("o_4b", "%05ld|", "7", "-7"), ["00007|", "-0007|"])
        self.assertEqual(self.printed("o_4b", "%-6lx|", "255"), ["ff    |"])
        self.assertEqual(self.printed("o_8b", "%I64d", "-9223372036854775808"),
                         ["-9223372036854775808"])
        self.assertEqual(self.printed("o_double", "%.2f", "2.5"), ["2.50"])
        self.assertEqual(self.printed("o_4b", "%s", "7"), ["%s"])

    def test_RowsWithLanguagesOfTheirOwnTakeTheirFormats(self):
        self.assertEqual(self.printed("XoInt64", "%x", "255", "-1"), ["0xff", "-0x1"])
        self.assertEqual(self.printed("XoDate", "%A %m", "Thu 15.Apr 2021"), ["Thursday 04"])
        self.assertEqual(self.printed("XoTimeSpan", "%J days", "423.04:05:06"), ["423 days"])
        self.assertEqual(self.printed("XoObjId", "%H/%L/%B", "(1-2#3)", "2#3"), ["1/2/3", "0/2/3"])
        self.assertEqual(self.printed("XoBlob", "%L bytes", "hello"), ["5 bytes"])
        self.assertEqual(self.printed("XoIString", "[%5s]", "Œil"), ["[  Œil]"])

    def test_NullPrintsAsSuch(self):
        for type in ("XoNull_int", "XoBoolean", "XoDate", "XoTimeSpan", "XoBlob", "XoString",
                     "XoClassId"):
            self.assertEqual(self.printed(type, "%d", "{NULL}"), ["{NULL}"], type)

    def test_LimitsOfWholeNumbersComeBackAndWhatIsBehindThemIsBad(self):
        for type, (low, high) in INTEGER_RANGES.items():
            if type in ("o_char", "o_u1b", "BlockId"):
                continue
            format = "%I64u" if type == "o_u8b" else "%I64d" if type == "o_8b" else None
            format = format or ("%u" if low == 0 else "%d")
            # Those of 16 bits print widened with their sign.
            format = "%hu" if type == "o_u2b" else format
            self.assertEqual(self.printed(type, format, low, high), [str(low), str(high)], type)
            self.assert_bad(type, str(high + 1))
            self.assert_bad(type, str(low - 1))

    def test_NumbersMayBeWrittenInAnotherWay(self):
        self.assertEqual(self.printed("o_4b", "%d", "007", "+7", " 7 "), ["7"] * 3)
        self.assertEqual(self.printed("o_double", "%.1f", "1e3", ".5", "+2", "1.50"),
                         ["1000.0", "0.5", "2.0", "1.5"])
        self.assertEqual(self.printed("o_float", "%.1f", "0.1"), ["0.1"])
        self.assertEqual(self.printed("o_double", "%.1f", "0x1p3", "-0x1.8"), ["8.0", "-1.5"])
        self.assertEqual(self.printed("XoDate", "%D", "15.Apr 2021", "Thu 15.April 2021"),
                         ["2021-04-15"] * 2)
        self.assertEqual(self.printed("XoRef", "%D", "(7:1-2#3,12)"), ["7"])
        self.assertEqual(self.printed("XoInt64", "%d", "0x10", "010"), ["16", "8"])
        self.assertEqual(self.printed("BlockId", "%u", "#7", "#007"), ["7", "7"])
        self.assertEqual(self.printed("o_char", "%d", "A", "0x41"), ["65", "65"])
        self.assertEqual(self.printed("XoBoolean", "", "TRUE", "t", "1", "0", "false"),
                         ["TRUE", "TRUE", "TRUE", "FALSE", "FALSE"])

    def test_ScanFormatReadsTheValue(self):
        self.assertEqual(self.output("print", "o_4b", "%d", "--scan-format", "%x", "ff", "0xFF"),
                         ["255", "255"])
        self.assertEqual(
            self.output("print", "XoDate", "%e.%m.%Y", "--scan-format", "%Y-%m-%d", "2021-4-5",
                        "2021/04/05", "2021.04.05", "*-12-24"),
            ["05.04.2021", "05.04.2021", "05.04.2021", "24.12.*"])
        self.assertEqual(
            self.output("print", "XoTime", "%H:%M", "--scan-format", "%I.%M %p", "01.30 pm"),
            ["13:30"])

    def test_ValuesThatAreNotReadWholeAreBad(self):
        for type, value in (("o_4b", "12abc"), ("o_4b", ""), ("o_4b", "abc"), ("o_4b", "0abc"),
                            ("o_4b", "7 8"), ("o_4b", "7-"), ("o_4b", "1.5"), ("o_4b", "--7"),
                            ("o_double", "1.5x"), ("o_double", "1e999"), ("o_double", ""),
                            ("o_float", "1e39"), ("o_char", "AB"), ("BlockId", "7"),
                            ("XoInt64", "12x"), ("XoInt64", "9223372036854775808"),
                            ("XoBoolean", "True"), ("XoBoolean", "yes"),
                            ("o_4b", "0x0"), ("o_double", "0x1p3x"), ("XoBoolean", "{NULL}2"),
                            ("XoObjId", "(2#0)7"), ("XoClassId", "(123)"),
                            ("XoRef", "(7:1-2#3+ 12)"), ("XoTime", "*:05:09 pm"),
                            ("XoTimeSpan", "1.0:0-:0"), ("XoNull_int", "12x"), ("XoNull_int", "2147483648"),
                            ("XoDate", "Fri 15.Apr 2021"), ("XoDate", "Thu 15.Apr 2021 x"),
                            ("XoDate", "Thu 15.Apr"), ("XoTime", "25"),
                            ("XoClassId", "(12v3)4"), ("XoClassId", "(65536v3)"),
                            ("XoObjId", "(1-2#"), ("XoSeal", "281474976710656")):
            with self.subTest(type=type, value=value):
                self.assert_bad(type, value, f"'{value}'")

    def test_WhatAFormatHasAroundAValueMustBeThereAndMayBeAnyCharacters(self):
        self.assertEqual(self.output("print", "o_4b", "%d €", "--scan-format", "%d kg", "+5 kg"),
                         ["5 €"])
        self.assertEqual(self.output("print", "XoDate", "%d Ж", "--scan-format", "%Y-%m-%d €",
                                     "2021-04-05 €"), ["05 Ж"])
        # Of texts and bytes both are in one code set, which is not that of the terminal.
        self.assertEqual(self.output("print", "XoString", "€%sß", "ä"), ["€äß"])
        self.assertEqual(self.output("print", "XoString", "Ж%s", "д", "--code-set", "ISO-8859-5"),
                         ["Жд"])
        self.assertEqual(self.output("print", "XoIString", "»%s«", "ä"), ["»ä«"])
        self.assertEqual(self.output("print", "o_char", "§%c", "--scan-format", "§%c", "§A"), ["§A"])
        self.assertEqual(self.output("print", "o_u1b", "§%d", "A"), ["§65"])
        self.assertEqual(self.output("print", "XoBlob", "Länge %L", "ab"), ["Länge 2"])
        self.assertEqual(self.output("convert", "--from", "o_4b", "--to", "XoString", "--format",
                                     "№ %s", "--code-set", "ISO-8859-5", "5"), ["№ 5"])
        self.assertEqual(self.output("print", "o_u4b", "%lu", "--", "-0"), ["0"])
        self.assert_trouble(self.run_tool("print", "XoString", "漢%s", "a"), "windows-1252 lacks U+6F22")
        self.assert_bad("o_4b", "5", "'5'", scan_format="%d kg")
        self.assert_bad("o_4b", "-1", "'-1'", scan_format="%lx")

    def test_DatesAndTimesHaveToBeValidOrPatterns(self):
        self.assert_bad("XoDate", "2021-14-45", "no valid XoDate", "no month 14",
                        scan_format="%Y-%m-%d")
        self.assert_bad("XoTime", "24:00:00", "no hour 24", scan_format="%H:%M:%S")
        self.assert_bad("d_Date", "1582-10-10", "left that day out", scan_format="%Y-%m-%d")
        self.assertEqual(self.printed("XoDate", "%d", "Sat 24.Dec *"), ["24"])
        self.assertEqual(self.printed("XoTimeSpan", "%H", "1.99:00:00"), ["99"])
        result = self.run_tool("convert", "--from", "XoTime", "--to", "XoString", "--scan-format",
                               "%H:%M:%S", input="1:2:3\n1:2:60\n")
        self.assert_trouble(result, "standard input, line 2: '1:2:60'", "no second 60")

    def test_AMessageTellsTheFormatAndWhatWasRead(self):
        self.assert_bad("o_4b", "12abc", "'%ld'", "'12'")
        self.assert_bad("XoDate", "2021-04-05)", "'%Y-%m-%d'", "'2021-04-05'",
                        scan_format="%Y-%m-%d")

    def test_LinesAreTakenWhereThereAreNoValues(self):
        self.assertEqual(self.output("print", "o_4b", "<%d>", input="1\n2\r\n3"),
                         ["<1>", "<2>", "<3>"])
        self.write("numbers.txt", "4\n5\n")
        self.assertEqual(self.output("print", "o_4b", "%d", "--input", "numbers.txt"), ["4", "5"])
        self.assertEqual(self.output("print", "o_4b", "%d", input=""), [])

    def test_ABadLineIsNamedBehindTheResultsOfThoseBefore(self):
        self.write("numbers.txt", "4\nx\n5\n")
        result = self.run_tool("print", "o_4b", "%d", "--input", "numbers.txt")
        self.assert_trouble(result, "numbers.txt, line 2: 'x'")
        self.assertEqual(result.stdout, b"4\n")

    def test_NegativeValuesAreNoOptions(self):
        self.assertEqual(self.printed("o_double", "%.1f", "-1.5", "-.5", "-1e3"),
                         ["-1.5", "-0.5", "-1000.0"])
        self.assertEqual(self.printed("o_double", "%.17g", "-inf", "-Infinity"),
                         ["-Infinity", "-Infinity"])

    def test_WhatCannotBePrintedIsTrouble(self):
        self.assert_trouble(self.run_tool("print", "o_9b", "x", "1"), "o_9b", "o_8b")
        self.assert_trouble(self.run_tool("print", "illegal", "x", "1"), "illegal")
        self.assert_trouble(self.run_tool("print", "o_4b"), "--help")
        self.assert_trouble(self.run_tool("print", "o_4b", "%d", "--input", "absent"), "absent")
        self.assert_trouble(self.run_tool("print", "XoString", "%s", "Ж"), "windows-1252", "U+0416")
        self.assert_trouble(self.run_tool("print", "XoString", "%s", "a", "--code-set", "253"),
                            "8 bits")
        self.assert_trouble(self.run_tool("print", "XoString", "%s", os.fsdecode(b"\xff")), "UTF-8")
        self.assertEqual(self.output("print", "XoString", "[%3s]", "Ж", "--code-set",
                                     "windows-1251"), ["[  Ж]"])

    def test_FormatsOfAnyLengthAndWidthEnd(self):
        self.assertEqual(self.printed("o_4b", "x" * 10000, "7")[0][:3], "xxx")
        self.printed("o_4b", "%99999d", "7")
        self.printed("o_4b", "%", "7")
        self.printed("XoDate", "%?(" * 3000, "Thu 15.Apr 2021")

    def test_RandomFloatingPointNumbersAreNeverBad(self):
        seed = new_seed()
        source = random.Random(seed)
        for type, letter, size in zip(FLOATING_TYPES, "df", (8, 4)):
            numbers = []
            while len(numbers) < 400:
                number = struct.unpack(letter, source.randbytes(size))[0]
                if number == number and abs(number) != float("inf") and abs(number) > 1e-37:
                    numbers.append(number)
            lines = self.output("print", type, "%.17g", input="".join(f"{n!r}\n" for n in numbers))
            self.assertEqual([float(line) for line in lines], numbers, f"XOTM_SEED={seed}")


class Convert(ValueTest):
    def converted(self, source, target, *arguments):
        return self.output("convert", "--from", source, "--to", target, *arguments)

    def test_NumbersConvertByWayOfTheirText(self):
        self.assertEqual(self.converted("o_double", "o_4b", "3.7", "-2.5"), ["3", "-2"])
        self.assertEqual(self.converted("o_4b", "o_u1b", "65"), ["A"])
        self.assertEqual(self.converted("o_double", "o_u4b", "3.7"), ["3"])
        self.assertEqual(self.converted("o_8b", "XoInt64", "-5"), ["-5"])
        self.assertEqual(self.converted("XoInt64", "o_double", "0x10"), ["16"])

    def test_TextConvertsToWhatItBeginsWith(self):
        self.assertEqual(self.converted("XoString", "o_4b", "12abc", "abc"), ["12", "0"])
        self.assertEqual(self.converted("XoString", "XoBoolean", "1", "TRUE"), ["TRUE", "FALSE"])
        self.assertEqual(self.converted("o_4b", "XoString", "7"), ["7"])
        self.assertEqual(self.converted("XoString", "XoIString", "Straße"), ["Straße"])

    def test_NullStaysNullWhereThereIsOne(self):
        self.assertEqual(self.converted("XoNull_int", "XoNull_double", "{NULL}"), ["{NULL}"])
        self.assertEqual(self.converted("XoNull_int", "XoBoolean", "{NULL}", "1", "2"),
                         ["{NULL}", "TRUE", "FALSE"])
        self.assertEqual(self.converted("XoNull_int", "o_4b", "{NULL}"), ["0"])

    def test_TemporalTypesConvertByTheFormatsOfTheirRows(self):
        self.assertEqual(self.converted("XoDate", "XoDateTime", "Thu 15.Apr 2021"),
                         ["Thu 15.Apr 2021 12:00:00 am"])
        self.assertEqual(
            self.converted("XoDate", "XoString", "--scan-format", "%Y-%m-%d", "2021-04-15"),
            ["Thu 15.Apr 2021"])
        self.assertEqual(
            self.converted("XoDateTime", "XoDate", "--format", "%D", "Thu 15.Apr 2021 01:00:00 pm"),
            ["2021-04-15"])

    def test_BadValuesAndTypesAreTrouble(self):
        def refused(*arguments):
            return self.run_tool("convert", *arguments)

        self.assert_trouble(refused("--from", "o_4b", "--to", "o_8b", "x"), "'x'", "o_4b")
        self.assert_trouble(refused("--from", "o_4b", "--to", "illegal", "1"), "illegal")
        self.assert_trouble(refused("--from", "o_4b", "--to", "XoDaet", "1"), "XoDate")
        self.assert_trouble(refused("--from", "o_4b", "1"), "--to")
        result = self.run_tool("convert", "--from", "o_4b", "--to", "o_8b", input="1\n\n")
        self.assert_trouble(result, "line 2")
        self.assertEqual(result.stdout, b"1\n")


if __name__ == "__main__":
    unittest.main()
