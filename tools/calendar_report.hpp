#pragma once

#include <string>
#include <xotypemgr.hpp>

namespace xo::tool {

/// What is wrong with fields as a date or a time ("April has 30 days"); empty if nothing is.
std::string WhyNoDate(XoDate const& date);
std::string WhyNoTime(XoTime const& time);

/// The fields of a date in the proleptic Gregorian calendar of `XoDate` and, beside it, in the
/// historical one of `d_Date`: day numbers, weekdays, and the same day's date in the other.
std::string CalendarReport(XoDate const& date);

}  // namespace xo::tool
