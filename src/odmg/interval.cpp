#include "src/odmg/conversion.hpp"
#include "src/xodate/temporal_text.hpp"
#include "xoodmg.hpp"

using namespace xo;

namespace {

float Magnitude(int value) {
  return static_cast<float>(value < 0 ? 0u - static_cast<unsigned>(value)
                                      : static_cast<unsigned>(value));
}

}  // namespace

d_Interval::d_Interval(int days, int hours, int minutes, float seconds_) {
  // Rounded at every step, and in this order: stored spans were made so.
  seconds = Magnitude(minutes) * static_cast<float>(kMinuteSeconds);
  seconds += std::fabs(seconds_);
  seconds += Magnitude(hours) * static_cast<float>(kHourSeconds);
  seconds += Magnitude(days) * static_cast<float>(kDaySeconds);
  if (days < 0 || hours < 0 || minutes < 0 || seconds_ < 0) seconds = -seconds;
}

int d_Interval::day() const {
  return static_cast<int>(Truncated(seconds / static_cast<float>(kDaySeconds)));
}

int d_Interval::hour() const {
  return static_cast<int>(Truncated(seconds) % kDaySeconds / kHourSeconds);
}

int d_Interval::minute() const {
  return static_cast<int>(Truncated(seconds) % kHourSeconds / kMinuteSeconds);
}

float d_Interval::second() const { return std::fmod(seconds, static_cast<float>(kMinuteSeconds)); }

XoString& d_Interval::PrintToXoString(XoString& out, char const* format) const {
  // Days beyond the field are cut like everything that is too long.
  XoDate const days(0, 1, day());
  XoTime const time(hour(), minute(), static_cast<int>(Truncated(second())));
  return PrintValue(out, XoDateTimeN(XoDateTime(days, time), 0),
                    format != nullptr ? format : "%e days, %I hours, %M minutes, %S seconds");
}

d_Interval* d_Interval::ScanFromXoString(XoString& in, char const* format) {
  XoDateTimeN record = XoDateTimeN::ClearValue();
  bool const isWhole = ScanTemporal(
      record, in, format != nullptr ? format : "%e days, %I hours, %M minutes, %S seconds");
  *this = d_Interval(record.day, record.hour, record.minute, record.second);
  return isWhole ? this : nullptr;
}
