#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/base/random_test.hpp"
#include "tests/xostring/string_text.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kWildcards = 0, kIgnoreCase = 0x0020, kIgnoreAccents = 0x0040,
                         kNoWildcards = 0x0010;

/// Puts the default operator back behind each test.
class StringFind : public testing::Test {
 protected:
  void TearDown() override { XoString::SetDefaultCmpOp(cmpOp); }
  unsigned short const cmpOp = XoString::GetDefaultCmpOp();
};

unsigned Position(short found) { return static_cast<unsigned short>(found); }

TEST_F(StringFind, GivesTheFirstPlaceFromTheStartOn) {
  XoString const string("abcabc");
  EXPECT_EQ(string.Find(XoString("bc")), 1);
  EXPECT_EQ(string.Find(XoString("bc"), 1), 1);
  EXPECT_EQ(string.Find(XoString("bc"), 2), 4);
  EXPECT_EQ(string.Find(XoString("bc"), 5), -1);
  EXPECT_EQ(string.Find(XoString("abcabc")), 0);
  EXPECT_EQ(string.Find(XoString("abcabcd")), -1);
  EXPECT_EQ(string.Find(XoString("x")), -1);
  EXPECT_EQ(string.SubStringPos(XoString("ca")), 2);
  EXPECT_EQ(string.SubStringPos(XoString("CA"), kIgnoreCase | kNoWildcards), 2);
}

TEST_F(StringFind, FindsNothingInNothing) {
  XoString const empties[] = {XoString(), XoString("")};
  for (XoString const& empty : empties) {
    EXPECT_EQ(XoString("abc").Find(empty), -1);
    EXPECT_EQ(XoString("abc").Find(empty, 0, kWildcards), -1);
    EXPECT_EQ(empty.Find(XoString("a")), -1);
    EXPECT_EQ(empty.Find(XoString("*"), 0, kWildcards), -1);
    EXPECT_EQ(empty.Find(empty), -1);
  }
  XoString null;
  null.SetNullValue();
  EXPECT_EQ(null.Find(XoString("a")), -1);
  EXPECT_EQ(XoString("a").Find(null), -1);
  EXPECT_EQ(XoString("a").Find(null, 0, kWildcards), -1);
}

TEST_F(StringFind, FindsNothingFromTheEndOn) {
  XoString const string("abc");
  for (unsigned short const start : std::initializer_list<unsigned short>{3, 4, 32768, 65535}) {
    EXPECT_EQ(string.Find(XoString("c"), start), -1);
    EXPECT_EQ(string.Find(XoString("c"), start, kWildcards), -1);
  }
}

TEST_F(StringFind, GoesByOrdersUnderTheOperator) {
  EXPECT_EQ(XoString("xAb").Find('a'), -1);
  EXPECT_EQ(XoString("xAb").Find('a', 0, kIgnoreCase | kNoWildcards), 1);
  EXPECT_EQ(XoString("xAb").Find('a', 0, kIgnoreCase), 1);
  EXPECT_EQ(XoString("xAb").Find(XoString("aB"), 0, kIgnoreCase), 1);
  // An e with acute.
  EXPECT_EQ(XoString("x\xE9").Find('e', 0, kNoWildcards), -1);
  EXPECT_EQ(XoString("x\xE9").Find('e', 0, kNoWildcards | kIgnoreAccents), 1);
}

TEST_F(StringFind, WithoutAnOperatorTakesTheDefaultOne) {
  XoString::SetDefaultCmpOp(kNoWildcards | kIgnoreCase);
  EXPECT_EQ(XoString("xAb").Find(XoString("a")), 1);
  EXPECT_EQ(XoString("xAb").Find(XoString("a"), 0, 65535), 1);
  XoString::SetDefaultCmpOp(kNoWildcards);
  EXPECT_EQ(XoString("xAb").Find(XoString("a")), -1);
}

TEST_F(StringFind, ComparesAsManyOrdersAsThePatternHasCharacters) {
  // A sharp s is two orders, of which the first is that of an s.
  XoString const sharp("\xDF");
  EXPECT_EQ(XoString("xs").Find(sharp, 0, kNoWildcards), 1);
  EXPECT_EQ(XoString("xs").Find(sharp), 1);
  // A pattern that need not match to the end of the text is read whole.
  EXPECT_EQ(XoString("xs").Find(sharp, 0, kWildcards), -1);
  EXPECT_EQ(XoString("xssx").Find(sharp, 0, kIgnoreAccents | kIgnoreCase), 1);
}

TEST_F(StringFind, TakesWildcardsOfTheDefaultOperatorWithinAsManyOrders) {
  XoString::SetDefaultCmpOp(kWildcards);
  XoString const string("xabc");
  EXPECT_EQ(string.Find(XoString("a?")), 1);
  EXPECT_EQ(string.Find(XoString("b")), 2);
  EXPECT_EQ(string.Find(XoString("a*c")), 1);
  // Three orders from x on do not reach the c.
  EXPECT_EQ(string.Find(XoString("x*c")), -1);
  EXPECT_EQ(string.Find(XoString("x*c"), 0, kWildcards), 0);
}

TEST_F(StringFind, TakesWildcardsUnderAnOperatorThatHasThem) {
  XoString const string("xabcd");
  EXPECT_EQ(string.Find(XoString("b?d"), 0, kWildcards), 2);
  EXPECT_EQ(string.Find(XoString("a*d"), 0, kWildcards), 1);
  EXPECT_EQ(string.Find(XoString("?"), 2, kWildcards), 2);
  EXPECT_EQ(string.Find(XoString("a?d"), 0, kWildcards), -1);
  EXPECT_EQ(string.Find(XoString("ab"), 0, kWildcards), 1);
  EXPECT_EQ(string.Find(XoString("b?d"), 0, kNoWildcards), -1);
  EXPECT_EQ(Wide(u"xabcd").Find(XoString("b?d"), 0, kWildcards), 2);
  EXPECT_EQ(Wide(u"xabcd").Find(Wide(u"b?d"), 0, kWildcards), 2);
}

TEST_F(StringFind, APatternIsNoLongerThanWhatIsLeft) {
  // It would match, but it has three characters itself.
  EXPECT_EQ(XoString("xad").Find(XoString("a*d"), 1, kWildcards), -1);
  EXPECT_EQ(XoString("xadx").Find(XoString("a*d"), 1, kWildcards), 1);
}

TEST_F(StringFind, LeavesThePatternAsItIs) {
  XoString const pattern = Narrow("b", kLatin1, 9);
  EXPECT_EQ(XoString("abc").Find(pattern, 0, kWildcards), 1);
  EXPECT_EQ(TextOf(pattern), "b");
}

TEST_F(StringFind, CrossesCodeSets) {
  XoString const wide = Wide(
      u"a\u011B"
      u"c");
  EXPECT_EQ(wide.Find(Narrow("\xEC", kLatin2)), 1);
  EXPECT_EQ(Narrow("a\xEC"
                   "c",
                   kLatin2)
                .Find(Wide(u"\u011B")),
            1);
  EXPECT_EQ(Narrow("a\xEC"
                   "c",
                   kLatin2)
                .Find(static_cast<unsigned short>(0x11B)),
            1);
  EXPECT_EQ(wide.Find(static_cast<unsigned short>(0x11B)), 1);
  EXPECT_EQ(wide.Find('c'), 2);
  EXPECT_EQ(Narrow("abc", kNative).Find('c'), 2);
}

TEST_F(StringFind, ReadsTextAndPatternEachInItsLanguage) {
  // In Swedish an a with diaeresis is a letter of its own, behind z; in English it is an a.
  constexpr unsigned char kEnglish = 1, kSwedish = 13;
  auto const wide = [](std::u16string_view text, unsigned char language) {
    return Wide(text, kUnicode, language);
  };
  for (int const wildcards : {0, 0x0010}) {
    auto const op = static_cast<unsigned short>(kIgnoreAccents | wildcards);
    EXPECT_EQ(wide(u"x\u00E4", kEnglish).Find(wide(u"a", kSwedish), 0, op), 1);
    EXPECT_EQ(wide(u"x\u00E4", kSwedish).Find(wide(u"a", kEnglish), 0, op), -1);
    EXPECT_EQ(wide(u"xa", kSwedish).Find(wide(u"\u00E4", kEnglish), 0, op), 1);
    EXPECT_EQ(wide(u"xa", kEnglish).Find(wide(u"\u00E4", kSwedish), 0, op), -1);
    EXPECT_EQ(wide(u"x\u00E4", kEnglish).Find(wide(u"\u00E4", kSwedish), 0, op), -1);
    EXPECT_EQ(wide(u"x\u00E4", kSwedish).Find(wide(u"\u00E4", kSwedish), 0, op), 1);
    XoString const latin = Narrow("x\xE4", kLatin1, kEnglish);
    EXPECT_EQ(latin.Find(Narrow("a", kLatin1, kSwedish), 0, op), 1);
    EXPECT_EQ(latin.Find(Narrow("\xE4", kLatin1, kSwedish), 0, op), -1);
  }
}

TEST_F(StringFind, TheZeroCharacterIsNowhere) {
  EXPECT_EQ(XoString("abc").Find(char{0}), -1);
  EXPECT_EQ(XoString("abc").Find(static_cast<unsigned short>(0)), -1);
  EXPECT_EQ(XoString("abc").Find(char{0}, 0, kWildcards), -1);
}

TEST_F(StringFind, PlacesAbove32767ComeAsNegativeNumbers) {
  std::string text(40000, 'a');
  text += "bc";
  XoString const string(text.c_str());
  EXPECT_EQ(string.Find(XoString("b")), static_cast<short>(40000 - 65536));
  EXPECT_EQ(Position(string.Find('c', 35000)), 40001u);
  EXPECT_EQ(string.Find('d'), -1);
}

TEST_F(StringFind, PatternsAbove32767AreComparedWhole) {
  std::string const pattern = std::string(40000, 'a') + "b";
  std::string const text = "aa" + pattern + "c";
  EXPECT_EQ(XoString(text.c_str()).Find(XoString(pattern.c_str()), 1), 2);
  EXPECT_EQ(XoString(text.c_str()).Find(XoString((pattern + "d").c_str()), 1), -1);
}

class RandomFind : public RandomTest {
 protected:
  std::string Text(unsigned most, unsigned letters) {
    std::string text(Below(most + 1), 'a');
    for (char& each : text) each = "abAB12"[Below(letters)];
    return text;
  }
};

TEST_F(RandomFind, OfLettersAndDigitsIsThatOfBytes) {
  for (int round = 0; round < 5000; ++round) {
    std::string const text = Text(30, 6);
    std::string const pattern = Text(3, 6);
    unsigned const start = Below(34);
    std::size_t const at = pattern.empty() ? std::string::npos : text.find(pattern, start);
    int const expected = at == std::string::npos ? -1 : static_cast<int>(at);
    XoString const narrow(text.c_str());
    XoString const sought(pattern.c_str());
    auto const from = static_cast<unsigned short>(start);
    ASSERT_EQ(narrow.Find(sought, from), expected) << text << ' ' << pattern << ' ' << start;
    ASSERT_EQ(narrow.Find(sought, from, kNoWildcards), expected);
    ASSERT_EQ(narrow.Find(sought, from, kWildcards), expected);
    ASSERT_EQ(narrow.Find(sought, from, 0x0100), expected);
    ASSERT_EQ(Wide(std::u16string(text.begin(), text.end())).Find(sought, from), expected);
  }
}

TEST_F(RandomFind, ReplaceAllIsThatOfBytes) {
  for (int round = 0; round < 3000; ++round) {
    std::string const text = Text(20, 2);
    std::string from = Text(2, 2);
    std::string const to = Text(3, 6);
    unsigned const start = Below(22);
    std::string expected = text;
    for (std::size_t at = start; !from.empty() && at <= expected.size();) {
      at = expected.find(from, at);
      if (at == std::string::npos) break;
      expected.replace(at, from.size(), to);
      at += to.size();
    }
    bool const isWide = OneIn(2);
    XoString string =
        isWide ? Wide(std::u16string(text.begin(), text.end())) : XoString(text.c_str());
    string.ReplaceAll(XoString(from.c_str()), XoString(to.c_str()),
                      static_cast<unsigned short>(start));
    ASSERT_TRUE(IsSound(string));
    if (isWide) {
      ASSERT_EQ(WideTextOf(string), std::u16string(expected.begin(), expected.end()));
    } else {
      ASSERT_EQ(TextOf(string), expected) << text << ' ' << from << ' ' << to << ' ' << start;
    }
  }
}

TEST(ReplaceAll, ReplacesEveryPlace) {
  XoString string("one two one");
  EXPECT_EQ(&string.ReplaceAll(XoString("one"), XoString("three")), &string);
  EXPECT_EQ(TextOf(string), "three two three");
  EXPECT_EQ(TextOf(string.ReplaceAll(XoString("three"), XoString("1"), 1)), "three two 1");
}

TEST(ReplaceAll, DoesNotSearchWhatItHasWritten) {
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll(XoString("a"), XoString("aa"))), "baanaanaa");
  EXPECT_EQ(TextOf(XoString("aaa").ReplaceAll(XoString("aa"), XoString("a"))), "aa");
}

TEST(ReplaceAll, ByNothingRemoves) {
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll(XoString("an"), XoString())), "ba");
  EXPECT_EQ(TextOf(XoString("aaa").ReplaceAll(XoString("a"), XoString(""))), "");
}

TEST(ReplaceAll, OfNothingChangesNothing) {
  EXPECT_EQ(TextOf(XoString("abc").ReplaceAll(XoString(), XoString("x"))), "abc");
  EXPECT_EQ(TextOf(XoString("abc").ReplaceAll(XoString("x"), XoString("y"))), "abc");
  EXPECT_EQ(TextOf(XoString("abc").ReplaceAll(XoString("a"), XoString("y"), 65535)), "abc");
}

TEST(ReplaceAll, TakesCharacters) {
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll('a', 'o')), "bonono");
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll('a', 'o', 2)), "banono");
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll('a', char{0})), "bnn");
  EXPECT_EQ(TextOf(XoString("banana").ReplaceAll(char{0}, 'a')), "banana");
  auto const wide = [](int code) { return static_cast<unsigned short>(code); };
  EXPECT_EQ(TextOf(Narrow("a\xEC", kLatin2).ReplaceAll(wide(0x11B), wide(0xE9))), "a\xE9");
  EXPECT_EQ(WideTextOf(Wide(u"a\u4E00a").ReplaceAll(wide(0x4E00), wide('b'))), u"aba");
  EXPECT_EQ(WideTextOf(Wide(u"aba").ReplaceAll('a', 'c')), u"cbc");
}

TEST(ReplaceAll, TakesTheStringItself) {
  XoString string("ab");
  string.ReplaceAll(string, XoString("x"));
  EXPECT_EQ(TextOf(string), "x");
  string = "aba";
  string.ReplaceAll(XoString("b"), string);
  EXPECT_EQ(TextOf(string), "aabaa");
  string.ReplaceAll(string, string);
  EXPECT_EQ(TextOf(string), "aabaa");
}

TEST(ReplaceAll, EndsBehindPlace32767) {
  std::string const head(40000, 'b');
  XoString string((head + "aXa").c_str());
  string.ReplaceAll(XoString("a"), XoString("aa"));
  EXPECT_EQ(TextOf(string), head + "aaXaa");
}

TEST(ReplaceAll, EndsAtTheLimit) {
  std::string const head(kMostNarrow - 5, 'b');
  XoString string((head + "aaaaa").c_str());
  string.ReplaceAll(XoString("a"), XoString("aa"));
  EXPECT_EQ(TextOf(string), head + "aaaaa");
  EXPECT_TRUE(IsSound(string));
}

class SplitList : public testing::Test {
 protected:
  int Next() { return XoSplitList(list, item, delimiter, position); }

  XoString list;
  XoString item;
  XoString delimiter = XoString(",");
  unsigned short position = 0;
};

TEST_F(SplitList, GivesTheTrimmedElementsAndThenTheEnd) {
  list = "a, b";
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "a");
  EXPECT_EQ(position, 2);
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "b");
  EXPECT_EQ(position, 5);
  EXPECT_EQ(Next(), kEndOfList);
  EXPECT_EQ(TextOf(item), "b");
  EXPECT_EQ(position, 5);
}

TEST_F(SplitList, SkipsADelimiterAtTheStart) {
  list = ",a";
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "a");
  EXPECT_EQ(Next(), kEndOfList);
}

TEST_F(SplitList, GivesEmptyElementsElsewhere) {
  list = "a,,b,";
  std::vector<std::string> items;
  while (Next() == 0) items.push_back(TextOf(item));
  EXPECT_EQ(items, (std::vector<std::string>{"a", "", "b"}));
  // Of two delimiters at the start the first is skipped.
  list = ",,a";
  position = 0;
  EXPECT_EQ(Next(), 0);
  EXPECT_TRUE(item.IsEmpty());
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "a");
}

TEST_F(SplitList, AnElementHasCodeSetAndLanguageOfTheList) {
  list = Narrow(" \xEC ,b", kLatin2, 9);
  item = Wide(u"old");
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "\xEC");
  EXPECT_EQ(item.codeSet, kLatin2);
  EXPECT_EQ(item.language, 9);
  list = Wide(u" \u4E00 ,b");
  position = 0;
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(WideTextOf(item), u"\u4E00");
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(WideTextOf(item), u"b");
}

TEST_F(SplitList, OfNothingIsAtItsEnd) {
  EXPECT_EQ(Next(), kEndOfList);
  list = "";
  EXPECT_EQ(Next(), kEndOfList);
  list = "abc";
  position = 65535;
  EXPECT_EQ(Next(), kEndOfList);
  list = ",";
  position = 0;
  EXPECT_EQ(Next(), kEndOfList);
}

TEST_F(SplitList, WithoutADelimiterIsOneElement) {
  list = "a, b";
  delimiter = XoString();
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "a, b");
  EXPECT_EQ(Next(), kEndOfList);
}

TEST_F(SplitList, StepsByOneCharacterBehindALongDelimiter) {
  list = "a--b";
  delimiter = "--";
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "a");
  EXPECT_EQ(position, 2);
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(TextOf(item), "-b");
}

TEST_F(SplitList, MaySplitIntoTheListItself) {
  list = "a,b";
  EXPECT_EQ(XoSplitList(list, list, delimiter, position), 0);
  EXPECT_EQ(TextOf(list), "a");
}

TEST_F(SplitList, EndsOnLongLists) {
  std::string text;
  for (int element = 0; element < 400; ++element) text += std::string(150, 'x') + ',';
  list = text.c_str();
  ASSERT_GT(list.Len(), 60000);
  int elements = 0;
  while (Next() == 0) {
    ASSERT_EQ(item.Len(), 150);
    ASSERT_LE(++elements, 400);
  }
  EXPECT_EQ(elements, 400);
}

}  // namespace
}  // namespace xo::test
