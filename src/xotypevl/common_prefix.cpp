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
  bool const isLetter = order >= kFirstLetterOrder && order < kFirstHanOrder;
  return isLetter ? static_cast<unsigned short>(order & ~ignored) : order;
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

}  // namespace

FourEstimates EstimateTexts(FourTexts const& texts, unsigned short ignored) {
  Walk walk{texts.valueLow.text->Begin(), texts.valueHigh.text->Begin(),
            texts.rangeLow.text->Begin(), texts.rangeHigh.text->Begin()};
  unsigned short const limit = std::min({texts.valueLow.characters, texts.valueHigh.characters,
                                         texts.rangeLow.characters, texts.rangeHigh.characters});
  unsigned short const left = SkipCommonPrefix(walk, limit, ignored);
  // Without a limit nothing is counted, and so nothing used up.
  int const used = limit - left;
  auto const estimate = [&](std::size_t side, unsigned short characters) {
    int const rest = characters == kAllCharacters ? int{kAllCharacters} : characters - used;
    return StringPrefixEstimate(walk[side], static_cast<unsigned short>(std::max(rest, 0)));
  };
  return {estimate(0, std::min(texts.valueLow.characters, texts.rangeLow.characters)),
          estimate(1, std::min(texts.valueHigh.characters, texts.rangeHigh.characters)),
          estimate(2, texts.rangeLow.characters), estimate(3, texts.rangeHigh.characters)};
}

}  // namespace xo
