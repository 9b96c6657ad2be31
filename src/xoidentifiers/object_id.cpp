#include "src/xoidentifiers/identifier_fields.hpp"
#include "src/xoidentifiers/identifier_records.hpp"
#include "src/xoidentifiers/identifier_text.hpp"
#include "xoidentifiers.hpp"

using namespace xo;

namespace {

using Records = RecordOperations<ObjectIdRecord>;

constexpr IdentifierField kFields[] = {{'B', true}, {'L', true}, {'H', false}};
constexpr PositionalField kPositions[] = {{'h', 2}, {'l', 1}, {'l', 0}};
constexpr IdentifierLanguage kLanguage{kFields, kPositions, LiteralRule::kMatch};

constexpr char kFormat[] = "(%H-%L#%B)";

}  // namespace

int XoObjId::operator!=(XoObjId const& other) const { return OrderOfNumbers(*this, other); }

XoObjId& XoObjId::operator++() {
  if (++low == 0) ++high;
  return *this;
}

XoObjId& XoObjId::operator--() {
  if (low-- == 0) --high;
  return *this;
}

XoObjId& XoObjId::operator+=(short step) {
  o_u4b const before = low;
  low += static_cast<o_u4b>(int{step});
  if (step > 0 && low < before) ++high;
  if (step < 0 && low > before) --high;
  return *this;
}

void XoObjId::SetHighestValue() { *this = {0, 0xFFFFFFFF, 0xFFFF}; }

int XoObjId::SetNullValue() {
  *this = {0, 0, 0};
  return 0;
}

XoString& XoObjId::PrintToXoString(XoString& out, char const* format) const {
  return PrintIdentifier(out, *this, kLanguage, {block, low, high}, FormatOr(format, kFormat));
}

void XoObjId::ScanFromXoString(XoString const& in, char const* format) {
  IdentifierValues values;
  if (!ScanIdentifier(kLanguage, values, in, FormatOr(format, kFormat))) {
    SetNullValue();
    return;
  }
  *this = {values[0], values[1], Low16(values[2])};
}

unsigned XoObjId::Hash(unsigned char format, unsigned length, void* data, unsigned count,
                       int& error) {
  return Records::HashElements(format == FormMemory, format, length, data, count, error,
                               [](XoObjId const& value) { return value.low ^ value.high; });
}

unsigned XoObjId::Load(void* memory, void const* disk, unsigned char format, unsigned count) {
  return Records::Load(memory, disk, format, count);
}

unsigned XoObjId::Store(void* disk, void const* memory, unsigned char format, unsigned count) {
  return Records::Store(disk, memory, format, count);
}

unsigned XoObjId::NullSizeGet(unsigned count) { return Records::NullSizeGet(count); }

unsigned XoObjId::SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoObjId::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoObjId::Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                            void* source, unsigned char sourceFormat, unsigned sourceLength,
                            unsigned count) {
  return Records::Translate(target, targetFormat, targetLength, source, sourceFormat, sourceLength,
                            count);
}

void* XoObjId::Create(unsigned count) { return ObjectArray<XoObjId>::Create(count); }

void* XoObjId::Delete(void* values, unsigned count) {
  return ObjectArray<XoObjId>::Delete(values, count);
}

XoString& XoObjId::PrintToString(XoString& out, void* value, char const* format, unsigned) {
  return LoadBytes<XoObjId>(value).PrintToXoString(out, format);
}

void* XoObjId::ScanFromString(void* value, XoString& in, char const* format, unsigned) {
  return ScanInto<XoObjId>(value, in, format);
}
