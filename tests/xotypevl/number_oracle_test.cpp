#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/number_rows.hpp"

/// The evaluation of numbers against one that is written down step by step, which decodes the
/// bytes on its own and knows nothing of templates, on random bytes: every row, form and relation,
/// ranges that are missing, half known, null or in the wrong order, bounds that are there before.
namespace xo::test {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kLargestFloat = std::numeric_limits<float>::max();

/// An element as it is understood.
struct Element {
  bool isNull = false;
  std::uint64_t bits = 0;
  double number = 0;
};

double NumberOfBits(NumberRow const& row, std::uint64_t bits) {
  auto const shift = 64 - 8 * row.width;
  switch (row.kind) {
    case NumberKind::kFloat:
      return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    case NumberKind::kDouble:
      return std::bit_cast<double>(bits);
    case NumberKind::kHalves:
      return static_cast<std::int32_t>(bits >> 32) * 4294967296.0 +
             static_cast<std::uint32_t>(bits);
    case NumberKind::kSigned:
      return static_cast<double>(static_cast<std::int64_t>(bits << shift) >> shift);
    default:
      return static_cast<double>(bits);
  }
}

Element Understand(NumberRow const& row, StoredKey const& key, unsigned char format) {
  Element element;
  bool const isNullAhead = row.canBeNull && (format & 8) == 0;
  if (row.canBeNull) element.isNull = key[isNullAhead ? 0 : row.width] == 1;
  for (unsigned place = 0; place < row.width && !element.isNull; ++place) {
    unsigned from = place;
    if (format % 16 == 2) {
      unsigned const half = row.kind == NumberKind::kHalves ? 4 : row.width;
      from = place / half * half + half - 1 - place % half;
    }
    element.bits |= std::uint64_t{key[from + (isNullAhead ? 1 : 0)]} << (8 * place);
  }
  element.number = NumberOfBits(row, element.bits);
  return element;
}

/// Whether a stored integer is not above another one.
bool IsAtMost(NumberRow const& row, Element const& a, Element const& b) {
  if (row.kind == NumberKind::kUnsigned) return a.bits <= b.bits;
  return static_cast<std::int64_t>(a.bits) <= static_cast<std::int64_t>(b.bits);
}

double Mapped(double difference) {
  return std::isnan(difference) || std::isinf(difference) ? kLargest : difference;
}

double Above(double value, double low, double high) {
  double const base = low > value ? low - 1.0 : value;
  double const difference = Mapped(high - base);
  return difference > 0 ? difference : 0.0;
}

double Below(double value, double low, double high) {
  double const top = value > high ? high + 1.0 : value;
  double const difference = Mapped(top - low);
  return difference > 0 ? difference : 0.0;
}

double Equal(double value, double low, double high) {
  if (std::isnan(value) || std::isnan(low) || std::isnan(high)) return kLargest;
  double const lesser = value < high ? value : high;
  double const greater = value > low ? value : low;
  double const sum = Mapped(lesser - greater) + 1.0;
  return sum > 0 ? sum : 0.0;
}

double Area(unsigned op, Element const& value, Element const& low, Element const& high) {
  double const v = value.number, l = low.number, h = high.number;
  double area = 0;
  if ((op & 4) != 0 && !high.isNull) {
    area += value.isNull || low.isNull ? 0.5 : Above(v, l, h);
  }
  if ((op & 2) != 0 && !value.isNull && !high.isNull) {
    area += low.isNull ? 0.5 : Below(v, l, h);
  }
  if ((op & 1) != 0) {
    if (value.isNull) {
      area += low.isNull ? 0.001 : 0.0;
    } else if (!high.isNull) {
      area += low.isNull ? 0.1 : Equal(v, l, h);
    }
  }
  return area;
}

float Rounded(double quotient) {
  if (quotient > kLargestFloat) return std::numeric_limits<float>::infinity();
  return static_cast<float>(quotient);
}

float Share(NumberRow const& row, unsigned op, Element const& value, Element const& low,
            Element const& high) {
  double area = Area(op, value, low, high);
  double const width = high.number - low.number;
  if (!row.IsReal()) {
    bool const isPresent = !value.isNull && !low.isNull && !high.isNull;
    if (row.IsWide() && area == 0 && isPresent && IsAtMost(row, low, high) &&
        ((op & 4) != 0 || IsAtMost(row, low, value)) &&
        ((op & 2) != 0 || IsAtMost(row, value, high))) {
      area = 1.0;
    }
    return area == 0 ? 0.0F : Rounded(area / (width + 1.0));
  }
  if (area == 0) return 0.0F;
  double quotient = area / (width + 1.0);
  if (row.kind == NumberKind::kDouble || std::isnan(quotient)) {
    quotient = Mapped(area) / (Mapped(width) + 1.0);
  }
  return quotient < 0x1p-23 ? std::bit_cast<float>(0x34000000) : Rounded(quotient);
}

class NumberOracle : public RandomTest, public testing::WithParamInterface<NumberRow> {
 protected:
  NumberRow const& row = GetParam();

  /// Bits of numbers near `centre`, near the ends of the type, or any.
  std::uint64_t AnyBits(std::uint64_t centre) {
    switch (Below(8)) {
      case 0:
        return Bits();
      case 1:
        return AnySpecialBits();
      case 2:
        return centre;
      default:
        return row.IsReal() ? RealNear(centre) : centre + Bits() % 33 - 16;
    }
  }

  std::uint64_t AnySpecialBits() {
    if (row.kind == NumberKind::kDouble) {
      static constexpr double kNumbers[] = {0.0,    -0.0,   1.0,      1e300,    -1e300,
                                            0x1p53, 5e-324, kLargest, -kLargest};
      if (OneIn(2)) return std::bit_cast<std::uint64_t>(kNumbers[Below(std::size(kNumbers))]);
      // Infinities and what is no number.
      return 0x7FF0000000000000 | (Bits() & 0x8000000000000000) | (OneIn(2) ? Bits() >> 12 : 0);
    }
    if (row.kind == NumberKind::kFloat) {
      if (OneIn(2)) return std::bit_cast<std::uint32_t>(OneIn(2) ? 0x1p24F : -3.4e38F);
      return 0x7F800000 | (Bits() & 0x80000000) | (OneIn(2) ? Below(1 << 23) : 0);
    }
    std::uint64_t const top = std::uint64_t{1} << (8 * row.width - 1);
    return (OneIn(2) ? top : 0) + Bits() % 3 - 1;
  }

  std::uint64_t RealNear(std::uint64_t centre) {
    double const step = OneIn(2) ? 0.25 : 1.0;
    double const number = NumberOfBits(row, centre) + step * (Below(41) - 20.0);
    if (row.kind == NumberKind::kDouble) return std::bit_cast<std::uint64_t>(number);
    double const magnitude = std::fabs(number);
    if (magnitude > kLargestFloat) return centre;
    return std::bit_cast<std::uint32_t>(static_cast<float>(number));
  }

  StoredKey AnyKey(std::uint64_t centre, unsigned char format) {
    std::uint64_t const bits = AnyBits(centre);
    // Most null bytes tell of no null, though not all of them are 0.
    unsigned char const nullByte = OneIn(5) ? 1 : OneIn(10) ? Byte() : 0;
    return StoredBits(row, bits, format, nullByte);
  }

  std::uint64_t AnyCentre() {
    if (OneIn(3)) return AnySpecialBits();
    if (!row.IsReal()) return OneIn(2) ? Bits() : Bits() % 64;
    double const number = static_cast<double>(Bits() % 2000) - 1000;
    return row.kind == NumberKind::kDouble
               ? std::bit_cast<std::uint64_t>(number)
               : std::bit_cast<std::uint32_t>(static_cast<float>(number));
  }
};

INSTANTIATE_TEST_SUITE_P(All, NumberOracle, testing::ValuesIn(AllNumberRows()),
                         [](auto const& instance) { return instance.param.Name(); });

/// Checks one end of a record: what was there stays, and what is new holds the value.
void CheckEnd(void* end, std::uint8_t length, void* before, bool isOpen, StoredKey const& value) {
  if (before != nullptr) {
    EXPECT_EQ(end, before);
    EXPECT_EQ(length, 99);
  } else if (isOpen) {
    EXPECT_EQ(end, nullptr);
    EXPECT_EQ(length, 0);
  } else {
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(length, value.size() % 256);
    EXPECT_TRUE(std::equal(value.begin(), value.end(), static_cast<unsigned char const*>(end)));
  }
}

TEST_P(NumberOracle, AgreesOnAnyPredicate) {
  constexpr int kRounds = 10000;
  XoTypeMgr const manager;
  for (int round = 0; round < kRounds && !HasFailure(); ++round) {
    auto const format = static_cast<unsigned char>(OneIn(2) ? Byte() : 1 + Below(2));
    std::uint64_t const centre = AnyCentre();
    auto const op = static_cast<unsigned short>(OneIn(2) ? Bits() : Below(8));
    unsigned const count = Below(4);
    StoredKey const first = AnyKey(centre, format);
    StoredKey value = first;
    for (unsigned index = 1; index < count; ++index) {
      StoredKey const next = AnyKey(centre, format);
      value.insert(value.end(), next.begin(), next.end());
    }
    StoredKey const low = AnyKey(centre, format), high = AnyKey(centre, format);
    PlacedBytes const operand(value, 1), lowest(low, 1), highest(high, 1);
    XoIdxBounds range{OneIn(20) ? nullptr : lowest.Data(), OneIn(20) ? nullptr : highest.Data()};
    XoIdxBounds* const known = OneIn(20) ? nullptr : &range;
    bool const hasEnds = known != nullptr && range.low != nullptr && range.high != nullptr;

    float const expected = hasEnds
                               ? Share(row, op, Understand(row, first, format),
                                       Understand(row, low, format), Understand(row, high, format))
                               : 0.0F;
    unsigned char presentLow[1], presentHigh[1];
    XoIdxBounds bounds;
    bounds.lowFlags = bounds.highFlags = 0xFFFF;
    bounds.keyLimit = 7;
    if (OneIn(5)) bounds.low = presentLow, bounds.lowLen = 99;
    if (OneIn(5)) bounds.high = presentHigh, bounds.highLen = 99;
    void *const lowBefore = bounds.low, *const highBefore = bounds.high;
    unsigned short opAfter = op;
    float const share = manager.EvalAndBound(row.id, known, opAfter, operand.Data(), format, count,
                                             &bounds, nullptr);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(share + 0.0F), std::bit_cast<std::uint32_t>(expected))
        << share << " for " << expected;
    EXPECT_EQ(opAfter, op);
    StoredKey const stored(value.begin(), value.begin() + row.DiskWidth() * count);
    CheckEnd(bounds.low, bounds.lowLen, lowBefore, (op & 2) != 0, stored);
    CheckEnd(bounds.high, bounds.highLen, highBefore, (op & 4) != 0, stored);
    EXPECT_EQ(bounds.lowFlags & bounds.highFlags, 0xFFFF);
    EXPECT_EQ(bounds.keyLimit, 7);
    if (lowBefore != nullptr) bounds.low = nullptr;
    if (highBefore != nullptr) bounds.high = nullptr;
    ReleaseBounds(bounds);
    if (HasFailure()) {
      ADD_FAILURE() << "round " << round << " op " << op << " format " << +format << " count "
                    << count << " low " << Understand(row, low, format).number << " high "
                    << Understand(row, high, format).number << " value "
                    << Understand(row, first, format).number;
    }
  }
}

/// Any double, often one of few.
class AreaOracle : public RandomTest {
 protected:
  double AnyNumber() {
    switch (Below(6)) {
      case 0:
        return std::bit_cast<double>(Bits());
      case 1:
        return std::bit_cast<double>(0x7FF0000000000000 | (Bits() & 0x8000000000000000));
      case 2:
        return std::numeric_limits<double>::quiet_NaN();
      default:
        return static_cast<double>(Below(64)) / 4 - 8;
    }
  }
};

TEST_F(AreaOracle, AgreesOnAnyNumbersAndUnits) {
  for (int round = 0; round < 200000; ++round) {
    double const valueLow = AnyNumber(), valueHigh = AnyNumber();
    double const low = AnyNumber(), high = AnyNumber();
    double const unit = OneIn(2) ? 1.0 : OneIn(20) ? 1e300 : (1 + Below(16)) / 8.0;
    auto const op = static_cast<unsigned short>(Bits());
    double area = 0.0;
    if ((op & 4) != 0) {
      double difference = high - (low > valueHigh ? low - unit : valueHigh);
      if (!std::isfinite(difference)) difference = kLargest;
      if (difference > 0) area += difference;
    }
    if ((op & 2) != 0) {
      double difference = (valueLow > high ? high + unit : valueLow) - low;
      if (!std::isfinite(difference)) difference = kLargest;
      if (difference > 0) area += difference;
    }
    if ((op & 1) != 0) {
      double const lesser = valueHigh < high ? valueHigh : high;
      double const greater = valueLow > low ? valueLow : low;
      double difference = lesser - greater;
      bool const isNone =
          std::isnan(valueLow) || std::isnan(valueHigh) || std::isnan(low) || std::isnan(high);
      if (isNone || !std::isfinite(difference)) difference = kLargest;
      if (difference + unit > 0) area += difference + unit;
    }
    ASSERT_EQ(BoundRangeArea(op, valueLow, valueHigh, low, high, unit), area)
        << (op & 7) << ' ' << valueLow << ' ' << valueHigh << ' ' << low << ' ' << high << ' '
        << unit;
  }
}

}  // namespace
}  // namespace xo::test
