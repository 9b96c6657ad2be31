#include "src/xodate/clock_fields.hpp"
#include "xodatetime.hpp"

// Both parts ask the clock.
XoDateTime::XoDateTime() = default;

XoDateTime::XoDateTime(XoDate const& dateGiven) : date(dateGiven) {}

XoDateTime::XoDateTime(XoTime const& timeGiven) : time(timeGiven) {}

XoDateTime& XoDateTime::Now() {
  time.Now();
  date.Today();
  return *this;
}

XoDateTime& XoDateTime::NowUTC() {
  btime now{};
  bdate today{};
  bksgetsystemtime(&now, &today);
  return *this = XoDateTime(xo::FieldsOf(today), xo::FieldsOf(now));
}

void XoDateTime::ShiftMinutes(o_8b minutes) {
  SetHourMinuteOfDay(xo::Wrap32(time.hour * 60 + time.minute + minutes));
}

int XoDateTime::ToLocalTime() {
  return xo::ShiftByZone([this](int minutes) { ShiftMinutes(minutes); });
}

int XoDateTime::ToUTCTime() {
  return xo::ShiftByZone([this](int minutes) { ShiftMinutes(-o_8b{minutes}); });
}
