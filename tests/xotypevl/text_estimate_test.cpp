// Keys are estimated where they lie as any texts are.
#include <cstring>

#include "src/xotypevl/common_prefix.hpp"
#include "tests/base/random_test.hpp"
#include "tests/base/stored_bytes.hpp"
#include "xotypemgr.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kOrders = 254;

/// Bits of letters that do not count: none, those of case, those of accents, both.
constexpr unsigned short kIgnored[] = {0, 0x3000, 0x0F80, 0x3F80};

class KeyEstimates : public RandomTest {
 protected:
  /// Digits, letters, ideographs and what is below them; many alike, and some that end a text.
  unsigned short Order() {
    switch (Below(8)) {
      case 0:
        return static_cast<unsigned short>(1 + Below(16128));
      case 1:
        return static_cast<unsigned short>(32768 + Below(32768));
      case 2:
        return static_cast<unsigned short>(16128 + Below(256));
      case 3:
        return static_cast<unsigned short>(OneIn(2) ? 0 : Below(65536));
      default:
        return static_cast<unsigned short>(16384 + Below(3) * 4 + Below(3) * 0x80 +
                                           Below(3) * 0x1000);
    }
  }

  std::vector<unsigned short> Orders() {
    std::vector<unsigned short> orders;
    for (unsigned more = Below(7); more != 0; --more) orders.push_back(Order());
    return orders;
  }

  /// A key that begins as another does, and whose length may go past its end or end before it.
  std::vector<unsigned char> KeyLike(std::vector<unsigned short> orders, unsigned char format) {
    std::size_t const kept = Below(static_cast<unsigned>(orders.size()) + 1);
    if (OneIn(2)) {
      orders.resize(kept);
      for (unsigned short const order : Orders()) orders.push_back(order);
    } else if (kept < orders.size()) {
      orders[kept] ^= static_cast<unsigned short>(kIgnored[Below(4)] & Bits());
    }
    std::size_t length = 2 * orders.size() + 4;
    if (OneIn(6)) length = Below(24);
    constexpr unsigned char kGroups[] = {2, 2, 2, 2, 2, 3, 20, 0, 0x82, 255};
    std::vector<unsigned char> key;
    auto const put = [&](std::size_t unit) {
      auto const low = static_cast<unsigned char>(unit & 0xFF);
      auto const high = static_cast<unsigned char>(unit >> 8);
      bool const isBig = (format & 0xF) == FormBig;
      key.push_back(isBig ? high : low);
      key.push_back(isBig ? low : high);
    };
    put(length);
    key.push_back(kOrders);
    key.push_back(kGroups[Below(OneIn(3) ? 10 : 4)]);
    for (unsigned short const order : orders) put(order);
    key.push_back(0);
    key.push_back(0xFF);
    if (OneIn(4)) key.resize(4 + Below(static_cast<unsigned>(key.size()) - 3));
    return key;
  }

  unsigned short Characters(EvaluatedText const& text) {
    if (OneIn(2)) return text.Characters();
    return OneIn(3) ? kAllCharacters : static_cast<unsigned short>(Below(6));
  }
};

TEST_F(KeyEstimates, AreThoseOfAnyTexts) {
  unsigned different = 0;
  for (unsigned round = 0; round < 100000; ++round) {
    unsigned char const format = FormatIndexKey | (OneIn(2) ? FormLittle : FormBig);
    std::vector<unsigned short> const orders = Orders();
    std::vector<PlacedBytes> places;
    EvaluatedText texts[4];
    for (EvaluatedText& text : texts) {
      std::vector<unsigned char> const key = KeyLike(orders, format);
      places.emplace_back(key, 1);
      text.Read(places.back().Data(), key.size(), format, Generation::kCurrent);
    }
    FourTexts const parts{{&texts[0], Characters(texts[0])},
                          {&texts[1], Characters(texts[1])},
                          {&texts[2], Characters(texts[2])},
                          {&texts[3], Characters(texts[3])}};
    unsigned short const ignored = kIgnored[Below(4)];
    // Their own way first: it is to need no copy that the other one has made.
    FourEstimates const own = EstimateTexts(parts, ignored);
    FourEstimates const any = EstimateAnyTexts(parts, ignored);
    ASSERT_EQ(own.valueLow, any.valueLow) << "round " << round;
    ASSERT_EQ(own.valueHigh, any.valueHigh) << "round " << round;
    ASSERT_EQ(own.rangeLow, any.rangeLow) << "round " << round;
    ASSERT_EQ(own.rangeHigh, any.rangeHigh) << "round " << round;
    if (own.valueLow != own.rangeLow) ++different;
  }
  EXPECT_GT(different, 10000u);
}

constexpr unsigned char kKeyFormat = FormatIndexKey | FormLittle;

/// Reads a record that ends with its allocation.
template <class Check>
void ReadAnd(std::vector<unsigned char> const& record, unsigned char format, Generation generation,
             Check check) {
  PlacedBytes const placed(record, 1);
  EvaluatedText text;
  text.Read(placed.Data(), record.size(), format, generation);
  check(text, text.Start() - static_cast<char const*>(static_cast<void const*>(placed.Data())));
}

TEST(EvaluatedRecord, WhatIsNotThereReadsAsZeroAndIsNoText) {
  std::vector<unsigned char> const whole = {10, 0, kOrders, 2, 1, 64, 2, 64, 3, 64, 0, 255};
  for (unsigned char const format : {kKeyFormat, FormLittle}) {
    for (std::size_t there = 0; there <= whole.size(); ++there) {
      ReadAnd({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(there)}, format,
              Generation::kCurrent, [&](EvaluatedText const& text, std::ptrdiff_t start) {
                std::size_t const behind = there > 4 ? there - 4 : 0;
                EXPECT_EQ(text.Header().length, there > 0 ? 10 : 0) << there;
                EXPECT_EQ(text.Header().codeSet, there > 2 ? kOrders : 0) << there;
                EXPECT_EQ(text.Header().language, there > 3 ? 2 : 0) << there;
                EXPECT_FALSE(text.Header().isOlder) << there;
                EXPECT_EQ(text.Bytes(), std::min<std::size_t>(behind, 6)) << there;
                EXPECT_EQ(text.Characters(), behind / 2) << there;
                EXPECT_EQ(start, static_cast<std::ptrdiff_t>(std::min<std::size_t>(there, 4)));
              });
    }
  }
}

TEST(EvaluatedRecord, ThatEndsInAZeroHasAHeaderAsAKeyOnly) {
  std::vector<unsigned char> const record = {4, 0, kOrders, 2, 65, 0};
  ReadAnd(record, kKeyFormat, Generation::kCurrent, [](EvaluatedText const& text, auto start) {
    EXPECT_FALSE(text.Header().isOlder);
    EXPECT_EQ(text.Header().codeSet, kOrders);
    EXPECT_EQ(start, 4);
  });
  for (Generation const generation : {Generation::kCurrent, Generation::kOlder}) {
    ReadAnd(record, FormLittle, generation, [](EvaluatedText const& text, auto start) {
      EXPECT_TRUE(text.Header().isOlder);
      EXPECT_EQ(text.Header().codeSet, 0);
      EXPECT_EQ(text.Bytes(), 3u);
      EXPECT_EQ(start, 2);
    });
  }
}

TEST(EvaluatedRecord, OfTheOlderGenerationHasNoHeaderWhateverEndsIt) {
  ReadAnd({4, 0, 'a', 'b', 'c', 255}, FormLittle, Generation::kOlder,
          [](EvaluatedText const& text, auto start) {
            EXPECT_TRUE(text.Header().isOlder);
            EXPECT_EQ(text.Bytes(), 3u);
            EXPECT_EQ(start, 2);
          });
}

TEST(EvaluatedRecord, ThatEndsWithinItsHeaderHasNoMoreOfIt) {
  // One byte behind the length field; what follows belongs to something else.
  ReadAnd({1, 0, kOrders, 7, 1, 64}, kKeyFormat, Generation::kCurrent,
          [](EvaluatedText const& text, auto) {
            EXPECT_EQ(text.Header().codeSet, kOrders);
            EXPECT_EQ(text.Header().language, 0);
            EXPECT_EQ(text.Bytes(), 0u);
          });
  ReadAnd({2, 0, kOrders, 7, 1, 64}, kKeyFormat, Generation::kCurrent,
          [](EvaluatedText const& text, auto) {
            EXPECT_EQ(text.Header().language, 7);
            EXPECT_EQ(text.Bytes(), 0u);
          });
}

}  // namespace
}  // namespace xo::test
