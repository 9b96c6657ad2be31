#include "bench/hand_written.hpp"

#include <cstring>

namespace {

template <class Value>
int CompareOne(void const* a, void const* b, int& status) {
  Value left, right;
  std::memcpy(&left, a, sizeof left);
  std::memcpy(&right, b, sizeof right);
  status = 0;
  return left < right ? -1 : left > right ? 1 : 0;
}

}  // namespace

int CompareOneLong(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                   unsigned, int& status) {
  return CompareOne<o_4b>(buf1, buf2, status);
}

int CompareOneLongLong(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                       unsigned, int& status) {
  return CompareOne<o_8b>(buf1, buf2, status);
}
