#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

/// A configuration of a database whose stored Unicode keeps its units.
class OldOrderConfig final : public XoConfig {
 public:
  int Lookup(char const* key, void* result, XoConfigSection const* section) override {
    ++asked;
    askedKey = key;
    hadSection = section != nullptr;
    std::memcpy(&before, result, sizeof before);
    unsigned short const keeps = 1;
    std::memcpy(result, &keeps, sizeof keeps);
    return 1;
  }

  int asked = 0;
  std::string askedKey;
  bool hadSection = true;
  unsigned short before = 99;
};

TEST(OldUnicodeOrder, IsAskedForOnceAndKeepsTheUnitsOfUnicode) {
  OldOrderConfig config;
  DefaultConfig(&config);
  XoTypeMgr const manager;
  unsigned char const little = kLittleKey | kDropSet, big = kBigKey | kDropSet;

  std::vector<XoString> latin = {Narrow("ab", kLatin1, 9)};
  EXPECT_EQ(FromMemory(manager, latin, little, 8).target, Hex("06 00 00 09 61 62 00 FF"));
  std::vector<XoString> wide = {Wide(u"A\u0142", kUnicode, 9)};
  EXPECT_EQ(FromMemory(manager, wide, kLittle, 10).result, 10u);
  EXPECT_EQ(config.asked, 0) << "only Unicode that may lose its code set asks";

  EXPECT_EQ(FromMemory(manager, wide, little, 10),
            (Produced{10, Hex("08 00 00 09 41 00 42 01 00 FF")}));
  EXPECT_EQ(config.asked, 1);
  EXPECT_EQ(config.askedKey, "oldIndexUnicodeOrder");
  EXPECT_FALSE(config.hadSection);
  EXPECT_EQ(config.before, 0);

  EXPECT_EQ(FromMemory(manager, wide, big, 10),
            (Produced{10, Hex("00 08 00 09 00 41 01 42 00 FF")}));
  EXPECT_EQ(FromDisk(manager, Hex("08 00 FD 09 41 00 42 01 00 FF"), kLittle, little, 7),
            (Produced{7, Hex("08 00 00 09 41 00 42")}));
  EXPECT_EQ(config.asked, 1);

  DefaultConfig(nullptr);
  EXPECT_EQ(FromMemory(manager, wide, little, 10).result, 10u);
}

}  // namespace
}  // namespace xo::test
