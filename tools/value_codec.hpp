#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tools/index_layout.hpp"

namespace xo::tool {

/// A value as an index holds it.
struct StoredValue {
  /// What stands in the tree. Of a type of fixed width it is the value in disk form.
  std::span<unsigned char const> key;
  /// Of text, whose key may be cut: the value whole.
  std::span<unsigned char const> record;
  /// Whether fields of it are wildcards.
  bool isPattern = false;
};

/// How values other than text are read.
struct CodecOptions {
  /// Of the row; empty for the usual one.
  std::string format;
  /// Whether dates and times may have wildcards.
  bool takesPatterns = false;
};

/// Text to stored values of one index.
class ValueCodec {
 public:
  virtual ~ValueCodec() = default;

  /// The value that `text` stands for, until the next call; nothing if it stands for none.
  virtual std::optional<StoredValue> Store(std::string_view text) = 0;

  /// Why `text` stands for no value: the text and what is wrong with it.
  virtual std::string Complaint(std::string_view text) = 0;
};

/// The codec of an index. A type whose values cannot be keys, and a format for one that has none,
/// are `Trouble`.
std::unique_ptr<ValueCodec> MakeCodec(IndexShape const& shape, CodecOptions const& options = {});

}  // namespace xo::tool
