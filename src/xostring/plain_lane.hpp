#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "src/xostring/entry_lookup.hpp"
#include "src/xostring/level_comparison.hpp"
#include "src/xostring/order_keys.hpp"

/// The fast lane of text comparison, for two texts of one code set and language and no pattern. It
/// passes over units that are the same on both sides, and is done where the first that differ are
/// two letters. Where that leaves texts open it reads characters that are one sort order each, with
/// neither contraction nor expansion, straight from the table. Where it meets anything else it
/// leaves off, and the general comparison takes over from there.
namespace xo {

/// At which level an order is compared.
enum class Weight : unsigned char { kLetter, kIgnorable, kSkipped };

/// The weight of an entry's order under an operator; the end counts as a letter.
inline Weight WeightOf(CharOrderEntry const* entry, unsigned short cmpOp) {
  if (entry == nullptr || entry->order >= kFirstSignificantOrder) return Weight::kLetter;
  unsigned short const skipping =
      entry->order < kFirstSymbolOrder ? kCmpSkipSpaces : kCmpSkipSymbols;
  return (cmpOp & skipping) != 0 ? Weight::kSkipped : Weight::kIgnorable;
}

/// No character: what contracts with nothing.
inline constexpr unsigned short kNothing = 0;

/// One byte a character.
struct NarrowUnits {
  /// Most characters that contract into one sort order.
  static constexpr std::size_t kLongestContraction = 5;
  static constexpr std::size_t kSize = 1;
  static constexpr unsigned char kCodeSet = 1;
  static unsigned short Get(char const* text) { return LoadNarrow(text); }
  static CharOrderEntry const* Find(OrderTable const& table, unsigned short code) {
    return table.FindNarrow(static_cast<unsigned char>(code));
  }
  static bool IsPlain(CharOrderEntry const* entry, unsigned char variants, char const*) {
    // Codes of narrow marks are none of Unicode's; entries that contract with them say so.
    return entry->IsPlain(variants, 0);
  }
  static bool IsMark(unsigned short) { return false; }
  static bool IsMarkAt(char const*) { return false; }
  static bool HaveHeads(unsigned) { return true; }
  /// The letter heads of a code set; null for one without.
  static LetterHead const* Heads(unsigned char codeSet) { return intl::FindNarrowHeads(codeSet); }
};

/// Two bytes a character, in the machine's order.
struct WideUnits {
  static constexpr std::size_t kLongestContraction = 6;
  static constexpr std::size_t kSize = 2;
  static constexpr unsigned char kCodeSet = kUnicodeSet;
  static unsigned short Get(char const* text) { return LoadWide(text); }
  static CharOrderEntry const* Find(OrderTable const& table, unsigned short code) {
    return table.FindWide(code);
  }
  static bool IsPlain(CharOrderEntry const* entry, unsigned char variants, char const* next) {
    return entry->IsPlain(variants, entry->HasContractions() ? Get(next) : kNothing);
  }
  static bool IsMark(unsigned short code) { return CharOrderEntry::IsMark(code); }
  static bool IsMarkAt(char const* text) { return IsMark(Get(text)); }
  /// Whether two codes, given as the bits of both, have letter heads.
  static bool HaveHeads(unsigned codes) {
    static_assert(std::has_single_bit(OrderTable::kWideHeads));
    return codes < OrderTable::kWideHeads;
  }
  static LetterHead const* Heads(unsigned char codeSet) {
    OrderTable const* const table = intl::FindOrderTable(codeSet);
    return table != nullptr ? table->Heads() : nullptr;
  }
};

/// Reads characters of one code set in one language from its order table, as long as each is one
/// sort order.
template <class Units>
struct PlainReader {
  XoCodeSet const& codeSet;
  OrderTable const& table;
  unsigned char language;
  unsigned char variants;

  PlainReader(XoCodeSet const& codeSet_, unsigned char language_)
      : codeSet(codeSet_), table(*codeSet_.orderTable), language(language_) {
    XoLanguage const* const record = intl::FindLanguage(language_);
    variants = record != nullptr ? record->variantFlag : static_cast<unsigned char>(0);
  }

  /// The entry of a character that stands for itself and for one order; null for any other. The
  /// character behind it is at `next`.
  CharOrderEntry const* Plain(unsigned short code, char const* next) const {
    CharOrderEntry const* const entry = Units::Find(table, code);
    return Units::IsPlain(entry, variants, next) ? entry
                                                 : PlainAfterAll(entry, next, language, variants);
  }

  /// Whether a contraction begins at a place that is the same in two texts, in either of them.
  bool BeginsContraction(char const* place1, char const* place2) const {
    CharOrderEntry const* const entry = Units::Find(table, Units::Get(place1));
    char const* const next1 = place1 + Units::kSize;
    char const* const next2 = place2 + Units::kSize;
    if (Units::IsPlain(entry, variants, next1) && Units::IsPlain(entry, variants, next2)) {
      return false;
    }
    return ContractsAfterAll(entry, next1, language, variants) ||
           ContractsAfterAll(entry, next2, language, variants);
  }

  /// The group of an entry.
  unsigned char Group(CharOrderEntry const* entry) const {
    unsigned char const* const own = entry->GroupOverride();
    return own != nullptr ? *own : codeSet.CodeSetGroup(language);
  }
  /// The key of an entry's order; 0 for none.
  unsigned Key(CharOrderEntry const* entry) const {
    return entry != nullptr ? KeyOf(entry->order, Group(entry)) : 0;
  }

  /// The flags of the last characters of a run that two texts have in common, one in each byte.
  using RecentFlags = std::uint64_t;

  /// `recent` with those of one character more.
  RecentFlags Follow(RecentFlags recent, unsigned short code) const {
    unsigned const mark = Units::IsMark(code) ? CharOrderEntry::NotPlain(0) : 0;
    return recent << 8 | (Units::Find(table, code)->Head() | mark) >> 24;
  }

  /// How far before the end of `same` bytes, which two texts have in common, a contraction begins
  /// that may reach behind them, to `code1` or `code2`; 0 for none. What stands before these bytes
  /// begins none.
  std::size_t ContractionReach(RecentFlags recent, char const* text1, char const* text2,
                               std::size_t same, unsigned short code1, unsigned short code2) const {
    // Once for each character that may be the first of a contraction.
    constexpr RecentFlags kEach =
        0x0101010101010101 >> (8 * (8 - (Units::kLongestContraction - 1)));
    RecentFlags const notPlain = kEach * (CharOrderEntry::NotPlain(variants) >> 24);
    if ((recent & notPlain) == 0 && !Units::IsMark(code1) && !Units::IsMark(code2)) return 0;
    return ReachFrom(*this, text1, text2, same);
  }

  /// Whether the group of the character at a place depends on what stands before it.
  bool InheritsGroup(char const* place) const {
    unsigned short const code = Units::Get(place);
    return code >= kFirstUncertainCode && Units::Find(table, code)->order == 0 &&
           (code >= kFirstSpecialCode || code == AsteriskOrder() || code == QuestionOrder());
  }

 private:
  static bool Contracts(CharOrderEntry const* entry, char const* next) {
    return entry->HasContractions() && entry->Contraction(Units::Get(next)) != nullptr;
  }

  static CharOrderEntry const* InLanguage(CharOrderEntry const* entry, unsigned char language,
                                          unsigned char variants) {
    if (!entry->MayVary(variants)) return entry;
    CharOrderEntry const* const own = entry->Variant(language);
    return own != nullptr ? own : entry;
  }

  // What is rare stands apart, and takes all by value, so that a loop keeps the reader in
  // registers.

  [[gnu::noinline]] static std::size_t ReachFrom(PlainReader reader, char const* text1,
                                                 char const* text2, std::size_t same) {
    constexpr std::size_t kLooked = (Units::kLongestContraction - 1) * Units::kSize;
    std::size_t reach = 0;
    for (std::size_t back = Units::kSize; back <= kLooked && reach + back <= same;
         back += Units::kSize) {
      std::size_t const place = same - reach - back;
      if (!reader.BeginsContraction(text1 + place, text2 + place)) continue;
      reach += back;
      back = 0;
    }
    return reach;
  }

  [[gnu::noinline]] static CharOrderEntry const* PlainAfterAll(CharOrderEntry const* entry,
                                                               char const* next,
                                                               unsigned char language,
                                                               unsigned char variants) {
    if (entry->order == 0) return nullptr;
    entry = InLanguage(entry, language, variants);
    return entry->HasExpansion() || Contracts(entry, next) ? nullptr : entry;
  }

  [[gnu::noinline]] static bool ContractsAfterAll(CharOrderEntry const* entry, char const* next,
                                                  unsigned char language, unsigned char variants) {
    return entry->order != 0 && Contracts(InLanguage(entry, language, variants), next);
  }
};

/// Number of leading bytes that two blocks of a size have in common.
inline std::size_t CommonBytes(char const* block1, char const* block2, std::size_t size) {
  std::size_t same = 0;
  auto const skip = [&](std::size_t part) {
    while (size - same >= part && std::memcmp(block1 + same, block2 + same, part) == 0) {
      same += part;
    }
  };
  skip(512);
  skip(256);
  // Most blocks have all of the rest in common, too.
  std::size_t const rest = size - same;
  if (rest < 256 && std::memcmp(block1 + same, block2 + same, rest) == 0) return size;
  skip(128);
  skip(64);
  using Word = std::uint64_t;
  for (; size - same >= sizeof(Word); same += sizeof(Word)) {
    Word const differing = LoadBytes<Word>(block1 + same) ^ LoadBytes<Word>(block2 + same);
    // The first byte is the lowest one of a word.
    if (differing != 0) return same + static_cast<std::size_t>(std::countr_zero(differing)) / 8;
  }
  while (same < size && block1[same] == block2[same]) ++same;
  return same;
}

/// Number of bytes that two texts have in common from here on, before the end.
template <class Units>
[[gnu::noinline]] std::size_t LongEqualRun(char const* text1, char const* text2) {
  // Measured and compared in windows: what differs soon costs no look at all the rest.
  constexpr std::size_t kWindow = 4096;
  std::size_t run = 0;
  for (;;) {
    char const* const place1 = text1 + run;
    char const* const place2 = text2 + run;
    std::size_t const units1 = TextLength(Units::kCodeSet, place1, kWindow / Units::kSize);
    std::size_t const units2 = TextLength(Units::kCodeSet, place2, units1);
    std::size_t const same = CommonBytes(place1, place2, units2 * Units::kSize);
    run += same - same % Units::kSize;
    if (same != kWindow) return run;
  }
}

/// The outcome of texts that differ first in two characters, if these are different letters
/// whatever stands around them; 0 where that is not so, or not sure. The code of the end is 0.
/// `heads` are those of the code set, `variants` is the variant flag of the language.
template <class Units>
int DifferenceOfLetters(LetterHead const* heads, unsigned char variants, unsigned short code1,
                        unsigned short code2) {
  if (!Units::HaveHeads(unsigned{code1} | code2)) return 0;
  LetterHead const head1 = heads[code1];
  LetterHead const head2 = heads[code2];
  if ((head1 | head2).IsUnsettled(variants)) return 0;
  return head1.LetterDifference(head2);
}

/// Beyond this many bytes that two texts have in common it pays to measure the texts.
template <class Units>
inline constexpr std::size_t kFar = 16 * Units::kSize;

/// Stands for the outcome of texts that letters alone do not settle.
inline constexpr int kUnsettled = std::numeric_limits<int>::min();

/// The key of a settled letter, as far as levels below its own go; 0 where a language may have
/// another one.
inline unsigned KeyOfSettled(CharOrderEntry const* entry, unsigned char variants) {
  unsigned char const* const group = entry->GroupOverride();
  return entry->MayVary(variants) || group == nullptr ? 0 : KeyOf(entry->order, *group);
}

/// Compares two texts by the first difference of their letters, which outweighs all others, and
/// where there is none by what differs besides; `kUnsettled` where a head does not tell what its
/// character compares as. `same` leading bytes, up to `kFar`, are the same on both sides. Inline,
/// since it stands in one place for each width.
template <class Units>
[[gnu::always_inline]] inline int CompareLetters(OrderTable const& table, unsigned char variants,
                                                 char const* text1, char const* text2,
                                                 std::size_t same, unsigned short cmpOp) {
  LetterHead const* const heads = table.Heads();
  LevelDifferences differences;
  // Whether only letters can be told apart.
  bool isVague = false;
  for (;; same = 0) {
    unsigned short code1 = 0;
    unsigned short code2 = 0;
    for (;; same += Units::kSize) {
      if (same == kFar<Units>) same += LongEqualRun<Units>(text1 + same, text2 + same);
      code1 = Units::Get(text1 + same);
      code2 = Units::Get(text2 + same);
      if (code1 != code2) break;
      if (code1 == 0) return isVague ? kUnsettled : differences.Outcome(cmpOp);
    }
    if (!Units::HaveHeads(unsigned{code1} | code2)) return kUnsettled;
    LetterHead const head1 = heads[code1];
    LetterHead const head2 = heads[code2];
    text1 += same;
    text2 += same;
    if (!(head1 | head2).IsUnsettled(variants)) {
      int const letters = head1.LetterDifference(head2);
      if (letters != 0) return letters;
      // The same letter: accents or case differ, which matters if no letters do.
      text1 += Units::kSize;
      text2 += Units::kSize;
      if ((head1 | head2).MayBeMore(variants) || Units::IsMarkAt(text1) || Units::IsMarkAt(text2)) {
        return kUnsettled;
      }
      unsigned const key1 = KeyOfSettled(Units::Find(table, code1), variants);
      unsigned const key2 = KeyOfSettled(Units::Find(table, code2), variants);
      isVague = isVague || key1 == 0 || key2 == 0;
      differences.Take(key1, key2);
      continue;
    }
    // Spaces and symbols do not count among letters, whether or not they do after them.
    bool const skips1 = head1.IsIgnorable();
    bool const skips2 = head2.IsIgnorable();
    if (!skips1 && head1.IsUnsettled(variants)) return kUnsettled;
    if (!skips2 && head2.IsUnsettled(variants)) return kUnsettled;
    isVague = isVague || (cmpOp & (kCmpSkipSpaces | kCmpSkipSymbols)) != 0;
    int const ignorable = (skips1 ? Units::Find(table, code1)->order : 0) -
                          (skips2 ? Units::Find(table, code2)->order : 0);
    if (ignorable != 0) differences.ignorable = ignorable;
    if (skips1) text1 += Units::kSize;
    if (skips2) text2 += Units::kSize;
  }
}

/// How a comparison in the fast lane ended.
struct LaneResult {
  /// Whether it came to an outcome; otherwise the general comparison goes on.
  bool isDecided = false;
  int outcome = 0;
  /// Where that goes on in each text, and what was found before; null where it has to begin anew.
  char const* at1 = nullptr;
  char const* at2 = nullptr;
  LevelDifferences before{};
};

/// Compares two texts in levels as far as it can, up to `limit` orders of each where `kCounted`.
/// Each round passes over what is the same on both sides and takes what differs there: digits and
/// letters as a step of the general comparison, of spaces and symbols those that stand on one side,
/// or one from each.
template <bool kCounted, class Units>
LaneResult RunPlainLane(PlainReader<Units> const& reader, char const* text1, char const* text2,
                        unsigned short cmpOp, [[maybe_unused]] unsigned limit) {
  constexpr std::size_t kNear = 4 * Units::kSize;
  LevelDifferences differences;
  [[maybe_unused]] unsigned seen1 = 0;
  [[maybe_unused]] unsigned seen2 = 0;
  auto const decided = [](int outcome) { return LaneResult{true, outcome, nullptr, nullptr, {}}; };
  // A text ends where no more of it is to be read.
  auto const unit = [limit](char const* text, unsigned seen) {
    return kCounted && seen >= limit ? static_cast<unsigned short>(0) : Units::Get(text);
  };
  for (;;) {
    std::size_t same = 0;
    typename PlainReader<Units>::RecentFlags recent = 0;
    unsigned short code1 = unit(text1, seen1);
    unsigned short code2 = unit(text2, seen2);
    while (code1 == code2) {
      if (code1 == 0) return decided(differences.Outcome(cmpOp));
      if constexpr (kCounted) {
        // Of what counts as one order on both sides.
        if (reader.Plain(code1, text1 + same + Units::kSize) == nullptr) return {};
        if (reader.Plain(code2, text2 + same + Units::kSize) == nullptr) return {};
        ++seen1;
        ++seen2;
      }
      recent = reader.Follow(recent, code1);
      same += Units::kSize;
      if (!kCounted && same == kNear) {
        same += LongEqualRun<Units>(text1 + same, text2 + same);
        // Any of the last characters may have any flag.
        recent = ~typename PlainReader<Units>::RecentFlags{0};
      }
      code1 = unit(text1 + same, seen1);
      code2 = unit(text2 + same, seen2);
    }
    std::size_t const reach = reader.ContractionReach(recent, text1, text2, same, code1, code2);
    text1 += same - reach;
    text2 += same - reach;
    if (reach != 0) break;

    CharOrderEntry const* const entry1 =
        code1 != 0 ? reader.Plain(code1, text1 + Units::kSize) : nullptr;
    CharOrderEntry const* const entry2 =
        code2 != 0 ? reader.Plain(code2, text2 + Units::kSize) : nullptr;
    if ((code1 != 0 && entry1 == nullptr) || (code2 != 0 && entry2 == nullptr)) break;
    Weight const weight1 = WeightOf(entry1, cmpOp);
    Weight const weight2 = WeightOf(entry2, cmpOp);
    bool takes1 = true;
    bool takes2 = true;
    if (weight1 == Weight::kLetter && weight2 == Weight::kLetter) {
      int const letters = differences.Take(reader.Key(entry1), reader.Key(entry2));
      if (letters != 0) return decided(letters);
    } else {
      bool const skips = weight1 == Weight::kSkipped || weight2 == Weight::kSkipped;
      Weight const taken = skips ? Weight::kSkipped : Weight::kIgnorable;
      takes1 = weight1 == taken;
      takes2 = weight2 == taken;
      int const order1 = takes1 ? entry1->order : 0;
      int const order2 = takes2 ? entry2->order : 0;
      if (!skips && order1 != order2) differences.ignorable = order1 - order2;
    }
    if (takes1) text1 += Units::kSize;
    if (takes2) text2 += Units::kSize;
    if (kCounted && takes1) ++seen1;
    if (kCounted && takes2) ++seen2;
  }
  if (kCounted || reader.InheritsGroup(text1) || reader.InheritsGroup(text2)) return {};
  return {false, 0, text1, text2, differences};
}

}  // namespace xo
