#include <cstring>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.hpp"

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

unsigned char DiskFormat(FuzzedDataProvider& input) {
  return static_cast<unsigned char>(
      input.PickValueInArray<unsigned char>({FormLittle, FormBig}) |
      input.PickValueInArray<unsigned char>({0, FormatIndexKey, FormatNativeCodeSet}));
}

/// A record that is often what it says.
void MakeLikely(FuzzedDataProvider& input, fuzz::Buffer& record, unsigned size, bool isBig) {
  if (size <= 3 || input.ConsumeBool()) return;
  record.Data()[0] = input.PickValueInArray<unsigned char>({0x40, 0xC0, 1});
  unsigned const payload = size - 3 + input.PickValueInArray<unsigned>({0, 0, 1, 300});
  record.Data()[isBig ? 2 : 1] = static_cast<unsigned char>(payload);
  record.Data()[isBig ? 1 : 2] = static_cast<unsigned char>(payload >> 8);
  if (input.ConsumeBool()) record.Data()[size - 1] = 0;
}

template <class Text>
Text AnyText(FuzzedDataProvider& input) {
  Text text(input.ConsumeRandomLengthString(120).c_str());
  text.weighted = input.ConsumeBool() ? 0x80 : 0;
  return text;
}

/// Compares arbitrary records: an answer comes out twice, and turns round with its operands where
/// it is whole.
template <class Text>
void Compare(XoTypeMgr const& manager, char type, FuzzedDataProvider& input) {
  auto format = input.ConsumeIntegral<unsigned char>();
  if (format == FormMemory) format = FormLittle;
  bool const isBig = (format & 15) == FormBig;
  auto const lengthA = input.ConsumeIntegralInRange<unsigned>(1, 600);
  auto const lengthB = input.ConsumeBool() ? lengthA : input.ConsumeIntegralInRange(1u, 600u);
  unsigned const count = input.ConsumeBool() ? 1 : input.ConsumeIntegralInRange<unsigned>(0, 1000);
  auto const cmpOp = input.ConsumeBool() ? static_cast<unsigned short>(0)
                                         : input.ConsumeIntegral<unsigned short>();
  fuzz::Buffer a(input, lengthA, input.ConsumeBool());
  fuzz::Buffer b(input, lengthB, input.ConsumeBool());
  MakeLikely(input, a, lengthA, isBig);
  MakeLikely(input, b, lengthB, isBig);
  if (input.ConsumeBool()) b.CopyFrom(a, input);
  auto const compare = [&](fuzz::Buffer& one, unsigned length1, fuzz::Buffer& two, unsigned length2,
                           int& status) {
    status = 1;
    int const order = Sign(
        manager.Cmp(type, length1, one.Data(), length2, two.Data(), cmpOp, count, format, status));
    fuzz::Require(status == 0 || status == ERR_TM_LENGTH_EXCEEDED ||
                  status == ERR_TM_NOT_SUPPORTED);
    return order;
  };
  int status = 0;
  int again = 0;
  int const order = compare(a, lengthA, b, lengthB, status);
  fuzz::Require(order == compare(a, lengthA, b, lengthB, again) && status == again);
}

/// Reads a record into texts, stores them again and makes keys of both.
template <class Text>
void Translate(XoTypeMgr const& manager, char type, FuzzedDataProvider& input) {
  unsigned char const from = input.PickValueInArray<unsigned char>({FormLittle, FormBig});
  auto const length = input.ConsumeIntegralInRange<unsigned>(1, 600);
  auto const room = input.ConsumeIntegralInRange<unsigned>(0, 800);
  auto const count = input.ConsumeIntegralInRange<unsigned>(0, 10);
  unsigned char const to = DiskFormat(input);
  fuzz::Buffer source(input, length, input.ConsumeBool());
  MakeLikely(input, source, length, from == FormBig);
  fuzz::Buffer target(input, room, input.ConsumeBool());
  manager.Translate(type, target.Data(), to, room, source.Data(), from, length, count);
  std::vector<Text> texts(count);
  manager.Translate(type, texts.data(), FormMemory, 0, source.Data(), from, length, count);
  manager.Translate(type, target.Data(), to, room, texts.data(), FormMemory, 0, count);
  unsigned const size = manager.DiskLenGet(type, texts.data(), from, count, FormMemory);
  fuzz::Buffer stored(input, size, false);
  fuzz::Require(manager.Store(type, stored.Data(), texts.data(), from, count) == size);
  std::vector<Text> back(count);
  fuzz::Require(manager.Load(type, back.data(), stored.Data(), from, count) == size);
  for (unsigned index = 0; index < count; ++index) {
    fuzz::Require(std::string(back[index].StrGet()) == texts[index].StrGet());
  }
}

/// Keys, order and text of values in memory: keys order as their texts do.
template <class Text>
void Values(XoTypeMgr const& manager, char type, FuzzedDataProvider& input) {
  Text values[2] = {AnyText<Text>(input), AnyText<Text>(input)};
  constexpr unsigned char kKey = FormatIndexKey | FormLittle;
  unsigned sizes[2];
  std::vector<std::vector<unsigned char>> keys;
  for (unsigned index = 0; index < 2; ++index) {
    sizes[index] = manager.DiskLenGet(type, &values[index], kKey, 1, FormMemory);
    keys.emplace_back(sizes[index]);
    fuzz::Require(manager.Translate(type, keys[index].data(), kKey, sizes[index], &values[index],
                                    FormMemory, 0, 1) == sizes[index]);
  }
  int status = 1;
  int const byKeys = Sign(manager.Cmp(type, sizes[0], keys[0].data(), sizes[1], keys[1].data(),
                                      CmpOpNoWildcards, 1, kKey, status));
  fuzz::Require(status == 0);
  fuzz::Require(byKeys == (values[0] < values[1] ? -1 : values[0] > values[1] ? 1 : 0));

  std::string const format = input.ConsumeRandomLengthString(60);
  XoString out;
  manager.PrintToXoString(type, out, &values[0], format.c_str(), 1);
  fuzz::Require(out.size <= XoString::kMaxSize);
  manager.PrintToXoString(type, out, &values[0], nullptr, 1);
  Text back;
  manager.ScanFromXoString(type, &back, out, nullptr, 1);
  fuzz::Require(std::string(back.StrGet()) == values[0].StrGet());
}

template <class Text>
void Run(char type, FuzzedDataProvider& input) {
  XoTypeMgr const manager;
  using Way = void(XoTypeMgr const&, char, FuzzedDataProvider&);
  input.PickValueInArray<Way*>({Compare<Text>, Translate<Text>, Values<Text>})(manager, type,
                                                                               input);
}

/// Prints a string of any code set, sort orders as well, under any format.
void PrintString(FuzzedDataProvider& input) {
  auto const codeSet = input.PickValueInArray<unsigned char>({0, 1, 5, 253, 254});
  auto const language = input.ConsumeIntegral<unsigned char>();
  std::string text = input.ConsumeRandomLengthString(80);
  text += std::string(2 + text.size() % 2, '\0');
  std::vector<unsigned short> units(text.size() / 2);
  std::memcpy(units.data(), text.data(), text.size());
  XoString value(1, language);
  if (codeSet > 224) {
    value = units.data();
  } else {
    value = text.c_str();
  }
  value.codeSet = codeSet;
  value.language = language;
  XoString out(input.PickValueInArray<unsigned char>({0, 1, 5, 253}), language);
  std::string const format =
      input.PickValueInArray<char const*>({"", "%1M", "%2M", "%3M", "%4M", "%s"}) +
      input.ConsumeRandomLengthString(60);
  XoTypeMgr().PrintToXoString(XoSTRING_T, out, &value, format.c_str(), 1);
  fuzz::Require(out.size <= XoString::kMaxSize);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0:
      Run<XoIString>(XoISTRING_T, input);
      break;
    case 1:
      Run<XoCaseIString>(XoCASEISTRING_T, input);
      break;
    default:
      PrintString(input);
      break;
  }
  return 0;
}
