#include <gtest/gtest.h>

#include <climits>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

class MemFileSeek : public testing::Test {
 protected:
  unsigned char const text[9] = "abcdefgh";
  MemFile file{text, 8};
  unsigned length = 2;
};

TEST_F(MemFileSeek, StartsAtTheFirstByte) {
  EXPECT_EQ(file.Position(), 0u);
  EXPECT_EQ(file.Size(), 8u);
}

TEST_F(MemFileSeek, LookingMovesNothing) {
  for (int round = 0; round < 3; ++round) {
    length = 2;
    EXPECT_EQ(file.Seek(0, 1, &length, 0), text);
    EXPECT_EQ(length, 8u);
    EXPECT_EQ(file.Position(), 0u);
  }
}

TEST_F(MemFileSeek, TellsWhatIsAvailableWhateverIsWanted) {
  for (unsigned wanted : {0u, 1u, 8u, 9u, UINT_MAX}) {
    length = wanted;
    EXPECT_EQ(file.Seek(5, 0, &length, 0), text + 5);
    EXPECT_EQ(length, 3u);
  }
}

TEST_F(MemFileSeek, OriginsAreStartPresentPositionAndEnd) {
  struct {
    int offset;
    unsigned short origin;
    unsigned expected;
  } const cases[] = {{0, 0, 0},  {7, 0, 7},  {0, 1, 4},  {3, 1, 7},
                     {-4, 1, 0}, {-1, 2, 7}, {-8, 2, 0}, {-3, 2, 5}};
  for (auto const& each : cases) {
    file.Seek(4, 0, nullptr, 1);
    EXPECT_EQ(file.Seek(each.offset, each.origin, &length, 0), text + each.expected);
    EXPECT_EQ(length, 8 - each.expected);
    EXPECT_EQ(file.Position(), 4u);
    EXPECT_EQ(file.Seek(each.offset, each.origin, &length, 1), text + each.expected);
    EXPECT_EQ(length, 8 - each.expected);
    EXPECT_EQ(file.Position(), each.expected);
  }
}

TEST_F(MemFileSeek, AnyFlagButZeroMoves) {
  for (unsigned short flag : std::initializer_list<unsigned short>{1, 2, 256, 65535}) {
    file.Seek(0, 0, nullptr, 1);
    EXPECT_EQ(file.Seek(3, 1, &length, flag), text + 3);
    EXPECT_EQ(file.Position(), 3u);
  }
}

TEST_F(MemFileSeek, GivesNothingAtTheEnd) {
  EXPECT_EQ(file.Seek(0, 2, &length, 1), nullptr);
  EXPECT_EQ(length, 0u);
  EXPECT_EQ(file.Position(), 8u);
  length = 2;
  EXPECT_EQ(file.Seek(0, 1, &length, 0), nullptr);
  EXPECT_EQ(length, 0u);
}

TEST_F(MemFileSeek, RefusesPositionsOutsideTheFile) {
  struct {
    int offset;
    unsigned short origin;
  } const cases[] = {{-1, 0},      {9, 0},       {-5, 1},      {5, 1},
                     {1, 2},       {-9, 2},      {INT_MAX, 0}, {INT_MAX, 1},
                     {INT_MAX, 2}, {INT_MIN, 0}, {INT_MIN, 1}, {INT_MIN, 2}};
  file.Seek(4, 0, nullptr, 1);
  for (auto const& each : cases) {
    for (unsigned short flag : std::initializer_list<unsigned short>{0, 1}) {
      length = 2;
      EXPECT_EQ(file.Seek(each.offset, each.origin, &length, flag), nullptr);
      EXPECT_EQ(length, 0u);
      EXPECT_EQ(file.Position(), 4u);
    }
  }
}

TEST_F(MemFileSeek, RefusesAnUnknownOrigin) {
  for (unsigned short origin : std::initializer_list<unsigned short>{3, 4, 255, 65535}) {
    length = 2;
    EXPECT_EQ(file.Seek(0, origin, &length, 1), nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(file.Position(), 0u);
  }
}

TEST_F(MemFileSeek, LengthMayBeLeftOut) {
  EXPECT_EQ(file.Seek(2, 0, nullptr, 0), text + 2);
  EXPECT_EQ(file.Seek(9, 0, nullptr, 0), nullptr);
}

TEST(MemFileEmpty, NeedsNoBytes) {
  MemFile file(nullptr, 0);
  for (unsigned short origin : std::initializer_list<unsigned short>{0, 1, 2}) {
    unsigned length = 6;
    EXPECT_EQ(file.Seek(0, origin, &length, 0), nullptr);
    EXPECT_EQ(length, 0u);
  }
  EXPECT_EQ(file.Size(), 0u);
}

}  // namespace
}  // namespace xo::test
