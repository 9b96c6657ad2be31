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
  ByteMatch(char const* pattern_, char const* text_, unsigned count)
      : pattern(pattern_), begin(text_), text(text_), limit(count) {}

  int Run() {
    for (;;) {
      if (*pattern == 0 && !starOpen) return IsUsedUp() ? 0 : ByteDifference();
      if (IsUsedUp()) return 0;
      if (*pattern == '*') {
        while (*pattern == '*') ++pattern;
        if (!ReachStar()) return outcome;
      } else if (*pattern == '?') {
        if (*text == 0) return -1;
        Consume();
      } else if (*pattern == *text) {
        if (*text == 0) return 0;
        Consume();
      } else {
        if (!starOpen || matched == 0) return ByteDifference();
        // The same place of the pattern, and the text behind the byte that was tried: between that
        // byte and the place where the star was reached there is no other to try.
        pattern -= matched;
        text = restart;
        if (!ReachStar()) return outcome;
      }
    }
  }

 private:
  bool IsUsedUp() const { return limit != 65535 && text - begin >= static_cast<int>(limit); }
  int ByteDifference() const { return int{LoadNarrow(text)} - int{LoadNarrow(pattern)}; }

  void Consume() {
    ++pattern;
    ++text;
    ++matched;
  }

  /// Finds where what follows the star may begin; false when that settles the outcome.
  bool ReachStar() {
    starOpen = true;
    matched = 0;
    if (*pattern == 0 || IsUsedUp()) return Settle(0);
    if (*text == 0) return Settle(-1);
    while (!IsUsedUp() && *text != *pattern) {
      if (*text == 0) return Settle(-int{LoadNarrow(pattern)});
      ++text;
    }
    if (IsUsedUp()) return Settle(0);
    restart = text + 1;
    return true;
  }

  bool Settle(int value) {
    outcome = value;
    return false;
  }

  char const* pattern;
  char const* const begin;
  char const* text;
  unsigned const limit;
  char const* restart = nullptr;
  std::size_t matched = 0;
  bool starOpen = false;
  int outcome = 0;
};

}  // namespace

int BinaryWildcardMatch(char const* pattern, char const* text, short count) {
  if (pattern == nullptr) return text != nullptr && *text != 0 ? 1 : 0;
  if (text == nullptr) return *pattern == 0 ? 0 : -1;
  return ByteMatch(pattern, text, static_cast<unsigned short>(count)).Run();
}
