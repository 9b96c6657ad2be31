#include <gtest/gtest.h>

#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

template <class Identifier>
std::string Printed(Identifier const& value, char const* format = nullptr) {
  XoString out("before");
  EXPECT_EQ(&value.PrintToXoString(out, format), &out);
  return out.StrGet();
}

template <class Identifier>
Identifier Scanned(std::string const& text, char const* format = nullptr,
                   Identifier value = Identifier{}) {
  value.ScanFromXoString(XoString(text.c_str()), format);
  return value;
}

/// All fields of an identifier, for comparison and messages.
std::string Fields(XoObjId const& v) {
  return "B" + std::to_string(v.block) + " L" + std::to_string(v.low) + " H" +
         std::to_string(v.high);
}
std::string Fields(XoClassId const& v) {
  return "C" + std::to_string(v.classNumber) + " V" + std::to_string(v.version);
}
std::string Fields(XoRef const& v) {
  return Fields(XoObjId{v.block, v.low, v.high}) + " D" + std::to_string(v.database) + " " +
         Fields(XoClassId{v.classNumber, v.version});
}
std::string Fields(XoLocalRef const& v) {
  return Fields(XoObjId{v.block, v.low, v.high}) + " " +
         Fields(XoClassId{v.classNumber, v.version});
}

std::string Object(std::string const& text, char const* format = nullptr) {
  return Fields(Scanned(text, format, XoObjId{99, 99, 99}));
}
std::string Class(std::string const& text, char const* format = nullptr) {
  return Fields(Scanned(text, format, XoClassId{99, 99}));
}
std::string Reference(std::string const& text, char const* format = nullptr) {
  return Fields(Scanned(text, format, XoRef{99, 99, 99, 99, 99, 99}));
}

constexpr XoRef kReference{3, 2, 1, 5, 7, 9};

TEST(IdentifierPrint, UsesTheDefaultOfTheClass) {
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}), "(1-2#3)");
  EXPECT_EQ(Printed(XoClassId{7, 9}), "(7v9)");
  EXPECT_EQ(Printed(kReference), "(5:1-2#3, 7)");
  EXPECT_EQ(Printed(XoLocalRef{3, 2, 1, 7, 9}), "(1-2#3,7)");
  EXPECT_EQ(Printed(XoObjId{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFF}), "(65535-4294967295#4294967295)");
}

TEST(IdentifierPrint, OfNullIsTheNullPrintString) {
  EXPECT_EQ(Printed(XoObjId{3, 0, 0}, "%H"), "{NULL}");
  EXPECT_EQ(Printed(XoRef{3, 0, 0, 5, 7, 9}, ""), "{NULL}");
  EXPECT_EQ(Printed(XoLocalRef{3, 0, 0, 7, 9}), "{NULL}");
  EXPECT_EQ(Printed(XoClassId{65535, 65535}), "{NULL}");
  EXPECT_EQ(Printed(XoClassId{65535, 0}), "(65535v0)");
  EXPECT_EQ(Printed(XoClassId{0, 0}), "(0v0)");
}

TEST(IdentifierPrint, KnowsTheLettersOfItsClassAlone) {
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%B%L%H %C%V%D%x%%|"), "321 CVDx%|");
  EXPECT_EQ(Printed(XoClassId{7, 9}, "%C%V %B%L%H%D%%"), "79 BLHD%");
  EXPECT_EQ(Printed(kReference, "%B %L %H %D %C %V %b"), "3 2 1 5 7 9 b");
  EXPECT_EQ(Printed(XoLocalRef{3, 2, 1, 7, 9}, "%B %L %H %D %C %V"), "3 2 1 0 7 9");
}

TEST(IdentifierPrint, CountsThroughPositionalConversions) {
  EXPECT_EQ(Printed(kReference, "(%hu:%hu-%lu#%lu, %hu)"), "(5:1-2#3, 7)");
  EXPECT_EQ(Printed(kReference, "%hu%hu%lu%lu%hu|%hu%lu"), "51237|00");
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%hu-%lu#%lu|%hu %lu"), "1-2#3|0 0");
  EXPECT_EQ(Printed(XoClassId{7, 9}, "%huv%hu|%hu"), "7v9|0");
}

TEST(IdentifierPrint, OfAPositionalLetterOutOfPlaceIsZero) {
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%lu %hu %lu"), "0 0 3");
  EXPECT_EQ(Printed(XoClassId{7, 9}, "%lu %hu"), "0 9");
  // The letters do not count as positions.
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%H%B%hu"), "131");
}

TEST(IdentifierPrint, PositionalConversionTakesTheNextCharacterWhateverItIs) {
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%h%L"), "1L");
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "%h"), "1");
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, "a%"), "a");
}

TEST(IdentifierPrint, OfAnEmptyFormatIsEmpty) {
  EXPECT_EQ(Printed(XoObjId{3, 2, 1}, ""), "");
  EXPECT_EQ(Printed(XoClassId{3, 2}, ""), "");
  EXPECT_EQ(Printed(kReference, ""), "");
}

TEST(IdentifierPrint, HasAsManyCharactersAsADateAtMost) {
  std::string format;
  for (int i = 0; i < 300; ++i) format += "%L";
  std::string const text = Printed(XoObjId{1, 0xFFFFFFFF, 1}, format.c_str());
  EXPECT_EQ(text.size(), 2559u);
  EXPECT_EQ(text.substr(0, 20), "42949672954294967295");
  EXPECT_EQ(text.substr(2550), "429496729");
  EXPECT_EQ(Printed(XoObjId{1, 1, 1}, std::string(200000, 'x').c_str()), std::string(2559, 'x'));
  EXPECT_EQ(Printed(XoObjId{1, 1, 1}, std::string(2559, 'x').c_str()), std::string(2559, 'x'));
}

TEST(IdentifierScan, ReadsWhatTheDefaultPrinted) {
  EXPECT_EQ(Object("(1-2#3)"), "B3 L2 H1");
  EXPECT_EQ(Class("(7v9)"), "C7 V9");
  // The default of a reference has no version.
  EXPECT_EQ(Reference("(5:1-2#3, 7)"), "B3 L2 H1 D5 C7 V0");
  EXPECT_EQ(Fields(Scanned<XoLocalRef>("(1-2#3,7)")), "B3 L2 H1 C7 V0");
}

TEST(IdentifierScan, LeavesWhatTheFormatDoesNotNameAtZero) {
  EXPECT_EQ(Object("5", "%L"), "B0 L5 H0");
  EXPECT_EQ(Class("5", "%V"), "C0 V5");
  EXPECT_EQ(Reference("5 6", "%D %V"), "B0 L0 H0 D5 C0 V6");
  EXPECT_EQ(Object("", "%L"), "B0 L0 H0");
  EXPECT_EQ(Object("(1-2", nullptr), "B0 L2 H1");
  EXPECT_EQ(Object("5", ""), "B0 L0 H0");
  EXPECT_EQ(Object("(1-2#3) and more"), "B3 L2 H1");
}

TEST(IdentifierScan, TextThatIsNoNumberLeavesZero) {
  EXPECT_EQ(Object("(x-y#z)"), "B0 L0 H0");
  EXPECT_EQ(Class("(xv9)"), "C0 V0");
}

TEST(IdentifierScan, NumbersAreReadAsThoseOfCAndCutToTheirField) {
  EXPECT_EQ(Class("65536v65537", "%Cv%V"), "C0 V1");
  EXPECT_EQ(Class("-1v+2", "%C"), "C65535 V0");
  EXPECT_EQ(Object("-1", "%L"), "B0 L4294967295 H0");
  // Digits alone are skipped, so blanks and signs stay for what comes next.
  EXPECT_EQ(Class(" 7v9", "%Cv%V"), "C7 V7");
}

TEST(IdentifierScan, NullTextMakesNull) {
  EXPECT_EQ(Object("{NULL}"), "B0 L0 H0");
  EXPECT_EQ(Class("{NULL}xyz", "%C"), "C65535 V65535");
  EXPECT_EQ(Reference("{NULL}"), "B0 L0 H0 D0 C99 V99");
  EXPECT_EQ(Fields(Scanned("{NULL}", nullptr, XoLocalRef{9, 9, 9, 8, 7})), "B0 L0 H0 C8 V7");
  EXPECT_EQ(Class("{NULL", "%C"), "C0 V0");
}

TEST(IdentifierScan, FollowsAChangedNullPrintString) {
  XoTypeMgr::SetNullPrintString(XoString("none"));
  EXPECT_EQ(Class("none"), "C65535 V65535");
  EXPECT_EQ(Printed(XoClassId{65535, 65535}), "none");
  EXPECT_EQ(Class("{NULL}"), "C0 V0");
  XoTypeMgr::SetNullPrintString(XoString("{NULL}"));
}

TEST(IdentifierScan, NarrowsWideText) {
  XoString wide(XoString::GetDefault16CodeSet(), 0);
  wide += XoString("(1-2#3)");
  XoObjId id{};
  id.ScanFromXoString(wide, nullptr);
  EXPECT_EQ(Fields(id), "B3 L2 H1");
  XoString null(XoString::GetDefault16CodeSet(), 0);
  null += XoString("{NULL}");
  id.ScanFromXoString(null, nullptr);
  EXPECT_EQ(Fields(id), "B0 L0 H0");
}

TEST(ClassIdScan, LiteralSkipsAnyCharacter) {
  EXPECT_EQ(Class("[7/9]"), "C7 V9");
  EXPECT_EQ(Class("17v9)"), "C7 V9");
  EXPECT_EQ(Class("7v9", "%C-%V"), "C7 V9");
}

TEST(ObjectIdScan, PartUpToADashMayBeLeftOut) {
  EXPECT_EQ(Object("12#34"), "B34 L12 H0");
  EXPECT_EQ(Object("12#34", "%H-%L#%B"), "B0 L34 H12");
  EXPECT_EQ(Object("5", "-%L"), "B0 L5 H0");
}

TEST(ObjectIdScan, DigitThatDiffersStaysWhereTheTextHasADash) {
  // The bracket alone is passed over in the format.
  EXPECT_EQ(Object("1-2#3"), "B3 L2 H1");
  EXPECT_EQ(Object("5", "xyz%L"), "B0 L5 H0");
}

TEST(ObjectIdScan, OtherCharacterThatDiffersIsPassedInBoth) {
  EXPECT_EQ(Object("[1+2/3]", "(%H-%L#%B)"), "B3 L2 H1");
  EXPECT_EQ(Object("ab5", "x%L"), "B0 L0 H0");
  EXPECT_EQ(Object("a5", "x%L"), "B0 L5 H0");
}

TEST(ReferenceScan, BlanksAndBracketsDoNotMatter) {
  EXPECT_EQ(Reference("5:1-2#3,7"), "B3 L2 H1 D5 C7 V0");
  EXPECT_EQ(Reference("  ( ( 5:1-2#3,\t (7"), "B3 L2 H1 D5 C7 V0");
  EXPECT_EQ(Reference("5:1-2#3,7v9", "(%D:%H-%L#%B,%Cv%V)"), "B3 L2 H1 D5 C7 V9");
  // Blanks ahead of a conversion eat nothing of the text.
  EXPECT_EQ(Reference("56", " ( %D"), "B0 L0 H0 D56 C0 V0");
  EXPECT_EQ(Reference("5 (6 ( 7", "%D%H%L"), "B0 L7 H6 D5 C0 V0");
}

TEST(ReferenceScan, LiteralSkipsAnyCharacter) {
  EXPECT_EQ(Reference("5x1x2x3x7"), "B3 L2 H1 D5 C7 V0");
}

TEST(PositionalScan, ReadsInOrderWhereNumbersHaveOneDigit) {
  EXPECT_EQ(Class("7v9", "%hv%h"), "C7 V0");
  EXPECT_EQ(Class("(7v9)", "(%huv%hu)"), "C7 V9");
  EXPECT_EQ(Reference("(5:1-2#3, 7)", "(%hu:%hu-%lu#%lu, %hu)"), "B3 L2 H1 D5 C7 V0");
}

TEST(PositionalScan, DigitsStayInTheTextUntilLiteralsStepOverThem) {
  // "12v34": the number 12, then 'u' steps over the 1 and 'v' over the 2; 'v' reads as no number.
  EXPECT_EQ(Class("12v34", "%huv%hu"), "C12 V0");
  // A letter of the class behind the conversion lets the digits be skipped.
  EXPECT_EQ(Class("12v34", "%hC%hu"), "C12 V34");
}

TEST(PositionalScan, ReadOutOfPlaceIsDropped) {
  EXPECT_EQ(Class("7v9", "%luv%hu"), "C0 V9");
  EXPECT_EQ(Class("123", "%hu%hu%hu"), "C123 V23");
}

TEST(IdentifierScan, UnknownLetterAndPercentSkipOneCharacter) {
  EXPECT_EQ(Class("x5", "%x%C"), "C5 V0");
  EXPECT_EQ(Class("x5", "%%%C"), "C5 V0");
  EXPECT_EQ(Object("x5", "%C%L"), "B0 L5 H0");
  EXPECT_EQ(Reference("x5", "%%%D"), "B0 L0 H0 D5 C0 V0");
  EXPECT_EQ(Class("5", "%C%"), "C5 V0");
}

class IdentifierTextLaws : public RandomTest {};

TEST_F(IdentifierTextLaws, EveryValueOfA16BitFieldComesBack) {
  for (unsigned value = 0; value < 65536; ++value) {
    auto const word = static_cast<o_u2b>(value);
    std::string const text = std::to_string(value);
    ASSERT_EQ(Printed(XoClassId{word, 1}, "%C"), text);
    ASSERT_EQ(Scanned<XoClassId>(text, "%C").classNumber, value);
    ASSERT_EQ(Scanned<XoClassId>(text, "%V").version, value);
    ASSERT_EQ(Scanned<XoObjId>(text, "%H").high, value);
    ASSERT_EQ(Printed(XoObjId{1, 1, word}, "%H"), text);
    XoRef const ref{1, 1, word, word, word, word};
    ASSERT_EQ(Printed(ref, "%H"), text);
    ASSERT_EQ(Printed(ref, "%D"), text);
    ASSERT_EQ(Printed(ref, "%C"), text);
    ASSERT_EQ(Printed(ref, "%V"), text);
    ASSERT_EQ(Scanned<XoRef>(text, "%H").high, value);
    ASSERT_EQ(Scanned<XoRef>(text, "%D").database, value);
    ASSERT_EQ(Scanned<XoRef>(text, "%C").classNumber, value);
    ASSERT_EQ(Scanned<XoRef>(text, "%V").version, value);
  }
}

TEST_F(IdentifierTextLaws, AllFieldsComeBackByAFormatThatNamesThem) {
  char const* const format = "(%D:%H-%L#%B,%Cv%V)";
  for (int turn = 0; turn < 5000; ++turn) {
    auto const word = [&] { return static_cast<o_u2b>(Bits() >> Below(16)); };
    auto const wide = [&] { return static_cast<o_u4b>(Bits()) >> Below(32); };
    XoRef const ref{wide(), wide(), static_cast<o_u2b>(word() | 1), word(), word(), word()};
    ASSERT_EQ(Fields(Scanned<XoRef>(Printed(ref, format), format)), Fields(ref));
    XoObjId const id{wide(), wide(), static_cast<o_u2b>(word() | 1)};
    ASSERT_EQ(Fields(Scanned<XoObjId>(Printed(id))), Fields(id));
    XoClassId const classId{static_cast<o_u2b>(word() & 0x7FFF), word()};
    ASSERT_EQ(Fields(Scanned<XoClassId>(Printed(classId))), Fields(classId));
  }
}

TEST_F(IdentifierTextLaws, AnyBytesUnderAnyFormatAreReadAndEnd) {
  std::string const letters = "%%%%%hlBLHDCVuv-#(: 0123456789x\t";
  for (int turn = 0; turn < 20000; ++turn) {
    std::string text, format;
    for (unsigned i = Below(12); i != 0; --i) {
      text += OneIn(8) ? static_cast<char>(Below(255) + 1) : letters[Below(32)];
    }
    for (unsigned i = Below(12); i != 0; --i) format += letters[Below(32)];
    Object(text, format.c_str());
    Class(text, format.c_str());
    Reference(text, format.c_str());
    Printed(kReference, format.c_str());
    Printed(XoClassId{1, 2}, format.c_str());
    Printed(XoObjId{1, 2, 3}, format.c_str());
  }
}

}  // namespace
}  // namespace xo::test
