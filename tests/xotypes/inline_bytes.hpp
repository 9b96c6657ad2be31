#pragma once

#include <string_view>

#include "tests/xoistring/weight_oracle.hpp"
#include "tests/xotypes/string_bytes.hpp"

/// Stored weighted texts as the tests write them.
namespace xo::test {

template <class Text>
inline constexpr char kId = XoISTRING_T;
template <>
inline constexpr char kId<XoCaseIString> = XoCASEISTRING_T;

/// tag | payload | texts
inline ByteList Inline(unsigned char tag, ByteList const& texts, unsigned char format = kLittle) {
  return ByteList{tag} + Unit(static_cast<unsigned>(texts.size()), format) + texts;
}

/// The bytes of a text and its terminator.
inline ByteList Ended(std::string_view text) { return BytesOf(text) + ByteList{0}; }

/// The weights of a text, with their terminator.
template <class Text>
ByteList WeightsOf(std::string_view text) {
  ByteList bytes;
  for (int const weight : SequenceOf<Text>(text)) {
    bytes.push_back(static_cast<unsigned char>(weight));
  }
  return bytes + ByteList{0};
}

}  // namespace xo::test
