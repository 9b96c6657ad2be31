#pragma once

#include <optional>
#include <string>
#include <xotypemgr.hpp>

#include "tools/index_search.hpp"
#include "tools/text_form.hpp"
#include "tools/text_key.hpp"

namespace xo::tool {

/// The lowest and the highest key of an index, as copies: an evaluation may write to what it is
/// given, and the pages of an index are nobody's to write to.
struct EndKeys {
  Bytes low;
  Bytes high;
};

/// Nothing for an index without keys.
std::optional<EndKeys> EndKeysOf(IndexReader const& index);

/// What the type manager makes of a predicate.
struct Evaluation {
  /// The estimated share of the keys, or nothing where the index has none.
  std::optional<double> share;
  bool isPattern = false;
  /// The keys to scan between; no key stands for the end of the index.
  std::optional<Bytes> low;
  std::optional<Bytes> high;
};

/// A relation of the keys of one index to a value.
class Predicate {
 public:
  // `relation` is made of `kXoBoundEqual` and its kind. `cmpOp` are the bits by which texts are
  // compared, or without wildcards dates and times. What is no value of the index is `Trouble`.
  /// Takes the value from a text, which under `format` stands for one that is no text.
  Predicate(IndexReader const& index, unsigned short relation, unsigned short cmpOp,
            std::string const& text, std::string const& format);
  /// Takes a key of the index as the value, of text with the record of one of its lines.
  Predicate(IndexReader const& index, unsigned short relation, ByteSpan key, ByteSpan record);

  Evaluation const& Evaluate(std::optional<EndKeys> const& ends);

  /// Whether the present key satisfies the predicate; of one that is cut, a text of its lines. The
  /// cursor may move on among the lines.
  bool Selects(KeyCursor& cursor) const;

  /// Whether a key is inside the bounds of the evaluation. Where a comparison with a bound is not
  /// settled, as keys may be cut, it is, unless a letter that is there says otherwise.
  bool IsBetweenBounds(MDB_val const& key) const;

  /// Why a key may satisfy the predicate and not be between its bounds, or null where none can.
  /// Then all keys are to be looked at.
  char const* ReasonToScanAll() const;

 private:
  void MakeTextValue();
  bool IsString() const { return shape.HasText() && !shape.IsWeighted(); }
  Letters LettersOfBound(std::optional<Bytes> const& bound) const;
  bool IsPast(MDB_val const& key, Bytes const& bound, Letters const& letters, int side) const;
  bool Relates(int order) const;
  bool SelectsText(KeyCursor& cursor) const;
  char const* ReasonOfStrings() const;
  char const* ReasonOfWeightedTexts() const;
  char const* ReasonOfDates() const;

  IndexReader const& index;
  IndexShape const& shape;
  unsigned short relation;
  unsigned short cmpOp;
  bool isPattern = false;
  /// The stored value; of text its record.
  Bytes value;
  /// Of text, its key, with room for all of it.
  Bytes wholeKey;
  Evaluation evaluation;
  // Of strings, the letters of the bounds.
  Letters lowLetters;
  Letters highLetters;
};

/// The bits that comparisons of an index's values look at. Others are `Trouble`.
void RequireKnownBits(IndexReader const& index, unsigned cmpOp);

}  // namespace xo::tool
