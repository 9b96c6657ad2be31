#include <gtest/gtest.h>

#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kLatin1 = 1, kCyrillic = 5, kEbcdic = 32, kUnicode = 253;
constexpr unsigned char kNeutral = 0, kGerman = 2, kTurkish = 31;

using Units = std::vector<unsigned short>;

XoString TextOf(Units units, unsigned char language = kNeutral) {
  units.push_back(0);
  XoString text(units.data());
  text.language = language;
  return text;
}

Units UnitsOf(XoString const& text) {
  Units units;
  for (int place = 0; place < text.Len(); ++place) units.push_back(text[place].Code());
  return units;
}

/// Writes each character and, behind it, the values of a list.
class Inject : public XoCharOperation {
 public:
  XoWCharList list;
  unsigned char set = 255;
  unsigned calls = 0;

  XoChar Transform(XoChar const& character, XoStringIterator& iterator) override {
    ++calls;
    // What is injected comes through here as well.
    if (iterator.overflow == nullptr) iterator.SetOverflow(&list, set);
    return character;
  }
};

class Count : public XoCharOperation {
 public:
  unsigned calls = 0;
  XoChar Transform(XoChar const& character, XoStringIterator&) override {
    ++calls;
    return character;
  }
};

TEST(Transform, WithoutOperationOfItsOwnCopies) {
  struct Plain : XoCharOperation {
  } plain;
  char const text[] = "ab\xE9";
  char target[8] = "zzzzzzz";
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  source.Transform(destination, plain);
  EXPECT_STREQ(target, "ab\xE9");
}

TEST(Transform, LeavesBothBehindTheTerminator) {
  char const text[] = "abc";
  char target[8] = "zzzzzzz";
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  XoCharToUpper upper;
  source.Transform(destination, upper);
  EXPECT_STREQ(target, "ABC");
  EXPECT_EQ(source.cursor, text + 4);
  EXPECT_EQ(destination.cursor, target + 4);
  EXPECT_EQ(target[4], 'z');
}

TEST(Transform, OfAnEmptyTextWritesTheTerminator) {
  char target[4] = "zzz";
  char const text[] = "";
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  Count count;
  source.Transform(destination, count);
  EXPECT_EQ(count.calls, 0u);
  EXPECT_EQ(target[0], 0);
  EXPECT_EQ(destination.cursor, target + 1);
}

TEST(Transform, MapsToTheCodeSetOfTheDestination) {
  // Cyrillic letter zhe, lower case in ISO 8859-5, upper case in big-endian Unicode.
  char const text[] = "\xD6";
  unsigned char target[8] = {9, 9, 9, 9, 9, 9, 9, 9};
  XoStringIterator source(text, kCyrillic);
  XoStringIterator destination(reinterpret_cast<char const*>(target), kUnicode, kNeutral, 2);
  XoCharToUpper upper;
  source.Transform(destination, upper);
  unsigned char const expected[8] = {4, 0x16, 0, 0, 9, 9, 9, 9};
  EXPECT_EQ(std::vector<unsigned char>(target, target + 8),
            std::vector<unsigned char>(expected, expected + 8));
}

TEST(Transform, StartsWhereTheIteratorStands) {
  char const text[] = "abc";
  char target[8] = {};
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  ++source;
  XoCharToUpper upper;
  source.Transform(destination, upper);
  EXPECT_STREQ(target, "BC");
}

TEST(Transform, InjectedCharactersFollowTheirOwn) {
  Inject inject;
  inject.list.count = 2;
  inject.list.values[0] = '1';
  inject.list.values[1] = '2';
  char const text[] = "ab";
  char target[16] = {};
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  source.Transform(destination, inject);
  EXPECT_STREQ(target, "a12b12");
  EXPECT_EQ(inject.calls, 6u);
  EXPECT_EQ(destination.cursor, target + 7);
}

TEST(Transform, InjectedCharactersAreMappedFromTheirCodeSet) {
  Inject inject;
  inject.list.count = 1;
  inject.list.values[0] = 0x416;
  inject.set = kUnicode;
  char const text[] = "a";
  char target[16] = {};
  XoStringIterator source(text, kLatin1), destination(target, kCyrillic);
  source.Transform(destination, inject);
  EXPECT_STREQ(target, "a\xB6");
}

TEST(Transform, ServesAnOverflowThatIsPendingFirst) {
  XoWCharList list;
  list.count = 2;
  list.values[0] = 'x';
  list.values[1] = 'y';
  char const text[] = "abc";
  char target[16] = {};
  XoStringIterator source(text, kLatin1), destination(target, kLatin1);
  source.SetOverflow(&list, 255);
  XoCharToUpper upper;
  source.Transform(destination, upper);
  // They stand for the character that the iterator is on.
  EXPECT_STREQ(target, "XYBC");
}

// Case of strings.

TEST(TransformOfStrings, SharpSBecomesTwoLetters) {
  XoString text(
      "Stra\xDF"
      "e");
  text.ToUpper();
  EXPECT_STREQ(text.StrGet(), "STRASSE");
  EXPECT_EQ(text.Len(), 7);
  text.ToLower();
  EXPECT_STREQ(text.StrGet(), "strasse");

  XoString wide = TextOf({'x', 0xDF});
  wide.ToUpper();
  EXPECT_EQ(UnitsOf(wide), (Units{'X', 'S', 'S'}));
}

TEST(TransformOfStrings, SharpSBecomesTwoLettersOfItsCodeSet) {
  // In EBCDIC sharp s is 0x59, x 0xA7, X 0xE7 and S 0xE2.
  XoString text("\xA7\x59");
  text.codeSet = kEbcdic;
  text.ToUpper();
  EXPECT_STREQ(text.StrGet(), "\xE7\xE2\xE2");
}

TEST(TransformOfStrings, UpperCaseOfThreeCharacters) {
  // Ffi ligature; iota with dialytika and tonos.
  XoString text = TextOf({'o', 0xFB03, 0x390, 'e'});
  text.ToUpper();
  EXPECT_EQ(UnitsOf(text), (Units{'O', 'F', 'F', 'I', 0x399, 0x308, 0x301, 'E'}));
}

TEST(TransformOfStrings, GoByTheLanguage) {
  XoString text = TextOf({'i', 'I'}, kTurkish);
  EXPECT_EQ(UnitsOf(XoString(text).ToUpper()), (Units{0x130, 'I'}));
  EXPECT_EQ(UnitsOf(XoString(text).ToLower()), (Units{'i', 0x131}));
  text.language = kGerman;
  EXPECT_EQ(UnitsOf(XoString(text).ToUpper()), (Units{'I', 'I'}));
}

TEST(TransformOfStrings, WithoutCodeSetChangeAsciiAlone) {
  XoString text(
      "Stra\xDF"
      "e \xE9");
  text.codeSet = 0;
  text.ToUpper();
  EXPECT_STREQ(text.StrGet(),
               "STRA\xDF"
               "E \xE9");
}

TEST(TransformOfStrings, KeepCodeSetAndLanguage) {
  XoString text("\xD6\xB6");
  text.codeSet = kCyrillic;
  text.language = kGerman;
  text.ToUpper();
  EXPECT_STREQ(text.StrGet(), "\xB6\xB6");
  EXPECT_EQ(text.codeSet, kCyrillic);
  EXPECT_EQ(text.language, kGerman);
  text.ToLower();
  EXPECT_STREQ(text.StrGet(), "\xD6\xD6");
}

TEST(TransformOfStrings, OperationMayLengthenTheText) {
  Inject inject;
  inject.list.count = 18;
  for (unsigned short& value : inject.list.values) value = '.';
  XoString text("ab");
  text.Transform(inject);
  EXPECT_EQ(text.Len(), 38);
  EXPECT_EQ(text[0].Code(), 'a');
  EXPECT_EQ(text[19].Code(), 'b');
  EXPECT_EQ(text[37].Code(), '.');
  EXPECT_EQ(text.text[38], 0);
}

TEST(TransformOfStrings, OfNoTextDoNothing) {
  XoString none(kLatin1, kGerman);
  none.ToUpper();
  EXPECT_EQ(none.IsEmpty(), 1);
  XoString null;
  null.SetNullValue();
  null.ToUpper();
  null.ToLower();
  EXPECT_EQ(null.IsNullValue(), 1);
}

class TransformLaw : public RandomTest {};

TEST_F(TransformLaw, CaseOfATextIsThatOfItsCharacters) {
  for (int run = 0; run < 3000; ++run) {
    unsigned char const language = static_cast<unsigned char>(Below(48));
    Units units;
    for (unsigned left = Below(30); left != 0; --left) {
      units.push_back(static_cast<unsigned short>(1 + (OneIn(3) ? Below(65535) : Below(0x580))));
    }
    Units upper, lower;
    XoCodeSet const& unicode = *XoLanguageContext::QueryCodeSet(kUnicode);
    for (unsigned short const unit : units) {
      XoUnicodeProps const* const forms = unicode.GetUnicodeProps(unit, language);
      upper.push_back(forms != nullptr && forms->upperCase != 0 ? forms->upperCase : unit);
      lower.push_back(forms != nullptr && forms->lowerCase != 0 ? forms->lowerCase : unit);
      if (forms == nullptr || forms->upperCase == 0) continue;
      XoWCharList const& more = forms->upperExpansion;
      for (unsigned index = 0; index < more.count; ++index) upper.push_back(more.values[index]);
    }
    XoString const text = TextOf(units, language);
    ASSERT_EQ(UnitsOf(XoString(text).ToUpper()), upper) << int{language};
    ASSERT_EQ(UnitsOf(XoString(text).ToLower()), lower) << int{language};
  }
}

}  // namespace
}  // namespace xo::test
