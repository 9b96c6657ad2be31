#include "src/xoseal/seal_record.hpp"
#include "xoidentifiers.hpp"
#include "xoint64.hpp"
#include "xoseal.hpp"
#include "xostring.hpp"

namespace {

constexpr o_u2b UpperHalf(o_u4b word) { return static_cast<o_u2b>(word >> 16); }
constexpr o_u2b LowerHalf(o_u4b word) { return static_cast<o_u2b>(word); }

}  // namespace

int XoSeal::operator!=(XoSeal const& other) const {
  if (top != other.top) return int{top} - int{other.top};
  if (middle != other.middle) return int{middle} - int{other.middle};
  return int{bottom} - int{other.bottom};
}

void XoSeal::ConvertFrom(XoObjId const& source) {
  *this = {source.high, UpperHalf(source.low), LowerHalf(source.low)};
}

void XoSeal::ConvertFrom(XoInt64 const& source) {
  *this = {LowerHalf(static_cast<o_u4b>(source.high)), UpperHalf(source.low),
           LowerHalf(source.low)};
}

void XoSeal::ConvertFrom(o_8b const& source) {
  ConvertFrom(XoInt64(static_cast<long long>(source)));
}

void XoSeal::ConvertTo(XoInt64& target) const {
  target = XoInt64(static_cast<o_u4b>(middle) << 16 | bottom, int{top});
}

void XoSeal::ConvertTo(o_8b& target) const {
  XoInt64 number;
  ConvertTo(number);
  target = number.Get8b();
}

XoString& XoSeal::PrintToXoString(XoString& out) const {
  XoInt64 number;
  ConvertTo(number);
  return number.PrintToXoString(out, "%S");
}

void XoSeal::ScanFromXoString(XoString const& in) {
  *this = {};
  if (in.Len() == 0) return;
  XoInt64 number;
  number.ScanFromXoString(in, "%S");
  ConvertFrom(number);
}

unsigned XoSeal::Hash(unsigned char format, unsigned length, void* data, unsigned count,
                      int& error) {
  return xo::RecordOperations<xo::SealRecord>::HashElements(
      xo::ReadsInPlace(format), format, length, data, count, error,
      [](XoSeal const& value) { return unsigned{value.top} ^ value.middle ^ value.bottom; });
}
