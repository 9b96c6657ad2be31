// Written by intl/tools/generate.py from Unicode 15.0.0 and CLDR 41. Do not edit.
// clang-format off
#include "intl/data/tables.hpp"

namespace xo::intl {

constinit unsigned const kCollationVersion = 1;
constinit unsigned long long const kCollationFingerprint = 0x4573491d2d222414;

}  // namespace xo::intl
