#include <bitset>
#include <cstddef>

#include "src/xostring/string_splice.hpp"
#include "src/xostring/text_units.hpp"
#include "src/xotypes/number_print.hpp"
#include "src/xotypes/object_array.hpp"
#include "xostring.hpp"
#include "xotypemgr.hpp"

/// What the manager does with text: conversions, print and scan, and the nulls that rest on them.

using namespace xo;

namespace {

/// Widest unit that separates strings in one text, and what does where all others occur.
constexpr unsigned char kLastSeparator = 254;
constexpr unsigned char kComma = ',';

using Units = std::bitset<65536>;

void AddUnits(Units& units, XoString const* text) {
  if (text == nullptr || text->text == nullptr) return;
  std::size_t const width = UnitSize(text->codeSet);
  for (char const* place = text->text;; place += width) {
    unsigned short const unit = LoadUnit(place, text->codeSet);
    if (unit == 0) return;
    units.set(unit);
  }
}

/// Whether a string takes nothing more. Its buffer may be larger than its text asks for.
bool IsFull(XoString const& string) {
  return string.size == XoString::kMaxSize &&
         (string.Len() + 1u) * UnitSize(string.codeSet) == XoString::kMaxSize;
}

/// The least unit that occurs in none of `count` strings.
unsigned char FindSeparator(XoTypeConvertData const& strings, unsigned count) {
  Units units;
  for (unsigned index = 0; index < count; ++index) {
    AddUnits(units, strings.GetString(static_cast<int>(index)));
  }
  for (unsigned char candidate = 1; candidate <= kLastSeparator; ++candidate) {
    if (!units.test(candidate)) return candidate;
  }
  return kComma;
}

}  // namespace

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

XoTypeConvertData* XoTypeMgr::ConvertTo(char type, void* values, unsigned count) {
  auto* const convert = Row(type).ConvertTo;
  XoTypeConvertData* const strings = convert != nullptr ? convert(values, count) : nullptr;
  if (strings != nullptr) strings->manager = this;
  return strings;
}

void* XoTypeMgr::ConvertFrom(char type, XoTypeConvertData* strings, unsigned count) {
  if (strings != nullptr) strings->manager = this;
  auto* const convert = Row(type).ConvertFrom;
  return convert != nullptr ? convert(strings, count) : nullptr;
}

int XoTypeMgr::SetNullValue(char type, void* value) {
  TypeDescriptor const& row = Row(type);
  if (row.SetNull != nullptr) {
    int const result = row.SetNull(value);
    if (result != ERR_TM_NOT_SUPPORTED) return result;
  }
  if (row.Assignment == nullptr) {
    if (row.ScanFromXoString != nullptr) {
      row.ScanFromXoString(value, NullPrintString, row.Format, 1);
    }
    return 0;
  }
  XoTypeConvertData strings;
  strings.manager = this;
  strings.data = Row(XoSTRING_T).Create(1);
  strings.count = 1;
  strings.type = XoSTRING_T;
  void* const converted = row.ConvertFrom != nullptr ? row.ConvertFrom(&strings, 1) : nullptr;
  if (converted == nullptr) return 0;
  row.Assignment(value, converted, 1, 1);
  row.Delete(converted, 1);
  return 0;
}

XoString& XoTypeMgr::PrintToXoString(char type, XoString& out, void* values, char const* format,
                                     unsigned count) const {
  TypeDescriptor const& row = Row(type);
  auto* const print = row.PrintToXoString;
  if (print == nullptr) return out;
  if (format == nullptr) format = row.Format;
  if (count < 2 || print == PrintBytes) return print(out, values, format, count);
  XoString const comma(",");
  // What does not fit is reported once.
  bool wasFull = false;
  for (unsigned index = 0; index < count && !wasFull; ++index) {
    wasFull = IsFull(out);
    XoString element;
    print(element, GetArrayElement(type, values, index, count), format, 1);
    out += element;
    if (index + 1 < count) out += comma;
  }
  return out;
}

void* XoTypeMgr::ScanFromXoString(char type, void* target, XoString& text, char const* format,
                                  unsigned count) const {
  TypeDescriptor const& row = Row(type);
  auto* const scan = row.ScanFromXoString;
  if (scan == nullptr) return target;
  return scan(target, text, format != nullptr ? format : row.Format, count);
}

XoString const& XoTypeMgr::GetNullPrintString() { return NullPrintString; }

void XoTypeMgr::SetNullPrintString(XoString const& text) { NullPrintString = text; }

XoString* XoTypeMgr::ConvertToXoStringOld(void* values, char type, unsigned count) {
  XoTypeConvertData* const strings = ConvertTo(type, values, count);
  if (strings == nullptr) return nullptr;
  auto const separator = static_cast<char>(FindSeparator(*strings, count));
  auto* const whole = static_cast<XoString*>(ObjectArray<XoString>::Create(1));
  for (unsigned index = 0; index < count && !IsFull(*whole); ++index) {
    XoString const* const element = strings->GetString(static_cast<int>(index));
    if (element != nullptr) *whole << *element;
    *whole << separator;
  }
  // The carrier is not ended, so its strings stay as they are. That is kept as it stands.
  return whole;
}

void* XoTypeMgr::ConvertFromXoStringOld(XoString* text, char type, unsigned count) {
  unsigned short const length = text != nullptr ? text->Len() : static_cast<unsigned short>(0);
  auto const unitAt = [text](std::size_t place) {
    return LoadUnit(text->text + place * UnitSize(text->codeSet), text->codeSet);
  };
  unsigned short const separator = length != 0 ? unitAt(length - 1u) : kComma;
  unsigned pieces = 1;
  for (std::size_t place = 0; place < length; ++place) pieces += unitAt(place) == separator ? 1 : 0;

  void* const strings = ObjectArray<XoString>::Create(pieces);
  unsigned piece = 0;
  std::size_t start = 0;
  for (std::size_t place = 0; place < length; ++place) {
    if (unitAt(place) != separator) continue;
    *ObjectArray<XoString>::Element(strings, piece++) =
        CopyPart(*text, static_cast<unsigned>(start), static_cast<unsigned>(place - start));
    start = place + 1;
  }
  if (length != 0) text->Cut(0);
  // Here too the carrier is not ended.
  return ConvertFrom(type, XoTypeConvertData::Make(XoSTRING_T, pieces, strings, this), count);
}
