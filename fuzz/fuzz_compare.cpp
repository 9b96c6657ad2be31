#include "fuzz/fuzz_input.hpp"

/// Compares arbitrary bytes both ways round: nothing is read too far, and the order of two operands
/// of one length turns round when they change places.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input, fuzz::Counts::kAny);
  unsigned const lengthA = request.LengthFrom(input);
  unsigned const lengthB = input.ConsumeBool() ? lengthA : request.LengthFrom(input);
  auto const op = input.ConsumeIntegral<unsigned short>();
  fuzz::Buffer a(input, request.Reach(lengthA), input.ConsumeBool());
  fuzz::Buffer b(input, request.Reach(lengthB), input.ConsumeBool());
  if (input.ConsumeBool()) b.CopyFrom(a, input);

  int status = 0;
  int reverseStatus = 0;
  int const order = request.manager.Cmp(request.type, lengthA, a.Data(), lengthB, b.Data(), op,
                                        request.count, request.format, status);
  int const reverse = request.manager.Cmp(request.type, lengthB, b.Data(), lengthA, a.Data(), op,
                                          request.count, request.format, reverseStatus);
  fuzz::Require(order >= -1 && order <= 1 && order == -reverse && status == reverseStatus);
  return 0;
}
