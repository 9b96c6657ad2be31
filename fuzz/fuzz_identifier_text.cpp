#include <cstring>
#include <string>

#include "fuzz/fuzz_input.hpp"

namespace {

/// Reads an identifier from the text, prints it under the same format, and reads that: every value
/// prints to a text, and null comes back as null.
template <class Identifier>
void ScanAndPrint(XoString const& text, char const* format) {
  Identifier value{};
  value.ScanFromXoString(text, format);
  XoString printed;
  value.PrintToXoString(printed, format);
  Identifier again = value;
  again.ScanFromXoString(printed, format);
  fuzz::Require(value.IsNullValue() == 0 || again.IsNullValue() != 0);
}

}  // namespace

/// Scans and prints identifiers and seals with any text under any format.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  bool const isWide = input.ConsumeBool();
  std::string const format = input.ConsumeRandomLengthString(200);
  std::string const characters = input.ConsumeRandomLengthString(200);
  XoString text(isWide ? XoString::GetDefault16CodeSet() : XoString::GetDefault8CodeSet(), 0);
  text += XoString(characters.c_str());
  ScanAndPrint<XoObjId>(text, format.c_str());
  ScanAndPrint<XoClassId>(text, format.c_str());
  ScanAndPrint<XoRef>(text, format.c_str());
  ScanAndPrint<XoLocalRef>(text, format.c_str());

  XoSeal seal{}, again{};
  seal.ScanFromXoString(text);
  XoString printed;
  seal.PrintToXoString(printed);
  again.ScanFromXoString(printed);
  fuzz::Require((seal == again) != 0);
  return 0;
}
