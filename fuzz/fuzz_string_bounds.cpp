#include <cmath>

#include "fuzz/fuzz_input.hpp"

namespace {

/// A length field that is often true, and what makes a record look like one.
void PutRecord(FuzzedDataProvider& input, fuzz::Buffer& buffer, std::size_t size, bool isBig) {
  if (size < 6 || input.ConsumeIntegralInRange(0, 3) == 0) return;
  std::size_t const length =
      size - 2 + (input.ConsumeBool() ? 0 : input.ConsumeIntegral<std::uint8_t>());
  buffer.Data()[isBig ? 1 : 0] = static_cast<unsigned char>(length);
  buffer.Data()[isBig ? 0 : 1] = static_cast<unsigned char>(length >> 8);
  if (input.ConsumeBool()) {
    buffer.Data()[2] = input.PickValueInArray<unsigned char>({0, 1, 253, 254});
    buffer.Data()[3] = input.PickValueInArray<unsigned char>({1, 2, 0x82, 22});
  }
  if (input.ConsumeBool()) buffer.Data()[size - 2] = 0;
  if (input.ConsumeBool()) buffer.Data()[size - 1] = 0xFF;
}

/// Bytes of an end key or a bound, as their length declares them.
struct Ends {
  Ends(FuzzedDataProvider& input, bool isBig)
      : lowLength(input.ConsumeIntegral<std::uint8_t>()),
        highLength(input.ConsumeIntegral<std::uint8_t>()),
        low(input, lowLength, input.ConsumeBool()),
        high(input, highLength, input.ConsumeBool()) {
    PutRecord(input, low, lowLength, isBig);
    PutRecord(input, high, highLength, isBig);
    if (input.ConsumeBool()) high.CopyFrom(low, input);
  }

  std::uint8_t lowLength;
  std::uint8_t highLength;
  fuzz::Buffer low;
  fuzz::Buffer high;
};

/// A bound that was not there before has its whole buffer, and ends where it says.
void TouchBuilt(void* bound, void const* before, std::uint8_t length, std::uint8_t keyLimit) {
  if (bound == nullptr || bound == before) return;
  fuzz::Require(length >= 3 && length <= 254);
  auto* const bytes = static_cast<unsigned char volatile*>(bound);
  for (unsigned place = 0; place < std::max(length, keyLimit); ++place) bytes[place] = bytes[place];
  delete[] static_cast<unsigned char*>(bound);
}

int Ignore(char const*, char const*, int) { return 0; }

}  // namespace

/// Evaluates predicates on arbitrary bytes as stored strings, through both tables. Of the value the
/// length alone is true; range and existing bounds end where they are declared to.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static bool const quiet = [] {
    XoPlatform hooks = XoExchangePlatform({});
    hooks.assertFailed = Ignore;
    XoExchangePlatform(hooks);
    return true;
  }();
  fuzz::Require(quiet);
  FuzzedDataProvider input(data, size);
  XoTypeMgr const manager(input.ConsumeBool() ? 3 : 5);
  auto format = input.PickValueInArray<unsigned char>({0x01, 0x02, 0x81, 0x82});
  if (input.ConsumeIntegralInRange(0, 7) == 0) format = input.ConsumeIntegral<unsigned char>();
  bool const isBig = (format & 7) == FormBig;
  auto op = input.ConsumeIntegral<unsigned short>();
  auto const given = op;

  auto const length = input.ConsumeIntegralInRange<unsigned>(0, 600);
  fuzz::Buffer value(input, length + 2, input.ConsumeBool());
  PutRecord(input, value, length + 2, isBig);
  value.Data()[isBig ? 1 : 0] = static_cast<unsigned char>(length);
  value.Data()[isBig ? 0 : 1] = static_cast<unsigned char>(length >> 8);

  Ends keys(input, isBig);
  Ends existing(input, isBig);
  XoIdxBounds range;
  range.low = input.ConsumeIntegralInRange(0, 15) == 0 ? nullptr : keys.low.Data();
  range.high = input.ConsumeIntegralInRange(0, 15) == 0 ? nullptr : keys.high.Data();
  range.lowLen = keys.lowLength;
  range.highLen = keys.highLength;
  XoIdxBounds bounds;
  bounds.keyLimit = input.ConsumeIntegral<std::uint8_t>();
  if (input.ConsumeIntegralInRange(0, 3) == 0) {
    bounds.low = existing.low.Data();
    bounds.lowLen = existing.lowLength;
  }
  if (input.ConsumeIntegralInRange(0, 3) == 0) {
    bounds.high = existing.high.Data();
    bounds.highLen = existing.highLength;
  }
  void const* const low = bounds.low;
  void const* const high = bounds.high;
  std::uint8_t const keyLimit = bounds.keyLimit;

  XoIdxBounds* const known = input.ConsumeIntegralInRange(0, 7) == 0 ? nullptr : &range;
  float const share = manager.EvalAndBound(XoSTRING_T, known, op, value.Data(), format,
                                           input.ConsumeIntegral<unsigned>(), &bounds, nullptr);
  fuzz::Require(!std::isnan(share));
  fuzz::Require((op & ~kXoBoundPattern) == (given & 0x8007));
  TouchBuilt(bounds.low, low, bounds.lowLen, keyLimit);
  TouchBuilt(bounds.high, high, bounds.highLen, keyLimit);

  // Without a record for the bounds there is no estimate, and the same mark of a pattern.
  unsigned short again = given;
  fuzz::Require(manager.EvalAndBound(XoSTRING_T, known, again, value.Data(), format, 1, nullptr,
                                     nullptr) == 0);
  fuzz::Require(again == op);
  return 0;
}
