#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <type_traits>
#include <xotypemgr.hpp>

namespace xo::test {

/// A temporal value as its seven fields, for comparison and for messages.
struct Record {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, nano = 0;

  bool operator==(Record const&) const = default;

  XoDateTimeN Value() const {
    return {XoDateTime(XoDate(year, month, day), XoTime(hour, minute, second)), nano};
  }

  template <class Fields>
  static Record Of(Fields const& fields) {
    return {fields.year,   fields.month,  fields.day,        fields.hour,
            fields.minute, fields.second, fields.nanoSeconds};
  }

  friend std::ostream& operator<<(std::ostream& out, Record const& record) {
    return out << record.year << ' ' << record.month << ' ' << record.day << "  " << record.hour
               << ' ' << record.minute << ' ' << record.second << "  " << record.nano;
  }
};

template <class Value>
requires(!std::is_same_v<Value, Record>) std::string Print(Value const& value, char const* format) {
  XoString out("old text");
  EXPECT_EQ(&value.PrintToXoString(out, format), &out);
  return out.StrGet();
}

inline std::string Print(Record const& record, std::string const& format) {
  return Print(record.Value(), format.c_str());
}

/// What a scan gives: the fields, and whether it was not failed.
struct Scanned {
  Record record;
  bool isWhole = true;

  bool operator==(Scanned const&) const = default;
  friend std::ostream& operator<<(std::ostream& out, Scanned const& scanned) {
    return out << scanned.record << (scanned.isWhole ? "" : " (failed)");
  }
};

inline Scanned Scan(std::string const& text, std::string const& format) {
  XoString in(text.c_str());
  // What stands in a value is never kept.
  XoDateTimeN value(111, 111, 111, 111, 111, 111, 111);
  XoDateTimeN* const result = value.ScanFromXoString(in, format.c_str());
  EXPECT_TRUE(result == nullptr || result == &value);
  return {Record::Of(value), result != nullptr};
}

}  // namespace xo::test
