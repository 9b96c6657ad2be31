#include "src/xotypevl/bound_key.hpp"

#include <algorithm>
#include <cstring>

#include "base/platform.hpp"
#include "src/xostring/order_keys.hpp"
#include "src/xotypes/string_rows.hpp"
#include "xoidxbounds.hpp"

namespace xo {

namespace {

constexpr unsigned short kHighestOrder = 0xFFFE;
constexpr unsigned char kHighestByte = 0xFF;

constexpr std::size_t RoundedUpToEven(std::size_t size) { return size + size % 2; }

/// Frame of a record: what stands before its text, and behind it.
struct RecordFrame {
  std::size_t head;
  std::size_t tail;
  std::size_t Size() const { return head + tail; }
};

constexpr RecordFrame FrameOf(Generation generation) {
  return generation == Generation::kOlder ? RecordFrame{kLengthBytes, 1}
                                          : RecordFrame{kHeaderBytes, kClosingBytes};
}

/// Bytes that the record of a value takes, or that of a pattern up to its wildcard.
std::size_t SizeOf(BoundSource const& source) {
  std::size_t const text = source.IsPattern() ? source.wildcardPlace : source.text.Bytes();
  return FrameOf(source.generation).Size() + text;
}

std::size_t SizeOfHigh(BoundSource const& source) {
  std::size_t const size = SizeOf(source);
  if (source.IsPattern()) return size + UnitSize(source.text.Header().codeSet);
  // An empty text needs room for the highest unit too.
  bool const isEmpty = size == FrameOf(source.generation).Size();
  std::size_t const highest = source.generation == Generation::kOlder ? 1 : 2;
  return isEmpty && source.skipsOrders ? size + highest : size;
}

/// A key under construction.
class KeyDraft {
 public:
  /// The key of the value, cut to a record of `wanted` bytes, in a buffer of `keyLimit` at least.
  KeyDraft(BoundSource const& source, ValueKey const& key, std::size_t wanted, std::size_t keyLimit)
      : frame(FrameOf(source.generation)),
        generation(source.generation),
        nibble(FormNibble(source.format)),
        isTooLong(wanted > kLongestBound),
        size(std::min(wanted, kLongestBound)),
        capacity(RoundedUpToEven(std::max(size, keyLimit))),
        record(static_cast<unsigned char*>(AllocateBound(static_cast<unsigned>(capacity)))) {
    Fill(source, key);
  }

  bool HasNoCodeSet() const { return generation == Generation::kOlder || record[2] == kNoCodeSet; }
  std::size_t Width() const { return HasNoCodeSet() ? 1 : UnitSize(record[2]); }
  std::uint8_t Size() const { return static_cast<std::uint8_t>(size); }
  void* Record() const { return record; }
  unsigned short CharactersOfSize() const {
    return static_cast<unsigned short>((size - frame.head) >> (Width() == 2 ? 1 : 0));
  }
  /// Whether there are more orders than there is room for.
  bool IsUnfinished() const { return isUnfinished; }
  /// Whether it is cut, and stays so.
  bool IsOpen() const { return isOpen; }

  /// Cuts orders off from the first wildcard on. There is one where characters before it have
  /// become fewer orders.
  void EndAtWildcard() {
    if (Width() != 2) return;
    for (std::size_t place = frame.head; place + 2 <= end; place += 2) {
      unsigned short const order = InByteOrder(LoadBytes<unsigned short>(record + place), nibble);
      if (order != AsteriskOrder() && order != QuestionOrder()) continue;
      end = place;
    }
  }

  /// Takes and gives bits of every letter.
  void Respell(unsigned short taken, unsigned short given) {
    bool const isTabled = (record[3] & ~kCutAtGroup) < kUntabledGroup;
    if ((taken | given) == 0 || HasNoCodeSet() || !isTabled) return;
    for (std::size_t place = frame.head; place + 2 <= end; place += 2) {
      unsigned short const order = InByteOrder(LoadBytes<unsigned short>(record + place), nibble);
      if (order < kFirstLetterOrder || order >= kFirstHanOrder) continue;
      auto const respelled = static_cast<unsigned short>((order & ~taken) | given);
      StoreBytes(record + place, InByteOrder(respelled, nibble));
    }
  }

  /// Ends the text in the highest unit: behind it where there is room, or else in place of its last
  /// one.
  void EndInHighest() {
    std::size_t const width = Width();
    end = end + width <= limit ? end + width : std::max(end, frame.head + width);
    if (width == 1) {
      record[end - 1] = kHighestByte;
    } else {
      StoreBytes(record + end - width, InByteOrder(kHighestOrder, nibble));
    }
  }

  /// Leaves a key that is unfinished cut, with as many orders as its size has room for.
  void StayCut() {
    isOpen = true;
    end = written;
  }

  /// Closes the record behind its text, unless it is too long for that or is to stay cut.
  void Close(int line) {
    isOpen = isOpen || (isTooLong && end + frame.tail > size);
    if (isOpen) return;
    if (end + frame.tail > kLongestBound) XOLA_assert("actualLen <= 254", "src\\xotypevl", line);
    ClearBehindText();
    if (generation == Generation::kOlder) return;
    StoreBytes(record, InByteOrder(static_cast<unsigned short>(end), nibble));
    record[end + 1] = kEndMark;
  }

 private:
  void Fill(BoundSource const& source, ValueKey const& key) {
    bool const isOlder = generation == Generation::kOlder;
    // Two bytes more than the text may have, by which a key shows whether it ends there.
    written = std::min(key.Size(), isTooLong ? size : RoundedUpToEven(size));
    // Not `memcpy`: of few bytes known to be few the compiler makes a string instruction, which
    // takes longer than a call.
    std::copy_n(key.Bytes(), written, record);
    if (written != capacity) std::memset(record + written, 0, capacity - written);
    RecordHeader const& header = source.text.Header();
    std::size_t const length = ReadLength(record, written, nibble);
    bool const isBuilt = !HasNoCodeSet() && header.codeSet != kSortOrderSet;
    isClosed = !isOlder && length + kLengthBytes <= written;
    isUnfinished = isBuilt && !isClosed;
    // An order that begins before the end of the room is there whole.
    limit = isTooLong && !isClosed ? size : size - frame.tail;
    if (Width() == 2) limit = RoundedUpToEven(limit);
    std::size_t const ending = isOlder ? length + kLengthBytes - 1 : length;
    end = std::max(std::min({ending, written, limit}), frame.head);
  }

  void ClearBehindText() {
    if (written == end + kClosingBytes) {
      // As it mostly is.
      StoreBytes(record + end, static_cast<unsigned short>(0));
    } else if (written > end) {
      std::memset(record + end, 0, written - end);
    }
  }

  RecordFrame const frame;
  Generation const generation;
  unsigned char const nibble;
  bool const isTooLong;
  std::size_t const size;
  std::size_t const capacity;
  unsigned char* const record;
  std::size_t written = 0;
  std::size_t limit = 0;  ///< of the room for text
  std::size_t end = 0;    ///< of the text
  bool isClosed = false;
  bool isUnfinished = false;
  bool isOpen = false;
};

}  // namespace

void ValueKey::Make(BoundSource const& source) {
  if (written != 0) return;
  auto* const translate =
      source.generation == Generation::kOlder ? OlderStringTranslate : StringTranslate;
  auto const target = static_cast<unsigned char>(source.format | FormatIndexKey);
  std::size_t const room = RoundedUpToEven(std::min(SizeOfHigh(source), kLongestBound));
  std::memset(bytes, 0, kHeaderBytes);
  written = translate(bytes, target, static_cast<unsigned>(room), source.value, source.format,
                      static_cast<unsigned>(source.text.Header().Size()), 1);
}

bool ValueKey::MakePlain(BoundSource const& source) {
  RecordHeader const& header = source.text.Header();
  bool const isKept = EffectiveCodeSet(header.codeSet, source.format) == header.codeSet;
  bool const isKey = (source.format & FormatIndexKey) != 0 || (header.language & kCutAtGroup) != 0;
  if (header.isOlder || !isKept || isKey || IsWide(header.codeSet)) return false;
  std::size_t const room = RoundedUpToEven(std::min(SizeOfHigh(source), kLongestBound));
  written = BuildPlainKey(bytes, room, FormNibble(source.format), header.codeSet, header.language,
                          source.text.Text(), source.text.Bytes());
  return written != 0;
}

BuiltBound BuildLowBound(BoundSource const& source, ValueKey const& key, std::uint8_t keyLimit) {
  KeyDraft draft(source, key, SizeOf(source), keyLimit);
  if (source.hasWildcard) draft.EndAtWildcard();
  draft.Respell(source.accentMask, source.caseMask);
  draft.Close(823);
  return {draft.Record(), draft.Size(), static_cast<unsigned short>(source.wildcard)};
}

BuiltBound BuildHighBound(BoundSource const& source, ValueKey const& key, std::uint8_t keyLimit) {
  KeyDraft draft(source, key, SizeOfHigh(source), keyLimit);
  if (source.hasWildcard) draft.EndAtWildcard();
  bool const endsInHighest = source.IsPattern() || source.skipsOrders;
  // A closed key stands before what it is a part of.
  if (!endsInHighest && draft.IsUnfinished()) draft.StayCut();
  draft.Respell(source.caseMask, source.accentMask);
  if (endsInHighest) draft.EndInHighest();
  draft.Close(964);
  auto characters = static_cast<unsigned short>(source.wildcard);
  if (source.IsPattern()) ++characters;
  if (draft.IsOpen()) characters = draft.CharactersOfSize();
  return {draft.Record(), draft.Size(), characters};
}

}  // namespace xo
