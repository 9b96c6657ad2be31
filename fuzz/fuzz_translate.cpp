#include "fuzz/fuzz_input.hpp"

/// Translates arbitrary bytes between arbitrary formats and lengths: nothing is touched outside
/// what the lengths allow.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input);
  unsigned char const targetFormat = request.format;
  auto const sourceFormat = input.ConsumeIntegral<unsigned char>();
  auto const targetLength = input.ConsumeIntegral<std::uint16_t>();
  auto const sourceLength = input.ConsumeIntegral<std::uint16_t>();

  // Memory holds all elements, whatever its length says. A stored side holds what its length says,
  // or all elements where that does not limit.
  bool const toMemory = (targetFormat & FormMemory) != 0;
  bool const fromMemory = (sourceFormat & FormMemory) != 0;
  bool const bothStored = !toMemory && !fromMemory;
  std::size_t const whole = request.count * request.Width();
  auto const room = [&](bool memory, std::size_t length) {
    if (bothStored) return length;
    return memory || length == 0 ? whole : length;
  };
  fuzz::Buffer target(input, room(toMemory, targetLength), input.ConsumeBool());
  fuzz::Buffer source(input, room(fromMemory, sourceLength), input.ConsumeBool());

  unsigned const produced =
      request.manager.Translate(request.type, target.Data(), targetFormat, targetLength,
                                source.Data(), sourceFormat, sourceLength, request.count);
  fuzz::Require(produced <= room(toMemory, targetLength));
  return 0;
}
