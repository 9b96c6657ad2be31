#pragma once

#include "xotypes.hpp"

/// Slot `EvalAndBound` of dates, times and spans. A value counts as one number, and with wildcards
/// as all numbers that it can stand for; its bounds are then widened to take in every match.
///
/// `XoDate` goes by day numbers, `XoTime` by seconds of the day. The others count in months of 31
/// days, without nanoseconds, and write over bounds that are there before.
namespace xo {

TypeDescriptor::EvalAndBoundFunction EvaluateDate;
TypeDescriptor::EvalAndBoundFunction EvaluateTime;
TypeDescriptor::EvalAndBoundFunction EvaluateDateTime;
TypeDescriptor::EvalAndBoundFunction EvaluateDateTimeN;
TypeDescriptor::EvalAndBoundFunction EvaluateTimeSpan;

}  // namespace xo
