#pragma once

#include "xotypes.hpp"

/// Slot `EvalAndBound` of the ODMG dates and times. The numbers of dates count months of 31 days.
/// Each wildcard of a date widens its own field alone. As stored dates compare by the year without
/// its sign, the bounds of a wildcard year are in the wrong order: nothing lies between them.
namespace xo {

TypeDescriptor::EvalAndBoundFunction EvaluateOdmgDate;
TypeDescriptor::EvalAndBoundFunction EvaluateOdmgTime;
TypeDescriptor::EvalAndBoundFunction EvaluateOdmgTimestamp;

}  // namespace xo
