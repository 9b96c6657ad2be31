#pragma once

#include <bit>
#include <cstring>
#include <type_traits>

#include "base/export.hpp"
#include "xotypes.hpp"

class XoString;

/// A signed integer of 64 bits in two halves, so that it needs no more than the alignment of one.
///
/// Arithmetic wraps. Division truncates toward zero, and the remainder takes the sign of the
/// dividend; to divide by 0 is reported through `XOLA_assert` and gives 0. A shift by 64 or more
/// leaves nothing but, to the right, the sign.
class XoInt64 {
 public:
  // The halves in two's complement, which may be read and written.
  unsigned low;  ///< the lower 32 bits
  int high;      ///< the upper 32 bits, with the sign

  constexpr XoInt64() : low(0), high(0) {}
  constexpr XoInt64(unsigned lowHalf, int highHalf) : low(lowHalf), high(highHalf) {}
  constexpr XoInt64(int value) : XoInt64(static_cast<long long>(value)) {}
  constexpr XoInt64(unsigned value) : XoInt64(static_cast<long long>(value)) {}
  constexpr XoInt64(long value) : XoInt64(static_cast<long long>(value)) {}
  constexpr XoInt64(unsigned long value) : XoInt64(static_cast<unsigned long long>(value)) {}
  constexpr XoInt64(long long value) : XoInt64(static_cast<unsigned long long>(value)) {}
  constexpr XoInt64(unsigned long long value)
      : low(static_cast<unsigned>(value)), high(static_cast<int>(value >> 32)) {
    // The machine's own number has the halves in this order. Taken whole it need not be put
    // together and apart again at every step of a calculation.
    if (!std::is_constant_evaluated()) std::memcpy(static_cast<void*>(this), &value, sizeof value);
  }
  /// The whole part of the number as it reads with seven significant digits: 1234567890123.0 gives
  /// 1234568000000, and 9.9999999 gives 10. A number beyond the type gives the largest value or
  /// that negated; what is below 1, and a NaN, gives 0.
  XO_EXPORT XoInt64(double value);

  constexpr long long Get8b() const { return static_cast<long long>(GetU8b()); }
  constexpr unsigned long long GetU8b() const {
    unsigned long long value =
        static_cast<unsigned long long>(static_cast<unsigned>(high)) << 32 | low;
    if (!std::is_constant_evaluated()) std::memcpy(&value, this, sizeof value);
    return value;
  }

  // Shifts. The compound forms change this value and return a copy of it.
  constexpr XoInt64 operator<<(unsigned count) const {
    return count < 64 ? XoInt64(GetU8b() << count) : XoInt64();
  }
  constexpr XoInt64 operator>>(unsigned count) const {
    return XoInt64(Get8b() >> (count < 64 ? count : 63));
  }
  constexpr XoInt64 operator<<=(unsigned count) { return *this = *this << count; }
  constexpr XoInt64 operator>>=(unsigned count) { return *this = *this >> count; }

  constexpr bool operator==(XoInt64 const& other) const { return GetU8b() == other.GetU8b(); }
  constexpr bool operator!=(XoInt64 const& other) const { return !(*this == other); }
  constexpr bool operator<(XoInt64 const& other) const { return Get8b() < other.Get8b(); }
  constexpr bool operator<=(XoInt64 const& other) const { return Get8b() <= other.Get8b(); }
  constexpr bool operator>(XoInt64 const& other) const { return Get8b() > other.Get8b(); }
  constexpr bool operator>=(XoInt64 const& other) const { return Get8b() >= other.Get8b(); }

  constexpr XoInt64 operator+(XoInt64 const& other) const { return GetU8b() + other.GetU8b(); }
  constexpr XoInt64 operator-(XoInt64 const& other) const { return GetU8b() - other.GetU8b(); }
  constexpr XoInt64 operator*(XoInt64 const& other) const { return GetU8b() * other.GetU8b(); }
  constexpr XoInt64 operator/(XoInt64 const& divisor) const { return Division(divisor, 0); }
  constexpr XoInt64 operator%(XoInt64 const& divisor) const { return Division(divisor, 1); }
  constexpr XoInt64 operator-() const { return 0ULL - GetU8b(); }
  constexpr XoInt64 operator&(XoInt64 const& other) const { return GetU8b() & other.GetU8b(); }
  constexpr XoInt64 operator|(XoInt64 const& other) const { return GetU8b() | other.GetU8b(); }
  constexpr XoInt64 operator~() const { return ~GetU8b(); }

  constexpr XoInt64& operator+=(XoInt64 const& other) { return *this = *this + other; }
  constexpr XoInt64& operator-=(XoInt64 const& other) { return *this = *this - other; }
  constexpr XoInt64& operator*=(XoInt64 const& other) { return *this = *this * other; }
  constexpr XoInt64& operator/=(XoInt64 const& divisor) { return *this = *this / divisor; }
  constexpr XoInt64& operator%=(XoInt64 const& divisor) { return *this = *this % divisor; }
  constexpr XoInt64& operator++() { return *this += 1; }
  constexpr XoInt64& operator--() { return *this -= 1; }

  /// The magnitude; the lowest value, which has none, is its own.
  constexpr XoInt64 Abs() const { return high < 0 ? -*this : *this; }

  /// The quotient, or with `wantRemainder` not 0 the remainder.
  constexpr XoInt64 Division(XoInt64 const& divisor, int wantRemainder) const {
    if (divisor.GetU8b() == 0) {
      ReportDivisionByZero();
      return {};
    }
    // The machine may trap on the lowest value by -1.
    if (divisor.Get8b() == -1) return wantRemainder != 0 ? XoInt64() : -*this;
    return wantRemainder != 0 ? Get8b() % divisor.Get8b() : Get8b() / divisor.Get8b();
  }

  /// Appends the value to `out`, which it returns. In `format`, "%S", "%d" and "%i" stand for the
  /// value in decimal, "%o" in octal behind "0", "%x" and "%X" in hexadecimal behind "0x" or "0X",
  /// a minus ahead of that; of the lowest value only decimal shows the sign. Everything else stands
  /// for itself, a "%" without such a letter included, also of "%%". A null `format` is "%S".
  XO_EXPORT XoString& PrintToXoString(XoString& out, char const* format) const;

  /// Reads the value from `text` under a `format` of the same kind: what is no conversion must be
  /// met to the letter. A conversion takes a sign, then digits up to the end of the text or to the
  /// character that follows it in the format; a prefix "0x", "0X" or "0" gives their base, which
  /// must be that of the letter, any for "%S". Overflow wraps. Where the text does not match, the
  /// value becomes -1; where it ends too early, it keeps what was read so far.
  XO_EXPORT void ScanFromXoString(XoString const& text, char const* format);

  // Slots of the row. New elements are 0. A stored one is its two halves, the low one first in
  // every format.
  XO_EXPORT static TypeDescriptor::CreateFunction Create;
  XO_EXPORT static TypeDescriptor::DeleteFunction Delete;
  XO_EXPORT static TypeDescriptor::StoreFunction Store;
  XO_EXPORT static TypeDescriptor::LoadFunction Load;
  XO_EXPORT static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  XO_EXPORT static TypeDescriptor::SizeGetFunction SizeGet;

 private:
  XO_EXPORT static void ReportDivisionByZero();
};

static_assert(sizeof(XoInt64) == 8 && alignof(XoInt64) == 4);
// The halves lie as those of the machine's own number.
static_assert(std::endian::native == std::endian::little);
