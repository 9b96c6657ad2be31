#pragma once

#include "base/export.hpp"
#include "xodatetime.hpp"

/// The date and time classes of the ODMG C++ binding.
///
/// They stand beside the classes of the library's own and differ from them in their calendar:
/// `d_Date` is Julian up to 1582-10-04 and Gregorian from 1582-10-15, while `XoDate` is Gregorian
/// for all time. Conversions copy the fields, so the same fields may be another day. Nothing is
/// checked; fields are cut to their widths.

class d_Date;
class d_Time;
class d_Timestamp;

/// A span of time: a signed number of seconds, with the precision of a `float`. A year is exact to
/// a few seconds.
class d_Interval {
 public:
  constexpr d_Interval() : seconds(0) {}
  /// The sum of the magnitudes, negated as a whole when any argument is negative.
  XO_EXPORT explicit d_Interval(int days, int hours = 0, int minutes = 0, float seconds = 0);
  /// The span of a number of seconds.
  static constexpr d_Interval OfSeconds(float seconds) {
    d_Interval span;
    span.seconds = seconds;
    return span;
  }

  // Views of the span: whole days, and what is left in hours, minutes and seconds.
  XO_EXPORT int day() const;
  XO_EXPORT int hour() const;
  XO_EXPORT int minute() const;
  XO_EXPORT float second() const;
  constexpr bool is_zero() const { return seconds == 0; }
  /// All of it in seconds.
  constexpr float Seconds() const { return seconds; }

  constexpr d_Interval operator-() const { return OfSeconds(-seconds); }
  constexpr d_Interval& operator+=(d_Interval const& other) {
    seconds += other.seconds;
    return *this;
  }
  constexpr d_Interval& operator-=(d_Interval const& other) {
    seconds -= other.seconds;
    return *this;
  }
  constexpr d_Interval& operator*=(int factor) {
    seconds *= static_cast<float>(factor);
    return *this;
  }
  /// A divisor of 0 leaves the span.
  constexpr d_Interval& operator/=(int divisor) {
    if (divisor != 0) seconds /= static_cast<float>(divisor);
    return *this;
  }

  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;
  XO_EXPORT d_Interval* ScanFromXoString(XoString& in, char const* format);

 private:
  float seconds;
};

constexpr d_Interval operator+(d_Interval a, d_Interval const& b) { return a += b; }
constexpr d_Interval operator-(d_Interval a, d_Interval const& b) { return a -= b; }
constexpr d_Interval operator*(d_Interval a, int factor) { return a *= factor; }
constexpr d_Interval operator*(int factor, d_Interval a) { return a *= factor; }
constexpr d_Interval operator/(d_Interval a, int divisor) { return a /= divisor; }
constexpr bool operator==(d_Interval const& a, d_Interval const& b) {
  return a.Seconds() == b.Seconds();
}
constexpr bool operator!=(d_Interval const& a, d_Interval const& b) { return !(a == b); }
constexpr bool operator<(d_Interval const& a, d_Interval const& b) {
  return a.Seconds() < b.Seconds();
}
constexpr bool operator<=(d_Interval const& a, d_Interval const& b) {
  return a.Seconds() <= b.Seconds();
}
constexpr bool operator>(d_Interval const& a, d_Interval const& b) { return b < a; }
constexpr bool operator>=(d_Interval const& a, d_Interval const& b) { return b <= a; }

/// A date of the historical calendar. Arithmetic and comparison go by a day number, which is the
/// Julian Day Number less 1; in January and February of years before 1 it is a day off.
class XO_EXPORT d_Date {
 public:
  enum Weekday : int { Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };
  enum Month : int {
    January = 1,
    February,
    March,
    April,
    May,
    June,
    July,
    August,
    September,
    October,
    November,
    December
  };

  /// The current local date.
  d_Date();
  d_Date(short year, unsigned short month, unsigned short day);
  /// A day of a year, counted from 1.
  d_Date(short year, unsigned short dayOfYear);
  // The fields of these.
  d_Date(XoDate const& source);
  d_Date(XoDateTime const& source);
  d_Date(d_Timestamp const& source);
  d_Date(d_Date const&) = default;
  d_Date& operator=(d_Date const&) = default;
  d_Date& operator=(XoDate const& source);
  d_Date& operator=(XoDateTime const& source);
  d_Date& operator=(d_Timestamp const& source);
  static d_Date current();

  short year() const { return yearField; }
  Month month() const { return static_cast<Month>(monthField); }
  unsigned short day() const { return dayField; }
  Month month_of_year() const { return month(); }
  Weekday day_of_week() const;
  unsigned short day_of_year() const;
  bool is_leap_year() const { return is_leap_year(yearField); }
  static bool is_leap_year(short year);
  /// 0 for a month that there is not.
  int days_in_month() const { return days_in_month(yearField, monthField); }
  static int days_in_month(short year, unsigned short month);
  int days_in_year() const { return days_in_year(yearField); }
  static int days_in_year(short year);
  /// Whether the fields are a date that the calendar has.
  static bool is_valid_date(short year, unsigned short month, unsigned short day);
  bool is_between(d_Date const& first, d_Date const& last) const;

  /// Moves on, or back, to the next such weekday: by seven days from one to the same.
  d_Date& next(Weekday weekday);
  d_Date& previous(Weekday weekday);

  d_Date& operator++();
  d_Date operator++(int);
  d_Date& operator--();
  d_Date operator--(int);
  // By the whole days of a span. One that is not finite leaves the date.
  d_Date& operator+=(d_Interval const& span);
  d_Date& operator-=(d_Interval const& span);

  XoString& PrintToXoString(XoString& out, char const* format) const;
  d_Date* ScanFromXoString(XoString& in, char const* format);

 private:
  friend class d_Timestamp;
  friend int operator!=(d_Date const& a, d_Date const& b);
  struct Blank {};
  explicit d_Date(Blank) : yearField(0), monthField(0), dayField(0) {}

  int getAbsDate() const;
  void setAbsDate(int number);
  void MoveBy(o_8b days);

  o_2b yearField;
  o_u1b monthField;
  o_u1b dayField;
};

/// Not a truth value: the difference of the day numbers.
XO_EXPORT int operator!=(d_Date const& a, d_Date const& b);
inline bool operator==(d_Date const& a, d_Date const& b) { return (a != b) == 0; }
inline bool operator<(d_Date const& a, d_Date const& b) { return (a != b) < 0; }
inline bool operator<=(d_Date const& a, d_Date const& b) { return (a != b) <= 0; }
inline bool operator>(d_Date const& a, d_Date const& b) { return (a != b) > 0; }
inline bool operator>=(d_Date const& a, d_Date const& b) { return (a != b) >= 0; }
inline d_Date operator+(d_Date date, d_Interval const& span) { return date += span; }
inline d_Date operator+(d_Interval const& span, d_Date date) { return date += span; }
inline d_Date operator-(d_Date date, d_Interval const& span) { return date -= span; }

/// A time of day in a zone. Hour and minute are stored with the zone added, so that hour 10 in zone
/// +2 is stored as 12; it is taken off again to be shown and compared.
class XO_EXPORT d_Time {
 public:
  /// Zones by their hours.
  enum Time_Zone : int {
    GMT = 0,
    GMT1 = 1,
    GMT2 = 2,
    GMT3 = 3,
    GMT4 = 4,
    GMT5 = 5,
    GMT6 = 6,
    GMT7 = 7,
    GMT8 = 8,
    GMT9 = 9,
    GMT10 = 10,
    GMT11 = 11,
    GMT12 = 12,
    GMT_1 = -1,
    GMT_2 = -2,
    GMT_3 = -3,
    GMT_4 = -4,
    GMT_5 = -5,
    GMT_6 = -6,
    GMT_7 = -7,
    GMT_8 = -8,
    GMT_9 = -9,
    GMT_10 = -10,
    GMT_11 = -11,
    GMT_12 = -12,
    USeastern = -5,
    UScentral = -6,
    USmountain = -7,
    USpacific = -8
  };

  /// The zone of times that are made without one, at first 0. Set-up calls, without a lock.
  static void set_default_Time_Zone(Time_Zone zone);
  /// The whole hours that local time is ahead of UTC; nothing where it is not.
  static void set_default_Time_Zone_to_local();

  /// The current local time, in the default zone.
  d_Time();
  d_Time(unsigned short hour, unsigned short minute, float seconds = 0);
  d_Time(unsigned short hour, unsigned short minute, float seconds, short zoneHour,
         short zoneMinute);
  /// Seconds since midnight, in the default zone: below 0 counted back from midnight, from a day on
  /// with an hour of 24 and more.
  d_Time(int seconds);
  /// In the default zone.
  d_Time(XoTime const& source);
  d_Time(XoDateTime const& source);
  d_Time(d_Timestamp const& source);
  d_Time(d_Time const&) = default;
  d_Time& operator=(d_Time const&) = default;
  // Unlike the constructors these do not add the default zone, which becomes the zone: where it is
  // not 0 the time is off by it.
  d_Time& operator=(XoTime const& source);
  d_Time& operator=(XoDateTime const& source);
  d_Time& operator=(d_Timestamp const& source);
  static d_Time current();

  // In its zone.
  unsigned short hour() const { return static_cast<unsigned short>(hourField - zoneHourField); }
  unsigned short minute() const {
    return static_cast<unsigned short>(minuteField - zoneMinuteField);
  }
  /// With the hundredths.
  float second() const;
  short tz_hour() const { return zoneHourField; }
  short tz_minute() const { return zoneMinuteField; }
  Time_Zone time_zone() const { return static_cast<Time_Zone>(zoneHourField); }
  bool is_between(d_Time const& first, d_Time const& last) const;

  // Around the day. These keep the hour as it is stored; `operator-=` drops the hundredths.
  d_Time& operator+=(d_Interval const& span);
  d_Time& operator-=(d_Interval const& span);

  XoString& PrintToXoString(XoString& out, char const* format) const;
  d_Time* ScanFromXoString(XoString& in, char const* format);

 private:
  friend class d_Timestamp;
  friend int operator!=(d_Time const& a, d_Time const& b);
  friend d_Interval operator-(d_Time const& a, d_Time const& b);
  friend d_Time operator+(d_Time const& time, d_Interval const& span);
  friend d_Time operator-(d_Time const& time, d_Interval const& span);
  struct Blank {};
  explicit d_Time(Blank);

  d_Interval StoredSpan(float seconds) const;
  d_Time WithSpan(d_Interval span) const;
  d_Time WithSpanInZone(d_Interval span) const;
  XoTime Shown() const;
  void AddToHour(int hours);

  o_char zoneHourField;
  o_char zoneMinuteField;
  o_char hourField;
  o_char minuteField;
  o_char secondField;
  o_char hundredthsField;
};

/// Not a truth value: the first difference of hour and minute, without zone, and of the seconds,
/// truncated: times less than a second apart are equal.
XO_EXPORT int operator!=(d_Time const& a, d_Time const& b);
inline bool operator==(d_Time const& a, d_Time const& b) { return (a != b) == 0; }
inline bool operator<(d_Time const& a, d_Time const& b) { return (a != b) < 0; }
inline bool operator<=(d_Time const& a, d_Time const& b) { return (a != b) <= 0; }
inline bool operator>(d_Time const& a, d_Time const& b) { return (a != b) > 0; }
inline bool operator>=(d_Time const& a, d_Time const& b) { return (a != b) >= 0; }
/// Of the stored hour, minute and second alone, without regard to zones and hundredths.
XO_EXPORT d_Interval operator-(d_Time const& a, d_Time const& b);
// Around the day, without hundredths. Unlike the assigning forms these add the zone to the hour.
XO_EXPORT d_Time operator+(d_Time const& time, d_Interval const& span);
XO_EXPORT d_Time operator-(d_Time const& time, d_Interval const& span);
inline d_Time operator+(d_Interval const& span, d_Time const& time) { return time + span; }

/// A date and a time.
class XO_EXPORT d_Timestamp {
 public:
  /// The current local date and time.
  d_Timestamp();
  explicit d_Timestamp(short year, unsigned short month = 1, unsigned short day = 1,
                       unsigned short hour = 0, unsigned short minute = 0, float seconds = 0);
  /// The beginning of a day, in the default zone.
  d_Timestamp(d_Date const& date);
  d_Timestamp(d_Date const& date, d_Time const& time);
  d_Timestamp(XoDateTime const& source);
  d_Timestamp(d_Timestamp const&) = default;
  d_Timestamp& operator=(d_Timestamp const&) = default;
  /// By the assignments of date and time.
  d_Timestamp& operator=(XoDateTime const& source);
  /// The date alone; the time stays.
  d_Timestamp& operator=(d_Date const& source);
  static d_Timestamp current();

  d_Date const& date() const { return dateField; }
  d_Time const& time() const { return timeField; }
  short year() const { return dateField.year(); }
  d_Date::Month month() const { return dateField.month(); }
  unsigned short day() const { return dateField.day(); }
  unsigned short hour() const { return timeField.hour(); }
  unsigned short minute() const { return timeField.minute(); }
  float second() const { return timeField.second(); }
  short tz_hour() const { return timeField.tz_hour(); }
  short tz_minute() const { return timeField.tz_minute(); }
  bool is_between(d_Timestamp const& first, d_Timestamp const& last) const;

  // One that is not finite leaves the value.
  d_Timestamp& operator+=(d_Interval const& span);
  d_Timestamp& operator-=(d_Interval const& span);

  XoString& PrintToXoString(XoString& out, char const* format) const;
  d_Timestamp* ScanFromXoString(XoString& in, char const* format);

 private:
  friend class d_Date;
  friend class d_Time;

  d_Date dateField;
  d_Time timeField;
};

/// Not a truth value: that of the dates, or, where it is 0, that of the times.
XO_EXPORT int operator!=(d_Timestamp const& a, d_Timestamp const& b);
inline bool operator==(d_Timestamp const& a, d_Timestamp const& b) { return (a != b) == 0; }
inline bool operator<(d_Timestamp const& a, d_Timestamp const& b) { return (a != b) < 0; }
inline bool operator<=(d_Timestamp const& a, d_Timestamp const& b) { return (a != b) <= 0; }
inline bool operator>(d_Timestamp const& a, d_Timestamp const& b) { return (a != b) > 0; }
inline bool operator>=(d_Timestamp const& a, d_Timestamp const& b) { return (a != b) >= 0; }
inline d_Timestamp operator+(d_Timestamp stamp, d_Interval const& span) { return stamp += span; }
inline d_Timestamp operator+(d_Interval const& span, d_Timestamp stamp) { return stamp += span; }
inline d_Timestamp operator-(d_Timestamp stamp, d_Interval const& span) { return stamp -= span; }

static_assert(sizeof(d_Date) == 4 && sizeof(d_Time) == 6 && sizeof(d_Timestamp) == 10 &&
              sizeof(d_Interval) == 4);

// Whether two periods, each with both its ends, have a moment in common: 1 or 0. A pair may be
// given in either order. Of dates or times with time stamps only that part of the stamps counts.
XO_EXPORT int overlaps(d_Date const& start1, d_Date const& end1, d_Date const& start2,
                       d_Date const& end2);
XO_EXPORT int overlaps(d_Time const& start1, d_Time const& end1, d_Time const& start2,
                       d_Time const& end2);
XO_EXPORT int overlaps(d_Timestamp const& start1, d_Timestamp const& end1,
                       d_Timestamp const& start2, d_Timestamp const& end2);
XO_EXPORT int overlaps(d_Date const& start1, d_Date const& end1, d_Timestamp const& start2,
                       d_Timestamp const& end2);
XO_EXPORT int overlaps(d_Timestamp const& start1, d_Timestamp const& end1, d_Date const& start2,
                       d_Date const& end2);
XO_EXPORT int overlaps(d_Time const& start1, d_Time const& end1, d_Timestamp const& start2,
                       d_Timestamp const& end2);
XO_EXPORT int overlaps(d_Timestamp const& start1, d_Timestamp const& end1, d_Time const& start2,
                       d_Time const& end2);
