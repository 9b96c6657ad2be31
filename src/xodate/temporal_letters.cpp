#include "src/xodate/temporal_letters.hpp"

#include <array>
#include <cstring>

#include "base/number_text.hpp"
#include "xodatetimen.hpp"

namespace xo {
namespace {

using Fields = TemporalFields;
using Output = TemporalOutput;

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Moves on by `count` characters, or to the end.
void Skip(char const*& text, unsigned count) {
  for (; count != 0 && *text != 0; --count) ++text;
}

constexpr unsigned kUnlimited = ~0U;

/// Reads a decimal number of at most `width` characters, sign included, into `number`, which keeps
/// its value where there is no digit; steps over what was read and the sign. A long number is read
/// whole and keeps its low 32 bits.
void TakeNumber(char const*& text, int& number, unsigned width = kUnlimited) {
  bool const isNegative = *text == '-';
  if (isNegative || *text == '+') {
    ++text;
    --width;
  }
  if (!IsDigit(*text)) return;
  unsigned value = 0;
  for (; width != 0 && IsDigit(*text); --width) {
    value = value * 10 + static_cast<unsigned>(*text++ - '0');
  }
  number = static_cast<int>(isNegative ? 0U - value : value);
}

// Letters of one field.

template <int Fields::*Field>
bool IsZeroField(Fields const& fields) {
  return fields.*Field == 0;
}

template <int Fields::*Field>
bool IsWildcardField(Fields const& fields) {
  return fields.*Field == kWildcard;
}

template <int Fields::*Field>
void SetWildcardField(Fields& fields) {
  fields.*Field = kWildcard;
}

template <int Fields::*Field, unsigned kDigits>
void PrintField(Output& out, PrintSource const& source) {
  out.PutNumber(source.fields.*Field, kDigits);
}

template <int Fields::*Field>
void ScanField(char const*& text, ScanTarget& target) {
  TakeNumber(text, target.fields.*Field);
}

/// A letter that prints a number of at least `kDigits` digits and reads one.
template <int Fields::*Field, unsigned kDigits>
constexpr TemporalLetter kNumber = {PrintField<Field, kDigits>, IsZeroField<Field>,
                                    IsWildcardField<Field>,     ScanField<Field>,
                                    SetWildcardField<Field>,    nullptr};

/// The same letter with a print and a scan of its own.
template <int Fields::*Field>
constexpr TemporalLetter OwnText(decltype(TemporalLetter::print) print,
                                 decltype(TemporalLetter::scan) scan) {
  return {print, IsZeroField<Field>,      IsWildcardField<Field>,
          scan,  SetWildcardField<Field>, nullptr};
}

constexpr TemporalLetter Expansion(char const* format) {
  return {nullptr, nullptr, nullptr, nullptr, nullptr, format};
}

// %A, %a, %B, %b.

constexpr unsigned kShortName = 3;
/// Digits of a month that has no name.
constexpr unsigned kMonthDigits = 3;

char const* DayNameOf(int index) { return XoDate::DayName(static_cast<XoDaysOfTheWeek>(index)); }
char const* MonthNameOf(int index) { return XoDate::MonthName(index + 1); }

/// The index of the name among `count` that the text begins with, by its first letters, or -1. The
/// text is stepped over as far as it agrees with the whole name.
template <auto* NameOf, int kCount>
int TakeName(char const*& text) {
  for (int index = 0; index < kCount; ++index) {
    char const* name = NameOf(index);
    if (std::strncmp(text, name, kShortName) != 0) continue;
    for (; *name != 0 && *text == *name; ++name) ++text;
    return index;
  }
  return -1;
}

template <unsigned kLength>
void PrintDayName(Output& out, PrintSource const& source) {
  Fields const& fields = source.fields;
  out.PutFirst(XoDate::DayName(XoDate(fields.year, fields.month, fields.day).GetDayOfTheDate()),
               kLength);
}

void ScanDayName(char const*& text, ScanTarget&) { TakeName<DayNameOf, 7>(text); }

template <unsigned kLength>
void PrintMonthName(Output& out, PrintSource const& source) {
  char const* const name = XoDate::MonthName(source.fields.month);
  if (name != nullptr) {
    out.PutFirst(name, kLength);
  } else {
    out.PutNumber(source.fields.month, kMonthDigits);
  }
}

void ScanMonthName(char const*& text, ScanTarget& target) {
  int const index = TakeName<MonthNameOf, 12>(text);
  if (index >= 0) {
    target.fields.month = index + 1;
    return;
  }
  // The number that stands for a month without a name.
  char const* number = text;
  TakeNumber(number, target.fields.month, kMonthDigits);
  Skip(text, kMonthDigits);
}

template <unsigned kLength>
constexpr TemporalLetter kDayName = {PrintDayName<kLength>,
                                     IsZeroField<&Fields::day>,
                                     IsWildcardField<&Fields::day>,
                                     ScanDayName,
                                     nullptr,
                                     nullptr};

template <unsigned kLength>
constexpr TemporalLetter kMonthName = OwnText<&Fields::month>(PrintMonthName<kLength>,
                                                              ScanMonthName);

// %I, %P, %p.

void PrintTwelveHour(Output& out, PrintSource const& source) {
  int const hour = source.fields.hour;
  int const shown = hour > 12 ? hour - 12 : hour == 0 && source.hasHalfDayMark ? 12 : hour;
  out.PutNumber(shown, 2);
}

template <char kAm, char kPm, char kM>
void PrintHalfDay(Output& out, PrintSource const& source) {
  out.Put(source.fields.hour >= 12 ? kPm : kAm);
  out.Put(kM);
}

void ScanHalfDay(char const*& text, ScanTarget& target) {
  if (*text == 'P' || *text == 'p') target.isPm = true;
  if (*text == 'A' || *text == 'a') target.isAm = true;
  Skip(text, 2);
}

template <char kAm, char kPm, char kM>
constexpr TemporalLetter kHalfDay = {
    PrintHalfDay<kAm, kPm, kM>, IsZeroField<&Fields::hour>, nullptr, ScanHalfDay, nullptr, nullptr};

// %J: the date as a count of days of a span.

constexpr int kDaysOfMonth = 30;
constexpr int kDaysOfYear = 360;

int TotalDays(Fields const& fields) {
  return (fields.year * 12 + fields.month) * kDaysOfMonth + fields.day;
}

void PrintDays(Output& out, PrintSource const& source) {
  out.PutNumber(TotalDays(source.fields), 1);
}

void ScanDays(char const*& text, ScanTarget& target) {
  int days = 0;
  TakeNumber(text, days);
  target.fields.year = days / kDaysOfYear;
  target.fields.month = days % kDaysOfYear / kDaysOfMonth;
  target.fields.day = days % kDaysOfMonth;
}

constexpr TemporalLetter kDays = {
    PrintDays,
    [](Fields const& fields) { return TotalDays(fields) == 0; },
    [](Fields const& fields) {
      return fields.year == kWildcard && fields.month == kWildcard && fields.day == kWildcard;
    },
    ScanDays,
    [](Fields& fields) { fields.year = fields.month = fields.day = kWildcard; },
    nullptr};

// %N: a number that is not there reads as 0, and one beyond 32 bits as the nearest that is not.

void ScanNanoSeconds(char const*& text, ScanTarget& target) {
  target.fields.nanoSeconds = ReadInt32(text, IntegerBase::kDecimal);
  int ignored = 0;
  TakeNumber(text, ignored);
}

// %f: seconds with a fraction of as many digits as it needs, by threes.

/// The sum is formed in whole nanoseconds: as the double that it stands for is less than half a
/// nanosecond off, its digits are the same.
void PrintSeconds(Output& out, PrintSource const& source) {
  Fields const& fields = source.fields;
  unsigned const precision = fields.nanoSeconds == 0             ? 0
                             : fields.nanoSeconds % 1000000 == 0 ? 3
                             : fields.nanoSeconds % 1000 == 0    ? 6
                                                                 : 9;
  o_8b const sum = fields.second * kNanoSecondsOfSecond + fields.nanoSeconds;
  if (sum < 0) out.Put('-');
  auto const magnitude = static_cast<o_u8b>(sum < 0 ? -sum : sum);
  constexpr auto kBase = static_cast<o_u8b>(kNanoSecondsOfSecond);
  // The width of two digits before the point includes the sign.
  out.PutDigits(magnitude / kBase, sum < 0 ? 1 : 2);
  if (precision == 0) return;
  out.Put('.');
  o_u8b const unit = precision == 3 ? 1000000 : precision == 6 ? 1000 : 1;
  out.PutDigits(magnitude % kBase / unit, precision);
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

void ScanSeconds(char const*& text, ScanTarget& target) {
  double const seconds = ReadSeconds(text);
  while (IsDigit(*text) || (*text != 0 && std::strchr("+-.", *text) != nullptr)) ++text;
  // Infinities, and what is too great for a count of nanoseconds, read as 0.
  double const nanoSeconds = seconds * static_cast<double>(kNanoSecondsOfSecond);
  o_8b const whole = TruncateTo64(nanoSeconds);
  bool const isCount = whole != INT64_MIN;
  target.fields.second = isCount ? Wrap32(static_cast<o_8b>(seconds)) : 0;
  target.fields.nanoSeconds = isCount ? static_cast<int>(whole % kNanoSecondsOfSecond) : 0;
}

constexpr TemporalLetter kSeconds = {
    PrintSeconds,
    [](Fields const& fields) { return fields.second == 0 && fields.nanoSeconds == 0; },
    IsWildcardField<&Fields::second>,
    ScanSeconds,
    [](Fields& fields) { fields.second = fields.nanoSeconds = kWildcard; },
    nullptr};

// %y: two digits of the year.

void PrintShortYear(Output& out, PrintSource const& source) {
  out.PutNumber(source.fields.year % 100, 2);
}

void ScanShortYear(char const*& text, ScanTarget& target) {
  int& year = target.fields.year;
  TakeNumber(text, year);
  // Also where nothing was read.
  year = Wrap32(o_8b{year} + (year > 30 ? 1900 : 2000));
}

// The table.

struct NamedLetter {
  char letter;
  TemporalLetter row;
};

constexpr NamedLetter kLetters[] = {
    {'A', kDayName<kUnlimited>},
    {'a', kDayName<kShortName>},
    {'B', kMonthName<kUnlimited>},
    {'b', kMonthName<kShortName>},
    {'D', Expansion("%Y-%m-%d")},
    {'H', kNumber<&Fields::hour, 2>},
    {'I', OwnText<&Fields::hour>(PrintTwelveHour, ScanField<&Fields::hour>)},
    {'J', kDays},
    {'M', kNumber<&Fields::minute, 2>},
    {'N', OwnText<&Fields::nanoSeconds>(PrintField<&Fields::nanoSeconds, 1>, ScanNanoSeconds)},
    {'O', Expansion("%Y-%m-%dT%H:%M:%S")},
    {'P', kHalfDay<'A', 'P', 'M'>},
    {'p', kHalfDay<'a', 'p', 'm'>},
    {'S', kNumber<&Fields::second, 2>},
    {'T', Expansion("%H:%M:%S")},
    {'V', Expansion("%J.%H:%M:%f")},
    {'X', Expansion("%Y-%m-%dT%H:%M:%f")},
    {'Y', kNumber<&Fields::year, 4>},
    {'d', kNumber<&Fields::day, 2>},
    // Two digits as well: its precision fills up with zeros.
    {'e', kNumber<&Fields::day, 2>},
    {'f', kSeconds},
    {'m', kNumber<&Fields::month, 2>},
    {'y', OwnText<&Fields::year>(PrintShortYear, ScanShortYear)},
};

/// The rows by character.
constexpr auto kRowOfCharacter = [] {
  std::array<TemporalLetter const*, 128> rows{};
  for (NamedLetter const& each : kLetters)
    rows[static_cast<unsigned char>(each.letter)] = &each.row;
  return rows;
}();

}  // namespace

TemporalLetter const* FindTemporalLetter(char letter) {
  auto const index = static_cast<unsigned char>(letter);
  return index < kRowOfCharacter.size() ? kRowOfCharacter[index] : nullptr;
}

}  // namespace xo
