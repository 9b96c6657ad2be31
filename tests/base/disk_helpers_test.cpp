#include <algorithm>
#include <ostream>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/base/stored_bytes.hpp"

namespace xo::test {
namespace {

using StoreFunction = unsigned(void*, void const*, unsigned char, unsigned);
using StoreOneFunction = unsigned(void*, void const*, unsigned char);
using SizeGetFunction = unsigned(void const*, unsigned char, unsigned char, unsigned);
using NullSizeGetFunction = unsigned(unsigned);

struct Family {
  char const* name;
  unsigned width;
  StoreFunction* store;
  StoreFunction* load;
  StoreOneFunction* storeOne;  // null where the family has none
  SizeGetFunction* sizeGet;
  NullSizeGetFunction* nullSizeGet;
};

std::ostream& operator<<(std::ostream& out, Family const& family) { return out << family.name; }

std::vector<Family> Families() {
  return {
      {"Char", 1, CharStore, CharStore, nullptr, CharSizeGet, CharNullSizeGet},
      {"Short", 2, ShortStore, ShortStore, ShortStoreOne, ShortSizeGet, ShortNullSizeGet},
      {"Long", 4, LongStore, LongStore, LongStoreOne, LongSizeGet, LongNullSizeGet},
      {"Int", 4, IntStore, IntLoad, nullptr, IntSizeGet, IntNullSizeGet},
      {"Unsigned", 4, UnsignedStore, UnsignedLoad, nullptr, IntSizeGet, IntNullSizeGet},
      {"Float", 4, FloatStore, FloatStore, nullptr, FloatSizeGet, FloatNullSizeGet},
      {"Double", 8, DoubleStore, DoubleStore, nullptr, DoubleSizeGet, DoubleNullSizeGet},
      {"O8B", 8, O_8BStore, O_8BStore, O_8BStoreOne, O_8BSizeGet, O_8BNullSizeGet},
  };
}

class DiskHelpers : public RandomTest, public testing::WithParamInterface<Family> {
 protected:
  Family family = GetParam();

  /// What the elements in `source` must become: the obvious loop.
  std::vector<unsigned char> Converted(std::vector<unsigned char> source, unsigned format) const {
    if (format % 16 != 2) return source;
    for (auto element = source.begin(); element != source.end(); element += family.width)
      std::reverse(element, element + family.width);
    return source;
  }
};

INSTANTIATE_TEST_SUITE_P(EveryFamily, DiskHelpers, testing::ValuesIn(Families()),
                         [](auto const& each) { return std::string(each.param.name); });

TEST_P(DiskHelpers, BigEndianFormHasTheMostSignificantByteFirst) {
  // The number 0x0102... of the family's width, in memory least significant byte first.
  std::vector<unsigned char> ascending, descending;
  for (unsigned i = 1; i <= family.width; ++i) {
    ascending.push_back(static_cast<unsigned char>(i));
    descending.insert(descending.begin(), static_cast<unsigned char>(i));
  }
  std::vector<unsigned char> target(family.width);
  EXPECT_EQ(family.store(target.data(), descending.data(), FormBig, 1), family.width);
  EXPECT_EQ(target, ascending);
  EXPECT_EQ(family.store(target.data(), descending.data(), FormLittle, 1), family.width);
  EXPECT_EQ(target, descending);
  EXPECT_EQ(family.load(target.data(), ascending.data(), FormBig, 1), family.width);
  EXPECT_EQ(target, descending);
}

TEST_P(DiskHelpers, OnlyTheLowNibbleOfTheFormatCounts) {
  for (StoreFunction* convert : {family.store, family.load}) {
    for (unsigned format = 0; format < 256; ++format) {
      for (unsigned count : {0u, 1u, 2u, 3u, 5u, 8u, 33u}) {
        SCOPED_TRACE(testing::Message() << "format " << format << " count " << count);
        auto const source = Bytes(count * family.width);
        PlacedBytes const placed(source, Below(8));
        std::vector<unsigned char> target(count * family.width + 16, 0xA5);
        unsigned const offset = Below(8);
        ASSERT_EQ(convert(target.data() + offset, placed.Data(), static_cast<unsigned char>(format),
                          count),
                  count * family.width);
        auto const expected = Converted(source, format);
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), target.begin() + offset));
        ASSERT_EQ(std::count(target.begin(), target.begin() + offset, 0xA5), offset);
        ASSERT_EQ(std::count(target.begin() + offset + count * family.width, target.end(), 0xA5),
                  16 - offset);
      }
    }
  }
}

TEST_P(DiskHelpers, LoadUndoesStore) {
  for (unsigned round = 0; round < 400; ++round) {
    unsigned const count = Below(200);
    unsigned char const format = Byte();
    auto const source = Bytes(count * family.width);
    std::vector<unsigned char> disk(source.size()), back(source.size()), twice(source.size());
    family.store(disk.data(), source.data(), format, count);
    family.load(back.data(), disk.data(), format, count);
    ASSERT_EQ(back, source);
    family.store(twice.data(), disk.data(), format, count);
    ASSERT_EQ(twice, source);
  }
}

TEST_P(DiskHelpers, TargetMayBeTheSource) {
  for (unsigned format = 0; format < 16; ++format) {
    for (unsigned count : {1u, 2u, 7u, 64u}) {
      auto const source = Bytes(count * family.width);
      for (StoreFunction* convert : {family.store, family.load}) {
        PlacedBytes const placed(source, 1);
        EXPECT_EQ(convert(placed.Data(), placed.Data(), static_cast<unsigned char>(format), count),
                  count * family.width);
        auto const expected = Converted(source, format);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), placed.Data()));
      }
    }
  }
}

TEST_P(DiskHelpers, CountOfZeroTouchesNothing) {
  for (unsigned format = 0; format < 256; ++format) {
    EXPECT_EQ(family.store(nullptr, nullptr, static_cast<unsigned char>(format), 0), 0u);
    EXPECT_EQ(family.load(nullptr, nullptr, static_cast<unsigned char>(format), 0), 0u);
  }
}

TEST_P(DiskHelpers, SingleElementRoutineAgreesWithTheArrayRoutine) {
  if (family.storeOne == nullptr) return;
  for (unsigned format = 0; format < 256; ++format) {
    auto const source = Bytes(family.width);
    PlacedBytes const placed(source, 3);
    std::vector<unsigned char> target(family.width + 2, 0xA5);
    EXPECT_EQ(family.storeOne(target.data() + 1, placed.Data(), static_cast<unsigned char>(format)),
              family.width);
    auto const expected = Converted(source, format);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), target.begin() + 1));
    EXPECT_EQ(target.front(), 0xA5);
    EXPECT_EQ(target.back(), 0xA5);
    EXPECT_EQ(family.storeOne(placed.Data(), placed.Data(), static_cast<unsigned char>(format)),
              family.width);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), placed.Data()));
  }
}

TEST_P(DiskHelpers, SizesFollowFromTheCountAlone) {
  for (unsigned count : {0u, 1u, 2u, 5u, 1000u, 65536u}) {
    EXPECT_EQ(family.nullSizeGet(count), count * family.width);
    for (unsigned format = 0; format < 256; ++format) {
      auto const disk = static_cast<unsigned char>(format);
      EXPECT_EQ(family.sizeGet(nullptr, 8, disk, count), count * family.width);
      EXPECT_EQ(family.sizeGet(nullptr, disk, 8, count), count * family.width);
      EXPECT_EQ(family.sizeGet(nullptr, disk, disk, count), count * family.width);
    }
  }
}

TEST_P(DiskHelpers, SizesWrapAtThirtyTwoBits) {
  unsigned const count = 0xFFFFFFFFu;  // one element short of 0, so the size is -width
  EXPECT_EQ(family.nullSizeGet(count), 0u - family.width);
  EXPECT_EQ(family.sizeGet(nullptr, 8, 1, count), 0u - family.width);
}

TEST(DiskHelpersStated, FiveIntsTakeTwentyBytesWithNothingToRead) {
  EXPECT_EQ(IntSizeGet(nullptr, 0, 0, 5), 20u);
}

TEST(DiskHelpersStated, ReversedFloatingPointKeepsSignallingNanBits) {
  unsigned char const signalling[] = {0x01, 0x00, 0x80, 0x7F};
  unsigned char disk[4], back[4];
  FloatStore(disk, signalling, FormBig, 1);
  EXPECT_EQ(disk[0], 0x7F);
  EXPECT_EQ(disk[3], 0x01);
  FloatStore(back, disk, FormBig, 1);
  EXPECT_TRUE(std::equal(back, back + 4, signalling));

  unsigned char const wide[] = {0x01, 0, 0, 0, 0, 0, 0xF0, 0xFF};
  unsigned char wideDisk[8], wideBack[8];
  DoubleStore(wideDisk, wide, FormBig, 1);
  EXPECT_EQ(wideDisk[0], 0xFF);
  EXPECT_EQ(wideDisk[1], 0xF0);
  DoubleStore(wideBack, wideDisk, FormBig, 1);
  EXPECT_TRUE(std::equal(wideBack, wideBack + 8, wide));
}

}  // namespace
}  // namespace xo::test
