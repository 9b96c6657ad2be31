#include <algorithm>

#include "base/mem_file.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xotypes/stored_text.hpp"
#include "src/xotypes/string_rows.hpp"
#include "xostringstore.hpp"

using namespace xo;

namespace {

/// The length field of the record of a string.
std::size_t RecordLength(XoString const& string) {
  unsigned const unit = UnitSize(string.codeSet);
  // Half a unit alone is no text either.
  if (string.size < unit) return kHeaderBytes;
  return string.size - unit + kHeaderBytes;
}

void StoreOne(BoundedTarget& target, XoString const& string, unsigned char nibble) {
  std::size_t const length = RecordLength(string);
  std::size_t const bytes = length > kHeaderBytes ? length - kHeaderBytes : 0;
  target.WriteUnit(static_cast<unsigned short>(length), nibble);
  target.WriteByte(string.codeSet);
  target.WriteByte(string.language);
  if (IsWide(string.codeSet) && nibble == FormBig) {
    for (std::size_t place = 0; place + 2 <= bytes; place += 2) {
      target.WriteUnit(LoadWide(string.text + place), nibble);
    }
    // Half a unit at the end of a buffer of odd size.
    if (bytes % 2 != 0) target.Write(string.text + bytes - 1, 1);
  } else if (bytes != 0) {
    target.Write(string.text, bytes);
  }
  target.WriteByte(0);
  target.WriteByte(kEndMark);
}

/// Makes stored text the text of a live string.
void LoadText(XoString& target, unsigned char codeSet, unsigned char language, char const* text,
              std::size_t bytes, unsigned char nibble) {
  target.Destroy();
  target.codeSet = codeSet;
  target.language = language;
  AssignText(target, text, codeSet, AsCount(bytes / UnitSize(codeSet)), nibble);
}

/// Reads the texts of an older record, each as plain text.
void LoadRun(XoString* target, char const* text, std::size_t bytes, unsigned count) {
  std::size_t at = 0;
  for (unsigned index = 0; index < count; ++index) {
    std::size_t const rest = at < bytes ? bytes - at : 0;
    // Where the run is not ended, its texts are.
    TerminatedCopy copy;
    bool const isEnded = rest != 0 && std::memchr(text + at, 0, rest) != nullptr;
    char const* const one = isEnded ? text + at : copy.Make(text + std::min(at, bytes), rest);
    target[index] = one;
    at += target[index].size;
  }
}

/// By how much an index key may be longer than the text that it is made of.
unsigned KeyFactor(unsigned char codeSet, unsigned char format) {
  if (!BecomesKey(EffectiveCodeSet(codeSet, format), format)) return 1;
  return IsWide(codeSet) ? 2 : 4;
}

/// The length of the record that a stored record may become. It is a number of 16 bits.
std::size_t StoredLengthUnder(RecordHeader const& header, unsigned char format) {
  return static_cast<unsigned short>(header.length * KeyFactor(header.codeSet, format));
}

/// The header of a record that is taken to have one. What lies behind the header may not be there,
/// and is not looked at.
RecordHeader HeaderUnder(void const* record, std::size_t available, unsigned char format) {
  unsigned short const length = ReadLength(record, available, FormNibble(format));
  std::size_t const there = std::min(available, kLengthBytes + length);
  return {length, ByteAt(record, 2, there), ByteAt(record, 3, there), false};
}

}  // namespace

namespace xo {

std::size_t StoreStrings(void* target, std::size_t room, XoString const* source,
                         unsigned char nibble, unsigned count) {
  BoundedTarget bounded(target, room);
  for (unsigned index = 0; index < count; ++index) StoreOne(bounded, source[index], nibble);
  return bounded.Given();
}

std::size_t LoadStrings(XoString* target, void const* source, std::size_t available,
                        unsigned char format, unsigned count) {
  if (count == 0) return 0;
  unsigned char const nibble = FormNibble(format);
  auto const* at = static_cast<char const*>(source);
  std::size_t position = 0;
  for (unsigned index = 0; index < count; ++index) {
    std::size_t const left = available == kNoLimit ? kNoLimit : available - position;
    RecordHeader header = ReadHeader(at + position, left, nibble);
    if (header.isOlder && index == 0) {
      LoadRun(target, at + kLengthBytes, header.length, count);
      return header.Size();
    }
    if (header.isOlder) header = HeaderUnder(at + position, left, format);
    std::size_t const skipped = std::min(left, kHeaderBytes);
    std::size_t const there = std::min(header.TextBytes(), left - skipped);
    LoadText(target[index], header.codeSet, header.language, at + position + skipped, there,
             nibble);
    position += std::min(header.Size(), left);
  }
  return position;
}

unsigned StringNullSizeGet(unsigned count) {
  return static_cast<unsigned>(count * kEmptyRecordBytes);
}

unsigned StringSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count) {
  unsigned available = kLengthBytes;
  unsigned char const* const bytes = file->Seek(0, 1, &available, 0);
  if (bytes == nullptr || available == 0) return 0;
  // What cannot be walked is answered for by the largest record there can be, for each.
  constexpr unsigned kLargest = 65535;
  bool const isKey = (format & FormatIndexKey) != 0;
  unsigned size = 0;
  for (unsigned left = count; left != 0; --left) {
    if (size >= available) return left * kLargest;
    std::size_t const there = available - size;
    RecordHeader const header = HeaderUnder(bytes + size, there, format);
    if (!isKey && left > 1) {
      if (header.length > there) return left * kLargest;
      if (ReadHeader(bytes + size, there, FormNibble(format)).isOlder) {
        return static_cast<unsigned>(header.Size());
      }
    }
    size += static_cast<unsigned>(kLengthBytes + StoredLengthUnder(header, format));
  }
  return size;
}

}  // namespace xo

unsigned StringStore(void* target, void const* source, unsigned char format, unsigned count) {
  return static_cast<unsigned>(StoreStrings(target, kNoLimit, static_cast<XoString const*>(source),
                                            FormNibble(format), count));
}

unsigned StringLoad(void* target, void const* source, unsigned char format, unsigned count) {
  return static_cast<unsigned>(
      LoadStrings(static_cast<XoString*>(target), source, kNoLimit, format, count));
}

unsigned StringSizeGet(void const* data, unsigned char dataFormat, unsigned char diskFormat,
                       unsigned count) {
  std::size_t size = 0;
  if (HasMemoryBit(dataFormat)) {
    auto const* const strings = static_cast<XoString const*>(data);
    for (unsigned index = 0; index < count; ++index) {
      std::size_t const length = RecordLength(strings[index]) - 2;
      size += length * KeyFactor(strings[index].codeSet, diskFormat) + 4;
    }
    return static_cast<unsigned>(size);
  }
  auto const* const records = static_cast<unsigned char const*>(data);
  for (unsigned index = 0; index < count; ++index) {
    RecordHeader const header = HeaderUnder(records + size, kNoLimit, dataFormat);
    if ((diskFormat & FormatIndexKey) == 0 &&
        ReadHeader(records + size, kNoLimit, FormNibble(dataFormat)).isOlder) {
      return static_cast<unsigned>(header.Size());
    }
    size += kLengthBytes + StoredLengthUnder(header, diskFormat);
  }
  return static_cast<unsigned>(size);
}
