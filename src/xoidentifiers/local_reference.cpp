#include "src/xoidentifiers/identifier_fields.hpp"
#include "src/xoidentifiers/identifier_text.hpp"
#include "xoidentifiers.hpp"

using namespace xo;

namespace {

constexpr char kFormat[] = "(%H-%L#%B,%C)";

}  // namespace

XoLocalRef& XoLocalRef::operator=(XoRef const& source) {
  TakeNumber(*this, source);
  TakeClass(*this, source);
  return *this;
}

XoLocalRef& XoLocalRef::operator=(XoClassId const& source) {
  TakeClass(*this, source);
  return *this;
}

XoLocalRef& XoLocalRef::operator=(XoObjId const& source) {
  TakeNumber(*this, source);
  return *this;
}

int XoLocalRef::operator==(XoRef const& other) const {
  return low == other.low && high == other.high && other.database == 0;
}

int XoLocalRef::operator!=(XoLocalRef const& other) const { return OrderOfNumbers(*this, other); }

int XoLocalRef::operator!=(XoRef const& other) const {
  int const order = OrderOfNumbers(*this, other);
  return order != 0 || other.database == 0 ? order : -1;
}

XoString& XoLocalRef::PrintToXoString(XoString& out, char const* format) const {
  XoRef wide{};
  wide = *this;
  return wide.PrintToXoString(out, FormatOr(format, kFormat));
}

void XoLocalRef::ScanFromXoString(XoString const& in, char const* format) {
  XoRef wide{};
  wide = *this;
  wide.ScanFromXoString(in, FormatOr(format, kFormat));
  *this = wide;
}
