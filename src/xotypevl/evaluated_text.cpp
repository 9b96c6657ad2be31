#include "src/xotypevl/evaluated_text.hpp"

#include <algorithm>

#include "xostrcmp.hpp"

namespace xo {

namespace {

RecordHeader HeaderOf(void const* record, std::size_t available, unsigned char format,
                      Generation generation) {
  unsigned char const nibble = FormNibble(format);
  if (generation == Generation::kOlder) return {ReadLength(record, available, nibble), 0, 0, true};
  RecordHeader header = ReadHeader(record, available, nibble);
  // A key has a header whatever it ends in.
  if (header.isOlder && (format & FormatIndexKey) != 0) {
    std::size_t const there = std::min(available, header.Size());
    header = {header.length, ByteAt(record, 2, there), ByteAt(record, 3, there), false};
  }
  return header;
}

/// Whether a record has a header of which all bytes are there, as most have; its text may be cut.
/// `HeaderOf` finds the same header, and those of all others.
inline bool HasWholeHeader(void const* record, std::size_t available, unsigned char nibble,
                           Generation generation) {
  if (generation == Generation::kOlder || available < kHeaderBytes) return false;
  std::size_t const size = kLengthBytes + ReadLength(record, available, nibble);
  return size >= kHeaderBytes && (size > available || *Advance(record, size - 1) != 0);
}

}  // namespace

void EvaluatedText::Read(void const* record, std::size_t available, unsigned char format,
                         Generation generation) {
  byteOrder = FormNibble(format);
  text = nullptr;
  auto const* const at = static_cast<char const*>(record);
  if (HasWholeHeader(record, available, byteOrder, generation)) [[likely]] {
    header = {ReadLength(record, available, byteOrder), LoadNarrow(at + 2), LoadNarrow(at + 3),
              false};
    declared = available - kHeaderBytes;
    start = at + kHeaderBytes;
  } else {
    header = HeaderOf(record, available, format, generation);
    std::size_t const offset = header.TextOffset();
    declared = available > offset ? available - offset : 0;
    start = at + std::min(available, offset);
  }
  bytes = std::min(header.TextBytes(), declared);
  if (bytes <= TerminatedCopy::kLocalText) return;
  text = Terminated();
  // A text for which memory runs out counts as empty.
  if (text == nullptr) bytes = 0;
}

char const* EvaluatedText::Terminated() const {
  bool const hasByteBehind = bytes < declared && header.TextOffset() + bytes < header.Size();
  bool const isClosed = !IsWide(header.codeSet) && hasByteBehind && start[bytes] == 0;
  return isClosed ? start : copy.Make(start, bytes);
}

int CompareTexts(EvaluatedText const& one, EvaluatedText const& other, unsigned short cmpOp,
                 unsigned short characters, unsigned char byteOrder) {
  return XoStrCmp(one.Header().codeSet, one.Header().language, one.Text(), other.Header().codeSet,
                  other.Header().language, other.Text(), cmpOp, static_cast<short>(characters),
                  byteOrder);
}

}  // namespace xo
