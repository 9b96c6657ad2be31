#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

XoConfig* OnlyAsk() { return reinterpret_cast<XoConfig*>(~std::uintptr_t{0}); }

/// An application's own configuration, which notes what it was asked.
class NotingConfig final : public XoConfig {
 public:
  unsigned Count() const override { return 0; }
  int Contains(char const*, XoConfigSection const*) const override { return 0; }
  int Lookup(char const* key, void* result, XoConfigSection const* section) override {
    askedKey = key;
    askedSection = section;
    unsigned short const value = 513;
    std::memcpy(result, &value, sizeof value);
    return 1;
  }

  std::string askedKey;
  XoConfigSection const* askedSection = nullptr;
};

class ProcessConfig : public testing::Test {
 protected:
  void SetUp() override { before = DefaultConfig(nullptr); }
  void TearDown() override { DefaultConfig(before); }

  XoConfig* before = nullptr;
};

TEST_F(ProcessConfig, AllOnesOnlyAnswers) {
  EXPECT_EQ(DefaultConfig(OnlyAsk()), nullptr);
  EXPECT_EQ(DefaultConfig(OnlyAsk()), nullptr);
  NotingConfig config;
  DefaultConfig(&config);
  EXPECT_EQ(DefaultConfig(OnlyAsk()), &config);
  EXPECT_EQ(DefaultConfig(OnlyAsk()), &config);
}

TEST_F(ProcessConfig, InstallingAnswersWithThePreviousObject) {
  NotingConfig first, second;
  EXPECT_EQ(DefaultConfig(&first), nullptr);
  EXPECT_EQ(DefaultConfig(&second), &first);
  EXPECT_EQ(DefaultConfig(OnlyAsk()), &second);
}

TEST_F(ProcessConfig, NullTakesTheObjectOut) {
  NotingConfig config;
  DefaultConfig(&config);
  EXPECT_EQ(DefaultConfig(nullptr), &config);
  EXPECT_EQ(DefaultConfig(OnlyAsk()), nullptr);
}

TEST(ConfigTable, LookupIsTheThirdVirtualOperation) {
  NotingConfig config;
  using LookupFunction = int (*)(XoConfig*, char const*, void*, XoConfigSection const*);
  LookupFunction const* table = nullptr;
  std::memcpy(&table, static_cast<void const*>(static_cast<XoConfig*>(&config)), sizeof table);
  XoConfigSection const section{"debug", nullptr};
  unsigned short value = 0;
  EXPECT_EQ(table[2](&config, "stringOverflow", &value, &section), 1);
  EXPECT_EQ(value, 513);
  EXPECT_EQ(config.askedKey, "stringOverflow");
  EXPECT_EQ(config.askedSection, &section);
}

class MemoryConfig : public testing::Test {
 protected:
  XoMemoryConfig config;
  XoConfigSection const debug{"debug", nullptr};
  XoConfigSection const other{"other", nullptr};
  unsigned short value = 4321;
};

TEST_F(MemoryConfig, HoldsNothingAtFirst) {
  EXPECT_EQ(config.Count(), 0u);
  EXPECT_EQ(config.Contains("key", nullptr), 0);
  EXPECT_EQ(config.Lookup("key", &value, nullptr), 0);
  EXPECT_EQ(config.Lookup("key", &value, &debug), 0);
  EXPECT_EQ(value, 4321);
}

TEST_F(MemoryConfig, KeepsSectionsApart) {
  config.Set("key", 1);
  config.Set("key", 2, "debug");
  EXPECT_EQ(config.Count(), 2u);
  EXPECT_EQ(config.Lookup("key", &value, nullptr), 1);
  EXPECT_EQ(value, 1);
  EXPECT_EQ(config.Lookup("key", &value, &debug), 1);
  EXPECT_EQ(value, 2);
  value = 4321;
  EXPECT_EQ(config.Lookup("key", &value, &other), 0);
  EXPECT_EQ(value, 4321);
  EXPECT_EQ(config.Contains("key", &debug), 1);
  EXPECT_EQ(config.Contains("key", &other), 0);
}

TEST_F(MemoryConfig, ASectionIsKnownByItsOwnName) {
  config.Set("key", 7, "debug");
  char const sameText[] = {'d', 'e', 'b', 'u', 'g', '\0'};
  XoConfigSection const nested{sameText, &other};
  EXPECT_EQ(config.Lookup("key", &value, &nested), 1);
  EXPECT_EQ(value, 7);
}

TEST_F(MemoryConfig, SettingAgainReplaces) {
  config.Set("key", 1, "debug");
  config.Set("key", 65535, "debug");
  EXPECT_EQ(config.Count(), 1u);
  EXPECT_EQ(config.Lookup("key", &value, &debug), 1);
  EXPECT_EQ(value, 65535);
}

TEST_F(MemoryConfig, RemovingTakesOneValueOut) {
  config.Set("key", 1);
  config.Set("key", 2, "debug");
  EXPECT_EQ(config.Remove("key", "debug"), 1);
  EXPECT_EQ(config.Remove("key", "debug"), 0);
  EXPECT_EQ(config.Lookup("key", &value, &debug), 0);
  EXPECT_EQ(config.Lookup("key", &value, nullptr), 1);
  EXPECT_EQ(config.Count(), 1u);
}

TEST_F(MemoryConfig, WritesSixteenBitsAndNoMore) {
  config.Set("key", 0x1234);
  unsigned char bytes[] = {0xA5, 0xA5, 0xA5, 0xA5};
  EXPECT_EQ(config.Lookup("key", bytes, nullptr), 1);
  EXPECT_EQ(bytes[0], 0x34);
  EXPECT_EQ(bytes[1], 0x12);
  EXPECT_EQ(bytes[2], 0xA5);
  EXPECT_EQ(bytes[3], 0xA5);
}

TEST_F(MemoryConfig, KeysAreComparedToTheLetter) {
  config.Set("stringOverflow", 1, "debug");
  EXPECT_EQ(config.Contains("stringoverflow", &debug), 0);
  EXPECT_EQ(config.Contains("stringOverflo", &debug), 0);
}

}  // namespace
}  // namespace xo::test
