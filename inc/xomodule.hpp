#pragma once

#include "base/export.hpp"
#include "base/option_word.hpp"

/// Start, stop and identity of the library as a module of its family.

/// Starts (`start` not zero) or stops the library; call it after load and before unload, on one
/// thread, with no other thread in the library.
///
/// Start: starts the internationalisation module, then makes the default manager at level 5. A
/// second start makes another manager and does not free the first, which is the caller's then.
/// Stop: stops the internationalisation module, then frees the default manager, also one that was
/// installed with `DefaultTypeMgr`, which must therefore come from `new`.
///
/// Exhausted memory ends in the standard allocation failure.
XO_EXPORT void ___XoTypemgrContext(int start);

/// Whether this module's version can work with the base services that it runs on: the answer of
/// `CheckXoVersionNumber` for it, with patch and build number counted besides what `flags` asks.
XO_EXPORT int XoCheckDll(int flags);

/// Tells who this module is; returns the banner "Xolara Typemanager". Every pointer must be valid.
/// The texts belong to the library.
///
/// The five version numbers are 12, 0, 2, 248 and 0, `moduleName` is "XL120Ftms140x64",
/// `buildStamp` the date and time of the build, `revision` "unknown", `compilerNumber` and
/// `compiler` describe the compiler (its version as major * 100 + minor, and its own description),
/// `empty` is an empty text.
XO_EXPORT char const* XoDescribeDll(unsigned* major, unsigned* minor, unsigned* patch,
                                    unsigned* build, unsigned* fifth, char const** moduleName,
                                    char const** buildStamp, char const** revision,
                                    unsigned* compilerNumber, char const** compiler,
                                    char const** empty);

/// The same for programs that print it; an item whose pointer is null is skipped. `description` is
/// the banner, a blank and the version text, which ends in a blank, in a static buffer that every
/// call writes anew with the same text.
XO_EXPORT void GetXoTypeMgrInfo(char const** compiler, unsigned* compilerNumber,
                                char const** description, char const** buildDate,
                                char const** moduleName);
