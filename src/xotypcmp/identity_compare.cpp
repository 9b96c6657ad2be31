#include <bit>
#include <cstdint>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "src/xotypes/array_walk.hpp"
#include "xoidentifiers.hpp"
#include "xoseal.hpp"

/// Comparison of the identifiers and of seals. Their test for memory form is of the whole format
/// byte. Values in memory compare by `operator!=`, which gives an order, without their lengths;
/// stored ones by bytes, where they lie.

using namespace xo;

namespace {

constexpr unsigned kClassIdWidth = 4;
constexpr unsigned kObjectIdWidth = 10;
constexpr unsigned kReferenceWidth = 14;
constexpr unsigned kSealWidth = 6;

template <class Value>
int CompareValues(void const* a, void const* b, unsigned count) {
  int result = 0;
  for (std::size_t index = 0; index < count && result == 0; ++index) {
    result = LoadBytes<Value>(Advance(a, index * sizeof(Value))) !=
             LoadBytes<Value>(Advance(b, index * sizeof(Value)));
  }
  return result;
}

/// Order of the bytes from `from` down to `to`: of little-endian fields the order of the numbers.
/// Up to eight bytes that have so many before them are compared as one number.
template <int from, int to>
int OrderOfBytes(unsigned char const* a, unsigned char const* b) {
  constexpr int start = from - 7;
  if constexpr (std::endian::native == std::endian::little && start >= 0 && start <= to) {
    std::uint64_t const differences =
        (LoadBytes<std::uint64_t>(a + start) ^ LoadBytes<std::uint64_t>(b + start)) >>
        (to - start) * 8;
    if (differences == 0) return 0;
    int const place = to + (63 - std::countl_zero(differences)) / 8;
    return int{a[place]} - int{b[place]};
  }
  for (int place = from; place >= to; --place) {
    if (a[place] != b[place]) return int{a[place]} - int{b[place]};
  }
  return 0;
}

/// Order of the six bytes of a seal, the first one first.
int OrderOfBytesUpward(unsigned char const* a, unsigned char const* b) {
  auto const number = [](unsigned char const* bytes) {
    return std::uint64_t{LoadBytes<std::uint16_t>(bytes + 4)} << 32 |
           LoadBytes<std::uint32_t>(bytes);
  };
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t const differences = number(a) ^ number(b);
    if (differences == 0) return 0;
    int const place = std::countr_zero(differences) / 8;
    return int{a[place]} - int{b[place]};
  }
  for (unsigned place = 0; place < kSealWidth; ++place) {
    if (a[place] != b[place]) return int{a[place]} - int{b[place]};
  }
  return 0;
}

/// Compares stored elements of `width` bytes, as far as the lengths go, by `order` of their places.
template <class Order>
int CompareStored(unsigned width, unsigned len1, void const* buf1, unsigned len2, void const* buf2,
                  unsigned count, int& status, Order order) {
  unsigned const reachable = ReachableElements(ReachableElements(count, len1, width), len2, width);
  int result = 0;
  std::size_t seen = 0;
  while (seen < reachable && result == 0) {
    result = order(Advance(buf1, seen * width), Advance(buf2, seen * width));
    ++seen;
  }
  if (seen == reachable && reachable < count) status = ERR_TM_LENGTH_EXCEEDED;
  return result;
}

}  // namespace

int XoClassId::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                       void* buf2, unsigned short, unsigned int count, int& status) {
  status = 0;
  if (format == FormMemory) return CompareValues<XoClassId>(buf1, buf2, count);
  int const order = CompareStored(kClassIdWidth, len1, buf1, len2, buf2, count, status,
                                  [](unsigned char const* a, unsigned char const* b) {
                                    int const byNumber = OrderOfBytes<1, 0>(a, b);
                                    return byNumber != 0 ? byNumber : OrderOfBytes<3, 2>(a, b);
                                  });
  if (order == 0) return 0;
  // Null is asked of the first elements, whichever differ. Orders of arrays depend on it.
  constexpr o_u4b kNull = 0xFFFFFFFF;
  if (LoadBytes<o_u4b>(buf1) == kNull) return -1;
  return LoadBytes<o_u4b>(buf2) == kNull ? 1 : order;
}

int XoObjId::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                     void* buf2, unsigned short, unsigned int count, int& status) {
  status = 0;
  if (format == FormMemory) return CompareValues<XoObjId>(buf1, buf2, count);
  return CompareStored(
      kObjectIdWidth, len1, buf1, len2, buf2, count, status,
      [](unsigned char const* a, unsigned char const* b) { return OrderOfBytes<9, 4>(a, b); });
}

int XoRef::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                   void* buf2, unsigned short, unsigned int count, int& status) {
  status = 0;
  if (format == FormMemory) return CompareValues<XoRef>(buf1, buf2, count);
  return CompareStored(
      kReferenceWidth, len1, buf1, len2, buf2, count, status,
      [](unsigned char const* a, unsigned char const* b) { return OrderOfBytes<11, 4>(a, b); });
}

int XoSeal::Compare(unsigned char format, unsigned int, void* buf1, unsigned int, void* buf2,
                    unsigned short, unsigned int count, int& status) {
  status = 0;
  if (format == FormMemory) return CompareValues<XoSeal>(buf1, buf2, count);
  // Most significant bytes first: the first difference decides.
  for (std::size_t seen = 0; seen < count; ++seen) {
    auto const* const a = static_cast<unsigned char const*>(Advance(buf1, seen * kSealWidth));
    auto const* const b = static_cast<unsigned char const*>(Advance(buf2, seen * kSealWidth));
    if (int const order = OrderOfBytesUpward(a, b); order != 0) return order;
  }
  return 0;
}
