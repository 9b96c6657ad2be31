#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/temporal_text.hpp"

namespace xo::test {
namespace {

constexpr Record kRecord{2021, 4, 15, 13, 5, 9, 250000000};

template <class... Arguments>
std::string Formatted(char const* format, Arguments... arguments) {
  char text[512];
  std::snprintf(text, sizeof text, format, arguments...);
  return text;
}

TEST(PrintFormats, AreTheClassesOwnWhereNoneIsGiven) {
  XoDate const date(2021, 4, 15);
  XoTime const time(13, 5, 9);
  EXPECT_EQ(Print(date, nullptr), "2021-04-15");
  EXPECT_EQ(Print(time, nullptr), "13:05:09");
  EXPECT_EQ(Print(XoDateTime(date, time), nullptr), "2021-04-15T13:05:09");
  EXPECT_EQ(Print(kRecord.Value(), nullptr), "2021-04-15T13:05:09.250");
  EXPECT_EQ(Print(XoTimeSpan(1, 2, 3, 4, 5, 6, 0), nullptr), "423.04:05:06");
}

TEST(PrintFormats, WidenWhatTheTypeHasNot) {
  EXPECT_EQ(Print(XoDate(2021, 4, 15), "%Y %H:%M:%S %N"), "2021 00:00:00 0");
  EXPECT_EQ(Print(XoTime(13, 5, 9), "%Y-%m-%d %H %N"), "0000-00-00 13 0");
  EXPECT_EQ(Print(XoDateTime(XoDate(2021, 4, 15), XoTime(1, 2, 3)), "%d %H %N"), "15 01 0");
}

TEST(PrintLetters, DefaultFormatsOfTheRows) {
  EXPECT_EQ(Print(kRecord, "%a %e.%b %Y"), "Thu 15.Apr 2021");
  EXPECT_EQ(Print(kRecord, "%I:%M:%S %p"), "01:05:09 pm");
  EXPECT_EQ(Print(kRecord, "%X"), "2021-04-15T13:05:09.250");
}

TEST(PrintLetters, ExpansionsStandForTheirFormats) {
  EXPECT_EQ(Print(kRecord, "%D"), "2021-04-15");
  EXPECT_EQ(Print(kRecord, "%T"), "13:05:09");
  EXPECT_EQ(Print(kRecord, "%O"), "2021-04-15T13:05:09");
  EXPECT_EQ(Print(kRecord, "%V"), "727695.13:05:09.250");
  EXPECT_EQ(Print(kRecord, "<%D|%T>"), "<2021-04-15|13:05:09>");
  EXPECT_EQ(Print(kRecord, "%D%T%D"), "2021-04-1513:05:092021-04-15");
}

TEST(PrintLetters, NamesOfDaysAndMonths) {
  EXPECT_EQ(Print(kRecord, "%A %a %B %b"), "Thursday Thu April Apr");
  EXPECT_EQ(Print({2021, 1, 3}, "%A %a %B %b"), "Sunday Sun Januar Jan");
  EXPECT_EQ(Print({2021, 2, 1}, "%A %a %B %b"), "Monday Mon Februar Feb");
  EXPECT_EQ(Print({2021, 5, 1}, "%B%b"), "MayMay");
}

TEST(PrintLetters, AMonthWithoutANamePrintsThreeDigits) {
  EXPECT_EQ(Print({2021, 0, 1}, "%b"), "000");
  EXPECT_EQ(Print({2021, 13, 1}, "%B"), "013");
  EXPECT_EQ(Print({2021, -5, 1}, "%b"), "-005");
  EXPECT_EQ(Print({2021, 127, 1}, "%B"), "127");
}

TEST(PrintLetters, EveryValueOfAnEightBitField) {
  for (int n = -128; n < 128; ++n) {
    if (n == -1) continue;
    std::string const two = Formatted("%02.2d", n);
    ASSERT_EQ(Print({1, n, 1}, "%m"), two);
    ASSERT_EQ(Print({1, 1, n}, "%d"), two);
    ASSERT_EQ(Print({1, 1, n}, "%e"), two);
    ASSERT_EQ(Print({1, 1, 1, n}, "%H"), two);
    ASSERT_EQ(Print({1, 1, 1, 1, n}, "%M"), two);
    ASSERT_EQ(Print({1, 1, 1, 1, 1, n}, "%S"), two);
    ASSERT_EQ(Print({1, 1, 1, 1, 1, n}, "%f"), Formatted("%02.0lf", static_cast<double>(n)));
    ASSERT_EQ(Print({1, 1, 1, n}, "%I"), Formatted("%02.2d", n > 12 ? n - 12 : n));
    int const shown = n == 0 ? 12 : n > 12 ? n - 12 : n;
    ASSERT_EQ(Print({1, 1, 1, n}, "%I%p"), Formatted("%02.2d", shown) + (n < 12 ? "am" : "pm"));
    ASSERT_EQ(Print({1, 1, 1, n}, "%P%I"), (n < 12 ? "AM" : "PM") + Formatted("%02.2d", shown));
    bool const hasName = n >= 1 && n <= 12;
    ASSERT_EQ(Print({1, n, 1}, "%B"), hasName ? XoDate::MonthName(n) : Formatted("%03.3d", n));
    ASSERT_EQ(Print({1, n, 1}, "%b"),
              hasName ? std::string(XoDate::MonthName(n)).substr(0, 3) : Formatted("%03.3d", n));
    std::string const day = XoDate::DayName(XoDate(2021, 4, n).GetDayOfTheDate());
    ASSERT_EQ(Print({2021, 4, n}, "%A"), day);
    ASSERT_EQ(Print({2021, 4, n}, "%a"), day.substr(0, 3));
    ASSERT_EQ(Print({7, n, 5}, "%J"), std::to_string((7 * 12 + n) * 30 + 5));
    ASSERT_EQ(Print({7, 5, n}, "%J"), std::to_string((7 * 12 + 5) * 30 + n));
  }
}

TEST(PrintLetters, EveryYear) {
  for (int year = -32768; year < 32768; ++year) {
    if (year == -1) continue;
    ASSERT_EQ(Print({year, 1, 1}, "%Y %y %J"),
              Formatted("%04.4d %02.2d %d", year, year % 100, (year * 12 + 1) * 30 + 1));
  }
}

TEST(PrintLetters, SecondsWithAFractionOfThreeSixOrNineDigits) {
  EXPECT_EQ(Print({1, 1, 1, 1, 1, 9, 2000}, "%f"), "09.000002");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, 9, 1500}, "%f"), "09.000001500");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, 9, 0}, "%f"), "09");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, 0, 0}, "%f"), "00");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, -2, 0}, "%f"), "-2");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, -2, 500000000}, "%f"), "-1.500");
}

/// The number as the C library prints it.
std::string Seconds(int second, int nano) {
  if (nano == 0) return Formatted("%0*.*lf", 2, 0, static_cast<double>(second));
  int const precision = nano % 1000 != 0 ? 9 : nano % 1000000 == 0 ? 3 : 6;
  return Formatted("%0*.*lf", precision + 3, precision, nano / 1000000000.0 + second);
}

class PrintRandom : public RandomTest {};

TEST_F(PrintRandom, SecondsAndNanosecondsAreTheCLibrarysDigits) {
  for (int nano : {INT_MIN, INT_MIN + 1, INT_MAX, -1000000000, 1000000000, 999999999, -999999999,
                   2000000000, -2000000000, -1, 1, 999, 1000, -1000, 1000000, -1000000}) {
    for (int second = -128; second < 128; ++second) {
      if (second == -1) continue;
      ASSERT_EQ(Print({1, 1, 1, 1, 1, second, nano}, "%f"), Seconds(second, nano));
    }
    if (nano != -1) {
      EXPECT_EQ(Print({1, 1, 1, 1, 1, 1, nano}, "%N"), std::to_string(nano));
    }
  }
  for (int round = 0; round < 100000; ++round) {
    auto nano = static_cast<int>(Bits());
    if (round % 3 == 1) nano = nano / 1000 * 1000;
    if (round % 3 == 2) nano = nano / 1000000 * 1000000;
    auto const second = static_cast<signed char>(Byte());
    if (second == -1) continue;
    ASSERT_EQ(Print({1, 1, 1, 1, 1, second, nano}, "%f"), Seconds(second, nano)) << nano;
    ASSERT_EQ(Print({1, 1, 1, 1, 1, second, nano}, "%N"), nano == -1 ? "*" : std::to_string(nano));
  }
}

TEST(PrintTwelveHours, DependOnAMarkAnywhereInTheFormat) {
  EXPECT_EQ(Print({1, 1, 1, 0, 30, 0}, "%I:%M:%S %p"), "12:30:00 am");
  EXPECT_EQ(Print({1, 1, 1, 12, 0, 0}, "%I:%M:%S %p"), "12:00:00 pm");
  EXPECT_EQ(Print({1, 1, 1, 0, 30, 0}, "%I"), "00");
  EXPECT_EQ(Print({1, 1, 1, 13, 0, 0}, "%I"), "01");
  EXPECT_EQ(Print({1, 1, 1, 0, 0, 0}, "%P %I"), "AM 12");
  EXPECT_EQ(Print({1, 1, 1, 23, 0, 0}, "%I %P"), "11 PM");
  EXPECT_EQ(Print({1, 1, 1, -5, 0, 0}, "%I %p"), "-05 am");
}

TEST(PrintTwelveHours, TheMarkIsLookedForByPairsAndNotSeenBehindAQuestionMark) {
  EXPECT_EQ(Print({1, 1, 1, 0, 0, 0}, "%I%%p"), "00%p");
  EXPECT_EQ(Print({1, 1, 1, 13, 0, 0}, "%I%?p"), "01pm");
  EXPECT_EQ(Print({1, 1, 1, 0, 0, 5}, "%S%I%?p"), "0500am");
}

TEST(PrintText, OtherCharactersStandForThemselves) {
  EXPECT_EQ(Print(kRecord, "a)b(c?d*"), "a)b(c?d*");
  EXPECT_EQ(Print(kRecord, "%%|%Q|%)|%(|%*"), "%|Q|)|(|*");
  EXPECT_EQ(Print(kRecord, "\xe4%\xe4"), "\xe4\xe4");
  EXPECT_EQ(Print(kRecord, ""), "");
}

TEST(PrintText, StopsAtTheEndOfAFormat) {
  EXPECT_EQ(Print(kRecord, "%"), "");
  EXPECT_EQ(Print(kRecord, "%Y%"), "2021");
  EXPECT_EQ(Print(kRecord, "%?"), "");
  EXPECT_EQ(Print(kRecord, "x%?("), "x");
  EXPECT_EQ(Print(kRecord, "%?(H)"), "13");
  EXPECT_EQ(Print({}, "%?(H)"), "");
}

TEST(PrintText, StopsAt2559Characters) {
  std::string const longFormat(10000, 'x');
  EXPECT_EQ(Print(kRecord, longFormat), longFormat.substr(0, 2559));
  std::string digits;
  for (int i = 0; i < 2000; ++i) digits += "%Y";
  std::string const text = Print(kRecord, digits);
  EXPECT_EQ(text.size(), 2559u);
  EXPECT_EQ(text.substr(2550), "212021202");
  EXPECT_EQ(Print({}, "%?(H" + longFormat + ")end"), "end");
}

TEST(PrintGroups, SuppressLeadingZeros) {
  EXPECT_EQ(Print({0, 0, 0, 0, 5}, "%?(H:)%M"), "05");
  EXPECT_EQ(Print({0, 0, 0, 1, 5}, "%?(H:)%M"), "01:05");
  char const* const format = "%?(Y years )%?(m months )%?(d days )%?(H:)%?(M:)%S";
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 7}, format), "07");
  EXPECT_EQ(Print({0, 0, 2, 0, 0, 7}, format), "02 days 00:00:07");
  EXPECT_EQ(Print({1, 0, 0, 0, 0, 0}, format), "0001 years 00 months 00 days 00:00:00");
}

TEST(PrintGroups, ConditionsHoldOnlyUntilAFieldHasPrinted) {
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 7}, "%?H%?M%?S"), "07");
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 7}, "%S%?H%?M"), "070000");
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 0}, "%?f%?J%?N"), "");
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 0, 1}, "%?f"), "00.000000001");
  EXPECT_EQ(Print({0, 1, 0}, "%?J"), "30");
  // 1 month less 30 days is a total of zero.
  EXPECT_EQ(Print({0, 1, -30}, "%?J"), "");
  EXPECT_EQ(Print({0, 0, 0, 0, 0, 0}, "%?p"), "");
  EXPECT_EQ(Print({0, 0, 0, 5, 0, 0}, "%?p"), "am");
  EXPECT_EQ(Print({2000, 0, 0}, "%?y"), "00");
  EXPECT_EQ(Print({0, 0, 0}, "%?y%?a%?B"), "");
}

TEST(PrintGroups, LiteralTextIsNoField) {
  EXPECT_EQ(Print({}, "%?(Hx%%y)%M"), "00");
  EXPECT_EQ(Print({}, "a%?(Hx)b"), "ab");
}

TEST(PrintGroups, TheSecondOpeningMovesTheStart) {
  EXPECT_EQ(Print({}, "a%?(Hb%?(Mc)d"), "abd");
  EXPECT_EQ(Print({}, "%?(H)))"), "))");
  EXPECT_EQ(Print({}, "%(H)"), "(H)");
}

TEST(PrintGroups, HoldExpansions) {
  EXPECT_EQ(Print({}, "%?(T|)x"), "00:00:00|x");
  EXPECT_EQ(Print({}, "%?(H%T)"), "00:00:00");
}

TEST(PrintWildcards, ShowAsStars) {
  EXPECT_EQ(Print({2021, 4, -1}, "%Y-%m-%d"), "2021-04-*");
  EXPECT_EQ(Print({-1, -1, -1, -1, -1, -1, -1}, "%Y|%y|%m|%b|%B|%d|%e|%a|%A|%H|%I|%M|%S|%f|%N|%J"),
            "*|*|*|*|*|*|*|*|*|*|*|*|*|*|*|*");
  EXPECT_EQ(Print({-1, -1, 5}, "%J"), "-385");
  EXPECT_EQ(Print({1, 1, 1, 1, 1, 5, -1}, "%f %N"), "04.999999999 *");
}

TEST(PrintWildcards, TheFieldBeforeDecidesForWhatHasNoFieldOfItsOwn) {
  EXPECT_EQ(Print({1, 1, 1, -1}, "%H %p"), "* *");
  EXPECT_EQ(Print({1, 1, 1, -1}, "%H%%"), "*%*");
  EXPECT_EQ(Print({1, 1, 1, -1}, "%H%Q%q"), "*Q*q*");
  EXPECT_EQ(Print({1, 1, 1, -1, 5}, "%H%M%%%p"), "*05%am");
  EXPECT_EQ(Print({1, 1, 1, 13, -1}, "%M%P"), "**");
  EXPECT_EQ(Print({1, 1, 1, -1}, "%p"), "am");
}

TEST(PrintWildcards, AreNoFieldForConditions) {
  EXPECT_EQ(Print({0, 0, 0, -1, 0, 7}, "%?H:%?M:%?S"), "*::07");
  EXPECT_EQ(Print({0, 0, 0, -1, 0, 7}, "%?(H:)%S"), "07");
}

TEST(PrintNull, IsTheNullPrintString) {
  EXPECT_EQ(Print(XoDate::NullValue(), "%Y"), "{NULL}");
  EXPECT_EQ(Print(XoTime::NullValue(), nullptr), "{NULL}");
  EXPECT_EQ(Print(XoDateTime::NullValue(), "%H"), "{NULL}");
  EXPECT_EQ(Print(XoDateTimeN::NullValue(), "x"), "{NULL}");
  EXPECT_EQ(Print(XoTimeSpan::NullValue(), nullptr), "{NULL}");
  XoTypeMgr::SetNullPrintString("none");
  EXPECT_EQ(Print(XoDate::NullValue(), "%Y"), "none");
  XoTypeMgr::SetNullPrintString("{NULL}");
  // Null of a part alone is none of the whole.
  EXPECT_EQ(Print(XoDateTime(XoDate::NullValue(), XoTime(1, 2, 3)), "%Y %H"), "-32768 01");
}

TEST(PrintFunction, TakesTheRecordAtAnyAddress) {
  unsigned char bytes[13];
  XoDateTimeN const value(2021, 4, 15, 13, 5, 9, 250000000);
  std::memcpy(bytes + 1, &value, sizeof value);
  XoString out;
  EXPECT_EQ(&XoDateTimeNPrint(out, bytes + 1, "%X", 77), &out);
  EXPECT_STREQ(out.StrGet(), "2021-04-15T13:05:09.250");
  EXPECT_EQ(out.codeSet, XoString::GetDefault8CodeSet());
  XoTimeSpan const span(1, 2, 3, 4, 5, 6, 0);
  EXPECT_STREQ(XoDateTimeNPrint(out, &span, "%V", 1).StrGet(), "423.04:05:06");
}

}  // namespace
}  // namespace xo::test
