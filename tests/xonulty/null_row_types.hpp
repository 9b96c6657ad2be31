#pragma once

#include <gtest/gtest.h>

#include <string>

#include "xotypemgr.hpp"

/// The thirteen rows of numbers that can be null, for typed tests.
namespace xo::test {

/// A class and the row of its plain number.
template <class ElementClass, int kPlainId>
struct NullRow {
  using Element = ElementClass;
  using Plain = typename Element::Plain;
  static constexpr int kId = Element::kTypeId;
  static constexpr int kPlain = kPlainId;
};

using NullRowTypes =
    testing::Types<NullRow<XoNull_char, 0>, NullRow<XoNull_uchar, 10>, NullRow<XoNull_short, 1>,
                   NullRow<XoNull_ushort, 5>, NullRow<XoNull_int, 7>, NullRow<XoNull_unsigned, 8>,
                   NullRow<XoNull_long, 2>, NullRow<XoNull_ulong, 6>, NullRow<XoNull_float, 4>,
                   NullRow<XoNull_double, 3>, NullRow<XoNull_XoInt64, 26>, NullRow<XoNull_8b, 42>,
                   NullRow<XoNull_u8b, 43>>;

struct RowName {
  template <class Row>
  static std::string GetName(int) {
    return "Id" + std::to_string(Row::kId);
  }
};

}  // namespace xo::test
