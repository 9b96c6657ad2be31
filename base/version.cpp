#include "base/version.hpp"

int CheckXoVersionNumber(unsigned major, unsigned minor, unsigned patch, unsigned build,
                         unsigned fifth, int flags) {
  unsigned const asked[5] = {major, minor, patch, build, fifth};
  for (int place = 0; place < 2; ++place) {
    if (asked[place] != kXoVersion[place]) return place + 1;
  }
  constexpr int kFlags[3] = {kXoCheckPatch, kXoCheckBuild, kXoCheckFifth};
  for (int place = 2; place < 5; ++place) {
    if ((flags & kFlags[place - 2]) == 0) continue;
    if (asked[place] > kXoVersion[place]) return place + 1;
    if (asked[place] < kXoVersion[place]) return 0;
  }
  return 0;
}
