#include "src/xotypes/stored_text.hpp"

#include <cstdlib>
#include <cstring>
#include <utility>

#include "base/platform.hpp"
#include "xostring.hpp"

namespace xo {

namespace {

/// Cut text of this many bytes and more gets no answer.
constexpr std::size_t kTooLongBytes = 254;
/// With fewer bytes left there is no further record.
constexpr std::size_t kLeastRecord = 5;

}  // namespace

char const* TerminatedCopy::Make(char const* text, std::size_t bytes) {
  if (heap != nullptr) Free();
  char* target = local;
  if (bytes > kLocalText) {
    target = heap = static_cast<char*>(std::malloc(bytes + kZeros));
    if (heap == nullptr) {
      XoCallMemoryHandler(bytes + kZeros);
      return nullptr;
    }
  }
  if (bytes != 0) std::memcpy(target, text, bytes);
  std::memset(target + bytes, 0, kZeros);
  return target;
}

void TerminatedCopy::Free() { std::free(std::exchange(heap, nullptr)); }

OperandReader::OperandReader(void const* data, unsigned length, LengthRule rule_,
                             unsigned char format_, bool cutIsOlder_)
    : start(static_cast<char const*>(data)),
      at(start),
      left(rule_ == LengthRule::kShrinking && format_ == FormMemory ? kNoLimit : LimitOf(length)),
      rule(rule_),
      format(format_),
      cutIsOlder(cutIsOlder_) {}

OperandText OperandReader::Read() {
  if (format == FormMemory) return ReadMemory();
  if (runEnd != nullptr) return ReadRun(0);
  bool const isKey = (format & FormatIndexKey) != 0;
  RecordHeader header = ReadHeader(at, left, FormNibble(format));
  if (header.isOlder && isKey) {
    std::size_t const there = std::min(left, header.Size());
    header = {header.length, ByteAt(at, 2, there), ByteAt(at, 3, there), false};
  } else if (cutIsOlder && !isKey && left < header.Size()) {
    header.isOlder = true;
  }
  if (!header.isOlder) return ReadRecord(header);
  runEnd = at + header.Size();
  return ReadRun(kLengthBytes);
}

OperandText OperandReader::ReadMemory() {
  auto const& string = *static_cast<XoString const*>(static_cast<void const*>(at));
  step = sizeof(XoString);
  std::size_t const terminator = UnitSize(string.codeSet);
  std::size_t const bytes = string.size > terminator ? string.size - terminator : 0;
  return {string.text, bytes, string.codeSet, string.language, false, false};
}

OperandText OperandReader::ReadRecord(RecordHeader const& header) {
  step = header.Size();
  std::size_t const whole = header.TextBytes();
  std::size_t const there = left > kHeaderBytes ? std::min(whole, left - kHeaderBytes) : 0;
  // Where the end mark alone is missing the text is whole.
  bool const isCut = left < header.Size() - 1;
  OperandText read{nullptr, there, header.codeSet, header.language, isCut, false};
  if (there < whole && there >= kTooLongBytes) {
    read.isUnreadable = true;
    return read;
  }
  char const* const text = at + std::min(left, kHeaderBytes);
  // Text of one byte a character is read where it lies: the byte that closes it is there.
  bool const endsInPlace = !isCut && header.length >= kHeaderBytes &&
                           header.codeSet != kNoCodeSet && !IsWide(header.codeSet) &&
                           text[there] == 0;
  read.text = endsInPlace ? text : copy.Make(text, there);
  read.isUnreadable = read.text == nullptr;
  return read;
}

/// Reads a text of an older record, whose texts lie one behind the other. `lead` bytes stand before
/// the text that belong to its element.
OperandText OperandReader::ReadRun(std::size_t lead) {
  char const* const text = at + std::min(left, lead);
  std::size_t const inRun = static_cast<std::size_t>(runEnd - at) - lead;
  std::size_t const there = left > lead ? std::min(inRun, left - lead) : 0;
  void const* const end = there != 0 ? std::memchr(text, 0, there) : nullptr;
  bool const isCut = end == nullptr && left < static_cast<std::size_t>(runEnd - at);
  std::size_t const bytes =
      end != nullptr ? static_cast<std::size_t>(static_cast<char const*>(end) - text) : there;
  step = lead + std::min(bytes + 1, inRun);
  OperandText read{nullptr, bytes, kNoCodeSet, 0, isCut, false};
  // A terminator does not count as text that is missing.
  if (isCut && bytes + 1 < inRun && bytes >= kTooLongBytes) {
    read.isUnreadable = true;
    return read;
  }
  read.text = end != nullptr ? text : copy.Make(text, bytes);
  read.isUnreadable = read.text == nullptr;
  return read;
}

bool OperandReader::Advance() {
  at += step;
  if (left == kNoLimit) return true;
  std::size_t const passed =
      rule == LengthRule::kShrinking ? static_cast<std::size_t>(at - start) : step;
  left = left > passed ? left - passed : 0;
  return rule == LengthRule::kShrinking ? left >= kLeastRecord : left != 0;
}

}  // namespace xo
