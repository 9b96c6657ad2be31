// Comparison by levels: its operators, nulls, counts and code sets.
#include <climits>

#include "tests/xostring/near_pairs.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kLevels = kCmpNoWildcards;
constexpr unsigned short kNoCase = kLevels | kCmpIgnoreCase;
constexpr unsigned short kNoAccents = kLevels | kCmpIgnoreAccents;

int Order(std::u16string const& one, std::u16string const& two, unsigned short cmpOp = kLevels,
          short count = -1, unsigned char language = 1) {
  auto const text1 = TextBytes(one, kUnicode), text2 = TextBytes(two, kUnicode);
  int const outcome = Sign(
      XoStrCmp(kUnicode, language, text1.data(), kUnicode, language, text2.data(), cmpOp, count));
  return outcome;
}

TEST(OrderKeyTest, RanksLetterCaseAndAccent) {
  EXPECT_EQ(OrderKey(0, 2), 0u);
  EXPECT_EQ(OrderKey(0, 20), 0u);
  // A letter with all of its fields: extension 1, letter 3, accent 5, case 2.
  EXPECT_EQ(OrderKey(0x4000 | 1 | 3 << 2 | 5 << 7 | 2 << 12, 2),
            0x02000000u | 0x400Du << 8 | 2u << 5 | 5u);
  EXPECT_EQ(OrderKey(0x7FFF, 4), 0x04000000u | 0x407Fu << 8 | 0x7Fu);
  // Everything else keeps its bits.
  EXPECT_EQ(OrderKey(13, 2), 0x02000D00u);
  EXPECT_EQ(OrderKey(0x3FFF, 2), 0x023FFF00u);
  EXPECT_EQ(OrderKey(0x8000, 2), 0x02800000u);
  EXPECT_EQ(OrderKey(0xFFFF, 255), 0xFFFFFF00u);
  // In the group of what the tables lack a letter is none.
  EXPECT_EQ(OrderKey(0x4101, 20), 0x14410100u);
  EXPECT_EQ(OrderKey(0x4101, 21), 0x15400102u);
}

TEST(CompareTest, ATextEqualsItselfUnderEveryOperator) {
  for (unsigned bits = 0; bits < 0x400; bits += 0x10) {
    EXPECT_EQ(Order(u"abc", u"abc", static_cast<unsigned short>(bits)), 0) << bits;
  }
}

TEST(CompareTest, LowerCaseComesBeforeUpperCase) {
  EXPECT_EQ(Order(u"a", u"A"), -1);
  EXPECT_EQ(Order(u"A", u"a"), 1);
  EXPECT_EQ(Order(u"a", u"A", kNoCase), 0);
  EXPECT_EQ(Order(u"a", u"A", kNoAccents), -1);
}

TEST(CompareTest, TheLastDifferenceOfAccentsDecides) {
  EXPECT_EQ(Order(u"éae", u"eaé"), -1);
  EXPECT_EQ(Order(u"cote", u"coté"), -1);
  EXPECT_EQ(Order(u"coté", u"côte"), 1);
  EXPECT_EQ(Order(u"côte", u"côté"), -1);
  EXPECT_EQ(Order(u"éae", u"eaé", kNoAccents), 0);
}

TEST(CompareTest, TheFirstDifferenceOfCaseDecides) {
  EXPECT_EQ(Order(u"aBA", u"ABa"), -1);
  EXPECT_EQ(Order(u"Aba", u"abA"), 1);
  EXPECT_EQ(Order(u"Aba", u"abA", kNoCase), 0);
}

TEST(CompareTest, AccentsRankAboveCase) {
  EXPECT_EQ(Order(u"é", u"E"), 1);
  EXPECT_EQ(Order(u"é", u"E", kNoCase), 1);
  EXPECT_EQ(Order(u"É", u"e", kNoAccents), 1);
  EXPECT_EQ(Order(u"eA", u"Éa"), -1);
  EXPECT_EQ(Order(u"é", u"E", kNoCase | kCmpIgnoreAccents), 0);
}

TEST(CompareTest, LettersRankAboveAllElse) {
  EXPECT_EQ(Order(u"ÉA a", u"eaab"), -1);
  EXPECT_EQ(Order(u"a - b", u"ac"), -1);
  EXPECT_EQ(Order(u"ab", u"a"), 1);
  EXPECT_EQ(Order(u"", u"a"), -1);
  EXPECT_EQ(Order(u"9", u"a"), -1);
  EXPECT_EQ(Order(u"z", u"α"), -1);
  EXPECT_EQ(Order(u"ω", u"а"), -1);
  EXPECT_EQ(Order(u"я", u"一"), -1);
  EXPECT_EQ(Order(u"一", u"丁"), -1);
}

TEST(CompareTest, SpacesAndSymbolsAreTheLastLevel) {
  EXPECT_NE(Order(u"a b", u"ab"), 0);
  EXPECT_EQ(Order(u"a b", u"ab"), 1);
  EXPECT_EQ(Order(u"a b", u"Ab"), -1);
  EXPECT_EQ(Order(u"a-b", u"a b"), 1);
  EXPECT_EQ(Order(u"a b", u"ac"), -1);
  // The last of several differences stands.
  EXPECT_EQ(Order(u"a-b c", u"a b-c"), -1);
  EXPECT_EQ(Order(u"a--b", u"a-b"), 1);
}

TEST(CompareTest, SpacesAndSymbolsMayBeSkipped) {
  EXPECT_EQ(Order(u"a b", u"ab", kLevels | kCmpSkipSpaces), 0);
  EXPECT_EQ(Order(u"a-b", u"ab", kLevels | kCmpSkipSpaces), 1);
  EXPECT_EQ(Order(u"a-b", u"ab", kLevels | kCmpSkipSymbols), 0);
  EXPECT_EQ(Order(u"a b", u"ab", kLevels | kCmpSkipSymbols), 1);
  EXPECT_EQ(Order(u" -a -b", u"ab", kLevels | kCmpSkipSymbols | kCmpSkipSpaces), 0);
  EXPECT_EQ(Order(u"a b", u"ac", kLevels | kCmpSkipSpaces), -1);
}

TEST(CompareTest, PlainOrdersHaveNoLevels) {
  EXPECT_EQ(Order(u"Ab", u"aa", kCmpPlainOrders), -1);
  EXPECT_EQ(Order(u"a b", u"ab", kCmpPlainOrders), -1);
  EXPECT_EQ(Order(u"a b", u"ab", kCmpPlainOrders | kCmpSkipSpaces | kCmpSkipSymbols), -1);
  EXPECT_NE(Order(u"a", u"A", kCmpPlainOrders | kCmpIgnoreCase), 0);
}

TEST(CompareTest, ACountOfZeroMakesTextsEqual) {
  for (unsigned short const cmpOp : {kLevels, kCmpPlainOrders, static_cast<unsigned short>(0)}) {
    EXPECT_EQ(XoStrCmp(1, 1, "a", 1, 1, "b", cmpOp, 0), 0);
    EXPECT_EQ(XoStrCmp(0, 1, "a", 0, 1, "b", cmpOp, 0), 0);
    EXPECT_EQ(XoStrCmp(1, 1, "a", 1, 254, nullptr, cmpOp, 0), 1);
  }
  EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 1, "b", kLevels, 0), -1);
}

TEST(CompareTest, ACountEndsBothTextsBehindThatManyOrders) {
  EXPECT_EQ(Order(u"abc", u"abd", kLevels, 2), 0);
  EXPECT_EQ(Order(u"abc", u"abd", kLevels, 3), -1);
  EXPECT_EQ(Order(u"abC", u"abc", kLevels, 2), 0);
  EXPECT_EQ(Order(u"abc", u"abd", kCmpPlainOrders, 2), 0);
  EXPECT_EQ(Order(u"abc", u"abd", kCmpPlainOrders, 3), -1);
  // Spaces are orders, skipped or not.
  EXPECT_EQ(Order(u"  b", u"  c", kLevels | kCmpSkipSpaces, 2), 0);
  EXPECT_EQ(Order(u"  b", u"b", kLevels | kCmpSkipSpaces, 2), -1);
  // An expansion is as many orders as it has.
  EXPECT_EQ(Order(u"ßa", u"ssb", kNoCase | kCmpIgnoreAccents, 2, 2), 0);
  // Counts are read without a sign, but for -1.
  EXPECT_EQ(Order(u"abc", u"abd", kLevels, -2), -1);
}

TEST(CompareTest, NullTextsComeFirst) {
  for (unsigned short const cmpOp : {kLevels, kCmpPlainOrders}) {
    EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 254, nullptr, cmpOp), 0);
    EXPECT_EQ(XoStrCmp(1, 254, nullptr, 254, 0, nullptr, cmpOp), 0);
    EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 1, "", cmpOp), -1);
    EXPECT_EQ(XoStrCmp(254, 0, nullptr, 1, 1, "a", cmpOp), -1);
    EXPECT_EQ(XoStrCmp(1, 1, "", 1, 254, nullptr, cmpOp), 1);
    EXPECT_EQ(XoStrCmp(0, 254, nullptr, 0, 0, "", cmpOp), -1);
  }
  for (unsigned bits = 0; bits < 0x400; bits += 0x10) {
    auto const cmpOp = static_cast<unsigned short>(bits);
    EXPECT_EQ(XoStrCmp(1, 254, nullptr, kUnicode, 254, nullptr, cmpOp), 0);
    EXPECT_EQ(XoStrCmp(254, 0, nullptr, 0, 254, nullptr, cmpOp, 0), 0);
    EXPECT_EQ(XoStrCmp(1, 1, "", 1, 254, nullptr, cmpOp), 1);
    EXPECT_EQ(XoStrCmp(1, 254, nullptr, 1, 1, "", cmpOp), (bits & 0x110) != 0 ? -1 : 0);
  }
}

TEST(CompareTest, ANullPointerReadsAsAnEmptyText) {
  for (unsigned char const set :
       {static_cast<unsigned char>(0), static_cast<unsigned char>(1), kUnicode}) {
    EXPECT_EQ(XoStrCmp(set, 1, nullptr, set, 1, nullptr, kLevels), 0);
    EXPECT_EQ(XoStrCmp(set, 1, nullptr, set, 1, nullptr, 0), 0);
    EXPECT_EQ(XoStrCmp(set, 1, nullptr, 1, 1, "a", kLevels) < 0, true);
    EXPECT_EQ(XoStrCmp(1, 1, "a", set, 1, nullptr, kCmpPlainOrders) > 0, true);
    EXPECT_EQ(XoStrCmp(set, 1, nullptr, 1, 1, "*", 0), 0);
  }
}

TEST(CompareTest, TextsWithoutACodeSetCompareByBytes) {
  EXPECT_LT(XoStrCmp(0, 1, "B", 0, 1, "a", kLevels), 0);
  EXPECT_GT(XoStrCmp(0, 1, "\xE9", 0, 1, "f", kLevels), 0);
  EXPECT_EQ(XoStrCmp(0, 1, "abc", 0, 1, "abd", kLevels, 2), 0);
  EXPECT_EQ(XoStrCmp(0, 1, "abc", 0, 1, "a*", 0), 0);
}

TEST(CompareTest, OneTextWithoutACodeSetIsOfTheNativeOne) {
  EXPECT_GT(XoStrCmp(0, 1, "B", 1, 1, "a", kLevels), 0);
  EXPECT_EQ(XoStrCmp(0, 1, "\xE9t\xE9", 1, 1, "\xE9t\xE9", kLevels), 0);
  EXPECT_LT(XoStrCmp(1, 1, "\xE9", 0, 1, "f", kLevels), 0);
}

TEST(CompareTest, TextsOfDifferentCodeSetsCompareByTheirCharacters) {
  auto const wide = TextBytes(u"été", kUnicode);
  EXPECT_EQ(XoStrCmp(1, 6, "\xE9t\xE9", kUnicode, 6, wide.data(), kLevels), 0);
  EXPECT_EQ(XoStrCmp(1, 6, "\xE9t\xE9", kUnicode, 6, wide.data(), kCmpPlainOrders), 0);
  EXPECT_GT(XoStrCmp(1, 6, "\xE9tu", kUnicode, 6, wide.data(), kLevels), 0);
}

TEST(CompareTest, WideTextIsReadInItsByteOrder) {
  char const big1[] = {1, 0, 0, 'b', 0, 0}, big2[] = {1, 0, 0, 'a', 0, 0};
  EXPECT_GT(XoStrCmp(kUnicode, 1, big1, kUnicode, 1, big2, kLevels, -1, 2), 0);
  auto const little1 = TextBytes(u"Āb", kUnicode), little2 = TextBytes(u"Āa", kUnicode);
  constexpr unsigned char kOrders[] = {1, 8, 255};
  for (unsigned char const byteOrder : kOrders) {
    EXPECT_GT(
        XoStrCmp(kUnicode, 1, little1.data(), kUnicode, 1, little2.data(), kLevels, -1, byteOrder),
        0);
  }
}

TEST(CompareTest, OrdersCompareWithTheirText) {
  // "ab" as orders, in the group of Latin: bit 7 of the language byte does not count.
  OrderTable const& table = *XoLanguageContext::QueryCodeSet(1)->orderTable;
  std::vector<char> orders;
  for (char const letter : {'a', 'b'}) {
    unsigned const order = table.GetEntry(static_cast<unsigned char>(letter))->order;
    orders.push_back(static_cast<char>(order & 0xFF));
    orders.push_back(static_cast<char>(order >> 8));
  }
  orders.insert(orders.end(), {0, 0});
  constexpr unsigned char kGroups[] = {2, 130};
  for (unsigned char const group : kGroups) {
    EXPECT_EQ(XoStrCmp(254, group, orders.data(), 1, 1, "ab", kLevels), 0);
    EXPECT_LT(XoStrCmp(254, group, orders.data(), 1, 1, "aB", kLevels), 0);
    EXPECT_LT(XoStrCmp(1, 1, "aa", 254, group, orders.data(), kLevels), 0);
    EXPECT_EQ(XoStrCmp(254, group, orders.data(), 1, 1, "a*", 0), 0);
  }
  EXPECT_GT(XoStrCmp(254, 3, orders.data(), 1, 1, "ab", kLevels), 0);
}

TEST(CompareTest, PositionalTellsTheLetterDifferenceOfTheLastStepWithinCount) {
  constexpr unsigned short kTelling = kLevels | kCmpSkipSpaces;
  int positional = 77;
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kTelling, 5, 1, &positional);
  EXPECT_LT(positional, 0);
  positional = 77;
  XoStrCmp(1, 1, "abc", 1, 1, "ABC", kTelling, 5, 1, &positional);
  EXPECT_EQ(positional, 0);
  positional = 77;
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kTelling, -1, 1, &positional);
  EXPECT_EQ(positional, 77);
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kLevels, 5, 1, &positional);
  EXPECT_EQ(positional, 77);
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kCmpPlainOrders | kCmpSkipSpaces, 5, 1, &positional);
  EXPECT_EQ(positional, 77);
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kTelling, -2, 1, &positional);
  EXPECT_EQ(positional, 77);
  XoStrCmp(1, 1, "abc", 1, 1, "abd", kTelling, 0, 1, &positional);
  EXPECT_EQ(positional, 77);
}

TEST(CompareTest, CodeSetsAndLanguagesThatDoNotExistDoNoHarm) {
  auto const text = TextBytes(u"abc", kUnicode);
  for (unsigned set = 0; set < 256; ++set) {
    for (unsigned language = 0; language < 256; language += 17) {
      for (unsigned short const cmpOp :
           {kLevels, kCmpPlainOrders, static_cast<unsigned short>(0)}) {
        auto const number = static_cast<unsigned char>(set);
        auto const own = static_cast<unsigned char>(language);
        if (own == 254 || (number == 254 && own == 0)) continue;
        EXPECT_EQ(XoStrCmp(number, own, text.data(), number, own, text.data(), cmpOp), 0);
        XoStrCmp(number, own, text.data(), kUnicode, 1, text.data(), cmpOp);
      }
    }
  }
}

TEST(CompareTest, LongTextsAreReadToTheirEnds) {
  std::string const text(70000, 'a');
  for (unsigned short const cmpOp : {kLevels, kCmpPlainOrders, static_cast<unsigned short>(0)}) {
    EXPECT_LT(XoStrCmp(1, 1, (text + "a").c_str(), 1, 1, (text + "b").c_str(), cmpOp), 0);
    EXPECT_LT(XoStrCmp(1, 1, (text + "a").c_str(), 1, 2, (text + "b").c_str(), cmpOp), 0);
  }
  // More orders than a count can tell.
  std::string const sharp(40000, '\xDF');
  EXPECT_LT(XoStrCmp(1, 1, (sharp + "a").c_str(), 1, 2, (sharp + "b").c_str(), kLevels), 0);
}

TEST(CompareOrdersOnlyTest, GoesOnFromWhereTheIteratorsStand) {
  XoStringIterator first("xab", 1, 1), second("yyac", 1, 1);
  ++first;
  ++second, ++second;
  EXPECT_EQ(CompareOrdersOnly(first, second, 1), 0);
  EXPECT_LT(CompareOrdersOnly(first, second, 1), 0);
  EXPECT_EQ(CompareOrdersOnly(first, second, 9), 0);
}

/// Strings under the default operator, which is put back.
class StringOperators : public ::testing::Test {
 protected:
  ~StringOperators() override { XoString::SetDefaultCmpOp(kLevels); }
};

TEST_F(StringOperators, CompareUnderTheDefaultOperator) {
  XoString const lower("abc"), upper("ABC"), other("abd");
  EXPECT_TRUE(lower == lower);
  EXPECT_FALSE(lower != lower);
  EXPECT_TRUE(lower < upper && lower <= upper && upper > lower && upper >= lower);
  EXPECT_TRUE(lower != upper && !(lower == upper));
  EXPECT_TRUE(upper < other);
  XoString::SetDefaultCmpOp(kNoCase);
  EXPECT_TRUE(lower == upper && lower <= upper && lower >= upper);
  EXPECT_FALSE(lower < upper || lower > upper || lower != upper);
  EXPECT_EQ(lower.Compare(upper), 0);
  EXPECT_LT(lower.Compare(upper, -1, kLevels), 0);
  EXPECT_EQ(lower.Compare(other, 2, kLevels), 0);
  EXPECT_LT(lower.Compare(other, 3), 0);
}

TEST_F(StringOperators, TheRightStringMayBeAPattern) {
  XoString::SetDefaultCmpOp(0);
  XoString const text("abc"), pattern("a*");
  EXPECT_TRUE(text == pattern);
  EXPECT_FALSE(pattern == text);
  EXPECT_FALSE(text != pattern);
}

TEST_F(StringOperators, AStringEqualsItselfWhateverItsComparisonSays) {
  // A question mark of the text is a symbol, and skipped; that of the pattern wants a character.
  XoString::SetDefaultCmpOp(kCmpSkipSymbols);
  XoString const string("a?"), copy(string);
  EXPECT_TRUE(string == string);
  EXPECT_FALSE(string == copy);
  EXPECT_TRUE(string != string);
  EXPECT_NE(string.Compare(string), 0);
}

TEST_F(StringOperators, NullDiffersFromEmptyButForEqualsIgnoreLanguage) {
  XoString null, empty;
  null.SetNullValue();
  EXPECT_TRUE(null < empty && null != empty && null == null);
  EXPECT_EQ(null.Compare(empty), -1);
  EXPECT_EQ(empty.Compare(null), 1);
  EXPECT_EQ(null.EqualsIgnoreLanguage(empty), 1);
  EXPECT_EQ(empty.EqualsIgnoreLanguage(null), 1);
  EXPECT_EQ(null.EqualsIgnoreLanguage(null), 1);
  // Two that are null are so whatever stands in them; one beside another language is its text.
  XoString one(null), other(null);
  one += "abc";
  other += "xyz";
  EXPECT_EQ(one.EqualsIgnoreLanguage(other), 1);
  EXPECT_EQ(one.EqualsIgnoreLanguage("xyz"), 0);
  EXPECT_EQ(other.EqualsIgnoreLanguage("xyz"), 1);
}

TEST_F(StringOperators, EqualsIgnoreLanguageComparesOrders) {
  XoString one("chata"), two("chata"), three("Chata");
  one.language = 22;
  two.language = 1;
  EXPECT_EQ(one.EqualsIgnoreLanguage(two), 1);
  EXPECT_FALSE(one == two && two == one);
  EXPECT_EQ(one.EqualsIgnoreLanguage(three), 0);
}

}  // namespace
}  // namespace xo::test
