#include "src/xoidentifiers/identifier_fields.hpp"
#include "src/xoidentifiers/identifier_records.hpp"
#include "src/xoidentifiers/identifier_text.hpp"
#include "xoidentifiers.hpp"

using namespace xo;

namespace {

using Records = RecordOperations<ClassIdRecord>;

constexpr IdentifierField kFields[] = {{'C', false}, {'V', false}};
constexpr PositionalField kPositions[] = {{'h', 0}, {'h', 1}};
constexpr IdentifierLanguage kLanguage{kFields, kPositions, LiteralRule::kSkipOne};

constexpr char kFormat[] = "(%Cv%V)";

}  // namespace

int XoClassId::operator!=(XoClassId const& other) const {
  if (IsNullValue() != 0 || other.IsNullValue() != 0) return other.IsNullValue() - IsNullValue();
  if (classNumber != other.classNumber) return classNumber > other.classNumber ? 1 : -1;
  return (version > other.version) - (version < other.version);
}

int XoClassId::SetNullValue() {
  classNumber = version = 65535;
  return 0;
}

XoString& XoClassId::PrintToXoString(XoString& out, char const* format) const {
  return PrintIdentifier(out, *this, kLanguage, {classNumber, version}, FormatOr(format, kFormat));
}

void XoClassId::ScanFromXoString(XoString const& in, char const* format) {
  IdentifierValues values;
  if (!ScanIdentifier(kLanguage, values, in, FormatOr(format, kFormat))) {
    SetNullValue();
    return;
  }
  *this = {Low16(values[0]), Low16(values[1])};
}

unsigned XoClassId::Hash(unsigned char format, unsigned length, void* data, unsigned count,
                         int& error) {
  return Records::HashElements(
      format == FormMemory, format, length, data, count, error,
      [](XoClassId const& value) { return unsigned{value.classNumber} ^ value.version; });
}

unsigned XoClassId::Load(void* memory, void const* disk, unsigned char format, unsigned count) {
  return Records::Load(memory, disk, format, count);
}

unsigned XoClassId::Store(void* disk, void const* memory, unsigned char format, unsigned count) {
  return Records::Store(disk, memory, format, count);
}

unsigned XoClassId::NullSizeGet(unsigned count) { return Records::NullSizeGet(count); }

unsigned XoClassId::SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoClassId::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoClassId::Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                              void* source, unsigned char sourceFormat, unsigned sourceLength,
                              unsigned count) {
  return Records::Translate(target, targetFormat, targetLength, source, sourceFormat, sourceLength,
                            count);
}

void* XoClassId::Create(unsigned count) { return ObjectArray<XoClassId>::Create(count); }

void* XoClassId::Delete(void* values, unsigned count) {
  return ObjectArray<XoClassId>::Delete(values, count);
}

XoString& XoClassId::PrintToString(XoString& out, void* value, char const* format, unsigned) {
  return LoadBytes<XoClassId>(value).PrintToXoString(out, format);
}

void* XoClassId::ScanFromString(void* value, XoString& in, char const* format, unsigned) {
  return ScanInto<XoClassId>(value, in, format);
}
