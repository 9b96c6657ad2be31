#include "fuzz/fuzz_text.hpp"

namespace {

void RequireSound(XoString const& string) {
  unsigned const unit = string.codeSet > 224 ? 2 : 1;
  if (string.text == nullptr) {
    fuzz::Require(string.size == 0 && string.Len() == 0);
    return;
  }
  fuzz::Require(string.size <= XoString::kMaxSize);
  fuzz::Require((string.Len() + 1u) * unit <= string.size);
}

XoString MakeString(FuzzedDataProvider& input) {
  fuzz::Text text(input);
  XoString string(static_cast<unsigned char>(text.unit == 2 ? 253 : 1), text.language);
  if (text.unit == 2) {
    // Through the interface that takes 16-bit units, which asks for their alignment.
    std::u16string aligned(text.length, 0);
    std::memcpy(aligned.data(), text.Get(), 2 * text.length);
    string =
        XoString(static_cast<unsigned short const*>(static_cast<void const*>(aligned.c_str())));
  } else {
    string = text.Get();
  }
  string.SetCodeSet(text.codeSet);
  string.language = text.language;
  return string;
}

void Edit(FuzzedDataProvider& input, XoString& string, XoString const& other) {
  auto const position = input.ConsumeIntegral<unsigned short>();
  auto const count = input.ConsumeIntegral<short>();
  auto const near = static_cast<unsigned short>(position % 300);
  switch (input.ConsumeIntegralInRange(0, 20)) {
    case 0:
      string.Cut(near, count);
      break;
    case 1:
      string.Insert(other, near);
      break;
    case 2:
      string.Replace(other, near);
      break;
    case 3:
      string.ReplaceAll(other.Left(2), other, near);
      break;
    case 4:
      string.Expand(position, static_cast<char>(count));
      break;
    case 5:
      string.Fill(position, static_cast<unsigned short>(count));
      break;
    case 6:
      string.Trim();
      break;
    case 7:
      string.ToUpper();
      break;
    case 8:
      string.ToLower();
      break;
    case 9:
      string += other;
      break;
    case 10:
      string << position;
      break;
    case 11:
      string.MapToCodeSet(input.ConsumeIntegral<unsigned char>());
      break;
    case 12:
      string.SetCodeSet(input.ConsumeIntegral<unsigned char>());
      break;
    case 13:
      string.SetCodeSetCode(input.ConsumeIntegral<unsigned char>());
      break;
    case 14:
      string.CopyMapped(other, input.ConsumeIntegral<unsigned char>(), count);
      break;
    case 15:
      string = string.Copy(near, count);
      break;
    case 16:
      string[count] = XoChar(static_cast<char>(position));
      break;
    case 17:
      // A search compares anew at each place, with a star as far as the end: in long texts that
      // would take minutes.
      string.Left(1000).Find(other.Left(16), near, static_cast<unsigned short>(count));
      break;
    case 18:
      string.ReplaceAll('a', 'b', near);
      break;
    case 19:
      string += string;
      break;
    default:
      string = string + other;
      break;
  }
}

}  // namespace

/// A row of edits, conversions and readings of strings of any code sets: every string stays sound,
/// and UTF-8 is decoded and encoded within the bytes given.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  XoString string = MakeString(input);
  XoString const other = MakeString(input);
  for (int edits = input.ConsumeIntegralInRange(0, 6); edits > 0; --edits) {
    Edit(input, string, other);
    RequireSound(string);
  }
  int number = 0;
  string.Strtol(number);
  XoString item;
  unsigned short place = 0;
  for (unsigned element = 0; XoSplitList(string, item, other.Left(1), place) == 0; ++element) {
    RequireSound(item);
    fuzz::Require(element <= 65535u);
    if (place == 0) break;
  }
  auto const bytesThere = input.ConsumeIntegralInRange<int>(0, 600);
  fuzz::Buffer room(input, static_cast<std::size_t>(bytesThere), false);
  auto* const bytes = static_cast<char*>(static_cast<void*>(room.Data()));
  XoString2XoMBS(other, bytes, bytesThere);
  XoString decoded;
  XoMBS2XoString(bytes, decoded, bytesThere);
  RequireSound(decoded);
  return 0;
}
