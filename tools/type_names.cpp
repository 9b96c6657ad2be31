#include "tools/type_names.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

#include "tools/near_names.hpp"
#include "tools/printable.hpp"
#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

/// A number that can be null, and the number that it is.
struct NullableType {
  char nullable;
  char plain;
};

constexpr NullableType kNullableTypes[] = {
    {XoNULL_1B_T, Xo1B_T},         {XoNULL_U1B_T, XoU1B_T},       {XoNULL_2B_T, Xo2B_T},
    {XoNULL_U2B_T, XoU2B_T},       {XoNULL_INT_T, XoINT_T},       {XoNULL_UNSIGNED_T, XoUNSIGNED_T},
    {XoNULL_4B_T, Xo4B_T},         {XoNULL_U4B_T, XoU4B_T},       {XoNULL_FLOAT_T, XoFLOAT_T},
    {XoNULL_DOUBLE_T, XoDOUBLE_T}, {XoNULL_XOINT64_T, XoINT64_T}, {XoNULL_8B_T, Xo8B_T},
    {XoNULL_U8B_T, XoU8B_T},
};

}  // namespace

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

char PlainTypeOf(char type) {
  auto const* const found =
      std::find_if(std::begin(kNullableTypes), std::end(kNullableTypes),
                   [type](NullableType const& each) { return each.nullable == type; });
  return found == std::end(kNullableTypes) ? type : found->plain;
}

}  // namespace xo::tool
