#pragma once

#include <string>

namespace xo::tool {

/// What a sort order of a group stands for, such as "lower letter s".
std::string NameOfOrder(unsigned short order, unsigned char group);

}  // namespace xo::tool
