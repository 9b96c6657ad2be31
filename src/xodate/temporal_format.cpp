#include "src/xodate/temporal_format.hpp"

#include <utility>

#include "src/xodate/temporal_letters.hpp"
#include "src/xostring/narrow_assign.hpp"
#include "src/xostring/narrow_text.hpp"
#include "src/xotypes/print_limit.hpp"
#include "xostring.hpp"

namespace xo {
namespace {

/// Walks a format: plain characters, conversions, groups, and expansions, which are one deep.
class FormatWalker {
 public:
  explicit FormatWalker(char const* format) : at(format) {}

  /// Whether something is left; at the end of an expansion, behind the letter that it stands for.
  bool HasMore() {
    if (*at == 0 && resume != nullptr) at = std::exchange(resume, nullptr);
    return *at != 0;
  }

  /// Whether an expansion has just come to its end.
  bool IsAtExpansionEnd() const { return *at == 0 && resume != nullptr; }

  /// Whether a ')' that was taken ends a group.
  bool CloseGroup() { return std::exchange(isGroupOpen, false); }

  char Peek() const { return *at; }

  /// The letter of the conversion here, where it is of one plain number and nothing stands between.
  TemporalLetter const* PeekNumber() const {
    if (*at != '%') return nullptr;
    TemporalLetter const* const letter = FindTemporalLetter(at[1]);
    return letter != nullptr && letter->digits != 0 ? letter : nullptr;
  }
  void TakeNumber() { at += 2; }

  char Take() { return *at++; }

  struct Conversion {
    char letter;         ///< 0 where the format ends before it
    bool isConditional;  ///< "?" stands before the letter
    bool opensGroup;     ///< "?(" does
  };

  /// The conversion behind a '%' that was taken.
  Conversion TakeConversion() {
    Conversion conversion{};
    if (*at == '?') {
      ++at;
      conversion.isConditional = true;
      if (*at == '(') {
        ++at;
        conversion.opensGroup = isGroupOpen = true;
      }
    }
    if (*at != 0) conversion.letter = *at++;
    return conversion;
  }

  /// Goes on in the text that stands for the letter just taken.
  void Enter(char const* expansion) {
    resume = at;
    at = expansion;
  }

 private:
  char const* at;
  char const* resume = nullptr;
  bool isGroupOpen = false;
};

/// Room for one field more, so that only the end of each step looks at the limit.
using PrintBuffer = char[kMostCharacters + kMostFieldText];

/// Prints the fields, which are not null, by a format, and returns the length of the text.
unsigned Format(PrintBuffer& text, PrintSource const& source) {
  FormatWalker walker(source.format);
  char* const end = text + kMostCharacters;
  char* at = text;
  char* groupStart = text;
  bool hasPrinted = false;  // a field, with a text of its own
  bool isLastWildcard = false;
  while (walker.HasMore()) {
    char const character = walker.Take();
    if (character == ')' && walker.CloseGroup()) {
      if (!hasPrinted) at = groupStart;
    } else if (character != '%') {
      *at++ = character;
    } else {
      auto const conversion = walker.TakeConversion();
      if (conversion.letter == 0) break;
      if (conversion.opensGroup) groupStart = at;
      TemporalLetter const* const letter = FindTemporalLetter(conversion.letter);
      if (letter == nullptr) {
        // Stands for itself, and the field before it decides about a "*" behind it.
        *at++ = conversion.letter;
        if (isLastWildcard) *at++ = '*';
      } else if (letter->expansion != nullptr) {
        walker.Enter(letter->expansion);
      } else {
        if (!letter->followsField) isLastWildcard = letter->IsWildcard(source.fields);
        if (isLastWildcard) {
          *at++ = '*';
        } else if (hasPrinted || !conversion.isConditional || !letter->IsZero(source.fields)) {
          at = letter->digits != 0 ? PutNumber(at, source.fields.*letter->field, letter->digits)
                                   : letter->print(at, source);
          hasPrinted = true;
        }
      }
    }
    if (at > end) at = end;
  }
  return static_cast<unsigned>(at - text);
}

/// White space as the C library has it, found out in one look at a character that is none.
constexpr bool IsWhite(char character) {
  return static_cast<unsigned char>(character) <= ' ' &&
         (character == ' ' || (character >= '\t' && character <= '\r'));
}

/// Reads fields from a text by a format; false when the text ends before a conversion.
bool Scan(ScanTarget& target, char const* text, char const* format) {
  FormatWalker walker(format);
  bool hasLastTakenWildcard = false;
  for (;;) {
    // What nearly every step is, on a shorter way than the general one below: digits for a number.
    if (IsDigit(*text)) {
      if (TemporalLetter const* const number = walker.PeekNumber()) {
        walker.TakeNumber();
        text = TakeDigits(text, 0, target.fields.*number->field);
        hasLastTakenWildcard = false;
        continue;
      }
    }
    if (walker.Peek() == 0) {
      // A "*" that the last field of an expansion took is there once more for what follows, which
      // is to be so.
      if (walker.IsAtExpansionEnd() && hasLastTakenWildcard) --text;
      if (!walker.HasMore()) return true;
    }
    char const character = walker.Take();
    if (IsWhite(character)) continue;
    while (IsWhite(*text)) ++text;
    if (character == ')' && walker.CloseGroup()) continue;
    if (character != '%') {
      // Any other separator will do, but a digit may be the next field's.
      if (*text != 0 && (!IsDigit(*text) || *text == character)) ++text;
      continue;
    }
    if (*text == 0) return false;
    char const name = walker.TakeConversion().letter;
    if (name == 0) continue;
    TemporalLetter const* const letter = FindTemporalLetter(name);
    if (letter == nullptr) {
      ++text;
      hasLastTakenWildcard = false;
    } else if (letter->expansion != nullptr) {
      walker.Enter(letter->expansion);
    } else if (*text == '*') {
      ++text;
      hasLastTakenWildcard = true;
      letter->SetWildcard(target.fields);
    } else {
      hasLastTakenWildcard = false;
      text = letter->digits != 0 ? TakeNumber(text, target.fields.*letter->field)
                                 : letter->scan(text, target);
    }
  }
}

bool BeginsWith(char const* text, char const* start) {
  for (; *start != 0; ++start, ++text) {
    if (*text != *start) return false;
  }
  return true;
}

bool BeginsWithNull(char const* text) {
  XoString const& null = NullPrintString;
  if (IsWide(null.codeSet)) return BeginsWith(text, NarrowText(null).Get());
  return BeginsWith(text, OrEmptyText(null.text));
}

bool ScanNarrow(XoDateTimeN& value, char const* text, char const* format) {
  if (BeginsWithNull(text)) {
    value.SetNullValue();
    return true;
  }
  ScanTarget target{};
  bool const isWhole = Scan(target, text, format);
  TemporalFields& fields = target.fields;
  if (target.isPm && fields.hour < 12) {
    fields.hour += 12;
  } else if (target.isAm && fields.hour == 12) {
    fields.hour = 0;
  }
  value = XoDateTimeN(XoDateTime(XoDate(fields.year, fields.month, fields.day),
                                 XoTime(fields.hour, fields.minute, fields.second)),
                      fields.nanoSeconds);
  return isWhole;
}

}  // namespace

XoString& PrintTemporal(XoString& out, XoDateTimeN const& value, char const* format) {
  PrintBuffer text;
  PrintSource const source{{value.year, value.month, value.day, value.hour, value.minute,
                            value.second, value.nanoSeconds},
                           format};
  unsigned const length = Format(text, source);
  AssignNarrow(out, text, length);
  return out;
}

bool ScanTemporal(XoDateTimeN& value, XoString const& in, char const* format) {
  if (IsWide(in.codeSet)) return ScanNarrow(value, NarrowText(in).Get(), format);
  return ScanNarrow(value, OrEmptyText(in.text), format);
}

}  // namespace xo
