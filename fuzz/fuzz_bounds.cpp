#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

#include "fuzz/fuzz_input.hpp"

namespace {

bool IsNumber(char type) {
  return (type >= Xo1B_T && type <= XoU1B_T) || type == XoBLOCKID_T ||
         (type >= D_INTERVAL_T && type <= XoNULL_XOINT64_T) ||
         (type >= Xo8B_T && type <= XoNULL_U8B_T);
}

/// Bytes of an element that an evaluation may read. Elements with a null byte are packed in memory
/// as well.
std::size_t ElementWidth(fuzz::Request const& request) {
  return IsNumber(request.type)
             ? request.manager.DiskLenGet(request.type, nullptr, request.format, 1, request.format)
             : request.StepWidth();
}

/// A key of an index, none now and then.
class EndKey {
 public:
  EndKey(FuzzedDataProvider& input, std::size_t width) {
    if (input.ConsumeIntegralInRange(0, 7) != 0) buffer.emplace(input, width, input.ConsumeBool());
    length = static_cast<std::uint8_t>(width);
  }

  void* Data() { return buffer ? buffer->Data() : nullptr; }
  std::uint8_t Length() const { return buffer ? length : std::uint8_t{0}; }

 private:
  std::optional<fuzz::Buffer> buffer;
  std::uint8_t length;
};

/// A bound that another predicate has left behind.
void* EarlierBound(FuzzedDataProvider& input, std::size_t width) {
  if (input.ConsumeBool()) return nullptr;
  auto* const bound = static_cast<unsigned char*>(AllocateBound(static_cast<unsigned>(width)));
  std::size_t const filled = input.ConsumeData(bound, width);
  std::fill(bound + filled, bound + width, std::uint8_t{0});
  return bound;
}

}  // namespace

/// Evaluates a predicate of arbitrary bytes over an index with arbitrary ends: no element is read
/// too far, the share is a number, and numbers keep the relation and the bounds that are there.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Request const request(input);
  std::size_t const width = ElementWidth(request);
  auto const relation = input.ConsumeIntegral<unsigned short>();
  // The first element is evaluated whatever the count.
  fuzz::Buffer value(input, width * std::max(request.count, 1U), input.ConsumeBool());
  EndKey low(input, width);
  EndKey high(input, width);
  XoIdxBounds range;
  range.low = low.Data();
  range.lowLen = low.Length();
  range.high = high.Data();
  range.highLen = high.Length();
  XoIdxBounds bounds;
  bounds.low = EarlierBound(input, width);
  if (bounds.low != nullptr) bounds.lowLen = static_cast<std::uint8_t>(width);
  bounds.high = EarlierBound(input, width);
  if (bounds.high != nullptr) bounds.highLen = static_cast<std::uint8_t>(width);
  XoIdxBounds const earlier = bounds;

  auto const evaluate = [&](unsigned short& op, XoIdxBounds* out) {
    return request.manager.EvalAndBound(request.type, &range, op, value.Data(), request.format,
                                        request.count, out, nullptr);
  };
  unsigned short op = relation;
  float const share = evaluate(op, input.ConsumeBool() ? &bounds : nullptr);
  fuzz::Require(!std::isnan(share));
  fuzz::Require(earlier.low == nullptr || bounds.low == earlier.low);
  fuzz::Require(earlier.high == nullptr || bounds.high == earlier.high);
  if (IsNumber(request.type)) {
    fuzz::Require(op == relation);
    fuzz::Require(evaluate(op, nullptr) == share);
    if (bounds.low != nullptr && earlier.low == nullptr) {
      fuzz::Require(std::memcmp(bounds.low, value.Data(), width * request.count) == 0);
    }
  }
  ReleaseBounds(bounds);
  return 0;
}
