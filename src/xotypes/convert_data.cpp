#include "base/allocation.hpp"
#include "src/xotypes/object_array.hpp"
#include "xostring.hpp"
#include "xotypeconvert.hpp"
#include "xotypes.hpp"

XoTypeConvertData::XoTypeConvertData() : manager(nullptr), data(nullptr), count(0), type(XoRES_T) {}

XoTypeConvertData* XoTypeConvertData::Make(char type, unsigned count, void* data,
                                           XoTypeMgr* manager) {
  auto* const carrier = new XoTypeConvertData;
  carrier->manager = manager;
  carrier->data = data;
  carrier->count = count;
  carrier->type = type;
  return carrier;
}

XoString* XoTypeConvertData::GetString(int index) const {
  if (index < 0 || index >= static_cast<int>(count)) return nullptr;
  if (type != XoSTRING_T || data == nullptr) return nullptr;
  return xo::ObjectArray<XoString>::Element(data, static_cast<unsigned>(index));
}

void* XoTypeConvertData::operator new(std::size_t size) { return xo::AllocateArray(size); }

void XoTypeConvertData::operator delete(void* memory) { xo::ReleaseArray(memory); }
