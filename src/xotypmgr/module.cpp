#include <cstdio>
#include <memory>

#include "base/version.hpp"
#include "intl/language_context.hpp"
#include "xomodule.hpp"
#include "xotypemgr.hpp"

constinit XoTypeMgr* DefaultTypeManager = nullptr;

namespace {

constexpr char kBanner[] = "Xolara Typemanager";
constexpr unsigned kVersion[5] = {12, 0, 2, 248, 0};
constexpr char kModuleName[] = "XL120Ftms140x64";
constexpr char kRevision[] = "unknown";
constexpr char kBuildStamp[] = __DATE__ " " __TIME__;

#if defined(__clang__)
constexpr unsigned kCompilerNumber = __clang_major__ * 100 + __clang_minor__;
constexpr char kCompiler[] = __VERSION__;
#else
constexpr unsigned kCompilerNumber = __GNUC__ * 100 + __GNUC_MINOR__;
constexpr char kCompiler[] = "GCC " __VERSION__;
#endif

/// Writes `value` to `*item` unless the caller does not want it.
template <class Item>
void Give(Item* item, Item value) {
  if (item != nullptr) *item = value;
}

}  // namespace

void ___XoTypemgrContext(int start) {
  ___XoI18NContext(start);
  if (start != 0) {
    DefaultTypeManager = std::make_unique<XoTypeMgr>().release();
  } else {
    std::unique_ptr<XoTypeMgr>{DefaultTypeManager}.reset();
    DefaultTypeManager = nullptr;
  }
}

XoTypeMgr* DefaultTypeMgr(XoTypeMgr* manager) {
  XoTypeMgr* const present = DefaultTypeManager;
  if (manager != nullptr) DefaultTypeManager = manager;
  return present;
}

int XoCheckDll(int flags) {
  return CheckXoVersionNumber(kVersion[0], kVersion[1], kVersion[2], kVersion[3], kVersion[4],
                              flags | kXoCheckPatch | kXoCheckBuild);
}

char const* XoDescribeDll(unsigned* major, unsigned* minor, unsigned* patch, unsigned* build,
                          unsigned* fifth, char const** moduleName, char const** buildStamp,
                          char const** revision, unsigned* compilerNumber, char const** compiler,
                          char const** empty) {
  *major = kVersion[0];
  *minor = kVersion[1];
  *patch = kVersion[2];
  *build = kVersion[3];
  *fifth = kVersion[4];
  *moduleName = kModuleName;
  *buildStamp = kBuildStamp;
  *revision = kRevision;
  *compilerNumber = kCompilerNumber;
  *compiler = kCompiler;
  *empty = "";
  return kBanner;
}

void GetXoTypeMgrInfo(char const** compiler, unsigned* compilerNumber, char const** description,
                      char const** buildDate, char const** moduleName) {
  Give<char const*>(compiler, kCompiler);
  Give(compilerNumber, kCompilerNumber);
  if (description != nullptr) {
    // Shared by all callers and rewritten by each, always with the same text.
    static char text[256];
    std::snprintf(text, sizeof text, "%s %u.%u.%u.%u.%u ", kBanner, kVersion[0], kVersion[1],
                  kVersion[2], kVersion[3], kVersion[4]);
    *description = text;
  }
  Give<char const*>(buildDate, kBuildStamp);
  Give<char const*>(moduleName, kModuleName);
}
