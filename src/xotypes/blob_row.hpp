#pragma once

#include "xotypes.hpp"

/// The operations of the row of blobs. The stored form of an array:
///
///     total | length | bytes | length | bytes …
///
/// in words of 4 bytes in the byte order of the format. `total` counts all that stands behind it; a
/// length of 0xFFFFFFFF is a null blob, without bytes.
namespace xo {

struct BlobOperations {
  static TypeDescriptor::StoreFunction Store;
  static TypeDescriptor::LoadFunction Load;
  static TypeDescriptor::NullSizeGetFunction NullSizeGet;
  static TypeDescriptor::SizeGetFunction SizeGet;
  static TypeDescriptor::SizeGetFromMemFileFunction SizeGetFromMemFile;
  static TypeDescriptor::TranslateFunction Translate;
  static TypeDescriptor::HashFunction Hash;
  static TypeDescriptor::NullFunction IsNull;
  static TypeDescriptor::NullFunction SetNull;
  static TypeDescriptor::PrintFunction Print;
  static TypeDescriptor::ScanFunction Scan;
  static TypeDescriptor::DefaultValueFunction DefaultValue;
};

/// Width of the words of a stored blob.
inline constexpr unsigned kBlobWord = 4;
/// The length of a null blob.
inline constexpr o_u4b kNullBlobLength = 0xFFFFFFFF;

/// The format of the row, in which "%L" is the length.
inline constexpr char kBlobFormat[] = "[BLOB,len=%L]";

/// Size of a stored array, as its total tells it.
unsigned StoredBlobSize(void const* record, unsigned char format);

/// The word at `place`.
o_u4b ReadBlobWord(void const* place, unsigned char format);

}  // namespace xo
