#pragma once

#include "../base/export.hpp"
#include "order_table.hpp"
#include "wide_list.hpp"

/// Case forms of a character. Constant records: never written to, by whatever pointer they are had.
class XO_EXPORT XoUnicodeProps {
 public:
  constexpr XoUnicodeProps(unsigned short upper, XoWCharList const& upperMore, unsigned short lower,
                           unsigned char lowerWhole)
      : upperCase(upper), upperExpansion(upperMore), lowerCase(lower), lowerList(lowerWhole) {}

  /// The upper-case form in Unicode, or its first character where it has several; 0 without one.
  unsigned short upperCase;
  /// The characters of the upper-case form behind the first one, in the codes of the set that gave
  /// the record, as they are to follow in a text; mostly empty.
  XoWCharList upperExpansion;
  /// The lower-case form of one character, in Unicode; 0 without one.
  unsigned short lowerCase;

  /// The whole lower-case form where the proper one has several characters and `lowerCase` is only
  /// the nearest single one (capital I with dot above; in Lithuanian the accented capital I, whose
  /// lower case keeps its dot); empty otherwise. In Unicode, whether or not the set has them.
  XoWCharList const& LowerSequence() const;

  /// Hands all fields to `visitor.Add`, in order.
  template <class Visitor>
  void Visit(Visitor& visitor) const {
    visitor.Add(upperCase, upperExpansion, lowerCase, lowerList);
  }

 private:
  unsigned char lowerList;
};

namespace xo::intl {
struct CodeSetTables;
}

/// A code set: what its codes mean in Unicode, how they are sorted, and their case. Records are
/// constant and live as long as the library; one is had from `XoLanguageContext::QueryCodeSet`.
/// docs/code-sets.md lists them.
class XO_EXPORT XoCodeSet {
 public:
  constexpr XoCodeSet(unsigned char number_, char const* name_, OrderTable const* orders,
                      xo::intl::CodeSetTables const* tables_)
      : number(number_), name(name_), orderTable(orders), tables(tables_) {}

  /// The group of spaces, symbols and digits in a language: that of the language's own script, of
  /// Latin where the language is unknown. Code set 254 gives the language byte less bit 7, since
  /// the language byte of a key holds its group.
  virtual unsigned char CodeSetGroup(unsigned char language) const;

  /// The code in this code set of the character that `code` stands for in code set `fromSet`, by
  /// way of Unicode. A character that this set lacks gives its substitute, the question mark; a
  /// code that `fromSet` does not define is U+FFFD in Unicode, and so the substitute elsewhere;
  /// only from a set to itself every code stands for itself. A `fromSet` of 0 is the native code
  /// set; one that is unknown gives the substitute. Sort orders (254) stand for themselves, on
  /// either side. Of a code for an 8-bit `fromSet` the low byte counts.
  virtual unsigned short MapCharacter(unsigned short code, unsigned char fromSet) const;

  /// Case forms of a code of this set, or null where it has none or where this set has no place for
  /// them, so that the character then stays as it is. `language` chooses Turkish and Lithuanian
  /// forms; an unknown one is taken as neutral. The record is constant and must not be written.
  XoUnicodeProps* GetUnicodeProps(unsigned short character, unsigned char language) const;

  /// Whether the set has a code for a Unicode character; 0 when not. U+0000 counts as had.
  int HasCharacter(unsigned short unicode) const;

  /// The Unicode character of a code; U+FFFD for one that the set does not define.
  unsigned short ToUnicode(unsigned short code) const;

  /// The number of the set; 0 is given back as the native set's.
  unsigned char number;
  /// The registered name, such as "ISO-8859-1".
  char const* name;
  /// The sort orders; null for a code set that is sorted by way of Unicode.
  OrderTable const* orderTable;

  /// Hands what the record says to `visitor.Add`: the number, and the places of its tables.
  template <class Visitor>
  void Visit(Visitor& visitor) const {
    visitor.Add(number, OrdersPlace(), TablesPlace());
  }

 private:
  unsigned OrdersPlace() const;
  unsigned TablesPlace() const;
  int FromUnicode(unsigned short unicode, unsigned short* code) const;
  int HoldsForms(XoUnicodeProps const& forms) const;

  xo::intl::CodeSetTables const* tables;
};
