#include "src/xotypes/inline_string.hpp"

#include <algorithm>
#include <cstring>
#include <memory>

#include "base/allocation.hpp"
#include "base/mem_file.hpp"
#include "src/xoistring/weights.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/stored_text.hpp"

namespace xo {

namespace {

struct ReleaseMemory {
  void operator()(char* memory) const { ReleaseArray(memory); }
};
using Buffer = std::unique_ptr<char, ReleaseMemory>;

Buffer NewBuffer(std::size_t size) { return Buffer(static_cast<char*>(AllocateArray(size))); }

char const* TextsOf(void const* record) {
  return static_cast<char const*>(record) + kInlineHeaderBytes;
}

void WriteHeader(BoundedTarget& target, unsigned char tag, std::size_t payload,
                 unsigned char nibble) {
  target.WriteByte(tag);
  target.WriteUnit(static_cast<unsigned short>(payload), nibble);
}

/// Writes as much of a header as `room` takes.
void WriteHeader(void* target, unsigned room, unsigned char tag, std::size_t payload,
                 unsigned char nibble) {
  if (room >= kInlineHeaderBytes) {
    auto* const bytes = static_cast<unsigned char*>(target);
    bytes[0] = tag;
    StoreBytes(bytes + 1, InByteOrder(static_cast<unsigned short>(payload), nibble));
    return;
  }
  BoundedTarget bounded(target, room);
  WriteHeader(bounded, tag, payload, nibble);
}

/// The tag of plain text under a format. The two classes look at different bits of it.
template <class Text>
unsigned char TagUnder(unsigned char format) {
  bool const isOther =
      WeightRules<Text>::kFoldsCase ? format >= 16 : (format & FormatIndexKey) != 0;
  return isOther ? kInlineTextToo : kInlineText;
}

template <class Text>
std::size_t StoreTexts(void* target, std::size_t room, Text const* source, unsigned char format,
                       unsigned count) {
  std::size_t payload = 0;
  for (unsigned index = 0; index < count; ++index) payload += source[index].Len() + std::size_t{1};
  BoundedTarget bounded(target, room);
  WriteHeader(bounded, TagUnder<Text>(format), payload, FormNibble(format));
  for (unsigned index = 0; index < count; ++index) {
    bounded.Write(source[index].StrGet(), source[index].Len() + std::size_t{1});
  }
  return bounded.Given();
}

/// Reads stored texts, of a key as the weights that they are, or, where the class can, as the text
/// that they are of.
template <class Text>
std::size_t LoadTexts(Text* target, void const* source, std::size_t available, unsigned char format,
                      unsigned count, bool reversesKeys) {
  InlineHeader const header = ReadInlineHeader(source, available, FormNibble(format));
  std::size_t const there = TextsThere(header, available);
  char const* const texts = there != 0 ? TextsOf(source) : nullptr;
  bool const reverses = reversesKeys && header.IsKey();
  std::size_t position = 0;
  for (unsigned index = 0; index < count; ++index) {
    std::size_t const rest = there - position;
    void const* const end = rest != 0 ? std::memchr(texts + position, 0, rest) : nullptr;
    std::size_t const size =
        end != nullptr
            ? static_cast<std::size_t>(static_cast<char const*>(end) - (texts + position))
            : rest;
    Buffer const text = NewBuffer(size + 1);
    std::size_t length = size;
    if (reverses) {
      length = MapFromWeights<Text>(texts + position, size, text.get());
    } else if (size != 0) {
      std::memcpy(text.get(), texts + position, size);
    }
    text.get()[length] = 0;
    target[index] = Text(text.get());
    if (!reverses) target[index].weighted = header.tag & kInlineKey;
    position += std::min(size + 1, rest);
  }
  return kInlineHeaderBytes + (reverses ? there : position);
}

/// The bytes of the weights of stored texts, their zeros included.
template <class Text>
std::size_t MappedSize(char const* bytes, std::size_t size) {
  return MapToWeights<Text>(bytes, size, nullptr, 0);
}

/// Where a key ends that is written into `room` bytes, and how many of them are for weights.
std::size_t RoomForWeights(unsigned room) {
  constexpr unsigned kBesides = kInlineHeaderBytes + 1;
  return room > kBesides ? room - kBesides : 0;
}

char* WeightsOf(void* target, unsigned room) {
  return room > kInlineHeaderBytes ? static_cast<char*>(target) + kInlineHeaderBytes : nullptr;
}

/// A key of stored text.
template <class Text>
unsigned KeyOfStored(void* target, unsigned char format, unsigned room, void const* source,
                     unsigned sourceLength) {
  if (sourceLength < room) std::memset(target, 0, room);
  unsigned char const tag = ByteAt(source, 0, sourceLength);
  if ((tag & kInlineKey) != 0) {
    unsigned const size = std::min(room, sourceLength);
    if (size != 0) std::memmove(target, source, size);
    return size;
  }
  std::size_t const bytes =
      sourceLength > kInlineHeaderBytes ? sourceLength - kInlineHeaderBytes : 0;
  char* const weights = WeightsOf(target, room);
  std::size_t const fits = RoomForWeights(room);
  std::size_t const count =
      bytes != 0 ? MapToWeights<Text>(TextsOf(source), bytes, weights, fits) : 0;
  if (weights != nullptr) weights[fits] = 0;
  WriteHeader(target, room, tag | kInlineKeyBits, count, FormNibble(format));
  // The two classes count the closing zero differently.
  unsigned const besides = kInlineHeaderBytes + (WeightRules<Text>::kFoldsCase ? 1 : 0);
  return static_cast<unsigned>(std::min(count, fits)) + besides;
}

/// A key of a text in memory.
template <class Text>
unsigned KeyOfText(void* target, unsigned char format, unsigned room, Text const& source) {
  if (room != 0) std::memset(target, 0, room);
  std::size_t const fits = RoomForWeights(room);
  std::size_t count = 0;
  if (char* const weights = WeightsOf(target, room); weights != nullptr) {
    char const* const text = source.StrGet();
    std::size_t const length = std::strlen(text);
    if ((source.weighted & kIsWeighted) != 0) {
      count = length;
      std::memcpy(weights, text, std::min(length, fits));
    } else {
      count = MapToWeights<Text>(text, length, weights, fits);
    }
  }
  std::size_t const payload = std::min(count, fits) + 1;
  WriteHeader(target, room, kInlineKeyBits, payload, FormNibble(format));
  return static_cast<unsigned>(payload) + kInlineHeaderBytes;
}

/// Between disk and memory, in both directions, without keys.
template <class Text>
unsigned TranslatePlain(void* target, unsigned char targetFormat, unsigned room, void* source,
                        unsigned char sourceFormat, unsigned sourceLength, unsigned count) {
  if (HasMemoryBit(targetFormat)) {
    if (HasMemoryBit(sourceFormat)) {
      ObjectArray<Text>::Assignment(target, source, count, 0);
      return count * static_cast<unsigned>(sizeof(Text));
    }
    return static_cast<unsigned>(LoadTexts(static_cast<Text*>(target), source,
                                           LimitOf(sourceLength), sourceFormat, count,
                                           WeightRules<Text>::kFoldsCase));
  }
  if (HasMemoryBit(sourceFormat)) {
    return static_cast<unsigned>(
        std::min<std::size_t>(room, StoreTexts(target, room, static_cast<Text const*>(source),
                                               FormNibble(targetFormat), count)));
  }
  unsigned const size = std::min(room, sourceLength);
  if (sourceLength < room) std::memset(target, 0, room);
  if (size != 0) std::memmove(target, source, size);
  return size;
}

}  // namespace

template <class Text>
unsigned InlineStringOperations<Text>::Store(void* disk, void const* memory, unsigned char format,
                                             unsigned count) {
  return static_cast<unsigned>(
      StoreTexts(disk, kNoLimit, static_cast<Text const*>(memory), format, count));
}

template <class Text>
unsigned InlineStringOperations<Text>::Load(void* memory, void const* disk, unsigned char format,
                                            unsigned count) {
  return static_cast<unsigned>(
      LoadTexts(static_cast<Text*>(memory), disk, kNoLimit, format, count, false));
}

template <class Text>
unsigned InlineStringOperations<Text>::NullSizeGet(unsigned count) {
  return count + kInlineHeaderBytes;
}

template <class Text>
unsigned InlineStringOperations<Text>::SizeGet(void const* data, unsigned char dataFormat,
                                               unsigned char diskFormat, unsigned count) {
  bool const toKey = (diskFormat & FormatIndexKey) != 0;
  if (toKey && HasMemoryBit(diskFormat)) return 0;
  std::size_t payload = 0;
  if (HasMemoryBit(dataFormat)) {
    auto const* const texts = static_cast<Text const*>(data);
    for (unsigned index = 0; index < count; ++index) {
      std::size_t const length = texts[index].Len();
      bool const maps = toKey && (texts[index].weighted & kIsWeighted) == 0;
      payload += (maps ? MappedSize<Text>(texts[index].StrGet(), length) : length) + 1;
    }
  } else {
    InlineHeader const header = ReadInlineHeader(data, kNoLimit, FormNibble(dataFormat));
    payload = toKey && !header.IsKey() ? MappedSize<Text>(TextsOf(data), header.payload)
                                       : std::size_t{header.payload};
  }
  return static_cast<unsigned>(payload) + kInlineHeaderBytes;
}

template <class Text>
unsigned InlineStringOperations<Text>::SizeGetFromMemFile(MemFile* file, unsigned char format,
                                                          unsigned) {
  unsigned available = 6;
  unsigned char const* const bytes = file->Seek(0, 1, &available, 0);
  if (bytes == nullptr || available == 0) return 0;
  return kInlineHeaderBytes + ReadInlineHeader(bytes, available, FormNibble(format)).payload;
}

template <class Text>
unsigned InlineStringOperations<Text>::Translate(void* target, unsigned char targetFormat,
                                                 unsigned targetLength, void* source,
                                                 unsigned char sourceFormat, unsigned sourceLength,
                                                 unsigned count) {
  if ((targetFormat & FormatIndexKey) == 0) {
    return TranslatePlain<Text>(target, targetFormat, targetLength, source, sourceFormat,
                                sourceLength, count);
  }
  if (HasMemoryBit(targetFormat)) return 0;
  if (!HasMemoryBit(sourceFormat)) {
    return KeyOfStored<Text>(target, targetFormat, targetLength, source, sourceLength);
  }
  return count != 0 ? KeyOfText(target, targetFormat, targetLength, *static_cast<Text*>(source))
                    : KeyOfText(target, targetFormat, targetLength, Text());
}

template <class Text>
unsigned InlineStringOperations<Text>::Hash(unsigned char, unsigned, void*, unsigned, int& error) {
  error = 0;
  return 0;
}

template <class Text>
void* InlineStringOperations<Text>::DefaultValue(unsigned count, int) {
  return ObjectArray<Text>::Create(count);
}

template struct InlineStringOperations<XoIString>;
template struct InlineStringOperations<XoCaseIString>;

}  // namespace xo
