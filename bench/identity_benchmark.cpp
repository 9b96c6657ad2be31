#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/hand_written.hpp"

namespace {

constexpr unsigned kCount = 1024;

using Bytes = std::vector<unsigned char>;

Bytes RandomBytes(std::size_t size) {
  std::mt19937 random(1);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  return bytes;
}

/// Records of `width` bytes that differ in their last compared byte alone, so that all are read.
Bytes NearlyEqualRecords(unsigned width, unsigned differing) {
  Bytes records = RandomBytes(width);
  records.resize(std::size_t{kCount} * width);
  for (unsigned index = 1; index < kCount; ++index) {
    std::memcpy(&records[index * width], records.data(), width);
    records[index * width + differing] = static_cast<unsigned char>(index);
  }
  return records;
}

void CompareRecords(benchmark::State& state, XCompare* compare, unsigned width,
                    unsigned differing) {
  benchmark::DoNotOptimize(compare);
  Bytes records = NearlyEqualRecords(width, differing);
  unsigned index = 0;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(compare(FormLittle, 0, &records[width * index], 0,
                                     &records[width * (kCount - 1 - index)], CmpOpNoWildcards, 1,
                                     status));
    benchmark::DoNotOptimize(status);
    index = (index + 1) % kCount;
  }
}

constexpr unsigned kMebibyte = 1 << 20;

void StoreBlob(benchmark::State& state) {
  XoTypeMgr const manager;
  XoBlob blob(RandomBytes(kMebibyte).data(), kMebibyte);
  Bytes record(kMebibyte + 8);
  for (auto _ : state) {
    benchmark::DoNotOptimize(manager.Store(XoBLOB_T, record.data(), &blob, FormLittle, 1));
    benchmark::ClobberMemory();
  }
}

void LoadBlob(benchmark::State& state) {
  XoTypeMgr const manager;
  XoBlob blob(RandomBytes(kMebibyte).data(), kMebibyte);
  Bytes record(kMebibyte + 8);
  manager.Store(XoBLOB_T, record.data(), &blob, FormLittle, 1);
  for (auto _ : state) {
    benchmark::DoNotOptimize(manager.Load(XoBLOB_T, &blob, record.data(), FormLittle, 1));
    benchmark::ClobberMemory();
  }
}

void CopyBytes(benchmark::State& state) {
  Bytes const source = RandomBytes(kMebibyte);
  Bytes target(kMebibyte);
  for (auto _ : state) {
    std::memcpy(target.data(), source.data(), kMebibyte);
    benchmark::ClobberMemory();
  }
}

void CompareBlobs(benchmark::State& state) {
  XoTypeMgr const manager;
  XoBlob blob(RandomBytes(kMebibyte).data(), kMebibyte);
  Bytes first(kMebibyte + 8);
  manager.Store(XoBLOB_T, first.data(), &blob, FormLittle, 1);
  Bytes second = first;
  auto const size = static_cast<unsigned>(first.size());
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(
        manager.Cmp(XoBLOB_T, size, first.data(), size, second.data(), 0, 1, FormLittle, status));
  }
}

void CompareBytes(benchmark::State& state) {
  Bytes const first = RandomBytes(kMebibyte);
  Bytes const second = first;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::memcmp(first.data(), second.data(), kMebibyte));
    benchmark::ClobberMemory();
  }
}

[[maybe_unused]] bool const registered = [] {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("Cmp, one stored XoObjId/ours", CompareRecords, XoObjId::Compare, 10, 4);
  RegisterBenchmark("Cmp, one stored XoObjId/memcmp", CompareRecords, CompareTenBytes, 10, 9);
  RegisterBenchmark("Cmp, one stored XoRef/ours", CompareRecords, XoRef::Compare, 14, 4);
  RegisterBenchmark("Cmp, one stored XoRef/memcmp", CompareRecords, CompareFourteenBytes, 14, 13);
  RegisterBenchmark("Cmp, one stored XoSeal/ours", CompareRecords,
                    XoTypeMgr().CmpFuncPtrGet(XoSEAL_T), 6, 5);
  RegisterBenchmark("Cmp, one stored XoSeal/memcmp", CompareRecords, CompareSixBytes, 6, 5);
  RegisterBenchmark("Store a blob of 1 MiB/ours", StoreBlob);
  RegisterBenchmark("Store a blob of 1 MiB/memcpy", CopyBytes);
  RegisterBenchmark("Load a blob of 1 MiB/ours", LoadBlob);
  RegisterBenchmark("Load a blob of 1 MiB/memcpy", CopyBytes);
  RegisterBenchmark("Cmp, stored blobs of 1 MiB/ours", CompareBlobs);
  RegisterBenchmark("Cmp, stored blobs of 1 MiB/memcmp", CompareBytes);
  return true;
}();

}  // namespace
