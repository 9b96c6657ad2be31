// Evaluations of predicates on weighted texts against a plain walk through their steps.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/base/random_test.hpp"
#include "tests/xotypcmp/inline_compare.hpp"
#include "tests/xotypevl/evaluated.hpp"

namespace xo::test {
namespace {

constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;

/// The bytes of a number of 32 bits from an offset of a text on, padded with zeros.
std::uint64_t NumberAt(ByteList text, std::size_t offset) {
  text = text + ByteList(offset + 4, 0);
  std::uint64_t number = 0;
  for (std::size_t place = offset; place < offset + 4; ++place) number = number * 256 + text[place];
  return number;
}

bool IsNegative(std::uint64_t number) { return number % kWrap >= kWrap / 2; }

/// The weights of an end of an index.
ByteList EndText(ByteList const& end) {
  if (end.size() < 4) return {};
  return ByteList(end.begin() + 3, end.end() - 1);
}

struct Step {
  ByteList text;  ///< without its zero
  bool isKey;
  unsigned short op;
  unsigned char format;
};

/// The key of a value up to its first wildcard.
template <class Text>
ByteList KeyBefore(Step const& step, std::size_t place) {
  ByteList const before(step.text.begin(), step.text.begin() + static_cast<std::ptrdiff_t>(place));
  if (step.isKey) return before;
  ByteList key;
  for (int const weight : SequenceOf<Text>(std::string(before.begin(), before.end()))) {
    key.push_back(static_cast<unsigned char>(weight));
  }
  while (!key.empty() && key.back() == 0) key.pop_back();
  return key;
}

float ShareOfKey(unsigned short op, ByteList const& key, ByteList const& low,
                 ByteList const& high) {
  std::size_t const bytes = std::min<std::size_t>(key.size(), 4);
  std::uint64_t const spread = bytes < 4 ? std::uint64_t{255} << (8 * (3 - bytes)) : 0;
  std::size_t common = 0;
  while (spread == 0 && common < std::min({high.size(), low.size(), bytes}) &&
         key[common] == high[common] && key[common] == low[common]) {
    ++common;
  }
  std::uint64_t const top = NumberAt(high, common), bottom = NumberAt(low, common);
  std::uint64_t const total = (top - bottom + 1) % kWrap;
  auto const clipped = [&](std::uint64_t number) {
    if (number < bottom) return (bottom - 1) % kWrap;
    return number > top ? (top + 1) % kWrap : number;
  };
  std::uint64_t const first = clipped(NumberAt(key, common));
  std::uint64_t const last = clipped((NumberAt(key, common) + spread) % kWrap);
  std::uint64_t const below = first - bottom + 1, upTo = last - bottom + 1;
  std::uint64_t area = 0;
  if ((op & 2) != 0) area += below;
  if ((op & 4) != 0) area += total - upTo;
  if ((op & 1) != 0) area += 1 + upTo - below;
  area %= kWrap;
  if (IsNegative(area) || total == 0) return 0;
  return static_cast<float>(static_cast<double>(area) / static_cast<double>(total));
}

ByteList BoundOf(ByteList key, bool isHighest, unsigned char format) {
  if (isHighest) key.push_back(0xFF);
  auto const size = std::min<std::size_t>(key.size() + 4, 254);
  ByteList bound = ByteList{0xC0} + Unit(static_cast<unsigned>(key.size()) + 1, format) + key;
  bound.resize(size - 1);
  bound.push_back(0);
  if (isHighest) bound[size - 2] = 0xFF;
  return bound;
}

template <class Text>
Evaluated Expected(Step const& step, Keys const& keys) {
  Evaluated expected{0, static_cast<unsigned short>(step.op & 0x800F), {}, {}};
  std::size_t place = 0;
  while (place < step.text.size()) {
    unsigned char const byte = step.text[place];
    if (byte == '*' || byte == '?' || (byte == '\\' && !step.isKey)) break;
    ++place;
  }
  bool const isPattern = place < step.text.size();
  bool const isKnown = keys.low && keys.high;
  ByteList const low = isKnown ? EndText(*keys.low) : ByteList{};
  ByteList const high = isKnown ? EndText(*keys.high) : ByteList{};
  if (isPattern) expected.op |= 8;
  if (isPattern && place == 0) {
    std::uint64_t const total = (NumberAt(high, 0) - NumberAt(low, 0) + 1) % kWrap;
    bool const isNone = kId<Text> == XoISTRING_T && (total == 0 || IsNegative(total));
    expected.share = isNone ? 0.0F : 1.0F;
    return expected;
  }
  ByteList const key = KeyBefore<Text>(step, place);
  if (isKnown) expected.share = ShareOfKey(step.op, key, low, high);
  if ((step.op & 2) == 0) expected.low = BoundOf(key, false, step.format);
  if ((step.op & 4) == 0) expected.high = BoundOf(key, isPattern, step.format);
  return expected;
}

template <class Text>
class InlineBoundsOracle : public RandomTest {
 protected:
  ByteList AnyText(ByteList text, unsigned longest) {
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text.push_back(OneIn(5)   ? static_cast<unsigned char>(1 + Below(255))
                     : OneIn(9) ? BytesOf("*?\\")[Below(3)]
                                : BytesOf("55555aAbcsS7\xC9\xE9\xDF\x8C")[Below(16)]);
    }
    return text;
  }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(InlineBoundsOracle, BothClasses);

TYPED_TEST(InlineBoundsOracle, EvaluationsAreThoseOfTheStepsOneByOne) {
  unsigned some = 0;
  for (unsigned round = 0; round < 60000; ++round) {
    ByteList const start(this->Below(2) * this->Below(6), '5');
    bool const isLong = this->OneIn(50);
    Step step{this->AnyText(start, isLong ? 300 : 5), this->OneIn(2),
              static_cast<unsigned short>(this->Bits()),
              static_cast<unsigned char>(1 + this->Below(2) + (this->OneIn(2) ? 0x80 : 0))};
    if (isLong && this->OneIn(2)) {
      for (unsigned char& byte : step.text) byte = byte == '*' || byte == '?' ? 'x' : byte;
    }
    constexpr unsigned char kTags[] = {0x40, 1, 0, 0xC0, 0x80, 0xC1};
    ByteList const value =
        Inline(kTags[this->Below(3) + (step.isKey ? 3 : 0)], step.text + ByteList{0}, step.format);
    auto const end = [&]() -> MaybeBytes {
      if (this->OneIn(20)) return std::nullopt;
      ByteList key = Inline(0xC0, this->AnyText(start, 5) + ByteList{0}, step.format);
      if (this->OneIn(8)) key.resize(this->Below(static_cast<unsigned>(key.size()) + 1));
      return key;
    };
    Keys const keys{end(), end()};
    auto const count = this->Below(4);
    Evaluated const result = Evaluate(kId<TypeParam>, step.op, value, keys, step.format, count,
                                      static_cast<std::uint8_t>(this->Byte()));
    ASSERT_EQ(result, Expected<TypeParam>(step, keys))
        << keys << " value " << testing::PrintToString(value) << " op " << step.op;
    if (result.share != 0) ++some;
  }
  EXPECT_GT(some, 20000u);
}

}  // namespace
}  // namespace xo::test
