#include "src/xotypes/convert_arrays.hpp"
#include "src/xotypes/scalar_operations.hpp"
#include "xotypeconvert.hpp"

/// The conversions of the numbers under the names that they are offered by.

namespace xo {
namespace {

template <class Value, class Family>
void* ConvertFromText(XoTypeConvertData* strings, unsigned count) {
  return ConvertFromStrings<Value, ScalarOperations<Family>>(strings, count);
}

}  // namespace
}  // namespace xo

XoTypeConvertData* CharConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_char>(values, count);
}
void* CharConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_char, xo::CharFamily>(strings, count);
}

XoTypeConvertData* O_U1BConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_u1b>(values, count);
}
void* O_U1BConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_u1b, xo::CharFamily>(strings, count);
}

XoTypeConvertData* ShortConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_2b>(values, count);
}
void* ShortConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_2b, xo::ShortFamily>(strings, count);
}

XoTypeConvertData* WordConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_u2b>(values, count);
}
void* WordConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_u2b, xo::ShortFamily>(strings, count);
}

XoTypeConvertData* LongConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_4b>(values, count);
}
void* LongConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_4b, xo::LongFamily>(strings, count);
}

XoTypeConvertData* DwordConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_u4b>(values, count);
}
void* DwordConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_u4b, xo::LongFamily>(strings, count);
}

XoTypeConvertData* IntConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_4b>(values, count);
}
void* IntConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_4b, xo::IntFamily>(strings, count);
}

XoTypeConvertData* UnsignedConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_u4b>(values, count);
}
void* UnsignedConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_u4b, xo::UnsignedFamily>(strings, count);
}

XoTypeConvertData* O_8BConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_8b>(values, count);
}
void* O_8BConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_8b, xo::LongLongFamily>(strings, count);
}

XoTypeConvertData* O_U8BConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_u8b>(values, count);
}
void* O_U8BConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_u8b, xo::LongLongFamily>(strings, count);
}

XoTypeConvertData* FloatConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_float>(values, count);
}
void* FloatConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_float, xo::FloatFamily>(strings, count);
}

XoTypeConvertData* DoubleConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<o_double>(values, count);
}
void* DoubleConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromText<o_double, xo::DoubleFamily>(strings, count);
}

XoTypeConvertData* Int64ConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<XoInt64>(values, count);
}
void* Int64ConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromStrings<XoInt64, xo::ObjectArray<XoInt64>>(strings, count);
}

XoTypeConvertData* BooleanConvertToXoString(void* values, unsigned count) {
  return xo::ConvertToStrings<XoBoolean>(values, count);
}
void* BooleanConvertFromXoString(XoTypeConvertData* strings, unsigned count) {
  return xo::ConvertFromStrings<XoBoolean, xo::ObjectArray<XoBoolean>>(strings, count);
}
