#include <cstdio>
#include <xotypemgr.hpp>

int main() {
  XoTypeMgr const manager;
  unsigned char stored[] = {0, 0, 1, 0};  // 256, most significant byte first
  unsigned char query[] = {0, 0, 0, 255};
  int status = 0;
  int const order = manager.Cmp(Xo4B_T, 4, stored, 4, query, 0, 1, FormBig, status);
  std::printf("256 against 255: %d, status %d\n", order, status);
}
