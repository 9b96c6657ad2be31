#include "tools/index_layout.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <cstring>

#include "tools/lmdb_file.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

// The record's fields, numbers in `FormLittle`:
constexpr std::size_t kMagicAt = 0;           // 8 bytes
constexpr std::size_t kVersionAt = 8;         // 4 bytes
constexpr std::size_t kTypeAt = 12;           // 1 byte
constexpr std::size_t kFormatAt = 13;         // 1 byte, then 2 bytes of 0
constexpr std::size_t kEntriesAt = 16;        // 8 bytes
constexpr std::size_t kDistinctAt = 24;       // 8 bytes
constexpr std::size_t kKeysChecksumAt = 32;   // 8 bytes
constexpr std::size_t kLinesChecksumAt = 40;  // 8 bytes
constexpr std::size_t kNameAt = 48;           // 32 bytes, filled up with 0
// Of strings alone:
constexpr std::size_t kCodeSetAt = 80;         // 1 byte
constexpr std::size_t kLanguageAt = 81;        // 1 byte
constexpr std::size_t kKeyLengthAt = 82;       // 2 bytes
constexpr std::size_t kCollationAt = 84;       // 4 bytes
constexpr std::size_t kFingerprintAt = 88;     // 8 bytes
constexpr std::size_t kValuesChecksumAt = 96;  // 8 bytes
constexpr std::size_t kChecksumAt = 104;       // 8 bytes, of all bytes before

constexpr unsigned char kMagic[8] = {'X', 'O', 'T', 'M', 'I', 'D', 'X', 0};
constexpr std::size_t kNameSize = kCodeSetAt - kNameAt;
constexpr char kMetaKey[] = "index";

// FNV-1a of 64 bits, Fowler, Noll and Vo.
constexpr std::uint64_t kFnvStart = 0xcbf29ce484222325;
constexpr std::uint64_t kFnvPrime = 0x100000001b3;

std::uint64_t Fnv1a(std::uint64_t hash, void const* bytes, std::size_t size) {
  auto const* const first = static_cast<unsigned char const*>(bytes);
  for (std::size_t index = 0; index < size; ++index) hash = (hash ^ first[index]) * kFnvPrime;
  return hash;
}

std::uint64_t Number(unsigned char const* record, std::size_t offset) {
  std::uint64_t value = 0;
  O_8BStoreOne(&value, record + offset, FormLittle);
  return value;
}

void PutNumber(MetaRecord& record, std::size_t offset, std::uint64_t value) {
  O_8BStoreOne(record.data() + offset, &value, FormLittle);
}

std::array<char, kNameSize> NameField(char type) {
  std::array<char, kNameSize> field{};
  std::string const name = TypeName(type);
  std::copy_n(name.data(), std::min(name.size(), kNameSize), field.data());
  return field;
}

}  // namespace

MetaRecord EncodeMeta(IndexMeta const& meta) {
  MetaRecord record{};
  std::memcpy(record.data() + kMagicAt, kMagic, sizeof kMagic);
  LongStoreOne(record.data() + kVersionAt, &kLayoutVersion, FormLittle);
  record[kTypeAt] = static_cast<unsigned char>(meta.type);
  record[kFormatAt] = meta.format;
  PutNumber(record, kEntriesAt, meta.entries);
  PutNumber(record, kDistinctAt, meta.distinct);
  PutNumber(record, kKeysChecksumAt, meta.keysChecksum);
  PutNumber(record, kLinesChecksumAt, meta.linesChecksum);
  std::memcpy(record.data() + kNameAt, NameField(meta.type).data(), kNameSize);
  record[kCodeSetAt] = meta.codeSet;
  record[kLanguageAt] = meta.language;
  ShortStoreOne(record.data() + kKeyLengthAt, &meta.keyLength, FormLittle);
  LongStoreOne(record.data() + kCollationAt, &meta.collationVersion, FormLittle);
  PutNumber(record, kFingerprintAt, meta.collationFingerprint);
  PutNumber(record, kValuesChecksumAt, meta.valuesChecksum);
  PutNumber(record, kChecksumAt, Fnv1a(kFnvStart, record.data(), kChecksumAt));
  return record;
}

IndexMeta DecodeMeta(std::span<unsigned char const> record, std::string const& name) {
  unsigned char const* const bytes = record.data();
  if (record.size() < kTypeAt || std::memcmp(bytes + kMagicAt, kMagic, sizeof kMagic) != 0) {
    throw Trouble(fmt::format("{} is no index made by xotm", name));
  }
  o_u4b version = 0;
  LongStoreOne(&version, bytes + kVersionAt, FormLittle);
  if (version != kLayoutVersion) {
    throw Trouble(fmt::format("{} has layout version {}, this xotm reads version {} alone", name,
                              version, kLayoutVersion));
  }
  if (record.size() != kMetaRecordSize ||
      Number(bytes, kChecksumAt) != Fnv1a(kFnvStart, bytes, kChecksumAt)) {
    throw Trouble(fmt::format("{} (record of the index)", DamageMessage(name)));
  }
  IndexMeta meta;
  meta.type = static_cast<char>(bytes[kTypeAt]);
  meta.format = bytes[kFormatAt];
  meta.entries = Number(bytes, kEntriesAt);
  meta.distinct = Number(bytes, kDistinctAt);
  meta.keysChecksum = Number(bytes, kKeysChecksumAt);
  meta.linesChecksum = Number(bytes, kLinesChecksumAt);
  if (std::memcmp(bytes + kNameAt, NameField(meta.type).data(), kNameSize) != 0 ||
      !HasDiskForm(XoTypeMgr{}, meta.type)) {
    throw Trouble(fmt::format("{} is of a type that this xotm does not have", name));
  }
  meta.codeSet = bytes[kCodeSetAt];
  meta.language = bytes[kLanguageAt];
  ShortStoreOne(&meta.keyLength, bytes + kKeyLengthAt, FormLittle);
  LongStoreOne(&meta.collationVersion, bytes + kCollationAt, FormLittle);
  meta.collationFingerprint = Number(bytes, kFingerprintAt);
  meta.valuesChecksum = Number(bytes, kValuesChecksumAt);
  if (meta.HasText() && (XoLanguageContext::QueryCodeSet(meta.codeSet) == nullptr ||
                         XoLanguageContext::QueryLanguage(meta.language) == nullptr)) {
    throw Trouble(
        fmt::format("{} is in a code set or language that this xotm does not have", name));
  }
  if (meta.HasText() && (meta.keyLength < kShortestKey || meta.keyLength > kLongestKey)) {
    throw Trouble(fmt::format("{} (length of keys)", DamageMessage(name)));
  }
  return meta;
}

MDB_val MetaKey() { return LmdbValue(kMetaKey, sizeof kMetaKey - 1); }

std::uint64_t EntryChecksum(LineNumber line, void const* bytes, std::size_t size) {
  return Fnv1a(Fnv1a(kFnvStart, &line, sizeof line), bytes, size);
}

MDB_val LmdbValue(void const* bytes, std::size_t size) { return {size, const_cast<void*>(bytes)}; }

LineNumber LineNumberOf(MDB_val const& value) {
  LineNumber line = 0;
  // The numbers of one value lie packed, wherever the page has room.
  std::memcpy(&line, value.mv_data, sizeof line);
  return line;
}

}  // namespace xo::tool
