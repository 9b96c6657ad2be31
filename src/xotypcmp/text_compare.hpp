#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "intl/order_table.hpp"

/// The comparison of stored texts of one byte a character where they lie, by blocks, since their
/// records tell how many bytes are there.
namespace xo {

/// Eight characters in the machine's byte order, the first one lowest.
using TextBlock = std::uint64_t;
inline constexpr std::size_t kTextBlockBytes = sizeof(TextBlock);

/// Has its lowest bit in the first of eight characters that is zero, and none if none is.
constexpr TextBlock ZeroCharacter(TextBlock characters) {
  constexpr TextBlock kOnes = 0x0101010101010101;
  return (characters - kOnes) & ~characters & kOnes << 7;
}

/// The place, from `place` on, of the first byte that differs in two records, or that is zero in
/// both, of which there is one before their `end`. `end` is at least `kTextBlockBytes`.
[[gnu::always_inline]] inline std::size_t NextDifference(unsigned char const* a,
                                                         unsigned char const* b, std::size_t place,
                                                         std::size_t end) {
  for (;;) {
    // The last block reaches back.
    std::size_t const start = std::min(place, end - kTextBlockBytes);
    auto const block = LoadBytes<TextBlock>(a + start);
    TextBlock bits = (block ^ LoadBytes<TextBlock>(b + start)) | ZeroCharacter(block);
    bits >>= 8 * (place - start);
    if (bits != 0) return place + static_cast<std::size_t>(std::countr_zero(bits)) / 8;
    place = start + kTextBlockBytes;
  }
}

/// The outcome of two texts, which begin at `place` of their records and end in a zero before
/// `end`, where letters tell them apart; 0 where they do not, or where a head does not tell what
/// its character compares as. `heads` are those of the code set, `variants` is the variant flag of
/// the language.
[[gnu::always_inline]] inline int DifferenceOfTexts(LetterHead const* heads, unsigned char variants,
                                                    unsigned char const* a, unsigned char const* b,
                                                    std::size_t place, std::size_t end) {
  // The first letter is looked at by itself: that it is the same, but perhaps a capital on one
  // side, is easier to foretell than whether it is the same character.
  LetterHead const first1 = heads[a[place]];
  LetterHead const first2 = heads[b[place]];
  if ((first1 | first2).IsUnsettled(variants)) [[unlikely]] {
    if (a[place] != b[place]) return 0;
  } else {
    int const letters = first1.LetterDifference(first2);
    if (letters != 0) return letters;
    if ((first1 | first2).MayBeMore(variants) && a[place] != b[place]) [[unlikely]]
      return 0;
  }
  if (a[place] == 0) [[unlikely]]
    return 0;
  for (;;) {
    place = NextDifference(a, b, place + 1, end);
    LetterHead const head1 = heads[a[place]];
    LetterHead const head2 = heads[b[place]];
    if ((head1 | head2).IsUnsettled(variants)) return 0;
    int const letters = head1.LetterDifference(head2);
    if (letters != 0) return letters;
    // The same letter: accents or case differ, which matters if no letters do.
    if (a[place] == 0 || (head1 | head2).MayBeMore(variants)) return 0;
  }
}

}  // namespace xo
