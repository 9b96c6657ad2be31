#pragma once

#include <string>
#include <string_view>

namespace xo::tool {

enum class ScalarOutcome { kValue, kNoNumber, kOutOfRange };

/// How the values of one plain scalar type are usually written as text, which messages about other
/// text tell.
///
/// Whole numbers are decimal, floating-point ones decimal with an optional exponent, or `inf`,
/// `infinity` or `nan` in any case. Blanks and tabs around the number, one carriage return at the
/// end and a plus sign are allowed. A number that is nearer to zero than any value of the type but
/// zero is out of range, like one that is too large.
struct ScalarText {
  char type;
  /// Writes the value that `text` stands for to `memory`, which has room for one value.
  ScalarOutcome (*read)(std::string_view text, void* memory);
  /// What `read` accepts, in words.
  std::string (*accepted)();
};

/// The text form of `type`, null for types that are no plain scalars.
ScalarText const* FindScalarText(char type);

}  // namespace xo::tool
