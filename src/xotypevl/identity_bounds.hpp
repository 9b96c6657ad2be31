#pragma once

#include "xotypes.hpp"

/// Slot `EvalAndBound` of the rows of identity that is no member of a class: those of the classes
/// are `XoClassId::EvalAndBound` and so on.
namespace xo {

/// All of an index, whatever is asked for: it is never narrowed. Nothing is read.
TypeDescriptor::EvalAndBoundFunction EvaluateAsWhole;

}  // namespace xo
