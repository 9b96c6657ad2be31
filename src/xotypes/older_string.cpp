#include <cstring>

#include "base/allocation.hpp"
#include "base/mem_file.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/stored_text.hpp"
#include "src/xotypes/string_rows.hpp"
#include "xostringstore.hpp"

namespace xo {

namespace {

/// Writes the texts of strings behind one length. Text of two bytes a character is converted to the
/// default 8-bit code set, in which it is loaded. Returns the bytes of the record.
std::size_t StoreRun(void* target, std::size_t room, XoString const* source, unsigned char nibble,
                     unsigned count) {
  BoundedTarget bounded(target, room);
  bounded.WriteUnit(0, nibble);
  for (unsigned index = 0; index < count; ++index) {
    XoString const& string = source[index];
    if (IsWide(string.codeSet)) {
      XoString narrow(XoString::GetDefault8CodeSet(), 0);
      narrow.CopyMapped(string, narrow.codeSet);
      bounded.Write(narrow.StrGet(), std::strlen(narrow.StrGet()) + 1);
    } else {
      bounded.Write(string.StrGet(), std::strlen(string.StrGet()) + 1);
    }
  }
  std::size_t const size = bounded.Given();
  BoundedTarget(target, room).WriteUnit(static_cast<unsigned short>(size - kLengthBytes), nibble);
  return size;
}

}  // namespace

unsigned OlderStringStore(void* target, void const* source, unsigned char format, unsigned count) {
  return static_cast<unsigned>(
      StoreRun(target, kNoLimit, static_cast<XoString const*>(source), FormNibble(format), count));
}

unsigned OlderStringSizeGet(void const* data, unsigned char dataFormat, unsigned char,
                            unsigned count) {
  if (!HasMemoryBit(dataFormat)) {
    return static_cast<unsigned>(kLengthBytes) + ReadLength(data, kNoLimit, FormNibble(dataFormat));
  }
  auto const* const strings = static_cast<XoString const*>(data);
  unsigned size = count + static_cast<unsigned>(kLengthBytes);
  for (unsigned index = 0; index < count; ++index) size += strings[index].Len();
  return size;
}

unsigned OlderStringSizeGetFromMemFile(MemFile* file, unsigned char format, unsigned count) {
  unsigned available = kLengthBytes;
  unsigned char const* const bytes = file->Seek(0, 1, &available, 0);
  if (bytes == nullptr) return 0;
  unsigned size = 0;
  for (; count != 0 && size < available; --count) {
    size += static_cast<unsigned>(kLengthBytes) +
            ReadLength(bytes + size, available - size, FormNibble(format));
  }
  return size;
}

unsigned OlderStringTranslate(void* target, unsigned char targetFormat, unsigned targetLength,
                              void* source, unsigned char sourceFormat, unsigned sourceLength,
                              unsigned count) {
  if (HasMemoryBit(targetFormat)) {
    if (HasMemoryBit(sourceFormat)) {
      ObjectArray<XoString>::Copy(target, source, count, 0);
      return count * static_cast<unsigned>(sizeof(XoString));
    }
    return static_cast<unsigned>(LoadStrings(static_cast<XoString*>(target), source,
                                             LimitOf(sourceLength), sourceFormat, count));
  }
  if (HasMemoryBit(sourceFormat)) {
    if (targetLength != 0) std::memset(target, 0, targetLength);
    return static_cast<unsigned>(std::min<std::size_t>(
        targetLength, StoreRun(target, targetLength, static_cast<XoString const*>(source),
                               FormNibble(targetFormat), count)));
  }
  unsigned length = ReadLength(source, sourceLength, FormNibble(sourceFormat));
  std::size_t size = std::min<std::size_t>(sourceLength, length + kLengthBytes);
  std::size_t from = kLengthBytes;
  // A record with a header ends in its mark; without header and mark it is one of the older kind.
  if (length + kLengthBytes <= sourceLength &&
      ByteAt(source, std::size_t{length} + 1, sourceLength) == kEndMark && length >= 3) {
    from = kHeaderBytes;
    length -= 3;
    size -= 3;
  }
  if (size < targetLength) std::memset(target, 0, targetLength);
  BoundedTarget bounded(target, std::min<std::size_t>(size, targetLength));
  bounded.WriteUnit(static_cast<unsigned short>(length), FormNibble(targetFormat));
  if (size > kLengthBytes) bounded.Write(Advance(source, from), size - kLengthBytes);
  return static_cast<unsigned>(std::min<std::size_t>(size, targetLength));
}

}  // namespace xo
