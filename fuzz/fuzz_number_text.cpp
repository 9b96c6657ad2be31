#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.hpp"

/// Prints, scans and converts arbitrary numbers under arbitrary formats and texts: nothing is read
/// or written outside, whatever the format asks, and what the rows print they read back.
namespace {

/// The rows of numbers.
constexpr char kRows[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 14, 26, 27, 28,
                          29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 42, 43, 44, 45};

constexpr unsigned kMostValues = 6;

/// A text that ends with its terminator in a buffer of exactly its size.
class ExactText {
 public:
  explicit ExactText(std::string const& text) : characters(new char[text.size() + 1]) {
    std::memcpy(characters.get(), text.c_str(), text.size() + 1);
  }
  char const* Get() const { return characters.get(); }

 private:
  std::unique_ptr<char[]> characters;
};

/// Pieces that formats and numbers are made of, with arbitrary ones between them.
std::string AnyText(FuzzedDataProvider& input) {
  static char const* const kPieces[] = {
      "%", "d",  "I64",  "ld",  "hh",       "99999", ".",  "#",      "0x",     "-",
      "+", "e",  "inf",  "nan", "%.17g",    "%c",    "%S", "{NULL}", "ldexp(", "*",
      " ", "%n", "TRUE", "1e",  "Infinity", "0",     "9",  "%%"};
  std::string text;
  for (unsigned left = input.ConsumeIntegralInRange(0u, 12u); left != 0; --left) {
    text += input.ConsumeBool() ? std::string(input.PickValueInArray(kPieces))
                                : input.ConsumeRandomLengthString(20);
  }
  // Long ones are what a format or text of many pieces looks like.
  if (input.ConsumeIntegralInRange(0, 15) == 0) text.append(10'000, text.empty() ? '%' : text[0]);
  return text;
}

XoString AnyString(FuzzedDataProvider& input) {
  XoString string(AnyText(input).c_str());
  if (input.ConsumeBool()) string.SetCodeSet(input.ConsumeIntegral<unsigned char>());
  if (input.ConsumeIntegralInRange(0, 7) == 0) string.SetNullValue();
  return string;
}

void FormatAndScan(FuzzedDataProvider& input) {
  ExactText const format(AnyText(input));
  ExactText const text(AnyText(input));
  auto const bits = input.ConsumeIntegral<std::uint64_t>();
  auto const number = input.ConsumeFloatingPoint<double>();
  std::size_t const capacity = input.ConsumeIntegralInRange<std::size_t>(1, 2000);
  std::unique_ptr<char[]> const buffer(new char[capacity]);
  std::size_t length = xo::FormatInteger(buffer.get(), capacity, format.Get(), bits);
  // A character of zero may end the text before.
  fuzz::Require(std::strlen(buffer.get()) <= std::min(length, capacity - 1));
  length = xo::FormatDouble(buffer.get(), capacity, format.Get(), number);
  fuzz::Require(std::strlen(buffer.get()) == std::min(length, capacity - 1));

  std::uint64_t integer = bits;
  fuzz::Require(xo::ScanInteger(text.Get(), format.Get(), integer) || integer == bits);
  double read = number;
  if (!xo::ScanDouble(text.Get(), format.Get(), read)) {
    fuzz::Require(std::memcmp(&read, &number, sizeof read) == 0);
  }
  float narrow = 0;
  fuzz::Require(xo::ScanFloat(text.Get(), format.Get(), narrow) || narrow == 0);
}

void PrintAndScanRow(FuzzedDataProvider& input, XoTypeMgr const& manager, char type) {
  unsigned const count = input.ConsumeIntegralInRange(1u, kMostValues);
  std::size_t const width = manager.MemLenGet(type, 1);
  fuzz::Buffer values(input, count * width, false);
  fuzz::Buffer target(input, count * width, false);
  ExactText const format(AnyText(input));
  XoString out = AnyString(input);
  manager.PrintToXoString(type, out, values.Data(), format.Get(), count);
  fuzz::Require(out.size <= XoString::kMaxSize);
  XoString text = AnyString(input);
  void* const scanned = manager.ScanFromXoString(type, target.Data(), text, format.Get(), count);
  fuzz::Require(scanned == target.Data());

  // Under the row's own format a value comes back as one that prints alike.
  XoString printed;
  manager.PrintToXoString(type, printed, values.Data(), nullptr, 1);
  manager.ScanFromXoString(type, target.Data(), printed, nullptr, 1);
  XoString again;
  manager.PrintToXoString(type, again, target.Data(), nullptr, 1);
  fuzz::Require(std::strcmp(printed.StrGet(), again.StrGet()) == 0);
}

void Convert(FuzzedDataProvider& input, XoTypeMgr& manager, char type) {
  unsigned const asked = input.ConsumeIntegralInRange(0u, kMostValues);
  std::vector<XoString> strings(input.ConsumeIntegralInRange(1u, kMostValues));
  for (auto& string : strings) string = AnyString(input);
  XoTypeConvertData carrier;
  carrier.type = XoSTRING_T;
  carrier.data = strings.data();
  carrier.count = static_cast<unsigned>(strings.size());
  void* const values = manager.ConvertFrom(type, &carrier, asked);
  carrier.manager = nullptr;
  XoTypeConvertData* const back = manager.ConvertTo(type, values, asked);
  void* const again = manager.ConvertFrom(type, back, asked);
  delete back;
  int status = 0;
  // Text of unsigned 64-bit numbers reads as signed, so what is above that comes back lower.
  bool const isCut = type == XoU8B_T || type == XoNULL_U8B_T;
  fuzz::Require(isCut || manager.Cmp(type, 0, values, 0, again, 0, asked, FormMemory, status) == 0);
  manager.Delete(type, values, asked);
  manager.Delete(type, again, asked);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  char const type = input.PickValueInArray(kRows);
  XoTypeMgr manager;
  switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0:
      FormatAndScan(input);
      break;
    case 1:
      PrintAndScanRow(input, manager, type);
      break;
    default:
      Convert(input, manager, type);
  }
  return 0;
}
