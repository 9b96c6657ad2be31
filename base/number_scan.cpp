#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "base/number_conversion.hpp"
#include "base/number_format.hpp"
#include "base/number_parts.hpp"

namespace xo {
namespace {

/// A conversion of a scan, behind its "%": a number to read, or text to pass over.
struct ScanConversion {
  bool discards = false;
  unsigned width = 0;
  unsigned bits = 32;
  char letter = 0;

  /// Whether this is "%*s" or "%*c", which take any text.
  bool PassesOver() const { return discards && (letter == 's' || letter == 'c'); }

  /// Reads the conversion at `format`; its end, or null where it does not take a number of the kind
  /// that `takes` knows the letters of.
  char const* Read(char const* format, bool (*takes)(char letter)) {
    discards = *format == '*';
    if (discards) ++format;
    width = TakeWidth(format);
    bits = TakeSize(format);
    letter = *format;
    // More than one character is no number.
    if (letter == 'c' && width > 1 && !discards) return nullptr;
    return takes(letter) || PassesOver() ? format + 1 : nullptr;
  }

  /// Where the text that the conversion may take ends at the latest.
  char const* LimitOf(char const* text) const {
    if (width == 0) return text + std::strlen(text);
    void const* const end = std::memchr(text, 0, width);
    return end != nullptr ? static_cast<char const*>(end) : text + width;
  }
};

constexpr std::size_t kAnyLength = static_cast<std::size_t>(-1);

/// Kinds of characters of which a scan meets long runs.
enum RunKind : unsigned char {
  kBlanks,
  kWord,
  kAll,
  kZeros,
  kOctal,
  kDecimal,
  kHexadecimal,
  kRunKinds,
};

template <RunKind kKind>
constexpr bool IsOfKind(char character) {
  switch (kKind) {
    case kBlanks:
      return IsWhite(character);
    case kWord:
      return character != 0 && !IsWhite(character);
    case kAll:
      return character != 0;
    case kZeros:
      return character == '0';
    default:
      return DigitValue(character) < (kKind == kOctal ? 8u : kKind == kHexadecimal ? 16u : 10u);
  }
}

template <RunKind kKind>
char const* RunEnd(char const* text, std::size_t most) {
  for (; most != 0 && IsOfKind<kKind>(*text); --most) ++text;
  return text;
}

/// The runs of a single scan, each of which is met once.
struct PassingRuns {
  void NextStep() {}

  /// The end of the run at `text`, at most as many characters behind it.
  template <RunKind kKind>
  char const* End(char const* text, std::size_t most) {
    return RunEnd<kKind>(text, most);
  }
};

/// The runs of one scan after the other. A step of the format comes to places that do not go back
/// from scan to scan, so its last run of each kind tells where most of them end.
class RememberedRuns {
 public:
  explicit RememberedRuns(std::vector<IntegerScanner::Run>& runs_) : runs(runs_) {}

  void NextStep() { step += kRunKinds; }

  template <RunKind kKind>
  char const* End(char const* text, std::size_t most) {
    if (!IsOfKind<kKind>(*text)) return text;
    if (runs.size() < step + kRunKinds) runs.resize(step + kRunKinds);
    IntegerScanner::Run& run = runs[step + kKind];
    if (run.first == nullptr || text < run.first || text >= run.last) {
      run = {text, RunEnd<kKind>(text, kAnyLength)};
    }
    return text + std::min(most, static_cast<std::size_t>(run.last - text));
  }

 private:
  std::vector<IntegerScanner::Run>& runs;
  std::size_t step = 0;
};

template <class Runs>
char const* SkipWhite(char const* text, Runs& runs) {
  return runs.template End<kBlanks>(text, kAnyLength);
}

/// Passes over the characters of "%*s" and "%*c"; null where there is none.
template <class Runs>
char const* PassOver(char const* text, ScanConversion const& conversion, Runs& runs) {
  std::size_t const width = conversion.width;
  char const* end = nullptr;
  if (conversion.letter == 'c') {
    end = runs.template End<kAll>(text, width != 0 ? width : 1);
  } else {
    text = SkipWhite(text, runs);
    end = runs.template End<kWord>(text, width != 0 ? width : kAnyLength);
  }
  return end != text ? end : nullptr;
}

template <class Runs>
char const* DigitsEnd(char const* text, unsigned base, std::size_t most, Runs& runs) {
  switch (base) {
    case 8:
      return runs.template End<kOctal>(text, most);
    case 16:
      return runs.template End<kHexadecimal>(text, most);
    default:
      return runs.template End<kDecimal>(text, most);
  }
}

/// Reads an integer at `text`; its end, or null where there is none. Digits are met one by one, so
/// that the end of the text need not be known.
template <class Runs>
char const* ReadConverted(char const* text, ScanConversion const& conversion, std::uint64_t& value,
                          Runs& runs) {
  std::size_t left = conversion.width != 0 ? conversion.width : kAnyLength;
  auto const take = [&text, &left] {
    ++text;
    --left;
  };
  auto const takeTo = [&text, &left](char const* end) {
    left -= static_cast<std::size_t>(end - text);
    text = end;
  };
  bool const isSigned = IsSignedLetter(conversion.letter);
  bool const negative = *text == '-';
  if (negative || *text == '+') take();

  unsigned base = 10;
  if (conversion.letter == 'o') base = 8;
  bool const isHexadecimal = conversion.letter == 'x' || conversion.letter == 'X';
  if (isHexadecimal) base = 16;
  if ((isHexadecimal || conversion.letter == 'i') && left != 0 && *text == '0') {
    bool const marked = left > 2 && LowerAscii(text[1]) == 'x' && DigitValue(text[2]) < 16;
    base = marked || isHexadecimal ? 16 : 8;
    if (marked) {
      take();
      take();
    }
  }

  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
  if (isSigned) limit = limit / 2 + (negative ? 1 : 0);
  std::uint64_t const most = limit / base;
  std::uint64_t magnitude = 0;
  bool overflows = false;
  char const* const first = text;
  if (*text == '0') takeTo(runs.template End<kZeros>(text, left));
  for (unsigned digit = 0; left != 0 && (digit = DigitValue(*text)) < base; take()) {
    if (magnitude > most || (magnitude == most && digit > limit % base)) {
      overflows = true;
      takeTo(DigitsEnd(text, base, left, runs));
      break;
    }
    magnitude = magnitude * base + digit;
  }
  if (text == first) return nullptr;
  // Beyond the greatest unsigned number the sign does not count.
  if (overflows) magnitude = negative && !isSigned ? 0 - limit : limit;
  value = CutTo(negative ? 0 - magnitude : magnitude, conversion.bits, isSigned);
  return text;
}

struct ReadInteger {
  template <class Runs>
  char const* operator()(char const* text, ScanConversion const& conversion, std::uint64_t& value,
                         Runs& runs) const {
    if (conversion.letter != 'c') {
      return ReadConverted(SkipWhite(text, runs), conversion, value, runs);
    }
    if (*text == 0) return nullptr;
    value = static_cast<unsigned char>(*text);
    return text + 1;
  }
};

struct ReadFloating {
  template <class Number>
  char const* operator()(char const* text, ScanConversion const& conversion, Number& value,
                         PassingRuns& runs) const {
    text = SkipWhite(text, runs);
    char const* const last = conversion.LimitOf(text);
    bool const negative = text != last && *text == '-';
    if (negative || (text != last && *text == '+')) ++text;
    Number magnitude = 0;
    char const* const end = ReadMagnitude(text, last, magnitude);
    if (end != nullptr) value = negative ? -magnitude : magnitude;
    return end;
  }
};

/// What follows the number in the format cannot change it, and is not looked at.
template <class Read, class Value, class Runs>
bool ScanValue(char const* text, char const* format, bool (*takes)(char letter), Read read,
               Value& value, Runs runs) {
  if (text == nullptr || format == nullptr) return false;
  for (; *format != 0; runs.NextStep()) {
    if (IsWhite(*format)) {
      text = SkipWhite(text, runs);
      ++format;
      continue;
    }
    if (*format == '%') {
      if (format[1] == '%') {
        // A "%" is met behind white space, as a number is.
        text = SkipWhite(text, runs);
        ++format;
      } else {
        ScanConversion conversion;
        char const* const behind = conversion.Read(format + 1, takes);
        if (behind != nullptr) {
          if (!conversion.discards) return read(text, conversion, value, runs) != nullptr;
          Value passed = 0;
          text = conversion.PassesOver() ? PassOver(text, conversion, runs)
                                         : read(text, conversion, passed, runs);
          if (text == nullptr) return false;
          format = behind;
          continue;
        }
      }
    }
    if (*text != *format) return false;
    ++text;
    ++format;
  }
  return false;
}

}  // namespace

bool ScanInteger(char const* text, char const* format, std::uint64_t& value) {
  return ScanValue(text, format, IsIntegerLetter, ReadInteger(), value, PassingRuns());
}

bool ScanDouble(char const* text, char const* format, double& value) {
  return ScanValue(text, format, IsFloatingLetter, ReadFloating(), value, PassingRuns());
}

bool ScanFloat(char const* text, char const* format, float& value) {
  return ScanValue(text, format, IsFloatingLetter, ReadFloating(), value, PassingRuns());
}

bool IntegerScanner::Scan(char const* place, std::uint64_t& value) {
  return ScanValue(place, format, IsIntegerLetter, ReadInteger(), value, RememberedRuns(runs));
}

}  // namespace xo
