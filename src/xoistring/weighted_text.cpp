#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

#include "base/allocation.hpp"
#include "base/bytes.hpp"
#include "base/number_text.hpp"
#include "src/xoistring/weights.hpp"

namespace xo {

namespace {

constexpr unsigned kToTheEnd = 65535;

/// Room for every number with six decimals.
constexpr std::size_t kFixedTextSize = 328;

unsigned LengthOf(char const* text) {
  return text != nullptr ? static_cast<unsigned>(std::strlen(text)) : 0;
}

using Word = std::uint64_t;

/// No block, as in an object that was cleared to zeros as well.
constexpr unsigned kNoBlock = 0;

/// The complement of an address, as far as it fits.
unsigned Complement(char const* address) {
  return ~static_cast<unsigned>(std::bit_cast<std::uintptr_t>(address));
}

/// What marks a block of words: the complement of its address, or nothing where null would have the
/// same.
unsigned MarkOf(char const* block) {
  unsigned const complement = Complement(block);
  return complement != Complement(nullptr) ? complement : kNoBlock;
}

/// A block for a text of `size` bytes, of whole words, so that comparisons may read it by words. In
/// the last one, what is behind the text is zero.
char* NewBlock(std::size_t size) {
  std::size_t const last = size / sizeof(Word) * sizeof(Word);
  char* const block = static_cast<char*>(AllocateArray(last + sizeof(Word)));
  StoreBytes(block + last, Word{0});
  return block;
}

/// A block with the bytes given and a terminator; null for none.
char* NewText(char const* bytes, unsigned size) {
  if (size == 0) return nullptr;
  char* const text = NewBlock(size);
  std::memcpy(text, bytes, size);
  return text;
}

template <class Integer>
char* IntegerText(Integer number) {
  char digits[kIntegerTextSize];
  PrintInteger(digits, number);
  return NewText(digits, LengthOf(digits));
}

char* FixedText(double number) {
  if (std::isnan(number)) {
    char const* const name = std::signbit(number) ? "-nan" : "nan";
    return NewText(name, LengthOf(name));
  }
  char digits[kFixedTextSize];
  auto const end =
      std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, 6).ptr;
  return NewText(digits, static_cast<unsigned>(end - digits));
}

/// A change of case: bytes from `first` to `last`, but for one, move by `shift`.
struct CaseRange {
  unsigned char first;
  unsigned char last;
  unsigned char exception;
};

unsigned char Shifted(unsigned char byte, CaseRange const (&ranges)[2], int shift) {
  for (CaseRange const& range : ranges) {
    if (byte >= range.first && byte <= range.last && byte != range.exception) {
      return static_cast<unsigned char>(byte + shift);
    }
  }
  return byte;
}

unsigned char LowerCase(unsigned char byte) {
  if (byte == kUpperLigature) return kLowerLigature;
  // The reverse of what it should be, and to stay: stored texts were folded so.
  if (byte == 255) return kUpperWithDiaeresis;
  return Shifted(byte, {{65, 90, 0}, {192, 222, 215}}, 32);
}

unsigned char UpperCase(unsigned char byte) {
  if (byte == kLowerLigature) return kUpperLigature;
  if (byte == kUpperWithDiaeresis) return 255;
  return Shifted(byte, {{97, 122, 0}, {224, 254, 247}}, -32);
}

template <class Change>
void ChangeBytes(char* text, Change change) {
  for (; text != nullptr && *text != 0; ++text) {
    *text = static_cast<char>(change(static_cast<unsigned char>(*text)));
  }
}

}  // namespace

// Everything is defined here: an inline member of an instance is not offered by a DLL.

template <class Text>
WeightedText<Text>::WeightedText() noexcept : text(nullptr), weighted(0), blockOfWords(kNoBlock) {}

template <class Text>
WeightedText<Text>::WeightedText(WeightedText const& source)
    : text(NewText(source.text, LengthOf(source.text))), weighted(0), blockOfWords(MarkOf(text)) {}

template <class Text>
WeightedText<Text>::WeightedText(char character)
    : text(NewText(&character, character != 0 ? 1 : 0)), weighted(0), blockOfWords(MarkOf(text)) {}

template <class Text>
WeightedText<Text>::WeightedText(short number) : WeightedText(static_cast<long long>(number)) {}
template <class Text>
WeightedText<Text>::WeightedText(int number) : WeightedText(static_cast<long long>(number)) {}
template <class Text>
WeightedText<Text>::WeightedText(unsigned number) : WeightedText(static_cast<long long>(number)) {}
template <class Text>
WeightedText<Text>::WeightedText(long number) : WeightedText(static_cast<long long>(number)) {}
template <class Text>
WeightedText<Text>::WeightedText(unsigned long number)
    : WeightedText(static_cast<unsigned long long>(number)) {}
template <class Text>
WeightedText<Text>::WeightedText(long long number)
    : text(IntegerText(std::int64_t{number})), weighted(0), blockOfWords(MarkOf(text)) {}
template <class Text>
WeightedText<Text>::WeightedText(unsigned long long number)
    : text(IntegerText(std::uint64_t{number})), weighted(0), blockOfWords(MarkOf(text)) {}
template <class Text>
WeightedText<Text>::WeightedText(double number)
    : text(FixedText(number)), weighted(0), blockOfWords(MarkOf(text)) {}

template <class Text>
WeightedText<Text>::WeightedText(char const* characters)
    : text(NewText(characters, LengthOf(characters))), weighted(0), blockOfWords(MarkOf(text)) {}

template <class Text>
WeightedText<Text>::WeightedText(char const* characters, unsigned short length) : WeightedText() {
  if (characters == nullptr) return;
  void const* const end = std::memchr(characters, 0, length);
  Take(characters,
       end != nullptr ? static_cast<unsigned>(static_cast<char const*>(end) - characters) : length);
}

template <class Text>
WeightedText<Text>::~WeightedText() {
  ReleaseArray(text);
}

template <class Text>
WeightedText<Text>& WeightedText<Text>::operator=(WeightedText const& source) {
  if (this != &source) {
    Take(source.text, LengthOf(source.text));
    weighted = source.weighted;
  }
  return *this;
}

template <class Text>
Text& WeightedText<Text>::Self() {
  return static_cast<Text&>(*this);
}

/// Holds a block of words, or null, in place of the present one.
template <class Text>
void WeightedText<Text>::Hold(char* block) {
  ReleaseArray(std::exchange(text, block));
  blockOfWords = MarkOf(block);
}

/// Makes `size` bytes, which may be the own ones, the text.
template <class Text>
void WeightedText<Text>::Take(char const* bytes, unsigned size) {
  Hold(NewText(bytes, size));
}

template <class Text>
char& WeightedText<Text>::operator[](int index) {
  static thread_local char nobodys;
  if (text == nullptr) return nobodys = 0;
  return text[index];
}

template <class Text>
char WeightedText<Text>::operator[](int index) const {
  return text != nullptr ? text[index] : '\0';
}

template <class Text>
bool WeightedText<Text>::operator!() const {
  return text == nullptr || *text == 0;
}

template <class Text>
char const* WeightedText<Text>::StrGet() const {
  return text != nullptr ? text : "";
}

namespace {

/// What no difference of weights is.
constexpr int kUndecided = 256;

/// The order of two texts of characters, where it shows before the first pair of different
/// characters of one first weight that has a second one; without readers, as most texts need none.
/// Equal characters have equal weights, in sides that count the same. A text that goes on for as
/// many characters as might be too many weights is left undecided as well.
template <class Text>
int CharacterOrder(char const* a, char const* b) {
  constexpr unsigned kMost = kToTheEnd / 2;
  WeightTable const& weights = WeightRules<Text>::kWeights;
  for (unsigned place = 0; place < kMost; ++place) {
    auto const byteA = static_cast<unsigned char>(a[place]);
    auto const byteB = static_cast<unsigned char>(b[place]);
    if (byteA == byteB) {
      if (byteA == 0) return 0;
      continue;
    }
    ByteWeights const& ofA = weights[byteA];
    ByteWeights const& ofB = weights[byteB];
    if (ofA.first != ofB.first) return ofA.first - ofB.first;
    if (std::max(ofA.second, ofB.second) >= kLeastSecondWeight) return kUndecided;
  }
  return kUndecided;
}

/// `WeightCompare`, apart from what mostly does without, which would make room for it at every
/// call.
template <class Text>
[[gnu::noinline]] int CompareWeights(char const* a, char const* b, unsigned short count,
                                     unsigned char flagA, unsigned char flagB) {
  if (a == nullptr) return b != nullptr ? -1 : 0;
  if (b == nullptr) return 1;
  if (*a == 0 || *b == 0) {
    return static_cast<unsigned char>(*a) - static_cast<unsigned char>(*b);
  }
  if (count == 0 && ((flagA | flagB) & kIsWeighted) == 0 &&
      ((flagA ^ flagB) & kFirstWeightsOnly) == 0) {
    int const order = CharacterOrder<Text>(a, b);
    if (order != kUndecided) return order;
  }
  WeightReader<Text> readerA(a, flagA);
  WeightReader<Text> readerB(b, flagB);
  for (unsigned left = count == 0 ? kToTheEnd : count; left != 0; --left) {
    int const difference = readerA.Next() - readerB.Next();
    if (difference != 0) return difference;
    if (readerA.HasEnded() || readerB.HasEnded()) break;
  }
  return 0;
}

/// A word of bytes of each of two texts, the first byte lowest.
struct TextWords {
  Word a;
  Word b;
  /// A bit of each byte that differs from its fellow, or ends its text, up to the first end.
  Word stops;

  TextWords(char const* textA, char const* textB)
      : a(LoadBytes<Word>(textA)), b(LoadBytes<Word>(textB)), stops(DifferencesAndEnds(a, b)) {}

  /// Where the first stop is, the weights there.
  unsigned Bit() const { return static_cast<unsigned>(std::countr_zero(stops)) & ~7u; }
  template <class Text>
  ByteWeights const& OfA() const {
    return WeightRules<Text>::kWeights[a >> Bit() & 0xFF];
  }
  template <class Text>
  ByteWeights const& OfB() const {
    return WeightRules<Text>::kWeights[b >> Bit() & 0xFF];
  }
};

/// `CharacterOrder` of texts in blocks of words.
template <class Text>
int OrderByWords(char const* a, char const* b) {
  constexpr std::size_t kMost = kToTheEnd / 2 - sizeof(Word);
  for (std::size_t place = 0; place < kMost; place += sizeof(Word)) {
    for (TextWords words(a + place, b + place); words.stops != 0;) {
      ByteWeights const& ofA = words.OfA<Text>();
      ByteWeights const& ofB = words.OfB<Text>();
      if (ofA.first != ofB.first) return ofA.first - ofB.first;
      // Nothing but the zero has no weight.
      if (ofA.first == 0) return 0;
      if (std::max(ofA.second, ofB.second) >= kLeastSecondWeight) return kUndecided;
      words.stops &= ~(Word{0xFF} << words.Bit());
    }
  }
  return kUndecided;
}

/// What the first words do not decide, of texts in blocks of words and of plain text.
template <class Text>
[[gnu::noinline]] int OrderFurther(char const* a, char const* b) {
  int const order = OrderByWords<Text>(a, b);
  return order != kUndecided ? order : CompareWeights<Text>(a, b, 0, 0, 0);
}

}  // namespace

/// Whether `text` is the block of words that was made for it.
template <class Text>
bool WeightedText<Text>::IsOfWords() const {
  return Complement(text) == blockOfWords;
}

template <class Text>
int WeightedText<Text>::Order(Text const& other) const {
  constexpr unsigned char kReadDifferently = kIsWeighted | kFirstWeightsOnly;
  if (IsOfWords() && other.IsOfWords() && ((weighted | other.weighted) & kReadDifferently) == 0)
      [[likely]] {
    // Most texts differ in their first word.
    if (TextWords const words(text, other.text); words.stops != 0) {
      int const difference = words.OfA<Text>().first - words.OfB<Text>().first;
      if (difference != 0) [[likely]]
        return difference;
    }
    return OrderFurther<Text>(text, other.text);
  }
  return CompareWeights<Text>(text, other.text, 0, weighted, other.weighted);
}

template <class Text>
bool WeightedText<Text>::operator==(Text const& other) const {
  return Order(other) == 0;
}
template <class Text>
bool WeightedText<Text>::operator!=(Text const& other) const {
  return Order(other) != 0;
}
template <class Text>
bool WeightedText<Text>::operator<(Text const& other) const {
  return Order(other) < 0;
}
template <class Text>
bool WeightedText<Text>::operator<=(Text const& other) const {
  return Order(other) <= 0;
}
template <class Text>
bool WeightedText<Text>::operator>(Text const& other) const {
  return Order(other) > 0;
}
template <class Text>
bool WeightedText<Text>::operator>=(Text const& other) const {
  return Order(other) >= 0;
}

template <class Text>
unsigned WeightedText<Text>::Len() const {
  return LengthOf(text);
}

template <class Text>
WeightedText<Text>::operator short() const {
  return static_cast<short>(static_cast<int>(*this));
}
template <class Text>
WeightedText<Text>::operator int() const {
  return ReadInt32(StrGet(), IntegerBase::kDecimal);
}
template <class Text>
WeightedText<Text>::operator long() const {
  if constexpr (sizeof(long) == sizeof(int)) return static_cast<int>(*this);
  return static_cast<long>(static_cast<long long>(*this));
}
template <class Text>
WeightedText<Text>::operator long long() const {
  return ReadInt64(StrGet(), IntegerBase::kDecimal);
}
template <class Text>
WeightedText<Text>::operator double() const {
  return ReadDouble(StrGet());
}

/// Gives the text its first `head` bytes, `middle`, which may be a part of it, and what stands from
/// `tail` on.
template <class Text>
Text& WeightedText<Text>::Splice(unsigned head, char const* middle, unsigned middleSize,
                                 unsigned tail) {
  unsigned const length = Len();
  unsigned const rest = tail < length ? length - tail : 0;
  std::size_t const size = std::size_t{head} + middleSize + rest;
  char* fresh = nullptr;
  if (size != 0) {
    fresh = NewBlock(size);
    if (head != 0) std::memcpy(fresh, text, head);
    if (middleSize != 0) std::memcpy(fresh + head, middle, middleSize);
    if (rest != 0) std::memcpy(fresh + head + middleSize, text + tail, rest);
  }
  Hold(fresh);
  return Self();
}

template <class Text>
Text WeightedText<Text>::operator+(Text const& other) const {
  Text sum(StrGet());
  sum += other;
  return sum;
}

template <class Text>
Text WeightedText<Text>::operator+(char const* characters) const {
  return *this + Text(characters);
}

template <class Text>
Text WeightedText<Text>::operator+(char character) const {
  return *this + Text(character);
}

template <class Text>
Text& WeightedText<Text>::operator+=(Text const& other) {
  if (other.text == nullptr) return Self();
  return Splice(Len(), other.text, other.Len(), Len());
}

template <class Text>
Text WeightedText<Text>::Copy(unsigned short start, unsigned short count) const {
  unsigned const length = Len();
  Text part;
  if (start >= length) return part;
  unsigned const rest = length - start;
  part.Take(text + start, count == kToTheEnd ? rest : std::min<unsigned>(count, rest));
  return part;
}

template <class Text>
Text& WeightedText<Text>::Cut(unsigned short start, unsigned short count) {
  unsigned const length = Len();
  if (start >= length || count == 0) return Self();
  unsigned const rest = length - start;
  unsigned const cut = count == kToTheEnd ? rest : std::min<unsigned>(count, rest);
  return Splice(start, nullptr, 0, start + cut);
}

template <class Text>
Text& WeightedText<Text>::Expand(unsigned short length, char fill) {
  unsigned const present = Len();
  if (present >= length) return Self();
  Text filling;
  filling.Fill(static_cast<unsigned short>(length - present), fill);
  return Splice(present, filling.StrGet(), filling.Len(), present);
}

template <class Text>
Text& WeightedText<Text>::Fill(unsigned short length, char fill) {
  char* fresh = nullptr;
  if (length != 0 && fill != 0) {
    fresh = NewBlock(length);
    std::memset(fresh, fill, length);
  }
  Hold(fresh);
  return Self();
}

template <class Text>
Text& WeightedText<Text>::Insert(Text const& other, unsigned short position) {
  if (position > Len() || other.text == nullptr) return Self();
  return Splice(position, other.text, other.Len(), position);
}

template <class Text>
Text& WeightedText<Text>::Replace(Text const& other, unsigned short position) {
  unsigned const length = Len();
  if (position >= length || other.text == nullptr) return Self();
  unsigned const count = std::min(other.Len(), length - position);
  return Splice(position, other.text, count, position + count);
}

template <class Text>
Text& WeightedText<Text>::SpaceToZero() {
  ChangeBytes(text, [](unsigned char byte) { return byte == ' ' ? '0' : byte; });
  return Self();
}

template <class Text>
Text& WeightedText<Text>::ZeroToSpace() {
  ChangeBytes(text, [](unsigned char byte) { return byte == '0' ? ' ' : byte; });
  return Self();
}

template <class Text>
Text& WeightedText<Text>::ToLower() {
  Take(text, Len());
  ChangeBytes(text, LowerCase);
  return Self();
}

template <class Text>
Text& WeightedText<Text>::ToUpper() {
  Take(text, Len());
  ChangeBytes(text, UpperCase);
  return Self();
}

template <class Text>
int WeightedText<Text>::SubStringPos(Text const& other) const {
  if (!*this || !other) return -1;
  char const* const found = std::strstr(text, other.text);
  return found != nullptr ? static_cast<int>(found - text) : -1;
}

template <class Text>
int WeightedText<Text>::WeightCompare(char const* a, char const* b, unsigned short count,
                                      unsigned char flagA, unsigned char flagB) {
  return CompareWeights<Text>(a, b, count, flagA, flagB);
}

template class WeightedText<XoIString>;
template class WeightedText<XoCaseIString>;

// The block of words is where there was no field.
static_assert(sizeof(XoIString) == 2 * sizeof(void*));

}  // namespace xo
