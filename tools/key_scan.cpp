#include "tools/key_scan.hpp"

#include <algorithm>

#include "tools/index_order.hpp"
#include "tools/weighted_text.hpp"

namespace xo::tool {
namespace {

class KeyScan {
 public:
  KeyScan(IndexReader const& reader, std::function<void(KeyCursor&)> const& takeKey)
      : shape(reader.Meta()), cursor(reader), take(takeKey) {}

  void Run(ScanLimits const& limits) {
    if (limits.low && limits.low->letters) VisitBeginnings(*limits.low->letters);
    bool on = limits.low ? SeekLow(*limits.low) : cursor.First();
    for (; on && !(limits.high && IsPast(*limits.high)); on = cursor.NextKey()) Take();
  }

 private:
  TextKey Fields() const {
    TextKey const key(cursor.Key(), shape.format);
    if (key.IsDamaged()) cursor.Damaged("a key");
    return key;
  }

  void Take() {
    if (shape.IsWeighted() && WeightedKey(cursor.Key(), shape).IsDamaged()) {
      cursor.Damaged("a key");
    }
    if (shape.HasText() && !shape.IsWeighted()) static_cast<void>(Fields());
    take(cursor);
  }

  bool Seek(Bytes const& key) { return cursor.Seek(LmdbValue(key.data(), key.size())); }

  /// How many letters a key has room for that are looked for.
  std::size_t MostLetters(LetterLimit const& low) const {
    return std::min<std::size_t>(low.letters.size(), (shape.keyLength - kKeyHeader) / 2);
  }

  bool SeekLetters(LetterLimit const& low, std::size_t count) {
    if (count == 0) return cursor.First();
    return Seek(LeastKey(low.orders, count, low.group, shape.format));
  }

  bool SeekLow(ScanEnd const& low) {
    return low.letters ? SeekLetters(*low.letters, MostLetters(*low.letters)) : Seek(low.key);
  }

  void VisitBeginnings(LetterLimit const& low) {
    std::size_t const most = MostLetters(low);
    for (std::size_t count = 0; count < most; ++count) {
      for (bool on = SeekLetters(low, count); on; on = cursor.NextKey()) {
        TextKey const key = Fields();
        if (CompareLetters(key, low.letters, count) != LetterRelation::kSame) break;
        if (key.IsCut()) take(cursor);
      }
    }
  }

  bool IsPast(ScanEnd const& high) const {
    if (!high.letters) {
      MDB_val const last = LmdbValue(high.key.data(), high.key.size());
      return indexOrder.compare(&cursor.Key(), &last) > 0;
    }
    LetterLimit const& limit = *high.letters;
    LetterRelation const relation = CompareLetters(Fields(), limit.letters, limit.letters.size());
    return relation == LetterRelation::kGreater ||
           (relation == LetterRelation::kLonger && !limit.isOpen);
  }

  IndexShape const& shape;
  KeyCursor cursor;
  std::function<void(KeyCursor&)> const& take;
};

}  // namespace

void ScanKeys(IndexReader const& index, ScanLimits const& limits,
              std::function<void(KeyCursor&)> const& take) {
  KeyScan(index, take).Run(limits);
}

}  // namespace xo::tool
