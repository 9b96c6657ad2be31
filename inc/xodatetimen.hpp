#pragma once

#include <concepts>

#include "base/export.hpp"
#include "xodatetime.hpp"

namespace xo {

constexpr o_8b kNanoSecondsOfSecond = 1000000000;

/// `number` without its fraction. What 64 bits do not hold, and what is no number, gives the lowest
/// 64-bit number, as the processor's own conversion does.
constexpr o_8b TruncateTo64(double number) {
  constexpr double kLimit = 9223372036854775808.0;
  return number >= -kLimit && number < kLimit ? static_cast<o_8b>(number) : INT64_MIN;
}

/// What a point in time and a span share: seven fields, and arithmetic that carries through them
/// from the nanosecond up.
///
/// The `Add` operations are one chain. Each adds at its level, leaves what is left of the level's
/// base, never negative, and carries the rest on, until there is nothing to carry. Seconds and
/// nanoseconds are added in 64 bits, the levels above in 32, and a sum or a carry that does not fit
/// keeps its low bits. The year alone stops at its limits.
template <class Value>
class NanoSecondFields : public ValueSetters<Value> {
 public:
  o_2b year;
  o_char month;
  o_char day;
  o_char hour;
  o_char minute;
  o_char second;
  o_4b nanoSeconds;

  constexpr NanoSecondFields(XoDateTime const& dateTime, int nanoSecondsGiven)
      : year(dateTime.date.year),
        month(dateTime.date.month),
        day(dateTime.date.day),
        hour(dateTime.time.hour),
        minute(dateTime.time.minute),
        second(dateTime.time.second),
        nanoSeconds(nanoSecondsGiven) {}

  // Parts of the value.
  constexpr XoDate Date() const { return {year, month, day}; }
  constexpr XoTime Time() const { return {hour, minute, second}; }
  constexpr XoDateTime DateTime() const { return {Date(), Time()}; }

  constexpr int IsNullValue() const { return Equals(Value::NullValue()); }
  constexpr int IsDefaultValue() const { return Equals(Value::DefaultValue()); }
  constexpr int IsZeroValue() const { return Equals(Value::ZeroValue()); }
  /// Takes `ZeroValue`.
  constexpr void SetZero() { this->SetZeroValue(); }

  friend constexpr bool operator==(Value const& a, Value const& b) { return a.Equals(b) != 0; }
  /// Not a truth value: what `Compare` gives when wildcards are ordinary numbers.
  friend constexpr int operator!=(Value const& a, Value const& b) {
    return a.Compare(b, XoDateTime::kStrict);
  }
  /// The first difference of the fields from the year down to the second that is not 0; then -1, 0
  /// or 1 by the nanoseconds. Unless `flags` has `CmpOpNoWildcards`, fields that are -1 on either
  /// side are passed over.
  constexpr int Compare(Value const& other, unsigned short flags) const {
    int const order = DateTime().Compare(other.DateTime(), flags);
    if (order != 0) return order;
    bool const isPassedOver = (flags & CmpOpNoWildcards) == 0 &&
                              (nanoSeconds == kWildcard || other.nanoSeconds == kWildcard);
    if (isPassedOver) return 0;
    return (nanoSeconds > other.nanoSeconds) - (nanoSeconds < other.nanoSeconds);
  }

  constexpr void AddDays(int days) {
    if (days != 0) CarryDays(days);
  }
  constexpr void AddHours(int hours) {
    if (hours != 0) AddDays(static_cast<int>(Keep<24>(hour, Wrap32(o_8b{hour} + hours))));
  }
  constexpr void AddMinutes(int minutes) {
    if (minutes != 0) AddHours(static_cast<int>(Keep<60>(minute, Wrap32(o_8b{minute} + minutes))));
  }
  constexpr void AddSeconds(std::integral auto seconds) {
    auto const count = static_cast<o_8b>(seconds);
    if (count != 0) AddMinutes(Wrap32(Keep<60>(second, WrappingSum(second, count))));
  }
  /// Adds `seconds` with their fraction, cut to whole nanoseconds. What these take more than 64
  /// bits for, and no number, adds the lowest number of 64 bits of them.
  constexpr void AddSeconds(double seconds) {
    AddNanoSeconds(TruncateTo64(seconds * static_cast<double>(kNanoSecondsOfSecond)));
  }
  constexpr void AddNanoSeconds(std::integral auto nanoSecondsMore) {
    auto const count = static_cast<o_8b>(nanoSecondsMore);
    if (count != 0) {
      AddSeconds(Keep<kNanoSecondsOfSecond>(nanoSeconds, WrappingSum(nanoSeconds, count)));
    }
  }

  // Totals since the zero value. Those of nanoseconds wrap at 64 bits.
  constexpr o_8b GetTotalSeconds() const {
    constexpr o_8b kSecondsOfDay = 86400;
    return static_cast<Value const&>(*this).GetTotalDays() * kSecondsOfDay +
           static_cast<int>(Time());
  }
  constexpr o_8b GetTotalNanoSeconds() const {
    return WrappingSum(WrappingProduct(GetTotalSeconds(), kNanoSecondsOfSecond), nanoSeconds);
  }
  constexpr double GetTotalSeconds_f() const {
    return static_cast<double>(GetTotalSeconds()) +
           nanoSeconds / static_cast<double>(kNanoSecondsOfSecond);
  }
  constexpr void SetTotalDays(int days) {
    SetZero();
    AddDays(days);
  }
  constexpr void SetTotalSeconds(std::integral auto seconds) {
    SetZero();
    AddSeconds(seconds);
  }
  constexpr void SetTotalSeconds(double seconds) {
    SetZero();
    AddSeconds(seconds);
  }
  constexpr void SetTotalNanoSeconds(std::integral auto nanoSecondsGiven) {
    SetZero();
    AddNanoSeconds(nanoSecondsGiven);
  }

 private:
  constexpr int Equals(Value const& other) const {
    return DateTime() == other.DateTime() && nanoSeconds == other.nanoSeconds ? 1 : 0;
  }

  /// Keeps in `field` what is left of `sum` at a level, and returns what the level carries.
  template <o_8b kBase, class Field>
  static constexpr o_8b Keep(Field& field, o_8b sum) {
    o_8b carry = sum / kBase;
    o_8b rest = sum % kBase;
    if (rest < 0) {
      rest += kBase;
      --carry;
    }
    field = static_cast<Field>(rest);
    return carry;
  }

  constexpr void CarryDays(int days) {
    if constexpr (Value::kCountsByCalendar) {
      if (XoDate date = Date(); date.IsDate() != 0) {
        date += days;
        year = date.year;
        month = date.month;
        day = date.day;
        return;
      }
    }
    CarryFixedDays(days);
  }

  /// Days of a calendar of 30-day months and 12-month years. The highest field that is not 0 may be
  /// negative: a level does not borrow from those above where they are 0 and it has no carry.
  constexpr void CarryFixedDays(int days) {
    int const sum = Wrap32(o_8b{day} + days);
    int months = sum / 30;
    int rest = sum % 30;
    if (rest < 0 && !(months == 0 && month == 0 && year == 0)) {
      rest += 30;
      --months;
    }
    day = static_cast<o_char>(rest);
    if (months == 0) return;
    int const monthSum = month + months;
    int years = monthSum / 12;
    rest = monthSum % 12;
    if (rest < 0 && !(years == 0 && year == 0)) {
      rest += 12;
      --years;
    }
    month = static_cast<o_char>(rest);
    if (years == 0) return;
    int const yearSum = year + years;
    year = static_cast<o_2b>(yearSum < -32768 ? -32768 : yearSum > 32767 ? 32767 : yearSum);
  }
};

}  // namespace xo

/// A point in time to the nanosecond, counted by the calendar of `XoDate`. Where its date is no
/// valid one, days count by the fixed calendar of `XoTimeSpan`.
///
/// A field of -1 is a wildcard, as in `XoDate`.
class XoDateTimeN : public xo::NanoSecondFields<XoDateTimeN> {
 public:
  static constexpr bool kCountsByCalendar = true;

  /// The null value.
  constexpr XoDateTimeN() : XoDateTimeN(XoDateTime::NullValue()) {}
  /// The parts given; the others are 0.
  constexpr XoDateTimeN(XoDate const& date) : XoDateTimeN(date, XoTime::ClearValue()) {}
  constexpr XoDateTimeN(XoTime const& time) : XoDateTimeN(XoDate::ClearValue(), time) {}
  constexpr XoDateTimeN(XoDate const& date, XoTime const& time)
      : XoDateTimeN(XoDateTime(date, time)) {}
  constexpr XoDateTimeN(XoDateTime const& dateTime) : XoDateTimeN(dateTime, 0) {}
  /// The parts given. It takes an `XoDateTime` alone: a date and a number are date and time.
  template <std::same_as<XoDateTime> DateTime>
  constexpr XoDateTimeN(DateTime const& dateTime, int nanoSecondsGiven)
      : NanoSecondFields(dateTime, nanoSecondsGiven) {}
  /// The fields in order.
  constexpr XoDateTimeN(short yearGiven, signed char monthGiven, signed char dayGiven,
                        signed char hourGiven, signed char minuteGiven, signed char secondGiven,
                        int nanoSecondsGiven)
      : XoDateTimeN(XoDateTime(XoDate(yearGiven, monthGiven, dayGiven),
                               XoTime(hourGiven, minuteGiven, secondGiven)),
                    nanoSecondsGiven) {}
  /// 0000-01-01 and so many seconds.
  constexpr XoDateTimeN(double seconds) : XoDateTimeN(XoDateTime::ZeroValue()) {
    AddSeconds(seconds);
  }

  // The distinguished values.
  static constexpr XoDateTimeN const& NullValue();     ///< that of `XoDateTime`, nanoseconds 0
  static constexpr XoDateTimeN const& DefaultValue();  ///< -4713-11-24, midnight
  static constexpr XoDateTimeN const& ZeroValue();     ///< 0000-01-01, midnight
  static constexpr XoDateTimeN const& ClearValue();    ///< all fields 0

  /// Takes the current local date and time, or those of UTC.
  XO_EXPORT XoDateTimeN& Now();
  XO_EXPORT XoDateTimeN& NowUTC();
  // Shift by the present offset of local time from UTC. Each returns 0, or `kTimeZoneUnknown` with
  // nothing changed.
  XO_EXPORT int ToLocalTime();
  XO_EXPORT int ToUTCTime();

  /// 1 when the fields are a date of the calendar and a time of day.
  constexpr int IsValidDateTime() const { return DateTime().IsDateTime(); }
  /// Days since 0000-01-01.
  constexpr int GetTotalDays() const { return Date() - XoDate::ZeroValue(); }

  // Text, as told at `XoDate`; a null format means "%X".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  XO_EXPORT XoDateTimeN* ScanFromXoString(XoString& in, char const* format);
};

static_assert(sizeof(XoDateTimeN) == 12);

namespace xo {

inline constexpr XoDateTimeN kNullDateTimeN(kNullDateTime);
inline constexpr XoDateTimeN kDefaultDateTimeN(kDefaultDateTime);
inline constexpr XoDateTimeN kZeroDateTimeN(kZeroDateTime);
inline constexpr XoDateTimeN kClearDateTimeN(kClearDateTime);

}  // namespace xo

constexpr XoDateTimeN const& XoDateTimeN::NullValue() { return xo::kNullDateTimeN; }
constexpr XoDateTimeN const& XoDateTimeN::DefaultValue() { return xo::kDefaultDateTimeN; }
constexpr XoDateTimeN const& XoDateTimeN::ZeroValue() { return xo::kZeroDateTimeN; }
constexpr XoDateTimeN const& XoDateTimeN::ClearValue() { return xo::kClearDateTimeN; }

/// The one formatter of all temporal types, in the language of docs/formats-temporal.md. `value`
/// points to the fields of an `XoDateTimeN` or an `XoTimeSpan`, which need no alignment. A null
/// value gives the null print string whatever the format; text stops at 2559 characters. `count` is
/// not read. Returns `out`.
XO_EXPORT XoString& XoDateTimeNPrint(XoString& out, void const* value, char const* format,
                                     unsigned count);

/// The one scanner, in the same language. Every field is taken: those that the format does not name
/// become 0. Returns `value`, or null where the text ended before the last conversion. Nothing is
/// validated, and text behind what the format asks for is not looked at.
XO_EXPORT void* XoDateTimeNScan(void* value, XoString& in, char const* format, unsigned count);
