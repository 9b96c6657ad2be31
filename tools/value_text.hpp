#pragma once

#include <array>
#include <string>
#include <xotypemgr.hpp>

namespace xo::tool {

/// Room for one value of any type of fixed width, in memory or stored.
using ValueBytes = std::array<unsigned char, 16>;

/// Values of one type of fixed width as text: scanned and printed by the type's own row, under one
/// format.
class ValueText {
 public:
  /// An empty `format` is the usual one: that of the row, but plain numbers where that shows bytes
  /// as characters or puts a sign before the number. A type whose values are no keys is `Trouble`,
  /// and so is a format that shows nothing of a value.
  ValueText(char type, std::string format);

  char Type() const { return type; }
  std::string const& Format() const { return format; }
  /// Whether the format was named, and is not the usual one.
  bool IsFormatGiven() const { return isFormatGiven; }

  /// The value that the row reads from `text`, whatever stands there.
  ValueBytes Scan(std::string const& text) const;
  std::string Print(ValueBytes const& value) const;
  bool IsNull(ValueBytes const& value) const;

 private:
  void RequireShowingFormat() const;

  char type;
  bool isFormatGiven;
  std::string format;
};

/// What a null prints as.
std::string NullText();

/// Whether the values of a type can be keys of an index without being text: all that have a fixed
/// width.
bool IsFixedKeyType(char type);

/// How the values of a type are read, and what can be wrong with a line therefore.
enum class TextFamily {
  kInteger,
  kByte,
  kFloating,
  kLargeInteger,
  kBoolean,
  kTemporal,
  kIdentifier
};
TextFamily FamilyOf(char type);

/// Of a number that can be null, the type of the same number that cannot; of any other type, that
/// type.
char PlainTypeOf(char type);

}  // namespace xo::tool
