#include <gtest/gtest.h>

#include "tests/base/random_test.hpp"
#include "tests/xotypevl/evaluated.hpp"

namespace xo::test {
namespace {

constexpr unsigned short kEqual = 1, kBelow = 2, kAbove = 4;

ByteList Long(unsigned value, unsigned char format = kLittle) {
  return Encode<unsigned>({value}, format);
}

ByteList ObjectId(unsigned block, unsigned low, unsigned high, unsigned char format = kLittle) {
  return Long(block, format) + Long(low, format) + Unit(high, format);
}
ByteList Reference(unsigned low, unsigned high, unsigned database, unsigned char format = kLittle) {
  return ObjectId(77, low, high, format) + Unit(database, format) + Unit(9, format);
}
ByteList Seal(unsigned top, unsigned middle, unsigned bottom) {
  return Unit(top, kBig) + Unit(middle, kBig) + Unit(bottom, kBig);
}

constexpr unsigned char kForms[] = {kLittle, kBig, kLittleKey, kBigKey};

TEST(ObjectIdBounds, MeasureTheRange) {
  for (unsigned char const format : kForms) {
    // The block does not count.
    Keys const range = {ObjectId(5, 100, 0, format), ObjectId(1, 199, 0, format)};
    ByteList const value = ObjectId(3, 110, 0, format);
    EXPECT_EQ(Evaluate(XoOBJID_T, kBelow, value, range, format),
              (Evaluated{Of(10, 100), kBelow, {}, value}));
    EXPECT_EQ(Evaluate(XoOBJID_T, kEqual, value, range, format),
              (Evaluated{Of(1, 100), kEqual, value, value}));
    EXPECT_EQ(Evaluate(XoOBJID_T, kAbove, value, range, format),
              (Evaluated{Of(89, 100), kAbove, value, {}}));
  }
}

TEST(ObjectIdBounds, WeighTheUpperWordWith65535) {
  // The number of high 1 is that of low 65535 as well.
  Keys const range = {ObjectId(0, 0, 0), ObjectId(0, 65535, 0)};
  EXPECT_EQ(Share(XoOBJID_T, kEqual, ObjectId(0, 0, 1), range), Of(1, 65536));
  EXPECT_EQ(Share(XoOBJID_T, kBelow, ObjectId(0, 0, 1), range), Of(65535, 65536));
  EXPECT_EQ(Share(XoOBJID_T, kEqual, ObjectId(0, 1, 1), range), 0.0F);
  // The lower word counts without a sign.
  Keys const all = {ObjectId(0, 0, 0), ObjectId(0, 0xFFFFFFFF, 0)};
  EXPECT_EQ(Share(XoOBJID_T, kBelow, ObjectId(0, 0x80000000, 0), all), 0.5F);
}

TEST(ObjectIdBounds, LeaveTheOperator) {
  EXPECT_EQ(Evaluate(XoOBJID_T, 0xFFF9, ObjectId(1, 2, 3)).op, 0xFFF9);
}

TEST(ReferenceBounds, SpreadOverTheWholeSpaceWhateverTheRange) {
  ByteList const value = Reference(1, 2, 3);
  float const one = static_cast<float>(1.0 / 1.8446744065119617e+19);
  for (Keys const& range : {Keys{}, Keys{Reference(0, 0, 0), Reference(9, 9, 9)}}) {
    EXPECT_EQ(Evaluate(XoREF_T, kEqual, value, range), (Evaluated{one, kEqual, value, value}));
    EXPECT_EQ(Share(XoREF_T, 0, value, range), 0.0F);
    EXPECT_EQ(Share(XoREF_T, 7, value, range), 1.0F);
  }
}

TEST(ReferenceBounds, WeighTheDatabaseMost) {
  for (unsigned char const format : kForms) {
    // Half of 65536 databases: 32768 * 65535 / 4294967295 = 32768 / 65537.
    ByteList const database = Reference(0, 0, 0x8000, format);
    EXPECT_EQ(Share(XoREF_T, kBelow, database, {}, format), Of(32768, 65537));
    EXPECT_EQ(Share(XoREF_T, kAbove, database, {}, format), Of(32769, 65537));
    // A word below it: 32768 / 4294967295.
    EXPECT_EQ(Share(XoREF_T, kBelow, Reference(0, 0x8000, 0, format), {}, format),
              Of(32768, 4294967295.0));
    // And the lowest: 2^31 / 4294967295^2.
    EXPECT_EQ(Share(XoREF_T, kBelow, Reference(0x80000000, 0, 0, format), {}, format),
              Of(2147483648.0, 4294967295.0 * 4294967295.0));
  }
}

TEST(ReferenceBounds, SpreadOverTheSquareOfTheHighestLong) {
  // 32768 * 65535 + 32896 is 2^31 + 128. Of 2^32 that were halfway between two floats, and went to
  // the even one, which is a half.
  EXPECT_EQ(Share(XoREF_T, kBelow, Reference(0, 32896, 32768), {}), 0.5F + 0x1p-24F);
}

TEST(ReferenceBounds, KeepOnlyRelationPatternAndUppermostBit) {
  ByteList const value = Reference(1, 2, 3);
  EXPECT_EQ(Evaluate(XoREF_T, 0xFFF9, value).op, 0x8009);
  EXPECT_EQ(Evaluate(XoREF_T, kAbove, value).low, value);
  EXPECT_EQ(Evaluate(XoREF_T, kAbove, value).high, std::nullopt);
}

TEST(SealBounds, MeasureTheRangeByItsBytesFromTheFirstOn) {
  Keys const range = {Seal(0, 0, 10), Seal(0, 0, 19)};
  for (unsigned char const format : kForms) {
    ByteList const value = Seal(0, 0, 15);
    EXPECT_EQ(Evaluate(XoSEAL_T, kBelow, value, range, format),
              (Evaluated{Of(5, 10), kBelow, {}, value}));
    EXPECT_EQ(Evaluate(XoSEAL_T, kAbove, value, range, format),
              (Evaluated{Of(4, 10), kAbove, value, {}}));
    EXPECT_EQ(Evaluate(XoSEAL_T, kEqual, value, range, format),
              (Evaluated{Of(1, 10), kEqual, value, value}));
  }
  Keys const wide = {Seal(0, 0, 0), Seal(0xFFFF, 0xFFFF, 0xFFFF)};
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0x8000, 0, 0), wide), 0.5F);
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0x8000, 0), wide), Of(1, 131072));
}

TEST(SealBounds, OfValuesInMemoryReadTheWords) {
  auto const words = [](unsigned top, unsigned middle, unsigned bottom) {
    return Unit(top, kLittle) + Unit(middle, kLittle) + Unit(bottom, kLittle);
  };
  Keys const range = {words(0, 0, 0), words(0, 1, 0x7FFF)};
  EXPECT_EQ(Evaluate(XoSEAL_T, kBelow, words(0, 0, 0x6000), range, kMemory),
            (Evaluated{0.25F, kBelow, {}, words(0, 0, 0x6000)}));
}

TEST(SealBounds, OfAKeyInMemoryFormAreStoredOnes) {
  // Only the format of memory alone tells of words.
  Keys const range = {Seal(0, 0, 0), Seal(0, 1, 0x7FFF)};
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0, 0x6000), range, 0x88), 0.25F);
}

TEST(SealBounds, CountOneKeyAtAnEndThatTheRelationExcludes) {
  Keys const range = {Seal(0, 0, 10), Seal(0, 0, 19)};
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0, 10), range), Of(1, 10));
  EXPECT_EQ(Share(XoSEAL_T, kAbove, Seal(0, 0, 19), range), Of(1, 10));
  EXPECT_EQ(Share(XoSEAL_T, 0, Seal(0, 0, 15), range), Of(1, 10));
  // Beyond the end there is none.
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0, 9), range), 0.0F);
  EXPECT_EQ(Share(XoSEAL_T, kAbove, Seal(0, 0, 20), range), 0.0F);
  EXPECT_EQ(Share(XoSEAL_T, kEqual, Seal(0, 0, 20), range), 0.0F);
  // Nor without a range, nor in one that is none.
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0, 10), {}), 0.0F);
  EXPECT_EQ(Share(XoSEAL_T, kBelow, Seal(0, 0, 10), {Seal(0, 0, 10), {}}), 0.0F);
  EXPECT_EQ(Share(XoSEAL_T, 6, Seal(0, 0, 10), {Seal(0, 0, 11), Seal(0, 0, 10)}), 0.0F);
}

TEST(SealBounds, LeaveTheOperator) {
  EXPECT_EQ(Evaluate(XoSEAL_T, 0xFFF9, Seal(1, 2, 3)).op, 0xFFF9);
}

TEST(WholeIndex, IsSelectedByAnyClassIdAndBlobWithoutALook) {
  for (char const id : {char{XoCLID_T}, char{XoBLOB_T}}) {
    for (unsigned op = 0; op < 0x10000; op += 0x1FF) {
      auto opOut = static_cast<unsigned short>(op);
      XoIdxBounds bounds;
      EXPECT_EQ(XoTypeMgr().EvalAndBound(id, nullptr, opOut, nullptr, kLittle, 1, &bounds, nullptr),
                1.0F);
      EXPECT_EQ(opOut, op);
      EXPECT_EQ(bounds.low, nullptr);
      EXPECT_EQ(bounds.high, nullptr);
    }
  }
}

struct IdentityRow {
  char id;
  ByteList value;
};
std::vector<IdentityRow> const kRows = {
    {XoOBJID_T, ObjectId(1, 2, 3)}, {XoREF_T, Reference(1, 2, 3)}, {XoSEAL_T, Seal(1, 2, 3)}};

TEST(IdentityBounds, LeaveBoundsThatThereAre) {
  for (auto const& [id, value] : kRows) {
    SCOPED_TRACE(int{id});
    ByteList const other(3, 0xA5);
    EXPECT_EQ(WithPresent(id, kEqual, value, {other, {}}), (Keys{other, value}));
    EXPECT_EQ(WithPresent(id, kEqual, value, {{}, other}), (Keys{value, other}));
  }
}

TEST(IdentityBounds, TakeAllElements) {
  for (auto const& [id, value] : kRows) {
    SCOPED_TRACE(int{id});
    ByteList const both = value + ByteList(value.size(), 0x5A);
    EXPECT_EQ(Evaluate(id, kEqual, both, {}, kLittle, 2).low, both);
    EXPECT_EQ(Evaluate(id, kEqual, both, {}, kLittle, 2).high, both);
    EXPECT_EQ(Evaluate(id, kEqual, value, {}, kLittle, 0).low, ByteList{});
  }
}

TEST(IdentityBounds, ReadTheRangeBeforeTheyAreWritten) {
  ByteList const low = ObjectId(0, 100, 0), value = ObjectId(0, 110, 0);
  PlacedBytes const operand(value, 1);
  PlacedKey const lower(low);
  // A range of one end gets the other as a bound: it is still one of one end.
  XoIdxBounds range{lower.Data(), nullptr, lower.Length(), 0};
  unsigned short op = kBelow;
  EXPECT_EQ(
      XoTypeMgr().EvalAndBound(XoOBJID_T, &range, op, operand.Data(), kLittle, 1, &range, nullptr),
      0.0F);
  EXPECT_EQ(BoundBytes(range.high, range.highLen), value);
  range.low = nullptr;
  ReleaseBounds(range);
}

class IdentityLaws : public RandomTest {};

TEST_F(IdentityLaws, BoundsBracketEveryMatch) {
  for (auto const& row : kRows) {
    SCOPED_TRACE(int{row.id});
    auto const few = [this, &row] {
      ByteList bytes(row.value.size(), 0);
      for (unsigned char& byte : bytes) byte = OneIn(3) ? Byte() : 0;
      return bytes;
    };
    for (int round = 0; round < 1000; ++round) {
      unsigned char const format = OneIn(2) ? kLittle : kBig;
      auto const op = static_cast<unsigned short>(Below(8));
      ByteList const value = few();
      Evaluated const result = Evaluate(row.id, op, value, {few(), few()}, format);
      ASSERT_FALSE(std::isnan(result.share));
      for (int count = 0; count < 30; ++count) {
        ByteList const key = OneIn(5) ? value : few();
        if (!Selects(row.id, op, key, value, format)) continue;
        ASSERT_TRUE(Meets(row.id, result, key, format)) << result << Keys{key, value};
      }
    }
  }
}

TEST_F(IdentityLaws, SharesOfObjectsAreThoseOfTheirNumbersCounted) {
  for (int round = 0; round < 500; ++round) {
    unsigned const low = Below(50), high = low + Below(50), value = low + Below(high - low + 1);
    auto const op = static_cast<unsigned short>(Below(8));
    int count = 0;
    for (unsigned key = low; key <= high; ++key) {
      unsigned const relation = key < value ? 2 : key > value ? 4 : 1;
      count += (op & relation) != 0 ? 1 : 0;
    }
    ASSERT_EQ(
        Share(XoOBJID_T, op, ObjectId(0, value, 0), {ObjectId(0, low, 0), ObjectId(0, high, 0)}),
        Of(count, high - low + 1));
    // Of seals no selection between the ends is empty.
    ASSERT_EQ(Share(XoSEAL_T, op, Seal(7, 7, value), {Seal(7, 7, low), Seal(7, 7, high)}),
              Of(count != 0 ? count : 1, high - low + 1));
  }
}

}  // namespace
}  // namespace xo::test
