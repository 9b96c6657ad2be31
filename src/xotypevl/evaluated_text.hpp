#pragma once

#include <cstddef>

#include "src/xotypes/stored_text.hpp"
#include "xostringiterator.hpp"

namespace xo {

/// Numbers of characters that take part in an estimate, of which this is all.
inline constexpr unsigned short kAllCharacters = 65535;

/// Which records a row keeps.
enum class Generation { kCurrent, kOlder };

/// A stored text as an evaluation reads it: where it lies, or as a copy with a terminator, which a
/// record of wide characters and one that is cut do not have. The record must stay, and is never
/// written to.
class EvaluatedText {
 public:
  EvaluatedText() = default;
  /// Takes the text of a record of which `available` bytes are there.
  void Read(void const* record, std::size_t available, unsigned char format, Generation generation);

  RecordHeader const& Header() const { return header; }
  /// Bytes of text that are there.
  std::size_t Bytes() const { return bytes; }
  /// The text where it lies; behind its bytes nothing is known to be there.
  char const* Start() const { return start; }
  unsigned char ByteOrder() const { return byteOrder; }
  /// The text with a terminator; copied when it is first asked for.
  char const* Text() const {
    if (text == nullptr) text = OrEmptyText(Terminated());
    return text;
  }
  /// The whole characters that are there.
  unsigned short CharactersThere() const {
    return AsCount(bytes >> (IsWide(header.codeSet) ? 1 : 0));
  }
  /// Whether there is no half of a character behind them.
  bool IsWhole() const { return !IsWide(header.codeSet) || bytes % 2 == 0; }
  XoStringIterator Begin() const {
    return XoStringIterator(Text(), header.codeSet, header.language, byteOrder);
  }
  /// The characters that the declared length of the record has room for.
  unsigned short Characters() const {
    return AsCount(declared >> (IsWide(header.codeSet) ? 1 : 0));
  }

 private:
  char const* Terminated() const;

  RecordHeader header{};
  unsigned char byteOrder = FormLittle;
  std::size_t declared = 0;  ///< bytes behind the header, by the length that the record came with
  std::size_t bytes = 0;
  char const* start = nullptr;
  mutable char const* text = nullptr;
  mutable TerminatedCopy copy;
};

/// The order of two texts, of each `characters` orders at most.
int CompareTexts(EvaluatedText const& one, EvaluatedText const& other, unsigned short cmpOp,
                 unsigned short characters, unsigned char byteOrder);

}  // namespace xo
