#include "src/xotypevl/common_prefix.hpp"

#include <algorithm>
#include <array>

#include "src/xostring/order_keys.hpp"

namespace xo {

namespace {

using Walk = std::array<XoStringIterator, 4>;

/// Whether the units of a text stand one behind the other, so that its place is all there is to it.
bool IsRow(XoStringIterator const& place) {
  return place.codeSet == kNoCodeSet || place.codeSet == kSortOrderSet;
}

unsigned short WithoutIgnored(unsigned short order, unsigned short ignored) {
  bool const isLetter = order >= kFirstLetterOrder && order < kFirstHanOrder;
  return isLetter ? static_cast<unsigned short>(order & ~ignored) : order;
}

/// The next order of a text, or its next byte where it has no code set; 0 at the end.
unsigned short NextUnit(XoStringIterator& place, unsigned short ignored) {
  if (place.codeSet == kNoCodeSet) {
    unsigned char const byte = LoadNarrow(place.cursor);
    if (byte != 0) ++place.cursor;
    return byte;
  }
  unsigned short order;
  if (place.codeSet == kSortOrderSet) {
    order = LoadWide(place.cursor, place.byteOrder);
    if (order != 0) place.cursor += sizeof order;
  } else {
    order = place.GetNextOrder(1);
  }
  return WithoutIgnored(order, ignored);
}

/// The places of a walk that it can go back to.
class SavedWalk {
 public:
  explicit SavedWalk(Walk const& walk) : saved(walk) {}

  void Save(Walk const& walk) {
    for (std::size_t side = 0; side < 4; ++side) {
      if (IsRow(walk[side])) {
        saved[side].cursor = walk[side].cursor;
      } else {
        saved[side] = walk[side];
      }
    }
  }
  void Restore(Walk& walk) const { walk = saved; }

 private:
  Walk saved;
};

/// Moves all four behind what they have in common, `limit` units at most. Returns what is left of
/// the limit.
unsigned short SkipCommonPrefix(Walk& walk, unsigned short limit, unsigned short ignored) {
  if (limit == 0) return 0;
  SavedWalk before(walk);
  for (bool isFirst = true; limit != 0; isFirst = false) {
    if (!isFirst) before.Save(walk);
    std::array<unsigned short, 4> units;
    for (std::size_t side = 0; side < 4; ++side) units[side] = NextUnit(walk[side], ignored);
    auto const differs = [&](std::size_t side) {
      return units[side] != units[0] || (isFirst && walk[side].orderGroup != walk[0].orderGroup);
    };
    if (differs(1) || differs(2) || differs(3)) {
      before.Restore(walk);
      break;
    }
    if (limit != kAllCharacters) --limit;
    if (units[0] == 0) break;
  }
  return limit;
}

/// How many characters make each of the four estimates, where `used` are skipped.
std::array<unsigned short, 4> EstimatedCharacters(FourTexts const& texts, int used) {
  auto const rest = [used](unsigned short characters) {
    return characters == kAllCharacters
               ? kAllCharacters
               : static_cast<unsigned short>(std::max(characters - used, 0));
  };
  return {rest(std::min(texts.valueLow.characters, texts.rangeLow.characters)),
          rest(std::min(texts.valueHigh.characters, texts.rangeHigh.characters)),
          rest(texts.rangeLow.characters), rest(texts.rangeHigh.characters)};
}

unsigned short LeastCharacters(FourTexts const& texts) {
  return std::min({texts.valueLow.characters, texts.valueHigh.characters, texts.rangeLow.characters,
                   texts.rangeHigh.characters});
}

/// Orders where they lie in a record.
class StoredOrders {
 public:
  explicit StoredOrders(EvaluatedText const& text)
      : start(text.Start()),
        bytes(text.Bytes()),
        byteOrder(text.ByteOrder()),
        group(LanguageOrDefault(text.Header().language) & 0x7F) {}

  unsigned char Group() const { return group; }

  /// An order, or 0 behind the last one. What lacks its second half is read as if that were 0.
  unsigned short Order(std::size_t place) const {
    std::size_t const at = 2 * place;
    if (at + 2 <= bytes) return LoadWide(start + at, byteOrder);
    return at < bytes ? InByteOrder(LoadNarrow(start + at), byteOrder)
                      : static_cast<unsigned short>(0);
  }

  /// `StringPrefixEstimate` from a place on.
  double Estimate(std::size_t place, unsigned short count) const {
    std::array<unsigned, kKept> kept{};
    if (count < kKept || 2 * (place + kKept) > bytes || !AreSignificant(place)) {
      unsigned* next = kept.data();
      std::size_t const end = std::min(place + count, (bytes + 1) / 2);
      for (; place < end && next != kept.data() + kept.size(); ++place) {
        unsigned short const order = Order(place);
        if (order == 0) break;
        if (order >= kFirstSignificantOrder) *next++ = Digit(order);
      }
    } else {
      // As most texts go on.
      for (std::size_t index = 0; index < kKept; ++index)
        kept[index] = Digit(OrderAt(place + index));
    }
    constexpr double kTwoTo32 = 4294967296.0;
    return static_cast<double>(kept[0] | unsigned{group} << 16) * kTwoTo32 +
           static_cast<double>(kept[2] | kept[1] << 16);
  }

 private:
  /// Orders that make an estimate.
  static constexpr std::size_t kKept = 3;

  unsigned Digit(unsigned short order) const { return KeyOf(order, group) >> 8 & 0xFFFF; }
  /// An order that is there.
  unsigned short OrderAt(std::size_t place) const { return LoadWide(start + 2 * place, byteOrder); }
  /// Whether as many orders as make an estimate, which are there, all count.
  bool AreSignificant(std::size_t place) const {
    return std::min({OrderAt(place), OrderAt(place + 1), OrderAt(place + 2)}) >=
           kFirstSignificantOrder;
  }

  char const* const start;
  std::size_t const bytes;
  unsigned char const byteOrder;
  unsigned char const group;
};

FourEstimates EstimateOrders(FourTexts const& texts, unsigned short ignored) {
  std::array<StoredOrders, 4> const orders{
      StoredOrders(*texts.valueLow.text), StoredOrders(*texts.valueHigh.text),
      StoredOrders(*texts.rangeLow.text), StoredOrders(*texts.rangeHigh.text)};
  auto const isSameGroup = [&](std::size_t side) {
    return orders[side].Group() == orders[0].Group();
  };
  unsigned short const limit = LeastCharacters(texts);
  std::size_t common = 0;
  int used = 0;
  if (isSameGroup(1) && isSameGroup(2) && isSameGroup(3)) {
    // What has no limit goes on to the end, and nothing is used up.
    for (; limit == kAllCharacters || used < limit; ++common) {
      unsigned short const unit = WithoutIgnored(orders[0].Order(common), ignored);
      auto const differs = [&](std::size_t side) {
        return WithoutIgnored(orders[side].Order(common), ignored) != unit;
      };
      if (differs(3) || differs(2) || differs(1)) break;
      if (limit != kAllCharacters) ++used;
      if (unit == 0) break;
    }
  }
  auto const characters = EstimatedCharacters(texts, used);
  return {orders[0].Estimate(common, characters[0]), orders[1].Estimate(common, characters[1]),
          orders[2].Estimate(common, characters[2]), orders[3].Estimate(common, characters[3])};
}

bool IsOrders(TextPart const& part) { return part.text->Header().codeSet == kSortOrderSet; }

}  // namespace

FourEstimates EstimateAnyTexts(FourTexts const& texts, unsigned short ignored) {
  Walk walk{texts.valueLow.text->Begin(), texts.valueHigh.text->Begin(),
            texts.rangeLow.text->Begin(), texts.rangeHigh.text->Begin()};
  unsigned short const limit = LeastCharacters(texts);
  int const used = limit - SkipCommonPrefix(walk, limit, ignored);
  auto const characters = EstimatedCharacters(texts, used);
  return {
      StringPrefixEstimate(walk[0], characters[0]), StringPrefixEstimate(walk[1], characters[1]),
      StringPrefixEstimate(walk[2], characters[2]), StringPrefixEstimate(walk[3], characters[3])};
}

FourEstimates EstimateTexts(FourTexts const& texts, unsigned short ignored) {
  bool const areOrders = IsOrders(texts.valueLow) && IsOrders(texts.valueHigh) &&
                         IsOrders(texts.rangeLow) && IsOrders(texts.rangeHigh);
  return areOrders ? EstimateOrders(texts, ignored) : EstimateAnyTexts(texts, ignored);
}

}  // namespace xo
