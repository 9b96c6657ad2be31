#include <gtest/gtest.h>

#include <algorithm>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

TEST(VersionCheck, OwnVersionIsCompatibleWhateverCounts) {
  for (int flags = -1; flags < 256; ++flags)
    EXPECT_EQ(CheckXoVersionNumber(12, 0, 2, 248, 0, flags), 0) << flags;
}

TEST(VersionCheck, NamesTheFirstNumberThatForbids) {
  constexpr int kPatch = 1, kBuild = 2, kFifth = 4;
  struct {
    unsigned major, minor, patch, build, fifth;
    int flags, expected;
  } const cases[] = {
      // Major and minor must be the same, whether or not anything else counts.
      {11, 0, 2, 248, 0, 0, 1},
      {13, 0, 2, 248, 0, 0, 1},
      {0, 0, 0, 0, 0, 7, 1},
      {11, 5, 9, 999, 9, 7, 1},
      {12, 1, 2, 248, 0, 0, 2},
      {12, 1, 1, 1, 0, 7, 2},
      // What does not count is not looked at.
      {12, 0, 99, 999, 99, 0, 0},
      {12, 0, 99, 248, 0, kBuild | kFifth, 0},
      {12, 0, 2, 999, 0, kPatch | kFifth, 0},
      {12, 0, 2, 248, 99, kPatch | kBuild, 0},
      {12, 0, 99, 999, 99, 0x7FFFFFF8, 0},
      // What counts must not be newer.
      {12, 0, 3, 248, 0, kPatch, 3},
      {12, 0, 2, 249, 0, kBuild, 4},
      {12, 0, 2, 248, 1, kFifth, 5},
      {12, 0, 3, 249, 1, kPatch | kBuild | kFifth, 3},
      {12, 0, 2, 249, 1, kPatch | kBuild | kFifth, 4},
      {12, 0, 99, 249, 1, kBuild | kFifth, 4},
      // An older number settles it.
      {12, 0, 1, 999, 99, kPatch | kBuild | kFifth, 0},
      {12, 0, 2, 247, 99, kPatch | kBuild | kFifth, 0},
      {12, 0, 1, 248, 99, kPatch | kFifth, 0},
      {12, 0, 99, 247, 99, kBuild | kFifth, 0},
      // Not where it does not count.
      {12, 0, 1, 249, 0, kBuild, 4},
      {12, 0, 2, 1, 1, kPatch | kFifth, 5},
  };
  for (auto const& each : cases) {
    EXPECT_EQ(CheckXoVersionNumber(each.major, each.minor, each.patch, each.build, each.fifth,
                                   each.flags),
              each.expected)
        << each.major << '.' << each.minor << '.' << each.patch << '.' << each.build << '.'
        << each.fifth << " flags " << each.flags;
  }
}

TEST(VersionCheck, FlagsHaveABitEach) {
  EXPECT_EQ(kXoCheckPatch, 1);
  EXPECT_EQ(kXoCheckBuild, 2);
  EXPECT_EQ(kXoCheckFifth, 4);
}

// The rule the other way round: in the list of the numbers that count, the first that is not the
// library's own forbids, unless it is older and stands behind the first two.
TEST(VersionCheck, CountingNumbersOrderAsAList) {
  constexpr unsigned kGreatest = 0xFFFFFFFF;
  unsigned const own[5] = {12, 0, 2, 248, 0};
  for (unsigned major : {0u, 11u, 12u, 13u, kGreatest}) {
    for (unsigned minor : {0u, 1u, kGreatest}) {
      for (unsigned patch : {0u, 1u, 2u, 3u, kGreatest}) {
        for (unsigned build : {0u, 247u, 248u, 249u, kGreatest}) {
          for (unsigned fifth : {0u, 1u, kGreatest}) {
            for (int flags = 0; flags < 8; ++flags) {
              unsigned const asked[5] = {major, minor, patch, build, fifth};
              std::vector<int> places = {0, 1};
              for (int place : {2, 3, 4}) {
                if ((flags >> (place - 2)) % 2 != 0) places.push_back(place);
              }
              auto const other = std::find_if(places.begin(), places.end(), [&](int place) {
                return asked[place] != own[place];
              });
              bool const fits =
                  other == places.end() || (*other > 1 && asked[*other] < own[*other]);
              for (int upper : {0, 8, 0x7FFFFFF8, -8}) {
                ASSERT_EQ(CheckXoVersionNumber(major, minor, patch, build, fifth, flags | upper),
                          fits ? 0 : *other + 1)
                    << major << '.' << minor << '.' << patch << '.' << build << '.' << fifth
                    << " flags " << flags << " | " << upper;
              }
            }
          }
        }
      }
    }
  }
}

TEST(FormatByte, BitsAreFixed) {
  EXPECT_EQ(FormMemory, 8);
  EXPECT_EQ(FormLittle, 1);
  EXPECT_EQ(FormBig, 2);
  EXPECT_EQ(FormatIndexKey, 0x80);
  EXPECT_EQ(FormatNativeCodeSet, 0x40);
  EXPECT_EQ(FormatDropCodeSet, 0x20);
}

}  // namespace
}  // namespace xo::test
