#include "src/xotypevl/common_prefix.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

#include "src/xostring/order_keys.hpp"
#include "xoorderblocks.hpp"

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
  // As it mostly is; what follows would give the same, and takes longer.
  if (used == 0) {
    return {std::min(texts.valueLow.characters, texts.rangeLow.characters),
            std::min(texts.valueHigh.characters, texts.rangeHigh.characters),
            texts.rangeLow.characters, texts.rangeHigh.characters};
  }
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
  return std::min(std::min(texts.valueLow.characters, texts.valueHigh.characters),
                  std::min(texts.rangeLow.characters, texts.rangeHigh.characters));
}

/// Orders where they lie in a record.
class StoredOrders {
 public:
  /// Orders that make an estimate.
  static constexpr std::size_t kKept = 3;
  using Digits = std::array<unsigned, kKept>;

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
    Digits digits{};
    std::size_t const end = std::min(place + count, (bytes + 1) / 2);
    for (unsigned* next = digits.data(); place < end && next != digits.data() + kKept; ++place) {
      unsigned short const order = Order(place);
      if (order == 0) break;
      if (order >= kFirstSignificantOrder) *next++ = KeyOf(order, group) >> 8 & 0xFFFF;
    }
    return NumberOf(digits);
  }

  /// Reads what `Estimate(0, count)` is made of, if it is letters in the machine's byte order: the
  /// first one lowest, and zeros where there are fewer. False: it is not, and `letters` is
  /// anything.
  bool ReadLetters(unsigned short count, OrderBlock& letters) const {
    if (byteOrder == FormBig || group == kUntabledGroup) return false;
    std::size_t const size = std::min(bytes, std::size_t{2} * count);
    if (size >= 2 * kKept) {
      constexpr OrderBlock kThree = ~OrderBlock{0} >> 16;
      letters = LoadBytes<std::uint32_t>(start) | OrderBlock{LoadBytes<std::uint16_t>(start + 4)}
                                                      << 32;
      return (NoLetters(letters) & kThree) == 0;
    }
    letters = 0;
    if (size == 4) letters = LoadBytes<std::uint32_t>(start);
    if (size == 2) letters = LoadBytes<std::uint16_t>(start);
    OrderBlock const there = (OrderBlock{1} << 8 * size) - 1;
    return size % 2 == 0 && (NoLetters(letters) & there) == 0;
  }

  /// `Estimate` of what `ReadLetters` gives.
  double EstimateLetters(OrderBlock letters) const {
    OrderBlock const digits = letters & FourTimes(kFirstLetterOrder | kLetterBits);
    auto const digit = [digits](unsigned place) {
      return static_cast<unsigned>(digits >> 16 * place & 0xFFFF);
    };
    return NumberOf({digit(0), digit(1), digit(2)});
  }

 private:
  double NumberOf(Digits const& digits) const {
    // Rounded once, as the sum of both halves would be.
    std::int64_t const high = std::int64_t{group} << 16 | digits[0];
    return static_cast<double>(high << 32 | std::int64_t{digits[1]} << 16 | digits[2]);
  }

  char const* const start;
  std::size_t const bytes;
  unsigned char const byteOrder;
  unsigned char const group;
};

using FourOrders = std::array<StoredOrders, 4>;

/// The place of the first order that the texts do not have in common, or that ends them all, or
/// `limit` where that comes first. No text has as many orders as `kAllCharacters`.
std::size_t FirstUncommon(FourOrders const& orders, unsigned short limit, unsigned short ignored) {
  auto const isSameGroup = [&](std::size_t side) {
    return orders[side].Group() == orders[0].Group();
  };
  if (!isSameGroup(1) || !isSameGroup(2) || !isSameGroup(3)) return 0;
  for (std::size_t place = 0;; ++place) {
    if (place == limit) return place;
    unsigned short const unit = WithoutIgnored(orders[0].Order(place), ignored);
    auto const differs = [&](std::size_t side) {
      return WithoutIgnored(orders[side].Order(place), ignored) != unit;
    };
    if (differs(3) || differs(2) || differs(1) || unit == 0) return place;
  }
}

FourEstimates EstimateOrders(FourTexts const& texts, unsigned short ignored) {
  FourOrders const orders{StoredOrders(*texts.valueLow.text), StoredOrders(*texts.valueHigh.text),
                          StoredOrders(*texts.rangeLow.text), StoredOrders(*texts.rangeHigh.text)};
  std::size_t const place = FirstUncommon(orders, LeastCharacters(texts), ignored);
  auto const characters = EstimatedCharacters(texts, static_cast<int>(place));
  std::array<OrderBlock, 4> letters;
  auto const areLetters = [&](std::size_t side) {
    return orders[side].ReadLetters(characters[side], letters[side]);
  };
  // As it mostly is: the ends of an index begin with other letters.
  if (place == 0 && areLetters(0) && areLetters(1) && areLetters(2) && areLetters(3)) {
    return {orders[0].EstimateLetters(letters[0]), orders[1].EstimateLetters(letters[1]),
            orders[2].EstimateLetters(letters[2]), orders[3].EstimateLetters(letters[3])};
  }
  return {orders[0].Estimate(place, characters[0]), orders[1].Estimate(place, characters[1]),
          orders[2].Estimate(place, characters[2]), orders[3].Estimate(place, characters[3])};
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
