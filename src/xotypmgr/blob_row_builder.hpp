#pragma once

#include "src/xotypes/blob_row.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypevl/identity_bounds.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "xoblob.hpp"
#include "xotypcmp.hpp"

namespace xo {

constexpr TypeDescriptor MakeBlobRow() {
  auto row =
      WithStorage<BlobOperations>(WithObjects<ObjectArray<XoBlob>>(WithTextConversions<XoBLOB_T>(
          MakeEmptyRow("XoBlob", "XoBLOB_T", kBlobFormat, sizeof(XoBlob), 0))));
  row.Compare = BlobCompare;
  row.EvalAndBound = EvaluateAsWhole;
  row.Hash = BlobOperations::Hash;
  row.IsNull = BlobOperations::IsNull;
  row.SetNull = BlobOperations::SetNull;
  row.PrintToXoString = BlobOperations::Print;
  row.ScanFromXoString = BlobOperations::Scan;
  row.DefaultValue = BlobOperations::DefaultValue;
  return row;
}

}  // namespace xo
