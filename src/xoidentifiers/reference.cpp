#include "src/xoidentifiers/identifier_fields.hpp"
#include "src/xoidentifiers/identifier_records.hpp"
#include "src/xoidentifiers/identifier_text.hpp"
#include "xoidentifiers.hpp"

using namespace xo;

namespace {

using Records = RecordOperations<ReferenceRecord>;

/// A database that marks the reference as an origin.
constexpr o_u2b kOriginDatabase = 65535;

constexpr IdentifierField kFields[] = {{'B', true},  {'L', true},  {'H', false},
                                       {'D', false}, {'C', false}, {'V', false}};
constexpr PositionalField kPositions[] = {{'h', 3}, {'h', 2}, {'l', 1}, {'l', 0}, {'h', 4}};
constexpr IdentifierLanguage kLanguage{kFields, kPositions, LiteralRule::kSkipAllBlanks};

// The ways to print a reference have a format each, and that of the row is the first.
constexpr char kFormat[] = "(%D:%H-%L#%B, %C)";
constexpr char kSlotFormat[] = "(%D:%H-%L#%B,%Cv%V)";

}  // namespace

XoRef& XoRef::operator=(XoLocalRef const& source) {
  TakeNumber(*this, source);
  TakeClass(*this, source);
  database = 0;
  return *this;
}

XoRef& XoRef::operator=(XoClassId const& source) {
  TakeClass(*this, source);
  return *this;
}

XoRef& XoRef::operator=(XoObjId const& source) {
  TakeNumber(*this, source);
  return *this;
}

XoRef& XoRef::operator=(unsigned short database_) {
  database = database_;
  return *this;
}

int XoRef::operator!=(XoRef const& other) const {
  int const order = OrderOfNumbers(*this, other);
  return order != 0 ? order : (database > other.database) - (database < other.database);
}

unsigned short XoRef::IsValid() const {
  return IsNullValue() == 0 && classNumber != 0 && database < kOriginDatabase;
}
unsigned short XoRef::IsInvalid() const {
  return IsNullValue() != 0 || classNumber == 0 || database == kOriginDatabase;
}
unsigned short XoRef::IsValidOriginId() const {
  return IsNullValue() == 0 && (database == kOriginDatabase || classNumber != 0);
}
unsigned short XoRef::IsInvalidOriginId() const {
  return IsNullValue() != 0 || (database < kOriginDatabase && classNumber == 0);
}

int XoRef::SetNullValue() {
  block = low = 0;
  high = database = 0;
  return 0;
}

XoString& XoRef::PrintToXoString(XoString& out, char const* format) const {
  return PrintIdentifier(out, *this, kLanguage, {block, low, high, database, classNumber, version},
                         FormatOr(format, kFormat));
}

void XoRef::ScanFromXoString(XoString const& in, char const* format) {
  IdentifierValues values;
  if (!ScanIdentifier(kLanguage, values, in, FormatOr(format, kFormat))) {
    SetNullValue();
    return;
  }
  *this = XoRef{values[0],        values[1],        Low16(values[2]),
                Low16(values[3]), Low16(values[4]), Low16(values[5])};
}

unsigned XoRef::Hash(unsigned char format, unsigned length, void* data, unsigned count,
                     int& error) {
  return Records::HashElements(
      format == FormMemory, format, length, data, count, error,
      [](XoRef const& value) { return value.low ^ value.high ^ value.database; });
}

unsigned XoRef::Load(void* memory, void const* disk, unsigned char format, unsigned count) {
  return Records::Load(memory, disk, format, count);
}

unsigned XoRef::Store(void* disk, void const* memory, unsigned char format, unsigned count) {
  return Records::Store(disk, memory, format, count);
}

unsigned XoRef::NullSizeGet(unsigned count) { return Records::NullSizeGet(count); }

unsigned XoRef::SizeGet(void const*, unsigned char, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoRef::SizeGetFromMemFile(MemFile*, unsigned char, unsigned count) {
  return NullSizeGet(count);
}

unsigned XoRef::Translate(void* target, unsigned char targetFormat, unsigned targetLength,
                          void* source, unsigned char sourceFormat, unsigned sourceLength,
                          unsigned count) {
  return Records::Translate(target, targetFormat, targetLength, source, sourceFormat, sourceLength,
                            count);
}

void* XoRef::Create(unsigned count) { return ObjectArray<XoRef>::Create(count); }

void* XoRef::Delete(void* values, unsigned count) {
  return ObjectArray<XoRef>::Delete(values, count);
}

XoString& XoRef::PrintToString(XoString& out, void* value, char const* format, unsigned) {
  return LoadBytes<XoRef>(value).PrintToXoString(out, FormatOr(format, kSlotFormat));
}

void* XoRef::ScanFromString(void* value, XoString& in, char const* format, unsigned) {
  return ScanInto<XoRef>(value, in, format);
}
