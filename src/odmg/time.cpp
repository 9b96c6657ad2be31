#include "base/clock.hpp"
#include "src/odmg/conversion.hpp"
#include "src/xodate/clock_fields.hpp"
#include "src/xodate/temporal_text.hpp"
#include "xoodmg.hpp"

using namespace xo;

namespace {

/// The zone of times that are made without one.
constinit int defaultZone = 0;

constexpr char kFormat[] = "%I:%M:%S %p";

o_char Low8(o_8b value) { return static_cast<o_char>(value); }

o_char HundredthsOf(float seconds) {
  return Low8(Truncated((seconds - std::trunc(seconds)) * 100.0F));
}

}  // namespace

void d_Time::set_default_Time_Zone(Time_Zone zone) { defaultZone = zone; }

void d_Time::set_default_Time_Zone_to_local() {
  btime now{};
  bksgettime(&now);
  if (now.utcOffset != 0) defaultZone = now.utcOffset / kHourSeconds;
}

d_Time::d_Time(Blank)
    : zoneHourField(Low8(defaultZone)),
      zoneMinuteField(0),
      hourField(0),
      minuteField(0),
      secondField(0),
      hundredthsField(0) {}

d_Time::d_Time() : d_Time(Blank{}) {
  btime now{};
  bksgettime(&now);
  *this = FieldsOf(now);
  AddToHour(defaultZone);
}

d_Time::d_Time(unsigned short hour, unsigned short minute, float seconds)
    : d_Time(hour, minute, seconds, static_cast<short>(defaultZone), 0) {}

d_Time::d_Time(unsigned short hour, unsigned short minute, float seconds, short zoneHour,
               short zoneMinute)
    : zoneHourField(Low8(zoneHour)),
      zoneMinuteField(Low8(zoneMinute)),
      hourField(Low8(hour + zoneHour)),
      minuteField(Low8(minute + zoneMinute)),
      secondField(Low8(Truncated(seconds))),
      hundredthsField(HundredthsOf(seconds)) {}

d_Time::d_Time(int seconds) : d_Time(Blank{}) {
  o_8b count = seconds;
  if (count < 0) count = (count % kDaySeconds + kDaySeconds) % kDaySeconds;
  hourField = Low8(count / kHourSeconds + defaultZone);
  minuteField = Low8(count % kHourSeconds / kMinuteSeconds);
  secondField = Low8(count % kMinuteSeconds);
}

d_Time::d_Time(XoTime const& source) : d_Time(Blank{}) {
  *this = source;
  AddToHour(defaultZone);
}
d_Time::d_Time(XoDateTime const& source) : d_Time(source.time) {}
d_Time::d_Time(d_Timestamp const& source) : d_Time(source.timeField) {}

d_Time& d_Time::operator=(XoTime const& source) {
  zoneHourField = Low8(defaultZone);
  zoneMinuteField = 0;
  hourField = source.hour;
  minuteField = source.minute;
  secondField = source.second;
  hundredthsField = 0;
  return *this;
}
d_Time& d_Time::operator=(XoDateTime const& source) { return *this = source.time; }
d_Time& d_Time::operator=(d_Timestamp const& source) { return *this = source.timeField; }

d_Time d_Time::current() { return {}; }

void d_Time::AddToHour(int hours) { hourField = Low8(o_8b{hourField} + hours); }

float d_Time::second() const { return static_cast<float>(secondField + hundredthsField / 100.0); }

bool d_Time::is_between(d_Time const& first, d_Time const& last) const {
  return first <= *this && *this <= last;
}

/// The stored hour and minute, with `seconds`, as a span.
d_Interval d_Time::StoredSpan(float seconds) const {
  return d_Interval(0, hourField, minuteField, seconds);
}

/// The time of day at the end of a span, which is stored as it is, in the zone of this time.
d_Time d_Time::WithSpan(d_Interval span) const {
  constexpr float kDay = static_cast<float>(kDaySeconds);
  d_Time time = *this;
  if (!std::isfinite(span.Seconds())) return time;
  // By whole days, exactly, into the day.
  float rest = std::fmod(span.Seconds(), kDay);
  if (rest < 0) rest += kDay;
  // A span just below 0 rounds to the whole day.
  int const whole = static_cast<int>(rest) % kDaySeconds;
  time.hourField = Low8(whole / kHourSeconds);
  time.minuteField = Low8(whole % kHourSeconds / kMinuteSeconds);
  time.secondField = Low8(whole % kMinuteSeconds);
  time.hundredthsField = HundredthsOf(rest);
  return time;
}

/// The same with the zone added to hour and minute.
d_Time d_Time::WithSpanInZone(d_Interval span) const {
  d_Time time = WithSpan(span);
  if (!std::isfinite(span.Seconds())) return time;
  time.AddToHour(zoneHourField);
  time.minuteField = Low8(time.minuteField + zoneMinuteField);
  return time;
}

d_Time& d_Time::operator+=(d_Interval const& span) {
  return *this = WithSpan(StoredSpan(second()) + span);
}
d_Time& d_Time::operator-=(d_Interval const& span) {
  return *this = WithSpan(StoredSpan(secondField) - span);
}
d_Time operator+(d_Time const& time, d_Interval const& span) {
  return time.WithSpanInZone(time.StoredSpan(time.secondField) + span);
}
d_Time operator-(d_Time const& time, d_Interval const& span) {
  return time.WithSpanInZone(time.StoredSpan(time.secondField) - span);
}
d_Interval operator-(d_Time const& a, d_Time const& b) {
  return a.StoredSpan(a.secondField) - b.StoredSpan(b.secondField);
}

int operator!=(d_Time const& a, d_Time const& b) {
  int const hours = (a.hourField - a.zoneHourField) - (b.hourField - b.zoneHourField);
  if (hours != 0) return static_cast<o_2b>(hours);
  int const minutes = (a.minuteField - a.zoneMinuteField) - (b.minuteField - b.zoneMinuteField);
  if (minutes != 0) return minutes;
  return static_cast<int>(Truncated(a.second() - b.second()));
}

/// Hour and minute without the zone, and whole seconds.
XoTime d_Time::Shown() const {
  return XoTime(hourField - zoneHourField, minuteField - zoneMinuteField,
                static_cast<int>(Truncated(hundredthsField / 100.0 + secondField)));
}

XoString& d_Time::PrintToXoString(XoString& out, char const* format) const {
  XoDateTime const record(XoDate(0, 1, 1), Shown());
  return PrintValue(out, XoDateTimeN(record, 0), format != nullptr ? format : kFormat);
}

d_Time* d_Time::ScanFromXoString(XoString& in, char const* format) {
  XoDateTimeN record = XoDateTimeN::ClearValue();
  bool const isWhole = ScanTemporal(record, in, format != nullptr ? format : kFormat);
  *this = record.Time();
  return isWhole ? this : nullptr;
}

// Time stamps.

d_Timestamp::d_Timestamp() : dateField(d_Date::Blank{}) {
  // After the time: of a day that ends in between the old time may stand with the new date.
  dateField = d_Date::current();
}

d_Timestamp::d_Timestamp(short year, unsigned short month, unsigned short day, unsigned short hour,
                         unsigned short minute, float seconds)
    : dateField(year, month, day), timeField(hour, minute, seconds) {}

d_Timestamp::d_Timestamp(d_Date const& date) : dateField(date), timeField(0, 0) {}
d_Timestamp::d_Timestamp(d_Date const& date, d_Time const& time)
    : dateField(date), timeField(time) {}
d_Timestamp::d_Timestamp(XoDateTime const& source) : dateField(source), timeField(source) {}

d_Timestamp& d_Timestamp::operator=(XoDateTime const& source) {
  dateField = source;
  timeField = source;
  return *this;
}
d_Timestamp& d_Timestamp::operator=(d_Date const& source) {
  dateField = source;
  return *this;
}

d_Timestamp d_Timestamp::current() { return {}; }

bool d_Timestamp::is_between(d_Timestamp const& first, d_Timestamp const& last) const {
  return first <= *this && *this <= last;
}

d_Timestamp& d_Timestamp::operator+=(d_Interval const& span) {
  // The day is taken in with the time, so that the span carries over it.
  int const day = dateField.dayField;
  d_Interval moved =
      d_Interval(day, timeField.hourField - timeField.zoneHourField,
                 timeField.minuteField - timeField.zoneMinuteField, timeField.second()) +
      span;
  if (!std::isfinite(moved.Seconds())) return *this;
  double days = std::trunc(double{moved.Seconds()} / kDaySeconds);
  if (moved.Seconds() < 0) {
    double const back = std::trunc(double{moved.Seconds()} / -kDaySeconds) + 1;
    moved += d_Interval::OfSeconds(static_cast<float>(back) * static_cast<float>(kDaySeconds));
    days = -back;
  }
  dateField.MoveBy(Truncated(days - day));
  timeField = timeField.WithSpanInZone(moved);
  return *this;
}
d_Timestamp& d_Timestamp::operator-=(d_Interval const& span) { return *this += -span; }

int operator!=(d_Timestamp const& a, d_Timestamp const& b) {
  int const dates = a.date() != b.date();
  return dates != 0 ? dates : a.time() != b.time();
}

XoString& d_Timestamp::PrintToXoString(XoString& out, char const* format) const {
  XoDateTime const record(XoDate(dateField.yearField, dateField.monthField, dateField.dayField),
                          timeField.Shown());
  return PrintValue(out, XoDateTimeN(record, 0),
                    format != nullptr ? format : "%a %b %e %I:%M:%S %p");
}

d_Timestamp* d_Timestamp::ScanFromXoString(XoString& in, char const* format) {
  XoDateTimeN record = XoDateTimeN::ClearValue();
  bool const isWhole =
      ScanTemporal(record, in, format != nullptr ? format : "%a %b %e %I:%M:%S %p");
  *this = record.DateTime();
  return isWhole ? this : nullptr;
}

// Periods.

namespace {

/// `lo` to `hi` against a pair in any order.
template <class Moment>
int Overlap(Moment const& start1, Moment const& end1, Moment const& start2, Moment const& end2) {
  Moment const& lo = start1 <= end1 ? start1 : end1;
  Moment const& hi = start1 <= end1 ? end1 : start1;
  auto const isWithin = [&](Moment const& moment) { return lo <= moment && moment <= hi; };
  bool const covers = (start2 <= lo && end2 >= hi) || (end2 <= lo && start2 >= hi);
  return isWithin(start2) || isWithin(end2) || covers ? 1 : 0;
}

}  // namespace

int overlaps(d_Date const& start1, d_Date const& end1, d_Date const& start2, d_Date const& end2) {
  return Overlap(start1, end1, start2, end2);
}
int overlaps(d_Time const& start1, d_Time const& end1, d_Time const& start2, d_Time const& end2) {
  return Overlap(start1, end1, start2, end2);
}
int overlaps(d_Timestamp const& start1, d_Timestamp const& end1, d_Timestamp const& start2,
             d_Timestamp const& end2) {
  return Overlap(start1, end1, start2, end2);
}
int overlaps(d_Date const& start1, d_Date const& end1, d_Timestamp const& start2,
             d_Timestamp const& end2) {
  return Overlap(start1, end1, start2.date(), end2.date());
}
int overlaps(d_Timestamp const& start1, d_Timestamp const& end1, d_Date const& start2,
             d_Date const& end2) {
  return Overlap(start1.date(), end1.date(), start2, end2);
}
int overlaps(d_Time const& start1, d_Time const& end1, d_Timestamp const& start2,
             d_Timestamp const& end2) {
  return Overlap(start1, end1, start2.time(), end2.time());
}
int overlaps(d_Timestamp const& start1, d_Timestamp const& end1, d_Time const& start2,
             d_Time const& end2) {
  return Overlap(start1.time(), end1.time(), start2, end2);
}
