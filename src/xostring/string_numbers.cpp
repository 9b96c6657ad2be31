#include "base/number_text.hpp"
#include "base/option_word.hpp"
#include "src/xostring/text_units.hpp"
#include "xochar.hpp"
#include "xostring.hpp"

using namespace xo;

namespace {

constexpr bool IsWideSpace(unsigned short character) {
  return (character >= 9 && character <= 13) || character == 0x20 || character == 0x85 ||
         character == 0xA0 || character == 0x1680 || (character >= 0x2000 && character <= 0x200A) ||
         character == 0x2028 || character == 0x2029 || character == 0x202F || character == 0x205F ||
         character == 0x3000;
}

constexpr bool IsHexMark(unsigned short character) { return character == 'x' || character == 'X'; }

/// The start of a wide text as narrow text: as much as a number takes.
struct NarrowedText {
  static constexpr unsigned kMost = 30;
  char characters[32];

  explicit NarrowedText(char const* text) {
    auto const unit = [&text](std::size_t place) { return LoadWide(text + 2 * place); };
    while (IsWideSpace(unit(0))) text += 2;
    unsigned length = 0;
    bool inPrefix = true;
    for (std::size_t place = 0; length < kMost; ++place) {
      unsigned short const character = unit(place);
      if (character == 0 || character > 255) break;
      if (inPrefix && character == '0') {
        // Of zeros that pad a hexadecimal mark, the last one alone makes its prefix.
        std::size_t behind = place;
        while (unit(behind) == '0') ++behind;
        if (IsHexMark(unit(behind))) place = behind - 1;
      }
      inPrefix = inPrefix &&
                 (character == '0' || IsHexMark(character) || character == '+' || character == '-');
      characters[length++] = static_cast<char>(character);
    }
    characters[length] = 0;
  }
};

IntegerBase NarrowBase() {
  return (XoTypeMgrOptions & 1) != 0 ? IntegerBase::kDecimal : IntegerBase::kByPrefix;
}

/// What `Read` makes of the text, with the base given for narrow text.
template <class Integer>
Integer ReadText(XoString const& string, Integer (*read)(char const*, IntegerBase),
                 IntegerBase narrowBase) {
  if (string.text == nullptr) return 0;
  if (!IsWide(string.codeSet)) return read(string.text, narrowBase);
  return read(NarrowedText(string.text).characters, IntegerBase::kByPrefix);
}

/// The same for a text that must begin like a number.
template <class Integer>
int ReadNumber(XoString const& string, Integer (*read)(char const*, IntegerBase),
               IntegerBase narrowBase, Integer& value) {
  value = 0;
  if (string.IsEmpty() != 0) return -1;
  XoChar const first(string, 0);
  if (first.IsDigit() == 0 && first.Code() != '-') return -1;
  value = ReadText(string, read, narrowBase);
  return 0;
}

int ReadWideNumber(XoString const& string, IntegerBase narrowBase, long long& value) {
  std::int64_t number = 0;
  int const result = ReadNumber(string, ReadInt64, narrowBase, number);
  value = number;
  return result;
}

}  // namespace

XoString::operator short() const { return static_cast<short>(static_cast<int>(*this)); }

XoString::operator int() const { return ReadText(*this, ReadInt32, NarrowBase()); }

XoString::operator long() const {
  if constexpr (sizeof(long) == sizeof(int)) return static_cast<int>(*this);
  return static_cast<long>(static_cast<long long>(*this));
}

XoString::operator long long() const { return ReadText(*this, ReadInt64, NarrowBase()); }

XoString::operator double() const {
  if (text == nullptr) return 0;
  if (!IsWide(codeSet)) return ReadDouble(text);
  XoString narrow(GetDefault8CodeSet(), language);
  narrow += *this;
  return ReadDouble(narrow.StrGet());
}

int XoString::Atol(int& value) const {
  return ReadNumber(*this, ReadInt32, IntegerBase::kDecimal, value);
}

int XoString::Atoll(long long& value) const {
  return ReadWideNumber(*this, IntegerBase::kDecimal, value);
}

int XoString::Strtol(int& value) const {
  return ReadNumber(*this, ReadInt32, IntegerBase::kByPrefix, value);
}

int XoString::Strtoll(long long& value) const {
  return ReadWideNumber(*this, IntegerBase::kByPrefix, value);
}
