"""`xotm date`: every view of a temporal value, and the two calendars."""

import datetime
import random
import re
import unittest

from xotm_support import DONE, ToolTest, new_seed

# What the Julian Day Number is ahead of the day number of Python's calendar.
JULIAN_DAYS = 1721425


class DateTest(ToolTest):
    def views(self, value, *options):
        """The report as a dictionary; the calendars' lines have two cells."""
        result = self.run_tool("date", value, *options)
        self.assertEqual((result.returncode, result.stderr), (DONE, b""), value)
        table = {}
        for line in result.stdout.decode().splitlines():
            if line:
                name, *cells = re.split(r"  +", line)
                table[name] = cells[0] if len(cells) == 1 else cells
        return table

    def assert_views(self, value, expected, *options):
        views = self.views(value, *options)
        self.assertEqual({name: views.get(name) for name in expected}, expected, value)


class Views(DateTest):
    def test_ADateHasFieldsTextsBytesAndNumbers(self):
        self.assert_views("2021-04-15", {
            "type": "XoDate", "year": "2021", "month": "4", "day": "15", "null": "no",
            "valid": "yes", "wildcards": "none", "%Y-%m-%d": "2021-04-15",
            "row: %a %e.%b %Y": "Thu 15.Apr 2021", "stored, little": "e5 07 04 0f",
            "stored, big": "07 e5 04 0f", "weekday": ["Thursday", "Thursday"]})

    def test_ATimeHasNoCalendar(self):
        views = self.views("13:05:09")
        self.assertEqual(views["type"], "XoTime")
        self.assertEqual(views["seconds of the day"], str(13 * 3600 + 5 * 60 + 9))
        self.assertEqual(views["row: %I:%M:%S %p"], "01:05:09 pm")
        self.assertEqual(views["stored, big"], "0d 05 09")
        self.assertNotIn("calendar", views)

    def test_ADateTimeHasBoth(self):
        for text in ("2021-04-15T13:05:09", "2021-04-15 13:05:09", "2021-4-15T13:5:9",
                     "Thu 15.Apr 2021 01:05:09 pm"):
            self.assert_views(text, {
                "type": "XoDateTime", "day": "15", "hour": "13", "%Y-%m-%dT%H:%M:%S":
                "2021-04-15T13:05:09", "stored, big": "07 e5 04 0f 0d 05 09", "valid": "yes",
                "Julian Day Number": ["2459320", "2459320"]})

    def test_AFractionMakesItOneWithNanoseconds(self):
        self.assert_views("2021-04-15T13:05:09.25", {
            "type": "XoDateTimeN", "nanoseconds": "250000000",
            "row: %X": "2021-04-15T13:05:09.250",
            # 250,000,000 is 0x0EE6B280.
            "stored, little": "e5 07 04 0f 0d 05 09 80 b2 e6 0e",
            "stored, big": "07 e5 04 0f 0d 05 09 0e e6 b2 80"})

    def test_ASpanCountsMonthsOfThirtyDays(self):
        self.assert_views("423.04:05:06", {
            "year": "1", "month": "2", "day": "3", "hour": "4", "valid": "any fields are",
            "total days": "423", "total seconds": str(423 * 86400 + 4 * 3600 + 5 * 60 + 6),
            "calendar": None}, "--type", "XoTimeSpan")

    def test_WildcardsMakeAPattern(self):
        self.assert_views("*-12-24", {
            "type": "XoDate", "year": "-1 (wildcard)", "month": "12", "wildcards": "year",
            "valid": "no, it is a pattern", "%Y-%m-%d": "*-12-24", "stored, big": "ff ff 0c 18",
            "calendar": None})
        self.assert_views("2021-*-*", {"wildcards": "month, day"})
        self.assert_views("*:30:00", {"type": "XoTime", "wildcards": "hour"})

    def test_NullShowsTheFieldsThatItIs(self):
        self.assert_views("{NULL}", {
            "year": "-32768", "month": "-128", "day": "-128", "null": "yes",
            "valid": "no, it is null", "%Y-%m-%d": "{NULL}", "stored, big": "80 00 80 80",
            "calendar": None}, "--type", "XoDate")
        self.assert_trouble(self.run_tool("date", "{NULL}"), "--type", "XoDateTimeN")

    def test_WhatIsNoDateIsToldWhy(self):
        for value, reason in (("2021-14-45", "there is no month 14"),
                              ("2021-02-29", "month 2 has 28 days"),
                              ("2021-04-00", "month 4 has 30 days"),
                              ("24:00:00", "there is no hour 24"),
                              ("10:60:00", "there is no minute 60"),
                              ("10:00:60", "there is no second 60"),
                              ("2021-02-28T10:00:60", "there is no second 60")):
            self.assert_views(value, {"valid": f"no, {reason}"})
        self.assert_views("2020-02-29", {"valid": "yes"})

    def test_TypesOfTheOdmgBindingHaveViewsToo(self):
        self.assert_views("10:05:09", {
            "hour": "10", "second": "9.00", "zone": "+0 h +0 min",
            "null": "no, the type has none", "stored, big": "00 00 0a 05 09 00"},
            "--type", "d_Time")
        self.assert_views("2021-04-15T10:05:09", {
            "stored, big": "07 e5 04 0f 00 00 0a 05 09 00", "class": ["XoDate", "d_Date"]},
            "--type", "d_Timestamp")
        self.assert_views("1 days, 2 hours, 3 minutes, 4 seconds", {
            "days": "1", "hours": "2", "minutes": "3", "seconds": "4",
            "total seconds": str(86400 + 2 * 3600 + 3 * 60 + 4)}, "--type", "d_Interval")

    def test_AFormatReadsWhatIsUnusual(self):
        self.assert_views("12.03.2021", {"month": "3", "read by": "%d.%m.%Y"},
                          "--type", "XoDate", "--format", "%d.%m.%Y")
        self.assert_trouble(self.run_tool("date", "12.03.2021", "--format", "%d.%m.%Y"), "--type")

    def test_WhatIsReadNotOrNotWholeIsTrouble(self):
        for value in ("abc", "", "12", "2021-04-15x", "2021-04-15 13:05:09 x", "423.04:05:06",
                      "Fri 15.Apr 2021", "99999-01-01", "2021-04-15T13:05:09.1234567891"):
            self.assert_trouble(self.run_tool("date", value), f"'{value}'", "--type")
        self.assert_trouble(self.run_tool("date", "2021-04", "--type", "XoDate"),
                            "'2021-04'", "XoDate", "'%Y-%m-%d'")
        self.assert_trouble(self.run_tool("date", "1", "--type", "o_4b"), "o_4b")
        self.assert_trouble(self.run_tool("date", "1", "--type", "XoDat"), "XoDate")
        self.assert_trouble(self.run_tool("date"), "--help")


class Calendars(DateTest):
    def test_TheyPartByTenDaysBeforeTheChange(self):
        # Thursday, 4 October 1582, was followed by Friday, 15 October.
        self.assert_views("1582-10-04", {
            "day number": ["2299150", "2299159"], "Julian Day Number": ["2299150", "2299160"],
            "weekday": ["Monday", "Thursday"], "same day in the other":
            ["1582-09-24", "1582-10-14"], "days between them": "10 days"})
        self.assert_views("1582-10-15", {
            "Julian Day Number": ["2299161", "2299161"], "weekday": ["Friday", "Friday"],
            "same day in the other": ["1582-10-15", "1582-10-15"],
            "days between them": "no day"})

    def test_DaysThatTheChangeLeftOutAreInOneCalendarOnly(self):
        self.assert_views("1582-10-10", {"a date there": ["yes", "no"], "valid": "yes"})
        self.assert_views("1582-10-10", {
            "a date there": ["yes", "no"],
            "valid": "no, the change of calendar left that day out"}, "--type", "d_Date")

    def test_LeapYearsOfCenturiesAreHistorical(self):
        self.assert_views("1500-02-29", {
            "a date there": ["no", "yes"], "leap year": ["no", "yes"],
            "same day in the other": ["1500-02-20", "1500-03-10"],
            "valid": "no, month 2 has 28 days"})
        self.assert_views("1600-02-29", {"a date there": ["yes", "yes"]})

    def test_TheBattleOfHastingsWasOnASaturday(self):
        self.assert_views("1066-10-14", {
            "Julian Day Number": ["2110695", "2110701"], "weekday": ["Sunday", "Saturday"],
            "days between them": "6 days"})

    def test_GregorianDaysAreThoseOfPython(self):
        seed = new_seed()
        source = random.Random(seed)
        names = ["Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"]
        for _ in range(40):
            date = datetime.date.fromordinal(source.randrange(1, 3652060))
            views = self.views(date.isoformat())
            self.assertEqual(views["day number"][0], str(date.toordinal() + JULIAN_DAYS),
                             f"{date} XOTM_SEED={seed}")
            self.assertEqual(views["weekday"][0], names[date.weekday()])
            self.assertEqual(views["day of the year"][0], str(date.timetuple().tm_yday))

    def test_DaysOfTheYearZeroAndBeforeHaveAWay(self):
        # The day with the number 0 is 1 January -4712 in the historical calendar.
        self.assert_views("-4713-11-24", {
            "Julian Day Number": ["0", "-37"],
            "same day in the other": ["-4712-01-01", "-4713-10-18"]})
        self.assert_views("-32768-01-01", {"same day in the other": ["-", "-"]})
        self.assert_views("32767-12-31", {"days between them": "no day"})


if __name__ == "__main__":
    unittest.main()
