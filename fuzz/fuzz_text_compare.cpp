#include "fuzz/fuzz_text.hpp"

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

/// Reads all orders of a text; there are at most as many as characters and their expansions.
void Walk(fuzz::Text& text, unsigned char byteOrder) {
  XoStringIterator iterator(text.Get(), text.codeSet, text.language, byteOrder);
  unsigned read = 0;
  while (iterator.GetNextOrder(read % 2) != 0) {
    fuzz::Require(++read <= text.length * (XoWCharList::kCapacity + 1));
  }
  fuzz::Require(iterator.GetNextOrder(1) == 0);
}

}  // namespace

/// Compares, matches, walks and hashes texts of any code sets: nothing is read behind a terminator,
/// and without a pattern the two ways round agree.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  fuzz::Text first(input);
  fuzz::Text second(input);
  auto const cmpOp = input.ConsumeIntegral<unsigned short>();
  auto const count = input.ConsumeBool() ? short{-1} : input.ConsumeIntegral<short>();
  unsigned char const byteOrder = fuzz::AnyByteOrder(input);
  int position = 0;
  int* const positional = input.ConsumeBool() ? &position : nullptr;

  int const forward = XoStrCmp(first.codeSet, first.language, first.Get(), second.codeSet,
                               second.language, second.Get(), cmpOp, count, byteOrder, positional);
  int const backward = XoStrCmp(second.codeSet, second.language, second.Get(), first.codeSet,
                                first.language, first.Get(), cmpOp, count, byteOrder, positional);
  bool const noPattern = (cmpOp & 0x0110) != 0;
  if (noPattern) fuzz::Require(Sign(forward) == -Sign(backward));

  Walk(first, byteOrder);
  unsigned const hash = HashString(first.codeSet, first.language, first.Get(), count, byteOrder);
  fuzz::Require(hash == HashString(first.codeSet, first.language, first.Get(), count, byteOrder));
  unsigned short offset = 0;
  FindWildcard(second.codeSet, second.language, second.Get(), input.ConsumeBool(),
               input.ConsumeIntegral<unsigned short>(), &offset, byteOrder);
  XoStringIterator estimated(first.Get(), first.codeSet, first.language, byteOrder);
  StringPrefixEstimate(estimated, input.ConsumeIntegral<unsigned short>());
  if (first.unit == 1 && second.unit == 1) BinaryWildcardMatch(first.Get(), second.Get(), count);
  return 0;
}
