#include "base/clock.hpp"
#include "src/xodate/clock_fields.hpp"
#include "xotime.hpp"

XoTime::XoTime() : XoTime(0, 0, 0) { Now(); }

XoTime& XoTime::Now() {
  btime now{};
  bksgettime(&now);
  return *this = xo::FieldsOf(now);
}

XoTime& XoTime::NowUTC() {
  btime now{};
  bdate today{};
  bksgetsystemtime(&now, &today);
  return *this = xo::FieldsOf(now);
}

int XoTime::ToLocalTime() {
  return xo::ShiftByZone([this](int minutes) { *this += xo::Wrap32(o_8b{minutes} * 60); });
}

int XoTime::ToUTCTime() {
  return xo::ShiftByZone([this](int minutes) { *this += xo::Wrap32(o_8b{minutes} * -60); });
}
