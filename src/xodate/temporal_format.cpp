#include "src/xodate/temporal_format.hpp"

#include <cstring>
#include <utility>

#include "src/xostring/narrow_text.hpp"
#include "src/xostring/null_print_string.hpp"

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

  /// Steps over the ')' of an open group.
  bool TakeGroupEnd() {
    if (!isGroupOpen || *at != ')') return false;
    ++at;
    isGroupOpen = false;
    return true;
  }

  char Peek() const { return *at; }
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

/// Whether a format names AM or PM outside of expansions. Each '%' is taken together with the
/// character behind it, so that a conditional mark is not seen, which is to be so.
bool NamesHalfDay(char const* format) {
  for (; *format != 0; ++format) {
    if (*format != '%') continue;
    ++format;
    if (*format == 0) return false;
    if (*format == 'P' || *format == 'p') return true;
  }
  return false;
}

/// Prints the fields, which are not null, by a format.
void Format(TemporalOutput& out, PrintSource const& source, char const* format) {
  FormatWalker walker(format);
  bool hasPrinted = false;  // a field, with a text of its own
  bool isLastWildcard = false;
  unsigned groupStart = 0;
  while (walker.HasMore()) {
    if (walker.TakeGroupEnd()) {
      if (!hasPrinted) out.CutTo(groupStart);
      continue;
    }
    char const character = walker.Take();
    if (character != '%') {
      out.Put(character);
      continue;
    }
    auto const conversion = walker.TakeConversion();
    if (conversion.letter == 0) break;
    if (conversion.opensGroup) groupStart = out.Length();
    TemporalLetter const* const letter = FindTemporalLetter(conversion.letter);
    if (letter == nullptr) {
      // Stands for itself, and the field before it decides about a "*" behind it.
      out.Put(conversion.letter);
      if (isLastWildcard) out.Put('*');
    } else if (letter->expansion != nullptr) {
      walker.Enter(letter->expansion);
    } else {
      if (letter->isWildcard != nullptr) isLastWildcard = letter->isWildcard(source.fields);
      if (isLastWildcard) {
        out.Put('*');
      } else if (hasPrinted || !conversion.isConditional || !letter->isZero(source.fields)) {
        letter->print(out, source);
        hasPrinted = true;
      }
    }
  }
}

constexpr bool IsWhite(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Reads fields from a text by a format; false when the text ends before a conversion.
bool Scan(ScanTarget& target, char const* text, char const* format) {
  FormatWalker walker(format);
  bool hasLastTakenWildcard = false;
  for (;;) {
    // A "*" that the last field of an expansion took is there once more for what follows, which is
    // to be so.
    if (walker.IsAtExpansionEnd() && hasLastTakenWildcard) --text;
    if (!walker.HasMore()) return true;
    while (IsWhite(walker.Peek())) walker.Take();
    while (IsWhite(*text)) ++text;
    if (walker.Peek() == 0 || walker.TakeGroupEnd()) continue;
    char const character = walker.Take();
    if (character != '%') {
      // Any other separator will do, but a digit may be the next field's.
      if (*text != 0 && (!IsDigit(*text) || *text == character)) ++text;
      continue;
    }
    if (*text == 0) return false;
    char const name = walker.TakeConversion().letter;
    if (name == 0) continue;
    TemporalLetter const* const letter = FindTemporalLetter(name);
    if (letter != nullptr && letter->expansion != nullptr) {
      walker.Enter(letter->expansion);
      continue;
    }
    hasLastTakenWildcard = *text == '*' && letter != nullptr;
    if (letter == nullptr || hasLastTakenWildcard) {
      ++text;
      if (letter != nullptr && letter->setWildcard != nullptr) letter->setWildcard(target.fields);
    } else {
      letter->scan(text, target);
    }
  }
}

bool BeginsWithNull(char const* text) {
  NarrowText const null(NullPrintString());
  return std::strncmp(text, null.Get(), std::strlen(null.Get())) == 0;
}

}  // namespace

XoString& PrintTemporal(XoString& out, XoDateTimeN const& value, char const* format) {
  if (value.IsNullValue() != 0) return out = NullPrintString();
  TemporalOutput text;
  Format(text,
         {{value.year, value.month, value.day, value.hour, value.minute, value.second,
           value.nanoSeconds},
          NamesHalfDay(format)},
         format);
  return out = XoString(text.Terminated());
}

bool ScanTemporal(XoDateTimeN& value, XoString const& in, char const* format) {
  NarrowText const text(in);
  if (BeginsWithNull(text.Get())) {
    value.SetNullValue();
    return true;
  }
  ScanTarget target{};
  bool const isWhole = Scan(target, text.Get(), format);
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

}  // namespace xo
