#include "tools/weighted_text.hpp"

#include <algorithm>

#include "tools/text_decoder.hpp"

namespace xo::tool {
namespace {

constexpr unsigned char kTextTag = 0x40;
constexpr unsigned char kKeyTag = 0xC0;
constexpr std::size_t kPayloadAt = 1;

o_u2b PayloadOf(unsigned char const* bytes, unsigned char format) {
  o_u2b payload = 0;
  ShortStoreOne(&payload, bytes + kPayloadAt, format);
  return payload;
}

char const* Characters(ByteSpan record) {
  return static_cast<char const*>(static_cast<void const*>(record.data() + kWeightedHeader));
}

template <class Text>
void MakeRecordOf(IndexShape const& shape, XoString const& source, Bytes& record) {
  XoTypeMgr const manager;
  char const* const bytes = source.StrGet();
  Text text(bytes != nullptr ? bytes : "");
  record.resize(manager.DiskLenGet(shape.type, &text, shape.format, 1, FormMemory));
  manager.Store(shape.type, record.data(), &text, shape.format, 1);
}

template <class Text>
std::size_t MakeKeyOf(IndexShape const& shape, ByteSpan record, unsigned char* key,
                      std::size_t room) {
  Text text(Characters(record));
  auto const format = static_cast<unsigned char>(shape.format | FormatIndexKey);
  return XoTypeMgr{}.Translate(shape.type, key, format, static_cast<unsigned>(room), &text,
                               FormMemory, 0, 1);
}

bool FoldsCase(IndexShape const& shape) { return shape.type == static_cast<char>(XoCASEISTRING_T); }

}  // namespace

IndexShape WeightedShape(char type, unsigned char format, unsigned keyLength) {
  IndexShape shape;
  shape.type = type;
  shape.format = format;
  shape.codeSet = kWeightedCodeSet;
  shape.keyLength = static_cast<std::uint16_t>(keyLength);
  return shape;
}

void MakeWeightedRecord(IndexShape const& shape, XoString const& text, Bytes& record) {
  FoldsCase(shape) ? MakeRecordOf<XoCaseIString>(shape, text, record)
                   : MakeRecordOf<XoIString>(shape, text, record);
}

std::size_t MakeWeightedKey(IndexShape const& shape, ByteSpan record, unsigned char* key,
                            std::size_t room) {
  return FoldsCase(shape) ? MakeKeyOf<XoCaseIString>(shape, record, key, room)
                          : MakeKeyOf<XoIString>(shape, record, key, room);
}

bool IsWeightedRecord(IndexShape const& shape, ByteSpan bytes) {
  if (bytes.size() < kWeightedFrame || bytes[0] != kTextTag) return false;
  if (PayloadOf(bytes.data(), shape.format) + kWeightedHeader != bytes.size()) return false;
  auto const text = bytes.subspan(kWeightedHeader);
  return std::find(text.begin(), text.end(), 0) == text.end() - 1;
}

std::string TextOfWeightedRecord(ByteSpan record) {
  XoString text(Characters(record));
  text.SetCodeSetCode(kWeightedCodeSet);
  return Encoded(text);
}

ByteSpan TextBytes(ByteSpan record) {
  return record.subspan(kWeightedHeader, record.size() - kWeightedFrame);
}

WeightedKey::WeightedKey(MDB_val const& key, IndexShape const& shape)
    : weights(static_cast<unsigned char const*>(key.mv_data) + kWeightedHeader,
              key.mv_size - kWeightedFrame),
      mayBeCut(key.mv_size >= shape.keyLength),
      isDamaged(false) {
  auto const* const bytes = static_cast<unsigned char const*>(key.mv_data);
  isDamaged = bytes[0] != kKeyTag || bytes[key.mv_size - 1] != 0 ||
              PayloadOf(bytes, shape.format) + kWeightedHeader != key.mv_size;
}

Bytes KeyOfWeights(IndexShape const& shape, ByteSpan weights) {
  Bytes key(kWeightedFrame + weights.size());
  auto const payload = static_cast<o_u2b>(weights.size() + 1);
  key[0] = kKeyTag;
  ShortStoreOne(key.data() + kPayloadAt, &payload, shape.format);
  std::copy(weights.begin(), weights.end(), key.begin() + kWeightedHeader);
  return key;
}

}  // namespace xo::tool
