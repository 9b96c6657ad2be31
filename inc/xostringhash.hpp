#pragma once

#include "base/export.hpp"

class XoString;

/// What a null text hashes to, and what a null element adds to the hash of its array.
inline constexpr unsigned NullElementHashConstant = 0xFEFE7575;

/// Hash of sort orders: texts that are equal on all levels in one language hash alike, whatever
/// their code sets. A null value (language 254, or code set 254 with language 0) gives
/// `NullElementHashConstant`. A positive `count` reads that many orders, the end counting as orders
/// of 0; -1 reads to the end; any other gives 0. Without a code set the hash runs over bytes, and
/// stops at the end.
XO_EXPORT unsigned HashString(unsigned char codeSet, unsigned char language, char const* text,
                              short count = -1, unsigned char byteOrder = 1);

/// Hash of the units of a text as they are: 16 bits each in code set 253, signed bytes otherwise.
/// Fast, and not to be mixed with comparison by sort orders.
XO_EXPORT unsigned HashXoString(XoString const& text);
/// The same over the low 7 bits of each unit.
XO_EXPORT unsigned HashXoString7(XoString const& text);
