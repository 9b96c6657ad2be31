#pragma once

#include "src/xotypes/blob_row.hpp"
#include "src/xotypes/object_array.hpp"
#include "src/xotypevl/identity_bounds.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "xoblob.hpp"
#include "xotypcmp.hpp"

namespace xo {

constexpr TypeDescriptor MakeBlobRow() {
  using Objects = ObjectArray<XoBlob>;
  auto row = WithTextConversions<XoBLOB_T>(
      MakeEmptyRow("XoBlob", "XoBLOB_T", kBlobFormat, sizeof(XoBlob), 0));
  row.Create = Objects::Create;
  row.Delete = Objects::Delete;
  row.Store = BlobOperations::Store;
  row.Load = BlobOperations::Load;
  row.NullSizeGet = BlobOperations::NullSizeGet;
  row.SizeGet = BlobOperations::SizeGet;
  row.SizeGetFromMemFile = BlobOperations::SizeGetFromMemFile;
  row.Compare = BlobCompare;
  row.EvalAndBound = EvaluateAsWhole;
  row.Hash = BlobOperations::Hash;
  row.Constructor = Objects::Constructor;
  row.Destructor = Objects::Destructor;
  row.Assignment = Objects::Assignment;
  row.Copy = Objects::Copy;
  row.Translate = BlobOperations::Translate;
  row.IsNull = BlobOperations::IsNull;
  row.SetNull = BlobOperations::SetNull;
  row.PrintToXoString = BlobOperations::Print;
  row.ScanFromXoString = BlobOperations::Scan;
  row.DefaultValue = BlobOperations::DefaultValue;
  return row;
}

}  // namespace xo
