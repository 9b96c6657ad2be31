#include <algorithm>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/base/stored_bytes.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

struct Outcome {
  unsigned produced;
  ByteList target;
  bool operator==(Outcome const&) const = default;
};

/// What a translation must make of a target, step by step.
template <class T>
Outcome TranslateByTheBook(ByteList target, unsigned char targetFormat, unsigned targetLength,
                           ByteList const& source, unsigned char sourceFormat,
                           unsigned sourceLength, unsigned count) {
  constexpr unsigned kWidth = sizeof(T);
  bool const toMemory = (targetFormat & 8) != 0, fromMemory = (sourceFormat & 8) != 0;
  if (!toMemory && !fromMemory) {
    unsigned const copied = std::min(sourceLength, targetLength);
    if (sourceLength < targetLength) std::fill_n(target.begin(), targetLength, 0);
    std::copy_n(source.begin(), copied, target.begin());
    return {copied, target};
  }
  if (toMemory != fromMemory) {
    unsigned const diskLength = toMemory ? sourceLength : targetLength;
    if (diskLength != 0) count = std::min(count, diskLength / kWidth);
  }
  unsigned char const diskFormat = toMemory ? (fromMemory ? 8 : sourceFormat) : targetFormat;
  for (unsigned i = 0; i < count; ++i) {
    T const value = DecodeAt<T>(source.data() + i * kWidth, diskFormat);
    EncodeAt<T>(target.data() + i * kWidth, value, 8);
  }
  return {count * kWidth, target};
}

struct TranslatedRow {
  char id;
  unsigned width;
  decltype(&TranslateByTheBook<int>) translateByTheBook;
};

class ScalarTranslate : public RandomTest, public testing::WithParamInterface<TranslatedRow> {
 protected:
  /// Translates with both buffers as large as they need be and no larger, and at any address.
  void Check(unsigned char targetFormat, unsigned targetLength, unsigned char sourceFormat,
             unsigned sourceLength, unsigned count) {
    SCOPED_TRACE(testing::Message()
                 << +targetFormat << '/' << targetLength << " from " << +sourceFormat << '/'
                 << sourceLength << ", " << count << " elements");
    bool const toMemory = (targetFormat & 8) != 0, fromMemory = (sourceFormat & 8) != 0;
    unsigned targetSize = count * width, sourceSize = count * width;
    if (!toMemory && !fromMemory) {
      targetSize = targetLength;
      sourceSize = sourceLength;
    } else if (!toMemory && targetLength != 0) {
      targetSize = std::min(targetSize, targetLength);
    } else if (!fromMemory && sourceLength != 0) {
      sourceSize = std::min(sourceSize, sourceLength);
    }
    auto const source = Bytes(sourceSize);
    auto const before = Bytes(targetSize);
    PlacedBytes const placedSource(source, Below(9)), placedTarget(before, Below(9));
    Outcome const expected = GetParam().translateByTheBook(
        before, targetFormat, targetLength, source, sourceFormat, sourceLength, count);
    unsigned const produced =
        manager.Translate(id, placedTarget.Data(), targetFormat, targetLength, placedSource.Data(),
                          sourceFormat, sourceLength, count);
    EXPECT_EQ(produced, expected.produced);
    EXPECT_TRUE(std::equal(expected.target.begin(), expected.target.end(), placedTarget.Data()));
    EXPECT_TRUE(std::equal(source.begin(), source.end(), placedSource.Data()));
  }

  char const id = GetParam().id;
  unsigned const width = GetParam().width;
  XoTypeMgr manager;
};

INSTANTIATE_TEST_SUITE_P(
    Scalars, ScalarTranslate,
    testing::ValuesIn(
        RowValues(ScalarRows{},
                  [](auto row) {
                    using Element = typename decltype(row)::Value;
                    return TranslatedRow{row.kId, sizeof(Element), TranslateByTheBook<Element>};
                  })),
    RowName{});

TEST_P(ScalarTranslate, EveryPairOfFormats) {
  for (unsigned targetFormat = 0; targetFormat < 16; ++targetFormat) {
    for (unsigned sourceFormat = 0; sourceFormat < 16; ++sourceFormat) {
      for (unsigned upper : {0u, 0x80u, 0x60u, 0xF0u}) {
        for (unsigned count : {0u, 1u, 3u}) {
          Check(static_cast<unsigned char>(targetFormat | upper), 3 * width,
                static_cast<unsigned char>(sourceFormat | (upper >> 1 & 0xF0u)), 3 * width, count);
        }
      }
    }
    if (HasFailure()) return;
  }
}

TEST_P(ScalarTranslate, EveryLengthUpToBeyondTheArray) {
  unsigned const limit = 5 * width + 3;
  for (unsigned length = 0; length <= limit; ++length) {
    for (unsigned other : {0u, 1u, width, 2 * width + 1, limit}) {
      for (unsigned char disk : Formats{1, 2, 0x81, 0x82, 0, 7}) {
        for (unsigned count : {0u, 1u, 2u, 4u}) {
          Check(8, other, disk, length, count);
          Check(disk, length, 8, other, count);
          Check(disk, length, 2, other, count);
          Check(8, length, 8, other, count);
        }
      }
    }
    if (HasFailure()) return;
  }
}

TEST_P(ScalarTranslate, RandomArrays) {
  for (unsigned round = 0; round < 4000 && !HasFailure(); ++round) {
    unsigned const count = Below(60);
    unsigned const limit = (count + 2) * width;
    Check(Byte(), OneIn(3) ? 0 : Below(limit), Byte(), OneIn(3) ? 0 : Below(limit), count);
  }
}

TEST_P(ScalarTranslate, DiskSideThatHoldsNoWholeElementIsLeftAlone) {
  if (width == 1) return;
  auto const before = Bytes(width);
  auto source = Bytes(width);
  auto target = before;
  EXPECT_EQ(manager.Translate(id, target.data(), 1, width - 1, source.data(), 8, 0, 1), 0u);
  EXPECT_EQ(manager.Translate(id, target.data(), 8, 0, source.data(), 2, width - 1, 1), 0u);
  EXPECT_EQ(target, before);
}

TEST(TranslateStated, DiskToDiskCutsAndPads) {
  XoTypeMgr const manager;
  ByteList source = {1, 2, 3, 4};
  ByteList target(4, 0xA5);
  EXPECT_EQ(manager.Translate(2, target.data(), 1, 4, source.data(), 1, 2, 1), 2u);
  EXPECT_EQ(target, (ByteList{1, 2, 0, 0}));
  target.assign(4, 0xA5);
  EXPECT_EQ(manager.Translate(2, target.data(), 1, 2, source.data(), 1, 4, 1), 2u);
  EXPECT_EQ(target, (ByteList{1, 2, 0xA5, 0xA5}));
}

TEST(TranslateStated, DiskToDiskKeepsTheByteOrder) {
  XoTypeMgr const manager;
  ByteList source = {1, 2, 3, 4};
  ByteList target(4);
  EXPECT_EQ(manager.Translate(2, target.data(), 1, 4, source.data(), 2, 4, 1), 4u);
  EXPECT_EQ(target, source);
  target.assign(4, 0);
  EXPECT_EQ(manager.Translate(2, target.data(), 0x82, 4, source.data(), 0x81, 4, 1), 4u);
  EXPECT_EQ(target, source);
}

TEST(TranslateStated, DiskToDiskLooksAtTheLengthsAlone) {
  XoTypeMgr const manager;
  ByteList source = {1, 2, 3, 4, 5};
  for (unsigned count : {0u, 1u, 9u}) {
    ByteList target(5, 0xA5);
    EXPECT_EQ(manager.Translate(2, target.data(), 1, 5, source.data(), 1, 5, count), 5u);
    EXPECT_EQ(target, source);
  }
  ByteList target(3, 0xA5);
  EXPECT_EQ(manager.Translate(2, target.data(), 1, 3, source.data(), 1, 0, 1), 0u);
  EXPECT_EQ(target, (ByteList{0, 0, 0}));
  EXPECT_EQ(manager.Translate(2, nullptr, 1, 0, source.data(), 1, 5, 1), 0u);
}

TEST(TranslateStated, MemoryToBigEndianAndBack) {
  XoTypeMgr const manager;
  o_4b memory[2] = {0x01020304, -2};
  ByteList disk(8);
  EXPECT_EQ(manager.Translate(2, disk.data(), 0x82, 8, memory, 8, 0, 2), 8u);
  EXPECT_EQ(disk, (ByteList{1, 2, 3, 4, 0xFF, 0xFF, 0xFF, 0xFE}));
  o_4b back[2] = {};
  EXPECT_EQ(manager.Translate(2, back, 8, 0, disk.data(), 0x82, 8, 2), 8u);
  EXPECT_EQ(back[0], 0x01020304);
  EXPECT_EQ(back[1], -2);
}

TEST(TranslateStated, MemoryIsKnownByBitEightAlone) {
  XoTypeMgr const manager;
  o_2b memory[2] = {1, 2};
  o_2b copy[2] = {};
  for (unsigned char format : Formats{8, 0x88, 9, 10, 15, 0xFF}) {
    copy[0] = copy[1] = 0;
    EXPECT_EQ(manager.Translate(1, copy, format, 1, memory, 0x8A, 1, 2), 4u);
    EXPECT_EQ(copy[0], 1);
    EXPECT_EQ(copy[1], 2);
  }
}

}  // namespace
}  // namespace xo::test
