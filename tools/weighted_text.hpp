#pragma once

#include <span>
#include <string>
#include <xotypemgr.hpp>

#include "tools/text_form.hpp"

namespace xo::tool {

// Weighted texts, `XoIString` and `XoCaseIString`. They are texts of windows-1252, whose order
// needs no language. Their records and keys have one header:
//
//     tag (1 byte) | payload (2) | bytes of the text, or weights in a key | 0x00
//
// A key is made of the text in memory, so that one which is cut is whole by itself and compares as
// what there is of it. Whether something is missing is told by its size alone.

/// The code set of weighted texts.
inline constexpr unsigned char kWeightedCodeSet = 15;

inline constexpr std::size_t kWeightedHeader = 3;
/// Header and closing zero.
inline constexpr std::size_t kWeightedFrame = kWeightedHeader + 1;

/// Whether a key can be of `size` bytes. LMDB's pages hold none of more than 511.
constexpr bool IsWeightedKeySize(std::size_t size) { return size >= kWeightedFrame && size <= 511; }

/// The shape of an index of weighted texts.
IndexShape WeightedShape(char type, unsigned char format, unsigned keyLength);

// The operations of text_form.hpp for these types.
void MakeWeightedRecord(IndexShape const& shape, XoString const& text, Bytes& record);
std::size_t MakeWeightedKey(IndexShape const& shape, ByteSpan record, unsigned char* key,
                            std::size_t room);
bool IsWeightedRecord(IndexShape const& shape, ByteSpan bytes);
std::string TextOfWeightedRecord(ByteSpan record);

/// Bytes of a record's text.
ByteSpan TextBytes(ByteSpan record);

/// What a key of an index says.
class WeightedKey {
 public:
  /// A key of `IsWeightedKeySize`, which must stay.
  WeightedKey(MDB_val const& key, IndexShape const& shape);

  ByteSpan Weights() const { return weights; }
  /// Whether weights may be missing for want of room.
  bool MayBeCut() const { return mayBeCut; }
  /// Whether the header says something else than there is.
  bool IsDamaged() const { return isDamaged; }

 private:
  ByteSpan weights;
  bool mayBeCut;
  bool isDamaged;
};

/// The key of some weights.
Bytes KeyOfWeights(IndexShape const& shape, ByteSpan weights);

}  // namespace xo::tool
