#include <bit>
#include <cstdint>
#include <cstring>

#include "src/odmg/odmg_rows.hpp"
#include "xotypemgr.hpp"

namespace xo {
namespace {

/// What `SupportsCapability` can be asked.
constexpr unsigned short kHasNull = 1;
constexpr unsigned short kCountsUpward = 2;
constexpr unsigned short kHoldsTimeStamp = 3;

/// Installs `next` in a slot, unless it is null; returns what stood there.
template <class Slot>
Slot Exchange(Slot& slot, Slot next) {
  Slot const previous = slot;
  if (next != nullptr) slot = next;
  return previous;
}

char* CopyName(char const* name, char* buffer) {
  // The row's own text is handed out writable for the interface's sake; callers only read it.
  return buffer != nullptr ? std::strcpy(buffer, name) : const_cast<char*>(name);
}

}  // namespace
}  // namespace xo

XoTypeMgr::XoTypeMgr(unsigned factory) { SetFactory(factory); }

void XoTypeMgr::SetFactory(unsigned factory) {
  constexpr unsigned kLastOlderLevel = 3;
  constexpr unsigned kFirstCurrentLevel = 4;
  constexpr unsigned kAliasOfLastOlder = 11;
  unsigned const chosen = factory == kAliasOfLastOlder  ? kLastOlderLevel
                          : factory > kAliasOfLastOlder ? kFirstCurrentLevel
                                                        : factory;
  table = chosen <= kLastOlderLevel ? OlderTypeTable : CurrentTypeTable;
  level = static_cast<unsigned short>(chosen);
}

void* XoTypeMgr::Create(char type, unsigned count) const { return Row(type).Create(count); }

void* XoTypeMgr::Delete(char type, void* values, unsigned count) const {
  return Row(type).Delete(values, count);
}

void* XoTypeMgr::DefaultValue(char type, unsigned count, int asNull) const {
  return Row(type).DefaultValue(count, asNull);
}

unsigned XoTypeMgr::Hash(char type, unsigned length, void* data, unsigned count,
                         unsigned char format, int& error) const {
  return Row(type).Hash(format, length, data, count, error);
}

unsigned XoTypeMgr::Store(char type, void* disk, void* memory, unsigned char format,
                          unsigned count) const {
  return Row(type).Store(disk, memory, format, count);
}

unsigned XoTypeMgr::Load(char type, void* memory, void* disk, unsigned char format,
                         unsigned count) const {
  return Row(type).Load(memory, disk, format, count);
}

unsigned XoTypeMgr::DiskLenGet(char type, void* data, unsigned char diskFormat, unsigned count,
                               unsigned char dataFormat) const {
  return Row(type).SizeGet(data, dataFormat, diskFormat, count);
}

unsigned XoTypeMgr::DiskLenGetFromMemFile(char type, MemFile* file, unsigned char format,
                                          unsigned count) const {
  return Row(type).SizeGetFromMemFile(file, format, count);
}

unsigned XoTypeMgr::Translate(char type, void* target, unsigned char targetFormat,
                              unsigned targetLength, void* source, unsigned char sourceFormat,
                              unsigned sourceLength, unsigned count) const {
  return Row(type).Translate(target, targetFormat, targetLength, source, sourceFormat, sourceLength,
                             count);
}

float XoTypeMgr::EvalAndBound(char type, XoIdxBounds* range, unsigned short& op, void* value,
                              unsigned char format, unsigned count, void* bounds,
                              XoEvalData* data) const {
  return Row(type).EvalAndBound(range, op, value, format, count, bounds, data);
}

int XoTypeMgr::IsNullValue(char type, void* value) const { return Row(type).IsNull(value); }

XCompare* XoTypeMgr::CmpFuncPtrGet(char type) const { return Row(type).Compare; }

TypeDescriptor::LoadFunction* XoTypeMgr::LoadPtrGet(char type) const { return Row(type).Load; }

TypeDescriptor::StoreFunction* XoTypeMgr::StorePtrGet(char type) const { return Row(type).Store; }

TypeDescriptor::ConstructorFunction* XoTypeMgr::ConstructorPtrGet(char type) const {
  return Row(type).Constructor;
}

TypeDescriptor::ConstructorFunction* XoTypeMgr::DestructorPtrGet(char type) const {
  return Row(type).Destructor;
}

TypeDescriptor::AssignmentFunction* XoTypeMgr::AssignmentPtrGet(char type) const {
  return Row(type).Assignment;
}

TypeDescriptor::AssignmentFunction* XoTypeMgr::CopyPtrGet(char type) const {
  return Row(type).Copy;
}

TypeDescriptor::NullFunction* XoTypeMgr::IsNullPtrGet(char type) const { return Row(type).IsNull; }

TypeDescriptor::NullFunction* XoTypeMgr::SetNullPtrGet(char type) const {
  return Row(type).SetNull;
}

XoTypeMgr::TwoArgumentCompare* XoTypeMgr::ComparePtrGet(char) const { return nullptr; }

unsigned short XoTypeMgr::MemLenGet(char type, unsigned count) const {
  return static_cast<unsigned short>(Row(type).MemLen * count);
}

unsigned short XoTypeMgr::IsFixed(char type) const { return Row(type).Fixed; }

void* XoTypeMgr::GetArrayElement(char type, void* values, unsigned index, unsigned count) const {
  if (!HasRow(type) || (count != 0 && index >= count)) return nullptr;
  // By number, as an address outside the array, or of no array at all, may be asked for.
  auto const address = std::bit_cast<std::uintptr_t>(values);
  return std::bit_cast<void*>(address + std::uintptr_t{Row(type).MemLen} * index);
}

char* XoTypeMgr::NameGet(char type, char* buffer) const {
  return xo::CopyName(Row(type).Name, buffer);
}

char* XoTypeMgr::TypeIdNameGet(char type, char* buffer) const {
  return xo::CopyName(Row(type).TypeIdName, buffer);
}

int XoTypeMgr::Name2XoTypeId(char const* name, char& id) const {
  for (id = 0; IsValidType(id) != 0; ++id) {
    if (HasRow(id) && std::strcmp(name, Row(id).Name) == 0) return 0;
  }
  return 1;
}

int XoTypeMgr::IsValidType(char type) const {
  return FoldTypeId(static_cast<signed char>(type)) < kXoCurrentRows ? 1 : 0;
}

int XoTypeMgr::SupportsCapability(char type, unsigned short capability) const {
  switch (capability) {
    case xo::kHasNull:
      return Row(type).SetNull != nullptr ? 1 : 0;
    case xo::kCountsUpward:
      // The list is kept as it stands: XoENUM_T is in it, although that row cannot step.
      switch (type) {
        case Xo1B_T:
        case Xo2B_T:
        case Xo4B_T:
        case XoU2B_T:
        case XoU4B_T:
        case XoINT_T:
        case XoUNSIGNED_T:
        case XoENUM_T:
        case XoU1B_T:
        case XoOBJID_T:
        case XoINT64_T:
        case Xo8B_T:
        case XoU8B_T:
          return 1;
        default:
          return 0;
      }
    case xo::kHoldsTimeStamp:
      switch (type) {
        case XoDATE_T:
        case XoTIME_T:
        case XoDATIME_T:
        case D_DATE_T:
        case D_TIME_T:
        case D_TIMESTAMP_T:
        case XoDATIME_N_T:
          return 1;
        default:
          return 0;
      }
    default:
      return 0;
  }
}

unsigned short XoTypeMgr::SupportsNullValue(char type) const {
  return static_cast<unsigned short>(SupportsCapability(type, xo::kHasNull));
}

char const* XoTypeMgr::ExchangeFormat(char type, char const* format) {
  return xo::Exchange(Row(type).Format, format);
}

TypeDescriptor::PrintFunction* XoTypeMgr::ExchangePrintToXoStringFunc(
    char type, TypeDescriptor::PrintFunction* print) {
  return xo::Exchange(Row(type).PrintToXoString, print);
}

TypeDescriptor::ScanFunction* XoTypeMgr::ExchangeScanFromXoStringFunc(
    char type, TypeDescriptor::ScanFunction* scan) {
  return xo::Exchange(Row(type).ScanFromXoString, scan);
}

XCompare* XoTypeMgr::ExchangeXoTypeCmpFunc(char type, XCompare* compare) {
  return xo::Exchange(Row(type).Compare, compare);
}

int XoTypeMgr::DiskIsNullValue(char, void*) const { return ERR_TM_NOT_SUPPORTED; }

int XoTypeMgr::StoreTimeStamp(char type, void* target, unsigned char format, void* stamp) const {
  if (stamp == nullptr) return ERR_TM_NOT_SUPPORTED;
  auto const store = [&](void const* value) {
    return static_cast<int>(Row(type).Store(target, value, format, 1));
  };
  switch (type) {
    case XoDATE_T:
    case XoDATIME_T:
    case XoDATIME_N_T:
      // These begin as the record does.
      return store(stamp);
    case XoTIME_T:
      return store(xo::TimeOfRecord(stamp));
    case D_DATE_T:
    case D_TIME_T:
    case D_TIMESTAMP_T: {
      d_Timestamp const value = xo::OdmgStampOf(xo::LoadValue<XoDateTimeN>(stamp));
      if (type == D_DATE_T) return store(&value.date());
      return type == D_TIME_T ? store(&value.time()) : store(&value);
    }
    default:
      return ERR_TM_NOT_SUPPORTED;
  }
}

int XoTypeMgr::GetValue(char type, void* value, unsigned count, unsigned char format,
                        NextValueCode code) const {
  if (code != kNextValue && code != kNextValueToo && code != kPresentValue) {
    return ERR_TM_NOT_SUPPORTED;
  }
  TypeDescriptor const& row = Row(type);
  // The string row steps its disk data itself.
  if (type == XoSTRING_T || format == FormMemory) return row.GetValue(value, count, format, code);

  void* const temporary = row.Create(1);
  if (temporary == nullptr) return ERR_TM_NOT_SUPPORTED;
  // Only these bits are handed on, so that big-endian data is stepped as if it were little-endian.
  auto const form = static_cast<unsigned char>(format & (FormatIndexKey | FormLittle));
  int result = ERR_TM_NOT_SUPPORTED;
  if (row.Load(temporary, value, form, 1) != 0) {
    result = row.GetValue(temporary, 0, FormMemory, code);
    if (result == 0 && row.Store(value, temporary, form, 1) == 0) result = ERR_TM_NOT_SUPPORTED;
  }
  row.Delete(temporary, 1);
  return result;
}
