#include "tools/text_form.hpp"

#include "tools/text_decoder.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

constexpr std::size_t kLengthBytes = 2;
constexpr std::size_t kShortestRecord = 6;
constexpr std::size_t kCodeSetAt = 2;
constexpr std::size_t kLanguageAt = 3;
constexpr unsigned char kEndMark = 0xFF;

/// The library reads what it takes as a source or an operand, and does not write there.
void* Operand(ByteSpan bytes) { return const_cast<unsigned char*>(bytes.data()); }

unsigned SizeOf(ByteSpan bytes) { return static_cast<unsigned>(bytes.size()); }

}  // namespace

IndexShape TextShape(unsigned char format, unsigned char codeSet, unsigned char language,
                     unsigned keyLength) {
  IndexShape shape;
  shape.type = XoSTRING_T;
  shape.format = format;
  shape.codeSet = codeSet;
  shape.language = language;
  shape.keyLength = static_cast<std::uint16_t>(keyLength);
  shape.collationVersion = XoLanguageContext::GetCollationVersion();
  shape.collationFingerprint = XoLanguageContext::GetCollationFingerprint();
  return shape;
}

void MakeRecord(IndexShape const& shape, XoString const& text, Bytes& record) {
  if (shape.IsWeighted()) return MakeWeightedRecord(shape, text, record);
  XoTypeMgr const manager;
  auto* const source = const_cast<XoString*>(&text);
  record.resize(manager.DiskLenGet(shape.type, source, shape.format, 1, FormMemory));
  manager.Store(shape.type, record.data(), source, shape.format, 1);
}

std::size_t MakeKey(IndexShape const& shape, ByteSpan record, unsigned char* key,
                    std::size_t room) {
  if (shape.IsWeighted()) return MakeWeightedKey(shape, record, key, room);
  auto const format = static_cast<unsigned char>(shape.format | FormatIndexKey);
  return XoTypeMgr{}.Translate(shape.type, key, format, static_cast<unsigned>(room),
                               Operand(record), shape.format, SizeOf(record), 1);
}

bool IsRecord(IndexShape const& shape, ByteSpan bytes) {
  if (shape.IsWeighted()) return IsWeightedRecord(shape, bytes);
  if (bytes.size() < kShortestRecord) return false;
  o_u2b length = 0;
  ShortStoreOne(&length, bytes.data(), shape.format);
  return length + kLengthBytes == bytes.size() && bytes[kCodeSetAt] == shape.codeSet &&
         bytes[kLanguageAt] == shape.language && bytes[bytes.size() - 2] == 0 &&
         bytes.back() == kEndMark;
}

std::string TextOfRecord(IndexShape const& shape, ByteSpan record) {
  if (shape.IsWeighted()) return TextOfWeightedRecord(record);
  XoString text;
  XoTypeMgr{}.Load(shape.type, &text, Operand(record), shape.format, 1);
  return Encoded(text);
}

int CompareRecords(IndexShape const& shape, ByteSpan a, ByteSpan b, unsigned short cmpOp) {
  int status = 0;
  return XoTypeMgr{}.Cmp(shape.type, SizeOf(a), Operand(a), SizeOf(b), Operand(b), cmpOp, 1,
                         shape.format, status);
}

}  // namespace xo::tool
