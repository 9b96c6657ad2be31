#pragma once

#include <cstddef>

#include "src/xotypes/stored_text.hpp"
#include "xostringiterator.hpp"

namespace xo {

/// Numbers of characters that take part in an estimate, of which this is all.
inline constexpr unsigned short kAllCharacters = 65535;

/// Which records a row keeps.
enum class Generation { kCurrent, kOlder };

/// A stored text as an evaluation walks it: as a copy with a terminator, which a record of wide
/// characters and one that is cut do not have. So the record itself is never written to.
class EvaluatedText {
 public:
  EvaluatedText() = default;
  /// Takes the text of a record of which `available` bytes are there.
  void Read(void const* record, std::size_t available, unsigned char format, Generation generation);

  RecordHeader const& Header() const { return header; }
  /// Bytes of text that are there.
  std::size_t Bytes() const { return bytes; }
  char const* Text() const { return OrEmptyText(text); }
  XoStringIterator Begin() const {
    return XoStringIterator(Text(), header.codeSet, header.language, byteOrder);
  }
  /// The characters that the declared length of the record has room for.
  unsigned short Characters() const { return characters; }

 private:
  RecordHeader header{};
  unsigned char byteOrder = FormLittle;
  unsigned short characters = 0;
  std::size_t bytes = 0;
  char const* text = nullptr;
  TerminatedCopy copy;
};

/// The order of two texts, of each `characters` orders at most.
int CompareTexts(EvaluatedText const& one, EvaluatedText const& other, unsigned short cmpOp,
                 unsigned short characters, unsigned char byteOrder);

}  // namespace xo
