#include <algorithm>
#include <cstring>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "src/xotypes/blob_row.hpp"
#include "xoblob.hpp"
#include "xotypcmp.hpp"

using namespace xo;

namespace {

int CompareBlobs(XoBlob const* a, XoBlob const* b, unsigned count) {
  int result = 0;
  for (unsigned index = 0; index < count && result == 0; ++index) result = a[index] != b[index];
  return result;
}

/// Walks the elements of a stored array.
class StoredBlobs {
 public:
  /// `declared` 0: as far as the record goes by its total, and one word further.
  StoredBlobs(void* record, unsigned declared, unsigned char format_)
      : at(Advance(record, kBlobWord)), limit(declared - kBlobWord), format(format_) {
    if (declared == 0) {
      limit = StoredBlobSize(record, format);
    } else if (declared < kBlobWord) {
      limit = 0;
    }
  }

  /// Reads the length of the next element. False: there is none.
  bool ReadLength() {
    if (limit < kBlobWord) return false;
    length = ReadBlobWord(at, format);
    at += kBlobWord;
    limit -= kBlobWord;
    return true;
  }
  bool IsNull() const { return length == kNullBlobLength; }
  /// The length as it is compared: with a word more than the element has. Stored orders depend on
  /// it.
  o_4b EnlargedLength() const { return static_cast<o_4b>(length + kBlobWord); }

  /// Goes on by what has been compared of an element; a null one has nothing.
  void GoOn() {
    if (IsNull()) return;
    unsigned const step = std::min(limit, length + kBlobWord);
    at += step;
    limit -= step;
  }

  unsigned char const* at;
  unsigned limit;

 private:
  unsigned char format;
  o_u4b length = 0;
};

int CompareElement(StoredBlobs const& a, StoredBlobs const& b) {
  if (a.IsNull() || b.IsNull()) return a.IsNull() && b.IsNull() ? 0 : a.IsNull() ? -2 : 2;
  o_4b const lengthA = a.EnlargedLength();
  o_4b const lengthB = b.EnlargedLength();
  o_4b const lesser = std::min(lengthA, lengthB);
  unsigned const size =
      lesser < 0 ? 0 : std::min({static_cast<unsigned>(lesser), a.limit, b.limit});
  int const order = size == 0 ? 0 : std::memcmp(a.at, b.at, size);
  return order != 0 ? order : (lengthA > lengthB) - (lengthA < lengthB);
}

}  // namespace

int BlobCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2, void* buf2,
                unsigned short, unsigned int count, int& status) {
  status = 0;
  if (count == 0) return 0;
  if (format == FormMemory) {
    return CompareBlobs(static_cast<XoBlob const*>(buf1), static_cast<XoBlob const*>(buf2), count);
  }
  StoredBlobs first(buf1, len1, format);
  StoredBlobs second(buf2, len2, format);
  int result = 0;
  while (count != 0 && result == 0 && first.ReadLength() && second.ReadLength()) {
    result = CompareElement(first, second);
    if (--count == 0) break;
    first.GoOn();
    second.GoOn();
  }
  return result;
}
