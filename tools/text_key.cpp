#include "tools/text_key.hpp"

#include <algorithm>

namespace xo::tool {
namespace {

constexpr unsigned char kSortOrders = 254;
constexpr unsigned char kIdeographGroup = 20;
constexpr unsigned short kFirstSignificant = 16128;
constexpr unsigned short kFirstLetter = 16384;
constexpr unsigned short kFirstIdeograph = 32768;

// Fields of a letter's order: without these bits it is the letter with its extension.
constexpr unsigned short kAccentAndCase = 0x3F80;
/// Lower case comes first, as the greater number.
constexpr unsigned short kFirstCase = 0x3000;
/// Bits of an order key below the level of letters.
constexpr std::uint32_t kBelowLetters = 0x7F;

unsigned short UnitAt(unsigned char const* bytes, bool bigEndian) {
  return static_cast<unsigned short>(bigEndian ? bytes[0] << 8 | bytes[1]
                                               : bytes[1] << 8 | bytes[0]);
}

void PutUnit(unsigned char* bytes, std::size_t unit, bool bigEndian) {
  auto const low = static_cast<unsigned char>(unit);
  auto const high = static_cast<unsigned char>(unit >> 8);
  bytes[0] = bigEndian ? high : low;
  bytes[1] = bigEndian ? low : high;
}

bool IsBigEndian(unsigned char format) { return FormNibble(format) == FormBig; }

bool IsSignificant(unsigned short order, unsigned char group) {
  return order >= kFirstSignificant || group >= kIdeographGroup;
}

std::uint32_t LetterOf(unsigned short order, unsigned char group) {
  return OrderKey(order, group) & ~kBelowLetters;
}

/// The least order in the tree with the letter of this one.
unsigned short LeastOrder(unsigned short order, unsigned char group) {
  bool const isLetter =
      order >= kFirstLetter && order < kFirstIdeograph && group != kIdeographGroup;
  if (!isLetter) return order;
  return static_cast<unsigned short>((order & ~kAccentAndCase) | kFirstCase);
}

}  // namespace

TextKey::TextKey(MDB_val const& key, unsigned char format)
    : bytes(static_cast<unsigned char const*>(key.mv_data)),
      size(key.mv_size),
      length(UnitAt(bytes, IsBigEndian(format))),
      orders(0),
      bigEndian(IsBigEndian(format)) {
  std::size_t const there = size - kKeyHeader;
  std::size_t const whole = length > kKeyHeader ? length - kKeyHeader : 0;
  orders = std::min(there, whole) / 2;
}

unsigned char TextKey::Group() const {
  return static_cast<unsigned char>(bytes[kKeyGroupAt] & ~kKeyEndsAtGroup);
}

unsigned short TextKey::Order(std::size_t index) const {
  return UnitAt(bytes + kKeyHeader + 2 * index, bigEndian);
}

bool TextKey::IsSignificant(std::size_t index) const {
  return tool::IsSignificant(Order(index), Group());
}

bool TextKey::IsDamaged() const {
  return CodeSet() != kSortOrders || length < kKeyHeader || length % 2 != 0 || size % 2 != 0 ||
         length + 2 < size || length > size;
}

LetterRelation CompareLetters(TextKey const& key, Letters const& wanted, std::size_t count) {
  std::size_t found = 0;
  for (std::size_t index = 0; index < key.Orders(); ++index) {
    unsigned short const order = key.Order(index);
    if (order == 0) break;
    if (!IsSignificant(order, key.Group())) continue;
    if (found == count) return LetterRelation::kLonger;
    std::uint32_t const letter = LetterOf(order, key.Group());
    if (letter != wanted[found]) {
      return letter < wanted[found] ? LetterRelation::kLess : LetterRelation::kGreater;
    }
    ++found;
  }
  return found == count ? LetterRelation::kSame : LetterRelation::kShorter;
}

Letters LettersOf(TextKey const& key, bool isPattern, std::vector<unsigned short>& orders) {
  Letters letters;
  orders.clear();
  for (std::size_t index = 0; index < key.Orders(); ++index) {
    unsigned short const order = key.Order(index);
    if (order == 0) break;
    if (isPattern && IsWildcardOrder(order)) break;
    if (!IsSignificant(order, key.Group())) continue;
    letters.push_back(LetterOf(order, key.Group()));
    orders.push_back(LeastOrder(order, key.Group()));
  }
  return letters;
}

bool IsWildcardOrder(unsigned short order) {
  return order == AsteriskOrder() || order == QuestionOrder();
}

void CloseKey(std::vector<unsigned char>& key, unsigned char format) {
  PutUnit(key.data(), key.size(), IsBigEndian(format));
  key.insert(key.end(), {0, 0xFF});
}

void SetEndsAtGroup(std::vector<unsigned char>& key, bool ends) {
  unsigned char& group = key[kKeyGroupAt];
  group = static_cast<unsigned char>((group & ~kKeyEndsAtGroup) | (ends ? kKeyEndsAtGroup : 0));
}

std::vector<unsigned char> LeastKey(std::vector<unsigned short> const& orders, std::size_t count,
                                    unsigned char group, unsigned char format) {
  std::vector<unsigned char> key(kKeyHeader + 2 * count);
  key[2] = kSortOrders;
  key[kKeyGroupAt] = group;
  for (std::size_t index = 0; index < count; ++index) {
    PutUnit(key.data() + kKeyHeader + 2 * index, orders[index], IsBigEndian(format));
  }
  CloseKey(key, format);
  return key;
}

}  // namespace xo::tool
