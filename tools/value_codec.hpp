#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <xotypemgr.hpp>

#include "tools/scalar_text.hpp"

namespace xo::tool {

/// Room for the widest stored value.
inline constexpr std::size_t kWidestValue = 8;

/// A value in disk form; its width is its type's.
using StoredValue = std::array<unsigned char, kWidestValue>;

/// Text to stored values of one type in one format.
class ValueCodec {
 public:
  /// A type whose values have no disk form or no text form is `Trouble`.
  ValueCodec(char type, unsigned char format);

  /// The value that `text` stands for, nothing if it stands for none.
  std::optional<StoredValue> Store(std::string_view text) const;

  /// Why `text` stands for no value: the text and what is wrong with it.
  std::string Complaint(std::string_view text) const;

 private:
  XoTypeMgr manager;
  char type;
  unsigned char format;
  std::size_t width = 0;
  ScalarText const* scalar = nullptr;
};

}  // namespace xo::tool
