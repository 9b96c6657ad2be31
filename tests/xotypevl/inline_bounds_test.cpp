#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/inline_compare.hpp"
#include "tests/xotypevl/evaluated.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kEqual = 1, kBelow = 2, kAbove = 4, kPatternFound = 8;

// The bytes 1 to 63 are their own weights, so that texts of digits are keys as well.

/// A key of weights, which may end in the highest one, with the zero.
ByteList Key(std::string_view weights, unsigned char format = kLittle) {
  return Inline(0xC0, Ended(weights), format);
}
Keys Between(std::string_view low, std::string_view high, unsigned char format = kLittle) {
  return {Key(low, format), Key(high, format)};
}

template <class Text>
class InlineBounds : public ::testing::Test {
 protected:
  static constexpr char kRow = kId<Text>;
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(InlineBounds, BothClasses);

// Bounds.

TYPED_TEST(InlineBounds, AreTheKeyOfAValueWithoutWildcard) {
  for (unsigned char const format : {kLittle, kBig, kLittleKey, kBigKey}) {
    ByteList const value = Plain("57", format), key = Key("57", format);
    EXPECT_EQ(Evaluate(this->kRow, kEqual, value, {}, format), (Evaluated{0, kEqual, key, key}));
    EXPECT_EQ(Evaluate(this->kRow, kBelow, value, {}, format), (Evaluated{0, kBelow, {}, key}));
    EXPECT_EQ(Evaluate(this->kRow, kAbove, value, {}, format), (Evaluated{0, kAbove, key, {}}));
    EXPECT_EQ(Evaluate(this->kRow, 6, value, {}, format), (Evaluated{0, 6, {}, {}}));
  }
}

TYPED_TEST(InlineBounds, AreWeights) {
  // The second weight of the sharp s is one of its own, an accent is none.
  for (std::string_view const text : {"aB", "\xDFx", "\xE9", "\x8C\x9C", ""}) {
    ByteList const key = KeyOf<TypeParam>(text);
    EXPECT_EQ(Evaluate(this->kRow, kEqual, Plain(text)), (Evaluated{0, kEqual, key, key}));
  }
}

TEST(InlineBoundsOfClasses, TellTheirWeightsApart) {
  EXPECT_EQ(Evaluate(XoISTRING_T, kEqual, Plain("a")).low, Key("\x4E"));
  EXPECT_EQ(Evaluate(XoCASEISTRING_T, kEqual, Plain("a")).low, Key("\x54"));
  EXPECT_EQ(Evaluate(XoISTRING_T, kEqual, Plain("\xDF")).low, Key("\x9C\x9C"));
  EXPECT_EQ(Evaluate(XoCASEISTRING_T, kEqual, Plain("\xDF")).low, Key("\x9D\x9D"));
}

TYPED_TEST(InlineBounds, OfAPrefixEndWithTheHighestWeight) {
  for (std::string_view const pattern : {"57*", "57?", "57\\*", "57*8?", "57*57"}) {
    EXPECT_EQ(Evaluate(this->kRow, kEqual, Plain(pattern)),
              (Evaluated{0, kEqual | kPatternFound, Key("57"), Key("57\xFF")}))
        << pattern;
  }
  EXPECT_EQ(Evaluate(this->kRow, kBelow, Plain("57*")),
            (Evaluated{0, kBelow | kPatternFound, {}, Key("57\xFF")}));
  EXPECT_EQ(Evaluate(this->kRow, kAbove, Plain("57*")),
            (Evaluated{0, kAbove | kPatternFound, Key("57"), {}}));
}

TYPED_TEST(InlineBounds, AreNotBuiltOfALeadingWildcard) {
  for (std::string_view const pattern : {"*", "?57", "\\57", "*57"}) {
    for (unsigned short op = 0; op < 8; ++op) {
      EXPECT_EQ(Evaluate(this->kRow, op, Plain(pattern), Between("1", "9")),
                (Evaluated{1, static_cast<unsigned short>(op | kPatternFound), {}, {}}));
      EXPECT_EQ(Evaluate(this->kRow, op, Plain(pattern)),
                (Evaluated{1, static_cast<unsigned short>(op | kPatternFound), {}, {}}));
    }
  }
}

TEST(InlineBoundsOfClasses, OfALeadingWildcardDifferOverWideRanges) {
  // 0xBF000000 less 0x01000000 is too wide for a number with a sign, 0x80000000 less 1 fits.
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("\x01", "\xBF")), 0.0F);
  EXPECT_EQ(Share(XoCASEISTRING_T, kEqual, Plain("*"), Between("\x01", "\xBF")), 1.0F);
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("\x01\x01\x01\x02", "\x81\x01\x01")),
            1.0F);
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("\x01\x01\x01\x01", "\x81\x01\x01\x01")),
            0.0F);
  // The numbers are of the first 4 weights, whatever they have in common.
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("55551", "55559")), 1.0F);
  // A width of 2^32 is none.
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("", "\xFF\xFF\xFF\xFF")), 0.0F);
  EXPECT_EQ(Share(XoISTRING_T, kEqual, Plain("*"), Between("5", "4\xFF\xFF\xFF")), 0.0F);
}

TYPED_TEST(InlineBounds, KeepOfTheOperatorRelationPatternAndUppermostBit) {
  EXPECT_EQ(Evaluate(this->kRow, 0xFFF9, Plain("5")).op, 0x8009);
  EXPECT_EQ(Evaluate(this->kRow, 0x7FF1, Plain("5")).op, kEqual);
  // A wildcard is one also in a literal comparison.
  EXPECT_EQ(Evaluate(this->kRow, kEqual | 0x10, Plain("5*")),
            (Evaluated{0, kEqual | kPatternFound, Key("5"), Key("5\xFF")}));
}

TYPED_TEST(InlineBounds, OfAKeyAreThatKey) {
  // The weight 0x5C is one of a letter and no wildcard; the weights of the others are.
  for (std::string_view const weights : {"57", "\x5C",
                                         "5\x5C"
                                         "7",
                                         "\xBF\x01"}) {
    EXPECT_EQ(Evaluate(this->kRow, kEqual, Key(weights)),
              (Evaluated{0, kEqual, Key(weights), Key(weights)}));
  }
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Key("5\x5C*7")),
            (Evaluated{0, kEqual | kPatternFound, Key("5\x5C"), Key("5\x5C\xFF")}));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Key("?7")),
            (Evaluated{1, kEqual | kPatternFound, {}, {}}));
  // One bit of the tag tells that it is one.
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Inline(0x80, Ended("\x5C"))).low, Key("\x5C"));
}

TYPED_TEST(InlineBounds, OfPlainTextUnderBothTags) {
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Inline(1, Ended("57"))).low, Key("57"));
}

TYPED_TEST(InlineBounds, TakeAsManyTextsAsThereAre) {
  ByteList const texts = Ended("57") + Ended("") + Ended("8");
  ByteList const value = Inline(0x40, texts);
  EXPECT_EQ(Evaluate(this->kRow, kEqual, value, {}, kLittle, 3).low, Inline(0xC0, texts));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, value, {}, kLittle, 9).low, Inline(0xC0, texts));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, value, {}, kLittle, 1).low, Key("57"));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, value, {}, kLittle, 0).low, Key("57"));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Inline(0x40, Ended("57") + Ended("8*")), {}, kLittle, 2),
            (Evaluated{0, kEqual | kPatternFound, Inline(0xC0, Ended("57") + Ended("8")),
                       Inline(0xC0, Ended("57") + Ended("8\xFF"))}));
}

TYPED_TEST(InlineBounds, EndAtThe254thByteAndTellTheirWholeLength) {
  auto const digits = [](std::size_t count) { return std::string(count, '7'); };
  auto const boundOf = [](unsigned payload, ByteList const& weights) {
    return ByteList{0xC0} + Unit(payload, kLittle) + weights + ByteList{0};
  };
  // 250 weights are the most.
  ByteList const longest = boundOf(251, BytesOf(digits(250)));
  ASSERT_EQ(longest.size(), 254u);
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Plain(digits(250))),
            (Evaluated{0, kEqual, longest, longest}));
  for (unsigned const count : {251u, 253u, 254u, 255u, 300u, 5000u}) {
    ByteList const cut = boundOf(count + 1, BytesOf(digits(250)));
    EXPECT_EQ(Evaluate(this->kRow, kEqual, Plain(digits(count))), (Evaluated{0, kEqual, cut, cut}));
  }
  // Of a pattern the last weight gives way.
  for (unsigned const count : {249u, 250u, 251u, 254u, 5000u}) {
    unsigned const kept = std::min(count, 250u);
    EXPECT_EQ(Evaluate(this->kRow, kEqual, Plain(digits(count) + "*")),
              (Evaluated{0, kEqual | kPatternFound, boundOf(count + 1, BytesOf(digits(kept))),
                         boundOf(count + 2, BytesOf(digits(249) + "\xFF"))}));
  }
}

TYPED_TEST(InlineBounds, TakeTheRoomOfTheLongestKey) {
  PlacedBytes const operand(Plain("57*"), 1);
  XoIdxBounds bounds;
  bounds.keyLimit = 200;
  unsigned short op = kEqual;
  XoTypeMgr().EvalAndBound(this->kRow, nullptr, op, operand.Data(), kLittle, 1, &bounds, nullptr);
  EXPECT_EQ(bounds.lowLen, 6);
  EXPECT_EQ(bounds.highLen, 7);
  EXPECT_EQ(bounds.keyLimit, 200);
  EXPECT_EQ(BoundBytes(bounds.low, 200), Filled(Key("57"), 200, 0));
  EXPECT_EQ(BoundBytes(bounds.high, 200), Filled(Key("57\xFF"), 200, 0));
  ReleaseBounds(bounds);
}

TYPED_TEST(InlineBounds, LeaveBoundsThatThereAre) {
  ByteList const other(2, 0xA5);
  EXPECT_EQ(WithPresent(this->kRow, kEqual, Plain("5*"), {other, {}}), (Keys{other, Key("5\xFF")}));
  EXPECT_EQ(WithPresent(this->kRow, kEqual, Plain("5*"), {{}, other}), (Keys{Key("5"), other}));
  EXPECT_EQ(WithPresent(this->kRow, kEqual, Plain("5*"), {other, other}), (Keys{other, other}));
}

TYPED_TEST(InlineBounds, AreNotBuiltOfAValueInMemory) {
  TypeParam text("57");
  XoIdxBounds bounds;
  unsigned short op = kEqual;
  EXPECT_EQ(XoTypeMgr().EvalAndBound(this->kRow, nullptr, op, &text, kMemory, 1, &bounds, nullptr),
            0.0F);
  EXPECT_EQ(bounds.low, nullptr);
  EXPECT_EQ(bounds.high, nullptr);
}

// Shares. A range from "1" to "9" has 0x08000001 keys.

constexpr double kDigits = 0x08000001;

TYPED_TEST(InlineBounds, CountShortKeysWithAllThatBeginSo) {
  Keys const range = Between("1", "9");
  // "5" is 0x35000000 and spreads to 0x35FF0000.
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("5"), range), Of(0xFF0001, kDigits));
  EXPECT_EQ(Share(this->kRow, kAbove, Plain("5"), range), Of(0x03010000, kDigits));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("55"), range), Of(0xFF01, kDigits));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("555"), range), Of(0x100, kDigits));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("5555"), range), Of(1, kDigits));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("55555"), range), Of(1, kDigits));
  // A wildcard behind makes no difference.
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("55*"), range), Of(0xFF01, kDigits));
  // No weight at all spreads over 0xFF000000, which the range cuts a step behind its end.
  EXPECT_EQ(Share(this->kRow, kEqual, Plain(""), range), Of(kDigits + 2, kDigits));
  EXPECT_EQ(Share(this->kRow, kBelow, Plain(""), range), 0.0F);
  EXPECT_EQ(Share(this->kRow, kAbove, Plain(""), range), 0.0F);
}

TYPED_TEST(InlineBounds, CountTheValueAmongTheKeysBelow) {
  Keys const range = Between("1", "9");
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("5555"), range), Of(0x04353536, kDigits));
  EXPECT_EQ(Share(this->kRow, kBelow | kEqual, Plain("5555"), range), Of(0x04353537, kDigits));
  EXPECT_EQ(Share(this->kRow, kAbove, Plain("5555"), range), Of(0x03CACACB, kDigits));
  EXPECT_EQ(Share(this->kRow, 7, Plain("5555"), range), Of(kDigits + 1, kDigits));
  EXPECT_EQ(Share(this->kRow, 0, Plain("5555"), range), 0.0F);
}

TYPED_TEST(InlineBounds, ClipValuesAStepBeyondTheRange) {
  Keys const range = Between("1", "9");
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("0"), range), 0.0F);
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("0"), range), Of(1, kDigits));
  EXPECT_EQ(Share(this->kRow, kAbove, Plain("0"), range), 1.0F);
  EXPECT_EQ(Share(this->kRow, kBelow, Plain(":"), range), Of(kDigits + 1, kDigits));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain(":"), range), Of(1, kDigits));
  EXPECT_EQ(Share(this->kRow, kAbove, Plain(":"), range), 0.0F);
}

TYPED_TEST(InlineBounds, PassOverWhatTheKeysHaveInCommon) {
  // Behind "7771" the numbers are 0x30000000 and so on.
  Keys const range = Between("77710", "77719");
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("77715"), range), Of(0x05000001, 0x09000001));
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("77715"), range), Of(1, 0x09000001));
  // No more than four, and none with a value that is shorter.
  Keys const longer = Between("777710", "777719");
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("777715"), longer), Of(0x00050001, 0x00090001));
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("7777715"), Between("7777710", "7777719")),
            Of(0x00000501, 0x00000901));
  // "777" spreads from a step before the one number of the range, "7771", to a step behind it.
  EXPECT_EQ(Share(this->kRow, kEqual, Plain("777"), range), 3.0F);
  // Nor with a value that parts from them before: "7775" parts from both at the fourth.
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("7775"), Between("77710", "77790")),
            Of(0x35000000 - 0x31300000 + 1, 0x08000001));
  // The keys are as long as their lengths say: the last byte is their zero.
  EXPECT_EQ(Share(this->kRow, kBelow, Plain("77715"), Between("7", "77")),
            Of(0x37000000 + 2, 0x37000001));
}

TYPED_TEST(InlineBounds, OrderWithoutASignAndMeasureWithOne) {
  Keys const range = Between("\x01", "\xBF");
  // 0xBE000001 keys; of '5' 0x34000001 are below.
  EXPECT_EQ(Share(this->kRow, kBelow, Key("5"), range), Of(0x34000001, 0xBE000001));
  // Half of the numbers and more are negative.
  EXPECT_EQ(Share(this->kRow, kBelow, Key("\xB7"), range), 0.0F);
  EXPECT_EQ(Share(this->kRow, kAbove, Key("\xB7"), range), Of(0x07010000, 0xBE000001));
  EXPECT_EQ(Share(this->kRow, kAbove, Key("5"), range), 0.0F);
}

TYPED_TEST(InlineBounds, TellOfKeysThatAreShorterThanTheirFrame) {
  for (std::size_t size = 0; size < 6; ++size) {
    ByteList const cut = CutTo(Key("1"), std::min<std::size_t>(size, 5));
    float const share = Share(this->kRow, kAbove, Plain("5"), {cut, Key("9")});
    EXPECT_EQ(share, size < 5 ? Of(0x03010000, 0x39000001) : Of(0x03010000, kDigits)) << size;
  }
}

TYPED_TEST(InlineBounds, HaveNoShareWithoutBothEnds) {
  for (unsigned short op = 0; op < 8; ++op) {
    EXPECT_EQ(Share(this->kRow, op, Plain("5"), {}), 0.0F);
    EXPECT_EQ(Share(this->kRow, op, Plain("5"), {Key("1"), {}}), 0.0F);
    EXPECT_EQ(Share(this->kRow, op, Plain("5"), {{}, Key("9")}), 0.0F);
  }
}

TYPED_TEST(InlineBounds, HaveNoShareOfARangeOfNoKeys) {
  for (unsigned short op = 0; op < 8; ++op) {
    EXPECT_EQ(Share(this->kRow, op, Plain("5"), Between("", "\xFF\xFF\xFF\xFF")), 0.0F);
  }
}

TYPED_TEST(InlineBounds, DoNotTrustALengthBehindTheZero) {
  // The record says 1000 bytes, and ends behind its zero.
  ByteList value = Plain("57");
  value[2] = 4;
  EXPECT_EQ(Evaluate(this->kRow, kEqual, value).low, Key("57"));
  // No payload is no text, and one without a zero lacks its last byte.
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Hex("40 0000")).low, Key(""));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Hex("40 0100 35")).low, Key(""));
  EXPECT_EQ(Evaluate(this->kRow, kEqual, Hex("40 0300 35 36 37")).low, Key("56"));
}

// Laws.

template <class Text>
class InlineBoundsLaws : public RandomTest {
 protected:
  static constexpr char kRow = kId<Text>;

  std::string AnyText(unsigned longest) {
    std::string text;
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text += OneIn(6) ? static_cast<char>(1 + Below(255)) : "aAbsS7\xC9\xE9"[Below(8)];
    }
    return text;
  }
  unsigned char AnyOrder() { return OneIn(2) ? kLittle : kBig; }
};
TYPED_TEST_SUITE(InlineBoundsLaws, BothClasses);

/// The weights of a text, without the zero.
template <class Text>
std::string WeightText(std::string const& text) {
  std::string weights;
  for (int const weight : SequenceOf<Text>(text)) weights += static_cast<char>(weight);
  while (!weights.empty() && weights.back() == 0) weights.pop_back();
  return weights;
}

/// The weights that a bound was built of, as far as they go.
std::string WeightsOfBound(ByteList const& bound) {
  return std::string(bound.begin() + 3, bound.end() - 1);
}

/// Order of weights as bytes without a sign.
bool IsBelow(std::string const& a, std::string const& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return static_cast<unsigned char>(x) < static_cast<unsigned char>(y);
  });
}

TYPED_TEST(InlineBoundsLaws, BoundsBracketEveryMatch) {
  // Where case does not count, a text compares by the first weights of its letters, and its key
  // has all: of letters of two weights no bound can hold all that compare equal.
  bool const isCaseless = this->kRow == XoCASEISTRING_T;
  auto const hasPairs = [](std::string const& text) {
    return text.find_first_of("\xDF\x8C\x9C") != std::string::npos;
  };
  // A text that does not match is compared with as many weights as the pattern has bytes before its
  // wildcard. Where letters there have two weights, one that equals the first of them counts as
  // above, though the rest may be below the bound.
  auto const isLooselyAbove = [&](std::string const& pattern, unsigned op) {
    std::size_t const wildcard = pattern.find_first_of("*?\\");
    return (op & kXoBoundAbove) != 0 && wildcard != std::string::npos &&
           hasPairs(pattern.substr(0, wildcard));
  };
  for (int round = 0; round < 2000; ++round) {
    std::string pattern = this->AnyText(4);
    for (unsigned count = this->Below(3); count != 0; --count) {
      pattern.insert(this->Below(static_cast<unsigned>(pattern.size()) + 1), 1,
                     "*?"[this->Below(2)]);
    }
    auto const op = static_cast<unsigned short>(this->Below(8));
    unsigned char const format = this->AnyOrder();
    if (isLooselyAbove(pattern, op)) continue;
    Evaluated const result = Evaluate(this->kRow, op, Plain(pattern, format), {}, format);
    for (int count = 0; count < 30; ++count) {
      std::string const text = this->OneIn(4) ? pattern : this->AnyText(5);
      if (isCaseless && (hasPairs(text) || hasPairs(pattern))) continue;
      if (!Selects(this->kRow, op, Plain(text, format), Plain(pattern, format), format)) continue;
      std::string const weights = WeightText<TypeParam>(text);
      ASSERT_FALSE(result.low && IsBelow(weights, WeightsOfBound(*result.low)))
          << text << '|' << pattern << ' ' << result;
      ASSERT_FALSE(result.high && IsBelow(WeightsOfBound(*result.high), weights))
          << text << '|' << pattern << ' ' << result;
    }
  }
}

/// The share of a predicate on the weights of a value, as it adds up step by step, in numbers that
/// are wide enough for it.
double SlowShare(unsigned op, std::string key, std::string const& low, std::string const& high) {
  constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;
  std::size_t common = 0;
  double spread = 0;
  if (key.size() >= 4) {
    while (common < 4 && common < low.size() && common < high.size() &&
           key[common] == low[common] && key[common] == high[common]) {
      ++common;
    }
  } else {
    spread = 255 * std::pow(256.0, 3.0 - static_cast<double>(key.size()));
  }
  auto const number = [common](std::string text) {
    text = (text + std::string(8, '\0')).substr(common, 4);
    double sum = 0;
    for (char const byte : text) sum = sum * 256 + static_cast<unsigned char>(byte);
    return sum;
  };
  double const lowest = number(low), highest = number(high);
  auto const clipped = [&](double value) {
    return value < lowest ? lowest - 1 : value > highest ? highest + 1 : value;
  };
  auto const wrapped = [](double value) {
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(value)) % kWrap;
  };
  double const first = clipped(number(key)), last = clipped(number(key) + spread);
  double area = 0;
  if ((op & 2) != 0) area += first - lowest + 1;
  if ((op & 4) != 0) area += highest - last;
  if ((op & 1) != 0) area += 1 + last - first;
  std::uint64_t const sum = wrapped(area), total = wrapped(highest - lowest + 1);
  if (sum >= kWrap / 2 || total == 0) return 0;
  return static_cast<double>(sum) / static_cast<double>(total);
}

TYPED_TEST(InlineBoundsLaws, SharesAddUpStepByStep) {
  for (int round = 0; round < 20000; ++round) {
    auto const weights = [this](std::string const& start) {
      std::string text = start;
      for (unsigned left = this->Below(6); left != 0; --left) {
        text += this->OneIn(3) ? static_cast<char>(1 + this->Below(255)) : '5';
      }
      // Wildcards are no weights here.
      for (char& byte : text) byte = byte == '*' || byte == '?' ? '6' : byte;
      return text;
    };
    std::string const start = this->OneIn(2) ? "" : std::string(this->Below(5), '5');
    std::string const low = weights(start), high = weights(start), key = weights(start);
    auto const op = static_cast<unsigned short>(this->Below(8));
    unsigned char const format = this->AnyOrder();
    ASSERT_EQ(Share(this->kRow, op, Key(key, format), Between(low, high, format), format),
              static_cast<float>(SlowShare(op, key, low, high)))
        << op << ' ' << Keys{Key(low), Key(high)} << Keys{Key(key), {}};
  }
}

TYPED_TEST(InlineBoundsLaws, AnyRecordsGiveANumber) {
  for (int round = 0; round < 5000; ++round) {
    ByteList value = this->Bytes(3 + this->Below(300)) + ByteList{0};
    auto const format = static_cast<unsigned char>(this->Byte());
    // The payload says more than there is, but for what is behind the zero.
    ByteList const low = this->Bytes(this->Below(12)), high = this->Bytes(this->Below(12));
    auto const op = static_cast<unsigned short>(this->Bits());
    Evaluated const result = Evaluate(this->kRow, op, value, {low, high}, format, 1,
                                      static_cast<std::uint8_t>(this->Byte()));
    ASSERT_FALSE(std::isnan(result.share));
    ASSERT_FALSE(std::isinf(result.share));
    ASSERT_GE(result.share, 0.0F);
  }
}

}  // namespace
}  // namespace xo::test
