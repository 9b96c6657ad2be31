#include "src/xodate/clock_fields.hpp"
#include "xodatetimen.hpp"

namespace {

/// The moment that a clock of high resolution gives.
XoDateTimeN Read(void (*clock)(bdate&, btime&, int&)) {
  bdate date{};
  btime time{};
  int nanoSeconds = 0;
  clock(date, time, nanoSeconds);
  return {XoDateTime(xo::FieldsOf(date), xo::FieldsOf(time)), nanoSeconds};
}

}  // namespace

XoDateTimeN& XoDateTimeN::Now() { return *this = Read(bksGetHiresTime); }

XoDateTimeN& XoDateTimeN::NowUTC() { return *this = Read(bksGetHiresTimeUTC); }

int XoDateTimeN::ToLocalTime() {
  return xo::ShiftByZone([this](int minutes) { AddMinutes(minutes); });
}

int XoDateTimeN::ToUTCTime() {
  return xo::ShiftByZone([this](int minutes) { AddMinutes(xo::WrappingNegation(minutes)); });
}
