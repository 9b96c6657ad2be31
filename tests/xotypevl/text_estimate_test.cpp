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

}  // namespace
}  // namespace xo::test
