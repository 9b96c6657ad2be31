#include "_xonulty.hpp"
#include "base/platform.hpp"

int XoNullOrder(NullRelation relation) {
  switch (relation) {
    case kBothNull:
      return 0;
    case kOnlyFirstNull:
      return -1;
    case kOnlySecondNull:
      return 1;
    default:
      XOLA_assert("nr != unknown", "inc\\_xonulty", __LINE__);
      return -2;
  }
}
