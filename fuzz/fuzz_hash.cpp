#include "fuzz/fuzz_input.hpp"

/// Hashes arbitrary bytes: nothing is read too far, and the answer depends on the bytes alone.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input, fuzz::Counts::kAny);
  unsigned const length = request.LengthFrom(input);
  fuzz::Buffer values(input, request.Reach(length), input.ConsumeBool());

  int error = 0;
  int secondError = 0;
  unsigned const hash = request.manager.Hash(request.type, length, values.Data(), request.count,
                                             request.format, error);
  unsigned const again = request.manager.Hash(request.type, length, values.Data(), request.count,
                                              request.format, secondError);
  fuzz::Require(hash == again && error == secondError);
  return 0;
}
