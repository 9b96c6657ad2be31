#pragma once

#include "xotypes.hpp"

/// Slot 10 of the string rows. Of the value its length field says where it ends, and that many
/// bytes have to be there; of end keys and bounds nothing is read behind their lengths. A format in
/// memory is read as the disk format without that bit.
namespace xo {

TypeDescriptor::EvalAndBoundFunction StringEvalAndBound;
/// For databases of an older generation, whose records have neither code set nor language.
TypeDescriptor::EvalAndBoundFunction OlderStringEvalAndBound;

}  // namespace xo
