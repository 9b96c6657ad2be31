#pragma once

/// The format byte travels with every stored value. Its low nibble says in which form the value is;
/// the upper bits are for text.
inline constexpr unsigned char FormLittle = 1;  ///< disk form, least significant byte first
inline constexpr unsigned char FormBig = 2;     ///< disk form, most significant byte first
inline constexpr unsigned char FormMemory = 8;  ///< an object or scalar as the program holds it

/// Stored bytes built for comparison, not for reading the value back. Fixed-width types ignore it.
inline constexpr unsigned char FormatIndexKey = 0x80;
/// Text only: code set 0 becomes the native code set when a value is sized or written.
inline constexpr unsigned char FormatNativeCodeSet = 0x40;
/// Text only: every code set but 0 and 254 becomes 0 when a value is sized or written. It takes
/// precedence over `FormatNativeCodeSet`.
inline constexpr unsigned char FormatDropCodeSet = 0x20;

namespace xo {

/// The low nibble of a format byte.
constexpr unsigned char FormNibble(unsigned char format) {
  return static_cast<unsigned char>(format & 15);
}

/// Whether bit 8 is set: the test for memory form of translations.
constexpr bool HasMemoryBit(unsigned char format) { return (format & FormMemory) != 0; }

/// Whether an element in this form is read as it lies, memory form and the machine's own byte
/// order: the test of comparison and hash.
constexpr bool ReadsInPlace(unsigned char format) {
  return FormNibble(format) == FormMemory || FormNibble(format) == FormLittle;
}

}  // namespace xo
