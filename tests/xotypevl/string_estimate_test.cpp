// The share of an index that a predicate on a string selects, worked out from the letters.
#include <cmath>

#include "tests/xotypevl/string_predicate.hpp"

namespace xo::test {
namespace {

/// Two neighbouring numbers are a unit apart; the letter in the first place that counts has the
/// weight of 4,294,967,296, and the number of a letter is in bits 2 to 6.
constexpr double kUnit = 1048576.0;
constexpr double kLetter = 4 * 4294967296.0;

/// Keys of a range in a format.
KeyRange RangeOf(std::string_view low, std::string_view high, unsigned char format = kLittle) {
  return {Key(TextOrders(low), format), Key(TextOrders(high), format)};
}

float ShareOf(StoredBytes const& value, unsigned short op, KeyRange const& range,
              unsigned char format = kLittle) {
  return Evaluate({value, op, format, false, range}).share;
}

/// As the result is rounded.
float Share(double part, double whole) { return static_cast<float>(part / whole); }

TEST(StringEstimate, IsTheShareOfTheLettersOnTheSideOfTheRelation) {
  // From c to k there are eight letters, and e is two behind c.
  double const total = 8 * kLetter + kUnit;
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    KeyRange const range = RangeOf("c", "k", format);
    for (StoredBytes const& value :
         {WideText("e", format), Record("e", format), Key(TextOrders("e"), format)}) {
      auto const share = [&](unsigned short op) { return ShareOf(value, op, range, format); };
      EXPECT_EQ(share(kBelow), Share(2 * kLetter, total));
      EXPECT_EQ(share(kAbove), Share(6 * kLetter, total));
      EXPECT_EQ(share(kEqual), Share(kUnit, total));
      EXPECT_EQ(share(kBelow | kEqual), Share(2 * kLetter + kUnit, total));
      EXPECT_EQ(share(kBelow | kAbove | kEqual), 1);
      EXPECT_EQ(share(0), 0);
    }
  }
}

TEST(StringEstimate, BeginsBehindWhatAllHaveInCommon) {
  double const total = 8 * kLetter + kUnit;
  for (char const* const prefix : {"x", "xyz", "xyzxyzxyz", "12 - 34 "}) {
    auto const with = [&](char letter) { return std::string(prefix) + letter; };
    KeyRange const range = RangeOf(with('c'), with('k'));
    EXPECT_EQ(ShareOf(Key(TextOrders(with('e'))), kBelow, range), Share(2 * kLetter, total));
    EXPECT_EQ(ShareOf(WideText(with('e')), kAbove, range), Share(6 * kLetter, total));
  }
}

TEST(StringEstimate, TakesSpellingsForCommonThatMakeNoDifference) {
  constexpr unsigned kAcute = 7;
  KeyRange const range{Key({OrderOf('A'), OrderOf('c')}),
                       Key({OrderOf('a', kAcute), OrderOf('k')})};
  StoredBytes const value = Key(TextOrders("ae"));
  double const total = 8 * kLetter + kUnit;
  EXPECT_EQ(ShareOf(value, kBelow | kNoCase | kNoAccents, range), Share(2 * kLetter, total));
  // Otherwise the first letter stays, and those behind it weigh less.
  double const second = kLetter / 65536;
  EXPECT_EQ(ShareOf(value, kBelow, range), Share(2 * second, 8 * second + kUnit));
  EXPECT_EQ(ShareOf(value, kBelow | kNoCase, range), Share(2 * second, 8 * second + kUnit));
}

TEST(StringEstimate, AValueWithoutCodeSetHasNoSpelling) {
  // Whatever the bounds are that there were before.
  KeyRange const range{Key({OrderOf('A'), OrderOf('c')}), Key({OrderOf('a'), OrderOf('k')})};
  StoredBytes const bound = Key(TextOrders("ae"));
  double const second = kLetter / 65536;
  Predicate const predicate{
      .value = Record("x", kLittle, 0, 0), .op = kBelow | kNoCase, .range = range};
  EXPECT_EQ(Evaluate(predicate, &bound, &bound).share, Share(2 * second, 8 * second + 128));
}

TEST(StringEstimate, IdeographsHaveNoSpelling) {
  // What would be the case of a letter tells them apart.
  KeyRange const range{Key({0x8100, OrderOf('c')}), Key({0xB100, OrderOf('k')})};
  double const second = kLetter / 65536;
  double const total = 0x3000 * 4294967296.0 + 8 * second + kUnit;
  EXPECT_EQ(ShareOf(Key({0x8100, OrderOf('e')}), kBelow | kNoCase | kNoAccents, range),
            Share(2 * second, total));
}

TEST(StringEstimate, StopsAtOnceWhereTheGroupsDiffer) {
  // What differs in the group differs in bit 16 of the first place and above, whatever follows.
  KeyRange const range{Key(TextOrders("ac"), kLittle, 2), Key(TextOrders("ak"), kLittle, 3)};
  double const group = 65536 * 4294967296.0;
  double const second = kLetter / 65536;
  double const total = group + 8 * second + kUnit;
  EXPECT_EQ(ShareOf(Key(TextOrders("ae")), kBelow, range), Share(2 * second, total));
  EXPECT_EQ(ShareOf(Key(TextOrders("ae"), kLittle, 3), kBelow, range),
            Share(group + 2 * second, total));
}

TEST(StringEstimate, GroupsAreComparedOfTheFirstLettersOnly) {
  constexpr unsigned kAlpha = 0x3B1;
  unsigned short const alpha[] = {kAlpha, 0};
  XoStringIterator letter(alpha, 253, 1);
  unsigned const order = letter.GetNextOrder(1);
  ASSERT_NE(letter.orderGroup, 2);
  KeyRange const range{Key({OrderOf('x'), order, OrderOf('c')}),
                       Key({OrderOf('x'), order, OrderOf('k')})};
  // Behind the Greek letter, which is common to all, the value stands in a higher group.
  StoredBytes const value = WideRecord({'x', kAlpha, 'e'}, kLittle);
  EXPECT_EQ(ShareOf(value, kBelow | kAbove, range), 1);
}

TEST(StringEstimate, OfAPatternIsThatOfItsPrefix) {
  double const total = 8 * kLetter + kUnit;
  KeyRange const range = RangeOf("c", "k");
  EXPECT_EQ(ShareOf(WideText("e*"), kBelow, range), Share(2 * kLetter, total));
  // From "e" to "e" and an order above all: 65,534 of the second place.
  double const second = kLetter / 4 / 65536;
  EXPECT_EQ(ShareOf(WideText("e*"), kEqual, range), Share(65534 * second + kUnit, total));
  EXPECT_EQ(ShareOf(WideText("e*"), kAbove, range), Share(6 * kLetter, total));
}

TEST(StringEstimate, OutsideTheRangeIsNothingOrAll) {
  KeyRange const range = RangeOf("c", "k");
  EXPECT_EQ(ShareOf(WideText("a"), kBelow, range), 0);
  EXPECT_EQ(ShareOf(WideText("a"), kEqual, range), 0);
  EXPECT_EQ(ShareOf(WideText("a"), kAbove, range), 1);
  EXPECT_EQ(ShareOf(WideText("z"), kAbove, range), 0);
  EXPECT_EQ(ShareOf(WideText("z"), kEqual, range), 0);
  EXPECT_EQ(ShareOf(WideText("z"), kBelow, range), 1);
}

TEST(StringEstimate, WithoutKnowledgeOfTheIndexIsNothing) {
  KeyRange const range = RangeOf("a", "c");
  EXPECT_EQ(Evaluate({WideText("b")}).share, 0);
  EXPECT_TRUE(Evaluate({WideText("b")}).low);
  XoTypeMgr const manager;
  for (bool const lowIsKnown : {false, true}) {
    StoredBytes value = WideText("b");
    StoredBytes end = range.low;
    XoIdxBounds known;
    (lowIsKnown ? known.low : known.high) = end.data();
    (lowIsKnown ? known.lowLen : known.highLen) = static_cast<unsigned char>(end.size());
    XoIdxBounds bounds;
    unsigned short op = 7;
    EXPECT_EQ(
        manager.EvalAndBound(XoSTRING_T, &known, op, value.data(), kLittle, 1, &bounds, nullptr),
        0);
    op = kEqual;
    manager.EvalAndBound(XoSTRING_T, &known, op, value.data(), kLittle, 0, &bounds, nullptr);
    EXPECT_NE(bounds.low, nullptr);
    EXPECT_NE(bounds.high, nullptr);
    ReleaseBounds(bounds);
  }
}

// Ties.

TEST(StringEstimate, AtTheEndsATieSelectsAUnit) {
  double const total = 8 * kLetter + kUnit;
  KeyRange const range = RangeOf("c", "k");
  EXPECT_EQ(ShareOf(WideText("k"), kAbove, range), Share(kUnit, total));
  EXPECT_EQ(ShareOf(WideText("c"), kBelow, range), Share(kUnit, total));
}

TEST(StringEstimate, ATieIsSettledByAllLetters) {
  // The numbers know of three letters.
  KeyRange const range = RangeOf("cccc", "kkkk");
  EXPECT_GT(ShareOf(WideText("cccd"), kBelow, range), 0);
  EXPECT_EQ(ShareOf(WideText("cccb"), kBelow, range), 0);
  EXPECT_GT(ShareOf(WideText("kkkj"), kAbove, range), 0);
  EXPECT_EQ(ShareOf(WideText("kkkl"), kAbove, range), 0);
  // And not of case and accents.
  EXPECT_EQ(ShareOf(WideText("kkkK"), kAbove, range), 0);
  EXPECT_GT(ShareOf(WideText("kkkK"), kAbove | kNoCase, range), 0);
}

TEST(StringEstimate, ATieWithACutKeyIsSettledByItsOrders) {
  // The hyphen is behind the three of the value, and no letter.
  StoredBytes const end = Key(TextOrders("abc", {kHyphen}), kLittle, 0x82);
  StoredBytes const value = Key(TextOrders("abc"), kLittle, 0x82);
  EXPECT_EQ(ShareOf(value, kBelow | kAbove, {end, end}), 2);
  EXPECT_EQ(ShareOf(value, kBelow | kAbove | kEqual, {end, end}), 1);
}

TEST(StringEstimate, ACutHighEndThatTheValueBeginsWithIsSelected) {
  // Its asterisk is no letter, and stands for the rest of the value in the comparison.
  StoredBytes const cut =
      CutTo(Key({OrderOf('k'), AsteriskOrder(), AsteriskOrder(), OrderOf('z')}), 8);
  KeyRange const range{Key(TextOrders("c")), cut};
  double const total = 8 * kLetter + kUnit;
  EXPECT_EQ(ShareOf(WideText("kk"), kEqual, range), Share(kUnit, total));
  EXPECT_EQ(ShareOf(WideText("kk"), kEqual | kLiteral, range), 0);
  EXPECT_EQ(ShareOf(WideText("lk"), kEqual, range), 0);
}

// Without a code set.

TEST(StringEstimate, WithoutACodeSetBytesAreDigits) {
  double const first = 128.0 * 128 * 128;
  auto const record = [](char const* text) { return Record(text, kLittle, 0, 0); };
  KeyRange const range{record("c"), record("k")};
  EXPECT_EQ(ShareOf(record("e"), kBelow, range), Share(2 * first, 8 * first + 128));
  EXPECT_EQ(ShareOf(record("e"), kEqual, range), Share(128, 8 * first + 128));
  KeyRange const common{record("xyzxyzc"), record("xyzxyzk")};
  EXPECT_EQ(ShareOf(record("xyzxyze"), kAbove, common), Share(6 * first, 8 * first + 128));
}

TEST(StringEstimate, HighBytesAreNotLost) {
  auto const record = [](char const* text) { return Record(text, kLittle, 0, 0); };
  KeyRange const range{record("c"), record("\xE9"
                                           "a")};
  // Behind the end by the digits, which are 127 for both first bytes.
  double const first = 128.0 * 128 * 128;
  double const total = (127 - 'c') * first + 'a' * first / 128 + 128;
  EXPECT_EQ(ShareOf(record("\xC0z"), kEqual, range), Share(128, total));
  EXPECT_EQ(ShareOf(record("zz"), kEqual, {record("c"), record("\x7F")}),
            Share(128, 28 * first + 128));
  EXPECT_EQ(ShareOf(record("\x7Fz"), kEqual, range), 0);
  EXPECT_EQ(ShareOf(record("\xC0z"), kEqual,
                    {record("c"), record("\x7F"
                                         "a")}),
            0);
}

TEST(StringEstimate, HighBytesOfATextWithACodeSetAreNone) {
  StoredBytes const bound = Record("\xC0z", kLittle, 0, 0);
  KeyRange const range{Record("c", kLittle, 0, 0), Record("\xE9", kLittle, 0, 0)};
  Predicate const predicate{.value = Record("\xC0z"), .range = range};
  EXPECT_EQ(Evaluate(predicate, nullptr, &bound).share, 0);
}

TEST(StringEstimate, OlderRecordsCountTheirOwnHeader) {
  double const first = 128.0 * 128 * 128;
  auto const share = [&](char const* text, unsigned short op, KeyRange const& range) {
    return Evaluate({OlderRecord({text}), op, kLittle, true, range}).share;
  };
  KeyRange const range{OlderRecord({"xyc"}), OlderRecord({"xyk"})};
  EXPECT_EQ(share("xye", kBelow, range), Share(2 * first, 8 * first + 128));
  EXPECT_EQ(share("xye", kAbove, range), Share(6 * first, 8 * first + 128));
  // Cut ends have what is there: all three characters of five bytes.
  KeyRange const cut{CutTo(OlderRecord({"xycz"}), 5), CutTo(OlderRecord({"xykz"}), 5)};
  EXPECT_EQ(share("xye", kBelow, cut), Share(2 * first, 8 * first + 128));
}

// Ends that are cut, or lie.

TEST(StringEstimate, ACutEndHasWhatIsThere) {
  KeyRange const range{CutTo(Key(TextOrders("cabbage")), 6), CutTo(Key(TextOrders("kale")), 6)};
  EXPECT_EQ(ShareOf(WideText("e"), kBelow, range), Share(2 * kLetter, 8 * kLetter + kUnit));
  // Half an order does not count.
  KeyRange const odd{CutTo(Key(TextOrders("cabbage")), 7), CutTo(Key(TextOrders("kale")), 7)};
  EXPECT_EQ(ShareOf(WideText("e"), kBelow, odd), Share(2 * kLetter, 8 * kLetter + kUnit));
}

TEST(StringEstimate, OfEndsThatHoldNoKeysIsNothing) {
  // From the low end a unit down to the high one, and a tie with the low one.
  auto const record = [](char const* text) { return Record(text, kLittle, 0, 0); };
  KeyRange const range{record("b"), record("a\x7F\x7F")};
  for (unsigned short op = 0; op < 8; ++op) EXPECT_EQ(ShareOf(record("b"), op, range), 0) << op;
}

TEST(StringEstimate, EndsInTheWrongOrderOrWithoutTextGiveANumber) {
  for (std::size_t const size : {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{4}}) {
    KeyRange const range{CutTo(Key(TextOrders("k")), size), CutTo(Key(TextOrders("c")), size)};
    for (unsigned short op = 0; op < 8; ++op) {
      EXPECT_TRUE(std::isfinite(ShareOf(WideText("e"), op, range)));
      EXPECT_FALSE(std::isnan(ShareOf(WideText("e"), op, RangeOf("k", "c"))));
    }
  }
}

}  // namespace
}  // namespace xo::test
