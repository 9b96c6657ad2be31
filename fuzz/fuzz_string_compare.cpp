#include "fuzz/fuzz_input.hpp"

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

/// A length field that is often true.
void PutLength(FuzzedDataProvider& input, fuzz::Buffer& buffer, std::size_t size, bool isBig) {
  if (size < 6 || input.ConsumeBool()) return;
  std::size_t const length = size - 2;
  buffer.Data()[isBig ? 1 : 0] = static_cast<unsigned char>(length);
  buffer.Data()[isBig ? 0 : 1] = static_cast<unsigned char>(length >> 8);
  if (input.ConsumeBool()) buffer.Data()[2] = input.PickValueInArray<unsigned char>({1, 253, 254});
  if (input.ConsumeBool()) buffer.Data()[size - 2] = 0;
  if (input.ConsumeBool()) buffer.Data()[size - 1] = 0xFF;
}

}  // namespace

/// Compares and hashes arbitrary bytes as stored strings, through both tables: nothing is read
/// behind the declared length, an answer comes out twice, and without a pattern it turns round with
/// its operands.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  XoTypeMgr const manager(input.ConsumeBool() ? 3 : 5);
  auto format = input.PickValueInArray<unsigned char>({0x01, 0x02, 0x81, 0x82});
  if (input.ConsumeIntegralInRange(0, 7) == 0) format = input.ConsumeIntegral<unsigned char>();
  // In memory the bytes would be objects.
  if (format == FormMemory) format = FormLittle;
  unsigned const count = input.ConsumeBool() ? 1 : input.ConsumeIntegralInRange<unsigned>(0, 1000);
  auto const cmpOp = input.ConsumeIntegral<unsigned short>();
  auto const lengthA = input.ConsumeIntegralInRange<unsigned>(1, 600);
  auto const lengthB = input.ConsumeBool() ? lengthA : input.ConsumeIntegralInRange(1u, 600u);
  bool const isBig = (format & 15) == FormBig;
  fuzz::Buffer a(input, lengthA, input.ConsumeBool());
  fuzz::Buffer b(input, lengthB, input.ConsumeBool());
  PutLength(input, a, lengthA, isBig);
  PutLength(input, b, lengthB, isBig);
  if (input.ConsumeBool()) b.CopyFrom(a, input);

  auto const compare = [&](fuzz::Buffer& one, unsigned length1, fuzz::Buffer& two, unsigned length2,
                           int& status) {
    status = 1;
    return Sign(manager.Cmp(XoSTRING_T, length1, one.Data(), length2, two.Data(), cmpOp, count,
                            format, status));
  };
  int status = 0;
  int again = 0;
  int const order = compare(a, lengthA, b, lengthB, status);
  fuzz::Require(order == compare(a, lengthA, b, lengthB, again) && status == again);
  fuzz::Require(status == 0 || status == ERR_TM_LENGTH_EXCEEDED || status == ERR_TM_NOT_SUPPORTED ||
                status == ERR_TM_FIRST_KEY_CUT || status == ERR_TM_SECOND_KEY_CUT);
  int const reverse = compare(b, lengthB, a, lengthA, again);
  bool const isUnsupported = status == ERR_TM_NOT_SUPPORTED;
  fuzz::Require(!isUnsupported || order == -1);
  // With a pattern another element may decide.
  if ((cmpOp & (CmpOpNoWildcards | CmpOpBinaryOrder)) != 0) {
    fuzz::Require(isUnsupported ? reverse == -1 && again == status
                                : order == -reverse && (status == 0) == (again == 0));
  }

  int error = 1;
  unsigned const hash = manager.Hash(XoSTRING_T, lengthA, a.Data(), count, format, error);
  fuzz::Require(error == 0 || error == ERR_TM_LENGTH_EXCEEDED);
  fuzz::Require(hash == manager.Hash(XoSTRING_T, lengthA, a.Data(), count, format, error));
  return 0;
}
