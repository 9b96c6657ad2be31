#include <cstdint>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/base/stored_bytes.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

struct HashAnswer {
  unsigned hash;
  int error;
  bool operator==(HashAnswer const&) const = default;
};

std::ostream& operator<<(std::ostream& out, HashAnswer const& answer) {
  return out << answer.hash << " error " << answer.error;
}

/// What one element adds to the hash. Only row 3 folds its upper half in; rows 42 and 43 drop it.
template <class T>
std::uint32_t Fold(T value) {
  if constexpr (std::is_same_v<T, double>) {
    auto const bits = std::bit_cast<std::uint64_t>(value);
    return static_cast<std::uint32_t>(bits) ^ static_cast<std::uint32_t>(bits >> 32);
  } else if constexpr (std::is_same_v<T, float>) {
    return std::bit_cast<std::uint32_t>(value);
  } else {
    return static_cast<std::uint32_t>(value);  // extends by the sign of the type
  }
}

/// The hash by its definition, one element at a time.
template <class T>
HashAnswer HashByTheBook(unsigned char format, unsigned length, unsigned char const* data,
                         unsigned count) {
  std::uint64_t const end = length != 0 ? length : std::uint64_t{count} * sizeof(T);
  std::uint64_t position = 0;
  std::uint32_t folded = 0;
  int error = 0;
  for (unsigned remaining = count; remaining != 0 && error == 0;) {
    --remaining;
    folded ^= Fold(DecodeAt<T>(data + position, format));
    if (remaining == 0) break;
    if (position + sizeof(T) < end)
      position += sizeof(T);
    else
      error = 2101;
  }
  return {folded * 1103515245u, error};
}

struct HashedRow {
  char id;
  unsigned width;
  decltype(&HashByTheBook<int>) hashByTheBook;
};

class ScalarHash : public RandomTest, public testing::WithParamInterface<HashedRow> {
 protected:
  /// Random bytes, as many as a hash may read.
  std::vector<unsigned char> BytesFor(unsigned length, unsigned count) {
    return Bytes(Readable(width, length, count));
  }

  void Check(unsigned char format, unsigned length, unsigned count,
             std::vector<unsigned char> bytes, unsigned offset) {
    PlacedBytes const placed(bytes, offset);
    HashAnswer const expected = GetParam().hashByTheBook(format, length, placed.Data(), count);
    int error = -77;
    unsigned const hash = manager.Hash(id, length, placed.Data(), count, format, error);
    ASSERT_EQ((HashAnswer{hash, error}), expected)
        << "format " << +format << " length " << length << " count " << count;
    ASSERT_TRUE(std::equal(bytes.begin(), bytes.end(), placed.Data()));
  }

  char const id = GetParam().id;
  unsigned const width = GetParam().width;
  XoTypeMgr manager;
};

INSTANTIATE_TEST_SUITE_P(Scalars, ScalarHash,
                         testing::ValuesIn(RowValues(
                             ScalarRows{},
                             [](auto row) {
                               using Element = typename decltype(row)::Value;
                               return HashedRow{row.kId, sizeof(Element), HashByTheBook<Element>};
                             })),
                         RowName{});

TEST_P(ScalarHash, EveryFormatAndLength) {
  for (unsigned count : {1u, 2u, 3u, 5u}) {
    for (unsigned length = 0; length <= (count + 2) * width; ++length) {
      for (unsigned format = 0; format < 256; ++format) {
        Check(static_cast<unsigned char>(format), length, count, BytesFor(length, count),
              format % 5);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(ScalarHash, RandomArrays) {
  for (int round = 0; round < 4000; ++round) {
    unsigned const count = OneIn(20) ? Below(2001) : Below(41);
    unsigned const length = OneIn(2) ? 0 : Below((count + 2) * width);
    Check(Byte(), length, count, BytesFor(length, count), Below(9));
    if (HasFatalFailure()) return;
  }
}

TEST_P(ScalarHash, NoElementsHashToZero) {
  for (unsigned format = 0; format < 256; ++format) {
    for (unsigned length : {0u, 1u, 100u}) {
      int error = 4711;
      EXPECT_EQ(manager.Hash(id, length, nullptr, 0, static_cast<unsigned char>(format), error),
                0u);
      EXPECT_EQ(error, 0);
    }
  }
}

TEST_P(ScalarHash, CountsFarBeyondTheDataEndAtItsLength) {
  auto bytes = Bytes(3 * width);
  for (unsigned count : {4u, 0x20000001u, 0x40000001u, 0x80000000u, 0xFFFFFFFFu})
    Check(8, 3 * width, count, bytes, 0);
}

TEST_P(ScalarHash, OrderOfElementsDoesNotCount) {
  for (int round = 0; round < 200; ++round) {
    unsigned const count = 2 + Below(30);
    auto bytes = Bytes(count * width);
    int error = 0;
    unsigned const before = manager.Hash(id, 0, bytes.data(), count, 8, error);
    unsigned const a = Below(count) * width, b = Below(count) * width;
    for (unsigned i = 0; i < width; ++i) std::swap(bytes[a + i], bytes[b + i]);
    EXPECT_EQ(manager.Hash(id, 0, bytes.data(), count, 8, error), before);
  }
}

/// Hash of values in memory.
template <class T>
HashAnswer HashOf(int id, std::vector<T> values, unsigned length = 0, unsigned count = 0) {
  int error = 4711;
  unsigned const hash = XoTypeMgr().Hash(static_cast<char>(id), length, values.data(),
                                         count != 0 ? count : static_cast<unsigned>(values.size()),
                                         FormMemory, error);
  return {hash, error};
}

/// Hash of one stored element.
HashAnswer HashOfStored(int id, std::vector<unsigned char> bytes, unsigned char format) {
  int error = 4711;
  unsigned const hash = XoTypeMgr().Hash(static_cast<char>(id), 0, bytes.data(), 1, format, error);
  return {hash, error};
}

TEST(HashStated, OneIsTheMultiplier) {
  EXPECT_EQ(HashOf<o_4b>(2, {1}), (HashAnswer{1103515245u, 0}));
  EXPECT_EQ(HashOf<o_u8b>(43, {1}), (HashAnswer{1103515245u, 0}));
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3}), (HashAnswer{2207030490u, 0}));  // 2 * 1103515245
  EXPECT_EQ(HashOf<o_4b>(2, {5, 5}), (HashAnswer{0, 0}));
}

TEST(HashStated, NarrowValuesAreExtendedByTheirSign) {
  // -1 times the multiplier, in 32 bits, for every signed type.
  EXPECT_EQ(HashOf<o_char>(0, {-1}), (HashAnswer{0xBE39B193u, 0}));
  EXPECT_EQ(HashOf<o_2b>(1, {-1}), (HashAnswer{0xBE39B193u, 0}));
  EXPECT_EQ(HashOf<o_4b>(2, {-1}), (HashAnswer{0xBE39B193u, 0}));
  EXPECT_EQ(HashOf<int>(7, {-1}), (HashAnswer{0xBE39B193u, 0}));
  EXPECT_EQ(HashOf<o_8b>(42, {-1}), (HashAnswer{0xBE39B193u, 0}));
  // 255 and 65535 times the multiplier.
  EXPECT_EQ(HashOf<o_u1b>(10, {255}), (HashAnswer{0x84881E93u, 0}));
  EXPECT_EQ(HashOf<o_u2b>(5, {65535}), (HashAnswer{0x0CA6B193u, 0}));
  EXPECT_EQ(HashOfStored(1, {0xFF, 0xFF}, FormBig), (HashAnswer{0xBE39B193u, 0}));
  EXPECT_EQ(HashOfStored(5, {0xFF, 0xFF}, FormBig), (HashAnswer{0x0CA6B193u, 0}));
}

TEST(HashStated, HighHalfOfEightByteIntegersDoesNotCount) {
  EXPECT_EQ(HashOf<o_8b>(42, {0x0000000100000001}), (HashAnswer{1103515245u, 0}));
  EXPECT_EQ(HashOf<o_8b>(42, {0x7FFFFFFF00000001}), (HashAnswer{1103515245u, 0}));
  EXPECT_EQ(HashOf<o_u8b>(43, {0xFFFFFFFF00000000u}), (HashAnswer{0, 0}));
  EXPECT_EQ(HashOfStored(42, {1, 2, 3, 4, 0, 0, 0, 1}, FormBig), (HashAnswer{1103515245u, 0}));
}

TEST(HashStated, DoublesFoldTheirHalves) {
  // Bits 0x00000003'00000002 fold to 1.
  EXPECT_EQ(HashOf<std::uint64_t>(3, {0x0000000300000002u}), (HashAnswer{1103515245u, 0}));
  EXPECT_EQ(HashOf<std::uint64_t>(3, {0xABCDEF01ABCDEF01u}), (HashAnswer{0, 0}));
  EXPECT_EQ(HashOfStored(3, {0, 0, 0, 3, 0, 0, 0, 2}, FormBig), (HashAnswer{1103515245u, 0}));
}

TEST(HashStated, FloatingPointHashesItsBits) {
  EXPECT_EQ(HashOf<std::uint32_t>(4, {1}), (HashAnswer{1103515245u, 0}));
  // -0 is the bit 0x80000000, and the multiplier is odd: equal to +0 in order, not in hash.
  EXPECT_EQ(HashOf<float>(4, {-0.0f}), (HashAnswer{0x80000000u, 0}));
  EXPECT_EQ(HashOf<float>(4, {0.0f}), (HashAnswer{0, 0}));
  EXPECT_EQ(HashOf<double>(3, {-0.0}), (HashAnswer{0x80000000u, 0}));
}

TEST(HashStated, ByteOrderIsUndoneUnderTheBigEndianNibbleOnly) {
  std::vector<unsigned char> const one = {0, 0, 0, 1};
  for (int id : {2, 6, 14, 7, 8, 9, 4}) {
    EXPECT_EQ(HashOfStored(id, one, 2), (HashAnswer{1103515245u, 0})) << id;
    EXPECT_EQ(HashOfStored(id, one, 0x82), (HashAnswer{1103515245u, 0})) << id;
    // 0x01000000 times the multiplier leaves its lowest byte, 0x6D, on top.
    EXPECT_EQ(HashOfStored(id, one, 1), (HashAnswer{0x6D000000u, 0})) << id;
    EXPECT_EQ(HashOfStored(id, one, 0x81), (HashAnswer{0x6D000000u, 0})) << id;
    EXPECT_EQ(HashOfStored(id, one, 8), (HashAnswer{0x6D000000u, 0})) << id;
  }
}

TEST(HashStated, EndOfTheDataIsReportedWithTheHashOfWhatWasRead) {
  // Eight bytes hold two of the three elements.
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 8, 3), (HashAnswer{2207030490u, 2101}));
  // A partial element is read whole.
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 5, 3), (HashAnswer{2207030490u, 2101}));
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 4, 3), (HashAnswer{1103515245u, 2101}));
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 1, 3), (HashAnswer{1103515245u, 2101}));
  // The last element is not followed by a test.
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 8, 2), (HashAnswer{2207030490u, 0}));
  EXPECT_EQ(HashOf<o_4b>(2, {1, 3, 64}, 1, 1), (HashAnswer{1103515245u, 0}));
}

}  // namespace
}  // namespace xo::test
