#include "tools/temporal_check.hpp"

#include <type_traits>

namespace xo::tool {
namespace {

constexpr int kWildcardField = -1;

/// The fields of a value and what holds of them.
struct Fields {
  XoDate date{0, 0, 0};
  XoTime time{0, 0, 0};
  int nanoSeconds = 0;
  bool hasDate = false;
  bool hasTime = false;
  /// Whether the calendar is Julian before 1582-10-15. Comparisons know wildcards of its dates
  /// alone.
  bool isHistorical = false;

  // Spans have any fields, whose range says nothing.
  bool IsSpan() const { return !hasDate && !hasTime; }
};

XoDate DateOf(d_Date const& date) { return {date.year(), date.month(), date.day()}; }

XoTime TimeOf(d_Time const& time) {
  return {static_cast<o_char>(time.hour()), static_cast<o_char>(time.minute()),
          static_cast<int>(time.second())};
}

Fields FieldsOf(RowValue const& value) {
  switch (value.Type()) {
    case XoDATE_T:
      return {value.As<XoDate>(), {0, 0, 0}, 0, true, false, false};
    case XoTIME_T:
      return {{0, 0, 0}, value.As<XoTime>(), 0, false, true, false};
    case XoDATIME_T: {
      auto const& both = value.As<XoDateTime>();
      return {both.date, both.time, 0, true, true, false};
    }
    case XoDATIME_N_T: {
      auto const& all = value.As<XoDateTimeN>();
      return {all.Date(), all.Time(), all.nanoSeconds, true, true, false};
    }
    case D_DATE_T:
      return {DateOf(value.As<d_Date>()), {0, 0, 0}, 0, true, false, true};
    case D_TIME_T:
      return {{0, 0, 0}, TimeOf(value.As<d_Time>()), 0, false, true, true};
    case D_TIMESTAMP_T: {
      auto const& stamp = value.As<d_Timestamp>();
      return {DateOf(stamp.date()), TimeOf(stamp.time()), 0, true, true, true};
    }
    case XoTIMESPAN_T: {
      auto const& all = value.As<XoTimeSpan>();
      return {all.Date(), all.Time(), all.nanoSeconds, false, false, false};
    }
    default:
      return {};
  }
}

/// Puts a value that goes with all others in the place of each wildcard. Returns whether there was
/// one.
bool ReplaceWildcards(Fields& fields) {
  bool isPattern = false;
  auto const replace = [&isPattern](auto& field, int usual) {
    if (field != kWildcardField) return;
    field = static_cast<std::remove_reference_t<decltype(field)>>(usual);
    isPattern = true;
  };
  // A leap year and a month of 31 days.
  replace(fields.date.year, 2000);
  replace(fields.date.month, 1);
  replace(fields.date.day, 1);
  if (fields.isHistorical) return isPattern;
  replace(fields.time.hour, 0);
  replace(fields.time.minute, 0);
  replace(fields.time.second, 0);
  replace(fields.nanoSeconds, 0);
  return isPattern;
}

bool IsDateOfItsCalendar(Fields const& fields) {
  XoDate const& date = fields.date;
  if (!fields.isHistorical) return date.IsDate() != 0;
  return date.month > 0 && date.day > 0 &&
         d_Date::is_valid_date(date.year, static_cast<unsigned short>(date.month),
                               static_cast<unsigned short>(date.day));
}

bool IsValid(Fields const& fields) {
  constexpr int kNanoSeconds = 1000000000;
  if (fields.hasDate && !IsDateOfItsCalendar(fields)) return false;
  if (fields.hasTime && fields.time.IsTime() == 0) return false;
  return fields.nanoSeconds >= 0 && fields.nanoSeconds < kNanoSeconds;
}

}  // namespace

bool HasWildcard(RowValue const& value) {
  Fields fields = FieldsOf(value);
  return ReplaceWildcards(fields);
}

bool IsInvalid(RowValue const& value) {
  Fields fields = FieldsOf(value);
  if (fields.IsSpan() || value.IsNull()) return false;
  ReplaceWildcards(fields);
  return !IsValid(fields);
}

}  // namespace xo::tool
