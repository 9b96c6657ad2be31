#pragma once

#include <string>

namespace xo::tool {

/// How the values of one type of fixed width are written in an index's text.
class ValueFormat {
 public:
  /// An empty `format` is the usual one: that of the row, but plain numbers where that shows bytes
  /// as characters or puts a sign before the number. A type whose values are no keys is `Trouble`,
  /// and so is a format that shows nothing of a value.
  ValueFormat(char type, std::string format);

  char Type() const { return type; }
  char const* Text() const { return text.c_str(); }
  /// Whether the format was named, and is not the usual one.
  bool IsGiven() const { return isGiven; }

 private:
  void RequireShowing() const;

  char type;
  bool isGiven;
  std::string text;
};

}  // namespace xo::tool
