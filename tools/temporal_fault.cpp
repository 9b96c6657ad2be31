#include <algorithm>
#include <cstring>
#include <type_traits>

#include "tools/line_fault.hpp"
#include "tools/text_tokens.hpp"

namespace xo::tool {
namespace {

constexpr int kWildcardField = -1;

/// The fields of a value and what holds of them.
struct Fields {
  XoDate date{0, 0, 0};
  XoTime time{0, 0, 0};
  int nanoSeconds = 0;
  bool hasDate = false;
  bool hasTime = false;
  /// Whether the calendar is Julian before 1582-10-15. Comparisons know wildcards of its dates
  /// alone.
  bool isHistorical = false;

  // Spans have any fields, whose range says nothing.
  bool IsSpan() const { return !hasDate && !hasTime; }
};

template <class Value>
Value As(ValueBytes const& bytes, Value value) {
  std::memcpy(static_cast<void*>(&value), bytes.data(), sizeof value);
  return value;
}

XoDate DateOf(d_Date const& date) { return {date.year(), date.month(), date.day()}; }

XoTime TimeOf(d_Time const& time) {
  return {static_cast<o_char>(time.hour()), static_cast<o_char>(time.minute()),
          static_cast<int>(time.second())};
}

Fields FieldsOf(char type, ValueBytes const& value) {
  XoDateTime const blank(XoDate(0, 0, 0), XoTime(0, 0, 0));
  switch (type) {
    case XoDATE_T:
      return {As(value, blank.date), {0, 0, 0}, 0, true, false, false};
    case XoTIME_T:
      return {{0, 0, 0}, As(value, blank.time), 0, false, true, false};
    case XoDATIME_T: {
      XoDateTime const both = As(value, blank);
      return {both.date, both.time, 0, true, true, false};
    }
    case XoDATIME_N_T: {
      XoDateTimeN const all = As(value, XoDateTimeN());
      return {all.Date(), all.Time(), all.nanoSeconds, true, true, false};
    }
    case D_DATE_T:
      return {DateOf(As(value, d_Date(0, 0, 0))), {0, 0, 0}, 0, true, false, true};
    case D_TIME_T:
      return {{0, 0, 0}, TimeOf(As(value, d_Time(0, 0))), 0, false, true, true};
    case D_TIMESTAMP_T: {
      d_Timestamp const stamp = As(value, d_Timestamp(0));
      return {DateOf(stamp.date()), TimeOf(stamp.time()), 0, true, true, true};
    }
    case XoTIMESPAN_T: {
      XoTimeSpan const all = As(value, XoTimeSpan());
      return {all.Date(), all.Time(), all.nanoSeconds, false, false, false};
    }
    default:
      return {};
  }
}

/// Puts a value that goes with all others in the place of each wildcard. Returns whether there was
/// one.
bool ReplaceWildcards(Fields& fields) {
  bool isPattern = false;
  auto const replace = [&isPattern](auto& field, int usual) {
    if (field != kWildcardField) return;
    field = static_cast<std::remove_reference_t<decltype(field)>>(usual);
    isPattern = true;
  };
  // A leap year and a month of 31 days.
  replace(fields.date.year, 2000);
  replace(fields.date.month, 1);
  replace(fields.date.day, 1);
  if (fields.isHistorical) return isPattern;
  replace(fields.time.hour, 0);
  replace(fields.time.minute, 0);
  replace(fields.time.second, 0);
  replace(fields.nanoSeconds, 0);
  return isPattern;
}

bool IsDateOfItsCalendar(Fields const& fields) {
  XoDate const& date = fields.date;
  if (!fields.isHistorical) return date.IsDate() != 0;
  return date.month > 0 && date.day > 0 &&
         d_Date::is_valid_date(date.year, static_cast<unsigned short>(date.month),
                               static_cast<unsigned short>(date.day));
}

bool IsValid(Fields const& fields) {
  constexpr int kNanoSeconds = 1000000000;
  if (fields.hasDate && !IsDateOfItsCalendar(fields)) return false;
  if (fields.hasTime && fields.time.IsTime() == 0) return false;
  return fields.nanoSeconds >= 0 && fields.nanoSeconds < kNanoSeconds;
}

/// Whether the format takes the line to its end: a number of nanoseconds behind both is met then.
bool IsTakenWhole(ScannedLine const& line, char const* between) {
  constexpr int kMark = 271828182;
  XoString text((line.text + "\1"
                             "271828182")
                    .c_str());
  XoDateTimeN probe;
  std::string const format = line.values.Format() + between + "%N";
  return probe.ScanFromXoString(text, format.c_str()) != nullptr && probe.nanoSeconds == kMark;
}

/// Whether every number of the line that a field of 8 bits would cut is in the value's print.
bool HasAllNumbers(ScannedLine const& line) {
  constexpr int kLargestOfAll = 127;
  auto const shown = NumbersOf(line.printed);
  for (std::string const& token : TokensOf(line.text, false)) {
    bool const isNumber = token[0] >= '0' && token[0] <= '9';
    if (!isNumber || (token.size() <= 3 && std::stoi(token) <= kLargestOfAll)) continue;
    auto const number = NumbersOf(token);
    if (std::find(shown.begin(), shown.end(), number.front()) == shown.end()) return false;
  }
  return true;
}

}  // namespace

LineFault TemporalFaultOf(ScannedLine const& line) {
  // A wildcard at the end of what a letter expands to is seen once more behind it.
  bool const isSeenTwice = line.text.ends_with('*') && line.printed.ends_with('*');
  bool const isWhole = IsTakenWhole(line, "\1") || (isSeenTwice && IsTakenWhole(line, "\1\1"));
  if (!isWhole || !HasAllNumbers(line)) return LineFault::kOtherText;
  if (line.values.IsNull(line.value)) return LineFault::kNone;

  Fields fields = FieldsOf(line.values.Type(), line.value);
  if (fields.IsSpan()) return LineFault::kNone;
  bool const isPattern = ReplaceWildcards(fields);
  if (!IsValid(fields)) return LineFault::kInvalid;
  return isPattern ? LineFault::kPattern : LineFault::kNone;
}

bool HasWildcard(char type, ValueBytes const& value) {
  if (FamilyOf(type) != TextFamily::kTemporal) return false;
  Fields fields = FieldsOf(type, value);
  return ReplaceWildcards(fields);
}

}  // namespace xo::tool
