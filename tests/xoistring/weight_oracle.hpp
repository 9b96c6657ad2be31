#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

/// The collation of the weighted texts, written out once more and applied slowly.
namespace xo::test {

struct Weights {
  int first;
  int second;
};

inline std::vector<int> HexNumbers(char const* text) {
  std::istringstream stream(text);
  std::vector<int> numbers;
  for (int number = 0; stream >> std::hex >> number;) numbers.push_back(number);
  return numbers;
}

/// The weights of all bytes, in the class that tells case or in the one that does not.
inline std::array<Weights, 256> const& WeightsOfBytes(bool caseless) {
  static auto const make = [](bool ignoresCase) {
    auto const ascii = HexNumbers(
        "40 54 5B 5E 61 69 6F 71 73 79 7F 81 83 85 87 90 97 99 9B 9D 9F A5 AB AD AF B3 B7 42 43 44 "
        "45 46 41 4E 5A 5C 60 64 6E 70 72 74 7E 80 82 84 86 8A 96 98 9A 9C 9E A0 AA AC AE B0 B6 47 "
        "48 49 4A 4B");
    auto const accented = HexNumbers(
        "54 54 54 54 54 BD B9 5E 69 69 69 69 79 79 79 79 63 89 90 90 90 90 90 4C BB A5 A5 A5 A5 B3 "
        "BF 9C 4E 4E 4E 4E 4E BC B8 5C 64 64 64 64 74 74 74 74 62 88 8A 8A 8A 8A 8A 4D BA A0 A0 A0 "
        "A0 B0 BE B0");
    auto const accents = HexNumbers(
        "03 02 04 05 01 00 00 01 03 02 04 01 03 02 04 01 00 00 03 02 04 05 01 00 00 03 02 04 01 02 "
        "00 9C 03 02 04 05 01 00 00 01 03 02 04 01 03 02 04 01 00 00 03 02 04 05 01 00 00 03 02 04 "
        "01 02 00 01");
    std::array<Weights, 256> weights{};
    for (int byte = 0; byte < 256; ++byte) {
      auto& of = weights[static_cast<unsigned>(byte)];
      if (byte <= 63) of = {byte, 0};
      if (byte >= 64 && byte <= 127) of = {ascii[static_cast<unsigned>(byte - 64)], 0};
      if (byte >= 128 && byte <= 159) of = {byte + 96, 0};
      if (byte >= 160 && byte <= 191) of = {byte + 16, 0};
      if (byte >= 192) {
        of = {accented[static_cast<unsigned>(byte - 192)],
              accents[static_cast<unsigned>(byte - 192)]};
      }
    }
    weights[140] = {144, 'i'};
    weights[156] = {138, 'd'};
    weights[159] = {179, 1};
    if (ignoresCase) {
      for (unsigned byte = 97; byte <= 122; ++byte) weights[byte].first = weights[byte - 32].first;
      // The sharp s and the small y with diaeresis stand alone in their rows.
      for (unsigned byte = 224; byte < 255; ++byte) weights[byte].first = weights[byte - 32].first;
      weights[255].first = 0xB3;
      weights[223] = {0x9D, 0x9D};
      weights[156] = weights[140];
    }
    return weights;
  };
  static auto const telling = make(false);
  static auto const ignoring = make(true);
  return caseless ? ignoring : telling;
}

template <class Text>
inline constexpr bool kIgnoresCase = false;
template <>
inline constexpr bool kIgnoresCase<XoCaseIString> = true;

inline int Ordinal(char character) { return static_cast<unsigned char>(character); }

/// The weights of a text that comparisons look at.
template <class Text>
std::vector<int> SequenceOf(std::string_view text, unsigned char flag = 0) {
  std::vector<int> sequence;
  for (char const character : text) {
    if ((flag & 0x80) != 0) {
      sequence.push_back(Ordinal(character));
      continue;
    }
    Weights const weights =
        WeightsOfBytes(kIgnoresCase<Text>)[static_cast<unsigned>(Ordinal(character))];
    sequence.push_back(weights.first);
    if (weights.second > 8 && (flag & 0x20) == 0) sequence.push_back(weights.second);
  }
  return sequence;
}

/// Order of two texts that are not empty by at most `count` weights.
template <class Text>
int SlowOrder(std::string_view a, std::string_view b, std::size_t count, unsigned char flagA = 0,
              unsigned char flagB = 0) {
  auto one = SequenceOf<Text>(a, flagA);
  auto two = SequenceOf<Text>(b, flagB);
  one.push_back(0);
  two.push_back(0);
  std::size_t const steps = std::min({one.size(), two.size(), count});
  for (std::size_t place = 0; place < steps; ++place) {
    if (one[place] != two[place]) return one[place] < two[place] ? -1 : 1;
  }
  return 0;
}

inline int SignOf(int value) { return (value > 0) - (value < 0); }

/// All bytes but the zero.
inline std::string AllBytes() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

}  // namespace xo::test
