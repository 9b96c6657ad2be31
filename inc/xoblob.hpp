#pragma once

#include "base/export.hpp"

/// The bytes of a blob that is not null.
struct XoBlobData {
  unsigned char* data;  ///< owned; may be null when `size` is 0, and may have more room than that
  int size;             ///< the length in bytes
};

/// A run of bytes with a length of 32 bits, or null. An empty blob is not null.
///
/// A blob owns its bytes and shares them with nobody. Starts and sizes that are negative or out of
/// range are never an error: the operation does nothing, or cuts to what is there. The address of
/// its bytes lasts until the next change. When memory for bytes runs out, `XoCallMemoryHandler` is
/// told, and, if that returns, the blob keeps what it held; exhausted memory for anything else ends
/// in the standard allocation failure. A blob belongs to one thread at a time.
class XO_EXPORT XoBlob {
 public:
  XoBlobData* body;  ///< owned; null for the null value

  /// Empty, not null.
  XoBlob();
  /// `size` bytes that are not initialised.
  explicit XoBlob(int size);
  /// A copy of the bytes.
  XoBlob(void const* bytes, int size);
  XoBlob(XoBlob const& source);
  ~XoBlob();

  XoBlob& operator=(XoBlob const& source);
  /// Makes the blob null. Returns 0.
  int SetNullValue();
  int IsNullValue() const;

  /// 1 when both are null, or neither is and the bytes are the same.
  int operator==(XoBlob const& other) const;
  /// An order, not a yes or no: 0 for equal; 2 when only the other is null, -2 when only this is;
  /// else the order of the first bytes that differ, or -1 or 1 by the length.
  int operator!=(XoBlob const& other) const;

  /// The length; 0 for null.
  int Length() const;
  /// The bytes from `start` on. Null for a null blob, for a `count` of 0 and for a part that is not
  /// there whole.
  unsigned char* Seek(int start, int count) const;
  /// The first place at which the bytes of `pattern` stand, 0 for an empty one; 65535 if there is
  /// none. A place behind that is given as it is.
  unsigned Search(XoBlob const& pattern) const;

  /// Appends bytes; a null blob becomes one of them. They may be its own.
  XoBlob& Append(void const* bytes, int size);
  XoBlob& Append(XoBlob const& other);
  XoBlob& operator+=(XoBlob const& other) { return Append(other); }
  /// The bytes from `start` on, `count` or as many as there are: empty for none.
  XoBlob CopyFrom(int start, int count) const;
  void CopyTo(XoBlob& target, int start, int count) const;
  /// Removes `count` bytes from `start`, or as many as there are. What is left may be empty, and is
  /// not null.
  XoBlob& Cut(int start, int count);
  /// Takes the bytes of `other`, which is empty then, or stays null. Nothing for the same object.
  void Destroy(XoBlob& other);
  /// Makes the size `size`, which may be less than it was. Bytes that are new are not initialised.
  XoBlob& Expand(int size);
  /// The same, but a blob that shrinks keeps its bytes where they are. A size beyond the signed
  /// numbers makes a null blob empty, and changes no other.
  XoBlob& Resize(unsigned size);
  /// Makes the bytes the content. Room that fits is used again.
  XoBlob& SetTo(void const* bytes, int size);
};
