#include <cstring>
#include <vector>

#include "fuzz/fuzz_input.hpp"

namespace {

/// Any form but memory.
unsigned char StoredFormat(FuzzedDataProvider& input) {
  auto const format = input.ConsumeIntegral<unsigned char>();
  return static_cast<unsigned char>(format & ~FormMemory);
}

}  // namespace

/// Loads, hashes, compares and translates arbitrary bytes as stored blobs, in buffers of exactly
/// their length; what loads is stored again and comes back.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  XoTypeMgr const manager;
  unsigned char const format = StoredFormat(input);
  auto const count = input.ConsumeIntegralInRange<unsigned>(0, 5);
  auto const lengthA = input.ConsumeIntegralInRange<unsigned>(1, 300);
  auto const lengthB = input.ConsumeIntegralInRange<unsigned>(1, 300);
  fuzz::Buffer a(input, lengthA, true), b(input, lengthB, false);
  b.CopyFrom(a, input);

  int status = 0;
  int const order =
      manager.Cmp(XoBLOB_T, lengthA, a.Data(), lengthB, b.Data(), 0, count, format, status);
  fuzz::Require(status == 0);
  int const reverse =
      manager.Cmp(XoBLOB_T, lengthB, b.Data(), lengthA, a.Data(), 0, count, format, status);
  fuzz::Require((order > 0) == (reverse < 0) && (order < 0) == (reverse > 0));
  manager.Hash(XoBLOB_T, lengthA, a.Data(), count, format, status);
  fuzz::Require(status == 0 || status == ERR_TM_LENGTH_EXCEEDED);

  std::vector<XoBlob> blobs(count), again(count);
  unsigned const read =
      manager.Translate(XoBLOB_T, blobs.data(), FormMemory, 0, a.Data(), format, lengthA, count);
  fuzz::Require(read <= lengthA);
  if (read == 0) return 0;
  unsigned const needed = manager.DiskLenGet(XoBLOB_T, blobs.data(), format, count, FormMemory);
  // A total may tell of more than its elements have.
  fuzz::Require(needed <= read);
  fuzz::Buffer stored(input, needed, true);
  fuzz::Require(manager.Store(XoBLOB_T, stored.Data(), blobs.data(), format, count) == needed);
  fuzz::Require(manager.Load(XoBLOB_T, again.data(), stored.Data(), format, count) == needed);
  for (unsigned index = 0; index < count; ++index) {
    fuzz::Require((blobs[index] == again[index]) != 0);
  }
  auto const room = input.ConsumeIntegralInRange<unsigned>(1, 300);
  fuzz::Buffer target(input, room, false);
  fuzz::Require(manager.Translate(XoBLOB_T, target.Data(), format, room, blobs.data(), FormMemory,
                                  0, count) == std::min(room, needed));
  return 0;
}
