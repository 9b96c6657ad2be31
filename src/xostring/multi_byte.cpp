#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "base/allocation.hpp"
#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "xomultibyte.hpp"
#include "xostring.hpp"

using namespace xo;

namespace {

/// How sequences of one length look, and the codes that they are for.
struct SequenceRow {
  unsigned char leadMask;
  unsigned char leadValue;
  unsigned char shift;
  std::uint32_t largest;
  std::uint32_t smallest;
};

/// Row n - 1 is for sequences of n bytes. The first definition of UTF-8, RFC 2279.
constexpr std::array<SequenceRow, 6> kSequences{{
    {0x80, 0x00, 0, 0x7F, 0},
    {0xE0, 0xC0, 6, 0x7FF, 0x80},
    {0xF0, 0xE0, 12, 0xFFFF, 0x800},
    {0xF8, 0xF0, 18, 0x1FFFFF, 0x10000},
    {0xFC, 0xF8, 24, 0x3FFFFFF, 0x200000},
    {0xFE, 0xFC, 30, 0x7FFFFFFF, 0x4000000},
}};
constexpr unsigned kLongestSequence = kSequences.size();

constexpr int kRejected = -1;
constexpr int kTooLong = -2;
/// Where the decoding of a string stops: a limit on the bytes read.
constexpr int kMostConsumed = 32768;
/// Code sets below these are taken as ASCII as long as their bytes are. The two limits differ.
constexpr unsigned char kFirstMeasuredByUnicode = 6;
constexpr unsigned char kFirstEncodedByUnicode = 27;

constexpr bool IsAscii(char byte) { return (byte & 0x80) == 0; }

/// Bytes that a code takes, or 0 where the table has no row for it.
constexpr int SequenceLength(std::uint32_t code) {
  for (unsigned row = 0; row < kLongestSequence; ++row) {
    if (code <= kSequences[row].largest) return static_cast<int>(row) + 1;
  }
  return 0;
}

int Decode(unsigned short& code, char const* bytes, std::size_t limit) {
  unsigned char const lead = LoadNarrow(bytes);
  std::uint64_t collected = lead;
  for (unsigned row = 0;; ++row) {
    SequenceRow const& form = kSequences[row];
    if ((lead & form.leadMask) == form.leadValue) {
      std::uint64_t const whole = collected & form.largest;
      if (whole < form.smallest) return kRejected;
      code = static_cast<unsigned short>(whole);
      return static_cast<int>(row) + 1;
    }
    if (row + 1 >= limit || row + 1 == kLongestSequence) return kRejected;
    unsigned char const next = LoadNarrow(bytes + row + 1);
    if ((next & 0xC0) != 0x80) return kRejected;
    collected = collected << 6 | (next ^ 0x80u);
  }
}

/// Writes the `length` bytes of a code.
void Encode(char* bytes, std::uint32_t code, int length) {
  SequenceRow const& form = kSequences[static_cast<unsigned>(length) - 1];
  bytes[0] = static_cast<char>(form.leadValue | code >> form.shift);
  for (int place = 1; place < length; ++place) {
    bytes[place] = static_cast<char>(0x80 | (code >> (6 * (length - 1 - place)) & 0x3F));
  }
}

/// The text in Unicode: itself where it is that already.
class InUnicode {
 public:
  explicit InUnicode(XoString const& text) : converted(kUnicodeSet, 0), used(&text) {
    if (text.codeSet == kUnicodeSet) return;
    converted += text;
    used = &converted;
  }
  char const* Units() const { return used->StrGet(); }

 private:
  XoString converted;
  XoString const* used;
};

/// Encodes units up to the terminator. Returns the bytes written, or, when the next sequence does
/// not fit into `size`, the negative of that less 1.
int EncodeUnits(char const* units, char* bytes, int size) {
  int written = 0;
  for (unsigned short unit = LoadWide(units); unit != 0; unit = LoadWide(units += 2)) {
    int const length = unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
    if (length > size - written) return -written - 1;
    if (length == 1) {
      bytes[written] = static_cast<char>(unit);
    } else {
      Encode(bytes + written, unit, length);
    }
    written += length;
  }
  if (written < size) bytes[written] = 0;
  return written;
}

/// Widens the bytes of ASCII, without zeros, that `limit` bytes begin with; returns their number
/// and adds it to `count`.
int WidenAscii(char const* bytes, int limit, unsigned short* units, int& count) {
  int place = 0;
  using Word = std::uint64_t;
  constexpr int kWord = sizeof(Word);
  constexpr Word kOnes = 0x0101010101010101;
  constexpr Word kTops = 0x8080808080808080;
  // A byte that is zero, or not ASCII, leaves a top bit.
  while (limit - place >= kWord) {
    Word const word = LoadBytes<Word>(bytes + place);
    if (((word | (word - kOnes)) & kTops) != 0) break;
    for (int each = 0; each < kWord; ++each) units[place + each] = LoadNarrow(bytes + place + each);
    place += kWord;
  }
  while (place < limit && bytes[place] != 0 && IsAscii(bytes[place])) {
    units[place] = LoadNarrow(bytes + place);
    ++place;
  }
  count += place;
  return place;
}

/// How many bytes of a narrow text are ASCII before the terminator, when all are; otherwise -1.
int AsciiLength(XoString const& text) {
  char const* const bytes = text.StrGet();
  int length = 0;
  for (; bytes[length] != 0; ++length) {
    if (!IsAscii(bytes[length])) return -1;
  }
  return length;
}

/// What `EncodeUnits` gives for a text of any code set.
int EncodeText(XoString const& text, char* bytes, int size) {
  return EncodeUnits(InUnicode(text).Units(), bytes, size);
}

/// Whether the text fitted, given what `XoString2XoMBS` returned for it. Nothing written is the
/// whole of an empty text only.
bool Fitted(XoString const& text, int result) { return result > 0 || text.IsEmpty() != 0; }

}  // namespace

int XoMultiByte2WChar(unsigned short* wide, char const* bytes, unsigned long long limit) {
  if (bytes == nullptr) return 0;
  if (limit == 0) return kRejected;
  unsigned short code = 0;
  int const length = Decode(code, bytes, limit);
  if (length > 0 && wide != nullptr) *wide = code;
  return length;
}

int XoWChar2MultiByte(char* bytes, wchar_t code) {
  if (bytes == nullptr) return 0;
  std::uint32_t const whole = static_cast<std::uint32_t>(code);
  int const length = SequenceLength(whole);
  if (length == 0) return kRejected;
  Encode(bytes, whole, length);
  return length;
}

int XoMultiByteStr2WCharStr(unsigned short* wide, int capacity, char const* bytes, int length) {
  if (bytes == nullptr) return 0;
  int characters = 0;
  for (int place = 0; place < length; ++characters) {
    unsigned short code = 0;
    int const taken = Decode(code, bytes + place, static_cast<std::size_t>(length - place));
    if (taken < 0) return kRejected;
    if (wide != nullptr && characters < capacity) wide[characters] = code;
    place += taken;
  }
  return characters;
}

int XoMBS2XoString(char const* bytes, XoString& text, int length) {
  // The bytes may be those of the text, which therefore lasts until they are decoded.
  XoString const before(std::move(text));
  text.Destroy();
  text.language = before.language;
  text.SetCodeSet(kUnicodeSet);
  if (bytes == nullptr || length <= 0) return 0;

  // The text is collected whole and assigned at once. There are no more characters than bytes.
  int const most = std::min(length, kMostConsumed);
  auto const units = std::make_unique_for_overwrite<unsigned short[]>(static_cast<unsigned>(most));
  int count = 0;
  int consumed = 0;
  int taken = 1;
  while (consumed < most && taken > 0) {
    consumed += WidenAscii(bytes + consumed, most - consumed, units.get() + count, count);
    if (consumed >= most) break;
    unsigned short code = 0;
    taken = Decode(code, bytes + consumed, static_cast<std::size_t>(length - consumed));
    if (code == 0 || taken < 0) break;
    units[static_cast<unsigned>(count++)] = code;
    consumed += taken;
  }
  if (count != 0) {
    AssignText(text, static_cast<char const*>(static_cast<void const*>(units.get())), kUnicodeSet,
               static_cast<unsigned short>(count));
  }
  if (taken < 0) return kRejected;
  return consumed >= kMostConsumed ? kTooLong : consumed;
}

int XoMultiByteString2XoString(char const* bytes, XoString& text, int length) {
  return XoMBS2XoString(bytes, text, length);
}

int XoMultiByteString2XoString(XoString const& bytes, XoString& text) {
  return XoMBS2XoString(bytes.StrGet(), text, bytes.Len());
}

int XoMBSLength(XoString const& text, unsigned short maxChars) {
  if (maxChars == 0) return 0;
  if (text.codeSet < kFirstMeasuredByUnicode) {
    int const length = AsciiLength(text);
    if (length >= 0) return length;
  }
  InUnicode const unicode(text);
  char const* const units = unicode.Units();
  int bytes = 0;
  for (unsigned place = 0; place < maxChars && LoadWide(units + 2 * place) != 0; ++place) {
    bytes += SequenceLength(LoadWide(units + 2 * place));
  }
  return bytes;
}

int XoString2XoMBS(XoString const& text, char* bytes, int size) {
  if (bytes == nullptr || size < 0) size = 0;
  if (text.codeSet < kFirstEncodedByUnicode) {
    int const length = AsciiLength(text);
    if (length > size) {
      if (size != 0) std::memcpy(bytes, text.StrGet(), static_cast<std::size_t>(size));
      return -length;
    }
    if (length >= 0) {
      if (size == 0) return 0;
      std::memcpy(bytes, text.StrGet(), static_cast<std::size_t>(length));
      std::memset(bytes + length, 0, static_cast<std::size_t>(size - length));
      return length;
    }
  }
  int const written = EncodeText(text, bytes, size);
  return written >= 0 ? written : written + 1;
}

int XoString2MultiByteString(XoString const& text, char*& bytes, int& size) {
  constexpr int kStackSize = 2048;
  char stack[kStackSize] = {};
  bool const isGiven = bytes != nullptr && size > 0;
  if (!isGiven) {
    bytes = nullptr;
    size = 0;
  }
  int const tried =
      isGiven ? XoString2XoMBS(text, bytes, size) : XoString2XoMBS(text, stack, kStackSize);
  if (isGiven && Fitted(text, tried)) return tried;

  // Every character takes at most three bytes.
  std::string encoded;
  if (Fitted(text, tried)) {
    encoded.assign(stack, static_cast<std::size_t>(tried));
  } else {
    encoded.resize(3 * std::size_t{text.Len()} + 1);
    int const length = EncodeText(text, encoded.data(), static_cast<int>(encoded.size()));
    encoded.resize(static_cast<std::size_t>(length));
  }
  int const length = static_cast<int>(encoded.size());
  if (!isGiven) {
    size = length + 1;
    bytes = static_cast<char*>(AllocateArray(encoded.size() + 1));
  }
  if (size <= length) {
    size = length;
    return -1;
  }
  std::memcpy(bytes, encoded.c_str(), encoded.size() + 1);
  return length;
}
