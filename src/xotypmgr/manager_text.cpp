#include "xotypemgr.hpp"

XoTypeConvertData::~XoTypeConvertData() {
  if (manager != nullptr && data != nullptr) {
    manager->Delete(type, data, count);
    *static_cast<void* volatile*>(&data) = nullptr;
  }
  // An ended carrier shows that it is empty to whoever still looks at it, so these writes must not
  // be taken for ones that nobody reads.
  *static_cast<char volatile*>(&type) = XoRES_T;
  *static_cast<unsigned volatile*>(&count) = 0;
}
