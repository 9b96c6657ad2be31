#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

/// Numbers as text against the C library and `to_chars`, the 64-bit integer against the machine's,
/// and nullable rows against plain ones.
namespace {

constexpr unsigned kElements = 1024;

template <class Value>
std::vector<Value> RandomValues() {
  std::mt19937_64 random(1);
  std::vector<Value> values(kElements);
  for (auto& value : values) value = static_cast<Value>(random());
  return values;
}

/// Finite numbers of all magnitudes, with all their digits.
template <>
std::vector<double> RandomValues() {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> mantissa(1, 10);
  std::vector<double> values(kElements);
  for (auto& value : values) {
    value = mantissa(random) * std::pow(10, static_cast<int>(random() % 600) - 300);
  }
  return values;
}

template <class Value>
struct Formats;
template <>
struct Formats<o_4b> {
  static constexpr char kId = Xo4B_T;
  static constexpr char const* kPlatform = "%d";
};
template <>
struct Formats<o_8b> {
  static constexpr char kId = Xo8B_T;
  static constexpr char const* kPlatform = sizeof(long) == 8 ? "%ld" : "%lld";
};
template <>
struct Formats<double> {
  static constexpr char kId = XoDOUBLE_T;
  static constexpr char const* kPlatform = "%.17g";
};

template <class Value>
void PrintOurs(benchmark::State& state) {
  XoTypeMgr const manager;
  auto values = RandomValues<Value>();
  XoString out;
  unsigned index = 0;
  for (auto _ : state) {
    manager.PrintToXoString(Formats<Value>::kId, out, &values[index], nullptr, 1);
    benchmark::DoNotOptimize(out.text);
    index = (index + 1) % kElements;
  }
}

template <class Value>
void PrintBySnprintf(benchmark::State& state) {
  auto values = RandomValues<Value>();
  char buffer[64];
  char const* format = Formats<Value>::kPlatform;
  benchmark::DoNotOptimize(format);
  unsigned index = 0;
  for (auto _ : state) {
    std::snprintf(buffer, sizeof buffer, format, values[index]);
    benchmark::DoNotOptimize(buffer);
    index = (index + 1) % kElements;
  }
}

template <class Value>
std::vector<XoString> Texts() {
  XoTypeMgr const manager;
  auto values = RandomValues<Value>();
  std::vector<XoString> texts(kElements);
  for (unsigned index = 0; index < kElements; ++index) {
    manager.PrintToXoString(Formats<Value>::kId, texts[index], &values[index], nullptr, 1);
  }
  return texts;
}

template <class Value>
void ScanOurs(benchmark::State& state) {
  XoTypeMgr const manager;
  auto texts = Texts<Value>();
  unsigned index = 0;
  for (auto _ : state) {
    Value value = 0;
    manager.ScanFromXoString(Formats<Value>::kId, &value, texts[index], nullptr, 1);
    benchmark::DoNotOptimize(value);
    index = (index + 1) % kElements;
  }
}

template <class Value>
void ScanBySscanf(benchmark::State& state) {
  auto texts = Texts<Value>();
  // The C library's scan knows no precision.
  char const* format =
      sizeof(Value) == 8 && Formats<Value>::kId == XoDOUBLE_T ? "%lg" : Formats<Value>::kPlatform;
  benchmark::DoNotOptimize(format);
  unsigned index = 0;
  for (auto _ : state) {
    Value value = 0;
    benchmark::DoNotOptimize(std::sscanf(texts[index].StrGet(), format, &value));
    benchmark::DoNotOptimize(value);
    index = (index + 1) % kElements;
  }
}

constexpr unsigned kConverted = 1000;

void ConvertOurs(benchmark::State& state) {
  XoTypeMgr manager;
  auto values = RandomValues<o_4b>();
  for (auto _ : state) {
    XoTypeConvertData* const strings = manager.ConvertTo(Xo4B_T, values.data(), kConverted);
    benchmark::DoNotOptimize(strings->data);
    delete strings;
  }
}

void ConvertByToChars(benchmark::State& state) {
  auto values = RandomValues<o_4b>();
  for (auto _ : state) {
    std::vector<std::string> strings(kConverted);
    for (unsigned index = 0; index < kConverted; ++index) {
      char buffer[16];
      strings[index].assign(buffer,
                            std::to_chars(buffer, buffer + sizeof buffer, values[index]).ptr);
    }
    benchmark::DoNotOptimize(strings.data());
  }
}

// Arithmetic over an array, each result taken into the next step so that latencies count.

struct Add {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return a + b;
  }
};
struct Subtract {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return b - a;
  }
};
struct Multiply {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return a * b;
  }
};
struct Divide {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return a / (b | Number(1)) + b;
  }
};
struct Remainder {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return a % (b | Number(1)) + b;
  }
};
struct ShiftLeft {
  static unsigned Count(XoInt64 number) { return number.low & 63; }
  static unsigned Count(std::uint64_t number) { return static_cast<unsigned>(number) & 63; }
  template <class Number>
  Number operator()(Number a, Number b) const {
    return (b << Count(a)) | a;
  }
};
struct ShiftRight {
  template <class Number>
  Number operator()(Number a, Number b) const {
    return (b >> ShiftLeft::Count(a)) | a;
  }
};

/// The machine's number with the library's signs: it wraps, and divides and shifts as signed.
struct Native {
  std::uint64_t bits;
  explicit Native(std::uint64_t value) : bits(value) {}
  std::int64_t Signed() const { return static_cast<std::int64_t>(bits); }
  Native operator+(Native other) const { return Native(bits + other.bits); }
  Native operator-(Native other) const { return Native(bits - other.bits); }
  Native operator*(Native other) const { return Native(bits * other.bits); }
  Native operator/(Native other) const {
    return Native(static_cast<std::uint64_t>(Signed() / other.Signed()));
  }
  Native operator%(Native other) const {
    return Native(static_cast<std::uint64_t>(Signed() % other.Signed()));
  }
  Native operator|(Native other) const { return Native(bits | other.bits); }
  Native operator<<(unsigned count) const { return Native(bits << count); }
  Native operator>>(unsigned count) const {
    return Native(static_cast<std::uint64_t>(Signed() >> count));
  }
  operator std::uint64_t() const { return bits; }
};

template <class Number, class Operation>
void Calculate(benchmark::State& state) {
  std::vector<Number> values;
  for (auto const value : RandomValues<std::uint64_t>()) {
    // Of all magnitudes, but for the lowest value and -1, whose quotient the machine traps.
    values.push_back(Number(value >> (1 + value % 60)));
  }
  for (auto _ : state) {
    Number* data = values.data();
    benchmark::DoNotOptimize(data);
    Number result(std::uint64_t{1});
    for (unsigned index = 0; index < kElements; ++index) result = Operation()(result, data[index]);
    benchmark::DoNotOptimize(result);
  }
}

// Stored arrays that are equal but for their last element.

template <char kId, class Element>
void CompareStored(benchmark::State& state) {
  XoTypeMgr const manager;
  std::vector<Element> values;
  for (auto const value : RandomValues<o_4b>()) values.push_back(value);
  unsigned const size = manager.DiskLenGet(kId, nullptr, FormLittle, kElements, FormMemory);
  std::vector<unsigned char> a(size);
  manager.Store(kId, a.data(), values.data(), FormLittle, kElements);
  auto b = a;
  b[size - 1] ^= 1;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(
        manager.Cmp(kId, size, a.data(), size, b.data(), 0, kElements, FormLittle, status));
    benchmark::DoNotOptimize(status);
  }
}

template <char kId, class Element>
void HashStored(benchmark::State& state) {
  XoTypeMgr const manager;
  std::vector<Element> values;
  for (auto const value : RandomValues<o_4b>()) values.push_back(value);
  unsigned const size = manager.DiskLenGet(kId, nullptr, FormLittle, kElements, FormMemory);
  std::vector<unsigned char> disk(size);
  manager.Store(kId, disk.data(), values.data(), FormLittle, kElements);
  for (auto _ : state) {
    int error;
    benchmark::DoNotOptimize(manager.Hash(kId, size, disk.data(), kElements, FormLittle, error));
    benchmark::DoNotOptimize(error);
  }
}

template <class Value>
void RegisterText(std::string const& name) {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark(("Print " + name + "/ours").c_str(), PrintOurs<Value>);
  RegisterBenchmark(("Print " + name + "/snprintf").c_str(), PrintBySnprintf<Value>);
  RegisterBenchmark(("Scan " + name + "/ours").c_str(), ScanOurs<Value>);
  RegisterBenchmark(("Scan " + name + "/sscanf").c_str(), ScanBySscanf<Value>);
}

template <class Operation>
void RegisterOperation(std::string const& name) {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark(("XoInt64 " + name + "/ours").c_str(), Calculate<XoInt64, Operation>);
  RegisterBenchmark(("XoInt64 " + name + "/native").c_str(), Calculate<Native, Operation>);
}

/// Every name is measured twice, by the library and by its peer.
[[maybe_unused]] bool const registered = [] {
  using benchmark::RegisterBenchmark;
  RegisterText<o_4b>("o_4b");
  RegisterText<o_8b>("o_8b");
  RegisterText<double>("o_double");
  RegisterBenchmark("ConvertTo, 1000 o_4b/ours", ConvertOurs);
  RegisterBenchmark("ConvertTo, 1000 o_4b/to_chars", ConvertByToChars);
  RegisterOperation<Add>("+");
  RegisterOperation<Subtract>("-");
  RegisterOperation<Multiply>("*");
  RegisterOperation<Divide>("division");
  RegisterOperation<Remainder>("%");
  RegisterOperation<ShiftLeft>("<<");
  RegisterOperation<ShiftRight>(">>");
  RegisterBenchmark("Cmp, 1024 stored XoNull_long/ours", CompareStored<XoNULL_4B_T, XoNull_long>);
  RegisterBenchmark("Cmp, 1024 stored XoNull_long/o_4b", CompareStored<Xo4B_T, o_4b>);
  RegisterBenchmark("Hash, 1024 stored XoNull_long/ours", HashStored<XoNULL_4B_T, XoNull_long>);
  RegisterBenchmark("Hash, 1024 stored XoNull_long/o_4b", HashStored<Xo4B_T, o_4b>);
  return true;
}();

}  // namespace
