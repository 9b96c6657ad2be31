#include <cstring>

#include "fuzz/fuzz_input.hpp"

/// Loads arbitrary bytes and stores them again: nothing is touched too far, and the bytes come
/// back. Numbers that can be null come back in the one way in which they are stored.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input);
  std::size_t const reach =
      request.manager.DiskLenGet(request.type, nullptr, request.format, request.count, FormMemory);
  fuzz::Buffer disk(input, reach, input.ConsumeBool());
  fuzz::Buffer memory(input, request.count * request.Width(), input.ConsumeBool());
  fuzz::Buffer stored(input, reach, input.ConsumeBool());
  auto const pass = [&](fuzz::Buffer& from, fuzz::Buffer& to) {
    unsigned const read = request.manager.Load(request.type, memory.Data(), from.Data(),
                                               request.format, request.count);
    unsigned const written = request.manager.Store(request.type, to.Data(), memory.Data(),
                                                   request.format, request.count);
    fuzz::Require(read <= reach && read == written);
    return read;
  };

  std::size_t const length = pass(disk, stored);
  if (length == 0) return 0;
  char const type = request.type;
  bool const canBeNull = (type >= XoNULL_1B_T && type <= XoNULL_XOINT64_T) || type == XoNULL_8B_T ||
                         type == XoNULL_U8B_T;
  fuzz::Require(canBeNull || std::memcmp(disk.Data(), stored.Data(), length) == 0);
  pass(stored, disk);
  fuzz::Require(std::memcmp(disk.Data(), stored.Data(), length) == 0);
  return 0;
}
