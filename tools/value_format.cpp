#include "tools/value_format.hpp"

#include <fmt/core.h>

#include <cstring>
#include <utility>

#include "tools/printable.hpp"
#include "tools/row_value.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

std::string UsualFormat(char type) {
  switch (PlainTypeOf(type)) {
    case Xo1B_T:
      return "%hhd";
    case XoU1B_T:
      return "%hhu";
    case XoBLOCKID_T:
      return "%lu";
    default:
      return XoTypeMgr{}.ExchangeFormat(type, nullptr);
  }
}

/// Makes a value one that prints differently from one of zeroes, if the format shows anything of
/// it.
void SetSample(RowValue& value) {
  value.Fill(0);
  float const dayHourMinuteSecond = 90061.5F;
  double const one = 1.5;
  char const plain = PlainTypeOf(value.Type());
  if (plain == D_INTERVAL_T || plain == XoFLOAT_T) {
    std::memcpy(value.Get(), &dayHourMinuteSecond, sizeof dayHourMinuteSecond);
  } else if (plain == XoDOUBLE_T) {
    std::memcpy(value.Get(), &one, sizeof one);
  } else {
    // Behind the number there is the mark of a null, which stays 0.
    std::memset(value.Get(), 1, XoTypeMgr{}.MemLenGet(plain, 1));
  }
}

}  // namespace

ValueFormat::ValueFormat(char valueType, std::string given)
    : type(valueType),
      isGiven(!given.empty()),
      text(isGiven ? std::move(given) : UsualFormat(valueType)) {
  XoTypeMgr const manager;
  if (!HasDiskForm(manager, type)) {
    throw Trouble(fmt::format("values of type {} have no disk form", TypeName(type)));
  }
  if (manager.IsFixed(type) == 0) {
    throw Trouble(fmt::format("values of type {} cannot be keys", TypeName(type)));
  }
  if (isGiven) RequireShowing();
}

/// Under such a format every line would do.
void ValueFormat::RequireShowing() const {
  if (type == XoBOOLEAN_T || type == XoSEAL_T) {
    throw Trouble(fmt::format("values of type {} have no format", TypeName(type)));
  }
  RowValue value(type);
  value.Fill(0);
  std::string const zero = value.Print(Text());
  SetSample(value);
  if (value.Print(Text()) == zero) {
    throw Trouble(fmt::format("the format {} shows nothing of a value of type {}", QuotedText(text),
                              TypeName(type)));
  }
}

}  // namespace xo::tool
