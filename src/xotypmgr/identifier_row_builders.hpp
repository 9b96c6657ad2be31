#pragma once

#include "src/xoseal/seal_record.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "xoidentifiers.hpp"

/// How the rows of the identifiers and of seals are put together.
namespace xo {

/// Slots that the classes do not offer under a name of their own. No address needs alignment.
template <class Identifier>
struct IdentifierOperations {
  static int IsNull(void* value) { return LoadBytes<Identifier>(value).IsNullValue(); }
  static int SetNull(void* value) {
    auto identifier = LoadBytes<Identifier>(value);
    identifier.SetNullValue();
    StoreBytes(value, identifier);
    return 0;
  }

  /// Steps the number of 48 bits, and leaves the other fields.
  static int GetValue(void* value, unsigned, unsigned char format, NextValueCode code) {
    if (format != FormMemory) return ERR_TM_NOT_SUPPORTED;
    auto identifier = LoadBytes<Identifier>(value);
    XoObjId number{identifier.block, identifier.low, identifier.high};
    if (code == kLowestValue) {
      number = {};
    } else if (AsksForNextValue(code)) {
      if (++number; number.IsNullValue() != 0) return ERR_TM_NO_NEXT_VALUE;
    } else if (code != kPresentValue) {
      return ERR_TM_NOT_SUPPORTED;
    }
    identifier = number;
    StoreBytes(value, identifier);
    return 0;
  }
};

template <XoTypeId kRow, class Identifier>
constexpr TypeDescriptor MakeIdentifierRow(char const* name, char const* typeIdName,
                                           char const* format) {
  using Operations = IdentifierOperations<Identifier>;
  auto row = WithStorage<Identifier>(WithObjects<ObjectArray<Identifier>>(
      WithTextConversions<kRow>(MakeEmptyRow(name, typeIdName, format, sizeof(Identifier), 1))));
  row.Create = Identifier::Create;
  row.Delete = Identifier::Delete;
  row.Compare = Identifier::Compare;
  row.EvalAndBound = Identifier::EvalAndBound;
  row.Hash = Identifier::Hash;
  row.IsNull = Operations::IsNull;
  row.SetNull = Operations::SetNull;
  row.PrintToXoString = Identifier::PrintToString;
  row.ScanFromXoString = Identifier::ScanFromString;
  row.DefaultValue = NewOrNull<Identifier>;
  return row;
}

/// The row of an identifier with a number that can be stepped.
template <XoTypeId kRow, class Identifier>
constexpr TypeDescriptor MakeNumberedRow(char const* name, char const* typeIdName,
                                         char const* format) {
  auto row = MakeIdentifierRow<kRow, Identifier>(name, typeIdName, format);
  row.GetValue = IdentifierOperations<Identifier>::GetValue;
  return row;
}

/// What the row of seals has of its own. A seal has no null value.
struct SealOperations {
  static XoString& PrintSlot(XoString& out, void* value, char const*, unsigned) {
    return LoadBytes<XoSeal>(value).PrintToXoString(out);
  }
  static void* ScanSlot(void* value, XoString& text, char const*, unsigned) {
    if (value == nullptr) return nullptr;
    XoSeal seal{};
    seal.ScanFromXoString(text);
    StoreBytes(value, seal);
    return value;
  }
  static void* DefaultValue(unsigned count, int) { return ObjectArray<XoSeal>::Create(count); }
};

constexpr TypeDescriptor MakeSealRow() {
  // The format is not used.
  auto row = WithStorage<RecordOperations<SealRecord>>(
      WithObjects<ObjectArray<XoSeal>>(WithTextConversions<XoSEAL_T>(
          MakeEmptyRow("XoSeal", "XoSEAL_T", "noop", sizeof(XoSeal), 1))));
  row.Compare = XoSeal::Compare;
  row.EvalAndBound = XoSeal::EvalAndBound;
  row.Hash = XoSeal::Hash;
  row.PrintToXoString = SealOperations::PrintSlot;
  row.ScanFromXoString = SealOperations::ScanSlot;
  row.DefaultValue = SealOperations::DefaultValue;
  return row;
}

}  // namespace xo
