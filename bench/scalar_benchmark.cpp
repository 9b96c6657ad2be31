#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/hand_written.hpp"

namespace {

constexpr unsigned kElements = 1024;

/// Pairs of stored numbers in random order, so that no branch can be foreseen; they fit the
/// first-level cache.
template <class Value>
std::vector<Value> RandomValues() {
  std::mt19937_64 random(1);
  std::vector<Value> values(kElements);
  for (auto& value : values) value = static_cast<Value>(random());
  return values;
}

template <class Value, char kType>
void CompareOneThroughManager(benchmark::State& state) {
  XoTypeMgr const manager;
  auto values = RandomValues<Value>();
  unsigned index = 0;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(manager.Cmp(kType, sizeof(Value), &values[index], sizeof(Value),
                                         &values[kElements - 1 - index], 0, 1, FormLittle, status));
    benchmark::DoNotOptimize(status);
    index = (index + 1) % kElements;
  }
}

template <class Value>
void CompareOneByHand(benchmark::State& state, XCompare* compare) {
  benchmark::DoNotOptimize(compare);
  auto values = RandomValues<Value>();
  unsigned index = 0;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(compare(FormLittle, sizeof(Value), &values[index], sizeof(Value),
                                     &values[kElements - 1 - index], 0, 1, status));
    benchmark::DoNotOptimize(status);
    index = (index + 1) % kElements;
  }
}

/// Two arrays that are equal but for their last element.
struct ArrayPair {
  std::vector<o_4b> a = RandomValues<o_4b>();
  std::vector<o_4b> b = a;
  ArrayPair() { b.back() ^= 1; }
};

void CompareArray(benchmark::State& state, unsigned char format) {
  XoTypeMgr const manager;
  ArrayPair pair;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(
        manager.Cmp(Xo4B_T, 0, pair.a.data(), 0, pair.b.data(), 0, kElements, format, status));
    benchmark::DoNotOptimize(status);
  }
}

void CompareArrayByMemcmp(benchmark::State& state) {
  ArrayPair pair;
  for (auto _ : state) {
    auto* a = pair.a.data();
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(std::memcmp(a, pair.b.data(), kElements * sizeof(o_4b)));
  }
}

void HashArray(benchmark::State& state) {
  XoTypeMgr const manager;
  auto values = RandomValues<o_4b>();
  for (auto _ : state) {
    int error;
    benchmark::DoNotOptimize(manager.Hash(Xo4B_T, 0, values.data(), kElements, FormMemory, error));
    benchmark::DoNotOptimize(error);
  }
}

void HashArrayByLoop(benchmark::State& state) {
  auto values = RandomValues<o_4b>();
  for (auto _ : state) {
    o_4b* data = values.data();
    benchmark::DoNotOptimize(data);
    o_4b folds = 0;
    for (unsigned index = 0; index < kElements; ++index) folds ^= data[index];
    benchmark::DoNotOptimize(folds);
  }
}

/// Every name is measured twice, by the library and by its peer.
[[maybe_unused]] bool const registered = [] {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("Cmp, one stored o_4b/ours", CompareOneThroughManager<o_4b, Xo4B_T>);
  RegisterBenchmark("Cmp, one stored o_4b/hand-written", CompareOneByHand<o_4b>, CompareOneLong);
  RegisterBenchmark("Cmp, one stored o_8b/ours", CompareOneThroughManager<o_8b, Xo8B_T>);
  RegisterBenchmark("Cmp, one stored o_8b/hand-written", CompareOneByHand<o_8b>,
                    CompareOneLongLong);
  RegisterBenchmark("Cmp, 1024 o_4b little-endian/ours", CompareArray, FormLittle);
  RegisterBenchmark("Cmp, 1024 o_4b little-endian/memcmp", CompareArrayByMemcmp);
  RegisterBenchmark("Cmp, 1024 o_4b big-endian/ours", CompareArray, FormBig);
  RegisterBenchmark("Cmp, 1024 o_4b big-endian/memcmp", CompareArrayByMemcmp);
  RegisterBenchmark("Hash, 1024 o_4b in memory/ours", HashArray);
  RegisterBenchmark("Hash, 1024 o_4b in memory/XOR loop", HashArrayByLoop);
  return true;
}();

}  // namespace
