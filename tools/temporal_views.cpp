#include "tools/temporal_views.hpp"

#include <fmt/core.h>

#include <algorithm>

#include "tools/calendar_report.hpp"

namespace xo::tool {
namespace {

Field FieldOf(char const* name, int number) {
  return {name, fmt::format("{}", number), number == -1};
}

void AddDate(std::vector<Field>& fields, XoDate const& date) {
  fields.push_back(FieldOf("year", date.year));
  fields.push_back(FieldOf("month", date.month));
  fields.push_back(FieldOf("day", date.day));
}

void AddTime(std::vector<Field>& fields, XoTime const& time) {
  fields.push_back(FieldOf("hour", time.hour));
  fields.push_back(FieldOf("minute", time.minute));
  fields.push_back(FieldOf("second", time.second));
}

void AddOdmgDate(std::vector<Field>& fields, d_Date const& date) {
  fields.push_back({"year", fmt::format("{}", date.year())});
  fields.push_back({"month", fmt::format("{}", static_cast<int>(date.month()))});
  fields.push_back({"day", fmt::format("{}", date.day())});
}

void AddOdmgTime(std::vector<Field>& fields, d_Time const& time) {
  fields.push_back({"hour", fmt::format("{}", time.hour())});
  fields.push_back({"minute", fmt::format("{}", time.minute())});
  fields.push_back({"second", fmt::format("{:.2f}", time.second())});
  fields.push_back({"zone", fmt::format("{:+} h {:+} min", time.tz_hour(), time.tz_minute())});
}

std::string WhyNoDateOdmg(d_Date const& date) {
  auto const month = static_cast<unsigned short>(date.month());
  if (d_Date::is_valid_date(date.year(), month, date.day())) return {};
  if (month < 1 || month > 12) return fmt::format("there is no month {}", month);
  if (date.day() >= 1 && date.day() <= date.days_in_month()) {
    return "the change of calendar left that day out";
  }
  return fmt::format("month {} has {} days", month, date.days_in_month());
}

std::string WhyNoTimeOdmg(d_Time const& time) {
  return WhyNoTime({static_cast<short>(time.hour()), static_cast<short>(time.minute()),
                    static_cast<int>(time.second())});
}

std::string FirstOf(std::string const& a, std::string const& b) { return a.empty() ? b : a; }

template <class Value>
void AddNanoSeconds(Views& views, Value const& value) {
  AddDate(views.fields, value.Date());
  AddTime(views.fields, value.Time());
  views.fields.push_back(FieldOf("nanoseconds", value.nanoSeconds));
  views.totals.push_back({"total days", fmt::format("{}", value.GetTotalDays())});
  views.totals.push_back({"total seconds", fmt::format("{}", value.GetTotalSeconds())});
}

XoDate DateOf(d_Date const& date) {
  return {date.year(), static_cast<int>(date.month()), date.day()};
}

/// The views that the class alone tells.
Views FieldsOf(RowValue const& value) {
  Views views;
  switch (value.Type()) {
    case XoDATE_T:
      views.date = value.As<XoDate>();
      AddDate(views.fields, views.date);
      views.whyInvalid = WhyNoDate(views.date);
      break;
    case XoTIME_T: {
      auto const& time = value.As<XoTime>();
      AddTime(views.fields, time);
      views.whyInvalid = WhyNoTime(time);
      views.totals.push_back({"seconds of the day", fmt::format("{}", static_cast<int>(time))});
      break;
    }
    case XoDATIME_T: {
      auto const& both = value.As<XoDateTime>();
      views.date = both.date;
      AddDate(views.fields, both.date);
      AddTime(views.fields, both.time);
      views.whyInvalid = FirstOf(WhyNoDate(both.date), WhyNoTime(both.time));
      break;
    }
    case XoDATIME_N_T: {
      auto const& both = value.As<XoDateTimeN>();
      views.date = both.Date();
      AddNanoSeconds(views, both);
      views.whyInvalid = FirstOf(WhyNoDate(both.Date()), WhyNoTime(both.Time()));
      break;
    }
    case XoTIMESPAN_T:
      AddNanoSeconds(views, value.As<XoTimeSpan>());
      break;
    case D_DATE_T: {
      auto const& date = value.As<d_Date>();
      views.date = DateOf(date);
      AddOdmgDate(views.fields, date);
      views.whyInvalid = WhyNoDateOdmg(date);
      break;
    }
    case D_TIME_T:
      AddOdmgTime(views.fields, value.As<d_Time>());
      views.whyInvalid = WhyNoTimeOdmg(value.As<d_Time>());
      break;
    case D_TIMESTAMP_T: {
      auto const& both = value.As<d_Timestamp>();
      views.date = DateOf(both.date());
      AddOdmgDate(views.fields, both.date());
      AddOdmgTime(views.fields, both.time());
      views.whyInvalid = FirstOf(WhyNoDateOdmg(both.date()), WhyNoTimeOdmg(both.time()));
      break;
    }
    default: {
      auto const& span = value.As<d_Interval>();
      views.fields = {{"days", fmt::format("{}", span.day())},
                      {"hours", fmt::format("{}", span.hour())},
                      {"minutes", fmt::format("{}", span.minute())},
                      {"seconds", fmt::format("{:g}", span.second())}};
      views.totals.push_back({"total seconds", fmt::format("{:.9g}", span.Seconds())});
      break;
    }
  }
  return views;
}

}  // namespace

bool IsTemporal(char type) {
  constexpr char kTypes[] = {XoDATE_T, XoTIME_T, XoDATIME_T,    XoDATIME_N_T, XoTIMESPAN_T,
                             D_DATE_T, D_TIME_T, D_TIMESTAMP_T, D_INTERVAL_T};
  return std::find(std::begin(kTypes), std::end(kTypes), type) != std::end(kTypes);
}

Views ViewsOf(RowValue const& value) {
  Views views = FieldsOf(value);
  views.isNull = value.IsNull();
  views.isPattern = std::any_of(views.fields.begin(), views.fields.end(),
                                [](Field const& field) { return field.isWildcard; });
  return views;
}

std::string WhyUnusable(RowValue const& value) {
  if (!IsTemporal(value.Type())) return {};
  Views const views = ViewsOf(value);
  return views.isNull || views.isPattern ? std::string() : views.whyInvalid;
}

}  // namespace xo::tool
