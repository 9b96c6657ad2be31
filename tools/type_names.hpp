#pragma once

#include <string>
#include <string_view>
#include <xotypemgr.hpp>

namespace xo::tool {

/// Ids of the rows of the table: 0 to this one.
inline constexpr int kLastRow = 46;

/// The name by which the user knows a type.
std::string TypeName(char type);

/// The type called `name`. An unknown one is `Trouble`, which lists the names near it.
char FindType(std::string_view name);

/// Whether values of a type can be written in disk form: not so for rows that have no operations
/// yet and share those of the reserved id.
bool HasDiskForm(XoTypeMgr const& manager, char type);

/// Of a number that can be null, the type of the same number that cannot; of any other type, that
/// type.
char PlainTypeOf(char type);

}  // namespace xo::tool
