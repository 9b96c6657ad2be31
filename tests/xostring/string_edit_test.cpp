#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <initializer_list>

#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

/// Puts the text defaults back behind each test.
class StringCopy : public testing::Test {
 protected:
  void TearDown() override { XoString::SetDefaultLanguage(language); }
  unsigned char const language = XoString::GetDefaultLanguage();
};

TEST_F(StringCopy, GivesPartsInCodeSetAndLanguageOfTheString) {
  XoString const string = Narrow("abcdef", kKoi8, 9);
  EXPECT_EQ(TextOf(string.Copy(2, 3)), "cde");
  EXPECT_EQ(string.Copy(2, 3).codeSet, kKoi8);
  EXPECT_EQ(string.Copy(2, 3).language, 9);
  EXPECT_EQ(string.Copy(2, 3).size, 4);
  EXPECT_EQ(WideTextOf(Wide(u"ab\u4E00d").Copy(1, 2)), u"b\u4E00");
}

TEST_F(StringCopy, ReachesToTheEndForMinusOneAndForMoreThanThereIs) {
  XoString const string("abcdef");
  EXPECT_EQ(TextOf(string.Copy(2)), "cdef");
  EXPECT_EQ(TextOf(string.Copy(2, -1)), "cdef");
  EXPECT_EQ(TextOf(string.Copy(2, 4)), "cdef");
  EXPECT_EQ(TextOf(string.Copy(2, 5)), "cdef");
  EXPECT_EQ(TextOf(string.Copy(2, SHRT_MAX)), "cdef");
  EXPECT_EQ(TextOf(string.Copy(5, 1)), "f");
}

TEST_F(StringCopy, ReachesToTheEndForEveryNegativeCount) {
  XoString const string = Narrow("abcdef", kKoi8, 9);
  for (short const count : std::initializer_list<short>{-2, -3, -32767, SHRT_MIN}) {
    EXPECT_EQ(TextOf(string.Copy(0, count)), "abcdef") << count;
    EXPECT_EQ(TextOf(string.Copy(2, count)), "cdef") << count;
    EXPECT_EQ(string.Copy(2, count).codeSet, kKoi8);
    EXPECT_TRUE(string.Copy(6, count).IsEmpty());
  }
}

TEST_F(StringCopy, OfNoCharacterIsEmptyInTheSameCodeSet) {
  XoString const nothing = Narrow("abc", kKoi8, 9).Copy(1, 0);
  EXPECT_TRUE(nothing.IsEmpty());
  EXPECT_EQ(nothing.codeSet, kKoi8);
  EXPECT_EQ(nothing.language, 9);
}

TEST_F(StringCopy, FromTheEndOnIsTheEmptyString) {
  XoString const string = Narrow("abc", kKoi8, 9);
  for (unsigned short const start : std::initializer_list<unsigned short>{3, 4, 7, 65535}) {
    XoString const copy = string.Copy(start, 2);
    EXPECT_EQ(copy.text, nullptr);
    EXPECT_EQ(copy.codeSet, XoString::EmptyString().codeSet);
    EXPECT_EQ(copy.language, XoString::EmptyString().language);
  }
  XoString::SetDefaultLanguage(7);
  EXPECT_EQ(string.Copy(3, 2).language, language);
}

TEST_F(StringCopy, LeftAndRightTakeFromTheEnds) {
  XoString const string = Narrow("abcdef", kKoi8, 9);
  EXPECT_EQ(TextOf(string.Left(2)), "ab");
  EXPECT_EQ(string.Left(2).codeSet, kKoi8);
  EXPECT_EQ(TextOf(string.Right(2)), "ef");
  EXPECT_EQ(string.Right(2).language, 9);
  for (unsigned short const count : std::initializer_list<unsigned short>{6, 7, 32768, 65535}) {
    EXPECT_EQ(TextOf(string.Left(count)), "abcdef") << count;
    EXPECT_EQ(TextOf(string.Right(count)), "abcdef") << count;
  }
}

TEST_F(StringCopy, LeftOfNothingStandsInTheTextAndRightOfNothingBehindIt) {
  XoString const string = Narrow("abc", kKoi8, 9);
  EXPECT_TRUE(string.Left(0).IsEmpty());
  EXPECT_EQ(string.Left(0).codeSet, kKoi8);
  EXPECT_TRUE(string.Right(0).IsEmpty());
  EXPECT_EQ(string.Right(0).codeSet, XoString::EmptyString().codeSet);
  XoString const empty = Narrow("", kKoi8, 9);
  EXPECT_EQ(empty.Left(5).codeSet, XoString::EmptyString().codeSet);
  EXPECT_EQ(empty.Right(5).codeSet, XoString::EmptyString().codeSet);
}

TEST_F(StringCopy, CountsAbove32767Work) {
  std::string text(50000, 'a');
  text.back() = 'z';
  text.front() = 'b';
  XoString const string(text.c_str());
  EXPECT_EQ(TextOf(string.Left(40000)), text.substr(0, 40000));
  EXPECT_EQ(TextOf(string.Right(40000)), text.substr(10000));
  EXPECT_EQ(TextOf(string.Copy(1, -1)), text.substr(1));
  EXPECT_EQ(TextOf(string.Copy(45000, 20)), text.substr(45000, 20));
}

TEST(StringCut, RemovesCharacters) {
  EXPECT_EQ(TextOf(XoString("abcdef").Cut(1, 3)), "aef");
  EXPECT_EQ(TextOf(XoString("abcdef").Cut(0, 1)), "bcdef");
  EXPECT_EQ(TextOf(XoString("abcdef").Cut(5, 1)), "abcde");
  EXPECT_EQ(WideTextOf(Wide(u"ab\u4E00d").Cut(1, 2)), u"ad");
  XoString string("abc");
  EXPECT_EQ(&string.Cut(0, 1), &string);
  EXPECT_EQ(string.size, 3);
}

TEST(StringCut, ReachesToTheEndForMinusOneAndForMoreThanThereIs) {
  EXPECT_EQ(TextOf(XoString("abc").Cut(1, -1)), "a");
  EXPECT_EQ(TextOf(XoString("abc").Cut(1)), "a");
  EXPECT_EQ(TextOf(XoString("abc").Cut(1, 100)), "a");
  EXPECT_EQ(XoString("abc").Cut(0, -1).Len(), 0);
}

TEST(StringCut, ChangesNothingOutsideTheText) {
  XoString string("abc");
  char const* const text = string.text;
  string.Cut(5, 1).Cut(3, 1).Cut(3, -1).Cut(65535, -1).Cut(1, 0).Cut(1, -2).Cut(0, SHRT_MIN);
  EXPECT_EQ(string.text, text);
  EXPECT_EQ(TextOf(string), "abc");
  XoString empty;
  empty.Cut(0, -1).Cut(0, 1).Cut(9, 9);
  EXPECT_EQ(empty.text, nullptr);
}

TEST(StringInsert, PutsTextAtThePosition) {
  EXPECT_EQ(TextOf(XoString("abc").Insert(XoString("xy"), 0)), "xyabc");
  EXPECT_EQ(TextOf(XoString("abc").Insert(XoString("xy"), 1)), "axybc");
  EXPECT_EQ(XoString("abc").Insert(XoString("xy"), 1).size, 6);
  EXPECT_EQ(WideTextOf(Wide(u"ab").Insert(Wide(u"\u4E00"), 1)), u"a\u4E00b");
}

TEST(StringInsert, AtTheLengthAppendsAndBehindItDoesNothing) {
  EXPECT_EQ(TextOf(XoString("abc").Insert(XoString("xy"), 3)), "abcxy");
  EXPECT_EQ(TextOf(XoString("abc").Insert(XoString("xy"), 4)), "abc");
  EXPECT_EQ(TextOf(XoString("abc").Insert(XoString("xy"), 65535)), "abc");
  XoString empty;
  EXPECT_EQ(TextOf(empty.Insert(XoString("xy"), 0)), "xy");
  EXPECT_EQ(empty.size, 3);
}

TEST(StringInsert, OfNoTextChangesNothing) {
  XoString string("abc");
  char const* const text = string.text;
  string.Insert(XoString(), 1).Insert(XoString(""), 1);
  EXPECT_EQ(string.text, text);
  XoString empty;
  empty.Insert(XoString(), 0);
  EXPECT_EQ(empty.text, nullptr);
}

TEST(StringInsert, ConvertsTheText) {
  EXPECT_EQ(TextOf(Narrow("ab", kLatin2).Insert(Wide(u"\u011B"), 1)),
            "a\xEC"
            "b");
  EXPECT_EQ(WideTextOf(Wide(u"ab").Insert(Narrow("\xEC", kLatin2), 1)),
            u"a\u011B"
            u"b");
}

TEST(StringInsert, TakesTheStringItself) {
  XoString string("abc");
  string.Insert(string, 1);
  EXPECT_EQ(TextOf(string), "aabcbc");
}

TEST(StringReplace, OverwritesInPlace) {
  EXPECT_EQ(TextOf(XoString("abcdef").Replace(XoString("xy"), 1)), "axydef");
  EXPECT_EQ(TextOf(XoString("abcdef").Replace(XoString("xy"), 0)), "xycdef");
  EXPECT_EQ(TextOf(XoString("abcdef").Replace(XoString("xy"), 4)), "abcdxy");
  EXPECT_EQ(XoString("abcdef").Replace(XoString("xy"), 4).size, 7);
  EXPECT_EQ(WideTextOf(Wide(u"abc").Replace(Narrow("\xEC", kLatin2), 1)),
            u"a\u011B"
            u"c");
}

TEST(StringReplace, NeverLengthens) {
  EXPECT_EQ(TextOf(XoString("ab").Replace(XoString("xyz"), 1)), "ax");
  EXPECT_EQ(TextOf(XoString("ab").Replace(XoString("xyz"), 0)), "xy");
  EXPECT_EQ(TextOf(XoString("ab").Replace(XoString("xyz"), 2)), "ab");
  EXPECT_EQ(TextOf(XoString("ab").Replace(XoString("xyz"), 3)), "ab");
  EXPECT_EQ(TextOf(XoString("ab").Replace(XoString("xyz"), 65535)), "ab");
  EXPECT_TRUE(XoString().Replace(XoString("xyz"), 0).IsEmpty());
}

TEST(StringReplace, ByNoTextChangesNothing) {
  XoString string("abc");
  char const* const text = string.text;
  string.Replace(XoString(), 1).Replace(XoString(""), 1);
  EXPECT_EQ(string.text, text);
}

TEST(StringReplace, TakesTheStringItself) {
  XoString string("abcd");
  string.Replace(string, 1);
  EXPECT_EQ(TextOf(string), "aabc");
}

TEST(StringExpand, AppendsUpToTheLength) {
  EXPECT_EQ(TextOf(XoString("ab").Expand(5)), "ab   ");
  EXPECT_EQ(TextOf(XoString("ab").Expand(5, '.')), "ab...");
  EXPECT_EQ(TextOf(XoString("ab").Expand(3, '.')), "ab.");
  EXPECT_EQ(XoString("ab").Expand(5, '.').size, 6);
  EXPECT_EQ(TextOf(XoString().Expand(2, '.')), "..");
  EXPECT_EQ(WideTextOf(Wide(u"ab").Expand(4, static_cast<unsigned short>(0x4E00))),
            u"ab\u4E00\u4E00");
}

TEST(StringExpand, DoesNothingWhereTheTextIsLongEnough) {
  XoString string("abc");
  char const* const text = string.text;
  string.Expand(3, '.').Expand(2, '.').Expand(0, '.');
  EXPECT_EQ(string.text, text);
}

TEST(StringExpand, ConvertsTheFill) {
  EXPECT_EQ(WideTextOf(Wide(u"a").Expand(3, static_cast<char>(0xE9))), u"a\u00E9\u00E9");
  EXPECT_EQ(TextOf(Narrow("a", kLatin2).Expand(3, static_cast<unsigned short>(0x11B))),
            "a\xEC\xEC");
  EXPECT_EQ(TextOf(Narrow("", kEbcdic).Expand(2, 'A')), "\xC1\xC1");
  EXPECT_EQ(TextOf(Narrow("", kEbcdic).Expand(1, 'A')), "\xC1");
}

TEST(StringFill, ReplacesTheText) {
  XoString string = Narrow("abc", kLatin2, 9);
  EXPECT_EQ(&string.Fill(2, 'x'), &string);
  EXPECT_EQ(TextOf(string), "xx");
  EXPECT_EQ(string.size, 3);
  EXPECT_EQ(string.codeSet, kLatin2);
  EXPECT_EQ(string.language, 9);
  EXPECT_EQ(TextOf(string.Fill(3)), "   ");
  EXPECT_EQ(TextOf(string.Fill(1, 'y')), "y");
  EXPECT_EQ(TextOf(string.Fill(2, static_cast<unsigned short>(0x11B))), "\xEC\xEC");
  EXPECT_EQ(WideTextOf(Wide(u"abc").Fill(2, 'x')), u"xx");
}

TEST(StringFill, OfNoLengthEmpties) {
  XoString string("abc");
  string.Fill(0, 'x');
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_FALSE(string.IsNullValue());
  EXPECT_TRUE(Wide(u"abc").Fill(0, 'x').IsEmpty());
}

TEST(StringFill, WithTheZeroCharacterIsSound) {
  XoString string("abc");
  string.Fill(5, char{0});
  EXPECT_EQ(string.Len(), 0);
  EXPECT_TRUE(IsSound(string));
}

TEST(StringTrim, RemovesSpacesAtTheEnds) {
  EXPECT_EQ(TextOf(XoString("  a b  ").LeftTrim()), "a b  ");
  EXPECT_EQ(TextOf(XoString("  a b  ").RightTrim()), "  a b");
  EXPECT_EQ(TextOf(XoString("  a b  ").Trim()), "a b");
  EXPECT_EQ(WideTextOf(Wide(u"  \u4E00  ").Trim()), u"\u4E00");
  EXPECT_EQ(XoString("  a b  ").Trim().size, 4);
  EXPECT_EQ(TextOf(XoString("a").Trim()), "a");
}

TEST(StringTrim, OfNothingButBlanks) {
  EXPECT_EQ(TextOf(XoString("   ").LeftTrim()), "");
  // The first character is never looked at.
  EXPECT_EQ(TextOf(XoString("   ").RightTrim()), " ");
  EXPECT_EQ(TextOf(XoString(" ").RightTrim()), " ");
  EXPECT_EQ(TextOf(XoString("   ").Trim()), "");
}

TEST(StringTrim, LeavesNoTextAlone) {
  XoString string;
  string.LeftTrim().RightTrim().Trim();
  EXPECT_EQ(string.text, nullptr);
  EXPECT_EQ(TextOf(XoString("").Trim()), "");
}

TEST(StringTrim, LeavesATextWithoutBlanksInItsBuffer) {
  XoString string("a b");
  char const* const text = string.text;
  string.Trim();
  EXPECT_EQ(string.text, text);
}

TEST(StringCase, TurnsLetters) {
  EXPECT_EQ(TextOf(XoString("aB1\xE9").ToUpper()), "AB1\xC9");
  EXPECT_EQ(TextOf(XoString("aB1\xC9").ToLower()), "ab1\xE9");
  EXPECT_EQ(WideTextOf(Wide(u"a\u0436").ToUpper()), u"A\u0416");
  XoString string = Narrow("\xD1", kKoi8, 9);
  EXPECT_EQ(&string.ToUpper(), &string);
  // The small Cyrillic ya is D1 in KOI8-R, the capital one F1.
  EXPECT_EQ(TextOf(string), "\xF1");
  EXPECT_EQ(string.codeSet, kKoi8);
  EXPECT_EQ(string.language, 9);
}

TEST(StringCase, ASharpSBecomesTwoLetters) {
  XoString narrow(
      "stra\xDF"
      "e");
  narrow.ToUpper();
  EXPECT_EQ(TextOf(narrow), "STRASSE");
  EXPECT_EQ(narrow.size, 8);
  EXPECT_EQ(WideTextOf(Wide(u"\u00DF\u00DF").ToUpper()), u"SSSS");
  // A ligature of three letters.
  XoString wide = Wide(u"\uFB03");
  wide.ToUpper();
  EXPECT_EQ(WideTextOf(wide), u"FFI");
  EXPECT_EQ(wide.size, 8);
}

TEST(StringCase, WithoutACodeSetIsThatOfAscii) {
  EXPECT_EQ(TextOf(Narrow("azAZ\xE9", kNative).ToUpper()), "AZAZ\xE9");
  EXPECT_EQ(TextOf(Narrow("azAZ\xC9", kNative).ToLower()), "azaz\xC9");
}

class Exchange : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator&) override {
    return character == 'a' ? XoChar(static_cast<unsigned short>(0x11B)) : XoChar(character);
  }
};

/// Puts two letters behind every character of the text.
class Stretch : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator& iterator) override {
    if (iterator.overflow == nullptr) iterator.SetOverflow(&more, kByDefault);
    return XoChar(character);
  }
  XoWCharList const more{2, {'y', 'z'}};
};

class Endless : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator& iterator) override {
    iterator.SetOverflow(&more, kByDefault);
    return XoChar(character);
  }
  XoWCharList const more{1, {'y'}};
};

TEST(StringTransform, MapsTheResultsIntoTheCodeSet) {
  Exchange exchange;
  EXPECT_EQ(TextOf(Narrow("abac", kLatin2).Transform(exchange)),
            "\xEC"
            "b\xEC"
            "c");
  EXPECT_EQ(TextOf(XoString("abac").Transform(exchange)), "?b?c");
  EXPECT_EQ(WideTextOf(Wide(u"abac").Transform(exchange)),
            u"\u011B"
            u"b\u011B"
            u"c");
}

TEST(StringTransform, LeavesNoTextAlone) {
  Exchange exchange;
  XoString string;
  string.Transform(exchange);
  EXPECT_EQ(string.text, nullptr);
  XoString terminator("");
  terminator.Transform(exchange);
  EXPECT_EQ(terminator.size, 1);
  EXPECT_EQ(terminator.Len(), 0);
}

TEST(StringTransform, TheSizeIsThatOfTheResult) {
  Exchange exchange;
  XoString string("abc");
  char const* const text = string.text;
  string.Transform(exchange);
  EXPECT_NE(string.text, text);
  EXPECT_EQ(string.size, 4);
}

TEST(StringTransform, ServesTheCharactersThatAnOperationAdds) {
  Stretch stretch;
  XoString string("abc");
  string.Transform(stretch);
  EXPECT_EQ(TextOf(string), "ayzbyzcyz");
  EXPECT_EQ(string.size, 10);
}

TEST(StringTransform, EndsWhereAnOperationDoesNot) {
  Endless endless;
  XoString string("a");
  string.Transform(endless);
  EXPECT_EQ(string.Len(), kMostNarrow);
  EXPECT_TRUE(IsSound(string));
}

class RandomEdit : public RandomTest {
 protected:
  std::u16string Text(unsigned most) {
    std::u16string text(Below(most + 1), u' ');
    for (char16_t& unit : text) unit = static_cast<char16_t>(1 + Below(255));
    return text;
  }

  /// The text of either width as ISO 8859-1, which is the start of Unicode.
  static std::u16string Read(XoString const& string) {
    if (string.codeSet == kUnicode) return WideTextOf(string);
    std::u16string text;
    for (char const each : TextOf(string)) text += static_cast<unsigned char>(each);
    return text;
  }

  XoString Make(std::u16string const& text) {
    if (OneIn(2)) return Wide(text);
    return Narrow(std::string(text.begin(), text.end()));
  }
};

TEST_F(RandomEdit, IsThatOfAPlainText) {
  for (int round = 0; round < 400; ++round) {
    std::u16string expected = Text(20);
    XoString string = Make(expected);
    for (int step = 0; step < 20; ++step) {
      std::u16string const other = Text(6);
      unsigned const length = static_cast<unsigned>(expected.size());
      unsigned const position = Below(length + 4);
      short const count = static_cast<short>(static_cast<int>(Below(12)) - 1);
      unsigned const reach = count == -1 ? length : static_cast<unsigned>(count);
      auto const at = static_cast<unsigned short>(position);
      switch (Below(6)) {
        case 0:
          string.Insert(Make(other), at);
          if (position <= length) expected.insert(position, other);
          break;
        case 1:
          string.Cut(at, count);
          if (position < length) expected.erase(position, reach);
          break;
        case 2:
          string.Replace(Make(other), at);
          for (unsigned place = 0; place < other.size() && position + place < length; ++place) {
            expected[position + place] = other[place];
          }
          break;
        case 3:
          string.Expand(at, '.');
          if (position > length) expected.append(position - length, u'.');
          break;
        case 4:
          ASSERT_EQ(Read(string.Copy(at, count)),
                    position < length ? expected.substr(position, reach) : u"");
          break;
        default:
          ASSERT_EQ(Read(string.Left(at)), expected.substr(0, position));
          ASSERT_EQ(Read(string.Right(at)), expected.substr(length - std::min(length, position)));
      }
      ASSERT_TRUE(IsSound(string));
      ASSERT_EQ(Read(string), expected);
    }
  }
}

TEST_F(RandomEdit, TrimsFollowTheClassOfTheCharacters) {
  auto const isSpace = [](XoString const& string, unsigned index) {
    return string[static_cast<int>(index)].IsSpace() != 0;
  };
  for (int round = 0; round < 2000; ++round) {
    unsigned char const sets[] = {kNative, kLatin1, kLatin2, kKoi8, kEbcdic, 25};
    bool const isWide = OneIn(3);
    std::string bytes;
    std::u16string wide;
    for (unsigned left = Below(12); left != 0; --left) {
      bytes += OneIn(2) ? ' ' : static_cast<char>(1 + Below(OneIn(2) ? 32 : 255));
      wide +=
          OneIn(2) ? u' ' : static_cast<char16_t>(OneIn(2) ? 0x2000 + Below(64) : 1 + Below(255));
    }
    XoString const string = isWide ? Wide(wide) : Narrow(bytes, sets[Below(6)]);
    unsigned const length = string.Len();
    unsigned first = 0;
    while (first < length && isSpace(string, first)) ++first;
    unsigned end = length;
    while (end > 1 && isSpace(string, end - 1)) --end;
    auto const part = [&](unsigned from, unsigned to) {
      std::string const all(string.StrGet(), length * (isWide ? 2 : 1));
      unsigned const unit = isWide ? 2 : 1;
      return all.substr(from * unit, (to - from) * unit);
    };
    auto const bytesOf = [&](XoString const& result) {
      return std::string(result.StrGet(), result.Len() * (isWide ? 2u : 1u));
    };
    XoString trimmed(string);
    ASSERT_EQ(bytesOf(trimmed.LeftTrim()), part(first, length));
    trimmed = string;
    ASSERT_EQ(bytesOf(trimmed.RightTrim()), part(0, std::max(end, std::min(length, 1u))));
    trimmed = string;
    ASSERT_EQ(bytesOf(trimmed.Trim()), first == length ? "" : part(first, std::max(first, end)));
    ASSERT_TRUE(IsSound(trimmed));
  }
}

}  // namespace
}  // namespace xo::test
