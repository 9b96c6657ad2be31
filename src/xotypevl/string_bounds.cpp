#include "src/xotypevl/string_bounds.hpp"

#include <algorithm>
#include <cstdint>

#include "base/platform.hpp"
#include "src/xotypevl/bound_area.hpp"
#include "src/xotypevl/bound_key.hpp"
#include "src/xotypevl/common_prefix.hpp"
#include "xoidxbounds.hpp"
#include "xostrcmp.hpp"

namespace xo {

namespace {

/// Bits of an `op` that are the relation, and those that are options of the comparison.
constexpr unsigned short kRelationBits = 0x800F;
constexpr unsigned short kCompareBits = 0x7FF0;
/// Of the options: spaces or symbols do not count in the keys that are scanned.
constexpr unsigned short kScanSkips = 0x1000;
constexpr unsigned short kSkipOrders = kCmpSkipSpaces | kCmpSkipSymbols;
/// In place of a group, in the language byte of a value: it is no key that is cut.
constexpr unsigned char kNotCut = 1;

/// How far apart two neighbouring estimates are.
constexpr double kUnitOfOrders = 1048576.0;
constexpr double kUnitOfBytes = 128.0;

/// A predicate on a text.
class StringPredicate {
 public:
  StringPredicate(unsigned short op, void* value, unsigned char format_, Generation generation_)
      : format(format_),
        generation(generation_),
        relation(op & kRelationBits),
        options(op & kCompareBits),
        source{value, text, format_, generation_} {
    text.Read(value, kNoLimit, format_, generation_);
    hasCodeSet = EffectiveCodeSet(text.Header().codeSet, format_) != kNoCodeSet;
    source.skipsOrders = HasOption(kSkipOrders);
    if (hasCodeSet && HasOption(kCmpIgnoreCase)) source.caseMask = kCaseBits;
    if (hasCodeSet && HasOption(kCmpIgnoreAccents)) source.accentMask = kAccentBits;
    FindPattern();
    if (source.IsPattern()) relation |= kXoBoundPattern;
  }

  // `source` refers to the text.
  StringPredicate(StringPredicate const&) = delete;
  StringPredicate& operator=(StringPredicate const&) = delete;

  /// The relation, with the mark of a pattern.
  unsigned short Relation() const { return relation; }

  /// Fills the bounds that are missing, and tells the share of the keys between the ends of `range`
  /// that the predicate selects.
  float Evaluate(XoIdxBounds const* range, XoIdxBounds& bounds) {
    // First, as `bounds` may be the range.
    bool const isKnown = HasBothEnds(range);
    EvaluatedText boundLow;
    EvaluatedText boundHigh;
    TextPart low{&text, static_cast<unsigned short>(source.wildcard)};
    TextPart high = low;
    // What begins with a wildcard may stand anywhere.
    if (source.wildcard != 0) {
      // Keys of which parts are skipped may match and stand before the value.
      bool const skips = HasOption(kScanSkips) && source.skipsOrders;
      TakeBound<BuildLowBound>(bounds.low, bounds.lowLen, Selects(kXoBoundBelow) || skips,
                               bounds.keyLimit, boundLow, low);
      TakeBound<BuildHighBound>(bounds.high, bounds.highLen, Selects(kXoBoundAbove),
                                bounds.keyLimit, boundHigh, high);
    }
    if (!isKnown) return 0;
    EvaluatedText rangeLow;
    EvaluatedText rangeHigh;
    rangeLow.Read(range->low, range->lowLen, format, generation);
    rangeHigh.Read(range->high, range->highLen, format, generation);
    return ShareOf(
        {low, high, {&rangeLow, rangeLow.Characters()}, {&rangeHigh, rangeHigh.Characters()}});
  }

 private:
  bool Selects(unsigned short bits) const { return (relation & bits) != 0; }
  bool HasOption(unsigned short bits) const { return (options & bits) != 0; }

  void FindPattern() {
    RecordHeader const& header = text.Header();
    if (HasOption(kCmpNoWildcards)) {
      // Nothing is looked for.
    } else if (!key.MakePlain(source)) {
      unsigned short place = 0;
      // Bytes and orders need no terminator to be counted.
      bool const isRow = header.codeSet == kNoCodeSet || header.codeSet == kSortOrderSet;
      bool const isCounted = isRow && text.IsWhole();
      unsigned short const count = isCounted ? text.CharactersThere() : kAllCharacters;
      source.wildcard =
          FindWildcard(header.codeSet, header.language, isCounted ? text.Start() : text.Text(), 0,
                       count, &place, FormNibble(format));
      source.wildcardPlace = place;
      source.hasWildcard = source.IsPattern();
    }
    // A key that is cut stands for everything that begins with it.
    bool const isCut =
        (header.language & kCutAtGroup) != 0 && (header.language & ~kCutAtGroup) != kNotCut;
    if (!source.IsPattern() && isCut) {
      source.wildcardPlace = text.Bytes();
      source.wildcard = text.CharactersThere();
    }
  }

  /// Takes the bound at one end, which `kBuild` builds where it is missing. `isOpen`: every key on
  /// that side may match, so that none is built.
  template <auto* kBuild>
  void TakeBound(void*& record, std::uint8_t& length, bool isOpen, std::uint8_t keyLimit,
                 EvaluatedText& bound, TextPart& part) {
    bool const exists = record != nullptr;
    if (!exists) {
      if (isOpen) return;
      key.Make(source);
      BuiltBound const built = kBuild(source, key, keyLimit);
      record = built.record;
      length = built.length;
      part.characters = built.characters;
    }
    bound.Read(record, length, format, generation);
    part.text = &bound;
    if (exists) part.characters = bound.Characters();
  }

  float ShareOf(FourTexts const& texts) const {
    FourEstimates const numbers =
        EstimateTexts(texts, static_cast<unsigned short>(source.caseMask | source.accentMask));
    double const unit = hasCodeSet ? kUnitOfOrders : kUnitOfBytes;
    double const total = numbers.rangeHigh - numbers.rangeLow + unit;
    double area = BoundRangeArea(relation, numbers.valueLow, numbers.valueHigh, numbers.rangeLow,
                                 numbers.rangeHigh, unit);
    if (area == 0) area = unit * TiesSelected(texts, numbers);
    if (source.wildcard == 0 && area < total) {
      XOLA_assert("charWildPos != 0 || valueRange >= valueTotalArea", "src\\xotypevl", 1128);
    }
    // Ends in the wrong order may be just one unit apart, and then hold no keys.
    return total != 0 ? static_cast<float>(area / total) : 0.0F;
  }

  /// How many units are selected where the numbers tell nothing: texts may differ behind the
  /// letters that make an estimate, so the exact comparison decides.
  int TiesSelected(FourTexts const& texts, FourEstimates const& numbers) const {
    int const beside = SelectedBeside(texts, numbers);
    if (beside != 0 || !Selects(kXoBoundEqual)) return beside;
    return EqualsCutEnd(texts, numbers) || AreHighBytes(texts) ? 1 : 0;
  }

  int SelectedBeside(FourTexts const& texts, FourEstimates const& numbers) const {
    bool const tiesBelow = Selects(kXoBoundBelow) && numbers.rangeLow == numbers.valueHigh;
    bool const tiesAbove = Selects(kXoBoundAbove) && numbers.rangeHigh == numbers.valueLow;
    if (!tiesBelow && !tiesAbove) return 0;
    int selected = 0;
    if (Selects(kXoBoundBelow) &&
        Compare(texts.valueHigh, texts.rangeLow, texts.valueLow.characters) >= 0) {
      ++selected;
    }
    if (Selects(kXoBoundAbove) &&
        Compare(texts.valueLow, texts.rangeHigh,
                std::min(texts.rangeHigh.characters, texts.valueHigh.characters)) <= 0) {
      ++selected;
    }
    return selected;
  }

  /// Whether the highest key is one that is cut and equals what the value begins with.
  bool EqualsCutEnd(FourTexts const& texts, FourEstimates const& numbers) const {
    return numbers.rangeHigh < numbers.valueHigh &&
           texts.rangeHigh.characters < texts.valueHigh.characters &&
           Compare(texts.valueHigh, texts.rangeHigh, texts.rangeHigh.characters) == 0;
  }

  /// Bytes above 127 count as 127 in an estimate, and would be lost.
  bool AreHighBytes(FourTexts const& texts) const {
    auto const beginsHigh = [](EvaluatedText const& of) {
      return of.Header().codeSet == kNoCodeSet && LoadNarrow(of.Text()) > 127;
    };
    return text.Header().codeSet == kNoCodeSet && beginsHigh(*texts.valueHigh.text) &&
           beginsHigh(*texts.rangeHigh.text);
  }

  int Compare(TextPart const& one, TextPart const& other, unsigned short characters) const {
    return CompareTexts(*one.text, *other.text, static_cast<unsigned short>(relation | options),
                        characters, FormNibble(format));
  }

  unsigned char const format;
  Generation const generation;
  unsigned short relation;
  unsigned short const options;
  EvaluatedText text;
  bool hasCodeSet;
  BoundSource source;
  ValueKey key;
};

float Evaluate(XoIdxBounds const* range, unsigned short& op, void* value, unsigned char format,
               void* bounds, Generation generation) {
  auto const diskFormat = static_cast<unsigned char>(format & ~FormMemory);
  StringPredicate predicate(op, value, diskFormat, generation);
  op = predicate.Relation();
  return bounds != nullptr ? predicate.Evaluate(range, *static_cast<XoIdxBounds*>(bounds)) : 0;
}

}  // namespace

float StringEvalAndBound(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                         unsigned, void* bounds, XoEvalData*) {
  return Evaluate(range, op, value, format, bounds, Generation::kCurrent);
}

float OlderStringEvalAndBound(XoIdxBounds* range, unsigned short& op, void* value,
                              unsigned char format, unsigned, void* bounds, XoEvalData*) {
  return Evaluate(range, op, value, format, bounds, Generation::kOlder);
}

}  // namespace xo
