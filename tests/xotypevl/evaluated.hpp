#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <xotypemgr.hpp>

#include "tests/base/stored_bytes.hpp"
#include "tests/xotypes/string_bytes.hpp"

/// Evaluation of predicates on stored values, in buffers that end where the values do.
namespace xo::test {

using MaybeBytes = std::optional<ByteList>;

/// The ends of an index; both missing stand for no range.
struct Keys {
  MaybeBytes low;
  MaybeBytes high;
};

/// What came of an evaluation. A bound that is missing is null.
struct Evaluated {
  float share;
  unsigned short op;
  MaybeBytes low;
  MaybeBytes high;
  bool operator==(Evaluated const&) const = default;
};

inline void PrintBytes(std::ostream& out, char const* name, MaybeBytes const& bytes) {
  out << ' ' << name << (bytes ? "" : " none");
  if (!bytes) return;
  for (unsigned const byte : *bytes)
    out << ' ' << "0123456789ABCDEF"[byte >> 4] << "0123456789ABCDEF"[byte & 15];
}
inline std::ostream& operator<<(std::ostream& out, Evaluated const& result) {
  out << "share " << result.share << " op " << std::hex << result.op << std::dec;
  PrintBytes(out, "low", result.low);
  PrintBytes(out, "high", result.high);
  return out;
}

/// An end of a range or a bound in a buffer of its own, at an odd address.
class PlacedKey {
 public:
  explicit PlacedKey(MaybeBytes const& key) {
    if (key) bytes.emplace(*key, 1), size = key->size();
  }
  void* Data() const { return bytes ? bytes->Data() : nullptr; }
  std::uint8_t Length() const { return static_cast<std::uint8_t>(size); }

 private:
  std::optional<PlacedBytes> bytes;
  std::size_t size = 0;
};

/// The bytes of a bound; `size` where its length does not tell it.
inline MaybeBytes BoundBytes(void const* bound, std::size_t size) {
  if (bound == nullptr) return std::nullopt;
  auto const* const bytes = static_cast<unsigned char const*>(bound);
  return ByteList(bytes, bytes + size);
}

/// Evaluates a predicate on exactly the bytes of its value, with bounds and without, which must
/// give the same. The value must come out as it was.
inline Evaluated Evaluate(char id, unsigned short op, ByteList const& value, Keys const& keys = {},
                          unsigned char format = kLittle, unsigned count = 1,
                          std::uint8_t keyLimit = 0) {
  PlacedBytes const operand(value, 1);
  PlacedKey const low(keys.low), high(keys.high);
  XoIdxBounds range{low.Data(), high.Data(), low.Length(), high.Length()};
  XoIdxBounds* const known = keys.low || keys.high ? &range : nullptr;
  XoIdxBounds bounds;
  bounds.keyLimit = keyLimit;
  XoTypeMgr const manager;
  Evaluated result{0, op, {}, {}};
  result.share =
      manager.EvalAndBound(id, known, result.op, operand.Data(), format, count, &bounds, nullptr);
  result.low = BoundBytes(bounds.low, bounds.lowLen);
  result.high = BoundBytes(bounds.high, bounds.highLen);
  ReleaseBounds(bounds);
  unsigned short opAlone = op;
  float const shareAlone =
      manager.EvalAndBound(id, known, opAlone, operand.Data(), format, count, nullptr, nullptr);
  EXPECT_EQ(shareAlone, result.share);
  EXPECT_EQ(opAlone, result.op);
  EXPECT_TRUE(std::equal(value.begin(), value.end(), operand.Data()));
  return result;
}

/// The share alone.
inline float Share(char id, unsigned short op, ByteList const& value, Keys const& keys,
                   unsigned char format = kLittle) {
  return Evaluate(id, op, value, keys, format).share;
}

/// The bounds of a record that holds some, after an evaluation of a predicate.
inline Keys WithPresent(char id, unsigned short op, ByteList const& value, Keys const& present,
                        unsigned char format = kLittle) {
  PlacedBytes const operand(value, 1);
  PlacedKey const low(present.low), high(present.high);
  XoIdxBounds bounds{low.Data(), high.Data(), low.Length(), high.Length()};
  XoTypeMgr().EvalAndBound(id, nullptr, op, operand.Data(), format, 1, &bounds, nullptr);
  Keys const result{BoundBytes(bounds.low, bounds.lowLen), BoundBytes(bounds.high, bounds.highLen)};
  // Only what was added has to be given back.
  if (present.low) bounds.low = nullptr;
  if (present.high) bounds.high = nullptr;
  ReleaseBounds(bounds);
  return result;
}

inline bool operator==(Keys const& a, Keys const& b) { return a.low == b.low && a.high == b.high; }
inline std::ostream& operator<<(std::ostream& out, Keys const& keys) {
  PrintBytes(out, "low", keys.low);
  PrintBytes(out, "high", keys.high);
  return out;
}

/// A share of whole keys.
inline float Of(double area, double total) { return static_cast<float>(area / total); }

/// Order of two stored values, none of which is a pattern under `cmpOp` 0x10.
inline int Ordered(char id, ByteList const& a, ByteList const& b, unsigned short cmpOp,
                   unsigned char format) {
  PlacedBytes const first(a, 1), second(b, 1);
  int status = 0;
  return XoTypeMgr().Cmp(id, static_cast<unsigned>(a.size()), first.Data(),
                         static_cast<unsigned>(b.size()), second.Data(), cmpOp, 1, format, status);
}

/// Whether a key is one that a predicate selects.
inline bool Selects(char id, unsigned short op, ByteList const& key, ByteList const& value,
                    unsigned char format) {
  int const order = Ordered(id, key, value, op & 0x10, format);
  unsigned const relation = order < 0 ? 2 : order > 0 ? 4 : 1;
  return (op & relation) != 0;
}

/// Whether a key is one that a scan between the bounds meets.
inline bool Meets(char id, Evaluated const& result, ByteList const& key, unsigned char format) {
  return !(result.low && Ordered(id, key, *result.low, 0x10, format) < 0) &&
         !(result.high && Ordered(id, key, *result.high, 0x10, format) > 0);
}

}  // namespace xo::test
