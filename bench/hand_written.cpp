#include "bench/hand_written.hpp"

#include <algorithm>
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

/// Year, month and day of two stored dates, the first difference first.
int CompareDateFields(unsigned char const* a, unsigned char const* b) {
  o_2b yearA, yearB;
  std::memcpy(&yearA, a, sizeof yearA);
  std::memcpy(&yearB, b, sizeof yearB);
  if (yearA != yearB) return yearA < yearB ? -1 : 1;
  auto const monthA = static_cast<o_char>(a[2]), monthB = static_cast<o_char>(b[2]);
  if (monthA != monthB) return monthA < monthB ? -1 : 1;
  auto const dayA = static_cast<o_char>(a[3]), dayB = static_cast<o_char>(b[3]);
  return dayA < dayB ? -1 : dayA > dayB ? 1 : 0;
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

int CompareOneDate(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                   unsigned, int& status) {
  status = 0;
  return CompareDateFields(static_cast<unsigned char const*>(buf1),
                           static_cast<unsigned char const*>(buf2));
}

int CompareDates(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                 unsigned count, int& status) {
  auto const* a = static_cast<unsigned char const*>(buf1);
  auto const* b = static_cast<unsigned char const*>(buf2);
  status = 0;
  for (unsigned index = 0; index < count; ++index) {
    if (int const order = CompareDateFields(a + 4 * index, b + 4 * index); order != 0) return order;
  }
  return 0;
}

int CompareSixBytes(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                    unsigned, int& status) {
  status = 0;
  return std::memcmp(buf1, buf2, 6);
}

int CompareTenBytes(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                    unsigned, int& status) {
  status = 0;
  return std::memcmp(buf1, buf2, 10);
}

int CompareFourteenBytes(unsigned char, unsigned, void* buf1, unsigned, void* buf2, unsigned short,
                         unsigned, int& status) {
  status = 0;
  return std::memcmp(buf1, buf2, 14);
}

int CompareShorterBytes(unsigned char, unsigned len1, void* buf1, unsigned len2, void* buf2,
                        unsigned short, unsigned, int& status) {
  status = 0;
  return std::memcmp(buf1, buf2, std::min(len1, len2));
}
