#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/temporal_text.hpp"

namespace xo::test {
namespace {

Scanned Whole(Record const& record) { return {record, true}; }
Scanned Failed(Record const& record) { return {record, false}; }

TEST(ScanFormats, AreTheClassesOwnWhereNoneIsGiven) {
  XoString date("2021-04-15"), time("13:05:09"), both("2021-04-15T13:05:09"),
      nano("2021-04-15T13:05:09.250"), span("423.04:05:06");
  XoDate d(0, 0, 0);
  EXPECT_EQ(d.ScanFromXoString(date, nullptr), &d);
  EXPECT_EQ(d, XoDate(2021, 4, 15));
  XoTime t(0, 0, 0);
  EXPECT_EQ(t.ScanFromXoString(time, nullptr), &t);
  EXPECT_EQ(t, XoTime(13, 5, 9));
  XoDateTime dt(d, XoTime(0, 0, 0));
  EXPECT_EQ(dt.ScanFromXoString(both, nullptr), &dt);
  EXPECT_EQ(dt, XoDateTime(d, t));
  XoDateTimeN n;
  EXPECT_EQ(n.ScanFromXoString(nano, nullptr), &n);
  EXPECT_EQ(n, XoDateTimeN(2021, 4, 15, 13, 5, 9, 250000000));
  XoTimeSpan s;
  EXPECT_EQ(s.ScanFromXoString(span, nullptr), &s);
  EXPECT_EQ(s, XoTimeSpan(1, 2, 3, 4, 5, 6, 0));
}

TEST(ScanFields, WhatIsNotNamedBecomesZero) {
  EXPECT_EQ(Scan("", ""), Whole({}));
  EXPECT_EQ(Scan("2021", "%Y"), Whole({2021}));
  EXPECT_EQ(Scan("5", "%S"), Whole({0, 0, 0, 0, 0, 5}));
}

TEST(ScanFields, EveryNumberOfAFieldIsReadBack) {
  for (int n = -128; n < 128; ++n) {
    std::string const text = std::to_string(n);
    ASSERT_EQ(Scan(text, "%m"), Whole({0, n}));
    ASSERT_EQ(Scan(text, "%d"), Whole({0, 0, n}));
    ASSERT_EQ(Scan(text, "%e"), Whole({0, 0, n}));
    ASSERT_EQ(Scan(text, "%H"), Whole({0, 0, 0, n}));
    ASSERT_EQ(Scan(text, "%I"), Whole({0, 0, 0, n}));
    ASSERT_EQ(Scan(text, "%M"), Whole({0, 0, 0, 0, n}));
    ASSERT_EQ(Scan(text, "%S"), Whole({0, 0, 0, 0, 0, n}));
    ASSERT_EQ(Scan(text, "%f"), Whole({0, 0, 0, 0, 0, n}));
    if (n == -1) continue;
    for (char const* format : {"%m", "%B", "%b"}) {
      // A number of a sign and three digits is one too long for the names' fallback.
      if (n < 0 && format[1] != 'm') continue;
      ASSERT_EQ(Scan(Print({1, n}, format), format), Whole({0, n}));
    }
  }
  for (int year = -32768; year < 32768; ++year) {
    ASSERT_EQ(Scan(std::to_string(year), "%Y"), Whole({year}));
  }
}

TEST(ScanFields, LongNumbersAreReadWholeAndCut) {
  EXPECT_EQ(Scan("00000000000000000000002021-4", "%Y-%m"), Whole({2021, 4}));
  EXPECT_EQ(Scan("4294967301x7", "%Yx%m"), Whole({5, 7}));
  EXPECT_EQ(Scan("100000000000000000005", "%d"), Whole({0, 0, static_cast<signed char>(5)}));
  EXPECT_EQ(Scan("300", "%H"), Whole({0, 0, 0, 44}));
  // 99999999999 is 23 times 2^32 and 1215752191.
  EXPECT_EQ(Scan("99999999999", "%N"), Whole({0, 0, 0, 0, 0, 0, 1215752191}));
  EXPECT_EQ(Scan("-99999999999 7", "%N %d"), Whole({0, 0, 7, 0, 0, 0, -1215752191}));
  EXPECT_EQ(Scan("month 14", "month %m"), Whole({0, 14}));
}

TEST(ScanFields, WithoutANumberKeepsTheFieldAndStepsOverOneSign) {
  EXPECT_EQ(Scan("abc", "%Y-%m-%d"), Whole({}));
  EXPECT_EQ(Scan("7 +x", "%d %d"), Whole({0, 0, 7}));
  EXPECT_EQ(Scan("+5", "%d"), Whole({0, 0, 5}));
  // The first sign alone is stepped over; the second one begins the next number.
  EXPECT_EQ(Scan("+-5", "%d%m"), Whole({0, -5, 0}));
  EXPECT_EQ(Scan("5 x", "%N %N"), Whole({}));
}

TEST(ScanLiterals, AnyOtherSeparatorWillDo) {
  EXPECT_EQ(Scan("2021/03/15", "%Y-%m-%d"), Whole({2021, 3, 15}));
  EXPECT_EQ(Scan("15.03.2021", "%d.%m.%Y"), Whole({2021, 3, 15}));
  EXPECT_EQ(Scan("2021x7", "%Y%%%m"), Whole({2021, 7}));
  EXPECT_EQ(Scan("2021?7", "%Y%Q%m"), Whole({2021, 7}));
}

TEST(ScanLiterals, ADigitIsConsumedOnlyByItself) {
  EXPECT_EQ(Scan("20217", "20%Y"), Whole({217}));
  EXPECT_EQ(Scan("2021", "x%Y"), Whole({2021}));
  EXPECT_EQ(Scan("2021", "3%Y"), Whole({2021}));
}

TEST(ScanLiterals, BehindTheTextAreSkipped) {
  EXPECT_EQ(Scan("2021", "%Y abc-"), Whole({2021}));
  EXPECT_EQ(Scan("2021 and more", "%Y"), Whole({2021}));
}

TEST(ScanSpace, IsSkippedOnBothSides) {
  EXPECT_EQ(Scan(" \t\n\v\f\r2021  3", "%Y%m"), Whole({2021, 3}));
  EXPECT_EQ(Scan("2021-3", " \t\n%Y - %m \v\f\r"), Whole({2021, 3}));
  EXPECT_EQ(Scan("  ", " "), Whole({}));
}

TEST(ScanFailure, IsTextThatEndsBeforeAConversion) {
  EXPECT_EQ(Scan("2021-03", "%Y-%m-%d"), Failed({2021, 3}));
  EXPECT_EQ(Scan("", "%Y"), Failed({}));
  EXPECT_EQ(Scan("2021 ", "%Y%%"), Failed({2021}));
  EXPECT_EQ(Scan("2021", "%Y%D"), Failed({2021}));
  EXPECT_EQ(Scan("12:30", "%I:%M %p"), Failed({0, 0, 0, 12, 30}));
  EXPECT_EQ(Scan("am 12", "%p %I %M"), Failed({}));
}

TEST(ScanFailure, LeavesWhatWasReadInEveryClass) {
  XoString in("2021");
  XoDate date(1, 1, 1);
  EXPECT_EQ(date.ScanFromXoString(in, "%Y-%m"), nullptr);
  EXPECT_EQ(date, XoDate(2021, 0, 0));
  XoTime time(1, 1, 1);
  EXPECT_EQ(time.ScanFromXoString(in, "%Y-%m"), nullptr);
  EXPECT_EQ(time, XoTime(0, 0, 0));
  XoTimeSpan span(1, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(span.ScanFromXoString(in, "%Y-%m"), nullptr);
  EXPECT_EQ(span, XoTimeSpan(2021, 0, 0, 0, 0, 0, 0));
}

TEST(ScanEnd, FormatsThatEndEarlyStop) {
  EXPECT_EQ(Scan("2021 5", "%Y %"), Whole({2021}));
  EXPECT_EQ(Scan("2021 5", "%Y %?"), Whole({2021}));
  EXPECT_EQ(Scan("2021 5", "%Y %?("), Whole({2021}));
  EXPECT_EQ(Scan("2021", "%?(Y)"), Whole({2021}));
  EXPECT_EQ(Scan("p", "%p"), Whole({0, 0, 0, 12}));
  EXPECT_EQ(Scan("x", "%b"), Whole({}));
  EXPECT_EQ(Scan("12", "%b%b"), Failed({0, 12}));
}

TEST(ScanGroups, HaveNoEffect) {
  EXPECT_EQ(Scan("1:05", "%?(H:)%M"), Whole({0, 0, 0, 1, 5}));
  EXPECT_EQ(Scan("05", "%?(H:)%M"), Failed({0, 0, 0, 5}));
  EXPECT_EQ(Scan("1)5", "%H)%M"), Whole({0, 0, 0, 1, 5}));
  // Behind the end of a group white space counts as anywhere.
  EXPECT_EQ(Scan("1 5", "%?(H) %M"), Whole({0, 0, 0, 1, 5}));
}

TEST(ScanShortYear, IsOfThisCenturyUpTo30) {
  for (int year = 0; year < 100; ++year) {
    ASSERT_EQ(Scan(std::to_string(year), "%y"), Whole({year > 30 ? year + 1900 : year + 2000}));
  }
  EXPECT_EQ(Scan("x", "%y"), Whole({2000}));
  EXPECT_EQ(Scan("-5", "%y"), Whole({1995}));
  // What the year was before counts as read.
  EXPECT_EQ(Scan("1985 x", "%Y %y"), Whole({3885}));
}

TEST(ScanDays, SplitByTheSpanCalendar) {
  EXPECT_EQ(Scan("423", "%J"), Whole({1, 2, 3}));
  EXPECT_EQ(Scan("-423", "%J"), Whole({-1, -2, -3}));
  EXPECT_EQ(Scan("7 x", "%d %J"), Whole({}));
  for (int days = -400000; days < 400000; days += 7) {
    Scanned const scanned = Scan(std::to_string(days), "%J");
    ASSERT_EQ((scanned.record.year * 12 + scanned.record.month) * 30 + scanned.record.day, days);
  }
}

TEST(ScanSeconds, ReadADoubleAndTruncate) {
  EXPECT_EQ(Scan("9.25", "%f"), Whole({0, 0, 0, 0, 0, 9, 250000000}));
  EXPECT_EQ(Scan("9.0625", "%f"), Whole({0, 0, 0, 0, 0, 9, 62500000}));
  EXPECT_EQ(Scan("-1.5", "%f"), Whole({0, 0, 0, 0, 0, -1, -500000000}));
  EXPECT_EQ(Scan(".5", "%f"), Whole({0, 0, 0, 0, 0, 0, 500000000}));
  EXPECT_EQ(Scan("5.", "%f"), Whole({0, 0, 0, 0, 0, 5}));
  EXPECT_EQ(Scan("x", "%f"), Whole({}));
  EXPECT_EQ(Scan("0.12345678901234567890", "%f"), Whole({0, 0, 0, 0, 0, 0, 123456789}));
  // 300.25 seconds are 44 in 8 bits.
  EXPECT_EQ(Scan("300.25", "%f"), Whole({0, 0, 0, 0, 0, 44, 250000000}));
}

TEST(ScanSeconds, StepOverDigitsSignsAndPointsOnly) {
  EXPECT_EQ(Scan("1.5,7", "%f,%d"), Whole({0, 0, 7, 0, 0, 1, 500000000}));
  EXPECT_EQ(Scan("1.5.3+4-2x7", "%fx%d"), Whole({0, 0, 7, 0, 0, 1, 500000000}));
  // The exponent counts for the number and stays in the text.
  EXPECT_EQ(Scan("1e1x7", "%f%d"), Whole({0, 0, 0, 0, 0, 10}));
  EXPECT_EQ(Scan("0x1.8p1", "%f"), Whole({0, 0, 0, 0, 0, 3}));
}

TEST(ScanSeconds, BeyondACountOfNanosecondsAreZero) {
  for (char const* text : {"inf", "-inf", "nan", "1e300", "99999999999", "-99999999999"}) {
    EXPECT_EQ(Scan(text, "%f"), Whole({})) << text;
  }
}

TEST(ScanNames, ReadAsFarAsTheyAgree) {
  for (int month = 1; month <= 12; ++month) {
    std::string const name = XoDate::MonthName(month);
    for (char const* format : {"%B %d", "%b %d"}) {
      EXPECT_EQ(Scan(name + " 5", format), Whole({0, month, 5}));
      EXPECT_EQ(Scan(name.substr(0, 3) + " 5", format), Whole({0, month, 5}));
    }
  }
  EXPECT_EQ(Scan("Januar 5", "%B %d"), Whole({0, 1, 5}));
  EXPECT_EQ(Scan("January 5", "%B %d"), Whole({0, 1, 0}));
  EXPECT_EQ(Scan("Apr5", "%B%d"), Whole({0, 4, 5}));
  EXPECT_EQ(Scan("Octopus", "%b%d"), Whole({0, 10, 0}));
}

TEST(ScanNames, WithoutAMonthsNameReadThreeCharacters) {
  EXPECT_EQ(Scan("000", "%b"), Whole({}));
  EXPECT_EQ(Scan("0135", "%b%d"), Whole({0, 13, 5}));
  EXPECT_EQ(Scan("-127", "%b%d"), Whole({0, -12, 7}));
  EXPECT_EQ(Scan("apr5", "%b%d"), Whole({0, 0, 5}));
  EXPECT_EQ(Scan("4x 5", "%b%d"), Whole({0, 4, 5}));
  EXPECT_EQ(Scan("7 Jun", "%m %b"), Whole({0, 6}));
  EXPECT_EQ(Scan("7 xxx", "%m %b"), Whole({0, 7}));
}

TEST(ScanNames, DaysAreDiscarded) {
  for (int day = 0; day < 7; ++day) {
    std::string const name = XoDate::DayName(static_cast<XoDaysOfTheWeek>(day));
    for (char const* format : {"%A %d", "%a %d"}) {
      EXPECT_EQ(Scan(name + " 5", format), Whole({0, 0, 5}));
      EXPECT_EQ(Scan(name.substr(0, 3) + " 5", format), Whole({0, 0, 5}));
    }
  }
  EXPECT_EQ(Scan("5", "%A%d"), Whole({0, 0, 5}));
  EXPECT_EQ(Scan("thu5", "%a%d"), Whole({}));
}

TEST(ScanHalfDay, MarksMoveTheHour) {
  EXPECT_EQ(Scan("12:30 AM", "%I:%M %p"), Whole({0, 0, 0, 0, 30}));
  EXPECT_EQ(Scan("12:30 PM", "%I:%M %p"), Whole({0, 0, 0, 12, 30}));
  EXPECT_EQ(Scan("01:30 PM", "%I:%M %p"), Whole({0, 0, 0, 13, 30}));
  EXPECT_EQ(Scan("p1", "%P%H"), Failed({0, 0, 0, 12}));
  EXPECT_EQ(Scan("pm1", "%P%H"), Whole({0, 0, 0, 13}));
  EXPECT_EQ(Scan("xx1", "%P%H"), Whole({0, 0, 0, 1}));
  EXPECT_EQ(Scan("15 pm", "%H %p"), Whole({0, 0, 0, 15}));
}

TEST(ScanHalfDay, BothMarksTakeTwelveToZero) {
  EXPECT_EQ(Scan("12 pm am", "%I %p %p"), Whole({}));
  EXPECT_EQ(Scan("11 am pm", "%I %p %p"), Whole({0, 0, 0, 23}));
}

TEST(ScanHalfDay, MarksCountAfterAFailureToo) {
  EXPECT_EQ(Scan("pm 5", "%p %I %M"), Failed({0, 0, 0, 17}));
}

TEST(ScanWildcards, StoreMinusOne) {
  EXPECT_EQ(Scan("2021-04-*", "%Y-%m-%d"), Whole({2021, 4, -1}));
  EXPECT_EQ(Scan("*-12-24", "%D"), Whole({-1, 12, 24}));
  EXPECT_EQ(Scan("* 7", "%J %H"), Whole({-1, -1, -1, 7}));
  EXPECT_EQ(Scan("*", "%f"), Whole({0, 0, 0, 0, 0, -1, -1}));
  EXPECT_EQ(Scan("*", "%N"), Whole({0, 0, 0, 0, 0, 0, -1}));
  EXPECT_EQ(Scan("* *:* *", "%b %I:%M %p"), Whole({0, -1, 0, -1, -1}));
  EXPECT_EQ(Scan("*5", "%a%d"), Whole({0, 0, 5}));
  EXPECT_EQ(Scan("*", "%y"), Whole({-1}));
  EXPECT_EQ(Scan("*7", "%B%d"), Whole({0, -1, 7}));
}

TEST(ScanWildcards, BeforeOtherLettersAreOneCharacter) {
  EXPECT_EQ(Scan("*5", "%%%d"), Whole({0, 0, 5}));
  EXPECT_EQ(Scan("*5", "%Q%d"), Whole({0, 0, 5}));
}

TEST(ScanWildcards, ComeOnceMoreBehindAnExpansion) {
  EXPECT_EQ(Scan("2021-04-*", "%D"), Whole({2021, 4, -1}));
  EXPECT_EQ(Scan("2021-04-*", "%D%H"), Whole({2021, 4, -1, -1}));
  EXPECT_EQ(Scan("2021-04-* 13:05", "%D %H:%M"), Whole({2021, 4, -1, -1, 13}));
  EXPECT_EQ(Scan("2021-04-*x5", "%D*x%H"), Whole({2021, 4, -1, 5}));
  EXPECT_EQ(Scan("2021-04-5*7", "%D%H%M"), Whole({2021, 4, 5, -1, 7}));
}

TEST(ScanNull, BeginsWithTheNullPrintString) {
  for (char const* text : {"{NULL}", "{NULL}abc"}) {
    XoString in(text);
    XoDate date(1, 1, 1);
    EXPECT_EQ(date.ScanFromXoString(in, nullptr), &date);
    EXPECT_EQ(date.IsNullValue(), 1);
    XoTime time(1, 1, 1);
    EXPECT_EQ(time.ScanFromXoString(in, ""), &time);
    EXPECT_EQ(time.IsNullValue(), 1);
    XoDateTime both(date, time);
    both.SetZeroValue();
    EXPECT_EQ(both.ScanFromXoString(in, "%Y"), &both);
    EXPECT_EQ(both.IsNullValue(), 1);
    XoDateTimeN nano(1, 1, 1, 1, 1, 1, 1);
    EXPECT_EQ(nano.ScanFromXoString(in, "%Y"), &nano);
    EXPECT_EQ(nano.IsNullValue(), 1);
    XoTimeSpan span(1, 1, 1, 1, 1, 1, 1);
    EXPECT_EQ(span.ScanFromXoString(in, "%Y"), &span);
    EXPECT_EQ(span.IsNullValue(), 1);
  }
  EXPECT_EQ(Scan(" {NULL}", "%Y"), Whole({}));
  EXPECT_EQ(Scan("{NULL", "%Y"), Whole({}));
  XoTypeMgr::SetNullPrintString("-");
  EXPECT_EQ(Scan("-5", "%Y").record, Record::Of(XoDateTimeN::NullValue()));
  XoTypeMgr::SetNullPrintString("{NULL}");
}

TEST(ScanWide, TextIsNarrowedFirst) {
  XoString in("2021-04-*");
  ASSERT_EQ(in.MapToCodeSet(253), 0);
  XoDate date(1, 1, 1);
  EXPECT_EQ(date.ScanFromXoString(in, nullptr), &date);
  EXPECT_EQ(date, XoDate(2021, 4, -1));
  EXPECT_EQ(in.codeSet, 253);
  XoString null("{NULL}");
  ASSERT_EQ(null.MapToCodeSet(253), 0);
  EXPECT_EQ(date.ScanFromXoString(null, nullptr), &date);
  EXPECT_EQ(date.IsNullValue(), 1);
  XoTypeMgr::SetNullPrintString(null);
  XoString narrow("{NULL}");
  date.SetZeroValue();
  EXPECT_EQ(date.ScanFromXoString(narrow, nullptr), &date);
  EXPECT_EQ(date.IsNullValue(), 1);
  EXPECT_EQ(Scan("{N}5", "{N}%d"), Whole({0, 0, 5}));
  XoTypeMgr::SetNullPrintString("{NULL}");
}

TEST(ScanFunction, ANullValueGivesNull) {
  XoString in("2021");
  EXPECT_EQ(XoDateTimeNScan(nullptr, in, "%Y", 1), nullptr);
  unsigned char bytes[13];
  EXPECT_EQ(XoDateTimeNScan(bytes + 1, in, "%Y", 77), bytes + 1);
  EXPECT_EQ(bytes[1] + 256 * bytes[2], 2021);
  EXPECT_EQ(XoDateTimeNScan(bytes + 1, in, "%Y%m", 1), nullptr);
}

TEST(ScanSpans, SevenFieldsComeBack) {
  XoTimeSpan const span(1, 2, 3, 4, 5, 6, 0);
  XoString text;
  span.PrintToXoString(text, "%V");
  EXPECT_STREQ(text.StrGet(), "423.04:05:06");
  XoTimeSpan back;
  back.ScanFromXoString(text, "%V");
  EXPECT_EQ(back, span);
}

class RoundTrip : public RandomTest {
 protected:
  XoDateTimeN Valid() {
    return {XoDateTime(XoDate(static_cast<int>(Below(5373485 + 32044)) - 32044),
                       XoTime(static_cast<int>(Below(86400)))),
            static_cast<int>(Below(1000000000))};
  }
};

TEST_F(RoundTrip, ByAllFieldsIsExact) {
  XoString text;
  XoDateTimeN back;
  for (int round = 0; round < 1000000; ++round) {
    XoDateTimeN value = Valid();
    value.PrintToXoString(text, "%Y-%m-%d %H:%M:%S %N");
    ASSERT_NE(back.ScanFromXoString(text, "%Y-%m-%d %H:%M:%S %N"), nullptr) << text.StrGet();
    ASSERT_EQ(Record::Of(back), Record::Of(value)) << text.StrGet();
  }
}

TEST_F(RoundTrip, BySecondsWithAFractionLosesOneNanosecondAtMost) {
  XoString text;
  XoDateTimeN back;
  for (int round = 0; round < 200000; ++round) {
    XoDateTimeN const value = Valid();
    value.PrintToXoString(text, "%X");
    ASSERT_NE(back.ScanFromXoString(text, "%X"), nullptr) << text.StrGet();
    ASSERT_EQ(back.DateTime(), value.DateTime()) << text.StrGet();
    int const lost = value.nanoSeconds - back.nanoSeconds;
    ASSERT_TRUE(lost == 0 || lost == 1) << text.StrGet();
  }
}

TEST_F(RoundTrip, SecondsOfAnyLengthAreTheNearestDouble) {
  for (int round = 0; round < 100000; ++round) {
    // From a few digits to more than a double holds.
    std::string text = std::to_string(Below(60)) + '.';
    for (unsigned digits = 1 + Below(9); digits > 0; --digits) {
      text += static_cast<char>('0' + Below(10));
    }
    if (OneIn(2)) text += std::string(Below(12), OneIn(2) ? '0' : '9');
    double const seconds = std::strtod(text.c_str(), nullptr);
    auto const nanos = static_cast<long long>(seconds * 1000000000.0);
    ASSERT_EQ(Scan(text, "%f"), Whole({0, 0, 0, 0, 0, static_cast<int>(seconds),
                                       static_cast<int>(nanos % 1000000000)}))
        << text;
  }
}

TEST_F(RoundTrip, WildcardsComeBackWithinOneFormat) {
  for (int round = 0; round < 20000; ++round) {
    Record record = Record::Of(Valid());
    for (int* field : {&record.year, &record.month, &record.day, &record.hour, &record.minute,
                       &record.second, &record.nano}) {
      if (OneIn(4)) *field = -1;
    }
    std::string const format = "%Y-%m-%d %H:%M:%S %N";
    ASSERT_EQ(Scan(Print(record, format), format), Whole(record));
  }
}

}  // namespace
}  // namespace xo::test
