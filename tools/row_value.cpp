#include "tools/row_value.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>

#include "tools/printable.hpp"
#include "tools/record_names.hpp"
#include "tools/text_decoder.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

bool IsDigit(char character) { return character >= '0' && character <= '9'; }
char Lower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}
bool IsBlank(char character) { return character == ' ' || character == '\t' || character == '\r'; }
bool IsLetter(char character) {
  // Bytes above ASCII are parts of letters.
  return (Lower(character) >= 'a' && Lower(character) <= 'z') || (character & 0x80) != 0;
}

/// The numbers, words and wildcards of a text, and the other signs behind them and in all.
struct Pieces {
  std::vector<std::string> parts;
  std::string signs;
  std::string lastSigns;
};

/// A minus sign belongs to the number behind it where no number stands before it. A number behind a
/// decimal point keeps it.
std::string NumberPiece(std::string_view text, std::size_t begin, std::size_t end) {
  auto const before = [&](std::size_t count) { return begin >= count ? text[begin - count] : ' '; };
  std::string_view digits = text.substr(begin, end - begin);
  if (before(1) == '.' && IsDigit(before(2)))
    return std::string(text.substr(begin - 1, end - begin + 1));
  while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
  bool const isNegative = before(1) == '-' && !IsDigit(before(2)) && before(2) != '*';
  std::string piece(isNegative ? 1 : 0, '-');
  return piece += digits;
}

Pieces PiecesOf(std::string_view text) {
  Pieces pieces;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const begin = at;
    if (IsDigit(text[at])) {
      while (at < text.size() && IsDigit(text[at])) ++at;
      pieces.parts.push_back(NumberPiece(text, begin, at));
    } else if (IsLetter(text[at])) {
      std::string word;
      while (at < text.size() && IsLetter(text[at])) word += Lower(text[at++]);
      pieces.parts.push_back(word);
    } else if (text[at] == '*') {
      pieces.parts.emplace_back("*");
      ++at;
    } else {
      if (!IsBlank(text[at])) {
        pieces.signs += text[at];
        pieces.lastSigns += text[at];
      }
      ++at;
      continue;
    }
    pieces.lastSigns.clear();
  }
  return pieces;
}

/// Digits behind a point in billionths. There are no more than nine of them.
int Billionths(std::string digits) {
  digits.resize(9, '0');
  return std::stoi(digits);
}

/// Numbers behind a point: a count, as in a date, or a fraction, which a scan may make one
/// nanosecond less.
bool FractionsAgree(std::string_view a, std::string_view b) {
  constexpr std::size_t kMostDigits = 9;
  a.remove_prefix(1);
  b.remove_prefix(1);
  if (a.size() > kMostDigits || b.size() > kMostDigits) return a == b;
  if (std::stoi(std::string(a)) == std::stoi(std::string(b))) return true;
  int const less = Billionths(std::string(a)) - Billionths(std::string(b));
  return less >= -1 && less <= 1;
}

/// Whether a piece of a text is what a scan takes it for: the same, or a name that is cut to, or
/// longer than, the one that prints; names count by three letters.
bool Agrees(std::string const& a, std::string const& b) {
  if (a == b) return true;
  if (a[0] == '.' && b[0] == '.') return FractionsAgree(a, b);
  // A point may stand where another sign prints.
  if (a[0] == '.' && IsDigit(b[0])) return NumberPiece(a, 1, a.size()) == b;
  constexpr std::size_t kNameSize = 3;
  std::size_t const common = std::min(a.size(), b.size());
  bool const areNames = common >= kNameSize && IsLetter(a[0]) && IsLetter(b[0]);
  return areNames && a.compare(0, common, b, 0, common) == 0;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// The whole of `text` as a floating-point number, as near as one gets.
template <class Real>
std::optional<Real> AsReal(std::string_view text) {
  Real number{};
  bool const isNegative = text.starts_with('-');
  std::string_view const magnitude = text.substr(isNegative ? 1 : 0);
  if (magnitude.starts_with("0x") || magnitude.starts_with("0X")) {
    std::string_view const digits = magnitude.substr(2);
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                              std::chars_format::hex);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return isNegative ? -number : number;
  }
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The whole of `text`, which has no sign, in `base`, as the 64 bits that it takes.
std::optional<std::uint64_t> AsWhole(std::string_view text, int base) {
  std::uint64_t number = 0;
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsFloating(char type) {
  char const plain = PlainTypeOf(type);
  return plain == XoDOUBLE_T || plain == XoFLOAT_T;
}

bool IsNumeric(char type) {
  char const plain = PlainTypeOf(type);
  return plain <= XoU1B_T || plain == XoBLOCKID_T || plain == XoINT64_T || plain == XoSEAL_T ||
         plain == Xo8B_T || plain == XoU8B_T;
}

/// Integers whose row has a language of formats of its own.
bool IsLarge(char type) {
  char const plain = PlainTypeOf(type);
  return plain == XoINT64_T || plain == XoSEAL_T;
}

/// Whether all of `text` is the number, of which one that is none has any sign.
template <class Real>
bool IsReal(std::string_view text, Real value) {
  if (text.starts_with('+')) text.remove_prefix(1);
  auto const wanted = AsReal<Real>(text);
  return wanted && (*wanted == value || (std::isnan(*wanted) && std::isnan(value)));
}

bool IsByte(char type) {
  char const plain = PlainTypeOf(type);
  return plain == Xo1B_T || plain == XoU1B_T;
}

/// The number in a text under a format, and the letter of the conversion that reads it.
struct NumberText {
  std::string_view number;
  char letter = 0;
};

/// Takes away what the format has around its number, all of which must be there.
std::optional<NumberText> NumberIn(std::string_view text, std::string_view format) {
  text = Trimmed(text);
  std::size_t const start = format.find('%');
  // A row without formats.
  if (start == std::string_view::npos) return NumberText{text};
  std::size_t const end = format.find_first_of("diouxXcSeEfFgGaA", start);
  if (end == std::string_view::npos) return std::nullopt;
  std::string_view const before = Trimmed(format.substr(0, start));
  std::string_view const behind = Trimmed(format.substr(end + 1));
  if (!text.starts_with(before)) return std::nullopt;
  text.remove_prefix(before.size());
  if (!text.ends_with(behind)) return std::nullopt;
  text.remove_suffix(behind.size());
  return NumberText{Trimmed(text), format[end]};
}

/// Whether whole numbers may begin with 0x: where the base is told by the text, and in formats of
/// that base.
bool TakesPrefix(char type, char letter) {
  return IsByte(type) || IsLarge(type) || letter == 'x' || letter == 'X' || letter == 'i';
}

/// The bases that a whole number without a prefix may be read in.
std::vector<int> BasesOf(char type, char letter) {
  if (IsLarge(type)) return {10, 8, 16};
  switch (letter) {
    case 'd':
    case 'u':
      return {10};
    case 'o':
      return {8};
    case 'x':
    case 'X':
      return {16};
    default:
      return {10, 8};
  }
}

/// A whole number, in any of the ways in which numbers are written, in decimal.
std::vector<std::string> Readings(char type, NumberText const& in) {
  std::string_view text = in.number;
  bool const isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  bool const hasPrefix = text.starts_with("0x") || text.starts_with("0X");
  bool const isUnsigned =
      !IsLarge(type) && std::string_view("ouxX").find(in.letter) != std::string_view::npos;
  if (hasPrefix && !TakesPrefix(type, in.letter)) return {};
  std::vector<std::string> readings;
  for (int const base : hasPrefix ? std::vector<int>{16} : BasesOf(type, in.letter)) {
    auto const number = AsWhole(text.substr(hasPrefix ? 2 : 0), base);
    if (!number) continue;
    bool const needsSign = isNegative && *number != 0;
    if (needsSign && isUnsigned) continue;
    readings.push_back(fmt::format("{}{}", needsSign ? "-" : "", *number));
  }
  return readings;
}

bool IsText(char type) {
  return type == XoSTRING_T || type == XoISTRING_T || type == XoCASEISTRING_T || type == XoBLOB_T;
}

/// Whether a value's text has characters of a code set in it.
bool HasCharacters(char type) { return IsText(type) || IsByte(type); }

/// The scan of a truth takes everything that it does not know for false.
bool IsTruth(std::string_view text) {
  constexpr std::string_view kKnown[] = {"T", "t", "1", "TRUE",  "true",
                                         "F", "f", "0", "FALSE", "false"};
  return std::find(std::begin(kKnown), std::end(kKnown), text) != std::end(kKnown);
}

/// How much the signs between numbers and words say.
enum class Signs {
  kAll,         ///< all of them: of numbers
  kNoBrackets,  ///< all but brackets: of identifiers
  kLast,        ///< those behind the last number or word, and how many there are: of all others
};

bool SignsAgree(Pieces const& read, Pieces const& there, Signs signs) {
  auto const withoutBrackets = [](std::string text) {
    std::erase_if(text, [](char each) { return each == '(' || each == ')'; });
    return text;
  };
  switch (signs) {
    case Signs::kAll:
      return read.signs == there.signs;
    case Signs::kNoBrackets:
      return withoutBrackets(read.signs) == withoutBrackets(there.signs) &&
             there.lastSigns.starts_with(read.lastSigns);
    default:
      return read.signs.size() <= there.signs.size() && there.lastSigns.starts_with(read.lastSigns);
  }
}

/// Whether all of `text` is what prints as `printed`.
bool SaysTheSame(std::string_view text, std::string_view printed, Signs signs) {
  Pieces const read = PiecesOf(text);
  Pieces const there = PiecesOf(printed);
  if (!SignsAgree(read, there, signs)) return false;
  auto begin = there.parts.begin();
  // A weekday follows from the date.
  bool const hasMore = there.parts.size() > read.parts.size() && !read.parts.empty();
  if (hasMore && IsLetter((*begin)[0]) && !IsLetter(read.parts[0][0])) ++begin;
  return std::equal(read.parts.begin(), read.parts.end(), begin, there.parts.end(), Agrees);
}

Signs SignsOf(char type) {
  if (IsNumeric(type)) return Signs::kAll;
  return type == XoOBJID_T || type == XoCLID_T || type == XoREF_T ? Signs::kNoBrackets
                                                                  : Signs::kLast;
}

}  // namespace

XoCodeSet const& UsualCodeSet() { return CodeSetNamed("windows-1252"); }

RowValue::RowValue(char valueType, XoCodeSet const& codeSet)
    : type(valueType), value(XoTypeMgr{}.Create(valueType, 1)), set(codeSet) {
  if (value == nullptr) throw Trouble(fmt::format("type {} has no values", TypeName(type)));
}

RowValue::~RowValue() { XoTypeMgr{}.Delete(type, value, 1); }

std::optional<std::string> RowValue::OwnFormat(char const* format) const {
  if (format == nullptr) return std::nullopt;
  if (!HasCharacters(type)) return format;
  XoString const own = DecodeArgument(format, set, 0);
  char const* const bytes = own.StrGet();
  return bytes != nullptr ? bytes : "";
}

void RowValue::Scan(std::string_view text, char const* format) {
  std::string const bytes(text);
  XoString string = HasCharacters(type) ? DecodeArgument(bytes, set, 0) : XoString(bytes.c_str());
  auto const own = OwnFormat(format);
  XoTypeMgr{}.ScanFromXoString(type, value, string, own ? own->c_str() : nullptr, 1);
}

void RowValue::Fill(int byte) {
  XoTypeMgr const manager;
  // Objects that own something take care of themselves.
  if (manager.IsFixed(type) != 0) std::memset(value, byte, manager.MemLenGet(type, 1));
}

bool RowValue::IsNumber(std::string_view text, std::string_view format) const {
  if (!IsNumeric(type) || IsNull()) return false;
  auto const in = NumberIn(text, format);
  if (!in) return false;
  if (IsFloating(type)) {
    return PlainTypeOf(type) == XoFLOAT_T ? IsReal(in->number, As<float>())
                                          : IsReal(in->number, As<double>());
  }
  XoTypeMgr manager;
  std::unique_ptr<XoTypeConvertData> const carrier(manager.ConvertTo(type, value, 1));
  auto const readings = Readings(type, *in);
  return std::find(readings.begin(), readings.end(), Encoded(*carrier->GetString(0))) !=
         readings.end();
}

bool RowValue::ScanPlain(std::string_view text, char const* format) {
  Fill(0);
  Scan(text, format);
  return IsFloating(type) ? IsNumber(text, format) : Print(format) == text;
}

bool RowValue::ScanWhole(std::string_view text, char const* format) {
  if (IsText(type)) {
    Scan(text, format);
    return true;
  }
  // No scan would see what is behind a zero.
  if (text.find('\0') != std::string_view::npos) return false;
  if (format == nullptr) format = XoTypeMgr{}.ExchangeFormat(type, nullptr);
  if (IsNumeric(type) && ScanPlain(text, format)) return true;
  // What stays as it was when it is not read shows by what it was.
  Fill(1);
  Scan(text, format);
  std::string const once = Print(format);
  Fill(0);
  Scan(text, format);
  std::string const again = Print(format);
  if (once != again) return false;
  if (again == text) return true;
  if (type == XoBOOLEAN_T) return IsTruth(text);
  Signs const signs = SignsOf(type);
  if (IsNumber(text, format) || SaysTheSame(text, again, signs)) return true;
  return type == XoOBJID_T && SaysTheSame(fmt::format("0-{}", text), again, signs);
}

std::string RowValue::Print(char const* format) const {
  XoString out;
  auto const own = OwnFormat(format);
  XoTypeMgr{}.PrintToXoString(type, out, value, own ? own->c_str() : nullptr, 1);
  if (!HasCharacters(type)) {
    char const* const bytes = out.StrGet();
    return bytes != nullptr ? bytes : "";
  }
  constexpr unsigned char kFirstWideSet = 225;
  // Rows print bytes as they are.
  if (out.codeSet < kFirstWideSet) out.codeSet = set.number;
  return Encoded(out);
}

bool RowValue::IsNull() const { return XoTypeMgr{}.IsNullValue(type, value) != 0; }

std::vector<unsigned char> RowValue::Stored(unsigned char format) const {
  XoTypeMgr const manager;
  std::vector<unsigned char> bytes(manager.DiskLenGet(type, value, format, 1, FormMemory));
  manager.Store(type, bytes.data(), value, format, 1);
  return bytes;
}

void RowValue::Load(std::span<unsigned char const> stored, unsigned char format) {
  XoTypeMgr const manager;
  std::vector<unsigned char> whole(stored.begin(), stored.end());
  whole.resize(manager.DiskLenGet(type, value, format, 1, FormMemory));
  manager.Load(type, value, whole.data(), format, 1);
}

void ScanValue(RowValue& value, std::string_view text, char const* format,
               std::string const& place) {
  if (value.ScanWhole(text, format)) return;
  if (format == nullptr) format = XoTypeMgr{}.ExchangeFormat(value.Type(), nullptr);
  throw Trouble(fmt::format("{}{} is no {} under {}: what is read of it prints as {}", place,
                            QuotedText(text), TypeName(value.Type()), QuotedText(format),
                            QuotedText(value.Print(format))));
}

}  // namespace xo::tool
