#include "src/xodate/temporal_text.hpp"

XoString& XoDate::PrintToXoString(XoString& out, char const* format) const {
  return xo::PrintValue(out, *this, format);
}

XoDate* XoDate::ScanFromXoString(XoString& in, char const* format) {
  return xo::ScanValue(*this, in, format) ? this : nullptr;
}

XoString& XoTime::PrintToXoString(XoString& out, char const* format) const {
  return xo::PrintValue(out, *this, format);
}

XoTime* XoTime::ScanFromXoString(XoString& in, char const* format) {
  return xo::ScanValue(*this, in, format) ? this : nullptr;
}

XoString& XoDateTime::PrintToXoString(XoString& out, char const* format) const {
  return xo::PrintValue(out, *this, format);
}

XoDateTime* XoDateTime::ScanFromXoString(XoString& in, char const* format) {
  return xo::ScanValue(*this, in, format) ? this : nullptr;
}

XoString& XoDateTimeN::PrintToXoString(XoString& out, char const* format) const {
  return xo::PrintValue(out, *this, format);
}

XoDateTimeN* XoDateTimeN::ScanFromXoString(XoString& in, char const* format) {
  return xo::ScanValue(*this, in, format) ? this : nullptr;
}

XoString& XoTimeSpan::PrintToXoString(XoString& out, char const* format) const {
  return xo::PrintValue(out, *this, format);
}

XoTimeSpan* XoTimeSpan::ScanFromXoString(XoString& in, char const* format) {
  return xo::ScanValue(*this, in, format) ? this : nullptr;
}

XoString& XoDateTimeNPrint(XoString& out, void const* value, char const* format, unsigned) {
  return xo::PrintValue(out, xo::LoadValue<XoDateTimeN>(value), format);
}

void* XoDateTimeNScan(void* value, XoString& in, char const* format, unsigned count) {
  return xo::ScanSlot<XoDateTimeN>(value, in, format, count);
}
