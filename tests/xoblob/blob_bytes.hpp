#pragma once

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {

/// A blob as text, none for null.
using BlobText = std::optional<std::string>;
using ByteList = std::vector<unsigned char>;

/// Blobs of these contents.
class Blobs {
 public:
  explicit Blobs(std::vector<BlobText> const& contents) : blobs(contents.size()) {
    for (std::size_t i = 0; i < contents.size(); ++i) {
      if (contents[i]) {
        blobs[i].SetTo(contents[i]->data(), static_cast<int>(contents[i]->size()));
      } else {
        blobs[i].SetNullValue();
      }
    }
  }
  void* Get() { return blobs.data(); }
  unsigned Count() const { return static_cast<unsigned>(blobs.size()); }
  XoBlob& operator[](std::size_t index) { return blobs[index]; }

 private:
  std::vector<XoBlob> blobs;
};

inline BlobText Content(XoBlob const& blob) {
  if (blob.IsNullValue() != 0) return {};
  return std::string(reinterpret_cast<char const*>(blob.body->data),
                     static_cast<std::size_t>(blob.body->size));
}

inline void PutWord(ByteList& bytes, std::uint32_t word, bool isBig = false) {
  for (unsigned i = 0; i < 4; ++i) {
    bytes.push_back(static_cast<unsigned char>(word >> 8 * (isBig ? 3 - i : i)));
  }
}

/// The stored form, written down from its description.
inline ByteList StoredBlobs(std::vector<BlobText> const& contents, bool isBig = false) {
  ByteList elements;
  for (BlobText const& content : contents) {
    PutWord(elements, content ? static_cast<std::uint32_t>(content->size()) : 0xFFFFFFFF, isBig);
    if (content) elements.insert(elements.end(), content->begin(), content->end());
  }
  ByteList record;
  PutWord(record, static_cast<std::uint32_t>(elements.size()), isBig);
  record.insert(record.end(), elements.begin(), elements.end());
  return record;
}

/// Bytes on the heap and no more than there are.
class Exact {
 public:
  explicit Exact(ByteList const& content) : bytes(new unsigned char[content.size()]) {
    std::copy(content.begin(), content.end(), bytes.get());
  }
  operator void*() const { return bytes.get(); }

 private:
  std::unique_ptr<unsigned char[]> bytes;
};

inline TypeDescriptor const& BlobRow() { return *CurrentTypeTable[XoBLOB_T]; }

}  // namespace xo::test
