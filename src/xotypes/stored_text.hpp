#pragma once

#include <algorithm>
#include <cstddef>

#include "base/format.hpp"
#include "src/xostring/text_units.hpp"
#include "xostringstore.hpp"

/// The records in which strings are stored, as they are told apart and read where they lie.
namespace xo {

/// The terminator and the end mark, which close a record with a header.
inline constexpr std::size_t kClosingBytes = 2;
inline constexpr unsigned char kEndMark = 0xFF;
/// Of an empty text.
inline constexpr std::size_t kEmptyRecordBytes = kHeaderBytes + kClosingBytes;
/// In the language byte of a key: it ends where the group of the text changes.
inline constexpr unsigned char kCutAtGroup = 0x80;

/// A length that stands for no limit.
inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

/// `length` as operations declare it: 0 is not limited.
constexpr std::size_t LimitOf(unsigned length) { return length == 0 ? kNoLimit : length; }

/// The byte at `offset` of a record of which `available` bytes are there; 0 behind them.
inline unsigned char ByteAt(void const* record, std::size_t offset, std::size_t available) {
  return offset < available ? LoadBytes<unsigned char>(Advance(record, offset))
                            : static_cast<unsigned char>(0);
}

/// The length field of a record.
inline unsigned short ReadLength(void const* record, std::size_t available, unsigned char nibble) {
  if (available >= kLengthBytes) return InByteOrder(LoadBytes<unsigned short>(record), nibble);
  unsigned char const low = ByteAt(record, 0, available);
  unsigned char const high = ByteAt(record, 1, available);
  return InByteOrder(static_cast<unsigned short>(low | high << 8), nibble);
}

/// What a record says of itself. Bytes that are not there read as 0.
struct RecordHeader {
  unsigned short length;  ///< bytes behind the length field
  unsigned char codeSet;
  unsigned char language;
  bool isOlder;  ///< without code set and language, one length for all texts

  std::size_t Size() const { return kLengthBytes + length; }
  std::size_t TextOffset() const { return isOlder ? kLengthBytes : kHeaderBytes; }
  /// Bytes of text, terminator not counted.
  std::size_t TextBytes() const {
    std::size_t const besides = isOlder ? 1 : 4;
    return length > besides ? length - besides : 0;
  }
};

/// Reads the header of a record of which `available` bytes are there. One that is not there whole
/// counts as one with a header.
inline RecordHeader ReadHeader(void const* record, std::size_t available, unsigned char nibble) {
  unsigned short const length = ReadLength(record, available, nibble);
  std::size_t const last = std::size_t{length} + 1;
  if (last < available && ByteAt(record, last, available) == 0) return {length, 0, 0, true};
  available = std::min(available, last + 1);
  if (available >= kHeaderBytes) {
    return {length, LoadBytes<unsigned char>(Advance(record, 2)),
            LoadBytes<unsigned char>(Advance(record, 3)), false};
  }
  return {length, ByteAt(record, 2, available), ByteAt(record, 3, available), false};
}

/// The code set in which text of `codeSet` is written under `format`.
inline unsigned char EffectiveCodeSet(unsigned char codeSet, unsigned char format) {
  if (codeSet == kSortOrderSet) return kSortOrderSet;
  // Text that has no code set has none to drop.
  if ((format & FormatDropCodeSet) != 0 && codeSet != kNoCodeSet) return kNoCodeSet;
  if ((format & FormatNativeCodeSet) != 0) return CodeSetOrNative(codeSet);
  return codeSet;
}

/// Whether text in an effective code set under `format` becomes sort orders.
inline bool BecomesKey(unsigned char effectiveCodeSet, unsigned char format) {
  return (format & FormatIndexKey) != 0 && effectiveCodeSet != kNoCodeSet &&
         effectiveCodeSet != kSortOrderSet;
}

/// A target of limited room, written from its start; what does not fit is counted and dropped.
class BoundedTarget {
 public:
  BoundedTarget(void* target_, std::size_t room_)
      : target(static_cast<char*>(target_)), room(room_) {}

  void Write(void const* bytes, std::size_t count) {
    std::size_t const fits = position < room ? std::min(count, room - position) : 0;
    if (fits != 0) std::memcpy(target + position, bytes, fits);
    position += count;
  }
  void WriteByte(unsigned char byte) { Write(&byte, 1); }
  void WriteUnit(unsigned short unit, unsigned char nibble) {
    unsigned short const stored = InByteOrder(unit, nibble);
    Write(&stored, sizeof stored);
  }

  /// Bytes given so far, those dropped included.
  std::size_t Given() const { return position; }
  /// Bytes written.
  std::size_t Written() const { return std::min(position, room); }

 private:
  char* target;
  std::size_t room;
  std::size_t position = 0;
};

/// A copy of text that ends in zeros, which stored text need not. Short ones need no heap.
class TerminatedCopy {
 public:
  TerminatedCopy() = default;
  TerminatedCopy(TerminatedCopy const&) = delete;
  TerminatedCopy& operator=(TerminatedCopy const&) = delete;
  ~TerminatedCopy() {
    if (heap != nullptr) Free();
  }

  /// Text that still fits with the terminator that it is given.
  static constexpr std::size_t kLocalText = 254;

  /// A copy of `bytes` bytes of `text`, with a terminator of any width behind it, in place of the
  /// one made before. Null when memory has run out and `XoCallMemoryHandler` has returned.
  char const* Make(char const* text, std::size_t bytes);

 private:
  // An odd byte at the end of wide text makes half a unit, so two whole zero units need three
  // bytes.
  static constexpr std::size_t kZeros = 4;

  void Free();

  char* heap = nullptr;
  char local[kLocalText + kZeros];
};

/// The text of one element of an operand, ready to be read as orders.
struct OperandText {
  char const* text;   ///< ends in a terminator; null in memory form where there is none
  std::size_t bytes;  ///< of text that are there
  unsigned char codeSet;
  unsigned char language;
  bool isCut;         ///< the text goes on behind what is there
  bool isUnreadable;  ///< it is cut and too long to be answered for, or memory has run out
};

/// How a declared length ends an array.
enum class LengthRule {
  /// As comparisons have it: in memory form not at all; otherwise it shrinks, behind each element,
  /// by the way from the very first byte, so that from the third element on it shrinks faster than
  /// the data, and ends with fewer bytes than the least record has. Their answers depend on it.
  kShrinking,
  /// Where it says.
  kPlain,
};

/// Walks the texts of an operand of a comparison or hash, in the form that they are in.
class OperandReader {
 public:
  /// `length` 0 is not limited. `cutIsOlder`: a record that is not there whole has no header.
  OperandReader(void const* data, unsigned length, LengthRule rule, unsigned char format,
                bool cutIsOlder);

  /// The present text, which lives until the next call.
  OperandText Read();
  /// Goes on behind the text last read. False: the declared length is used up.
  bool Advance();

 private:
  OperandText ReadMemory();
  OperandText ReadRecord(RecordHeader const& header);
  OperandText ReadRun(std::size_t lead);

  char const* const start;
  char const* at;
  /// Bytes that count as there from `at` on.
  std::size_t left;
  /// End of the run of texts of an older record, once one has been met.
  char const* runEnd = nullptr;
  std::size_t step = 0;
  LengthRule const rule;
  unsigned char const format;
  bool const cutIsOlder;
  TerminatedCopy copy;
};

}  // namespace xo
