#pragma once

#include "src/xotypcmp/string_rows.hpp"
#include "src/xotypes/inline_string.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypes/string_rows.hpp"
#include "src/xotypes/text_print.hpp"
#include "src/xotypevl/inline_bounds.hpp"
#include "src/xotypevl/string_bounds.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "xostringstore.hpp"
#include "xotypcmp.hpp"
#include "xotypeconvert.hpp"

/// How the string rows are put together.
namespace xo {

/// What the string rows of both generations have in common.
constexpr TypeDescriptor MakeCommonStringRow() {
  auto row = WithObjects<ObjectArray<XoString>>(
      MakeEmptyRow("XoString", "XoSTRING_T", "%s", sizeof(XoString), 0));
  row.Load = StringLoad;
  row.NullSizeGet = StringNullSizeGet;
  row.ConvertTo = StringConvertToXoString;
  row.ConvertFrom = StringConvertFromXoString;
  row.PrintToXoString = StringPrintToXoString;
  row.ScanFromXoString = StringScanFromXoString;
  row.DefaultValue = StringDefaultValue;
  return row;
}

constexpr TypeDescriptor MakeStringRow() {
  auto row = MakeCommonStringRow();
  row.Store = StringStore;
  row.SizeGet = StringSizeGet;
  row.SizeGetFromMemFile = StringSizeGetFromMemFile;
  row.Compare = StringCompare;
  row.EvalAndBound = StringEvalAndBound;
  row.Hash = StringHash;
  row.Translate = StringTranslate;
  row.IsNull = StringIsNull;
  row.SetNull = StringSetNull;
  row.GetValue = StringGetValue;
  return row;
}

/// Strings of an older generation have no null value and cannot be stepped.
constexpr TypeDescriptor MakeOlderStringRow() {
  auto row = MakeCommonStringRow();
  row.Store = OlderStringStore;
  row.SizeGet = OlderStringSizeGet;
  row.SizeGetFromMemFile = OlderStringSizeGetFromMemFile;
  row.Compare = OlderStringCompare;
  row.EvalAndBound = OlderStringEvalAndBound;
  row.Hash = OlderStringHash;
  row.Translate = OlderStringTranslate;
  return row;
}

/// The row of a weighted text. All its values hash alike, and none is null or has a next one.
template <class Text>
constexpr TypeDescriptor MakeInlineStringRow(char const* name, char const* typeIdName,
                                             XCompare* compare, XoConvertTo* convertTo,
                                             XoConvertFrom* convertFrom) {
  using Operations = InlineStringOperations<Text>;
  auto row = WithStorage<Operations>(
      WithObjects<ObjectArray<Text>>(MakeEmptyRow(name, typeIdName, "%s", sizeof(Text), 0)));
  row.Compare = compare;
  row.EvalAndBound = EvaluateInline<Text>;
  row.Hash = Operations::Hash;
  row.ConvertTo = convertTo;
  row.ConvertFrom = convertFrom;
  row.PrintToXoString = PrintWeightedText<Text>;
  row.ScanFromXoString = ScanWeightedText<Text>;
  row.DefaultValue = Operations::DefaultValue;
  return row;
}

}  // namespace xo
