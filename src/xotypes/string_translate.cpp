#include <atomic>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "base/allocation.hpp"
#include "base/config.hpp"
#include "base/platform.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/stored_text.hpp"
#include "src/xotypes/string_rows.hpp"

namespace xo {

namespace {

constexpr char const* kFile = "src\\xotypes";

/// What a translation is of.
struct Source {
  void const* bytes;
  unsigned char format;
  std::size_t length;  ///< bytes there, in disk form
  unsigned count;
  bool IsMemory() const { return HasMemoryBit(format); }
  XoString const* Strings() const { return static_cast<XoString const*>(bytes); }
};

/// Reads what the first element of a source is of; of strings in memory the code set alone.
RecordHeader HeaderOf(Source const& source) {
  if (source.IsMemory()) {
    return {0, source.count != 0 ? source.Strings()->codeSet : kNoCodeSet, 0, false};
  }
  return ReadHeader(source.bytes, source.length, FormNibble(source.format));
}

// Into memory.

/// The longest keys that are read from cut bytes, and a zero behind them.
constexpr std::size_t kCutKeyBuffer = 260;

/// Reads keys of which the last may be cut. Returns the bytes passed, and those of empty records
/// for the strings that none is left for.
unsigned LoadCutKeys(XoString* target, Source const& source, RecordHeader const& first) {
  std::size_t const length = source.length;
  if (length >= kCutKeyBuffer) {
    XOLA_assert("sourceLength < 260", kFile, 1650);
    std::abort();
  }
  unsigned char const nibble = FormNibble(source.format);
  auto const* const bytes = static_cast<char const*>(source.bytes);
  unsigned char codeSet = first.codeSet;
  unsigned char language = first.language;
  // Fewer bytes than these have no further key.
  constexpr std::size_t kLeastKey = 5;
  std::size_t position = 0;
  unsigned index = 0;
  while (index < source.count && length != kLeastKey && length != 0 &&
         (index == 0 || position + kLeastKey < length)) {
    std::size_t const left = length - position;
    std::size_t keyLength = ReadLength(bytes + position, left, nibble);
    if (keyLength > left) keyLength = left;
    codeSet = ByteAt(bytes + position, 2, left);
    language = ByteAt(bytes + position, 3, left);
    std::size_t const textBytes = keyLength > kHeaderBytes ? keyLength - kHeaderBytes : 0;
    XoString& string = target[index++];
    string.Destroy();
    string.codeSet = codeSet;
    string.language = language;
    AssignText(string, bytes + position + std::min(left, kHeaderBytes), codeSet,
               AsCount(textBytes / UnitSize(codeSet)), nibble);
    position += keyLength + kLengthBytes;
  }
  unsigned const leftOver = source.count - index;
  for (; index < source.count; ++index) {
    target[index].Destroy();
    target[index].codeSet = codeSet;
    target[index].language = language;
  }
  return static_cast<unsigned>(position + leftOver * kEmptyRecordBytes);
}

unsigned TranslateToMemory(XoString* target, Source const& source, RecordHeader const& first) {
  if (source.IsMemory()) {
    ObjectArray<XoString>::Copy(target, const_cast<XoString*>(source.Strings()), source.count, 0);
    return source.count * static_cast<unsigned>(sizeof(XoString));
  }
  if ((source.format & FormatIndexKey) == 0) {
    std::size_t const available = source.length == 0 ? kNoLimit : source.length;
    return static_cast<unsigned>(
        LoadStrings(target, source.bytes, available, source.format, source.count));
  }
  if (source.count == 1 && first.Size() <= source.length) {
    return static_cast<unsigned>(
        LoadStrings(target, source.bytes, source.length, source.format, 1));
  }
  return LoadCutKeys(target, source, first);
}

// Onto disk.

/// Whether 16-bit text keeps its units without a code set, as databases of old have it. Asked of
/// the configuration once; threads that ask at the same time write the same.
bool KeepsOldUnicodeOrder() {
  enum : unsigned char { kUnasked, kNarrows, kKeeps };
  static std::atomic<unsigned char> answer = kUnasked;
  unsigned char known = answer.load(std::memory_order_relaxed);
  if (known == kUnasked) {
    unsigned short keeps = 0;
    XoConfig* const config = DefaultConfig(std::bit_cast<XoConfig*>(~std::uintptr_t{0}));
    if (config != nullptr) config->Lookup("oldIndexUnicodeOrder", &keeps, nullptr);
    known = keeps != 0 ? kKeeps : kNarrows;
    answer.store(known, std::memory_order_relaxed);
  }
  return known == kKeeps;
}

/// A target on disk.
struct Target {
  void* bytes;
  unsigned char format;
  unsigned length;
  unsigned char Nibble() const { return FormNibble(format); }
  void Clear() const {
    if (length != 0) std::memset(bytes, 0, length);
  }
};

/// An older record, with a header before its texts and the end mark behind them.
unsigned AddHeader(Target const& target, Source const& source, RecordHeader const& older,
                   unsigned char codeSet) {
  target.Clear();
  std::size_t const size = std::min<std::size_t>(target.length, source.length + 2);
  BoundedTarget bounded(target.bytes, size);
  bounded.WriteUnit(static_cast<unsigned short>(older.length + 3), target.Nibble());
  bounded.WriteByte(codeSet);
  bounded.WriteByte(0);
  bounded.Write(Advance(source.bytes, kLengthBytes), source.length - kLengthBytes);
  std::size_t const endMark = std::size_t{older.length} + 4;
  if (source.length + 3 <= target.length && endMark < target.length) {
    StoreBytes(Advance(target.bytes, endMark), kEndMark);
  }
  return static_cast<unsigned>(size);
}

/// Stored text as it stands, but for its code set.
unsigned CopyRecords(Target const& target, Source const& source, unsigned char codeSet) {
  std::size_t const size = std::min<std::size_t>(source.length, target.length);
  if (size < target.length) target.Clear();
  if (size != 0) std::memmove(target.bytes, source.bytes, size);
  if (size > 2) StoreBytes(Advance(target.bytes, 2), codeSet);
  return static_cast<unsigned>(size);
}

/// A record of 16-bit text with the low bytes of its units alone.
unsigned NarrowRecord(Target const& target, Source const& source, unsigned char codeSet) {
  unsigned char const nibble = FormNibble(source.format);
  auto const* const text = static_cast<char const*>(source.bytes) + kHeaderBytes;
  RecordHeader const header = ReadHeader(source.bytes, source.length, nibble);
  std::size_t const units = header.TextBytes() / 2;
  std::size_t const there = source.length > kHeaderBytes ? (source.length - kHeaderBytes) / 2 : 0;
  std::size_t const size = units + kEmptyRecordBytes;
  if (size < target.length) target.Clear();
  BoundedTarget bounded(target.bytes, target.length);
  bounded.WriteUnit(static_cast<unsigned short>(units + kHeaderBytes), target.Nibble());
  bounded.WriteByte(codeSet);
  // Readers of a record without code set do not look at the language.
  bounded.WriteByte(codeSet);
  for (std::size_t unit = 0; unit < std::min(units, there); ++unit) {
    bounded.WriteByte(static_cast<unsigned char>(LoadWide(text + 2 * unit, nibble)));
  }
  for (std::size_t unit = there; unit < units; ++unit) bounded.WriteByte(0);
  bounded.WriteByte(0);
  bounded.WriteByte(kEndMark);
  return static_cast<unsigned>(bounded.Written());
}

/// Records into records, under an effective code set.
unsigned CopyStored(Target const& target, Source const& source, unsigned char from,
                    unsigned char codeSet) {
  bool const mayNarrow = from == kUnicodeSet && !KeepsOldUnicodeOrder();
  return mayNarrow && codeSet == kNoCodeSet ? NarrowRecord(target, source, codeSet)
                                            : CopyRecords(target, source, codeSet);
}

struct ReleaseMemory {
  void operator()(char* memory) const { ReleaseArray(memory); }
};

unsigned TranslateToDisk(Target const& target, Source const& source, RecordHeader const& first) {
  bool const toKey = (target.format & FormatIndexKey) != 0;
  if (source.IsMemory() && !toKey) {
    target.Clear();
    return static_cast<unsigned>(std::min<std::size_t>(
        target.length, StoreStrings(target.bytes, target.length, source.Strings(), target.Nibble(),
                                    source.count)));
  }
  if (!source.IsMemory() && !toKey && target.format != source.format) {
    XOLA_assert("format combination not supported", kFile, 1745);
    return 0;
  }
  unsigned char const codeSet = EffectiveCodeSet(first.codeSet, target.format);
  if (BecomesKey(codeSet, target.format)) {
    return BuildKeys(target.bytes, target.format, target.length, source.bytes, source.format,
                     source.length, source.count);
  }
  if (first.isOlder) return AddHeader(target, source, first, codeSet);
  if (!source.IsMemory()) return CopyStored(target, source, first.codeSet, codeSet);
  std::size_t const size =
      StoreStrings(nullptr, 0, source.Strings(), target.Nibble(), source.count);
  std::unique_ptr<char, ReleaseMemory> const stored(static_cast<char*>(AllocateArray(size)));
  StoreStrings(stored.get(), size, source.Strings(), target.Nibble(), source.count);
  return CopyStored(target, {stored.get(), target.Nibble(), size, source.count}, first.codeSet,
                    codeSet);
}

}  // namespace

unsigned StringTranslate(void* target, unsigned char targetFormat, unsigned targetLength,
                         void* source, unsigned char sourceFormat, unsigned sourceLength,
                         unsigned count) {
  Source const from{source, sourceFormat, sourceLength, count};
  RecordHeader const first = HeaderOf(from);
  return HasMemoryBit(targetFormat)
             ? TranslateToMemory(static_cast<XoString*>(target), from, first)
             : TranslateToDisk({target, targetFormat, targetLength}, from, first);
}

}  // namespace xo
