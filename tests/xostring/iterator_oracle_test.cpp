// An iterator reads orders as a slow reader does that takes every step by itself.
#include <cstddef>
#include <vector>

#include "tests/base/random_test.hpp"
#include "tests/xostring/order_reads.hpp"

namespace xo::test {
namespace {

/// The reading of orders step by step: no table is looked up but through its public operations, and
/// nothing is left out because it is rare.
class StepwiseReader {
 public:
  StepwiseReader(char const* text_, unsigned char codeSet_, unsigned char language_,
                 unsigned char byteOrder_)
      : text(text_),
        codeSet(codeSet_),
        language(language_),
        byteOrder(byteOrder_),
        object(XoLanguageContext::QueryCodeSet(codeSet_)),
        group(GroupIn(object)) {}

  void SetOverflow(XoWCharList const* list, unsigned char set) {
    overflow = list;
    served = 0;
    overflowSet = set == 255 ? codeSet : set;
  }

  Read Next(bool updateGroup) {
    unsigned short const order = NextOrder(updateGroup);
    return {order, group, place};
  }

 private:
  bool Wide() const { return codeSet > 224; }
  std::ptrdiff_t Width() const { return Wide() ? 2 : 1; }
  unsigned short UnitAt(std::ptrdiff_t at) const {
    unsigned const first = static_cast<unsigned char>(text[at]);
    if (!Wide()) return static_cast<unsigned short>(first);
    unsigned const second = static_cast<unsigned char>(text[at + 1]);
    return static_cast<unsigned short>(byteOrder == 2 ? first << 8 | second : second << 8 | first);
  }
  unsigned char GroupIn(XoCodeSet const* set) const {
    if (set == nullptr) set = XoLanguageContext::QueryCodeSet(kUnicode);
    return set->CodeSetGroup(language);
  }
  bool Remains() const { return overflow != nullptr && served < overflow->count; }
  bool AtEnd() const { return UnitAt(place) == 0 && !Remains(); }
  void Step() {
    if (Remains()) return;
    overflow = nullptr;
    place += Width();
  }
  void StepUpToTheEnd() {
    if (Remains()) return;
    overflow = nullptr;
    if (UnitAt(place) != 0) place += Width();
  }
  static unsigned short InUnicode(unsigned short code, unsigned char set) {
    return code == 0 ? code : XoChar(code, set, kNeutral).MapTo(kUnicode).Code();
  }

  unsigned short NextOrder(bool updateGroup) {
    if (codeSet == kOrders) {
      unsigned short const order = UnitAt(place);
      if (order != 0) Step();
      return order;
    }
    unsigned short code = UnitAt(place);
    unsigned char set = codeSet;
    bool const supplied = Remains();
    if (supplied) {
      overflow->Get(served++, &code);
      set = overflowSet;
    }
    if (set == kOrders) {
      StepUpToTheEnd();
      return code;
    }
    XoCodeSet const* const present = object;
    if (supplied) object = XoLanguageContext::QueryCodeSet(overflowSet);
    OrderTable const* table = present != nullptr ? present->orderTable : nullptr;
    bool const mapping = table == nullptr;
    if (mapping) {
      table = XoLanguageContext::QueryCodeSet(kUnicode)->orderTable;
      code = InUnicode(code, set);
    }
    if (code == 0) return 0;
    CharOrderEntry const* entry = table->GetEntry(code);
    if (entry == nullptr) {
      StepUpToTheEnd();
      if (updateGroup && code != AsteriskOrder() && code != QuestionOrder() && code < 65520) {
        group = kUntabledGroup;
      }
      return code;
    }
    XoLanguage const* const record = XoLanguageContext::QueryLanguage(language);
    if (entry->HasVariants() && record != nullptr && record->hasVariants != 0) {
      for (unsigned index = 0; index < entry->VariantCount(); ++index) {
        if (entry->VariantLanguage(index) == record) {
          entry = entry->VariantEntry(index);
          break;
        }
      }
    }
    while (entry->HasContractions()) {
      if (AtEnd()) break;
      StepwiseReader const before(*this);
      Step();
      unsigned short next = UnitAt(place);
      unsigned char nextSet = codeSet;
      if (Remains()) {
        overflow->Get(served++, &next);
        nextSet = overflowSet;
      }
      if (mapping) next = InUnicode(next, nextSet);
      CharOrderEntry const* longer = nullptr;
      for (unsigned index = 0; index < entry->ContractionCount() && longer == nullptr; ++index) {
        if (entry->ContractionCharacter(index) == next) longer = entry->ContractionEntry(index);
      }
      if (longer == nullptr) {
        *this = before;
        break;
      }
      entry = longer;
    }
    if (updateGroup) {
      group = entry->GroupOverride() != nullptr ? *entry->GroupOverride() : GroupIn(present);
    }
    if (entry->HasExpansion()) SetOverflow(&entry->Expansion(), kOrders);
    StepUpToTheEnd();
    return entry->order;
  }

  char const* text;
  unsigned char codeSet;
  unsigned char language;
  unsigned char byteOrder;
  XoCodeSet const* object;
  unsigned char group;
  std::ptrdiff_t place = 0;
  XoWCharList const* overflow = nullptr;
  unsigned served = 0;
  unsigned char overflowSet = 0;
};

class IteratorOracle : public RandomTest {
 protected:
  /// A character, and what may contract with it, followed some of the way: codes of the table that
  /// reads the set.
  void AppendChain(Units& units, OrderTable const& table, unsigned char language, bool narrow) {
    unsigned short const code = AnyCode(narrow);
    units.push_back(code);
    CharOrderEntry const* entry = table.GetEntry(code);
    if (entry == nullptr) return;
    CharOrderEntry const* const variant = entry->Variant(language);
    if (variant != nullptr) entry = variant;
    while (entry->ContractionCount() != 0 && !OneIn(4)) {
      unsigned const index = Below(entry->ContractionCount());
      units.push_back(entry->ContractionCharacter(index));
      entry = entry->ContractionEntry(index);
    }
  }

  unsigned short AnyCode(bool narrow) {
    unsigned code = 0;
    switch (Below(narrow ? 3 : 7)) {
      case 0:
        code = 'a' + Below(26);
        break;
      case 1:
        code = 1 + Below(255);
        break;
      case 2:
        code = static_cast<unsigned char>("cdlnrstgzhCDLNSZ"[Below(16)]);
        break;
      case 3:
        code = 0xC0 + Below(0x180);
        break;
      case 4:
        code = 0x300 + Below(0x200);
        break;
      case 5:
        code = 1 + Below(0x3100);
        break;
      default:
        code = 1 + Below(65535);
    }
    return static_cast<unsigned short>(code);
  }

  Units AnyText(unsigned char codeSet, unsigned char language) {
    XoCodeSet const* const set = XoLanguageContext::QueryCodeSet(codeSet);
    XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
    bool const own = set != nullptr && set->orderTable != nullptr;
    Units units;
    for (unsigned left = Below(12); left != 0; --left) {
      if (own) {
        AppendChain(units, *set->orderTable, language, codeSet <= 224);
        continue;
      }
      // What contracts in Unicode, in the codes of this set.
      Units chain;
      AppendChain(chain, *unicode.orderTable, language, codeSet <= 224);
      for (unsigned short const code : chain) {
        unsigned short const mapped =
            set != nullptr && codeSet != kOrders ? set->MapCharacter(code, kUnicode) : code;
        units.push_back(mapped);
      }
    }
    for (unsigned short& unit : units) {
      if (codeSet <= 224) unit &= 255;
      if (unit == 0) unit = 'a';
    }
    return units;
  }

  unsigned char AnySet() {
    static constexpr unsigned char kWide[] = {225, 226, 227, 228, 253, 253, 253, 254};
    return OneIn(3) ? kWide[Below(8)] : static_cast<unsigned char>(Below(36));
  }
};

TEST_F(IteratorOracle, ReadsAsTheStepsSay) {
  static constexpr unsigned char kByteOrders[] = {1, 2, 8, 0, 255};
  for (int run = 0; run < 150000; ++run) {
    unsigned char const set = AnySet();
    unsigned char const language = static_cast<unsigned char>(OneIn(20) ? Below(254) : Below(48));
    unsigned char const byteOrder = kByteOrders[Below(5)];
    Units const units = AnyText(set, language);
    Text const text(units, set, byteOrder);
    XoStringIterator iterator(text.Get(), set, language, byteOrder);
    StepwiseReader reader(text.Get(), set, language, byteOrder);
    bool const mixed = OneIn(4);
    XoWCharList more[2];
    int given = 0;
    for (int ends = 0; ends < 3;) {
      // A stream of orders waits for an overflow to be served otherwise.
      if (set != kOrders && given < 2 && OneIn(8)) {
        XoWCharList& list = more[given++];
        unsigned char const overflowSet = OneIn(4) ? kOrders : OneIn(3) ? kUnicode : set;
        list.count = static_cast<unsigned short>(Below(4));
        for (unsigned index = 0; index < list.count; ++index) {
          list.values[index] = AnyCode(overflowSet <= 224);
        }
        iterator.SetOverflow(&list, overflowSet);
        reader.SetOverflow(&list, overflowSet);
      }
      bool const update = !mixed || OneIn(2);
      unsigned short const order = iterator.GetNextOrder(update ? 1 : 0);
      Read const read{order, iterator.orderGroup, iterator.cursor - text.Get()};
      Read const expected = reader.Next(update);
      ASSERT_EQ(read, expected) << "set " << int{set} << " language " << int{language}
                                << " byte order " << int{byteOrder} << ' '
                                << testing::PrintToString(units);
      if (order == 0) ++ends;
    }
  }
}

TEST_F(IteratorOracle, StringsReadAsTheirText) {
  for (int run = 0; run < 5000; ++run) {
    unsigned char const language = static_cast<unsigned char>(Below(48));
    Units units = AnyText(kUnicode, language);
    std::vector<Read> const expected = ReadAll(units, kUnicode, language);
    units.push_back(0);
    XoString text(units.data());
    text.language = language;
    XoStringIterator iterator(text);
    for (Read const& read : expected) {
      ASSERT_EQ(iterator.GetNextOrder(1), read.order);
      ASSERT_EQ(iterator.orderGroup, read.group);
    }
    ASSERT_EQ(iterator.GetNextOrder(1), 0);
  }
}

}  // namespace
}  // namespace xo::test
