#include <cstring>

#include "fuzz/fuzz_input.hpp"

/// Loads arbitrary bytes and stores them again: nothing is touched too far, and the bytes come
/// back.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input);
  std::size_t const reach = request.Reach(0);
  fuzz::Buffer disk(input, reach, input.ConsumeBool());
  fuzz::Buffer memory(input, reach, input.ConsumeBool());
  fuzz::Buffer stored(input, reach, input.ConsumeBool());

  unsigned const read =
      request.manager.Load(request.type, memory.Data(), disk.Data(), request.format, request.count);
  unsigned const written = request.manager.Store(request.type, stored.Data(), memory.Data(),
                                                 request.format, request.count);
  fuzz::Require(read <= reach && read == written);
  fuzz::Require(read == 0 || std::memcmp(disk.Data(), stored.Data(), read) == 0);
  return 0;
}
