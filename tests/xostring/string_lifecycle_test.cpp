#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

/// Puts the text defaults back behind each test.
class StringConstruction : public testing::Test {
 protected:
  void TearDown() override {
    XoString::SetDefaultCodeSet(codeSet);
    XoString::SetDefaultLanguage(language);
  }

  unsigned char const codeSet = XoString::GetDefaultCodeSet();
  unsigned char const language = XoString::GetDefaultLanguage();
};

TEST(StringLayout, FourFieldsInOrder) {
  static_assert(std::is_standard_layout_v<XoString>);
  static_assert(!std::is_polymorphic_v<XoString>);
  EXPECT_EQ(offsetof(XoString, text), 0u);
  EXPECT_EQ(offsetof(XoString, size), sizeof(char*));
  EXPECT_EQ(offsetof(XoString, codeSet), sizeof(char*) + 2);
  EXPECT_EQ(offsetof(XoString, language), sizeof(char*) + 3);
  if (sizeof(char*) == 8) {
    EXPECT_EQ(sizeof(XoString), 16u);
  }
}

TEST_F(StringConstruction, WithoutArgumentsIsEmptyInTheDefaults) {
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  XoString const string;
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 7);
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_FALSE(string.IsNullValue());
}

TEST_F(StringConstruction, TextTakesTheDefaultOfItsWidthAndNotTheDefaultOfNewStrings) {
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  unsigned short const wide[] = {'w', 0};
  for (XoString const& narrow : {XoString('a'), XoString(static_cast<unsigned char>('a')),
                                 XoString(short{1}), XoString(1), XoString(1u), XoString(1LL),
                                 XoString(1ULL), XoString(1.0), XoString("a"), XoString("a", 1)}) {
    EXPECT_EQ(narrow.codeSet, XoString::GetDefault8CodeSet());
    EXPECT_EQ(narrow.language, 7);
    EXPECT_EQ(narrow.size, 2);
  }
  for (XoString const& string :
       {XoString(static_cast<unsigned short>('w')), XoString(wide), XoString(wide, 1)}) {
    EXPECT_EQ(string.codeSet, XoString::GetDefault16CodeSet());
    EXPECT_EQ(string.language, 7);
    EXPECT_EQ(string.size, 4);
  }
}

TEST_F(StringConstruction, TwoBytesAreCodeSetAndLanguageOfAnEmptyString) {
  auto const byte = [](int value) { return static_cast<unsigned char>(value); };
  XoString const string(byte(65), byte(66));
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.codeSet, 65);
  EXPECT_EQ(string.language, 66);
  XoString const zeros(byte(0), byte(0));
  EXPECT_EQ(zeros.codeSet, 0);
  EXPECT_EQ(zeros.language, 0);
}

TEST_F(StringConstruction, TwoHundredFiftyFiveStandsForTheDefaults) {
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  XoString const string(kByDefault, kByDefault);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 7);
}

TEST_F(StringConstruction, ACharacterIsATextOfOne) {
  EXPECT_EQ(TextOf(XoString('a')), "a");
  EXPECT_EQ(TextOf(XoString(static_cast<char>(0xE9))), "\xE9");
  EXPECT_EQ(TextOf(XoString(static_cast<unsigned char>(0xE9))), "\xE9");
}

TEST_F(StringConstruction, TheZeroCharacterGivesNoText) {
  for (XoString const& string : {XoString(char{0}), XoString(static_cast<unsigned char>(0)),
                                 XoString(static_cast<unsigned short>(0))}) {
    EXPECT_EQ(string.text, nullptr);
    EXPECT_EQ(string.size, 0);
    EXPECT_FALSE(string.IsNullValue());
  }
}

TEST_F(StringConstruction, AnUnsignedShortIsAWideCharacterAndNoNumber) {
  XoString const string(static_cast<unsigned short>(65));
  EXPECT_EQ(WideTextOf(string), u"A");
  EXPECT_EQ(string.size, 4);
}

TEST_F(StringConstruction, IntegersAreWrittenInDecimal) {
  EXPECT_EQ(TextOf(XoString(short{-32768})), "-32768");
  EXPECT_EQ(TextOf(XoString(0)), "0");
  EXPECT_EQ(TextOf(XoString(std::numeric_limits<int>::min())), "-2147483648");
  EXPECT_EQ(TextOf(XoString(2147483647u)), "2147483647");
  EXPECT_EQ(TextOf(XoString(std::numeric_limits<long long>::min())), "-9223372036854775808");
  EXPECT_EQ(TextOf(XoString(std::numeric_limits<unsigned long long>::max())),
            "18446744073709551615");
  EXPECT_EQ(TextOf(XoString(-7L)), "-7");
  EXPECT_EQ(TextOf(XoString(7UL)), "7");
}

TEST_F(StringConstruction, AnUnsignedIntIsReadAsSigned) {
  EXPECT_EQ(TextOf(XoString(4294967295u)), "-1");
  EXPECT_EQ(TextOf(XoString(2147483648u)), "-2147483648");
  // 3000000000 - 4294967296.
  EXPECT_EQ(TextOf(XoString(3000000000u)), "-1294967296");
}

TEST_F(StringConstruction, ADoubleHasSeventeenDigits) {
  EXPECT_EQ(TextOf(XoString(0.1)), "0.10000000000000001");
  EXPECT_EQ(TextOf(XoString(1.0)), "1");
  // The power is 1180591620717411303424.
  EXPECT_EQ(TextOf(XoString(-0x1p70)), "-1.1805916207174113e+21");
  EXPECT_EQ(TextOf(XoString(0x1p-1074)), "4.9406564584124654e-324");
  EXPECT_EQ(TextOf(XoString(std::numeric_limits<double>::infinity())), "Infinity");
  EXPECT_EQ(TextOf(XoString(-std::numeric_limits<double>::infinity())), "-Infinity");
  EXPECT_EQ(TextOf(XoString(std::numeric_limits<double>::quiet_NaN())), "NaN");
}

TEST_F(StringConstruction, TextIsTakenUpToItsTerminator) {
  XoString const string("abc");
  EXPECT_EQ(TextOf(string), "abc");
  EXPECT_EQ(string.size, 4);
  XoString const wide(Units(u"abc").data());
  EXPECT_EQ(WideTextOf(wide), u"abc");
  EXPECT_EQ(wide.size, 8);
}

TEST_F(StringConstruction, ATextOfNoCharacterIsATerminator) {
  EXPECT_NE(XoString("").text, nullptr);
  EXPECT_EQ(XoString("").size, 1);
  unsigned short const nothing[] = {0};
  EXPECT_EQ(XoString(nothing).size, 2);
  EXPECT_EQ(XoString("", 9).size, 1);
  EXPECT_EQ(XoString(nothing, 9).size, 2);
}

TEST_F(StringConstruction, ANullPointerGivesAnEmptyString) {
  char const* const narrow = nullptr;
  unsigned short const* const wide = nullptr;
  for (XoString const& string : {XoString(narrow), XoString(narrow, 5), XoString(narrow, 65535)}) {
    EXPECT_EQ(string.text, nullptr);
    EXPECT_EQ(string.codeSet, XoString::GetDefault8CodeSet());
  }
  for (XoString const& string : {XoString(wide), XoString(wide, 5), XoString(wide, 65535)}) {
    EXPECT_EQ(string.text, nullptr);
    EXPECT_EQ(string.codeSet, XoString::GetDefault16CodeSet());
  }
}

TEST_F(StringConstruction, ALengthBoundsTheText) {
  std::string const all = "abcdef";
  for (unsigned short length = 1; length < 9; ++length) {
    EXPECT_EQ(TextOf(XoString("abcdef", length)), all.substr(0, length));
    EXPECT_EQ(XoString(Units(u"abcdef").data(), length).Len(), std::min<unsigned>(length, 6));
  }
  EXPECT_EQ(XoString("abcdef", 3).size, 4);
  EXPECT_EQ(TextOf(XoString("abcdef", 6)), "abcdef");
  EXPECT_EQ(TextOf(XoString("abcdef", 100)), "abcdef");
  EXPECT_EQ(XoString("abcdef", 100).size, 7);
  EXPECT_EQ(TextOf(XoString("abcdef", 65535)), "abcdef");
  EXPECT_EQ(XoString("abcdef", 0).text, nullptr);
  std::vector<unsigned short> const units = Units(u"abcdef");
  EXPECT_EQ(WideTextOf(XoString(units.data(), 3)), u"abc");
  EXPECT_EQ(WideTextOf(XoString(units.data(), 65535)), u"abcdef");
  EXPECT_EQ(XoString(units.data(), 0).text, nullptr);
}

TEST_F(StringConstruction, WithinItsLengthATextNeedsNoTerminator) {
  std::unique_ptr<char[]> const narrow(new char[3]{'a', 'b', 'c'});
  EXPECT_EQ(TextOf(XoString(narrow.get(), 3)), "abc");
  std::unique_ptr<unsigned short[]> const wide(new unsigned short[3]{'a', 'b', 'c'});
  EXPECT_EQ(WideTextOf(XoString(wide.get(), 3)), u"abc");
}

TEST_F(StringConstruction, AZeroUnitEndsTheTextWithinItsLength) {
  char const narrow[] = {'a', 'b', 0, 'c'};
  EXPECT_EQ(TextOf(XoString(narrow, 4)), "ab");
  unsigned short const wide[] = {'a', 0x100, 0, 'c'};
  EXPECT_EQ(WideTextOf(XoString(wide, 4)), u"a\u0100");
}

TEST_F(StringConstruction, ACopyHasABufferOfItsOwn) {
  XoString const source = Narrow("abc", kKoi8, 9);
  XoString copy(source);
  EXPECT_NE(copy.text, source.text);
  EXPECT_EQ(TextOf(copy), "abc");
  EXPECT_EQ(copy.size, 4);
  EXPECT_EQ(copy.codeSet, kKoi8);
  EXPECT_EQ(copy.language, 9);
  copy.text[0] = 'x';
  EXPECT_EQ(TextOf(source), "abc");
}

TEST_F(StringConstruction, ACopyOfANullStringIsNull) {
  XoString null;
  null.SetNullValue();
  XoString const copy(null);
  EXPECT_TRUE(copy.IsNullValue());
  EXPECT_EQ(copy.text, nullptr);
  EXPECT_EQ(copy.codeSet, 0);
  XoString const otherNull(kOrders, 0);
  EXPECT_TRUE(XoString(otherNull).IsNullValue());
}

TEST_F(StringConstruction, AMoveTakesTheTextAndLeavesCodeSetAndLanguage) {
  XoString source = Narrow("abc", kKoi8, 9);
  char const* const text = source.text;
  XoString const moved(std::move(source));
  EXPECT_EQ(moved.text, text);
  EXPECT_EQ(moved.size, 4);
  EXPECT_EQ(moved.codeSet, kKoi8);
  EXPECT_EQ(moved.language, 9);
  EXPECT_EQ(source.text, nullptr);  // NOLINT: what is left is told
  EXPECT_EQ(source.size, 0);
  EXPECT_EQ(source.codeSet, kKoi8);
}

TEST(StringUnits, TheCodeSetAloneTellsTheWidth) {
  XoString string = Wide(u"\u6162\u6364");
  for (int codeSet = 0; codeSet < 256; ++codeSet) {
    string.codeSet = static_cast<unsigned char>(codeSet);
    EXPECT_EQ(string.Len(), codeSet <= 224 ? 4 : 2) << codeSet;
  }
  string.codeSet = kUnicode;
}

TEST(StringUnits, AZeroByteInAWideCharacterEndsNothing) {
  XoString const string = Wide(u"\u0100\u0001\u4E00");
  EXPECT_EQ(string.Len(), 3);
  EXPECT_FALSE(string.IsEmpty());
}

TEST(NullString, IsLanguage254OrOrdersWithoutLanguage) {
  XoString string;
  for (int codeSet = 0; codeSet < 256; ++codeSet) {
    for (int language = 0; language < 256; ++language) {
      string.codeSet = static_cast<unsigned char>(codeSet);
      string.language = static_cast<unsigned char>(language);
      bool const isNull = language == 254 || (codeSet == 254 && language == 0);
      ASSERT_EQ(string.IsNullValue() != 0, isNull) << codeSet << ' ' << language;
    }
  }
}

TEST(NullString, SetNullValueFreesTheTextAndMarks) {
  XoString string = Wide(u"abc", kUnicode, 9);
  EXPECT_EQ(string.SetNullValue(), 0);
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
  EXPECT_EQ(string.codeSet, 0);
  EXPECT_EQ(string.language, kNullLanguage);
  EXPECT_TRUE(string.IsNullValue());
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_TRUE(!string);
  EXPECT_EQ(string.Len(), 0);
}

TEST(NullString, AssignmentOfTextEndsNull) {
  XoString string;
  string.SetNullValue();
  string = "a";
  EXPECT_FALSE(string.IsNullValue());
  string.SetNullValue();
  string = Units(u"a").data();
  EXPECT_FALSE(string.IsNullValue());
  string.SetNullValue();
  string = Narrow("a");
  EXPECT_FALSE(string.IsNullValue());
}

TEST(NullString, AnEditLeavesNull) {
  for (void (*edit)(XoString&) : {+[](XoString& string) { string.Insert(XoString("abc"), 0); },
                                  +[](XoString& string) { string.Fill(3, 'x'); },
                                  +[](XoString& string) { string.Expand(3, 'x'); }}) {
    XoString string;
    string.SetNullValue();
    edit(string);
    EXPECT_EQ(string.Len(), 3);
    EXPECT_TRUE(string.IsNullValue());
  }
}

TEST(NullString, AssignmentOfANullStringMakesNull) {
  XoString null;
  null.SetNullValue();
  XoString string("abc");
  string = null;
  EXPECT_TRUE(string.IsNullValue());
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
}

TEST(EmptyText, IsEmptyWithNoTextAndWithATerminatorAlone) {
  EXPECT_TRUE(XoString().IsEmpty());
  EXPECT_TRUE(XoString("").IsEmpty());
  EXPECT_TRUE(!XoString(""));
  EXPECT_FALSE(XoString("a").IsEmpty());
  EXPECT_FALSE(!XoString("a"));
  EXPECT_FALSE(XoString("").IsNullValue());
}

TEST(EmptyText, StrGetIsNeverNull) {
  XoString const string;
  ASSERT_NE(string.StrGet(), nullptr);
  EXPECT_EQ(string.StrGet()[0], 0);
  EXPECT_EQ(string.StrGet()[1], 0);
  XoString const text("a");
  EXPECT_EQ(text.StrGet(), text.text);
}

TEST(EmptyText, EmptyStringHasTheDefaultsOfLoad) {
  unsigned char const codeSet = XoString::GetDefaultCodeSet();
  unsigned char const language = XoString::GetDefaultLanguage();
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  XoString const& empty = XoString::EmptyString();
  XoString::SetDefaultCodeSet(codeSet);
  XoString::SetDefaultLanguage(language);
  EXPECT_EQ(&empty, &XoString::EmptyString());
  EXPECT_EQ(empty.text, nullptr);
  EXPECT_EQ(empty.size, 0);
  EXPECT_EQ(empty.codeSet, codeSet);
  EXPECT_EQ(empty.language, language);
}

TEST_F(StringConstruction, InitMakesAStringOfRawMemory) {
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  XoString string;
  string.size = 999;
  string.codeSet = 99;
  string.language = 99;
  string.Init();
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 7);
}

TEST(StringLifecycle, InitFreesNothing) {
  XoString owner("abc");
  XoString string;
  string.text = owner.text;
  string.size = owner.size;
  string.Init();
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(TextOf(owner), "abc");
}

TEST(StringLifecycle, DestroyZeroesAllFields) {
  for (bool const deactivate : {false, true}) {
    XoString string = Wide(u"abc", kUnicode, 9);
    for (int time = 0; time < 2; ++time) {
      if (deactivate) {
        string.d_deactivate();
      } else {
        string.Destroy();
      }
      EXPECT_EQ(string.text, nullptr);
      EXPECT_EQ(string.size, 0);
      EXPECT_EQ(string.codeSet, 0);
      EXPECT_EQ(string.language, 0);
      EXPECT_FALSE(string.IsNullValue());
    }
  }
}

TEST(StringLifecycle, DestructorLeavesZeroInTheMemory) {
  alignas(XoString) unsigned char memory[sizeof(XoString)];
  auto* const string = new (memory) XoString(Wide(u"abc", kUnicode, 9));
  string->~XoString();
  unsigned char const zero[offsetof(XoString, language) + 1] = {};
  EXPECT_EQ(std::memcmp(memory, zero, sizeof zero), 0);
}

TEST(StringLifecycle, DestructMovesTheText) {
  XoString target("old");
  XoString source = Wide(u"new", kUnicode, 9);
  char const* const text = source.text;
  target.Destruct(source);
  EXPECT_EQ(target.text, text);
  EXPECT_EQ(target.size, 8);
  EXPECT_EQ(target.codeSet, kUnicode);
  EXPECT_EQ(target.language, 9);
  EXPECT_EQ(source.text, nullptr);
  EXPECT_EQ(source.size, 0);
  EXPECT_EQ(source.codeSet, kUnicode);
  EXPECT_EQ(source.language, 9);
}

TEST(StringLifecycle, DestructOfItselfChangesNothing) {
  XoString string = Narrow("abc", kKoi8, 9);
  char const* const text = string.text;
  string.Destruct(string);
  EXPECT_EQ(string.text, text);
  EXPECT_EQ(string.size, 4);
  EXPECT_EQ(TextOf(string), "abc");
}

TEST(StringLifecycle, MoveAssignmentOfItselfChangesNothing) {
  XoString string("abc");
  XoString& same = string;
  string = std::move(same);
  EXPECT_EQ(TextOf(string), "abc");
}

TEST(StringAssignment, TakesCodeSetTextAndLanguage) {
  XoString string("old");
  XoString const source = Wide(u"new", kUnicode, 9);
  EXPECT_EQ(&(string = source), &string);
  EXPECT_EQ(WideTextOf(string), u"new");
  EXPECT_EQ(string.codeSet, kUnicode);
  EXPECT_EQ(string.language, 9);
  EXPECT_NE(string.text, source.text);
}

TEST(StringAssignment, ToItselfDoesNothing) {
  XoString string = Narrow("abc", kKoi8, 9);
  char const* const text = string.text;
  XoString const& same = string;
  string = same;
  EXPECT_EQ(string.text, text);
  EXPECT_EQ(TextOf(string), "abc");
}

TEST(StringAssignment, OfAnEmptyStringLeavesNoText) {
  XoString string("abc");
  string = XoString::EmptyString();
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
}

TEST_F(StringConstruction, AssignedTextTakesTheDefaultsOfItsWidth) {
  XoString::SetDefaultCodeSet(kKoi8);
  XoString::SetDefaultLanguage(7);
  XoString string = Wide(u"old", kUnicode, 9);
  EXPECT_EQ(&(string = "new"), &string);
  EXPECT_EQ(TextOf(string), "new");
  EXPECT_EQ(string.size, 4);
  EXPECT_EQ(string.codeSet, XoString::GetDefault8CodeSet());
  EXPECT_EQ(string.language, 7);
  string = Narrow("old", kKoi8, 9);
  EXPECT_EQ(&(string = Units(u"new").data()), &string);
  EXPECT_EQ(WideTextOf(string), u"new");
  EXPECT_EQ(string.codeSet, XoString::GetDefault16CodeSet());
  EXPECT_EQ(string.language, 7);
}

TEST_F(StringConstruction, AssignedNullPointersLeaveAnEmptyStringInTheDefaults) {
  XoString::SetDefaultLanguage(7);
  XoString string = Wide(u"old", kUnicode, 9);
  string = static_cast<char const*>(nullptr);
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.size, 0);
  EXPECT_EQ(string.codeSet, XoString::GetDefault8CodeSet());
  EXPECT_EQ(string.language, 7);
  string = Narrow("old", kKoi8, 9);
  string = static_cast<unsigned short const*>(nullptr);
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(string.codeSet, XoString::GetDefault16CodeSet());
  EXPECT_EQ(string.language, 7);
}

TEST(StringAssignment, OfNoCharacterGivesATerminator) {
  XoString string("abc");
  string = "";
  EXPECT_NE(string.text, nullptr);
  EXPECT_EQ(string.size, 1);
}

TEST(StringAssignment, OfAPartOfItsOwnText) {
  XoString string("abcdef");
  string = string.StrGet() + 2;
  EXPECT_EQ(TextOf(string), "cdef");
}

TEST(StringElement, IsTheCharacterBoundToItsPlace) {
  XoString narrow("abc");
  EXPECT_EQ(narrow[1].binding, narrow.text + 1);
  EXPECT_EQ(narrow[1].Code(), 'b');
  XoString wide = Wide(u"ab\u0416", kUnicode, 9);
  EXPECT_EQ(wide[2].binding, wide.text + 4);
  EXPECT_EQ(wide[2].Code(), 0x416);
  EXPECT_EQ(wide[2].codeSet, kUnicode);
  EXPECT_EQ(wide[2].language, 9);
}

TEST(StringElement, AtTheLengthIsTheTerminator) {
  XoString const string("abc");
  EXPECT_EQ(string[3].binding, string.text + 3);
  EXPECT_EQ(string[3].Code(), 0);
}

TEST_F(StringConstruction, AnElementOutsideTheTextIsUnbound) {
  XoString::SetDefaultLanguage(7);
  XoString const string = Narrow("abc", kKoi8, 9);
  for (int const index : {4, 5, 65535, 65536, 65537, std::numeric_limits<int>::max(), -1, -65536,
                          std::numeric_limits<int>::min()}) {
    XoChar const outside = string[index];
    EXPECT_EQ(outside.Code(), 0) << index;
    if (index < 0) continue;
    EXPECT_EQ(outside.binding, nullptr) << index;
    EXPECT_EQ(outside.codeSet, XoString::GetDefault16CodeSet());
    EXPECT_EQ(outside.language, 7);
  }
}

TEST(StringElement, AssignmentWritesIntoTheTextInItsCodeSet) {
  XoString string = Narrow("abc", kLatin2);
  string[1] = XoChar(static_cast<unsigned short>(0x11B), kUnicode);
  EXPECT_EQ(TextOf(string),
            "a\xEC"
            "c");
  XoChar const bound = string[0];
  XoChar copy(bound);
  copy = 'x';
  EXPECT_EQ(TextOf(string),
            "a\xEC"
            "c");
}

TEST(StringElement, OfAStringWithoutTextCannotBeWritten) {
  XoString string;
  EXPECT_EQ(string[0].Code(), 0);
  string[0] = 'x';
  string[0] = XoChar('x');
  string[0] = static_cast<unsigned short>('x');
  EXPECT_EQ(XoString().StrGet()[0], 0);
  EXPECT_TRUE(string.IsEmpty());
}

class NullPrintText : public testing::Test {
 protected:
  void TearDown() override { XoTypeMgr::SetNullPrintString(before); }
  XoString const before = XoTypeMgr::GetNullPrintString();
};

TEST_F(NullPrintText, IsAtFirstTheWordInBraces) {
  EXPECT_EQ(TextOf(XoTypeMgr::GetNullPrintString()), "{NULL}");
  EXPECT_FALSE(XoTypeMgr::GetNullPrintString().IsNullValue());
}

TEST_F(NullPrintText, IsTheOneTextOfTheProcess) {
  EXPECT_EQ(&NullPrintString, &XoTypeMgr::GetNullPrintString());
  XoTypeMgr::SetNullPrintString("none");
  EXPECT_EQ(TextOf(NullPrintString), "none");
}

TEST_F(NullPrintText, SettingTakesACopy) {
  XoString own = Wide(u"none", kUnicode, 9);
  XoTypeMgr::SetNullPrintString(own);
  own = "changed";
  XoString const& set = XoTypeMgr::GetNullPrintString();
  EXPECT_EQ(WideTextOf(set), u"none");
  EXPECT_EQ(set.codeSet, kUnicode);
  EXPECT_EQ(set.language, 9);
  XoTypeMgr::SetNullPrintString(set);
  EXPECT_EQ(WideTextOf(set), u"none");
  XoTypeMgr::SetNullPrintString(XoString::EmptyString());
  EXPECT_TRUE(set.IsEmpty());
}

}  // namespace
}  // namespace xo::test
