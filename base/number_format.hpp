#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "export.hpp"

/// Numbers printed and read under a format, as the 64-bit Windows runtime's `printf` and `scanf` do
/// it, the same on every platform and in every locale.
///
/// A format is text that stands for itself, with one conversion in it:
///
///     % flags width .precision size letter
///
/// Flags are "-", "+", " ", "#" and "0". The size says how much of an integer counts: "hh" 8 bits,
/// "h" 16, "l" and "I32" 32, as without any, "ll", "I64", "I", "j", "t" and "z" 64. "w" and "L"
/// change nothing. Letters of integers are d, i, o, u, x, X and c, those of floating-point numbers
/// e, f, g, a and E, F, G, A.
///
/// There is one number at hand. A conversion that does not take it, such as "%s", "%n", a "*" for
/// width or precision, an unknown letter, or a second conversion, is text that stands for itself;
/// "%%" is one "%".
namespace xo {

/// Writes the number under `format`, ended by a zero byte, to `buffer`; a null `format` is an empty
/// one. Returns the length of the whole text. What is longer than `capacity` - 1 is cut there, so
/// the text is whole when the result is less than `capacity`, which must not be 0.
///
/// The integer's own 64 bits are taken: a narrower one is extended by its sign before. Infinities
/// and NaNs print as "inf", "nan", "nan(snan)" where they signal, and "-nan(ind)" for the one that
/// invalid arithmetic gives. Exponents have at least two digits, those of "%a" one; "%a" has
/// thirteen digits behind the point unless told otherwise.
XO_EXPORT std::size_t FormatInteger(char* buffer, std::size_t capacity, char const* format,
                                    std::uint64_t value);
XO_EXPORT std::size_t FormatDouble(char* buffer, std::size_t capacity, char const* format,
                                   double value);

/// Reads a number from `text` under `format`, both ended by a zero byte; a null one is empty.
///
/// White space in the format stands for any white space in the text, none included; every other
/// character must be met, and reading ends at the first that is not. The conversion skips white
/// space (but for "%c"), and takes as much of the text as can be a number, at most as many
/// characters as its width says. With a "*" behind its "%" it takes them and gives no value; so may
/// "%*s" and "%*c". Returns whether a value was read; otherwise `value` is left as it was.
///
/// An integer beyond 64 bits gives the nearest, what is read is cut to the size that the format
/// names, and is extended to 64 bits, by its sign for d and i. A floating-point number beyond the
/// type gives infinity or 0.
XO_EXPORT bool ScanInteger(char const* text, char const* format, std::uint64_t& value);
XO_EXPORT bool ScanDouble(char const* text, char const* format, double& value);
XO_EXPORT bool ScanFloat(char const* text, char const* format, float& value);

/// Reads integers under one format from one place of a text after the other, each as `ScanInteger`
/// does. It remembers how far the runs of blanks and digits reach that were met on the way, so that
/// the time for all places is in proportion to the text.
class XO_EXPORT IntegerScanner {
 public:
  explicit IntegerScanner(char const* format_) : format(format_) {}

  /// Reads at `place`, which lies behind the one before it in the same text.
  bool Scan(char const* place, std::uint64_t& value);

  /// A run of characters of one kind.
  struct Run {
    char const* first = nullptr;
    char const* last = nullptr;
  };

 private:
  char const* format;
  std::vector<Run> runs;
};

}  // namespace xo
