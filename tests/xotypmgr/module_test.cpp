#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

// Before anything else has run: what the library holds when it has only been loaded.
XoTypeMgr* const managerAtLoad = DefaultTypeMgr(nullptr);
int const optionsAtLoad = ___XoTypeMgrOptions();

/// Every test begins and ends with the library stopped.
class Module : public testing::Test {
 protected:
  void SetUp() override { ___XoTypemgrContext(0); }
  void TearDown() override { ___XoTypemgrContext(0); }
};

TEST_F(Module, LoadingMakesNoManagerAndSetsNoOption) {
  EXPECT_EQ(managerAtLoad, nullptr);
  EXPECT_EQ(optionsAtLoad, 0);
}

TEST_F(Module, StartMakesADefaultManagerAtLevelFive) {
  ___XoTypemgrContext(1);
  ASSERT_NE(DefaultTypeManager, nullptr);
  EXPECT_EQ(DefaultTypeMgr(nullptr), DefaultTypeManager);
  EXPECT_EQ(DefaultTypeManager->FactoryLevel(), 5);
  EXPECT_STREQ(DefaultTypeManager->NameGet(40, nullptr), "XoDateTimeN");
}

TEST_F(Module, AnyNumberButZeroStarts) {
  for (int start : {1, 2, -1, 0x10000, -2147483647 - 1}) {
    ___XoTypemgrContext(start);
    EXPECT_NE(DefaultTypeManager, nullptr) << start;
    ___XoTypemgrContext(0);
  }
}

TEST_F(Module, StopTakesTheManagerAway) {
  ___XoTypemgrContext(1);
  ___XoTypemgrContext(0);
  EXPECT_EQ(DefaultTypeManager, nullptr);
  EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
}

TEST_F(Module, StopWithNoManagerIsHarmless) {
  ___XoTypemgrContext(0);
  ___XoTypemgrContext(0);
  EXPECT_EQ(DefaultTypeManager, nullptr);
}

TEST_F(Module, StopStopsTheLanguageModuleToo) {
  for (int start : {1, 0}) {
    if (start != 0) ___XoTypemgrContext(1);
    XoLanguageContext::SetDefaultLanguage(7);
    ___XoTypemgrContext(0);
    EXPECT_EQ(XoLanguageContext::GetDefaultLanguage(), 0);
  }
}

TEST_F(Module, SecondStartLeavesTheFirstManagerAlone) {
  ___XoTypemgrContext(1);
  std::unique_ptr<XoTypeMgr> const first(DefaultTypeManager);
  ___XoTypemgrContext(1);
  EXPECT_NE(DefaultTypeManager, first.get());
  EXPECT_EQ(first->FactoryLevel(), 5);
  EXPECT_STREQ(first->NameGet(2, nullptr), "o_4b");
}

TEST_F(Module, DefaultManagerCanBeReplaced) {
  ___XoTypemgrContext(1);
  XoTypeMgr* const atStart = DefaultTypeManager;
  auto* const own = new XoTypeMgr(3);  // stop frees what is installed
  EXPECT_EQ(DefaultTypeMgr(own), atStart);
  delete atStart;
  EXPECT_EQ(DefaultTypeMgr(nullptr), own);
  EXPECT_EQ(DefaultTypeManager, own);
  EXPECT_EQ(DefaultTypeMgr(own), own);
  ___XoTypemgrContext(0);
  EXPECT_EQ(DefaultTypeManager, nullptr);
}

TEST_F(Module, DefaultManagerCanBeInstalledBeforeStart) {
  auto* const own = new XoTypeMgr;
  EXPECT_EQ(DefaultTypeMgr(own), nullptr);
  EXPECT_EQ(DefaultTypeManager, own);
}

TEST_F(Module, OptionsAreOneWritableWord) {
  int& options = ___XoTypeMgrOptions();
  EXPECT_EQ(&options, &XoTypeMgrOptions);
  EXPECT_EQ(&options, &___XoTypeMgrOptions());
  options = 1;
  EXPECT_EQ(XoTypeMgrOptions, 1);
  options = 0;
}

TEST(ModuleIdentity, VersionFitsItsOwnFamily) {
  for (int flags = -1; flags < 16; ++flags) EXPECT_EQ(XoCheckDll(flags), 0);
}

TEST(ModuleIdentity, Description) {
  unsigned major = 99, minor = 99, patch = 99, build = 99, fifth = 99, compilerNumber = 0;
  char const *moduleName = nullptr, *buildStamp = nullptr, *revision = nullptr, *compiler = nullptr,
             *empty = nullptr;
  EXPECT_STREQ(XoDescribeDll(&major, &minor, &patch, &build, &fifth, &moduleName, &buildStamp,
                             &revision, &compilerNumber, &compiler, &empty),
               "Xolara Typemanager");
  EXPECT_EQ(major, 12u);
  EXPECT_EQ(minor, 0u);
  EXPECT_EQ(patch, 2u);
  EXPECT_EQ(build, 248u);
  EXPECT_EQ(fifth, 0u);
  EXPECT_STREQ(moduleName, "XL120Ftms140x64");
  EXPECT_STREQ(revision, "unknown");
  EXPECT_STREQ(empty, "");
  ASSERT_NE(buildStamp, nullptr);
  EXPECT_GT(std::strlen(buildStamp), 0u);
  ASSERT_NE(compiler, nullptr);
  EXPECT_GT(std::strlen(compiler), 0u);
  EXPECT_GT(compilerNumber, 0u);
}

TEST(ModuleIdentity, InfoTellsTheSame) {
  unsigned numbers[5], compilerNumber = 0;
  char const *moduleName, *buildStamp, *revision, *compiler, *empty;
  XoDescribeDll(&numbers[0], &numbers[1], &numbers[2], &numbers[3], &numbers[4], &moduleName,
                &buildStamp, &revision, &compilerNumber, &compiler, &empty);

  char const *infoCompiler = nullptr, *description = nullptr, *date = nullptr, *name = nullptr;
  unsigned infoNumber = 0;
  GetXoTypeMgrInfo(&infoCompiler, &infoNumber, &description, &date, &name);
  EXPECT_STREQ(infoCompiler, compiler);
  EXPECT_EQ(infoNumber, compilerNumber);
  EXPECT_STREQ(description, "Xolara Typemanager 12.0.2.248.0 ");
  EXPECT_STREQ(name, "XL120Ftms140x64");
  ASSERT_NE(date, nullptr);
  EXPECT_GT(std::strlen(date), 0u);
}

TEST(ModuleIdentity, InfoSkipsWhatIsNotAskedFor) {
  char const *compiler = nullptr, *description = nullptr, *date = nullptr, *name = nullptr;
  unsigned number = 0;
  GetXoTypeMgrInfo(&compiler, nullptr, nullptr, nullptr, nullptr);
  EXPECT_NE(compiler, nullptr);
  GetXoTypeMgrInfo(nullptr, &number, nullptr, nullptr, nullptr);
  EXPECT_NE(number, 0u);
  GetXoTypeMgrInfo(nullptr, nullptr, &description, nullptr, nullptr);
  EXPECT_STREQ(description, "Xolara Typemanager 12.0.2.248.0 ");
  GetXoTypeMgrInfo(nullptr, nullptr, nullptr, &date, nullptr);
  EXPECT_NE(date, nullptr);
  GetXoTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, &name);
  EXPECT_STREQ(name, "XL120Ftms140x64");
}

TEST(ModuleIdentity, InfoTouchesNothingWhenNothingIsAskedFor) {
  char const* description = nullptr;
  GetXoTypeMgrInfo(nullptr, nullptr, &description, nullptr, nullptr);
  const_cast<char*>(description)[0] = '?';
  GetXoTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(description, "?olara Typemanager 12.0.2.248.0 ");
  GetXoTypeMgrInfo(nullptr, nullptr, &description, nullptr, nullptr);
  EXPECT_STREQ(description, "Xolara Typemanager 12.0.2.248.0 ");
}

TEST(ModuleIdentity, DescriptionIsBuiltAfreshInOneBuffer) {
  char const *first = nullptr, *second = nullptr;
  GetXoTypeMgrInfo(nullptr, nullptr, &first, nullptr, nullptr);
  const_cast<char*>(first)[0] = '?';
  const_cast<char*>(first)[255] = '\0';  // the buffer has 256 bytes
  GetXoTypeMgrInfo(nullptr, nullptr, &second, nullptr, nullptr);
  EXPECT_EQ(second, first);
  EXPECT_STREQ(second, "Xolara Typemanager 12.0.2.248.0 ");
}

}  // namespace
}  // namespace xo::test
