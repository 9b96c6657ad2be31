#include "src/xotypes/blob_row.hpp"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <string>

#include "base/bytes.hpp"
#include "base/mem_file.hpp"
#include "base/number_text.hpp"
#include "base/scalar_disk.hpp"
#include "src/xotypes/array_walk.hpp"
#include "src/xotypes/number_print.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/stored_copy.hpp"
#include "src/xotypes/stored_text.hpp"
#include "xoblob.hpp"
#include "xostring.hpp"

namespace xo {

namespace {

constexpr unsigned kHashFactor = 9;

void WriteBlobWord(BoundedTarget& target, o_u4b word, unsigned char format) {
  unsigned char stored[kBlobWord];
  LongStoreOne(stored, &word, FormNibble(format));
  target.Write(stored, sizeof stored);
}

o_u4b LengthOf(XoBlob const& blob) {
  return blob.IsNullValue() != 0 ? kNullBlobLength : static_cast<o_u4b>(blob.Length());
}

/// What all elements take behind the total.
std::size_t TotalOf(XoBlob const* blobs, unsigned count) {
  std::size_t total = 0;
  for (unsigned index = 0; index < count; ++index) {
    total += kBlobWord + static_cast<std::size_t>(blobs[index].Length());
  }
  return total;
}

std::size_t StoreBlobs(void* target, std::size_t room, XoBlob const* blobs, unsigned char format,
                       unsigned count) {
  BoundedTarget bounded(target, room);
  WriteBlobWord(bounded, static_cast<o_u4b>(TotalOf(blobs, count)), format);
  for (unsigned index = 0; index < count; ++index) {
    WriteBlobWord(bounded, LengthOf(blobs[index]), format);
    auto const size = static_cast<std::size_t>(blobs[index].Length());
    if (size != 0) bounded.Write(blobs[index].body->data, size);
  }
  return bounded.Given();
}

/// Reads a stored array of which `available` bytes are there. 0 where its lengths do not add up;
/// the elements before that have been read.
std::size_t LoadBlobs(XoBlob* blobs, void const* source, std::size_t available,
                      unsigned char format, unsigned count) {
  if (available < kBlobWord) return 0;
  o_u4b const total = ReadBlobWord(source, format);
  if (total > INT_MAX || total > available - kBlobWord) return 0;
  unsigned char const* const elements = Advance(source, kBlobWord);
  std::size_t sum = 0;
  for (unsigned index = 0; index < count; ++index) {
    if (sum + kBlobWord > total) return 0;
    o_u4b const length = ReadBlobWord(elements + sum, format);
    sum += kBlobWord;
    if (length == kNullBlobLength) {
      blobs[index].SetNullValue();
      continue;
    }
    if (length > total - sum) return 0;
    blobs[index].SetTo(elements + sum, static_cast<int>(length));
    sum += length;
  }
  return kBlobWord + std::size_t{total};
}

unsigned HashBytes(unsigned char const* bytes, std::size_t size) {
  unsigned hash = 0;
  for (std::size_t index = 0; index < size; ++index) hash = hash * kHashFactor + bytes[index];
  return hash;
}

}  // namespace

o_u4b ReadBlobWord(void const* place, unsigned char format) {
  o_u4b word = 0;
  LongStoreOne(&word, place, FormNibble(format));
  return word;
}

unsigned StoredBlobSize(void const* record, unsigned char format) {
  o_u4b const total = ReadBlobWord(record, format);
  return kBlobWord + (total == kNullBlobLength ? 0 : total);
}

unsigned BlobOperations::Store(void* disk, void const* memory, unsigned char format,
                               unsigned count) {
  return static_cast<unsigned>(
      StoreBlobs(disk, kNoLimit, static_cast<XoBlob const*>(memory), format, count));
}

unsigned BlobOperations::Load(void* memory, void const* disk, unsigned char format,
                              unsigned count) {
  return static_cast<unsigned>(
      LoadBlobs(static_cast<XoBlob*>(memory), disk, kNoLimit, format, count));
}

unsigned BlobOperations::NullSizeGet(unsigned count) { return count * kBlobWord; }

unsigned BlobOperations::SizeGet(void const* data, unsigned char dataFormat, unsigned char,
                                 unsigned count) {
  if (HasMemoryBit(dataFormat)) {
    return kBlobWord + static_cast<unsigned>(TotalOf(static_cast<XoBlob const*>(data), count));
  }
  return StoredBlobSize(data, dataFormat);
}

unsigned BlobOperations::SizeGetFromMemFile(MemFile* file, unsigned char format, unsigned) {
  unsigned available = kBlobWord;
  unsigned char const* const bytes = file->Seek(0, 1, &available, 0);
  if (bytes == nullptr || available < kBlobWord) return 0;
  return StoredBlobSize(bytes, format);
}

unsigned BlobOperations::Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                                   void* source, unsigned char sourceFormat, unsigned sourceLength,
                                   unsigned count) {
  bool const fromMemory = HasMemoryBit(sourceFormat);
  if (HasMemoryBit(targetFormat)) {
    if (fromMemory) {
      ObjectArray<XoBlob>::Assignment(target, source, count, 0);
      return count * static_cast<unsigned>(sizeof(XoBlob));
    }
    return static_cast<unsigned>(LoadBlobs(static_cast<XoBlob*>(target), source,
                                           LimitOf(sourceLength), sourceFormat, count));
  }
  if (fromMemory) {
    return static_cast<unsigned>(std::min<std::size_t>(
        targetLength,
        StoreBlobs(target, targetLength, static_cast<XoBlob const*>(source), targetFormat, count)));
  }
  return CopyStored(target, targetLength, source, sourceLength);
}

unsigned BlobOperations::Hash(unsigned char format, unsigned length, void* data, unsigned count,
                              int& error) {
  error = 0;
  unsigned folds = 0;
  if (format == FormMemory) {
    auto const* const blobs = static_cast<XoBlob const*>(data);
    std::size_t const reachable =
        ReachableElements(count, length, static_cast<unsigned>(sizeof(XoBlob)));
    for (std::size_t index = 0; index < reachable; ++index) {
      if (blobs[index].IsNullValue() != 0) continue;
      folds ^= HashBytes(blobs[index].body->data, static_cast<std::size_t>(blobs[index].Length()));
    }
    if (reachable < count) error = ERR_TM_LENGTH_EXCEEDED;
    return folds * kHashMultiplier;
  }
  if (count == 0) return 0;
  std::size_t left = length != 0 ? length : StoredBlobSize(data, format);
  auto const* at = static_cast<unsigned char const*>(data);
  // Past the total, which says nothing that the elements do not say.
  std::size_t step = kBlobWord;
  for (; count != 0; --count) {
    if (step + kBlobWord > left) {
      error = ERR_TM_LENGTH_EXCEEDED;
      break;
    }
    at += step;
    left -= step;
    o_u4b const size = ReadBlobWord(at, format);
    if (size == kNullBlobLength) {
      step = kBlobWord;
      continue;
    }
    std::size_t const there = std::min<std::size_t>(size, left - kBlobWord);
    folds ^= HashBytes(at + kBlobWord, there);
    if (there < size) {
      error = ERR_TM_LENGTH_EXCEEDED;
      break;
    }
    step = kBlobWord + std::size_t{size};
  }
  return folds * kHashMultiplier;
}

int BlobOperations::IsNull(void* value) { return static_cast<XoBlob*>(value)->IsNullValue(); }
int BlobOperations::SetNull(void* value) { return static_cast<XoBlob*>(value)->SetNullValue(); }

XoString& BlobOperations::Print(XoString& out, void* values, char const* format, unsigned) {
  auto const& blob = *static_cast<XoBlob const*>(values);
  if (blob.IsNullValue() != 0) return out = NullPrintString;
  if (format == nullptr) format = kBlobFormat;
  char digits[kIntegerTextSize];
  PrintInteger(digits, std::int64_t{blob.Length()});
  std::string text;
  // More than a string holds need not be written out.
  for (; *format != 0 && text.size() <= XoString::kMaxSize; ++format) {
    if (*format != '%') {
      text += *format;
    } else if (format[1] == 'L') {
      text += digits;
      ++format;
    } else {
      text += '%';
      if (format[1] == '%') ++format;
    }
  }
  return out = text.c_str();
}

/// Takes the bytes of the text.
void* BlobOperations::Scan(void* target, XoString& text, char const*, unsigned) {
  if (target == nullptr) return nullptr;
  auto& blob = *static_cast<XoBlob*>(target);
  if (BeginsWithNull(text)) {
    blob.SetNullValue();
  } else {
    blob.SetTo(text.StrGet(), static_cast<int>(text.Len() * UnitSize(text.codeSet)));
  }
  return target;
}

void* BlobOperations::DefaultValue(unsigned count, int asNull) {
  return NewOrNull<XoBlob>(count, asNull);
}

}  // namespace xo
