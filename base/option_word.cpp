#include "base/option_word.hpp"

constinit int XoTypeMgrOptions = 0;

int& ___XoTypeMgrOptions() { return XoTypeMgrOptions; }
