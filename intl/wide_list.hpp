#pragma once

#include "../base/export.hpp"

/// A short list of 16-bit values: further characters of a case form, or the sort orders that follow
/// a character's first one. A plain value of fixed capacity; whoever gives it out owns it.
struct XoWCharList {
  /// The longest list that the tables need: the orders behind the first one of U+FDFA.
  static constexpr unsigned kCapacity = 18;

  /// Number of values; at most `kCapacity`.
  unsigned short count = 0;
  unsigned short values[kCapacity] = {};

  /// Puts value `index` into `value` and returns 0; returns -2005 and leaves `value` as it is when
  /// the list ends before `index`.
  int Get(unsigned index, unsigned short* value) const {
    if (index >= count) return kEndOfList;
    *value = values[index];
    return 0;
  }

  static constexpr int kEndOfList = -2005;
};
