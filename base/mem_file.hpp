#pragma once

#include "export.hpp"

/// A positioned file over bytes in memory. It reads the bytes where they are and owns nothing: they
/// must outlive it and stay in place.
class XO_EXPORT MemFile {
 public:
  /// A file of the `size` bytes at `bytes`, positioned at its start. `bytes` may be null when
  /// `size` is 0.
  MemFile(void const* bytes, unsigned size);

  /// Looks at the bytes at a position, which is `offset` from the start (`origin` 0), the present
  /// position (1) or the end (2).
  ///
  /// Returns a pointer to the bytes there, which lie contiguously, and sets `*length` to the number
  /// of bytes from there to the end of the file, which may be more or less than the number that
  /// the caller put in to say how many it wants to see. At the end of the file the answer is null
  /// with a length of 0. `length` may be null.
  ///
  /// A `flag` other than 0 moves the position there as well. An unknown `origin`, or a position
  /// before the start or behind the end, gives null with a length of 0 and moves nothing.
  unsigned char* Seek(int offset, unsigned short origin, unsigned* length, unsigned short flag);

  /// The present position, in bytes from the start.
  unsigned Position() const { return position; }

  /// The size of the file in bytes.
  unsigned Size() const { return size; }

 private:
  unsigned char* bytes;
  unsigned size;
  unsigned position = 0;
};
