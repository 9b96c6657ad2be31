#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "src/xoistring/weights.hpp"
#include "src/xotypes/inline_string.hpp"
#include "src/xotypes/stored_text.hpp"
#include "xostrcmp.hpp"
#include "xotypcmp.hpp"

using namespace xo;

namespace {

/// Cut texts of this many bytes and more get no answer.
constexpr std::size_t kTooLongBytes = 254;

/// A text ready to be compared.
struct InlineText {
  char const* bytes;  ///< ended by a zero
  unsigned char tag;
  std::size_t payload;  ///< bytes that the record says are there, from here on
  std::size_t there;    ///< bytes that are, zero included
  bool isOpen;          ///< it goes on behind what is there
  bool IsKey() const { return (tag & kInlineKey) != 0; }
};

/// Walks the texts of an operand.
template <class Text>
class InlineReader {
 public:
  InlineReader(void const* data, unsigned length, unsigned char format)
      : at(static_cast<char const*>(data)), isMemory(format == FormMemory) {
    if (isMemory) return;
    std::size_t const limit = LimitOf(length);
    InlineHeader const header = ReadInlineHeader(data, limit, FormNibble(format));
    tag = header.tag;
    // A record that ends inside its header goes on, however far.
    payload =
        limit < kInlineHeaderBytes ? std::max<std::size_t>(header.payload, 1) : header.payload;
    there = TextsThere(header, limit);
    at += std::min<std::size_t>(limit, kInlineHeaderBytes);
  }

  bool IsCut() const { return there < payload; }

  /// The present text. Of one that is cut, as a whole text: `endsEarly` makes its last byte the
  /// terminator, otherwise one is put behind it. Null bytes: memory has run out.
  InlineText Read(bool endsEarly) {
    if (isMemory) {
      auto const& text = *static_cast<Text const*>(static_cast<void const*>(at));
      std::size_t const size = text.Len() + std::size_t{1};
      return {text.StrGet(), text.weighted, size, size, false};
    }
    void const* const end = there != 0 ? std::memchr(at, 0, there) : nullptr;
    if (end != nullptr) return {at, tag, payload, there, false};
    std::size_t const size = endsEarly && IsCut() && there != 0 ? there - 1 : there;
    return {copy.Make(at, size), tag, payload, there, IsCut()};
  }

  /// Goes on to the next text. False: there is none.
  bool Advance() {
    if (isMemory) {
      at += sizeof(Text);
      return true;
    }
    void const* const end = there != 0 ? std::memchr(at, 0, there) : nullptr;
    std::size_t const step =
        end != nullptr ? static_cast<std::size_t>(static_cast<char const*>(end) - at) + 1 : there;
    at += step;
    payload -= step;
    there -= step;
    return there != 0;
  }

  bool IsTooLong() const { return IsCut() && there >= kTooLongBytes; }

 private:
  char const* at;
  bool isMemory;
  unsigned char tag = 0;
  std::size_t payload = 0;
  std::size_t there = 0;
  TerminatedCopy copy;
};

/// A place in a pattern.
struct PatternItem {
  enum Kind { kEnd, kStar, kQuestion, kLiteral } kind;
  char literal;
};

PatternItem ReadPattern(char const*& at) {
  switch (*at) {
    case 0:
      return {PatternItem::kEnd, 0};
    case '*':
      while (*at == '*') ++at;
      return {PatternItem::kStar, 0};
    case '?':
      ++at;
      return {PatternItem::kQuestion, 0};
    case '\\': {
      // A last one stands for itself, as does every character behind one but for three letters.
      if (at[1] == 0) return {PatternItem::kLiteral, *at++};
      char const escaped = at[1];
      at += 2;
      if (escaped == 'n') return {PatternItem::kLiteral, '\n'};
      if (escaped == 'r') return {PatternItem::kLiteral, '\r'};
      return {PatternItem::kLiteral, escaped == 't' ? '\t' : escaped};
    }
    default:
      return {PatternItem::kLiteral, *at++};
  }
}

/// Whether a text matches a pattern, by weights. A star stands for any run of weights, a question
/// mark for what is left of a character.
template <class Text>
bool Matches(char const* text, unsigned char textFlag, char const* pattern,
             unsigned char patternFlag) {
  WeightReader<Text> reader(text, textFlag);
  // Where the last star was, and the place in the text from which it has been tried.
  char const* behindStar = nullptr;
  WeightReader<Text> retry = reader;
  auto const goBack = [&] {
    if (behindStar == nullptr) return false;
    if (retry.Next() == 0) return false;
    reader = retry;
    pattern = behindStar;
    return true;
  };
  for (;;) {
    char const* next = pattern;
    PatternItem const item = ReadPattern(next);
    bool fits = true;
    switch (item.kind) {
      case PatternItem::kEnd:
        if (WeightReader<Text>(reader).Next() == 0) return true;
        fits = false;
        break;
      case PatternItem::kStar:
        if (*next == 0) return true;
        behindStar = next;
        retry = reader;
        break;
      case PatternItem::kQuestion:
        fits = reader.SkipCharacter();
        break;
      case PatternItem::kLiteral: {
        char const one[2] = {item.literal, 0};
        WeightReader<Text> wanted(one, patternFlag);
        for (unsigned char weight = wanted.Next(); weight != 0 && fits; weight = wanted.Next()) {
          fits = reader.Next() == weight;
        }
        break;
      }
    }
    if (fits) {
      pattern = next;
    } else if (!goBack()) {
      return false;
    }
  }
}

/// The comparison of one pair of texts, as the steps that it is.
template <class Text>
class InlineComparison {
 public:
  InlineComparison(InlineText const& first_, InlineText const& second_, int& status_)
      : first(first_),
        second(second_),
        limit(first_.there),
        isCut(first_.there < first_.payload && first_.there < second_.payload),
        status(status_) {}

  int Compare(unsigned short cmpOp) {
    if ((cmpOp & kNoPattern) != 0) {
      return first.IsKey() ? Limited(&InlineComparison::Raw) : Limited(&InlineComparison::Weighted);
    }
    char const* const wildcard = second.IsKey() ? nullptr : std::strpbrk(second.bytes, "*?\\");
    if (wildcard == nullptr) return CompareWithoutWildcard();
    std::size_t const place = static_cast<std::size_t>(wildcard - second.bytes);
    return first.IsKey() ? MatchKey(place) : MatchText(place);
  }

 private:
  using Method = int (InlineComparison::*)(std::size_t count);

  int Raw(std::size_t count) { return BinaryCompare(first.bytes, second.bytes, AsCount(count)); }
  int Weighted(std::size_t count) {
    return Text::WeightCompare(first.bytes, second.bytes, AsCount(count), first.tag, second.tag);
  }

  /// A comparison as far as the first text is sure to go: a cut one has no end to compare with.
  int Limited(Method compare) {
    if (isCut) {
      status = ERR_TM_LENGTH_EXCEEDED;
      return UpTo(compare, Sure());
    }
    // A second text of few bytes but more weights may need what is missing of the first.
    if (first.isOpen && UpTo(compare, UnitsThere(compare)) == 0) {
      status = ERR_TM_LENGTH_EXCEEDED;
      return 0;
    }
    return (this->*compare)(0);
  }

  /// What is there of the first text, as `compare` counts it: in bytes or in weights.
  std::size_t UnitsThere(Method compare) const {
    if (compare == &InlineComparison::Raw) return first.there;
    std::size_t count = 0;
    for (WeightReader<Text> reader(first.bytes, first.tag); reader.Next() != 0;) ++count;
    return count;
  }

  /// A comparison of at most `count`; of none where that is 0.
  int UpTo(Method compare, std::size_t count) { return count != 0 ? (this->*compare)(count) : 0; }

  std::size_t Sure() const { return limit != 0 ? limit - 1 : 0; }

  int CompareWithoutWildcard() {
    if (first.IsKey() && second.IsKey()) {
      if (first.there <= second.payload) status = ERR_TM_LENGTH_EXCEEDED;
      return isCut ? UpTo(&InlineComparison::Raw, Sure()) : Raw(0);
    }
    if (first.IsKey()) {
      status = ERR_TM_LENGTH_EXCEEDED;
      return UpTo(&InlineComparison::Weighted, Sure());
    }
    if constexpr (WeightRules<Text>::kFoldsCase) first.tag |= kFirstWeightsOnly;
    int result = Limited(&InlineComparison::Weighted);
    // Equal weights leave the bytes to decide, where case counts.
    if (!WeightRules<Text>::kFoldsCase && result == 0 && status != ERR_TM_LENGTH_EXCEEDED) {
      result = Limited(&InlineComparison::Raw);
    }
    return result;
  }

  int MatchText(std::size_t place) {
    if constexpr (WeightRules<Text>::kFoldsCase) first.tag |= kFirstWeightsOnly;
    if (first.there < first.payload) status = ERR_TM_LENGTH_EXCEEDED;
    return MatchResult(place);
  }

  int MatchResult(std::size_t place) {
    if (Matches<Text>(first.bytes, first.tag, second.bytes, second.tag)) return 0;
    if (place == 0) return 1;
    int const result = Weighted(place);
    return result != 0 ? result : 1;
  }

  int MatchKey(std::size_t place) {
    if (std::strcmp(second.bytes, "*") == 0) return 0;
    status = ERR_TM_LENGTH_EXCEEDED;
    // The weights of a key that tells case cannot be matched with.
    if constexpr (!WeightRules<Text>::kFoldsCase) return 0;
    if (place > first.payload) return UpTo(&InlineComparison::Weighted, Sure());
    bool const matches = Matches<Text>(first.bytes, first.tag, second.bytes, second.tag);
    bool const failsBehindCut = !matches && isCut && place > Sure();
    bool const goesOn = second.bytes[place + 1] != 0;
    if (failsBehindCut || goesOn) {
      return UpTo(&InlineComparison::Weighted, std::min(Sure(), place));
    }
    return MatchResult(place);
  }

  InlineText first;
  InlineText second;
  std::size_t limit;
  bool isCut;
  int& status;
};

/// A word of bytes of each of two keys, the first byte lowest.
class KeyWords {
 public:
  KeyWords(void const* keyA, void const* keyB, std::size_t place)
      : a(LoadBytes<std::uint64_t>(Advance(keyA, place))),
        b(LoadBytes<std::uint64_t>(Advance(keyB, place))) {}

  // Of words that begin the records.
  bool AreOfKeys() const { return (a & b & kInlineKey) != 0; }
  unsigned SizeA(unsigned char nibble) const { return Size(a, nibble); }
  unsigned SizeB(unsigned char nibble) const { return Size(b, nibble); }

  /// Whether a comparison ends here that the first `passed` bytes do not count for: at the first
  /// different byte or zero.
  bool Decide(std::size_t passed) {
    std::uint64_t const alike = (std::uint64_t{1} << 8 * passed) - 1;
    a |= alike;
    b |= alike;
    ends = DifferencesAndEnds(a, b);
    return ends != 0;
  }

  /// The order that has been decided.
  int Order() const {
    unsigned const bit = static_cast<unsigned>(std::countr_zero(ends)) & ~7u;
    return static_cast<int>(a >> bit & 0xFF) - static_cast<int>(b >> bit & 0xFF);
  }

 private:
  static unsigned Size(std::uint64_t header, unsigned char nibble) {
    return InByteOrder(static_cast<unsigned short>(header >> 8), nibble) + kInlineHeaderBytes;
  }

  std::uint64_t a;
  std::uint64_t b;
  std::uint64_t ends = 0;
};
constexpr std::size_t kWord = sizeof(std::uint64_t);

/// `BinaryCompare` of two keys of at least a word that are all there, of which the first words do
/// not differ nor end. One without a terminator ends with its record.
[[gnu::noinline]] int OrderBehindFirstWord(void const* a, unsigned sizeA, void const* b,
                                           unsigned sizeB) {
  std::size_t const size = std::min(sizeA, sizeB);
  std::size_t place = 0;
  for (;;) {
    // The last word ends with the shorter key.
    std::size_t const next = std::min(place + kWord, size - kWord);
    if (next == place) return ByteAt(a, size, sizeA) - ByteAt(b, size, sizeB);
    KeyWords words(a, b, next);
    if (words.Decide(place + kWord - next)) return words.Order();
    place = next;
  }
}

/// The bytes of a stored text, its header with them, if it is a key that is all there; 0 if not.
unsigned WholeKeySize(void const* record, unsigned length, unsigned char nibble) {
  InlineHeader const header = ReadInlineHeader(record, LimitOf(length), nibble);
  unsigned const size = kInlineHeaderBytes + header.payload;
  return header.IsKey() && size <= LimitOf(length) ? size : 0;
}

/// `BinaryCompare` of two keys that are all there.
int WholeKeyOrder(void const* a, unsigned sizeA, void const* b, unsigned sizeB) {
  std::size_t const size = std::min(sizeA, sizeB);
  if (size >= kWord) {
    KeyWords words(a, b, 0);
    return words.Decide(kInlineHeaderBytes) ? words.Order()
                                            : OrderBehindFirstWord(a, sizeA, b, sizeB);
  }
  for (std::size_t place = kInlineHeaderBytes; place < size; ++place) {
    int const byteA = ByteAt(a, place, size);
    int const byteB = ByteAt(b, place, size);
    if (byteA != byteB || byteA == 0) return byteA - byteB;
  }
  return ByteAt(a, size, sizeA) - ByteAt(b, size, sizeB);
}

// Apart from what most comparisons need, which would otherwise make room for this at every call.
template <class Text>
[[gnu::noinline]] int CompareTexts(unsigned char format, unsigned len1, void const* buf1,
                                   unsigned len2, void const* buf2, unsigned short cmpOp,
                                   unsigned count, int& status) {
  status = 0;
  if (count == 0) return 0;
  if (count == 1 && format != FormMemory && (cmpOp & kNoPattern) != 0) {
    unsigned const size1 = WholeKeySize(buf1, len1, FormNibble(format));
    unsigned const size2 = WholeKeySize(buf2, len2, FormNibble(format));
    if (size1 != 0 && size2 != 0) return WholeKeyOrder(buf1, size1, buf2, size2);
  }
  InlineReader<Text> first(buf1, len1, format);
  InlineReader<Text> second(buf2, len2, format);
  if (second.IsTooLong()) {
    status = ERR_TM_NOT_SUPPORTED;
    return -1;
  }
  for (;;) {
    InlineText const text1 = first.Read(false);
    InlineText const text2 = second.Read(true);
    if (text1.bytes == nullptr || text2.bytes == nullptr) {
      status = ERR_TM_NOT_SUPPORTED;
      return -1;
    }
    int const result = InlineComparison<Text>(text1, text2, status).Compare(cmpOp);
    if (result != 0 || --count == 0) return result;
    bool const goesOn1 = first.Advance();
    bool const goesOn2 = second.Advance();
    if (!goesOn1 || !goesOn2) {
      status = ERR_TM_LENGTH_EXCEEDED;
      return 0;
    }
  }
}

template <class Text>
int CompareInline(unsigned char format, unsigned len1, void const* buf1, unsigned len2,
                  void const* buf2, unsigned short cmpOp, unsigned count, int& status) {
  if (count != 1 || format == FormMemory || (cmpOp & kNoPattern) == 0) [[unlikely]] {
    return CompareTexts<Text>(format, len1, buf1, len2, buf2, cmpOp, count, status);
  }
  if (std::min(len1, len2) >= kWord) [[likely]] {
    KeyWords words(buf1, buf2, 0);
    unsigned const size1 = words.SizeA(FormNibble(format));
    unsigned const size2 = words.SizeB(FormNibble(format));
    if (words.AreOfKeys() && size1 <= len1 && size2 <= len2 && std::min(size1, size2) >= kWord)
        [[likely]] {
      status = 0;
      // Most keys differ in their first word.
      if (words.Decide(kInlineHeaderBytes)) return words.Order();
      return OrderBehindFirstWord(buf1, size1, buf2, size2);
    }
  }
  // Constants, as they are the same here, so that the way to this point need not keep them.
  return CompareTexts<Text>(format, len1, buf1, len2, buf2, CmpOpNoWildcards, 1, status);
}

}  // namespace

int XoIStringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                     void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  return CompareInline<XoIString>(format, len1, buf1, len2, buf2, cmpOp, count, status);
}

int XoCaseIStringCompare(unsigned char format, unsigned int len1, void* buf1, unsigned int len2,
                         void* buf2, unsigned short cmpOp, unsigned int count, int& status) {
  return CompareInline<XoCaseIString>(format, len1, buf1, len2, buf2, cmpOp, count, status);
}
