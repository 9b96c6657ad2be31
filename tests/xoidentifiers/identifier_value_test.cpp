#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

static_assert(std::is_aggregate_v<XoClassId> && std::is_aggregate_v<XoObjId> &&
              std::is_aggregate_v<XoRef> && std::is_aggregate_v<XoLocalRef>);
static_assert(std::is_trivially_copyable_v<XoRef>);

/// The number of 48 bits that an identifier holds.
template <class Identifier>
std::uint64_t Number(Identifier const& value) {
  return std::uint64_t{value.high} << 32 | value.low;
}

XoObjId ObjectOf(std::uint64_t number, o_u4b block = 0) {
  return {block, static_cast<o_u4b>(number), static_cast<o_u2b>(number >> 32)};
}

constexpr std::uint64_t kMask = 0xFFFFFFFFFFFF;

int Sign(int number) { return (number > 0) - (number < 0); }

TEST(ObjectId, IsEqualByItsNumberAlone) {
  EXPECT_EQ((XoObjId{1, 2, 3} == XoObjId{9, 2, 3}), 1);
  EXPECT_EQ((XoObjId{1, 2, 3} == XoObjId{1, 9, 3}), 0);
  EXPECT_EQ((XoObjId{1, 2, 3} == XoObjId{1, 2, 9}), 0);
}

TEST(ObjectId, OrdersByTheDifferenceOfHighThenByTheSignOfLow) {
  EXPECT_EQ((XoObjId{0, 9, 3} != XoObjId{0, 1, 10}), -7);
  EXPECT_EQ((XoObjId{0, 0, 0xFFFF} != XoObjId{0, 0, 0}), 65535);
  EXPECT_EQ((XoObjId{0, 0, 0} != XoObjId{0, 0, 0xFFFF}), -65535);
  EXPECT_EQ((XoObjId{0, 0xFFFFFFFF, 3} != XoObjId{0, 1, 3}), 1);
  EXPECT_EQ((XoObjId{0, 1, 3} != XoObjId{0, 0xFFFFFFFF, 3}), -1);
  EXPECT_EQ((XoObjId{5, 1, 3} != XoObjId{6, 1, 3}), 0);
}

TEST(ObjectId, StepsOverTheEndOfLow) {
  XoObjId id{7, 0xFFFFFFFF, 0};
  ++id;
  EXPECT_EQ(id.low, 0u);
  EXPECT_EQ(id.high, 1u);
  EXPECT_EQ(id.block, 7u);
  --id;
  EXPECT_EQ(id.low, 0xFFFFFFFFu);
  EXPECT_EQ(id.high, 0u);
  XoObjId last = ObjectOf(kMask);
  EXPECT_EQ(Number(++last), 0u);
  EXPECT_EQ(Number(--last), kMask);
}

TEST(ObjectId, AddsASignedStep) {
  XoObjId id{0, 0, 1};
  id += -1;
  EXPECT_EQ(id.low, 0xFFFFFFFFu);
  EXPECT_EQ(id.high, 0u);
  id += 0;
  EXPECT_EQ(Number(id), 0xFFFFFFFFu);
  id += 32767;
  EXPECT_EQ(Number(id), 0xFFFFFFFFu + std::uint64_t{32767});
  id += -32768;
  EXPECT_EQ(Number(id), 0xFFFFFFFEu);
}

TEST(ObjectId, HighestValueHasNoBlock) {
  XoObjId id{1, 2, 3};
  id.SetHighestValue();
  EXPECT_EQ(Number(id), kMask);
  EXPECT_EQ(id.block, 0u);
}

class IdentifierLaws : public RandomTest {
 protected:
  /// Numbers near one another and near the ends.
  std::uint64_t SomeNumber() {
    std::uint64_t const ends[] = {0, 0xFFFFFFFF, 0x100000000, kMask, Bits()};
    return (ends[Below(5)] + Below(5) - 2) & kMask;
  }
};

TEST_F(IdentifierLaws, ObjectIdsCountAsNumbersOf48Bits) {
  for (int turn = 0; turn < 20000; ++turn) {
    std::uint64_t const a = SomeNumber(), b = SomeNumber();
    ASSERT_EQ(Sign(ObjectOf(a, Below(9)) != ObjectOf(b, Below(9))), (a > b) - (a < b));
    ASSERT_EQ((ObjectOf(a, Below(9)) == ObjectOf(b)), a == b);
    auto const step = static_cast<short>(Bits());
    XoObjId id = ObjectOf(a, 4711);
    ASSERT_EQ(Number(++id), (a + 1) & kMask);
    ASSERT_EQ(Number(--id), a);
    ASSERT_EQ(Number(id += step), (a + static_cast<std::uint64_t>(std::int64_t{step})) & kMask);
    ASSERT_EQ(id.block, 4711u);
  }
}

TEST(ClassId, NullComesFirst) {
  XoClassId const null{65535, 65535}, least{0, 0}, high{65535, 0}, version{7, 65535};
  EXPECT_EQ((null != null), 0);
  for (XoClassId const& other : {least, high, version}) {
    EXPECT_EQ((null != other), -1);
    EXPECT_EQ((other != null), 1);
    EXPECT_TRUE(other > null);
    EXPECT_FALSE(null > other);
  }
}

TEST(ClassId, OrdersByNumberThenVersion) {
  EXPECT_EQ((XoClassId{7, 9} != XoClassId{8, 0}), -1);
  EXPECT_EQ((XoClassId{8, 0} != XoClassId{7, 9}), 1);
  EXPECT_EQ((XoClassId{7, 9} != XoClassId{7, 1}), 1);
  EXPECT_EQ((XoClassId{7, 1} != XoClassId{7, 9}), -1);
  EXPECT_EQ((XoClassId{7, 9} != XoClassId{7, 9}), 0);
  EXPECT_TRUE((XoClassId{0xFFFE, 0} > XoClassId{0x7FFF, 0xFFFF}));
  EXPECT_FALSE((XoClassId{7, 9} > XoClassId{7, 9}));
}

TEST(Reference, TakesTheFieldsThatItsSourceHas) {
  XoRef ref{1, 2, 3, 4, 5, 6};
  ref = XoClassId{50, 60};
  ref = XoObjId{10, 20, 30};
  ref = static_cast<unsigned short>(40);
  EXPECT_EQ(ref.block, 10u);
  EXPECT_EQ(ref.low, 20u);
  EXPECT_EQ(ref.high, 30u);
  EXPECT_EQ(ref.database, 40u);
  EXPECT_EQ(ref.classNumber, 50u);
  EXPECT_EQ(ref.version, 60u);
  ref = XoLocalRef{1, 2, 3, 5, 6};
  EXPECT_EQ(ref.block, 1u);
  EXPECT_EQ(ref.low, 2u);
  EXPECT_EQ(ref.high, 3u);
  EXPECT_EQ(ref.database, 0u);
  EXPECT_EQ(ref.classNumber, 5u);
  EXPECT_EQ(ref.version, 6u);
}

TEST(Reference, EqualityAndOrderKnowTheDatabaseLast) {
  XoRef const ref{1, 2, 3, 4, 5, 6};
  EXPECT_EQ((ref == XoRef{9, 2, 3, 4, 9, 9}), 1);
  EXPECT_EQ((ref == XoRef{1, 2, 3, 9, 5, 6}), 0);
  EXPECT_EQ((ref == XoRef{1, 9, 3, 4, 5, 6}), 0);
  EXPECT_EQ((ref == XoRef{1, 2, 9, 4, 5, 6}), 0);
  EXPECT_EQ((ref != XoRef{9, 2, 3, 4, 9, 9}), 0);
  EXPECT_EQ((ref != XoRef{1, 2, 3, 65535, 5, 6}), -1);
  EXPECT_EQ((ref != XoRef{1, 2, 3, 0, 5, 6}), 1);
  EXPECT_EQ((ref != XoRef{1, 1, 3, 65535, 5, 6}), 1);
  EXPECT_EQ((ref != XoRef{1, 2, 8, 0, 5, 6}), -5);
}

TEST(Reference, ValidityAsksForNumberClassAndDatabase) {
  struct {
    o_u4b low;
    o_u2b high, database, classNumber;
    int isValid, isValidOrigin;
  } const cases[] = {
      {2, 1, 5, 7, 1, 1},     {2, 0, 5, 7, 1, 1},     {0, 1, 0, 7, 1, 1},
      {0, 0, 5, 7, 0, 0},     {2, 1, 5, 0, 0, 0},     {2, 1, 65535, 7, 0, 1},
      {2, 1, 65535, 0, 0, 1}, {0, 0, 65535, 7, 0, 0}, {2, 1, 65534, 7, 1, 1},
  };
  for (auto const& test : cases) {
    XoRef const ref{3, test.low, test.high, test.database, test.classNumber, 0};
    EXPECT_EQ(ref.IsValid(), test.isValid) << test.database << ' ' << test.classNumber;
    EXPECT_EQ(ref.IsInvalid(), 1 - test.isValid) << test.database << ' ' << test.classNumber;
    EXPECT_EQ(ref.IsValidOriginId(), test.isValidOrigin) << test.database;
    EXPECT_EQ(ref.IsInvalidOriginId(), 1 - test.isValidOrigin) << test.database;
  }
  static_assert(std::is_same_v<decltype(XoRef().IsValid()), unsigned short>);
}

TEST(LocalReference, TakesAllButTheDatabase) {
  XoLocalRef local{};
  local = XoRef{1, 2, 3, 4, 5, 6};
  EXPECT_EQ(local.block, 1u);
  EXPECT_EQ(local.low, 2u);
  EXPECT_EQ(local.high, 3u);
  EXPECT_EQ(local.classNumber, 5u);
  EXPECT_EQ(local.version, 6u);
  local = XoClassId{50, 60};
  local = XoObjId{10, 20, 30};
  EXPECT_EQ(local.block, 10u);
  EXPECT_EQ(local.low, 20u);
  EXPECT_EQ(local.high, 30u);
  EXPECT_EQ(local.classNumber, 50u);
  EXPECT_EQ(local.version, 60u);
}

TEST(LocalReference, EqualsAReferenceIntoDatabaseZeroAlone) {
  XoLocalRef const local{1, 2, 3, 5, 6};
  EXPECT_EQ((local == XoLocalRef{9, 2, 3, 9, 9}), 1);
  EXPECT_EQ((local == XoLocalRef{1, 9, 3, 5, 6}), 0);
  EXPECT_EQ((local == XoRef{9, 2, 3, 0, 9, 9}), 1);
  EXPECT_EQ((local == XoRef{1, 2, 3, 1, 5, 6}), 0);
  EXPECT_EQ((local == XoRef{1, 2, 9, 0, 5, 6}), 0);
  EXPECT_EQ((local != XoLocalRef{9, 2, 3, 9, 9}), 0);
  EXPECT_EQ((local != XoLocalRef{1, 1, 3, 5, 6}), 1);
  EXPECT_EQ((local != XoRef{1, 2, 3, 0, 5, 6}), 0);
  EXPECT_EQ((local != XoRef{1, 2, 3, 1, 5, 6}), -1);
  EXPECT_EQ((local != XoRef{1, 1, 3, 1, 5, 6}), 1);
  EXPECT_EQ((local != XoRef{1, 2, 5, 0, 5, 6}), -2);
}

TEST(IdentifierNull, IsANumberOfZeroAndForClassesAllBits) {
  EXPECT_EQ((XoObjId{7, 0, 0}.IsNullValue()), 1);
  EXPECT_EQ((XoObjId{0, 0, 1}.IsNullValue()), 0);
  EXPECT_EQ((XoObjId{0, 1, 0}.IsNullValue()), 0);
  EXPECT_EQ((XoRef{7, 0, 0, 5, 6, 7}.IsNullValue()), 1);
  EXPECT_EQ((XoLocalRef{7, 0, 0, 6, 7}.IsNullValue()), 1);
  EXPECT_EQ((XoClassId{65535, 65535}.IsNullValue()), 1);
  EXPECT_EQ((XoClassId{65535, 0}.IsNullValue()), 0);
  EXPECT_EQ((XoClassId{0, 0}.IsNullValue()), 0);
}

}  // namespace
}  // namespace xo::test
