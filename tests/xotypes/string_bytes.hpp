#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/stored_bytes.hpp"
#include "tests/xostring/string_text.hpp"

/// Stored strings as the tests write and read them.
namespace xo::test {

using ByteList = std::vector<unsigned char>;

inline constexpr char kString = 11;
inline constexpr unsigned char kMemory = 8, kLittle = 1, kBig = 2, kLittleKey = 0x81,
                               kBigKey = 0x82, kToNative = 0x40, kDropSet = 0x20;

/// Bytes written as hexadecimal digits; everything else stands between.
inline ByteList Hex(std::string_view text) {
  ByteList bytes;
  unsigned digits = 0, value = 0;
  for (char const c : text) {
    unsigned const digit = c >= '0' && c <= '9'   ? static_cast<unsigned>(c - '0')
                           : c >= 'A' && c <= 'F' ? static_cast<unsigned>(c - 'A' + 10)
                           : c >= 'a' && c <= 'f' ? static_cast<unsigned>(c - 'a' + 10)
                                                  : 16;
    if (digit == 16) continue;
    value = value << 4 | digit;
    if (++digits % 2 == 0) bytes.push_back(static_cast<unsigned char>(value));
  }
  return bytes;
}

inline ByteList operator+(ByteList left, ByteList const& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// A 16-bit number in the byte order of a format.
inline ByteList Unit(unsigned value, unsigned char format) {
  ByteList bytes = {static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8)};
  if (format % 16 == 2) std::swap(bytes[0], bytes[1]);
  return bytes;
}

inline ByteList BytesOf(std::string_view text) { return ByteList(text.begin(), text.end()); }

inline ByteList UnitBytes(std::u16string_view text, unsigned char format) {
  ByteList bytes;
  for (char16_t const unit : text) {
    for (unsigned char const byte : Unit(unit, format)) bytes.push_back(byte);
  }
  return bytes;
}

/// A record with a header, of the text whose bytes are given.
inline ByteList Record(ByteList const& text, unsigned char codeSet, unsigned char language,
                       unsigned char format) {
  return Unit(static_cast<unsigned>(text.size() + 4), format) + ByteList{codeSet, language} + text +
         ByteList{0, 0xFF};
}

/// What a target held before; no operation writes this byte by itself in these tests' texts.
inline constexpr unsigned char kUntouched = 0xA5;

/// What came of a translation onto disk.
struct Produced {
  unsigned result;
  ByteList target;  ///< all of the room given
  bool operator==(Produced const&) const = default;
};

/// The bytes, filled up to `room`.
inline ByteList Filled(ByteList bytes, std::size_t room, unsigned char with) {
  bytes.resize(room, with);
  return bytes;
}

/// Translates strings in memory into exactly `room` bytes.
inline Produced FromMemory(XoTypeMgr const& manager, std::vector<XoString>& strings,
                           unsigned char targetFormat, unsigned room,
                           unsigned char sourceFormat = kMemory) {
  PlacedBytes const target(ByteList(room, kUntouched), 1);
  unsigned const result =
      manager.Translate(kString, target.Data(), targetFormat, room, strings.data(), sourceFormat, 0,
                        static_cast<unsigned>(strings.size()));
  return {result, ByteList(target.Data(), target.Data() + room)};
}

/// Translates exactly the stored bytes given into exactly `room` bytes. The source must come out as
/// it was.
inline Produced FromDisk(XoTypeMgr const& manager, ByteList const& stored,
                         unsigned char sourceFormat, unsigned char targetFormat, unsigned room,
                         unsigned count = 1) {
  PlacedBytes const source(stored, 1), target(ByteList(room, kUntouched), 1);
  unsigned result = manager.Translate(kString, target.Data(), targetFormat, room, source.Data(),
                                      sourceFormat, static_cast<unsigned>(stored.size()), count);
  if (!std::equal(stored.begin(), stored.end(), source.Data())) result = 0xDEADBEEF;
  return {result, ByteList(target.Data(), target.Data() + room)};
}

/// Reads exactly the stored bytes given into live strings, which hold something before.
struct Loaded {
  unsigned result;
  std::vector<XoString> strings;
};
inline Loaded ToMemory(XoTypeMgr const& manager, ByteList const& stored, unsigned char sourceFormat,
                       unsigned count, unsigned char targetFormat = kMemory) {
  PlacedBytes const source(stored, 1);
  std::vector<XoString> strings(count, Narrow("held before", kLatin2, 7));
  unsigned const result =
      manager.Translate(kString, strings.data(), targetFormat, 0, source.Data(), sourceFormat,
                        static_cast<unsigned>(stored.size()), count);
  return {result, std::move(strings)};
}

inline bool SameValue(XoString const& a, XoString const& b) {
  unsigned const unit = a.codeSet > 224 ? 2 : 1;
  return a.codeSet == b.codeSet && a.language == b.language && a.Len() == b.Len() &&
         std::memcmp(a.StrGet(), b.StrGet(), std::size_t{a.Len()} * unit) == 0;
}

}  // namespace xo::test
