#include <bit>
#include <cstdint>

#include "base/bytes.hpp"
#include "base/format.hpp"
#include "src/xoidentifiers/identifier_records.hpp"
#include "src/xotypes/array_walk.hpp"
#include "xoidentifiers.hpp"
#include "xoseal.hpp"

/// Comparison of the identifiers and of seals. Their test for memory form is of the whole format
/// byte. Values in memory compare by `operator!=`, which gives an order, without their lengths;
/// stored ones by bytes, where they lie.

using namespace xo;

namespace {

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
    auto const numberA = LoadBytes<std::uint64_t>(a + start) >> (to - start) * 8;
    auto const numberB = LoadBytes<std::uint64_t>(b + start) >> (to - start) * 8;
    if (numberA == numberB) return 0;
    // The bits below the highest byte that differs.
    int const below = (63 - std::countl_zero(numberA ^ numberB)) & ~7;
    return static_cast<int>(numberA >> below & 0xFF) - static_cast<int>(numberB >> below & 0xFF);
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

/// The orders of stored identifiers.
struct ClassIds : ClassIdRecord {
  static int Order(unsigned char const* a, unsigned char const* b) {
    int const byNumber = OrderOfBytes<1, 0>(a, b);
    return byNumber != 0 ? byNumber : OrderOfBytes<3, 2>(a, b);
  }
};

struct ObjectIds : ObjectIdRecord {
  static int Order(unsigned char const* a, unsigned char const* b) {
    return OrderOfBytes<9, 4>(a, b);
  }
};

struct References : ReferenceRecord {
  static int Order(unsigned char const* a, unsigned char const* b) {
    return OrderOfBytes<11, 4>(a, b);
  }
};

/// Compares values in memory, or stored ones as far as the lengths go. It is kept out of line so
/// that the path of an index key needs no stack of its own.
template <class Rules>
[[gnu::noinline]] int CompareArrays(unsigned char format, unsigned len1, void const* buf1,
                                    unsigned len2, void const* buf2, unsigned count, int& status) {
  if (format == FormMemory) return CompareValues<typename Rules::Value>(buf1, buf2, count);
  constexpr unsigned kWidth = Rules::kDiskWidth;
  unsigned const reachable =
      ReachableElements(ReachableElements(count, len1, kWidth), len2, kWidth);
  int result = 0;
  std::size_t seen = 0;
  while (seen < reachable && result == 0) {
    result = Rules::Order(Advance(buf1, seen * kWidth), Advance(buf2, seen * kWidth));
    ++seen;
  }
  if (seen == reachable && reachable < count) status = ERR_TM_LENGTH_EXCEEDED;
  return result;
}

template <class Rules>
int CompareIdentifiers(unsigned char format, unsigned len1, void const* buf1, unsigned len2,
                       void const* buf2, unsigned count, int& status) {
  status = 0;
  // The first element is reached whatever the lengths.
  if (count == 1 && format != FormMemory) return Rules::Order(Advance(buf1, 0), Advance(buf2, 0));
  return CompareArrays<Rules>(format, len1, buf1, len2, buf2, count, status);
}

}  // namespace

int XoClassId::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                       void* buf2, unsigned short, unsigned int count, int& status) {
  int const order = CompareIdentifiers<ClassIds>(format, len1, buf1, len2, buf2, count, status);
  if (order == 0 || format == FormMemory) return order;
  // Null is asked of the first elements, whichever differ. Orders of arrays depend on it.
  constexpr o_u4b kNull = 0xFFFFFFFF;
  if (LoadBytes<o_u4b>(buf1) == kNull) return -1;
  return LoadBytes<o_u4b>(buf2) == kNull ? 1 : order;
}

int XoObjId::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                     void* buf2, unsigned short, unsigned int count, int& status) {
  return CompareIdentifiers<ObjectIds>(format, len1, buf1, len2, buf2, count, status);
}

int XoRef::Compare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                   void* buf2, unsigned short, unsigned int count, int& status) {
  return CompareIdentifiers<References>(format, len1, buf1, len2, buf2, count, status);
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
