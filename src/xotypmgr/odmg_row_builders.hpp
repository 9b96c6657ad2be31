#pragma once

#include "src/odmg/odmg_rows.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "xotypcmp.hpp"

/// How the rows of the ODMG classes are put together.
namespace xo {

/// What the four rows share.
template <XoTypeId kRow, class Value>
constexpr TypeDescriptor MakeOdmgRow(char const* name, char const* typeIdName, char const* format) {
  using Objects = ObjectArray<Value>;
  auto row = WithObjects<Objects>(
      WithTextConversions<kRow>(MakeEmptyRow(name, typeIdName, format, sizeof(Value), 1)));
  row.PrintToXoString = PrintOdmg<Value>;
  row.ScanFromXoString = ScanOdmg<Value>;
  // There is no null value to ask for.
  row.DefaultValue = [](unsigned count, int) { return Objects::Create(count); };
  return row;
}

/// The row of a date, a time or both, which are stored as their fields.
template <XoTypeId kRow, class Layout, o_u4b (*Fold)(void const*, unsigned char)>
constexpr TypeDescriptor MakeOdmgRecordRow(char const* name, char const* typeIdName,
                                           char const* format, XCompare* compare,
                                           TypeDescriptor::EvalAndBoundFunction* evalAndBound) {
  using Value = typename Layout::Value;
  auto row =
      WithStorage<TemporalStorage<Layout>>(MakeOdmgRow<kRow, Value>(name, typeIdName, format));
  row.Compare = compare;
  row.EvalAndBound = evalAndBound;
  row.Hash = HashTemporal<Layout, Fold>;
  row.GetValue = StepOdmg<Value>;
  return row;
}

/// The row of intervals, which are stored, ordered and stepped as the numbers that they are.
template <XoTypeId kRow>
constexpr TypeDescriptor MakeOdmgIntervalRow(char const* name, char const* typeIdName,
                                             char const* format) {
  using Family = OdmgIntervalFamily;
  using Numbers = ScalarOperations<Family>;
  auto row = WithSizesOf<Family>(MakeOdmgRow<kRow, d_Interval>(name, typeIdName, format));
  row.Store = Family::kStore;
  row.Load = Family::kLoad;
  row.SizeGetFromMemFile = Numbers::SizeGetFromMemFile;
  row.Compare = FloatCompare;
  row.EvalAndBound = EvaluateNumber<o_float, FloatFamily>;
  row.Hash = HashScalars<o_float, Family>;
  row.Translate = Numbers::Translate;
  row.GetValue = StepValue<o_float>;
  return row;
}

}  // namespace xo
