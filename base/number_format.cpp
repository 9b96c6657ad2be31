#include "base/number_format.hpp"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

#include "base/number_conversion.hpp"
#include "base/number_parts.hpp"

namespace xo {
namespace {

/// Text of any length into a buffer of a given one.
class BoundedText {
 public:
  BoundedText(char* buffer, std::size_t capacity) : next(buffer), room(capacity - 1) {}

  void Put(char character) { Fill(character, 1); }

  void Put(std::string_view text) {
    std::size_t const fits = std::min(text.size(), room);
    if (fits != 0) std::memcpy(next, text.data(), fits);
    Advance(text.size(), fits);
  }

  void Fill(char character, std::size_t count) {
    // Mostly there is nothing to fill.
    if (count == 0) return;
    std::size_t const fits = std::min(count, room);
    std::memset(next, character, fits);
    Advance(count, fits);
  }

  /// Ends the text; the length that all of it has.
  std::size_t End() {
    *next = 0;
    return length;
  }

 private:
  void Advance(std::size_t asked, std::size_t fits) {
    length += asked;
    next += fits;
    room -= fits;
  }

  char* next;
  std::size_t room;
  std::size_t length = 0;
};

struct Conversion {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool alternate = false;
  bool zeros = false;
  bool hasPrecision = false;
  unsigned width = 0;
  unsigned precision = 0;
  unsigned bits = 32;
  char letter = 0;

  /// Reads the conversion at `format`, behind its "%"; its end, or null where it is not one for a
  /// number of the kind that `takes` knows the letters of.
  char const* Read(char const* format, bool (*takes)(char letter)) {
    while (TakeFlag(*format)) ++format;
    width = TakeWidth(format);
    hasPrecision = *format == '.';
    if (hasPrecision) precision = TakeWidth(++format);
    bits = TakeSize(format);
    letter = *format;
    return takes(letter) ? format + 1 : nullptr;
  }

  /// The same number printed: the signs, marks and digits of an integer or of a mantissa, what of
  /// it the precision asks beyond the digits that there are, and an exponent.
  struct Parts {
    std::string_view sign;
    std::string_view digits;
    std::size_t zerosBefore = 0;
    std::size_t zerosBehind = 0;
    std::string_view exponent;
  };

  void Put(BoundedText& text, Parts const& parts, bool zerosFill) const {
    std::size_t const length = parts.sign.size() + parts.zerosBefore + parts.digits.size() +
                               parts.zerosBehind + parts.exponent.size();
    std::size_t const padding = width > length ? width - length : 0;
    bool const byZeros = zerosFill && zeros && !left;
    if (!left && !byZeros) text.Fill(' ', padding);
    text.Put(parts.sign);
    text.Fill('0', parts.zerosBefore + (byZeros ? padding : 0));
    text.Put(parts.digits);
    text.Fill('0', parts.zerosBehind);
    text.Put(parts.exponent);
    if (left) text.Fill(' ', padding);
  }

  std::string_view Sign(bool negative) const {
    return negative ? "-" : plus ? "+" : space ? " " : "";
  }

 private:
  bool TakeFlag(char character) {
    switch (character) {
      case '-':
        return left = true;
      case '+':
        return plus = true;
      case ' ':
        return space = true;
      case '#':
        return alternate = true;
      case '0':
        return zeros = true;
      default:
        return false;
    }
  }
};

void ToUpper(char* first, char const* last) {
  for (; first != last; ++first) *first = UpperAscii(*first);
}

void PutConverted(BoundedText& text, Conversion const& conversion, std::uint64_t value) {
  char const letter = conversion.letter;
  if (letter == 'c') {
    char const character = static_cast<char>(value);
    conversion.Put(text, {.sign = {}, .digits = {&character, 1}, .exponent = {}}, true);
    return;
  }
  bool const isSigned = IsSignedLetter(letter);
  std::uint64_t magnitude = CutTo(value, conversion.bits, isSigned);
  bool const negative = isSigned && static_cast<std::int64_t>(magnitude) < 0;
  if (negative) magnitude = 0 - magnitude;

  char digits[24];
  int const base = letter == 'o' ? 8 : letter == 'x' || letter == 'X' ? 16 : 10;
  char* last = std::to_chars(digits, digits + sizeof digits, magnitude, base).ptr;
  if (letter == 'X') ToUpper(digits, last);
  if (magnitude == 0 && conversion.hasPrecision && conversion.precision == 0) last = digits;

  Conversion::Parts parts;
  if (isSigned) parts.sign = conversion.Sign(negative);
  parts.digits = {digits, static_cast<std::size_t>(last - digits)};
  if (conversion.precision > parts.digits.size()) {
    parts.zerosBefore = conversion.precision - parts.digits.size();
  }
  if (conversion.alternate && base == 8 && parts.zerosBefore == 0 &&
      (magnitude != 0 || parts.digits.empty())) {
    parts.zerosBefore = 1;
  }
  if (conversion.alternate && base == 16 && magnitude != 0) {
    parts.sign = letter == 'x' ? "0x" : "0X";
  }
  conversion.Put(text, parts, !conversion.hasPrecision);
}

/// What stands for a number that is not finite, without its sign.
std::string_view NameOf(double value) {
  if (std::isinf(value)) return "inf";
  constexpr std::uint64_t kQuiet = 0x0008000000000000;
  constexpr std::uint64_t kIndefinite = 0xFFF8000000000000;
  auto const bits = std::bit_cast<std::uint64_t>(value);
  if (bits == kIndefinite) return "nan(ind)";
  return (bits & kQuiet) != 0 ? "nan" : "nan(snan)";
}

/// The digits of a finite number. No double has more of them than fit, so a greater precision adds
/// nothing but zeros.
class FloatingDigits {
 public:
  FloatingDigits(double magnitude, Conversion const& conversion) {
    char const letter = static_cast<char>(conversion.letter | 0x20);
    bool const isUpper = letter != conversion.letter;
    unsigned const precision = conversion.hasPrecision ? conversion.precision
                               : letter == 'a'         ? kHexadecimalDigits
                                                       : kUsualPrecision;
    switch (letter) {
      case 'a':
        Write(magnitude, std::chars_format::hex, precision, kHexadecimalDigits);
        break;
      case 'e':
        Write(magnitude, std::chars_format::scientific, precision, kMostDigits);
        break;
      case 'f':
        Write(magnitude, std::chars_format::fixed, precision, kMostFraction);
        break;
      default:
        WriteShorter(magnitude, std::max(precision, 1u), conversion.alternate);
    }
    if (isUpper) ToUpper(text, last);
    char* const exponent =
        std::find(text, last, isUpper ? (letter == 'a' ? 'P' : 'E') : (letter == 'a' ? 'p' : 'e'));
    mantissaLength = static_cast<std::size_t>(exponent - text);
    exponentText = {exponent, static_cast<std::size_t>(last - exponent)};
    if (conversion.alternate && std::find(text, exponent, '.') == exponent) {
      // The point goes where the exponent stands, which moves on.
      std::memmove(text + mantissaLength + 1, exponent, exponentText.size());
      text[mantissaLength++] = '.';
      exponentText = {text + mantissaLength, exponentText.size()};
    }
  }

  Conversion::Parts Parts(std::string_view sign) const {
    return {.sign = sign,
            .digits = {text, mantissaLength},
            .zerosBehind = zerosBehind,
            .exponent = exponentText};
  }

 private:
  static constexpr unsigned kUsualPrecision = 6;
  static constexpr unsigned kHexadecimalDigits = 13;
  // What the least numbers have: digits from the first that is not 0, and places behind the point.
  static constexpr unsigned kMostDigits = 767;
  static constexpr unsigned kMostFraction = 1074;
  static constexpr unsigned kMostWhole = 309;

  void Write(double magnitude, std::chars_format style, unsigned precision, unsigned most) {
    unsigned const written = std::min(precision, most);
    zerosBehind = precision - written;
    last = std::to_chars(text, text + sizeof text - 1, magnitude, style, static_cast<int>(written))
               .ptr;
  }

  /// The style of "%g": as many digits as the precision says, without an exponent where that is
  /// from -4 on and below it, and without zeros at the end unless the "#" flag keeps them.
  void WriteShorter(double magnitude, unsigned precision, bool keepsZeros) {
    if (!keepsZeros) {
      Write(magnitude, std::chars_format::general, std::min(precision, kMostDigits), kMostDigits);
      return;
    }
    Write(magnitude, std::chars_format::scientific, precision - 1, kMostDigits);
    char const* digits = std::find(text, last, 'e') + 1;
    bool const negative = *digits++ == '-';
    int exponent = 0;
    std::from_chars(digits, last, exponent);
    if (negative) exponent = -exponent;
    if (exponent < -4 || exponent >= static_cast<int>(precision)) return;
    Write(magnitude, std::chars_format::fixed,
          static_cast<unsigned>(static_cast<int>(precision) - 1 - exponent), kMostFraction);
  }

  char text[kMostWhole + kMostFraction + 16];
  char* last = text;
  std::size_t mantissaLength = 0;
  std::size_t zerosBehind = 0;
  std::string_view exponentText;
};

void PutConverted(BoundedText& text, Conversion const& conversion, double value) {
  bool const isUpper = conversion.letter < 'a';
  if (!std::isfinite(value)) {
    char name[16];
    auto const plain = NameOf(value);
    std::memcpy(name, plain.data(), plain.size());
    if (isUpper) ToUpper(name, name + plain.size());
    conversion.Put(text,
                   {.sign = conversion.Sign(std::signbit(value)),
                    .digits = {name, plain.size()},
                    .exponent = {}},
                   false);
    return;
  }
  FloatingDigits const digits(std::fabs(value), conversion);
  auto const sign = conversion.Sign(std::signbit(value));
  if ((conversion.letter | 0x20) != 'a') {
    conversion.Put(text, digits.Parts(sign), true);
    return;
  }
  char marked[4];
  std::size_t length = sign.size();
  if (length != 0) marked[0] = sign[0];
  marked[length++] = '0';
  marked[length++] = isUpper ? 'X' : 'x';
  conversion.Put(text, digits.Parts({marked, length}), true);
}

template <class Value>
std::size_t FormatValue(char* buffer, std::size_t capacity, char const* format,
                        bool (*takes)(char letter), Value value) {
  BoundedText text(buffer, capacity);
  bool printed = false;
  while (format != nullptr && *format != 0) {
    if (*format != '%') {
      std::size_t const length = std::strcspn(format, "%");
      text.Put({format, length});
      format += length;
      continue;
    }
    ++format;
    Conversion conversion;
    char const* const behind = printed ? nullptr : conversion.Read(format, takes);
    if (behind != nullptr) {
      PutConverted(text, conversion, value);
      printed = true;
      format = behind;
      continue;
    }
    text.Put('%');
    if (*format == '%') ++format;
  }
  return text.End();
}

}  // namespace

std::size_t FormatInteger(char* buffer, std::size_t capacity, char const* format,
                          std::uint64_t value) {
  return FormatValue(buffer, capacity, format, IsIntegerLetter, value);
}

std::size_t FormatDouble(char* buffer, std::size_t capacity, char const* format, double value) {
  return FormatValue(buffer, capacity, format, IsFloatingLetter, value);
}

}  // namespace xo
