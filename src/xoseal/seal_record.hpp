#pragma once

#include "src/xotypes/record_operations.hpp"
#include "xoseal.hpp"

namespace xo {

/// A stored seal: three words, most significant byte first whatever the format.
struct SealRecord {
  using Value = XoSeal;
  static constexpr unsigned kDiskWidth = 6;
  static XoSeal Read(void const* place, unsigned char) {
    return {LoadField2(place, FormBig), LoadField2(Advance(place, 2), FormBig),
            LoadField2(Advance(place, 4), FormBig)};
  }
  static void Write(void* place, XoSeal const& value, unsigned char) {
    StoreField2(place, value.top, FormBig);
    StoreField2(Advance(place, 2), value.middle, FormBig);
    StoreField2(Advance(place, 4), value.bottom, FormBig);
  }
};

}  // namespace xo
