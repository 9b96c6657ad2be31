#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "xoistring.hpp"

/// The collation of the weighted texts: what weights a byte has, and which byte weights are of.
namespace xo {

/// A second weight from here on is a weight of its own; one below marks an accent, which nothing
/// compares: 1 diaeresis, 2 acute, 3 grave, 4 circumflex, 5 tilde. 0 is none.
inline constexpr unsigned char kLeastSecondWeight = 9;

/// Flag of a text whose bytes are weights.
inline constexpr unsigned char kIsWeighted = 0x80;
/// Flag of a side of a comparison whose second weights do not count.
inline constexpr unsigned char kFirstWeightsOnly = 0x20;

struct ByteWeights {
  unsigned char first;
  unsigned char second;
};

/// Of two words of text, the first byte lowest: has bits in the first byte that differs or is zero
/// in both, and none before it.
constexpr std::uint64_t DifferencesAndEnds(std::uint64_t a, std::uint64_t b) {
  // Of a word less one in each byte, zeros and nothing before the first have a new highest bit.
  return (a ^ b) | ((a - 0x0101010101010101) & ~a & 0x8080808080808080);
}

/// The weights of all bytes.
using WeightTable = std::array<ByteWeights, 256>;

// Bytes 64 to 127: the letters of ASCII and what stands around them.
inline constexpr unsigned char kAsciiWeights[64] = {
    0x40, 0x54, 0x5B, 0x5E, 0x61, 0x69, 0x6F, 0x71, 0x73, 0x79, 0x7F, 0x81, 0x83, 0x85, 0x87, 0x90,
    0x97, 0x99, 0x9B, 0x9D, 0x9F, 0xA5, 0xAB, 0xAD, 0xAF, 0xB3, 0xB7, 0x42, 0x43, 0x44, 0x45, 0x46,
    0x41, 0x4E, 0x5A, 0x5C, 0x60, 0x64, 0x6E, 0x70, 0x72, 0x74, 0x7E, 0x80, 0x82, 0x84, 0x86, 0x8A,
    0x96, 0x98, 0x9A, 0x9C, 0x9E, 0xA0, 0xAA, 0xAC, 0xAE, 0xB0, 0xB6, 0x47, 0x48, 0x49, 0x4A, 0x4B};

// Bytes 192 to 255: the letters with accents, upper case and then lower case.
inline constexpr unsigned char kAccentedWeights[64] = {
    0x54, 0x54, 0x54, 0x54, 0x54, 0xBD, 0xB9, 0x5E, 0x69, 0x69, 0x69, 0x69, 0x79, 0x79, 0x79, 0x79,
    0x63, 0x89, 0x90, 0x90, 0x90, 0x90, 0x90, 0x4C, 0xBB, 0xA5, 0xA5, 0xA5, 0xA5, 0xB3, 0xBF, 0x9C,
    0x4E, 0x4E, 0x4E, 0x4E, 0x4E, 0xBC, 0xB8, 0x5C, 0x64, 0x64, 0x64, 0x64, 0x74, 0x74, 0x74, 0x74,
    0x62, 0x88, 0x8A, 0x8A, 0x8A, 0x8A, 0x8A, 0x4D, 0xBA, 0xA0, 0xA0, 0xA0, 0xA0, 0xB0, 0xBE, 0xB0};

// The second weights of the same bytes.
inline constexpr unsigned char kAccents[64] = {
    0x03, 0x02, 0x04, 0x05, 0x01, 0x00, 0x00, 0x01, 0x03, 0x02, 0x04, 0x01, 0x03, 0x02, 0x04, 0x01,
    0x00, 0x00, 0x03, 0x02, 0x04, 0x05, 0x01, 0x00, 0x00, 0x03, 0x02, 0x04, 0x01, 0x02, 0x00, 0x9C,
    0x03, 0x02, 0x04, 0x05, 0x01, 0x00, 0x00, 0x01, 0x03, 0x02, 0x04, 0x01, 0x03, 0x02, 0x04, 0x01,
    0x00, 0x00, 0x03, 0x02, 0x04, 0x05, 0x01, 0x00, 0x00, 0x03, 0x02, 0x04, 0x01, 0x02, 0x00, 0x01};

/// The ligatures, which have the weights of two letters, and the one letter of the range with an
/// accent.
inline constexpr unsigned char kUpperLigature = 140;
inline constexpr unsigned char kLowerLigature = 156;
inline constexpr unsigned char kUpperWithDiaeresis = 159;
inline constexpr unsigned char kSharpS = 223;

constexpr WeightTable MakeWeights() {
  WeightTable weights{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    ByteWeights& of = weights[byte];
    if (byte < 64) {
      of.first = static_cast<unsigned char>(byte);
    } else if (byte < 128) {
      of.first = kAsciiWeights[byte - 64];
    } else if (byte < 160) {
      of.first = static_cast<unsigned char>(byte + 96);
    } else if (byte < 192) {
      of.first = static_cast<unsigned char>(byte + 16);
    } else {
      of = {kAccentedWeights[byte - 192], kAccents[byte - 192]};
    }
  }
  weights[kUpperLigature] = {144, 'i'};
  weights[kLowerLigature] = {138, 'd'};
  weights[kUpperWithDiaeresis] = {179, 1};
  return weights;
}

/// The same with lower case as upper case.
constexpr WeightTable MakeCaselessWeights() {
  WeightTable weights = MakeWeights();
  for (unsigned byte = 97; byte <= 122; ++byte) weights[byte].first = weights[byte - 32].first;
  for (unsigned byte = 224; byte <= 254; ++byte) weights[byte].first = weights[byte - 32].first;
  weights[255].first = 0xB3;
  weights[kSharpS] = {0x9D, 0x9D};
  weights[kLowerLigature] = weights[kUpperLigature];
  return weights;
}

/// What tells the two classes apart.
template <class Text>
struct WeightRules;

template <>
struct WeightRules<XoIString> {
  static constexpr WeightTable kWeights = MakeWeights();
  static constexpr bool kFoldsCase = false;
};
template <>
struct WeightRules<XoCaseIString> {
  static constexpr WeightTable kWeights = MakeCaselessWeights();
  static constexpr bool kFoldsCase = true;
};

/// Reads text as weights. At the end of the text it gives 0, as often as asked.
template <class Text>
class WeightReader {
 public:
  WeightReader(char const* text, unsigned char flag_) : at(text), flag(flag_) {}

  unsigned char Next() {
    if (pending != 0) {
      unsigned char const second = pending;
      pending = 0;
      return second;
    }
    auto const byte = static_cast<unsigned char>(*at);
    if (byte == 0) {
      ended = true;
      return 0;
    }
    ++at;
    if ((flag & kIsWeighted) != 0) return byte;
    ByteWeights const& weights = WeightRules<Text>::kWeights[byte];
    if (weights.second >= kLeastSecondWeight && (flag & kFirstWeightsOnly) == 0) {
      pending = weights.second;
    }
    return weights.first;
  }

  /// Whether the end has been read.
  bool HasEnded() const { return ended; }

  /// Goes on to the next character: behind the rest of the present one, or behind a whole one.
  /// False at the end.
  bool SkipCharacter() {
    if (pending != 0) {
      pending = 0;
      return true;
    }
    if (*at == 0) return false;
    ++at;
    return true;
  }

 private:
  char const* at;
  unsigned char flag;
  unsigned char pending = 0;
  bool ended = false;
};

/// Writes the first weights of `kCount` bytes; whether there are no others.
template <class Text, std::size_t kCount>
bool MapWithoutPairs(char const* bytes, char* target) {
  unsigned seconds = 0;
  for (std::size_t index = 0; index < kCount; ++index) {
    ByteWeights const weights =
        WeightRules<Text>::kWeights[static_cast<unsigned char>(bytes[index])];
    target[index] = static_cast<char>(weights.first);
    seconds |= weights.second;
  }
  // Accents are below 8, all of them together too.
  return seconds < kLeastSecondWeight;
}

/// Writes the weights of `size` bytes, `kCount` at once, as long as none is a pair; returns their
/// number.
template <class Text, std::size_t kCount>
std::size_t MapUpToPairs(char const* bytes, std::size_t size, char* target) {
  // The last step ends with the text.
  std::size_t const last = size - kCount;
  std::size_t index = 0;
  while (MapWithoutPairs<Text, kCount>(bytes + index, target + index)) {
    if (index == last) return size;
    index = std::min(index + kCount, last);
  }
  return index;
}

/// Writes the weights of `size` bytes to `target`, as many as `room` takes, and returns their
/// number, those without room included. Of a pair the first may be the last that is written.
template <class Text>
std::size_t MapToWeights(char const* bytes, std::size_t size, char* target, std::size_t room) {
  constexpr std::size_t kMany = 8;
  constexpr std::size_t kFew = 4;
  std::size_t index = 0;
  if (size >= kFew && size <= room) {
    index = size >= kMany ? MapUpToPairs<Text, kMany>(bytes, size, target)
                          : MapUpToPairs<Text, kFew>(bytes, size, target);
  }
  std::size_t count = index;
  auto const put = [&](unsigned char weight) {
    if (count < room) target[count] = static_cast<char>(weight);
    ++count;
  };
  for (; index < size; ++index) {
    ByteWeights const weights =
        WeightRules<Text>::kWeights[static_cast<unsigned char>(bytes[index])];
    put(weights.first);
    if (weights.second >= kLeastSecondWeight) put(weights.second);
  }
  return count;
}

/// The byte of a first and second weight: the first of the tables that matches, the accented
/// letters before the plain ones. -1 for a pair that no byte has.
template <class Text>
constexpr int ByteOfWeights(unsigned char first, unsigned char second) {
  WeightTable const& weights = WeightRules<Text>::kWeights;
  auto const matches = [&](unsigned byte) {
    return weights[byte].first == first && weights[byte].second == second;
  };
  for (unsigned byte = 192; byte < 256; ++byte) {
    if (matches(byte)) return static_cast<int>(byte);
  }
  for (unsigned byte = 64; byte < 128; ++byte) {
    if (matches(byte)) return static_cast<int>(byte);
  }
  for (unsigned byte : {kUpperLigature, kLowerLigature, kUpperWithDiaeresis}) {
    if (matches(byte)) return static_cast<int>(byte);
  }
  if (second != 0) return -1;
  if (first < 64) return first;
  if (first >= 128 + 96) return first - 96;
  if (first >= 160 + 16 && first < 192 + 16) return first - 16;
  return -1;
}

/// Writes the text of `size` weights to `target`, which has room for as many bytes; returns their
/// number. A weight that no byte has stands for itself.
template <class Text>
std::size_t MapFromWeights(char const* weights, std::size_t size, char* target) {
  std::size_t count = 0;
  for (std::size_t index = 0; index < size; ++index) {
    auto const first = static_cast<unsigned char>(weights[index]);
    int byte = -1;
    if (index + 1 < size) {
      auto const second = static_cast<unsigned char>(weights[index + 1]);
      if (second >= kLeastSecondWeight) byte = ByteOfWeights<Text>(first, second);
      if (byte >= 0) ++index;
    }
    if (byte < 0) byte = ByteOfWeights<Text>(first, 0);
    target[count++] = static_cast<char>(byte >= 0 ? byte : first);
  }
  return count;
}

}  // namespace xo
