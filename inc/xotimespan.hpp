#pragma once

#include "base/export.hpp"
#include "xodatetimen.hpp"

/// A length of time from years down to nanoseconds, in a calendar of 30-day months and 12-month
/// years. The highest field that is not 0 carries the sign of a span.
///
/// A field of -1 is a wildcard, as in `XoDate`.
class XoTimeSpan : public xo::NanoSecondFields<XoTimeSpan> {
 public:
  static constexpr bool kCountsByCalendar = false;

  /// The null value.
  constexpr XoTimeSpan() : NanoSecondFields(XoDateTime::NullValue(), 0) {}
  /// The fields as given, cut to their widths, with no carry; then the days in the calendar of
  /// spans.
  constexpr XoTimeSpan(int days, int hours, int minutes, int seconds, int nanoSecondsGiven)
      : XoTimeSpan(0, 0, 0, hours, minutes, seconds, nanoSecondsGiven) {
    AddDays(days);
  }
  /// The fields as given, cut to their widths, with no carry.
  constexpr XoTimeSpan(int years, int months, int days, int hours, int minutes, int seconds,
                       int nanoSecondsGiven)
      : NanoSecondFields(XoDateTime(XoDate(years, months, days), XoTime(hours, minutes, seconds)),
                         nanoSecondsGiven) {}
  /// So many seconds.
  constexpr XoTimeSpan(double seconds) : XoTimeSpan(0, 0, 0, 0, 0, 0, 0) { AddSeconds(seconds); }

  // The distinguished values.
  static constexpr XoTimeSpan const& NullValue();     ///< the fields of `XoDateTimeN`'s
  static constexpr XoTimeSpan const& DefaultValue();  ///< the fields of `XoDateTimeN`'s
  static constexpr XoTimeSpan const& ZeroValue();     ///< all fields 0
  static constexpr XoTimeSpan const& ClearValue();    ///< all fields 0

  // Each stores one field, cut to its width, with no carry.
  constexpr void SetYears(int years) { year = static_cast<o_2b>(years); }
  constexpr void SetMonths(int months) { month = static_cast<o_char>(months); }
  constexpr void SetDays(int days) { day = static_cast<o_char>(days); }
  constexpr void SetHours(int hours) { hour = static_cast<o_char>(hours); }
  constexpr void SetMinutes(int minutes) { minute = static_cast<o_char>(minutes); }
  constexpr void SetSeconds(int seconds) { second = static_cast<o_char>(seconds); }
  constexpr void SetNanoSeconds(int nanoSecondsGiven) { nanoSeconds = nanoSecondsGiven; }

  /// Days in the calendar of spans.
  constexpr int GetTotalDays() const { return (year * 12 + month) * 30 + day; }

  /// The distance of two values, whichever is the later, where days are counted by the calendar of
  /// `XoDate` and then folded into that of spans. A null value counts as all zeros.
  static constexpr XoTimeSpan Difference(XoTimeSpan const& a, XoTimeSpan const& b);

  // Text, as told at `XoDate`; a null format means "%V".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  XO_EXPORT XoTimeSpan* ScanFromXoString(XoString& in, char const* format);
};

static_assert(sizeof(XoTimeSpan) == 12);

namespace xo {

inline constexpr XoTimeSpan kNullTimeSpan;
inline constexpr XoTimeSpan kDefaultTimeSpan(-4713, 11, 24, 0, 0, 0, 0);
inline constexpr XoTimeSpan kClearTimeSpan(0, 0, 0, 0, 0, 0, 0);

}  // namespace xo

constexpr XoTimeSpan const& XoTimeSpan::NullValue() { return xo::kNullTimeSpan; }
constexpr XoTimeSpan const& XoTimeSpan::DefaultValue() { return xo::kDefaultTimeSpan; }
constexpr XoTimeSpan const& XoTimeSpan::ZeroValue() { return xo::kClearTimeSpan; }
constexpr XoTimeSpan const& XoTimeSpan::ClearValue() { return xo::kClearTimeSpan; }

constexpr XoTimeSpan XoTimeSpan::Difference(XoTimeSpan const& a, XoTimeSpan const& b) {
  XoTimeSpan const left = a.IsNullValue() != 0 ? ClearValue() : a;
  XoTimeSpan const right = b.IsNullValue() != 0 ? ClearValue() : b;
  bool const isLeftBig = left.Compare(right, XoDateTime::kStrict) > 0;
  XoTimeSpan const& big = isLeftBig ? left : right;
  XoTimeSpan const& small = isLeftBig ? right : left;

  int days = big.Date() - small.Date();
  XoTime bigTime = big.Time();
  XoTime smallTime = small.Time();
  o_8b bigNanoSeconds = big.nanoSeconds;
  if (big.nanoSeconds < small.nanoSeconds) {
    bigNanoSeconds += xo::kNanoSecondsOfSecond;
    // At 23:59:59 this goes around the day and the date stays, which is to be so.
    ++smallTime;
  }
  if (bigTime < smallTime && days >= 1) {
    --days;
    bigTime.hour = static_cast<o_char>(bigTime.hour + 24);
  }
  int const months = days / 30;
  int const years = months / 12;
  XoTime const time = bigTime - smallTime;
  return {years,
          months - 12 * years,
          days - 30 * months,
          time.hour,
          time.minute,
          time.second,
          xo::Wrap32(bigNanoSeconds - small.nanoSeconds)};
}
