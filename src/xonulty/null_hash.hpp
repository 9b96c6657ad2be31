#pragma once

#include <cstddef>
#include <type_traits>

#ifdef __x86_64__
#include <emmintrin.h>
#endif

#include "_xonulty.hpp"
#include "src/xonulty/null_family.hpp"
#include "src/xotypes/scalar_hash.hpp"

/// The hash of arrays of numbers that can be null: for each element the fold of its number times
/// the multiplier, or a constant for a null, all of them XORed.
namespace xo {

/// The fold that becomes the hash of a null under the multiplier, so that nulls go the way of
/// numbers.
inline constexpr o_u4b kNullElementFold = 0xD7C3BE29;
static_assert(kNullElementFold * kHashMultiplier == NullElementHashConstant);

template <class Number>
o_u4b HashOfElement(Number number, bool isNull) {
  return (isNull ? kNullElementFold : Fold(number)) * kHashMultiplier;
}

/// Elements whose numbers are in the machine's own form, with their null bytes ahead of them or
/// behind.
template <class Elements, bool kNullAhead, std::size_t kStride>
struct NullHash {
  using Number = typename Elements::Number;

  static o_u4b NullAt(void const* place) { return Elements::template NullAt<kNullAhead>(place); }

  // Out of line, so that the search for nulls does not keep what this reads.
  [[gnu::noinline]] static o_u4b OneByOne(void const* data, std::size_t count) {
    o_u4b hash = 0;
    for (std::size_t index = 0; index < count; ++index) {
      void const* const place = Advance(data, index * kStride);
      hash ^= HashOfElement(Elements::template NumberAt<kNullAhead>(place), NullAt(place) == 1);
    }
    return hash;
  }

  /// The same, faster where few are null.
  static o_u4b Of(void const* data, std::size_t count);
};

#ifdef __x86_64__

/// The hash of groups without nulls, two products at a time. A number stands in a word of eight
/// bytes, with its null byte if both have their place there.
template <class Elements, bool kNullAhead, std::size_t kStride>
class PairedNullHash {
 public:
  static constexpr std::size_t kGroup = 16;
  /// So many elements have the bytes of a group's words.
  static constexpr std::size_t kReach = kGroup + (sizeof(o_8b) - 1) / kStride;

  /// Adds a group, unless it may have nulls.
  bool Add(void const* group) {
    __m128i const multiplier = _mm_set1_epi64x(kHashMultiplier);
    __m128i words = _mm_setzero_si128();
    __m128i added[2] = {words, words};
    o_u4b nulls = 0;
    for (std::size_t index = 0; index < kGroup; index += 2) {
      void const* const first = Advance(group, index * kStride);
      void const* const second = Advance(first, kStride);
      __m128i const pair = _mm_set_epi64x(WordAt(second), WordAt(first));
      if constexpr (kNullInWord) {
        words = _mm_or_si128(words, pair);
      } else {
        nulls |= Single::NullAt(first) | Single::NullAt(second);
      }
      __m128i& lane = added[index / 2 % 2];
      lane = _mm_xor_si128(lane, _mm_mul_epu32(Folds(pair), multiplier));
    }
    if constexpr (kNullInWord) nulls = NullBytes(words);
    if (nulls != 0) return false;
    products = _mm_xor_si128(products, _mm_xor_si128(added[0], added[1]));
    return true;
  }

  o_u4b Hash() const {
    __m128i const both = _mm_xor_si128(products, _mm_unpackhi_epi64(products, products));
    return static_cast<o_u4b>(_mm_cvtsi128_si32(both));
  }

 private:
  using Single = NullHash<Elements, kNullAhead, kStride>;
  using Number = typename Single::Number;
  static constexpr int kNumberBits = 8 * sizeof(Number);
  static constexpr bool kNullInWord = kNumberBits < 64;
  /// Where the number begins in its word.
  static constexpr int kNumberAt = kNullAhead && kNullInWord ? 8 : 0;

  static o_8b WordAt(void const* element) {
    return LoadBytes<o_8b>(Advance(element, kNullAhead && !kNullInWord ? 1 : 0));
  }

  /// The null bytes in the words ORed into `words`.
  static o_u4b NullBytes(__m128i words) {
    __m128i const both = _mm_or_si128(words, _mm_unpackhi_epi64(words, words));
    constexpr int kNullAt = kNullAhead ? 0 : kNumberBits;
    return static_cast<o_u4b>(_mm_cvtsi128_si64(both) >> kNullAt & 0xFF);
  }

  /// The folds of two numbers in the low halves of the words, whose high halves do not count.
  static __m128i Folds(__m128i words) {
    if constexpr (kNumberBits == 64) {
      return std::is_integral_v<Number> ? words : _mm_xor_si128(words, _mm_srli_epi64(words, 32));
    } else if constexpr (kNumberBits == 32) {
      return _mm_srli_epi64(words, kNumberAt);
    } else {
      constexpr int kAbove = 32 - kNumberBits;
      __m128i const raised = _mm_slli_epi64(words, kAbove - kNumberAt);
      return std::is_signed_v<Number> ? _mm_srai_epi32(raised, kAbove)
                                      : _mm_srli_epi32(raised, kAbove);
    }
  }

  __m128i products = _mm_setzero_si128();
};

template <class Elements, bool kNullAhead, std::size_t kStride>
o_u4b NullHash<Elements, kNullAhead, kStride>::Of(void const* data, std::size_t count) {
  using Pairs = PairedNullHash<Elements, kNullAhead, kStride>;
  Pairs pairs;
  o_u4b hash = 0;
  std::size_t index = 0;
  for (; index + Pairs::kReach <= count; index += Pairs::kGroup) {
    void const* const group = Advance(data, index * kStride);
    if (!pairs.Add(group)) hash ^= OneByOne(group, Pairs::kGroup);
  }
  return hash ^ pairs.Hash() ^ OneByOne(Advance(data, index * kStride), count - index);
}

#else

template <class Elements, bool kNullAhead, std::size_t kStride>
o_u4b NullHash<Elements, kNullAhead, kStride>::Of(void const* data, std::size_t count) {
  return OneByOne(data, count);
}

#endif

}  // namespace xo
