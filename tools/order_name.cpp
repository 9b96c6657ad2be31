#include "tools/order_name.hpp"

#include <xotypemgr.hpp>

#include "tools/text_decoder.hpp"

namespace xo::tool {

std::string NameOfOrder(unsigned short order, unsigned char group) {
  XoString description;
  XoConvertOrderToString(order, group, description);
  std::string name = Encoded(description);
  while (name.ends_with('\n') || name.ends_with(' ')) name.pop_back();
  return name;
}

}  // namespace xo::tool
