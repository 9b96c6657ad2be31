#pragma once

#include "src/xotypes/record_operations.hpp"
#include "xoidentifiers.hpp"

/// How the identifiers are stored: their fields one behind the other, without padding.
namespace xo {

struct ClassIdRecord {
  using Value = XoClassId;
  static constexpr unsigned kDiskWidth = 4;
  static XoClassId Read(void const* place, unsigned char format) {
    return {LoadField2(place, format), LoadField2(Advance(place, 2), format)};
  }
  static void Write(void* place, XoClassId const& value, unsigned char format) {
    StoreField2(place, value.classNumber, format);
    StoreField2(Advance(place, 2), value.version, format);
  }
};

struct ObjectIdRecord {
  using Value = XoObjId;
  static constexpr unsigned kDiskWidth = 10;
  static XoObjId Read(void const* place, unsigned char format) {
    return {LoadField4(place, format), LoadField4(Advance(place, 4), format),
            LoadField2(Advance(place, 8), format)};
  }
  static void Write(void* place, XoObjId const& value, unsigned char format) {
    StoreField4(place, value.block, format);
    StoreField4(Advance(place, 4), value.low, format);
    StoreField2(Advance(place, 8), value.high, format);
  }
};

/// An object's record, and behind it the database and the class number. The version is left out.
struct ReferenceRecord {
  using Value = XoRef;
  static constexpr unsigned kDiskWidth = 14;
  static XoRef Read(void const* place, unsigned char format) {
    XoRef value{};
    value = ObjectIdRecord::Read(place, format);
    value.database = LoadField2(Advance(place, 10), format);
    value.classNumber = LoadField2(Advance(place, 12), format);
    return value;
  }
  static void Write(void* place, XoRef const& value, unsigned char format) {
    ObjectIdRecord::Write(place, {value.block, value.low, value.high}, format);
    StoreField2(Advance(place, 10), value.database, format);
    StoreField2(Advance(place, 12), value.classNumber, format);
  }
};

}  // namespace xo
