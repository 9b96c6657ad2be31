#include <gtest/gtest.h>

#include <xotypemgr.hpp>

namespace xo::test {
namespace {

#if defined(_WIN32)
constexpr unsigned char kNative = 15;  // windows-1252
#else
constexpr unsigned char kNative = 1;  // ISO 8859-1
#endif

/// All defaults, as they stand when this is made.
struct Present {
  int codeSet = XoLanguageContext::GetDefaultCodeSet();
  int codeSet8 = XoLanguageContext::GetDefault8CodeSet();
  int codeSet16 = XoLanguageContext::GetDefault16CodeSet();
  int nativeCodeSet = XoLanguageContext::GetNativeCodeSet();
  int language = XoLanguageContext::GetDefaultLanguage();
  int cmpOp = XoLanguageContext::GetDefaultCmpOp();
};

// Before anything else has run.
Present const atLoad;

class LanguageDefaults : public testing::Test {
 protected:
  void SetUp() override { ___XoI18NContext(0); }
  void TearDown() override { ___XoI18NContext(0); }
};

TEST_F(LanguageDefaults, StandAtLoad) {
  EXPECT_EQ(atLoad.codeSet, 1);
  EXPECT_EQ(atLoad.codeSet8, 1);
  EXPECT_EQ(atLoad.codeSet16, 253);
  EXPECT_EQ(atLoad.nativeCodeSet, kNative);
  EXPECT_EQ(atLoad.language, 0);
  EXPECT_EQ(atLoad.cmpOp, 0x0010);
}

TEST_F(LanguageDefaults, SettersTakeEveryValue) {
  for (unsigned value = 0; value < 256; ++value) {
    auto const byte = static_cast<unsigned char>(value);
    XoLanguageContext::SetDefaultCodeSet(byte);
    XoLanguageContext::SetDefaultLanguage(static_cast<unsigned char>(255 - value));
    XoLanguageContext::SetDefaultCmpOp(static_cast<unsigned short>(value * 257));
    EXPECT_EQ(XoLanguageContext::GetDefaultCodeSet(), byte);
    EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 255 - value);
    EXPECT_EQ(XoLanguageContext::GetDefaultCmpOp(), value * 257);
  }
}

TEST_F(LanguageDefaults, OtherDefaultsStayWhenOneIsSet) {
  XoLanguageContext::SetDefaultCodeSet(253);
  EXPECT_EQ(XoLanguageContext::GetDefault8CodeSet(), 1);
  EXPECT_EQ(XoLanguageContext::GetDefault16CodeSet(), 253);
  EXPECT_EQ(XoLanguageContext::GetNativeCodeSet(), kNative);
  EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 0);
  EXPECT_EQ(XoLanguageContext::GetDefaultCmpOp(), 0x0010);
}

TEST_F(LanguageDefaults, StartKeepsWhatWasSet) {
  XoLanguageContext::SetDefaultCodeSet(253);
  XoLanguageContext::SetDefaultLanguage(7);
  XoLanguageContext::SetDefaultCmpOp(0x0330);
  for (int start : {1, 2, -1}) {
    ___XoI18NContext(start);
    EXPECT_EQ(XoLanguageContext::GetDefaultCodeSet(), 253);
    EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 7);
    EXPECT_EQ(XoLanguageContext::GetDefaultCmpOp(), 0x0330);
  }
}

TEST_F(LanguageDefaults, StopPutsThemBack) {
  ___XoI18NContext(1);
  XoLanguageContext::SetDefaultCodeSet(253);
  XoLanguageContext::SetDefaultLanguage(7);
  XoLanguageContext::SetDefaultCmpOp(0x0330);
  ___XoI18NContext(0);
  EXPECT_EQ(XoLanguageContext::GetDefaultCodeSet(), 1);
  EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 0);
  EXPECT_EQ(XoLanguageContext::GetDefaultCmpOp(), 0x0010);
}

}  // namespace
}  // namespace xo::test
