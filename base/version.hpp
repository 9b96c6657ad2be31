#pragma once

#include "export.hpp"

/// Version of the module family that this base-services module belongs to.
inline constexpr unsigned kXoVersion[5] = {12, 0, 2, 248, 0};

/// Bits of the `flags` of `CheckXoVersionNumber`: which numbers behind the first two count.
inline constexpr int kXoCheckPatch = 1;
inline constexpr int kXoCheckBuild = 2;
inline constexpr int kXoCheckFifth = 4;

/// Tells whether a module of the given version can work with this one. Returns 0 when it can, else
/// the place (1 to 5) of the first number that forbids it.
///
/// The rule: major and minor number must be this module's own. The numbers behind them count only
/// where `flags` asks for them; counted from the left, they must not be newer than this module's,
/// so that what a module was built with is there. The first number that counts and is older than
/// this module's own settles it: the module is older as a whole, and can work. Other bits of
/// `flags` are not looked at.
XO_EXPORT int CheckXoVersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build,
                                   unsigned fifth, int flags);
