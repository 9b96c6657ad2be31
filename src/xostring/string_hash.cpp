#include "src/xostring/order_keys.hpp"
#include "src/xostring/plain_lane.hpp"
#include "src/xostring/text_units.hpp"
#include "xostring.hpp"
#include "xostringhash.hpp"
#include "xostringiterator.hpp"

using namespace xo;

namespace {

constexpr unsigned kMultiplier = 9;

/// Hash of the units of a text under `mask`. Only code set 253 is read in units of 16 bits: the
/// other wide code sets are read as bytes like the narrow ones, and stored hashes depend on that.
unsigned HashUnits(XoString const& text, unsigned mask) {
  char const* at = text.StrGet();
  unsigned hash = 0;
  if (text.codeSet == kUnicodeSet) {
    for (unsigned short unit = LoadWide(at); unit != 0; unit = LoadWide(at += 2)) {
      hash = hash * kMultiplier + (unit & mask);
    }
    return hash;
  }
  for (; *at != 0; ++at) {
    int const value = static_cast<signed char>(*at);
    hash = hash * kMultiplier + (static_cast<unsigned>(value) & mask);
  }
  return hash;
}

/// Hash of the characters that are one sort order each, up to the first that is not, on which it
/// leaves the iterator.
template <class Units>
unsigned HashPlainOrders(XoStringIterator& iterator) {
  PlainReader<Units> const reader(*iterator.codeSetObject, iterator.language);
  char const* at = iterator.cursor;
  unsigned char group = iterator.orderGroup;
  unsigned hash = 0;
  for (unsigned short code = Units::Get(at); code != 0; code = Units::Get(at)) {
    CharOrderEntry const* const entry = reader.Plain(code, at + Units::kSize);
    if (entry == nullptr) break;
    group = reader.Group(entry);
    hash = hash * kMultiplier + KeyOf(entry->order, group);
    at += Units::kSize;
  }
  iterator.cursor = at;
  iterator.orderGroup = group;
  return hash;
}

unsigned HashOrders(XoStringIterator& iterator, short count) {
  unsigned hash = 0;
  XoCodeSet const* const set = iterator.codeSetObject;
  if (count == -1 && set != nullptr && set->orderTable != nullptr &&
      iterator.byteOrder != FormBig) {
    hash = IsWide(iterator.codeSet) ? HashPlainOrders<WideUnits>(iterator)
                                    : HashPlainOrders<NarrowUnits>(iterator);
  }
  // The end counts as an order of 0 where a number of orders is asked for.
  for (int read = 0; count == -1 || read < count; ++read) {
    unsigned short const order = iterator.GetNextOrder(1);
    if (order == 0 && count == -1) break;
    hash = hash * kMultiplier + KeyOf(order, iterator.orderGroup);
  }
  return hash;
}

unsigned HashBytes(char const* text, short count) {
  unsigned hash = 0;
  for (int place = 0; (count == -1 || place < count) && text[place] != 0; ++place) {
    hash = hash * kMultiplier + LoadNarrow(text + place);
  }
  return hash;
}

}  // namespace

unsigned HashString(unsigned char codeSet, unsigned char language, char const* text, short count,
                    unsigned char byteOrder) {
  if (IsNullText(codeSet, language)) return NullElementHashConstant;
  if (count == 0 || count < -1) return 0;
  XoStringIterator iterator(text, codeSet, language, byteOrder);
  return iterator.codeSet != kNoCodeSet ? HashOrders(iterator, count)
                                        : HashBytes(iterator.cursor, count);
}

unsigned HashXoString(XoString const& text) { return HashUnits(text, 0xFFFFFFFF); }

unsigned HashXoString7(XoString const& text) { return HashUnits(text, 127); }
