"""Indexes of values that are no plain numbers: what a line must be, what comes back, patterns."""

import datetime
import json
import random
import unittest

from xotm_support import IS_SANITIZED, NOTHING_FOUND, ToolTest, new_seed

DATE = "%Y-%m-%d"
STAMP = "%Y-%m-%d %H:%M:%S %N"
NULL = "{NULL}"


class ValuesTest(ToolTest):
    def dumped(self, type_name, text_format, *texts):
        """What the values print as."""
        arguments = [] if text_format is None else ["--format", text_format]
        self.create("i", "".join(text + "\n" for text in texts), *arguments, type=type_name)
        self.assert_in_order("i")
        values = {}
        for line in self.lines("dump", "i", *arguments):
            number, value = line.split(":", 1)
            values[int(number)] = value
        self.assertEqual(sorted(values), list(range(1, len(texts) + 1)))
        return [values[number] for number in sorted(values)]

    def assert_kept(self, type_name, text_format, *texts):
        self.assertEqual(self.dumped(type_name, text_format, *texts), list(texts))

    def assert_refused(self, type_name, text_format, *texts, reason="no value"):
        arguments = ["--type", type_name, "--input", "-"]
        arguments += [] if text_format is None else ["--format", text_format]
        result = self.index("create", "bad", *arguments, "--on-error", "skip",
                            input="".join(text + "\n" for text in texts))
        self.assert_trouble(result, f"none of its {len(texts)} lines", type_name)
        # A sanitized tool takes its time to start.
        for text in texts[:1] if IS_SANITIZED else texts:
            with self.subTest(type=type_name, text=text):
                result = self.index("create", "bad", *arguments, input=text + "\n")
                self.assert_trouble(result, "standard input, line 1: '", reason, type_name)
        self.assertNotIn("bad", self.files())


class Numbers(ValuesTest):
    def test_LargeIntegersReachToTheEndsOfTheirTypeAndNoFurther(self):
        ends = ("9223372036854775807", "-9223372036854775808", "0", "-1")
        beyond = ("9223372036854775808", "-9223372036854775809", "18446744073709551615", "9" * 30)
        for type_name in ("XoInt64", "XoNull_XoInt64", "o_8b", "XoNull_8b"):
            self.assert_kept(type_name, None, *ends)
            self.assert_refused(type_name, None, *beyond, reason=type_name)
        self.assert_kept("XoNull_u8b", None, "18446744073709551615", "0")
        self.assert_refused("XoNull_u8b", None, "18446744073709551616", "-1", reason="out of the")

    def test_ASealHas48BitsWithoutASign(self):
        self.assert_kept("XoSeal", None, "0", "281474976710655")
        self.assert_refused("XoSeal", None, "281474976710656", "-1", "x", "", "1 2", "1.5")

    def test_LargeIntegersMayHaveAPrefixThatTellsTheirBase(self):
        self.assertEqual(
            self.dumped("XoInt64", None, "0x1f", "010", "-0x10", "+7", "007"),
            ["31", "8", "-16", "7", "7"],
        )
        self.assert_refused("XoInt64", None, "08", "0xg", "1f", "1 2", "x", "")

    def test_NullableNumbersReachAsFarAsThePlainOnes(self):
        for type_name, low, high in (
            ("XoNull_short", -(2**15), 2**15 - 1),
            ("XoNull_ushort", 0, 2**16 - 1),
            ("XoNull_int", -(2**31), 2**31 - 1),
            ("XoNull_unsigned", 0, 2**32 - 1),
            ("XoNull_long", -(2**31), 2**31 - 1),
            ("XoNull_ulong", 0, 2**32 - 1),
        ):
            self.assert_kept(type_name, None, str(low), str(high), NULL)
            self.assert_refused(
                type_name, None, str(low - 1), str(high + 1), reason="out of the range"
            )
        self.assert_kept("XoNull_float", None, "0.5", NULL)
        self.assert_kept("XoNull_double", None, "-1.5", "1e+22", NULL)
        self.assert_refused("XoNull_double", None, "1e309", reason="out of the range")

    def test_NoTextAndTheNullTextAreNullToNumbersThatCanBe(self):
        for type_name in ("XoNull_char", "XoNull_uchar", "XoNull_int", "XoNull_double"):
            self.assertEqual(self.dumped(type_name, None, "", " ", NULL), [NULL] * 3)
            self.assert_refused(type_name, None, NULL + "1", "1" + NULL, "NULL", "x")

    def test_NullsComeBeforeAllNumbersAndAreFound(self):
        self.create("i", f"5\n\n-7\n{NULL}\n0\n", type="XoNull_int")
        self.assertEqual(
            self.lines("dump", "i"), [f"2:{NULL}", f"4:{NULL}", "3:-7", "5:0", "1:5"]
        )
        self.assertEqual(self.lines("find", "i", NULL, "--line-numbers"), ["2:", f"4:{NULL}"])
        self.assertEqual(self.lines("range", "i", NULL, "-7", "--count"), ["3"])

    def test_ABooleanIsOneOfItsWords(self):
        self.assertEqual(
            self.dumped("XoBoolean", None, "T", "t", "1", "TRUE", "true"), ["TRUE"] * 5
        )
        self.assertEqual(
            self.dumped("XoBoolean", None, "F", "f", "0", "FALSE", "false"), ["FALSE"] * 5
        )
        self.assert_kept("XoBoolean", None, NULL)
        self.assert_refused("XoBoolean", None, "True", "yes", "2", "", "x", NULL + "T")

    def test_BytesAreNumbersAndMayBeWrittenAsTheyPrint(self):
        for type_name in ("o_char", "XoNull_char"):
            self.create("i", "65\n0x42\n-1\n0xfe\n5\n", type=type_name)
            # Signed: FE is -2.
            self.assertEqual(
                self.lines("dump", "i"), ["4:0xfe", "3:0xff", "5:0x05", "1:65", "2:66"]
            )
            self.assert_refused(type_name, None, "128", "-129", reason="out of the range")
            self.assert_refused(type_name, None, "0x100", "A", "1 2")
        self.create("i", "65\n255\n5\n", type="o_u1b")
        self.assertEqual(self.lines("dump", "i"), ["3:0x05", "1:65", "2:0xff"])


class Formats(ValuesTest):
    def test_HexadecimalNumbersFitByTheirDigits(self):
        self.assertEqual(
            self.dumped("o_2b", "%hx", "1f", "0x1F", "001f", "ffff"), ["1f", "1f", "1f", "ffff"]
        )
        self.assert_refused("o_2b", "%hx", "10000", "1g", "1 f", "-1", "")
        self.assertEqual(self.dumped("o_u4b", "%08X", "ff"), ["000000FF"])

    def test_TheBaseMayBeThatOfThePrefix(self):
        self.assertEqual(self.dumped("int", "%i", "010", "0x1f", "12", "-0x8"), ["8", "31", "12", "-8"])
        self.assert_refused("int", "%i", "08", "0x1ffffffff", "9999999999", "0x")

    def test_WhatStandsAroundTheNumberMustBeThere(self):
        self.assert_kept("BlockId", "#%lu", "#5", "#4294967295")
        self.assert_refused("BlockId", "#%lu", "5", "#4294967296", "##5", "#", "#5#")
        self.assert_kept("o_4b", "%d kg", "5 kg", "-1 kg")
        self.assert_refused("o_4b", "%d kg", "5", "5 k", "5 kg x", "kg")
        self.assert_kept("o_double", "%g kg", "0.5 kg")
        self.assert_refused("o_double", "%g kg", "0.5", "0.5 kg x", "x kg", "1e999 kg")

    def test_WhatStandsAroundTheNumberMayBeAnyCharacters(self):
        self.assert_kept("o_4b", "%d €", "5 €")
        self.assert_refused("o_4b", "%d €", "5", "5 $")
        self.assert_kept("XoDate", "%Y Ж %m-%d", "2021 Ж 04-15")

    def test_ANumberIsReadInTheBaseOfItsFormat(self):
        self.assertEqual(self.dumped("o_4b", "%lo", "010", "7"), ["10", "7"])
        self.assert_refused("o_4b", "%lo", "8", "18", "0x8", "-1")
        self.assert_refused("o_4b", "%ld", "0x8", "1f")
        self.assert_refused("o_4b", "%lu", "-1", "4294967296")

    def test_AWidthThatLeavesDigitsUnreadIsNoticed(self):
        self.assertEqual(self.dumped("o_4b", "%3d", "7", "123"), ["  7", "123"])
        self.assert_refused("o_4b", "%3d", "1234")

    def test_WhatThePrintRoundsAwayIsRefused(self):
        self.assert_kept("o_double", "%g", "1.5", "123456", "1e-07")
        self.assert_refused("o_double", "%g", "1234567.5", "0.123456789")

    def test_AFormatThatShowsNothingIsRefused(self):
        for type_name in ("o_4b", "o_double", "XoInt64", "XoDate", "XoTimeSpan", "d_Interval"):
            for text_format in ("abc", "%", "%%"):
                result = self.index(
                    "create", "i", "--type", type_name, "--format", text_format, "--input", "-",
                    input="abc\n",
                )
                self.assert_trouble(result, "shows nothing", type_name)

    def test_TypesWithoutAFormatSaySo(self):
        for type_name in ("XoBoolean", "XoSeal", "XoString"):
            result = self.index(
                "create", "i", "--type", type_name, "--format", "%d", "--input", "-", input="1\n"
            )
            self.assert_trouble(result, "format", type_name)

    def test_SearchesReadTheirValuesByTheirOwnFormat(self):
        self.create("i", "15.04.2021\n24.12.2021\n", "--format", "%d.%m.%Y", type="XoDate")
        self.assertEqual(self.lines("find", "i", "2021-12-24", "--format", DATE), ["24.12.2021"])
        self.assertEqual(self.lines("dump", "i", "--format", DATE), ["1:2021-04-15", "2:2021-12-24"])
        self.assertEqual(self.lines("dump", "i"), ["1:Thu 15.Apr 2021", "2:Fri 24.Dec 2021"])
        self.assert_trouble(self.index("find", "i", "2021-12-24"), "'2021-12-24'", "no value")

    def test_FormatsAndLinesOfAnyLengthEnd(self):
        for text_format in ("%" * 10000, "%99999d", "x" * 10000 + "%d", "%Y" * 5000):
            for type_name in ("o_4b", "o_double", "XoInt64", "XoDate", "XoObjId"):
                result = self.index(
                    "create", "i", "--type", type_name, "--format", text_format, "--input", "-",
                    "--on-error", "skip", input="5\n" + "5" * 100000 + "\n",
                )
                self.assertIn(result.returncode, (0, 2))

    def test_ControlCharactersBelongToNoValue(self):
        for type_name in ("o_4b", "XoDate", "XoObjId", "XoTimeSpan"):
            for text in ("5\0", "\0", "\1", "5\x01271828"):
                result = self.index("create", "i", "--type", type_name, "--input", "-", input=text)
                self.assert_trouble(result, "line 1", "no value")


class Temporal(ValuesTest):
    def test_ADateIsOneOfTheCalendar(self):
        self.assert_kept("XoDate", DATE, "2021-04-15", "2020-02-29", "0000-01-01", "-4713-11-24",
                         "32767-12-31", NULL)
        self.assertEqual(self.dumped("XoDate", DATE, "2021/4/5", " 2021-04-05 "), ["2021-04-05"] * 2)
        self.assert_refused("XoDate", DATE, "2021-13-01", "2021-02-29", "1900-02-29", "2021-00-10",
                            "2021-04-31", "0-0-0", reason="no valid date")

    def test_ALineMustBeReadWhole(self):
        self.assert_refused("XoDate", DATE, "2021-04-15 x", "2021-04-15T12:00:00", "2021-04", "",
                            "2021-04-15Z", "2021-04-15-1", "x", NULL + "x", "20210415")
        self.assert_refused("XoTime", "%H:%M:%S", "12:34", "12:34:56 pm", "12:34:56.5")
        # The half of the day has no place in an hour that is a wildcard.
        self.assert_refused("XoTime", None, "*:05:09 pm", "25")
        self.assert_refused("XoDateTime", "%O", "2021-04-15", "2021-04-15T12:34:56.25")
        self.assert_refused("XoTimeSpan", None, "5", "5.01:02:03 x", "", "x")

    def test_NumbersThatTheirFieldWouldCutAreRefused(self):
        # 271 is 15 in 8 bits, and 67557 is 2021 in 16.
        self.assert_refused("XoDate", DATE, "2021-04-271", "2021-260-15", "67557-04-15")
        self.assert_refused("XoTime", "%H:%M:%S", "268:34:56", "12:290:56")
        self.assert_refused("d_Interval", None, "200 days, 04 hours, 05 minutes, 06 seconds")

    def test_ATimeIsOneOfTheDay(self):
        self.assert_kept("XoTime", "%H:%M:%S", "00:00:00", "23:59:59", NULL)
        self.assert_kept("XoTime", None, "01:05:09 pm", "12:00:00 am")
        self.assert_refused("XoTime", "%H:%M:%S", "24:00:00", "12:60:00", "12:00:60",
                            reason="no valid date or time")

    def test_NanosecondsAreKeptOrRefused(self):
        self.assert_kept("XoDateTimeN", STAMP, "2021-04-15 12:34:56 999999999",
                         "2021-04-15 12:34:56 0", NULL)
        self.assert_kept("XoDateTimeN", None, "2021-04-15T12:34:56.250", "2021-04-15T12:34:56")
        self.assert_refused("XoDateTimeN", STAMP, "2021-04-15 12:34:56 1000000000",
                            reason="no valid date")
        # A tenth digit behind the point has no place.
        self.assert_refused("XoDateTimeN", None, "2021-04-15T12:34:56.1234567891")

    def test_SpansHaveAnyFields(self):
        self.assert_kept("XoTimeSpan", None, "423.04:05:06", "0.00:00:00.500", "-5.00:00:00", NULL,
                         "0.99:99:99")

    def test_NamesOfMonthsAreRead(self):
        self.assertEqual(
            self.dumped("XoDate", None, "Thu 15.April 2021", "15.Apr 2021", "Thu 15.Apr 2021"),
            ["Thu 15.Apr 2021"] * 3,
        )
        self.assert_refused("XoDate", None, "2021-04-15", "Thu 15.Abc 2021", reason="XoDate")

    def test_AWeekdayIsThatOfItsDateOrLeftOut(self):
        # A Thursday.
        self.assert_refused("XoDate", None, "Fri 15.Apr 2021", "Friday 15.Apr 2021")
        self.assert_refused("XoDateTime", None, "Wed 15.Apr 2021 01:02:03 am")

    def test_TheHistoricalCalendarHasDaysOfItsOwn(self):
        self.assert_kept("d_Date", DATE, "1500-02-29", "1582-10-04", "1582-10-15")
        self.assert_refused("d_Date", DATE, "1582-10-10", "2021-02-29", reason="no valid date")
        self.assert_refused("XoDate", DATE, "1500-02-29", reason="no valid date")
        self.assert_kept("d_Time", "%H:%M:%S", "12:34:56")
        self.assert_refused("d_Time", "%H:%M:%S", "24:00:00", "*:00:00", reason="no valid date")
        self.assert_kept("d_Timestamp", "%O", "1500-02-29T12:34:56")
        self.assert_kept("d_Interval", None, "03 days, 04 hours, 05 minutes, 06 seconds")
        self.assert_refused("d_Date", DATE, NULL)

    def test_AWildcardIsKeptOnlyWhereItIsAskedFor(self):
        for type_name in ("XoDate", "d_Date"):
            self.assert_refused(type_name, DATE, "*-12-24", reason="pattern")
            self.create("i", "*-12-24\n2021-*-01\n", "--format", DATE, "--patterns", type=type_name)
            self.assertEqual(sorted(self.lines("dump", "i", "--format", DATE)),
                             ["1:*-12-24", "2:2021-*-01"])
            result = self.index("create", "bad", "--type", type_name, "--format", DATE,
                                "--patterns", "--input", "-", input="*-13-24\n")
            self.assert_trouble(result, "line 1", "no valid date")


    def test_OtherTypesHaveNoWildcards(self):
        for type_name in ("o_4b", "XoInt64", "XoString", "XoObjId", "XoBoolean"):
            result = self.index("create", "i", "--type", type_name, "--patterns", "--input", "-",
                                input="5\n")
            self.assert_trouble(result, type_name, "no wildcards")


class Patterns(ValuesTest):
    def find(self, *arguments):
        return [int(line.split(":")[0]) for line in self.lines("find", "i", *arguments,
                                                                "--line-numbers")]

    def test_AWildcardStandsForEveryValueOfItsField(self):
        self.create("i", "2021-12-24\n2020-12-24\n2021-12-25\n-0044-12-24\n{NULL}\n",
                    "--format", DATE, type="XoDate")
        use = ("--format", DATE)
        self.assertEqual(self.find("*-12-24", *use), [4, 2, 1])
        self.assertEqual(self.find("2021-*-*", *use), [1, 3])
        self.assertEqual(self.find("2021-12-*", *use), [1, 3])
        self.assertEqual(self.find("*-*-*", *use), [5, 4, 2, 1, 3])
        self.assertEqual(self.find("*-*-25", *use), [3])
        self.assertEqual(self.lines("find", "i", "*-12-24", "--count", *use), ["3"])
        self.assertEqual(self.index("find", "i", "*-11-*", *use).returncode, NOTHING_FOUND)
        self.assertEqual(self.index("find", "i", "*-12-24", "--no-wildcards", *use).returncode,
                         NOTHING_FOUND)

    def test_WildcardsEqualOnlyThemselvesWhenTheyAreSwitchedOff(self):
        self.create("i", "*-12-24\n2021-12-24\n", "--format", DATE, "--patterns", type="XoDate")
        self.assertEqual(self.find("*-12-24", "--format", DATE, "--no-wildcards"), [1])
        self.assertEqual(self.find("*-12-24", "--format", DATE), [1, 2])
        self.assertEqual(self.find("2021-12-24", "--format", DATE), [2])

    def test_EveryTemporalTypeTakesThem(self):
        for type_name, text_format, texts, pattern, found in (
            ("XoTime", "%T", ("12:30:00", "13:30:00", "12:31:00"), "*:30:00", [1, 2]),
            ("XoDateTime", "%O", ("2021-04-15T12:00:00", "2020-04-15T13:00:00"),
             "*-04-15T12:*:*", [1]),
            ("XoDateTimeN", STAMP, ("2021-04-15 12:00:00 5", "2021-04-15 12:00:00 6"),
             "2021-04-15 12:00:00 *", [1, 2]),
            ("XoTimeSpan", "%J.%H:%M:%f", ("1.02:03:04", "5.02:03:04", "5.02:03:05"),
             "*.02:03:04", [1, 2]),
            ("d_Date", DATE, ("1500-12-24", "2021-12-24", "2021-12-25"), "*-12-24", [1, 2]),
            ("d_Timestamp", "%O", ("1500-12-24T01:00:00", "2021-12-24T01:00:00"),
             "*-12-24T01:00:00", [1, 2]),
        ):
            with self.subTest(type=type_name):
                for order in ("little", "big"):
                    self.create("i", "\n".join(texts), "--format", text_format, "--byte-order",
                                order, type=type_name)
                    self.assertEqual(self.find(pattern, "--format", text_format), found)

    def test_TheEndsOfARangeAreNoPatterns(self):
        self.create("i", "2021-12-24\n", "--format", DATE, type="XoDate")
        result = self.index("range", "i", "*-12-24", "2021-12-24", "--format", DATE)
        self.assert_trouble(result, "'*-12-24'", "pattern")

    def test_OtherFlagsOfComparisonsAreOfText(self):
        self.create("i", "2021-12-24\n", "--format", DATE, type="XoDate")
        self.create("j", "5\n", type="XoInt64")
        self.assert_trouble(self.index("find", "i", "x", "--ignore-case"), "one way alone")
        self.assert_trouble(self.index("find", "j", "5", "--no-wildcards"), "one way alone")

    def test_SearchesFindWhatAFilterFinds(self):
        seed = new_seed()
        source = random.Random(seed)
        first = datetime.date(1890, 1, 1).toordinal()
        dates = [datetime.date.fromordinal(first + source.randrange(60000)) for _ in range(3000)]
        self.create("i", "\n".join(map(str, dates)), "--format", DATE, "--byte-order",
                    source.choice(("little", "big")), type="XoDate")
        use = ("--format", DATE)
        expected = sorted(range(len(dates)), key=lambda number: (dates[number], number))
        self.assertEqual(self.lines("dump", "i", *use),
                         [f"{number + 1}:{dates[number]}" for number in expected], seed)
        for _ in range(5 if IS_SANITIZED else 20):
            date = source.choice(dates)
            fields = [source.choice((field, None)) for field in (date.year, date.month, date.day)]
            pattern = "-".join("*" if field is None else str(field) for field in fields)
            found = [number + 1 for number in expected
                     if all(field is None or field == own for field, own in
                            zip(fields, dates[number].timetuple()))]
            self.assertEqual(self.find(pattern, *use), found, (seed, pattern))
            low, high = sorted(source.sample(dates, 2))
            count = sum(low <= each <= high for each in dates)
            self.assertEqual(self.lines("range", "i", low, high, "--count", *use), [str(count)],
                             (seed, low, high))


class Identifiers(ValuesTest):
    def test_TheyComeBackWithAllTheirParts(self):
        self.assert_kept("XoObjId", None, "(1-2#3)", "(65535-4294967295#4294967295)", NULL)
        self.assert_kept("XoClassId", None, "(1v2)", "(0v0)", "(65535v65534)", NULL)
        self.assert_kept("XoRef", None, "(1:2-3#4, 5)", "(65535:65535-4294967295#0, 65535)", NULL)

    def test_BracketsAndTheUpperNumberOfAnObjectMayBeLeftOutButNothingElse(self):
        self.assertEqual(self.dumped("XoObjId", None, "12#34", "1-2#3"), ["(0-12#34)", "(1-2#3)"])
        self.assertEqual(self.dumped("XoRef", None, "1:2-9#0, 0", "(1:2-3#4,5)"),
                         ["(1:2-9#0, 0)", "(1:2-3#4, 5)"])
        self.assert_refused("XoObjId", None, "1-2", "(1-2#", "12")
        self.assert_refused("XoRef", None, "1:2-9", "(1:2-3#4+5)")
        self.assert_refused("XoClassId", None, "(12v", "(123)")

    def test_WhatIsTooMuchOrTooLargeIsRefused(self):
        self.assert_refused("XoObjId", None, "(65536-2#3)", "(1-4294967296#3)", "(1-2#3)x", "x", "",
                            "()", "(1-2#3)(4)", NULL + "x")
        self.assert_refused("XoClassId", None, "(65536v0)", "(1v2)3", "5", "x", "")
        self.assert_refused("XoRef", None, "(65536:2-3#4, 5)", "(1:2-3#4, 5) x", "x", "")

    def test_WhatANullOrARecordHasNoRoomForIsRefused(self):
        # Null has one text.
        self.assert_refused("XoObjId", None, "(0-0#0)", "(0-0#5)")
        self.assert_refused("XoClassId", None, "(65535v65535)")
        self.assert_refused("XoRef", None, "(1:0-0#0, 0)", "(0:0-0#0, 5)")
        # No version is stored.
        versions = "(%D:%H-%L#%B,%Cv%V)"
        self.assert_kept("XoRef", versions, "(1:2-3#4,5v0)")
        self.assert_refused("XoRef", versions, "(1:2-3#4,5v6)")

    def test_TheyOrderByTheirNumberAndAreFoundByIt(self):
        self.create("i", "(1-5#0)\n(0-7#1)\n(1-4#2)\n(0-7#3)\n", type="XoObjId")
        self.assertEqual(self.lines("find", "i", "(0-7#0)"), ["(0-7#1)", "(0-7#3)"])
        self.assertEqual(self.lines("range", "i", "(0-8#0)", "(1-4#0)"), ["(1-4#2)"])
        self.create("i", "(2:0-1#0, 5)\n(1:9-9#0, 5)\n(1:0-1#0, 5)\n", type="XoRef")
        self.assertEqual([line.split(":")[0] for line in self.lines("dump", "i")], ["3", "2", "1"])
        self.create("i", "(2v0)\n(1v9)\n(1v1)\n", type="XoClassId")
        self.assertEqual(self.lines("range", "i", "(0v0)", "(9v9)"), ["(1v1)", "(1v9)", "(2v0)"])


class Dump(ValuesTest):
    def test_ValuesComeInTheirOrderAndThoseOfOneByTheirLines(self):
        self.create("i", "30\n4\n30\n-1\n")
        self.assertEqual(self.lines("dump", "i"), ["4:-1", "2:4", "1:30", "3:30"])

    def test_JsonHasOneObjectForEachValue(self):
        self.create("i", "x\t5\n", "--column", "2")
        (line,) = self.lines("dump", "i", "--json")
        self.assertEqual(json.loads(line), {"line": 1, "value": "5"})

    def test_TextIsThatOfTheRecord(self):
        text = "Wörterbücher und andere lange Wörter"
        self.create("i", text + "\nab\n", "--key-length", "8", "--code-set", "ISO-8859-1",
                    type="XoString")
        self.assertEqual(self.lines("dump", "i"), ["2:ab", f"1:{text}"])
        self.assert_trouble(self.index("dump", "i", "--format", "%s"), "no format")


if __name__ == "__main__":
    unittest.main()
