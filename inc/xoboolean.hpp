#pragma once

#include <type_traits>

/// False, true or null, in one byte: 0, 1 or 255. Other bytes may come in as stored data. They are
/// true to `==`, they print and convert as false, and order by their signed number.
class XoBoolean {
 public:
  signed char value;  ///< may be read and written

  constexpr XoBoolean() : value(0) {}
  /// True for every number but 0.
  constexpr XoBoolean(int truth) : value(truth != 0 ? 1 : 0) {}

  constexpr int IsNullValue() const { return value == kNull ? 1 : 0; }
  /// Returns 0.
  constexpr int SetNullValue() {
    value = kNull;
    return 0;
  }

  // Two nulls are equal; a null is below every other value. A number stands for its truth value,
  // which is never null.
  constexpr int operator==(XoBoolean const& other) const {
    if (value == kNull || other.value == kNull) return value == other.value ? 1 : 0;
    return (value != 0) == (other.value != 0) ? 1 : 0;
  }
  constexpr int operator<(XoBoolean const& other) const {
    if (other.value == kNull) return 0;
    return value == kNull || value < other.value ? 1 : 0;
  }
  constexpr int operator>(XoBoolean const& other) const { return other < *this; }
  constexpr int operator==(int truth) const { return *this == XoBoolean(truth); }
  constexpr int operator<(int truth) const { return *this < XoBoolean(truth); }
  constexpr int operator>(int truth) const { return *this > XoBoolean(truth); }

 private:
  static constexpr signed char kNull = -1;
};

static_assert(sizeof(XoBoolean) == 1 && std::is_trivially_copyable_v<XoBoolean>);
