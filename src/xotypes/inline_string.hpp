#pragma once

#include "src/xotypes/stored_text.hpp"
#include "xoistring.hpp"
#include "xotypes.hpp"

/// The operations of the rows of `XoIString` and `XoCaseIString` on their stored form: one header
/// for all texts of an array,
///
///     tag (1 byte) | payload (2 bytes) | texts, each ended by a zero byte
///
/// in which `payload` counts the bytes of all texts with their zeros. In an index key the texts are
/// weights.
namespace xo {

/// Plain text, as it is stored as a rule; and as it is stored under a format with high bits.
inline constexpr unsigned char kInlineText = 0x40;
inline constexpr unsigned char kInlineTextToo = 1;
/// Bits of the tag of a key. The upper one alone tells that it is one.
inline constexpr unsigned char kInlineKeyBits = 0xC0;
inline constexpr unsigned char kInlineKey = 0x80;

/// Tag and payload.
inline constexpr unsigned kInlineHeaderBytes = 3;

/// The header of a stored array of which `available` bytes are there; those that are not read as 0.
struct InlineHeader {
  unsigned char tag;
  unsigned short payload;
  bool IsKey() const { return (tag & kInlineKey) != 0; }
};

inline InlineHeader ReadInlineHeader(void const* record, std::size_t available,
                                     unsigned char nibble) {
  auto const low = ByteAt(record, 1, available);
  auto const high = ByteAt(record, 2, available);
  return {ByteAt(record, 0, available),
          InByteOrder(static_cast<unsigned short>(low | high << 8), nibble)};
}

/// Bytes of stored texts that are there.
inline std::size_t TextsThere(InlineHeader const& header, std::size_t available) {
  return std::min<std::size_t>(header.payload,
                               available > kInlineHeaderBytes ? available - kInlineHeaderBytes : 0);
}

/// The slots of a row of `Text`.
template <class Text>
struct InlineStringOperations {
  static TypeDescriptor::StoreFunction Store;
  static TypeDescriptor::LoadFunction Load;
  static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  static TypeDescriptor::SizeGetFunction SizeGet;
  static TypeDescriptor::SizeGetFromMemFileFunction SizeGetFromMemFile;
  static TypeDescriptor::TranslateFunction Translate;
  /// All hash alike.
  static TypeDescriptor::HashFunction Hash;
  static TypeDescriptor::DefaultValueFunction DefaultValue;
};

extern template struct InlineStringOperations<XoIString>;
extern template struct InlineStringOperations<XoCaseIString>;

}  // namespace xo
