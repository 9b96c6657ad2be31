#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/platform.hpp"
#include "src/xostring/plain_lane.hpp"
#include "src/xotypes/stored_text.hpp"
#include "src/xotypes/string_rows.hpp"
#include "xochar.hpp"
#include "xostrcmp.hpp"
#include "xostringiterator.hpp"

namespace xo {

namespace {

// Building.

/// A target smaller than this keeps a key that does not fit as it is cut; in a larger one it is
/// closed, and reads as whole.
constexpr unsigned kLargeTarget = 257;
constexpr unsigned kOrderBytes = 2;
/// With less room no key is begun.
constexpr std::size_t kLeastRoom = 5;

/// A text that becomes a key.
struct KeySource {
  char const* text;
  unsigned char codeSet;
  unsigned char language;
  unsigned char byteOrder;
  bool isCut;  ///< the text goes on behind what is there
};

/// The texts of a source, one after the other.
class KeySources {
 public:
  KeySources(void const* source, unsigned char format_, std::size_t available, unsigned char first)
      : at(static_cast<char const*>(source)), left(available), format(format_), codeSet(first) {}

  KeySource Next() {
    KeySource const next = HasMemoryBit(format) ? NextString() : NextRecord();
    // Later elements of an array are read as if they held orders already. Stored keys depend on it.
    codeSet = kSortOrderSet;
    return next;
  }

 private:
  KeySource NextString() {
    auto const& string = *static_cast<XoString const*>(static_cast<void const*>(at));
    at += sizeof(XoString);
    char const* text = OrEmptyText(string.text);
    // Read in another width than its own, the text may lack a terminator.
    if (IsWide(codeSet) && (!IsWide(string.codeSet) || string.size % 2 != 0)) {
      text = copy.Make(text, string.size);
    }
    return {OrEmptyText(text), codeSet, string.language, FormMemory, false};
  }

  KeySource NextRecord() {
    if (runEnd == nullptr) {
      RecordHeader const header = ReadHeader(at, left, FormNibble(format));
      if (!header.isOlder) {
        std::size_t const skipped = std::min(left, kHeaderBytes);
        std::size_t there = std::min(header.TextBytes(), left - skipped);
        bool const isCut = there < header.TextBytes();
        // Half a unit would read as another character.
        if (isCut) there -= there % UnitSize(codeSet);
        KeySource const next = Terminated(at + skipped, there, header.language, isCut);
        Skip(header.Size());
        return next;
      }
      runEnd = at + header.Size();
      Skip(kLengthBytes);
    }
    std::size_t const rest = std::min(left, static_cast<std::size_t>(runEnd - at));
    void const* const end = rest != 0 ? std::memchr(at, 0, rest) : nullptr;
    std::size_t const bytes =
        end != nullptr ? static_cast<std::size_t>(static_cast<char const*>(end) - at) : rest;
    KeySource const next = Terminated(at, bytes, 0, false);
    Skip(std::min(bytes + 1, rest));
    return next;
  }

  KeySource Terminated(char const* text, std::size_t bytes, unsigned char language, bool isCut) {
    return {OrEmptyText(copy.Make(text, bytes)), codeSet, language, FormNibble(format), isCut};
  }

  void Skip(std::size_t bytes) {
    std::size_t const skipped = std::min(bytes, left);
    at += skipped;
    left -= skipped;
  }

  char const* at;
  std::size_t left;
  char const* runEnd = nullptr;
  unsigned char const format;
  unsigned char codeSet;
  TerminatedCopy copy;
};

/// Writes the orders of the characters that a text begins with and that are one order of `group`
/// each, behind `size` bytes and as far as there is room. Returns the place where that ends.
char const* WritePlainOrders(unsigned char* target, std::size_t& size, std::size_t room,
                             unsigned char nibble, unsigned char group, KeySource const& source) {
  char const* text = source.text;
  XoCodeSet const* const record = intl::FindCodeSet(source.codeSet);
  if (source.codeSet == kNoCodeSet || IsWide(source.codeSet) || source.language >= kNullLanguage ||
      record == nullptr || record->orderTable == nullptr) {
    return text;
  }
  PlainReader<NarrowUnits> const reader(*record, source.language);
  for (; size + kOrderBytes <= room && *text != 0; ++text) {
    CharOrderEntry const* const entry = reader.Plain(LoadNarrow(text), text + 1);
    if (entry == nullptr || entry->order == 0) break;
    unsigned char const* const own = entry->GroupOverride();
    if (own != nullptr && *own != group) break;
    StoreBytes(target + size, InByteOrder(entry->order, nibble));
    size += kOrderBytes;
  }
  return text;
}

/// Writes one key into `room` bytes, at least `kLeastRoom`. Returns the bytes written.
std::size_t BuildKey(unsigned char* target, std::size_t room, bool isLarge, unsigned char nibble,
                     KeySource const& source) {
  XoStringIterator reader(source.text, source.codeSet, source.language, source.byteOrder);
  bool const isNull =
      source.language == kNullLanguage || (source.codeSet == kSortOrderSet && source.language == 0);
  unsigned char group = isNull ? static_cast<unsigned char>(0) : reader.orderGroup;
  auto const close = [target](std::size_t at) {
    target[at] = 0;
    target[at + 1] = kEndMark;
  };
  std::size_t size = kHeaderBytes;
  bool isOpen = false;
  if (!isNull) {
    reader.cursor = WritePlainOrders(target, size, room, nibble, group, source);
  }
  for (;;) {
    // Only what fits whole is written; without room for one more order the key is cut here.
    if (size + kOrderBytes > room) {
      if (isLarge && size > kHeaderBytes) {
        close(size - kOrderBytes);
      } else {
        isOpen = true;
      }
      break;
    }
    unsigned short order = reader.GetNextOrder(1);
    if (reader.orderGroup != group) {
      if (size > kHeaderBytes) {
        group |= kCutAtGroup;
        order = 0;
      } else if (order != 0) {
        group = reader.orderGroup;
      }
    }
    if (order == 0) {
      // Of text that goes on elsewhere a small key is left open, as one that is cut for room.
      isOpen = source.isCut && !isLarge && (group & kCutAtGroup) == 0;
      if (!isOpen) {
        close(size);
        size += kClosingBytes;
      }
      break;
    }
    StoreBytes(target + size, InByteOrder(order, nibble));
    size += kOrderBytes;
  }
  // An open key has the length that it would have if it were closed: so a reader knows.
  std::size_t const length = size - kLengthBytes + (isOpen ? kClosingBytes : 0);
  if (length > 65535) XOLA_assert("(o_u4b)_nLen == nLen", "src\\xotypes", 1569);
  StoreBytes(target, InByteOrder(static_cast<unsigned short>(length), nibble));
  target[2] = kSortOrderSet;
  target[3] = group;
  return size;
}

}  // namespace

unsigned BuildKeys(void* target, unsigned char targetFormat, unsigned room, void const* source,
                   unsigned char sourceFormat, std::size_t available, unsigned count) {
  unsigned char first = kNoCodeSet;
  if (count != 0) {
    first = HasMemoryBit(sourceFormat)
                ? static_cast<XoString const*>(source)->codeSet
                : ReadHeader(source, available, FormNibble(sourceFormat)).codeSet;
  }
  KeySources sources(source, sourceFormat, available, EffectiveCodeSet(first, targetFormat));
  auto* const keys = static_cast<unsigned char*>(target);
  std::size_t written = 0;
  for (unsigned index = 0; index < count && room - written >= kLeastRoom; ++index) {
    written += BuildKey(keys + written, room - written, room >= kLargeTarget,
                        FormNibble(targetFormat), sources.Next());
  }
  return static_cast<unsigned>(written);
}

std::size_t BuildPlainKey(unsigned char* target, std::size_t room, unsigned char nibble,
                          unsigned char codeSet, unsigned char language, char const* text,
                          std::size_t bytes) {
  XoCodeSet const* const record = intl::FindCodeSet(codeSet);
  if (codeSet == kNoCodeSet || IsWide(codeSet) || language >= kNullLanguage || record == nullptr ||
      record->orderTable == nullptr) {
    return 0;
  }
  PlainReader<NarrowUnits> const reader(*record, language);
  unsigned char const group = record->CodeSetGroup(language);
  unsigned short const asterisk = AsteriskOrder();
  unsigned short const question = QuestionOrder();
  std::size_t size = kHeaderBytes;
  char const* const end = text + bytes;
  for (; text != end && *text != 0; ++text) {
    CharOrderEntry const* const entry = reader.Plain(LoadNarrow(text), text + 1);
    if (entry == nullptr || entry->order == 0) return 0;
    if (entry->order == asterisk || entry->order == question) return 0;
    unsigned char const* const own = entry->GroupOverride();
    if (own != nullptr && *own != group) return 0;
    if (size + kOrderBytes > room) continue;
    StoreBytes(target + size, InByteOrder(entry->order, nibble));
    size += kOrderBytes;
  }
  // An open key has the length that it would have if it were closed.
  StoreBytes(target, InByteOrder(static_cast<unsigned short>(size), nibble));
  target[2] = kSortOrderSet;
  target[3] = group;
  if (size + kClosingBytes > room) return size;
  target[size] = 0;
  target[size + 1] = kEndMark;
  return size + kClosingBytes;
}

namespace {

// Stepping.

/// Above every order that a table gives.
constexpr unsigned short kHighestOrder = 65534;
constexpr unsigned char kHighestByte = 255;

/// The text of a record that is changed in place, of which `limit` bytes may be touched.
struct EditedText {
  unsigned char* text;
  std::size_t limit;
  bool isOrders;  ///< of units of 16 bits, as far as its code set goes

  void Put(std::size_t at, unsigned short unit) const {
    if (at < limit) text[at] = static_cast<unsigned char>(unit);
    if (isOrders && at + 1 < limit) text[at + 1] = static_cast<unsigned char>(unit >> 8);
  }
};

/// The place in bytes of the first wildcard among `bytes` bytes of text, or `kNoLimit`.
std::size_t WildcardPlace(EditedText const& edited, std::size_t bytes, unsigned char codeSet,
                          unsigned char language) {
  TerminatedCopy copy;
  char const* const text =
      copy.Make(static_cast<char const*>(static_cast<void const*>(edited.text)), bytes);
  unsigned short place = 0;
  unsigned short const units = AsCount(bytes / UnitSize(codeSet));
  int const found = FindWildcard(codeSet, language, text, 0, units, &place, FormLittle);
  return found >= 0 ? place : kNoLimit;
}

}  // namespace

int StringGetValue(void* value, unsigned count, unsigned char format, NextValueCode code) {
  if (format != (FormatIndexKey | FormLittle)) return ERR_TM_NOT_SUPPORTED;
  if (code != kNextValue && code != kNextValueToo) return ERR_TM_NOT_SUPPORTED;
  // Without room for text there is nothing that can become greater.
  if (count <= kHeaderBytes) return ERR_TM_NO_NEXT_VALUE;
  auto* const record = static_cast<unsigned char*>(value);
  unsigned short const length = ReadLength(record, count, FormLittle);
  unsigned char const codeSet = record[2];
  std::size_t const textBytes = length > kHeaderBytes ? length - kHeaderBytes : 0;
  std::size_t const unit = UnitSize(codeSet);
  EditedText const edited{record + kHeaderBytes, count - kHeaderBytes, codeSet != kNoCodeSet};
  if (edited.limit < unit) return ERR_TM_NO_NEXT_VALUE;
  if (code == kNextValueToo) {
    std::size_t const searched = textBytes + 2 > edited.limit ? edited.limit : textBytes;
    std::size_t const place = WildcardPlace(edited, searched, codeSet, record[3]);
    if (place != kNoLimit) {
      edited.Put(place, edited.isOrders ? kHighestOrder : kHighestByte);
      return 0;
    }
  }
  std::size_t const end = std::min(textBytes, edited.limit);
  // The closing bytes move up by a character, as far as there is room.
  if (end + unit < edited.limit) {
    std::memmove(edited.text + end + unit, edited.text + end,
                 std::min(kClosingBytes, edited.limit - end - unit));
  }
  if (edited.limit < end + unit) {
    std::size_t const last = edited.limit - unit;
    edited.Put(
        last, edited.isOrders ? kHighestOrder : static_cast<unsigned short>(edited.text[last] + 1));
    return 0;
  }
  XoChar const lowest('a', kByDefault, 0);
  edited.Put(end, edited.isOrders ? lowest.CharOrder() : static_cast<unsigned short>('a'));
  StoreBytes(record, static_cast<unsigned short>(length + unit));
  return 0;
}

}  // namespace xo
