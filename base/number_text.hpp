#pragma once

#include <cstdint>

#include "export.hpp"

/// Numbers as text and text as numbers, the same on every platform and in every locale. Text is
/// ended by a zero byte; what stands behind the number in it is not looked at.
namespace xo {

/// How an integer's base is chosen.
enum class IntegerBase : unsigned char {
  kDecimal,   ///< always ten
  kByPrefix,  ///< sixteen behind "0x" or "0X", eight behind another leading "0", else ten
};

/// The integer that `text` begins with, behind white space and an optional sign; 0 where there is
/// none. What is beyond the type gives its nearest value.
XO_EXPORT std::int32_t ReadInt32(char const* text, IntegerBase base);
XO_EXPORT std::int64_t ReadInt64(char const* text, IntegerBase base);

/// Room for every integer of 64 bits in decimal, with sign and terminator.
inline constexpr unsigned kIntegerTextSize = 24;
/// Writes `value` in decimal, with a terminator, to `buffer`.
XO_EXPORT void PrintInteger(char (&buffer)[kIntegerTextSize], std::int64_t value);
XO_EXPORT void PrintInteger(char (&buffer)[kIntegerTextSize], std::uint64_t value);

/// Room for every text that `PrintDouble` writes.
inline constexpr unsigned kDoubleTextSize = 32;
/// Writes `value` as "%.17g" does, with a terminator, to `buffer`: 17 significant digits, which
/// every double survives. What is no finite number reads "NaN", "Infinity" or "-Infinity".
XO_EXPORT void PrintDouble(char (&buffer)[kDoubleTextSize], double value);

/// The number that `text` begins with, behind white space: what the C library's `strtod` reads,
/// hexadecimal numbers included; 0 where there is none. The whole texts "Infinity", "-Infinity" and
/// "NaN", in any case, give what `PrintDouble` writes so; the NaN has its sign bit set. What is too
/// great gives an infinity, what is too small the nearest number, 0 or subnormal.
XO_EXPORT double ReadDouble(char const* text);

}  // namespace xo
