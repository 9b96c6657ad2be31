#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <type_traits>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kLatin2 = 2, kCyrillic = 5, kEbcdic = 32, kUnicode = 253;
constexpr unsigned char kNeutral = 0, kGerman = 2, kTurkish = 31;
/// Numbers that name no code set, a narrow and a wide one.
constexpr unsigned char kUnknownNarrow = 100, kUnknownWide = 240;

XoChar Unicode(unsigned short code, unsigned char language = kNeutral) {
  return XoChar(code, kUnicode, language);
}
XoChar Narrow(int code, unsigned char codeSet = kLatin1, unsigned char language = kNeutral) {
  return XoChar(static_cast<char>(code), codeSet, language);
}

/// The character as it is read from a text of its own.
struct WideUnit {
  char bytes[2];
  unsigned char Low() const { return static_cast<unsigned char>(bytes[0]); }
  unsigned char High() const { return static_cast<unsigned char>(bytes[1]); }
};

// Fields.

TEST(Character, FieldsStandInOrderWithoutVirtualTable) {
  static_assert(std::is_standard_layout_v<XoChar>);
  static_assert(offsetof(XoChar, binding) == 0);
  static_assert(offsetof(XoChar, value) == sizeof(void*));
  static_assert(offsetof(XoChar, codeSet) == sizeof(void*) + 2);
  static_assert(offsetof(XoChar, language) == sizeof(void*) + 3);
  static_assert(offsetof(XoChar, byteOrder) == sizeof(void*) + 4);
  static_assert(!std::is_polymorphic_v<XoChar>);
  static_assert(std::is_polymorphic_v<XoCharOperation>);
  static_assert(std::is_base_of_v<XoCharOperation, XoCharToUpper>);
  static_assert(std::is_base_of_v<XoCharOperation, XoCharToLower>);
}

// Construction.

TEST(Character, OfAStringIsBoundAtTheOffsetInBytes) {
  XoString text("abc");
  text.language = kGerman;
  XoChar const character(text, 2);
  EXPECT_EQ(character.binding, text.text + 2);
  EXPECT_EQ(character.codeSet, kLatin1);
  EXPECT_EQ(character.language, kGerman);
  EXPECT_EQ(character.byteOrder, 1);
  EXPECT_EQ(character.Code(), 'c');

  XoString wide(static_cast<unsigned short>(0x416));
  wide << static_cast<unsigned short>(0x20AC);
  XoChar const second(wide, 2);
  EXPECT_EQ(second.codeSet, kUnicode);
  EXPECT_EQ(second.Code(), 0x20AC);
}

TEST(Character, CopyIsNeverBound) {
  XoString text("abc");
  text.language = kGerman;
  XoChar const bound = text[1];
  XoChar copy(bound);
  EXPECT_EQ(copy.binding, nullptr);
  EXPECT_EQ(copy.Code(), 'b');
  EXPECT_EQ(copy.codeSet, kLatin1);
  EXPECT_EQ(copy.language, kGerman);
  EXPECT_EQ(copy.byteOrder, 1);
  copy = Narrow('x');
  EXPECT_EQ(copy.Code(), 'x');
  EXPECT_STREQ(text.StrGet(), "abc");
}

TEST(Character, CopyOfABigEndianCharacterKeepsItsCode) {
  char const text[] = {0x20, static_cast<char>(0xAC), 0, 0};
  XoChar const bound(text, kUnicode, kNeutral, 2);
  EXPECT_EQ(bound.Code(), 0x20AC);
  XoChar const copy(bound);
  EXPECT_EQ(copy.Code(), 0x20AC);
  EXPECT_EQ(copy.byteOrder, 1);
  EXPECT_EQ(copy.value, 0x20AC);
}

TEST(Character, CopyReplacesTheDefaultLanguage) {
  XoChar character = Narrow('a');
  character.language = 255;
  EXPECT_EQ(XoChar(character).language, XoLanguageContext::GetDefaultLanguage());
  character.language = 254;
  EXPECT_EQ(XoChar(character).language, 254);
}

TEST(Character, DefaultsStandForTheArgument255) {
  XoChar const narrow('a');
  EXPECT_EQ(narrow.codeSet, XoLanguageContext::GetDefault8CodeSet());
  EXPECT_EQ(narrow.language, XoLanguageContext::GetDefaultLanguage());
  EXPECT_EQ(narrow.byteOrder, 1);
  EXPECT_EQ(narrow.binding, nullptr);
  XoChar const wide(static_cast<unsigned short>('a'));
  EXPECT_EQ(wide.codeSet, XoLanguageContext::GetDefault16CodeSet());
  EXPECT_EQ(wide.language, XoLanguageContext::GetDefaultLanguage());
  EXPECT_EQ(wide.byteOrder, 1);
  char const text[] = "a";
  XoChar const bound(text);
  EXPECT_EQ(bound.binding, text);
  EXPECT_EQ(bound.codeSet, XoLanguageContext::GetDefault8CodeSet());
  EXPECT_EQ(bound.language, XoLanguageContext::GetDefaultLanguage());
  EXPECT_EQ(bound.byteOrder, 1);
  EXPECT_EQ(XoChar(text, kUnicode, kGerman, 8).byteOrder, 8);
}

TEST(Character, OfANarrowCodeSetKeepsTheLowByte) {
  unsigned short const code = 0x1241;
  for (unsigned char const set : std::initializer_list<unsigned char>{0, 1, 224}) {
    EXPECT_EQ(XoChar(code, set).Code(), 0x41) << int{set};
  }
  for (unsigned char const set : std::initializer_list<unsigned char>{225, 253, 254}) {
    EXPECT_EQ(XoChar(code, set).Code(), 0x1241) << int{set};
  }
}

TEST(Character, CodeOfAByteIsUnsigned) {
  EXPECT_EQ(Narrow(0xFF).Code(), 0xFF);
  char const text[] = {static_cast<char>(0xE9), 0};
  EXPECT_EQ(XoChar(text, kLatin1).Code(), 0xE9);
}

TEST(Character, OfANullPlaceIsUnboundAndZero) {
  XoChar character(static_cast<char const*>(nullptr), kUnicode);
  EXPECT_EQ(character.Code(), 0);
  character = Unicode('x');
  EXPECT_EQ(character.Code(), 'x');
}

// Assignment.

TEST(Character, AssignedToABoundOneIsMappedToItsCodeSet) {
  XoString text("abc");
  text[1] = Unicode(0xE9, kTurkish);
  EXPECT_STREQ(text.StrGet(),
               "a\xE9"
               "c");
  EXPECT_EQ(text.codeSet, kLatin1);
  EXPECT_NE(text.language, kTurkish);

  // U+0416, which ISO 8859-1 lacks.
  text[0] = Unicode(0x416);
  EXPECT_STREQ(text.StrGet(),
               "?\xE9"
               "c");

  XoString wide(static_cast<unsigned short>('a'));
  // 0xB6 is U+0416 in ISO 8859-5.
  wide[0] = Narrow(0xB6, kCyrillic);
  EXPECT_EQ(wide[0].Code(), 0x416);
}

TEST(Character, AssignedToABoundOneLeavesItsCodeSetAndLanguage) {
  char text[] = "ab";
  XoChar bound(text, kLatin2, kGerman);
  bound = Unicode(0x104, kTurkish);
  // U+0104 is 0xA1 in ISO 8859-2.
  EXPECT_EQ(text[0], static_cast<char>(0xA1));
  EXPECT_EQ(bound.codeSet, kLatin2);
  EXPECT_EQ(bound.language, kGerman);
  EXPECT_EQ(bound.binding, text);
}

TEST(Character, BoundWideOneIsWrittenInItsOwnByteOrder) {
  for (unsigned char const sourceOrder : std::initializer_list<unsigned char>{1, 2, 8}) {
    WideUnit const source = sourceOrder == 2 ? WideUnit{{0x20, static_cast<char>(0xAC)}}
                                             : WideUnit{{static_cast<char>(0xAC), 0x20}};
    XoChar const euro(source.bytes, kUnicode, kNeutral, sourceOrder);
    for (unsigned char const order : std::initializer_list<unsigned char>{1, 2, 8}) {
      WideUnit target{};
      XoChar(target.bytes, kUnicode, kNeutral, order) = euro;
      EXPECT_EQ(target.Low(), order == 2 ? 0x20 : 0xAC) << int{sourceOrder} << ' ' << int{order};
      EXPECT_EQ(target.High(), order == 2 ? 0xAC : 0x20);
    }
  }
}

TEST(Character, AssignedToAnUnboundOneGivesEverythingButTheBinding) {
  char const text[] = {0x20, static_cast<char>(0xAC), 0, 0};
  XoChar const source(text, kUnicode, kTurkish, 2);
  XoChar target = Narrow('a', kLatin2, kGerman);
  target = source;
  EXPECT_EQ(target.binding, nullptr);
  EXPECT_EQ(target.codeSet, kUnicode);
  EXPECT_EQ(target.language, kTurkish);
  EXPECT_EQ(target.byteOrder, 2);
  EXPECT_EQ(target.Code(), 0x20AC);
  XoChar const& self = target;
  target = self;
  EXPECT_EQ(target.Code(), 0x20AC);
}

TEST(Character, AssignedAByte) {
  XoString text("abc");
  text[2] = 'z';
  EXPECT_STREQ(text.StrGet(), "abz");
  // As it is, without a mapping.
  XoString cyrillic("abc");
  cyrillic.codeSet = kCyrillic;
  cyrillic[0] = static_cast<char>(0xE9);
  EXPECT_EQ(cyrillic.text[0], static_cast<char>(0xE9));
  XoChar unbound = Narrow('a');
  unbound = static_cast<char>(0xE9);
  EXPECT_EQ(unbound.value, 0xE9);
  EXPECT_EQ(unbound.Code(), 0xE9);
}

TEST(Character, OfTwoBytesAssignedAByteTakesItAsItsFirst) {
  WideUnit unit{{0x2D, 0x4E}};
  XoChar(unit.bytes, kUnicode) = 'x';
  EXPECT_EQ(unit.Low(), 'x');
  EXPECT_EQ(unit.High(), 0x4E);
}

TEST(Character, AssignedACode) {
  WideUnit unit{};
  XoChar(unit.bytes, kUnicode, kNeutral, 1) = static_cast<unsigned short>(0x20AC);
  EXPECT_EQ(unit.Low(), 0xAC);
  EXPECT_EQ(unit.High(), 0x20);
  XoChar(unit.bytes, kUnicode, kNeutral, 2) = static_cast<unsigned short>(0x20AC);
  EXPECT_EQ(unit.Low(), 0x20);
  EXPECT_EQ(unit.High(), 0xAC);

  char text[] = "abc";
  XoChar(text + 1, kLatin1) = static_cast<unsigned short>(0x1258);
  EXPECT_STREQ(text, "aXc");

  XoChar wide = Unicode('a');
  wide = static_cast<unsigned short>(0x20AC);
  EXPECT_EQ(wide.Code(), 0x20AC);
  wide.byteOrder = 2;
  wide = static_cast<unsigned short>(0x20AC);
  EXPECT_EQ(wide.value, 0xAC20);
  EXPECT_EQ(wide.Code(), 0x20AC);
}

TEST(Character, OfAStringWithoutTextCannotBeWritten) {
  XoString const none(kLatin1, kNeutral);
  XoString const other(kUnicode, kNeutral);
  XoChar end = none[0];
  end = Narrow('x');
  end = 'x';
  end = static_cast<unsigned short>('x');
  EXPECT_EQ(none.IsEmpty(), 1);
  EXPECT_EQ(other.IsEmpty(), 1);
  EXPECT_EQ(none[0].Code(), 0);
}

// Comparison.

TEST(Character, ComparesByItsOrder) {
  EXPECT_LT(Narrow('a').Compare(Narrow('b')), 0);
  EXPECT_GT(Narrow('b').Compare(Narrow('a')), 0);
  EXPECT_EQ(Narrow('a').Compare(Narrow('a')), 0);
  // Lower case comes first; a letter before its accented form.
  EXPECT_LT(Narrow('a').Compare(Narrow('A')), 0);
  EXPECT_LT(Narrow('e').Compare(Narrow(0xE9)), 0);
  EXPECT_EQ(Narrow('a').Compare(Narrow('A'), 0x0010 | 0x0020), 0);
  EXPECT_EQ(Narrow('e').Compare(Narrow(0xE9), 0x0010 | 0x0040), 0);
  // Across code sets: U+0416 in Unicode and in ISO 8859-5.
  EXPECT_EQ(Unicode(0x416).Compare(Narrow(0xB6, kCyrillic)), 0);
}

TEST(Character, ComparesWhateverItsByteOrder) {
  char const text[] = {0, 'b', 0, 0};
  XoChar const big(text, kUnicode, kNeutral, 2);
  EXPECT_EQ(big.Compare(Unicode('b')), 0);
  EXPECT_GT(big.Compare(Unicode('a')), 0);
  EXPECT_LT(Unicode('a').Compare(big), 0);
}

TEST(Character, OperatorsTestTheComparison) {
  XoChar const a = Narrow('a');
  XoChar const b = Narrow('b');
  EXPECT_TRUE(a == a && a <= a && a >= a && a != b && a < b && a <= b && b > a && b >= a);
  EXPECT_FALSE(a != a || a < a || a > a || a == b || a > b || a >= b || b < a || b <= a);
  EXPECT_TRUE(a == 'a' && a != 'b' && a < 'b' && a <= 'b' && b > 'a' && b >= 'a');
  EXPECT_FALSE(a == 'b' || a != 'a' || b < 'a' || b <= 'a' || a > 'b' || a >= 'b');
  using Code = unsigned short;
  EXPECT_TRUE(a == Code{'a'} && a != Code{'b'} && a < Code{'b'} && a <= Code{'b'} &&
              b > Code{'a'} && b >= Code{'a'});
  EXPECT_FALSE(a == Code{'b'} || a != Code{'a'} || b < Code{'a'} || b <= Code{'a'} ||
               a > Code{'b'} || a >= Code{'b'});
  EXPECT_TRUE(Unicode(0x416) == Code{0x416});
  // A plain byte is of the default 8-bit code set whatever that of the left-hand one.
  EXPECT_TRUE(Unicode(0xE9) == static_cast<char>(0xE9));
  EXPECT_FALSE(Narrow(0xE9, kCyrillic) == static_cast<char>(0xE9));
}

TEST(Character, RightHandWildcardMatchesAnyCharacterWhereWildcardsAreOn) {
  for (int const code : std::initializer_list<int>{'a', 'Z', '7', '-', ' ', 0xE9}) {
    EXPECT_EQ(Narrow(code).Compare(Narrow('*'), 0), 0) << code;
    EXPECT_EQ(Narrow(code).Compare(Narrow('?'), 0), 0) << code;
    EXPECT_NE(Narrow(code).Compare(Narrow('*'), 0x0010), 0) << code;
    EXPECT_NE(Narrow(code).Compare(Narrow('?'), 0x0010), 0) << code;
  }
  // The left-hand one is no pattern.
  EXPECT_NE(Narrow('*').Compare(Narrow('a'), 0), 0);
}

TEST(Character, ComparesUnderTheDefaultOperator) {
  unsigned short const before = XoLanguageContext::GetDefaultCmpOp();
  XoLanguageContext::SetDefaultCmpOp(0x0010 | 0x0020);
  EXPECT_TRUE(Narrow('a') == Narrow('A'));
  EXPECT_TRUE(Narrow('a') == 'A');
  EXPECT_EQ(Narrow('a').Compare(Narrow('A'), 65535), 0);
  XoLanguageContext::SetDefaultCmpOp(before);
  EXPECT_FALSE(Narrow('a') == Narrow('A'));
}

// Classes.

int ClassesOf(XoChar const& character) {
  return character.IsSpace() + character.IsSymbol() + character.IsDigit() + character.IsAlpha() +
         character.IsHan();
}

TEST(Character, IsOfTheClassOfItsOrderAndOfNoOther) {
  for (unsigned code = 0; code < 65536; ++code) {
    XoChar const character = Unicode(static_cast<unsigned short>(code));
    unsigned const order = character.CharOrder();
    ASSERT_EQ(ClassesOf(character), 1) << code;
    ASSERT_EQ(character.IsSpace() != 0, order < 80) << code;
    ASSERT_EQ(character.IsSymbol() != 0, order >= 80 && order <= 16127) << code;
    ASSERT_EQ(character.IsDigit() != 0, order >= 16128 && order <= 16383) << code;
    ASSERT_EQ(character.IsAlpha() != 0, order >= 16384 && order <= 32767) << code;
    ASSERT_EQ(character.IsHan() != 0, order >= 32768) << code;
  }
}

TEST(Character, ClassesOfAscii) {
  for (unsigned char const set :
       std::initializer_list<unsigned char>{1, 2, 5, 15, 24, 32, 253, 0}) {
    for (unsigned code = 33; code < 127; ++code) {
      XoChar const character = Unicode(static_cast<unsigned short>(code)).MapTo(set);
      bool const digit = code >= '0' && code <= '9';
      bool const letter = (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
      ASSERT_EQ(character.IsDigit() != 0, digit) << int{set} << ' ' << code;
      ASSERT_EQ(character.IsAlpha() != 0, letter) << int{set} << ' ' << code;
      ASSERT_EQ(character.IsSymbol() != 0, !digit && !letter) << int{set} << ' ' << code;
    }
    EXPECT_NE(Unicode(' ').MapTo(set).IsSpace(), 0) << int{set};
  }
}

TEST(Character, BeyondTheTablesHasItsCodeForAnOrder) {
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(kUnicode)->orderTable;
  unsigned letters = 0, ideographs = 0;
  for (unsigned code = 512; code < 65536; ++code) {
    unsigned short const unit = static_cast<unsigned short>(code);
    if (table.GetEntry(unit) != nullptr) continue;
    XoChar const character = Unicode(unit);
    ASSERT_EQ(character.CharOrder(), code);
    if (code >= 16384 && code <= 32767) {
      ASSERT_NE(character.IsAlpha(), 0) << code;
      ++letters;
    }
    if (code >= 32768) {
      ASSERT_NE(character.IsHan(), 0) << code;
      ++ideographs;
    }
  }
  // The greater part of the unified ideographs stands in both ranges.
  EXPECT_GT(letters, 10000u);
  EXPECT_GT(ideographs, 10000u);
  EXPECT_NE(Unicode(0x4E2D).IsAlpha(), 0);
  EXPECT_NE(Unicode(0x9FA5).IsHan(), 0);
}

TEST(Character, OrderIsThatOfTheEntryInEveryLanguage) {
  // A language changes orders only where texts are read, not here.
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(kUnicode)->orderTable;
  for (unsigned code = 0; code < 0x600; ++code) {
    unsigned short const unit = static_cast<unsigned short>(code);
    CharOrderEntry const* const entry = table.GetEntry(unit);
    for (unsigned char language = 0; language < 48; ++language) {
      ASSERT_EQ(Unicode(unit, language).CharOrder(), entry != nullptr ? entry->order : code);
    }
  }
}

TEST(Character, OrderOfACodeSetWithoutTableIsThatOfTheUnicodeForm) {
  XoCodeSet const& ebcdic = *XoLanguageContext::QueryCodeSet(kEbcdic);
  ASSERT_EQ(ebcdic.orderTable, nullptr);
  for (int code = 0; code < 256; ++code) {
    unsigned short const unicode = ebcdic.ToUnicode(static_cast<unsigned short>(code));
    EXPECT_EQ(Narrow(code, kEbcdic).CharOrder(), Unicode(unicode).CharOrder()) << code;
  }
  // 0xC1 is A in EBCDIC.
  EXPECT_EQ(Narrow(0xC1, kEbcdic).CharOrder(), Narrow('A').CharOrder());
}

TEST(Character, OrderWithoutCodeSetIsThatOfTheNativeOne) {
  unsigned char const native = XoLanguageContext::GetNativeCodeSet();
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(Narrow(code, 0).CharOrder(), Narrow(code, native).CharOrder()) << code;
  }
}

TEST(Character, OfAnUnknownCodeSetHasAnOrder) {
  for (unsigned char const set :
       std::initializer_list<unsigned char>{kUnknownNarrow, kUnknownWide}) {
    XoChar const character(static_cast<unsigned short>('a'), set, kNeutral);
    EXPECT_EQ(ClassesOf(character), 1);
    EXPECT_EQ(character.ToUpper().Code(), 'a');
    EXPECT_EQ(character.ToLower().Code(), 'a');
    EXPECT_EQ(Unicode('a').MapTo(set).Code(), 'a');
    EXPECT_EQ(Unicode('a').MapTo(set).codeSet, set);
    EXPECT_EQ(character.MapTo(kUnicode).Code(), '?');
  }
}

// Mapping.

TEST(Character, MappedToNoneOrItsOwnSetIsACopy) {
  char text[] = "\xE9";
  XoChar const bound(text, kLatin1, kTurkish);
  for (unsigned char const set : std::initializer_list<unsigned char>{0, kLatin1}) {
    XoChar const mapped = bound.MapTo(set);
    EXPECT_EQ(mapped.binding, nullptr);
    EXPECT_EQ(mapped.Code(), 0xE9);
    EXPECT_EQ(mapped.codeSet, kLatin1);
    EXPECT_EQ(mapped.language, kTurkish);
  }
}

TEST(Character, MappedTakesTheCodeOfTheOtherSet) {
  XoChar const mapped = Narrow(0xB6, kCyrillic, kTurkish).MapTo(kUnicode);
  EXPECT_EQ(mapped.Code(), 0x416);
  EXPECT_EQ(mapped.codeSet, kUnicode);
  EXPECT_EQ(mapped.language, kTurkish);
  EXPECT_EQ(mapped.byteOrder, 1);
  EXPECT_EQ(mapped.binding, nullptr);
  EXPECT_EQ(mapped.MapTo(kCyrillic).Code(), 0xB6);
  // U+20AC is 0xA4 in ISO 8859-15, which ISO 8859-1 lacks.
  EXPECT_EQ(Unicode(0x20AC).MapTo(11).Code(), 0xA4);
  EXPECT_EQ(Unicode(0x20AC).MapTo(kLatin1).Code(), '?');
  // The question mark of EBCDIC.
  EXPECT_EQ(Unicode(0x20AC).MapTo(kEbcdic).Code(), 0x6F);
  EXPECT_EQ(Unicode('A').MapTo(kEbcdic).Code(), 0xC1);
}

TEST(Character, MappedTo255TakesTheDefaultWideSet) {
  XoChar const mapped = Narrow(0xB6, kCyrillic).MapTo(255);
  EXPECT_EQ(mapped.codeSet, XoLanguageContext::GetDefault16CodeSet());
  EXPECT_EQ(mapped.Code(), 0x416);
}

TEST(Character, MappedFromNoneIsOfTheNativeSet) {
  XoCodeSet const& native = *XoLanguageContext::QueryCodeSet(XoLanguageContext::GetNativeCodeSet());
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(Narrow(code, 0).MapTo(kUnicode).Code(),
              native.ToUnicode(static_cast<unsigned short>(code)))
        << code;
  }
}

TEST(Character, MappedFromNoneToTheNativeSetIsOfThatSet) {
  unsigned char const native = XoLanguageContext::GetNativeCodeSet();
  XoChar const mapped = Narrow(0xE9, 0, kTurkish).MapTo(native);
  EXPECT_EQ(mapped.Code(), 0xE9);
  EXPECT_EQ(mapped.codeSet, native);
  EXPECT_EQ(mapped.language, kTurkish);
}

// Case.

TEST(Character, CaseWithoutCodeSetIsThatOfAscii) {
  for (int code = 0; code < 256; ++code) {
    bool const upper = code >= 'A' && code <= 'Z';
    bool const lower = code >= 'a' && code <= 'z';
    XoChar const character = Narrow(code, 0);
    EXPECT_EQ(character.ToUpper().Code(), lower ? code - 32 : code);
    EXPECT_EQ(character.ToLower().Code(), upper ? code + 32 : code);
    EXPECT_EQ(character.ToUpper().codeSet, 0);
    EXPECT_EQ(character.ToLower().codeSet, 0);
  }
}

TEST(Character, CaseOfLatin1) {
  for (int code = 0; code < 256; ++code) {
    bool const upper =
        (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
    bool const lower =
        (code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7);
    int const above = code == 0xDF ? 'S' : lower ? code - 32 : code;
    EXPECT_EQ(Narrow(code).ToUpper().Code(), above) << code;
    EXPECT_EQ(Narrow(code).ToLower().Code(), upper ? code + 32 : code) << code;
  }
}

TEST(Character, CaseStaysInTheCodeSetAndLanguage) {
  // 0xB6 and 0xD6 in ISO 8859-5: Cyrillic letter zhe.
  XoChar const lower = Narrow(0xB6, kCyrillic, kGerman).ToLower();
  EXPECT_EQ(lower.Code(), 0xD6);
  EXPECT_EQ(lower.codeSet, kCyrillic);
  EXPECT_EQ(lower.language, kGerman);
  EXPECT_EQ(lower.ToUpper().Code(), 0xB6);
  // 0x81 and 0xC1 in EBCDIC: a and A.
  EXPECT_EQ(Narrow(0x81, kEbcdic).ToUpper().Code(), 0xC1);
  EXPECT_EQ(Narrow(0xC1, kEbcdic).ToLower().Code(), 0x81);
}

TEST(Character, CaseGoesByTheLanguage) {
  EXPECT_EQ(Unicode('i').ToUpper().Code(), 'I');
  EXPECT_EQ(Unicode('i', kTurkish).ToUpper().Code(), 0x130);
  EXPECT_EQ(Unicode('I').ToLower().Code(), 'i');
  EXPECT_EQ(Unicode('I', kTurkish).ToLower().Code(), 0x131);
}

TEST(Character, WithoutOtherCaseComesBackUnchanged) {
  for (unsigned short const code :
       std::initializer_list<unsigned short>{'1', '-', ' ', 0x4E2D, 0x5D0, 0xFFFF}) {
    XoChar const character = Unicode(code, kGerman);
    EXPECT_EQ(character.ToUpper().Code(), code);
    EXPECT_EQ(character.ToLower().Code(), code);
    EXPECT_EQ(character.ToUpper().codeSet, kUnicode);
    EXPECT_EQ(character.ToUpper().language, kGerman);
  }
  EXPECT_EQ(Unicode('A').ToUpper().Code(), 'A');
  EXPECT_EQ(Unicode('a').ToLower().Code(), 'a');
}

TEST(Character, UpperCaseOfSeveralCharactersGivesTheFirstAndServesTheRest) {
  char const text[] = "\xDFx";
  XoStringIterator iterator(text, kLatin1, kNeutral, 1);
  EXPECT_EQ(Narrow(0xDF).ToUpper().Code(), 'S');
  EXPECT_EQ((*iterator).ToUpper(&iterator).Code(), 'S');
  EXPECT_EQ(iterator.overflowCodeSet, kLatin1);
  EXPECT_EQ((*iterator).Code(), 'S');
  ++iterator;
  EXPECT_EQ((*iterator).Code(), 'x');
}

TEST(Character, UpperCaseOfOneCharacterLeavesTheIteratorAlone) {
  char const text[] = "ax";
  XoStringIterator iterator(text, kLatin1, kNeutral, 1);
  EXPECT_EQ((*iterator).ToUpper(&iterator).Code(), 'A');
  EXPECT_EQ(iterator.overflow, nullptr);
}

TEST(Character, LowerCaseNeverServesMore) {
  // Capital I with dot above, whose full lower case has two characters.
  unsigned short const text[] = {0x130, 'x', 0};
  XoStringIterator iterator(text, kUnicode, kNeutral, 1);
  EXPECT_EQ((*iterator).ToLower(&iterator).Code(), 'i');
  EXPECT_EQ(iterator.overflow, nullptr);
}

}  // namespace
}  // namespace xo::test
