#pragma once

#include "xotypes.hpp"

/// The comparisons of text rows that are reached through the table alone.
namespace xo {

/// `StringCompare` for databases of an older generation: a record that is cut has no header.
XCompare OlderStringCompare;

}  // namespace xo
