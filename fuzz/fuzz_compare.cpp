#include "fuzz/fuzz_input.hpp"

namespace {

/// Whether the second operand alone can be a pattern of the first, so that an order need not turn
/// round when the operands change places.
bool MatchesPattern(fuzz::Request const& request, unsigned short op) {
  switch (request.type) {
    case XoDATE_T:
    case XoTIME_T:
    case XoDATIME_T:
    case XoDATIME_N_T:
    case XoTIMESPAN_T:
    case D_DATE_T:
    case D_TIMESTAMP_T:
      return (op & CmpOpNoWildcards) == 0;
    default:
      return false;
  }
}

int SignOf(int order) { return (order > 0) - (order < 0); }

}  // namespace

/// Compares arbitrary bytes both ways round: nothing is read too far, and the order of two operands
/// turns round when they change places.
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
  // Of class identifiers the first operand's null is looked for first.
  if (!MatchesPattern(request, op) && request.type != XoCLID_T) {
    fuzz::Require(SignOf(order) == -SignOf(reverse) && status == reverseStatus);
  }
  // Objects may answer with their difference, and identifiers with that of their bytes.
  bool const mayDiffer = (request.format & 15) == FormMemory || request.IsIdentifier();
  fuzz::Require(mayDiffer || (order >= -1 && order <= 1));
  return 0;
}
