#pragma once

#include <algorithm>
#include <cstring>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {

using ByteList = std::vector<unsigned char>;

/// Bytes on the heap at an odd address, and no more than there are, so that nothing may be aligned
/// or read behind.
class Odd {
 public:
  explicit Odd(ByteList const& content) : bytes(new unsigned char[content.size() + 1]) {
    std::copy(content.begin(), content.end(), bytes + 1);
  }
  ~Odd() { delete[] bytes; }
  Odd(Odd const&) = delete;
  Odd& operator=(Odd const&) = delete;
  operator void*() const { return bytes + 1; }

 private:
  unsigned char* bytes;
};

inline TypeDescriptor const& Row(int id) { return *CurrentTypeTable[id]; }

inline constexpr struct {
  int id;
  unsigned memory, disk;
} kWidths[] = {{XoOBJID_T, 12, 10}, {XoCLID_T, 4, 4}, {XoREF_T, 16, 14}};

inline void Put(ByteList& bytes, std::uint32_t value, unsigned width, bool isBig) {
  for (unsigned i = 0; i < width; ++i) {
    bytes.push_back(static_cast<unsigned char>(value >> 8 * (isBig ? width - 1 - i : i)));
  }
}

inline ByteList Stored(XoObjId const& v, bool isBig = false) {
  ByteList bytes;
  Put(bytes, v.block, 4, isBig);
  Put(bytes, v.low, 4, isBig);
  Put(bytes, v.high, 2, isBig);
  return bytes;
}
inline ByteList Stored(XoClassId const& v, bool isBig = false) {
  ByteList bytes;
  Put(bytes, v.classNumber, 2, isBig);
  Put(bytes, v.version, 2, isBig);
  return bytes;
}
inline ByteList Stored(XoRef const& v, bool isBig = false) {
  ByteList bytes = Stored(XoObjId{v.block, v.low, v.high}, isBig);
  Put(bytes, v.database, 2, isBig);
  Put(bytes, v.classNumber, 2, isBig);
  return bytes;
}

template <class Value>
ByteList InMemory(Value const& value) {
  ByteList bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

inline ByteList operator+(ByteList a, ByteList const& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// Identifiers of which many are equal in some of their fields.
class IdentifierRows : public RandomTest {
 protected:
  o_u2b Word() { return static_cast<o_u2b>(OneIn(2) ? Below(3) : Bits()); }
  o_u4b Wide() { return static_cast<o_u4b>(OneIn(2) ? Below(3) : Bits()); }
  XoObjId AnyObject() { return {Wide(), Wide(), Word()}; }
  XoClassId AnyClass() { return OneIn(4) ? XoClassId{65535, 65535} : XoClassId{Word(), Word()}; }
  XoRef AnyReference() { return {Wide(), Wide(), Word(), Word(), Word(), Word()}; }
};

}  // namespace xo::test
