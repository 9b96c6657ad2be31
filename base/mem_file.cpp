#include "base/mem_file.hpp"

// Seek hands out a writable pointer, as its callers pass it on to operations that take one; nothing
// writes through it.
MemFile::MemFile(void const* content, unsigned contentSize)
    : bytes(static_cast<unsigned char*>(const_cast<void*>(content))), size(contentSize) {}

unsigned char* MemFile::Seek(int offset, unsigned short origin, unsigned* length,
                             unsigned short flag) {
  unsigned char* found = nullptr;
  unsigned available = 0;
  long long const base = origin == 0 ? 0 : origin == 1 ? position : size;
  long long const target = base + offset;
  if (origin <= 2 && target >= 0 && target <= size) {
    if (flag != 0) position = static_cast<unsigned>(target);
    available = static_cast<unsigned>(size - target);
    if (available != 0) found = bytes + target;
  }
  if (length != nullptr) *length = available;
  return found;
}
