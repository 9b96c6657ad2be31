#pragma once

#include <memory>
#include <optional>
#include <string>
#include <xotypemgr.hpp>

#include "tools/key_cursor.hpp"
#include "tools/key_scan.hpp"
#include "tools/text_form.hpp"

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

/// What a key tells of its lines.
enum class Answer {
  kYes,
  kNo,
  kAskRecords,  ///< it is cut, and each line's whole record has to be asked
};

/// A predicate as a user words it.
struct Condition {
  /// Made of `kXoBoundEqual` and its kind.
  unsigned short relation;
  /// Bits by which texts are compared, or without wildcards dates and times.
  unsigned short cmpOp;
  std::string value;
  /// Of all but text: how the row of the type reads the value, empty for the usual format.
  std::string format;
  /// Whether the value may have wildcards.
  bool takesPatterns = true;
};

/// A relation of the keys of one index to a value.
class Predicate {
 public:
  virtual ~Predicate() = default;
  Predicate(Predicate const&) = delete;
  Predicate& operator=(Predicate const&) = delete;

  /// Bounds and, with the ends of the index, the estimated share.
  Evaluation Evaluate(std::optional<EndKeys> const& ends) const;

  /// The keys between which all are that satisfy the predicate, by the bounds of its evaluation.
  ScanLimits LimitsOf(Evaluation const& evaluation) const;

  /// Why bounds do not hold all of these, so that all keys are looked at, or null.
  virtual char const* ReasonToScanAll() const { return nullptr; }

  virtual Answer Ask(MDB_val const& key) const = 0;
  /// Of text: whether a whole record satisfies the predicate.
  virtual bool SelectsRecord(ByteSpan record) const = 0;

  /// Whether one of the lines of the present key satisfies the predicate. The cursor may move on
  /// among the lines.
  bool Selects(KeyCursor& cursor) const;

 protected:
  Predicate(IndexReader const& reader, unsigned short wantedRelation, unsigned short wantedCmpOp);

  /// What is evaluated: a stored value, or an index key of text, with bits of a comparison.
  struct Evaluated {
    Bytes value;
    unsigned short cmpOp;
  };
  virtual Evaluated ToEvaluate() const = 0;
  /// The same as `LimitsOf` where there is no reason to scan all.
  virtual ScanLimits LimitsOfBounds(Evaluation const& evaluation) const = 0;

  /// Whether a key or record is selected that has this order to the value.
  bool Relates(int order) const;

  IndexReader const& index;
  IndexShape const& shape;
  unsigned short const relation;
  unsigned short const cmpOp;
};

/// What is no value of the index is `Trouble`.
std::unique_ptr<Predicate> MakePredicate(IndexReader const& index, Condition const& condition);

/// Takes a key of the index as the value, of text with the record of one of its lines.
std::unique_ptr<Predicate> MakePredicate(IndexReader const& index, unsigned short relation,
                                         ByteSpan key, ByteSpan record);

/// The bits that comparisons of an index's values look at. Others are `Trouble`.
void RequireKnownBits(IndexReader const& index, unsigned cmpOp);

}  // namespace xo::tool
