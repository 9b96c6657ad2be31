#include <cstring>
#include <string>

#include "fuzz/fuzz_input.hpp"

/// Formats, texts and fields of the temporal types: nothing is touched too far, arithmetic on any
/// fields is defined, and what is promised of the results holds.

namespace {

/// Characters of the format language come often.
std::string FormatOf(FuzzedDataProvider& input) {
  static char const kCharacters[] = "%%%%?(?()AaBbDHIJMNOPpSTVXYdefmy -:.0";
  std::string format;
  for (auto length = input.ConsumeIntegralInRange<unsigned>(0, 300); length > 0; --length) {
    bool const isOfLanguage = input.ConsumeBool();
    char const character =
        isOfLanguage ? input.PickValueInArray(kCharacters) : input.ConsumeIntegral<char>();
    if (character != 0) format += character;
  }
  return format;
}

void PrintAndScan(FuzzedDataProvider& input, TypeDescriptor const& row) {
  fuzz::Buffer value(input, row.MemLen, input.ConsumeBool());
  std::string const format = FormatOf(input);
  XoString out;
  row.PrintToXoString(out, value.Data(), format.c_str(), 1);
  fuzz::Require(out.Len() <= 2559 && out.codeSet == XoString::GetDefault8CodeSet());

  // Any text, or what was printed, narrow or wide.
  XoString in = out;
  if (input.ConsumeBool()) in = XoString(input.ConsumeRandomLengthString(200).c_str());
  if (input.ConsumeBool()) in.MapToCodeSet(253);
  fuzz::Buffer read(input, row.MemLen, input.ConsumeBool());
  std::string const scanFormat = input.ConsumeBool() ? format : FormatOf(input);
  void* const result = row.ScanFromXoString(read.Data(), in, scanFormat.c_str(), 1);
  fuzz::Require(result == nullptr || result == read.Data());
}

/// All fields printed one by one come back.
void RoundTrip(FuzzedDataProvider& input, TypeDescriptor const& row) {
  fuzz::Buffer value(input, row.MemLen, false);
  fuzz::Buffer back(input, row.MemLen, true);
  char const* const format = "%Y %m %d %H %M %S %N";
  XoString text;
  row.PrintToXoString(text, value.Data(), format, 1);
  fuzz::Require(row.ScanFromXoString(back.Data(), text, format, 1) != nullptr);
  int status = 0;
  fuzz::Require(
      row.Compare(FormMemory, 0, value.Data(), 0, back.Data(), CmpOpNoWildcards, 1, status) == 0);
}

void StoreAndLoad(FuzzedDataProvider& input, TypeDescriptor const& row) {
  auto const format = input.ConsumeIntegral<unsigned char>();
  unsigned const count = input.ConsumeIntegralInRange<unsigned>(0, 20);
  unsigned const size = row.NullSizeGet(count);
  fuzz::Buffer disk(input, size, input.ConsumeBool());
  fuzz::Buffer memory(input, std::size_t{count} * row.MemLen, input.ConsumeBool());
  fuzz::Buffer again(input, size, input.ConsumeBool());
  fuzz::Require(row.Load(memory.Data(), disk.Data(), format, count) == size);
  fuzz::Require(row.Store(again.Data(), memory.Data(), format, count) == size);
  fuzz::Require(size == 0 || std::memcmp(disk.Data(), again.Data(), size) == 0);

  // In memory and on disk the order is the same when wildcards are off.
  fuzz::Buffer other(input, size, input.ConsumeBool());
  if (input.ConsumeBool()) other.CopyFrom(disk, input);
  fuzz::Buffer otherMemory(input, std::size_t{count} * row.MemLen, input.ConsumeBool());
  row.Load(otherMemory.Data(), other.Data(), format, count);
  if ((format & 15) == FormMemory) return;
  int status = 0;
  int const onDisk =
      row.Compare(format, 0, disk.Data(), 0, other.Data(), CmpOpNoWildcards, count, status);
  int const inMemory = row.Compare(FormMemory, 0, memory.Data(), 0, otherMemory.Data(),
                                   CmpOpNoWildcards, count, status);
  fuzz::Require((onDisk > 0) == (inMemory > 0) && (onDisk < 0) == (inMemory < 0));
}

template <class Value>
void Add(FuzzedDataProvider& input, Value value) {
  value.AddDays(input.ConsumeIntegral<int>());
  value.AddHours(input.ConsumeIntegral<int>());
  value.AddMinutes(input.ConsumeIntegral<int>());
  value.AddSeconds(input.ConsumeIntegral<long long>());
  value.AddSeconds(input.ConsumeFloatingPoint<double>());
  value.AddNanoSeconds(input.ConsumeIntegral<long long>());
  value.GetTotalNanoSeconds();
  value.GetTotalSeconds_f();
  value.SetTotalDays(input.ConsumeIntegral<int>());
}

void Calculate(FuzzedDataProvider& input) {
  auto const byte = [&] { return input.ConsumeIntegral<signed char>(); };
  XoDate const date(input.ConsumeIntegral<short>(), byte(), byte());
  XoTime const time(byte(), byte(), byte());
  int const shift = input.ConsumeIntegral<int>();
  int const nanoSeconds = input.ConsumeIntegral<int>();
  XoDate const moved = date + shift;
  fuzz::Require(XoDate(shift).IsDate() == 1 || shift < -32044 || shift > 13689325);
  (void)(date - shift);
  (void)(date - moved);
  (void)date.daynxtmonth();
  fuzz::Require(date.GetDayOfTheDate() >= XoMonday && date.GetDayOfTheDate() <= XoSunday);
  (void)(time + shift);
  (void)(time - shift);
  (void)(time - XoTime(shift));
  XoDateTime both(date, time);
  both.AddSeconds(shift);
  XoDateTimeN const point(both, nanoSeconds);
  XoTimeSpan const span(date.year, date.month, date.day, time.hour, time.minute, time.second,
                        nanoSeconds);
  Add(input, point);
  Add(input, span);
  XoTimeSpan const other(moved.year, moved.month, moved.day, byte(), byte(), byte(), shift);
  fuzz::Require(XoTimeSpan::Difference(span, other) == XoTimeSpan::Difference(other, span));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  static constexpr int kRows[] = {XoDATE_T, XoTIME_T, XoDATIME_T, XoDATIME_N_T, XoTIMESPAN_T};
  TypeDescriptor const& row = *CurrentTypeTable[input.PickValueInArray(kRows)];
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      PrintAndScan(input, row);
      break;
    case 1:
      RoundTrip(input, row);
      break;
    case 2:
      StoreAndLoad(input, row);
      break;
    default:
      Calculate(input);
  }
  return 0;
}
