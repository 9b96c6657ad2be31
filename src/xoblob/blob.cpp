#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "base/platform.hpp"
#include "xoblob.hpp"

namespace {

/// Room up to this much larger than a new content is used for it.
constexpr int kSlack = 128;
constexpr unsigned kNotFound = 65535;

unsigned char* AllocateBytes(int size) {
  auto* const bytes = static_cast<unsigned char*>(std::malloc(static_cast<std::size_t>(size)));
  if (bytes == nullptr) XoCallMemoryHandler(static_cast<unsigned long long>(size));
  return bytes;
}

void Free(XoBlobData* body) {
  if (body == nullptr) return;
  std::free(body->data);
  delete body;
}

/// A body of `size` bytes that are not initialised, empty for a negative size; null when there is
/// no memory for the bytes.
XoBlobData* AllocData(int size) {
  // The handler of exhausted memory may leave by an exception.
  auto body = std::make_unique<XoBlobData>(XoBlobData{nullptr, 0});
  if (size <= 0) return body.release();
  body->data = AllocateBytes(size);
  if (body->data == nullptr) return nullptr;
  body->size = size;
  return body.release();
}

/// Copies bytes, which may overlap.
void Move(unsigned char* target, void const* source, int size) {
  if (size > 0 && source != nullptr) std::memmove(target, source, static_cast<std::size_t>(size));
}

XoBlobData* NewBody(void const* bytes, int size) {
  XoBlobData* const body = AllocData(bytes != nullptr ? size : 0);
  if (body != nullptr) Move(body->data, bytes, body->size);
  return body;
}

/// Makes the bytes, which may be a part of the present ones, the content of a body. What was there
/// stays when there is no memory.
void SetBytes(XoBlobData& body, void const* bytes, int size) {
  if (bytes == nullptr || size < 0) size = 0;
  if (body.data != nullptr && body.size >= size && body.size - size <= kSlack) {
    Move(body.data, bytes, size);
    body.size = size;
    return;
  }
  unsigned char* fresh = nullptr;
  if (size != 0) {
    fresh = AllocateBytes(size);
    if (fresh == nullptr) return;
    Move(fresh, bytes, size);
  }
  std::free(std::exchange(body.data, fresh));
  body.size = size;
}

/// Puts a new body in the place of an old one; nothing where there was no memory for it.
void Replace(XoBlobData*& place, XoBlobData* fresh) {
  if (fresh != nullptr) Free(std::exchange(place, fresh));
}

}  // namespace

XoBlob::XoBlob() : body(AllocData(0)) {}
XoBlob::XoBlob(int size) : body(AllocData(size)) {}
XoBlob::XoBlob(void const* bytes, int size) : body(NewBody(bytes, size)) {}
XoBlob::XoBlob(XoBlob const& source)
    : body(source.body != nullptr ? NewBody(source.body->data, source.body->size) : nullptr) {}
XoBlob::~XoBlob() {
  SetNullValue();
  // A blob destroyed in place shows that it is null to whoever still looks at the memory, so the
  // compiler must not take the last write for one that nobody reads.
  std::atomic_signal_fence(std::memory_order_seq_cst);
}

XoBlob& XoBlob::operator=(XoBlob const& source) {
  if (body == source.body) return *this;
  if (source.body == nullptr) {
    SetNullValue();
  } else {
    SetTo(source.body->data, source.body->size);
  }
  return *this;
}

int XoBlob::SetNullValue() {
  Free(std::exchange(body, nullptr));
  return 0;
}

int XoBlob::IsNullValue() const { return body == nullptr; }

int XoBlob::operator==(XoBlob const& other) const {
  return IsNullValue() == other.IsNullValue() && Length() == other.Length() &&
         (*this != other) == 0;
}

int XoBlob::operator!=(XoBlob const& other) const {
  if (body == nullptr || other.body == nullptr) {
    if (body == other.body) return 0;
    return body != nullptr ? 2 : -2;
  }
  int const common = std::min(body->size, other.body->size);
  int const order =
      common == 0 ? 0 : std::memcmp(body->data, other.body->data, static_cast<std::size_t>(common));
  if (order != 0) return order;
  return (body->size > other.body->size) - (body->size < other.body->size);
}

int XoBlob::Length() const { return body != nullptr ? body->size : 0; }

unsigned char* XoBlob::Seek(int start, int count) const {
  if (body == nullptr || start < 0 || count <= 0) return nullptr;
  if (start > body->size || count > body->size - start) return nullptr;
  return body->data + start;
}

unsigned XoBlob::Search(XoBlob const& pattern) const {
  if (body == nullptr) return kNotFound;
  int const size = pattern.Length();
  if (size == 0) return 0;
  for (int place = 0; place <= Length() - size; ++place) {
    if (std::memcmp(body->data + place, pattern.body->data, static_cast<std::size_t>(size)) == 0) {
      return static_cast<unsigned>(place);
    }
  }
  return kNotFound;
}

XoBlob& XoBlob::Append(void const* bytes, int size) {
  if (size < 1 || bytes == nullptr) return *this;
  int const present = Length();
  if (size > INT_MAX - present) return *this;
  XoBlobData* const fresh = AllocData(present + size);
  if (fresh != nullptr) {
    if (present != 0) Move(fresh->data, body->data, present);
    Move(fresh->data + present, bytes, size);
  }
  Replace(body, fresh);
  return *this;
}

XoBlob& XoBlob::Append(XoBlob const& other) {
  return Append(other.body != nullptr ? other.body->data : nullptr, other.Length());
}

XoBlob XoBlob::CopyFrom(int start, int count) const {
  int const length = Length();
  if (start < 0 || count <= 0 || start >= length) return XoBlob();
  return XoBlob(body->data + start, std::min(count, length - start));
}

void XoBlob::CopyTo(XoBlob& target, int start, int count) const { target = CopyFrom(start, count); }

XoBlob& XoBlob::Cut(int start, int count) {
  int const length = Length();
  if (start < 0 || count < 1 || start >= length) return *this;
  int const cut = std::min(count, length - start);
  XoBlobData* const fresh = AllocData(length - cut);
  if (fresh != nullptr && fresh->size != 0) {
    Move(fresh->data, body->data, start);
    Move(fresh->data + start, body->data + start + cut, length - start - cut);
  }
  Replace(body, fresh);
  return *this;
}

void XoBlob::Destroy(XoBlob& other) {
  if (&other == this) return;
  XoBlobData* const left = other.body != nullptr ? AllocData(0) : nullptr;
  Free(std::exchange(body, std::exchange(other.body, left)));
}

XoBlob& XoBlob::Expand(int size) {
  if (size < 0) return *this;
  XoBlobData* const fresh = AllocData(size);
  if (fresh != nullptr && body != nullptr)
    Move(fresh->data, body->data, std::min(size, body->size));
  Replace(body, fresh);
  return *this;
}

XoBlob& XoBlob::Resize(unsigned size) {
  if (body == nullptr) {
    body = AllocData(size <= INT_MAX ? static_cast<int>(size) : 0);
    return *this;
  }
  if (size > INT_MAX) return *this;
  int const wanted = static_cast<int>(size);
  if (wanted == 0) {
    if (body->size != 0) std::free(std::exchange(body->data, nullptr));
  } else if (wanted > body->size) {
    unsigned char* const fresh = AllocateBytes(wanted);
    if (fresh == nullptr) return *this;
    Move(fresh, body->data, body->size);
    std::free(std::exchange(body->data, fresh));
  }
  body->size = wanted;
  return *this;
}

XoBlob& XoBlob::SetTo(void const* bytes, int size) {
  if (size < 0) return *this;
  if (body != nullptr) {
    SetBytes(*body, bytes, size);
  } else {
    body = NewBody(bytes, size);
  }
  return *this;
}
