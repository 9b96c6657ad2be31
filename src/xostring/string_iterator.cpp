#include <algorithm>
#include <utility>

#include "base/allocation.hpp"
#include "src/xostring/entry_lookup.hpp"
#include "src/xostring/order_keys.hpp"
#include "src/xostring/text_units.hpp"
#include "xostrcmp.hpp"
#include "xostring.hpp"
#include "xostringiterator.hpp"

using namespace xo;

namespace {

constexpr unsigned char kNoVariants = 0;
constexpr unsigned short kNothing = 0;

}  // namespace

// Construction.

XoStringIterator::XoStringIterator()
    : codeSetObject(xo::intl::FindCodeSet(0)),
      codeSet(0),
      language(0),
      orderGroup(0),
      overflowCodeSet(0),
      overflowIndex(0),
      byteOrder(FormLittle),
      ownsBuffer(0),
      cursor(nullptr),
      overflow(nullptr) {}

void XoStringIterator::Start(char const* text) {
  codeSetObject = xo::intl::FindCodeSet(codeSet);
  orderGroup = SetOrUnicode(codeSetObject).CodeSetGroup(language);
  overflowCodeSet = 0;
  overflowIndex = 0;
  ownsBuffer = 0;
  cursor = text;
  overflow = nullptr;
}

XoStringIterator::XoStringIterator(XoString const& text)
    : codeSet(text.codeSet), language(LanguageOrDefault(text.language)), byteOrder(FormMemory) {
  Start(text.StrGet());
}

XoStringIterator::XoStringIterator(XoChar const& character)
    : codeSet(character.codeSet), language(character.language), byteOrder(FormLittle) {
  constexpr std::size_t kTwoCharacters = 4;
  buffer = static_cast<char*>(AllocateArray(kTwoCharacters));
  WideFill(buffer, 0, 2);
  StoreUnit(buffer, codeSet, character.Code());
  Start(buffer);
  ownsBuffer = 1;
}

XoStringIterator::XoStringIterator(char const* text, unsigned char codeSet_,
                                   unsigned char language_, unsigned char byteOrder_)
    : codeSet(CodeSetOr8(codeSet_)),
      language(LanguageOrDefault(language_)),
      byteOrder(OrderOrDefault(byteOrder_)) {
  Start(OrEmptyText(text));
}

XoStringIterator::XoStringIterator(unsigned short const* text, unsigned char codeSet_,
                                   unsigned char language_, unsigned char byteOrder_)
    : XoStringIterator(static_cast<char const*>(static_cast<void const*>(text)),
                       CodeSetOr16(codeSet_), language_, byteOrder_) {}

XoStringIterator::XoStringIterator(XoStringIterator const& other)
    : codeSetObject(other.codeSetObject),
      codeSet(other.codeSet),
      language(other.language),
      orderGroup(other.orderGroup),
      overflowCodeSet(other.overflowCodeSet),
      overflowIndex(other.overflowIndex),
      byteOrder(other.byteOrder),
      ownsBuffer(0),
      cursor(other.cursor),
      overflow(other.overflow) {}

XoStringIterator& XoStringIterator::operator=(XoStringIterator const& other) {
  if (this == &other) return *this;
  Destroy();
  codeSetObject = other.codeSetObject;
  codeSet = other.codeSet;
  language = other.language;
  orderGroup = other.orderGroup;
  overflowCodeSet = other.overflowCodeSet;
  overflowIndex = other.overflowIndex;
  byteOrder = other.byteOrder;
  ownsBuffer = 0;
  cursor = other.cursor;
  overflow = other.overflow;
  return *this;
}

XoStringIterator::~XoStringIterator() { Destroy(); }

void XoStringIterator::Destroy() {
  if (buffer != nullptr) ReleaseArray(std::exchange(buffer, nullptr));
  ownsBuffer = 0;
}

// Steps.

bool XoStringIterator::OverflowRemains() const {
  return overflow != nullptr && overflowIndex < static_cast<int>(overflow->count);
}

unsigned short XoStringIterator::CodeAtCursor() const {
  return LoadUnit(cursor, codeSet, byteOrder);
}

XoChar XoStringIterator::operator*() {
  if (OverflowRemains()) {
    return XoChar(overflow->values[overflowIndex++], overflowCodeSet, language);
  }
  return XoChar(cursor, codeSet, language, byteOrder);
}

XoStringIterator& XoStringIterator::operator++() {
  if (OverflowRemains()) return *this;
  overflow = nullptr;
  if (cursor != nullptr) cursor += UnitSize(codeSet);
  return *this;
}

XoStringIterator XoStringIterator::operator++(int) {
  XoStringIterator before(*this);
  ++*this;
  return before;
}

XoStringIterator& XoStringIterator::operator--() {
  if (cursor != nullptr) cursor -= UnitSize(codeSet);
  return *this;
}

XoStringIterator XoStringIterator::operator--(int) {
  XoStringIterator before(*this);
  --*this;
  return before;
}

XoStringIterator& XoStringIterator::Step(unsigned short forward) {
  return forward != 0 ? ++*this : --*this;
}

int XoStringIterator::IsEOS() const { return IsTextEmpty(codeSet, cursor) && overflow == nullptr; }

void XoStringIterator::SetOverflow(XoWCharList const* list, unsigned char set) {
  overflow = list;
  overflowIndex = 0;
  overflowCodeSet = set == kByDefault ? codeSet : set;
}

// Sort orders.

unsigned short XoStringIterator::NextStreamOrder() {
  unsigned short const order = LoadWide(cursor, byteOrder);
  if (order != 0) {
    ++*this;
  } else if (!OverflowRemains()) {
    overflow = nullptr;
  }
  return order;
}

XoStringIterator::Character XoStringIterator::ReadCharacter() {
  if (OverflowRemains()) return {overflow->values[overflowIndex++], overflowCodeSet, true};
  return {CodeAtCursor(), codeSet, false};
}

/// Goes on behind a character whose order has been read. The end of the text is never passed.
void XoStringIterator::MoveOn() {
  if (OverflowRemains()) return;
  overflow = nullptr;
  if (!IsTextEmpty(codeSet, cursor)) cursor += UnitSize(codeSet);
}

/// Follows the contractions that begin with `entry`, a character at a time, and gives the last one
/// found. The last character read that belongs to it is the present one then.
CharOrderEntry const* XoStringIterator::Contract(CharOrderEntry const* entry, bool mapping) {
  while (entry->HasContractions()) {
    if (IsTextEmpty(codeSet, cursor) && !OverflowRemains()) break;
    char const* const savedCursor = cursor;
    XoWCharList const* const savedOverflow = overflow;
    short const savedIndex = overflowIndex;
    ++*this;
    Character const next = ReadCharacter();
    CharOrderEntry const* const longer =
        entry->Contraction(mapping ? MapCode(next.code, next.codeSet, kUnicodeSet) : next.code);
    if (longer == nullptr) {
      cursor = savedCursor;
      overflow = savedOverflow;
      overflowIndex = savedIndex;
      break;
    }
    entry = longer;
  }
  return entry;
}

/// The order of a character that stands for itself, read with one look-up, or 0 where the general
/// way has to be taken. Nothing has moved then.
unsigned short XoStringIterator::ReadPlainOrder(unsigned short updateGroup) {
  OrderTable const* const table = codeSetObject != nullptr ? codeSetObject->orderTable : nullptr;
  if (overflow != nullptr || table == nullptr) return 0;
  unsigned short const code = CodeAtCursor();
  if (code == 0) return 0;
  CharOrderEntry const* entry = table->Find(code);
  if (entry == nullptr) return 0;
  char const* const behind = cursor + UnitSize(codeSet);
  // What stands behind the character is looked at only where it may matter.
  auto const next = [this, behind](CharOrderEntry const* of) {
    return of->HasContractions() ? LoadUnit(behind, codeSet, byteOrder) : kNothing;
  };
  unsigned char const variants = VariantFlagOf(language);
  if (!entry->IsPlain(variants, next(entry))) {
    entry = EntryInLanguage(entry, language, variants);
    if (!entry->IsPlain(kNoVariants, next(entry))) return 0;
  }
  if (updateGroup != 0) orderGroup = GroupOf(entry, *codeSetObject, language);
  cursor = behind;
  return entry->order;
}

unsigned short XoStringIterator::GetNextOrder(unsigned short updateGroup) {
  if (cursor == nullptr) return 0;
  if (codeSet == kSortOrderSet) return NextStreamOrder();
  if (unsigned short const order = ReadPlainOrder(updateGroup); order != 0) return order;

  Character const character = ReadCharacter();
  // Values of an expansion are orders already, of the group of their character.
  if (character.codeSet == kSortOrderSet) {
    MoveOn();
    return character.code;
  }
  XoCodeSet const* const set = codeSetObject;
  if (character.fromOverflow) {
    // Serves from the next call on.
    codeSetObject = xo::intl::FindCodeSet(overflowCodeSet);
  }
  TableInUse const use = TableOf(set);
  unsigned short const code =
      use.mapping ? MapCode(character.code, character.codeSet, kUnicodeSet) : character.code;
  if (code == 0) return 0;

  CharOrderEntry const* entry = use.table.Find(code);
  if (entry == nullptr) {
    MoveOn();
    if (updateGroup != 0 && code != AsteriskOrder() && code != QuestionOrder() &&
        code < kFirstSpecialCode) {
      orderGroup = kUntabledGroup;
    }
    return code;
  }
  entry = EntryInLanguage(entry, language, VariantFlagOf(language));
  entry = Contract(entry, use.mapping);
  if (updateGroup != 0) orderGroup = GroupOf(entry, SetOrUnicode(set), language);
  if (entry->HasExpansion()) SetOverflow(&entry->Expansion(), kSortOrderSet);
  MoveOn();
  return entry->order;
}

// Transform.

bool XoStringIterator::HasMore() const {
  return !IsTextEmpty(codeSet, cursor) || overflow != nullptr;
}

void XoStringIterator::TransformOne(XoStringIterator& destination, XoCharOperation& operation) {
  *destination = operation.Transform(**this, *this);
  ++destination;
  ++*this;
}

void XoStringIterator::Transform(XoStringIterator& destination, XoCharOperation& operation) {
  while (HasMore()) TransformOne(destination, operation);
  *destination = **this;
  ++destination;
  ++*this;
}

// Estimates.

double StringPrefixEstimate(XoStringIterator& iterator, unsigned short count) {
  constexpr double kTwoTo32 = 4294967296.0;
  if (iterator.codeSet != kNoCodeSet) {
    unsigned const group = iterator.orderGroup & 127u;
    unsigned kept[3] = {};
    unsigned found = 0;
    for (unsigned read = 0; read < count && found < 3; ++read) {
      unsigned short const order = iterator.GetNextOrder(1);
      if (order == 0) break;
      if (order < kFirstSignificantOrder) continue;
      kept[found++] = KeyOf(order, iterator.orderGroup) >> 8 & 0xFFFF;
    }
    return static_cast<double>(kept[0] | group << 16) * kTwoTo32 +
           static_cast<double>(kept[2] | kept[1] << 16);
  }
  double estimate = 0;
  bool ended = iterator.cursor == nullptr;
  for (unsigned place = 0; place < 4; ++place) {
    ended = ended || place >= count;
    unsigned const byte = ended ? 0 : LoadNarrow(iterator.cursor);
    ended = ended || byte == 0;
    if (!ended) ++iterator;
    estimate = estimate * 128 + std::min(byte, 127u);
  }
  return estimate;
}
