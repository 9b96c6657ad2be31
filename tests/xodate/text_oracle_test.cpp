#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xodate/temporal_text.hpp"

namespace xo::test {
namespace {

// The language restated, step by step, on strings, with the C library for numbers.

std::string const kExpansions[][2] = {{"D", "%Y-%m-%d"},
                                      {"T", "%H:%M:%S"},
                                      {"O", "%Y-%m-%dT%H:%M:%S"},
                                      {"X", "%Y-%m-%dT%H:%M:%f"},
                                      {"V", "%J.%H:%M:%f"}};

std::string const* ExpansionOf(char letter) {
  for (auto const& expansion : kExpansions) {
    if (expansion[0][0] == letter) return &expansion[1];
  }
  return nullptr;
}

std::string Number(char const* format, long number) {
  char text[64];
  std::snprintf(text, sizeof text, format, static_cast<int>(number));
  return text;
}

std::string SecondsText(Record const& r) {
  char text[64];
  int const precision = r.nano == 0 ? 0 : r.nano % 1000 != 0 ? 9 : r.nano % 1000000 == 0 ? 3 : 6;
  std::snprintf(text, sizeof text, "%0*.*lf", precision == 0 ? 2 : precision + 3, precision,
                precision == 0 ? r.second : r.nano / 1000000000.0 + r.second);
  return text;
}

int Total(Record const& r) { return (r.year * 12 + r.month) * 30 + r.day; }

/// Text, zero test and wildcard test of a field letter; false for another character.
bool FieldOf(char letter, Record const& r, bool hasMark, std::string& text, bool& zero,
             int& wildcard) {
  auto const plain = [&](int field, char const* format) {
    text = Number(format, field);
    zero = field == 0;
    wildcard = field == -1;
    return true;
  };
  std::string const day = XoDate::DayName(XoDate(r.year, r.month, r.day).GetDayOfTheDate());
  char const* const month = XoDate::MonthName(r.month);
  switch (letter) {
    case 'A':
    case 'a':
      plain(r.day, "%d");
      text = letter == 'A' ? day : day.substr(0, 3);
      return true;
    case 'B':
    case 'b':
      plain(r.month, "%03.3d");
      if (month != nullptr) text = letter == 'B' ? month : std::string(month, 3);
      return true;
    case 'H':
      return plain(r.hour, "%02.2d");
    case 'I': {
      plain(r.hour, "%02.2d");
      int hour = r.hour > 12 ? r.hour - 12 : r.hour;
      if (hasMark && r.hour == 0) hour = 12;
      text = Number("%02.2d", hour);
      return true;
    }
    case 'J':
      text = std::to_string(Total(r));
      zero = Total(r) == 0;
      wildcard = r.year == -1 && r.month == -1 && r.day == -1;
      return true;
    case 'M':
      return plain(r.minute, "%02.2d");
    case 'N':
      return plain(r.nano, "%d");
    case 'P':
    case 'p':
      text = letter == 'P' ? (r.hour < 12 ? "AM" : "PM") : (r.hour < 12 ? "am" : "pm");
      zero = r.hour == 0;
      wildcard = 2;  // what the field before left
      return true;
    case 'S':
      return plain(r.second, "%02.2d");
    case 'Y':
      return plain(r.year, "%04.4d");
    case 'd':
    case 'e':
      return plain(r.day, "%2.2d");
    case 'f':
      plain(r.second, "%d");
      text = SecondsText(r);
      zero = r.second == 0 && r.nano == 0;
      return true;
    case 'm':
      return plain(r.month, "%02.2d");
    case 'y':
      plain(r.year, "%d");
      text = Number("%02.2d", r.year % 100);
      return true;
    default:
      return false;
  }
}

std::string Restated(Record const& r, std::string const& format) {
  bool hasMark = false;
  for (std::size_t i = 0; i + 1 < format.size(); ++i) {
    if (format[i] != '%') continue;
    hasMark = hasMark || format[i + 1] == 'P' || format[i + 1] == 'p';
    ++i;
  }
  std::string out;
  bool printedAny = false, groupOpen = false, lastWildcard = false;
  std::size_t groupStart = 0;
  auto const walk = [&](auto const& self, std::string const& text) -> bool {
    for (std::size_t i = 0; i < text.size();) {
      if (text[i] == ')' && groupOpen) {
        if (!printedAny) out.resize(groupStart);
        groupOpen = false;
        ++i;
        continue;
      }
      if (text[i] != '%') {
        out += text[i++];
        continue;
      }
      ++i;
      bool conditional = false;
      if (i < text.size() && text[i] == '?') {
        ++i;
        conditional = !printedAny;
        if (i < text.size() && text[i] == '(') {
          ++i;
          groupOpen = true;
          groupStart = out.size();
        }
      }
      if (i == text.size()) return false;
      char const letter = text[i++];
      if (std::string const* expansion = ExpansionOf(letter)) {
        if (!self(self, *expansion)) return false;
        continue;
      }
      std::string field;
      bool zero = false;
      int wildcard = 0;
      if (!FieldOf(letter, r, hasMark, field, zero, wildcard)) {
        out += letter;
        if (lastWildcard) out += '*';
        continue;
      }
      if (wildcard != 2) lastWildcard = wildcard != 0;
      if (lastWildcard) {
        out += '*';
      } else if (!(conditional && zero)) {
        out += field;
        printedAny = true;
      }
    }
    return true;
  };
  walk(walk, format);
  return out;
}

class Rescan {
 public:
  Rescan(std::string const& text, std::string const& format) : in(text) {
    result.isWhole = Walk(format, false);
    Record& r = result.record;
    if (pm && r.hour < 12) {
      r.hour += 12;
    } else if (am && r.hour == 12) {
      r.hour = 0;
    }
    r.year = static_cast<short>(r.year);
    for (int* field : {&r.month, &r.day, &r.hour, &r.minute, &r.second}) {
      *field = static_cast<signed char>(*field);
    }
  }

  Scanned result;

 private:
  char Now() const { return at < in.size() ? in[at] : '\0'; }
  char const* Rest() const { return in.c_str() + at; }
  static bool Space(char c) { return c != 0 && std::strchr(" \t\n\v\f\r", c) != nullptr; }
  static bool Digit(char c) { return c >= '0' && c <= '9'; }
  void Consume(int count) {
    while (count-- > 0 && at < in.size()) ++at;
  }

  void StepOverNumber() {
    if (Now() == '+' || Now() == '-') ++at;
    while (Digit(Now())) ++at;
  }

  void Integer(int& field) {
    int value = 0;
    if (std::sscanf(Rest(), "%d", &value) == 1) field = value;
    StepOverNumber();
  }

  int Name(int count, char const* (*nameOf)(int)) {
    for (int i = 0; i < count; ++i) {
      char const* name = nameOf(i);
      if (std::strncmp(Rest(), name, 3) != 0) continue;
      while (*name != 0 && Now() == *name) {
        ++name;
        ++at;
      }
      return i;
    }
    return -1;
  }

  /// False when the text ended; `stopped` when the format did within a conversion.
  bool Walk(std::string const& format, bool isExpansion) {
    Record& r = result.record;
    std::size_t i = 0;
    for (;;) {
      if (i == format.size()) {
        if (isExpansion && tookStar) --at;
        return true;
      }
      while (i < format.size() && Space(format[i])) ++i;
      while (Space(Now())) ++at;
      if (i == format.size()) continue;
      if (format[i] == ')' && groupOpen) {
        groupOpen = false;
        ++i;
        continue;
      }
      if (format[i] != '%') {
        if (at < in.size() && (!Digit(Now()) || Now() == format[i])) ++at;
        ++i;
        continue;
      }
      if (at == in.size()) return false;
      ++i;
      if (i < format.size() && format[i] == '?') {
        ++i;
        if (i < format.size() && format[i] == '(') {
          ++i;
          groupOpen = true;
        }
      }
      if (i == format.size()) return true;
      char const letter = format[i++];
      if (std::string const* expansion = ExpansionOf(letter)) {
        if (!Walk(*expansion, true)) return false;
        continue;
      }
      tookStar = Now() == '*';
      int none = 0;
      int* field = letter == 'Y' || letter == 'y'                    ? &r.year
                   : letter == 'm' || letter == 'b' || letter == 'B' ? &r.month
                   : letter == 'd' || letter == 'e'                  ? &r.day
                   : letter == 'H' || letter == 'I'                  ? &r.hour
                   : letter == 'M'                                   ? &r.minute
                   : letter == 'S'                                   ? &r.second
                   : letter == 'N'                                   ? &r.nano
                                                                     : nullptr;
      if (tookStar) {
        ++at;
        if (field != nullptr) *field = -1;
        if (letter == 'J') r.year = r.month = r.day = -1;
        if (letter == 'f') r.second = r.nano = -1;
        continue;
      }
      switch (letter) {
        case 'y':
          Integer(r.year);
          r.year += r.year > 30 ? 1900 : 2000;
          break;
        case 'J':
          Integer(none);
          r.year = none / 360;
          r.month = none % 360 / 30;
          r.day = none % 30;
          break;
        case 'N':
          r.nano = static_cast<int>(std::strtoll(Rest(), nullptr, 10));
          StepOverNumber();
          break;
        case 'f': {
          double const value = std::strtod(Rest(), nullptr);
          while (at < in.size() && std::strchr("0123456789+-.", Now()) != nullptr) ++at;
          if (!(std::fabs(value * 1000000000.0) < 9223372036854775808.0)) {
            r.second = r.nano = 0;
            break;
          }
          r.second = static_cast<int>(static_cast<long long>(value));
          r.nano = static_cast<int>(static_cast<long long>(value * 1000000000.0) % 1000000000);
          break;
        }
        case 'B':
        case 'b': {
          int const month = Name(12, [](int n) { return XoDate::MonthName(n + 1); });
          if (month >= 0) {
            r.month = month + 1;
          } else {
            int value = 0;
            if (std::sscanf(Rest(), "%3d", &value) == 1) r.month = value;
            Consume(3);
          }
          break;
        }
        case 'A':
        case 'a':
          Name(7, [](int n) { return XoDate::DayName(static_cast<XoDaysOfTheWeek>(n)); });
          break;
        case 'P':
        case 'p':
          pm = pm || Now() == 'P' || Now() == 'p';
          am = am || Now() == 'A' || Now() == 'a';
          Consume(2);
          break;
        default:
          if (field != nullptr) {
            Integer(*field);
          } else {
            Consume(1);
          }
      }
    }
  }

  std::string in;
  std::size_t at = 0;
  bool am = false, pm = false, groupOpen = false, tookStar = false;
};

/// Whether some number has more digits than the C library need read.
bool HasLongNumber(std::string const& text) {
  int digits = 0;
  for (char const c : text) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits > 9) return true;
  }
  return false;
}

class TextOracle : public RandomTest {
 protected:
  std::string FormatText() {
    static char const* const kPieces[] = {
        "%A", "%a", "%B", "%b",  "%D", "%H",  "%I",   "%J",   "%M",  "%N",   "%O",   "%P",
        "%p", "%S", "%T", "%V",  "%X", "%Y",  "%d",   "%e",   "%f",  "%m",   "%y",   "%%",
        "%Q", "?",  "%?", "%?(", ")",  "%?H", "%?(M", "%?(d", "%?Y", "%?(J", "%?f",  "%?p",
        "-",  ":",  " ",  ".",   "7",  "x",   ")",    "%?(f", "%",   "%?(D", "%?(T", "p"};
    std::string format;
    for (unsigned pieces = Below(9); pieces > 0; --pieces) {
      format += kPieces[Below(sizeof kPieces / sizeof kPieces[0])];
    }
    return format;
  }

  int Field(int limit) {
    switch (Below(8)) {
      case 0:
        return -1;
      case 1:
      case 2:
        return 0;
      case 3:
        return static_cast<int>(Below(2 * static_cast<unsigned>(limit))) - limit;
      default:
        return static_cast<int>(Below(24));
    }
  }

  Record Fields() {
    int const nano = OneIn(2) ? Field(1) : static_cast<int>(Bits());
    return {OneIn(2) ? Field(32768) : 2021,
            Field(128),
            Field(128),
            Field(128),
            Field(128),
            Field(128),
            OneIn(3) ? nano / 1000000 * 1000000 : nano};
  }

  std::string InputText() {
    static char const* const kPieces[] = {
        "2021", "-04",      "15",    "7",      "*",          "-",   ":",       " ",
        "am",   "PM",       "Apr",   "Januar", "y",          "Thu", "Friday",  "T",
        ".",    "+5",       "09.25", "0.5",    "1e2",        "%",   "x",       "\t",
        ")",    "13:05:09", "423",   "June",   "2021-04-15", "000", "*-12-24", "12:30 am"};
    std::string text;
    bool wasDigit = false;
    for (unsigned pieces = Below(8); pieces > 0; --pieces) {
      std::string piece = kPieces[Below(sizeof kPieces / sizeof kPieces[0])];
      // The C library need not read numbers beyond 32 bits.
      if (wasDigit && piece[0] >= '0' && piece[0] <= '9') text += '/';
      text += piece;
      wasDigit = piece.back() >= '0' && piece.back() <= '9';
    }
    return text;
  }
};

TEST_F(TextOracle, PrintsAsTheStepsSay) {
  for (int round = 0; round < 200000; ++round) {
    Record const record = Fields();
    if (record == Record::Of(XoDateTimeN::NullValue())) continue;
    std::string const format = FormatText();
    ASSERT_EQ(Print(record, format), Restated(record, format)) << format << "  of  " << record;
  }
}

TEST_F(TextOracle, ScansAsTheStepsSay) {
  for (int round = 0; round < 400000; ++round) {
    std::string const format = FormatText();
    std::string const text = OneIn(2) ? InputText() : Print(Fields(), format);
    if (text.starts_with("{NULL}") || HasLongNumber(text)) continue;
    ASSERT_EQ(Scan(text, format), Rescan(text, format).result)
        << '"' << format << "\"  on  " << text;
  }
}

TEST_F(TextOracle, RandomBytesAsFormatAndTextAreHarmless) {
  for (int round = 0; round < 20000; ++round) {
    auto const bytes = [&] {
      std::string text;
      for (unsigned length = Below(40); length > 0; --length) {
        text += OneIn(3) ? '%' : static_cast<char>(Byte());
      }
      return std::string(text.c_str());
    };
    std::string const format = bytes();
    Print(Fields(), format);
    Scan(bytes(), format);
  }
}

}  // namespace
}  // namespace xo::test
