#include <array>
#include <bit>
#include <cstring>
#include <string>

#include "fuzz/fuzz_input.hpp"

namespace {

int SignOf(int order) { return (order > 0) - (order < 0); }

/// A value of any bytes.
template <class Value>
Value Any(FuzzedDataProvider& input) {
  std::array<unsigned char, sizeof(Value)> bytes{};
  input.ConsumeData(bytes.data(), bytes.size());
  return std::bit_cast<Value>(bytes);
}

/// Text by a format and back, of a value of any bytes; neither needs to fit the other.
template <class Value>
void PrintAndScan(FuzzedDataProvider& input) {
  std::string const format = input.ConsumeRandomLengthString(40);
  std::string const text = input.ConsumeRandomLengthString(60);
  auto value = Any<Value>(input);
  char const* const given = input.ConsumeBool() ? format.c_str() : nullptr;
  XoString out(text.c_str());
  if (input.ConsumeBool()) value.PrintToXoString(out, given);
  value.ScanFromXoString(out, given);
  value.PrintToXoString(out, given);
}

template <class Value>
void Calculate(FuzzedDataProvider& input) {
  auto const value = Any<Value>(input), other = Any<Value>(input);
  auto const span = Any<d_Interval>(input);
  Value moved = value + span;
  moved += span;
  moved = moved - span;
  moved -= span;
  fuzz::Require((value != other) == -(other != value));
  fuzz::Require(overlaps(value, other, other, moved) == 1);
}

void Dates(FuzzedDataProvider& input) {
  auto date = Any<d_Date>(input);
  auto const weekday = static_cast<d_Date::Weekday>(input.ConsumeIntegral<int>() % 7);
  date.next(weekday);
  date.previous(weekday);
  // The number of what a number gives is that number, from March of year 1 on.
  d_Date const day(static_cast<short>(input.ConsumeIntegralInRange(2, 32000)),
                   input.ConsumeIntegral<unsigned short>());
  d_Date same = day;
  same += d_Interval();
  fuzz::Require((same != day) == 0 && same.day() == day.day() && same.month() == day.month());
  d_Date(date.year(), input.ConsumeIntegral<unsigned short>()).day_of_year();
}

/// A step gives a greater value or leaves the bytes.
template <class Value>
void Step(FuzzedDataProvider& input, char type) {
  auto const before = Any<Value>(input);
  Value after = before;
  auto const code = input.ConsumeIntegral<unsigned char>();
  int const result = XoTypeMgr().GetValue(type, &after, 1, FormMemory, code);
  bool const isNext = code == kNextValue || code == kNextValueToo;
  fuzz::Require(result != 0 || !isNext || SignOf(after != before) == 1);
  fuzz::Require(result == 0 || std::memcmp(&before, &after, sizeof before) == 0);
}

}  // namespace

/// The ODMG classes with fields of any bytes, spans of any size and any formats and texts.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  d_Time::set_default_Time_Zone(static_cast<d_Time::Time_Zone>(input.ConsumeIntegral<int>()));
  switch (input.ConsumeIntegralInRange(0, 11)) {
    case 0:
      PrintAndScan<d_Date>(input);
      break;
    case 1:
      PrintAndScan<d_Time>(input);
      break;
    case 2:
      PrintAndScan<d_Timestamp>(input);
      break;
    case 3:
      PrintAndScan<d_Interval>(input);
      break;
    case 4:
      Calculate<d_Date>(input);
      break;
    case 5:
      Calculate<d_Time>(input);
      break;
    case 6:
      Calculate<d_Timestamp>(input);
      break;
    case 7:
      Dates(input);
      break;
    case 8:
      Step<d_Date>(input, D_DATE_T);
      break;
    case 9:
      Step<d_Time>(input, D_TIME_T);
      break;
    case 10:
      Step<d_Timestamp>(input, D_TIMESTAMP_T);
      break;
    default: {
      auto record = Any<XoDateTimeN>(input);
      unsigned char disk[12];
      XoTypeMgr().StoreTimeStamp(input.ConsumeIntegral<char>(), disk,
                                 input.ConsumeIntegral<unsigned char>(), &record);
      d_Time(input.ConsumeIntegral<int>());
      d_Interval(input.ConsumeIntegral<int>(), input.ConsumeIntegral<int>(),
                 input.ConsumeIntegral<int>(), input.ConsumeFloatingPoint<float>());
    }
  }
  return 0;
}
