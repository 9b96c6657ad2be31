#include <gtest/gtest.h>

#include <xotypemgr.hpp>

namespace xo::test {
namespace {

TEST(CollationVersion, FingerprintIsThatOfTheTables) {
  EXPECT_EQ(XoLanguageContext::ComputeCollationFingerprint(),
            XoLanguageContext::GetCollationFingerprint());
}

/// The tables of a version never change. Whoever changes them makes a new version, with
/// intl/tools/generate.py --new-version, and adds its line here.
TEST(CollationVersion, TablesAreThoseOfTheirVersion) {
  EXPECT_EQ(XoLanguageContext::GetCollationVersion(), 1u);
  EXPECT_EQ(XoLanguageContext::GetCollationFingerprint(), 0x4573491d2d222414ULL);
}

}  // namespace
}  // namespace xo::test
