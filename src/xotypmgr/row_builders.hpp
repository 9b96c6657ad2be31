#pragma once

#include "src/xoboolean/boolean_operations.hpp"
#include "src/xodate/temporal_rows.hpp"
#include "src/xodate/temporal_text.hpp"
#include "src/xoint64/int64_family.hpp"
#include "src/xonulty/null_operations.hpp"
#include "src/xotypcmp/scalar_compare.hpp"
#include "src/xotypes/convert_arrays.hpp"
#include "src/xotypes/number_print.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/scalar_operations.hpp"
#include "src/xotypes/scalar_step.hpp"
#include "src/xotypevl/null_bounds.hpp"
#include "src/xotypevl/number_bounds.hpp"
#include "src/xotypmgr/text_conversions.hpp"
#include "xotypes.hpp"

/// How rows of the table are stamped.
namespace xo {

/// The operations of the `illegal` row, and what other rows have where they have nothing of their
/// own. They touch nothing and answer 0, null or `ERR_TM_NOT_SUPPORTED`, so that a stray id cannot
/// bring the process down.
struct NoOperations {
  static void* Create(unsigned) { return nullptr; }
  static void* Delete(void*, unsigned) { return nullptr; }
  static unsigned Store(void*, void const*, unsigned char, unsigned) { return 0; }
  static unsigned Load(void*, void const*, unsigned char, unsigned) { return 0; }
  static unsigned NullSizeGet(unsigned) { return 0; }
  static unsigned SizeGet(void const*, unsigned char, unsigned char, unsigned) { return 0; }
  static unsigned SizeGetFromMemFile(MemFile*, unsigned char, unsigned) { return 0; }
  static int Compare(unsigned char, unsigned, void*, unsigned, void*, unsigned short, unsigned,
                     int&) {
    return 0;
  }
  static float EvalAndBound(XoIdxBounds*, unsigned short&, void*, unsigned char, unsigned, void*,
                            XoEvalData*) {
    return 0.0F;
  }
  static unsigned Hash(unsigned char, unsigned, void*, unsigned, int&) { return 0; }
  static XoTypeConvertData* ConvertTo(void*, unsigned) { return nullptr; }
  static void* ConvertFrom(XoTypeConvertData*, unsigned) { return nullptr; }
  static void Constructor(void*, unsigned, unsigned) {}
  static void Assignment(void*, void*, unsigned, int) {}
  static unsigned Translate(void*, unsigned char, unsigned, void*, unsigned char, unsigned,
                            unsigned) {
    return 0;
  }
  static int IsNull(void*) { return 0; }
  static XoString& PrintToXoString(XoString& out, void*, char const*, unsigned) { return out; }
  static void* ScanFromXoString(void*, XoString&, char const*, unsigned) { return nullptr; }
  static void* DefaultValue(unsigned, int) { return nullptr; }
  static int GetValue(void*, unsigned, unsigned char, NextValueCode) {
    return ERR_TM_NOT_SUPPORTED;
  }
};

/// A row with names, format and sizes, and no operations.
constexpr TypeDescriptor MakeEmptyRow(char const* name, char const* typeIdName, char const* format,
                                      std::uint16_t size, std::uint16_t fixed) {
  TypeDescriptor row{};
  row.Name = name;
  row.TypeIdName = typeIdName;
  row.Create = NoOperations::Create;
  row.Delete = NoOperations::Delete;
  row.Store = NoOperations::Store;
  row.Load = NoOperations::Load;
  row.NullSizeGet = NoOperations::NullSizeGet;
  row.SizeGet = NoOperations::SizeGet;
  row.SizeGetFromMemFile = NoOperations::SizeGetFromMemFile;
  row.Compare = NoOperations::Compare;
  row.EvalAndBound = NoOperations::EvalAndBound;
  row.Hash = NoOperations::Hash;
  row.ConvertTo = NoOperations::ConvertTo;
  row.ConvertFrom = NoOperations::ConvertFrom;
  row.Constructor = NoOperations::Constructor;
  row.Destructor = NoOperations::Constructor;
  row.Assignment = NoOperations::Assignment;
  row.Copy = NoOperations::Assignment;
  row.Translate = NoOperations::Translate;
  row.IsNull = NoOperations::IsNull;
  row.Format = format;
  row.PrintToXoString = NoOperations::PrintToXoString;
  row.ScanFromXoString = NoOperations::ScanFromXoString;
  row.MemLen = size;
  row.Fixed = fixed;
  row.DefaultValue = NoOperations::DefaultValue;
  row.GetValue = NoOperations::GetValue;
  return row;
}

/// `row` with the size helpers of a disk family in its slots 6 and 7.
template <class Family>
constexpr TypeDescriptor WithSizesOf(TypeDescriptor row) {
  row.NullSizeGet = Family::kNullSizeGet;
  row.SizeGet = Family::kSizeGet;
  return row;
}

/// `row` with arrays of objects that `Objects` makes and deletes, constructs and assigns.
template <class Objects>
constexpr TypeDescriptor WithObjects(TypeDescriptor row) {
  row.Create = Objects::Create;
  row.Delete = Objects::Delete;
  row.Constructor = Objects::Constructor;
  row.Destructor = Objects::Destructor;
  row.Assignment = Objects::Assignment;
  row.Copy = Objects::Copy;
  return row;
}

/// `row` with the stored form of `Storage`.
template <class Storage>
constexpr TypeDescriptor WithStorage(TypeDescriptor row) {
  row.Store = Storage::Store;
  row.Load = Storage::Load;
  row.NullSizeGet = Storage::NullSizeGet;
  row.SizeGet = Storage::SizeGet;
  row.SizeGetFromMemFile = Storage::SizeGetFromMemFile;
  row.Translate = Storage::Translate;
  return row;
}

/// A row of fixed-width elements: what follows from a disk family, and all else that `Traits`
/// names. Rows of one family share what depends on the family alone.
template <class Traits>
constexpr TypeDescriptor MakeFixedRow(char const* name, char const* typeIdName,
                                      char const* format) {
  using Family = typename Traits::Family;
  using Operations = ScalarOperations<Family>;
  static_assert(sizeof(typename Traits::Value) == Family::kWidth);
  auto row = WithSizesOf<Family>(MakeEmptyRow(name, typeIdName, format, Family::kWidth, 1));
  row.Store = Family::kStore;
  row.Load = Family::kLoad;
  row.SizeGetFromMemFile = Operations::SizeGetFromMemFile;
  row.Compare = Traits::kCompare;
  row.ConvertTo = Traits::kConvertTo;
  row.ConvertFrom = Traits::kConvertFrom;
  row.Constructor = Operations::Constructor;
  row.Destructor = Operations::Destructor;
  row.Assignment = Operations::Assignment;
  row.Copy = Operations::Assignment;
  row.Translate = Operations::Translate;
  return row;
}

/// `row` with the arrays of `Array` and the text of `Text`, which print and scan the values.
template <class Array, class Text>
constexpr TypeDescriptor WithArraysAndText(TypeDescriptor row) {
  row.Create = Array::Create;
  row.Delete = Array::Delete;
  row.PrintToXoString = Text::kPrint;
  row.ScanFromXoString = Text::kScan;
  return row;
}

/// The row of a plain scalar. `Traits` names its `Value`, its disk `Family`, its comparison
/// `kCompare` and its conversions `kConvertTo` and `kConvertFrom`.
template <class Traits>
constexpr TypeDescriptor MakeScalarRow(char const* name, char const* typeIdName,
                                       char const* format) {
  using Value = typename Traits::Value;
  using Family = typename Traits::Family;
  using Operations = ScalarOperations<Family>;
  auto row = WithArraysAndText<Operations, NumberText<Value>>(
      MakeFixedRow<Traits>(name, typeIdName, format));
  row.EvalAndBound = EvaluateNumber<Value, Family>;
  row.Hash = HashScalars<Value, Family>;
  row.DefaultValue = Operations::DefaultValue;
  row.GetValue = StepValue<Value>;
  return row;
}

/// The row of `XoInt64`.
template <class Traits>
constexpr TypeDescriptor MakeInt64Row(char const* name, char const* typeIdName,
                                      char const* format) {
  auto row = WithArraysAndText<XoInt64, NumberText<XoInt64>>(
      MakeFixedRow<Traits>(name, typeIdName, format));
  row.EvalAndBound = EvaluateNumber<XoInt64, Int64Family>;
  row.Hash = HashScalars<XoInt64, Int64Family>;
  // New elements are 0, which is the default.
  row.DefaultValue = [](unsigned count, int) { return XoInt64::Create(count); };
  row.GetValue = StepInt64;
  return row;
}

/// The row of `XoBoolean`.
template <class Traits>
constexpr TypeDescriptor MakeBooleanRow(char const* name, char const* typeIdName,
                                        char const* format) {
  using Array = ObjectArray<XoBoolean>;
  auto row = WithArraysAndText<Array, BooleanText>(MakeFixedRow<Traits>(name, typeIdName, format));
  row.EvalAndBound = EvaluateBoolean;
  // A byte that is read in place counts with its sign, a decoded one does not: nulls hash apart.
  row.Hash = HashScalars<o_char, CharFamily, o_u1b>;
  row.IsNull = IsNullBoolean;
  row.SetNull = SetNullBoolean;
  row.DefaultValue = DefaultOrNull<XoBoolean, Array>;
  row.GetValue = StepBoolean;
  return row;
}

template <class Element, class Plain>
struct NullTraits {
  using Value = Element;
  using Family = NullFamily<Element, Plain>;
  static constexpr XCompare* kCompare = CompareScalars<Element, Family>;
  static constexpr XoConvertTo* kConvertTo = ConvertToStrings<Element>;
  static constexpr XoConvertFrom* kConvertFrom = ConvertFromStrings<Element, ObjectArray<Element>>;
};

/// The row of a number that can be null: the class `Element` of a number of the disk family
/// `Plain`.
template <class Element, class Plain>
constexpr TypeDescriptor MakeNullRow(char const* name, char const* typeIdName, char const* format) {
  using Operations = NullOperations<Element, Plain>;
  using Array = ObjectArray<Element>;
  auto row = WithArraysAndText<Array, typename Operations::Text>(
      MakeFixedRow<NullTraits<Element, Plain>>(name, typeIdName, format));
  row.EvalAndBound = EvaluateNullNumber<Element, Plain>;
  row.Hash = Operations::Hash;
  row.Constructor = Operations::Constructor;
  row.Copy = Operations::Copy;
  row.IsNull = Operations::IsNull;
  row.SetNull = Operations::SetNull;
  row.DefaultValue = DefaultOrNull<Element, Array>;
  row.GetValue = Operations::GetValue;
  return row;
}

/// The row of a temporal class, which follows from its layout. Elements own no storage.
template <class Layout, XoTypeId kRow>
constexpr TypeDescriptor MakeTemporalRow(char const* name, char const* typeIdName,
                                         char const* format, XCompare* compare,
                                         TypeDescriptor::EvalAndBoundFunction* evalAndBound) {
  using Value = typename Layout::Value;
  auto row = WithStorage<TemporalStorage<Layout>>(WithObjects<ObjectArray<Value>>(
      WithTextConversions<kRow>(MakeEmptyRow(name, typeIdName, format, sizeof(Value), 1))));
  row.Compare = compare;
  row.EvalAndBound = evalAndBound;
  row.Hash = HashTemporal<Layout>;
  row.IsNull = IsNullSlot<Value>;
  row.SetNull = SetNullSlot<Value>;
  row.PrintToXoString = PrintSlot<Value>;
  row.ScanFromXoString = ScanSlot<Value>;
  row.DefaultValue = NewDefaults<Value>;
  row.GetValue = StepTemporal<Value>;
  return row;
}

/// `row` without a `GetValue` of its own.
constexpr TypeDescriptor WithoutGetValue(TypeDescriptor row) {
  row.GetValue = NoOperations::GetValue;
  return row;
}

}  // namespace xo
