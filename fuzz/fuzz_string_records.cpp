#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.hpp"

/// Stored strings of arbitrary bytes, and strings in memory, through every way of the string rows
/// of both tables that is told a length: nothing is touched outside of it, and strings that come
/// out are sound.
namespace {

constexpr char kString = 11;
constexpr unsigned kMostStrings = 5;
/// A longer key that is cut ends the process, as promised.
constexpr std::size_t kLongestCutKey = 259;

int PassOver(char const*, char const*, int) { return 0; }

XoString AnyString(FuzzedDataProvider& input) {
  auto const codeSet = input.ConsumeBool()
                           ? input.PickValueInArray<unsigned char>({0, 1, 5, 253, 254, 255})
                           : input.ConsumeIntegral<unsigned char>();
  auto const language = input.ConsumeIntegral<unsigned char>();
  std::string const bytes = input.ConsumeRandomLengthString(300);
  XoString string;
  if (codeSet > 224) {
    std::vector<unsigned short> units(bytes.size() / 2 + 1);
    std::memcpy(units.data(), bytes.data(), bytes.size() / 2 * 2);
    units.back() = 0;
    string = units.data();
  } else {
    string = bytes.c_str();
  }
  string.codeSet = codeSet;
  string.language = language;
  return string;
}

unsigned char DiskFormat(FuzzedDataProvider& input) {
  return static_cast<unsigned char>((input.ConsumeIntegral<unsigned char>() & 0xE0) |
                                    (input.ConsumeBool() ? FormLittle : FormBig));
}

void RequireSound(XoString const& string) {
  unsigned const unit = string.codeSet > 224 ? 2 : 1;
  fuzz::Require(string.text != nullptr || string.size == 0);
  fuzz::Require(string.text == nullptr || (string.Len() + 1u) * unit <= string.size);
}

bool SameText(XoString const& a, XoString const& b) {
  std::size_t const unit = a.codeSet > 224 ? 2 : 1;
  return a.codeSet == b.codeSet && a.language == b.language && a.Len() == b.Len() &&
         std::memcmp(a.StrGet(), b.StrGet(), a.Len() * unit) == 0;
}

void MemoryToDisk(XoTypeMgr const& manager, FuzzedDataProvider& input) {
  std::vector<XoString> strings(input.ConsumeIntegralInRange<unsigned>(0, kMostStrings));
  for (XoString& string : strings) string = AnyString(input);
  auto const count = static_cast<unsigned>(strings.size());
  unsigned char const format = DiskFormat(input);
  auto const room = input.ConsumeIntegralInRange<unsigned>(0, 800);
  fuzz::Buffer target(input, room, input.ConsumeBool());
  fuzz::Require(manager.Translate(kString, target.Data(), format, room, strings.data(), FormMemory,
                                  0, count) <= room);

  if (count == 0) return;
  auto const plain = static_cast<unsigned char>(format & 15);
  unsigned const size = StringSizeGet(strings.data(), FormMemory, plain, count);
  fuzz::Buffer stored(input, size, input.ConsumeBool());
  fuzz::Require(StringStore(stored.Data(), strings.data(), plain, count) == size);
  std::vector<XoString> back(count);
  fuzz::Require(StringLoad(back.data(), stored.Data(), plain, count) == size);
  for (unsigned index = 0; index < count; ++index) {
    fuzz::Require(SameText(back[index], strings[index]));
  }
}

void DiskToMemory(XoTypeMgr const& manager, FuzzedDataProvider& input) {
  unsigned char const format = DiskFormat(input);
  auto const count = input.ConsumeIntegralInRange<unsigned>(0, kMostStrings);
  auto const length = input.ConsumeIntegralInRange<unsigned>(1, kLongestCutKey);
  fuzz::Buffer source(input, length, input.ConsumeBool());
  std::vector<XoString> strings(count);
  manager.Translate(kString, strings.data(), FormMemory, 0, source.Data(), format, length, count);
  for (XoString const& string : strings) RequireSound(string);

  MemFile file(source.Data(), length);
  file.Seek(static_cast<int>(input.ConsumeIntegralInRange<unsigned>(0, length)), 0, nullptr, 1);
  manager.DiskLenGetFromMemFile(kString, &file, format, count);
}

void DiskToDisk(XoTypeMgr const& manager, FuzzedDataProvider& input) {
  unsigned char const from = DiskFormat(input);
  unsigned char const to = input.ConsumeBool() ? from : DiskFormat(input);
  auto const count = input.ConsumeIntegralInRange<unsigned>(0, kMostStrings);
  auto const length = input.ConsumeIntegralInRange<unsigned>(0, 600);
  auto const room = input.ConsumeIntegralInRange<unsigned>(0, 800);
  fuzz::Buffer target(input, room, input.ConsumeBool());
  bool const skew = input.ConsumeBool();
  fuzz::Buffer source(input, length, skew);
  std::vector<unsigned char> const before(source.Data(), source.Data() + length);
  fuzz::Require(manager.Translate(kString, target.Data(), to, room, source.Data(), from, length,
                                  count) <= room);
  fuzz::Require(std::equal(before.begin(), before.end(), source.Data()));
}

void StepInPlace(XoTypeMgr const& manager, FuzzedDataProvider& input) {
  auto const size = input.ConsumeIntegralInRange<unsigned>(0, 600);
  auto const code = input.ConsumeBool() ? kNextValue : kNextValueToo;
  fuzz::Buffer key(input, size, input.ConsumeBool());
  manager.GetValue(kString, key.Data(), size, FormatIndexKey | FormLittle, code);
}

void MemoryToMemory(XoTypeMgr const& manager, FuzzedDataProvider& input) {
  XoString string = AnyString(input);
  alignas(XoString) unsigned char raw[sizeof(XoString)];
  manager.Translate(kString, raw, FormMemory, 0, &string, FormMemory, 0, 1);
  auto* const copy = std::launder(static_cast<XoString*>(static_cast<void*>(raw)));
  fuzz::Require(SameText(*copy, string));
  std::destroy_at(copy);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  XoPlatform platform = {};
  platform.assertFailed = PassOver;
  XoExchangePlatform(platform);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  XoTypeMgr const manager(input.ConsumeBool() ? 3 : 5);
  using Way = void(XoTypeMgr const&, FuzzedDataProvider&);
  input.PickValueInArray<Way*>(
      {MemoryToDisk, DiskToMemory, DiskToDisk, StepInPlace, MemoryToMemory})(manager, input);
  return 0;
}
