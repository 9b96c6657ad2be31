#include <cstring>

#include "src/xostring/text_units.hpp"
#include "xostrcmp.hpp"

using namespace xo;

int BinaryCompare(char const* a, char const* b, unsigned short count) {
  if (a == nullptr) return b == nullptr || *b == 0 ? 0 : -1;
  if (b == nullptr) return *a != 0 ? 1 : 0;
  for (unsigned place = 0; count == 0 || place < count; ++place) {
    int const difference = int{LoadNarrow(a + place)} - int{LoadNarrow(b + place)};
    if (difference != 0 || a[place] == 0) return difference;
  }
  return 0;
}

namespace {

/// A pattern with '*' and '?' on its way through a text.
class ByteMatch {
 public:
  ByteMatch(char const* pattern_, char const* text_, short count)
      : pattern(pattern_),
        text(text_),
        isCounted(count != -1),
        remaining(static_cast<unsigned short>(count)) {}

  int Run() {
    for (;;) {
      if (*pattern == 0 && !starOpen) return IsUsedUp() ? 0 : ByteDifference();
      if (IsUsedUp()) return 0;
      if (*pattern == '*') {
        while (*pattern == '*') ++pattern;
        if (!ReachStar()) return outcome;
      } else if (*pattern == '?') {
        if (*text == 0) return -1;
        Match();
      } else if (*pattern == *text) {
        if (*text == 0) return 0;
        Match();
      } else {
        if (!starOpen || matched == 0) return ByteDifference();
        // Bytes that are read again count again.
        pattern -= matched;
        text = restart;
        if (!ReachStar()) return outcome;
      }
    }
  }

 private:
  bool IsUsedUp() const { return isCounted && remaining == 0; }
  int ByteDifference() const { return int{LoadNarrow(text)} - int{LoadNarrow(pattern)}; }

  void Consume() {
    ++text;
    if (isCounted) --remaining;
  }

  void Match() {
    ++pattern;
    ++matched;
    Consume();
  }

  /// Finds where what follows the star may begin; false when that settles the outcome.
  bool ReachStar() {
    starOpen = true;
    matched = 0;
    if (*pattern == 0 || IsUsedUp()) return Settle(0);
    if (*text == 0) return Settle(-1);
    restart = text + 1;
    while (!IsUsedUp() && *text != *pattern) {
      if (*text == 0) return Settle(-int{LoadNarrow(pattern)});
      Consume();
    }
    if (IsUsedUp()) return Settle(0);
    // Nothing between the star and the byte found is another place to begin; only a count notices
    // that it is looked at again.
    if (!isCounted) restart = text + 1;
    return true;
  }

  bool Settle(int value) {
    outcome = value;
    return false;
  }

  char const* pattern;
  char const* text;
  bool const isCounted;
  unsigned remaining;
  char const* restart = nullptr;
  std::size_t matched = 0;
  bool starOpen = false;
  int outcome = 0;
};

}  // namespace

int BinaryWildcardMatch(char const* pattern, char const* text, short count) {
  if (pattern == nullptr) return text != nullptr && *text != 0 ? 1 : 0;
  if (text == nullptr) return *pattern == 0 ? 0 : -1;
  return ByteMatch(pattern, text, count).Run();
}
