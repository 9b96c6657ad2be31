#pragma once

#include "xoistring.hpp"
#include "xotypes.hpp"

namespace xo {

/// Slot `EvalAndBound` of `XoIString` and `XoCaseIString`. The value is a stored record, of text or
/// of weights; one in memory form gets no answer and no bounds. Keys count by 4 of their weights,
/// behind those that the value and the ends of the index have in common. A wildcard of the value
/// ends it, whatever the operator says of wildcards, and of its bounds the upper one is then the
/// highest key of those that begin so. Bounds are keys.
template <class Text>
float EvaluateInline(XoIdxBounds* range, unsigned short& op, void* value, unsigned char format,
                     unsigned count, void* bounds, XoEvalData* data);

extern template TypeDescriptor::EvalAndBoundFunction EvaluateInline<XoIString>;
extern template TypeDescriptor::EvalAndBoundFunction EvaluateInline<XoCaseIString>;

}  // namespace xo
