#pragma once

#include <initializer_list>
#include <vector>

#include "tests/xotypevl/evaluated.hpp"

/// Stored dates and times, as tests of their bounds write them.
namespace xo::test {

inline constexpr unsigned short kEqual = 1, kBelow = 2, kAbove = 4, kPattern = 8, kLiteral = 0x10;

inline ByteList FieldBytes(std::initializer_list<int> bytes) {
  ByteList list;
  for (int const byte : bytes) list.push_back(static_cast<unsigned char>(byte));
  return list;
}

inline ByteList Year(int year, unsigned char format) {
  return Unit(static_cast<unsigned>(year) & 0xFFFF, format);
}

inline ByteList Date(int year, int month, int day, unsigned char format = kLittle) {
  return Year(year, format) + FieldBytes({month, day});
}
inline ByteList Time(int hour, int minute, int second) {
  return FieldBytes({hour, minute, second});
}
inline ByteList DateTime(int year, int month, int day, int hour, int minute, int second,
                         unsigned char format = kLittle) {
  return Date(year, month, day, format) + Time(hour, minute, second);
}
inline ByteList Nanos(int nanoSeconds, unsigned char format = kLittle) {
  return Encode<int>({nanoSeconds}, format);
}

/// A value of a row that lies ten units above `low` and nine below `high`.
struct RowOfValues {
  char id;
  ByteList low, value, high;
};

/// One for every temporal row.
inline std::vector<RowOfValues> const kRows = {
    {XoDATE_T, Date(2020, 1, 1), Date(2020, 1, 11), Date(2020, 1, 20)},
    {XoTIME_T, Time(10, 0, 0), Time(10, 0, 10), Time(10, 0, 19)},
    {XoDATIME_T, DateTime(2020, 1, 1, 10, 0, 0), DateTime(2020, 1, 1, 10, 0, 10),
     DateTime(2020, 1, 1, 10, 0, 19)},
    {XoDATIME_N_T, DateTime(2020, 1, 1, 10, 0, 0) + Nanos(5),
     DateTime(2020, 1, 1, 10, 0, 10) + Nanos(7), DateTime(2020, 1, 1, 10, 0, 19) + Nanos(3)},
    {XoTIMESPAN_T, DateTime(0, 1, 1, 10, 0, 0) + Nanos(5), DateTime(0, 1, 1, 10, 0, 10) + Nanos(7),
     DateTime(0, 1, 1, 10, 0, 19) + Nanos(3)},
    {D_DATE_T, Date(2020, 1, 1), Date(2020, 1, 11), Date(2020, 1, 20)},
    {D_TIME_T, FieldBytes({2, 0, 10, 0, 0, 9}), FieldBytes({0, 5, 10, 0, 10, 8}),
     FieldBytes({-3, 0, 10, 0, 19, 7})},
    {D_TIMESTAMP_T, Date(2020, 1, 1) + FieldBytes({2, 0, 10, 0, 0, 9}),
     Date(2020, 1, 1) + FieldBytes({0, 5, 10, 0, 10, 8}),
     Date(2020, 1, 1) + FieldBytes({-3, 0, 10, 0, 19, 7})},
};

}  // namespace xo::test
