#include <atomic>
#include <utility>

#include "base/allocation.hpp"
#include "base/number_text.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xostring.hpp"

using namespace xo;

namespace xo {

char const kEmptyText[2] = {0, 0};

}  // namespace xo

namespace {

/// What `XoString::EmptyString` shows, from load to unload.
XoString const emptyString;

char const* AsBytes(unsigned short const* characters) {
  return static_cast<char const*>(static_cast<void const*>(characters));
}

template <class Integer>
void AssignDecimal(XoString& target, Integer number) {
  char digits[kIntegerTextSize];
  PrintInteger(digits, number);
  AssignText(target, digits, target.codeSet);
}

/// Makes at most `length` characters of `source` (65535: all) the text of a new string; none for 0.
/// A source of no character gives a text of its terminator.
void AssignBounded(XoString& target, char const* source, unsigned short length) {
  if (length == 0) return;
  unsigned short const count =
      length == 65535 ? length : AsCount(TextLength(target.codeSet, source, length));
  AssignText(target, source, target.codeSet,
             count != 0 ? count : static_cast<unsigned short>(65535));
}

/// Makes `source` the text of `target`, which it may be a part of. When memory runs out nothing has
/// changed.
void ReplaceText(XoString& target, char const* source, unsigned char codeSet) {
  XoString fresh(kNoCodeSet, target.language);
  fresh.codeSet = codeSet;
  AssignText(fresh, source, codeSet);
  target.Destruct(fresh);
}

}  // namespace

// Construction.

XoString::XoString() : XoString(GetDefaultCodeSet(), GetDefaultLanguage()) {}

XoString::XoString(unsigned char codeSet_, unsigned char language_)
    : text(nullptr),
      size(0),
      codeSet(CodeSetOrDefault(codeSet_)),
      language(LanguageOrDefault(language_)) {}

XoString::XoString(XoString const& source) : XoString(source.codeSet, source.language) {
  codeSet = source.codeSet;
  language = source.language;
  AssignText(*this, source.text, source.codeSet);
}

XoString::XoString(XoString&& source) noexcept
    : text(std::exchange(source.text, nullptr)),
      size(std::exchange(source.size, static_cast<unsigned short>(0))),
      codeSet(source.codeSet),
      language(source.language) {}

XoString::XoString(char character) : XoString(GetDefault8CodeSet(), GetDefaultLanguage()) {
  if (character != 0) AssignText(*this, &character, codeSet, 1);
}

XoString::XoString(unsigned char character) : XoString(static_cast<char>(character)) {}

XoString::XoString(unsigned short character)
    : XoString(GetDefault16CodeSet(), GetDefaultLanguage()) {
  if (character != 0) AssignText(*this, AsBytes(&character), codeSet, 1);
}

XoString::XoString(short number) : XoString(int{number}) {}

XoString::XoString(int number) : XoString(static_cast<long long>(number)) {}

// Printed as `int` is: a value above 2147483647 reads as negative.
XoString::XoString(unsigned number) : XoString(static_cast<int>(number)) {}

XoString::XoString(long number) : XoString(static_cast<long long>(number)) {}

XoString::XoString(unsigned long number) : XoString(static_cast<unsigned long long>(number)) {}

XoString::XoString(long long number) : XoString(GetDefault8CodeSet(), GetDefaultLanguage()) {
  AssignDecimal(*this, std::int64_t{number});
}

XoString::XoString(unsigned long long number)
    : XoString(GetDefault8CodeSet(), GetDefaultLanguage()) {
  AssignDecimal(*this, std::uint64_t{number});
}

XoString::XoString(double number) : XoString(GetDefault8CodeSet(), GetDefaultLanguage()) {
  char digits[kDoubleTextSize];
  PrintDouble(digits, number);
  AssignText(*this, digits, codeSet);
}

XoString::XoString(char const* characters) : XoString(characters, 65535) {}

XoString::XoString(char const* characters, unsigned short length)
    : XoString(GetDefault8CodeSet(), GetDefaultLanguage()) {
  AssignBounded(*this, characters, length);
}

XoString::XoString(unsigned short const* characters) : XoString(characters, 65535) {}

XoString::XoString(unsigned short const* characters, unsigned short length)
    : XoString(GetDefault16CodeSet(), GetDefaultLanguage()) {
  AssignBounded(*this, AsBytes(characters), length);
}

XoString::~XoString() {
  Destroy();
  // A string destroyed in place shows that it is empty to whoever still looks at the memory, so the
  // compiler must not take the last writes for ones that nobody reads.
  std::atomic_signal_fence(std::memory_order_seq_cst);
}

// Assignment.

XoString& XoString::operator=(XoString const& source) {
  if (this != &source) {
    ReplaceText(*this, source.text, source.codeSet);
    language = source.language;
  }
  return *this;
}

XoString& XoString::operator=(XoString&& source) noexcept {
  Destruct(source);
  return *this;
}

XoString& XoString::operator=(char const* characters) {
  ReplaceText(*this, characters, GetDefault8CodeSet());
  language = GetDefaultLanguage();
  return *this;
}

XoString& XoString::operator=(unsigned short const* characters) {
  ReplaceText(*this, AsBytes(characters), GetDefault16CodeSet());
  language = GetDefaultLanguage();
  return *this;
}

// Lifecycle.

void XoString::Init() {
  text = nullptr;
  size = 0;
  codeSet = GetDefaultCodeSet();
  language = GetDefaultLanguage();
}

void XoString::Destroy() {
  ReleaseArray(std::exchange(text, nullptr));
  size = 0;
  codeSet = 0;
  language = 0;
}

void XoString::d_deactivate() { Destroy(); }

void XoString::Destruct(XoString& source) noexcept {
  if (this == &source) return;
  ReleaseArray(text);
  text = std::exchange(source.text, nullptr);
  codeSet = source.codeSet;
  language = source.language;
  size = std::exchange(source.size, static_cast<unsigned short>(0));
}

int XoString::SetNullValue() {
  ReleaseArray(std::exchange(text, nullptr));
  size = 0;
  codeSet = kNoCodeSet;
  language = kNullLanguage;
  return 0;
}

int XoString::IsNullValue() const { return IsNullText(codeSet, language); }

int XoString::IsEmpty() const { return IsTextEmpty(codeSet, text); }

int XoString::operator!() const { return IsEmpty(); }

unsigned short XoString::Len() const { return AsCount(TextLength(codeSet, text)); }

char const* XoString::StrGet() const { return OrEmptyText(text); }

XoChar XoString::operator[](int index) const {
  if (index < 0 || index > int{Len()}) {
    return XoChar(static_cast<unsigned short>(0), GetDefault16CodeSet(), GetDefaultLanguage());
  }
  return XoChar(*this, index * static_cast<int>(UnitSize(codeSet)));
}

XoString const& XoString::EmptyString() { return emptyString; }

// Appending.

XoString& XoString::operator+=(XoString const& other) {
  SpliceText(*this, other.text, other.codeSet, Len(), 0, other.Len(), 1, SpliceMode::kTruncate);
  return *this;
}

XoString XoString::operator+(XoString const& other) const {
  XoString sum;
  sum.codeSet = codeSet;
  sum.language = language;
  sum += *this;
  sum += other;
  return sum;
}

XoString operator+(XoString const& left, char const* right) {
  return left.operator+(XoString(right));
}
XoString operator+(XoString const& left, unsigned short const* right) {
  return left.operator+(XoString(right));
}
XoString operator+(XoString const& left, char right) { return left.operator+(XoString(right)); }
XoString operator+(char const* left, XoString const& right) {
  return XoString(left).operator+(right);
}

XoString& XoString::operator<<(XoString const& other) { return *this += other; }

XoString& XoString::operator<<(char character) {
  return character != 0 ? *this += XoString(character) : *this;
}

XoString& XoString::operator<<(unsigned short characterOrNumber) {
  if (!IsWide(codeSet)) return *this += XoString(int{characterOrNumber});
  return characterOrNumber != 0 ? *this += XoString(characterOrNumber) : *this;
}

XoString& XoString::operator<<(short number) { return *this += XoString(number); }
XoString& XoString::operator<<(int number) { return *this += XoString(number); }
XoString& XoString::operator<<(unsigned number) { return *this += XoString(number); }
XoString& XoString::operator<<(long number) { return *this += XoString(number); }
XoString& XoString::operator<<(unsigned long number) { return *this += XoString(number); }
XoString& XoString::operator<<(long long number) { return *this += XoString(number); }
XoString& XoString::operator<<(unsigned long long number) { return *this += XoString(number); }
XoString& XoString::operator<<(float number) { return *this += XoString(double{number}); }
XoString& XoString::operator<<(double number) { return *this += XoString(number); }
XoString& XoString::operator<<(char const* characters) { return *this += XoString(characters); }
XoString& XoString::operator<<(unsigned short const* characters) {
  return *this += XoString(characters);
}

// Code sets.

int XoString::MapToCodeSet(unsigned char set) {
  if (set == kNoCodeSet) return kBadArgument;
  unsigned char const wanted = CodeSetOrDefault(set);
  if (wanted != codeSet && text != nullptr) {
    char* mapped = nullptr;
    size = static_cast<unsigned short>(MapTextToNewBuffer(codeSet, wanted, text, mapped));
    ReleaseArray(std::exchange(text, mapped));
  }
  codeSet = wanted;
  return 0;
}

void XoString::SetCodeSet(unsigned char set) {
  unsigned char const wanted = CodeSetOrDefault(set);
  if (text != nullptr && UnitSize(wanted) != UnitSize(codeSet)) {
    MapToCodeSet(CodeSetOrNative(wanted));
  }
  codeSet = wanted;
}

int XoString::SetCodeSetCode(unsigned char set) {
  unsigned char const wanted = CodeSetOrDefault(set);
  if (UnitSize(wanted) != UnitSize(codeSet)) return kBadArgument;
  codeSet = wanted;
  return 0;
}

int XoString::CopyMapped(XoString const& source, unsigned char set, short length) {
  if (this == &source) return kBadArgument;
  unsigned char const wanted = CodeSetOrDefault(set);
  unsigned count = 0;
  if (source.text == nullptr) {
    ReleaseArray(std::exchange(text, nullptr));
    size = 0;
  } else {
    // Every negative length stands for the whole source.
    count = MapTextIntoBuffer(source.codeSet, wanted, source.text,
                              static_cast<unsigned short>(length < 0 ? -1 : length), text, size);
  }
  codeSet = wanted;
  language = source.language;
  return static_cast<int>(count);
}

// Defaults.

unsigned char XoString::GetDefaultCodeSet() { return XoLanguageContext::GetDefaultCodeSet(); }
unsigned char XoString::GetDefault8CodeSet() { return XoLanguageContext::GetDefault8CodeSet(); }
unsigned char XoString::GetDefault16CodeSet() { return XoLanguageContext::GetDefault16CodeSet(); }
unsigned char XoString::GetDefaultLanguage() { return XoLanguageContext::GetDefaultLanguage(); }
unsigned short XoString::GetDefaultCmpOp() { return XoLanguageContext::GetDefaultCmpOp(); }
void XoString::SetDefaultCodeSet(unsigned char codeSet) {
  XoLanguageContext::SetDefaultCodeSet(codeSet);
}
void XoString::SetDefaultLanguage(unsigned char language) {
  XoLanguageContext::SetDefaultLanguage(language);
}
void XoString::SetDefaultCmpOp(unsigned short cmpOp) { XoLanguageContext::SetDefaultCmpOp(cmpOp); }
