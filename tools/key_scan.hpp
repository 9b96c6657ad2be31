#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "tools/key_cursor.hpp"
#include "tools/text_form.hpp"
#include "tools/text_key.hpp"

namespace xo::tool {

/// A limit of keys of strings by their first level alone.
///
/// A key that is cut does not stand where its text would: letters may follow behind the cut, and
/// below the level of letters a text may end on either side of what its key says. But a letter that
/// differs settles the order of the texts as that of the keys.
struct LetterLimit {
  Letters letters;
  /// As `LettersOf` gives them.
  std::vector<unsigned short> orders;
  unsigned char group = 0;
  /// Of an upper end: whether keys that begin with the letters and go on are inside.
  bool isOpen = false;
};

/// One end of a scan.
struct ScanEnd {
  /// A key, which need not be there. Keys that rank as this one are inside.
  Bytes key;
  /// What limits in place of the key.
  std::optional<LetterLimit> letters;
};

/// Keys to scan between; where there is no end, there is no limit.
struct ScanLimits {
  std::optional<ScanEnd> low;
  std::optional<ScanEnd> high;
};

/// Calls `take` on every key between the limits, in the order of the tree; it may move the cursor
/// among the lines of the key.
///
/// They are one stretch of the tree. A lower limit by letters takes in more: cut keys that have
/// shown only a beginning of the letters stand before it, one stretch for each beginning.
void ScanKeys(IndexReader const& index, ScanLimits const& limits,
              std::function<void(KeyCursor&)> const& take);

}  // namespace xo::tool
