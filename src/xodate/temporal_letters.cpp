#include "src/xodate/temporal_letters.hpp"

#include <array>
#include <cstring>

#include "base/number_text.hpp"
#include "xodatetimen.hpp"

namespace xo {
namespace {

using Fields = TemporalFields;

/// The place `count` characters on, or the end.
char const* Skip(char const* text, unsigned count) {
  for (; count != 0 && *text != 0; --count) ++text;
  return text;
}

constexpr unsigned kUnlimited = ~0U;

// %A, %a, %B, %b.

constexpr unsigned kShortName = 3;
/// Digits of a month that has no name.
constexpr unsigned kMonthDigits = 3;

char const* DayNameOf(int index) { return XoDate::DayName(static_cast<XoDaysOfTheWeek>(index)); }
char const* MonthNameOf(int index) { return XoDate::MonthName(index + 1); }

/// The index of the name that the text begins with, by its first letters, or -1.
template <auto* NameOf, int kCount>
int FindName(char const* text) {
  for (int index = 0; index < kCount; ++index) {
    if (std::strncmp(text, NameOf(index), kShortName) == 0) return index;
  }
  return -1;
}

/// The place as far as the text agrees with a name.
char const* SkipName(char const* text, char const* name) {
  for (; *name != 0 && *text == *name; ++name) ++text;
  return text;
}

template <unsigned kLength>
char* PrintDayName(char* at, PrintSource const& source) {
  Fields const& fields = source.fields;
  XoDate const date(fields.year, fields.month, fields.day);
  return PutFirst(at, XoDate::DayName(date.GetDayOfTheDate()), kLength);
}

char const* ScanDayName(char const* text, ScanTarget&) {
  int const index = FindName<DayNameOf, 7>(text);
  return index >= 0 ? SkipName(text, DayNameOf(index)) : text;
}

template <unsigned kLength>
char* PrintMonthName(char* at, PrintSource const& source) {
  char const* const name = XoDate::MonthName(source.fields.month);
  return name != nullptr ? PutFirst(at, name, kLength)
                         : PutNumber(at, source.fields.month, kMonthDigits);
}

char const* ScanMonthName(char const* text, ScanTarget& target) {
  int const index = FindName<MonthNameOf, 12>(text);
  if (index >= 0) {
    target.fields.month = index + 1;
    return SkipName(text, MonthNameOf(index));
  }
  // The number that stands for a month without a name: no more than its three characters are read.
  char number[kMonthDigits + 1] = {};
  char const* const end = Skip(text, kMonthDigits);
  std::memcpy(number, text, static_cast<std::size_t>(end - text));
  TakeNumber(number, target.fields.month);
  return end;
}

// %I, %P, %p.

/// Whether a format names AM or PM outside of expansions. Each '%' is taken together with the
/// character behind it, so that a conditional mark is not seen, which is to be so.
bool NamesHalfDay(char const* format) {
  for (; *format != 0; ++format) {
    if (*format != '%') continue;
    ++format;
    if (*format == 0) return false;
    if (*format == 'P' || *format == 'p') return true;
  }
  return false;
}

char* PrintTwelveHour(char* at, PrintSource const& source) {
  int const hour = source.fields.hour;
  bool const isMidnight = hour == 0 && NamesHalfDay(source.format);
  return PutNumber(at, hour > 12 ? hour - 12 : isMidnight ? 12 : hour, 2);
}

char const* ScanHour(char const* text, ScanTarget& target) {
  return TakeNumber(text, target.fields.hour);
}

template <char kAm, char kPm, char kM>
char* PrintHalfDay(char* at, PrintSource const& source) {
  at[0] = source.fields.hour >= 12 ? kPm : kAm;
  at[1] = kM;
  return at + 2;
}

char const* ScanHalfDay(char const* text, ScanTarget& target) {
  if (*text == 'P' || *text == 'p') target.isPm = true;
  if (*text == 'A' || *text == 'a') target.isAm = true;
  return Skip(text, 2);
}

// %J: the date as a count of days of a span.

constexpr int kDaysOfMonth = 30;
constexpr int kDaysOfYear = 360;

int TotalDays(Fields const& fields) {
  return (fields.year * 12 + fields.month) * kDaysOfMonth + fields.day;
}

char* PrintDays(char* at, PrintSource const& source) {
  return PutNumber(at, TotalDays(source.fields), 1);
}

char const* ScanDays(char const* text, ScanTarget& target) {
  int days = 0;
  char const* const end = TakeNumber(text, days);
  target.fields.year = days / kDaysOfYear;
  target.fields.month = days % kDaysOfYear / kDaysOfMonth;
  target.fields.day = days % kDaysOfMonth;
  return end;
}

bool AreNoDays(Fields const& fields) { return TotalDays(fields) == 0; }

bool AreDaysWildcard(Fields const& fields) {
  return fields.year == kWildcard && fields.month == kWildcard && fields.day == kWildcard;
}

void SetDaysWildcard(Fields& fields) { fields.year = fields.month = fields.day = kWildcard; }

// %N: a number that is not there reads as 0.

char* PrintNanoSeconds(char* at, PrintSource const& source) {
  return PutNumber(at, source.fields.nanoSeconds, 1);
}

char const* ScanNanoSeconds(char const* text, ScanTarget& target) {
  target.fields.nanoSeconds = 0;
  return TakeNumber(text, target.fields.nanoSeconds);
}

// %f: seconds with a fraction of as many digits as it needs, by threes.

/// The sum is formed in whole nanoseconds: as the double that it stands for is less than half a
/// nanosecond off, its digits are the same.
char* PrintSeconds(char* at, PrintSource const& source) {
  Fields const& fields = source.fields;
  unsigned const precision = fields.nanoSeconds == 0             ? 0
                             : fields.nanoSeconds % 1000000 == 0 ? 3
                             : fields.nanoSeconds % 1000 == 0    ? 6
                                                                 : 9;
  o_8b const sum = fields.second * kNanoSecondsOfSecond + fields.nanoSeconds;
  if (sum < 0) *at++ = '-';
  auto const magnitude = static_cast<o_u8b>(sum < 0 ? -sum : sum);
  constexpr auto kBase = static_cast<o_u8b>(kNanoSecondsOfSecond);
  // The width of two digits before the point includes the sign.
  at = PutDigits(at, magnitude / kBase, sum < 0 ? 1 : 2);
  if (precision == 0) return at;
  *at = '.';
  o_u8b const unit = precision == 3 ? 1000000 : precision == 6 ? 1000 : 1;
  return PutDigits(at + 1, magnitude % kBase / unit, precision);
}

/// The number that the text begins with, as the C library reads it. A decimal fraction of so few
/// digits that they are a whole number of a double, like the power of ten that divides them, needs
/// one division, which rounds correctly.
double ReadSeconds(char const* text) {
  char const* at = text;
  bool const isNegative = *at == '-';
  if (isNegative || *at == '+') ++at;
  constexpr unsigned kMostDigits = 15;
  double mantissa = 0;
  double divisor = 1;
  unsigned digits = 0;
  bool isBehindPoint = false;
  for (;; ++at) {
    if (*at == '.' && !isBehindPoint) {
      isBehindPoint = true;
    } else if (IsDigit(*at)) {
      mantissa = mantissa * 10 + (*at - '0');
      if (isBehindPoint) divisor *= 10;
      if (++digits > kMostDigits) return ReadDouble(text);
    } else {
      break;
    }
  }
  // No digits, an exponent or hexadecimal digits: what else the C library reads.
  bool const isPlain = digits != 0 && *at != 'e' && *at != 'E' && *at != 'x' && *at != 'X';
  if (!isPlain) return ReadDouble(text);
  return (isNegative ? -mantissa : mantissa) / divisor;
}

char const* ScanSeconds(char const* text, ScanTarget& target) {
  double const seconds = ReadSeconds(text);
  while (IsDigit(*text) || (*text != 0 && std::strchr("+-.", *text) != nullptr)) ++text;
  // Infinities, and what is too great for a count of nanoseconds, read as 0.
  double const nanoSeconds = seconds * static_cast<double>(kNanoSecondsOfSecond);
  o_8b const whole = TruncateTo64(nanoSeconds);
  bool const isCount = whole != INT64_MIN;
  target.fields.second = isCount ? Wrap32(static_cast<o_8b>(seconds)) : 0;
  target.fields.nanoSeconds = isCount ? static_cast<int>(whole % kNanoSecondsOfSecond) : 0;
  return text;
}

bool AreNoSeconds(Fields const& fields) { return fields.second == 0 && fields.nanoSeconds == 0; }

void SetSecondsWildcard(Fields& fields) { fields.second = fields.nanoSeconds = kWildcard; }

// %y: two digits of the year.

char* PrintShortYear(char* at, PrintSource const& source) {
  return PutNumber(at, source.fields.year % 100, 2);
}

char const* ScanShortYear(char const* text, ScanTarget& target) {
  int& year = target.fields.year;
  char const* const end = TakeNumber(text, year);
  // Also where nothing was read.
  year = Wrap32(o_8b{year} + (year > 30 ? 1900 : 2000));
  return end;
}

void SetNoWildcard(Fields&) {}

// The table.

struct NamedLetter {
  char letter;
  TemporalLetter row;
};

constexpr TemporalLetter Number(int Fields::*field, unsigned char digits) {
  return {.field = field, .digits = digits};
}

/// A letter of one field with a text of its own.
constexpr TemporalLetter Text(int Fields::*field, decltype(TemporalLetter::print) print,
                              decltype(TemporalLetter::scan) scan) {
  return {.field = field, .print = print, .scan = scan};
}

constexpr TemporalLetter DayName(decltype(TemporalLetter::print) print) {
  return {.field = &Fields::day, .print = print, .scan = ScanDayName, .setWildcard = SetNoWildcard};
}

constexpr TemporalLetter HalfDay(decltype(TemporalLetter::print) print) {
  return {.field = &Fields::hour,
          .print = print,
          .scan = ScanHalfDay,
          .followsField = true,
          .setWildcard = SetNoWildcard};
}

constexpr TemporalLetter kDays = {.print = PrintDays,
                                  .scan = ScanDays,
                                  .isZero = AreNoDays,
                                  .isWildcard = AreDaysWildcard,
                                  .setWildcard = SetDaysWildcard};

constexpr TemporalLetter kSeconds = {.field = &Fields::second,
                                     .print = PrintSeconds,
                                     .scan = ScanSeconds,
                                     .isZero = AreNoSeconds,
                                     .setWildcard = SetSecondsWildcard};

constexpr TemporalLetter Expansion(char const* format) { return {.expansion = format}; }

constexpr NamedLetter kLetters[] = {
    {'A', DayName(PrintDayName<kUnlimited>)},
    {'a', DayName(PrintDayName<kShortName>)},
    {'B', Text(&Fields::month, PrintMonthName<kUnlimited>, ScanMonthName)},
    {'b', Text(&Fields::month, PrintMonthName<kShortName>, ScanMonthName)},
    {'D', Expansion("%Y-%m-%d")},
    {'H', Number(&Fields::hour, 2)},
    {'I', Text(&Fields::hour, PrintTwelveHour, ScanHour)},
    {'J', kDays},
    {'M', Number(&Fields::minute, 2)},
    {'N', Text(&Fields::nanoSeconds, PrintNanoSeconds, ScanNanoSeconds)},
    {'O', Expansion("%Y-%m-%dT%H:%M:%S")},
    {'P', HalfDay(PrintHalfDay<'A', 'P', 'M'>)},
    {'p', HalfDay(PrintHalfDay<'a', 'p', 'm'>)},
    {'S', Number(&Fields::second, 2)},
    {'T', Expansion("%H:%M:%S")},
    {'V', Expansion("%J.%H:%M:%f")},
    {'X', Expansion("%Y-%m-%dT%H:%M:%f")},
    {'Y', Number(&Fields::year, 4)},
    {'d', Number(&Fields::day, 2)},
    // Two digits as well: its precision fills up with zeros.
    {'e', Number(&Fields::day, 2)},
    {'f', kSeconds},
    {'m', Number(&Fields::month, 2)},
    {'y', Text(&Fields::year, PrintShortYear, ScanShortYear)},
};

}  // namespace

constinit std::array<TemporalLetter const*, 256> const kTemporalLetters = [] {
  std::array<TemporalLetter const*, 256> rows{};
  for (NamedLetter const& each : kLetters)
    rows[static_cast<unsigned char>(each.letter)] = &each.row;
  return rows;
}();

}  // namespace xo
