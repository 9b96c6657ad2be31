#pragma once

#include <cstddef>

#include "../base/export.hpp"
#include "language.hpp"
#include "wide_list.hpp"

class CharOrderEntry;

namespace xo::intl {

/// Variants and contractions of an entry: a bit for each language with a variant, the place of the
/// first one's entry, and the run of contractions.
struct OrderLinks {
  unsigned long long languages;
  unsigned short firstVariant;
  unsigned short firstContraction;
  unsigned short contractionCount;
};

// It stands here so that the inner loop of comparisons learns without a call that a language has no
// variant; use the operations of `CharOrderEntry`.
XO_EXPORT extern OrderLinks const kOrderLinks[];

}  // namespace xo::intl

/// How a character, or a contraction of several, is sorted: its order, the orders that follow it,
/// and what may replace it. Constant records of the tables; pointers to them stay valid as long as
/// the library, and any thread may read them.
class XO_EXPORT CharOrderEntry {
 public:
  constexpr CharOrderEntry(unsigned short order_, unsigned char group_, unsigned char flags_,
                           unsigned short expansion_, unsigned short links_)
      : order(order_), group(group_), flags(flags_), expansion(expansion_), links(links_) {}

  /// The sort order; its layout is told in docs/sort-orders.md. Never 0 in an entry that is given
  /// out.
  unsigned short order;

  /// The order group of this entry; null means the group of the code set for the language
  /// (`XoCodeSet::CodeSetGroup`).
  unsigned char const* GroupOverride() const { return group != 0 ? &group : nullptr; }

  /// Whether the character that follows in the text may belong to this one.
  bool HasContractions() const { return (flags & (kHasContractions | kMarksOnly)) != 0; }
  /// Whether a language may replace this entry.
  bool HasVariants() const { return (flags & kHasVariants) != 0; }
  /// Whether the entry may have a variant for a language; what this denies `Variant` need not be
  /// asked. `variantFlag` is that of the language's record, 0 without a record.
  bool MayVary(unsigned char variantFlag) const { return (flags & variantFlag) != 0; }
  /// Whether the order is all that there is: no variant for the language, no contraction with the
  /// character behind it and no expansion. One test for most characters of most texts. What is not
  /// plain may turn out to be so: ask again, with a flag of 0, the entry that `Variant` gave or
  /// left.
  bool IsPlain(unsigned char variantFlag, unsigned short next) const {
    return (flags & (kHasContractions | kHasExpansion | variantFlag)) == 0 && !IsMark(next);
  }
  /// Order in the low 16 bits, group above them, flags on top: what most comparisons look at, in
  /// one load.
  unsigned Head() const { return order | unsigned{group} << 16 | unsigned{flags} << 24; }
  /// The bits of a head that an entry without variant, contraction but with marks, and expansion
  /// does not have.
  static constexpr unsigned NotPlain(unsigned char variantFlag) {
    return (kHasContractions | kHasExpansion | unsigned{variantFlag}) << 24;
  }
  /// Whether a character may belong to the one before it whatever that is.
  static constexpr bool IsMark(unsigned short character) {
    return character >= kFirstMark && character <= kLastMark;
  }
  /// Whether further orders follow this one.
  bool HasExpansion() const { return (flags & kHasExpansion) != 0; }

  /// The orders that follow `order`; empty without an expansion.
  XoWCharList const& Expansion() const;

  /// The entry that replaces this one in a language; null where the language has none.
  CharOrderEntry const* Variant(unsigned char language) const {
    // Without a branch, so that a loop works it out once.
    unsigned long long const bit = static_cast<unsigned long long>(language < 64)
                                   << (language & 63);
    bool const has = (xo::intl::kOrderLinks[links].languages & bit) != 0;
    return has ? FindVariant(language) : nullptr;
  }
  /// Number of languages with a variant of this entry.
  unsigned VariantCount() const;
  /// Language `index` of those with a variant, in the order of their numbers, and its entry; null
  /// past the end.
  XoLanguage const* VariantLanguage(unsigned index) const;
  CharOrderEntry const* VariantEntry(unsigned index) const;

  /// The entry of this one together with the character behind it, which is a code of the table's
  /// code set; null where they do not contract. The entry given may contract further. A contraction
  /// found in a variant entry already is the language's own.
  CharOrderEntry const* Contraction(unsigned short character) const {
    // Most letters contract with combining marks alone.
    if ((flags & kMarksOnly) != 0 && !IsMark(character)) return nullptr;
    return FindContraction(character);
  }
  /// Number of characters that contract with this one.
  unsigned ContractionCount() const;
  /// Character `index` of those, in rising order, and the entry that it leads to; 0 and null past
  /// the end.
  unsigned short ContractionCharacter(unsigned index) const;
  CharOrderEntry const* ContractionEntry(unsigned index) const;

  /// Hands all fields to `visitor.Add`, in order.
  template <class Visitor>
  void Visit(Visitor& visitor) const {
    visitor.Add(order, group, flags, expansion, links);
  }

 private:
  /// Contractions with other characters than marks; those with marks alone have a flag of their
  /// own.
  static constexpr unsigned char kHasContractions = 1;
  static constexpr unsigned char kHasVariants = 2;
  static constexpr unsigned char kHasExpansion = 4;
  static constexpr unsigned char kMarksOnly = 8;
  static constexpr unsigned short kFirstMark = 0x300;
  static constexpr unsigned short kLastMark = 0x36F;

  // `FindVariant` is for a language that has a variant. Both are told to be pure, so that a loop
  // that calls them keeps the tables' addresses in registers.
  [[gnu::pure, gnu::returns_nonnull]] CharOrderEntry const* FindVariant(
      unsigned char language) const;
  [[gnu::pure]] CharOrderEntry const* FindContraction(unsigned short character) const;

  unsigned char group;
  unsigned char flags;
  unsigned short expansion;
  unsigned short links;
};

/// What mostly settles a comparison at a character, in one word: the letter that its orders begin
/// with, and flags that tell in which languages this is all that counts. It is worked out from the
/// entries, their variants and their contractions, and says nothing that they do not.
class XO_EXPORT LetterHead {
 public:
  // Not explicit: a table is a list of such words.
  constexpr LetterHead(unsigned bits_) : bits(bits_) {}

  /// The letter with the group of its script above it: what two texts compare by where they first
  /// differ. 0 for the end of the text, which comes before all letters, and for what is no letter.
  unsigned Letter() const { return bits & 0xFFFF; }
  /// Whether that depends on more than the characters themselves, or may: for what is no letter,
  /// what some language takes for another one, what may be another one together with the character
  /// behind it, and what may belong to the character before it. `variantFlag` is that of the
  /// language's record, 0 without a record. The bits of two heads can be asked together.
  bool IsUnsettled(unsigned char variantFlag) const { return (bits & Parts(variantFlag)) != 0; }
  /// The letter here less the one of `other`, of heads that are settled: how two texts compare that
  /// are the same before them, unless it is 0. No contraction of what is the same reaches either
  /// letter, which would be unsettled then.
  int LetterDifference(LetterHead other) const {
    return static_cast<int>(Letter()) - static_cast<int>(other.Letter());
  }
  /// Whether more than one letter may begin here: orders may follow, or the character behind may
  /// belong to this one and is no mark. Of heads that are settled; they can be asked together.
  bool MayBeMore(unsigned char variantFlag) const { return (bits & Parts(variantFlag) >> 8) != 0; }
  /// Whether this is one space or symbol in every language, and nothing contracts with it.
  bool IsIgnorable() const { return (bits & kIgnorable) != 0; }

  friend constexpr LetterHead operator|(LetterHead a, LetterHead b) { return a.bits | b.bits; }

 private:
  static constexpr unsigned kIgnorable = 1U << 25;
  /// The flags of what holds in all languages and of what holds in some of a variant flag.
  static constexpr unsigned Parts(unsigned char variantFlag) { return (1U | variantFlag) << 24; }

  unsigned bits;
};

/// The sort orders of a code set.
class XO_EXPORT OrderTable {
 public:
  /// A table of one entry for each code (`blocks` null, 256 entries), or of blocks of 64 entries
  /// which `blocks` names for all 65536 codes; with the letter heads of the first codes.
  constexpr OrderTable(CharOrderEntry const* entries_, unsigned char const* blocks_,
                       LetterHead const* heads_)
      : entries(entries_), blocks(blocks_), heads(heads_) {}

  /// Number of codes with a letter head in a table of a 16-bit set: the alphabets of Europe and
  /// their neighbours, in a table that a processor keeps at hand. An 8-bit set has one for each.
  static constexpr unsigned kWideHeads = 0x800;

  /// The entry of a character, which is a code of the table's code set; null where it has none.
  /// Every code below 512 has one. Of those from 256 on an 8-bit set looks at the low byte; codes
  /// of 512 and above have none there.
  virtual CharOrderEntry const* GetEntry(unsigned short character) const;

  /// The same for an 8-bit set, without a virtual call or a test.
  CharOrderEntry const* FindNarrow(unsigned char character) const { return entries + character; }

  /// The same without a virtual call, for the inner loop of comparisons.
  CharOrderEntry const* Find(unsigned short character) const {
    if (blocks == nullptr) {
      return character < 512 ? FindNarrow(static_cast<unsigned char>(character)) : nullptr;
    }
    CharOrderEntry const* const entry = FindWide(character);
    return entry->order != 0 ? entry : nullptr;
  }

  /// The same for a 16-bit set, without a virtual call or a test: where the character has none, the
  /// entry given has an order of 0, and is not plain.
  CharOrderEntry const* FindWide(unsigned short character) const {
    std::size_t const code = character;
    return entries + (std::size_t{blocks[code >> 6]} << 6) + (code & 63);
  }

  /// The letter heads, by code.
  LetterHead const* Heads() const { return heads; }

  /// The first entry of the table, which says where it lies among all entries.
  CharOrderEntry const* FirstEntry() const { return entries; }

 private:
  CharOrderEntry const* entries;
  unsigned char const* blocks;
  LetterHead const* heads;
};
