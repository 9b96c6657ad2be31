#include "base/system_clock.hpp"

#include <chrono>
#include <ctime>

namespace xo {
namespace {

/// A moment, split as the C library wants it.
struct Moment {
  std::time_t seconds;
  int nanoSeconds;
};

Moment Now() {
  using std::chrono::duration_cast;
  auto const sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  auto const seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  auto const rest = duration_cast<std::chrono::nanoseconds>(sinceEpoch - seconds);
  return {static_cast<std::time_t>(seconds.count()), static_cast<int>(rest.count())};
}

// The C library's two families of re-entrant calendar functions differ in name and argument order.
bool ToUtc(std::time_t seconds, std::tm& fields) {
#if defined(_WIN32)
  return gmtime_s(&fields, &seconds) == 0;
#else
  return gmtime_r(&seconds, &fields) != nullptr;
#endif
}

bool ToLocal(std::time_t seconds, std::tm& fields) {
#if defined(_WIN32)
  return localtime_s(&fields, &seconds) == 0;
#else
  return localtime_r(&seconds, &fields) != nullptr;
#endif
}

/// Seconds from `from` to `to`, two readings of one moment that are less than two days apart.
int SecondsBetween(std::tm const& from, std::tm const& to) {
  int const days = to.tm_year == from.tm_year  ? to.tm_yday - from.tm_yday
                   : to.tm_year > from.tm_year ? 1
                                               : -1;
  return ((days * 24 + to.tm_hour - from.tm_hour) * 60 + to.tm_min - from.tm_min) * 60 + to.tm_sec -
         from.tm_sec;
}

void Fill(std::tm const& fields, int utcOffset, bdate& date, btime& time) {
  date.year = static_cast<short>(fields.tm_year + 1900);
  date.month = static_cast<unsigned char>(fields.tm_mon + 1);
  date.day = static_cast<unsigned char>(fields.tm_mday);
  time.hour = static_cast<unsigned char>(fields.tm_hour);
  time.minute = static_cast<unsigned char>(fields.tm_min);
  time.second = static_cast<unsigned char>(fields.tm_sec);
  time.utcOffset = utcOffset;
}

/// The moment in both readings; false when the C library cannot tell the local one.
bool Read(Moment moment, std::tm& utc, std::tm& local) {
  utc = std::tm{};
  local = std::tm{};
  return ToUtc(moment.seconds, utc) && ToLocal(moment.seconds, local);
}

}  // namespace

void SystemUtcTime(bdate& date, btime& time, int& nanoSeconds) {
  Moment const moment = Now();
  std::tm utc{};
  ToUtc(moment.seconds, utc);
  Fill(utc, 0, date, time);
  nanoSeconds = moment.nanoSeconds;
}

// Without a local reading the clock gives UTC, which is at least a real time.
void SystemLocalTime(bdate& date, btime& time, int& nanoSeconds) {
  Moment const moment = Now();
  std::tm utc, local;
  bool const known = Read(moment, utc, local);
  if (known) {
    Fill(local, SecondsBetween(utc, local), date, time);
  } else {
    Fill(utc, 0, date, time);
  }
  nanoSeconds = moment.nanoSeconds;
}

int SystemTimeZoneMinutes() {
  std::tm utc, local;
  return Read(Now(), utc, local) ? SecondsBetween(utc, local) / 60 : kTimeZoneUnknown;
}

}  // namespace xo
