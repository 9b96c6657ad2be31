#include "src/xotypevl/temporal_bounds.hpp"

#include <cstdint>
#include <tuple>

#include "src/xodate/temporal_layout.hpp"
#include "src/xotypevl/element_bounds.hpp"
#include "xostrcmp.hpp"

namespace xo {
namespace {

// The numbers of values.

int NumberOf(XoDate const& date) { return date.dayabs(); }

int NumberOf(XoTime const& time) { return (time.hour * 60 + time.minute) * 60 + time.second; }

double NumberOf(XoDateTime const& value) {
  double const day = (value.date.year * 12.0 + value.date.month) * 31.0 + value.date.day;
  return ((day * 24.0 + value.time.hour) * 60.0 + value.time.minute) * 60.0 + value.time.second;
}

template <class Value>
double NumberOf(NanoSecondFields<Value> const& value) {
  return NumberOf(value.DateTime());
}

// Dates without a time: wildcards are the least and greatest fields of dates of the calendar, from
// day number 0 on.

constexpr XoDate kFirstDate(0);
/// The last year but one, so that the year after it has a number as well.
constexpr o_2b kLastYear = 0x7FFE;

o_char LengthOfMonth(XoDate const& date) {
  return static_cast<o_char>(XoDate(date.year, date.month, 1).daynxtmonth());
}

/// Widens the fields in order, since what the least month and day are depends on those before.
/// True: there is a wildcard.
bool WidenDate(Ends<XoDate>& ends) {
  auto& [low, high] = ends;
  XoDate const value = low;
  if (value.year == kWildcard) {
    low.year = kFirstDate.year;
    high.year = kLastYear;
  }
  bool isFirst = low.year == kFirstDate.year;
  if (value.month == kWildcard) {
    low.month = isFirst ? kFirstDate.month : o_char{1};
    high.month = 12;
  }
  isFirst = isFirst && low.month == kFirstDate.month;
  if (value.day == kWildcard) {
    low.day = isFirst ? kFirstDate.day : o_char{1};
    high.day = LengthOfMonth(high);
  }
  return value.year == kWildcard || value.month == kWildcard || value.day == kWildcard;
}

/// `date` with fields below those of the first date raised to them, as long as they follow equal
/// ones: the number of the lower end is not negative.
XoDate Raised(XoDate date) {
  date.year = std::max(date.year, kFirstDate.year);
  if (date.year != kFirstDate.year) return date;
  date.month = std::max(date.month, kFirstDate.month);
  if (date.month != kFirstDate.month) return date;
  date.day = std::max(date.day, kFirstDate.day);
  return date;
}

struct DateRules {
  static int Number(XoDate const& date) { return NumberOf(date); }
  static bool Widen(Ends<XoDate>& ends) { return WidenDate(ends); }
  static float Share(unsigned short op, XoDate const&, Ends<XoDate> const& ends,
                     EndNumbers numbers) {
    return ShareOfRange(op, NumberOf(Raised(ends.low)), NumberOf(ends.high), numbers);
  }
};

// All others: a wildcard is every number of the field, and from the first one on all fields are.

constexpr o_4b kNanoSecondsAfterLast = 1000000000;

/// Widens fields from the first wildcard on.
class FieldWidening {
 public:
  explicit FieldWidening(unsigned short op) : readsWildcards((op & CmpOpNoWildcards) == 0) {}

  template <class Field>
  void Widen(Field& low, Field& high, Field lowest, Field highest) {
    hasBegun = hasBegun || (readsWildcards && low == kWildcard);
    if (!hasBegun) return;
    low = lowest;
    high = highest;
  }
  void Widen(o_char& low, o_char& high) { Widen<o_char>(low, high, INT8_MIN, INT8_MAX); }
  void Widen(o_2b& low, o_2b& high) { Widen<o_2b>(low, high, INT16_MIN, INT16_MAX); }

  bool HasBegun() const { return hasBegun; }

 private:
  bool readsWildcards;
  bool hasBegun = false;
};

// The fields from the highest on, but for the nanoseconds.

auto FieldsOf(XoTime& value) { return std::tie(value.hour, value.minute, value.second); }

auto FieldsOf(XoDateTime& value) {
  return std::tie(value.date.year, value.date.month, value.date.day, value.time.hour,
                  value.time.minute, value.time.second);
}

template <class Value>
auto FieldsOf(NanoSecondFields<Value>& value) {
  return std::tie(value.year, value.month, value.day, value.hour, value.minute, value.second);
}

template <class Value>
void WidenFields(Ends<Value>& ends, FieldWidening& widening) {
  std::apply(
      [&](auto&... lows) {
        std::apply([&](auto&... highs) { (widening.Widen(lows, highs), ...); },
                   FieldsOf(ends.high));
      },
      FieldsOf(ends.low));
}

/// Slot `EvalAndBound` of the types whose wildcards are every number.
template <class Layout, PresentBound kPresent>
float EvaluateFields(XoIdxBounds const* range, unsigned short& op, void const* value,
                     unsigned char format, unsigned count, void* bounds) {
  unsigned char const nibble = FormNibble(format);
  bool const isKnown = HasBothEnds(range);
  EndNumbers const numbers =
      NumbersOfEnds<Layout>(range, nibble, [](auto const& end) { return NumberOf(end); });
  FieldWidening widening(op);
  op &= kRelationAlone;
  auto const plain = Layout::Decode(value, nibble);
  Ends<typename Layout::Value> ends{plain, plain};
  ValueBounds targets(bounds, value, op, Layout::kDiskWidth * count, kPresent);
  WidenFields(ends, widening);
  if constexpr (Layout::kHasNanoSeconds) {
    // A wildcard of the nanoseconds alone leaves the flags.
    if (widening.HasBegun()) targets.ClearFirstFlags();
    widening.Widen<o_4b>(ends.low.nanoSeconds, ends.high.nanoSeconds, 0, kNanoSecondsAfterLast);
  }
  if (widening.HasBegun()) op |= kXoBoundPattern;
  targets.Write(StoredElement<Layout>(ends.low, nibble), StoredElement<Layout>(ends.high, nibble));
  return isKnown ? ShareOfRange(op, NumberOf(ends.low), NumberOf(ends.high), numbers) : 0.0F;
}

}  // namespace

float EvaluateDate(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                   unsigned count, void* bounds, XoEvalData*) {
  return EvaluateDates<DateLayout, DateRules>(range, op, value, format, count, bounds);
}

float EvaluateTime(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                   unsigned count, void* bounds, XoEvalData*) {
  return EvaluateFields<TimeLayout, PresentBound::kLeft>(range, op, value, format, count, bounds);
}

float EvaluateDateTime(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                       unsigned count, void* bounds, XoEvalData*) {
  return EvaluateFields<DateTimeLayout, PresentBound::kRewritten>(range, op, value, format, count,
                                                                  bounds);
}

float EvaluateDateTimeN(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                        unsigned count, void* bounds, XoEvalData*) {
  return EvaluateFields<DateTimeNLayout, PresentBound::kRewritten>(range, op, value, format, count,
                                                                   bounds);
}

float EvaluateTimeSpan(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                       unsigned count, void* bounds, XoEvalData*) {
  return EvaluateFields<TimeSpanLayout, PresentBound::kRewritten>(range, op, value, format, count,
                                                                  bounds);
}

}  // namespace xo
