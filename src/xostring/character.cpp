#include "src/xostring/order_keys.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"
#include "xostringiterator.hpp"

using namespace xo;

namespace {

/// Whether a place lies in what a string without text shows, which belongs to all of them.
bool IsEmptyText(char const* place) { return place == kEmptyText || place == kEmptyText + 1; }

constexpr bool IsBetween(unsigned short order, unsigned first, unsigned end) {
  return order >= first && order < end;
}

/// The character as a text by itself.
struct SingleCharacter {
  char units[4] = {};
  explicit SingleCharacter(XoChar const& character) {
    StoreUnit(units, character.codeSet, character.Code());
  }
};

constexpr unsigned short LowerAscii(unsigned short code) {
  return static_cast<unsigned short>(IsBetween(code, 'A', 'Z' + 1) ? code + ('a' - 'A') : code);
}
constexpr unsigned short UpperAscii(unsigned short code) {
  return static_cast<unsigned short>(IsBetween(code, 'a', 'z' + 1) ? code - ('a' - 'A') : code);
}

/// A character of Unicode as one of the code set and language of `like`.
XoChar FormOf(unsigned short unicode, XoChar const& like) {
  return XoChar(unicode, kUnicodeSet, like.language).MapTo(like.codeSet);
}

XoUnicodeProps const* CaseForms(XoChar const& character) {
  XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(character.codeSet);
  return set != nullptr ? set->GetUnicodeProps(character.Code(), character.language) : nullptr;
}

}  // namespace

XoChar::XoChar(XoString const& text, int offset)
    : binding(const_cast<char*>(text.StrGet()) + offset),
      value(0),
      codeSet(text.codeSet),
      language(text.language),
      byteOrder(FormLittle) {}

XoChar::XoChar(XoChar const& other)
    : binding(nullptr),
      value(other.Code()),
      codeSet(other.codeSet),
      language(LanguageOrDefault(other.language)),
      byteOrder(FormLittle) {}

XoChar::XoChar(char character, unsigned char codeSet_, unsigned char language_)
    : binding(nullptr),
      value(static_cast<unsigned char>(character)),
      codeSet(CodeSetOr8(codeSet_)),
      language(LanguageOrDefault(language_)),
      byteOrder(FormLittle) {}

XoChar::XoChar(unsigned short character, unsigned char codeSet_, unsigned char language_)
    : binding(nullptr),
      value(character),
      codeSet(CodeSetOr16(codeSet_)),
      language(LanguageOrDefault(language_)),
      byteOrder(FormLittle) {
  if (!IsWide(codeSet)) value &= 0xFF;
}

XoChar::XoChar(char const* place, unsigned char codeSet_, unsigned char language_,
               unsigned char byteOrder_)
    : binding(const_cast<char*>(place)),
      value(0),
      codeSet(CodeSetOr8(codeSet_)),
      language(LanguageOrDefault(language_)),
      byteOrder(OrderOrDefault(byteOrder_)) {}

unsigned short XoChar::Code() const {
  if (binding != nullptr) return LoadUnit(binding, codeSet, byteOrder);
  return IsWide(codeSet) ? InByteOrder(value, byteOrder)
                         : static_cast<unsigned short>(value & 0xFF);
}

void XoChar::Write(unsigned short code) {
  // What a string without text shows belongs to all of them.
  if (!IsEmptyText(binding)) StoreUnit(binding, codeSet, code, byteOrder);
}

XoChar& XoChar::operator=(XoChar const& other) {
  if (binding != nullptr) {
    Write(other.MapTo(codeSet).Code());
  } else if (this != &other) {
    value = InByteOrder(other.Code(), IsWide(other.codeSet) ? other.byteOrder : FormLittle);
    codeSet = other.codeSet;
    language = other.language;
    byteOrder = other.byteOrder;
  }
  return *this;
}

XoChar& XoChar::operator=(char character) {
  if (binding == nullptr) {
    value = static_cast<unsigned char>(character);
  } else if (!IsEmptyText(binding)) {
    *binding = character;
  }
  return *this;
}

XoChar& XoChar::operator=(unsigned short character) {
  if (binding != nullptr) {
    Write(character);
  } else {
    value = IsWide(codeSet) ? InByteOrder(character, byteOrder)
                            : static_cast<unsigned short>(character & 0xFF);
  }
  return *this;
}

// Comparison.

int XoChar::Compare(XoChar const& other, unsigned short cmpOp) const {
  unsigned short const op = OperatorOrDefault(cmpOp);
  return XoStrCmp(codeSet, language, SingleCharacter(*this).units, other.codeSet, other.language,
                  SingleCharacter(other).units, op, 1);
}

bool XoChar::operator==(XoChar const& other) const { return Compare(other) == 0; }
bool XoChar::operator!=(XoChar const& other) const { return Compare(other) != 0; }
bool XoChar::operator<(XoChar const& other) const { return Compare(other) < 0; }
bool XoChar::operator<=(XoChar const& other) const { return Compare(other) <= 0; }
bool XoChar::operator>(XoChar const& other) const { return Compare(other) > 0; }
bool XoChar::operator>=(XoChar const& other) const { return Compare(other) >= 0; }
bool XoChar::operator==(char other) const { return *this == XoChar(other); }
bool XoChar::operator!=(char other) const { return *this != XoChar(other); }
bool XoChar::operator<(char other) const { return *this < XoChar(other); }
bool XoChar::operator<=(char other) const { return *this <= XoChar(other); }
bool XoChar::operator>(char other) const { return *this > XoChar(other); }
bool XoChar::operator>=(char other) const { return *this >= XoChar(other); }
bool XoChar::operator==(unsigned short other) const { return *this == XoChar(other); }
bool XoChar::operator!=(unsigned short other) const { return *this != XoChar(other); }
bool XoChar::operator<(unsigned short other) const { return *this < XoChar(other); }
bool XoChar::operator<=(unsigned short other) const { return *this <= XoChar(other); }
bool XoChar::operator>(unsigned short other) const { return *this > XoChar(other); }
bool XoChar::operator>=(unsigned short other) const { return *this >= XoChar(other); }

// Classes.

unsigned short XoChar::CharOrder() const {
  XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(CodeSetOrNative(codeSet));
  if (set == nullptr || set->orderTable == nullptr) return MapTo(kUnicodeSet).CharOrder();
  unsigned short const code = Code();
  CharOrderEntry const* const entry = set->orderTable->GetEntry(code);
  return entry != nullptr ? entry->order : code;
}

int XoChar::IsSpace() const { return IsBetween(CharOrder(), 0, kFirstSymbolOrder); }
int XoChar::IsSymbol() const {
  return IsBetween(CharOrder(), kFirstSymbolOrder, kFirstSignificantOrder);
}
int XoChar::IsDigit() const {
  return IsBetween(CharOrder(), kFirstSignificantOrder, kFirstLetterOrder);
}
int XoChar::IsAlpha() const { return IsBetween(CharOrder(), kFirstLetterOrder, kFirstHanOrder); }
int XoChar::IsHan() const { return CharOrder() >= kFirstHanOrder; }

// Conversion.

XoChar XoChar::MapTo(unsigned char set) const {
  if (set == kNoCodeSet || set == codeSet) return XoChar(*this);
  unsigned char const wanted = CodeSetOr16(set);
  return XoChar(MapCode(Code(), codeSet, wanted), wanted, language);
}

XoChar XoChar::ToLower(XoStringIterator*) const {
  if (codeSet == kNoCodeSet) return XoChar(LowerAscii(Code()), codeSet, language);
  XoUnicodeProps const* const forms = CaseForms(*this);
  if (forms == nullptr || forms->lowerCase == 0) return XoChar(*this);
  return FormOf(forms->lowerCase, *this);
}

XoChar XoChar::ToUpper(XoStringIterator* iterator) const {
  if (codeSet == kNoCodeSet) return XoChar(UpperAscii(Code()), codeSet, language);
  XoUnicodeProps const* const forms = CaseForms(*this);
  if (forms == nullptr || forms->upperCase == 0) return XoChar(*this);
  XoWCharList const& more = forms->upperExpansion;
  if (iterator != nullptr && more.count != 0) iterator->SetOverflow(&more, kByDefault);
  return FormOf(forms->upperCase, *this);
}

// Character operations.

XoChar XoCharOperation::Transform(XoChar const& character, XoStringIterator&) {
  return XoChar(character);
}

XoChar XoCharToUpper::Transform(XoChar const& character, XoStringIterator& iterator) {
  return character.ToUpper(&iterator);
}

XoChar XoCharToLower::Transform(XoChar const& character, XoStringIterator& iterator) {
  return character.ToLower(&iterator);
}
