#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {

/// The default zone for the length of a scope.
class DefaultZone {
 public:
  explicit DefaultZone(int hours) { Set(hours); }
  ~DefaultZone() { Set(0); }
  DefaultZone(DefaultZone const&) = delete;
  DefaultZone& operator=(DefaultZone const&) = delete;

 private:
  static void Set(int hours) {
    d_Time::set_default_Time_Zone(static_cast<d_Time::Time_Zone>(hours));
  }
};

using TimeBytes = std::array<signed char, 6>;

/// The fields as they are stored: zone hour and minute, hour, minute, second, hundredths.
inline TimeBytes Fields(d_Time const& time) { return std::bit_cast<TimeBytes>(time); }

inline std::string Text(d_Date const& date) {
  return std::to_string(date.year()) + '-' + std::to_string(date.month()) + '-' +
         std::to_string(date.day());
}

inline std::string Text(XoString const& text) { return text.StrGet(); }

template <class Value>
std::string Printed(Value const& value, char const* format = nullptr) {
  XoString out("before");
  return value.PrintToXoString(out, format).StrGet();
}

/// The conversions of the historical calendar, step by step.
struct HistoricalSteps {
  static int Number(int year, int month, int day) {
    double y = year, m = month + 1;
    if (month == 1 || month == 2) {
      y = year - 1;
      m = month + 13;
    }
    double const n = day + std::trunc(365.25 * y) + 1720994 + std::trunc(30.6001 * m);
    if (n < 2299170) return static_cast<int>(n);
    double const c = std::trunc(y / 100);
    return static_cast<int>(n + std::trunc(c / 4) - c + 2);
  }

  static d_Date Date(int n) {
    double a = n + 1.0;
    if (a > 2299160) {
      double const p = std::trunc((a - 1867216.25) / 36524.25);
      a = n + 2.0 + p - std::trunc(p / 4);
    }
    double const b = a + 1524;
    double const c = std::trunc((b - 122.1) / 365.25);
    double const d = std::trunc(365.25 * c);
    double const e = std::trunc((b - d) / 30.6001);
    auto const day = static_cast<int>(b - d - std::floor(30.6001 * e));
    auto const month = static_cast<int>(e < 14 ? e - 1 : e - 13);
    auto const year = static_cast<int>(month >= 3 ? c - 4716 : c - 4715);
    return {static_cast<short>(year), static_cast<unsigned short>(month),
            static_cast<unsigned short>(day)};
  }
};

}  // namespace xo::test
