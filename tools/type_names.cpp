#include "tools/type_names.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/near_names.hpp"
#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {

std::string TypeName(char type) { return XoTypeMgr{}.NameGet(type, nullptr); }

char FindType(std::string_view name) {
  char type = 0;
  if (XoTypeMgr{}.Name2XoTypeId(std::string{name}.c_str(), type) == 0) return type;

  std::vector<std::string> names;
  for (int id = 0; id < kLastRow; ++id) names.push_back(TypeName(static_cast<char>(id)));
  auto const near = NearNames(name, names);
  throw Trouble(fmt::format("unknown type {}; {}", QuotedText(name),
                            near.empty() ? "'xotm types' lists them all"
                                         : fmt::format("near names: {}", fmt::join(near, ", "))));
}

bool HasDiskForm(XoTypeMgr const& manager, char type) {
  return manager.StorePtrGet(type) != manager.StorePtrGet(XoRES_T);
}

}  // namespace xo::tool
